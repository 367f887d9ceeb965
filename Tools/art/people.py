"""Nine who talk, head and shoulders, and the listening ox beside them."""
import math
import random

from country import planks
from ink import arc, at, Canvas, spline

PW, PH = 72, 88

def head(c, cx, cy, w=15, h=20, jaw=.62, chin=.34, tone='w'):
    """Face outline; returns its mask. cx, cy is the middle of the face; w and h half sizes."""
    pts = [(cx - w * .96, cy - h * .35), (cx - w * .7, cy - h * .86), (cx, cy - h), (cx + w * .72, cy - h * .86),
        (cx + w, cy - h * .3), (cx + w * .96, cy + h * .2), (cx + w * jaw * 1.1, cy + h * .68),
        (cx + w * chin * .8, cy + h * .98), (cx - w * chin * 1.1, cy + h), (cx - w * jaw * 1.2, cy + h * .68),
        (cx - w * .95, cy + h * .2)]
    m = c.mpoly(spline(pts, True, 6)); c.put(m, tone)
    return m

def features(c, cx, cy, w, h, m, brow=0, eye='open', nose=1.0, mouth='flat', age=0, look=-1, shade=True):
    """Eyes, nose, mouth, shade; the face looks a little to the left."""
    ox_ = -w * .16; ey = cy - h * .06
    for s_ in (-1, 1):
        ex = cx + ox_ + s_ * w * (.42 if s_ < 0 else .44)
        b0, b1 = (ex - w * .26, ey - h * .24 + brow * s_ * -.6), (ex + w * .26, ey - h * .24 + brow * s_ * .6)
        c.curve([b0, (ex, ey - h * .32), b1])
        if age < 2: c.curve([(b0[0], b0[1] + 1), (ex, ey - h * .32 + 1), (b1[0], b1[1] + 1)])
        if eye == 'open':
            c.curve(at(ex, ey, '-4,1 -2,-1.4 1,-1.6 4,.6'))
            c.rect(ex - 2 + (look < 0) * 0, ey - 1, ex + 1, ey + 2, 'k', 0); c.px(ex - 1, ey - 1, 0)
            if age: c.line(ex - 2, ey + 3, ex + 2, ey + 3)
        elif eye == 'smile':
            c.curve(at(ex, ey, '-4,1 -1,-1.6 2,-1.2 4,1')); c.curve(at(ex, ey, '-4,2 -1,-.6 2,-.4 4,2'))
        elif eye == 'narrow':
            c.line(ex - 4, ey, ex + 3, ey); c.rect(ex - 2, ey, ex + 1, ey + 2, 'k', 0)
            c.line(ex - 3, ey - 2, ex + 3, ey - 2)
        if age:
            c.line(ex + 5 * (1 if s_ > 0 else -1), ey, ex + 7 * (1 if s_ > 0 else -1), ey - 1)
            c.line(ex + 5 * (1 if s_ > 0 else -1), ey + 2, ex + 7 * (1 if s_ > 0 else -1), ey + 3)
    nx = cx + ox_; nl = h * .38 * nose
    c.curve([(nx - w * .04, ey - 1), (nx - w * .16, ey + nl * .6), (nx - w * .26 * nose, ey + nl),
        (nx - w * .08, ey + nl + 2), (nx + w * .14, ey + nl + .6)])
    c.line(nx + w * .2, ey + nl - 1, nx + w * .22, ey + nl + 1); my = cy + h * .56
    if mouth == 'flat':
        c.line(nx - w * .32, my, nx + w * .34, my); c.line(nx - w * .12, my + 3, nx + w * .14, my + 3)
    elif mouth == 'smile':
        c.curve(at(nx, my, '-.4,-1.4 -.1,1 .16,1 .44,-2', w, 1)); c.line(nx - w * .1, my + 4, nx + w * .14, my + 4)
    elif mouth == 'speak':
        c.ell(nx + 1, my + .6, w * .26, h * .09, 'k'); c.line(nx - w * .1, my + 4, nx + w * .16, my + 4)
    elif mouth == 'grin':
        g = c.mpoly(spline(at(nx, my, '-.44,-2 0,0 .46,-2.6 .2,4 -.2,4', w, 1), True)); c.put(g, 'w')
    if age:
        c.curve([(nx - w * .36, ey + nl), (nx - w * .5, my - 2), (nx - w * .46, my + 2)])
        c.curve([(nx + w * .34, ey + nl), (nx + w * .52, my - 3), (nx + w * .5, my + 2)])
    if age > 1:
        c.curve(at(nx, cy, '-.4,-.52 0,-.56 .5,-.52', w, h)); c.curve(at(nx, cy, '-.3,-.62 0,-.66 .4,-.62', w, h))
    if shade:
        inner = c.inner(m)
        sh_ = c.mpoly(spline(at(cx, cy, '.62,-.8 .5,-.1 .72,.2 .4,.6 .1,.86 .3,1.1 1.3,1 1.3,-1', w, h), True, 5))
        c.shade(inner & sh_, '25')

