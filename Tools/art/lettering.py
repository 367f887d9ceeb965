"""Lettering in the game's own strikes."""
from pathlib import Path

RESOURCES = Path(__file__).resolve().parents[2] / "Resources"
FONTS = {}

class Bdf:
    def __init__(self, path):
        self.g = {}; cur = None
        for ln in open(path, encoding='utf-8', errors='replace'):
            t = ln.split()
            if not t: continue
            if t[0] == 'FONTBOUNDINGBOX': self.bb = list(map(int, t[1:5]))
            elif t[0] == 'FONT_ASCENT': self.asc = int(t[1])
            elif t[0] == 'FONT_DESCENT': self.desc = int(t[1])
            elif t[0] == 'STARTCHAR':
                cur = {'rows': []}; inb = False
            elif t[0] == 'ENCODING': cur['e'] = int(t[1])
            elif t[0] == 'DWIDTH': cur['dw'] = int(t[1])
            elif t[0] == 'BBX': cur['bbx'] = list(map(int, t[1:5]))
            elif t[0] == 'BITMAP': inb = True
            elif t[0] == 'ENDCHAR':
                self.g[cur['e']] = cur; inb = False
            elif cur is not None and inb: cur['rows'].append(t[0])
    def glyph(self, ch):
        for k in (ord(ch), (ch.encode('mac_roman', 'replace') or b'?')[0]):
            if k in self.g: return self.g[k]
        return self.g.get(63)
    def width(self, t, bold=False):
        return sum(self.glyph(c)['dw'] + (1 if bold else 0) for c in t)
    def draw(self, c, x, y, t, ink=1, bold=False):
        """y is the baseline row."""
        for ch in t:
            g = self.glyph(ch); w, h, bx, by = g['bbx']
            for j, row in enumerate(g['rows']):
                v = int(row, 16); n = len(row) * 4
                for i in range(w):
                    if (v >> (n - 1 - i)) & 1:
                        c.px(x + bx + i, y - by - h + j, ink)
                        if bold: c.px(x + bx + i + 1, y - by - h + j, ink)
            x += g['dw'] + (1 if bold else 0)
        return x

def font(name):
    """A strike of the game by its file name."""
    if name not in FONTS:
        FONTS[name] = Bdf(next(RESOURCES.rglob(name + '.bdf')))
    return FONTS[name]

def say(c, name, x, y, t, centre=False, bold=False, ink=1):
    """Writes a text with its baseline at row y, from x or round it."""
    f = font(name)
    if centre:
        x -= f.width(t, bold) // 2
    f.draw(c, int(x), int(y), t, ink, bold)

def wrap(name, t, width):
    """The text in lines of at most that width."""
    f = font(name); out, line = [], ''
    for w in t.split(' '):
        longer = (line + ' ' + w).strip()
        if f.width(longer) > width and line:
            out.append(line); line = w
        else:
            line = longer
    return out + [line]
