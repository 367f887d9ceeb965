"""The seven animals of the hunt, facing right: how they go, fall and lie."""
import math

from ink import at, points, spline, Sprite

def turned(pts, deg, cx, cy, dx=0, dy=0):
    """The points, turned about (cx, cy) and moved."""
    a = math.radians(deg)
    return [(cx + (x - cx) * math.cos(a) - (y - cy) * math.sin(a) + dx,
             cy + (x - cx) * math.sin(a) + (y - cy) * math.cos(a) + dy) for x, y in points(pts)]

def beast(w, h, outline, tone, thick, far, near, thigh=(), before=None, marks=None, after=None):
    """One frame. The outline runs round body, neck and head; `far` and `near` are the joints of legs, `thick` their
    width. `before` draws what lies behind the body, `marks` on its inside, `after` in front of it."""
    c = Sprite(w, h)
    for leg in far: c.stroke(leg, thick, max(1, thick * .6))
    if before: before(c)
    body = c.mpoly(spline(outline, True, 6))
    if thigh: body |= c.mpoly(spline(thigh, True, 6))
    c.put(body, tone)
    if marks: marks(c, c.inner(body))
    c.ink(c.edge(body))
    for leg in near: c.stroke(leg, thick * 1.1, max(1, thick * .66))
    if after: after(c)
    return c

def shade(c, m, pts, tone):
    c.shade(m & c.mpoly(spline(pts, True, 6)), tone)

def walk(fore, hind, top, ground, step):
    """Four steps of a heavy walk, the joints of far and near legs: a leg swings forward, bears, stretches back, is
    lifted."""
    swing = ((step, 0), (0, 0), (-step, 0), (0, step * .75))
    knee = top + (ground - top) * .5

    def leg(x, k, bend):
        dx, up = swing[k % 4]
        return [(x, top), (x + dx * .45 + (bend if up else 0), knee - up * .6),
            (x + dx - (1 if up else 0), ground - up)]
    gap = step * .75
    return [([leg(fore - gap, k + 2, step * .8), leg(hind + gap, k, step * .5)],
             [leg(fore, k, step * .8), leg(hind, k + 2, step * .5)]) for k in range(4)]

def aurochs():
    w, h = 60, 38
    line = ('3,17 5,13.5 10,12 20,13.5 28,11 36,6.5 43,6.5 48,8 51,7 55,11 58.5,17.5 58.5,20.5 55.5,22 52,20 '
        '49.5,21.5 47.5,26 42,28.5 33,27.5 22,26.5 14,26 9,28 4,25')

    def horns(o):
        def draw(c):
            c.stroke(spline(at(*o, '49,8 49.5,4.5 53,2.5 54,0')), 2, 1)
        return draw

    def front(o, shut=False):
        def draw(c):
            c.stroke(spline(at(*o, '51,8.5 55,8 58.4,5 58,1')), 2.6, 1); c.stroke(at(*o, '50,10 46.5,12'), 2.4, 1)
            x, y = at(*o, '54,13')[0]
            if shut: c.line(x - 1, y + 1, x + 1, y + 1, 0)
            else: c.px(x, y, 0); c.px(x, y + 1, 0)
        return draw

    def pale(stripe, muzzle):
        def draw(c, m):
            c.ink(c.mstroke(spline(stripe), 1.7) & m, 0); c.ink(c.mpoly(muzzle) & m, 0)
        return draw
    back, nose = '4.5,15.5 10,13.4 20,14.9 28,12.4 36,8 42,8', '55.6,18 60,18 60,24 52,24'
    frames = []
    for far, near in walk(42, 9.5, 25, 36.6, 5):
        feet = [[(leg[-1][0] - 1.5, leg[-1][1] + .4), (leg[-1][0] + 2, leg[-1][1] + .4)] for leg in far + near]

        def after(c):
            front((0, 0))(c)
            for foot in feet: c.stroke(foot, 2)
            c.stroke(spline('3.5,15 1.6,20 1.8,26'), 1.2, 1); c.stroke('1.8,25 1.6,29', 2.2, 1.4)
        frames.append(beast(w, h, line, '75', 3.8, far, near, before=horns((0, 0)), marks=pale(back, nose),
            after=after))
    turn = (13, 10, 28, -3, 0)
    o = carried((51, 9), turn)
    frames.append(beast(w, h, turned(line, *turn), '75', 3.6, [points('38,32 44,34 38,36.6'),
        points('14,27 16,32 14,36.6')], [points('36,33 42,36 35,36.8'), points('8,26 6,32 8,36.6')], before=horns(o),
        marks=pale(turned(back, *turn), turned(nose, *turn)), after=front(o)))
    lying = ('2,31 4,26 12,23.5 22,24.5 30,21.5 38,18.5 44,20 48,23.5 52,24 56,28 59,33 58,36.6 53,36.8 48,36.6 '
        '40,37.2 20,37.4 6,37.2')
    frames.append(beast(w, h, lying, '75', 3, [], [points('40,34 48,36.6 43,37'), points('12,35 20,36.8 26,37')],
        before=horns((-1, 16)), marks=pale('4,28 12,25 22,26 30,23 38,20 44,21.6', '56,32.6 60,32.6 60,38 53,38'),
        after=front((-1.4, 16), True)))
    return frames

