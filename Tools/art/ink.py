"""Pen and ink in one bit: a canvas, screen-aligned greys, shapes with edges, splines, hatching, tufts."""
import math
from collections import deque

import numpy as np
from PIL import Image, ImageDraw

PATS = {
    'mist': '8800000022000000', '12': '8800220088002200', '25': '8822882288228822',
    '50': 'AA55AA55AA55AA55', '75': '77DD77DD77DD77DD', '/': '1122448811224488',
    '\\': '8844221188442211', 'calm': '00007C000000C700', 'rough': '001824C300000000',
    'grass': '0000205000000205', 'stip': '8000100002004000', 'wood': 'FF00EF00FF00FB00',
    'w': '0000000000000000', 'k': 'FFFFFFFFFFFFFFFF',
}

def _pat(hexs):
    b = bytes.fromhex(hexs)
    return np.array([[(r >> (7 - c)) & 1 for c in range(8)] for r in b], np.uint8)
PAT = {k: _pat(v) for k, v in PATS.items()}
PAT['woodv'] = PAT['wood'].T.copy()
PAT['x'] = PAT['/'] | PAT['\\']
SS = 6  # samples a pixel, each way

def spline(pts, closed=False, n=8):
    """Catmull-Rom through the points."""
    P = [np.array(p, float) for p in points(pts)]
    m = len(P)
    out = []
    segs = m if closed else m - 1
    for i in range(segs):
        if closed:
            p0, p1, p2, p3 = P[(i - 1) % m], P[i], P[(i + 1) % m], P[(i + 2) % m]
        else:
            p1, p2 = P[i], P[i + 1]
            p0 = P[i - 1] if i else 2 * p1 - p2
            p3 = P[i + 2] if i + 2 < m else 2 * p2 - p1
        for k in range(n):
            t = k / n
            out.append(tuple(0.5 * ((2 * p1) + (-p0 + p2) * t + (2 * p0 - 5 * p1 + 4 * p2 - p3) * t * t
                                    + (-p0 + 3 * p1 - 3 * p2 + p3) * t ** 3)))
    if not closed:
        out.append(tuple(P[-1]))
    return out

def arc(cx, cy, rx, ry=None, a0=0, a1=360, n=None):
    """Points of an arc; degrees, 0 right, 90 down."""
    ry = rx if ry is None else ry
    n = n or max(8, int(max(rx, ry) * abs(a1 - a0) / 60) + 4)
    return [(cx + rx * math.cos(math.radians(a0 + (a1 - a0) * i / n)),
             cy + ry * math.sin(math.radians(a0 + (a1 - a0) * i / n))) for i in range(n + 1)]

def points(pts):
    """Points as pairs; a text is 'x,y x,y ...'."""
    if isinstance(pts, str):
        pts = [tuple(float(n) if '.' in n else int(n) for n in p.split(',')) for p in pts.split()]
    return pts

def at(x, y, pts, sx=1, sy=None):
    """The points, scaled and moved to (x, y)."""
    sy = sx if sy is None else sy
    return [(x + sx * a, y + sy * b) for a, b in points(pts)]

def shifted(m, dx, dy, fill=False):
    """The mask moved by (dx, dy)."""
    o = np.full_like(m, fill)
    h, w = m.shape
    xs, xd = (0, dx) if dx >= 0 else (-dx, 0)
    ys, yd = (0, dy) if dy >= 0 else (-dy, 0)
    if h - abs(dy) > 0 and w - abs(dx) > 0:
        o[yd:yd + h - abs(dy), xd:xd + w - abs(dx)] = m[ys:ys + h - abs(dy), xs:xs + w - abs(dx)]
    return o

