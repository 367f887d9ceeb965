"""Pictures of the places in the hills and on the ash plain."""
import math
import random

import numpy as np

from country import cloud, courses, crown, front_tufts, ground, plume, stars, stones
from figures import halo, ox, person, wain, wheel
from ink import arc, at, spline
from landmark import H, P, W

def lyre():
    c = P(); r = random.Random(14)
    # columns fill the upper two thirds, broken off at different heights
    x = -3; k = 0; cloud(c, 190, 16, 60, 10, 4); cols = []
    while x < 250:
        w = r.choice((9, 10, 11, 12)); t = x / 250
        top = 6 + 34 * max(t, 0) ** 1.6 + abs(math.sin(k * 1.3)) * 14 + (24 if k in (7, 13, 17) else 0)
        cols.append((x, w, top)); x += w - 1; k += 1
    for i, (x, w, top) in enumerate(cols):
        if x > 216: top = 58 + (x - 216) * .9
        m = c.poly([(x, 112), (x, top + 2), (x + w * .3, top), (x + w * .75, top), (x + w, top + 3), (x + w, 112)], 'w')
        a = c.mrect(x + w * .36, top + 1, x + w * .7, 112); b = c.mrect(x + w * .7, top + 2, x + w, 112)
        inner = c.inner(m)
        c.shade(inner & a, ('25', 'w', '/', '25', 'w')[i % 5]); c.shade(inner & b, ('75', '/', '75', '50', '/')[i % 5])
        c.line(x + w * .36, top + 1, x + w * .36, 111)
        c.lines([(x + 1, top + 3), (x + w * .35, top + 4), (x + w * .75, top + 4), (x + w - 1, top + 5)])
        for q in range(3):
            y = top + 16 + r.uniform(0, 70)
            if y < 106: c.lines([(x + 1, y), (x + w * .36, y + 1.5)])
    # broken stumps at the foot
    for i, x in enumerate(range(2, 216, 9)):
        hgt = r.choice((4, 6, 9, 5, 12)); y0 = 108 + (i % 3)
        m = c.poly([(x, y0 + 6), (x, y0 - hgt + 2), (x + 3, y0 - hgt), (x + 7, y0 - hgt + 1), (x + 9, y0 - hgt + 3),
            (x + 9, y0 + 6)], 'w')
        c.shade(m & c.mrect(x + 5, 0, x + 9, H) & ~c.edge(m), '75')
        c.lines([(x + 1, y0 - hgt + 3), (x + 5, y0 - hgt + 4), (x + 8, y0 - hgt + 3)])
    ground(c, '-4,116 60,113 140,115 210,112 268,108'); c.shade(c.mpoly('0,120 262,116 262,155 0,155'), 'stip')
    # millstones leaning
    def mill(x, y, rx, ry):
        m = c.mell(x + 4, y + 1, rx, ry); c.put(m, '75'); c.ink(c.edge(m))
        m = c.put(c.mell(x, y, rx, ry), 'w', heavy=0); c.ell(x, y, rx * .24, ry * .24, 'k')
        for a in range(0, 360, 45):
            q = math.radians(a)
            c.line(x + math.cos(q) * rx * .36, y + math.sin(q) * ry * .36, x + math.cos(q + .2) * rx * .86,
                y + math.sin(q + .2) * ry * .86)
    mill(20, 130, 13, 17); mill(48, 135, 12, 16); mill(74, 133, 8, 13); mill(112, 132, 15, 19)
    c.poly('124,152 128,138 132,152', 'w', heavy=1)
    # she strikes one, her ear to it
    person(c, 142, 150, 28, f=-1, hat='cap', top='w', legs='50', skirt=True, arm=((3.4, 16), (5.4, 12)), lean=5,
        apron=True)
    c.stroke('127,131 136,122', 1.6); c.poly('123,128 128,133 131,130 126,125', 'k')
    for k in (5, 9, 13): None
    # the wain passes small at the right; all look up
    wain(c, 208, 132, 40, 30, lantern=True); ox(c, 184, 132, 22, 13, yoke=True)
    for x in (178, 252, 258): person(c, x, 134, 12, hat='none', top='k' if x == 252 else 'w')
    front_tufts(c, '168,152 190,150 236,152 8,154 94,154'); stones(c, ((214, 150, 5), (60, 153, 4)))
    return c

