"""The partings of the road, from the driver's seat over the backs of the leading pair."""
import random

import numpy as np

from country import crown, tree
from figures import bird
from ink import at, Canvas, shifted, spline

def team(c, y0, cx, k=.62):
    """The backs of the leading pair, seen from the seat, with yoke and horns; k is the scale."""
    d = Canvas(c.w, c.h, c.ox, c.oy)
    for s_, tone in ((-1, 'w'), (1, '50')):
        x = cx + s_ * 29 * k
        Q = lambda a, b: (x + a * k, y0 + b * k)
        d.poly(spline([Q(-24, 14), Q(-22, -16), Q(-11, -30), Q(0, -33), Q(11, -30), Q(22, -16), Q(24, 14)], n=6), tone)
        d.line(*Q(0, -30), *Q(0, 10))
    for s_, tone in ((-1, 'w'), (1, '50')):
        x = cx + s_ * 29 * k
        Q = lambda a, b: (x + a * k, y0 + b * k)
        for q in (-1, 1):
            d.stroke(spline([Q(q * 6, -46), Q(q * 15, -47), Q(q * 20, -54), Q(q * 17, -62)]), 2.6, 1)
            d.poly(spline([Q(q * 7, -46), Q(q * 16, -44), Q(q * 15, -39), Q(q * 8, -41)], True), tone)
        d.poly(spline([Q(-9, -34), Q(-10, -45), Q(-6, -52), Q(6, -52), Q(10, -45), Q(9, -34)], n=5), tone)
        d.line(*Q(0, -49), *Q(0, -40))
    d.band(spline(at(cx, y0, '-54,-31 -29,-37 0,-33 29,-37 54,-31', k)), 4, tone='w'); m = d.touch
    g = m | shifted(m, 1, 0) | shifted(m, -1, 0) | shifted(m, 0, -1); c.a[g] = 0; c.a[m] = d.a[m]

