"""What the land is made of: clouds, trees, grass, stones, planks, walls, steam."""
import math
import random

import numpy as np

from ink import arc, at, points, shifted, spline

def cloud(c, x, y, w, h=10, seed=1):
    """An open cloud: one outline along its bumps, a curl or two inside, nothing beneath."""
    r = random.Random(seed)
    n = max(3, int(w / 11))
    steps = [r.uniform(.7, 1.3) for _ in range(n)]
    left, puffs, mass = x, [], np.zeros((c.h, c.w), bool)
    for step in steps:
        wide = w * step / sum(steps)
        high = h * (.35 + .65 * math.sin(math.pi * (left + wide / 2 - x) / w))
        puffs.append((left + wide / 2, y - high * .5, wide * .62, high * .5))
        mass |= c.mell(*puffs[-1]) | c.mrect(left - wide * .1, y - high * .5, left + wide * 1.1, y + 1)
        left += wide
    mass &= np.indices(mass.shape)[0] <= y
    rim = mass & ~(shifted(mass, 1, 0, True) & shifted(mass, -1, 0, True) & shifted(mass, 0, 1, True))
    c.ink(mass, 0)
    c.ink(rim)
    for cx, cy, rx, ry in puffs[1:-1:2]:
        if ry > 3: c.lines(arc(cx - rx * .1, cy + ry * .3, rx * .6, ry * .7, 190, 300))
    c.lines([(x - 4, y), (x, y)])
    c.lines([(x + w, y), (x + w + 4, y)])

