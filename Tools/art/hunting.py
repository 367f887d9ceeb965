"""The hunting ground: horizons, the near bank with the hunter, bushes, trees, rocks."""
import math
import random

import numpy as np

from country import crown, dark_grass
from ink import at, Canvas, maskof, points, shifted, spline, Sprite

def horizons_and_bank():
    F = {}; r = random.Random(12)
    # plain: two low swells, one far herd
    c = Canvas(494, 25, 9, 34); a = spline('-4,18 70,14 150,10 230,13 320,17 410,12 500,9', n=10)
    m = c.mpoly(a + [(500, 26), (-4, 26)]); c.put(m, '25', 0); c.lines(a)
    b = spline('-4,19 90,21 190,18 280,15 360,19 440,21 500,19', n=10)
    m = c.mpoly(b + [(500, 26), (-4, 26)]); c.put(m, 'w', 0); c.lines(b)
    for i in range(14):
        x = 250 + i * 4.3 + r.uniform(-1, 1); y = 14 - (i % 3 == 0)
        c.rect(x, y - 2, x + 3, y, 'k', 0); c.px(x + 3, y - 2)
    for x in (18, 61, 77, 140, 171, 233, 305, 322, 377, 428, 441, 480): c.tuft(x, 24 - x % 2, 3, 2, 0)
    c.curve('40,5 52,2 64,4 76,2 92,5'); c.curve('380,4 394,1 410,4 428,3'); F['plain'] = c
    # hills: peaks with white caps
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
    F['hills'] = c
    # the near bank with hat, shoulders, barrel
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
    F['near-bank'] = c
    return F

def ball():
    c = Sprite(3, 3)
    c.art(0, 0, ('_#_', '###', '_#_'))
    return c

def bush(w, h, seed, snow=False):
    """Six clumps of leaves, the far ones first, on a dark foot; in winter the snow lies on top."""
    c = Sprite(w, h)
    r = random.Random(seed)
    for x, y, rx, ry in points('12,9,9,8.4 31,10,8.4,8 22,7.6,10,7.4 8.4,16.4,8,7.4 32,16.4,7.6,7.4 20,15.6,10.4,8.6'):
        crown(c, x * w / 40, y * h / 24, rx * w / 40, ry * h / 24, r)
    m = maskof(c.a)
    if snow:
        rows = np.indices(m.shape)[0]
        ragged = np.array([h * .3 + 2 * math.sin(x * .9 + seed) for x in range(w)]).astype(int)
        top = np.argmax(m, 0)
        cap = m & (rows < top + ragged)
        c.ink(c.inner(m) & ~cap & c.tone('75').astype(bool)); c.ink(cap, 0)
        c.ink(m & (rows == top + ragged))
        c.shade(cap & (np.indices(m.shape)[1] > w * .66), 'mist')
    for x in range(3, w - 3, 2): c.px(x, h - 2)
    c.ink(c.edge(m)); c.line(2, h - 1, w - 3, h - 1)
    return c

def tree():
    c = Sprite(44, 60)
    c.ink(c.edge(crown(c, 22, 20, 21.5, 19.5, random.Random(3))))
    trunk = c.poly(spline('14,60 18,54 19,44 14,34 11,30', n=4) + points('15,31 20,37 22,28 25,37 30,30 33,30')
                   + spline('33,30 27,43 27,54 31,60', n=4), 'w')
    c.shade(c.inner(trunk) & c.mpoly('24,30 34,28 28,44 32,60 24,60'), '50')
    return c

def bare_tree():
    c = Sprite(44, 60)
    r = random.Random(12)
    c.poly(spline('16,60 19,50 19,38 20,28', n=4) + spline('25,28 25,38 25,50 29,60', n=4), 'w', heavy=1)
    c.shade(c.mpoly('23,28 25,38 25,50 29,60 24,60'), '50')

    def branch(x, y, a, length, w, forks):
        ex, ey = x + math.cos(a) * length, y + math.sin(a) * length
        c.stroke([(x, y), (ex, ey)], w, max(1, w * .6))
        for q in (-.5, .42) if forks else ():
            branch(ex, ey, a + q + r.uniform(-.15, .15), length * .72, max(1, w * .6), forks - 1)
    for a, length in ((-2.5, 10.4), (-1.95, 11.2), (-1.3, 11.2), (-.7, 10.4)): branch(22, 31, a, length, 2.8, 3)
    return c

