"""Reads and writes the one kind of PNG that the editor takes: 8 bits, RGBA, not interlaced."""

import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
RGB, RGBA = 2, 6


def header(path):
    """(width, height, bit depth, colour type) as the file's first chunk states them."""
    with open(path, "rb") as file:
        start = file.read(26)
    if start[:8] != SIGNATURE or start[12:16] != b"IHDR":
        raise ValueError(f"{path}: not a PNG file")
    return struct.unpack(">IIBB", start[16:26])


def read(path):
    """(width, height, bytes in rows of R, G, B, A); an RGB file gains an opaque alpha."""
    width, height, depth, colour = header(path)
    if depth != 8 or colour not in (RGB, RGBA):
        raise ValueError(f"{path}: depth {depth}, colour type {colour}; want 8-bit RGB or RGBA")
    size = 4 if colour == RGBA else 3
    with open(path, "rb") as file:
        packed = b"".join(body for kind, body in _chunks(file.read()) if kind == b"IDAT")
    pixels = _unfilter(zlib.decompress(packed), width * size, size)
    return width, height, pixels if colour == RGBA else _addAlpha(pixels)


def write(path, width, height, pixels):
    """Writes RGBA pixels; the row filter is whichever packs the whole picture smallest."""
    stride = width * 4
    above = bytes(stride) + pixels[:-stride]
    left = b"".join(
        bytes(4) + pixels[row : row + stride - 4] for row in range(0, len(pixels), stride)
    )
    packed = min(
        (_pack(kind, pixels, near, stride) for kind, near in ((0, None), (1, left), (2, above))),
        key=len,
    )
    start = struct.pack(">IIBBBBB", width, height, 8, RGBA, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(SIGNATURE)
        for kind, body in ((b"IHDR", start), (b"IDAT", packed), (b"IEND", b"")):
            check = zlib.crc32(kind + body)
            file.write(struct.pack(">I", len(body)) + kind + body + struct.pack(">I", check))


def _chunks(data):
    at = len(SIGNATURE)
    while at < len(data):
        (length,) = struct.unpack(">I", data[at : at + 4])
        yield data[at + 4 : at + 8], data[at + 8 : at + 8 + length]
        at += length + 12


def _pack(kind, pixels, near, stride):
    if near is not None:
        pixels = bytes((a - b) & 255 for a, b in zip(pixels, near))
    mark = bytes([kind])
    rows = (mark + pixels[row : row + stride] for row in range(0, len(pixels), stride))
    return zlib.compress(b"".join(rows), 9)


def _addAlpha(rgb):
    rgba = bytearray(b"\xff" * (len(rgb) // 3 * 4))
    for channel in range(3):
        rgba[channel::4] = rgb[channel::3]
    return bytes(rgba)


def _unfilter(data, stride, size):
    out = bytearray()
    above = bytes(stride)
    for start in range(0, len(data), stride + 1):
        row = bytearray(data[start + 1 : start + 1 + stride])
        _UNFILTER[data[start]](row, above, size)
        out += row
        above = row
    return bytes(out)


def _none(row, above, size):
    pass


def _sub(row, above, size):
    for i in range(size, len(row)):
        row[i] = (row[i] + row[i - size]) & 255


def _up(row, above, size):
    row[:] = bytes((a + b) & 255 for a, b in zip(row, above))


def _average(row, above, size):
    for i, up in enumerate(above):
        left = row[i - size] if i >= size else 0
        row[i] = (row[i] + (left + up) // 2) & 255


def _paeth(row, above, size):
    for i, up in enumerate(above):
        left, corner = (row[i - size], above[i - size]) if i >= size else (0, 0)
        fromLeft, fromUp = abs(up - corner), abs(left - corner)
        fromCorner = abs(left + up - 2 * corner)
        if fromLeft <= fromUp and fromLeft <= fromCorner:
            near = left
        else:
            near = up if fromUp <= fromCorner else corner
        row[i] = (row[i] + near) & 255


_UNFILTER = (_none, _sub, _up, _average, _paeth)
