"""The title: evening camp on the Breadth, and its eleven moving parts."""
import math
import random

import numpy as np

from country import dark_grass, planks, tufts_on
from figures import halo, ox, tent, wain, wheel
from ink import arc, at, Canvas, shifted, spline

W, H = 494, 304

def plank(c, p0, p1, th, r, nails=True):
    """One sawn plank from p0 to p1; ends a little out of true."""
    (x0, y0), (x1, y1) = p0, p1; L = math.hypot(x1 - x0, y1 - y0); ux, uy = (x1 - x0) / L, (y1 - y0) / L
    nx, ny = -uy, ux
    j = lambda: r.uniform(-.9, .9)
    e = lambda: r.uniform(-1.2, 1.2)
    pts = [(x0 + nx * th / 2 + ux * e(), y0 + ny * th / 2 + uy * e()),
        (x1 + nx * (th / 2 + j() * .5) + ux * e(), y1 + ny * (th / 2 + j() * .5) + uy * e()),
        (x1 - nx * th / 2 + ux * e(), y1 - ny * th / 2 + uy * e()), (x0 - nx * (th / 2 + j() * .5) + ux * e(),
        y0 - ny * (th / 2 + j() * .5) + uy * e())]
    m = c.poly(pts, 'w', heavy=1 if th > 7 else 0)
    if th > 7:
        cl = c.clip; c.clip = c.inner(m)
        for k in range(2):
            o = th * (-.16 + .34 * k) + r.uniform(-.6, .6); a, b = r.uniform(.16, .4), r.uniform(.6, .86)
            c.curve([(x0 + ux * L * a + nx * o, y0 + uy * L * a + ny * o),
                (x0 + ux * L * (a + b) / 2 + nx * (o + r.uniform(-1, 1)), y0 + uy * L * (a + b) / 2
                + ny * (o + r.uniform(-1, 1))), (x0 + ux * L * b + nx * o, y0 + uy * L * b + ny * o)])
        if nails:
            for t in (4.0, L - 4.0):
                for o in (-th * .24, th * .24):
                    X, Y = x0 + ux * t + nx * o, y0 + uy * t + ny * o; c.px(X, Y); c.px(X + 1, Y)
        c.clip = cl
    return m

GL = {'W': (1.28, [((.10, .0), (.30, 1)), ((.62, .12), (.36, 1)), ((.66, .12), (.92, 1)), ((1.18, .0), (.98, 1))]),
    'A': (1.06, [((.26, .70), (.82, .70)), ((.50, .0), (.12, 1)), ((.56, .0), (.94, 1))]),
    'I': (.30, [((.15, 0), (.15, 1))]), 'N': (1.0, [((.12, .0), (.12, 1)), ((.88, 0), (.88, 1)),
    ((.14, .06), (.86, .94))]), 'R': (.96, [((.34, .5), (.86, 1)), ((.10, .11), (.78, .11)), ((.10, .54), (.76, .54)),
    ((.80, .08), (.80, .58)), ((.12, 0), (.12, 1))]), 'O': (1.0, [((.04, .11), (.96, .11)), ((.04, .89), (.96, .89)),
    ((.12, .0), (.12, 1)), ((.88, .0), (.88, 1))]), 'D': (.98, [((.06, .11), (.70, .11)), ((.06, .89), (.70, .89)),
    ((.66, .08), (.90, .30)), ((.66, .92), (.90, .70)), ((.86, .22), (.86, .78)), ((.12, 0), (.12, 1))]),
    'T': (.9, [((.45, 0), (.45, 1)), ((.0, .11), (.9, .11))]), 'H': (.96,
    [((.1, .5), (.86, .5)), ((.12, 0), (.12, 1)), ((.84, 0), (.84, 1))]),
    'E': (.84, [((.1, .11), (.8, .11)), ((.1, .5), (.68, .5)), ((.1, .89), (.8, .89)), ((.12, 0), (.12, 1))]), }

