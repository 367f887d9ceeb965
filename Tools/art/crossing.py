"""The river crossing: ground, ripples, heron, float, ferry, ford, and what drifts away."""
import math
import random

from country import cloud, dark_grass, tree
from figures import halo, ox, person, wain, wheel
from ink import at, points, spline, Sprite

def ground():
    c = Sprite(262, 155, 64, 9)
    # far line of hills
    h = spline('-4,27 30,20 62,25 100,18 140,24 190,17 230,23 268,20', n=8)
    m = c.mpoly(h + [(268, 34), (-4, 34)]); c.put(m, '25', 0); c.lines(h); cloud(c, 150, 11, 60, 8, 4)
    g = spline('-4,31 60,32 130,30 200,32 268,31', n=6)
    m = c.mpoly(g + [(268, 160), (-4, 160)]); c.put(m, 'w', 0); c.lines(g)
    # water between the banks
    L = spline('104,31 88,44 92,58 74,76 78,96 60,118 62,138 46,160', n=8)
    R = spline('150,31 176,42 182,58 198,74 194,94 206,116 202,136 212,160', n=8); water = c.mpoly(L + R[::-1])
    c.put(water, 'calm', 0)
    c.shade(c.mpoly(L + [(x + 9 + i * .08, y) for i, (x, y) in enumerate(L)][::-1]) & water, '50')
    c.lines(L); c.lines([(x + 1, y) for x, y in L]); c.lines(R)
    # broken bank edges
    for p in R[4::7]:
        c.line(p[0] - 2, p[1] + 1, p[0] - 5, p[1] + 2)
    # far rows of willows
    for x, hh, s_ in ((14, 26, 1), (34, 20, 2), (62, 24, 3), (84, 16, 4)):
        tree(c, x, 40 + s_ % 2 * 3, hh, 'willow', s_)
    for x, hh, s_ in ((232, 24, 5), (252, 30, 6), (208, 16, 7)): tree(c, x, 40, hh, 'willow', s_)
    # tracks: up the far bank, down the near one
    for o in (0, 7):
        c.lines(spline([(70 - o * .4, 104 + o), (52, 96 + o), (34, 78 + o), (26, 60 + o * .7), (12, 48 + o * .5),
            (-4, 44 + o * .4)], n=6), dash=(1, 1, 1, 1, 0))
        c.lines(spline([(199, 104 + o), (222, 100 + o), (244, 104 + o), (266, 102 + o)], n=6), dash=(1, 1, 1, 1, 0))
    # a stake
    c.rect(96, 34, 101, 66, 'w')
    for y in (36, 44, 52, 60): c.rect(96, y, 101, y + 4, 'k', 0)
    c.rect(100, 34, 101, 66, 'k', 0)
    for y in (68, 70): c.line(93, y, 104, y, 1)
    # grass and reeds
    for x, y in ((10, 70), (20, 120), (38, 128), (12, 140), (50, 70), (30, 104), (226, 62), (246, 74), (220, 134),
            (242, 126), (254, 144), (230, 148), (8, 96), (34, 150), (240, 90), (224, 82)):
        c.tuft(x, y, 3, 5, 0)
    for x0, y0 in ((196, 118), (203, 126), (52, 128), (208, 146), (58, 110)):
        for k in range(4):
            c.curve([(x0 + k * 2, y0), (x0 + k * 2 + 1, y0 - 7), (x0 + k * 3 - 1, y0 - 12 + k)])
    for x, y, w in ((238, 60, 7), (24, 88, 6), (214, 110, 5)):
        m = c.poly(spline(at(x, y, '-1,0 -.6,-.7 0,-.8 .8,-.4 1,0', w), n=4), 'w', heavy=1)
    # the near corners stand dark against the light
    r2 = random.Random(5); cl = c.clip; c.clip = c.mrect(0, 0, 62, 155)
    dark_grass(c, spline('-8,138 14,141 32,147 46,158', n=8), ((12, 11, 11), (22, 14, 13)), r2, -4, 44, (5, 13),
        (6, 21))
    c.clip = c.mrect(196, 0, 262, 155)
    dark_grass(c, spline('212,160 226,148 242,141 272,136', n=8), ((12, 11, 11), (22, 14, 13)), r2, 216, 266, (5, 13),
        (255,))
    c.clip = cl
    return c

def ripples(k):
    """A band of ripples as wide as the water, in two states."""
    c = Sprite(200, 10, 100, 100)
    for i in range(9):
        x, y = (i * 23 + k * 11) % 190, (1, 6, 3, 8)[(i + k) % 4]
        c.lines(at(x, y, '0,1 3,0 8,0 11,1'))
        if i % 2: c.line(x + 3, y + 2, x + 7, y + 2)
    return c.crop(36, 0, 124, 10)

