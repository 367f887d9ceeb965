"""The stock company: people, wheels, wains, oxen, birds, tents."""
import math

import numpy as np

from ink import at, Canvas, points, shifted, spline

def person(c, x, y, h=22, f=-1, hat='broad', top='w', legs='k', skirt=False, arm=((1.8, 12.3), (3.6, 9.6)), arm2=None,
        lean=0, tool=None, back=False, apron=False, stride=1.6, braid=False):
    """A standing figure; x centre, y ground row (first row under the feet), f -1 looks left."""
    u = h / 22.0
    fx = f if f else 1
    def P(px, py):
        return (x + 0.5 + (px + lean * py / 22.0) * u * fx, y - py * u)
    def limb(pts, w, tone):
        if tone == 'k' or w * u < 2.6:
            c.stroke([P(*p) for p in pts], max(1.0, w * u * 0.8))
        else:
            c.band([P(*p) for p in pts], w * u, tone=tone)
    # far arm
    sh_y = 16.2
    if arm2:
        limb([(-0.5, sh_y)] + list(arm2), 2.8, top)
    if skirt:
        c.poly(spline([P(-2.4, 11), P(-3.2, 6), P(-4.6, 1)], n=4) + spline([P(4.6, 1), P(3.2, 6), P(2.4, 11)], n=4),
            legs)
        if h >= 24 and legs in ('w', '25'):
            c.line(*P(-.8, 9), *P(-1.6, 1.8)); c.line(*P(1, 8), *P(1.6, 1.8))
        if h >= 20:
            c.stroke([P(-1.2, 0.6), P(0.2, 0.6)], 1.2)
            c.stroke([P(1.6, 0.6), P(2.8, 0.6)], 1.2)
    else:
        for dx in (-stride, stride):
            c.stroke([P(dx * 0.5, 9), P(dx * 0.9, 4.5), P(dx, 0.7)], max(1.0, 2.3 * u))
            c.stroke([P(dx, 0.6), P(dx + 1.4, 0.6)], max(1.0, 1.4 * u))
            if legs != 'k' and u >= 1.2:
                c.stroke([P(dx * 0.5, 9), P(dx * 0.9, 4.5), P(dx, 2)], max(1.0, 1.0 * u), c=0)
    # body: sloping shoulders, a waist
    if skirt:
        B_ = [P(-.9, 17.9), P(.9, 17.9), P(2.7, 16.9), P(3.1, 15), P(2.3, 11.2), P(2.6, 10.2), P(-2.6, 10.2),
            P(-2.3, 11.2), P(-3.1, 15), P(-2.7, 16.9)]
    else:
        B_ = [P(-.9, 17.9), P(.9, 17.9), P(2.9, 16.9), P(3.3, 15), P(2.8, 11.6), P(3.5, 7.8), P(-3.5, 7.8),
            P(-2.8, 11.6), P(-3.3, 15), P(-2.9, 16.9)]
    c.poly(B_, top)
    if h >= 24 and not skirt and top != 'k':
        c.line(*P(.6, 16), *P(.8, 8.6))
    if apron:
        c.poly([P(-0.2, 14.5), P(2.6, 14.5), P(3.2, 4), P(0.2, 4)], 'w')
    # head
    c.ell(*P(0.3, 19.4), 2.2 * u, 2.4 * u, 'w')
    if back and hat in ('none', 'hair'):
        c.ell(*P(0.3, 19.6), 2.2 * u, 2.3 * u, 'k')
    if hat == 'broad':
        c.stroke([P(-4.2, 20.6), P(4.2, 20.6)], max(1, 1.2 * u))
        c.poly([P(-2.2, 20.4), P(2.2, 20.4), P(1.8, 23), P(-1.8, 23)], 'k')
    elif hat == 'cone':
        c.poly([P(-4.8, 19.9), P(4.8, 19.9), P(0, 24)], 'w')
        c.stroke([P(0.3, 23), P(2.4, 20.6)], 1)
    elif hat == 'felt':
        c.poly([P(-2.6, 20.2), P(2.6, 20.2), P(2, 22.6), P(0, 23.4), P(-2, 22.6)], 'w')
        c.stroke([P(-3.2, 20.6), P(3.2, 20.6)], max(1.2, 1.5 * u))
    elif hat == 'cap':
        c.poly([P(-2.6, 20), P(2.6, 20), P(2.2, 22), P(0, 22.8), P(-2.2, 22)], 'k')
    elif hat == 'flour':
        c.ell(*P(0.2, 21.6), 3.2 * u, 1.9 * u, 'w')
    elif hat == 'hair':
        c.put(c.mell(*P(0.3, 19.6), 2.3 * u, 2.4 * u) & ~c.mpoly([P(0.6, 20.6), P(4, 20.6), P(4, 15), P(0.6, 15)]), 'k',
            0)
    elif hat == 'shawl':
        c.put(c.mell(*P(0.0, 19.4), 2.8 * u, 2.9 * u) & ~c.mell(*P(1.2, 19.2), 1.6 * u, 1.7 * u), 'k', 0)
    if braid:
        c.stroke([P(-1.8, 19.5), P(-2.8, 17), P(-2.6, 13)], max(1, 1.3 * u))
    if tool:
        c.stroke([P(*p) for p in tool], max(1, 1.0 * u))
    if arm:
        limb([(0, sh_y)] + list(arm), 2.8, top)
    return c

