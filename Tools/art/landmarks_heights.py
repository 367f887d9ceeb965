"""Pictures of the places in the heights, and of mourning."""
import math
import random

import numpy as np

from country import crown, front_tufts, ground, stones, tree
from figures import halo, ox, person, wain
from ink import arc, at, Canvas, points, shifted, spline
from landmark import H, P, W

def aumbry():
    c = P(); r = random.Random(13)
    # the heights: white above, hatched below
    pk = [(-6, 40), (20, 16), (40, 30), (66, 6), (92, 26), (112, 14), (140, 32), (168, 10), (196, 28), (222, 8),
        (246, 26), (270, 16)]
    m = c.mpoly(pk + [(270, 80), (-6, 80)]); c.put(m, 'w', 0); c.lines(pk)
    low = c.mpoly('-6,48 20,38 34,44 66,32 90,42 112,36 140,46 168,34 196,44 222,32 250,42 270,38 270,84 -6,84')
    c.shade(low & m, '/')
    for i in range(1, len(pk) - 1, 2):
        x, y = pk[i]; c.lines(at(x, y, '0,0 4,10 1,18'))
        c.shade(c.mpoly(at(x, y, '0,0 14,14 20,26 3,22 4,10')) & m, 'mist')
    ground(c, '-4,84 80,82 170,84 268,82')
    for x in list(range(2, 40, 9)) + list(range(222, 262, 9)):
        tree(c, x + r.uniform(-2, 2), 86 + r.uniform(-1, 2), 34 + r.uniform(-4, 6), 'birch', x)
    # the storehouse on stone legs
    for x in (52, 84, 116, 148, 180, 202):
        m = c.poly([(x - 3, 128), (x - 2, 114), (x - 6, 113), (x - 6, 110), (x + 8, 110), (x + 8, 113), (x + 4, 114),
            (x + 6, 128)], 'w', heavy=1)
    c.shade(c.mrect(60, 114, 80, 122) | c.mrect(92, 114, 112, 122) | c.mrect(124, 114, 144, 122)
        | c.mrect(156, 114, 176, 122), '75')
    c.rect(44, 52, 212, 112, 'w', heavy=1)
    # wall of little locked cupboards
    for j in range(7):
        for i in range(20):
            x, y = 48 + i * 8, 55 + j * 8; c.rect(x, y, x + 8, y + 8, 'w'); c.px(x + 5, y + 4)
    for i, j in ((4, 1), (9, 4), (16, 2)):
        x, y = 48 + i * 8, 55 + j * 8
        c.rect(x, y, x + 9, y + 9, 'k', 0); c.poly(at(x, y, '8,-1 16,2 16,12 8,9'), 'w', heavy=0); c.px(x + 14, y + 7)
    c.poly('34,54 58,30 198,30 222,54', 'w', heavy=1)
    for k, y in enumerate((36, 42, 48)):
        x0 = 58 - (y - 30); x1 = 198 + (y - 30); c.line(x0, y, x1, y)
        for x in range(int(x0) + 4 + k * 3, int(x1), 9): c.line(x, y, x - (1 if x < 128 else -1), y + 5)
    c.rect(124, 22, 132, 32, 'w', heavy=1); c.curve('128,22 124,14 130,8 126,0'); c.curve('131,22 128,15 134,8 130,0')
    # steps to a door at the right
    # a ladder, and the old man taking out a fiddle
    c.line(136, 140, 142, 84); c.line(146, 140, 152, 84)
    for k in range(11): c.line(137 + k * .58, 136 - k * 5, 147 + k * .58, 136 - k * 5)
    def old(d):
        person(d, 147, 120, 30, f=-1, hat='none', top='w', legs='k', arm=((3, 16), (6, 18)), back=True)
        d.put(d.mell(147, 92, 3, 3), 'w'); d.lines('145,95 148,97')
        d.poly(spline('136,98 131,97 130,93 133,91 134,89 131,87 133,84 138,86 140,92 139,97', True, 4), 'w')
        d.line(133, 87, 137, 95); d.stroke('133,85 128,77', 1.8); d.px(135, 92)
    halo(c, old, 2)
    # birch trunks white in front
    for x, w in ((16, 11), (238, 12), (212, 7)):
        L = [(x, 160), (x + 1, 100), (x - 1, 50), (x + 2, -4)]
        R = [(x + w + 1, -4), (x + w - 1, 50), (x + w + 1, 100), (x + w + 3, 160)]
        m = c.poly(spline(L, n=6) + spline(R, n=6), 'w', heavy=1 if w > 8 else 0); cl = c.clip; c.clip = c.inner(m)
        for y in range(4, 154, 11):
            s_ = r.random()
            c.poly([(x, y + s_ * 4), (x + w * .55, y + 1 + s_ * 4), (x + w * .3, y + 3 + s_ * 4),
                (x, y + 3.4 + s_ * 4)], 'k', 0) if s_ < .6 else c.line(x + w * .5, y, x + w + 1, y)
        c.shade(c.mrect(x + w * .72, 0, x + w + 4, H), '25'); c.clip = cl
    for b in ([(22, 60), (36, 44), (50, 40)], [(20, 30), (6, 18), (-4, 16)], [(242, 50), (226, 34), (216, 32)],
            [(246, 24), (258, 12), (266, 10)]):
        c.curve(b)
        for x, y in spline(b)[4::3]:
            c.px(x, y + 2); c.px(x + 1, y + 3); c.px(x - 1, y + 4)
    # sisters below with keys, basket
    person(c, 84, 150, 28, f=1, hat='shawl', top='k', legs='w', skirt=True, arm=((3, 13), (6, 13)))
    c.lines(arc(94, 134, 4, 4))
    for a in (60, 95, 130):
        q = math.radians(a)
        c.line(94 + math.cos(q) * 4, 134 + math.sin(q) * 4, 94 + math.cos(q) * 9, 134 + math.sin(q) * 9)
    person(c, 108, 150, 27, f=-1, hat='shawl', top='w', legs='50', skirt=True, arm=((3, 14), (5, 16)))
    wain(c, 172, 152, 40, 30, lantern=True); front_tufts(c, '50,152 66,153 130,154 158,153 230,153')
    return c