def ash():
    c = P(); r = random.Random(4); h = spline('-4,82 30,72 60,78 90,70 130,80 170,74 206,80 268,72', n=6)
    m = c.mpoly(h + [(268, 90), (-4, 90)]); c.put(m, '25', 0); c.lines(h)
    g = ground(c, '-4,88 80,85 131,88 190,85 268,87'); c.shade(g & (np.indices((H, W))[0] < 126), 'grass')
    # a road under each half
    rd = c.mpoly(spline('112,170 108,140 84,116 44,100 4,92 -8,91', n=6)
        + spline('-8,95 30,104 64,120 76,140 66,170', n=6))
    c.put(rd, 'w')
    rd2 = c.mpoly(spline('150,170 156,140 182,116 220,100 258,92 270,91', n=6)
        + spline('270,95 232,104 198,120 190,140 204,170', n=6))
    c.put(rd2, 'w')
    for rr in ([(90, 160), (92, 138), (70, 116), (30, 100)], [(174, 160), (174, 138), (194, 116), (232, 100)]):
        c.curve(rr, dash=(1, 1, 1, 0, 0)); c.curve([(x + 6, y) for x, y in rr], dash=(1, 1, 1, 0, 0))
    # the tree, opened like a book
    for s_ in (-1, 1):
        L = spline([(131 + s_ * 2, 140), (131 + s_ * 4, 112), (131 + s_ * 10, 92), (131 + s_ * 26, 70),
            (131 + s_ * 40, 52)], n=6)
        R = spline([(131 + s_ * 62, 50), (131 + s_ * 38, 78), (131 + s_ * 22, 100), (131 + s_ * 17, 120),
            (131 + s_ * 24, 142)], n=6)
        m = c.poly(L + R, 'w', heavy=1); inner = c.inner(m)
        # the torn heartwood, and bark
        for k in range(9):
            t = k / 9; cl = c.clip; c.clip = inner
            if k % 2 == 0:
                c.curve([(131 + s_ * (12 + 6 * t), 140 - k), (131 + s_ * (12 + 8 * t), 112),
                    (131 + s_ * (22 + 10 * t), 84), (131 + s_ * (44 + 10 * t), 54)])
            c.clip = cl
        if s_ > 0: c.shade(inner & c.mpoly('150,140 146,110 164,82 190,50 200,60 170,100 160,145'), '/')
        else: c.shade(inner & c.mpoly('129,140 127,112 121,92 105,70 112,70 126,100 131,140'), '50')
        for a, b in (((131 + s_ * 44, 58), (131 + s_ * 60, 34)), ((131 + s_ * 36, 66), (131 + s_ * 34, 40)),
                ((131 + s_ * 48, 58), (131 + s_ * 84, 48))):
            c.band([a, b], 5, 3, tone='w')
    st = c.mpoly(spline('102,150 114,144 118,132 118,120 124,112 131,108 138,112 144,120 144,132 148,144 160,150 '
        '146,149 140,152 131,149 122,152 114,149', True, 6))
    c.put(st, 'w', heavy=0); inn = c.inner(st); cl = c.clip; c.clip = inn
    for k in range(7):
        c.curve([(119 + k * 4, 112), (119 + k * 4 + (k - 3) * .4, 130), (116 + k * 4.8 + (k - 3) * 1.5, 150)])
    c.shade(c.mrect(138, 0, 162, H), '/'); c.clip = cl; c.poly('128,132 126,118 131,100 136,118 134,132', 'k')
    crown(c, 66, 33, 56, 32, r, lobes=16); crown(c, 198, 33, 56, 32, r, lobes=16)
    # mile posts with holes
    for x, y, hh in ((131, 152, 22),):
        m = c.rect(x - 6, y - hh, x + 7, y, 'w', heavy=1); c.ell(x + .5, y - hh + 8, 3.6, 3.6, 'w')
        c.rect(x, y - hh + 6, x + 2, y - hh + 11, 'k', 0); c.lines([(x - 4, y - 6), (x + 3, y - 6)])
        c.line(x - 4, y - 3, x + 2, y - 3)
    c.rect(88, 96, 91, 103, 'w'); c.rect(176, 96, 179, 103, 'w')
    # four people on a bench, plainly disagreeing
    c.rect(204, 138, 256, 141, 'w', heavy=1); c.line(208, 141, 208, 149); c.line(251, 141, 251, 149)
    def sit(x, f, hat, top, arm):
        c.stroke([(x, 137), (x + f * 5, 138), (x + f * 5, 148)], 2.6); c.line(x + f * 5, 148, x + f * 8, 148)
        c.poly([(x - 3, 124), (x + 3, 124), (x + 4, 139), (x - 4, 139)], top)
        if arm: c.band([(x, 127)] + arm, 2.8, tone=top)
        c.ell(x + f * .6, 120, 2.8, 3.2, 'w')
        if hat == 'broad':
            c.stroke([(x - 5, 118), (x + 5, 118)], 1.4); c.rect(x - 2, 114, x + 3, 118, 'k', 0)
        elif hat == 'cap': c.put(c.mell(x, 118.6, 3.2, 2.6) & c.mrect(0, 0, W, 119), 'k', 0)
        elif hat == 'cone': c.poly([(x - 6, 119), (x + 6, 119), (x, 113)], 'w')
        else: c.put(c.mell(x - f, 119.4, 3.2, 3.4) & ~c.mell(x + f * 1.4, 120.4, 2.2, 2.6), 'k', 0)
    sit(210, -1, 'broad', 'w', [(205, 128), (198, 124)]); sit(223, 1, 'cap', '50', [(227, 131), (222, 134)])
    sit(236, -1, 'cone', 'w', [(231, 130), (227, 122)]); sit(248, 1, 'hair', 'k', [(253, 128), (260, 124)])
    # menders' barrow and stones at the left
    m = c.poly('14,128 38,128 34,140 20,140', 'w', heavy=1); wheel(c, 40, 142, 6, 10, 6); c.line(14, 129, 4, 124)
    c.line(20, 140, 18, 148); stones(c, ((20, 128, 4), (28, 128, 5), (35, 128, 3), (54, 151, 5), (62, 153, 4)))
    front_tufts(c, '6,152 112,154 150,154 256,154')
    return c