def word(c, t, x, y, h, th, gap, seed=1, depth=3):
    r = random.Random(seed); tot = sum(GL[ch][0] * h for ch in t) + gap * (len(t) - 1)
    if x is None: x = (c.w - tot) / 2
    x0 = x
    for ch in t:
        w, strokes = GL[ch]; d = Canvas(c.w, c.h, c.ox, c.oy)
        for (a, b), (e, f) in strokes:
            # keep the ends of upright planks at the cap and base line
            plank(d, (x + a * h, y + b * h), (x + e * h, y + f * h), th, r)
        m = d.touch
        for k in range(depth, 0, -1):
            c.ink(shifted(m, k, k))
        c.a[m] = d.a[m]; x += w * h + gap
    return x0, x - gap

def background():
    c = Canvas(W, H, 9, 9); r = random.Random(7); hz = 148
    # sky: white above, twelve percent at the horizon
    c.shade(c.mpoly(spline('0,128 80,122 170,127 260,121 380,126 494,122', n=8) + [(494, hz), (0, hz)]), '12')
    c.put(c.mell(66, 139, 15, 15), 'w', 0); sun = c.mell(66, 141, 12, 12); c.put(sun, 'w')
    for i in range(13):
        a = math.radians(180 + i * 15)
        c.line(65.5 + math.cos(a) * 15, 140.5 + math.sin(a) * 15, 65.5 + math.cos(a) * (21 if i % 2 == 0 else 18),
            140.5 + math.sin(a) * (21 if i % 2 == 0 else 18))
    # long evening clouds
    for x, y, w in ((96, 96, 88), (20, 110, 54), (376, 92, 96), (420, 106, 60), (150, 112, 44)):
        m = c.mpoly(spline(at(x, y, '0,3 .2,0 .45,1 .7,-2 1,3 .7,5 .3,5', w, 1), True)); c.put(m, 'w', 0)
        c.curve(at(x, y, '0,3 .2,0 .45,1 .7,-2 1,3', w, 1))
        c.lines([(x + w * .12, y + 5), (x + w * .8, y + 5)], dash=(1, 1, 1, 0, 1, 0))
    # far swells
    s1 = spline('-4,147 60,145 130,148 210,143 300,147 370,142 440,145 500,143', n=8)
    m = c.mpoly(s1 + [(500, 156), (-4, 156)]); c.put(m, '25', 0); c.lines(s1)
    s2 = spline('-4,152 90,150 180,153 280,150 390,152 500,149', n=8)
    m = c.mpoly(s2 + [(500, 310), (-4, 310)]); c.put(m, 'w', 0); c.lines(s2)
    # far herd, far wains, a tent
    for x in (362, 367, 371, 377, 382, 389): c.art(x, 141 - (x % 2), ["##_", "###", "#_#"])
    wain(c, 462, 147, 15, 11, lantern=False); wain(c, 480, 148, 12, 9, lantern=False)
    tent(c, 420, 147, 16, 9); tent(c, 436, 148, 11, 7)
    # ground: sparse grass, thinning to the road in front
    g = c.mpoly('0,158 494,156 494,248 306,250 0,246')
    clear = c.mpoly(spline('60,176 110,170 170,174 240,186 360,190 350,214 200,230 90,216', True))
    yy, xx = np.indices((H, W)); c.shade(g & ~clear & (yy < 178), 'grass')
    tufts_on(c, g & ~clear & (yy > 180) & (yy < 242) & ((xx < 66) | (xx > 214) | (yy > 226)), 150, r, 13, (2, 5))
    # shade under the wain, cast to the right
    c.hatch(c.mpoly(spline('226,203 300,198 384,200 420,208 360,213 250,210', True)), 3, -1)
    # the wain
    wx, wy = 226, 206
    # far wheels' dark
    c.rect(wx + 20, wy - 38, wx + 116, wy - 14, '75', 0); c.rect(wx + 50, wy - 24, wx + 80, wy - 12, 'w', 0)
    c.shade(c.mrect(wx + 48, wy - 32, wx + 84, wy - 20), '50'); wain(c, wx, wy, 130, 115, lantern=False, ang=7)
    # pole
    c.band(at(wx, wy, '12,-22 -20,-10 -42,-6'), 3.4, 3, 'w')
    # water barrel on the side, toolbox, bucket
    m = c.poly(spline(at(wx, wy, '92,-58 90,-50 92,-42'), n=4) + spline(at(wx, wy, '106,-42 108,-50 106,-58'), n=4),
        'w', heavy=1)
    for y in (wy - 55, wy - 46): c.line(wx + 91, y, wx + 106, y)
    c.line(wx + 97, wy - 57, wx + 97, wy - 43); c.line(wx + 102, wy - 57, wx + 102, wy - 43)
    c.rect(wx + 40, wy - 56, wx + 58, wy - 46, 'w', heavy=1); c.line(wx + 40, wy - 52, wx + 57, wy - 52)
    c.rect(wx + 48, wy - 53, wx + 51, wy - 50, 'k', 0)
    # second ox, lying behind
    ox(c, 74, 219, 66, 36, tone='50', shade=None, lying=True, eye=False)
    ox(c, 140, 226, 66, 38, tone='w', lying=True, bell=True, tail=False)
    # woodpile by the chopping place
    for i in range(4):
        for j in range(4 - i):
            c.ell(44 + j * 7 + i * 3.5, 182 - i * 6, 3.6, 3.4, 'w'); c.px(43.5 + j * 7 + i * 3.5, 181.5 - i * 6)
    # crate
    planks(c, 428, 179, 460, 199, ph=7, seed=3); c.rect(428, 179, 460, 199, None); c.lines('429,198 459,180')
    c.lines('429,199 459,181'); c.line(460, 181, 460, 199); c.line(429, 199, 460, 199)
    # sacks behind the crate
    for x, y in ((468, 178), (482, 181)):
        m = c.blob(at(x, y, '-7,0 -9,-8 -4,-15 0,-17 5,-15 9,-7 7,0'), 'w', heavy=1)
        c.line(x - 3, y - 14, x + 4, y - 14); c.shade(m & c.mrect(x + 3, 0, W, H), '25')
    # the foreground: the road in the keys' strip stays white from edge to edge; tall grass stands dark
    # behind it at the right, and before it at the far right, cut with white blades as a graver would
    road = c.mpoly(spline('-6,249 120,250 250,249 340,246 500,247', n=8) + [(500, 310), (-6, 310)])
    behind = spline('316,250 330,243 352,236 384,232 420,229 456,226 500,222', n=10); d = Canvas(W, H, 9, 9)
    dark_grass(d, behind, ((12, 12, 15), (24, 14, 17), (38, 18, 19)), r, 322, 500, (6, 14), (346, 371, 399, 421))
    low = np.interp(np.arange(W), [310, 330, 360, 400, 440, 494], [249, 247.5, 247, 248, 247, 248])[None, :]
    yy, xx = np.indices((H, W)); mm = d.touch & (yy < low); c.a[mm] = d.a[mm]; c.put(road & (yy >= low), 'w', 0)
    # blades over the lower edge, so that it is not cut off
    for x in range(318, 494, 4):
        h_ = r.uniform(2, 5); c.line(x, low[0, min(493, x)] - 1, x + r.choice((-1, 0, 1)), low[0, min(493, x)] + h_ - 2)
    front = spline('462,312 466,290 474,268 484,252 500,244', n=10)
    dark_grass(c, front, ((20, 18, 15), (40, 24, 17), (62, 28, 19)), r, 463, 500, (10, 22), (476, 489))
    # the hare's tussock between two keys
    tus = spline('300,296 306,287 316,283 324,281 332,283 340,290 344,296', n=6)
    for x in np.arange(300, 345, 2.3):
        y = float(np.interp(x, [p[0] for p in tus], [p[1] for p in tus])) + 4; h_ = r.uniform(4, 11)
        l = r.uniform(-4, 4)
        if 315 < x < 333: h_ *= .4
        c.curve(at(x, y, '0,0 .3,-.6 1,-1', l, h_))
    m = c.mpoly(tus + [(336, 300), (322, 299), (308, 300)]); c.put(m, 'k', 0)
    for x in range(303, 344, 4):
        h_ = r.uniform(5, 9)
        c.curve([(x, 298), (x + r.uniform(-1, 1), 298 - h_ * .6), (x + r.uniform(-3, 3), 298 - h_)], 0)
    # tufts above the road, at the left
    for x in range(4, 318, 7):
        if r.random() < .75:
            c.tuft(x + r.uniform(-2, 2), 245 + r.uniform(-3, 2), 3, r.uniform(3, 6), r.choice((-1, 0, 1)))
    # ruts of the road along the keys, quiet
    # lettering
    word(c, 'THE', None, 5, 14, 4.2, 7, 3, depth=2); word(c, 'WAINROAD', None, 25, 42, 10.5, 7, 5, depth=3)
    for s_ in (-1, 1):
        cx = 247
        c.lines([(cx + s_ * 40, 12), (cx + s_ * 176, 12)])
        c.lines([(cx + s_ * 44, 14), (cx + s_ * 172, 14)], dash=(1, 1, 1, 0)); wheel(c, cx + s_ * 184, 13, 7, 11, 8)
    return c