def saddle():
    c = P(); r = random.Random(17)
    # two peaks, snow in hard white patches: the rock shows grey on the lit side and hatched on the other
    def peak(outline, shade, rock, ledges):
        m = c.inner(c.poly(outline, 'w', heavy=1))
        c.shade(m & c.mpoly(shade), '/')
        for patch in rock:
            p = c.mpoly(patch) & m
            c.put(p, '50', 0); c.lines(points(patch)[:-1])
        for patch in ledges:
            p = c.mpoly(patch) & m
            c.put(p, 'w', 0); c.lines(points(patch)[:-2])
    peak('-10,120 -10,44 10,30 28,8 38,16 50,34 66,50 76,72 98,96 110,120',
        '28,8 38,16 50,34 66,50 76,72 98,96 112,122 62,122 50,96 54,82 42,60 44,44 33,28',
        ('24,18 27,26 23,36 29,30 27,44 21,52 15,50 19,38 21,28', '8,36 13,46 8,58 14,56 10,72 2,80 -8,78 -2,62 4,50',
        '31,46 37,58 34,68 42,74 40,90 46,102 34,98 30,84 24,78 29,66',
        '20,66 24,80 19,92 26,96 24,112 10,116 12,100 8,92 14,84', '44,104 52,112 48,122 38,122 40,112'),
        ('40,24 46,34 42,40 50,48 54,46 48,34', '60,58 64,70 60,76 70,88 74,86 68,72',
        '82,90 86,100 82,106 92,114 96,108'))
    peak('272,120 272,50 256,36 236,4 226,14 216,36 202,50 190,74 168,98 150,120',
        '236,4 256,36 274,50 274,122 232,122 240,98 234,82 246,62 240,46 246,32',
        ('231,16 234,28 229,38 235,36 233,50 226,58 219,56 224,42 226,28',
        '214,44 219,56 213,66 221,66 217,80 208,88 200,84 206,70 207,56',
        '236,58 230,72 233,82 226,90 228,104 220,112 216,100 222,88 225,74',
        '204,92 208,104 202,112 206,120 190,120 192,108 196,100'), ('250,34 256,44 252,50 260,58 264,56 258,44',
        '258,70 262,82 258,88 268,98 272,92 266,80', '244,88 248,98 244,106 252,112 256,106'))
    # the gap: ground rising to an edge
    g = ground(c, '-4,124 50,116 96,112 131,111 170,112 214,117 268,124')
    c.shade(g & c.mpoly('150,120 268,126 268,155 190,155'), 'mist')
    # a wain's tilt just coming up over the edge
    d = Canvas(W, H, 64, 9); wain(d, 152, 130, 42, 34, lantern=True)
    edge_y = np.interp(np.arange(W), [-4, 50, 96, 131, 170, 214, 268], [124, 116, 112, 111, 112, 117, 124])
    mm = d.touch & (np.indices((H, W))[0] < edge_y[None, :] - 0)
    c.a[mm] = d.a[mm]; c.lines(spline('120,111 131,111 170,112 214,117', n=6))
    ox(c, 128, 113, 18, 10, yoke=True); c.a[112:114, 124:150] = 0; c.lines('120,111 150,111')
    # bell frame in black against the sky
    for x in (92, 142): c.poly([(x - 5, 130), (x - 3, 44), (x + 4, 44), (x + 7, 130)], 'k')
    c.poly('80,46 86,36 154,36 160,46', 'k'); c.poly('112,36 120,26 128,36', 'k')
    for x in (92, 142):
        for y in range(52, 128, 10):
            c.line(x - 2, y, x + 2, y, 0); c.px(x + (1 if y % 20 else -1), y + 4, 0)
    c.line(97, 62, 138, 62); c.line(97, 63, 138, 63); c.stroke('120,46 120,54', 3)
    b = c.poly(spline('108,62 112,54 120,51 128,54 132,62', n=4) + spline('132,62 134,78 142,92', n=4)
        + spline('98,92 106,78 108,62', n=4), 'w', heavy=1)
    c.shade(b & c.mpoly('122,50 134,60 142,93 124,93') & ~c.edge(b), '/'); c.line(101, 87, 138, 87)
    c.line(104, 83, 136, 83); c.ell(119, 96, 3.4, 3.6, 'k'); c.curve('119,99 122,112 118,124')
    # jackdaws like thrown tacks
    for i in range(54):
        a = r.random(); x = 131 + (a - .5) * 230; y = 8 + r.random() * 54 + abs(a - .5) * 10
        if 78 < x < 162 and 30 < y < 70: continue
        c.art(int(x), int(y), (["#_#", "_#_"], ["_#_", "#_#"], ["##_", "_##"], ["#__", "###"])[i % 4])
    for x in (84, 96, 110, 132, 148): c.art(x, 32, ["_##", "###", "#_#"])
    # road, cairn, foreground drift
    c.curve('70,155 96,138 118,124 130,112', dash=(1, 1, 1, 0))
    c.curve('104,155 120,140 134,126 142,113', dash=(1, 1, 1, 0))
    stones(c, ((40, 150, 8), (30, 142, 6), (48, 141, 5), (40, 135, 5), (220, 148, 7), (236, 152, 9), (206, 152, 5)))
    c.lines(spline('150,156 172,148 204,154 236,153 268,146', n=6))
    person(c, 72, 146, 22, f=1, hat='cap', top='w', arm=((3, 14), (5, 16)))
    person(c, 60, 147, 21, f=1, hat='shawl', top='50', legs='k', skirt=True)
    return c