def fir(w, h, snow):
    c = Sprite(w, h)
    x, tiers = w / 2, 6
    c.rect(x - 2, h - 7, x + 2, h, 'k', 0)
    for i in range(tiers - 1, -1, -1):
        low = 4 + (h - 9) * (i + 1) / tiers
        top = max(0, low - h / tiers * 1.7)
        half = (x - 1) * (.28 + .72 * (i + 1) / tiers)
        right = spline([(x, top), (x + half * .55, low - 3.4), (x + half, low)], n=4)
        hem = at(x, low, [(half * .62, -1), (half * .3, 1.5), (0, 0), (-half * .3, 1.5), (-half * .62, -1)])
        left = spline([(x - half, low), (x - half * .55, low - 3.4), (x, top)], n=4)
        m = c.poly([(x, top)] + right + hem + left, 'w')
        inner = c.inner(m)
        if snow:
            c.shade(inner & ~shifted(m, 0, -3, True), '75')
            c.shade(inner & c.mpoly([(x + 1, top), (x + half, low), (x + 1, low + 2)]), '25')
        else:
            c.shade(inner & c.mpoly([(x, top), (x + half + 2, low + 2), (x + 1, low + 3)]), '75')
            c.shade(inner & c.mpoly([(x, top), (x - half - 2, low + 2), (x, low + 3)]), '25')
            c.shade(inner & ~shifted(m, 0, -2, True), '75')
    return c

def larch(w, h, snow):
    """Airy, with drooping branches, which the snow loads."""
    c = Sprite(w, h)
    x = w / 2
    c.stroke([(x, h), (x, 1)], 2.6, 1)
    steps = 6 if snow else 9
    for i in range(steps):
        t = (i + 1) / steps
        y, half = 4 + (h - 17) * t, (x - 1.5) * (.24 + .76 * t ** .85)
        for side in (-1, 1):
            limb = spline([(x, y - 3), (x + side * half * .55, y - 1), (x + side * half, y + 2)])
            hem = [(px - side * .6, py + (4.6 if snow else 2.4) + (k % 2) * 1.6) for k, (px, py) in enumerate(limb)]
            m = c.mpoly(limb + hem[::-1])
            c.put(m, 'w' if snow else '50' if side > 0 else '25')
            if snow: c.shade(c.inner(m) & c.mpoly([(x, y), (x + side * half, y + 5), (x, y + 9)]), '50')
            else: c.lines(limb)
    c.stroke([(x, h), (x, 4)], 2, 1)
    return c

def rock(snow):
    """A rock with a fir behind it."""
    w, h = 44, 48
    c = Sprite(w, h)
    behind = fir(24, 44, snow)
    c.blit(behind, w - 26, 0, maskof(behind.a))
    m = c.poly(at(0, h, '1,0 3,-14 9,-24 17,-27 25,-18 33,-13 37,-5 38,0'), 'w', heavy=1)
    c.shade(c.inner(m) & c.mpoly(at(0, h, '17,-27 26,-18 34,-12 40,0 22,0 20,-14')), '/')
    c.lines(at(0, h, '9,-23 12,-12 9,-4')); c.lines(at(0, h, '18,-26 20,-14 24,0'))
    if snow:
        hem = at(0, h, '31,-14 24,-13 20,-17 15,-12 10,-16 6,-11')
        c.put(c.mpoly(at(0, h, '3,-14 9,-24 17,-27 25,-18') + hem) & m, 'w', 0); c.lines(hem); c.ink(c.edge(m))
    else:
        c.tuft(6, h - 1, 3, 4, -1); c.tuft(33, h - 1, 3, 3, 1)
    return c

def pictures():
    out = horizons_and_bank() | {'ball': ball()}
    for name, snow in (('', False), ('snow-', True)):
        out |= {name + 'bush-1': bush(40, 24, 2, snow), name + 'bush-2': bush(30, 20, 7, snow),
            name + 'fir': fir(30, 56, snow), name + 'larch': larch(32, 56, snow), name + 'rock': rock(snow)}
        out[name + 'bush-3'] = out[name + 'bush-1']
    out['tree'] = out['tree-2'] = tree()
    out['bare-tree'] = out['bare-tree-2'] = bare_tree()
    return {'Hunt/' + name: c for name, c in out.items()}