def torso(c, top, sw, tone='w', cx=36, neck=6, slope=8, heavy=1):
    m = c.poly(spline([(cx - sw, 92), (cx - sw + 1, top + slope + 6), (cx - sw + 8, top + slope - 3),
        (cx - neck - 2, top)], n=6) + spline([(cx + neck + 2, top), (cx + sw - 8, top + slope - 3),
        (cx + sw - 1, top + slope + 6), (cx + sw, 92)], n=6), tone, heavy=heavy)
    return m

def neck(c, cx, y0, y1, w=6):
    c.rect(cx - w, y0, cx + w, y1, 'w', 0); c.line(cx - w, y0, cx - w, y1); c.line(cx + w - 1, y0, cx + w - 1, y1)
    c.shade(c.mrect(cx - w + 1, y0, cx + w - 1, y0 + (y1 - y0) * .6), '50')

def new():
    return Canvas(PW, PH, 73, 18)

def drover():
    c = new(); cx, cy, w, h = 37, 42, 15, 19; neck(c, cx, 56, 70); m = torso(c, 66, 33, 'w')
    c.poly('37,68 26,66 30,88 37,78', 'w'); c.poly('37,68 48,66 46,88 37,78', 'w')
    c.shade(m & c.mrect(50, 60, 72, 88), '/'); c.poly('30,66 37,72 45,66 42,63 32,63', '50')
    hair = c.poly(spline('21,36 20,48 24,56 28,50 28,34', True), 'w'); c.hatch(hair, 2, None)
    hair = c.poly(spline('53,36 54,48 51,56 47,50 47,34', True), 'w'); c.hatch(hair, 2, None)
    fm = head(c, cx, cy, w, h); features(c, cx, cy, w, h, fm, eye='narrow', nose=1.15, mouth='flat', age=2)
    # white beard
    b = c.poly(spline('22,46 25,52 30,52 35,51.5 41,52 48,51 52,45 51,58 46,67 37,71 28,67 23,58', True, 5), 'w')
    r = random.Random(3); cl = c.clip; c.clip = c.inner(b)
    for i in range(22):
        x = r.uniform(24, 50); y = r.uniform(52, 66)
        c.curve([(x, y), (x + (x - 37) * -.05, y + 4), (x - (x - 37) * .12, y + 8)])
    c.clip = cl; c.curve('29,55 34,53 40,55'); c.line(31, 57, 38, 57)
    # pipe
    c.band('32,57 22,60 14,61', 2.6, tone='k'); c.rect(10, 53, 17, 63, 'w', heavy=1)
    c.shade(c.mrect(10, 53, 17, 56), 'k'); c.curve('13,50 11,46 14,42 11,37 13,32'); c.curve('16,49 15,45 17,42')
    # hat
    c.put(c.mpoly(spline('6,31 18,26 37,28 56,25 68,30 58,34 37,35 16,35', True, 5)), 'k')
    m = c.poly(spline('20,29 22,14 30,8 37,11 44,7 52,14 54,28', n=6), 'w', heavy=1)
    c.shade(m & c.mpoly('44,4 60,10 60,32 42,32') & ~c.edge(m), '/')
    c.put(c.mpoly(spline('20,24 37,27 54,23', n=5) + spline('54,29 37,31 20,29', n=5)), 'k', 0)
    return c