def carried(point, turn):
    """How far a turn moves a point."""
    (x, y), = turned([point], *turn)
    return x - point[0], y - point[1]

def leapers(w, h, line, thigh, tone, thick, poses, fall, lying, marks, head, brow):
    """Three strides (stretched, gathered in the air, pushing off), a fall and a rest. `head(o, shut)` draws horns and
    eye for a head moved by o, `brow` is where it stands; a pose is (rise, far legs, near legs), a fall (turn, legs), a
    rest (outline, legs, where head and marks are moved to)."""
    def drawn(o, shut=False):
        before, after = head(o, shut)
        return {'before': before, 'after': after}
    frames = []
    for rise, far, near in poses:
        frames.append(beast(w, h, at(0, rise, line), tone, thick, [points(leg) for leg in far],
            [points(leg) for leg in near], at(0, rise, thigh), marks=marks(lambda p, r=rise: at(0, r, p)),
            **drawn((0, rise))))
    turn, legs = fall
    frames.append(beast(w, h, turned(line, *turn), tone, thick, [], [points(leg) for leg in legs], turned(thigh, *turn),
                        marks=marks(lambda p: turned(p, *turn)), **drawn(carried(brow, turn))))
    outline, legs, o, shift = lying
    frames.append(beast(w, h, outline, tone, thick * .9, [], [points(leg) for leg in legs],
                        marks=marks(lambda p: at(*shift, p)), **drawn(o, True)))
    return frames

