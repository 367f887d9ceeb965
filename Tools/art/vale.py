"""Yonderley: its gate, and the vale at evening."""
import math

import numpy as np

from country import courses, front_tufts, ground, stones, terraces, tree
from figures import halo, person, tiny
from ink import arc, at, Canvas, spline
from landmark import H, P, W

def yonder():
    c = P()
    h = [(-4, 34), (30, 14), (60, 28), (96, 8), (130, 26), (170, 12), (204, 30), (236, 16), (268, 34)]
    m = c.mpoly(h + [(268, 60), (-4, 60)]); c.put(m, '25', 0); c.lines(h)
    for i in (1, 3, 5, 7):
        x, y = h[i]; c.put(c.mpoly(at(x, y, '-9,8 0,0 9,7 3,6 0,10 -4,6')) & m, 'w', 0)
        c.lines(at(x, y, '-9,8 0,0 9,7'))
    terraces(c, -4, 268, [44, 54, 65, 78, 94], seed=4)
    for x, y in ((20, 44), (44, 54), (70, 44), (200, 46), (226, 56), (246, 45), (30, 66), (240, 68)):
        tree(c, x, y + 2, 13, 'poplar' if x % 3 else 'round', x)
    ground(c, '-4,112 80,111 180,111 268,113')
    # the gate with two stone posts
    for x in (84, 160):
        m = c.rect(x, 44, x + 22, 134, 'w', heavy=1); courses(c, c.inner(m), 7, 11, x, .75)
        c.shade(m & c.mrect(x + 15, 46, x + 21, 133), '/')
        c.rect(x - 4, 38, x + 26, 46, 'w', heavy=1); c.ell(x + 11, 33, 6, 6, 'w', heavy=1)
    # open leaf of the gate, and the other shut
    c.poly('106,58 132,64 132,128 106,132', 'w', heavy=1)
    for t in (.25, .5, .75): c.line(106 + 26 * t, 58 + 6 * t, 106 + 26 * t, 131 - 4 * t)
    c.lines('106,74 132,78'); c.lines('106,112 132,111')
    c.rect(146, 60, 160, 132, 'w', heavy=1); c.line(150, 60, 150, 131); c.line(155, 60, 155, 131)
    # the spike full of letters
    c.stroke('138,140 138,84', 2.2); c.poly('135,86 138,76 141,86', 'k'); c.rect(130, 138, 148, 143, 'w', heavy=1)
    for k in range(7):
        y = 128 - k * 6.4; a = (-1) ** k * 2
        c.poly([(128, y + a), (148, y - a), (149, y + 5 - a), (129, y + 6 + a)], 'w', heavy=0)
        c.lines([(128, y + a), (138, y + 4), (148, y - a)])
    # walls right and left, blue doors
    for x0, x1 in ((-2, 84), (182, 264)):
        m = c.rect(x0, 104, x1, 134, 'w', heavy=1); courses(c, c.inner(m), 6, 11, x0 + 7, .7)
        c.rect(x0, 100, x1, 105, 'w', heavy=1)
    for x in (30, 214):
        c.rect(x - 2, 110, x + 16, 134, 'w', 0)
        c.poly([(x, 134), (x, 118)] + arc(x + 7, 118, 7, 6, 180, 360) + [(x + 14, 134)], 'k'); c.px(x + 11, 126, 0)
    for x in (10, 62, 194, 246):
        m = c.poly([(x - 5, 100), (x - 4, 92), (x + 4, 92), (x + 5, 100)], 'w'); c.ell(x, 88, 6, 5, 'w')
        c.shade(c.mell(x + 1, 88, 5, 4), '50')
    c.curve('106,155 118,143 130,136', dash=(1, 1, 0)); c.curve('170,155 158,143 150,136', dash=(1, 1, 0))
    halo(c, lambda d: person(d, 112, 151, 27, f=1, hat='hair', top='w', legs='/', skirt=True, arm=((3, 14), (7, 17))))
    front_tufts(c, '14,152 48,150 76,153 214,152 246,150')
    return c

