#!/usr/bin/env python3
"""Cuts pictures of the game and sets them side by side: strip.py OUT.png COLUMNS LEFT,TOP,RIGHT,BOTTOM SHOT.png...

Reads the PNG files that a script's `shot` writes (8 bits, gray or colour) and writes one of 1 bit. Several shots stand in rows of
COLUMNS, with a line round each. Needs Python 3 alone.
"""

import struct
import sys
import zlib

GAP = 6  # white between two pictures


def read_png(path):
    """Rows of booleans, true for black."""
    data = open(path, "rb").read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        sys.exit(path + ": no PNG file")
    at, packed, width, height, channels = 8, b"", 0, 0, 0
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour, _, _, interlaced = struct.unpack(">IIBBBBB", body)
            channels = {0: 1, 2: 3, 4: 2, 6: 4}.get(colour, 0)
            if depth != 8 or channels == 0 or interlaced:
                sys.exit(path + ": not of the kind that `shot` writes")
        elif kind == b"IDAT":
            packed += body
        at += length + 12
    raw, rows, before = zlib.decompress(packed), [], bytes(width * channels)
    for v in range(height):
        start = v * (width * channels + 1)
        line = bytearray(raw[start + 1:start + 1 + width * channels])
        unfilter(raw[start], line, before, channels)
        rows.append([line[h * channels] < 128 for h in range(width)])
        before = line
    return rows


def unfilter(kind, line, above, step):
    for i in range(len(line)) if kind else ():
        a = line[i - step] if i >= step else 0
        b, c = above[i], above[i - step] if i >= step else 0
        if kind == 4:
            p = a + b - c
            guess = min((abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2]
        else:
            guess = (a, b, (a + b) // 2)[kind - 1]
        line[i] = (line[i] + guess) & 255


def write_png(path, rows):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    width, raw = len(rows[0]), bytearray()
    for row in rows:
        line = bytearray([255] * ((width + 7) // 8))
        for h, black in enumerate(row):
            if black:
                line[h // 8] &= ~(0x80 >> h % 8)
        raw += b"\0" + line
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, len(rows), 1, 0, 0, 0, 0))
                  + chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


def main():
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    out, columns, shots = sys.argv[1], int(sys.argv[2]), sys.argv[4:]
    left, top, right, bottom = map(int, sys.argv[3].split(","))
    parts = []
    for shot in shots:
        rows = read_png(shot)
        if not (0 <= left < right <= len(rows[0]) and 0 <= top < bottom <= len(rows)):
            sys.exit(shot + ": the part does not lie in the picture")
        part = [row[left:right] for row in rows[top:bottom]]
        if len(shots) > 1:
            line = [True] * (right - left + 2)
            part = [line] + [[True] + row + [True] for row in part] + [line]
        parts.append(part)
    high, wide = len(parts[0]), len(parts[0][0])
    columns = min(columns, len(parts))
    lines = (len(parts) + columns - 1) // columns
    sheet = [[False] * (columns * (wide + GAP) - GAP) for _ in range(lines * (high + GAP) - GAP)]
    for i, part in enumerate(parts):
        v, h = i // columns * (high + GAP), i % columns * (wide + GAP)
        for row, line in enumerate(part):
            sheet[v + row][h:h + wide] = line
    write_png(out, sheet)


if __name__ == "__main__":
    main()