PLACE = {0: (222, 113, 48, 40), 1: (79, 152, 28, 36), 2: (19, 128, 40, 28), 3: (141, 158, 28, 30),
    4: (109, 158, 30, 30), 5: (368, 162, 34, 32), 6: (438, 164, 26, 24), 7: (456, 196, 32, 24), 8: (296, 188, 24, 18),
    9: (326, 275, 14, 16), 10: (212, 205, 10, 16)}

COUNT = {0: 9, 1: 3, 2: 3, 3: 2, 4: 2, 5: 10, 6: 8, 7: 3, 8: 2, 9: 2, 10: 2}

def flap(c, k):
    """The front flap of the tilt, nine folds from slack (0) to full (8); it hangs from the foremost hoop."""
    t = k / 8
    def hoop(y):
        return float(np.interp(y, [102.5, 125.5, 148.5], [226, 231.9, 239]))
    b = 1 + 14 * t ** .9; top = (hoop(106) + 1, 105.5); lip = (hoop(141) - 2 - b * .62, 142.2 - 3.4 * t)
    left = spline([top, (hoop(113) - 1.5 - b * .42, 113), (hoop(124) - 2.5 - b * .95, 124),
        (hoop(134) - 2.5 - b, 134 - t), lip], n=7)
    heel = (hoop(142) + 1.5, 142.5); foot = spline([lip, ((lip[0] + heel[0]) / 2, lip[1] + 1.2 - 2.2 * t), heel], n=6)
    m = c.mpoly(left + foot[1:] + [(hoop(134) + 2, 134), (hoop(120) + 2, 120)]); c.put(m, 'w'); inner = c.inner(m)
    cl = c.clip; c.clip = inner if cl is None else cl & inner; n = 2 if k < 3 else 3
    for i in range(n):
        f = (i + 1) / (n + 1)
        p = [(top[0] + .5, 108), (hoop(116) - b * .42 * f + 1 * (1 - f), 116), (hoop(126) - b * .95 * f, 126),
            (lip[0] + (heel[0] - lip[0]) * (1 - f), 141)]
        c.curve(p, dash=(1, 1, 1, 1, 0) if i % 2 else None)
    # the side away from the light, and the hollow under the lip when it stands out
    c.shade(c.mpoly([(hoop(106), 106), (hoop(106) + 4, 106), (hoop(142) + 4, 143), (hoop(142) - 2 - b * .12, 143),
        (hoop(124) - b * .16, 124)]), '25')
    c.clip = cl
    if k > 3:
        c.poly(foot + [(heel[0], heel[1] - 1), (lip[0] + b * .4, lip[1] - 1 - t * 2)], '75', 1)
    # lacing that holds it to the hoop
    for y in (109, 117, 126, 135):
        c.px(hoop(y) + 3, y); c.px(hoop(y) + 4, y)

