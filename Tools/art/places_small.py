"""The places as they pass in the travel scene, 35 rows high."""
import random

from country import courses, crown, plume, thatch, tree
from figures import bird, tent
from ink import arc, at, Canvas, points, spline

def S(w):
    return Canvas(w, 35, 64, 46)

def gate_lanthorn():
    c = S(60)
    for x0 in (4, 42):
        m = c.rect(x0, 8, x0 + 14, 35, 'w', heavy=1); courses(c, c.inner(m), 4, 6)
        for k in range(3): c.rect(x0 + k * 5, 4, x0 + k * 5 + 4, 9, 'w')
    m = c.rect(17, 2, 43, 35, 'w'); courses(c, c.inner(m), 4, 7, 3); c.poly('15,4 30,-4 45,4', 'k')
    c.poly([(22, 35)] + arc(30, 25, 8, 8, 180, 360) + [(38, 35)], '75')
    c.ell(30, 10, 5, 5, 'w'); c.line(30, 10, 30, 7); c.line(30, 10, 32, 11)
    return c

def linnet():
    c = S(96); m = c.poly('6,35 6,23 86,23 86,35', 'w', heavy=1); c.hatch(m, 3, 0)
    for x in (14, 34, 64):
        c.rect(x, 26, x + 7, 32, 'k', 0); c.line(x + 3, 26, x + 3, 31, 0)
    c.rect(48, 25, 57, 35, '75'); thatch(c, '2,24 14,11 80,11 92,24', 12)
    m = c.poly('60,14 61,1 73,1 74,14', 'w', heavy=1); courses(c, c.inner(m), 4, 6, 7, .9)
    c.art(25, 3, ["_##______", "##.#_____", "_#..##___", "_#....##_", "__#..#.##", "___####__", "____#_#__",
        "____#_#__"])
    return c

def dial():
    c = S(52); m = c.poly('14,35 17,20 21,4 26,0 31,2 30,14 31,24 33,35', 'w', heavy=1)
    c.shade(m & c.mpoly('26,0 34,0 36,36 27,36 25,18'), '/'); c.lines('26,1 25,18 27,34')
    c.poly('33,35 52,33 52,35', '50', 0); tent(c, 7, 35, 13, 9); tent(c, 42, 35, 12, 8); tent(c, 50, 35, 9, 6)
    return c

def mallow():
    c = S(84); tent(c, 26, 31, 30, 21); tent(c, 58, 31, 26, 18)
    m = c.poly(spline('0,35 3,27 14,24 30,26 46,24 62,26 76,24 82,28 84,35', n=5), 'w', heavy=1); r = random.Random(3)
    courses(c, c.inner(m), 3, 6, 2, .6)
    for x in (8, 17, 40, 48, 70, 77):
        h = r.randint(7, 11); c.line(x, 25, x, 25 - h)
        for k in range(3):
            c.art(x - 1 + (k % 2), 25 - h + k * 3 - 1, ["##", "##"])
    return c

def lyre():
    c = S(78); r = random.Random(6); x = 2; k = 0
    while x < 76:
        w = r.choice((5, 6, 7)); h = 33 - x * .30 + r.uniform(-4, 2); top = 35 - max(6, h)
        tone = ('w', '/', 'w', '50', 'w', '/')[k % 6]
        c.poly([(x, 35), (x, top + 1.5), (x + w * .35, top), (x + w, top + 1.2), (x + w, 35)], tone)
        c.line(x + w - 1, top + 2, x + w - 1, 35); x += w - 1; k += 1
    for x, y, rr in ((66, 31, 4), (73, 32, 3)):
        c.ell(x, y, rr, rr, 'w'); c.px(x - .5, y - .5)
    return c

def ash():
    c = S(66); r = random.Random(2)
    for s_ in (-1, 1):
        c.band(spline([(33 + s_ * 2, 36), (33 + s_ * 4, 26), (33 + s_ * 11, 19), (33 + s_ * 17, 13)]), 5, 2.5, 'w')
        c.shade(c.mstroke(spline([(33 + s_ * 2 + 1, 36), (33 + s_ * 4 + 1, 26), (33 + s_ * 11, 19)]), 2), '50')
    c.poly('31,35 33,22 36,35', 'k', 0)
    for s_ in (-1, 1): crown(c, 33 + s_ * 18, 11, 15.5, 11, r)
    c.lines('24,34 28,32 30,34'); c.lines('37,34 40,32 44,34')
    return c