def immer():
    c = new(); cx, cy, w, h = 35, 46, 14, 18
    # reed hat pushed back: a disc behind the head
    m = c.put(c.mell(41, 30, 31, 24), 'w', heavy=1)
    for a in range(0, 360, 9):
        q = math.radians(a)
        c.line(44 + math.cos(q) * 6, 28 + math.sin(q) * 5, 41 + math.cos(q) * 29, 30 + math.sin(q) * 22)
    for k in (10, 18, 25): c.lines(arc(42, 29.5, k, k * .77))
    c.put(c.mell(37, 39, 18, 20), 'k', 0); c.poly('20,40 19,62 27,66 27,40', 'k')
    c.poly('47,40 50,66 56,60 55,40', 'k'); neck(c, 36, 60, 72, 5); m = torso(c, 70, 31, 'w')
    c.poly('24,70 36,84 48,70 44,67 36,76 28,67', 'w')
    c.hatch(m & c.mrect(0, 72, 72, 88) & ~c.mpoly('24,70 36,86 48,70'), 4, 0)
    # belt of floats over the shoulder
    for i in range(6):
        c.ell(58 - i * 8, 70 + i * 5, 4.4, 4, 'w', heavy=1); c.px(57 - i * 8, 69 + i * 5)
    fm = head(c, cx, cy, w, h, .6, .3); features(c, cx, cy, w, h, fm, mouth='smile', age=1, nose=.95)
    # parted hair
    c.put(c.mpoly(spline('20,44 22,33 31,27 35,28 28,34 23,41', True)), 'k', 0)
    c.put(c.mpoly(spline('35,28 44,28 50,35 51,46 47,38 42,32', True)), 'k', 0)
    c.line(30, 31, 24, 38, 0); c.line(44, 31, 49, 40, 0)
    c.lines('21,48 24,64', dash=(1, 0)); c.lines('50,46 44,66', dash=(1, 0))
    return c

def varrad():
    c = new(); cx, cy, w, h = 35, 45, 15, 19
    # braid behind
    neck(c, 36, 58, 72); m = torso(c, 68, 34, '/')
    c.poly('22,69 36,73 42,90 30,90', 'w'); c.poly('36,68 50,67 44,90 38,90', 'w', heavy=1)
    for y in (76, 82, 88): c.ell(41, y, 1.6, 1.4, 'k')
    fm = head(c, cx, cy, w, h, .74, .4); features(c, cx, cy, w, h, fm, mouth='flat', nose=1.0, brow=1)
    c.put(c.mpoly('20,40 19,48 22,52 23,40'), 'k', 0); c.put(c.mpoly('48,38 52,46 51,56 48,50'), 'k', 0)
    # one long braid over the right shoulder
    for i in range(9):
        y = 52 + i * 4.4; x = 54 + math.sin(i * .5) * 1.2 + i * .2
        m = c.ell(x, y, 4.2 - i * .12, 3, 'w'); c.shade(m, '75'); c.line(x - 3, y + 1, x, y - 1, 0)
    c.rect(53, 84, 59, 88, 'k', 0)
    # felt cap with a turned-up brim
    m = c.poly(spline('18,32 20,18 28,10 36,4 44,10 52,18 54,32', n=6), 'w', heavy=1)
    c.line(36, 5, 36, 26); c.curve('28,10 26,18 27,26'); c.curve('44,10 46,18 45,26')
    c.shade(m & c.mpoly('42,4 60,10 60,34 46,34') & ~c.edge(m), '25')
    m = c.poly(spline('14,36 13,28 17,25 36,29 54,25 59,28 57,36 36,39', True, 5), '75'); c.ink(c.edge(m))
    for x in range(18, 56, 5): c.line(x, 29 + abs(x - 36) * -.04 + 1, x, 33, 0)
    c.px(35, 3); c.px(36, 2); c.px(36, 3)
    return c