def chopper(c, k):
    halo(c, lambda d: chopper_(d, k))

def chopper_(c, k):
    x, y = 70, 143
    # block and log
    c.rect(x + 1, y + 28, x + 11, y + 36, 'w', heavy=1); c.line(x + 3, y + 31, x + 3, y + 34)
    if k < 2:
        c.rect(x + 4, y + 21, x + 8, y + 29, 'w'); c.line(x + 6, y + 22, x + 6, y + 27)
    else:
        c.poly(at(x, y, '2,28 0,22 3,21 5,28'), 'w'); c.poly(at(x, y, '7,28 9,21 12,23 10,28'), 'w')
    hx = x + 18; bend = (0, 1, 3)[k]
    # skirt and body
    c.poly(at(hx, y, '-3,20 4,20 7,35 -5,35'), '50', heavy=0)
    c.poly([(hx - 4 - bend, y + 12 + bend), (hx + 3 - bend, y + 11 + bend), (hx + 4, y + 21), (hx - 3, y + 21)], 'w')
    # head with a tied cloth
    hd = (hx - 1 - bend * 1.6, y + 8 + bend); c.ell(hd[0], hd[1], 3.4, 3.6, 'w')
    c.put(c.mell(hd[0] + .8, hd[1] - .8, 3.4, 3.4) & ~c.mell(hd[0] - 1.6, hd[1] + .8, 2.6, 2.8), 'k', 0)
    sx, sy = hx - 1 - bend, y + 13 + bend
    hand, axe0, axe1 = (((hx - 1, y + 3), (hx + 2, y + 8), (hx + 3, y + 1)),
        ((hx - 10, y + 11), (hx - 4, y + 14), (hx - 14, y + 9)), ((hx - 9, y + 22), (hx - 4, y + 21),
        (hx - 13, y + 23)))[k]
    if k == 0:
        c.stroke([(hx + 7, y + 8), (hx - 2, y + 3)], 1.2); c.poly(at(hx, y, '5,4 9,7 8,11 4,8'), 'k')
        c.band([(sx, sy), (hx - 6, y + 8), (hx - 2, y + 3)], 3, tone='w')
    elif k == 1:
        c.stroke([(hx - 6, y + 15), (hx - 13, y + 7)], 1.2); c.poly(at(hx, y, '-15,8 -12,4 -9,6 -12,11'), 'k')
        c.band([(sx, sy), (hx - 4, y + 17), (hx - 7, y + 14)], 3, tone='w')
    else:
        c.stroke([(hx - 5, y + 24), (hx - 12, y + 25)], 1.2); c.poly(at(hx, y, '-14,22 -10,22 -11,29 -13,29'), 'k')
        c.band([(sx, sy), (hx - 5, y + 19), (hx - 6, y + 24)], 3, tone='w')