def halo(c, draw, r=1):
    """Draws a figure with a white rim, so that it keeps its outline on busy ground."""
    d = Canvas(c.w, c.h, c.ox, c.oy)
    draw(d)
    m = d.touch.copy()
    # white enclosed by the figure belongs to it
    g = m.copy()
    for _ in range(r):
        g = g | shifted(g, 1, 0) | shifted(g, -1, 0) | shifted(g, 0, 1) | shifted(g, 0, -1)
    if c.clip is not None:
        g &= c.clip; m &= c.clip
    c.a[g] = 0
    c.a[m] = d.a[m]
    c.touch |= g

def tiny(c, x, y, h=6, hat=True):
    """A far figure of 6 rows or so: a peg with a head."""
    for j in range(h - 2):
        c.px(x, y - 1 - j); c.px(x + 1, y - 1 - j)
    c.px(x, y - h + 1); c.px(x + 1, y - h + 1)
    if hat:
        c.line(x - 1, y - h, x + 2, y - h)
    if hat: c.px(x, y - h - 1)

def wheel(c, cx, cy, r, ang=0, n=10, spokes=True, fillw='w'):
    """A spoked wheel."""
    if fillw:
        c.ink(c.mell(cx, cy, r, r), 0)
    outer = c.mell(cx, cy, r, r)
    t = max(1.0, r * 0.13) if r >= 6 else 1.0
    if spokes:
        for i in range(n):
            a = math.radians(ang + 360 * i / n)
            if r > 13:
                c.stroke([(cx + math.cos(a) * r * .15, cy + math.sin(a) * r * .15),
                    (cx + math.cos(a) * (r - 1), cy + math.sin(a) * (r - 1))], 1.5)
            else:
                c.line(cx - .5, cy - .5, cx - .5 + math.cos(a) * (r - 1), cy - .5 + math.sin(a) * (r - 1))
    c.ink(outer & ~c.mell(cx, cy, r - t - .1, r - t - .1))
    if r > 13:
        c.ink(c.edge(c.mell(cx, cy, r - t - 2.2)))
    c.ell(cx, cy, max(1.4, r * .2), None, 'w' if r > 9 else 'k')
    if r > 12:
        c.px(cx - .5, cy - .5)