def keeper():
    c = new(); cx, cy, w, h = 36, 40, 14, 18
    hair = c.put(c.mell(37, 32, 19, 18), 'w', 1); c.shade(hair, '50'); c.put(c.mell(44, 12, 8, 7), '50')
    neck(c, 36, 54, 68, 5); torso(c, 66, 32, 'k', heavy=0); c.poly('24,67 36,76 48,67 46,63 36,70 26,63', 'w')
    c.poly('22,88 23,74 49,74 50,88', 'w'); c.lines('23,74 27,66', 0); c.line(24, 74, 28, 67, 0)
    c.line(48, 74, 45, 67, 0); c.stroke('23,75 28,66', 2, c=0); c.stroke('49,75 45,66', 2, c=0)
    fm = head(c, cx, cy, w, h, .7, .36); features(c, cx, cy, w, h, fm, eye='open', mouth='flat', age=1, brow=-1)
    c.put(c.mpoly(spline('21,40 22,28 32,21 44,22 51,30 51,42 47,32 36,27 26,32', True)), '50')
    for a in (24, 28, 32): c.curve([(a, 34 - (a - 24) * .4), (34, 24), (44, 23)])
    # ring of keys in her hand
    c.lines(arc(18, 68, 8, 8)); c.lines(arc(18, 68, 7, 7))
    for a, L in ((60, 14), (95, 17), (130, 13)):
        q = math.radians(a); x0, y0 = 18 + math.cos(q) * 8, 68 + math.sin(q) * 8
        x1, y1 = x0 + math.cos(q) * L, y0 + math.sin(q) * L
        c.stroke([(x0, y0), (x1, y1)], 3.2, c=0); c.stroke([(x0, y0), (x1, y1)], 1.6)
        c.stroke([(x1, y1), (x1 + 4, y1 - 1)], 1.4); c.ell(x0, y0, 2.4, 2.4, 'w')
    c.poly(spline('10,62 14,58 22,58 26,62 24,67 13,67', True), 'w')
    for x in (14, 18, 22): c.line(x, 60, x, 66)
    return c

def father():
    c = new(); cx, cy, w, h = 38, 38, 14, 18
    neck(c, 38, 52, 66); m = torso(c, 63, 33, 'w'); c.shade(m & c.mrect(52, 60, 72, 90), '/')
    c.poly('28,64 38,72 48,64 45,60 38,66 31,60', 'w')
    fm = head(c, cx, cy, w, h, .7, .4); features(c, cx, cy, w, h, fm, mouth='smile', eye='open', brow=-1)
    # short dark hair and stubble
    c.put(c.mpoly(spline('23,38 22,26 29,18 38,15 48,17 54,25 53,40 50,30 44,25 34,27 27,28', True)), 'k', 0)
    c.shade(c.inner(fm) & c.mpoly('24,46 30,47 34,52 40,52 46,46 52,44 50,60 26,60') & ~c.mell(36, 48, 7, 2.6), 'stip')
    # sling with a baby
    c.poly(spline('8,72 20,66 34,70 44,80 46,90 4,90', n=5), 'w', heavy=1)
    c.poly('48,62 56,66 44,84 36,76', 'w'); c.line(50, 64, 40, 78); c.line(53, 66, 43, 80)
    for k in range(3): c.curve([(10 + k * 4, 76 + k * 3), (24 + k * 2, 74 + k * 4), (38, 82 + k * 3)])
    c.put(c.mell(22, 65, 10, 9.4), 'w', heavy=1)
    c.put(c.mell(22, 62, 11, 9) & ~c.mell(20, 66.4, 9, 8), '50'); c.lines(arc(22, 62, 11, 9, 170, 370))
    c.line(15, 66, 18, 66); c.line(21, 66, 24, 66); c.px(15, 65); c.px(24, 65); c.px(19, 69); c.line(18, 72, 20, 72)
    # his hand
    m = c.poly(spline('40,84 36,78 28,78 26,83 32,88 40,90', True), 'w')
    for x in (29, 32, 35): c.line(x, 80, x + 2, 84)
    return c

def mason():
    c = new(); cx, cy, w, h = 36, 43, 17, 19; neck(c, 36, 56, 70, 9); m = torso(c, 67, 36, 'w', slope=6)
    c.poly('18,90 20,74 52,74 54,90', '/', heavy=1); c.stroke('20,75 26,67', 2.4); c.stroke('52,75 46,67', 2.4)
    fm = head(c, cx, cy, w, h, .82, .46); features(c, cx, cy, w, h, fm, mouth='smile', eye='smile', age=0, nose=1.0)
    # leather cap with flaps
    m = c.poly(spline('16,40 17,26 24,16 36,12 48,16 55,26 56,40 50,32 36,29 22,32', True, 5), '75'); c.ink(c.edge(m))
    c.curve('36,12 35,20 36,28', 0); c.curve('24,17 26,23 25,30', 0); c.curve('48,17 46,23 48,30', 0)
    c.poly(spline('16,36 13,48 18,56 21,46 20,36', True), '75')
    c.poly(spline('56,36 59,48 55,56 51,46 52,36', True), '75')
    # stone dust, and a chisel behind the ear
    r = random.Random(4)
    for i in range(16):
        x, y = r.uniform(20, 50), r.uniform(14, 30); c.px(x, y, 0); c.px(x + 1, y, 0)
    for i in range(14): c.px(r.uniform(22, 46), r.uniform(48, 60))
    c.stroke('54,50 66,30', 3); c.stroke('55,49 65,31', 1, c=0)
    # mallet on the shoulder
    c.band('8,90 14,66', 4, tone='w'); mm = c.poly('4,52 22,56 19,70 1,66', 'w', heavy=1); c.line(8, 53, 5, 66)
    c.shade(mm & c.mpoly('16,50 24,56 20,72 13,70'), '25')
    return c

