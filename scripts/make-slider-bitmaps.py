#!/usr/bin/env python3
"""Writes the slider bitmaps of controls/bitmaps/: 24-bit BMP files for the
horizontal slider, 24-bit PNG files for the vertical one (the control reads both).

Run from anywhere: python3 scripts/make-slider-bitmaps.py. The output depends
on nothing but this file, so the committed bitmaps can be rebuilt byte for byte.
Ids: 1xx horizontal, 2xx vertical; x0x opaque, x1x keyed on magenta
(0xFF00FF, also the colour of the top-left pixel); xx1 channel, xx2 active
channel, xx3 thumb, xx4 active thumb.
"""
import os
import struct
import zlib

KEY = (255, 0, 255)
FACE = (212, 208, 200)
LIGHT = (255, 255, 255)
SHADOW = (128, 128, 128)
DARK = (64, 64, 64)
GROOVE = (236, 233, 216)
ACTIVE = (49, 106, 197)
ACTIVE_LIGHT = (120, 170, 240)
WARM = (240, 160, 40)
WARM_DARK = (170, 90, 10)

LENGTH, BREADTH = 200, 24          # channel along and across the track
THUMB_ALONG, THUMB_ACROSS = 16, 24  # thumb along and across the track


class Canvas:
    def __init__(self, w, h, colour):
        self.w, self.h = w, h
        self.px = [[colour] * w for _ in range(h)]

    def rect(self, x0, y0, x1, y1, colour):
        """Fills x0..x1-1, y0..y1-1, clipped to the canvas."""
        for y in range(max(0, y0), min(self.h, y1)):
            row = self.px[y]
            for x in range(max(0, x0), min(self.w, x1)):
                row[x] = colour

    def frame(self, x0, y0, x1, y1, top_left, bottom_right):
        self.rect(x0, y0, x1, y0 + 1, top_left)
        self.rect(x0, y0, x0 + 1, y1, top_left)
        self.rect(x0, y1 - 1, x1, y1, bottom_right)
        self.rect(x1 - 1, y0, x1, y1, bottom_right)

    def transposed(self):
        out = Canvas(self.h, self.w, (0, 0, 0))
        for y in range(self.h):
            for x in range(self.w):
                out.px[x][y] = self.px[y][x]
        return out

    def bmp(self):
        stride = (self.w * 3 + 3) & ~3
        rows = []
        for y in reversed(range(self.h)):  # BMP rows run bottom-up
            row = b"".join(bytes((b, g, r)) for (r, g, b) in self.px[y])
            rows.append(row + b"\0" * (stride - self.w * 3))
        data = b"".join(rows)
        header = struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54)
        info = struct.pack("<IiiHHIIiiII", 40, self.w, self.h, 1, 24, 0, len(data),
                           2835, 2835, 0, 0)
        return header + info + data

    def png(self):
        def chunk(kind, payload):
            body = kind + payload
            return struct.pack(">I", len(payload)) + body + struct.pack(">I", zlib.crc32(body))
        raw = b"".join(b"\0" + b"".join(bytes(p) for p in row) for row in self.px)
        header = struct.pack(">IIBBBBB", self.w, self.h, 8, 2, 0, 0, 0)
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def channel(fill, keyed):
    c = Canvas(LENGTH, BREADTH, KEY if keyed else FACE)
    top, bottom = BREADTH // 2 - 3, BREADTH // 2 + 3
    c.rect(4, top, LENGTH - 4, bottom, fill)
    c.frame(4, top, LENGTH - 4, bottom, SHADOW, LIGHT)
    if not keyed:
        for x in range(8, LENGTH - 7, 16):  # tick marks under the groove
            c.rect(x, BREADTH - 5, x + 1, BREADTH - 2, DARK)
    return c


def thumb(body, edge, keyed):
    c = Canvas(THUMB_ALONG, THUMB_ACROSS, KEY if keyed else FACE)
    if keyed:
        # A rounded knob: the corners stay key-coloured.
        for y in range(THUMB_ACROSS):
            inset = max(0, 3 - y, y - (THUMB_ACROSS - 4))
            c.rect(inset, y, THUMB_ALONG - inset, y + 1, body)
        c.rect(THUMB_ALONG // 2 - 1, 5, THUMB_ALONG // 2 + 1, THUMB_ACROSS - 5, edge)
    else:
        c.rect(1, 1, THUMB_ALONG - 1, THUMB_ACROSS - 1, body)
        c.frame(0, 0, THUMB_ALONG, THUMB_ACROSS, LIGHT, DARK)
        c.frame(1, 1, THUMB_ALONG - 1, THUMB_ACROSS - 1, FACE, edge)
    return c


def bitmaps():
    horizontal = {
        101: channel(GROOVE, False),
        102: channel(ACTIVE, False),
        103: thumb(FACE, SHADOW, False),
        104: thumb(ACTIVE_LIGHT, ACTIVE, False),
        111: channel(GROOVE, True),
        112: channel(ACTIVE, True),
        113: thumb(WARM, WARM_DARK, True),
        114: thumb(ACTIVE_LIGHT, ACTIVE, True),
    }
    out = dict(horizontal)
    for ident, canvas in horizontal.items():
        out[ident + 100] = canvas.transposed()
    return out


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    folder = os.path.join(root, "controls", "bitmaps")
    os.makedirs(folder, exist_ok=True)
    for ident, canvas in sorted(bitmaps().items()):
        vertical = ident >= 200
        name = "%d.%s" % (ident, "png" if vertical else "bmp")
        with open(os.path.join(folder, name), "wb") as f:
            f.write(canvas.png() if vertical else canvas.bmp())


if __name__ == "__main__":
    main()
