"""Pictures of the places as far as the end of the plain."""
import math
import random

import numpy as np

from country import cloud, courses, front_tufts, ground, stones, thatch, tree
from figures import bird, halo, ox, person, tent, tiny, wain
from ink import arc, at, points, spline
from landmark import H, P, W

def lanthorn():
    c = P()
    # sky, low sun at the left, sea at the right
    c.shade(c.mpoly(spline('0,52 80,46 180,52 262,48', n=6) + [(262, 62), (0, 62)]), '12'); cloud(c, 66, 24, 56, 10, 3)
    sea = c.mpoly('150,60 262,60 262,104 196,108 150,74')
    c.put(sea, '25', 0); c.shade(sea, 'calm'); c.line(118, 60, 262, 60)
    # tops of drowned hedges, a drowned chimney
    for x, y in ((196, 66), (206, 68), (216, 70), (228, 73), (240, 76), (252, 80), (190, 84), (204, 88), (220, 92)):
        c.put(c.mell(x, y, 5, 2.6) & c.mrect(0, 0, W, y + 1), 'k', 0); c.line(x - 6, y + 2, x + 5, y + 2, 0)
    c.rect(172, 58, 177, 66, 'w', heavy=1); c.rect(182, 62, 186, 69, 'w', heavy=1)
    # dark lighthouse on a hill of shells, right
    m = c.poly(spline('206,76 218,58 236,50 252,52 266,62 268,112', n=5) + [(204, 104)], 'stip', heavy=1)
    t = c.poly('230,54 234,16 246,16 250,54', 'w', heavy=1); c.shade(t & c.mrect(240, 0, 262, 60), '/')
    for y in (26, 38, 48):
        c.rect(231, y, 250, y + 5, 'k', 0) if y == 26 or y == 48 else c.rect(231, y, 250, y + 4, 'k', 0)
    c.put(c.mrect(226, 10, 255, 60) & ~t & ~c.mrect(0, 0, 262, 0), None, 0)
    c.rect(231, 14, 250, 17, 'k', 0); c.rect(235, 6, 246, 14, '75'); c.poly('233,7 240.5,-1 248,7', 'k')
    # crooked chimneys of the town behind the dyke
    x = 66
    for k, (w, h) in enumerate(((16, 20), (12, 14), (18, 24), (14, 16), (16, 12), (12, 18), (14, 10))):
        y = 74; m = c.poly([(x, y), (x, y - h), (x + w / 2, y - h - 7), (x + w, y - h), (x + w, y)], 'w', heavy=1)
        c.shade(m & c.mrect(x + w * .55, 0, W, y) & ~c.edge(m), '/')
        c.poly([(x + 2, y - h - 2), (x + 2 + (k % 3 - 1) * 2, y - h - 15), (x + 6 + (k % 3 - 1) * 2, y - h - 15),
            (x + 6, y - h - 4)], 'w', heavy=0)
        c.line(x + 1 + (k % 3 - 1) * 2, y - h - 16, x + 6 + (k % 3 - 1) * 2, y - h - 16)
        c.rect(x + 3, y - h + 4, x + 6, y - h + 8, 'k', 0)
        if w > 13: c.rect(x + 9, y - h + 4, x + 12, y - h + 8, 'k', 0)
        x += w - 1
    # High Dyke: the road on it, grass bank towards the sea
    g = spline('-4,76 60,75 120,74 176,79 216,92 268,112', n=8)
    m = c.mpoly(g + [(268, 160), (-4, 160)]); c.put(m, 'w', 0); c.lines(g)
    # west gate with the stopped clock, left
    for x0 in (4, 46):
        m = c.rect(x0, 24, x0 + 16, 100, 'w', heavy=1); courses(c, c.inner(m), 5, 8, x0, .6)
        for k in range(3): c.rect(x0 + k * 6, 18, x0 + k * 6 + 4, 25, 'w')
    m = c.rect(20, 14, 46, 100, 'w', heavy=1); courses(c, c.inner(m), 5, 8, 4, .5)
    c.poly('16,16 33,0 50,16', 'k'); c.line(33, -2, 33, 2); c.ell(33, 28, 8.5, 8.5, 'w', heavy=1)
    for a in range(0, 360, 30):
        q = math.radians(a); c.px(32.5 + math.cos(q) * 6.4, 27.5 + math.sin(q) * 6.4)
    c.line(33, 28, 33, 23); c.line(33, 28, 36, 29)
    arch = c.mpoly([(24, 100), (24, 62)] + arc(33, 60, 9, 12, 180, 360) + [(42, 100)])
    c.put(arch, 'w'); c.shade(arch & c.mrect(24, 0, 30, 100), '75'); c.curve('26,78 34,76 42,77')
    # the ruts of the road, and the wains' shadows on it
    for o in (0, 9):
        c.curve([(44 + o, 98 + o * .3), (90, 98 + o), (150, 112 + o), (210, 136 + o), (268, 146 + o)],
            dash=(1, 1, 1, 0, 1, 0, 0))
    for x, y, w in points('76,86,26 112,94,34 160,108,46 216,136,64'):
        c.shade(c.mpoly(at(x, y, '0,-2 1,-2 1.15,2 .1,2', w, 1)), '\\')
    # four wains in a queue, nearest at the right
    def team(wx, wy, w, h, ox_x, ox_w, ox_h, **more):
        halo(c, lambda d: wain(d, wx, wy, w, h, **more))
        halo(c, lambda d: ox(d, ox_x, wy, ox_w, ox_h, yoke=True, bell=w > 60))
        c.line(ox_x + ox_w - 2, wy - ox_h * .5, wx + w * .1, wy - h * .25)
    team(70, 86, 26, 19, 54, 14, 9, lantern=False)
    team(108, 95, 34, 26, 86, 20, 12, lantern=False)
    team(154, 109, 46, 34, 126, 28, 17)
    team(206, 136, 64, 48, 166, 38, 24, ang=12)
    for x, y in points('70,104 80,112 118,118 132,130 150,140 188,148 8,116 176,122'):
        c.tuft(x, y, 3, 4, -1)
    # foreground: child asleep on flour sacks; a woman chalking prices
    for x, y in ((88, 150), (108, 152), (98, 141)):
        m = c.blob(at(x, y, '-10,0 -12,-8 -6,-12 5,-12 11,-7 10,0'), 'w', heavy=1); c.line(x - 5, y - 11, x - 2, y - 9)
        c.shade(m & c.mrect(x + 4, 0, W, H) & ~c.edge(m), '25')
    c.band('84,136 96,130 106,131', 6, 5, tone='k'); c.ell(110, 130, 4, 3.8, 'w')
    c.put(c.mell(111, 128.6, 4, 3.2) & ~c.mell(109, 131, 3, 2.6), 'k', 0); c.stroke('84,137 78,141', 2)
    c.rect(20, 104, 48, 142, 'k', 0); c.rect(21, 105, 47, 141, 'w', 0); c.rect(22, 106, 46, 136, '75')
    c.line(24, 142, 20, 152); c.line(44, 142, 48, 152)
    for y, a, b in ((110, 25, 34), (115, 25, 38), (120, 25, 32), (125, 25, 36), (110, 39, 43), (115, 40, 43),
            (120, 39, 43)):
        c.line(a, y, b, y, 0)
    person(c, 58, 152, 34, hat='broad', top='w', legs='50', skirt=True, arm=((3, 15), (6.5, 17)), apron=True)
    stones(c, ((140, 152, 5), (6, 150, 6)))
    return c