def child():
    c = new(); cx, cy, w, h = 36, 46, 14, 16; neck(c, 36, 58, 72, 4); torso(c, 70, 25, 'w', slope=6)
    c.poly('28,71 36,78 44,71 42,67 36,73 30,67', 'k'); c.line(36, 78, 36, 88)
    for y in (82, 87): c.px(38, y)
    c.lines('20,78 24,90'); c.lines('52,78 48,90'); c.rect(43, 79, 50, 86, 'w'); c.line(43, 82, 49, 82)
    for s_ in (-1, 1):
        c.poly(spline([(cx + s_ * 13, 44), (cx + s_ * 18, 42), (cx + s_ * 18, 50), (cx + s_ * 13, 52)], True), 'w')
    fm = head(c, cx, cy, w, h, .74, .36); features(c, cx, cy, w, h, fm, mouth='none', eye='open', nose=.7, brow=-1.4)
    # grin with the missing tooth
    g = c.mpoly(spline('26,53 33,55 41,53 38,59 29,59', True, 6)); c.put(g, 'w'); c.line(27, 56, 40, 56)
    c.rect(33, 54, 36, 57, 'k', 0)
    for x, y in ((26, 49), (28, 51), (25, 51), (42, 49), (44, 51), (41, 51), (33, 47), (35, 48)): c.px(x, y)
    # wild hair
    r = random.Random(6)
    c.put(c.mpoly(spline('21,44 20,34 26,26 36,23 47,26 53,35 51,45 48,38 42,34 34,37 27,35', True)), 'k', 0)
    for a in range(190, 356, 12):
        q = math.radians(a); L = r.uniform(4, 9)
        c.stroke([(36 + math.cos(q) * 15, 38 + math.sin(q) * 14), (36 + math.cos(q + .14) * (16 + L),
            38 + math.sin(q + .14) * (15 + L))], 2.4, 1)
    c.curve('28,30 34,27 41,29', 0)
    # a puppy's ears and nose over the arm
    c.poly(spline('50,88 48,78 53,72 62,72 67,79 66,90', n=5), 'w', heavy=1)
    c.poly(spline('50,76 45,82 48,88 52,82', True), 'k'); c.poly(spline('65,76 70,82 68,88 63,82', True), 'k')
    c.rect(54, 78, 56, 80, 'k', 0); c.rect(60, 78, 62, 80, 'k', 0); c.ell(58, 84, 2.6, 2, 'k')
    return c

def baker():
    c = new(); cx, cy, w, h = 36, 44, 16, 19; neck(c, 36, 57, 71, 8); m = torso(c, 68, 35, 'w', slope=6)
    c.lines('36,72 36,90'); c.poly('28,69 36,75 44,69 42,66 36,70 30,66', 'w')
    fm = head(c, cx, cy, w, h, .8, .42); features(c, cx, cy, w, h, fm, mouth='speak', eye='open', nose=1.15)
    c.put(c.mpoly(spline('19,42 18,34 22,30 23,40', True)), 'k', 0)
    c.put(c.mpoly(spline('53,42 54,33 50,30 49,40', True)), 'k', 0)
    # moustache
    c.put(c.mpoly(spline('22,54 28,50 33,51 39,50 46,54 40,54 33,54 27,55', True)), 'k', 0)
    # round flour-white cap
    m = c.mell(36, 18, 22, 13) | c.mell(22, 22, 9, 9) | c.mell(50, 22, 9, 9) | c.mell(36, 12, 15, 11)
    c.put(m, 'w', heavy=1); c.curve('24,12 27,20 24,26'); c.curve('36,8 37,16 36,24'); c.curve('48,12 46,20 49,26')
    c.shade(m & c.mpoly('46,4 64,10 64,32 50,32') & ~c.edge(m), '25')
    c.poly(spline('17,34 18,28 36,31 54,28 55,34 36,37', True, 5), 'w')
    # floury arm with a loaf
    a = c.poly(spline('64,90 66,76 60,70 52,76 40,82 38,88 44,90', True, 5), 'w', heavy=1); c.shade(c.inner(a), 'stip')
    l = c.poly(spline('8,84 10,76 20,71 32,72 40,78 40,86 32,90 12,90', True, 5), '75'); c.ink(c.edge(l))
    for x in (16, 23, 30): c.stroke([(x, 76), (x + 4, 82)], 1.6, c=0)
    c.poly(spline('36,88 34,81 40,78 46,82 44,89', True), 'w'); c.line(37, 82, 40, 86); c.line(40, 80, 43, 84)
    return c

