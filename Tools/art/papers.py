"""The letter with its inked door, and a page of the guide."""
import math
import random

from country import courses
from ink import arc, Canvas, spline

def letter():
    """The inked door in the corner of the letter, with a deckle edge and a seal."""
    c = Canvas(200, 90); r = random.Random(5); P = []
    for x in range(2, 198, 5): P.append((x, 3 + r.uniform(-1.2, 1.4)))
    for y in range(4, 86, 5): P.append((196 + r.uniform(-1.4, 1.2), y))
    for x in range(196, 2, -5): P.append((x, 86 + r.uniform(-1.4, 1.2)))
    for y in range(84, 4, -5): P.append((4 + r.uniform(-1.2, 1.4), y))
    c.poly([(x + 2, y + 2) for x, y in P], '50', 0); c.poly(P, 'w'); c.lines([(x, 88) for x in (0, 0)])
    # the door, drawn with a reed pen
    x0, y0 = 26, 12
    m = c.poly([(x0, 78), (x0, y0 + 18)] + arc(x0 + 22, y0 + 18, 22, 18, 180, 360) + [(x0 + 44, 78)], 'w')
    courses(c, m, 6, 10, 4, .8)
    d = c.poly([(x0 + 8, 78), (x0 + 8, y0 + 22)] + arc(x0 + 22, y0 + 22, 14, 12, 180, 360) + [(x0 + 36, 78)], 'w',
        heavy=1)
    c.hatch(c.inner(d), 4, None, off=1)
    for y in (y0 + 24, y0 + 40, y0 + 56):
        c.line(x0 + 8, y, x0 + 35, y); c.line(x0 + 8, y + 1, x0 + 35, y + 1)
    c.ell(x0 + 31, y0 + 46, 2, 2, 'w'); c.rect(x0 + 17, y0 + 28, x0 + 27, y0 + 37, 'w')
    c.line(x0 + 22, y0 + 28, x0 + 22, y0 + 36); c.line(10, 78, 88, 78); c.line(14, 80, 82, 80); c.line(20, 82, 60, 82)
    for x, h in ((14, 14), (17, 20), (79, 16), (82, 10)):
        c.curve([(x, 78), (x + 1, 78 - h * .6), (x - 2, 78 - h)])
    # a rosemary in a pot, and the number in blank: three penned flourishes
    c.poly('73,77 71,69 81,69 79,77', 'w')
    for k, y in enumerate((20, 32)):
        pts = []
        for i in range(24):
            t = i / 23; pts.append((98 + t * (74 - 20 * k), y + math.sin(t * 22 + k) * (2.4 if i % 3 else 1)))
        c.lines(spline(pts, n=4))
    for y, w in ((46, 82), (54, 78), (62, 66)):
        c.lines([(98, y), (98 + w, y)], dash=(1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 0, 0))
    m = c.ell(170, 72, 10, 9, 'k'); c.ink(c.edge(c.mell(170, 72, 7.6, 6.8)), 0)
    c.ink(c.mrect(167, 69, 173, 77) & c.mpoly([(167, 77), (167, 71)] + arc(170, 71, 3, 3, 180, 360) + [(173, 77)]), 0)
    c.ink(c.mrect(169, 72, 172, 77))
    return c

def guide():
    """An open notebook page, sewn at the left; the frame, tab and corner that the program draws keep to white paper."""
    c = Canvas(262, 199, 64, 9); c.a[:] = 0
    # the gutter: the edge of the page before, the fold in shade, the sewing
    c.shade(c.mrect(0, 0, 3, 199), '75'); c.shade(c.mrect(3, 0, 7, 199), '25'); c.line(3, 0, 3, 198)
    for y in list(range(10, 52, 14)) + list(range(116, 190, 14)):
        c.ell(13.5, y, 1.6, 1.6, 'k'); c.line(4, y - 1, 12, y - 1); c.line(4, y, 12, y)
        if y not in (38,) and y + 14 < 190:
            c.line(13, y + 3, 13, y + 11); c.lines([(14, y + 3), (14, y + 11)], dash=(1, 0))
    # the place of the tab: a small cloth loop behind it
    c.rect(0, 56, 24, 108, 'w', 0); c.shade(c.mrect(0, 56, 3, 108), '75'); c.line(3, 56, 3, 107)
    c.lines('4,58 20,58', dash=(1, 1, 0)); c.lines('4,105 20,105', dash=(1, 1, 0))
    # the foot: a worn lower edge, leaves beneath it, and a small pressed sprig by the number
    c.line(3, 196, 237, 196); c.lines('3,198 261,198'); p = spline('150,192 172,187 196,186 220,181', n=8); c.lines(p)
    for i, t in enumerate((.16, .3, .44, .58, .72, .86)):
        x, y = p[int(t * (len(p) - 1))]
        for s_ in (-1, 1):
            m = c.poly(spline([(x, y), (x + 4, y + s_ * 4 - 1), (x + 9, y + s_ * 4.6 - 2), (x + 5, y + s_ * 1.4)], True,
                4), 'w')
            if s_ > 0: c.shade(m, '50')
    c.ell(223, 180.4, 2.2, 2.2, 'k')
    return c

def pictures():
    return {'Start/letter': letter(), 'People/guide-page': guide()}
