"""The three pages of the introduction: a picture at the left, lettering at the right."""
import math

import numpy as np

from country import courses, terraces
from figures import ox, person, tent, wain, wheel
from ink import arc, at, Canvas, points, spline
from lettering import say, wrap

TEXTS = (
    ('The road',
     'It is 1848 by the harbour count. The sea has taken the fields round Lanthorn, and a far valley has written '
     'to the coast to ask for neighbours.',
     'You are captain of a party of up to five, with one wain and its oxen. The Wainroad is 2,083 miles long, or '
     'somewhat less, if you are clever, or careless.',
     'Between here and there: four rivers, six hearths with stores, three choices of way, and people who live '
     'there.'),
    ('The day',
     'Choose your month and your goods in Lanthorn. Then press Roll On. Days go by of themselves until you call a '
     'halt, arrive somewhere, or something happens.',
     'Left: the view, the guide, the party, its food, the store. Right: trade, talk, rest, pace, hunt. The journal'
     ' below tells what has happened, and keeps it.',
     'When someone is ill, rest. Ask people things: they are right about their own country.'),
    ('The count',
     'At the gate of Yonderley the Ethren count who has come and how well they are; then the wain, the oxen, spare'
     ' parts, clothing, bullets, food and money.',
     'The count is raised for those whose trade gave them little to begin with. The ten best arrivals stand in the'
     ' book of legends.',
     'Nobody needs to win. It is enough to come.'),
)
W2, H2 = 440, 250

def lettering(c, n, x=232, y=26, width=200):
    L = TEXTS[n]; say(c, 'game-14', x, y, L[0], bold=True)
    c.lines([(x, y + 6), (x + width - 4, y + 6)]); c.lines([(x, y + 8), (x + width - 4, y + 8)], dash=(1, 1, 1, 0))
    y += 26
    for para in L[1:]:
        for ln in wrap('game-12', para, width):
            say(c, 'game-12', x, y, ln); y += 13
        y += 6
    return y

def page1():
    c = Canvas(W2, H2)
    # the coast at the right of the picture half, the road running off the left edge into white
    coast = spline('176,-6 188,20 178,44 192,72 182,100 196,128 186,156 198,184 188,214 200,256', n=10)
    sea = c.mpoly(coast + [(218, 256), (218, -6)])
    for k, (g, d) in enumerate(((0, None), (1, None), (5, (1, 1, 1, 1, 0, 0)), (11, (1, 1, 1, 0, 0, 0)),
            (18, (1, 1, 0, 0, 0, 0)))):
        c.lines([(min(219, x + g), y) for x, y in coast if x + g < 219], dash=d)
    for y in range(2, 250, 5):
        xs = np.nonzero(sea[y])[0]
        if len(xs): c.line(xs[0] + 2, y, xs[0] + 6 + (y * 7) % 7, y)
    # the drowned dykes and the harbour town
    for x, y in ((150, 24), (158, 42), (148, 60), (160, 82), (168, 190), (172, 208), (166, 240)):
        c.line(x - 9, y, x + 8, y); c.line(x - 5, y + 3, x + 12, y + 3)
    c.poly('168,128 171,92 181,92 184,128', 'w', heavy=1); c.rect(169, 88, 183, 93, 'k', 0)
    c.rect(172, 80, 180, 88, '75'); c.poly('170,81 176,73 182,81', 'k')
    for y in (100, 114): c.rect(171, y, 182, y + 6, 'k', 0)
    for k, (x, h) in enumerate(((132, 16), (144, 22), (156, 14))):
        c.poly([(x, 130), (x, 130 - h), (x + 6, 130 - h - 7), (x + 12, 130 - h), (x + 12, 130)], 'w', heavy=1)
        c.rect(x + 3, 130 - h + 3, x + 6, 130 - h + 7, 'k', 0); c.rect(x + 1, 130 - h - 12, x + 4, 130 - h - 1, 'w')
    c.line(126, 131, 188, 131); say(c, 'small-9', 148, 144, 'Lanthorn', centre=True)
    # the road, dotted, over rivers and hills to the edge
    road = spline('132,132 116,126 104,112 86,108 70,118 54,114 42,98 26,94 12,100 -6,94', n=12)
    for pts, w0, w1 in (([(80, -8), (86, 30), (78, 70), (90, 106), (100, 130), (118, 146)], 3, 4),
            ([(108, -8), (116, 30), (106, 66), (114, 100), (112, 128), (122, 148), (150, 156), (200, 155)], 3.4, 6)):
        rv = spline(pts, n=8); c.band(rv, w0 + 2, w1 + 2, 'w', 1)
    rv = spline('100,130 118,146 150,156', n=8); c.ink(c.mstroke(rv, 3, 3.6), 0)
    c.ink(sea & c.mstroke(spline('176,156 204,155'), 8), 0)
    for q in range(0, len(road) - 2, 4):
        x, y = road[q]; fade = x / 132
        if x > 2: c.ell(x, y, 1.7 if fade > .3 else 1.2, 1.7 if fade > .3 else 1.2, 'k')
    for x, y in ((60, 140), (78, 136), (64, 128), (62, 84), (66, 98), (58, 134), (48, 124), (74, 84)):
        c.tuft(x, y, 3, 4, 0)
    for x, y, w in ((40, 84, 9), (28, 78, 8), (18, 86, 8), (30, 116, 8)):
        c.lines(arc(x, y, w, w * .8, 180, 362))
        for k in range(3):
            c.line(x + w * (.25 + .22 * k), y - w * .5 * (1 - .3 * k), x + w * (.12 + .25 * k), y - 1)
    # a wain setting out, below
    wain(c, 66, 226, 78, 60, ang=4); ox(c, 20, 226, 42, 25, yoke=True, bell=True)
    c.lines('0,227 170,227'); c.lines('6,230 150,230', dash=(1, 1, 1, 1, 0, 0))
    for x in (20, 48, 96, 140, 160): c.tuft(x, 234, 3, 4, -1)
    # rose
    wheel(c, 34, 32, 15, 0, 8); c.poly('29,16 39,16 34,4', 'k')
    for a in (0, 90, 180):
        c.ell(34 + math.cos(math.radians(a)) * 18, 32 + math.sin(math.radians(a)) * 18, 1.8, 1.8, 'k')
    lettering(c, 0)
    return c