def linnet():
    c = P(); cloud(c, 160, 20, 66, 11, 7); cloud(c, 12, 30, 50, 8, 2)
    ground(c, '-4,74 80,72 180,74 268,71')
    for x in (206, 224, 246): tree(c, x, 76, 24 + x % 7, 'willow', x)
    # the long house from a corner: gable at the left, long side to the right
    side = c.poly('60,78 214,72 214,100 60,116', 'w', heavy=1); c.hatch(c.inner(side), 4, 0)
    gab = c.poly('28,108 28,80 44,50 60,78 60,116', 'w', heavy=0); c.hatch(c.inner(gab), 4, 0, off=2)
    thatch(c, '44,46 196,46 222,74 60,82', 26, 3)
    c.band('44,46 28,80 22,84', 4, tone='w'); c.lines('46,48 64,82'); c.line(62, 81, 220, 74); c.line(62, 82, 220, 75)
    # huge chimney and smoke straight up
    m = c.poly('132,56 134,20 160,20 162,56', 'w', heavy=1); courses(c, c.inner(m), 5, 9, 3, .7)
    c.rect(130, 17, 164, 22, 'w', heavy=1); c.shade(m & c.mrect(150, 20, 164, 58) & ~c.edge(m), '25')
    L = [(141, 17), (139, 10), (142, 4), (140, -3)]; R = [(153, 17), (156, 10), (152, 4), (156, -3)]
    m = c.mpoly(spline(L, n=5) + spline(R, n=5)[::-1]); c.put(m, 'mist', 0); c.lines(spline(L, n=5))
    c.lines(spline(R, n=5)); c.curve('146,14 149,11 145,8'); c.curve('148,6 151,3 147,0')
    # door and windows
    c.poly('92,112 92,88 108,86 108,110', '75'); c.ink(c.edge(c.mpoly('92,112 92,88 108,86 108,110')))
    for x in (74, 122, 150, 178):
        y = 114 - (x - 60) * .1; m = c.poly(at(x, y, '0,-14 0,-24 10,-25 10,-15'), 'k')
        c.line(x + 5, y - 24, x + 5, y - 16, 0)
    # wicker cages under the eaves, doors open
    for i in range(8):
        x = 70 + i * 18.6; y = 82.5 - (x - 60) * .042; c.line(x + 4, y - 2, x + 4, y + 2)
        m = c.poly(spline(at(x, y, '0,10 0,5 4,1 8,5 8,10'), n=4), 'w')
        for k in (2, 4, 6): c.line(x + k, y + 4, x + k, y + 9)
        c.lines(at(x, y, '8,5 11,7 11,10'))
    for x in (78, 90, 104, 118, 170, 178, 190):
        c.art(x, 43, ["_##", "###", "_#_"]); c.px(x + 3, 44) if x % 4 else c.px(x - 1, 44)
    for x, y in ((108, 30), (118, 26), (178, 34)): bird(c, x, y, x, 2)
    # hurdles in a ring
    for x in range(176, 262, 14):
        for k in range(5): c.line(x + k * 3, 104 + (x - 176) * .1, x + k * 3, 115 + (x - 176) * .1)
        for k in (0, 4, 8): c.line(x, 106 + k + (x - 176) * .1, x + 13, 107 + k + (x - 176) * .1)
    # yard: two unyoked wains, a well sweep, the weighing
    wain(c, 196, 134, 60, 44, ang=5); c.line(198, 128, 176, 133); c.line(198, 129, 176, 134)
    wain(c, 14, 134, 40, 30, lantern=False); c.line(16, 130, 2, 134)
    c.stroke('128,138 128,96', 3); c.stroke('128,138 128,96', 1, c=0); c.stroke('100,116 172,82', 2.2)
    c.rect(95, 114, 103, 121, 'k', 0); c.line(172, 82, 172, 122)
    m = c.rect(160, 126, 184, 138, 'w', heavy=1); courses(c, m, 4, 6, 2, .8); c.put(c.mell(172, 126, 12, 3), '75')
    c.ink(c.edge(c.mell(172, 126, 12, 3))); c.rect(169, 118, 175, 124, 'w')
    # Immer woman weighing nails at a trestle
    person(c, 78, 146, 26, f=1, hat='cone', top='w', legs='k', skirt=True, arm=((3, 14), (6, 15.5)))
    c.line(84, 127, 96, 127); c.line(86, 127, 86, 133); c.line(95, 127, 95, 130); c.line(83, 133, 89, 133)
    c.line(92, 130, 98, 130); c.line(90, 122, 90, 127)
    c.rect(86, 138, 112, 141, 'w', heavy=1); c.line(90, 141, 88, 150); c.line(108, 141, 110, 150)
    c.rect(98, 133, 107, 138, '75'); c.ink(c.edge(c.mrect(98, 133, 107, 138)))
    person(c, 122, 148, 24, f=-1, hat='broad', top='25', arm=((2, 12), (4, 10)))
    front_tufts(c, '8,152 40,150 146,153 196,152 236,150 256,152 62,154')
    return c

