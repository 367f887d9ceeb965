"""The raft run: map, marker, raft, rock from near to far, and the right bank in eleven phases."""
import math

import numpy as np

from country import tree
from ink import at, Canvas, maskof, points, spline, Sprite

def raft(k):
    """Seen from behind; k 0 left, 1 straight, 2 right. The bands are those of the rules."""
    c = Sprite(62, 44)
    b0 = ((21, 41), (16, 36), (26, 46))[k]; b1 = ((12, 40), (17, 45), (23, 49))[k]
    b2 = ((8, 48), (11, 50), (13, 53))[k]; b3 = ((6, 58), (5, 57), (5, 57))[k]
    # steersman above the tilt, arms on the sweep
    x = (b0[0] + b0[1]) / 2
    c.band([(x - 2, 7), (x - 6, 5), (b0[0] + 1.5, 6.5)], 2.6, tone='w')
    c.band([(x + 2, 7), (x + 6, 5), (b0[1] - 1.5, 6.5)], 2.6, tone='w')
    c.poly([(x - 4, 10), (x - 4, 5), (x + 4, 5), (x + 4, 10)], 'k')
    c.ell(x, 3.6, 2.6, 2.6, 'w'); c.stroke([(x - 4.5, 2.2), (x + 4.5, 2.2)], 1.4)
    c.poly([(x - 2.4, 2), (x - 2, 0), (x + 2, 0), (x + 2.4, 2)], 'k')
    # tilt from behind: the canvas drawn together round a dark opening
    cx1, cx2 = (b1[0] + b1[1]) / 2, (b2[0] + b2[1]) / 2
    top = spline([(b2[0] + 2, 27), (b2[0] + 1, 18), (b1[0], 11), (b1[0] + 5, 8.4), (b1[1] - 5, 8.4), (b1[1], 11),
        (b2[1] - 1, 18), (b2[1] - 2, 27)], n=6)
    m = c.poly(top, 'w', heavy=1)
    c.shade(c.inner(m) & c.mpoly([(cx1 + 8, 8), (b2[1], 10), (b2[1], 28), (cx2 + 11, 28), (cx2 + 10, 18)]), '25')
    ox_, oy = (cx1 + cx2) / 2, 18.6
    for a in range(-170, 0, 20):
        ca, sa = math.cos(math.radians(a)), math.sin(math.radians(a))
        c.line(ox_ + ca * 7, oy + sa * 5.6, ox_ + ca * 12, oy + sa * 9)
    c.ell(ox_, oy, 7.4, 6, '75')
    # tailboard of two planks, rear wheels on the sides
    c.rect(b2[0] + 3, 24, b2[1] - 3, 31, 'w', heavy=1); c.line(b2[0] + 3, 27, b2[1] - 5, 27)
    for x in (b2[0] + 9, b2[1] - 10): c.line(x, 25, x, 30)
    for x0, x1 in ((b2[0], b2[0] + 5), (b2[1] - 5, b2[1])):
        c.poly(spline([(x0, 26), (x0 + 1, 20.5), (x1 - 2, 20.5), (x1, 26), (x1 - 1, 33), (x0, 33)], True, 4), 'w')
        c.line((x0 + x1) // 2, 22, (x0 + x1) // 2, 32); c.rect(x0 + 1, 26, x1 - 1, 28, 'k', 0)
    # logs: their backs draw together, their sawn ends show a ring
    n = 5; w = (b3[1] - b3[0]) / n
    for i in range(n):
        x = b3[0] + w * (i + .5); y = 37 + (.6 if i % 2 else 0)
        c.poly([(x - w / 2 + (2 - i) * 1.2, 32), (x + w / 2 + (2 - i) * 1.2, 32), (x + w / 2, y), (x - w / 2, y)], 'w')
    for i in range(n):
        x = b3[0] + w * (i + .5); y = 37 + (.6 if i % 2 else 0)
        c.ell(x, y + 1, w / 2 + .2, 4.8, 'w')
        c.ink(c.edge(c.mell(x, y + 1, w * .24, 2.3)))
        c.px(x - 3, y + 3)
        c.px(x + 3, y - 1)
    # wake
    c.lines([(b3[0] + 1, 43), (b3[0] + 8, 42), (b3[1] - 9, 42), (b3[1] - 2, 43)])
    return c

def rock(k):
    """A reef: a split crag between two ledges, in foam. 0 is near; each is smaller by a sixth of that; foot on row 31,
    middle on column 32. 5 is a fleck far off. Seen from the raft, 0 is solid in rows 5 to 20 of columns 21 to 48 and
    below row 21."""
    c = Sprite(65, 32)
    if k == 5:
        c.art(27, 26, ('____##_____', '___####____', '_##.###.##_', '#..#####..#', '_#.......#_', '__#######__'))
        return c
    s = 1 - k / 6

    def here(pts): return at(32.5, 32, [(x - 32.5, y - 32) for x, y in points(pts)], s)
    crag = c.poly(here('1,31 0,26 3,22 9,20.4 15,21.4 19.5,18 20.4,8 23,4.6 27,6 30,2.4 34,4 37,1 42,4.4 46,3.6 '
        '49.4,8 50,18 54,20.6 59,19.6 64,22.6 65,27 64,31'), 'w')
    inner = c.inner(crag)
    c.shade(inner & c.mpoly(here('30,2 37,1 36,10 40,18 37,31 28,31 31,20 28,12')), '/')
    c.shade(inner & c.mpoly(here('37,0 51,3 52,19 66,18 67,32 37,32 40,18 36,10')), '75')
    c.shade(inner & c.mpoly(here('9,20 16,22 20,18 22,31 12,31 14,26')), '/')
    c.ink(c.mpoly(here('52,20.6 59,19.8 64,23 58,23.4')) & inner, 0)              # the lit top of the right ledge
    if s > .4:
        c.lines(here('37,2 36,10 40,18 37,28'))
        c.lines(here('30,3 28,12 31,20 28,28'))
        c.lines(here('20.6,10 22,20 20,27'))
    if s > .6:
        for crack in ('24,8 26,13 24,18', '8,23 10,26', '26,20 25,25', '3,24 5,26'): c.lines(here(crack))
    # foam along the foot, scalloped, with a black line beneath
    n = max(3, int(9 * s))
    foam = np.zeros((32, 65), bool)
    for i in range(n):
        x = 32.5 + (i + .5 - n / 2) * 62 * s / n
        foam |= c.mell(x, 31, 36 * s / n, max(1.6, (4.6 if i % 2 else 3.2) * s))
    foam &= np.indices(foam.shape)[0] < 32
    c.put(foam, 'w')
    c.ink(c.edge(crag | foam))
    return c

def bank(p):
    """The right bank, phase p of 11: what stands on it slides down and outward, one step of the pattern in 11
    phases."""
    c = Canvas(87, 304, 327, 9)
    yy, xx = np.indices((304, 87))
    rows = np.clip((yy - 27) / 277, 0, 1.3)          # 0 at the horizon, 1 at the foot of the picture
    scale = .16 + .84 * rows
    foot = 3 + 40 * rows                              # where the cliff stands in the water
    wet, rim = foot + 3 + 7 * scale, foot + 6 + 24 * scale
    below = yy >= 27
    c.ink(below & (xx < foot) & c.tone('50').astype(bool))
    c.shade(below & (xx >= foot) & (xx < wet), '75')
    c.shade(below & (xx >= wet) & (xx < rim), '/')
    # the gorge's hills against the sky
    for line, tone in (('6,27 18,18 30,21 46,9 60,14 74,5 88,8', '25'), ('10,27 26,24 44,25 62,19 88,16', 'w')):
        ridge = spline(line, n=6)
        c.put(c.mpoly(ridge + [(88, 28), (6, 28)]) & ~below, tone, 0); c.lines(ridge)

    def things(start, n=1):
        """(row, scale, foot, number) of what stands n times a step, far ones first."""
        out = []
        for i in range(-1, 4):
            for k in range(n):
                u = i + (k + start) / n + p / 11
                if 0 <= u < 3.55:
                    t = (2.6 ** u - 1) / (2.6 ** 3 - 1)
                    out.append((27 + 277 * t, .16 + .84 * t, 3 + 40 * t, k))
        return sorted(out)
    # joints of the rock, across the foot and up to the rim
    for y, z, x, k in things(.1, 6):
        c.lines([(x, y), (x + 3 + 7 * z, y - 5 * z)], 0)
        c.lines(at(x + 3 + 7 * z, y - 5 * z, [(0, 0), (8, -7 - 2 * (k % 3)), (17, -12), (26 + 4 * (k % 3), -15)], z))
        if k % 2: c.lines(at(x + 8 + 12 * z, y - 10 * z, '0,0 3,8 1,14', z))
    c.ink(below & (xx >= wet) & (xx < wet + 1)); c.ink(below & (xx >= rim) & (xx < rim + 1))
    # ledges: white tops, a shade beneath
    for y, z, x, k in things(.35, 2):
        x += 3 + 9 * z
        c.shade(c.mpoly(at(x, y, '-3,2 10,5 8,12 -2,10', z)), '75')
        c.poly(at(x, y, '-3,0 9,-5 16,-3 10,5 0,6', z), 'w')
    # grass and stones behind the rim
    for y, z, x, k in things(.22, 4):
        if k % 2: c.tuft(x + 14 + 36 * z, y, 3, max(2, 7 * z), 1)
        elif z > .3: c.poly(spline(at(x + 16 + 44 * z, y, '-6,0 -4,-5 0,-6 5,-3 6,0', z)), 'w', heavy=1)
    # a waterfall: white over the rim, threads in it, foam on the river
    for y, z, x, k in things(.8):
        fall = c.mpoly(at(x, y, '44,-22 36,-24 24,-17 13,-8 2,1 2,9 12,5 22,-4 33,-12', z) )
        c.ink(fall, 0); c.ink(c.edge(fall) & ((xx + yy) % 3 == 0))
        for o in (-2.4, 0, 2.4):
            c.lines(at(x, y, [(38, -19 + o), (25, -12 + o), (14, -3 + o), (5, 5 + o)], z), dash=(1, 1, 1, 1, 0, 0))
        for dx, dy, r in ((1, 8, 5), (-5, 6, 4), (-2, 1, 4), (6, 11, 3)):
            puff = c.mell(x + dx * z, y + dy * z, max(1.2, r * z), max(1, r * .6 * z))
            c.ink(puff, 0); c.ink(c.edge(puff) & ((xx + yy) % 2 == 0))
    # pines and rowans at the rim, smaller pines behind
    stand = [(*t, 'fir', 27, 62) for t in things(.1)] + [(*t, 'rowan', 27, 60) for t in things(.52)]
    stand += [(*t, 'fir', 50, 46) for t in things(.3, 2)]
    for y, z, x, k, kind, out, high in sorted(stand):
        x, h = x + 12 + out * z, high * z
        d = Canvas(87, 304)
        if h < 7: d.poly(at(x, y, '-.25,0 0,-1 .25,0', h), 'k', 0)
        else: tree(d, x, y, h, kind, 3)
        m = maskof(d.a); m[:20] = False
        c.a[m] = d.a[m]
    # the foot is a black line with foam ticks beside it
    c.ink(below & (xx >= foot - 1.5) & (xx < foot - .5), 0); c.ink(below & (xx >= foot - .5) & (xx < foot + .5))
    for y, z, x, k in things(.05, 9):
        for d in range(int(1 + 5 * z)):
            c.px(x - 2 - d, y + d * .5, 0)
            if z > .5: c.px(x - 2 - d, y + d * .5 + 1, 0)
    return c

def raft_map():
    c = Canvas(87, 304, 416, 8)
    P = [(0, 282, 48), (18, 264, 51), (46, 236, 50), (114, 168, 59.9), (115, 167, 59), (153, 129, 46.3),
        (191, 91, 42.1), (192, 90, 41), (220, 62, 30.4), (268, 14, 30)]
    mid = [(51, 310)] + [(h + 3.5, v + 3.5) for _, v, h in P] + [(33.5, -4)]
    xs = lambda y: np.interp(-y, [-b for a, b in mid], [a for a, b in mid])
    # the vale at the head, hills along the gorge
    yy, xx = np.indices((304, 87)); X = np.array([xs(y) for y in range(304)])[:, None]; d = np.abs(xx - X)
    riv = d <= 4.5; c.put(riv, 'w', 0)
    # gorge: hachures on both sides, longer in the middle
    for y in range(36, 286, 3):
        k = 5 + 5 * math.sin((y - 30) / 260 * math.pi) + (y % 9 == 0) * 2; x = xs(y)
        c.line(x - 6, y, x - 6 - k, y - 1); c.line(x + 6, y, x + 6 + k, y + 1)
    c.ink((d > 4) & (d <= 5))
    # peaks and firs off the river
    spots = [(12, 70, 11), (72, 54, 12), (14, 118, 13), (76, 108, 10), (18, 166, 12), (10, 206, 9), (24, 222, 11),
        (80, 214, 9), (16, 262, 10), (76, 262, 11), (70, 80, 9), (82, 150, 7), (82, 236, 6), (20, 96, 8), (28, 190, 8)]
    for x, y, h in spots:
        if abs(x - xs(y)) < h + 10: continue
        c.lines(at(x, y, '-.7,0 -.2,-.6 0,-1 .25,-.5 .7,0', h))
        c.hatch(c.mpoly(at(x, y, '0,-1 .25,-.5 .66,0 .1,0 .12,-.5', h)), 2, 1)
    for x, y in ((30, 142), (8, 140), (80, 176), (12, 236), (78, 196), (30, 256), (66, 286), (14, 288), (80, 132),
            (60, 58), (8, 44)):
        if abs(x - xs(y)) > 16:
            c.poly(at(x, y, '-3,0 0,-9 3,0'), 'k', 0); c.line(x, y, x, y + 1)
    # Yonderley: steps and a gate; the landing
    for k, (y, a, b) in enumerate(((24, 42, 80), (18, 46, 84), (12, 50, 87), (26, 2, 24), (20, 2, 20))):
        c.lines([(a, y), (b, y), (b, y + 3)])
        for x in range(a + 2, b - 1, 5): c.px(x, y + 2)
    c.art(44, 2, ["#_#_#", "#####", "#.#.#", "#.#.#", "#####"])
    c.poly('58,297 66,289 74,297', 'k'); c.rect(60, 297, 72, 304, 'w'); c.rect(64, 299, 68, 304, 'k', 0)
    c.lines('30,302 44,298'); c.lines('30,299 44,295'); c.lines('34,297 38,304'); c.ink((d > 4) & (d <= 5))
    c.a[:, 0] = 1
    return c

def marker():
    c = Canvas(7, 7); c.art(0, 0, ["_.....__"[:7], ".#####.", ".#####.", ".#####.", ".#####.", ".#####.", "_....._"])
    c.a[:] = 0
    for y, rw in enumerate(["       ", "  ###  ", " ##### ", " ##### ", " ##### ", "  ###  ", "       "]):
        for x, ch in enumerate(rw): c.a[y, x] = ch == '#'
    return c

def pictures():
    out = {'map': raft_map(), 'marker': marker(), 'raft-left': raft(0), 'raft-straight': raft(1), 'raft-right': raft(2)}
    out |= {f'rock-{k + 1}': rock(k) for k in range(6)}; out |= {f'bank-{k + 1}': bank(k) for k in range(11)}
    return {'Raft/' + n: c for n, c in out.items()}
