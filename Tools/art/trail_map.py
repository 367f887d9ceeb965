"""The trail map, 262 by 119."""
import math
import random

import numpy as np

from figures import wheel
from ink import arc, at, Canvas, spline
from lettering import say

def trail_map():
    c = Canvas(262, 119, 64, 89); r = random.Random(11)
    # sea at the right edge
    coast = spline('236,-3 243,12 238,26 246,40 241,55 250,66 246,80 252,92 243,101 250,110 246,122', n=8)
    m = c.mpoly(coast + [(262, 122), (262, -3)])
    for y in range(1, 119, 2):
        xs = np.nonzero(m[y])[0]
        if len(xs): c.line(xs[0] + 1, y, xs[0] + (5, 9, 6, 12, 5, 8)[(y // 2) % 6], y)
    c.lines(coast); c.lines([(x + 1, y) for x, y in coast])
    # rivers, double lines
    def river(pts, w=3):
        p = spline(pts, n=8); c.band(p, w + 2, tone='w', edge=0); mm = c.mstroke(p, w); c.put(mm, 'w')
    river([(226, 119), (221, 104), (224, 92), (216, 74), (219, 56), (209, 40), (212, 22), (204, 8), (206, -4)], 4)
    river([(208, 119), (203, 100), (207, 84), (200, 66), (203, 50), (196, 34), (190, 18), (192, -4)], 3)
    river([(96, 122), (92, 104), (84, 88), (88, 70), (82, 52), (86, 36), (78, 18), (82, -4)], 4)
    river([(62, -4), (58, 10), (53, 22), (50, 32), (54, 42), (48, 52), (50, 60)], 4)
    river([(17, 43), (27, 48), (24, 57), (36, 66), (49, 76), (56, 90), (52, 104), (57, 122)], 3)
    pts_road = [(230,103),(220,102),(206,84),(191,80),(150,88),(137,86),(112,68),(101,62),(97,77),(87,69),(73,60),
        (66,54),(50,31),(38,20),(25,34),(24,58),(35,48),(12,76)]
    segs = [(0,1),(1,2),(2,3),(3,4),(4,5),(5,6),(6,7),(7,8),(8,9),(7,9),(9,10),(10,11),(11,12),(12,13),(13,14),(14,15),
        (14,16),(16,15),(15,17)]
    def near(x, y, d):
        for a, b in segs:
            (x0, y0), (x1, y1) = pts_road[a], pts_road[b]; L = (x1 - x0) ** 2 + (y1 - y0) ** 2
            t = max(0, min(1, ((x - x0) * (x1 - x0) + (y - y0) * (y1 - y0)) / L))
            if math.hypot(x - x0 - t * (x1 - x0), y - y0 - t * (y1 - y0)) < d: return True
        return False
    def clear(x0, y0, x1, y1):
        return not c.a[max(0, int(y0)):int(y1), max(0, int(x0)):int(x1)].any()
    # labels first: white lies round them
    keepout = np.zeros((119, 262), bool); keepout[104:119, 186:246] = True; keepout[64:72, 0:0] = True
    keepout[80:96, 0:52] = True
    # the rose stands here
    keepout[80:119, 100:140] = True
    def free(x0, y0, x1, y1):
        return clear(x0, y0, x1, y1) and not keepout[max(0, int(y0)):int(y1), max(0, int(x0)):int(x1)].any()
    # the Saltings: short dykes
    for x, y in ((232, 20), (230, 34), (234, 48), (229, 62), (236, 76), (231, 88)):
        if free(x - 5, y - 1, x + 6, y + 4):
            c.line(x - 4, y, x + 3, y); c.line(x - 2, y + 2, x + 5, y + 2)
    # hills: half domes shaded on the right
    H_ = [(128, 58, 9), (120, 48, 8), (110, 52, 9), (100, 44, 8), (114, 38, 9), (126, 36, 7), (104, 30, 9), (95, 22, 8),
        (112, 20, 9), (124, 22, 8), (98, 10, 8), (112, 8, 9), (108, 84, 8), (100, 92, 8), (110, 98, 9), (104, 108, 8),
        (122, 76, 7), (128, 70, 6), (78, 100, 6)]
    for y in range(10, 118, 4):
        for x in range(92, 136, 3):
            H_.append((x + r.randint(-1, 1), y + r.randint(-1, 1), r.choice((5, 6, 7))))
    for x, y, w in H_:
        if free(x - w - 1, y - w - 1, x + w + 3, y + 2) and not near(x, y - 3, w + 1):
            c.lines(arc(x, y, w, w * .8, 180, 362))
            for k in range(3):
                c.line(x + w * (.25 + .22 * k), y - w * .75 * (1 - .35 * k) + 2, x + w * (.1 + .25 * k), y - 1)
    # the ash plain: stipple
    m = c.mpoly(spline('80,50 80,88 66,74 56,66 58,44 66,34 76,30', True)); yy, xx = np.indices(m.shape)
    for x in range(52, 86, 4):
        for y in range(28, 92, 4):
            X_, Y_ = x + (y % 8) // 4 * 2, y
            if m[Y_, X_] and free(X_ - 2, Y_ - 1, X_ + 3, Y_ + 2) and not near(X_, Y_, 4): c.px(X_, Y_)
    # the Breadth: grass ticks
    for y in range(8, 119, 11):
        for x in range(134 + (y * 5) % 9, 192, 14):
            xx, yy = x + r.randint(-3, 3), y + r.randint(-2, 2)
            if free(xx - 4, yy - 5, xx + 5, yy + 2) and not near(xx, yy, 6):
                c.line(xx - 2, yy, xx - 3, yy - 2); c.line(xx, yy, xx, yy - 3); c.line(xx + 2, yy, xx + 3, yy - 2)
    # the heights: peaks
    K_ = [(14, 16, 13), (26, 12, 12), (8, 34, 14), (40, 10, 10), (14, 50, 12), (4, 22, 9), (34, 34, 9), (40, 44, 9),
        (6, 62, 9), (70, 16, 9), (68, 28, 7), (50, 12, 8), (74, 8, 7)]
    for y in range(10, 74, 4):
        for x in range(4, 78, 4): K_.append((x + r.randint(-1, 1), y + r.randint(-1, 1), r.choice((7, 8, 9))))
    for x, y, h in K_:
        if m[min(118, int(y)), int(x)]: continue
        if not near(x, y - 4, h * .5 + 2) and free(x - h * .65 - 1, y - h - 1, x + h * .65 + 2, y + 2) and y < 76:
            c.lines(at(x, y, '-.65,0 -.2,-.6 0,-1 .25,-.5 .65,0', h))
            m = c.mpoly(at(x, y, '0,-1 .25,-.5 .62,0 .1,0 .12,-.5', h)); c.hatch(m, 2, 1)
    # the vale: steps
    for k, (y, x0, x1) in enumerate(((102, 0, 22), (106, 2, 25), (110, 0, 22), (114, 3, 24), (98, 3, 19))):
        c.lines([(x0, y), (x1, y), (x1, y + 3)])
        for x in range(x0 + 2, x1 - 1, 4): c.px(x, y + 2)
    # the two towns
    c.art(233, 95, ["__#__", "_###_", "_#.#_", "_#.#_", "_#.#_", "#####", "#.#.#", "#####"])
    c.art(3, 71, ["#_#_#", "#####", "#.#.#", "#.#.#", "#####"])
    for t, x, y in (("Lanthorn", 214, 116), ("Yonderley", 28, 91)):
        c.ink(c.mrect(x - 26, y - 10, x + 26, y + 4) & (np.indices((119, 262))[1] < 242), 0)
        say(c, 'small-9', x, y, t, centre=True)
    # the six hearths: a roof and a door, beside the road
    for x, y in ((191, 85), (140, 76), (102, 80), (72, 50), (45, 21), (40, 50)):
        c.ink(c.mrect(x - 4, y - 1, x + 5, y + 7), 0)
        c.art(x - 3, y, ["___#___", "__###__", "_#####_", "_#...#_", "_#.#.#_", "_#.#.#_"])
    # the rose: a wain wheel
    cx, cy = 121, 100; wheel(c, cx, cy, 10, 0, 8); c.poly(at(cx, cy, '-3,-10.5 3,-10.5 0,-18'), 'k')
    for a in (0, 90, 180):
        x, y = cx + math.cos(math.radians(a)) * 12, cy + math.sin(math.radians(a)) * 12; c.ell(x, y, 1.4, 1.4, 'k')
    return c

def pictures():
    return {'Travel/map': trail_map()}