def dial():
    c = P(); cloud(c, 150, 26, 70, 11, 4); cloud(c, 8, 40, 44, 7, 9); ground(c, '-4,92 70,90 160,92 268,89')
    m = c.mpoly(spline('-4,88 40,85 90,90 -4,91', n=5)); c.put(m, '25', 0)
    c.shade(c.mpoly('0,94 262,92 262,155 0,155'), 'grass')
    # shadow sweeping to the lower right
    s_ = c.mpoly('84,112 104,114 150,122 268,150 268,170 214,170 130,132'); c.put(s_, 'w', 0); c.hatch(s_, 3, -1)
    c.hatch(s_, 6, -1, off=1)
    # the pillar, leaning right
    body = [(62, 114), (66, 92), (74, 60), (84, 30), (92, 12), (100, 5), (110, 6), (116, 14), (114, 34), (110, 62),
        (108, 92), (110, 112), (96, 117), (76, 117)]
    m = c.poly(body, 'w', heavy=1)
    dark = c.mpoly('100,5 110,6 117,14 114,34 110,62 108,92 111,113 92,117 94,90 98,56 102,26')
    c.shade(dark & c.inner(m), '/')
    c.shade(c.mpoly('110,6 118,14 112,64 111,113 103,116 104,70 110,30') & c.inner(m), 'x')
    c.lines('100,6 102,26 98,56 94,90 92,116')
    for p in ([(80, 44), (86, 46), (84, 54)], [(74, 70), (82, 74), (80, 86)], [(90, 24), (94, 30)],
            [(70, 92), (78, 96), (77, 108)], [(86, 60), (88, 72)], [(84, 92), (86, 104)]):
        c.lines(p)
    for x, y in ((92, 2), (122, 10), (84, 16), (128, 24)): bird(c, x, y, x, 2)
    # tents in a fan, pens
    L = [(24, 106, 22, 14), (44, 112, 24, 15), (8, 114, 24, 15), (136, 104, 22, 14), (160, 102, 20, 13),
        (182, 100, 18, 12), (204, 99, 17, 11), (226, 98, 15, 10), (246, 97, 14, 9), (150, 114, 26, 16),
        (180, 111, 24, 15), (208, 108, 22, 14), (234, 106, 20, 13), (256, 104, 18, 12)]
    for x, y, w, h in sorted(L, key=lambda t: t[1]): tent(c, x, y, w, h)
    for x0, y0, n in ((204, 122, 5), (20, 136, 6)):
        for k in range(n):
            c.line(x0 + k * 9, y0 + (k % 2), x0 + k * 9, y0 + 9 + (k % 2))
            c.line(x0 + k * 9, y0 + 3, x0 + k * 9 + 9, y0 + 4); c.line(x0 + k * 9, y0 + 6, x0 + k * 9 + 9, y0 + 7)
    for x, y in ((210, 120), (222, 121), (236, 122)): halo(c, lambda d: ox(d, x, y, 9, 6))
    for x, y in ((24, 135), (36, 136), (50, 136), (62, 135)):
        halo(c, lambda d: ox(d, x, y, 10, 7, tone='k' if x % 3 == 0 else 'w'))
    for x, y in ((60, 122), (66, 124), (170, 118), (140, 121), (194, 116), (218, 114), (120, 108), (124, 110)):
        tiny(c, x, y)
    # two wains come in along the shadow's edge, tiny
    for x, y, w, h in points('186,142,15,11 216,149,17,12'):
        halo(c, lambda d: wain(d, x, y, w, h, lantern=False)); halo(c, lambda d: ox(d, x - 12, y, 10, 6))
    # foreground: a herder with a horse's saddle, grass
    halo(c, lambda d: person(d, 104, 152, 22, f=1, hat='felt', top='w', braid=True, arm=((2, 13), (5, 15))))
    c.line(110, 128, 110, 152)
    front_tufts(c, '12,152 84,150 130,153 150,150 250,153 70,153'); stones(c, ((44, 152, 4),))
    return c

