"""The raft run: map, marker, raft, rock from near to far, and the right bank in eleven phases."""
import math
import random

import numpy as np

from country import tree
from ink import at, Canvas, maskof, spline, Sprite

def raft(k):
    """Seen from behind; k 0 left, 1 straight, 2 right. The bands are those of the rules."""
    c = Sprite(62, 44)
    b0 = ((21, 41), (16, 36), (26, 46))[k]; b1 = ((12, 40), (17, 45), (23, 49))[k]
    b2 = ((8, 48), (11, 50), (13, 53))[k]; b3 = ((6, 58), (5, 57), (5, 57))[k]
    # steersman above the tilt, arms on the sweep
    x = (b0[0] + b0[1]) / 2; lean = (k - 1)
    c.band([(x - 2, 7), (x - 6, 5), (b0[0] + 1.5, 6.5)], 2.6, tone='w')
    c.band([(x + 2, 7), (x + 6, 5), (b0[1] - 1.5, 6.5)], 2.6, tone='w')
    c.poly([(x - 4, 10), (x - 4, 5), (x + 4, 5), (x + 4, 10)], 'k')
    c.ell(x, 3.6, 2.6, 2.6, 'w'); c.stroke([(x - 4.5, 2.2), (x + 4.5, 2.2)], 1.4)
    c.poly([(x - 2.4, 2), (x - 2, 0), (x + 2, 0), (x + 2.4, 2)], 'k')
    # tilt from behind: a round opening, hoop over hoop
    cx1, cx2 = (b1[0] + b1[1]) / 2, (b2[0] + b2[1]) / 2
    top = spline([(b2[0] + 2, 26), (b2[0] + 1, 18), (b1[0], 11), (b1[0] + 5, 8.4), (b1[1] - 5, 8.4), (b1[1], 11),
        (b2[1] - 1, 18), (b2[1] - 2, 26)], n=6)
    m = c.poly(top, 'w', heavy=1)
    inn = spline([(b2[0] + 8, 26), (b2[0] + 7, 19), (cx1 - 7, 13.5), (cx1 + 6, 13.5), (b2[1] - 8, 19), (b2[1] - 9, 26)],
        n=6)
    c.poly(inn, '75'); c.shade(m & c.mpoly([(b2[1] - 8, 10), (b2[1], 12), (b2[1], 27), (b2[1] - 8, 27)]), '25')
    c.lines([(cx1 - 6, 14), (cx1 - 2, 22), (cx1 - 5, 26)], 0)
    # tailboard, wheels on the sides
    c.rect(b2[0] + 3, 25, b2[1] - 3, 31, 'w', heavy=1); c.line(b2[0] + 3, 28, b2[1] - 5, 28)
    for x0, x1 in ((b2[0], b2[0] + 5), (b2[1] - 5, b2[1])):
        m = c.rect(x0, 20, x1, 33, 'w'); c.line((x0 + x1) // 2, 21, (x0 + x1) // 2, 32)
    # ropes and logs
    n = 7; w = (b3[1] - b3[0]) / n
    for i in range(n):
        x = b3[0] + w * (i + .5); y = 37 + (.4 if i % 2 else 0)
        c.poly([(x - w / 2 + .6 + (3 - i) * .5, 31), (x + w / 2 - .6 + (3 - i) * .5, 31), (x + w / 2, y),
            (x - w / 2, y)], 'w')
        c.ell(x, y + 1.5, w / 2 + .2, w / 2 + .6, 'w', heavy=0); c.ell(x, y + 1.5, 1.4, 1.4, 'k')
    c.lines([(b3[0] + 1, 33), (b3[1] - 2, 33)])
    # wake
    c.lines([(b3[0] + 1, 43), (b3[0] + 8, 42), (b3[1] - 9, 42), (b3[1] - 2, 43)])
    return c

def rock(k):
    """5 near ... 9; shrinks by a sixth each; foot on row 31, middle on column 32. 10 is the fleck."""
    c = Sprite(65, 32); s = 1 - (k - 5) / 6
    if k == 10:
        c.poly('27,29 28,27.6 37,27.6 38,29 37,31.6 28,31.6', 'w', 0)
        c.art(27, 27, ["__#######__", "_#.......#_", "#..#####..#", "_#.#####.#_", "__#######__"])
        return c
    X = lambda x: 32.5 + (x - 32.5) * s
    Y = lambda y: 32 - (32 - y) * s
    # foam skirt, outlined, so that it belongs to the mask
    pts = []; n = 20; r = random.Random(5)
    for i in range(n):
        a = 2 * math.pi * i / n; q = 1 + (.06 if i % 2 else -.06)
        pts.append((X(32.5 + math.cos(a) * 31.6 * q), Y(26 + math.sin(a) * 6 * q)))
    sk = c.mpoly(spline(pts, True, 4)) | c.mrect(*(int(round(v)) for v in (X(2), Y(22), X(63), Y(31))))
    yy, xx = np.indices(sk.shape)
    sk &= ~((xx < X(4)) & (yy < Y(23))) & ~((xx > X(61)) & (yy < Y(23))) & ~((xx < X(4))
        & (yy > Y(30))) & ~((xx > X(61)) & (yy > Y(30)))
    c.put(sk, 'w')
    body = [(X(14), Y(28)), (X(18), Y(20)), (X(21), Y(10)), (X(27), Y(5)), (X(36), Y(5)), (X(44), Y(8)),
        (X(48.5), Y(14)), (X(50), Y(22)), (X(55), Y(28)), (X(44), Y(29.4)), (X(26), Y(29.4))]
    m = c.poly(body, 'w', heavy=1 if s > .6 else 0)
    c.shade(m & c.mpoly([(X(34), Y(4)), (X(50), Y(8)), (X(56), Y(30)), (X(34), Y(30)), (X(37), Y(16))]), '75')
    c.shade(m & c.mpoly([(X(27), Y(4)), (X(35), Y(4)), (X(38), Y(16)), (X(34), Y(30)), (X(26), Y(30)), (X(29), Y(16))]),
        '/')
    if s > .5:
        c.lines([(X(24), Y(9)), (X(27), Y(16)), (X(24), Y(22))])
        c.lines([(X(35), Y(5)), (X(38), Y(16)), (X(34), Y(28))])
    c.ink(c.edge(m))
    # foam ticks
    for a, b in (((6, 25), (12, 26)), ((8, 28), (16, 29.4)), ((56, 25), (60, 26)), ((50, 30), (58, 28)),
            ((30, 30.4), (38, 30.4))):
        if s > .45: c.line(X(a[0]), Y(a[1]), X(b[0]), Y(b[1]))
    return c

def bank(p):
    """The right bank, phase p of 11; things on it slide down and outward by one step of the pattern in 11 phases."""
    c = Canvas(87, 304, 327, 9); K, N = 2.6, 3
    def f(u):
        return (K ** u - 1) / (K ** N - 1)
    # foot of the cliff at depth q
    E = lambda q: 3 + 40 * q
    Yq = lambda q: 27 + 277 * q
    SC = lambda q: .16 + .84 * q; yy, xx = np.indices((304, 87)); q = np.clip((yy - 27) / 277, 0, 1.3)
    e = 3 + 40 * q; sc = .16 + .84 * q; c.a[:] = 0; water = (yy >= 27) & (xx < e); gray = c.tone('50').astype(bool)
    c.a[water & gray] = 1; r = random.Random(31); w1 = e + 4 + 11 * sc; w2 = w1 + 5 + 17 * sc
    land = (yy >= 27) & (xx >= e); c.a[land] = 0; wet = land & (xx < w1); face = land & (xx >= w1) & (xx < w2)
    c.shade(wet, '75'); c.shade(face, '/')
    def us(off, n=1):
        """Depths of a thing that stands once (or n times) a step."""
        out = []
        for i in range(-1, N + 1):
            for k in range(n):
                u = i + (k + off) / n + p / 11
                if -.02 < u < N + .55: out.append((max(0.0, u), (i * n + k)))
        return sorted(out)
    # joints of the rock
    for u, k in us(.1, 6):
        t = f(u); y = Yq(t); s = SC(t); x0 = E(t); j = (k % 6); a = x0 + 4 + 11 * s; b = a + 5 + 17 * s
        c.lines([(x0, y), (x0 + 5 * s, y - 3 * s), (a, y - 5 * s)], 0)
        c.lines([(a, y - 5 * s), (a + (b - a) * .5, y - (12 + j * 2) * s), (b, y - 16 * s)])
        c.lines([(b, y - 16 * s), (b + (9 + 4 * (j % 3)) * s, y - 20 * s)]); c.px(b + 3 * s, y - 10 * s)
    c.ink(land & (xx >= w1) & (xx < w1 + 1)); c.ink(land & (xx >= w2) & (xx < w2 + 1))
    # ledges: white tops
    for u, k in us(.35, 2):
        t = f(u); y = Yq(t); s = SC(t); x0 = E(t) + 4 + 11 * s; c.poly(at(x0, y, '-3,0 9,-5 16,-3 10,5 0,6', s), 'w')
        c.shade(c.mpoly(at(x0, y, '-3,2 10,5 8,10 -2,9', s)) & land, '75')
    # grass on the rim
    for u, k in us(.22, 4):
        t = f(u); y = Yq(t); s = SC(t); x = E(t) + 14 + 34 * s; c.tuft(x, y, 3, max(2, 7 * s), 1)
    # waterfall: white down the face, foam at its foot
    for u, k in us(.78):
        t = f(u); y = Yq(t); s = SC(t); x0 = E(t); a = x0 + 9 + 29 * s
        P = [(a + 8 * s, y - 22 * s), (a - 2 * s, y - 18 * s), (x0 + 4 + 8 * s, y - 6 * s), (x0 - 1, y + 3 * s),
            (x0 + 3 * s, y + 9 * s), (x0 + 6 + 11 * s, y + 3 * s), (a + 6 * s, y - 9 * s)]
        m = c.put(c.mpoly(P) & land, 'w')
        for o in (.3, .6):
            c.lines([(a + 4 * s - 4 * s * o, y - 19 * s + 6 * s * o), (x0 + 6 + 8 * s, y - 4 * s + 6 * s * o),
                (x0 + 2 * s, y + 2 * s + 5 * s * o)], dash=(1, 1, 1, 0))
        for d in range(3): c.ell(x0 + 1 * s - d, y + (2 + 4 * d) * s, max(1, 4 * s), max(1, 2.4 * s), 'w')
    # pine and rowan, far ones first
    T = [(u, 0) for u, k in us(.1)] + [(u, 1) for u, k in us(.52)]
    for u, kind in sorted(T):
        t = f(u); y = Yq(t); s = SC(t); x = E(t) + 12 + 27 * s; h = 62 * s; d = Canvas(87, 304)
        if h < 7:
            d.poly(at(x, y, '-.25,0 0,-1 .25,0', h), 'k', 0)
        else:
            tree(d, x, y, h, 'fir' if kind == 0 else 'rowan', 3)
        mm = maskof(d.a); mm[:27] &= False; c.a[mm] = d.a[mm]
    # sky stays white; the foot of the cliff is a black line with foam ticks
    c.a[:27] = 0; foot = (yy >= 27) & (xx >= e - .5) & (xx < e + .5); c.ink(foot)
    c.ink((yy >= 27) & (xx >= e - 1.5) & (xx < e - .5), 0)
    for u, k in us(.05, 9):
        t = f(u); y = Yq(t); s = SC(t); x = E(t)
        for d in range(int(1 + 5 * s)):
            c.px(x - 2 - d, y + d * .5, 0)
            if s > .5: c.px(x - 2 - d, y + d * .5 + 1, 0)
    c.a[26] = 0; c.a[27, 2:] = 1
    return c

def raft_map():
    c = Canvas(87, 304, 416, 8); r = random.Random(8)
    P = [(0, 282, 48), (18, 264, 51), (46, 236, 50), (114, 168, 59.9), (115, 167, 59), (153, 129, 46.3),
        (191, 91, 42.1), (192, 90, 41), (220, 62, 30.4), (268, 14, 30)]
    mid = [(51, 310)] + [(h + 3.5, v + 3.5) for _, v, h in P] + [(33.5, -4)]
    xs = lambda y: np.interp(-y, [-b for a, b in mid], [a for a, b in mid])
    # the vale at the head, hills along the gorge
    yy, xx = np.indices((304, 87)); X = np.array([xs(y) for y in range(304)])[:, None]; d = np.abs(xx - X)
    riv = d <= 4.5; c.put(riv, 'w', 0)
    # gorge: hachures on both sides, longer in the middle
    for y in range(36, 286, 3):
        k = 5 + 5 * math.sin((y - 30) / 260 * math.pi) + (y % 9 == 0) * 2; x = xs(y)
        c.line(x - 6, y, x - 6 - k, y - 1); c.line(x + 6, y, x + 6 + k, y + 1)
    c.ink((d > 4) & (d <= 5))
    for y in range(20, 290, 14): None
    # peaks and firs off the river
    spots = [(12, 70, 11), (72, 54, 12), (14, 118, 13), (76, 108, 10), (18, 166, 12), (10, 206, 9), (24, 222, 11),
        (80, 214, 9), (16, 262, 10), (76, 262, 11), (70, 80, 9), (82, 150, 7), (82, 236, 6), (20, 96, 8), (28, 190, 8)]
    for x, y, h in spots:
        if abs(x - xs(y)) < h + 10: continue
        c.lines(at(x, y, '-.7,0 -.2,-.6 0,-1 .25,-.5 .7,0', h))
        c.hatch(c.mpoly(at(x, y, '0,-1 .25,-.5 .66,0 .1,0 .12,-.5', h)), 2, 1)
    for x, y in ((30, 142), (8, 140), (80, 176), (12, 236), (78, 196), (30, 256), (66, 286), (14, 288), (80, 132),
            (60, 58), (8, 44)):
        if abs(x - xs(y)) > 16:
            c.poly(at(x, y, '-3,0 0,-9 3,0'), 'k', 0); c.line(x, y, x, y + 1)
    # Yonderley: steps and a gate; the landing
    for k, (y, a, b) in enumerate(((24, 42, 80), (18, 46, 84), (12, 50, 87), (26, 2, 24), (20, 2, 20))):
        c.lines([(a, y), (b, y), (b, y + 3)])
        for x in range(a + 2, b - 1, 5): c.px(x, y + 2)
    c.art(44, 2, ["#_#_#", "#####", "#.#.#", "#.#.#", "#####"])
    c.poly('58,297 66,289 74,297', 'k'); c.rect(60, 297, 72, 304, 'w'); c.rect(64, 299, 68, 304, 'k', 0)
    c.lines('30,302 44,298'); c.lines('30,299 44,295'); c.lines('34,297 38,304'); c.ink((d > 4) & (d <= 5))
    c.a[:, 0] = 1
    return c

def marker():
    c = Canvas(7, 7); c.art(0, 0, ["_.....__"[:7], ".#####.", ".#####.", ".#####.", ".#####.", ".#####.", "_....._"])
    c.a[:] = 0
    for y, rw in enumerate(["       ", "  ###  ", " ##### ", " ##### ", " ##### ", "  ###  ", "       "]):
        for x, ch in enumerate(rw): c.a[y, x] = ch == '#'
    return c

def pictures():
    out = {'map': raft_map(), 'marker': marker(), 'raft-left': raft(0), 'raft-straight': raft(1), 'raft-right': raft(2)}
    out |= {f'rock-{k + 1}': rock(k + 5) for k in range(6)}; out |= {f'bank-{k + 1}': bank(k) for k in range(11)}
    return {'Raft/' + n: c for n, c in out.items()}
