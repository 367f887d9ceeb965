"""Before setting out: the party page and the legends, the store, the months."""
import math
import random

import numpy as np

from country import planks, rope_ring
from ink import arc, at, Canvas, spline

def party():
    F = []
    # 0 a lantern on a hoop, 40 by 60
    c = Canvas(40, 60); h = spline('34,59 36,34 31,14 20,5 8,4 0,8', n=8); c.band(h, 4.4, tone='w')
    for t in range(4, len(h) - 6, 6):
        if t % 12 == 4: c.line(h[t][0] - 1, h[t][1], h[t + 2][0], h[t + 2][1] + 1)
    c.line(17, 7, 17, 15); c.lines(arc(17, 18, 4, 4, 180, 360))
    c.poly('10,24 17,17 25,24', 'k'); c.rect(11, 24, 24, 44, 'w', heavy=1); c.line(14, 25, 14, 42)
    c.line(20, 25, 20, 42)
    c.poly(spline('17.5,28 20,34 18.6,40 15.8,40 14.6,35', True, 5), 'w'); c.line(17, 36, 17, 38)
    c.rect(8, 44, 27, 48, 'k', 0)
    for a, b, d, e in ((1, 22, 6, 26), (0, 34, 6, 34), (1, 46, 6, 42), (28, 34, 32, 34), (27, 26, 31, 23)):
        c.line(a, b, d, e)
    F.append(c)
    # 1 the open book of legends, 120 by 44
    c = Canvas(120, 44); c.poly('2,8 2,41 54,41 60,43 66,41 118,41 118,8', 'k')
    for k in range(3):
        o = 2 * k
        c.poly(spline([(6 + o, 7 - k), (30, 3 - k * .5), (52, 5), (60, 11)], n=6)
            + spline([(60, 41 - k), (50, 36 - k), (30, 35 - k), (6 + o, 38 - k)], n=6), 'w')
        c.poly(spline([(60, 11), (68, 5), (90, 3 - k * .5), (114 - o, 7 - k)], n=6)
            + spline([(114 - o, 38 - k), (90, 35 - k), (70, 36 - k), (60, 41 - k)], n=6), 'w')
    for i in range(6):
        y = 11 + i * 4; c.curve([(16, y), (30, y - 2), (44, y - 1)][:3]); c.line(49, y, 53, y + 1)
        c.curve([(67, y), (78, y - 2), (92, y - 1.5)]); c.line(99, y - 1, 105, y)
    c.line(59, 12, 59, 40); c.line(60, 12, 60, 41); c.shade(c.mpoly('61,12 67,8 67,34 61,39'), '25')
    c.poly('72,36 78,36 79,44 75,41 71,44', 'k'); F.append(c)
    # 2 an ox's head with its bell, 44 by 44
    c = Canvas(44, 44)
    c.band(spline('31,14 38,12 42,6 40,1'), 4.6, 2.4, 'w'); c.band(spline('15,14 8,12 3,7 4,1'), 4.6, 2.4, 'w')
    c.poly(spline('32,17 40,16 43,20 37,23 32,21', True), 'w', heavy=0)
    c.poly(spline('13,17 5,16 1,20 8,23 13,21', True), 'w'); c.line(6, 19, 12, 19); c.line(33, 19, 39, 19)
    c.poly(spline('13,13 18,10 27,10 32,13 32,22 30,29 30,35 27,39 18,39 15,35 15,29 13,22', True, 6), 'w', heavy=1)
    c.shade(c.mpoly(spline('27,11 32,14 31,24 29,32 27,30 28,20', True)), '/'); c.lines('18,11 20,16 22,12 24,17 26,11')
    c.ell(17.5, 20.5, 2, 1.8, 'k'); c.ell(28, 20.5, 2, 1.8, 'k'); c.px(17, 19, 0); c.px(27, 19, 0)
    c.poly(spline('15,33 19,31 27,31 30,33 29,38 22.5,40 16,38', True, 5), 'w')
    c.ell(19, 34.5, 1.6, 1.2, 'k'); c.ell(26.5, 34.5, 1.6, 1.2, 'k'); c.curve('18,38 22.5,37 27,38')
    c.line(10, 26, 16, 40); c.line(36, 26, 30, 40); c.poly('19,38 27,38 30,44 16,44', 'k'); c.line(18, 42, 18, 43, 0)
    F.append(c)
    # 3 a coil of rope and a mallet
    c = Canvas(44, 44); rope_ring(c, 17, 36, 16, 7); rope_ring(c, 17, 31, 15.5, 6.6); rope_ring(c, 17, 26, 15, 6.4)
    c.band(spline('31,28 36,33 38,40 43,41'), 3, tone='w'); c.band('12,24 36,6', 3.6, tone='w')
    m = c.poly('27,3 34,-3 45,11 38,18', 'w', heavy=1)
    c.line(30, 1, 40, 14); c.shade(m & c.mpoly('36,6 46,10 38,19 33,14'), '25'); F.append(c)
    # 4 a sheaf and a jar
    c = Canvas(44, 44); r = random.Random(3)
    for i in range(15):
        t = i / 14 - .5; a = (14 + t * 5, 27); b = (14 + t * 27, 4 + abs(t) * 9 + r.uniform(-1, 1)); c.line(*a, *b)
        for k in range(4):
            X, Y = b[0] - t * k * 2.2, b[1] + k * 2; c.px(X - 1, Y); c.px(X + 1, Y + 1); c.px(X, Y)
        c.line(14 + t * 5, 28, 14 + t * 16, 43)
    c.rect(9, 24, 20, 29, 'w'); c.line(9, 26, 19, 26)
    m = c.poly(spline('28,20 24,27 24,37 27,43', n=5) + spline('39,43 42,37 42,27 38,20', n=5), 'w', heavy=1)
    c.rect(27, 15, 39, 21, 'w', heavy=1); c.put(c.mpoly('25,16 33,11 41,16'), 'k', 0)
    c.lines('25,29 28,31 31,29 34,31 37,29 41,31'); c.line(24, 26, 41, 26); c.line(24, 34, 41, 34)
    c.shade(m & c.mrect(37, 21, 44, 43), '25'); F.append(c)
    return F

