"""Icons of 32 by 32, to be or-ed on a key."""
import math

from country import courses, tree
from figures import ox, person, wain, wheel
from ink import arc, at, Canvas, spline

ICONS = {}

def icon(name):
    """Enters a drawing routine under its picture's name."""
    def enter(draw):
        ICONS[name] = draw
        return draw
    return enter

@icon('^stop')
def gate(c):
    for x in (1, 27):
        c.rect(x, 3, x + 4, 31, 'w', heavy=1); c.line(x, 2, x + 3, 2)
    for y in (8, 15, 22):
        c.rect(5, y, 27, y + 4, 'w'); c.line(5, y + 3, 26, y + 3)
    c.band('6,27 25,6', 4, tone='w')
    for x in (8, 23):
        for y in (9, 16, 23): c.px(x, y + 1)
    c.line(0, 31, 31, 31)

@icon('^note')
def bell(c):
    c.rect(2, 2, 30, 5, 'w', heavy=1); c.line(15, 5, 15, 8); c.line(16, 5, 16, 8)
    c.poly(spline('10,13 12,9 16,7.5 20,9 22,13', n=4) + spline('22,13 23,20 27,26', n=4)
        + spline('5,26 9,20 10,13', n=4), 'w', heavy=1)
    c.line(6, 23, 25, 23); c.shade(c.mpoly('18,9 23,11 26,25 19,25'), '25'); c.ell(16, 28.5, 2.5, 2.5, 'k')
    c.curve('3,14 1,19 2,24'); c.curve('28,14 30,19 29,24')

@icon('^caution')
def stone(c):
    m = c.poly('4,29 7,19 12,9 17,3 23,1 28,5 28,11 24,19 18,29', 'w', heavy=1)
    c.shade(c.inner(m) & c.mpoly('22,0 30,4 29,12 24,20 18,30 12,30 17,20 22,10'), '/')
    c.lines('22,3 21,10 17,19 13,28'); c.lines('11,14 14,17 12,21'); c.lines('9,22 12,24')
    c.stroke('29,29 24,16', 1.6); c.stroke('22,17 27,15', 1.4)                 # a prop
    c.lines('5,14 9,7'); c.lines('9,4 13,1'); c.lines('2,19 3,17')             # it has moved
    c.rect(0, 29, 32, 31, 'k', 0); c.px(21, 28); c.px(22, 28); c.px(1, 28); c.px(2, 28)

@icon('wheel')
def whl(c):
    wheel(c, 16, 16, 15.4, 9, 10)

@icon('view')
def hillwin(c):
    c.rect(2, 2, 30, 28, 'w', heavy=1); c.poly(spline('3,24 9,18 15,11 20,15 28,23', n=5) + [(28, 26), (3, 26)], 'w')
    c.shade(c.mpoly('15,11 20,15 28,23 28,26 18,26 17,18'), '/')
    c.ell(8, 9, 2.6, 2.6, 'w'); c.line(16, 3, 16, 9); c.line(16, 20, 16, 26)
    c.line(3, 15, 9, 15); c.line(22, 15, 28, 15); c.rect(0, 28, 32, 31, 'w', heavy=0); c.line(1, 30, 31, 30)

@icon('guide')
def book(c):
    c.poly('1,6 1,27 15,29 16,30 17,29 31,27 31,6', 'k')
    c.poly(spline('2,5 9,4 16,7', n=5) + spline('16,28 9,25 2,26', n=5), 'w')
    c.poly(spline('16,7 23,4 30,5', n=5) + spline('30,26 23,25 16,28', n=5), 'w')
    for y in range(9, 24, 3):
        c.line(4, y, 13, y + 1)
        if y < 15: c.line(19, y + 1, 28, y)
    c.poly(spline('20,32 20,24 21,18 23.5,16 26,18 27,24 28,32', n=5), 'w'); c.line(22, 19, 25, 19)

@icon('party')
def heads(c):
    for x, y, r in ((6, 9, 3.6), (25, 9, 3.6)):
        c.poly(spline([(x - 6, 26), (x - 5, 16), (x, 14), (x + 5, 16), (x + 6, 26)], n=4), 'w')
        c.ell(x, y, r, r + .6, 'w')
    c.put(c.mell(6, 8, 4, 3) & c.mrect(0, 0, 32, 8), 'k', 0); c.stroke('19,7 31,7', 1.4); c.rect(22, 3, 29, 7, 'k', 0)
    c.poly(spline('8,31 9,18 15.5,15.5 22,18 23,31', n=4), 'k'); c.ell(15.5, 8.5, 4.6, 5.2, 'w')
    c.stroke('8,6 23,6', 1.6); c.poly('11,6 12,1 19,1 20,6', 'k')
    c.poly(spline('19,32 20,27 24,25.5 28,27 29,32', n=4), 'w'); c.ell(24, 22.4, 3, 3.2, 'w')
    c.put(c.mell(24, 21.5, 3.2, 2.6) & c.mrect(0, 0, 32, 22), 'k', 0)

