"""The travel scene: backdrop, clouds, ground, and the wain with its leading pair in four steps."""
import math

import numpy as np

from country import cloud
from figures import bird, wain
from ink import at, Canvas, spline

OX = """
__#_____________________
_#___#__________________
_##_##____###___________
__####_###...########___
_#...##.............##__
#.#..#...............##_
#....#...............#.#
##.###..............##_#
_####_####.......####__#
_________#########______
""".split()
# A leg through the four steps, row by row from the belly: reaching, bearing, pushing off, lifted.
LEGS = ((0, -1, -2, -3, -3), (0, 0, 0, 0, 0), (0, 1, 2, 3, 4), (0, -1, -1, 0))

def pair(c, x, y, step):
    """The leading pair, 30 by 14: the off ox dark and a head ahead, the near ox white with its bell; heads nod."""
    top, nod = y - 14, step % 2

    def leg(column, k, width):
        for row, dx in enumerate(LEGS[k % 4]): c.a[top + 9 + row, x + column + dx:x + column + dx + width] = 1

    def coat(dx, solid, ink):
        """Paints one ox where its shape is solid, or draws its lines."""
        for row, line in enumerate(OX):
            for column, ch in enumerate(line):
                if ch == '#' or (ch == '.' and solid):
                    c.px(x + dx + column, top + row + (nod if column < 7 else 0), ink)
    leg(8, step + 2, 1); leg(18, step, 1); leg(14, step + 2, 1); leg(22, step, 1)
    coat(0, True, 1); c.px(x + 2, top + 5 + nod, 0)
    for dx in (4, 5, 6): coat(dx, True, 0)
    coat(6, False, 1)
    leg(15, step, 2); leg(24, step + 3, 2)
    c.art(x + 10 + (0, 1, 0, -1)[step], top + 9 + nod, ['##', '##'])

def scene():
    F = {}
    # backdrop
    c = Canvas(262, 77, 64, 9); sun = c.mell(46, 17, 8, 8); c.put(sun, 'w')
    for i in range(9):
        a = math.radians(180 + 22.5 * i)
        c.line(45.5 + math.cos(a) * 10.5, 16.5 + math.sin(a) * 10.5, 45.5 + math.cos(a) * 14, 16.5 + math.sin(a) * 14)
    back = spline('-4,20 14,17 34,19 58,16 78,18 98,12 112,15 130,11 146,16 166,13 180,17 206,14 226,18 250,16 268,19',
        n=6)
    m = c.mpoly(back + [(268, 23), (-4, 23)]); c.put(m, '25', 0); c.lines(back)
    front = spline('-4,22 20,21 46,22 84,19 116,21 150,19 190,21 224,20 266,22', n=6)
    m = c.mpoly(front + [(268, 23), (-4, 23)]); c.put(m, 'w', 0); c.lines(front); c.a[23:] = 0
    for x, y, k in ((190, 5, 0), (200, 8, 1), (212, 4, 2)):
        bird(c, x, y, k)
    F['backdrop'] = c
    # clouds: period 262
    t = Canvas(262, 14, 64, 32); cloud(t, 18, 12, 62, 10, 3); cloud(t, 112, 13, 44, 7, 5); cloud(t, 184, 11, 54, 9, 8)
    for i, (x, y) in enumerate(((92, 6), (96, 4), (100, 2), (104, 4), (108, 6), (112, 8))):
        t.lines(at(x, y, '-1,-1 0,0 1,-1'))
    c = Canvas(524, 14); c.a = np.concatenate([t.a, t.a], 1); F['clouds'] = c
    # ground: period 240
    t = Canvas(240, 5); t.a[0] = 1
    for x in list(range(0, 240)):
        if (x * 7) % 13 in (0, 1, 2, 3, 4, 5, 6) and 90 > (x % 97): t.a[2, x] = 1
        if (x * 5 + 3) % 17 < 6: t.a[4, x] = 1
    t.a[1:, 150:172] = 0
    # stone
    t.art(154, 1, ["__####____", "_#...##___", "#....###__"]); t.a[1:, 60:76] = 0
    # hare's hole
    t.art(62, 1, ["_########_", "_########_", "__######__", ])
    for x in (12, 38, 100, 126, 196, 222):
        t.a[1:4, x - 1:x + 8] = 0; t.art(x, 1, ["#_#_#", "_###_"])
    c = Canvas(502, 5); c.a = np.concatenate([t.a, t.a, t.a], 1)[:, :502]; F['ground'] = c
    # wain and pair
    for p in range(4):
        c = Canvas(68, 27, 256, 54); c.closed = True; y = 27; wain(c, 28, y, 40, 26, ang=p * 11.25, hoops=5)
        pair(c, 0, y, p)
        # the yoke
        c.line(13, y - 13, 13, y - 11); c.line(14, y - 13, 14, y - 12)
        # the pole
        c.line(29, y - 7, 33, y - 6); F[f'wain-{p + 1}'] = c
    return F


def pictures():
    return {'Travel/Scene/' + name: c for name, c in scene().items()}
