"""The seven animals of the hunt, facing right: how they go, fall and lie."""
import math

from ink import spline, Sprite

def rot(deg, cx, cy, dx=0, dy=0):
    a = math.radians(deg)
    return lambda p: (cx + (p[0] - cx) * math.cos(a) - (p[1] - cy) * math.sin(a) + dx,
        cy + (p[0] - cx) * math.sin(a) + (p[1] - cy) * math.cos(a) + dy)

ID = lambda p: p

def legs(c, L, w, w2, T=ID, tone='k'):
    for pts in L:
        c.stroke([T(p) for p in pts], w, w2)

def animal(w, h, body, head, far, near, lw, tone, horns=(), T=ID, marks=None, ear=None, eye=None, shut=False, tail=None,
        htone=None, TH=None, after=None):
    c = Sprite(w, h); TH = TH or T; legs(c, far, lw, max(1, lw * .7))
    if tail: c.stroke([T(p) for p in tail[0]], tail[1], tail[2])
    for hn in horns[:len(horns) // 2] if len(horns) > 1 else ():
        c.stroke([TH(p) for p in spline(hn[0])], hn[1], hn[2])
    m = c.put(c.mpoly(spline([T(p) for p in body], True, 6)), tone)
    m2 = c.mpoly(spline([TH(p) for p in head], True, 6)); c.put(m2, htone or tone); both = m & m2
    e = (c.edge(m) | c.edge(m2)) & both & ~c.edge(m | m2); t = c.tone(tone); c.a[e] = t[e]; body_m = m | m2
    if marks: marks(c, c.inner(body_m), T)
    c.ink(c.edge(body_m)); legs(c, near, lw, max(1.2, lw * .75))
    for hn in horns[len(horns) // 2:] if len(horns) > 1 else horns:
        c.stroke([TH(p) for p in spline(hn[0])], hn[1], hn[2])
    if ear: c.stroke([TH(p) for p in ear], 2, 1)
    if eye:
        x, y = TH(eye)
        if shut: c.line(x - 1, y, x + 1, y, 0 if tone in ('k', '75') else 1)
        else:
            c.px(x, y, 0 if (htone or tone) in ('k', '75', '50') else 1)
    if after: after(c, T, TH)
    return c

def walk4(fx, hx, top, g, s=1.0):
    """Four steps: near and far legs of fore (fx) and hind (hx), hip row top, ground g."""
    P = []; k = (g - top)
    for ph in range(4):
        # swing of a leg through the cycle: forward, under, back, lifted
        d = [(5, 0), (1, 0), (-5, 0), (-1, 3)]
        def fore(x, q):
            dx, up = d[q % 4]; dx *= s; up *= s
            return [(x, top), (x + dx * .4 + (2.5 * s if up else 0), top + k * .5 - up * .4), (x + dx, g - .8 - up)]
        def hind(x, q):
            dx, up = d[q % 4]; dx *= s; up *= s
            return [(x, top - 1), (x - 2.2 * s + dx * .4 + (2 * s if up else 0), top + k * .52 - up * .3),
                (x + dx, g - .8 - up)]
        P.append(([fore(fx - 1, ph + 2), hind(hx + 1, ph)], [fore(fx, ph), hind(hx, ph + 2)]))
    return P

def aurochs():
    body = [(4, 14), (9, 11), (20, 12), (29, 9), (37, 5), (44, 7), (48, 14), (47, 22), (42, 27), (32, 27), (20, 27),
        (10, 28), (4, 24)]
    head = [(42, 7), (49, 7), (54, 12), (58, 18), (58, 21), (54, 23), (50, 20), (46, 22), (43, 16)]
    horns = [([(50, 8), (52, 4), (50, 1), (53, -1)], 2, 1), ([(52, 9), (57, 7), (57, 3), (60, 1)], 2.4, 1)]
    def stripe(c, m, T):
        p = spline([T(q) for q in [(5, 15), (10, 13), (20, 13.5), (29, 10.8), (37, 7), (43, 8)]])
        c.ink(c.mstroke(p, 1.6) & m, 0); c.ink(c.mpoly([T(q) for q in [(55, 17), (59, 17), (60, 24), (53, 24)]]) & m, 0)
    F = []
    for far, near in walk4(41, 11, 25, 38):
        F.append(animal(60, 38, body, head, far, near, 3.6, '75', horns, marks=stripe, ear=[(48, 9), (45, 11)],
            eye=(53, 14), tail=([(4, 15), (2, 22), (3, 29)], 1.2, 2)))
    T = rot(13, 20, 24, 0, 4)
    F.append(animal(60, 38, body, [(42, 7), (49, 7), (54, 12), (57, 17), (57, 20), (53, 22), (49, 20), (46, 22),
        (43, 16)], [[(38, 30), (44, 35), (37, 37)], [(12, 27), (8, 32), (11, 37)]],
        [[(41, 32), (46, 36), (39, 37)], [(9, 26), (5, 31), (8, 37)]], 3.4, '75', horns, T=rot(12, 20, 24, -2, 4),
        marks=stripe, eye=(53, 14), tail=([(4, 15), (1, 20), (2, 26)], 1.2, 2)))
    def lie(p):
        return (p[0] - 1, p[1] + 10)
    hd = [(42, 18), (48, 20), (54, 26), (59, 33), (58, 37), (53, 37), (47, 33), (43, 30)]
    F.append(animal(60, 38, body[:6] + [(47, 16), (46, 23), (42, 27.4), (32, 27.6), (20, 27.6), (8, 27.6), (3, 22)], hd,
        [], [[(42, 35), (49, 37), (44, 37.4)], [(10, 35), (18, 37), (24, 37.4)]], 3, '75',
        [([(50, 21), (54, 17), (53, 13), (56, 11)], 2, 1), ([(51, 22), (57, 21), (59, 17), (60, 15)], 2.4, 1)], T=lie,
        TH=ID, marks=lambda c, m, T: c.ink(c.mstroke(spline([T(q) for q in [(5, 15), (10, 13), (20, 13.5), (29, 10.8),
        (37, 7), (43, 8)]]), 1.6) & m, 0), eye=(52, 28), shut=True))
    return F

def deer(w, h, big):
    """Stag (big) or fallow; both with three strides and two of falling."""
    F = []
    # 48 by 46
    if big:
        def body(dy):
            return [(4, 20 + dy), (10, 17 + dy), (20, 18 + dy), (29, 17 + dy), (34, 15 + dy), (37, 21 + dy),
                (34, 27 + dy), (26, 29 + dy), (16, 28 + dy), (9, 30 + dy), (4, 27 + dy)]
        def head(dy, hx=0, hy=0):
            return [(30, 18 + dy), (33, 13 + dy + hy * .3), (36, 8 + dy + hy), (39, 6 + dy + hy), (43, 8 + dy + hy),
                (47, 11 + dy + hy), (46, 13.5 + dy + hy), (41, 13.5 + dy + hy), (39, 17 + dy + hy * .5), (37, 24 + dy)]
        def antlers(dy, hy=0):
            A = []
            for ox, s in ((36, -1), (39, 1)):
                b = (ox, 7 + dy + hy)
                A.append(([b, (ox + s * 2 - 2, 3 + dy + hy), (ox + s * 3 - 3, -2 + dy + hy),
                    (ox + s * 5, -6 + dy + hy)], 1.6, 1))
                A.append(([(ox + s * 1 - 1, 4 + dy + hy), (ox + 4 + s, 1 + dy + hy)], 1, 1))
                A.append(([(ox + s * 3 - 3, 0 + dy + hy), (ox + 1 + s * 3, -4 + dy + hy)], 1, 1))
                A.append(([(ox + s * 3 - 3, -2 + dy + hy), (ox - 4 + s * 3, -6 + dy + hy)], 1, 1))
            return A
        tone = '25'
        def marks(c, m, T):
            c.ink(m & c.mpoly(spline([T(q) for q in [(3, 20), (8, 18), (9, 24), (4, 28)]], True)), 0)
            c.shade(m & c.mpoly([T(q) for q in [(31, 14), (40, 14), (38, 25), (30, 24)]]), '50')
        poses = [(8, [[(33, 30), (38, 36), (43, 41)], [(8, 32), (2, 37), (0, 43)]],
            [[(32, 31), (37, 38), (40, 45)], [(9, 32), (4, 39), (5, 45)]]),
            (7, [[(33, 29), (36, 35), (31, 38)], [(8, 31), (12, 36), (16, 39)]],
            [[(32, 30), (36, 36), (33, 40)], [(9, 31), (12, 37), (19, 40)]]),
            (8, [[(33, 30), (32, 37), (28, 44)], [(8, 32), (12, 38), (18, 44)]],
            [[(32, 31), (32, 38), (31, 45.4)], [(9, 32), (9, 39), (13, 45.4)]])]
        lw = 2.2
    # 38 by 30
    else:
        def body(dy):
            return [(4, 14 + dy), (8, 11 + dy), (15, 12 + dy), (22, 11 + dy), (27, 11 + dy), (28, 15 + dy),
                (25, 19 + dy), (18, 20 + dy), (11, 19 + dy), (7, 20 + dy), (4, 18 + dy)]
        def head(dy, hx=0, hy=0):
            return [(24, 12 + dy), (26, 9 + dy + hy * .4), (28, 6 + dy + hy), (30, 4.4 + dy + hy), (33, 6 + dy + hy),
                (36, 8 + dy + hy), (35.4, 10 + dy + hy), (31, 9.6 + dy + hy), (30, 12 + dy + hy * .5), (28, 17 + dy)]
        def antlers(dy, hy=0):
            return [([(29, 5 + dy + hy), (26, 2 + dy + hy), (26, -1 + dy + hy)], 1.2, 3.4),
                ([(31, 5 + dy + hy), (31, 2 + dy + hy), (34, -1 + dy + hy)], 1.2, 3.6)]
        tone = 'w'
        def marks(c, m, T):
            for x, y in ((8, 13), (11, 14), (14, 13.6), (17, 14.4), (20, 13.4), (23, 14), (9, 16), (13, 16.6), (16, 17),
                    (20, 16.6), (24, 16)):
                X, Y = T((x, y)); X, Y = int(X), int(Y)
                if 0 <= X < c.w and 0 <= Y < c.h and m[Y, X]:
                    c.px(X, Y); c.px(X + 1, Y)
        poses = [(4, [[(26, 18), (31, 22), (36, 24)], [(6, 20), (2, 25), (0, 28)]],
            [[(25, 19), (30, 24), (34, 27)], [(7, 20), (3, 26), (3, 29.4)]]),
            (2, [[(25, 17), (30, 20), (26, 23)], [(7, 18), (2, 21), (4, 24)]],
            [[(25, 18), (31, 21), (28, 24)], [(7, 18), (3, 22), (6, 25)]]),
            (4, [[(25, 19), (24, 24), (21, 28)], [(8, 20), (12, 24), (15, 29)]],
            [[(25, 19), (25, 25), (23, 29.4)], [(7, 20), (9, 25), (12, 29.4)]])]
        lw = 1.7
    g = h
    for dy, far, near in poses:
        def tail(dy=dy):
            return ([(4, (20 if big else 13) + dy), (2, (22 if big else 15) + dy)], 2, 1.4)
        F.append(animal(w, h, body(dy), head(dy), far, near, lw, tone, antlers(dy), marks=lambda c, m, T,
            dy=dy: marks(c, m, lambda p: (p[0], p[1] + dy)), ear=None, eye=(41, 9 + dy) if big else (32, 6.6 + dy),
            tail=tail()))
    # falling
    dy, far, near = poses[0]; T = rot(16, 14 if big else 10, g - 12, -1, 2 if big else 2); off = 8 if big else 4
    if big:
        F.append(animal(w, h, body(off), head(off, hy=1), [[(30, 40), (36, 43), (30, 45)],
            [(10, 34), (6, 39), (8, 45)]], [[(31, 41), (38, 44), (33, 45.4)], [(9, 34), (4, 39), (5, 45)]], lw, tone,
            antlers(off, 1), T=T, marks=lambda c, m, T_: marks(c, m, lambda p: T((p[0], p[1] + off))),
            eye=(41, 9 + off + 1)))
        L = lambda p: (p[0], p[1] + 15.5)
        F.append(animal(w, h, body(0), [(31, 30), (36, 32), (40, 36), (43, 38), (47, 42), (46, 45), (41, 44), (36, 42),
            (31, 42)], [], [[(33, 42), (40, 45.4), (34, 45.4)], [(9, 44), (17, 45.4), (22, 45.4)]], 1.8, tone,
            [([(39, 36), (36, 31), (37, 26), (34, 22)], 1.4, 1), ([(37, 29), (33, 27)], 1, 1),
            ([(41, 36), (42, 30), (45, 26), (44, 21)], 1.6, 1), ([(42, 31), (47, 30)], 1, 1),
            ([(44, 27), (48, 24)], 1, 1), ([(42, 29), (39, 25)], 1, 1)], T=L, TH=ID, marks=lambda c, m,
            T_: c.ink(m & c.mpoly(spline([L(q) for q in [(3, 20), (8, 18), (9, 24), (4, 28)]], True)), 0), eye=(42, 39),
            shut=True))
    else:
        F.append(animal(w, h, body(off), head(off, hy=1), [[(24, 25), (29, 28), (24, 29.4)],
            [(8, 21), (4, 25), (6, 29)]], [[(25, 26), (31, 28.6), (27, 29.4)], [(7, 21), (3, 25), (4, 29)]], lw, tone,
            antlers(off, 1), T=T, marks=lambda c, m, T_: marks(c, m, lambda p: T((p[0], p[1] + off))),
            eye=(32, 6.6 + off + 1)))
        L = lambda p: (p[0], p[1] + 9.4)
        F.append(animal(w, h, body(0), [(24, 20), (28, 21), (31, 23), (34, 25), (37, 28), (36, 29.6), (31, 29),
            (27, 28), (24, 27)], [], [[(25, 27), (31, 29.5), (27, 29.5)], [(8, 28), (14, 29.5), (18, 29.5)]], 1.5, tone,
            [([(30, 23), (28, 19), (27, 16)], 1.2, 3), ([(32, 23), (33, 19), (36, 17)], 1.2, 3.2)], T=L, TH=ID,
            marks=lambda c, m, T_: marks(c, m, L), eye=(33, 25.6), shut=True))
    return F

def hare():
    """Long stretch, ball, stretch; the ears tell it from everything else."""
    def one(body, head, ears_, hind, fore, eye, tail, shut=False):
        c = Sprite(18, 12); c.stroke(hind, 1.7, 1.2); c.stroke(fore, 1.5, 1)
        for e in ears_: c.stroke(e, 1.5, 1)
        m = c.mpoly(spline(body, True, 6)) | c.mpoly(spline(head, True, 6)); c.put(m, 'w')
        c.shade(c.inner(m) & c.mrect(0, int(max(p[1] for p in body)) - 2, 10, 12), '50')
        c.ell(tail[0], tail[1], 1.3, 1.3, 'w'); c.line(eye[0], eye[1], eye[0] + (1 if shut else 0), eye[1])
        return c
    return [one([(1, 6.4), (4, 4.6), (9, 5), (12.4, 4.6), (13, 6.8), (10, 8.2), (5, 8.6), (2, 8.2)],
        [(11.4, 4.4), (13.6, 3), (16.2, 4.2), (17.4, 5.8), (15.4, 7), (12.5, 7)],
        [[(13.4, 3.4), (8.6, 1.6)], [(14, 3), (10, .4)]], [(3.4, 7.8), (1.2, 9.6), (0, 11)],
        [(12, 7.4), (14.6, 9.2), (16.8, 10)], (15, 4), (1, 5.6)), one([(2.6, 7), (4.4, 3.6), (8.6, 2.6), (12, 4.6),
        (12.6, 7.6), (9, 9.4), (4.6, 9.4)], [(10.8, 4.4), (13, 3.2), (15.4, 4.6), (15.8, 6), (13.6, 7.2), (11.2, 6.6)],
        [[(12.6, 3.4), (10.4, -.4)], [(13.6, 3.2), (13, -.4)]], [(4.6, 8.4), (7.6, 10.4), (11.6, 11)],
        [(10.8, 8.4), (9.4, 10.2), (7, 11.4)], (14, 5), (2.2, 7.4)), one([(1.6, 5.4), (4.6, 3.6), (9, 4.4), (12.4, 5.4),
        (13, 7.4), (10, 8.8), (5, 9), (2, 8.4)], [(11.4, 5), (13.6, 3.8), (16, 5), (16.8, 6.6), (14.8, 7.6),
        (12.4, 7.4)], [[(13.2, 4.2), (9.4, 1)], [(13.8, 3.8), (11.6, 0)]], [(4, 8), (2.6, 10), (5.6, 11.2)],
        [(12, 7.6), (13.4, 9.6), (12.6, 11.2)], (15, 5), (1.2, 5)), one([(1.4, 9), (4, 7), (9, 7), (12, 8),
        (12.6, 10.4), (9, 11.4), (4, 11.4)], [(11, 8.6), (13.4, 8), (16, 9.2), (17, 10.6), (15, 11.6), (11.6, 11.4)],
        [[(13, 8.4), (8.6, 6.6)], [(13.6, 8), (9.8, 5)]], [(4, 11), (8, 11.4)], [(11, 11), (14.4, 11.4)], (14, 9),
        (1.2, 8.4), True)]

BODY_ = ["_________##___", "________#..##_", "________#..#__", "___######..#__", "__#.#.#.#..#__", "###.#.#....#__",
    "#__#.#.#..#___", "____######____"]

BIRD = ["\n".join(BODY_ + L) for L in (["____#___#_____", "___#_____#____", "__##_____##___"],
    ["_____#_#______", "_____#_#______", "_____##_##____"], ["_____##_______", "____#__#______", "___##___##____"])]

def sprite(t, w, h):
    c = Sprite(w, h); rows = t.strip('\n').split('\n'); c.art(0, h - len(rows), rows)
    return c

def partridge():
    return [sprite(t, 14, 11) for t in BIRD]

def boar():
    body = [(3, 9), (8, 5), (16, 3.5), (24, 3), (29, 6), (31, 12), (28, 16), (20, 17), (11, 17), (5, 16), (3, 13)]
    head = [(25, 4), (30, 5), (34, 9), (38, 13), (39, 16), (37, 17.5), (33, 16.5), (28, 17), (26, 12)]
    def marks(c, m, T):
        X, Y = T((35, 15)); c.line(X, Y, X + 1, Y - 2, 0); c.px(X + 1, Y - 3, 0)
    def bristle(c, T, TH):
        for x in (10, 14, 18, 22, 26):
            a, b = T((x, 4.5 + abs(x - 20) * .08)), T((x - 2, 0.6 + abs(x - 20) * .1)); c.line(*a, *b)
        c.poly([TH(p) for p in [(27, 5), (27, 1), (31, 4)]], 'k')
    F = []
    for far, near in walk4(26, 8, 15, 24, .55):
        F.append(animal(40, 24, body, head, far, near, 2.4, 'k', (), marks=marks, eye=(32, 10),
            tail=([(3, 9), (0, 11), (1, 15)], 1, 1.6), after=bristle))
    T = rot(14, 12, 14, -1, 2.6)
    F.append(animal(40, 24, body, head, [[(24, 20), (29, 22), (25, 23)]],
        [[(25, 20), (31, 22), (27, 23.4)], [(7, 17), (5, 20), (6, 23.4)]], 2.2, 'k', (), T=T, marks=marks, eye=(32, 10),
        after=bristle))
    L = lambda p: (p[0], p[1] + 6)
    F.append(animal(40, 24, body, [(25, 11), (30, 13), (34, 17), (38, 20), (39, 22.6), (36, 23.6), (30, 23.4),
        (26, 22)], [], [[(26, 21), (32, 23.4), (28, 23.4)], [(8, 22), (14, 23.4), (17, 23.4)]], 2, 'k', (), T=L, TH=ID,
        marks=lambda c, m, T: c.line(36, 21, 37, 19, 0), eye=(32, 17.6), shut=True, after=lambda c, T,
        TH: [c.line(*T((x, 4.5)), *T((x - 2, 1))) for x in (10, 14, 18, 22, 26)]))
    return F

def saiga():
    body = [(4, 9), (9, 7), (16, 8), (22, 8), (25, 10), (25, 14), (20, 16), (13, 16), (7, 16), (4, 13)]
    def head(d=0):
        return [(22, 9), (25, 8 + d), (27, 9 + d), (30, 11 + d), (33, 14 + d), (33, 18 + d), (31, 19.6 + d),
            (29, 17 + d), (26, 15 + d), (23, 15)]
    def horns(d=0):
        return [([(25.6, 9 + d), (25, 5 + d), (26.4, 2 + d), (26, 0 + d)], 1.6, 1),
            ([(27.6, 9 + d), (28, 5 + d), (29.6, 2 + d), (29.4, 0 + d)], 1.6, 1)]
    def marks(c, m, T):
        c.shade(m & c.mpoly([T(q) for q in [(3, 14), (26, 13), (24, 18), (4, 18)]]), '50'); X, Y = T((32, 16))
    def nose(c, T, TH):
        x, y = TH((31, 15)); c.line(x, y, x + 1, y + 3); x, y = TH((32.4, 18)); c.px(x, y)
    P = [([[(23, 14), (28, 18), (33, 20)], [(6, 15), (2, 19), (0, 22)]],
        [[(22, 15), (27, 20), (31, 23)], [(7, 15), (3, 20), (2, 25)]]),
        ([[(23, 14), (25, 19), (21, 21)], [(6, 15), (8, 19), (12, 20)]],
        [[(22, 15), (24, 20), (19.6, 22.4)], [(7, 15), (9, 20), (14, 22)]]),
        ([[(23, 14), (22, 20), (19, 25)], [(6, 15), (9, 20), (14, 24)]],
        [[(22, 15), (23, 21), (23, 25.4)], [(7, 15), (8, 21), (11, 25.4)]])]
    F = []
    for k, (far, near) in enumerate(P):
        dy = (1, -1, 1)[k]
        T = lambda p, dy=dy: (p[0], p[1] + dy)
        F.append(animal(34, 26, body, head(), far, near, 1.6, 'w', horns(), T=T, marks=marks, eye=(28, 11), after=nose,
            tail=([(4, 9), (2, 11)], 1.6, 1)))
    T = rot(15, 12, 14, -2, 3)
    F.append(animal(34, 26, body, head(), [[(21, 21), (26, 24), (21, 25)], [(7, 17), (4, 21), (6, 25)]],
        [[(22, 22), (28, 24.6), (23, 25.4)], [(8, 17), (4, 21), (3, 25)]], 1.5, 'w', horns(), T=T, marks=marks,
        eye=(28, 11), after=nose))
    L = lambda p: (p[0], p[1] + 9.4)
    F.append(animal(34, 26, body, [(21, 18), (25, 18), (28, 20), (32, 23), (33, 25.4), (30, 25.8), (25, 25), (22, 24)],
        [], [[(22, 24), (28, 25.6), (24, 25.6)], [(7, 24), (13, 25.6), (16, 25.6)]], 1.4, 'w',
        [([(26, 19), (24, 15), (25, 12), (24, 10)], 1.6, 1), ([(27.6, 19.4), (28, 15), (30, 13), (30, 11)], 1.6, 1)],
        T=L, TH=ID, marks=marks, eye=(28, 21.6), shut=True))
    return F

def names(name, steps, falls):
    return [f'{name}-walk-{k + 1}' for k in range(steps)] + [f'{name}-falls', f'{name}-lies'][2 - falls:]

def pictures():
    out = {}
    for name, frames, steps, falls in (('aurochs', aurochs(), 4, 2), ('fallow', deer(38, 30, False), 3, 2),
            ('hare', hare(), 3, 1), ('partridge', partridge(), 3, 1), ('stag', deer(48, 46, True), 3, 2),
            ('boar', boar(), 4, 2), ('saiga', saiga(), 3, 2)):
        out |= {'Hunt/' + n: c for n, c in zip(names(name, steps, falls), frames)}
    return out