def smokes(c, k):
    x, y = 10, 119; lean = (-14, 0, 12)[k]; n = 8; L = []; R = []
    for i in range(n + 1):
        t = i / n; cx = x + 20 + lean * t * t + math.sin(t * 6 + k) * 1.2; w = 1.4 + 7 * t
        L.append((cx - w / 2, y + 27 - 26 * t)); R.append((cx + w / 2, y + 27 - 26 * t))
    m = c.mpoly(spline(L, n=4) + spline(R, n=4)[::-1]); c.put(m, 'w', 0); c.shade(m, '25')
    c.lines(spline(R, n=4)); c.lines(spline(L, n=4), dash=(1, 1, 0)); c.art(x + 16, y + 26, ["_####__", "######_"])

def mugman(c, k):
    halo(c, lambda d: mugman_(d, k))

def mugman_(c, k):
    x, y = 132, 149
    # a crate to sit on
    c.rect(x + 14, y + 20, x + 26, y + 30, 'w', heavy=1); c.line(x + 14, y + 25, x + 25, y + 25)
    # legs towards the fire
    c.band(at(x, y, '19,19 9,19 6,28'), 4, tone='k'); c.stroke([(x + 6, y + 28.4), (x + 2, y + 28.4)], 2.2)
    # body and head
    c.poly(at(x, y, '14,9 21,9 23,20 14,21'), '/', heavy=0); tilt = k; c.ell(x + 16.5 + tilt, y + 6, 3.4, 3.6, 'w')
    c.stroke([(x + 10 + tilt * 2, y + 4 - tilt * 1), (x + 23, y + 3 + tilt)], 1.6)
    c.poly([(x + 13.5 + tilt, y + 3), (x + 20 + tilt, y + 3), (x + 19 + tilt, y - .5), (x + 15 + tilt, y - .5)], 'k')
    if k == 0:
        c.rect(x + 7, y + 13, x + 12, y + 18, 'w'); c.px(x + 6, y + 15)
        c.band(at(x, y, '18,11 15,17 10,17'), 3, tone='w')
    else:
        c.rect(x + 9, y + 6, x + 14, y + 11, 'w'); c.px(x + 8, y + 8)
        c.band(at(x, y, '18,12 13,16 11,10'), 3, tone='w')