def corbel():
    c = P(); r = random.Random(6); cloud(c, 4, 30, 60, 10, 3); cloud(c, 196, 22, 56, 10, 8)
    h = spline('-4,70 26,58 60,64 96,52 140,60 190,48 230,58 268,50', n=6)
    m = c.mpoly(h + [(268, 90), (-4, 90)]); c.put(m, '25', 0); c.lines(h)
    # terraced gardens
    for k, y in enumerate((76, 88, 100)):
        ground(c, [(-4, y), (60, y - 2), (130, y + 1), (200, y - 2), (268, y)])
        for x in range(4 + k * 5, 262, 8):
            if k < 2: c.art(x, y + 3, ["_#_", "###"]) if (x // 8 + k) % 3 else c.line(x, y + 2, x, y + 5)
        m = c.mrect(0, y + 7, W, y + 11); courses(c, m, 3, 7, k, .6)
    ground(c, '-4,112 80,110 160,113 268,110')
    # the tower, wide at the foot
    L = spline('86,122 94,96 102,66 107,36 109,16', n=8); R = spline('149,16 151,36 156,66 164,96 172,122', n=8)
    m = c.poly(L + R, 'w', heavy=1); inner = c.inner(m); cl = c.clip; c.clip = inner
    for y in range(20, 122, 6):
        t = (y - 16) / 106; x0, x1 = 108 - 22 * t ** 1.3, 150 + 22 * t ** 1.3
        c.curve([(x0, y - 1), ((x0 + x1) / 2, y + 2.4), (x1, y - 1)]); xx = x0 + (y % 12)
        while xx < x1:
            c.line(xx, y + 1, xx, y + 5); xx += 11 + r.uniform(-2, 2)
    c.clip = cl; c.shade(inner & c.mpoly('140,14 160,14 176,124 150,124 144,60'), '/')
    c.poly(spline('104,18 110,10 129,-2 148,10 154,18', n=5), 'w', heavy=1)
    for y in (6, 11): c.curve([(129 - (y + 4) * 1.5, y + 3), (129, y + 5), (129 + (y + 4) * 1.5, y + 3)])
    c.shade(c.mpoly('134,0 154,18 140,18'), '/')
    for x, y in ((124, 34), (132, 74)):
        c.rect(x, y, x + 7, y + 11, 'k', 0); c.line(x - 1, y + 11, x + 7, y + 11)
    # stair winding outside
    def stair(pts):
        p = spline(pts, n=5); m = c.mpoly([(x, y - 7) for x, y in p] + [(x, y + 1) for x, y in p[::-1]]); c.put(m, 'w')
        for q in range(0, len(p) - 1, 2):
            c.lines([(p[q][0], p[q][1] - 6), (p[q][0] + 3, p[q][1] - 6), (p[q][0] + 3, p[q][1])])
        c.lines(p); c.lines([(x, y + 1) for x, y in p])
    stair([(84, 123), (102, 116), (122, 112), (144, 106), (163, 92)])
    stair([(101, 74), (114, 68), (130, 64), (146, 58), (153, 48)]); person(c, 128, 61, 12, hat='cap', top='k')
    c.poly([(122, 122), (122, 118)] + [(126, 116)], 'k', 0)
    # hives like loaves along a wall, right
    m = c.rect(178, 116, 264, 126, 'w', heavy=1); courses(c, c.inner(m), 4, 9, 3, .8)
    for k in range(7):
        x = 184 + k * 12
        m = c.poly(spline([(x - 5, 116), (x - 5, 108), (x, 102), (x + 5, 108), (x + 5, 116)], n=5), 'w', heavy=0)
        for y in (106, 109, 112): c.curve(at(x, y, '-4.6,0 0,1 4,0'))
        c.px(x - 1, 114); c.px(x, 114)
    for i in range(26): c.px(r.uniform(176, 258), r.uniform(84, 102))
    # apprentices carry one stone between two, a third directs
    c.rect(34, 128, 62, 140, 'w', heavy=1); c.shade(c.mrect(52, 130, 60, 138), '/')
    person(c, 28, 150, 26, f=1, hat='cap', top='w', legs='k', arm=((2.4, 12), (5.4, 10)), lean=-1)
    person(c, 69, 150, 26, f=-1, hat='hair', top='50', legs='k', arm=((2.4, 12), (5.4, 10)), lean=-1)
    person(c, 100, 150, 26, f=-1, hat='cap', top='w', legs='50', skirt=True, apron=True, arm=((4, 16), (8, 18)))
    stones(c, ((132, 146, 6), (144, 150, 8), (122, 151, 5)))
    c.stroke('214,152 224,128', 1.4)
    person(c, 206, 152, 24, f=1, hat='shawl', top='w', legs='k', skirt=True, arm=((3, 14), (5, 13)))
    c.poly('236,150 234,138 250,138 248,150', 'w', heavy=1); c.curve('234,138 242,128 250,138')
    front_tufts(c, '10,153 84,154 170,153 258,154')
    return c

def bakers():
    c = P(); h = spline('-4,84 40,80 90,83 150,78 210,82 268,79', n=6)
    m = c.mpoly(h + [(268, 92), (-4, 92)]); c.put(m, '25', 0); c.lines(h); g = ground(c, '-4,88 80,86 180,88 268,86')
    c.shade(g, 'stip')
    # far village
    for x in (222, 232, 243, 252):
        c.poly(spline([(x - 5, 87), (x - 4, 82), (x, 79), (x + 4, 82), (x + 5, 87)], n=4), 'w'); c.px(x, 86)
    # seven plumes leaning the same way
    for i, (x, y, hh, w) in enumerate(((28, 94, 60, 9), (64, 100, 76, 12), (98, 92, 56, 9), (134, 104, 88, 14),
            (172, 94, 62, 10), (204, 101, 78, 12), (240, 95, 60, 9))):
        plume(c, x, y, hh, -hh * .42, 4, w * 1.5, i)
        m = c.poly(spline(at(x, y, '-1,4 -.5,-1 .5,-1 1,4', w, 1), n=4), 'w', heavy=1)
        c.put(c.mell(x, y, w * .42, 2), 'k', 0)
    # round pits with lids and marker poles
    def pit(x, y, w, lid=True):
        c.put(c.mell(x, y, w, w * .34), '75'); c.ink(c.edge(c.mell(x, y, w, w * .34)))
        if lid:
            c.put(c.mell(x - w * .2, y - 2, w * .9, w * .32), 'w', heavy=1)
            c.rect(x - w * .2 - 3, y - 5, x - w * .2 + 3, y - 2, 'k', 0); c.line(x - w, y - 1, x + w * .5, y - 3)
    for x, y, w, l in ((30, 116, 12, True), (84, 122, 13, False), (176, 114, 12, True), (230, 118, 13, True)):
        pit(x, y, w, l); c.stroke([(x + w + 4, y + 2), (x + w + 4, y - 22)], 1.6)
        c.poly([(x + w + 4, y - 22), (x + w + 12, y - 19), (x + w + 4, y - 16)], 'k')
    c.curve('82,118 80,110 84,104 78,96'); c.curve('88,118 86,110 90,104')
    # bakers with long peels
    def baker1(c):
        person(c, 106, 142, 30, f=-1, hat='flour', top='w', legs='w', skirt=True, arm=((3, 13), (6, 12)),
            arm2=((2, 11), (5, 10)), apron=True)
        c.stroke('116,126 78,132', 1.8); c.poly(spline('80,128 68,129 64,133 69,136 81,135', True), 'w')
        c.put(c.mell(72, 131, 5, 3), 'k', 0)
    def baker2(c):
        person(c, 194, 142, 29, f=1, hat='flour', top='25', legs='k', arm=((2.5, 14), (4.5, 17)))
        c.stroke('201,143 201,106', 1.8); c.poly(spline('196,108 196,96 201,92 206,96 206,108', True), 'w', heavy=0)
    halo(c, baker1); halo(c, baker2)
    # a row of black loaves on a cloth, the seventh set apart
    c.poly('118,147 212,147 222,154 108,154', 'w', heavy=0); c.lines('114,151 216,151', dash=(1, 1, 0, 0))
    for k in range(6):
        x = 128 + k * 12; m = c.put(c.mell(x, 148, 5, 3.6), 'k', 0); c.line(x - 2, 147, x + 1, 146, 0)
    m = c.put(c.mell(238, 149, 5, 3.8), 'k', 0); c.line(236, 148, 239, 147, 0)
    c.poly('229,152 247,152 249,154 227,154', 'w')
    # a child kneels, ear to the ground
    c.ink(c.mpoly(spline('4,152 14,140 30,131 46,138 54,152', n=5)), 0)
    c.poly(spline('22,148 24,138 32,134 40,140 42,149', n=5), 'w', heavy=0)
    c.shade(c.mpoly('32,134 42,140 43,149 34,149'), '25')
    c.ell(18, 147, 4, 3.8, 'w'); c.put(c.mell(18, 145.4, 4.6, 3.6) & ~c.mell(15, 147.4, 3.6, 3), 'k', 0)
    c.stroke('42,147 50,150', 2.6); c.stroke('26,142 20,151 10,152', 1.8); stones(c, ((60, 150, 4), (252, 134, 4)))
    return c

def ember():
    c = P(); c.a[:] = c.tone('75'); stars(c, c.mrect(0, 0, W, 50), 60, 5)
    # the afterglow low at the left
    gl = c.mpoly(spline('-4,62 50,66 110,74 160,80', n=6) + [(160, 92), (-4, 92)]); c.put(gl, '50', 0)
    gl = c.mpoly(spline('-4,76 50,79 110,84', n=6) + [(110, 92), (-4, 92)]); c.put(gl, '25', 0)
    g = ground(c, '-4,92 70,90 160,92 268,90', tone='w'); c.shade(g, 'stip')
    # smoke of the kiln across the stars
    plume(c, 178, 48, 62, -58, 10, 36, 5)
    # seven clay domes like upturned bowls, white against the sky
    def dome(x, y, w, h, door=True):
        m = c.poly(spline(at(x, y, '-.5,0 -.47,-.5 -.26,-.88 0,-1 .26,-.88 .47,-.5 .5,0', w, h), n=7), 'w', heavy=1)
        c.shade(m & c.mpoly(spline(at(x, y, '.1,-1 .26,-.5 .3,0', w, h), n=4) + [(x + w, y), (x + w, y - h)])
            & ~c.edge(m), '25')
        if door:
            c.poly([(x - w * .1, y)] + arc(x, y - h * .28, w * .1, h * .14, 180, 360) + [(x + w * .1, y)], 'k')
        c.put(c.mrect(x - 2, y - h - 2, x + 2, y - h + 1), 'k', 0)
    for x, y, w, h in ((104, 94, 34, 26), (136, 93, 30, 22), (232, 94, 36, 28), (258, 96, 30, 22), (30, 102, 50, 38),
            (78, 108, 46, 36)):
        dome(x, y, w, h)
    # the kiln, mouth bright with a cone of light
    k = c.poly(spline('146,116 150,86 162,58 170,46', n=6) + spline('184,46 192,58 204,86 208,116', n=6), 'w', heavy=1)
    courses(c, c.inner(k), 5, 9, 3, .8); c.shade(k & c.mpoly('186,44 210,100 210,118 192,118 190,80') & ~c.edge(k), '/')
    c.rect(168, 43, 187, 48, 'k', 0); light = c.mpoly('162,112 192,112 226,158 112,158'); c.put(light, 'w', 0)
    c.lines('160,116 116,154', dash=(1, 0, 0)); c.lines('194,116 222,154', dash=(1, 0, 0))
    m = c.poly([(162, 116), (162, 100)] + arc(177, 100, 15, 13, 180, 360) + [(192, 116)], 'k')
    c.poly('166,116 164,106 169,110 171,96 176,106 180,93 183,107 187,100 190,116', 'w')
    c.poly('172,116 174,108 177,112 180,105 182,116', '25'); c.rect(156, 116, 198, 119, 'w', heavy=1)
    # shelves of pots, left front
    c.rect(4, 112, 8, 152, 'w', heavy=1); c.rect(72, 112, 76, 152, 'w', heavy=1)
    for y in (124, 138, 151): c.rect(4, y, 76, y + 3, 'w', heavy=1)
    for row, y in enumerate((124, 138, 151)):
        x = 14
        while x < 68:
            kd = (x + row * 3) % 4
            if kd == 0: m = c.poly(spline(at(x, y, '-3,0 -4,-5 -2,-9 2,-9 4,-5 3,0'), n=4), 'w')
            elif kd == 1:
                m = c.poly(at(x, y, '-4,-7 4,-7 2,0 -2,0'), '75'); c.ink(c.edge(m))
            elif kd == 2:
                m = c.poly(spline(at(x, y, '-3,0 -4,-4 -1,-7 -1,-10 1,-10 1,-7 4,-4 3,0'), n=4), 'k')
            else:
                m = c.put(c.mell(x, y - 3, 4.4, 3.2), 'w'); c.line(x - 3, y - 5, x + 3, y - 5)
            x += 10
    # the wain under an awning, right
    c.stroke('214,150 214,104', 2); c.stroke('260,154 260,100', 2); wain(c, 216, 150, 58, 42, lantern=False, ang=4)
    c.poly('208,106 264,98 270,108 212,117', 'w', heavy=1)
    for t in range(0, 56, 8):
        c.poly([(210 + t, 106.5 - t * .14), (214 + t, 106 - t * .14), (218 + t, 115 - t * .15),
            (214 + t, 115.6 - t * .15)], 'k', 0)
    # the keeper counts cup handles on a string
    person(c, 126, 152, 32, f=1, hat='flour', top='w', legs='50', skirt=True, arm=((3, 14), (6, 16)),
        arm2=((2, 12), (4, 11)))
    c.curve('135,128 142,140 152,142 160,136')
    for x, y in ((138, 135), (143, 140), (148, 142), (154, 141)): c.lines(arc(x, y + 2, 2, 2, 0, 360))
    return c

def pictures():
    return {'Places/lyre-cliff': lyre(), 'Places/split-ash': ash(), 'Places/hearth-corbel': corbel(),
        'Places/seven-bakers': bakers(), 'Places/hearth-ember': ember()}