def store():
    """A counter with scales, yokes on the wall, a cat in a nail bin: 150 by 96."""
    c = Canvas(150, 96, 9, 9); planks(c, 0, 0, 150, 62, ph=15, vertical=True, seed=2, nails=False)
    c.a[0:62, :][(np.indices((62, 150))[0] % 2 == 1) & (np.indices((62, 150))[1] % 15 != 0)] &= 1
    # shelf with jars, tins, a lantern
    c.rect(4, 29, 64, 33, 'w', heavy=1)
    for x, k in ((7, 0), (19, 1), (31, 2), (41, 0), (52, 1)):
        if k == 0:
            m = c.poly(spline([(x, 29), (x - .6, 20), (x + 2, 16)], n=4)
                + spline([(x + 7, 16), (x + 9.6, 20), (x + 9, 29)], n=4), 'w')
            c.rect(x + 1, 13, x + 8, 17, 'k', 0); c.shade(m & c.mrect(x + 5, 18, x + 10, 28), '25')
            c.line(x, 22, x + 8, 22)
        elif k == 1:
            c.rect(x, 18, x + 9, 29, 'w'); c.rect(x, 21, x + 9, 26, 'k', 0); c.line(x, 18, x + 8, 18)
        else:
            c.rect(x, 15, x + 7, 29, 'w'); c.line(x + 2, 15, x + 2, 28); c.line(x + 4, 15, x + 4, 28)
    c.lines('10,33 10,39'); c.lines('58,33 58,39')
    # a coil of rope on a peg
    c.rect(73, 6, 76, 12, 'k', 0); rope_ring(c, 74, 20, 8, 10, 4)
    # yokes on the wall
    for y in (10, 32):
        c.band(spline([(84, y + 4), (92, y), (101, y + 4), (110, y + 6), (119, y + 4), (128, y), (136, y + 4)]), 6,
            tone='w', heavy=1)
        for x in (93, 127): c.lines(spline(at(x, y, '-6,4 -5,14 0,18 5,14 6,4'), n=6))
        c.rect(109, y - 3, 112, y + 3, 'k', 0)
    # counter
    c.rect(0, 62, 150, 67, 'w', heavy=1); planks(c, 0, 67, 108, 96, ph=9, seed=4)
    c.shade(c.mrect(0, 67, 108, 71), '50')
    # scales
    c.rect(44, 57, 66, 62, 'w', heavy=1); c.stroke('55,57 55,40', 2.2); c.stroke('37,45 73,40', 2)
    for x, y in ((38, 45), (72, 40)):
        c.line(x, y, x - 7, y + 10); c.line(x, y, x + 7, y + 10)
        c.poly(spline(at(x, y, '-9,10 -5,14 4,14 9,10'), n=4), 'w', heavy=0); c.line(x - 9, y + 10, x + 8, y + 10)
    c.poly('33,55 34,49 42,49 43,55', 'k'); c.rect(69, 46, 75, 50, 'w')
    # a sack on the counter
    m = c.blob('8,62 4,54 8,45 13,42 18,42 24,46 26,54 23,62', 'w', heavy=1); c.lines('11,44 16,46 21,44')
    c.shade(m & c.mrect(19, 0, 30, 62), '25')
    # nail bin with the cat
    c.rect(110, 70, 148, 96, 'w', heavy=1); m = c.blob('115,72 114,64 119,57 128,55 137,58 143,65 143,72', 'k')
    c.poly('116,60 116,51 121,55', 'k'); c.poly('124,55 128,51 128,60', 'k'); c.ell(121.5, 60, 6.4, 5.6, 'k')
    c.px(119, 59, 0); c.px(120, 60, 0); c.px(124, 59, 0); c.px(123, 60, 0); c.px(121, 62, 0)
    c.line(116, 62, 113, 61, 0); c.line(126, 62, 129, 61, 0); c.stroke(spline('140,68 146,64 147,56 143,53'), 2.4)
    c.rect(108, 70, 150, 75, 'w', heavy=1)
    for x in range(113, 146, 5):
        c.line(x, 69, x + 2, 66) if x % 2 else c.line(x, 69, x - 1, 67)
    for y in (82, 89): c.line(110, y, 146, y)
    for x in (113, 144):
        c.px(x, 79); c.px(x, 86); c.px(x, 93)
    return c