def stag():
    line = ('4.5,23 6.5,20 12,19 20,20.2 27,19.4 31.5,17 34,13 36,10 38.5,9 43,10.6 46.5,13 46.2,15 42,15.4 40,18 '
        '39,22.5 37.6,26 34,29.2 28,29.6 20,28 14,26.4 9,28.5 5,26.5')

    def head(o, shut):
        def far(c):
            c.stroke(spline(at(*o, '39.5,10 41.5,6 41,2.5 43,-.5')), 1.7, 1)
            for t in ('41,6.6 45,5.4 46,3.5', '41.2,3.4 44.6,2 45.6,0'): c.stroke(spline(at(*o, t)), 1.1, 1)

        def near(c):
            c.stroke(spline(at(*o, '37.5,10 33.5,6.5 32.4,3 34,-.5')), 1.7, 1)
            for t in ('36.4,9 38.6,6.4 38.8,4.6', '33,5 36,3.4 36.8,1',
                '32.4,3 30,1.4 29.8,-.5'): c.stroke(spline(at(*o, t)), 1.1, 1)
            c.stroke(at(*o, '37,11.4 33,11.8'), 2.2, 1)
            x, y = at(*o, '41,11.4')[0]
            c.line(x - (1 if shut else 0), y + shut, x + (1 if shut else 0), y + shut)
            c.px(*at(*o, '46,13')[0])
        return far, near

    def marks(move):
        def draw(c, m):
            c.ink(m & c.mpoly(spline(move('3,20 8.5,20.5 9,25 5,28 2,26'), True)), 0)           # the pale rump
            shade(c, m, move('33,14 38,14 40,17 39,24 34,28 31,24'), '75')                       # the mane
            shade(c, m, move('9,27 20,26.4 30,27.4 35,26 35,31 9,31'), '50')
        return draw
    poses = ((0, ('34,27 40,33 46,36', '8,27 4,33 0,38.5'), ('33,28 39,35 45,40', '9,28 6,35 1,42')),
             (-2, ('34,26 38,31 34,36', '9,26 14,31 19,35'), ('33,27 36,34 30,38', '9,27 14,33 22,38')),
             (0, ('34,27 34,36 30,43', '9,27 13,34 18,41'), ('33,28 35,37 35,45', '9,28 10,36 13,45')))
    fall = ((14, 8, 28, 1, 2), ('36,35 42,42 36,44.6', '31,36 37,43.6 31,45', '9,29 6,37 8,45', '6,29 2,38 3,45'))
    lying = ('2,38 5,33.5 12,32 20,33 28,32 33,31.6 36,31 39.5,32 43,36 46.5,40.4 46,43.4 41,43.6 36,42.4 33,44.8 '
        '20,45 6,45', ('33,43 41,45 35,45.2', '10,43 18,45 24,45.2'), (-1.5, 22.6), (-1, 13.4))
    return leapers(48, 46, line, '5,22 11,20 14,25 12,30 9,32 5,28', '25', 2.3, poses, fall, lying, marks, head,
        (39, 11))

def fallow():
    line = ('3.4,16.5 5,13.6 10,12.6 16,13.6 21,13 24.6,10.6 26.4,7.4 28,5.6 30,5.4 33,7.2 35,9.2 34.6,10.6 31,10.6 '
        '29.6,13 28.6,16.4 26.6,19 23,20 17,19.6 11.6,18 8,19 4.4,18.6')
    palm = ('#_#_#_', '#####_', '_####_', '__####', '____##')

    def head(o, shut):
        x, y = int(round(o[0])), int(round(o[1]))

        def far(c):
            c.art(x + 30, y, [row[::-1] for row in palm]); c.line(x + 30, y + 5, x + 31, y + 4)

        def near(c):
            c.art(x + 21, y, palm); c.line(x + 26, y + 4, x + 28, y + 6); c.stroke(at(*o, '27.6,8 24.4,8.2'), 1.8, 1)
            c.line(x + 30 - shut, y + 7 + shut, x + 30 + shut, y + 7 + shut); c.px(x + 34, y + 9)
            if shut: c.curve(at(*o, '27,14 28,10.6 31,9.4'))
        return far, near
    spots = points('7,15 10,14.4 13,15 16,15.6 19,15 22,15 8.5,17 12,16.8 15,17.6 18,17.4 21,17 24,16.6 25.4,13.6')

    def marks(move):
        def draw(c, m):
            for x, y in move(spots):
                x, y = int(x), int(y)
                if 0 <= x < c.w - 1 and 0 <= y < c.h and m[y, x]: c.px(x, y); c.px(x + 1, y)
            shade(c, m, move('10,18.6 17,18 25,17.6 27,21 10,21'), '50')
        return draw
    poses = ((0, ('26,18 31,21 36,22.4', '6,18 2,22 -1,25'), ('25,19 30,23 35,25.4', '7,19 4,24 1,28')),
             (-1, ('25,17 29,20 26,23.4', '7,17 11,20 15,22.4'), ('24,18 27,22 23,25', '7,18 11,22 17,24.6')),
             (0, ('26,18 25,24 22,28', '7,18 11,23 15,27.4'), ('25,19 26,24 26,29.4', '8,19 8,24 11,29.4')))
    fall = ((15, 7, 18, 0, 2), ('25,25 30,27.6 25,29', '22,25 27,29 23,29.4', '7,20 5,25 6,29.4', '5,20 2,25 3,29.4'))
    lying = ('2,25 4,21.6 10,20.4 17,21 22,20 26,19.4 28,19.2 30.6,20.4 33.6,23.4 36,26.6 35.6,28.6 31,28.6 27,28 '
        '24,29.2 14,29.4 4,29.4', ('24,28 30,29.4 26,29.4', '8,28 13,29.4 18,29.4'), (-.6, 13.6), (-1, 7))
    return leapers(38, 30, line, '4,15.6 8,13.6 11.4,17 10,21 7.4,22.4 4,19.6', 'w', 1.8, poses, fall, lying, marks,
        head, (29, 7))