def page2():
    c = Canvas(W2, H2)
    x0, y0 = 12, 58
    c.rect(x0, y0, x0 + 192, y0 + 122, 'w', heavy=1)
    for y in (y0 + 2, y0 + 119): c.lines([(x0 + 2, y), (x0 + 189, y)], dash=(1, 1, 0))
    for x in (x0 + 2, x0 + 189): c.lines([(x, y0 + 2), (x, y0 + 119)], dash=(1, 1, 0))
    # the keys at both sides, each with a hint of its picture
    signs = (('#######', '#..#..#', '#.#.#.#', '#######'), ('##_##', '#.#.#', '#.#.#', '#####'),
        ('_#_#_', '##_##', '_#_#_', '##_##'), ('#_____#', '#######', '_#####_', '__###__'),
        ('___#___', '#######', '#__#__#', '__###__'), ('##____', '##_###', '___###', '______'),
        ('##__##', '##__##', '#____#', '##__##'), ('##_##__', '##_##__', '##_####', '###_###'),
        ('_####__#', '########', '_####_#_', '_#__#___'), ('#______', '_##____', '__#####', '____###'))
    for k in range(10):
        x, y = x0 + (6 if k < 5 else 169), y0 + 6 + 22 * (k % 5)
        c.rect(x, y, x + 17, y + 19, 'w', heavy=1)
        c.art(x + 8 - len(signs[k][0]) // 2, y + 7, signs[k])
    # the road
    c.rect(x0 + 25, y0 + 6, x0 + 123, y0 + 34, 'w')
    hills = spline([(x0 + 25, y0 + 14), (x0 + 48, y0 + 11), (x0 + 70, y0 + 14), (x0 + 96, y0 + 10),
        (x0 + 122, y0 + 13)])
    c.lines(hills); c.line(x0 + 25, y0 + 31, x0 + 122, y0 + 31); tent(c, x0 + 44, y0 + 31, 15, 9)
    wain(c, x0 + 96, y0 + 31, 21, 15, lantern=False, hoops=3); ox(c, x0 + 82, y0 + 31, 13, 8, shade=None, eye=False)
    # the map
    c.rect(x0 + 25, y0 + 36, x0 + 123, y0 + 76, 'w')
    for a, b in points('31,46 38,42 36,52 44,48'): c.lines(at(x0 + a, y0 + b, '-4,4 0,-1 4,4'))
    c.lines(spline(at(x0, y0, '112,37 115,46 111,54 116,64 112,75')))
    for y in range(40, 76, 4): c.line(x0 + 117, y0 + y, x0 + 120, y0 + y)
    c.lines(spline(at(x0, y0, '70,37 66,48 72,58 68,75'))); c.lines(spline(at(x0, y0, '73,37 69,48 75,58 71,75')))
    for x, y in spline(at(x0, y0, '107,69 92,62 80,66 60,56 44,62 34,66'), n=4): c.px(x, y); c.px(x + 1, y)
    # the journal
    c.rect(x0 + 25, y0 + 78, x0 + 123, y0 + 116, 'w'); c.rect(x0 + 117, y0 + 78, x0 + 123, y0 + 116, 'w')
    for k, w in enumerate((34, 76, 58, 80, 44, 70)):
        c.lines([(x0 + 29, y0 + 83 + k * 5), (x0 + 29 + w, y0 + 83 + k * 5)], dash=(1, 1, 1, 1, 0, 1, 1, 0))
    # weather and stores, and the key that rolls on
    c.rect(x0 + 125, y0 + 6, x0 + 167, y0 + 92, 'w'); c.ell(x0 + 135, y0 + 20, 5, 5, 'w')
    for a in range(0, 360, 45):
        c.px(x0 + 134.5 + 7.5 * math.cos(math.radians(a)), y0 + 19.5 + 7.5 * math.sin(math.radians(a)))
    c.rect(x0 + 152, y0 + 11, x0 + 158, y0 + 33, 'w'); c.rect(x0 + 154, y0 + 22, x0 + 156, y0 + 32, 'k', 0)
    for k in range(9):
        y = y0 + 42 + k * 5
        if k % 4: c.line(x0 + 129, y, x0 + 141 + (k * 5) % 9, y); c.line(x0 + 156, y, x0 + 163, y)
        else: c.lines([(x0 + 138, y), (x0 + 154, y)])
    c.rect(x0 + 125, y0 + 94, x0 + 167, y0 + 116, 'w'); c.rect(x0 + 128, y0 + 96, x0 + 145, y0 + 115, 'w', heavy=1)
    wheel(c, x0 + 136, y0 + 105, 6, 0, 6)
    c.line(x0 + 149, y0 + 102, x0 + 158, y0 + 102)
    c.line(x0 + 149, y0 + 107, x0 + 156, y0 + 107)
    # six pointers
    for word, wx, wy, a, b in (('keys', 20, 28, (20, 33), (24, 64)), ('the road', 80, 28, (80, 33), (84, 72)),
            ('weather, stores', 158, 28, (158, 33), (152, 82)), ('the map', 32, 212, (32, 200), (52, 118)),
            ('journal', 96, 212, (96, 200), (88, 160)), ('Roll On', 168, 212, (168, 200), (150, 166))):
        say(c, 'small-9', wx, wy, word, centre=True)
        c.ink(c.mstroke([a, b], 3), 0)
        c.lines([a, b])
        c.ell(b[0] + .5, b[1] + .5, 2.4, 2.4, 'w', 0)
        c.ell(b[0] + .5, b[1] + .5, 1.6, 1.6, 'k')
    lettering(c, 1)
    return c

def page3():
    c = Canvas(W2, H2)
    # the gate
    terraces(c, 0, 216, [30, 38, 47, 58, 72], seed=6)
    h = [(0, 26), (30, 14), (62, 24), (100, 8), (140, 22), (180, 12), (216, 24)]
    m = c.mpoly(h + [(216, 31), (0, 31)]); c.put(m, '25', 0); c.lines(h); c.a[:, 216:] = 0
    c.rect(0, 92, 216, 250, 'w', 0); c.line(0, 92, 215, 92)
    m = c.rect(0, 72, 60, 128, 'w', heavy=1); courses(c, c.inner(m), 6, 11, 3, .7)
    m = c.rect(150, 72, 216, 128, 'w', heavy=1); courses(c, c.inner(m), 6, 11, 5, .7)
    for x in (56, 138):
        m = c.rect(x, 40, x + 18, 132, 'w', heavy=1); courses(c, c.inner(m), 7, 10, x, .8)
        c.rect(x - 4, 34, x + 22, 41, 'w', heavy=1); c.ell(x + 9, 29, 5, 5, 'w', heavy=1)
    c.poly('74,60 94,66 94,128 74,131', 'w', heavy=1); c.line(80, 62, 80, 129); c.line(87, 64, 87, 128)
    # a table, a clerk with spectacles
    person(c, 112, 140, 40, f=1, hat='hair', top='w', legs='k', arm=((3, 12), (6, 11)))
    c.ink(c.edge(c.mell(114, 105, 2.4, 2.2))); c.ink(c.edge(c.mell(118, 105, 2, 2.2)))
    c.rect(96, 118, 148, 123, 'w', heavy=1); c.line(100, 123, 98, 142); c.line(101, 123, 99, 142)
    c.line(144, 123, 146, 142); c.line(143, 123, 145, 142)
    c.poly('118,117 124,112 140,112 138,118', 'w'); c.lines('126,114 136,114'); c.line(122, 117, 119, 106)
    c.rect(100, 112, 107, 118, 'k', 0)
    # the queue: seen from the knees down, very different feet
    y = 226; c.line(0, y + 4, 214, y + 4); c.lines([(4, y + 7), (210, y + 7)], dash=(1, 1, 1, 1, 0, 0))
    def leg(x, top, w, tone):
        m = c.poly([(x - w / 2, 164), (x + w / 2, 164), (x + w / 2 - .5, top), (x - w / 2 + .5, top)], tone, heavy=0)
        return m
    # 1 sea boots
    for x in (22, 42):
        m = c.poly([(x - 7, 164), (x + 7, 164), (x + 6, y - 8), (x + 7, y), (x + 7, y + 4), (x - 14, y + 4),
            (x - 13, y - 2), (x - 6, y - 7)], 'k')
        c.line(x - 4, 180, x + 3, 180, 0); c.line(x - 8, y + 1, x + 4, y + 1, 0)
    # 2 bare feet of a child with a skirt hem
    c.poly('58,164 90,164 94,194 54,194', '/', heavy=1)
    for x in (66, 82):
        c.poly(spline([(x - 3, 194), (x - 3, y - 6), (x - 11, y - 1), (x - 12, y + 4), (x + 4, y + 4), (x + 4, 194)],
            n=4), 'w')
        for k in range(3): c.px(x - 11 + k * 2, y + 1)
    # 3 clogs under striped stockings
    for x in (106, 124):
        leg(x, y - 6, 9, 'w')
        for k in range(7): c.rect(x - 4, 168 + k * 8, x + 4, 171 + k * 8, 'k', 0)
        c.poly(spline(at(x, y, '7,4 7,-5 0,-7 -8,-3 -15,-6 -13,4'), n=4), 'w', heavy=1)
    # 4 a dog's paws? an ox's hooves
    for x in (146, 164):
        c.poly(spline([(x - 6, 164), (x - 5, 190), (x - 6, y - 10)], n=4)
            + spline([(x + 6, y - 10), (x + 5, 190), (x + 6, 164)], n=4), '25')
        c.poly(at(x, y, '-6,-10 6,-10 9,4 -10,4'), 'k'); c.line(x - 1, y - 8, x - 1, y + 3, 0)
    # 5 a stick, a bandaged foot, a good shoe
    c.stroke([(180, 160), (182, y + 4)], 2.4)
    leg(194, y - 6, 9, 'k'); c.poly([(199, y + 4), (199, y - 6), (190, y - 6), (182, y - 1), (181, y + 4)], 'k')
    leg(208, y - 8, 9, 'k')
    m = c.poly(spline([(213, y + 4), (213, y - 9), (203, y - 9), (196, y - 3), (197, y + 4)], n=4), 'w', heavy=1)
    c.lines([(204, y - 8), (212, y - 4)]); c.lines([(200, y - 4), (211, y + 2)]); c.lines([(211, y - 8), (199, y + 2)])
    c.a[:, 216:] = 0; c.a[158:164, :216] = 0; c.lines('2,163 212,163'); c.lines('2,160 212,160', dash=(1, 1, 1, 0))
    lettering(c, 2)
    return c

def pictures():
    return {'Start/introduction-1': page1(), 'Start/introduction-2': page2(), 'Start/introduction-3': page3()}