def months():
    """One branch over the five months, 300 by 60: bare, in bud, in flower, in leaf, in fruit."""
    c = Canvas(300, 60)
    branch = spline('10,45 34,39 64,43 96,36 130,39 164,31 198,34 232,26 262,29 284,21', n=10)

    def leaf(x, y, degrees, length):
        a = math.radians(degrees)

        def out(along, aside):
            along, aside = along * length, aside * length
            return x + math.cos(a) * along - math.sin(a) * aside, y + math.sin(a) * along + math.cos(a) * aside
        m = c.poly(spline([out(0, 0), out(.3, .24), out(.66, .22), out(1, 0), out(.66, -.22), out(.3, -.24)], True, 5),
            'w')
        c.shade(m & c.mpoly([out(0, 0), out(.3, .3), out(.7, .3), out(1, 0)]), '50')
        c.ink(c.edge(m)); c.line(*out(0, 0), *out(.8, 0))

    def flower(x, y):
        for k in range(5):
            a = math.radians(k * 72 - 90)
            c.ell(x + math.cos(a) * 3.1, y + math.sin(a) * 3.1, 2.3, 2.3, 'w')
        c.ell(x, y, 1.6, 1.6, 'k')

    def fruit(x, y):
        c.line(x, y - 8, x, y - 4)
        m = c.ell(x, y, 4.6, 4.6, 'w', heavy=1)
        c.shade(c.inner(m) & ~c.mell(x - 1.8, y - 1.8, 4.2, 4.2), '50')

    twigs = []
    for month in range(5):
        for dx, up in ((-20, 1), (-9, -1), (3, 1), (15, -1)):
            if month == 4 and dx == 15: continue                   # the branch ends here
            x = 30 + 60 * month + dx
            y = float(np.interp(x, [p[0] for p in branch], [p[1] for p in branch]))
            tip = (x + 11, y - 13 * up)
            twigs.append((month, dx, up, (x + 6, y - 6 * up), tip))
            c.stroke(spline([(x, y), (x + 6, y - 6 * up), tip]), 2.2, 1)
    c.band(branch, 7, 2.4, 'w')
    c.lines([(x, y + 1.4) for x, y in branch[:70]], dash=(1, 1, 1, 0))
    c.lines([(x, y + .4) for x, y in branch[:50]], dash=(1, 0, 0, 0, 1, 1, 0))
    c.ell(10.5, 45, 3, 4.2, 'w'); c.ink(c.edge(c.mell(10.5, 45, 1.4, 2.2)))            # the sawn end
    c.stroke(spline('282,22 290,17 296,15'), 2, 1); leaf(290, 16, -70, 9); leaf(289, 18, 15, 9); fruit(283, 34)
    for month, dx, up, mid, tip in twigs:
        if month == 0:
            c.ell(*tip, 1.2, 1.4, 'k')
        elif month == 1:
            for x, y in (mid, tip):
                c.poly(spline(at(x + 1, y, [(-2, 0), (0, -3 * up), (2.4, -4.6 * up), (2.2, -.6 * up), (.6, 1.4 * up)]),
                    True, 4), 'w')
                c.px(x + 1, y - up)
        elif month == 2:
            leaf(mid[0], mid[1], 20 - 40 * up, 8); flower(tip[0] + 1, tip[1] - up); flower(mid[0] - 3, mid[1] - 3 * up)
        elif month == 3:
            for turn, length in ((-75, 11), (0, 13), (60, 11)): leaf(*tip, -35 * up + turn * up, length)
            leaf(*mid, -130 * up, 10)
        else:
            leaf(*tip, -70 * up, 11); leaf(*tip, -5 * up, 11); leaf(*mid, -140 * up, 9)
            fruit(tip[0] - 12, tip[1] + 26 if up > 0 else tip[1] + 3)
    return c

def pictures():
    out = {'Title/' + n: c for n, c in zip(('lantern', 'book', 'ox', 'rope', 'sheaf'), party())}
    return out | {'Start/store': store(), 'Start/months': months()}