class Canvas:
    """A picture in one bit, 1 black, with screen-aligned greys. (ox, oy) is where it lies on the screen. Verbs that
    begin with m answer a mask; put, ink and shade paint one; the shapes do both. `clip` bounds all painting."""
    closed = False  # True: an outline closes along the picture's own border, as a masked sprite needs

    def __init__(self, w, h, ox=0, oy=0, tone='w'):
        self.w, self.h, self.ox, self.oy = w, h, ox, oy
        self.a = np.zeros((h, w), np.uint8)
        self.clip = None
        self.T = {}
        self.touch = np.zeros((h, w), bool)
        if tone != 'w':
            self.a[:] = self.tone(tone)
    def tone(self, name):
        if isinstance(name, np.ndarray):
            return name
        if name not in self.T:
            p = PAT[name]
            yy = (np.arange(self.h) + self.oy) % 8
            xx = (np.arange(self.w) + self.ox) % 8
            self.T[name] = p[yy][:, xx]
        return self.T[name]
    def copy(self):
        c = Canvas(self.w, self.h, self.ox, self.oy)
        c.a = self.a.copy()
        return c
    # masks
    def mpoly(self, pts):
        pts = points(pts)
        m = np.zeros((self.h, self.w), bool)
        xs = [p[0] for p in pts]; ys = [p[1] for p in pts]
        x0, x1 = max(0, int(math.floor(min(xs))) - 1), min(self.w, int(math.ceil(max(xs))) + 2)
        y0, y1 = max(0, int(math.floor(min(ys))) - 1), min(self.h, int(math.ceil(max(ys))) + 2)
        if x1 <= x0 or y1 <= y0:
            return m
        im = Image.new('L', ((x1 - x0) * SS, (y1 - y0) * SS), 0)
        ImageDraw.Draw(im).polygon([((x - x0) * SS, (y - y0) * SS) for x, y in pts], fill=1)
        b = np.asarray(im).reshape(y1 - y0, SS, x1 - x0, SS).sum((1, 3))
        m[y0:y1, x0:x1] = b * 2 > SS * SS
        return m
    def mstroke(self, pts, w, w2=None):
        """A stroke of width w (tapering to w2) with round ends."""
        pts = points(pts)
        m = np.zeros((self.h, self.w), bool)
        w2 = w if w2 is None else w2
        mw = max(w, w2)
        xs = [p[0] for p in pts]; ys = [p[1] for p in pts]
        x0, x1 = max(0, int(math.floor(min(xs) - mw)) - 1), min(self.w, int(math.ceil(max(xs) + mw)) + 2)
        y0, y1 = max(0, int(math.floor(min(ys) - mw)) - 1), min(self.h, int(math.ceil(max(ys) + mw)) + 2)
        if x1 <= x0 or y1 <= y0:
            return m
        im = Image.new('L', ((x1 - x0) * SS, (y1 - y0) * SS), 0)
        d = ImageDraw.Draw(im)
        n = len(pts)
        tot = sum(math.dist(pts[i], pts[i + 1]) for i in range(n - 1)) or 1
        run = 0
        for i in range(n - 1):
            L = math.dist(pts[i], pts[i + 1])
            k = max(1, int(L * 3))
            for j in range(k + 1):
                t = j / k
                r = (w + (w2 - w) * (run + L * t) / tot) / 2 * SS
                x = (pts[i][0] + (pts[i + 1][0] - pts[i][0]) * t - x0) * SS
                y = (pts[i][1] + (pts[i + 1][1] - pts[i][1]) * t - y0) * SS
                d.ellipse((x - r, y - r, x + r, y + r), fill=1)
            run += L
        b = np.asarray(im).reshape(y1 - y0, SS, x1 - x0, SS).sum((1, 3))
        m[y0:y1, x0:x1] = b * 2 > SS * SS
        return m
    def mrect(self, x0, y0, x1, y1):
        m = np.zeros((self.h, self.w), bool)
        m[max(0, int(y0)):max(0, int(y1)), max(0, int(x0)):max(0, int(x1))] = True
        return m
    def mell(self, cx, cy, rx, ry=None):
        return self.mpoly(arc(cx, cy, rx, ry))
    # painting
    def put(self, mask, tone='w', edge=1, heavy=0, broken=0):
        """Paint a mask with a tone and an inner edge; heavy adds a pixel on right and lower sides;
        broken leaves gaps in left and top edges."""
        vis = mask if self.clip is None else mask & self.clip
        if tone is not None:
            t = self.tone(tone)
            self.a[vis] = t[vis]
        if edge:
            e = self.edge(mask)
            if broken:
                lit = e & ~(mask & (~shifted(mask, -1, 0, True) | ~shifted(mask, 0, -1, True)))
                yy, xx = np.indices(mask.shape)
                e = e & ~(lit & ((xx * 7 + yy * 5) % 9 < broken))
            if heavy:
                k = heavy + 1
                e = e | (mask & ~(shifted(mask, -k, 0, True) & shifted(mask, 0, -k, True)))
            if self.clip is not None:
                e = e & self.clip
            self.a[e] = 1 if edge == 1 else 0
        self.touch |= vis
        return mask
    def edge(self, m):
        """The outermost pixels of a mask."""
        o = not self.closed
        return m & ~(shifted(m, 1, 0, o) & shifted(m, -1, 0, o) & shifted(m, 0, 1, o) & shifted(m, 0, -1, o))
    def inner(self, m):
        return m & ~self.edge(m)
    def ink(self, mask, c=1):
        if self.clip is not None:
            mask = mask & self.clip
        self.a[mask] = c
        self.touch |= mask
    def shade(self, mask, tone):
        """Or the tone's black dots in."""
        if self.clip is not None:
            mask = mask & self.clip
        t = self.tone(tone).astype(bool)
        self.a[mask & t] = 1
        self.touch |= mask
    # shapes
    def poly(self, pts, tone='w', edge=1, **k):
        return self.put(self.mpoly(pts), tone, edge, **k)
    def blob(self, pts, tone='w', edge=1, **k):
        return self.put(self.mpoly(spline(pts, True)), tone, edge, **k)
    def rect(self, x0, y0, x1, y1, tone='w', edge=1, **k):
        return self.put(self.mrect(x0, y0, x1, y1), tone, edge, **k)
    def ell(self, cx, cy, rx, ry=None, tone='w', edge=1, **k):
        return self.put(self.mell(cx, cy, rx, ry), tone, edge, **k)
    def stroke(self, pts, w=1.0, w2=None, c=1):
        self.ink(self.mstroke(pts, w, w2), c)
    def band(self, pts, w, w2=None, tone='w', edge=1, **k):
        return self.put(self.mstroke(pts, w, w2), tone, edge, **k)
    def px(self, x, y, c=1):
        x, y = int(x), int(y)
        if 0 <= x < self.w and 0 <= y < self.h and (self.clip is None or self.clip[y, x]):
            self.a[y, x] = c
            self.touch[y, x] = True
    def line(self, x0, y0, x1, y1, c=1, dash=None):
        x0, y0, x1, y1 = int(round(x0)), int(round(y0)), int(round(x1)), int(round(y1))
        dx, dy = abs(x1 - x0), -abs(y1 - y0)
        sx, sy = (1 if x0 < x1 else -1), (1 if y0 < y1 else -1)
        e = dx + dy
        i = 0
        while True:
            if dash is None or dash[i % len(dash)]:
                self.px(x0, y0, c)
            i += 1
            if x0 == x1 and y0 == y1:
                break
            e2 = 2 * e
            if e2 >= dy:
                e += dy; x0 += sx
            if e2 <= dx:
                e += dx; y0 += sy
    def lines(self, pts, c=1, dash=None):
        pts = points(pts)
        for (a, b), (d, e) in zip(pts, pts[1:]):
            self.line(a, b, d, e, c, dash)
    def curve(self, pts, c=1, dash=None, n=8):
        self.lines(spline(pts, n=n), c, dash)
    def art(self, x, y, rows):
        """Hand-set pixels: # black, . white, anything else nothing."""
        for j, row in enumerate(rows):
            for i, ch in enumerate(row):
                if ch in '#.':
                    self.px(x + i, y + j, ch == '#')
    def blit(self, c, x, y, mask=None):
        """Copies another canvas in, where the mask is set; None is all of it. It has to lie inside."""
        part = self.a[y:y + c.h, x:x + c.w]
        keep = np.ones((c.h, c.w), bool) if mask is None else mask
        part[keep] = c.a[keep]
    def crop(self, x, y, w, h):
        c = Canvas(w, h, self.ox + x, self.oy + y)
        c.a = self.a[y:y + h, x:x + w].copy()
        return c
    # textures by hand
    def hatch(self, mask, gap=3, slope=1, c=1, off=0):
        """Diagonal engraving lines inside a mask: slope 1 rises to the right, 0 is level, None upright."""
        yy, xx = np.indices(mask.shape)
        v = xx if slope is None else yy if slope == 0 else xx + yy * slope
        m = mask & ((v + off + self.ox + self.oy) % gap == 0)
        self.ink(m, c)
    def tuft(self, x, y, k=3, h=4, lean=-1, c=1):
        """A tuft of three (or so) strokes."""
        for i in range(k):
            d = i - (k - 1) / 2
            self.line(x + d, y, x + d * 2 + lean, y - h + abs(d), c)

class Sprite(Canvas):
    """A picture that the game cuts out along its outline."""
    closed = True

def maskof(a):
    """Black and the white it encloses, as the game's masks are made."""
    h, w = a.shape
    out = np.zeros((h + 2, w + 2), bool)
    blk = np.zeros((h + 2, w + 2), bool); blk[1:-1, 1:-1] = a.astype(bool)
    q = deque([(0, 0)]); out[0, 0] = True
    while q:
        y, x = q.popleft()
        for dy, dx in ((1, 0), (-1, 0), (0, 1), (0, -1)):
            Y, X = y + dy, x + dx
            if 0 <= Y < h + 2 and 0 <= X < w + 2 and not out[Y, X] and not blk[Y, X]:
                out[Y, X] = True; q.append((Y, X))
    return ~out[1:-1, 1:-1]