def tree(c, x, y, h, kind='round', seed=1, tone='w'):
    """Trees by kind: round, willow, fir, larch, birch, rowan, poplar. y ground row."""
    r = random.Random(seed)
    if kind == 'round':
        c.band([(x, y), (x, y - h * .5)], max(2, h * .09), max(1.2, h * .05), 'k')
        c.stroke([(x, y - h * .3), (x + h * .16, y - h * .5)], max(1, h * .03))
        c.stroke([(x, y - h * .36), (x - h * .16, y - h * .52)], max(1, h * .03))
        crown(c, x, y - h * .66, h * .40, h * .34, r, tone)
    elif kind == 'willow':
        c.band(at(x, y, '-.02,0 .03,-.3 0,-.6', h), max(2, h * .09), max(1.4, h * .06), 'k')
        clip = c.clip
        # masses of hanging branches, the ones behind first, each a curtain with a ragged foot
        for side, top, low, wide in ((-.12, 1, .3, .26), (.16, .98, .26, .26), (-.3, .84, .1, .2), (.3, .82, .08, .2),
                (0, .9, .22, .24)):
            cx = x + side * h
            foot = [(cx + wide * h * (1 - 2 * k / 6), y - h * (low + (.1 if k % 2 else 0) + r.random() * .06))
                for k in range(7)]
            curtain = c.poly(spline(at(cx, y, [(-wide, -low), (-wide * .95, -top * .74), (0, -top),
                (wide * .95, -top * .74), (wide, -low)], h), n=5) + foot[1:-1], tone)
            c.clip = c.inner(curtain) if clip is None else clip & c.inner(curtain)
            n = max(2, int(wide * h / 2.2))
            for k in range(n):
                fx = cx + wide * h * (2 * (k + .5) / n - 1)
                c.lines([(cx + (fx - cx) * .7, y - h * (top - .14)), (fx, y - h * (top * .55)), (fx, y - h * low)],
                    dash=(1, 1, 1, 0) if k % 2 else None)
            if side > 0: c.shade(curtain, '25')
            c.clip = clip
    elif kind == 'fir':
        c.rect(x - max(1, h * .03), y - h * .14, x + max(1, h * .03) + 1, y, 'k', 0)
        n = max(3, int(h / 7))
        L = []; R = []
        for i in range(n):
            t0, t1 = i / n, (i + 1) / n
            yy = y - h + h * .9 * t1
            ww = h * (.07 + .2 * t1)
            L += [(x - ww, yy), (x - ww * .5, yy - 1.0)]
            R += [(x + ww, yy + .6), (x + ww * .5, yy - .6)]
        pts = [(x, y - h)] + R + L[::-1]
        m = c.poly(pts, tone)
        c.shade(m & c.mrect(x + .5, 0, c.w, c.h), '75')
        c.ink(c.edge(m))
    elif kind == 'larch':
        c.stroke([(x, y), (x, y - h)], max(1.6, h * .04), 1)
        k = int(h / 3.2)
        for i in range(1, k):
            t = i / k
            ww = h * .26 * (t ** .8)
            yy = y - h + h * .84 * t
            c.curve([(x, yy - 2), (x - ww * .5, yy + .5), (x - ww, yy + ww * .10)])
            c.curve([(x, yy - 2), (x + ww * .5, yy + .5), (x + ww, yy + ww * .16)])
            if h > 30:
                for q in (.4, .65, .9):
                    c.line(x - ww * q, yy + .5, x - ww * q, yy + 2)
                    c.line(x + ww * q, yy + .5, x + ww * q, yy + 2)
    elif kind == 'birch':
        m = c.band([(x, y), (x + r.uniform(-1, 1), y - h * .5), (x + r.uniform(-2, 2), y - h)], max(2.5, h * .06), 1.5,
            'w')
        for i in range(int(h / 6)):
            yy = y - h * (.05 + .9 * r.random())
            if r.random() < .5:
                c.line(x - 1, yy, x + 1, yy)
            else:
                c.line(x, yy, x + 2, yy)
        for i in range(int(h / 5)):
            t = .35 + .62 * i / (h / 5)
            s_ = -1 if i % 2 else 1
            L = h * .22 * (1.15 - t)
            c.curve([(x, y - h * t), (x + s_ * L * .6, y - h * t - L * .6), (x + s_ * L, y - h * t - L * .4)])
            for q in range(3):
                c.px(x + s_ * L * (.5 + .25 * q), y - h * t - L * .45 + q * 2 + 1)
    elif kind == 'rowan':
        c.band(at(x, y, '0,0 1,-.35 -1,-.6', 1, h), max(2, h * .07), 1.5, 'k')
        for s_ in (-1, 1):
            c.stroke([(x, y - h * .38), (x + s_ * h * .2, y - h * .62)], 1.2)
        crown(c, x, y - h * .68, h * .38, h * .32, r, tone)
        for i in range(int(h * .45)):
            a = r.random() * 6.28; q = math.sqrt(r.random())
            bx, by = x + math.cos(a) * h * .3 * q, y - h * .66 + math.sin(a) * h * .26 * q
            c.px(bx, by); c.px(bx + 1, by); c.px(bx, by + 1); c.px(bx + 1, by + 1)
    elif kind == 'poplar':
        c.band([(x, y), (x, y - h * .4)], max(1.4, h * .05), tone='k')
        m = c.blob(at(x, y, '0,-1 .11,-.75 .13,-.4 .06,-.15 -.06,-.15 -.13,-.4 -.1,-.75', h), tone)
        c.shade(m & c.mrect(x, 0, c.w, c.h), '/')

