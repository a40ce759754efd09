"""Writes EMF, EMF+ and WMF records. Colours are (red, green, blue) or, for EMF+, (alpha, red, green, blue)."""
import io
import math
import struct

from PIL import Image


def i32(*values):
    return struct.pack('<%di' % len(values), *(int(v) for v in values))


def u32(*values):
    return struct.pack('<%dI' % len(values), *(int(v) & 0xFFFFFFFF for v in values))


def i16(*values):
    return struct.pack('<%dh' % len(values), *(int(v) for v in values))


def f32(*values):
    return struct.pack('<%df' % len(values), *values)


def padded(data, to=4):
    return data + bytes(-len(data) % to)


def ref(colour):
    return colour[0] | colour[1] << 8 | colour[2] << 16


def argb(colour):
    alpha, red, green, blue = colour if len(colour) == 4 else (255,) + tuple(colour)
    return alpha << 24 | red << 16 | green << 8 | blue


def dib(picture, bits=24):
    """Header and bits of a picture, bottom row first."""
    width, height = picture.size
    mode = 'BGR' if bits == 24 else 'BGRA'
    rows = picture.convert('RGB' if bits == 24 else 'RGBA')
    if bits == 32:  # premultiplied
        rows.putdata([(r * a // 255, g * a // 255, b * a // 255, a) for r, g, b, a in rows.getdata()])
    rows = rows.transpose(Image.FLIP_TOP_BOTTOM).tobytes('raw', mode)
    stride = width * bits // 8
    rows = b''.join(padded(rows[y * stride:(y + 1) * stride]) for y in range(height))
    return struct.pack('<I2i2H6I', 40, width, height, 1, bits, 0, len(rows), 0, 0, 0, 0), rows


def file_of(picture, kind):
    out = io.BytesIO()
    picture.save(out, kind, **({'quality': 92, 'subsampling': 0} if kind == 'JPEG' else {}))
    return out.getvalue()


class Emf:
    """An EMF whose device has 96 dots per inch."""

    def __init__(self, width, height):
        self.size = width, height
        self.records = []
        self.handles = 0

    def add(self, kind, data=b''):
        data = padded(data)
        self.records.append(u32(kind, 8 + len(data)) + data)
        return self

    def new(self):
        self.handles += 1
        return self.handles

    def select(self, handle):
        return self.add(37, u32(handle))

    def pen(self, colour, width=1, style=0, dashes=()):
        """Style 0 solid, 5 none; styles with 0x10000 are geometric."""
        n = self.new()
        if style & 0x10000 or dashes:
            self.add(95, u32(n, 0, 0, 0, 0, style, width, 0, ref(colour), 0, len(dashes), *dashes))
        else:
            self.add(38, u32(n, style, width, 0, ref(colour)))
        return self.select(n)

    def no_pen(self):
        return self.select(0x80000008)

    def brush(self, colour, style=0, hatch=0):
        n = self.new()
        return self.add(39, u32(n, style, ref(colour), hatch)).select(n)

    def no_brush(self):
        return self.select(0x80000005)

    def font(self, height, face='Arial', weight=400, italic=0, underline=0, escapement=0):
        n = self.new()
        name = face.encode('utf-16-le').ljust(64, b'\0')
        data = i32(n, -height, 0, escapement, escapement, weight) + bytes((italic, underline, 0, 0, 0, 0, 0, 0)) + name
        return self.add(82, data).select(n)

    def text(self, x, y, text, steps=(), options=0, box=(0, 0, 0, 0)):
        chars = len(text)
        codes = padded(text.encode('utf-16-le'))
        at = 76 + len(codes) if steps else 0
        return self.add(84, bytes(16) + u32(1) + f32(1, 1) + i32(x, y) + u32(chars, 76, options) + i32(*box) +
                        u32(at) + codes + i32(*steps))

    def colour(self, colour):
        return self.add(24, u32(ref(colour)))

    def clear_back(self):
        return self.add(18, u32(1))

    def align(self, flags):
        return self.add(22, u32(flags))

    def rect(self, left, top, right, bottom):
        return self.add(43, i32(left, top, right, bottom))

    def ellipse(self, left, top, right, bottom):
        return self.add(42, i32(left, top, right, bottom))

    def round_rect(self, left, top, right, bottom, width, height):
        return self.add(44, i32(left, top, right, bottom, width, height))

    def polygon(self, *points):
        return self.add(86, bytes(16) + u32(len(points)) + b''.join(i16(*p) for p in points))

    def polyline(self, *points):
        return self.add(87, bytes(16) + u32(len(points)) + b''.join(i16(*p) for p in points))

    def line(self, a, b):
        return self.add(27, i32(*a)).add(54, i32(*b))

    def pie(self, box, start, end):
        return self.add(47, i32(*box, *start, *end))

    def stretch(self, header, bits, dest, source):
        return self.add(81, bytes(16) + i32(dest[0], dest[1], *source) +
                        u32(80, len(header), 80 + len(header), len(bits), 0, 0xCC0020) + i32(dest[2], dest[3]) +
                        header + bits)

    def blend(self, picture, dest, alpha=255):
        header, bits = dib(picture, 32)
        return self.add(114, bytes(16) + i32(*dest) + u32(0x01000000 | alpha << 16) + i32(0, 0) +
                        f32(1, 0, 0, 1, 0, 0) + u32(0xFFFFFF, 0, 108, len(header), 108 + len(header), len(bits)) +
                        i32(*picture.size) + header + bits)

    def comment(self, data):
        return self.add(70, u32(len(data)) + data)

    def file(self):
        width, height = self.size
        body = b''.join(self.records) + u32(14, 20, 0, 16, 20)
        header = i32(1, 108, 0, 0, width - 1, height - 1, 0, 0, round(width * 2540 / 96), round(height * 2540 / 96))
        header += b' EMF' + u32(0x10000, 108 + len(body), len(self.records) + 2)
        header += struct.pack('<2H', self.handles + 1, 0)
        header += u32(0, 0, 0, 1920, 1440, 508, 381, 0, 0, 0, 508000, 381000)
        return header + body


VERSION = 0xDBC01002


class Plus:
    """EMF+ records. Objects take numbers in turn."""

    def __init__(self, width, height, dual=False):
        self.size = width, height
        self.dual = dual
        self.emf = Emf(width, height)  # records between
        self.stream = b''
        self.next = 0
        self.add(0x4001, 1 if dual else 0, u32(VERSION, 1, 96, 96))

    def add(self, kind, flags=0, data=b''):
        data = padded(data)
        record = struct.pack('<2H2I', kind, flags, 12 + len(data), len(data)) + data
        self.stream += record
        self.emf.comment(b'EMF+' + record)
        return self

    def object(self, kind, data):
        number = self.next % 64
        self.next += 1
        # Large objects come in pieces, as a comment holds 64 KB.
        most = 60000
        if len(data) <= most:
            self.add(0x4008, kind << 8 | number, data)
        else:
            for at in range(0, len(data), most):
                self.add(0x4008, 0x8000 | kind << 8 | number, u32(len(padded(data))) + data[at:at + most])
        return number

    # Brushes, as the data of an object.
    def solid(self, colour):
        return u32(VERSION, 0, argb(colour))

    def hatch(self, style, fore, back):
        return u32(VERSION, 1, style, argb(fore), argb(back))

    def linear(self, rect, first, second, angle=0, stops=None, blends=None, wrap=0):
        left, top, width, height = rect
        flags = 2 | (4 if stops else 0) | (8 if blends else 0)
        # The unit gradient runs to the right of rect; turn and stretch it over the middle.
        turn = math.radians(angle)
        along = abs(width * math.cos(turn)) + abs(height * math.sin(turn))
        across = abs(width * math.sin(turn)) + abs(height * math.cos(turn))
        x, y = left + width / 2, top + height / 2
        scale_x, scale_y = along / width, across / height
        a, b = math.cos(turn) * scale_x, math.sin(turn) * scale_x
        c, d = -math.sin(turn) * scale_y, math.cos(turn) * scale_y
        data = u32(VERSION, 4, flags, wrap) + f32(*rect) + u32(argb(first), argb(second), 0, 0)
        data += f32(a, b, c, d, x - a * x - c * y, y - b * x - d * y)
        if stops:
            data += u32(len(stops)) + f32(*(s[0] for s in stops)) + u32(*(argb(s[1]) for s in stops))
        if blends:
            data += u32(len(blends)) + f32(*(s[0] for s in blends)) + f32(*(s[1] for s in blends))
        return data

    def radial(self, rect, centre, edge):
        left, top, width, height = rect
        path = self.ellipse_path(left, top, width, height)
        return u32(VERSION, 3, 1, 0, argb(centre)) + f32(left + width / 2, top + height / 2) + \
            u32(1, argb(edge), len(path)) + path

    def corners(self, points, centre_at, centre, edges):
        return u32(VERSION, 3, 0, 0, argb(centre)) + f32(*centre_at) + u32(len(edges), *(argb(e) for e in edges)) + \
            u32(len(points)) + f32(*(v for p in points for v in p))

    def texture(self, image, wrap=0):
        return u32(VERSION, 2, 0, wrap) + image

    # Paths, as the data of an object.
    def path(self, points, types):
        return u32(VERSION, len(points), 0) + f32(*(v for p in points for v in p)) + padded(bytes(types))

    def polygon_path(self, *points):
        return self.path(points, [0] + [1] * (len(points) - 2) + [0x81])

    def ellipse_path(self, left, top, width, height):
        rx, ry = width / 2, height / 2
        x, y = left + rx, top + ry
        k = 0.5522847
        unit = [(1, 0), (1, k), (k, 1), (0, 1), (-k, 1), (-1, k), (-1, 0), (-1, -k), (-k, -1), (0, -1), (k, -1), (1, -k),
                (1, 0)]
        return self.path([(x + rx * u, y + ry * v) for u, v in unit], [0] + [3] * 11 + [0x83])

    def round_path(self, left, top, width, height, radius):
        right, bottom, r, k = left + width, top + height, radius, radius * 0.4477
        return self.path(
            [(left + r, top), (right - r, top), (right - k, top), (right, top + k), (right, top + r), (right, bottom - r),
             (right, bottom - k), (right - k, bottom), (right - r, bottom), (left + r, bottom), (left + k, bottom),
             (left, bottom - k), (left, bottom - r), (left, top + r), (left, top + k), (left + k, top), (left + r, top)],
            [0, 1, 3, 3, 3, 1, 3, 3, 3, 1, 3, 3, 3, 1, 3, 3, 0x83])

    def image(self, picture, kind='PNG'):
        if kind != 'RAW':
            return u32(VERSION, 1, 0, 0, 0, 0, 1) + file_of(picture, kind)
        width, height = picture.size
        return u32(VERSION, 1, width, height, width * 4, 0x26200A, 0) + picture.convert('RGBA').tobytes('raw', 'BGRA')

    def pen_data(self, brush, width=1, start=0, end=0, join=0, style=0, dashes=(), compound=(), dash_cap=0, custom_end=None):
        flags = 0x2 | 0x4 | 0x8 | (0x20 if style else 0) | (0x40 if dash_cap else 0) | (0x100 if dashes else 0) | \
            (0x400 if compound else 0) | (0x1000 if custom_end else 0)
        data = u32(VERSION, 0, flags, 0) + f32(width) + u32(start, 0xFF if custom_end else end, join)
        if style:
            data += u32(style)
        if dash_cap:
            data += u32(dash_cap)
        if dashes:
            data += u32(len(dashes)) + f32(*dashes)
        if compound:
            data += u32(len(compound)) + f32(*compound)
        if custom_end:
            data += u32(len(custom_end)) + custom_end
        return data + brush

    def arrow_cap(self, width, height):
        return u32(VERSION, 1) + f32(width, height, 0) + u32(1, 0, 0, 0) + f32(10, 1, 0, 0, 0, 0)

    # Records.
    def brush(self, brush):
        """Flag and number of a colour or of a brush object."""
        if isinstance(brush, tuple):
            return 0x8000, argb(brush)
        return 0, self.object(1, brush)

    def pen(self, colour, width=1, **more):
        brush = self.solid(colour) if isinstance(colour, tuple) else colour
        return self.object(2, self.pen_data(brush, width, **more))

    def fill_rects(self, brush, *rects):
        flag, number = self.brush(brush)
        return self.add(0x400A, flag, u32(number, len(rects)) + f32(*(v for r in rects for v in r)))

    def fill_ellipse(self, brush, rect):
        flag, number = self.brush(brush)
        return self.add(0x400E, flag, u32(number) + f32(*rect))

    def fill_pie(self, brush, rect, start, sweep):
        flag, number = self.brush(brush)
        return self.add(0x4010, flag, u32(number) + f32(start, sweep, *rect))

    def fill_polygon(self, brush, *points):
        flag, number = self.brush(brush)
        return self.add(0x400C, flag, u32(number, len(points)) + f32(*(v for p in points for v in p)))

    def fill_path(self, brush, path):
        flag, number = self.brush(brush)
        return self.add(0x4014, flag | self.object(3, path), u32(number))

    def draw_path(self, pen, path):
        return self.add(0x4015, self.object(3, path), u32(pen))

    def draw_lines(self, pen, *points, closed=False):
        return self.add(0x400D, pen | (0x2000 if closed else 0), u32(len(points)) + f32(*(v for p in points for v in p)))

    def draw_rects(self, pen, *rects):
        return self.add(0x400B, pen, u32(len(rects)) + f32(*(v for r in rects for v in r)))

    def draw_ellipse(self, pen, rect):
        return self.add(0x400F, pen, f32(*rect))

    def draw_pie(self, pen, rect, start, sweep):
        return self.add(0x4011, pen, f32(start, sweep, *rect))

    def draw_arc(self, pen, rect, start, sweep):
        return self.add(0x4012, pen, f32(start, sweep, *rect))

    def draw_curve(self, pen, points, tension=0.5):
        return self.add(0x4018, pen, f32(tension) + u32(0, len(points) - 1, len(points)) +
                        f32(*(v for p in points for v in p)))

    def draw_beziers(self, pen, *points):
        return self.add(0x4019, pen, u32(len(points)) + f32(*(v for p in points for v in p)))

    def draw_image(self, image, source, dest):
        return self.add(0x401A, self.object(5, image), u32(0xFFFFFFFF, 2) + f32(*source, *dest))

    def draw_image_points(self, image, source, *points):
        return self.add(0x401B, self.object(5, image), u32(0xFFFFFFFF, 2) + f32(*source) + u32(3) +
                        f32(*(v for p in points for v in p)))

    def font(self, size, face='Arial', style=0, unit=2):
        return self.object(6, u32(VERSION) + f32(size) + u32(unit, style, 0, len(face)) + face.encode('utf-16-le'))

    def format(self, align=0, line_align=0, flags=0):
        return self.object(7, u32(VERSION, flags, 0, align, line_align, 0, 0) + f32(0) + u32(0) + f32(0, 0, 1) + u32(0, 0, 0))

    def string(self, text, font, box, brush=(0, 0, 0), format=0xFF):
        flag, number = self.brush(brush)
        return self.add(0x401C, flag | font, u32(number, format, len(text)) + f32(*box) + text.encode('utf-16-le'))

    def driver_string(self, text, font, places, brush=(0, 0, 0)):
        flag, number = self.brush(brush)
        return self.add(0x4036, flag | font, u32(number, 1, 0, len(text)) + text.encode('utf-16-le') +
                        f32(*(v for p in places for v in p)))

    def save(self, n):
        return self.add(0x4025, 0, u32(n))

    def restore(self, n):
        return self.add(0x4026, 0, u32(n))

    def translate(self, x, y):
        return self.add(0x402D, 0, f32(x, y))

    def scale(self, x, y):
        return self.add(0x402E, 0, f32(x, y))

    def rotate(self, angle):
        return self.add(0x402F, 0, f32(angle))

    def reset(self):
        return self.add(0x402B)

    def page(self, unit, scale=1):
        return self.add(0x4030, unit, f32(scale))

    def clip_rect(self, rect, mode=0):
        return self.add(0x4032, mode << 8, f32(*rect))

    def clip_path(self, path, mode=0):
        return self.add(0x4033, mode << 8 | self.object(3, path))

    def clip_region(self, nodes, mode=0):
        return self.add(0x4034, mode << 8 | self.object(4, u32(VERSION, 0) + nodes))

    def reset_clip(self):
        return self.add(0x4031)

    def file(self):
        self.add(0x4002)
        return self.emf.file()


class Wmf:
    """A WMF; placeable if it has units per inch."""

    def __init__(self, width=0, height=0, units_per_inch=0):
        self.size = width, height
        self.units_per_inch = units_per_inch
        self.records = b''
        self.longest = 3
        self.handles = 0

    def add(self, function, data=b''):
        data = padded(data, 2)
        words = 3 + len(data) // 2
        self.longest = max(self.longest, words)
        self.records += u32(words) + struct.pack('<H', function) + data
        return self

    def window(self, left, top, width, height):
        return self.add(0x020B, i16(top, left)).add(0x020C, i16(height, width))

    def mode(self, mode):
        return self.add(0x0103, i16(mode))

    def new(self):
        self.handles += 1
        return self.add(0x012D, i16(self.handles - 1))

    def pen(self, colour, width=1, style=0):
        return self.add(0x02FA, i16(style, width, 0) + u32(ref(colour))).new()

    def brush(self, colour, style=0, hatch=0):
        return self.add(0x02FC, i16(style) + u32(ref(colour)) + i16(hatch)).new()

    def font(self, height, face='Arial', weight=400, italic=0, escapement=0):
        data = i16(-height, 0, escapement, escapement, weight) + bytes((italic, 0, 0, 0, 0, 0, 0, 0))
        return self.add(0x02FB, data + face.encode().ljust(32, b'\0')).new()

    def colour(self, colour):
        return self.add(0x0209, u32(ref(colour)))

    def clear_back(self):
        return self.add(0x0102, i16(1))

    def align(self, flags):
        return self.add(0x012E, i16(flags))

    def text(self, x, y, text, steps=(), options=0):
        return self.add(0x0A32, i16(y, x, len(text), options) + padded(text.encode('cp1252'), 2) + i16(*steps))

    def rect(self, left, top, right, bottom):
        return self.add(0x041B, i16(bottom, right, top, left))

    def ellipse(self, left, top, right, bottom):
        return self.add(0x0418, i16(bottom, right, top, left))

    def polygon(self, *points):
        return self.add(0x0324, i16(len(points), *(v for p in points for v in p)))

    def polyline(self, *points):
        return self.add(0x0325, i16(len(points), *(v for p in points for v in p)))

    def poly_polygon(self, *figures):
        return self.add(0x0538, i16(len(figures), *(len(f) for f in figures), *(v for f in figures for p in f for v in p)))

    def line(self, a, b):
        return self.add(0x0214, i16(a[1], a[0])).add(0x0213, i16(b[1], b[0]))

    def pie(self, box, start, end):
        return self.add(0x081A, i16(end[1], end[0], start[1], start[0], box[3], box[2], box[1], box[0]))

    def clip(self, left, top, right, bottom):
        return self.add(0x0416, i16(bottom, right, top, left))

    def stretch(self, picture, dest):
        header, bits = dib(picture)
        width, height = picture.size
        left, top, to_width, to_height = dest
        return self.add(0x0F43, u32(0xCC0020) + i16(0, height, width, 0, 0, to_height, to_width, top, left) + header + bits)

    def embed(self, emf, most=8192):
        count = -(-len(emf) // most)
        for at in range(0, len(emf), most):
            piece = emf[at:at + most]
            data = u32(0x43464D57, 1, 0x10000) + i16(0) + u32(0, count, len(piece), len(emf) - at - len(piece), len(emf))
            self.add(0x0626, struct.pack('<2H', 15, len(data) + len(piece)) + data + piece)
        return self

    def file(self):
        self.add(0)
        head = b''
        if self.units_per_inch:
            head = u32(0x9AC6CDD7) + struct.pack('<H4hHI', 0, 0, 0, *self.size, self.units_per_inch, 0)
            check = 0
            for word in struct.unpack('<10H', head):
                check ^= word
            head += struct.pack('<H', check)
        words = 9 + len(self.records) // 2
        return head + struct.pack('<3HIHIH', 1, 9, 0x300, words, self.handles, self.longest, 0) + self.records