def mallow():
    c = P(); r = random.Random(9); h = spline('-4,54 20,48 44,52 70,44 100,52 136,56 170,60', n=6)
    m = c.mpoly(h + [(170, 66), (-4, 66)]); c.put(m, '25', 0); c.lines(h)
    cloud(c, 30, 26, 60, 10, 3); cloud(c, 180, 20, 56, 9, 5); ground(c, '-4,64 120,63 268,66')
    # barn, right of the middle
    m = c.poly('150,104 150,66 176,42 202,66 202,104', 'w', heavy=1); courses(c, c.inner(m), 5, 9, 3, .6)
    c.poly('202,66 202,104 236,98 236,62', '/', heavy=1); c.poly('176,42 212,38 238,63 202,67', 'w', heavy=1)
    for k in range(4): c.lines([(176 + 6.5 * k, 42 + 6.2 * k), (212 + 6.5 * k, 38 + 6.2 * k)])
    c.lines('147,68 176,40 205,68'); c.lines('147,69 176,41 205,69')
    c.poly('166,104 166,80 186,80 186,104', '75'); c.ink(c.edge(c.mrect(166, 80, 187, 105))); c.line(176, 80, 176, 104)
    c.rect(172, 56, 180, 66, 'k', 0); tent(c, 78, 100, 46, 30); tent(c, 122, 96, 36, 24); tent(c, 46, 96, 32, 22)
    c.stroke('78,70 80,58', 1); smoke_p = [(80, 58), (84, 50), (80, 42), (86, 34)]; c.curve(smoke_p)
    c.curve([(x + 4, y) for x, y in smoke_p])
    # yard: saddle rail
    for x in (58, 112): c.rect(x, 106, x + 3, 124, 'k', 0)
    c.rect(54, 106, 118, 110, 'w', heavy=1)
    for k in range(5):
        x = 64 + k * 11
        m = c.poly(spline([(x - 5, 118), (x - 6, 108), (x - 3, 102), (x, 105), (x + 4, 101), (x + 6, 108),
            (x + 5, 118)], n=4), '75' if k % 2 else 'w')
        c.ink(c.edge(m)); c.line(x, 118, x, 124)
        c.lines([(x - 2, 124), (x + 2, 124), (x + 2, 127), (x - 2, 127), (x - 2, 124)])
    # the smith shoeing an ox in a frame
    ox(c, 142, 132, 44, 27, tone='w')
    for x in (138, 182): c.rect(x, 98, x + 4, 134, 'w', heavy=1)
    c.rect(134, 96, 190, 100, 'w', heavy=1); c.lines('160,100 158,118'); c.lines('168,100 170,118')
    c.curve('158,118 164,122 170,118')
    person(c, 196, 136, 24, f=-1, hat='cap', top='50', apron=True, arm=((3, 11), (6, 7)), lean=2)
    c.stroke('186,126 192,130', 1.6)
    c.rect(208, 128, 220, 132, 'k', 0); c.rect(212, 132, 216, 138, 'k', 0); c.rect(209, 138, 219, 142, 'w', heavy=1)
    # the sod wall in front, with its gap
    for pts, a, b in (([(-4, 116), (20, 110), (44, 118), (58, 132), (54, 150), (50, 170)], -4, 58),
            ([(268, 114), (248, 112), (232, 120), (222, 136), (228, 152), (230, 170)], 222, 268)):
        g = spline(pts, n=6); m = c.poly(g + ([(-4, 170)] if a < 0 else [(268, 170)]), 'w', heavy=1); inner = c.inner(m)
        for y in range(118, 156, 6):
            cl = c.clip; c.clip = inner
            for x in range(int(a) - 4, int(b) + 4, 15):
                c.curve([(x + (y % 12), y + 1), (x + 6 + (y % 12), y + 2.4), (x + 12 + (y % 12), y + 1)])
                c.line(x + 13 + (y % 12), y - 4, x + 13 + (y % 12), y)
            c.clip = cl
        c.shade(inner & c.mrect(40, 0, 60, H), '25')
    # mallows growing on it
    for x, y, hh in ((8, 112, 30), (18, 110, 40), (30, 112, 26), (40, 116, 34), (50, 124, 24), (236, 118, 36),
            (246, 112, 28), (256, 112, 42), (228, 128, 22)):
        c.curve([(x, y + 3), (x + 1, y - hh * .5), (x + r.uniform(-2, 2), y - hh)])
        for k in range(int(hh / 7)):
            fy = y - hh + k * 6.4; fx = x + (2 if k % 2 else -3)
            c.ell(fx, fy, 2.8 - (k == 0) * .8, 2.6 - (k == 0) * .8, 'w'); c.px(fx - .5, fy - .5)
        c.ell(x - 3, y - 3, 3, 2, 'k'); c.ell(x + 4, y - 6, 3, 2, 'k')
    c.lines('70,150 110,142 150,146', dash=(1, 1, 0)); c.lines('80,154 118,147 160,152', dash=(1, 1, 0))
    front_tufts(c, '90,153 140,154 180,153 208,154')
    return c