def saiga():
    line = ('2.4,11.5 4,8.6 9,7.6 15,8.4 20,7.8 23,6.4 25.4,5.4 27.6,5.6 30,7.4 32.2,10 33.2,13.4 32.4,16.4 30.2,16.4 '
        '29.2,14 27,13 25,14 23.4,15.8 20,16.8 14,16 9.4,14.6 6,15.6 3,14.2')

    def head(o, shut):
        def far(c):
            c.stroke(spline(at(*o, '27.6,6 28.8,3.4 28.2,-.4')), 1.4, 1)

        def near(c):
            c.stroke(spline(at(*o, '25.6,6 24.6,3.4 25.4,-.4')), 1.8, 1)
            c.stroke(at(*o, '25,7.4 22.2,8'), 1.8, 1)
            x, y = at(*o, '27.6,8.6')[0]
            c.line(x - shut, y + shut, x + shut, y + shut)
            c.line(*at(*o, '31,12')[0], *at(*o, '31.6,14.6')[0])
            if shut: c.curve(at(*o, '24.6,13.4 26,10.4 28.4,9'))
        return far, near

    def marks(move):
        def draw(c, m):
            for part in ('8,14 14,13.6 22,13.4 26,11.6 27,14 23,18 6,18', '1,8.6 4.4,9 5,13 1,15',
                    '29,9 34,10 34,18 28,17'):
                # belly, rump and nose are pale
                c.ink(m & c.mpoly(spline(move(part), True)), 0)
        return draw
    poses = ((0, ('23,14 28,18 33,19.6', '5,14 1,18 -1,21'), ('22,15 27,20 32.4,22.6', '6,15 3,20 0,24')),
             (-.6, ('22,14 27,17 24,20.6', '6,14 10,17.4 14,19'), ('21,15 25,19 20,22', '6,15 10,19.4 16,21.4')),
             (0, ('23,14 22,20 18.6,24.4', '6,14 10,19 14,23'), ('22,15 23,20 23.4,25.4', '6,15 7,20 10,25.4')))
    fall = ((14, 6, 15, 0, 2), ('22,21 27,23.6 22,25', '19,21 24,25 20,25.4', '6,16 4,21 6,25.4', '4,16 1,21 2,25.4'))
    lying = ('1.6,21 3.4,17.6 9,16.4 15,17 20,16 24,15.6 26.6,16 29,18 31.4,21 32.6,24 31,25.4 28,24.6 25.6,23.4 '
        '23,25 14,25.4 3,25.4', ('22,24.4 28,25.4 24,25.4', '7,24.4 12,25.4 16,25.4'), (-1, 10.4), (-1, 8.8))
    return leapers(34, 26, line, '3,10.6 7,8.6 10,13 8.4,17 6,18.4 3,15.4', '25', 1.7, poses, fall, lying, marks, head,
        (27, 7))

