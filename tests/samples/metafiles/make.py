#!/usr/bin/python3
"""Makes fifty metafiles of the kinds that office programs write, and beside each NAME.checks: what must be seen in it.

A check is a line: `size W H`, `at X Y RRGGBB` (a pixel's colour, within 12 per channel), or `ink L T R B MIN MAX` (the
percentage of a box's pixels that aren't white). They follow from the drawing's own coordinates, not from a rendering.

The records of the smaller EMF+ drawings are also seeds of the fuzz target emf_plus.
"""
import math
import os

from PIL import Image

from writers import Emf, Plus, Wmf, argb, dib, f32, file_of, i16, i32, u32

os.chdir(os.path.dirname(os.path.abspath(__file__)))

BLUE, ORANGE, GREY, GOLD, GREEN = (68, 114, 196), (237, 125, 49), (165, 165, 165), (255, 192, 0), (112, 173, 71)
COLOURS = (BLUE, ORANGE, GREY, GOLD, GREEN)
DARK, LIGHT, BLACK, WHITE, RED = (64, 64, 64), (217, 217, 217), (0, 0, 0), (255, 255, 255), (255, 0, 0)
VALUES = ((40, 65, 90, 30), (70, 25, 50, 80), (20, 55, 35, 60))

made = []


def sample(name, drawing, *checks):
    width, height = drawing.size
    kind = 'wmf' if isinstance(drawing, Wmf) else 'emf'
    open(f'{name}.{kind}', 'wb').write(drawing.file())
    if not checks[0].startswith('size'):
        checks = (f'size {width} {height}',) + checks
    open(f'{name}.checks', 'w').write('\n'.join(checks) + '\n')
    if isinstance(drawing, Plus) and len(drawing.stream) < 20000:
        os.makedirs('../fuzz/emf_plus', exist_ok=True)
        open(f'../fuzz/emf_plus/{name}', 'wb').write(drawing.stream)
    made.append(name)
    return drawing


def at(x, y, colour):
    return 'at %d %d %02x%02x%02x' % (x, y, *colour)


def ink(left, top, right, bottom, least, most):
    return f'ink {left} {top} {right} {bottom} {least} {most}'


