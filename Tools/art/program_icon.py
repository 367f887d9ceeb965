"""The program's icon: a wain before the evening sun, in the sizes of a desktop, and as vectors."""
import numpy as np
from PIL import Image

from figures import wain
from ink import arc, Canvas, maskof, points, spline

# Sixteen pixels leave room for a tilt, its hoops and two wheels, set by hand.
SMALL = """
###__________###
#..##########..#
#...#...#..#...#
_#..#...#..#..#_
_#..#...#..#..#_
_#..#...#..#..#_
_#..#...#..#..#_
__############__
__#..........#__
__############__
_####______####_
##..##____##..##
#.##.######.##.#
#.##.#____#.##.#
##..##____##..##
_####______####_
""".split()

def small(size):
    c = Canvas(size, size)
    c.closed = True
    if size == 16: c.art(0, 0, SMALL)
    else: wain(c, 1, size - 1, size - 2, size - 3, lantern=False, hoops=size // 8, ang=12)
    return c, maskof(c.a)

def scene(size):
    """A tile with rounded corners: sun, far hills, the road, the wain."""
    c = Canvas(size, size)
    c.closed = True
    u = size / 64

    def corner(x, y, start): return arc(x, y, 10 * u, 10 * u, start, start + 90)
    tile = c.mpoly(corner(10 * u, 10 * u, 180) + corner(size - 10 * u, 10 * u, 270)
        + corner(size - 10 * u, size - 10 * u, 0) + corner(10 * u, size - 10 * u, 90))
    c.put(tile, '50')
    c.clip = c.inner(tile)
    c.ell(30 * u, 33 * u, 25 * u, 25 * u, 'w', 0)
    hills = [(x * u, y * u) for x, y in spline('-2,42 8,38 18,43 34,45 48,42 56,37 66,41', n=6)]
    c.put(c.mpoly(hills + [(size, 50 * u), (0, 50 * u)]), '75', 0); c.lines(hills)
    c.rect(0, 49 * u, size, size, 'w', 0); c.line(0, 49 * u, size, 49 * u)
    for x, y in points('10,61 31,62 53,61'): c.tuft(x * u, y * u, 3, 4 * u, 0)
    d = Canvas(size, size)
    d.closed = True
    wain(d, 8 * u, 57 * u, 49 * u, 47 * u, hoops=4, ang=12, lantern=False)
    m = maskof(d.a)
    rim = m.copy()
    for dx, dy in ((1, 0), (-1, 0), (0, -1)): rim[max(0, dy):, :] |= np.roll(np.roll(m, dx, 1), dy, 0)[max(0, dy):, :]
    c.ink(rim, 0); c.a[m] = d.a[m]
    c.clip = None
    c.ink(c.edge(tile))
    return c, tile

def bitmap(c, mask, times):
    """Black and white where the mask is set, clear elsewhere."""
    rgba = np.zeros((c.h, c.w, 4), np.uint8)
    rgba[mask] = 255
    rgba[mask & c.a.astype(bool), :3] = 0
    return Image.fromarray(rgba.repeat(times, 0).repeat(times, 1))

def vectors(c, mask):
    """The same pixels as two paths."""
    def path(bits):
        runs = []
        for y, row in enumerate(bits):
            x = 0
            while x < len(row):
                if not row[x]:
                    x += 1
                    continue
                end = x
                while end < len(row) and row[end]: end += 1
                runs.append(f'M{x} {y}h{end - x}v1h-{end - x}z')
                x = end
        return ''.join(runs)
    black = c.a.astype(bool) & mask
    size = f'viewBox="0 0 {c.w} {c.h}" width="128" height="128" shape-rendering="crispEdges"'
    return (f'<svg xmlns="http://www.w3.org/2000/svg" {size}>\n'
            f'  <path fill="#fff" d="{path(mask & ~black)}"/>\n'
            f'  <path fill="#000" d="{path(black)}"/>\n</svg>\n')

def write(root):
    folder = root / 'Desktop' / 'Data' / 'icons'
    folder.mkdir(parents=True, exist_ok=True)
    for size, (c, mask), times in ((16, small(16), 1), (24, small(24), 1), (32, small(32), 1), (48, scene(48), 1),
            (64, scene(64), 1), (128, scene(64), 2), (256, scene(64), 4), (512, scene(64), 8)):
        bitmap(c, mask, times).save(folder / f'{size}.png', optimize=True)
    (folder / 'wainroad.svg').write_text(vectors(*scene(64)))