def crown(c, cx, cy, rx, ry, r, tone='w', lobes=None):
    """A leafy mass: scalloped outline, inner scallops on the lit side, shade on the right and below. A great one is
    made of many, the far ones first."""
    if rx > 40:
        clumps = [(cx + math.cos(k * 2.4) * rx * .66 * q, cy + math.sin(k * 2.4) * ry * .58 * q)
                  for k in range(15) for q in [math.sqrt((k + .5) / 15)]]
        for px, py in sorted(clumps, key=lambda p: p[1]): crown(c, px, py, rx * .36, ry * .44, r, tone)
        return None
    n = lobes or max(6, int((rx + ry) / 3.2))
    m = c.mell(cx, cy, rx * .8, ry * .8)
    q = []
    for i in range(n):
        a = 2 * math.pi * (i + .3 * r.random()) / n
        lr = (rx + ry) / 2 * r.uniform(.27, .40)
        q.append((cx + math.cos(a) * (rx - lr * .8), cy + math.sin(a) * (ry - lr * .8), lr))
        m |= c.mell(*q[-1])
    c.put(m, tone)
    inner = c.inner(m)
    yy, xx = np.indices(m.shape)
    g = (xx - cx) / rx * .8 + (yy - cy) / ry
    if rx > 14:
        shadow = g > .62
        for qx, qy, lr in q:
            shadow |= c.mell(qx, qy, lr) & ~c.mell(qx - lr * .5, qy - lr * .55, lr) & (g > -.3)
        for k in range(int(rx * ry / 24)):
            a, f = k * 2.4, math.sqrt((k + .5) / (rx * ry / 24)) * .62
            qx, qy, lr = cx + math.cos(a) * rx * f, cy + math.sin(a) * ry * f, (rx + ry) * .085
            shadow |= c.mell(qx, qy, lr) & ~c.mell(qx - lr * .5, qy - lr * .6, lr) & (g > .1)
        c.shade(inner & shadow, '50')
        c.shade(inner & shadow & (g > .75), '75')
    else:
        c.shade(inner & (g > .25), '50')
    cl = c.clip; c.clip = inner if cl is None else cl & inner
    # leaf clumps on the lit side: small scallops, evenly spread, larger crowns get more of them
    step = 9 if rx > 14 else 6
    k = 0
    yv = cy - ry + step * .8
    while yv < cy + ry * .6:
        off = (k % 2) * step * .5 + r.uniform(-1, 1)
        xv = cx - rx + off
        while xv < cx + rx:
            gx = (xv - cx) / rx * .8 + (yv - cy) / ry
            X, Y = int(xv), int(yv)
            if gx < .1 and 0 <= Y < c.h and 0 <= X < c.w and inner[Y, X] and r.random() < .72:
                w_ = step * .3
                c.lines(at(xv, yv, '-1,1 -.5,-.6 .5,-.6 1,1', w_, 1))
            xv += step
        yv += step * .62; k += 1
    c.clip = cl
    return m

def dark_grass(c, edge_, rows, r, x0=0, x1=None, fringe=(9, 24), heads=(), keep=None, dens=1.9):
    """A dark stand of grass: a black mass under edge_, blades against the light above it, white blades cut into it."""
    x1 = c.w + 6 if x1 is None else x1
    ex, ey = np.array([p[0] for p in edge_]), np.array([p[1] for p in edge_])
    def topy(x):
        return float(np.interp(x, ex, ey))
    for x in np.arange(x0, x1, dens):
        if keep and keep(x, topy(x)): continue
        y = topy(x) + 4; hh = r.uniform(*fringe); l = r.uniform(-5, 6)
        p = spline(at(x, y, '0,0 .25,-.55 1,-1', l, hh), n=6)
        c.lines(p)
        if r.random() < .5: c.lines([(a_ + 1, b_) for a_, b_ in p[:8]])
    for x in heads:
        y = topy(x); hh = min(r.uniform(26, 40), y - 3); l = r.uniform(-6, 8)
        p = spline(at(x, y, '0,0 .3,-.6 1,-1', l, hh), n=8)
        c.lines(p)
        a_, b_ = p[-1]
        for k in range(6):
            c.px(a_ - 1, b_ + k * 2); c.px(a_ + 1, b_ + k * 2 + 1); c.px(a_, b_ + k * 2); c.px(a_, b_ + k * 2 + 1)
    c.put(c.mpoly(list(edge_) + [(x1 + 4, c.h + 8), (edge_[0][0], c.h + 8)]), 'k', 0)
    for k, (dy, hh, step) in enumerate(rows):
        x = x0 + (k % 2) * step * .5
        while x < x1:
            y = topy(x) + dy
            if not (keep and keep(x, y)):
                for i in range(5):
                    t = (i + .5) / 5 * 2 - 1
                    L = hh * (1 - .25 * abs(t)) * r.uniform(.75, 1.1)
                    bx = x + t * step * .34; tx = x + t * hh * .52 + r.uniform(-1, 1)
                    p = spline([(bx, y), (bx + (tx - bx) * .35, y - L * .6), (tx, y - L + abs(t) * 2)], n=6)
                    c.lines(p, 0)
                    if i in (1, 2): c.lines([(a_ + 1, b_) for a_, b_ in p[2:8]], 0)
            x += step * r.uniform(.85, 1.15)

def tufts_on(c, mask, n, r, gap=9, h=(2, 4)):
    """Single tufts, scattered evenly and never in rows."""
    ys, xs = np.nonzero(mask)
    P_ = []
    for _ in range(n * 12):
        if len(P_) >= n or not len(xs): break
        i = r.randrange(len(xs)); x, y = xs[i], ys[i]
        if all(abs(x - a) + 1.6 * abs(y - b) > gap for a, b in P_):
            P_.append((x, y))
            hh = r.randint(*h)
            c.line(x, y, x, y - hh); c.line(x - 2, y, x - 3, y - hh + 1); c.line(x + 2, y, x + 3, y - hh + 1)