def arrival():
    c = Canvas(494, 264, 9, 9)
    c.shade(c.mpoly(spline('0,46 90,40 200,47 320,38 494,44', n=8) + [(494, 92), (0, 92)]), '12')
    c.shade(c.mpoly(spline('0,30 120,26 260,33 380,24 494,29', n=8) + spline('494,44 320,38 200,47 90,40 0,46', n=8)),
        'mist')
    c.put(c.mell(96, 58, 30, 22), 'w', 0); c.put(c.mell(96, 60, 17, 17), 'w')
    for i in range(15):
        a = math.radians(180 + i * 12.8)
        c.line(95.5 + math.cos(a) * 21, 59.5 + math.sin(a) * 21, 95.5 + math.cos(a) * (29 if i % 2 == 0 else 25),
            59.5 + math.sin(a) * (29 if i % 2 == 0 else 25))
    for x, y, w in ((150, 28, 120), (300, 18, 110), (20, 20, 70), (390, 36, 90)):
        c.curve(at(x, y, '0,3 .2,0 .5,1 .72,-2 1,3', w, 1))
        c.lines([(x + w * .15, y + 5), (x + w * .8, y + 5)], dash=(1, 1, 1, 0, 1, 0))
    # far side of the vale
    pk = [(-6, 74), (40, 60), (96, 72), (150, 48), (190, 62), (240, 40), (290, 60), (340, 36), (392, 58), (440, 34),
        (500, 56)]
    m = c.mpoly(pk + [(500, 120), (-6, 120)]); c.put(m, '25', 0); c.lines(pk)
    for i in range(3, len(pk) - 1, 2):
        (x, y), (fx, fy) = pk[i], pk[i + 1]
        c.put(c.mpoly([(x, y), (fx, fy), (x + (fx - x) * .7, 98), (x + (fx - x) * .34, 98)]) & m, '50', 0)
        c.put(c.mpoly(at(x, y, '-16,9 0,0 9,5 4,7 1,13 -4,7 -9,11')) & m, 'w', 0)
    c.lines(pk)
    # the vale runs away from the gate: terrace edges on both sides draw together at its head
    hx, hy = 262, 92
    c.put(c.mpoly([(-6, 92), (150, 84), (hx, 88), (380, 84), (500, 92), (500, 270), (-6, 270)]), 'w', 0); N = 10
    def edge_curve(side, k):
        q = k / (N - 1); x0, y0 = hx + side * (6 + 7.5 * k), hy - 2 + 2.2 * k; x1 = -8 if side < 0 else 502
        y1 = 82 + 168 * q ** 1.25; sag = 10 + 14 * q; P_ = []
        for i in range(13):
            t = i / 12
            P_.append((x0 + (x1 - x0) * t, y0 + (y1 - y0) * (t ** (1.5 - .4 * q)) + math.sin(t * math.pi) * sag * .25
                + math.sin(t * 7 + k * 1.3) * t * 1.4))
        return spline(P_, n=5)
    # the floor first: fields and their dykes
    for k in range(9):
        y = 100 + k * k * 2.0; hw = 18 + (y - 96) * .95
        c.lines([(hx - hw + (k % 3) * 6, y), (hx + hw - (k % 2) * 8, y + 1)], dash=(1, 1, 1, 1, 0))
    for side in (-1, 1):
        for k in range(N):
            g = edge_curve(side, k); last = k == N - 1
            nxt = edge_curve(side, k + 1) if not last else [(x, y + 26) for x, y in g]
            c.put(c.mpoly(g + nxt[::-1]), 'w', 0); n = len(g); wall_lo = []
            for i, (x, y) in enumerate(g):
                y2 = float(np.interp(x, [p[0] for p in nxt][::side], [p[1]
                    for p in nxt][::side])) if not last else y + 26 * (i / n)
                wall_lo.append((x, y + max(1.0, (y2 - y) * .56)))
            wall = c.mpoly([(x, y + 1) for x, y in g] + wall_lo[::-1])
            far_ = c.mpoly([(hx - 60, 60), (hx + 60, 60), (hx + 90, 270), (hx - 90, 270)])
            c.shade(wall & ~far_, '25' if side < 0 else '50'); c.shade(wall & far_, '25')
            # joints only where the wall is high enough to show them
            for i in range(n // 3, n - 1):
                x, y = g[i]; hgt = wall_lo[i][1] - y
                if hgt > 6 and i % 2 == k % 2:
                    c.line(x, y + hgt * .5, x + 5 + hgt * .3, y + hgt * .5); c.line(x + 2, y + 1, x + 2, y + hgt * .5)
            # far off the lines would run together: there only the edge that catches the light is drawn
            for i in range(n - 1):
                hgt = wall_lo[i][1] - g[i][1]
                if hgt > 1.6 or (k % 3 == 0 and i > 3): c.line(*g[i], *g[i + 1])
                if hgt > 2.6: c.line(*wall_lo[i], *wall_lo[i + 1])
            # doors: small black squares with a white line round
            for t in ((.42, .62, .83) if k % 2 else (.52, .74, .93)):
                i = int(t * (n - 1)); x, y = g[i]; hgt = wall_lo[i][1] - y
                if hgt < 4: continue
                dw, dh = max(2, hgt * .34), hgt * .72; yb = wall_lo[i][1]
                c.rect(x - 2, yb - dh - 2, x + dw + 2, yb, 'w', 0); c.rect(x, yb - dh, x + dw, yb, 'k', 0)
            # orchards on the treads
            for t in ((.34, .57, .7, .88) if k % 2 else (.46, .66, .79)):
                i = int(t * (n - 1)); x, y = g[i]; hgt = wall_lo[i][1] - y
                if 2.5 < hgt < 15:
                    tree(c, x, y + 1, 4 + hgt * 1.15, 'round' if (i + k) % 3 else 'poplar', i + k)
    # canals as white threads: one falls down the steps on each side, the stream gathers them
    def thread(P_, w0, w1):
        p = spline(P_, n=8); c.ink(c.mstroke([(x + .9, y) for x, y in p], w0 + 1.4, w1 + 1.8), 1)
        c.ink(c.mstroke(p, w0, w1), 0)
    thread([(90, 96), (104, 112), (132, 124), (150, 142), (190, 152), (240, 156), (254, 158)], 1.6, 3.2)
    thread([(410, 98), (392, 114), (372, 126), (352, 144), (318, 158), (290, 176), (280, 186)], 1.6, 3.2)
    p = spline([(hx + 2, 94), (hx + 8, 104), (hx - 8, 118), (hx + 12, 138), (hx - 16, 164), (hx + 18, 196),
        (hx - 8, 232), (hx + 6, 272)], n=10)
    c.ink(c.mstroke(p, 3.5, 21)); c.ink(c.mstroke(p, 1.6, 18), 0)
    for i in range(20, len(p) - 4, 7):
        x, y = p[i]; w_ = 1 + 7 * i / len(p); c.line(x - w_ * .6, y, x + w_ * .5, y)
    # houses on the floor, and people going home
    for x, y, s in ((238, 112, 5), (284, 116, 6), (222, 134, 8), (300, 140, 9), (208, 160, 11), (320, 170, 12)):
        c.rect(x, y - s, x + s * 1.4, y, 'w', heavy=0)
        R_ = [(x - 2, y - s), (x + s * .7, y - s * 1.8), (x + s * 1.4 + 2, y - s)]; c.poly(R_, '/')
        c.rect(x + s * .5, y - s * .5, x + s * .5 + max(2, s * .3), y, 'k', 0)
        c.curve([(x + s, y - s * 1.8), (x + s - 2, y - s * 1.8 - 5), (x + s + 1, y - s * 1.8 - 10)])
    for x, y, h_ in ((246, 150, 5), (250, 150, 5), (292, 158, 6), (226, 182, 7), (231, 183, 7), (304, 196, 8)):
        tiny(c, x, y, h_)
    for x, y, hh in ((232, 150, 12), (312, 152, 13), (196, 178, 16), (336, 186, 18), (290, 128, 9)):
        tree(c, x, y, hh, 'poplar' if x % 3 else 'round', x)
    # the nearest wall: a ladder, a trowel, a bowl of soup, waiting
    top = spline('-6,214 60,216 130,213 190,217 232,222', n=6)
    m = c.poly(top + [(236, 234), (246, 240), (250, 252), (262, 256), (266, 270), (-6, 270)], 'w', heavy=1)
    courses(c, c.inner(m), 9, 17, 5, .9); c.shade(m & c.mpoly('206,214 232,220 266,270 236,270') & ~c.edge(m), '/')
    for x, y, w in ((276, 262, 12), (300, 264, 9), (284, 252, 8)): stones(c, ((x, y, w),))
    lad = [(24, 268), (58, 168)], [(44, 268), (78, 168)]
    for a, b in lad: c.band([a, b], 4, tone='w', heavy=0)
    for k in range(8):
        t = k / 7.6 + .05; c.band([(24 + 34 * t, 268 - 100 * t), (44 + 34 * t, 268 - 100 * t)], 3, tone='w')
    # trowel on the wall
    c.poly('104,214 126,206 130,212 112,217', 'w', heavy=1); c.stroke('129,208 136,203', 1.6)
    c.band('136,203 148,198', 4, tone='k')
    # heap of mortar
    m = c.poly(spline('92,216 97,207 104,205 108,214', n=4), 'w'); c.shade(m, 'stip')
    # the bowl, with steam
    b = c.poly(spline('164,200 166,209 173,215 187,215 194,209 196,200', n=5), 'w', heavy=1)
    c.put(c.mell(180, 200, 16, 4), '50'); c.ink(c.edge(c.mell(180, 200, 16, 4)))
    c.band('188,200 202,190', 2.6, tone='w')
    for x in (174, 180, 187): c.curve([(x, 194), (x - 3, 188), (x + 2, 182), (x - 1, 175)])
    c.line(168, 206, 192, 206)
    # the gate post at the right edge
    m = c.rect(446, 108, 486, 264, 'w', heavy=1); courses(c, c.inner(m), 11, 18, 3, .8)
    c.shade(m & c.mrect(474, 110, 484, 264), '/'); c.rect(438, 96, 492, 110, 'w', heavy=1)
    c.ell(466, 84, 12, 12, 'w', heavy=1); c.shade(c.mell(469, 86, 9, 9) & ~c.mell(464, 82, 9, 9), '50')
    c.rect(442, 150, 447, 153, 'k', 0); c.rect(442, 226, 447, 229, 'k', 0)
    c.poly('442,140 408,150 408,250 442,244', 'w', heavy=1)
    for t in (.2, .4, .6, .8): c.line(442 - 34 * t, 140 + 10 * t, 442 - 34 * t, 244 + 6 * t)
    c.lines('441,160 408,168'); c.lines('441,162 408,170'); c.lines('441,226 408,232'); c.lines('441,228 408,234')
    front_tufts(c, '330,258 350,262 382,260 312,248 398,262 426,262')
    return c

def pictures():
    return {'Places/yonderley': yonder(), 'Places/arrival': arrival()}