def river():
    c = P(); r = random.Random(29); cloud(c, 30, 24, 70, 11, 3); cloud(c, 170, 32, 56, 9, 6)
    h = spline('-4,50 60,44 130,49 200,43 268,48', n=6)
    m = c.mpoly(h + [(268, 60), (-4, 60)]); c.put(m, '25', 0); c.lines(h)
    # far bank of willows
    ground(c, '-4,62 60,60 130,63 200,60 268,62')
    for i, x in enumerate((8, 30, 50, 76, 96, 128, 150, 178, 204, 226, 250)):
        tree(c, x, 68, 20 + (i * 7) % 13, 'willow', i)
    water = c.mpoly(spline('-4,70 60,68 130,71 200,68 268,71', n=6)
        + spline('268,120 220,118 170,124 120,120 60,128 -4,122', n=6))
    c.put(water, 'w')
    # the willows stand on their heads in it, in every second row
    rows, columns = np.indices((H, W))
    for i, x in enumerate((8, 30, 50, 76, 96, 128, 150, 178, 204, 226, 250)):
        deep = 9 + (i * 7) % 13 * .8
        shape = c.mpoly(spline(at(x, 72, [(-8, 0), (-9, deep * .5), (-4, deep), (0, deep * .8), (5, deep),
            (9, deep * .4), (8, 0)]), n=4))
        c.shade(shape & water & (rows % 2 == 0), '75')
    c.shade(water & (rows > 88), 'calm'); c.shade(water & (rows < 73), '50'); c.ink(c.edge(water))
    # small: wheel tracks coming out again on the far side
    rd = c.mpoly('112,70 118,62 124,58 128,58 126,63 124,71'); c.put(rd, 'w', 0); c.lines('112,70 117,63 124,58')
    c.lines('124,71 126,63 128,58'); c.lines('118,70 121,64', dash=(1, 0))
    # near bank
    near = c.mpoly(spline('-4,122 60,128 120,120 170,124 220,118 268,120', n=6) + [(268, 165), (-4, 165)])
    c.put(near, 'w', 0)
    c.lines(spline('-4,122 60,128 120,120 170,124 220,118 268,120', n=6))
    c.lines([(x, y + 1) for x, y in spline('-4,122 60,128 120,120 170,124 220,118 268,120', n=6)])
    # striped stake at the left with a reed hat hung on it
    c.rect(46, 58, 56, 140, 'w', heavy=1)
    for k, y in enumerate(range(62, 138, 12)): c.rect(46, y, 56, y + 6, 'k', 0)
    for y in range(68, 136, 6): c.line(57, y, 60 if (y // 6) % 2 else 58, y)
    for k in range(3): c.lines(arc(51, 122, 9 + k * 6, 2.4 + k * 1.2, 10, 170))
    def hat(c):
        c.poly('26,71 76,62 46,38', 'w', heavy=1)
        for t in (.2, .4, .6, .8): c.line(46, 40, 26 + 50 * t, 70 - 8 * t)
        c.curve('33,61 48,61 64,56'); c.curve('39,52 47,52 57,49')
    halo(c, hat, 2)
    # wheel tracks going down into the water at the right
    for o in (0, 22):
        p = spline([(262 + o, 158), (226 + o * .9, 142), (196 + o * .8, 130), (178 + o * .7, 118), (170 + o * .6, 108)],
            n=6)
        c.band(p, 5, 2, 'w', 1); c.lines(p, dash=(1, 0, 0))
    # reeds and tufts
    for x0 in (6, 16, 82, 92, 128):
        for k in range(6):
            x = x0 + k * 2.4; hh = r.uniform(14, 28); l = r.uniform(-3, 3)
            p = spline([(x, 134), (x + l * .3, 134 - hh * .6), (x + l, 134 - hh)]); c.lines(p)
            if k % 2: c.rect(p[-1][0] - 1, p[-1][1], p[-1][0] + 1, p[-1][1] + 6, 'k', 0)
    front_tufts(c, '30,150 70,148 104,152 146,148 172,152 12,153 250,132')
    stones(c, ((118, 140, 5), (200, 150, 6), (60, 144, 4)))
    # a heron, and ripples
    c.art(150, 96, ["__##_____", "####_____", "__.#_____", "__#._____", "__#.###__", "__#....##", "___##.##_",
        "____#_#__", "____#_#__", "____#_#__", "____#_#__"])
    return c

def pictures():
    return {'Places/lanthorn': lanthorn(), 'Places/hearth-linnet': linnet(), 'Places/dial-rock': dial(),
        'Places/hearth-mallow': mallow(), 'Places/river': river()}