def boar():
    w, h = 40, 24
    line = ('2.4,11 4.6,7.6 10,5.4 17,4 23,2.6 28,4 32,7.4 36,11.4 39.2,14 39.4,16.4 37.6,17.4 33,16.8 30,17.6 '
        '27,17.4 20,17.8 12,17 6,17.4 2.8,15')
    hair = points('9,5.6 13,4.8 17,4 21,3 25,2.8')

    def face(move, shut=False):
        def draw(c):
            for x, y in hair:
                (a, b), (d, e) = move([(x, y), (x - 2.4, y - 3)])
                c.line(a, b, d, e)
            c.poly(spline(move('27,5.4 25.6,1 27,.4 30.6,4.6'), True), 'k')
            x, y = move('32.4,10.4')[0]
            if shut: c.line(x - 1, y, x + 1, y, 0)
            else: c.px(x, y, 0); c.px(x - 1, y - 1, 0)
            for p, q in (('35,16 36.4,12.6', 0), ('37.6,13.6 38.4,16', 0)): c.lines(move(p), q)
            flank = c.mpoly(spline(move('5,11 10,9 17,8.6 23,10 22,14 14,15 7,15'), True))
            c.put(flank, '75', 0)
        return draw

    def same(p): return points(p)
    frames = []
    for far, near in walk(26.5, 7, 15, 22.8, 3.4):
        def after(c, legs=far + near):
            face(same)(c); c.stroke(spline('3,9 .6,10 1,13.4'), 1, 1); c.px(0, 14); c.px(1, 14)
            for leg in legs: c.line(leg[-1][0] - 1, leg[-1][1] + .4, leg[-1][0] + 1.4, leg[-1][1] + .4)
        frames.append(beast(w, h, line, 'k', 2.6, far, near, after=after))
    turn = (13, 8, 16, -.4, 1)
    frames.append(beast(w, h, turned(line, *turn), 'k', 2.4, [], [points(p)
        for p in ('24,20 29,23 24,23.4', '21,20 26,23.2 21,23.4', '7,17 5,20 7,23', '4,16 2,20 3,23')],
        after=face(lambda p: turned(p, *turn))))
    lying = '1,19 3,14.4 10,12 17,11 23,10.4 28,12 32,15 36,19 39,21 39,23 33,23.4 20,23.6 4,23.6'
    frames.append(beast(w, h, lying, 'k', 2.2, [], [points('26,22 32,23.4 27,23.6'), points('8,22 14,23.4 18,23.6')],
                        after=face(lambda p: at(-1, 7.4, p), True)))
    return frames

def rows(text, w, h):
    """A sprite set by hand, standing on its lowest row."""
    c = Sprite(w, h)
    lines = text.split()
    c.art(0, h - len(lines), lines)
    return c

HARE = ("""
_____####_________
______##.###______
_________##.####__
___########...#.#_
__#.............##
_#............###_
##..########.#____
#_###_____#####___
__##_________###__
_##____________##_
##________________
""", """
_________#_#______
_________##.#_____
_________##.#_____
___#####_#..###___
__#.....##...#.#__
_#.............##_
##............#___
##..........##____
_#..####...#______
__##___#..##______
____####_##.#_____
_______###_##_____
""", """
________##________
_______#.##_______
_______###.####___
___#####.#...#.#__
__#............##_
##...........##___
#_#..........#____
__#..####..##_____
__#.##__##.#______
___###___##.#_____
____#.##__#.#_____
____####___##_____
""", """
________#####_____
__######.##.###___
_#..........#..#__
#.............#.#_
##..............##
_################_
""")

BIRD_BODY = ('_________###__', '________#.#.##', '________#..#__', '__#####.#..#__', '_#..#.#.#..#__', '##.#.#.#...#__',
    '#_##.#.#..#___', '___#######____')
BIRD_LEGS = (('____#___##____', '___#______#___', '__##______##__'),
    ('_____#_#______', '_____##_______', '_____###______'), ('_____#_##_____', '____#____#____', '____##__##____'))
BIRD_LIES = ('__#_#_________', '_####.####____', '#.#.#.#...##__', '##.#.#.##..#.#', '_############_')

def pictures():
    hare = [rows(text, 18, 12) for text in HARE]
    partridge = [rows(' '.join(BIRD_BODY + legs), 14, 11) for legs in BIRD_LEGS] + [rows(' '.join(BIRD_LIES), 14, 11)]
    out = {}
    for name, frames, steps in (('aurochs', aurochs(), 4), ('fallow', fallow(), 3), ('hare', hare, 3),
            ('partridge', partridge, 3), ('stag', stag(), 3), ('boar', boar(), 4), ('saiga', saiga(), 3)):
        names = [f'walk-{k + 1}' for k in range(steps)] + (['falls'] if len(frames) > steps + 1 else []) + ['lies']
        out |= {f'Hunt/{name}-{n}': c for n, c in zip(names, frames)}
    return out
