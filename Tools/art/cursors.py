"""Cursors of 16 by 16, each with its mask."""
import math

import numpy as np

from ink import Canvas, shifted

def cursors():
    C = {}
    def new():
        return np.zeros((16, 16), np.uint8), np.zeros((16, 16), bool)
    def done(n, ink, hot, fat=True):
        mask = ink.astype(bool)
        if fat:
            g = mask.copy()
            for dx in (-1, 0, 1):
                for dy in (-1, 0, 1): g |= shifted(mask, dx, dy)
            mask = g
        C[n] = (ink, mask, hot)
    # text beam
    a, _ = new(); a[1:15, 7] = 1; a[0, 5:7] = 1; a[0, 8:10] = 1; a[15, 5:7] = 1; a[15, 8:10] = 1; a[11, 6:9] = 1
    done(1, a, (8, 7), fat=False); a, _ = new(); a[7, 1:14] = 1; a[1:14, 7] = 1; done(2, a, (7, 7))
    # thick cross
    a, _ = new(); a[1:14, 5:10] = 1; a[5:10, 1:14] = 1; a[2:13, 6:9] = 0; a[6:9, 2:13] = 0
    m = np.zeros((16, 16), bool); m[0:15, 4:11] = True; m[4:11, 0:15] = True; C[3] = (a, m, (7, 7))
    # the hour-glass
    c = Canvas(16, 16)
    c.art(2, 0, ["###########", "#.........#", "###########", "_#.......#_", "_#.#.#.#.#_", "_##.#.#.##_",
        "__##.#.##__", "___##.##___", "___##.##___", "__#..#..#__", "_#...#...#_", "_#...#...#_", "_#.#####.#_",
        "###########", "#.........#", "###########"])
    C[4] = (c.a, c.touch, (8, 8))
    # the hunter's cross-hair: an open ring of 13 with four ticks
    a, _ = new()
    for y in range(16):
        for x in range(16):
            d = math.hypot(x - 7, y - 7)
            if 5.5 <= d < 6.5: a[y, x] = 1
    a[7, 1:6] = 1; a[7, 9:14] = 1; a[1:6, 7] = 1; a[9:14, 7] = 1; a[7, 5] = 0; a[7, 9] = 0; a[5, 7] = 0; a[9, 7] = 0
    a[7, 7] = 1; done(128, a, (7, 7))
    return C

def pictures():
    names = {1: 'System/Icons/beam', 2: 'System/Icons/cross', 3: 'System/Icons/plus', 4: 'System/Icons/hourglass',
        128: 'Icons/crosshair'}
    out = {}
    for k, (ink, mask, _) in cursors().items():
        out[names[k]] = ink
        if k != 1: out[names[k] + '-mask'] = mask.astype(np.uint8)
    return out