def picture(width, height, alpha=False):
    """A landscape: sky, sun, hill."""
    image = Image.new('RGBA', (width, height))
    for y in range(height):
        for x in range(width):
            hill = height * (0.65 + 0.12 * math.sin(x / width * 6))
            sun = math.hypot(x - width * 0.75, y - height * 0.25) < height * 0.14
            colour = (90, 150 - y * 40 // height, 70) if y > hill else (255, 220, 60) if sun else \
                (120 + y * 100 // height, 180 + y * 50 // height, 250)
            image.putpixel((x, y), colour + (255 * (width - x) // width if alpha else 255,))
    return image if alpha else image.convert('RGB')


# -- EMF --------------------------------------------------------------------------------------------------------------

def emf_axes(e, left, top, right, bottom, labels=True):
    e.pen(LIGHT)
    for n in range(1, 5):
        y = bottom - n * (bottom - top) // 4
        e.line((left, y), (right, y))
    e.pen(DARK).line((left, top), (left, bottom)).line((left, bottom), (right, bottom))
    if labels:
        e.font(11).colour(DARK).clear_back().align(2)
        for n in range(5):
            e.text(left - 5, bottom - n * (bottom - top) // 4 - 7, str(25 * n))
        e.align(0)


def emf_column_chart(e):
    emf_axes(e, 50, 40, 380, 240)
    e.no_pen()
    for series, values in enumerate(VALUES):
        e.brush(COLOURS[series])
        for group, value in enumerate(values):
            left = 65 + group * 80 + series * 20
            e.rect(left, 240 - value * 2, left + 18, 240)
    e.font(16, weight=700).colour(BLACK).align(6).text(210, 10, 'Sales by quarter').align(0)
    e.font(11)
    for n in range(4):
        e.text(85 + n * 80, 246, 'Q%d' % (n + 1))
    return e


sample('emf-column-chart', emf_column_chart(Emf(400, 270)), at(73, 200, BLUE), at(93, 120, ORANGE), at(113, 220, GREY),
       at(73, 150, WHITE), ink(140, 8, 280, 30, 10, 60))

e = Emf(400, 270)
emf_axes(e, 50, 30, 380, 240)
for series, values in enumerate(VALUES):
    points = [(80 + n * 90, 240 - v * 2) for n, v in enumerate(values)]
    e.pen(COLOURS[series], 3, 0x10000).polyline(*points).brush(COLOURS[series])
    for x, y in points:
        e.ellipse(x - 5, y - 5, x + 6, y + 6)
sample('emf-line-chart', e, at(80, 160, BLUE), at(170, 190, ORANGE), at(125, 135, BLUE))

e = Emf(300, 260)
e.pen(WHITE, 2)
angle = 0
for n, share in enumerate((35, 25, 20, 15, 5)):
    ends = [(int(150 + 1000 * math.cos(math.radians(a))), int(130 - 1000 * math.sin(math.radians(a))))
            for a in (90 - angle - share * 3.6, 90 - angle)]
    e.brush(COLOURS[n]).pie((40, 20, 260, 240), *ends)
    angle += share * 3.6
sample('emf-pie-chart', e, at(220, 100, BLUE), at(170, 210, ORANGE), at(80, 170, GREY), at(80, 80, GOLD), at(10, 10, WHITE))

e = Emf(420, 200)
e.no_pen().brush(BLUE).rect(10, 10, 411, 40).brush((221, 235, 247)).rect(10, 70, 411, 100).rect(10, 130, 411, 160)
e.pen(DARK)
for n in range(6):
    e.line((10, 10 + n * 30), (410, 10 + n * 30))
for n in range(5):
    e.line((10 + n * 100, 10), (10 + n * 100, 160))
e.font(13, weight=700).colour(WHITE).clear_back()
for n, text in enumerate(('Region', 'Units', 'Price', 'Total')):
    e.text(18 + n * 100, 17, text)
e.font(13).colour(BLACK)
for row, cells in enumerate((('North', '120', '9.50', '1,140.00'), ('South', '85', '9.90', '841.50'),
                             ('East', '230', '8.75', '2,012.50'), ('West', '41', '10.20', '418.20'))):
    for n, text in enumerate(cells):
        e.align(0 if n == 0 else 2).text(18 + n * 100 if n == 0 else 102 + n * 100, 47 + row * 30, text)
sample('emf-table', e, at(300, 13, BLUE), at(150, 74, (221, 235, 247)), at(110, 90, DARK), ink(15, 15, 80, 36, 80, 98),
       ink(360, 45, 408, 66, 10, 60))

e = Emf(400, 220)
e.clear_back()
for n, (face, weight, italic, underline) in enumerate((('Arial', 400, 0, 0), ('Arial', 700, 0, 0), ('Times New Roman', 400, 1, 0),
                                                       ('Courier New', 400, 0, 1), ('Calibri', 700, 1, 0))):
    e.font(22, face, weight, italic, underline).colour(COLOURS[n] if n != 3 else BLACK)
    e.text(20, 15 + n * 38, 'The quick brown fox – äöü €')
sample('emf-text-styles', e, *(ink(20, 18 + n * 38, 200, 40 + n * 38, 8, 50) for n in range(5)), ink(0, 200, 400, 220, 0, 6))

e = Emf(260, 260)
e.clear_back().pen(DARK).line((60, 20), (60, 220)).line((60, 220), (240, 220))
e.font(14, escapement=900).align(6).text(20, 120, 'Temperature (°C)')
e.font(12, escapement=450).align(0)
for n, month in enumerate(('January', 'February', 'March', 'April')):
    e.text(60 + n * 45, 250, month)
sample('emf-rotated-labels', e, ink(20, 60, 38, 180, 10, 60), ink(0, 0, 18, 260, 0, 1), ink(60, 222, 110, 260, 3, 40))

e = Emf(320, 240)
landscape = picture(80, 60)
e.stretch(*dib(landscape), (20, 20, 280, 200), (0, 0, 80, 60)).pen(BLACK).no_brush().rect(20, 20, 300, 220)
sample('emf-picture', e, at(40, 30, (122, 181, 250)), at(230, 70, (255, 220, 60)), at(100, 210, (90, 112, 70)), at(10, 10, WHITE))

e = Emf(320, 240)
e.no_pen().brush(ORANGE).rect(20, 100, 301, 141)
e.blend(picture(80, 60, True), (20, 20, 280, 200))
sample('emf-picture-alpha', e, at(290, 120, (238, 128, 54)), at(25, 30, (125, 182, 250)), at(295, 30, (251, 253, 255)))

for kind, compression in (('JPEG', 4), ('PNG', 5)):
    e = Emf(320, 240)
    data = file_of(landscape, kind)
    header = u32(40, 80, 60) + i16(1, 0) + u32(compression, len(data), 0, 0, 0, 0)
    e.stretch(header, data, (20, 20, 280, 200), (0, 0, 80, 60))
    e.no_pen().brush(RED).rect(0, 0, 15, 15)
    sample('emf-picture-' + kind.lower(), e, at(7, 7, RED), at(230, 70, (255, 220, 60)), at(100, 210, (90, 112, 70)))

e = Emf(300, 200)
e.add(33).add(59).ellipse(50, 20, 250, 180).add(60).add(67, u32(5)).no_pen()
for n in range(10):
    e.brush(COLOURS[n % 5]).rect(n * 30, 0, n * 30 + 31, 200)
e.add(34, i32(-1)).pen(BLACK, 2).no_brush().ellipse(50, 20, 250, 180)
sample('emf-clip-path', e, at(20, 100, WHITE), at(165, 100, BLUE), at(135, 100, GREEN), at(60, 30, WHITE))

e = Emf(300, 200)


def vertex(x, y, colour):
    return i32(x, y) + b''.join(i16((c * 257 + 0x8000) % 0x10000 - 0x8000) for c in colour) + i16(0)


e.add(118, bytes(16) + u32(2, 1, 0) + vertex(10, 10, BLUE) + vertex(290, 90, WHITE) + u32(0, 1))
e.add(118, bytes(16) + u32(2, 1, 1) + vertex(10, 100, GOLD) + vertex(140, 190, RED) + u32(0, 1))
e.add(118, bytes(16) + u32(3, 1, 2) + vertex(160, 190, (255, 0, 0)) + vertex(290, 190, (0, 255, 0)) +
      vertex(225, 100, (0, 0, 255)) + u32(0, 1, 2))
sample('emf-gradients', e, at(12, 50, BLUE), at(150, 50, (161, 184, 225)), at(75, 145, (255, 97, 0)),
       at(225, 160, (85, 85, 85)), at(165, 110, WHITE))

e = Emf(320, 120)
e.pen(BLACK).clear_back()
for n in range(6):
    e.brush(COLOURS[n % 5], 2, n).rect(10 + n * 50, 20, 50 + n * 50, 100)
sample('emf-hatches', e, *(ink(14 + n * 50, 24, 46 + n * 50, 96, 10, 45) for n in range(6)))

e = Emf(360, 240)
e.pen(BLUE, 2).brush((221, 235, 247)).round_rect(20, 20, 140, 70, 20, 20).rect(20, 160, 140, 210)
e.polygon((270, 90), (340, 120), (270, 150), (200, 120))
e.pen(DARK, 2, 0x10000 | 0x200).polyline((80, 70), (80, 160)).polyline((140, 45), (270, 45), (270, 90))
e.brush(DARK).no_pen().polygon((80, 160), (74, 148), (86, 148)).polygon((270, 90), (264, 78), (276, 78))
e.font(14).colour(BLACK).clear_back().align(6).text(80, 36, 'Start').text(80, 176, 'Stop').text(270, 112, 'Ready?')
sample('emf-flowchart', e, at(30, 45, (221, 235, 247)), at(80, 100, DARK), at(20, 20, WHITE), at(200, 45, DARK), at(320, 120, (221, 235, 247)))

e = Emf(240, 240)
for n in range(12):
    turn = math.radians(n * 30)
    e.add(35, f32(math.cos(turn), math.sin(turn), -math.sin(turn), math.cos(turn), 120, 120))
    e.no_pen().brush(COLOURS[n % 5]).polygon((20, -6), (100, -14), (100, 14), (20, 6))
e.add(35, f32(1, 0, 0, 1, 0, 0)).brush(BLACK).ellipse(110, 110, 131, 131)
sample('emf-world-transform', e, at(200, 120, BLUE), at(120, 200, GOLD), at(40, 120, ORANGE), at(120, 120, BLACK), at(5, 5, WHITE))

e = Emf(300, 200)
# Hundredths of a millimetre, upwards.
e.add(17, u32(3)).no_pen().brush(GREEN).rect(529, -529, 2646, -2646).brush(BLUE).ellipse(3969, -1058, 6615, -3704)
e.font(529).clear_back().colour(BLACK).text(529, -3175, 'Metric text')
sample('emf-metric', e, at(60, 60, GREEN), at(200, 90, BLUE), ink(20, 122, 130, 142, 10, 60))


# -- EMF+ -------------------------------------------------------------------------------------------------------------

def plus_axes(p, left, top, right, bottom):
    grid, axis = p.pen(LIGHT), p.pen(DARK)
    font, far = p.font(11), p.format(2, 1)
    for n in range(1, 5):
        y = bottom - n * (bottom - top) / 4
        p.draw_lines(grid, (left, y), (right, y))
    for n in range(5):
        p.string(str(25 * n), font, (left - 40, bottom - n * (bottom - top) / 4 - 8, 35, 16), DARK, far)
    p.draw_lines(axis, (left, top), (left, bottom), (right, bottom))


def plus_column_chart(p):
    plus_axes(p, 50, 40, 380, 240)
    for series, values in enumerate(VALUES):
        for group, value in enumerate(values):
            left = 65 + group * 80 + series * 20
            light = tuple((c + 255) // 2 for c in COLOURS[series])
            p.fill_rects(p.linear((left, 40, 18, 200), light, COLOURS[series], 90), (left, 240 - value * 2, 18, value * 2))
    title, label, middle = p.font(16, style=1), p.font(11), p.format(1)
    p.string('Sales by quarter', title, (0, 10, 400, 24), BLACK, middle)
    for n in range(4):
        p.string('Q%d' % (n + 1), label, (65 + n * 80, 245, 60, 16), DARK, middle)
    return p


sample('plus-column-chart', plus_column_chart(Plus(400, 270)), at(73, 238, BLUE), at(93, 238, ORANGE), at(73, 150, WHITE),
       ink(140, 8, 260, 30, 10, 60), ink(20, 30, 45, 250, 2, 30))

p = Plus(400, 270)
plus_axes(p, 50, 30, 380, 240)
for series, values in enumerate(VALUES):
    points = [(50 + n * 110, 240 - v * 2) for n, v in enumerate(values)]
    p.fill_polygon((128,) + COLOURS[series], (50, 240), *points, (380, 240))
    p.draw_lines(p.pen(COLOURS[series], 2.25, join=2), *points)
sample('plus-area-chart', p, at(52, 225, (182, 160, 151)), at(52, 120, (246, 190, 152)), at(52, 40, WHITE))

p = Plus(400, 270)
plus_axes(p, 50, 30, 380, 240)
for series, values in enumerate(VALUES):
    points = [(80 + n * 90, 240 - v * 2) for n, v in enumerate(values)]
    p.draw_curve(p.pen(COLOURS[series], 3, start=2, end=2), points)
    for x, y in points:
        p.fill_ellipse(WHITE, (x - 5, y - 5, 10, 10)).draw_ellipse(p.pen(COLOURS[series], 2), (x - 5, y - 5, 10, 10))
sample('plus-smooth-lines', p, at(80, 160, WHITE), at(85, 160, BLUE), at(175, 190, ORANGE), ink(86, 100, 160, 170, 5, 25))

p = Plus(300, 260)
angle = -90
for n, share in enumerate((35, 25, 20, 15, 5)):
    turn = share * 3.6
    p.fill_pie(p.radial((40, 20, 220, 220), tuple(min(255, c + 70) for c in COLOURS[n]), COLOURS[n]), (40, 20, 220, 220), angle, turn)
    p.draw_pie(p.pen(WHITE, 2), (40, 20, 220, 220), angle, turn)
    angle += turn
sample('plus-pie-chart', p, at(253, 100, BLUE), at(200, 80, (102, 148, 222)), at(170, 235, ORANGE), at(10, 10, WHITE), at(60, 75, GOLD))

p = Plus(300, 260)
angle = -90
for n, share in enumerate((35, 25, 20, 15, 5)):
    a, b = math.radians(angle), math.radians(angle + share * 3.6)
    steps = [a + (b - a) * s / 24 for s in range(25)]
    p.fill_polygon(COLOURS[n], *((150 + 110 * math.cos(t), 130 + 110 * math.sin(t)) for t in steps),
                   *((150 + 60 * math.cos(t), 130 + 60 * math.sin(t)) for t in reversed(steps)))
    angle += share * 3.6
p.string('35 %', p.font(28, style=1), (90, 100, 120, 60), BLUE, p.format(1, 1))
sample('plus-doughnut', p, at(235, 110, BLUE), at(66, 150, GREY), ink(110, 110, 190, 150, 10, 60), at(150, 90, WHITE))

p = Plus(420, 260)
text = 'Text boxes wrap at spaces, and every line is aligned on its own.'
font = p.font(14, 'Calibri')
frame = p.pen(GREY)
for n in range(3):
    box = (10 + n * 137, 10, 125, 110)
    p.draw_rects(frame, box).string(text, font, box, BLACK, p.format(n, n))
p.draw_rects(frame, (10, 140, 400, 50)).string('One line that must not wrap, whatever its length may be in the end',
                                              p.font(12), (10, 140, 400, 50), RED, p.format(1, 1, 0x1000))
p.string('Bold', p.font(20, style=1), (10, 205, 100, 30)).string('Italic', p.font(20, style=2), (110, 205, 100, 30))
p.string('Under', p.font(20, style=4), (210, 205, 100, 30)).string('Strike', p.font(20, style=8), (310, 205, 100, 30))
sample('plus-text-boxes', p, ink(11, 11, 134, 60, 8, 40), ink(11, 95, 134, 119, 0, 12), ink(148, 40, 271, 90, 8, 40),
       ink(285, 80, 408, 119, 8, 40), ink(60, 155, 380, 175, 8, 40), ink(10, 205, 60, 232, 10, 50))

p = Plus(360, 120)
font = p.font(24, 'Times New Roman', 2)
p.driver_string('f(x) = a', font, [(20 + n * 14, 50) for n in range(8)], BLUE)
p.driver_string('wave', font, [(160 + n * 40, 60 + 20 * math.sin(n * 1.5)) for n in range(4)], RED)
sample('plus-driver-string', p, ink(20, 30, 130, 58, 8, 50), ink(160, 40, 185, 62, 8, 60), ink(200, 60, 220, 82, 8, 60))

p = Plus(320, 240)
for n, (start, end) in enumerate(((0, 0), (1, 1), (2, 2), (3, 3), (0, 0x14), (0x12, 0x13), (0x11, 0))):
    p.draw_lines(p.pen(COLOURS[n % 5], 8, start=start, end=end), (40, 20 + n * 30), (280, 20 + n * 30))
p.draw_lines(p.pen(BLACK, 2, custom_end=p.arrow_cap(6, 8)), (40, 228), (280, 228))
sample('plus-line-ends', p, at(160, 20, BLUE), at(37, 50, ORANGE), at(38, 20, WHITE), at(281, 20, WHITE), at(270, 138, GREEN),
       at(282, 200, WHITE), at(160, 228, BLACK), at(266, 231, BLACK))

p = Plus(320, 200)
for n in range(3):
    p.draw_lines(p.pen(COLOURS[n], 14, join=(0, 1, 2)[n]), (20 + n * 100, 90), (60 + n * 100, 30), (100 + n * 100, 90))
for n, style in enumerate((1, 2, 3, 4)):
    p.draw_lines(p.pen(BLACK, 4, style=style), (20, 120 + n * 14), (300, 120 + n * 14))
p.draw_lines(p.pen(RED, 4, style=5, dashes=(4, 2, 1, 2), dash_cap=2), (20, 180), (300, 180))
sample('plus-dashes-joins', p, at(60, 25, BLUE), at(160, 17, WHITE), at(260, 26, GREY), ink(20, 119, 300, 123, 60, 85),
       ink(20, 133, 300, 137, 40, 65))

p = Plus(330, 200)
for n in range(50):
    x, y = 10 + n % 10 * 32, 10 + n // 10 * 38
    p.fill_rects(p.hatch(n, BLUE, (255, 242, 204)), (x, y, 26, 32))
sample('plus-hatches', p, ink(10, 10, 36, 42, 98, 100), ink(42, 48, 68, 80, 98, 100))

p = Plus(300, 200)
tile = Image.new('RGB', (16, 16), (255, 230, 153))
for n in range(16):
    tile.putpixel((n, n), (191, 0, 0))
    tile.putpixel((n, 0), (191, 0, 0))
p.fill_ellipse(p.texture(p.image(tile)), (10, 10, 130, 180))
p.fill_path(p.texture(p.image(tile), 3), p.round_path(160, 10, 130, 180, 20))
sample('plus-texture', p, at(72, 96, (191, 0, 0)), at(75, 105, (255, 230, 153)), at(12, 12, WHITE), at(161, 11, WHITE),
       ink(170, 20, 280, 180, 99, 100))

for kind in ('PNG', 'JPEG', 'RAW'):
    p = Plus(320, 240)
    alpha = kind != 'JPEG'
    p.fill_rects(ORANGE, (20, 100, 280, 40))
    p.draw_image(p.image(picture(80, 60, alpha), kind), (0, 0, 80, 60), (20, 20, 280, 200))
    p.draw_rects(p.pen(BLACK), (20, 20, 280, 200))
    sample('plus-picture-' + kind.lower(), p, at(25, 30, (123, 182, 250) if not alpha else (126, 183, 250)),
           at(290, 120, (238, 128, 54)) if alpha else at(290, 120, (166, 203, 250)), at(20, 120, BLACK))

p = Plus(320, 240)
image = p.image(picture(80, 60))
p.draw_image_points(image, (0, 0, 80, 60), (80, 20), (300, 50), (20, 180))
p.draw_image(image, (40, 0, 40, 30), (230, 180, 80, 50))
sample('plus-picture-skewed', p, at(20, 30, WHITE), at(120, 60, (137, 188, 250)), at(270, 205, (255, 220, 60)), at(300, 120, WHITE))

p = Plus(300, 200)
p.clip_path(p.ellipse_path(20, 20, 160, 160)).fill_rects(BLUE, (0, 0, 300, 200))
p.clip_rect((100, 0, 100, 200), 1).fill_rects(ORANGE, (0, 0, 300, 200))
p.reset_clip().clip_region(u32(3, 0x10000000) + f32(200, 40, 80, 80) + u32(0x10000000) + f32(240, 80, 50, 80))
p.fill_rects(GREEN, (0, 0, 300, 200))
sample('plus-clips', p, at(60, 100, BLUE), at(140, 100, ORANGE), at(190, 100, WHITE), at(210, 60, GREEN), at(260, 100, WHITE),
       at(280, 150, GREEN), at(22, 22, WHITE))

p = Plus(300, 200)
p.save(1).translate(150, 100)
for n in range(6):
    p.save(2).rotate(n * 60).translate(40, 0).fill_path((160,) + COLOURS[n % 5], p.ellipse_path(-40, -20, 90, 40)).restore(2)
p.restore(1)
p.add(0x4027, 2, f32(200, 130, 80, 60, 0, 0, 800, 600) + u32(9)).fill_rects(RED, (0, 0, 400, 300)).add(0x4029, 0, u32(9))
p.fill_rects(DARK, (0, 0, 20, 20))
sample('plus-transforms', p, at(10, 10, DARK), at(210, 140, RED), at(230, 100, (138, 167, 218)), at(290, 180, WHITE))

p = Plus(302, 227)
p.page(6).fill_rects(BLUE, (10, 10, 30, 20)).draw_rects(p.pen(RED, 1), (45, 10, 25, 20))
p.string('Millimetres', p.font(12, unit=3), (10, 40, 60, 10))
sample('plus-page-unit', p, at(60, 60, BLUE), at(170, 60, RED), at(200, 75, WHITE), ink(38, 150, 130, 172, 8, 50))

p = Plus(400, 160)
for n, text in enumerate(('Plan', 'Build', 'Ship')):
    x = 15 + n * 130
    p.fill_path((90, 0, 0, 0), p.round_path(x + 4, 34, 105, 80, 14))
    p.fill_path(p.linear((x, 30, 105, 80), tuple(min(255, c + 60) for c in COLOURS[n]), COLOURS[n], 90), p.round_path(x, 30, 105, 80, 14))
    p.string(text, p.font(20, style=1), (x, 30, 105, 80), WHITE, p.format(1, 1))
    if n < 2:
        p.fill_polygon(DARK, (x + 108, 62), (x + 118, 62), (x + 118, 55), (x + 128, 70), (x + 118, 85), (x + 118, 78), (x + 108, 78))
sample('plus-smart-art', p, at(20, 100, (72, 118, 200)), at(135, 70, DARK), at(60, 113, (165, 165, 165)), at(280, 100, (173, 173, 173)))

p = Plus(300, 300)
grid = p.pen(LIGHT)
spoke = [(150 + 120 * math.sin(k * 2 * math.pi / 5), 150 - 120 * math.cos(k * 2 * math.pi / 5)) for k in range(5)]
for step in (0.25, 0.5, 0.75, 1):
    p.draw_lines(grid, *((150 + (x - 150) * step, 150 + (y - 150) * step) for x, y in spoke), closed=True)
for n, values in enumerate(((80, 60, 90, 40, 70), (50, 90, 40, 80, 60))):
    points = [(150 + (x - 150) * v / 100, 150 + (y - 150) * v / 100) for (x, y), v in zip(spoke, values)]
    p.fill_polygon((80,) + COLOURS[n], *points).draw_lines(p.pen(COLOURS[n], 2), *points, closed=True)
sample('plus-radar', p, at(150, 130, (209, 184, 177)), at(10, 10, WHITE), at(150, 30, LIGHT))

p = Plus(300, 200)
p.fill_polygon(p.corners([(20, 20), (280, 20), (280, 180), (20, 180)], (150, 100), WHITE, [RED, GOLD, GREEN, BLUE]),
               (20, 20), (280, 20), (280, 180), (20, 180))
sample('plus-corner-gradient', p, at(22, 22, (255, 4, 4)), at(277, 22, (255, 193, 4)), at(150, 100, WHITE), at(22, 177, (71, 116, 196)))

p = Plus(300, 200)
p.fill_rects(p.linear((10, 10, 280, 80), RED, BLUE, 0, stops=[(0, RED), (0.5, GOLD), (1, BLUE)]), (10, 10, 280, 80))
p.fill_rects(p.linear((10, 110, 280, 80), WHITE, BLUE, 45, blends=[(0, 0), (0.5, 1), (1, 0)]), (10, 110, 280, 80))
sample('plus-linear-gradients', p, at(12, 50, (255, 1, 0)), at(150, 50, GOLD), at(287, 50, BLUE), at(150, 150, BLUE), at(13, 113, WHITE))

p = Plus(300, 200)
p.fill_rects(BLUE, (0, 0, 150, 200)).add(0x4004)
p.emf.no_pen().brush(ORANGE).rect(150, 0, 301, 201)
p.fill_rects(GREEN, (100, 50, 100, 100))
sample('plus-getdc', p, at(50, 100, BLUE), at(250, 100, ORANGE), at(150, 100, GREEN))

p = Plus(300, 200)
p.draw_lines(p.pen(BLUE, 12, compound=(0, 0.25, 0.75, 1)), (20, 40), (280, 40))
p.draw_rects(p.pen(p.linear((20, 70, 260, 110), RED, GOLD), 16), (40, 80, 220, 90))
sample('plus-compound-pens', p, at(150, 41, WHITE), at(150, 36, BLUE), at(150, 45, BLUE), at(150, 125, WHITE), at(40, 125, (255, 15, 0)),
       at(260, 125, (255, 177, 0)))


# -- Dual: both halves draw the same, the EMF half without alpha and gradients ------------------------------------------

p = Plus(400, 270, dual=True)
plus_column_chart(p)
emf_column_chart(p.emf)
sample('dual-column-chart', p, at(73, 200, (87, 128, 202)), at(73, 150, WHITE), ink(140, 8, 260, 30, 10, 60))

p = Plus(300, 200, dual=True)
p.fill_rects((128,) + RED, (20, 20, 160, 160))
p.emf.no_pen().brush((255, 127, 127)).rect(20, 20, 181, 181)
p.fill_rects((128,) + BLUE, (120, 60, 160, 100))
p.emf.brush((161, 184, 225)).rect(120, 60, 281, 161)
sample('dual-alpha', p, at(60, 60, (255, 127, 127)), at(230, 100, (161, 184, 225)), at(150, 100, (161, 120, 161)))

p = Plus(300, 120, dual=True)
p.fill_path(p.linear((20, 20, 260, 80), GOLD, ORANGE), p.round_path(20, 20, 260, 80, 20))
p.emf.no_pen().brush(GOLD).round_rect(20, 20, 281, 101, 40, 40)
p.string('Button', p.font(28, style=1), (20, 20, 260, 80), WHITE, p.format(1, 1))
sample('dual-button', p, at(25, 60, (255, 190, 1)), at(275, 60, ORANGE), at(21, 21, WHITE), ink(20, 60, 280, 61, 80, 100))

p = Plus(300, 200, dual=True)
p.fill_rects(RED, (0, 0, 300, 200)).add(0x4FFF)
p.emf.no_pen().brush(GREEN).rect(0, 0, 301, 201)
sample('dual-unknown-record', p, at(150, 100, GREEN))

p = Plus(300, 200, dual=True)
p.draw_image(p.image(picture(120, 80), 'RAW'), (0, 0, 120, 80), (30, 20, 240, 160))
p.emf.stretch(*dib(picture(120, 80)), (30, 20, 240, 160), (0, 0, 120, 80))
sample('dual-picture', p, at(40, 30, (124, 182, 250)), at(210, 60, (255, 220, 60)), at(100, 170, (90, 112, 70)), at(10, 10, WHITE))

# -- WMF --------------------------------------------------------------------------------------------------------------

w = Wmf(4000, 2700, 960)
w.window(0, 0, 4000, 2700).pen(DARK, 10).line((500, 400), (500, 2400)).line((500, 2400), (3800, 2400)).pen(BLACK, 0, 5)
for series, values in enumerate(VALUES):
    w.brush(COLOURS[series])
    for group, value in enumerate(values):
        left = 650 + group * 800 + series * 200
        w.rect(left, 2400 - value * 20, left + 180, 2400)
w.font(160, weight=700).clear_back().align(6).text(2100, 100, 'Sales by quarter')
sample('wmf-column-chart', w, 'size 400 270', at(73, 200, BLUE), at(93, 120, ORANGE), at(50, 100, DARK), ink(140, 8, 280, 30, 10, 60))

w = Wmf(300, 200, 96)
w.window(0, 0, 300, 200).pen(BLUE, 3).brush((221, 235, 247)).rect(10, 10, 100, 90).ellipse(110, 10, 200, 90)
w.pie((210, 10, 290, 90), (290, 50), (250, 10)).polygon((10, 190), (55, 110), (100, 190))
w.pen(RED, 1, 1).polyline((120, 190), (150, 110), (180, 190), (210, 110), (240, 190))
sample('wmf-shapes', w, at(50, 50, (221, 235, 247)), at(155, 50, (221, 235, 247)), at(265, 35, (221, 235, 247)), at(225, 65, WHITE),
       at(55, 170, (221, 235, 247)), at(11, 50, BLUE))

w = Wmf(300, 150, 96)
w.window(0, 0, 300, 150).clear_back().font(24, 'Times New Roman').colour(BLACK).text(10, 10, 'Times: caf\xe9')
w.font(24, 'Arial', 700, 1).colour(BLUE).text(10, 50, 'Arial bold italic')
w.font(18, 'Courier New', escapement=150).colour(RED).text(10, 130, 'Courier, rising')
w.font(14).colour(BLACK).text(180, 110, 'up and down', [8, 3, 8, -3] * 6, 0x2000)
sample('wmf-text', w, ink(10, 12, 130, 36, 8, 50), ink(10, 52, 180, 76, 8, 50), ink(180, 100, 290, 130, 3, 40))

w = Wmf(320, 240, 96)
w.window(0, 0, 320, 240).stretch(picture(80, 60), (20, 20, 280, 200)).add(0x012D, i16(0))
sample('wmf-picture', w, at(40, 30, (122, 181, 250)), at(230, 70, (255, 220, 60)), at(100, 210, (90, 112, 70)), at(10, 10, WHITE))

w = Wmf(300, 200, 96)
w.window(0, 0, 300, 200).pen(BLACK, 1).brush(GOLD)
w.poly_polygon([(20, 20), (140, 20), (140, 140), (20, 140)], [(50, 50), (110, 50), (110, 110), (50, 110)])
w.add(0x001E).clip(160, 20, 280, 100).brush(GREEN).ellipse(160, 20, 280, 180).add(0x0127, i16(-1))
w.brush(BLUE, 2, 5).rect(160, 120, 280, 180)
sample('wmf-holes-clip', w, at(30, 80, GOLD), at(80, 80, WHITE), at(220, 80, GREEN), at(220, 108, WHITE), ink(165, 125, 275, 175, 15, 45))

w = Wmf()
# A formula as editors write it: no placeable header, a window of fine units.
w.size = (1024, 448)
w.mode(8).window(0, 0, 3200, 1400).clear_back().font(700, 'Times New Roman', italic=1).align(24)
w.text(100, 900, 'y = x').font(420, 'Times New Roman').text(1850, 560, '2').font(700, 'Times New Roman').text(2150, 900, '+ 1')
w.pen(BLACK, 40).line((100, 1150), (3000, 1150))
sample('wmf-formula', w, at(500, 368, BLACK), ink(30, 130, 560, 340, 5, 40), ink(590, 90, 660, 185, 5, 60))

w = Wmf()
w.size = (192, 96)
w.mode(3).window(0, 0, 5080, 2540).pen(BLACK, 0, 5).brush(BLUE).rect(0, 0, 2540, -1270)
w.brush(ORANGE).ellipse(2540, -1270, 5080, -2540)
sample('wmf-metric', w, at(40, 20, BLUE), at(144, 72, ORANGE), at(150, 20, WHITE))

w = Wmf()
w.size = (400, 270)
w.embed(emf_column_chart(Emf(400, 270)).file(), 1000).window(0, 0, 300, 200).brush(RED).rect(0, 0, 300, 200)
sample('wmf-embedded-emf', w, at(73, 198, BLUE), at(390, 260, WHITE))

w = Wmf()
w.size = (240, 160)
w.mode(8).window(0, 0, 24000, 16000).add(0x020E, i16(160, 240)).pen(BLACK, 0, 5).brush(GREEN).rect(2000, 2000, 12000, 14000)
# An object and a text that can't be read: the rest is still drawn.
w.add(0x06FF, i16(0, 6, 0, 0)).add(0x0521, i16(200, 1, 1))
w.handles += 1
w.brush(BLUE).rect(13000, 2000, 22000, 14000)
sample('wmf-broken-records', w, at(70, 80, GREEN), at(180, 80, BLUE), at(10, 80, WHITE))

print(len(made), 'metafiles')