def fork(place):
    """The two roads of a parting, from the driver's seat: 48 rows, which is what the panel leaves."""
    W_, H_ = 240, 48; c = Canvas(W_, H_, 75, 57); r = random.Random(6270); yy, xx = np.indices((H_, W_))
    if place == 'split-ash':
        hills = spline('-4,15 20,8 46,13 72,7 98,14 140,14 168,7 200,14 244,9', n=6)
        m = c.mpoly(hills + [(244, 24), (-4, 24)]); c.put(m, '25', 0); c.lines(hills)
        g = spline('-4,20 60,18 120,20 180,18 244,20', n=6)
        m = c.mpoly(g + [(244, 60), (-4, 60)]); c.put(m, 'w', 0); c.lines(g)
        c.put(c.mpoly(spline('96,60 80,40 56,28 40,22 36,18', n=6) + spline('41,18 50,22 74,27 108,38 118,60', n=6)),
            'w')
        c.put(c.mpoly(spline('122,60 134,38 170,27 206,22 226,21', n=6)
            + spline('232,22 214,24 186,30 160,42 146,60', n=6)), 'w')
        for x, y in ((12, 30), (24, 38), (54, 42), (10, 44), (68, 34), (100, 28), (150, 30), (184, 40), (206, 33),
                (228, 42), (222, 30), (170, 45)):
            c.tuft(x, y, 3, 3, 0)
        c.poly(spline('32,18 34,10 35,4', n=4) + spline('42,4 43,10 45,18', n=4), 'w', heavy=1)
        c.poly('33,5 38.5,-1 44,5', 'k'); c.rect(37, 8, 40, 12, 'k', 0)
        for x in (24, 28, 50, 54): c.ell(x, 17.4, 1.8, 2.2, 'w')
        c.put(c.mpoly('222,18 244,17 244,23 226,23'), 'w'); c.lines('228,19 240,19', dash=(1, 1, 0))
        c.lines('230,21 240,21', dash=(1, 1, 0)); c.rect(224, 10, 226, 22, 'k', 0); c.px(224, 13, 0); c.px(225, 13, 0)
        c.px(224, 17, 0); c.px(225, 17, 0)
        # the split tree between the ways
        for s_ in (-1, 1):
            c.band(spline([(120, 36), (120 + s_ * 3, 26), (120 + s_ * 10, 16)]), 4.4, 2.4, 'w')
            crown(c, 120 + s_ * 15, 9, 15, 9, r)
        c.poly('118,36 120,24 122,36', 'k')
    elif place == 'jackdaw-saddle':
        for P, q in (([(-4, 30), (10, 14), (26, 3), (36, 12), (52, 20), (70, 28)], (26, 3)),
                ([(244, 28), (226, 12), (212, 1), (198, 12), (182, 20), (160, 29)], (212, 1))):
            m = c.poly(P + [(P[-1][0], 40), (P[0][0], 40)], 'w')
            c.shade(c.mpoly([q, (q[0] + 12, q[1] + 10), (q[0] + 32, q[1] + 30), (q[0] + 4, q[1] + 30),
                (q[0] + 5, q[1] + 12)]) & c.inner(m), '/')
            c.lines([(q[0] - 10, q[1] + 9), (q[0] - 4, q[1] + 6), (q[0] - 1, q[1] + 10), (q[0] + 4, q[1] + 7),
                (q[0] + 9, q[1] + 11)])
        g = spline('-4,29 60,27 120,25 180,27 244,29', n=6)
        m = c.mpoly(g + [(244, 60), (-4, 60)]); c.put(m, 'w', 0); c.lines(g); c.shade(m & (yy > 30), 'mist')
        c.put(c.mpoly(spline('92,60 74,42 46,33 30,29', n=6) + spline('37,28 58,32 98,40 112,60', n=6)), 'w')
        c.rect(14, 20, 28, 29, 'w', heavy=0); c.poly('10,21 17,13 25,13 32,21', 'w', heavy=1)
        c.rect(18, 23, 21, 26, 'k', 0); c.rect(23, 24, 26, 29, 'k', 0); tree(c, 40, 29, 13, 'rowan', 4)
        tree(c, 6, 29, 12, 'rowan', 6)
        # the Stair, step by step down to the right
        x, y = 140, 44
        for k in range(9):
            w = 22 - k * 1.7; c.rect(x, y, x + w, y + 4, 'w'); c.line(x, y + 3, x + w - 1, y + 3)
            x += 11 - k * .5; y -= 2.1
        for x in (111, 126): c.rect(x, 5, x + 3, 40, 'w')
        c.poly('106,6 109,1 131,1 134,6', 'k'); c.poly(spline('116,10 120,8 124,10 127,18 113,18', True, 4), 'k')
        c.rect(119, 18, 121, 21, 'k', 0)
        for x, y in ((92, 6), (146, 4), (154, 10), (98, 13), (84, 10), (164, 6)): bird(c, x, y, x, 2)
    else:
        far = spline('80,16 120,9 156,14 196,7 244,12', n=6); m = c.mpoly(far + [(244, 22), (80, 22)])
        c.put(m, '25', 0); c.lines(far); c.line(90, 19, 239, 19)
        m = c.poly('-4,-4 34,-4 48,4 60,12 76,20 88,26 94,40 94,60 -4,60', 'w', heavy=1)
        c.shade(c.mpoly('34,-4 48,4 60,12 76,20 88,26 70,28 46,18') & m, '/')
        for P in ([(10, 2), (13, 9), (9, 13)], [(26, 3), (28, 10)]): c.lines(P)
        c.put(c.mpoly(spline('100,60 86,44 56,32 20,23 -4,20', n=6) + spline('-4,15 24,18 62,26 100,36 114,60', n=6)),
            'w')
        for x, y in ((8, 15), (24, 18), (40, 21)): c.rect(x, y - 3, x + 2, y + 1, 'k', 0)
        c.rect(66, 14, 80, 27, 'w', heavy=1); c.poly('62,15 73,5 84,15', 'k'); c.rect(70, 18, 74, 22, 'k', 0)
        c.band('84,30 112,22', 2.6, tone='w'); c.rect(83, 24, 86, 37, 'k', 0)
        riv = c.mpoly(spline('134,60 146,42 176,30 188,23 180,20', n=6) + spline('200,20 216,24 232,36 244,60', n=6))
        c.put(riv, 'w'); c.shade(c.inner(riv), 'calm'); c.line(120, 24, 182, 21); c.line(200, 21, 239, 22)
        for k in range(5):
            c.band([(176 + k * 8, 46 - k * 2), (200 + k * 7, 33 - k)], 6, 4.4, tone='w'); c.px(175 + k * 8, 46 - k * 2)
        c.lines('180,42 213,33'); c.lines('192,36 222,29')
        c.stroke('160,44 172,17', 2)
        c.stroke('184,42 171,17', 2)
        c.stroke('165,33 180,33', 1.6)
        c.line(172, 18, 172, 30)
        tree(c, 216, 21, 13, 'fir', 2); tree(c, 227, 22, 11, 'fir', 3); tree(c, 236, 22, 13, 'fir', 4)
    team(c, 61, 120)
    return c

def pictures():
    return {f'Places/fork-{place}': fork(place) for place in ('split-ash', 'jackdaw-saddle', 'elbow-landing')}
