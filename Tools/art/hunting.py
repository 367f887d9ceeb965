"""The hunting ground: horizons, the near bank with the hunter, bushes, trees, rocks."""
import math
import random

import numpy as np

from country import bush, crown, dark_grass
from ink import at, Canvas, maskof, shifted, spline, Sprite

def ground_():
    F = {}; r = random.Random(12)
    # 0 plain: two low swells, one far herd
    c = Canvas(494, 25, 9, 34); a = spline('-4,18 70,14 150,10 230,13 320,17 410,12 500,9', n=10)
    m = c.mpoly(a + [(500, 26), (-4, 26)]); c.put(m, '25', 0); c.lines(a)
    b = spline('-4,19 90,21 190,18 280,15 360,19 440,21 500,19', n=10)
    m = c.mpoly(b + [(500, 26), (-4, 26)]); c.put(m, 'w', 0); c.lines(b)
    for i in range(14):
        x = 250 + i * 4.3 + r.uniform(-1, 1); y = 14 - (i % 3 == 0)
        c.rect(x, y - 2, x + 3, y, 'k', 0); c.px(x + 3, y - 2)
    for x in (18, 61, 77, 140, 171, 233, 305, 322, 377, 428, 441, 480): c.tuft(x, 24 - x % 2, 3, 2, 0)
    c.curve('40,5 52,2 64,4 76,2 92,5'); c.curve('380,4 394,1 410,4 428,3'); F[0] = c
    # 1 hills: peaks with white caps
    c = Canvas(494, 25, 9, 34)
    pk = [(-10, 16), (14, 6), (34, 14), (60, 3), (86, 15), (116, 8), (140, 17), (170, 5), (204, 18), (240, 11),
        (262, 16), (300, 2), (336, 16), (360, 9), (386, 17), (420, 4), (452, 15), (478, 8), (504, 14)]
    m = c.mpoly(pk + [(504, 26), (-10, 26)]); c.put(m, '25', 0)
    for i in range(1, len(pk) - 1, 2):
        x, y = pk[i]; c.put(m & c.mpoly(at(x, y, '-12,7 0,-1 12,7 6,5 2,8 -3,5 -7,8')), 'w', 0)
        c.shade(m & c.mpoly(at(x, y, '0,0 22,15 4,15 2,7')), '/')
    c.lines(pk); b = spline('-4,20 60,17 130,21 210,18 300,21 390,17 500,20', n=10)
    m = c.mpoly(b + [(500, 26), (-4, 26)]); c.put(m, 'w', 0); c.lines(b)
    for x in range(10, 490, 23):
        xx = x + r.uniform(-6, 6); c.poly([(xx - 2, 21), (xx, 16), (xx + 2, 21)], 'k', 0)
    F[1] = c
    # 2 the near bank with hat, shoulders, barrel
    c = Canvas(494, 88, 9, 225)
    edge_ = [(x, y) for x, y in spline('-6,30 60,24 130,31 186,27 206,40 290,40 308,27 370,30 430,24 500,29', n=10)]
    dark_grass(c, edge_, ((14, 14, 16), (30, 19, 20), (48, 25, 24), (70, 30, 27)), r, -4, 500, (8, 20),
        (14, 52, 87, 121, 158, 334, 372, 398, 441, 476), keep=lambda x, y: 196 < x < 298)
    # hunter
    body = spline('176,90 182,66 200,52 226,45 247,43 268,45 294,52 312,66 318,90', n=8); m = c.poly(body, 'w', heavy=1)
    c.shade(m & c.mpoly('262,44 320,60 320,90 274,90') & ~c.edge(m), '/')
    c.lines('196,90 204,66'); c.lines('300,90 290,66'); c.line(247, 52, 247, 90)
    # gun barrel to (247, 3) of the frame: muzzle at window (256, 228)
    c.poly('244.5,3 249.5,3 252,52 242,52', 'w', heavy=0); c.line(247, 5, 247, 48); c.rect(246, 1, 249, 4, 'k', 0)
    # neck, hat
    c.rect(236, 40, 260, 52, '50')
    m = c.put(c.mell(247, 36, 36, 9), 'w', heavy=1)
    c.shade(m & c.mpoly('250,26 290,26 290,50 240,50 252,42') & ~c.edge(m), '50')
    m = c.poly(spline('229,36 230,25 236,19 247,21 258,19 264,25 265,36', n=6), 'w', heavy=1)
    c.shade(m & c.mpoly('254,18 270,18 270,40 256,40') & ~c.edge(m), '/')
    c.put(c.mpoly(spline('228,31 247,34 266,31', n=6) + spline('266,36 247,40 228,36', n=6)), 'k', 0)
    # barrel before the hat's brim
    F[2] = c
    # 3 ball
    c = Sprite(3, 3); c.a[:] = [[0, 1, 0], [1, 1, 1], [0, 1, 0]]; F[3] = c
    def B(w, h, seed, snow=False):
        c = Sprite(w, h); m = bush(c, w / 2, h, w - 1, h - 1, seed)
        if snow:
            inner = c.inner(m); cap = m & ~shifted(m, 0, int(h * .42)); lo = inner & shifted(m, 0, int(h * .42))
            c.ink(inner & cap, 0); c.put(lo, '50', 0)
            c.ink(lo & ~shifted(lo, 0, 1)); c.shade(inner & cap & (np.indices(m.shape)[1] > w * .68), 'mist')
        c.ink(c.edge(m))
        return c
    F[4] = B(40, 24, 2); F[5] = B(30, 20, 7); F[6] = F[4]
    F[12] = B(40, 24, 2, True); F[13] = B(30, 20, 7, True); F[14] = F[12]; c = Sprite(44, 60)
    m = crown(c, 22, 20, 21.5, 19.5, random.Random(3)); c.ink(c.edge(m))
    tr = c.poly(spline('14,60 18,54 19,44 14,34 11,30', n=4) + [(15, 31), (20, 37)] + [(22, 28), (25, 37)]
        + [(30, 30), (33, 30)] + spline('33,30 27,43 27,54 31,60', n=4), 'w')
    c.shade(c.inner(tr) & c.mpoly('24,30 34,28 28,44 32,60 24,60'), '50'); F[7] = c; F[8] = c
    # 15 bare broad tree
    c = Sprite(44, 60)
    c.poly(spline('17,60 20,48 19,34 20,26', n=4) + spline('25,26 25,34 24,48 28,60', n=4), 'w', heavy=1)
    c.shade(c.mpoly('23,26 25,34 24,48 28,60 24,60'), '50')
    def branch(x, y, a, L, w, d):
        ex, ey = x + math.cos(a) * L, y + math.sin(a) * L; c.stroke([(x, y), (ex, ey)], w, max(1, w * .6))
        if d:
            for q in (-.5, .42): branch(ex, ey, a + q + r.uniform(-.15, .15), L * .72, max(1, w * .6), d - 1)
    for a, L in ((-2.5, 13), (-1.95, 14), (-1.3, 14), (-.7, 13)): branch(22, 31, a, L * .8, 2.6, 3)
    # a closed outline so that the mask is the tree itself: black strokes only
    F[15] = c; F[16] = c
    def conifer(kind, w, h, snow, seed):
        c = Sprite(w, h)
        if kind == 'fir':
            n = 6; c.rect(w / 2 - 2, h - 7, w / 2 + 2, h, 'k', 0)
            for i in range(n - 1, -1, -1):
                y1 = 4 + (h - 9) * (i + 1) / n; y0 = max(0, y1 - (h / n) * 1.7)
                ww = (w / 2 - 1) * (.28 + .72 * (i + 1) / n)
                pts = [(w / 2, y0)] + spline([(w / 2, y0), (w / 2 + ww * .55, y1 - 3.4), (w / 2 + ww, y1)],
                    n=4) + [(w / 2 + ww * .62, y1 - 1), (w / 2 + ww * .3, y1 + 1.5), (w / 2, y1),
                    (w / 2 - ww * .3, y1 + 1.5), (w / 2 - ww * .62, y1 - 1)] + spline([(w / 2 - ww, y1),
                    (w / 2 - ww * .55, y1 - 3.4), (w / 2, y0)], n=4)
                m = c.mpoly(pts); c.put(m, 'w'); inner = c.inner(m)
                if snow:
                    c.shade(inner & shifted(~shifted(m, 0, -3, True), 0, 0), '75')
                    c.shade(inner & c.mpoly([(w / 2 + 1, y0), (w / 2 + ww, y1), (w / 2 + 1, y1 + 2)]), '25')
                else:
                    c.shade(inner & c.mpoly([(w / 2, y0), (w / 2 + ww + 2, y1 + 2), (w / 2 + 1, y1 + 3)]), '75')
                    c.shade(inner & c.mpoly([(w / 2, y0), (w / 2 - ww - 2, y1 + 2), (w / 2, y1 + 3)]), '25')
                    c.shade(inner & ~shifted(m, 0, -2, True), '75')
        elif kind == 'larch':
            c.stroke([(w / 2, h), (w / 2, 1)], 2.6, 1); k = 10
            for i in range(k):
                t = (i + 1) / k; yy = 3 + (h - 16) * t; ww = (w / 2 - 2) * (.25 + .75 * t ** .8)
                for s_ in (-1, 1):
                    p = spline([(w / 2, yy - 2), (w / 2 + s_ * ww * .55, yy + 1), (w / 2 + s_ * ww, yy - 1 + 2 * t)])
                    c.lines(p)
                    for q in p[3::3]:
                        if snow: None
                        else: c.line(q[0], q[1], q[0] - s_ * 1, q[1] + 3)
                    if snow: c.lines([(x, y + 1) for x, y in p[4:]])
        else:
            # rock with a fir
            d = conifer('fir', 24, 44, snow, seed); mm = maskof(d.a); c.blit(d, w - 26, 0, mm)
            m = c.poly([(1, h), (3, h - 14), (9, h - 24), (17, h - 27), (25, h - 18), (33, h - 13), (37, h - 5),
                (38, h)], 'w', heavy=1)
            c.shade(c.inner(m) & c.mpoly([(17, h - 27), (26, h - 18), (34, h - 12), (40, h), (22, h), (20, h - 14)]),
                '/')
            c.lines([(9, h - 23), (12, h - 12), (9, h - 4)]); c.lines([(18, h - 26), (20, h - 14), (24, h)])
            if snow:
                s_ = c.mpoly([(3, h - 14), (9, h - 24), (17, h - 27), (25, h - 18), (31, h - 14), (24, h - 13),
                    (20, h - 17), (15, h - 12), (10, h - 16), (6, h - 11)]) & m
                c.put(s_, 'w', 0)
                c.lines([(31, h - 14), (24, h - 13), (20, h - 17), (15, h - 12), (10, h - 16), (6, h - 11)])
                c.ink(c.edge(m))
            else:
                c.tuft(6, h - 1, 3, 4, -1); c.tuft(33, h - 1, 3, 3, 1)
        return c
    F[9] = conifer('fir', 30, 56, False, 1); F[10] = conifer('larch', 32, 56, False, 2)
    F[11] = conifer('rock', 44, 48, False, 3)
    F[17] = conifer('fir', 30, 56, True, 1); F[18] = conifer('larch', 32, 56, True, 2)
    F[19] = conifer('rock', 44, 48, True, 3)
    return F


NAMES = ('plain', 'hills', 'near-bank', 'ball', 'bush-1', 'bush-2', 'bush-3', 'tree', 'tree-2', 'fir', 'larch', 'rock',
    'snow-bush-1', 'snow-bush-2', 'snow-bush-3', 'bare-tree', 'bare-tree-2', 'snow-fir', 'snow-larch', 'snow-rock')

def pictures():
    F = ground_()
    return {'Hunt/' + n: F[k] for k, n in enumerate(NAMES)}
