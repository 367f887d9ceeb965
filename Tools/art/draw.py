#!/usr/bin/env python3
"""Draws every picture of the game anew, as 1-bit PNG files under Resources/, and the program's icon."""
import importlib
import sys
from pathlib import Path

import numpy as np
from PIL import Image

from ink import Canvas

ROOT = Path(__file__).resolve().parents[2]
MODULES = ('frame weather travel places_small trail_map title icons cursors start papers forks animals hunting '
    'crossing raft people landmarks_plain landmarks_hills landmarks_heights vale introduction program_icon').split()


def path_of(name):
    """System/Icons/stop lies in the System's pictures, everything else in the game's."""
    part = 'System' if name.startswith('System/') else 'Wainroad'
    return ROOT / 'Resources' / part / 'Pictures' / (name.removeprefix('System/') + '.png')


def save(picture, path):
    bits = picture.a if isinstance(picture, Canvas) else picture
    image = Image.fromarray(np.where(bits, 0, 255).astype(np.uint8)).convert('1', dither=Image.Dither.NONE)
    path.parent.mkdir(parents=True, exist_ok=True)
    image.save(path, optimize=True)


def main(names):
    """Draws the named modules, or all; then a picture that none of them draws is told."""
    drawn = set()
    for name in names or MODULES:
        module = importlib.import_module(name)
        if hasattr(module, 'write'):
            module.write(ROOT)  # what is no resource writes itself
            continue
        for picture, canvas in module.pictures().items():
            drawn.add(path_of(picture))
            save(canvas, path_of(picture))
    strays = set(ROOT.glob('Resources/*/Pictures/**/*.png')) - drawn
    if strays and not names:
        print('No module draws', *sorted(str(path.relative_to(ROOT)) for path in strays), file=sys.stderr)


if __name__ == '__main__':
    main(sys.argv[1:])