# Set by hand; each stands on the lowest row of its picture, herons in flight as much higher as told.
SET = {
    'heron-stands': (24, 24, 0, """
_____####_______________
###########_____________
___##...##______________
______#..#______________
_______#.#______________
_______#.#______________
______#..#______________
_____#..#_______________
_____#.##_______________
_____#..####____________
_____#......##__________
______#.......##________
______#..##.....##______
_______#..####....##____
________#...#####..##___
_________####..######___
___________#.###________
___________#_#__________
___________#_#__________
___________#_#__________
___________#_#__________
___________#_#__________
__________##_##_________
"""),
    'heron-crouches': (24, 24, 0, """
____####________________
###########_____________
___#...##_______________
____###.#_______________
______#..#______________
_______#..#####_________
_______#.......##_______
________#..##....##_____
_________#..####...##___
__________###..######___
____________#.##________
____________#_#_________
___________#___#________
__________#_____#_______
___________#___#________
___________##__##_______
"""),
    'heron-wings-up': (24, 24, 3, """
____________##__________
___________#..#_________
__________#...#_________
__________#..#__________
__________#..#__________
__________#...#_________
___________#..#_________
_____###___#...#________
######.##__#....#_______
_____#..####....#_______
______##........####____
________##..........##__
__________####....######
______________######__##
_____________________###
"""),
    'heron-wings-down': (24, 24, 4, """
_____###________________
######.##_______________
_____#..######__________
______##......###_______
________##.......####___
__________##..........##
___________#...####.####
__________#...#____###__
__________#...#______##_
_________#...#__________
_________#..#___________
________#...#___________
________#..#____________
_________##_____________
"""),
    'barrel': (14, 10, 0, """
__#########___
_#.#.....#.#__
#..#.....#..#_
#..#.....#..#_
#..#.....#..#_
#..#.....#..#_
_#.#.....#.#__
______________
##__###__###__
__##___##___##
"""),
    'chest': (14, 10, 0, """
_###########__
#...........#_
#############_
#....###....#_
#....#.#....#_
#....###....#_
#############_
______________
_###__###__##_
#___##___##__#
"""),
    'hat': (14, 10, 0, """
______________
____#####_____
___#.....#____
___#######____
___#######____
_###.....###__
#...........#_
_###########__
##__###__###__
__##___##___##
"""),
    'ox-swimming': (22, 12, 0, """
#__#__________________
_#_##_________________
_####___#######____#__
#....###.......####___
#.#...............#___
#.................#___
_###...............#__
____################__
______________________
###__####__####__###__
___##____##____##___##
_#####___#####___###__
"""),
}

def set_by_hand(w, h, up, text):
    c = Sprite(w, h)
    rows = text.split()
    c.art(0, h - up - len(rows), rows)
    return c

def afloat(heeled):
    """The wain on the water with its wheels lashed on top, upright with a person at the pole, or heeled over."""
    c = Sprite(62, 42)
    a = math.radians(17)

    def T(pts):
        if not heeled: return points(pts)
        return [(31 + (x - 31) * math.cos(a) - (y - 24) * math.sin(a),
            27 + (x - 31) * math.sin(a) + (y - 24) * math.cos(a)) for x, y in points(pts)]
    c.poly(T(spline('9,24 7,16 9,13 22,12 34,13 46,11 54,12 55,18 53,24', n=4)), 'w', heavy=1)
    for x in (18, 28, 38, 47):
        c.lines(T([(x, 13), (x, 23)])); c.shade(c.mpoly(T(at(x, 0, '1,14 4,14 4,23 1,23'))), '25')
    for x, y, r in ((20, 8, 6.6), (40, 7, 6.6)): wheel(c, *T([(x, y)])[0], r, 25 if heeled else 8, 8)
    c.lines(T('16,13 44,12'))
    c.poly(T('3,24 57,24 53,36 9,36'), 'w', heavy=1); c.lines(T('5,28 56,28')); c.lines(T('7,32 54,32'))
    if heeled:
        c.a[37:] = 0
        c.poly('0,36 10,33 24,36 40,33 61,36 58,41 40,39 24,41 6,40', 'w')
    else:
        for x in (20, 38): c.line(x, 24, x, 35)
        person(c, 57, 25, 14, hat='cone', top='w'); c.stroke('52,6 61,40', 1.2)
        c.poly('0,36 6,34 54,34 61,36 58,40 40,39 24,41 6,40', 'w')
    c.lines('4,37 14,38 22,37 34,38 46,37 56,38')
    return c

