#!/usr/bin/env python3
"""Draws the tool bar's pictures and writes them as two bitmaps beside this
script: toolbar.bmp in colour, where pure blue stands for the button's face,
and toolbar-mono.bmp in black on white. Standard library only.

The bitmaps are 256 by 96 pixels, a grid of 32-pixel cells, 8 to a row; of
each cell the 20 by 17 pixels at its top left hold the picture, in the order
of the bar's table."""

import os
import struct

W, H, CELL = 256, 96, 32
FACE = (0, 0, 255)
K, WHITE, GREY, DARK = (0, 0, 0), (255, 255, 255), (192, 192, 192), (128, 128, 128)
YELLOW, OCHRE, RED, GREEN = (255, 255, 0), (128, 128, 0), (192, 0, 0), (0, 128, 0)
NAVY, TEAL, BROWN = (0, 0, 128), (0, 128, 128), (128, 64, 0)


class Cell:
    def __init__(self, px, index):
        self.px, self.x0, self.y0 = px, (index % 8) * CELL, (index // 8) * CELL

    def dot(self, x, y, c):
        if 0 <= x < 20 and 0 <= y < 17:
            self.px[self.y0 + y][self.x0 + x] = c

    def fill(self, x0, y0, x1, y1, c):
        for y in range(y0, y1 + 1):
            for x in range(x0, x1 + 1):
                self.dot(x, y, c)

    def box(self, x0, y0, x1, y1, inside, edge=K):
        self.fill(x0, y0, x1, y1, edge)
        if x1 - x0 > 1 and y1 - y0 > 1:
            self.fill(x0 + 1, y0 + 1, x1 - 1, y1 - 1, inside)

    def line(self, x0, y0, x1, y1, c):
        n = max(abs(x1 - x0), abs(y1 - y0), 1)
        for i in range(n + 1):
            self.dot(round(x0 + (x1 - x0) * i / n), round(y0 + (y1 - y0) * i / n), c)

    def ring(self, cx, cy, r, c, inside=None):
        for y in range(-r - 1, r + 2):
            for x in range(-r - 1, r + 2):
                d = (x * x + y * y) ** 0.5
                if inside and d < r - 0.5:
                    self.dot(cx + x, cy + y, inside)
                elif abs(d - r) < 0.6:
                    self.dot(cx + x, cy + y, c)

    def page(self, x0, y0, x1, y1, lines=True):
        self.box(x0, y0, x1, y1, WHITE)
        for y in range(y0 + 3, y1 - 1, 2) if lines else []:
            self.line(x0 + 2, y, x1 - 2, y, DARK)

    def glyph(self, x0, y0, rows, c):
        for dy, row in enumerate(rows):
            for dx, ch in enumerate(row):
                if ch == "#":
                    self.dot(x0 + dx, y0 + dy, c)


def arrow(c, x0, x1, y, colour):
    step = 1 if x1 > x0 else -1
    c.line(x0, y, x1, y, colour)
    c.line(x0, y + 1, x1, y + 1, colour)
    for i in range(1, 4):
        c.line(x1 - step * i, y - i, x1 - step * i, y + 1 + i, colour)


def magnifier(c, cx, cy):
    c.ring(cx, cy, 4, K, (160, 224, 255))
    for i in range(4):
        c.fill(cx + 3 + i, cy + 3 + i, cx + 4 + i, cy + 4 + i, BROWN)


def shift(c, left):
    for y in (2, 6, 10, 14):
        c.line(9 if left else 0, y, 19 if left else 10, y, K)
    arrow(c, 7, 1, 7, NAVY) if left else arrow(c, 12, 18, 7, NAVY)


def bricks(c):
    for row, y in enumerate(range(6, 17, 4)):
        for x in range(-4 if row % 2 else 0, 20, 8):
            c.box(max(x, 0), y, min(x + 8, 19), y + 4, RED, DARK)


def pictures():
    def new(c):
        c.page(3, 0, 15, 16, False)
        c.fill(12, 0, 15, 3, FACE)
        c.line(12, 0, 15, 3, K)
        c.line(12, 0, 12, 3, K)
        c.line(12, 3, 15, 3, K)

    def open_(c):
        c.box(0, 4, 15, 15, OCHRE)
        c.box(1, 2, 6, 4, OCHRE)
        for i in range(6):
            c.line(3 + i, 8 + i // 2, 19 - i // 2, 8 + i // 2, YELLOW)
        c.line(2, 15, 5, 8, K)
        c.line(5, 8, 19, 8, K)
        c.line(19, 8, 15, 15, K)

    def save(c):
        c.box(1, 0, 17, 16, NAVY)
        c.box(4, 0, 14, 7, WHITE)
        c.box(5, 10, 13, 16, GREY)
        c.fill(10, 11, 11, 15, NAVY)

    def manage(c):
        c.box(2, 0, 17, 16, GREY)
        for y in (1, 6, 11):
            c.box(3, y, 16, y + 4, GREY, DARK)
            c.fill(8, y + 2, 11, y + 2, K)

    def print_(c):
        c.page(5, 0, 14, 7, True)
        c.box(0, 7, 19, 14, GREY)
        c.fill(15, 9, 16, 9, GREEN)
        c.box(4, 12, 15, 16, WHITE)

    def cut(c):
        c.line(6, 0, 12, 10, K)
        c.line(13, 0, 7, 10, K)
        c.ring(5, 13, 3, K)
        c.ring(14, 13, 3, K)

    def copy(c):
        c.page(0, 0, 10, 11)
        c.page(7, 5, 17, 16)

    def paste(c):
        c.box(1, 2, 14, 16, BROWN)
        c.box(5, 0, 10, 3, GREY)
        c.page(8, 6, 19, 16)

    def undo(c):
        c.ring(11, 9, 6, NAVY)
        c.fill(3, 0, 10, 16, FACE)
        c.ring(11, 9, 5, NAVY)
        c.fill(4, 0, 10, 16, FACE)
        c.line(11, 3, 11, 4, FACE)
        arrow(c, 11, 4, 3, NAVY)

    def find(c):
        c.page(0, 0, 12, 16)
        magnifier(c, 12, 7)

    def replace(c):
        c.glyph(0, 0, [".##.", "#..#", "####", "#..#", "#..#"], K)
        arrow(c, 5, 12, 2, GREEN)
        c.glyph(14, 0, ["###.", "#..#", "###.", "#..#", "###."], K)
        magnifier(c, 8, 10)

    def grep(c):
        c.page(4, 0, 14, 10, False)
        c.page(2, 2, 12, 12, False)
        c.page(0, 4, 10, 14)
        magnifier(c, 12, 9)

    def build(c):
        bricks(c)
        c.fill(4, 0, 15, 2, DARK)
        c.fill(9, 2, 10, 5, BROWN)

    def build_target(c):
        bricks(c)
        c.ring(14, 4, 4, K, WHITE)
        c.ring(14, 4, 2, RED, RED)

    def compile_(c):
        c.page(0, 0, 15, 16, False)
        c.glyph(3, 3, [".###", "#...", "#...", "#...", "#...", "#...", ".###"], NAVY)
        c.glyph(9, 6, ["..#..", "..#..", "#####", "..#..", "..#.."], NAVY)

    def link(c):
        for cx, cy in ((6, 10), (13, 6)):
            c.ring(cx, cy, 4, DARK)
            c.ring(cx, cy, 3, GREY)
        c.line(6, 10, 13, 6, K)

    def test(c):
        c.page(0, 0, 13, 16)
        for i in range(3):
            c.line(5, 9 + i, 9, 13 + i, GREEN)
            c.line(9, 13 + i, 19, 1 + i, GREEN)

    def debug(c):
        c.ring(10, 9, 5, K, RED)
        c.line(10, 4, 10, 14, K)
        c.ring(10, 3, 2, K, K)
        for y in (6, 9, 12):
            c.line(1, y - 2, 5, y, K)
            c.line(15, y, 19, y - 2, K)

    def help_(c):
        c.ring(9, 8, 8, NAVY, (255, 255, 192))
        c.glyph(6, 3, [".###.", "#...#", "....#", "...#.", "..#..", "..#..", ".....", "..#.."], NAVY)

    return [new, open_, save, manage, print_, cut, copy, paste,
            lambda c: shift(c, True), lambda c: shift(c, False), undo, find, replace, grep,
            build, build_target, compile_, link, test, debug, help_]


def write_bmp(path, px, mono):
    if mono:
        stride = ((W + 31) // 32) * 4
        rows = []
        for y in reversed(range(H)):
            bits = bytearray(stride)
            for x in range(W):
                if px[y][x] in (FACE, WHITE, GREY, RED, YELLOW, (160, 224, 255), (255, 255, 192)):
                    bits[x // 8] |= 0x80 >> (x % 8)
            rows.append(bytes(bits))
        palette, bpp = bytes((0, 0, 0, 0, 255, 255, 255, 0)), 1
    else:
        stride = ((W * 3 + 3) // 4) * 4
        rows = []
        for y in reversed(range(H)):
            row = bytearray()
            for x in range(W):
                r, g, b = px[y][x]
                row += bytes((b, g, r))
            rows.append(bytes(row + bytes(stride - len(row))))
        palette, bpp = b"", 24
    data = b"".join(rows)
    offset = 14 + 40 + len(palette)
    header = struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, W, H, 1, bpp, 0, len(data), 2835, 2835,
                       len(palette) // 4, 0)
    with open(path, "wb") as f:
        f.write(header + info + palette + data)


def main():
    px = [[FACE] * W for _ in range(H)]
    for index, draw in enumerate(pictures()):
        draw(Cell(px, index))
    here = os.path.dirname(os.path.abspath(__file__))
    write_bmp(os.path.join(here, "toolbar.bmp"), px, False)
    write_bmp(os.path.join(here, "toolbar-mono.bmp"), px, True)


if __name__ == "__main__":
    main()