def potgirl(c, k):
    halo(c, lambda d: potgirl_(d, k))

def potgirl_(c, k):
    x, y = 100, 149
    # tripod, pot, fire
    c.line(x + 21, y + 1, x + 14, y + 29); c.line(x + 21, y + 1, x + 28, y + 29); c.line(x + 21, y + 2, x + 21, y + 11)
    c.lines(arc(x + 21.5, y + 14, 4, 4, 180, 360))
    for (a, b), (d, e) in (((15, 29), (27, 26)), ((15, 26), (27, 29))):
        c.stroke([(x + a, y + b), (x + d, y + e)], 1.6)
    f = [(21, 20), (23, 22), (25, 21), (25.5, 26), (17, 26), (17.5, 22), (19, 24)] if k == 0 else [(19, 20), (21, 23),
        (24, 20), (25.5, 26), (17, 26), (16.5, 22), (18, 23.5)]
    c.poly([(x + a, y + b) for a, b in f], 'w')
    c.poly(spline(at(x, y, '17,13 16.6,17 18.6,20 23.4,20 25.6,17 25,13'), n=4), 'k')
    c.line(x + 17, y + 15, x + 17, y + 17, 0)
    # girl
    c.poly(at(x, y, '3,17 9,17 12,29 1,29'), 'w')
    c.rect(x + 3, y + 20, x + 4, y + 28, 'k', 0); c.px(x + 7, y + 25); c.px(x + 8, y + 22); c.px(x + 6, y + 27)
    c.poly(at(x, y, '3,9 9,9 9.6,18 2.6,18'), 'k'); c.ell(x + 6.6, y + 5.4, 3.1, 3.4, 'w')
    c.put(c.mell(x + 5.4, y + 4.8, 3.2, 3.5) & ~c.mell(x + 7.8, y + 6, 2.4, 2.8), 'k', 0)
    c.stroke([(x + 3.4, y + 6), (x + 1.6, y + 14)], 1.6)
    if k == 0:
        c.stroke([(x + 17, y + 14), (x + 14, y + 6)], 1); c.band(at(x, y, '7,11 10,13 14.6,9'), 2.8, tone='w')
    else:
        c.stroke([(x + 10, y + 7), (x + 16, y + 10)], 1); c.ell(x + 10.6, y + 7, 1.4, 1.2, 'k')
        c.band(at(x, y, '7,11 11,14 14,10'), 2.8, tone='w')

def grind(c, k):
    x, y = 359, 153
    # frame
    c.band([(x + 6, y + 30), (x + 11, y + 13)], 3, tone='w'); c.band([(x + 29, y + 30), (x + 24, y + 13)], 3, tone='w')
    c.band([(x + 4, y + 16), (x + 31, y + 16)], 3.4, tone='w'); cx, cy = x + 17, y + 13
    c.ell(cx, cy, 10.5, 10.5, 'w', heavy=1); m = c.mell(cx, cy, 9.5, 9.5)
    c.shade(m & c.mpoly(at(cx, cy, '2,-11 12,-11 12,12 -6,12 3,4')), '25'); a = math.radians(36 * k - 90)
    # marks on the stone that turn with it
    for q in (0, 2.1, 4.2):
        c.line(cx + math.cos(a + q) * 5, cy + math.sin(a + q) * 5, cx + math.cos(a + q + .35) * 8,
            cy + math.sin(a + q + .35) * 8)
    ex, ey = cx + math.cos(a) * 7, cy + math.sin(a) * 7; c.stroke([(cx, cy), (ex, ey)], 2.2)
    c.rect(ex - 2, ey - 1, ex + 5, ey + 2, 'w'); c.ell(cx, cy, 2, 2, 'k'); c.rect(x + 12, y + 27, x + 24, y + 31, 'w')
    if k in (3, 4):
        for sx, sy in ((6, 4), (3, 7), (8, 1)) if k == 3 else ((4, 2), (1, 5), (7, 5), (3, 9)):
            c.px(x + sx, y + sy); c.px(x + sx + 1, y + sy - 1)

HEN = """
__##_#____________
__####____________
_##.##____________
###..#__________##
_##..#_________###
_##..##_______#..#
__#...##_____##..#
__#....###_###..#_
__#.#.#..###.#.##_
__##..#.#...#..#__
___#.#.#..#...##__
____##...#..###___
______#######_____
_______#__#_______
______##_##_______
"""