def ferry(sinking):
    """Wain and two oxen aboard, the hawser, the ferrywoman; level, or one end under."""
    c = Sprite(100, 46)
    tilt = .13 if sinking else 0

    def deck(pts): return [(x, y + (x - 50) * tilt) for x, y in points(pts)]
    c.poly(deck('5,25 96,25 94,36 7,36'), 'w'); c.lines(deck('5,29 95,29'))
    wain(c, 38, 33 + int(tilt * 14), 42, 29, lantern=False)
    ox(c, 7, 34 - int(tilt * 26), 26, 16, tone='k')
    halo(c, lambda d: ox(d, 16, 35 - int(tilt * 22), 26, 16))
    person(c, 88, 34 + int(tilt * 36), 16, hat='cone', skirt=True, arm=((3, 14), (6, 15)))
    c.poly(deck('0,33 8,35 90,35 99,33 92,43 8,43'), 'w', heavy=1); c.lines(deck('5,38 94,38'))
    for x in range(14, 92, 11):
        for nail in deck([(x, 36.6), (x, 40)]): c.px(*nail)
    # posts at both ends carry the hawser, clear of the rest, so that the river shows beneath
    c.stroke(deck('7,35 7,21'), 2); c.stroke(deck('94,35 94,27'), 2)
    c.lines([(0, 19 - tilt * 40)] + deck('7,21')); c.lines(deck('94,27') + [(99, 26 + tilt * 40)])
    if sinking:
        c.a[42:] = 0
        c.poly('1,40 20,41 50,40 76,37 99,38 96,46 10,46', 'w')
        c.lines('8,43 24,44 44,43 64,41 94,41'); c.lines('60,44 80,43 92,44')
    else:
        c.poly('1,42 12,40 50,42 88,40 99,42 90,46 10,46', 'w'); c.lines('8,43 24,44 44,43 64,44 90,43')
    return c

def hoops():
    """What shows of a sunken wain: its hoops, and a strip of canvas on two of them."""
    c = Sprite(60, 24)
    for x in (6, 20, 34, 48):
        for o in (0, 1): c.lines(spline(at(x, 0, [(-4, 23), (-3, 12), (1 + o, 4 if x in (6, 48) else 5), (6 + o, 11),
            (8 + o, 23)]), n=5))
    c.lines('6,5 20,6 34,6 49,4')
    c.poly(spline('21,5 28,7 35,5', n=4) + spline('36,6 41,12 42,18', n=4) + points('39,16 36,19 33,15 30,18 28,13')
           + spline('28,13 26,9 21,5', n=3), 'w')
    c.shade(c.mpoly('30,8 36,7 42,18 33,16'), '25'); c.a[20:] = 0
    c.lines('0,21 8,20 16,21 30,20 44,21 59,20'); c.lines('10,23 24,22 40,23')
    return c

def ford():
    """Oxen and wain in the ford, water to the axle."""
    c = Sprite(112, 42)
    ox(c, 0, 39, 30, 20, tone='k'); halo(c, lambda d: ox(d, 13, 40, 30, 20, yoke=True))
    c.line(42, 31, 56, 31); wain(c, 50, 44, 58, 42, lantern=True, ang=9)
    c.a[35:] = 0
    c.poly('0,35 20,34 60,36 90,34 111,36 106,41 60,40 20,42 4,40', 'w'); c.lines('4,37 20,36 36,38 60,37 84,38 106,37')
    return c

def ford_down():
    """The wain down on one wheel: the upright one, sheared."""
    c, upright = Sprite(80, 34), Sprite(80, 60)
    wain(upright, 10, 47, 60, 39, lantern=True, ang=20)
    for x in range(80):
        top = 3 + (x - 40) * .16
        c.a[:, x] = [upright.a[int(round(y + top)), x] if round(y + top) >= 0 else 0 for y in range(34)]
    c.a[28:] = 0
    c.poly('0,28 20,27 44,29 79,26 76,33 40,32 6,33', 'w'); c.lines('4,30 18,29 34,31 56,29 74,30')
    return c

def pictures():
    out = {'ground': ground(), 'ripples-1': ripples(0), 'ripples-2': ripples(1), 'float': afloat(False),
        'float-heeled': afloat(True), 'ferry': ferry(False), 'ferry-sinking': ferry(True), 'hoops': hoops(),
        'ford': ford(), 'ford-down': ford_down()}
    out |= {name: set_by_hand(*frame) for name, frame in SET.items()}
    return {'Crossing/' + name: c for name, c in out.items()}