def wain(c, x, y, w, h, ang=0, lantern=True, hoops=5, tone='w', wheels=True):
    """A wain from the left: x left edge of the tilt, y ground row; heads left."""
    X = lambda t: x + t * w
    Y = lambda t: y - h + t * h
    big = w >= 50
    r1, r2 = 0.155 * w, 0.185 * w
    r1 = min(r1, h * .24); r2 = min(r2, h * .28)
    # axle tree and shadow
    if wheels:
        c.rect(X(.16), Y(.74), X(.86), Y(.78), 'k', 0)
    # body
    body = [(X(.07), Y(.50)), (X(.95), Y(.50)), (X(.91), Y(.73)), (X(.13), Y(.73))]
    m = c.poly(body, 'w', heavy=1 if big else 0)
    if h > 30:
        k = int((.23 * h) // 4) + 1
        for i in range(1, k):
            yy = Y(.50) + (.23 * h) * i / k
            c.line(X(.07 + .06 * i / k), yy, X(.95 - .04 * i / k), yy)
        for t in (.32, .52, .72):
            c.line(X(t), Y(.50), X(t), Y(.73))
        c.shade(m & (np.arange(c.h)[:, None] > Y(.66)), '25')
    elif h > 18:
        c.line(X(.09), Y(.62), X(.93), Y(.62))
    # tilt
    tilt = [(X(a), Y(b)) for a, b in points('.1,.5 .045,.3 0,.08 .02,.03 .12,.05 .3,.085 .5,.1 .7,.075 .88,.02 .965,0 '
        '1,.04 .965,.28 .93,.5')]
    m = c.poly(spline(tilt, n=6), tone, heavy=1 if big else 0)
    for i in range(hoops):
        t = (i + .5) / hoops
        a0 = X(.07 + .86 * t); top = X(.035 + .93 * t)
        pts = spline([(a0, Y(.5)), ((a0 + top) / 2 + (t - .5) * w * .02, Y(.27)), (top, Y(.045))], n=6)
        if w > 30:
            sh_ = c.mstroke([(px_ + 0.028 * w, py_) for px_, py_ in pts], 0.05 * w) & m
            c.shade(sh_, '25')
        clip = c.clip
        c.clip = m if clip is None else m & clip
        c.lines(pts, 1, None if w > 24 else (1, 0))
        c.clip = clip
    # shade under the roof edge, to the right
    if big:
        c.shade(m & c.mpoly([(X(.86), Y(0)), (X(1), Y(0)), (X(1), Y(.5)), (X(.9), Y(.5))]), '25')
    # wheels
    if wheels:
        n = 10 if w > 50 else 8 if w > 30 else 4
        wheel(c, X(.225), y - r1, r1, ang, n)
        wheel(c, X(.79), y - r2, r2, ang * r1 / r2 + 11, n)
    if lantern and w > 20:
        lx, ly = X(-.01), Y(.22)
        if w > 45:
            c.line(lx, ly - 4, lx, ly)
            c.rect(lx - 2, ly, lx + 3, ly + 7, 'w')
            c.line(lx - 1, ly - 1, lx + 1, ly - 1)
            c.px(lx, ly + 3); c.px(lx, ly + 4)
        else:
            c.art(int(lx) - 1, int(ly), ["###", "#.#", "###"])
    return c

# Oxen too small for drawn curves, set by hand: the widest that fits is taken.
SMALL_OXEN = [text.split() for text in ("""
__#___#_______________________
_##___##______________________
_##____##_____________________
__##__##____####______________
___#####__###..####____#####__
__##...####.......######...##_
__#.....##..................##
_##.#...##..................##
_#......#...................##
##.....##...................##
#....###...................#_#
#.##.#_#...................#_#
_####__##..................#_#
________##...............##_##
________#.##########....##__##
________#.#_#_______#_#..#____
________#.#_#_______#_#_#.#___
________###_##_____##_####____
""", """
_#__#_________________
_##_##________________
__####__####__________
__#..####..########___
_##...#...........##__
_#.#..#............##_
#.....#............#_#
#..####............#_#
####_##...........##_#
______#.########..#__#
______##_#____#_###___
______##_#____#__##___
______##_##___##_##___
""", """
_#_#__________
_####_###_____
_#..##..#####_
##.#........##
#..#........##
####.......#_#
____#.###.##__
____##_#_#_#__
____##_#_#_#__
""", """
#_#_______
###_#####_
#.##.....#
###......#
__#.###.#_
__#_#_#_#_
""")]

def small_ox(c, x, y, w, tone, f, yoke):
    rows = next((art for art in SMALL_OXEN if len(art[0]) <= w + 2), SMALL_OXEN[-1])
    wide, high = len(rows[0]), len(rows)
    coat = c.tone(tone)
    for j, row in enumerate(rows):
        for i, ch in enumerate(row if f < 0 else row[::-1]):
            px, py = int(x) + i, int(y) - high + j
            if ch != '_' and 0 <= px < c.w and 0 <= py < c.h: c.px(px, py, 1 if ch == '#' else coat[py, px])
    if yoke and wide > 20: c.line(x + wide * .36, y - high, x + wide * .36, y - high * .7)

def ox(c, x, y, w=36, h=22, tone='w', f=-1, phase=0, bell=False, shade='25', yoke=False, lying=False, tail=True,
        eye=True):
    """An ox facing left; x left edge, y ground row. phase 0 stands, 1..4 walk."""
    if w < 32 and not (phase or lying): return small_ox(c, x, y, w, tone, f, yoke)
    sx, sy = w / 70.0, h / 44.0
    s_ = (sx + sy) / 2
    def P(px_, py_):
        if f > 0:
            px_ = 70 - px_
        return (x + px_ * sx, y - h + py_ * sy)
    def L(pts, wd, w2=None, c_=1):
        c.stroke([P(*p) for p in pts], max(1.0, wd * s_), None if w2 is None else max(1.0, w2 * s_), c_)
    # the hoof's offset and lift: near fore, far fore, near hind, far hind
    W = {0: ((0, 0), (4, 0), (0, 0), (-4, 0)), 1: ((-6, 0), (6, 0), (5, 0), (-7, 0)),
        2: ((-1, 0), (1, 4), (0, 0), (-1, 4)), 3: ((6, 0), (-5, 0), (-6, 0), (5, 0)),
        4: ((1, 4), (-1, 0), (-1, 4), (0, 0))}[phase]
    dark = 'k' if sx < .62 else '75'
    def limb(pts, w1, w2, t):
        P_ = [P(*p) for p in pts]
        if w2 * s_ < 2.3 or t == 'k':
            c.stroke(P_, max(1.2, min(w1, 5.5) * s_ * .8), max(1.0, w2 * s_ * .8))
            return None
        return c.put(c.mstroke(P_, w1 * s_, w2 * s_), t)
    if not lying:
        for (bx, hind), (dx, up) in (((25, 0), W[1]), ((54, 1), W[3])):
            if hind:
                limb([(bx, 28), (bx + 2.5 + dx * .3, 35 - up * .4), (bx - 1 + dx * .8, 39 - up), (bx + dx, 43.2 - up)],
                    8, 4, dark)
            else:
                limb([(bx, 30), (bx + dx * .45 - (2 if up else 0), 37 - up * .5), (bx + dx, 43.2 - up)], 6, 4, dark)
    if tail:
        L([(65, 14), (68, 18), (68.4, 26), (68, 32)], 1.7 if sx > .5 else .6)
        L([(68.4, 26), (68.2, 36)], 2.2 if sx > .5 else 1, 4)
    # far horn
    L([(9, 8), (9, 4), (7, 1), (8, -1.5)], 2.2, 1)
    # body: withers, level back, hips, deep belly, brisket
    B = [(13, 15), (18, 9.5), (24, 9), (34, 12), (46, 12), (56, 9.5), (63, 11), (67, 16), (67, 24), (63, 29), (56, 30),
        (48, 33), (37, 35), (26, 34), (19, 35.5), (14, 32), (11, 25)]
    m = c.put(c.mpoly(spline([P(*p) for p in B], True)), tone, heavy=1 if sx > .8 else 0)
    if shade:
        low = c.mpoly(spline([P(*p) for p in [(12, 30), (24, 29.5), (40, 30), (54, 26), (61, 20), (63, 10), (72, 12),
            (70, 40), (10, 40)]], True))
        c.shade(m & low & ~c.edge(m), shade)
    if not lying:
        (dx, up), (dx2, up2) = W[0], W[2]
        def leg(pts, w1, w2, joint):
            mm = limb(pts, w1, w2, tone)
            # open the join to the body
            if mm is not None:
                top = c.mell(*P(*pts[0]), joint * sx, joint * sy * 1.1)
                tt = c.tone(tone); jm = top & c.inner(m)
                c.a[jm] = tt[jm]
        leg([(20, 29), (19.5 + dx * .4 - (3 if up else 0), 36.5 - up * .5), (19 + dx, 43.2 - up)], 9, 4.6, 5)
        leg([(60, 24), (63 + dx2 * .25, 34.5 - up2 * .4), (60.5 + dx2 * .8, 38.5 - up2), (60 + dx2, 43.2 - up2)], 13,
            4.4, 7)
        if sx > .8: c.curve([P(57, 12), P(54.5, 18), P(56, 26)])
        for bx, d, u_ in ((19, dx, up), (60, dx2, up2)):
            L([(bx + d - 2, 43 - u_), (bx + d + 1.8, 43 - u_)], 2.8)
    else:
        limb([(58, 33), (50, 39.5), (42, 42.5), (36, 42.5)], 10, 5, tone)
        limb([(22, 33), (12, 38.5), (10, 42), (18, 42.6)], 8, 4.6, tone)
        L([(37, 42.6), (34.5, 42.6)], 3); L([(18, 42.6), (20.5, 42.6)], 3)
    # head and neck
    N = [(22, 10), (16, 8.5), (12, 6.5), (7.5, 7), (5, 10.5), (3.4, 15), (.8, 21),
        (.6, 25.4), (3.6, 27.6), (7.6, 26.4), (10.4, 22.5), (12.5, 21), (12.6, 27),
        (14, 33), (20, 34), (25, 26)]
    m2 = c.mpoly(spline([P(*p) for p in N], True))
    t = c.tone(tone)
    c.put(m2, tone, heavy=0)
    inner = c.mpoly([P(18, 11.5), P(27, 10.5), P(29, 32.5), P(19, 33.5), P(16, 31)])
    z = m2 & m & inner & ~c.edge(m)
    c.a[z] = t[z]
    if shade and sx > .5:
        c.shade(m2 & c.mpoly(spline([P(*p) for p in [(10, 23), (13.4, 19), (18, 24), (19, 33),
            (13, 32)]], True)) & ~c.edge(m2), shade)
    if sx > .42 and eye:
        ex, ey = P(6.4, 14)
        if sx > .8:
            c.rect(ex - 1, ey - 1, ex + 1, ey + 1, 'k', 0)
            c.curve([P(4.6, 12), P(6.6, 11.4), P(8.6, 12.6)])
            c.px(*P(2.4, 23.6)); c.line(*P(2.6, 26), *P(6, 25))
            c.curve([P(1.4, 20.6), P(4, 20), P(7, 21.6)])
        else:
            c.px(ex, ey)
    # near horn, ear
    L([(10, 8.4), (6.5, 6.6), (2.5, 5), (1, 1.5), (2.4, -2)], 3.0, 1)
    if sx > .5:
        c.poly(spline([P(*p) for p in [(12, 9.4), (16.5, 10), (18.4, 13), (14, 13.6)]], True), tone)
    else: L([(12.5, 10), (16, 12.5)], 3.0, 1.5)
    if yoke:
        L([(19, 5), (19.6, 13)], 4.2)
        L([(18.4, 12), (16, 24), (20, 34.5)], 1)
    if bell:
        bx, by = P(13.5, 30)
        c.poly(at(bx, by, '-1.4,-1 1.6,-1 2.8,3.6 -2.4,3.6'), 'k')
    return c

def bird(c, x, y, k=0, s=3):
    """A far bird: two strokes."""
    if k % 3 == 0:
        c.lines([(x - s, y - 1), (x - 1, y - s + 1), (x, y), (x + 1, y - s + 1), (x + s, y - 1)])
    elif k % 3 == 1:
        c.lines([(x - s, y - s + 1), (x, y), (x + s, y - s + 1)])
    else:
        c.lines([(x - s, y + 1), (x - 1, y), (x, y), (x + s - 1, y - 1)])

def tent(c, x, y, w, h, door=0, tone='w'):
    """A round felt tent; x centre, y ground row."""
    wall = h * .45
    m = c.poly(spline([(x - w / 2, y), (x - w / 2 + w * .01, y - wall)], n=2)
        + spline([(x - w / 2, y - wall), (x - w * .3, y - h * .84), (x, y - h), (x + w * .3, y - h * .84),
        (x + w / 2, y - wall)], n=6) + [(x + w / 2, y)], tone, heavy=1 if h > 18 else 0)
    c.lines([(x - w / 2, y - wall), (x + w / 2 - 1, y - wall)])
    if h > 14:
        c.lines([(x - w / 2, y - wall * .5), (x + w / 2 - 1, y - wall * .5)])
    c.shade(m & c.mrect(x + w * .18, 0, c.w, c.h), '/' if h > 12 else '25')
    c.rect(x - w * .08, y - h - 1, x + w * .08 + 1, y - h + max(1, h * .08), 'k', 0)
    if h > 9:
        d = w * .1
        c.rect(x + door - d, y - wall * .9, x + door + d + 1, y, 'k', 0)
    return m