@icon('buy')
def scales(c):
    c.stroke('16,3 16,28', 2); c.rect(9, 28, 23, 31, 'k', 0); c.ell(16, 3.5, 2, 2, 'w'); c.stroke('4,10 28,5', 1.8)
    for x, y in ((5, 10), (27, 5)):
        c.line(x, y, x - 5, y + 11); c.line(x, y, x + 4, y + 11)
        c.poly(spline(at(x, y, '-6,11 -3,15 2,15 5,11'), n=4), 'w'); c.line(x - 6, y + 11, x + 4, y + 11)
    c.poly('2,21 3,16 7,16 8,21', 'k')
    for x in (25, 28): c.ell(x - .5, 14, 1.7, 1.7, 'w')

@icon('halt')
def bell1(c):
    bell(c); c.a[:6] = 0; c.line(16, 3, 16, 8); c.line(15, 3, 15, 8); c.line(11, 3, 20, 3)
    c.a[12:26, 0:4] = 0; c.a[12:26, 28:32] = 0
    for x0, y0, x1, y1 in ((28, 10, 31, 7), (29, 15, 31, 15), (28, 20, 30, 22)): c.line(x0, y0, x1, y1)

@icon('roll-on')
def roll(c):
    wheel(c, 12, 16, 12, 0, 8)
    for y, x0 in ((9, 26), (16, 26), (23, 26)):
        c.line(x0, y, 31, y); c.line(x0 + 1, y + 1, 31, y + 1)
    c.line(1, 30, 30, 30)

@icon('trade')
def parcels(c):
    for f in (0, 1):
        d = Canvas(32, 32); y = 3 if not f else 15
        d.rect(10, y, 22, y + 9, 'w', heavy=1); d.line(15, y, 15, y + 7); d.line(10, y + 4, 20, y + 4)
        d.poly(spline([(0, y + 7), (6, y + 8), (10, y + 10), (18, y + 10), (20, y + 12), (17, y + 13), (8, y + 14),
            (0, y + 13)], True, 4), 'w')
        d.rect(0, y + 6, 3, y + 15, 'k', 0); c.a |= d.a[:, ::-1] if f else d.a

@icon('talk')
def talk(c):
    P = [(0, 31), (2, 26), (1, 20), (1, 13), (4, 8), (9, 8), (11, 11), (10.6, 14), (13, 17.6), (11.6, 18.6), (11.8, 20),
        (11, 21), (11, 22.4), (9.6, 24), (7.6, 24), (8.6, 28), (11, 31)]
    c.poly(P, 'k'); c.poly([(32 - a, b) for a, b in P], 'w'); c.px(22, 14)
    c.put(c.mpoly('31,31 31,13 28,8 23,8 21,10 26,12 27,16 29,20'), '50', 0)
    c.lines('13,4 17,6 15,2 19,4'); c.line(9, 2, 12, 3); c.line(20, 5, 23, 3)

@icon('rest')
def rest(c):
    B_ = ["_____########", "_____#......#", "_____########", "_____#....#.#", "_____#....###", "_____#....#.#",
        "_____#....###", "_____#....#.#", "_____#....###", "_____#....#.#", "_____#....###", "_____#....#.#",
        "____#.....###", "__##......#.#", "_#........###", "#.........#.#", "#.........###", "#############",
        "#############", "_###_____####"]
    c.art(-1, 5, B_); c.art(9, 9, B_)
    c.rect(23, 17, 32, 28, 'w'); c.shade(c.mrect(26, 18, 32, 27), '25'); c.ell(24, 22.5, 3.6, 5.6, 'w')
    c.ell(24, 22.5, 1.8, 3, 'w'); c.rect(29, 16, 31, 29, 'k', 0); c.line(0, 29, 31, 29)