def corbel():
    c = S(58); m = c.poly(spline('14,35 18,24 22,10 23,4', n=5) + spline('37,4 38,10 42,24 46,35', n=5), 'w', heavy=1)
    inner = c.inner(m); cl = c.clip; c.clip = inner
    for y in (10, 16, 22, 28, 34):
        c.curve([(12, y - 1), (30, y + 1.4), (48, y - 1)], dash=(1, 1, 1, 1, 1, 0, 0))
    c.shade(c.mpoly('36,0 60,0 60,36 38,36 35,14'), '/'); c.clip = cl
    for p in ([(14, 34), (22, 30), (32, 29), (43, 23)], [(19, 21), (26, 18), (33, 17), (39, 11)]):
        q = spline(p); c.band([(x, y - 1) for x, y in q], 4, tone='w')
        for i in range(2, len(q) - 1, 3): c.line(q[i][0], q[i][1] - 2, q[i][0], q[i][1])
    c.poly('20,5 30,-2 40,5', 'k'); c.rect(28, 8, 31, 13, 'k', 0); c.rect(31, 22, 34, 26, 'k', 0)
    for x in (4, 52):
        m = c.poly(spline([(x - 4, 35), (x - 4, 29), (x, 24), (x + 4, 29), (x + 4, 35)], n=5), 'w')
        for y in (28, 31): c.line(x - 3, y, x + 2, y)
        c.px(x, 33); c.px(x - 1, 33)
    return c

def bakers():
    c = S(88)
    for k, x in enumerate((22, 48, 77)):
        for dx in (-4, 0, 4):
            wisp = spline(at(x + dx, k % 2 * 2, '0,27 -3,22 0,17 -5,12 -3,7 -9,2'), n=8)
            c.stroke(wisp, 1 if dx else 2, 1)
        c.poly(at(x, 35, '-8,0 -3,-5 3,-5 8,0'), 'w', heavy=1); c.line(x - 2, 30, x + 2, 30)
    c.stroke('62,34 62,13', 1.6); c.poly(spline('59,13 57.6,7 59.6,2 62.5,1 65.4,2 67,7 65.6,13', True), 'w', heavy=1)
    for x, y in points('4,34 86,33 10,34 58,34 70,34'): c.px(x, y)
    for x in (31, 37): c.art(x, 31, ('_###_', '#####', '#####', '_###_'))
    return c

def ember():
    c = S(92); plume(c, 76, 14, 16, -12, 3, 9, 3)
    def dome(x, w, h):
        m = c.poly(spline([(x - w / 2, 35), (x - w * .46, 35 - h * .55), (x, 35 - h), (x + w * .46, 35 - h * .55),
            (x + w / 2, 35)], n=8), 'w', heavy=1)
        c.shade(m & c.mpoly([(x + w * .12, 35 - h), (x + w, 35 - h), (x + w, 35), (x + w * .22, 35)]), '25')
        c.poly([(x - 3, 35)] + arc(x, 30, 3, 4, 180, 360) + [(x + 3, 35)], 'k')
        c.px(x - 1, 35 - h - 1); c.px(x, 35 - h - 1)
    dome(15, 28, 21); dome(55, 24, 17); dome(35, 30, 25)
    m = c.poly('68,35 70,22 73,14 80,14 83,22 86,35', 'w', heavy=1); courses(c, c.inner(m), 3, 6)
    c.poly([(72, 35)] + arc(77, 30, 4, 5, 180, 360) + [(82, 35)], 'k'); c.ell(77, 33, 2, 2, 'w', 0)
    return c

def aumbry():
    c = S(86); tree(c, 6, 35, 34, 'birch', 3); tree(c, 79, 35, 35, 'birch', 5)
    for x in (18, 34, 50, 64):
        c.poly([(x - 1, 35), (x, 28), (x - 2, 27), (x + 5, 27), (x + 3, 28), (x + 4, 35)], 'w')
    c.rect(14, 12, 71, 28, 'w', heavy=1)
    for x in range(18, 70, 5): c.line(x, 13, x, 26)
    for y in (16, 20, 24): c.line(15, y, 69, y)
    c.rect(23, 16, 28, 20, 'k', 0); c.rect(53, 20, 58, 24, 'k', 0); thatch(c, '10,13 20,3 65,3 75,13', 8, 4)
    return c

def saddle():
    c = S(56)
    for x0 in (10, 38):
        m = c.poly([(x0, 35), (x0 + 1, 8), (x0 + 7, 8), (x0 + 8, 35)], 'w', heavy=1); courses(c, c.inner(m), 4, 5)
    c.poly('6,9 8,4 48,4 50,9', 'w', heavy=1); c.line(28, 9, 28, 12)
    c.poly(spline('24,14 28,11 32,14', n=4) + spline('33,22 36,26', n=2) + [(20, 26)]
        + spline('20,26 23,22 24,14', n=3), 'k')
    c.ell(28, 27, 1.6, 1.6, 'k')
    for x, y in ((4, 2), (52, 1), (47, 12), (4, 14), (53, 20), (14, 1)): bird(c, x, y, x, 2)
    for x in (18, 40): c.art(x, 1, ["##", "##", "_#"])
    return c