def hen(c, k):
    halo(c, lambda d: hen_(d, k))

def hen_(c, k):
    x, y = 429, 155; up = (0, 0, 4, 7, 6, 3, 0, 0)[k]; wing = (0, 0, 1, 2, 1, 2, 1, 0)[k]
    rows = HEN.strip("\n").split("\n")
    if k in (1, 7): rows = rows[:-2]
    # it blinks
    if k == 7: rows[2] = '_#####____________'
    Y = y + 24 - len(rows) - up; c.art(x + 4, Y, rows)
    if wing == 1:
        c.art(x + 12, Y + 1, ["________##", "_____###.#", "___##...#_", "__#...##__", "_#..##.#__", "#.....#___",
            "##..##____", "_###______"])
    elif wing == 2:
        Y = max(y, Y - 2)
        c.art(x + 11, Y, ["___###__", "__#..#__", "__#.#.#_", "__#...#_", "_#.#..#_", "_#...#__", "_#.#.#__",
            "#...#___", "#..#____", "_##_____"])

def goat(c, k):
    halo(c, lambda d: goat_(d, k))

def goat_(c, k):
    x, y = 447, 187
    T = lambda a, b: (x + a, y + b)
    for a, d in ((13, 0), (25, 1)): c.stroke([T(a, 16), T(a + d, 20), T(a, 23.4)], 1.6)
    c.stroke([T(28, 9), T(31, 6)], 2)
    m = c.poly(spline([T(8, 9), T(14, 8), T(22, 8), T(28, 8), T(30, 12), T(28, 16.6), T(22, 17.4), T(14, 17.6),
        T(9, 16)], True, 5), 'w', heavy=1)
    c.shade(m & c.mpoly([T(17, 6), T(25, 6), T(24, 19), T(16, 19)]), '75'); c.ink(c.edge(m))
    for a, d in ((10, -1), (27, 1)): c.stroke([T(a, 16), T(a + d * .5, 20), T(a, 23.4)], 2.2)
    # looks at you
    if k == 1:
        c.stroke([T(4, 3), T(3, -.5)], 1.6, 1); c.stroke([T(8, 3), T(9, -.5)], 1.6, 1)
        c.stroke([T(2.6, 5), T(0, 6)], 2, 1); c.stroke([T(9.4, 5), T(12, 6)], 2, 1)
        m = c.poly(spline([T(3, 3), T(9, 3), T(9.6, 7), T(8, 12), T(6, 13.4), T(4, 12), T(2.6, 7)], True, 5), 'w')
        c.poly([T(8, 9), T(11, 9), T(12, 14), T(9, 14)], 'w', 0)
        c.rect(x + 4, y + 6, x + 5, y + 8, 'k', 0); c.rect(x + 7, y + 6, x + 8, y + 8, 'k', 0)
        c.line(x + 5, y + 11, x + 7, y + 11); c.stroke([T(6, 14), T(6, 17)], 1.6, 1)
    else:
        c.stroke([T(8, 3), T(11, 0), T(14, 1)], 1.6, 1); c.stroke([T(7, 3), T(9, -.5)], 1.4, 1)
        c.stroke([T(9, 5), T(12, 7)], 2, 1); d = 1 if k == 2 else 0
        m = c.poly(spline([T(6, 3), T(9.6, 4), T(12, 9), T(9, 12), T(6.6, 9.6), T(3, 11 + d), T(1, 10.4 + d), T(1.6, 8),
            T(4, 5)], True, 5), 'w')
        c.px(x + 5, y + 6); c.px(x + 6, y + 6); c.line(x + 1, y + 9 + d, x + 3, y + 9 + d)
        c.stroke([T(4, 11 + d), T(3.4, 15)], 1.6, 1)
        if d: c.line(x - 0, y + 12, x + 1, y + 13)

def reader(c, k):
    halo(c, lambda d: reader_(d, k))

