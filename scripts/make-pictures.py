#!/usr/bin/env python3
"""Packs PNG files, as rsvg-convert writes them, into .ico, .cur and .bmp files.

    make-pictures.py ico OUT.ico PNG...
    make-pictures.py cur OUT.cur X Y PNG...    hotspot in the units of 32 x 32
    make-pictures.py bmp OUT.bmp PNG

Icons hold the PNG images themselves, a tenth of the size, which every Windows
since Vista reads. Cursors hold 8-bit images with an AND mask.
"""

import struct
import sys
import zlib

# The background that toolboxes and LR_LOADMAP3DCOLORS replace, and the other
# colours that LR_LOADMAP3DCOLORS would replace too.
BACKGROUND = (192, 192, 192)
MAPPED = {BACKGROUND, (128, 128, 128), (223, 223, 223)}


def paeth(a, b, c):
    p = a + b - c
    pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
    return a if pa <= pb and pa <= pc else b if pb <= pc else c


def read_png(path):
    """Returns width, height and rows of (r, g, b, a)."""
    with open(path, "rb") as file:
        data = file.read()
    pos, packed, size = 8, b"", None
    while pos < len(data):
        length, kind = struct.unpack_from(">I4s", data, pos)
        body = data[pos + 8:pos + 8 + length]
        if kind == b"IHDR":
            size = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            packed += body
        pos += 12 + length
    width, height = size[:2]
    if size[2:] != (8, 6, 0, 0, 0):
        sys.exit(f"{path}: not an 8-bit RGBA image without interlacing")
    raw, stride = zlib.decompress(packed), 4 * width
    rows, above = [], bytearray(stride)
    for y in range(height):
        method = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            left = line[i - 4] if i >= 4 else 0
            corner = above[i - 4] if i >= 4 else 0
            line[i] = (line[i] + (0, left, above[i], (left + above[i]) // 2,
                                  paeth(left, above[i], corner))[method]) & 255
        rows.append([tuple(line[i:i + 4]) for i in range(0, stride, 4)])
        above = line
    return width, height, rows


def palette_dib(width, height, rows):
    """The image inside a cursor: colours, with hard edges, then the AND mask."""
    palette, pixels, mask = {(0, 0, 0): 0}, bytearray(), bytearray()
    padded = (width + 31) // 32 * 32
    for row in reversed(rows):
        bits = 0
        for r, g, b, a in row:
            colour = (r, g, b) if a >= 128 else (0, 0, 0)
            pixels.append(palette.setdefault(colour, len(palette)))
            bits = bits << 1 | (a < 128)
        pixels += bytes(-width % 4)
        mask += (bits << (padded - width)).to_bytes(padded // 8, "big")
    if len(palette) > 256:
        sys.exit("more than 256 colours")
    colours = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
    header = struct.pack("<IiiHHIIiiII", 40, width, 2 * height, 1, 8, 0,
                         len(pixels) + len(mask), 0, 0, len(palette), 0)
    return header + colours + pixels + mask


def write_directory(path, kind, images):
    """images: (width, height, two 16-bit numbers of the entry, data)."""
    offset = 6 + 16 * len(images)
    entries, bodies = b"", b""
    for width, height, first, second, data in images:
        entries += struct.pack("<BBBBHHII", width & 255, height & 255, 0, 0,
                               first, second, len(data), offset + len(bodies))
        bodies += data
    with open(path, "wb") as file:
        file.write(struct.pack("<HHH", 0, kind, len(images)) + entries + bodies)


def make_ico(path, pngs):
    images = []
    for png in pngs:
        width, height, _ = read_png(png)
        with open(png, "rb") as file:
            images.append((width, height, 1, 32, file.read()))
    write_directory(path, 1, images)


def make_cur(path, x, y, pngs):
    images = [read_png(png) for png in pngs]
    write_directory(path, 2, [(w, h, x * w // 32, y * h // 32, palette_dib(w, h, rows))
                              for w, h, rows in images])


def make_bmp(path, png):
    """Edges against the background are hard: a blend would stay as a fringe."""
    width, height, rows = read_png(png)
    palette, pixels = {BACKGROUND: 0}, bytearray()
    for row in reversed(rows):
        for r, g, b, a in row:
            colour = BACKGROUND if a < 128 else (r, g, b)
            if a >= 128 and colour in MAPPED:
                colour = (r, g, b + 1)
            pixels.append(palette.setdefault(colour, len(palette)))
        pixels += bytes(-width % 4)
    if len(palette) > 256:
        sys.exit(f"{png}: more than 256 colours")
    colours = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
    start = 14 + 40 + len(colours)
    with open(path, "wb") as file:
        file.write(struct.pack("<2sIHHI", b"BM", start + len(pixels), 0, 0, start))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0,
                               len(pixels), 0, 0, len(palette), 0))
        file.write(colours + pixels)


def main(arguments):
    match arguments:
        case ["ico", path, *pngs] if pngs:
            make_ico(path, pngs)
        case ["cur", path, x, y, *pngs] if pngs:
            make_cur(path, int(x), int(y), pngs)
        case ["bmp", path, png]:
            make_bmp(path, png)
        case _:
            sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