def stars(c, mask, n, seed):
    r = random.Random(seed)
    ys, xs = np.nonzero(mask)
    for _ in range(n):
        i = r.randrange(len(xs))
        x, y = xs[i], ys[i]
        for dx in (-1, 0, 1):
            for dy in (-1, 0, 1): c.px(x + dx, y + dy, 1)
        c.px(x, y, 0)
        if r.random() < .22:
            c.px(x + 1, y, 0); c.px(x, y + 1, 0); c.px(x - 1, y, 0); c.px(x, y - 1, 0)

def planks(c, x0, y0, x1, y1, ph=7, seed=1, nails=True, vertical=False, tone='w', grain=True):
    """A wall of planks with grain and two nails at each end."""
    r = random.Random(seed)
    c.rect(x0, y0, x1, y1, tone)
    if not vertical:
        y = y0
        while y < y1:
            c.line(x0, y, x1 - 1, y)
            joints = sorted(r.uniform(x0 + 10, x1 - 10) for _ in range(max(0, int((x1 - x0) / 90))))
            for j in joints:
                c.line(j, y, j, min(y + ph, y1 - 1))
            if grain:
                for _ in range(int((x1 - x0) / 18)):
                    gx, gy = r.uniform(x0 + 2, x1 - 14), y + r.randint(2, max(2, ph - 2))
                    if gy < y1 - 1:
                        c.line(gx, gy, gx + r.uniform(4, 14), gy)
            if nails:
                for nx in [x0 + 2, x1 - 3] + [j - 2 for j in joints] + [j + 2 for j in joints]:
                    for ny in (y + 2, y + ph - 2):
                        if ny < y1 - 1:
                            c.px(nx, ny)
            y += ph
    else:
        x = x0
        while x < x1:
            c.line(x, y0, x, y1 - 1)
            if grain:
                for _ in range(int((y1 - y0) / 18)):
                    gx, gy = x + r.randint(2, max(2, ph - 2)), r.uniform(y0 + 2, y1 - 12)
                    if gx < x1 - 1:
                        c.line(gx, gy, gx, gy + r.uniform(4, 12))
            if nails:
                for ny in (y0 + 2, y1 - 3):
                    for nx in (x + 2, x + ph - 2):
                        if nx < x1 - 1:
                            c.px(nx, ny)
            x += ph

def thatch(c, pts, n=9, seed=1):
    m = c.poly(pts, 'w', heavy=1)
    r = random.Random(seed)
    ys, xs = np.nonzero(m)
    inner = c.inner(m)
    cl = c.clip; c.clip = inner
    for _ in range(n * 6):
        i = r.randrange(len(xs))
        c.line(xs[i], ys[i], xs[i] - 1, ys[i] + 3)
    c.clip = cl
    return m