def reader_(c, k):
    x, y = 287, 179
    # sits against the rear wheel, knees up
    c.band(at(x, y, '14,14 7,8 4,16'), 3.4, tone='k'); c.stroke([(x + 4, y + 16.4), (x + 1, y + 16.4)], 1.8)
    c.poly(at(x, y, '12,7 18,7 19,17 11,17'), 'w'); c.ell(x + 13.6, y + 4, 3, 3.2, 'w')
    c.put(c.mell(x + 14.6, y + 3.4, 3, 3.2) & ~c.mell(x + 12.4, y + 4.8, 2.2, 2.4), 'k', 0)
    # book
    if k == 0:
        c.poly(at(x, y, '4,4 8,6 8,10 4,8'), 'w'); c.line(x + 8, y + 5, x + 10, y + 4)
        c.line(x + 10, y + 4, x + 10, y + 8)
    else:
        c.poly(at(x, y, '4,4 8,6 8,10 4,8'), 'w'); c.lines(at(x, y, '8,6 6,1 7,0')); c.line(x + 8, y + 5, x + 10, y + 4)
        c.line(x + 10, y + 4, x + 10, y + 8)
    c.band(at(x, y, '14,9 11,12 8,9'), 2.4, tone='w')

def ears(c, k):
    x, y = 317, 266; L = [(4, 15), (2.5, 8), (3, 2), (5, 1), (7, 8), (7, 15)]
    if k == 0: R = [(7, 15), (8, 8), (10, 2), (11.6, 2.6), (11.4, 9), (10, 15)]
    else: R = [(7, 15), (9, 10), (13, 7), (13.4, 8.6), (12, 12), (10, 15)]
    for P in (R, L):
        c.poly([(x + a, y + b) for a, b in spline(P, True)], 'w')
    c.line(x + 4, y + 5, x + 4, y + 11)
    if k == 0: c.line(x + 10, y + 5, x + 9, y + 11)
    c.poly(spline(at(x, y, '2,16 4,13 8,12.4 12,16'), n=4), 'w'); c.ell(x + 7, y + 17, 6.4, 4.4, 'w')

def oxtail(c, k):
    x, y = 203, 196
    if k == 0: p = at(x, y, '0,5 3,8 3,13')
    else: p = at(x, y, '0,5 4,4 8,2')
    c.stroke(spline(p), 1.4); e = p[-1]
    c.stroke([p[-2], e], 1.4, 2.8) if k == 0 else c.stroke([(x + 5, y + 3.5), e], 1.4, 3)

ANIM = [flap, chopper, smokes, mugman, potgirl, grind, hen, goat, reader, ears, oxtail]

def build():
    B = background(); full = B.copy()
    def box(i):
        h, v, w, hh = PLACE[i]
        return full.mrect(h - 9, v - 9, h - 9 + w, v - 9 + hh)
    for i in range(10, -1, -1):
        full.clip = box(i); ANIM[i](full, 0)
    full.clip = None; frames = [full]
    for i in range(11):
        h, v, w, hh = PLACE[i]
        for k in range(COUNT[i]):
            c = B.copy()
            # the fire group touches
            for j in (3, 4):
                if i in (3, 4) and j != i: ANIM[j](c, 0)
            c.clip = box(i); ANIM[i](c, k); c.clip = None
            bad = (c.a != B.a); bad[v - 9:v - 9 + hh, h - 9:h - 9 + w] = False
            if i not in (3, 4) and bad.any():
                ys, xs = np.nonzero(bad)
                print('anim', i, k, 'spills', len(xs), xs.min() - h + 9, xs.max() - h + 9, ys.min() - v + 9,
                    ys.max() - v + 9)
            frames.append(c.crop(h - 9, v - 9, w, hh))
    return frames

def numbered(name, n):
    return [f'{name}-{k + 1}' for k in range(n)]
NAMES = (['title'] + numbered('flap', 9) + ['axe-up', 'axe-half', 'axe-down', 'smoke-left', 'smoke-upright',
    'smoke-right', 'mug-on-knee', 'mug-at-mouth', 'pot-stirred', 'pot-tasted'] + numbered('grindstone', 10)
    + numbered('hen', 8) + ['goat-chews', 'goat-looks', 'goat-chews-again', 'page-open', 'page-turned', 'ears-up',
    'ear-down', 'tail-down', 'tail-up'])

def pictures():
    return {'Title/' + n: c for n, c in zip(NAMES, build())}
