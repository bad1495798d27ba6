#!/usr/bin/env python3
"""Draws the program's icons and writes them as .ico files (32-bit colour,
32x32 and 16x16) beside this script. Standard library only.

Shapes are given on a 32x32 grid and drawn four times finer, then averaged
down, so the edges come out smooth at both sizes."""

import os
import struct

SCALE = 4
PAPER = (255, 255, 255)
EDGE = (96, 104, 120)
FOLD = (214, 220, 230)
INK = (40, 72, 140)
BULLETS = [(200, 60, 50), (220, 150, 30), (50, 140, 70), (40, 110, 190)]
BACKDROP = (62, 96, 150)


class Canvas:
    def __init__(self, size):
        self.size = size * SCALE
        self.px = [[None] * self.size for _ in range(self.size)]

    def rect(self, x0, y0, x1, y1, colour):
        """Fills [x0, x1) x [y0, y1) in grid units."""
        for y in range(int(y0 * SCALE), int(y1 * SCALE)):
            for x in range(int(x0 * SCALE), int(x1 * SCALE)):
                self.px[y][x] = colour

    def triangle_fold(self, x0, y0, n, colour):
        """The turned-down corner: the lower-left half of an n-square."""
        for dy in range(int(n * SCALE)):
            for dx in range(dy + 1):
                self.px[int(y0 * SCALE) + dy][int(x0 * SCALE) + dx] = colour

    def cut_corner(self, x0, y0, n):
        """Clears the upper-right half of an n-square, where the fold was."""
        for dy in range(int(n * SCALE)):
            for dx in range(dy + 1, int(n * SCALE)):
                self.px[int(y0 * SCALE) + dy][int(x0 * SCALE) + dx] = None

    def downsample(self, size):
        """Averages each SCALE x SCALE block into one BGRA pixel."""
        step = self.size // size
        rows = []
        for y in range(size):
            row = []
            for x in range(size):
                block = [self.px[y * step + j][x * step + i]
                         for j in range(step) for i in range(step)]
                solid = [c for c in block if c is not None]
                alpha = 255 * len(solid) // len(block)
                if solid:
                    r, g, b = (sum(c[k] for c in solid) // len(solid) for k in range(3))
                else:
                    r = g = b = 0
                row.append((b, g, r, alpha))
            rows.append(row)
        return rows


def page(c):
    """A sheet of paper with a turned-down top-right corner."""
    c.rect(5, 2, 27, 30, EDGE)
    c.rect(6, 3, 26, 29, PAPER)
    c.cut_corner(20, 2, 7)
    c.triangle_fold(20, 2, 7, FOLD)
    for i in range(7):  # the diagonal edge of the fold
        c.rect(20 + i, 2 + i, 21 + i, 3 + i, EDGE)


def draw_editfile(c):
    page(c)
    for y, length in [(10, 12), (14, 16), (18, 10), (22, 14), (26, 8)]:
        c.rect(8, y, 8 + length, y + 2, INK)


def draw_logview(c):
    page(c)
    for n, y in enumerate([10, 15, 20, 25]):
        c.rect(8, y - 1, 12, y + 3, BULLETS[n])
        c.rect(14, y, 14 + [10, 6, 8, 5][n], y + 2, INK)


def draw_app(c):
    c.rect(1, 1, 31, 31, BACKDROP)
    c.rect(5, 5, 25, 29, EDGE)
    c.rect(6, 6, 24, 28, PAPER)
    c.rect(6, 6, 24, 9, FOLD)
    for y, length in [(12, 12), (16, 8), (20, 13), (24, 9)]:
        c.rect(8, y, 8 + length, y + 2, INK)


def image_entry(draw, size):
    c = Canvas(32)
    draw(c)
    rows = c.downsample(size)
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    colour = b"".join(bytes(p) for row in reversed(rows) for p in row)
    mask_stride = ((size + 31) // 32) * 4
    mask = bytearray()
    for row in reversed(rows):
        bits = bytearray(mask_stride)
        for x, p in enumerate(row):
            if p[3] == 0:
                bits[x // 8] |= 0x80 >> (x % 8)
        mask += bits
    return header + colour + bytes(mask)


def write_icon(path, draw):
    images = [image_entry(draw, size) for size in (32, 16)]
    out = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for size, data in zip((32, 16), images):
        out += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    with open(path, "wb") as f:
        f.write(out + b"".join(images))


if __name__ == "__main__":
    here = os.path.dirname(os.path.abspath(__file__))
    write_icon(os.path.join(here, "editfile.ico"), draw_editfile)
    write_icon(os.path.join(here, "logview.ico"), draw_logview)
    write_icon(os.path.join(here, "app.ico"), draw_app)