def wicken():
    c = P(); r = random.Random(19); c.a[:56] = c.tone('12')[:56]
    hp = [(-4, 50), (30, 34), (52, 44), (86, 24), (120, 46), (160, 30), (190, 46), (226, 26), (268, 44)]
    m = c.mpoly(hp + [(268, 70), (-4, 70)]); c.put(m, 'w', 0); c.lines(hp)
    for x, y in ((30, 34), (86, 24), (160, 30), (226, 26)):
        c.shade(c.mpoly([(x, y), (x + 22, y + 18), (x + 24, 70), (x + 4, 70), (x + 5, y + 16)]) & m, '/')
    ground(c, '-4,74 80,70 180,72 268,70')
    for x, y in ((14, 82), (34, 78), (232, 80), (252, 84)): tree(c, x, y, 34, 'rowan', x)
    # the inn: dark stone, snow on the roof, warm window white in a dark wall
    wall = c.rect(64, 70, 206, 122, '75', heavy=1); cl = c.clip; c.clip = c.inner(wall)
    for y in range(76, 122, 7):
        for x in range(60 + (y % 14) // 2, 206, 13):
            c.line(x, y, x + 9, y, 0); c.line(x + 11, y + 1, x + 11, y + 4, 0)
    c.clip = cl; roof = c.poly('50,74 84,32 190,30 220,72 206,76 64,76', 'w', heavy=1)
    c.shade(roof & c.mpoly('150,30 190,30 221,74 180,76') & ~c.edge(roof), 'mist')
    sn = spline('48,72 56,80 64,76 74,82 88,77 104,83 122,78 140,84 158,78 176,83 194,77 208,81 222,71', n=5)
    m = c.mpoly(sn + [(214, 66), (60, 66)]); c.put(m, 'w', 0); c.lines(sn); c.lines('50,73 84,32')
    c.lines('190,30 220,71'); c.lines('191,30 221,71')
    for x in (76, 108, 146, 182): c.line(x, 82, x, 87)
    for x0, hh in ((102, 20), (168, 16)):
        m = c.rect(x0, 34 - hh + 4, x0 + 16, 40, '75', heavy=1)
        c.poly(spline([(x0 - 3, 34 - hh + 6), (x0 - 2, 34 - hh), (x0 + 8, 34 - hh - 3), (x0 + 18, 34 - hh),
            (x0 + 19, 34 - hh + 6)], n=4), 'w')
    p = [(110, 14), (104, 8), (112, 2), (106, -4)]; c.curve(p); c.curve([(x + 5, y) for x, y in p])
    def window(x, y, w, h):
        c.rect(x - 2, y - 2, x + w + 2, y + h + 2, 'k', 0); c.rect(x, y, x + w, y + h, 'w', 0)
        c.line(x + w // 2, y, x + w // 2, y + h - 1); c.line(x, y + h // 2, x + w - 1, y + h // 2)
    window(80, 90, 14, 14); window(150, 88, 24, 16); window(186, 90, 12, 13); window(128, 56, 10, 9)
    c.rect(126, 54, 140, 66, None)
    c.poly([(108, 122), (108, 96)] + arc(118, 96, 10, 8, 180, 360) + [(128, 122)], 'k')
    c.poly([(111, 121), (111, 98)] + arc(118, 98, 7, 5, 180, 360) + [(125, 121)], 'woodv', 0); c.px(122, 110, 0)
    # light on the snow below the windows
    for x0, x1 in ((78, 98), (148, 180)):
        c.lines([(x0, 126), (x0 - 8, 140)], dash=(1, 0, 0)); c.lines([(x1, 126), (x1 + 10, 140)], dash=(1, 0, 0))
    # a stack of wood as long as the house
    for row in range(3):
        for i in range(12 - row):
            x, y = 136 + i * 6 + row * 3, 128 - row * 5; c.ell(x, y, 3.2, 2.9, 'w'); c.px(x - .5, y - .5)
    c.curve('134,116 150,111 180,112 206,117')
    # the letter ledge and the old woman
    c.rect(28, 110, 62, 114, 'w', heavy=1); c.rect(32, 114, 36, 132, 'w', heavy=1)
    c.rect(54, 114, 58, 132, 'w', heavy=1)
    for x, y in ((31, 106), (40, 105), (48, 107), (54, 104)):
        c.rect(x, y, x + 8, y + 6, 'w'); c.lines(at(x, y, '0,0 4,3 7,0'))
    person(c, 72, 142, 32, f=-1, hat='shawl', top='w', legs='/', skirt=True, arm=((3, 15), (7, 18)),
        arm2=((3, 13), (6, 16)))
    c.rect(58, 114, 66, 120, 'w'); c.lines('58,114 62,117 65,114')
    # a sledge
    c.curve('96,150 92,146 94,140'); c.curve('92,151 120,151 150,149 158,146'); c.line(96, 150, 152, 148)
    c.rect(102, 139, 148, 143, 'w', heavy=1); c.line(108, 143, 108, 150); c.line(140, 143, 140, 149)
    m = c.blob('110,139 108,131 114,126 122,129 124,139', 'w', heavy=1); c.rect(126, 128, 140, 139, 'w', heavy=1)
    c.line(126, 133, 139, 133)
    # the near rowan, heavy with berries and snow
    c.band(spline('236,160 238,130 232,104 236,86'), 7, 4, 'w', heavy=1); c.stroke('235,112 220,96', 2)
    c.stroke('236,104 252,90', 2); crown(c, 236, 74, 34, 24, r, lobes=12)
    for i in range(17):
        a = i * 2.4; q = ((i + .5) / 17) ** .5; x, y = 236 + math.cos(a) * 28 * q, 74 + math.sin(a) * 18 * q
        c.ink(c.mell(x + 1, y + 1, 4.4, 4), 0)
        for dx, dy in ((0, 0), (3, 0), (1, 3), (-2, 2)):
            c.rect(x + dx, y + dy, x + dx + 2, y + dy + 2, 'k', 0)
    c.curve('-4,146 30,140 60,146 90,154'); c.curve('170,154 200,148 230,150 264,144')
    for x, y in ((20, 150), (44, 153), (190, 140), (214, 142), (180, 152)):
        c.px(x, y); c.px(x + 3, y)
    return c

def elbow():
    c = P()
    # far hills beyond the bend
    h = spline('40,34 80,22 120,30 160,20 210,28 268,18', n=6)
    m = c.mpoly(h + [(268, 50), (40, 50)]); c.put(m, '25', 0); c.lines(h); ground(c, '30,44 100,40 180,42 268,38')
    # the great bend of the river
    riv = c.mpoly(spline('268,48 210,50 150,54 112,64 104,82 124,104 170,130 186,170', n=8)
        + spline('268,170 262,140 230,112 190,92 176,80 190,70 226,62 268,60', n=8))
    c.put(riv, 'w'); c.shade(riv, 'calm')
    c.shade(c.mpoly(spline('268,48 210,50 150,54 112,64 104,82 124,104 132,100 114,82 122,68 156,58 212,54 268,52',
        True, 6)) & riv, '50')
    c.ink(c.edge(riv))
    for x, y in ((216, 46), (226, 45), (238, 44), (250, 43), (244, 70), (256, 72), (232, 78), (206, 82), (258, 86),
            (244, 92)):
        tree(c, x, y, 13 + x % 5, 'fir', x)
    rock = c.poly('-6,-6 40,-6 52,10 64,18 74,36 90,48 98,66 96,88 106,108 98,122 60,127 20,124 -6,128', 'w')
    inner = c.inner(rock)
    c.shade(inner & c.mpoly('40,-6 52,10 64,18 74,36 90,48 98,66 96,88 107,108 99,124 84,124 80,104 86,80 68,54 50,30'),
        '/')
    c.lines('40,-6 50,30 68,54'); c.lines('98,66 97,88 107,108 99,122'); c.lines('99,66 98,88 108,108')
    for crack in ('8,2 14,14 10,26 15,36', '24,-2 28,10 24,20 30,32', '38,8 42,20 38,28', '50,36 53,46',
            '6,64 12,76 8,88 14,96', '26,66 30,76 26,86 32,92', '44,72 48,84 44,94', '60,80 64,90', '14,104 18,114',
            '36,100 40,112', '70,96 74,108'):
        c.lines(crack)
    road = c.mpoly(spline('112,132 92,118 74,106 80,92 86,78 60,62 30,54 -6,51', n=8)
        + spline('-6,43 30,46 66,54 96,72 94,94 88,104 104,114 124,126', n=8))
    c.shade(shifted(road, 0, 6) & inner & ~road, '75'); c.put(road, 'w')
    for x, y in points('6,43 20,44 34,46 48,49 62,53 76,60 88,68'): c.rect(x, y - 3, x + 2, y + 1, 'k', 0)
    # the way in front parts: to the gate, and to the ways
    c.ink(c.mpoly('-6,128 20,125 60,128 98,123 124,126 150,118 186,170 -6,170') & ~riv, 0)
    c.curve('-6,128 20,125 60,128 84,126')
    for a, b in (('60,158 76,146 96,134 106,124', (1, 1, 1, 0, 0)), ('72,159 88,148 106,136 118,126', (1, 1, 1, 0, 0)),
                 ('96,158 130,154 170,152 208,144', (1, 1, 1, 0, 0))): c.curve(a, dash=b)
    # toll gate and its little house
    c.rect(42, 104, 70, 130, 'w', heavy=1); c.poly('37,106 56,89 75,106', 'k'); c.line(50, 96, 61, 96, 0)
    c.rect(47, 110, 53, 117, 'k', 0); c.rect(58, 112, 65, 130, '75'); c.rect(63, 86, 68, 96, 'w')
    c.rect(82, 108, 87, 134, 'k', 0); c.poly('84,112 84,108 128,96 129,100', 'w')
    for k in range(4): c.poly(at(91 + k * 9, 108 - k * 2.5, '0,.4 4,-.6 4,1.8 0,3'), 'k', 0)
    # raft ways at the right: an inclined frame, a raft half lashed, logs in the water
    c.stroke('208,122 226,92', 2.4); c.stroke('240,122 224,92', 2.4); c.stroke('214,112 235,112', 1.8)
    c.line(225, 94, 225, 104); c.stroke('196,142 262,118', 2.6); c.stroke('210,154 266,132', 2.6)
    for k in range(6):
        m = c.band([(204 + k * 8, 134 - k * 3), (218 + k * 8, 151 - k * 3)], 7, tone='w')
        c.ell(218 + k * 8, 151 - k * 3, 3.4, 3.2, 'w'); c.px(217.5 + k * 8, 150.5 - k * 3)
    c.lines('204,141 250,122'); c.lines('212,149 258,130')
    for x, y, L in ((150, 112, 18), (140, 94, 14), (172, 134, 20), (186, 148, 16)):
        c.band([(x, y), (x + L, y + L * .35)], 4, tone='w', heavy=0)
    person(c, 248, 122, 20, f=-1, hat='cap', top='50', arm=((3, 13), (6, 11))); c.stroke('238,114 250,118', 1.2)
    # the wain between, its people looking from one to the other
    wain(c, 128, 153, 50, 37, ang=6)
    halo(c, lambda d: ox(d, 96, 153, 30, 18, yoke=True))
    halo(c, lambda d: person(d, 88, 153, 21, f=-1, hat='broad', top='w', arm=((3, 15), (6, 17))))
    person(c, 186, 154, 20, f=1, hat='shawl', top='25', legs='k', skirt=True, arm=((3, 14), (6, 15)))
    front_tufts(c, '8,152 30,150 56,152 78,154')
    return c

def mourning():
    c = P()
    # white above to twelve percent at the horizon
    c.shade(c.mrect(0, 58, W, 84), '12'); c.shade(c.mrect(0, 40, W, 58), 'mist'); c.put(c.mell(40, 78, 11, 11), 'w')
    h = spline('-4,80 50,77 110,81 180,75 268,79', n=6)
    m = c.mpoly(h + [(268, 90), (-4, 90)]); c.put(m, '25', 0); c.lines(h)
    g = ground(c, '-4,86 80,84 170,87 268,84')
    c.shade(g & (np.indices((H, W))[0] < 112) & (np.indices((H, W))[1] > 104), 'grass')
    c.shade(g & (np.indices((H, W))[0] < 104), 'grass')
    for x, y, w in ((70, 58, 70), (160, 50, 80), (16, 64, 40)):
        c.put(c.mpoly(spline(at(x, y, '0,2 .4,0 1,2 .5,4', w, 1), True)), 'w', 0)
        c.curve(at(x, y, '0,2 .4,0 1,2', w, 1))
    # the road going on to the west
    rd = c.mpoly(spline('270,118 200,122 140,124 84,112 50,98 30,89 24,86', n=8)
        + spline('30,86 52,94 90,104 150,112 210,108 270,102', n=8))
    c.put(rd, 'w')
    for o in (0, 6):
        c.curve([(268, 108 + o), (206, 113 + o), (148, 116 + o * .6), (92, 107 + o * .5), (54, 95 + o * .4), (32, 87)],
            dash=(1, 1, 1, 1, 0, 0))
    # the wain standing, its shadow long to the right
    c.hatch(c.mpoly('150,118 236,117 268,124 268,132 170,122'), 3, -1)
    wain(c, 150, 120, 68, 52, ang=4, lantern=False); c.line(152, 113, 126, 117); c.line(152, 114, 126, 118)
    halo(c, lambda d: ox(d, 94, 120, 30, 18, yoke=True))
    # lantern lit on the front hoop
    c.ink(c.mell(147, 84, 10, 10), 0)
    c.line(150, 72, 147, 76); c.poly('143,80 147,76 151,80', 'k'); c.rect(143, 80, 152, 89, 'w')
    c.rect(142, 89, 153, 91, 'k', 0); c.px(147, 85); c.px(147, 84); c.px(147, 83); c.px(146, 85)
    for a in range(0, 360, 45):
        q = math.radians(a + 20)
        c.line(147 + math.cos(q) * 9, 84 + math.sin(q) * 9, 147 + math.cos(q) * 12, 84 + math.sin(q) * 12)
    # the small stone by the road, north as one drives, a cup turned over beside it
    m = c.poly(spline('196,147 196,136 201,128 209,127 216,133 218,147', n=5), 'w', heavy=1)
    c.shade(m & c.mpoly('209,126 218,134 219,148 208,148 211,138') & ~c.edge(m), '/')
    c.poly('225,147 227,138 236,138 238,147', 'w', heavy=1); c.line(226, 138, 237, 138)
    c.lines(arc(240, 142, 3.4, 3, -100, 100)); c.line(190, 148, 244, 148); c.lines('186,149 250,149', dash=(1, 1, 0))
    c.hatch(c.mpoly('218,147 260,150 262,153 200,150'), 3, -1)
    # three people seen from behind, their hats in their hands
    def back(x, y, hgt, kind, tone, hair, hat):
        u = hgt / 40
        if kind == 'skirt': c.poly(at(x, y, '-5,-19 5,-19 9,0 -9,0', u), tone, heavy=1)
        else:
            c.poly([(x - 6 * u, y - 19 * u), (x - .5, y - 19 * u), (x - 1.5 * u, y), (x - 6 * u, y)], 'k')
            c.poly([(x + .5, y - 19 * u), (x + 6 * u, y - 19 * u), (x + 6 * u, y), (x + 1.5 * u, y)], 'k')
        c.poly(spline(at(x, y, '-8,-16 -8,-27 -4,-32 4,-32 8,-27 8,-16', u), n=4), tone, heavy=1)
        c.line(x, y - 30 * u, x, y - 18 * u); c.line(x - 5 * u, y - 27 * u, x - 5 * u, y - 17 * u)
        c.line(x + 5 * u, y - 27 * u, x + 5 * u, y - 17 * u)
        c.rect(x - 2 * u, y - 34 * u, x + 2 * u + 1, y - 31 * u, 'w', 0)
        c.ell(x + .5, y - 36.5 * u, 4 * u, 4.6 * u, hair)
        if hair == 'w': c.lines([(x - 2, y - 38 * u), (x, y - 34 * u)])
        if hat == 'broad':
            c.stroke([(x + 7 * u, y - 16 * u), (x + 16 * u, y - 14 * u)], 2)
            c.poly(at(x, y, '9,-15 14,-14 13,-9 10,-10', u), 'k')
        elif hat == 'cap': c.put(c.mell(x - 9 * u, y - 15 * u, 3.6 * u, 3 * u), '75')
        elif hat == 'cone': c.poly(at(x, y, '-15,-14 -5,-18 -8,-9', u), 'w', heavy=0)
    back(28, 152, 42, 'legs', 'w', 'k', 'broad'); back(56, 153, 40, 'skirt', '50', 'k', 'cone')
    back(80, 153, 30, 'legs', 'w', 'w', 'cap'); front_tufts(c, '8,153 102,153 130,150 160,153 256,140')
    return c

def pictures():
    return {'Places/hearth-aumbry': aumbry(), 'Places/jackdaw-saddle': saddle(), 'Places/hearth-wicken': wicken(),
        'Places/elbow-landing': elbow(), 'Places/mourning': mourning()}