@icon('hunt')
def gun(c):
    c.stroke('1,3 20,13', 2.2); c.line(3, 7, 16, 13)
    c.poly('15,9 20,11 25,14 31,15 31,24 28,25 22,19 14,14', 'w', heavy=1)
    c.curve('19,18 17,21 20,22 23,20'); c.poly('18,10 19,6 22,8 21,11', 'k'); c.line(25, 17, 29, 20)
    m = c.poly(spline('1,17 5,15 8,18 10,23 15,26 21,27 15,30 8,29 3,25', True, 5), 'w', heavy=1)
    c.line(2, 20, 8, 18); c.shade(c.inner(m) & c.mpoly('3,25 9,24 20,27 14,31 6,30'), '50'); c.stroke('21,27 24,27', 2)
    c.curve('4,16 12,16 18,24')

def bowl(c, fill):
    c.poly(spline('2,14 4,22 10,27 22,27 28,22 30,14', n=5), 'w', heavy=1); c.ell(16, 14, 14, 4.2, 'w')
    c.rect(11, 27, 21, 30, 'w', heavy=1)
    if fill == 2:
        c.put(c.mell(16, 13.6, 11.6, 3) | c.mell(16, 12, 9, 4.6), '50'); c.ell(12, 10.5, 2, 2, 'w')
        c.ell(19, 11, 2.4, 2, 'k')
        for x in (11, 16, 21): c.curve([(x, 7), (x - 1, 5), (x + 1, 3), (x, 0)])
    elif fill == 1:
        c.put(c.mell(16, 15.4, 9, 2), '50'); c.curve('16,8 15,6 17,4 16,1')
    else:
        c.ell(16, 15.6, 2.4, 1.2, 'k'); c.band('20,13 30,3', 2.6, tone='w'); c.ell(19, 13.6, 2.6, 1.8, 'k')

def lantern(c, x=0, rays=True):
    c.lines(arc(16 + x, 6, 4, 4, 180, 360)); c.poly([(10 + x, 10), (16 + x, 5), (22 + x, 10)], 'k')
    c.rect(11 + x, 10, 21 + x, 25, 'w', heavy=1); c.rect(9 + x, 25, 23 + x, 28, 'k', 0)
    c.poly(spline([(16 + x, 13), (18 + x, 18), (17 + x, 22), (14 + x, 22), (13.4 + x, 18)], True, 4), 'w')
    c.px(15 + x, 20)
    if rays:
        for a, b, d, e in ((3, 12, 7, 14), (2, 18, 7, 18), (3, 24, 7, 22), (28, 12, 25, 14), (29, 18, 25, 18),
                (28, 24, 25, 22)):
            c.line(a, b, d, e)

@icon('rations-about')
def lf(c):
    lantern(c, 4, False)
    c.poly(spline('1,21 2,26 5,29 11,29 14,26 15,21', n=4), 'w', heavy=1); c.ell(8, 21, 7, 2.4, 'w')

@icon('pace-about')
def lp(c):
    lantern(c, 4, False); wheel(c, 8, 24, 7, 0, 8)

def oxdust(c, n):
    ox(c, 0 if n == 3 else 1, 22, 26, 17, tone='w', phase={1: 2, 2: 1, 3: 3}[n], yoke=True); c.line(0, 23, 31, 23)
    for k in range(n):
        x, y = 24 - k * 8, 27; c.lines(arc(x + 1, y + 1, 3.2, 2.6, 20, 330)); c.line(x + 3, y + 3, x + 6, y + 3)

@icon('two-wains')
def twowains(c):
    wain(c, 13, 16, 18, 15, lantern=False, hoops=3); wain(c, 1, 30, 22, 18, lantern=False, hoops=4)

@icon('raised-hand')
def hand(c):
    c.poly(spline('9,31 9,25 5,20 2,16 4,14 8,17 9,18', n=4) + [(9, 7), (10, 5), (12, 5), (13, 7), (13, 4), (14, 2),
        (16, 2), (17, 4), (17, 5), (18, 4), (20, 4), (21, 6), (21, 8), (22, 7), (24, 8), (25, 10)]
        + spline('25,10 25,20 22,26 22,31', n=4), 'w', heavy=1)
    for x, y in ((13, 7), (17, 5), (21, 8)): c.line(x, y, x, 15)
    c.curve('10,20 14,22 16,25'); c.rect(7, 28, 25, 32, 'k', 0)