def wicken():
    c = S(72); m = c.rect(6, 20, 46, 35, 'w', heavy=1); courses(c, c.inner(m), 4, 7)
    c.rect(11, 24, 18, 30, 'w'); c.line(14, 24, 14, 29); c.rect(34, 24, 41, 30, 'w'); c.line(37, 24, 37, 29)
    c.rect(22, 24, 30, 35, 'k', 0); m = c.poly('2,21 14,3 38,3 50,21', 'w', heavy=1)
    c.shade(m & c.mpoly('30,3 50,3 50,21 36,21'), 'mist'); c.rect(31, 0, 38, 7, 'w', heavy=1)
    c.lines('2,20 6,22 10,20 15,22 21,20 28,22 35,20 42,22 48,20'); tree(c, 59, 35, 32, 'rowan', 4)
    return c

def elbow():
    c = S(80); m = c.rect(4, 19, 30, 35, 'w', heavy=1); courses(c, c.inner(m), 4, 6)
    c.poly('1,20 17,6 33,20', '/', heavy=1); c.rect(9, 24, 14, 29, 'k', 0); c.rect(20, 24, 26, 35, '75')
    c.poly('30,26 30,24 52,15 53,17', 'w'); c.rect(32, 24, 35, 35, 'k', 0)
    c.stroke('48,35 68,4', 2.6); c.stroke('78,35 66,4', 2.6); c.stroke('54,27 75,27', 2); c.stroke('60,17 71,17', 2)
    for x in (52, 59, 66, 73):
        c.ell(x, 31.5, 3.6, 3.4, 'w'); c.px(x - .5, 31)
    c.line(67, 4, 58, 22)
    return c

def river():
    c = S(90); tree(c, 70, 32, 30, 'willow', 3)
    c.poly(spline('0,27 20,26 44,27 66,28 90,30', n=4) + [(90, 35), (0, 35)], 'w', 0)
    c.curve('0,27 20,26 44,27 66,28 90,30')
    for y in (30, 33):
        for x in range(2 + y % 5, 88, 13): c.line(x, y, x + 6, y)
    c.rect(10, 3, 15, 32, 'w')
    for y in (6, 12, 18, 24): c.rect(10, y, 15, y + 3, 'k', 0)
    c.poly('26,26 52,26 49,31 29,31', 'w', heavy=1)
    c.line(28, 28, 50, 28); c.line(30, 26, 30, 20); c.line(30, 20, 16, 24)
    c.rect(36, 22, 44, 27, 'w'); c.line(36, 24, 43, 24)
    return c

def yonder():
    c = S(100)
    for k, (y, x0, x1) in enumerate(((29, 0, 34), (22, 0, 30), (15, 0, 24), (29, 66, 100), (22, 70, 100),
            (15, 76, 100))):
        m = c.rect(x0, y, x1, y + 7 if y != 29 else 35, 'w'); courses(c, c.inner(m), 3, 6, k, .6)
        for x in range(x0 + 3, x1 - 3, 9): c.art(x, y - 3, ["_##_", "####", "_##_"])
    c.rect(10, 31, 15, 35, 'k', 0); c.rect(86, 31, 91, 35, 'k', 0)
    for x0 in (34, 58):
        m = c.rect(x0, 6, x0 + 8, 35, 'w', heavy=1); courses(c, c.inner(m), 4, 5)
    c.poly('30,8 33,2 67,2 70,8', 'k'); c.rect(42, 14, 58, 35, 'w'); c.line(50, 14, 50, 34)
    for y in range(17, 35, 4): c.line(42, y, 57, y)
    c.line(42, 8, 42, 14); c.line(57, 8, 57, 14); c.line(50, -1, 50, 2)
    return c


PLACES = {'lanthorn': gate_lanthorn, 'linnet': linnet, 'dial-rock': dial, 'mallow': mallow, 'lyre-cliff': lyre,
    'split-ash': ash, 'corbel': corbel, 'seven-bakers': bakers, 'ember': ember, 'aumbry': aumbry,
    'jackdaw-saddle': saddle, 'wicken': wicken, 'elbow-landing': elbow, 'river': river, 'yonderley': yonder}

def pictures():
    return {'Travel/Scene/' + n: draw() for n, draw in PLACES.items()}
