#!/usr/bin/python3
"""Draws the expected image of the sample in this folder and generates the files that must be rejected. Needs Pillow and the
Liberation fonts.

make.c writes good/libuemf-shapes.wmf. The expected image is drawn here from the same coordinates. Edges and text differ
between renderers, so the comparison is coarse.
"""
import os
import struct

from PIL import Image, ImageDraw, ImageFont

os.chdir(os.path.dirname(os.path.abspath(__file__)))
CELL, FINE = 4, 4  # pixels per cell, and subpixels per pixel
SCALE = 96 / 1440 * FINE
WIDTH, HEIGHT = 288, 192

picture = Image.new('RGB', (WIDTH * FINE, HEIGHT * FINE), 'white')
draw = ImageDraw.Draw(picture)


def units(*numbers):
    return [n * SCALE for n in numbers]


BLUE, GREEN, INK = (0, 0, 200), (0, 160, 0), (160, 0, 160)
pen = round(45 * SCALE)
draw.rectangle(units(150 - 22, 150 - 22, 1350 + 22, 900 + 22), (255, 240, 160), BLUE, pen)
hatched = Image.new('1', picture.size)
ImageDraw.Draw(hatched).ellipse(units(1500, 150, 2700, 900), 1)
lines = Image.new('RGB', picture.size, 'white')
across = ImageDraw.Draw(lines)
for i in range(-HEIGHT * FINE, WIDTH * FINE, 8 * FINE):
    across.line((i, 0, i + HEIGHT * FINE, HEIGHT * FINE), (200, 0, 0), FINE)
    across.line((i + HEIGHT * FINE, 0, i, HEIGHT * FINE), (200, 0, 0), FINE)
picture.paste(lines, mask=hatched)
draw.ellipse(units(1500 - 22, 150 - 22, 2700 + 22, 900 + 22), None, BLUE, pen)
draw.polygon(units(2850, 900, 3450, 150, 4050, 900), GREEN)
draw.line(units(2850, 900, 3450, 150, 4050, 900, 2850, 900), BLUE, pen, 'curve')
draw.pieslice(units(150 - 22, 1050 - 22, 1350 + 22, 1800 + 22), 0, 270, GREEN, BLUE, pen)
draw.rounded_rectangle(units(1500 - 22, 1050 - 22, 2700 + 22, 1800 + 22), 150 * SCALE, GREEN, BLUE, pen)
corners = units(2850, 1800, 3250, 1050, 3650, 1800, 4050, 1050)
for i in range(0, 6, 2):
    (x, y), (to_x, to_y) = corners[i:i + 2], corners[i + 2:i + 4]
    steps = 24 * FINE
    for step in range(steps):
        if step % 32 < 24:  # dashes of 18 pixels, gaps of 6
            parts = [(a + (b - a) * n / steps) for n in (step, step + 1) for a, b in ((x, to_x), (y, to_y))]
            draw.line(parts, 'black', FINE)


def text(x, y, words, size, font, turn):
    letters = Image.new('L', picture.size)
    face = ImageFont.truetype(f'/usr/share/fonts/truetype/liberation/{font}-Regular.ttf', round(size * SCALE))
    ImageDraw.Draw(letters).text(units(x, y), words, 255, face)
    picture.paste(INK, mask=letters.rotate(turn, Image.BICUBIC, center=units(x, y)))


text(150, 1900, 'Arial text', 360, 'LiberationSans', 0)
text(2200, 2400, 'Turned text', 300, 'LiberationSerif', 20)

picture = picture.resize((WIDTH // CELL, HEIGHT // CELL), Image.BOX)
head = f'P7\n# on average within 3\n# cells of {CELL}\nWIDTH {picture.width}\nHEIGHT {picture.height}\nDEPTH 3\n' \
       'MAXVAL 255\nTUPLTYPE RGB\nENDHDR\n'
open('good/libuemf-shapes.wmf.pam', 'wb').write(head.encode() + picture.tobytes())

for folder in ('cut', 'lying', 'foreign'):
    os.makedirs(folder, exist_ok=True)
whole = open('good/libuemf-shapes.wmf', 'rb').read()
open('cut/empty.wmf', 'wb').write(b'')
open('cut/in-records.wmf', 'wb').write(whole[:len(whole) * 2 // 3])
open('cut/in-header.wmf', 'wb').write(whole[:30])
# A frame of 60000 by 60000 inches.
open('lying/size.wmf', 'wb').write(whole[:6] + struct.pack('<4hH', -30000, -30000, 30000, 30000, 1) + whole[16:])
open('lying/record-size.wmf', 'wb').write(whole[:40] + struct.pack('<I', 0x7ffffff0) + whole[44:])
open('lying/record-of-no-size.wmf', 'wb').write(whole[:40] + struct.pack('<I', 0) + whole[44:])
open('foreign/text.wmf', 'wb').write(b'This is a text, whatever its name says.\n' * 30)