@icon('two-hats')
def twohats(c):
    for x, y in ((0, 13), (12, 27)):
        c.poly(at(x, y, '5,0 6,-8 8,-9 12,-9 14,-8 15,0'), 'w', heavy=1); c.rect(x + 5, y - 3, x + 15, y, 'k', 0)
        c.put(c.mell(x + 10, y + .6, 10, 2.4), 'w', heavy=0)
        c.shade(c.mrect(x + 10, y, x + 20, y + 3) & c.mell(x + 10, y + .6, 9, 1.6), '50')

@icon('way-corbel')
def tower(c):
    m = c.poly(spline('9,24 11,14 12,5', n=4) + spline('20,5 21,14 23,24', n=4), 'w', heavy=1)
    courses(c, c.inner(m), 3, 5); c.poly('10,6 16,0 22,6', 'k'); c.rect(14, 17, 18, 24, 'k', 0)
    m = c.mpoly(spline('16,24 12,27 6,32', n=4) + spline('18,32 17,28 18,24', n=4)); c.put(m, 'w')
    c.line(0, 25, 9, 25); c.line(22, 25, 31, 25)
    for x in (26, 30): c.poly([(x - 2, 25), (x - 1, 21), (x + 1, 21), (x + 2, 25)], 'w')

@icon('way-cut')
def straight(c):
    c.line(0, 10, 31, 10); c.poly('15,10 18,10 28,32 4,32', 'w')
    for y, h in ((13, 2), (18, 3), (25, 4)): c.rect(16, y, 17 + (h > 3), y + h, 'k', 0)
    c.ell(16, 5, 3, 3, 'w')
    for a in (180, 215, 270, 325, 360):
        c.line(15.5 + 5 * math.cos(math.radians(a)), 5 + 5 * math.sin(math.radians(a)),
            15.5 + 7 * math.cos(math.radians(a)), 5 + 7 * math.sin(math.radians(a)))
    for x, y in ((3, 15), (6, 20), (27, 16), (2, 26), (29, 23)): c.tuft(x, y, 3, 3, 0)

@icon('way-wicken')
def house(c):
    c.rect(2, 15, 20, 30, 'w', heavy=1); c.poly('0,16 6,5 16,5 22,16', 'w', heavy=1); c.rect(12, 1, 16, 7, 'w')
    c.rect(5, 19, 9, 23, 'k', 0); c.rect(12, 20, 17, 30, '75'); tree(c, 26, 30, 24, 'rowan', 3); c.line(0, 30, 31, 30)

@icon('way-stair')
def steps(c):
    x, y = 1, 26; pts = [(0, 4), (6, 4)]
    for k in range(6):
        pts += [(6 + k * 4, 4 + (k + 1) * 4.4), (6 + (k + 1) * 4, 4 + (k + 1) * 4.4)]
    m = c.poly(pts + [(31, 31), (0, 31)], 'w', heavy=1); c.shade(c.mpoly('0,14 20,31 0,31') & ~c.edge(m), '/')
    c.lines('16,4 27,15'); c.lines('27,10 27,15 22,15')

@icon('way-toll')
def tgate(c):
    for x in (2, 24):
        c.rect(x, 6, x + 6, 30, 'w', heavy=1); c.line(x, 14, x + 4, 14); c.line(x, 22, x + 4, 22)
    c.rect(0, 3, 10, 7, 'w', heavy=1); c.rect(22, 3, 32, 7, 'w', heavy=1); c.rect(8, 14, 24, 18, 'w')
    for x in range(9, 24, 6): c.poly([(x, 17), (x + 3, 14), (x + 5, 14), (x + 2, 17)], 'k', 0)
    c.line(0, 30, 31, 30); c.line(12, 18, 12, 29); c.line(19, 18, 19, 29)

@icon('way-raft')
def raft(c):
    for x in (3, 9, 15, 21, 27):
        c.poly([(x + 1, 16), (x + 4, 16), (x + 3, 25), (x - 2, 25)], 'w'); c.ell(x, 25, 2.6, 2.6, 'w')
    c.line(2, 19, 30, 19); c.line(2, 20, 30, 20)
    c.poly('10,16 10,8 13,5 20,5 23,8 23,16', 'w', heavy=1); c.line(16, 5, 16, 15); c.stroke('27,3 29,22', 1.3)
    for x in range(0, 30, 8):
        c.line(x, 30, x + 4, 30)
        if x % 16 == 0: c.line(x + 4, 28, x + 7, 28)

def waves(c, y):
    for k in range(2):
        for x in range(-2 + k * 4, 32, 8):
            c.lines([(x, y + k * 3), (x + 2, y + k * 3 - 1), (x + 5, y + k * 3)])

