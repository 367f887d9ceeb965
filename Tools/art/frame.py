"""The rope round the window, the key of an icon button, the posts beside the panels."""
import numpy as np

from country import planks
from ink import arc, Canvas, shifted
from lettering import say

def border():
    def rope(n):
        """A rope of 7 rows and n columns between two lines."""
        c = Canvas(n, 7); c.a[0] = 1; c.a[6] = 1
        for x in range(n):
            for r in range(1, 6):
                k = (x + r) % 6
                if k == 0: c.a[r, x] = 1
                if r in (2, 3) and k == 1: c.a[r, x] = 1
        return c
    def knot(c, x, y):
        c.art(x, y, ["#######", "##...##", "#.#.#.#", "#..#..#", "#.#.#.#", "##...##", "#######"])
    top, bot = rope(498), rope(498); side = rope(322); L = Canvas(7, 322); L.a = side.a.T.copy()
    R = Canvas(7, 322); R.a = side.a.T[:, ::-1].copy()
    for s_ in (L, R):
        for y in (0, 315):
            knot(s_, 0, y)
    bot.a = bot.a[::-1].copy()
    return top, L, bot, R

def key(down):
    c = Canvas(42, 46, 9, 9); c.closed = True
    def rr(x0, y0, x1, y1, r=4):
        return c.mpoly(arc(x0 + r, y0 + r, r, r, 180, 270) + arc(x1 - r, y0 + r, r, r, 270, 360)
            + arc(x1 - r, y1 - r, r, r, 0, 90) + arc(x0 + r, y1 - r, r, r, 90, 180))
    if not down:
        lip = rr(3, 5, 42, 46, 5) | rr(0, 1, 39, 43); c.put(lip, '50'); face = rr(0, 1, 38, 42)
        # end grain of the lip
        for k in (1, 2, 3):
            c.ink(c.edge(shifted(face, k + 1, k + 1)) & lip & ~face & (np.indices(face.shape)[1] % 2 == 0), 1)
        c.put(face, 'w'); c.line(39, 6, 39, 40); c.line(5, 43, 37, 43); c.line(39, 6, 39, 40, 1)
    else:
        face = rr(4, 4, 42, 45); c.put(face, 'w'); c.put(rr(4, 4, 42, 45), 'w'); inner = c.inner(face)
        sh2 = inner & ~(shifted(inner, 1, 0) & shifted(inner, 0, 1))
        # the shade of the frame it is pressed into
        c.ink(sh2)
    return c

def post(words, right=False):
    c = Canvas(52, 304, 451 if right else 9, 9)
    planks(c, 0, 0, 52, 304, ph=13, vertical=True, seed=5 + right, nails=False)
    for i, wd in enumerate(words):
        v = 3 + 60 * i; c.rect(3, v, 49, v + 59 if i < 4 else v + 60, 'w')
        for nx in (1, 50):
            c.px(nx, v + 2); c.px(nx, v + 55)
        say(c, 'small-9', 26, v + 56, wd, centre=True)
    return c

def pictures():
    out = dict(zip(('border-top', 'border-left', 'border-bottom', 'border-right'), border()))
    out = {'Frame/' + n: c for n, c in out.items()} | {'Frame/key-up': key(False), 'Frame/key-down': key(True)}
    out['Travel/left-post'] = post(['View', 'Guide', 'Party', 'Food', 'Buy'])
    out['Travel/right-post'] = post(['Trade', 'Talk', 'Rest', 'Pace', 'Hunt'], True)
    return out