def courses(c, m, ph=4, bw=7, seed=1, p=.55):
    """Broken courses of stone in a mask."""
    r = random.Random(seed)
    ys, xs = np.nonzero(m)
    if not len(ys): return
    x0, x1, y0, y1 = xs.min(), xs.max(), ys.min(), ys.max()
    cl = c.clip; c.clip = m if cl is None else cl & m
    k = 0
    for y in range(int(y1), int(y0), -ph):
        x = x0 - (bw // 2 if k % 2 else 0)
        while x < x1:
            L = bw + r.randint(-1, 1)
            if r.random() < p: c.line(x, y, x + L - 2, y)
            if r.random() < p * .8: c.line(x + L, y - ph + 1, x + L, y - 1)
            x += L
        k += 1
    c.clip = cl

def plume(c, x, y, h, lean=-10, w0=2, w1=9, seed=0):
    """Steam: puffs that grow and drift, lit from the left, open at the top."""
    r = random.Random(seed * 7 + 3)
    n = max(6, int(h / 3))
    puffs = []
    for i in range(n):
        t = i / (n - 1)
        rad = (w0 + (w1 - w0) * t ** .8) * .5
        side = (1 if i % 2 else -1) * rad * .34
        puffs.append((x + lean * t * t + side, y - h * t, max(1.2, rad * r.uniform(.8, 1.1))))
    m = np.zeros((c.h, c.w), bool)
    for px, py, rad in puffs: m |= c.mell(px, py, rad, rad * .9)
    for (ax, ay, ar), (bx, by, br) in zip(puffs, puffs[1:]):
        m |= c.mpoly([(ax - ar * .7, ay), (ax + ar * .7, ay), (bx + br * .7, by), (bx - br * .7, by)])
    c.ink(m, 0)
    yy, xx = np.indices(m.shape)
    top = y - h
    if w1 > 8: c.shade(m & ~shifted(m, -max(1, int(w1 * .2)), -1, True) & (yy > top + h * .1), '25')
    e = c.edge(m)
    gone = yy < top + h * .12
    c.ink(e & ~gone & ~(((xx + yy * 3 + seed) % 7 < 2) & ~shifted(m, 1, 0, True)))
    c.ink(e & gone & ((xx + yy) % 3 == 0))
    cl = c.clip
    c.clip = m & ~e if cl is None else cl & m & ~e
    for px, py, rad in puffs[3:-1:4]:
        if rad > 3: c.lines(arc(px, py, rad * .8, rad * .7, 200, 300))
    c.clip = cl

def ground(c, pts, tone='w', edge=1):
    g = spline(pts, n=8)
    m = c.mpoly(g + [(270, 170), (-8, 170)])
    c.put(m, tone, 0)
    if edge: c.lines(g)
    return m

def front_tufts(c, xs, seed=1):
    r = random.Random(seed)
    for x, y in points(xs):
        for k in range(3): c.line(x + (k - 1) * 2, y, x + (k - 1) * 4 - 1, y - 5 - r.randint(0, 3))

def stones(c, L):
    for x, y, w in L:
        m = c.poly(spline(at(x, y, '-1,0 -.7,-.7 0,-1 .8,-.6 1,0', w), n=4), 'w', heavy=1)
        c.shade(m & c.mpoly(at(x, y, '.2,-1 1,-1 1,0 .4,0', w)), '/')

def rope_ring(c, cx, cy, rx, ry, w=5):
    m = c.mell(cx, cy, rx, ry) & ~c.mell(cx, cy, rx - w, ry - w * .8)
    c.put(m, 'w')
    for a in range(0, 360, 14):
        q = math.radians(a)
        c.line(cx + math.cos(q) * (rx - w + 1), cy + math.sin(q) * (ry - w * .8 + 1), cx + math.cos(q + .13) * (rx - 1),
            cy + math.sin(q + .13) * (ry - 1))

def terraces(c, x0, x1, ys, lean=0, doors=True, seed=1, hs=None):
    """Steps of terraces from the back (small y) to the front."""
    r = random.Random(seed)
    for k, y in enumerate(ys):
        h = (hs[k] if hs else (ys[k + 1] - y if k + 1 < len(ys) else 14))
        g = spline([(x0, y + r.uniform(-1.5, 1.5)), (x0 + (x1 - x0) * .3, y + lean * .3 + r.uniform(-2, 2)),
            (x0 + (x1 - x0) * .7, y + lean * .7 + r.uniform(-2, 2)), (x1, y + lean)], n=8)
        m = c.mpoly(g + [(x1, y + lean + 90), (x0, y + 90)])
        c.put(m, 'w', 0)
        wall = c.mpoly([(x, yy + 2) for x, yy in g] + [(x, yy + h * .62) for x, yy in g[::-1]])
        courses(c, wall, max(3, int(h * .3)), max(5, int(h * .6)), k, .55)
        c.shade(wall & c.mrect(x0 + (x1 - x0) * .8, 0, x1, c.h), '25')
        c.lines(g); c.lines([(x, yy + h * .64) for x, yy in g])
        if doors:
            n = max(1, int((x1 - x0) / (h * 3.2)))
            for i in range(n):
                t = (i + .3 + .5 * r.random()) / n
                j = int(t * (len(g) - 1)); x, yy = g[j]
                dw, dh = max(2, h * .2), h * .5
                if x0 + 4 < x < x1 - 6:
                    c.rect(x - 1, yy + h * .62 - dh - 1, x + dw + 1, yy + h * .62, 'w', 0)
                    c.rect(x, yy + h * .62 - dh, x + dw, yy + h * .62, 'k', 0)