@icon('ford')
def ford(c):
    wheel(c, 9, 17, 8.6, 8, 8); wheel(c, 23, 17, 8.6, 8, 8); c.rect(2, 4, 30, 9, 'w', heavy=1)
    c.a[20:] = 0; waves(c, 22); waves(c, 28)

@icon('float')
def floatw(c):
    c.poly('2,14 30,14 27,24 5,24', 'w', heavy=1); c.line(4, 18, 28, 18); c.rect(4, 9, 28, 14, 'w', heavy=1)
    wheel(c, 10, 6, 5.4, 8, 6); wheel(c, 22, 6, 5.4, 8, 6); c.a[22:] = 0; waves(c, 23); waves(c, 29)

@icon('ferry')
def ferry(c):
    c.lines('0,4 12,7 20,7 31,4'); c.stroke('16,7 16,20', 1.8)
    c.poly('0,18 4,20 28,20 32,18 28,26 4,26', 'w', heavy=1); c.line(3, 22, 28, 22)
    person(c, 22, 20, 13, hat='cone', skirt=True); c.rect(5, 14, 12, 20, 'w'); c.line(5, 17, 11, 17)
    c.a[25:] = 0; waves(c, 26); waves(c, 30)

@icon('wade')
def wade(c):
    person(c, 15, 30, 27, hat='cone', top='w', legs='k', skirt=True, arm=((3, 14), (6, 15))); c.stroke('8,2 7,28', 1.4)
    c.a[24:] = 0; waves(c, 25); waves(c, 30)

@icon('stake')
def stake(c):
    c.rect(13, 1, 19, 32, 'w')
    for y in range(4, 32, 8): c.rect(13, y, 19, y + 4, 'k', 0)
    c.a[24:, :] = 0; waves(c, 24); waves(c, 29)
    for y, l in ((8, 4), (12, 3), (16, 4), (20, 3)): c.line(20, y, 20 + l, y)

@icon('wain')
def wainicon(c):
    wain(c, 2, 30, 29, 27, hoops=4, lantern=False); c.lines('0,26 6,24')

@icon('saved')
def ribbon(c):
    c.poly('4,4 24,2 28,5 28,28 8,30 4,27', 'w', heavy=1); c.line(4, 4, 8, 7); c.line(8, 7, 8, 29); c.line(8, 7, 27, 5)
    c.poly('12,11 23,10 23,17 12,18', 'w'); c.line(14, 14, 21, 13)
    c.poly('17,29 21,28.6 21,32 19,30.6 17,32', 'k'); c.line(5, 27, 27, 26)

@icon('legends')
def pegs(c):
    c.rect(0, 3, 32, 8, 'w', heavy=1)
    for i, x in enumerate((1, 11, 21)):
        c.rect(x + 4, 6, x + 6, 13, 'k', 0); y = 14 + (i == 1) * 5
        if i == 1:
            c.line(x + 4, 12, x + 4, 18); c.line(x + 5, 12, x + 5, 18)
        if i == 2:
            c.poly(at(x, y, '-1,9 5,-2 11,9'), 'w'); c.line(x + 5, y, x + 8, y + 7)
        elif i == 0:
            c.poly(at(x, y, '1,6 2,-1 8,-1 9,6'), 'k'); c.stroke([(x - 1, y + 7), (x + 11, y + 7)], 1.8)
        else:
            c.poly(spline(at(x, y, '0,7 1,1 5,-2 9,1 10,7'), n=4), 'w'); c.rect(x - 1, y + 5, x + 11, y + 9, '50')

@icon('picture')
def easel(c):
    c.stroke('16,0 5,31', 1.4); c.stroke('16,0 27,31', 1.4); c.line(16, 22, 16, 31)
    c.rect(3, 5, 29, 22, 'w', heavy=1); c.rect(5, 7, 26, 19, None)
    c.lines('5,15 10,11 14,14 19,9 25,15'); c.ell(9, 10, 1.6, 1.6, 'w'); c.rect(1, 22, 31, 25, 'w')


for k, name in enumerate(('scant', 'lean', 'full')): ICONS['rations-' + name] = lambda c, k=k: bowl(c, k)
for k, name in enumerate(('easy', 'brisk', 'forced')): ICONS['pace-' + name] = lambda c, k=k: oxdust(c, k + 1)

def pictures():
    out = {}
    for name, draw in ICONS.items():
        c = Canvas(32, 32); draw(c); out['System/Icons/' + name[1:] if name[0] == '^' else 'Icons/' + name] = c
    return out