def ethren():
    c = new(); cx, cy, w, h = 36, 42, 13, 18
    # white hair, knot behind
    c.put(c.mell(36, 32, 18, 17) | c.mell(50, 22, 8, 7.4), 'w', heavy=1)
    for k in range(5): c.curve([(21 + k * 2, 38 - k * 3), (30 + k * 2, 20 + k), (46, 20 + k * 2)])
    c.curve('44,20 51,17 55,22'); c.curve('46,25 51,22 54,26'); neck(c, 36, 56, 70, 5); m = torso(c, 67, 31, 'w')
    c.poly('36,72 24,66 26,90 36,90', 'w', heavy=0); c.shade(m & c.mrect(48, 60, 72, 90) & ~c.edge(m), '25')
    c.line(36, 72, 36, 90); c.poly('28,67 36,74 45,67 43,63 36,69 29,63', 'w')
    # many pockets
    for x, y, ww, hh in ((10, 80, 11, 8), (41, 80, 10, 8), (54, 78, 9, 10), (42, 72, 7, 5)):
        c.rect(x, y, x + ww, y + hh, 'w'); c.line(x, y + 2, x + ww - 1, y + 2); c.px(x + ww // 2, y + 3)
    c.lines('45,79 46,74 48,79'); c.line(57, 77, 57, 72); c.line(59, 77, 60, 73)
    # door-badge
    c.rect(22, 72, 31, 84, 'k', 0)
    c.put(c.mpoly([(23.5, 83), (23.5, 77)] + arc(26.5, 76.5, 3, 3, 180, 360) + [(29.5, 83)]), 'w', 0)
    c.rect(25, 76, 28, 83, 'k', 0); c.px(27, 79, 0)
    fm = head(c, cx, cy, w, h, .62, .32); features(c, cx, cy, w, h, fm, mouth='smile', age=2, nose=1.1)
    c.put(c.mpoly(spline('22,40 23,30 31,24 36,25 28,31 24,38', True)), 'w')
    c.put(c.mpoly(spline('36,25 44,25 50,32 50,42 46,34 42,30', True)), 'w')
    # spectacles
    for ex in (28.4, 39.6): c.ink(c.edge(c.mell(ex, 41.5, 5.6, 5.2)))
    c.line(33, 40, 35, 40); c.line(45, 40, 50, 38); c.line(22, 40, 23, 40)
    return c

def beside():
    """The side of the wain: a lantern, a water barrel, an ox looking in from the edge, listening."""
    c = Canvas(160, 88, 150, 18)
    # tilt above, planks below
    c.shade(c.mrect(0, 0, 160, 88), 'w'); m = c.mrect(0, 0, 118, 40); c.put(m, 'w', 0)
    for x in (10, 46, 82, 116):
        c.curve([(x, -2), (x + 2, 20), (x, 40)]); c.curve([(x + 1, -2), (x + 3, 20), (x + 1, 40)])
        c.shade(c.mpoly(spline([(x + 2, 0), (x + 4, 20), (x + 2, 40)], n=5)
            + spline([(x + 9, 40), (x + 10, 20), (x + 9, 0)], n=5)), '25')
    for x in range(4, 116, 12):
        c.lines([(x, 36), (x + 3, 41)]); c.px(x, 35)
    c.rect(0, 40, 122, 45, 'w', heavy=1); planks(c, 0, 45, 122, 76, ph=10, seed=5)
    c.rect(60, 41, 64, 76, 'w', heavy=1); c.rect(112, 41, 116, 76, 'w', heavy=1); c.rect(0, 74, 122, 79, 'w', heavy=1)
    c.shade(c.mrect(0, 79, 120, 88), '50')
    m = c.mell(30, 100, 34, 34); c.put(m, 'w', heavy=1); c.ink(c.edge(c.mell(30, 100, 29, 29)))
    for a in range(200, 345, 22):
        q = math.radians(a)
        c.stroke([(30 + math.cos(q) * 8, 100 + math.sin(q) * 8), (30 + math.cos(q) * 29, 100 + math.sin(q) * 29)], 3)
    # lantern on an iron hook
    c.stroke('22,18 30,18 33,23', 1.6); c.lines(arc(33, 26, 4, 4, 180, 360))
    c.poly('25,34 33,26 41,34', 'k'); c.rect(26, 34, 41, 54, 'w', heavy=1); c.line(30, 35, 30, 52)
    c.line(36, 35, 36, 52); c.rect(24, 54, 43, 58, 'k', 0)
    c.poly(spline('33.4,38 35.6,44 34.6,50 32,50 31,45', True), 'w'); c.line(33, 46, 33, 49)
    # barrel
    m = c.poly(spline('74,46 71,58 74,72', n=5) + spline('102,72 105,58 102,46', n=5), 'w', heavy=1)
    c.put(c.mell(88, 46, 14, 3.4), 'w')
    for x in (80, 88, 96): c.curve([(x, 49), (x + (x - 88) * .18, 58), (x, 72)])
    for y in (52, 65):
        c.curve([(73, y), (88, y + 2.4), (103, y)]); c.curve([(73, y + 2), (88, y + 4.4), (103, y + 2)])
    c.shade(m & c.mrect(97, 46, 106, 72) & ~c.edge(m), '/')
    c.curve('99,46 103,38 108,40 107,50'); c.poly('104,50 110,50 109,58 105,58', 'w')
    # the ox
    T = lambda x, y: (x + 104, y + 22)
    c.poly(spline([T(30, 18), T(44, 8), T(60, 6), T(60, 70), T(36, 70), T(34, 44)], n=6), 'w', heavy=0)
    c.band(spline([T(40, 6), T(46, -4), T(44, -14), T(38, -18)]), 5, 2, 'w')
    c.band(spline([T(22, 6), T(13, 2), T(8, -6), T(11, -14)]), 5, 2, 'w')
    c.poly(spline([T(42, 12), T(54, 8), T(58, 14), T(50, 20), T(42, 18)], True), 'w', heavy=1)
    c.line(*T(46, 14), *T(54, 12))
    m = c.poly(spline([T(20, 8), T(30, 3), T(41, 6), T(43, 18), T(38, 30), T(33, 44), T(28, 52), T(17, 53), T(12, 46),
        T(14, 36), T(17, 22)], True, 6), 'w', heavy=1)
    c.shade(m & c.mpoly([T(40, 4), T(46, 10), T(42, 30), T(34, 48), T(31, 42), T(35, 26), T(38, 14)]) & ~c.edge(m), '/')
    c.lines([T(24, 4), T(26, 11), T(29, 6), T(31, 13), T(34, 7), T(36, 12)])
    c.ell(*T(33, 22), 3, 2.6, 'k'); c.px(*T(32, 21), 0); c.curve([T(29, 18), T(33, 17.4), T(37, 20)])
    c.ell(*T(19.4, 22), 1.8, 2.2, 'k')
    mz = c.poly(spline([T(12, 44), T(17, 40), T(26, 41), T(30, 46), T(27, 53), T(17, 54)], True), '25')
    c.ink(c.edge(mz)); c.ell(*T(16, 46), 1.6, 1.6, 'k'); c.ell(*T(24, 46), 1.8, 1.6, 'k')
    c.curve([T(15, 51), T(20, 50), T(26, 51)])
    c.curve([T(36, 34), T(44, 42), T(46, 52)]); c.poly([T(42, 52), T(50, 52), T(53, 64), T(39, 64)], 'w', heavy=1)
    c.px(*T(46, 65)); c.px(*T(45, 65))
    return c


PEOPLE = {'drover': drover, 'immer-woman': immer, 'varrad-man': varrad, 'keeper': keeper, 'hithe-father': father,
    'mason': mason, 'child': child, 'baker': baker, 'ethren-woman': ethren, 'listening-ox': beside}

def pictures():
    return {'People/' + n: draw() for n, draw in PEOPLE.items()}
