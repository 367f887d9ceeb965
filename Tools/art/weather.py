"""The ten kinds of weather, 48 by 36, and the plank of the thermometer."""
import math
import random

from figures import wain
from ink import arc, Canvas, spline

def weather():
    F = []
    def new():
        return Canvas(48, 36, 329, 46)
    # 0 sun with short rays
    c = new(); c.ell(24, 18, 8.5, 8.5, 'w', heavy=1)
    for i in range(16):
        a = 2 * math.pi * i / 16; r0, r1 = 11.5, (16 if i % 2 == 0 else 14)
        c.line(23.5 + math.cos(a) * r0, 17.5 + math.sin(a) * r0, 23.5 + math.cos(a) * r1, 17.5 + math.sin(a) * r1)
    F.append(c)
    # 1 veil over the sun
    c = new(); c.ell(20, 14, 8.5, 8.5, 'w')
    for i in range(7):
        a = math.radians(150 + i * 30)
        c.line(19.5 + math.cos(a) * 11, 13.5 + math.sin(a) * 11, 19.5 + math.cos(a) * 14, 13.5 + math.sin(a) * 14)
    for y, x0, x1 in ((12, 16, 44), (16, 4, 40), (20, 10, 46), (24, 2, 36), (28, 14, 42)):
        m = c.mpoly([(x0, y + 1), (x0 + 6, y - .5), (x1 - 8, y - .5), (x1, y + 1), (x1 - 6, y + 2.6),
            (x0 + 8, y + 2.6)])
        c.put(m, 'w', 0); c.lines([(x0, y + 1), (x0 + 7, y), (x1 - 8, y), (x1, y + 1)])
    F.append(c)
    # 2 bent grass and a flag
    c = new(); c.line(10, 4, 10, 33); c.line(11, 4, 11, 33)
    c.poly(spline('12,5 20,3 28,7 36,5', n=5) + spline('36,13 28,15 20,11 12,13', n=5), 'w', heavy=1)
    c.line(2, 33, 46, 33)
    for x, h, l in ((18, 13, 10), (22, 9, 9), (25, 14, 11), (30, 10, 9), (33, 12, 10), (37, 8, 7), (5, 9, 6)):
        c.curve([(x, 33), (x + 1, 33 - h * .6), (x + l, 33 - h)])
    F.append(c)
    def cl(c, y=12, tone='w', w=40, x=4, hv=1):
        m = (c.mell(x + w * .27, y, w * .24, 6) | c.mell(x + w * .52, y - 3.5, w * .25, 7.5)
            | c.mell(x + w * .76, y, w * .23, 6) | c.mrect(x + w * .16, y, x + w * .84, y + 6))
        c.put(m, tone, heavy=hv)
        return m
    # 3 light rain
    c = new(); cl(c, 12)
    for i, x in enumerate((11, 18, 25, 32, 39)):
        for y in (21, 28):
            yy = y + (3 if i % 2 else 0); c.line(x, yy, x - 2, yy + 4)
    F.append(c)
    # 4 heavy rain
    c = new(); cl(c, 12, 'k')
    for i in range(9):
        x = 9 + i * 4.2
        for y in (20, 28):
            yy = y + (2 if i % 2 else 0); c.line(x, yy, x - 3, yy + 6); c.line(x + 1, yy, x - 2, yy + 6)
    F.append(c)
    def flake(c, x, y, r):
        if r <= 2:
            c.art(x - 2, y - 2, ["#.#.#", ".###.", "#####", ".###.", "#.#.#"] if r == 2 else [" # ", "###", " # "])
            return
        for i in range(6):
            a = math.radians(30 + 60 * i); ex, ey = x + math.cos(a) * r, y + math.sin(a) * r; c.line(x, y, ex, ey)
            if r > 4:
                for s_ in (-1, 1):
                    b = a + s_ * .9; mx, my = x + math.cos(a) * r * .55, y + math.sin(a) * r * .55
                    c.line(mx, my, mx + math.cos(b) * r * .36, my + math.sin(b) * r * .36)
    # 5 six flakes
    c = new(); cl(c, 12, w=36, x=6)
    for x, y in ((9, 24), (19, 23), (29, 24), (39, 23), (14, 31), (34, 31)):
        flake(c, x, y, 3.4)
    F.append(c)
    # 6 close and large
    c = new()
    for x, y, r in ((9, 9, 7), (25, 7, 6), (40, 10, 7), (17, 22, 7), (33, 24, 8), (7, 29, 5), (45, 31, 5), (21, 34, 3)):
        flake(c, x, y, r)
    F.append(c)
    # 7 hailstones with shadows
    c = new(); cl(c, 12, '50')
    for x, y, r in ((10, 24, 2.8), (20, 25, 3.2), (30, 24, 2.8), (40, 25, 2.8), (15, 32, 2.6), (26, 32.4, 2.8),
            (36, 32, 2.6)):
        c.ell(x, y, r, r, 'w', heavy=1); c.line(x - 1, y - r - 3, x - 1, y - r - 2)
    F.append(c)
    # 8 a wain half rubbed out
    c = new(); wain(c, 7, 33, 36, 27, lantern=False); r = random.Random(4)
    # the wind takes it away to the right, row by row
    for y in range(36):
        x0 = 17 + (y * 7) % 9
        for x in range(x0, 48):
            t = (x - x0) / 22
            if (x * 5 + y * 3) % 11 < 3 + t * 9: c.a[y, x] = 0
    for x, y, n in ((28, 4, 12), (36, 9, 9), (30, 14, 14), (24, 19, 8), (36, 22, 10), (30, 27, 13), (38, 32, 8),
            (0, 6, 7), (1, 20, 6), (0, 30, 5), (20, 34, 9)):
        c.line(x, y, x + n, y - 1); c.px(x + n + 3, y - 1)
    F.append(c)
    # 9 anvil and fork
    c = new(); m = c.mpoly(spline('2,6 10,3 36,2 46,5 38,9 34,13 37,18 30,21 20,21 13,18 15,12 11,9', True))
    c.put(m, '75'); c.put(m & c.mpoly('0,0 24,0 18,12 20,22 0,22') & ~c.edge(m), '50', 0); c.ink(c.edge(m))
    c.poly('23,18 16,27 21,27 17,36 29,25 24,25 29,18', 'k'); c.lines('11,22 8,27'); c.lines('36,22 34,26'); F.append(c)
    # 10 thermometer's ground: a plank with five marks and an empty tube 6 wide, 50 high
    c = Canvas(22, 66, 384, 46); c.closed = True
    m = c.mpoly(arc(4, 4, 4, 4, 180, 270) + arc(18, 4, 4, 4, 270, 360) + arc(18, 62, 4, 4, 0, 90)
        + arc(4, 62, 4, 4, 90, 180))
    c.put(m, 'w', heavy=1)
    for x, y0, y1 in ((3, 12, 30), (5, 34, 55), (17, 26, 44), (19, 8, 20), (3, 44, 52)):
        c.line(x, y0, x, y1)
    c.px(4, 3); c.px(16, 3); c.px(4, 61); c.px(16, 61); c.rect(6, 5, 14, 58, 'w', 0)
    c.rect(7, 4, 15, 56, 'w'); c.px(7, 4, 0); c.px(14, 4, 0); c.ell(11, 59.5, 4.6, 4.6, 'k')
    c.rect(8, 5, 14, 55, 'w', 0)
    for i in range(5):
        y = 5 + 50 - 10 * (i + 1) + 5; c.line(15, y, 17, y)
    F.append(c)
    return F


NAMES = ('clear', 'high-cloud', 'breeze', 'light-rain', 'heavy-rain', 'snow', 'heavy-snow', 'hail', 'white-storm',
    'thunder', 'thermometer')

def pictures():
    return {'Travel/Weather/' + n: c for n, c in zip(NAMES, weather())}
