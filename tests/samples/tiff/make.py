#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick, libtiff's tools and djpeg.

For files written by a program, the expected image is what ImageMagick decodes; for files assembled here, it is what this
script encoded.
"""
import ctypes
import io
import math
import os
import shutil
import struct
import subprocess
import sys
from PIL import Image, ImageCms

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)

CONVERT = image_magick('convert')
W, H = 37, 29  # not a multiple of a byte, a strip or a tile
for folder in ('good', 'cut', 'lying', 'foreign', 'unsupported'):
    shutil.rmtree(folder, ignore_errors=True)
    os.mkdir(folder)

scene = Image.new('RGB', (W, H))
for y in range(H):
    for x in range(W):
        inside = (x - 13) ** 2 + (y - 11) ** 2 < 50
        scene.putpixel((x, y), (220, 60, 40) if inside else (x * 7, y * 8, 255 - x * 4 - y))
scene.save('scene.ppm')
alpha = Image.new('L', (W, H))
for y in range(H):
    for x in range(W):
        alpha.putpixel((x, y), min(255, x * 8))
grey = scene.convert('L')
bilevel = grey.point(lambda v: 255 if v > 120 else 0).convert('1')


def run(*command):
    subprocess.run(command, check=True, stderr=subprocess.DEVNULL)


# Tolerances. JPEG decoders round differently; Lab and YCbCr colours depend on the white point and on rounding.
WITHIN = {'hand-old-jpeg': 6, 'hand-ycbcr-1-1': 2, 'hand-ycbcr-2-1': 2, 'hand-ycbcr-2-2': 2, 'hand-ycbcr-4-2': 2,
          'hand-lab': 3, 'hand-lab-16': 3, 'hand-lab-shifted': 3, 'hand-lab-shifted-16': 3, 'hand-lab-alpha': 3,
          'hand-cmyk-16': 1, 'hand-premultiplied': 1, 'hand-float-24': 1}


def pam(name, picture):
    """Writes the expected image of the sample good/NAME.tif."""
    kind = {1: 'GRAYSCALE', 2: 'GRAYSCALE_ALPHA', 3: 'RGB', 4: 'RGB_ALPHA'}[len(picture.getbands())]
    note = '# within %d\n' % WITHIN[name] if name in WITHIN else ''
    head = 'P7\n' + note + 'WIDTH %d\nHEIGHT %d\nDEPTH %d\nMAXVAL 255\nTUPLTYPE %s\nENDHDR\n' % (
        picture.size + (len(picture.getbands()), kind))
    open('good/' + name + '.tif.pam', 'wb').write(head.encode() + picture.tobytes())


def reference(name, channels):
    """Writes what ImageMagick decodes, as grey (1), RGB (3), or either with alpha (2, 4)."""
    form = {1: 'gray', 2: 'rgba', 3: 'rgb', 4: 'rgba'}[channels]
    out = subprocess.run([CONVERT, 'good/' + name + '.tif[0]', '-auto-orient', '-depth', '16', '-endian', 'LSB',
                          form + ':-'], check=True, stdout=subprocess.PIPE).stdout
    out = bytes((v * 255 + 32767) // 65535 for v, in struct.iter_unpack('<H', out))
    mode = {1: 'L', 2: 'RGBA', 3: 'RGB', 4: 'RGBA'}[channels]
    picture = Image.frombytes(mode, (W, H), out)
    pam(name, Image.merge('LA', (picture.getchannel(0), picture.getchannel(3))) if channels == 2 else picture)


def im(name, *options, source='scene.ppm', channels=3, form=''):
    run(CONVERT, source, *options, form + 'good/im-' + name + '.tif')
    reference('im-' + name, channels)


def tool(name, *command, channels=3):
    run(*command, 'good/libtiff-' + name + '.tif')
    reference('libtiff-' + name, channels)


# Written by ImageMagick.
grey.save('grey.tmp.png')
bilevel.save('bilevel.tmp.png')
with_alpha = scene.copy()
with_alpha.putalpha(alpha)
with_alpha.save('alpha.tmp.png')
im('plain', '-compress', 'None')
im('lzw', '-compress', 'LZW')
im('zip', '-compress', 'Zip')
im('packbits', '-compress', 'RLE')
im('zstd', '-compress', 'Zstd')
im('lzma', '-compress', 'LZMA')
im('webp', '-compress', 'WebP', '-quality', '90')
im('jpeg', '-compress', 'JPEG', '-quality', '90')
im('big-endian', '-compress', 'LZW', '-endian', 'MSB')
im('bigtiff', '-compress', 'LZW', form='TIFF64:')
im('bigtiff-big-endian', '-compress', 'None', '-endian', 'MSB', form='TIFF64:')
im('tiles', '-compress', 'LZW', '-define', 'tiff:tile-geometry=32x16')
im('tiles-16', '-compress', 'Zip', '-depth', '16', '-define', 'tiff:tile-geometry=16x32')
im('planes', '-compress', 'LZW', '-interlace', 'Plane')
im('planes-alpha', '-compress', 'None', '-interlace', 'Plane', source='alpha.tmp.png', channels=4)
im('one-row-strips', '-compress', 'None', '-define', 'tiff:rows-per-strip=1')
im('16-bit', '-compress', 'None', '-depth', '16', '-evaluate', 'Multiply', '0.987')
im('16-bit-big-endian', '-compress', 'LZW', '-depth', '16', '-endian', 'MSB', '-evaluate', 'Multiply', '0.987')
im('32-bit', '-compress', 'None', '-depth', '32', '-evaluate', 'Multiply', '0.987')
im('12-bit', '-compress', 'None', '-depth', '12')
im('10-bit-grey', '-compress', 'None', '-depth', '10', source='grey.tmp.png', channels=1)
im('4-bit', '-compress', 'None', '-depth', '4')
im('grey', '-compress', 'LZW', source='grey.tmp.png', channels=1)
im('grey-16', '-compress', 'LZW', '-depth', '16', source='grey.tmp.png', channels=1)
im('grey-4', '-compress', 'None', '-depth', '4', source='grey.tmp.png', channels=1)
im('grey-2', '-compress', 'None', '-depth', '2', source='grey.tmp.png', channels=1)
im('grey-white-is-0', '-compress', 'None', '-define', 'quantum:polarity=min-is-white', source='grey.tmp.png',
   channels=1)
im('jpeg-grey', '-compress', 'JPEG', '-quality', '90', source='grey.tmp.png', channels=1)
im('g3', '-compress', 'Fax', '-type', 'Bilevel', source='bilevel.tmp.png', channels=1)
im('g4', '-compress', 'Group4', '-type', 'Bilevel', source='bilevel.tmp.png', channels=1)
im('g4-low-bit-first', '-compress', 'Group4', '-define', 'tiff:fill-order=lsb', source='bilevel.tmp.png', channels=1)
im('palette', '-compress', 'LZW', '-type', 'Palette', '-colors', '200')
im('palette-4', '-compress', 'None', '-colors', '16', '-type', 'Palette')
im('alpha', '-compress', 'LZW', source='alpha.tmp.png', channels=4)
im('alpha-16', '-compress', 'LZW', '-depth', '16', source='alpha.tmp.png', channels=4)
im('grey-alpha', '-compress', 'LZW', '-colorspace', 'Gray', source='alpha.tmp.png', channels=2)

# Written by libtiff's tools.
tool('bits-white-is-0', 'tiffcp', '-c', 'none', 'good/im-g4.tif', channels=1)
tool('bits-white-is-0-packbits', 'tiffcp', '-c', 'packbits', 'good/im-g4.tif', channels=1)
tool('g3-2d', 'tiffcp', '-c', 'g3:2d:fill', 'good/im-g4.tif', channels=1)
tool('g3-1d', 'tiffcp', '-c', 'g3:1d', 'good/im-g4.tif', channels=1)
tool('jpeg-tiles', 'tiffcp', '-c', 'jpeg:90', '-t', '-w', '32', '-l', '32', 'good/im-plain.tif')
tool('jpeg-rgb', 'tiffcp', '-c', 'jpeg:r:90', 'good/im-plain.tif')
tool('planes-tiles', 'tiffcp', '-c', 'zip:2', '-p', 'separate', '-t', '-w', '16', '-l', '16', 'good/im-plain.tif')
tool('low-bit-first', 'tiffcp', '-c', 'none', '-f', 'lsb2msb', 'good/im-plain.tif')
tool('jbig', 'tiffcp', '-c', 'jbig', 'good/im-g4.tif', channels=1)
tool('lerc', 'tiffcp', '-c', 'lerc', 'good/im-plain.tif')

# Two damaged lines of Group 3. The decoder gives each up where an impossible code comes and goes on with the
# next; the rest of the line is white.
damaged = bytearray(open('good/libtiff-g3-1d.tif', 'rb').read())
strip = 8
bits = ''.join(f'{byte:08b}' for byte in damaged[8:])
lines = []
at = bits.find('000000000001')
while len(lines) < H:
    lines.append(at + 12)
    at = bits.find('000000000001', at + 12)
for y in (7, 20):
    bits = bits[:lines[y]] + '000000001' + bits[lines[y] + 9:]
damaged[8:] = int(bits, 2).to_bytes(len(bits) // 8, 'big')
open('good/hand-g3-damaged.tif', 'wb').write(damaged)
shown = bilevel.convert('L')
for y in (7, 20):
    shown.paste(255, (0, y, W, y + 1))
pam('hand-g3-damaged', shown)

# Written by Pillow.
for name, compression in (('bits', None), ('bits-lzw', 'tiff_lzw'), ('rle', 'tiff_ccitt')):
    bilevel.save('good/pil-' + name + '.tif', compression=compression)
    pam('pil-' + name, bilevel.convert('L'))
for mode, picture in (('palette', scene.convert('P', palette=Image.ADAPTIVE, colors=50)), ('cmyk', None),
                      ('grey-alpha', Image.merge('LA', (grey, alpha)))):
    if picture:
        name = 'pil-' + mode
        picture.save('good/' + name + '.tif')
        pam(name, picture.convert('RGB') if mode == 'palette' else picture)


# Assembled here, tag by tag.
def tiff(name, tags, chunks, order='<', gap=b''):
    """tags: {number: (type, values)}; chunks become strips, or tiles if tag 322 is present."""
    size = {1: 'B', 2: 's', 3: 'H', 4: 'I', 5: 'II', 6: 'b', 7: 'B', 11: 'f', 12: 'd'}
    out = io.BytesIO()
    out.write((b'II' if order == '<' else b'MM') + struct.pack(order + 'HI', 42, 0) + gap)
    offsets = []
    for chunk in chunks:
        offsets.append(out.tell())
        out.write(chunk)
    tags = dict(tags)
    if chunks:
        tags[324 if 322 in tags else 273] = (4, offsets)
        tags[325 if 322 in tags else 279] = (4, [len(c) for c in chunks])
    entries = b''
    for number in sorted(tags):
        kind, values = tags[number]
        if kind in (2, 7) or isinstance(values, bytes):
            data, count = bytes(values), len(values)
        elif kind == 5:
            data, count = b''.join(struct.pack(order + 'II', *v) for v in values), len(values)
        else:
            data, count = struct.pack(order + '%d%s' % (len(values), size[kind]), *values), len(values)
        if len(data) > 4:
            if out.tell() % 2:
                out.write(b'\0')
            at = out.tell()
            out.write(data)
            data = struct.pack(order + 'I', at)
        entries += struct.pack(order + 'HHI', number, kind, count) + data.ljust(4, b'\0')
    if out.tell() % 2:
        out.write(b'\0')
    at = out.tell()
    out.write(struct.pack(order + 'H', len(tags)) + entries + b'\0\0\0\0')
    data = bytearray(out.getvalue())
    data[4:8] = struct.pack(order + 'I', at)
    open('good/hand-' + name + '.tif', 'wb').write(data)


def meant(name, picture):
    pam('hand-' + name, picture)


def base(photometric, samples=1, bits=8, compression=1, width=W, height=H, **more):
    tags = {256: (3, [width]), 257: (3, [height]), 258: (3, [bits] * samples), 259: (3, [compression]),
            262: (3, [photometric]), 277: (3, [samples]), 278: (3, [height])}
    for key, value in more.items():
        tags[int(key[1:])] = value
    return tags


def packed(rows, bits):
    """Packs samples MSB first; each row starts on a byte boundary."""
    out = b''
    for row in rows:
        number = 0
        for sample in row:
            number = number << bits | sample
        fill = -(len(row) * bits) % 8
        out += (number << fill).to_bytes((len(row) * bits + fill) // 8, 'big')
    return out


def rows_of(picture, scale):
    data = list(picture.getdata())
    return [[scale(v) for v in data[y * W:(y + 1) * W]] for y in range(H)]


for bits in (3, 6, 14):
    top = 2 ** bits - 1
    rows = rows_of(grey, lambda v: (v * top + 127) // 255)
    tiff('%d-bit-grey' % bits, base(1, bits=bits), [packed(rows, bits)])
    out = Image.new('L', (W, H))
    out.putdata([(v * 255 + top // 2) // top for row in rows for v in row])
    meant('%d-bit-grey' % bits, out)

# 5 bits per channel, in two strips.
rows = [[v >> 3 for pixel in row for v in pixel] for row in rows_of(scene, lambda v: v)]
tiff('5-bit', base(2, samples=3, bits=5, _278=(3, [24])), [packed(rows[:24], 5), packed(rows[24:], 5)])
meant('5-bit', scene.point(lambda v: ((v >> 3) * 255 + 15) // 31))

# Signed samples: from their least value to their greatest, or in the range given by the file.
low, high = grey.getextrema()
stretched = grey.point([max(0, min(255, int((v - low) * 255 / (high - low) + 0.5))) for v in range(256)])
tiff('signed', base(1, _339=(3, [2])), [bytes((v + 128) & 255 for v in grey.getdata())])
meant('signed', stretched)
tiff('signed-16', base(1, bits=16, _339=(3, [2])), [b''.join(struct.pack('<h', v * 3 - 50) for v in grey.getdata())])
meant('signed-16', stretched)
tiff('signed-12', base(1, bits=12, _339=(3, [2])), [packed(rows_of(grey, lambda v: (v * 8 - 999) & 4095), 12)])
meant('signed-12', stretched)
tiff('signed-32-planes', base(2, samples=3, bits=32, _339=(3, [2] * 3), _284=(3, [2])),
     [b''.join(struct.pack('<i', v * 7 - 10000) for v in part.getdata()) for part in scene.split()])
low, high = (min(v[0] for v in scene.getextrema()), max(v[1] for v in scene.getextrema()))
meant('signed-32-planes', scene.point([max(0, min(255, int((v - low) * 255 / (high - low) + 0.5))) for v in range(256)] * 3))
tiff('signed-range', base(1, _339=(3, [2]), _340=(6, [-128]), _341=(6, [127])),
     [bytes((v + 128) & 255 for v in grey.getdata())])
meant('signed-range', grey)
tiff('signed-old-range', base(1, bits=16, _339=(3, [2]), _280=(3, [100]), _281=(3, [610])),
     [b''.join(struct.pack('<h', v * 2 + 100) for v in grey.getdata())])
meant('signed-old-range', grey)
tiff('24-bit', base(1, bits=24), [b''.join(struct.pack('<I', v * 0x010101)[:3] for v in grey.getdata())])
meant('24-bit', grey)
# Floating point from 0 to 1, in three sizes and both byte orders.
parts = [v / 255 for pixel in scene.getdata() for v in pixel]
for name, bits, form in (('half', 16, 'e'), ('float', 32, 'f'), ('double', 64, 'd')):
    for order, suffix in (('<', ''), ('>', '-big-endian')):
        tiff(name + suffix, base(2, samples=3, bits=bits, _339=(3, [3] * 3)),
             [struct.pack(order + '%d%s' % (len(parts), form), *parts)], order=order)
        meant(name + suffix, scene)
run('tiffcp', '-c', 'zip:3', 'good/hand-float.tif', 'good/libtiff-float-predictor.tif')
pam('libtiff-float-predictor', scene)


def float24(value):
    fraction, exponent = math.frexp(value)
    return struct.pack('<I', (exponent + 62) << 16 | round((fraction * 2 - 1) * 65535))[:3] if value else bytes(3)


tiff('float-24', base(1, bits=24, _339=(3, [3])), [b''.join(float24(v / 255) for v in grey.getdata())])
meant('float-24', grey)
# Floating point in a range given by the file; one value is NaN.
values = [v * 10.0 - 300 for v in grey.getdata()]
values[0] = float('nan')
tiff('float-range', base(1, bits=32, _339=(3, [3]), _340=(11, [-300.0]), _341=(11, [2250.0])),
     [struct.pack('<%df' % len(values), *values)])
out = grey.copy()
out.putpixel((0, 0), 0)
meant('float-range', out)

# Premultiplied alpha.
pixels = [tuple((c * a + 127) // 255 for c in rgb) + (a,) for rgb, a in zip(scene.getdata(), alpha.getdata())]
tiff('premultiplied', base(2, samples=4, _338=(3, [1])), [bytes(v for p in pixels for v in p)])
out = Image.new('RGBA', (W, H))
out.putdata([tuple(min(255, (c * 255 + p[3] // 2) // p[3]) if p[3] else c for c in p[:3]) + (p[3],) for p in pixels])
meant('premultiplied', out)
# A fourth sample of unspecified meaning, and a fifth.
tiff('unexplained', base(2, samples=4, _338=(3, [0])), [bytes(v for p in pixels for v in p[:3] + (9,))])
meant('unexplained', Image.merge('RGB', [Image.frombytes('L', (W, H), bytes(p[i] for p in pixels)) for i in range(3)]))
tiff('mask-then-alpha', base(2, samples=5, _338=(3, [0, 2])),
     [bytes(v for p, a in zip(scene.getdata(), alpha.getdata()) for v in p + (9, a))])
meant('mask-then-alpha', with_alpha)
tiff('palette-alpha', base(3, samples=2, _338=(3, [2]), _320=(3, [v * 257 for v in list(range(256)) * 2] + [0] * 256)),
     [bytes(v for g, a in zip(grey.getdata(), alpha.getdata()) for v in (g, a))])
meant('palette-alpha', Image.merge('RGBA', (grey, grey, Image.new('L', (W, H)), alpha)))

# Palettes: grey, two colours, 8-bit levels.
tiff('palette-grey', base(3, _320=(3, [(255 - v) * 257 for v in range(256)] * 3)), [grey.tobytes()])
meant('palette-grey', grey.point(lambda v: 255 - v))
tiff('palette-1', base(3, bits=1, _320=(3, [10 << 8, 200 << 8, 30 << 8, 100 << 8, 50 << 8, 5 << 8])),
     [bilevel.tobytes()])
out = Image.new('RGB', (W, H))
out.putdata([(200, 100, 5) if v else (10, 30, 50) for v in bilevel.getdata()])
meant('palette-1', out)
tiff('palette-8-bit-levels', base(3, _320=(3, list(range(256)) * 2 + [7] * 256)), [grey.tobytes()])
meant('palette-8-bit-levels', Image.merge('RGB', (grey, grey, Image.new('L', (W, H), 7))))

# CMYK without a profile: ideal inks.
cmyk = Image.merge('CMYK', (scene.getchannel(0), scene.getchannel(1), scene.getchannel(2), alpha.point(lambda v: v // 3)))
inks = Image.new('RGB', (W, H))
inks.putdata([tuple(((255 - v) * (255 - p[3]) * 2 + 255) // 510 for v in p[:3]) for p in cmyk.getdata()])
cmyk.save('good/pil-cmyk.tif')
pam('pil-cmyk', inks)
tiff('cmyk-planes', base(5, samples=4, _284=(3, [2])), [band.tobytes() for band in cmyk.split()])
meant('cmyk-planes', inks)
tiff('cmyk-alpha', base(5, samples=5, _338=(3, [2])),
     [bytes(v for p, a in zip(cmyk.getdata(), alpha.getdata()) for v in p + (a,))])
inks.putalpha(alpha)
meant('cmyk-alpha', inks)
tiff('cmyk-16', base(5, samples=4, bits=16), [b''.join(struct.pack('<4H', *(v * 257 for v in p)) for p in cmyk.getdata())])
inks.putalpha(255)
meant('cmyk-16', inks.convert('RGB'))

# CIE L*a*b* with D50 white; a and b are signed or, in the other encoding, offset.
lab_profile, srgb_profile = ImageCms.createProfile('LAB'), ImageCms.createProfile('sRGB')
lab = ImageCms.profileToProfile(scene, srgb_profile, lab_profile, outputMode='LAB')
back = ImageCms.profileToProfile(lab, lab_profile, srgb_profile, outputMode='RGB')
shifted = bytes(v for p in lab.getdata() for v in p)
signed = bytes(v ^ 128 if i % 3 else v for i, v in enumerate(shifted))
tiff('lab', base(8, samples=3), [signed])
tiff('lab-16', base(8, samples=3, bits=16),
     [b''.join(struct.pack('<Hhh', a * 257, (b - 128) * 256, (c - 128) * 256) for a, b, c in lab.getdata())])
tiff('lab-shifted', base(9, samples=3), [shifted])
tiff('lab-alpha', base(8, samples=4, _338=(3, [2])),
     [b''.join(signed[i * 3:i * 3 + 3] + bytes([a]) for i, a in enumerate(alpha.getdata()))])
tiff('lab-shifted-16', base(9, samples=3, bits=16), [b''.join(struct.pack('<H', v * 256) for v in shifted)])
for name in ('lab', 'lab-16', 'lab-shifted', 'lab-shifted-16'):
    meant(name, back)
back.putalpha(alpha)
meant('lab-alpha', back)

# YCbCr with chroma subsampling of 1x1, 2x1, 2x2 and 4x2.
ycbcr = scene.convert('YCbCr')
full = list(ycbcr.getdata())
for across, down in ((1, 1), (2, 1), (2, 2), (4, 2)):
    data = b''
    shown = [None] * (W * H)
    for top in range(0, H, down):
        for left in range(0, W, across):
            near = [(x, y) for y in range(top, top + down) for x in range(left, left + across)]
            colour = full[top * W + left]
            for x, y in near:
                inside = x < W and y < H
                luminance = full[y * W + x][0] if inside else 0
                data += bytes([luminance])
                if inside:
                    shown[y * W + x] = (luminance,) + colour[1:]
            data += bytes(colour[1:])
    name = 'ycbcr-%d-%d' % (across, down)
    tiff(name, base(6, samples=3, _530=(3, [across, down]),
                    _532=(5, [(0, 1), (255, 1), (128, 1), (255, 1), (128, 1), (255, 1)])), [data])
    out = Image.new('YCbCr', (W, H))
    out.putdata(shown)
    meant(name, out.convert('RGB'))

# Old-style JPEG: a tag points to a complete stream.
run('cjpeg', '-quality', '95', '-sample', '2x2', '-outfile', 'tmp.jpg', 'scene.ppm')
stream = open('tmp.jpg', 'rb').read()
tiff('old-jpeg', base(6, samples=3, compression=6, _513=(4, [8]), _514=(4, [len(stream)]), _530=(3, [2, 2])), [],
     gap=stream)
run('djpeg', '-nosmooth', '-outfile', 'tmp.ppm', 'tmp.jpg')
meant('old-jpeg', Image.open('tmp.ppm'))

# High dynamic range, written by libtiff itself.
lib = ctypes.CDLL('libtiff.so.6')
lib.TIFFOpen.restype = ctypes.c_void_p
for name, photometric, compression, samples in (('logluv', 32845, 34676, 3), ('logluv-24', 32845, 34677, 3),
                                                ('logl', 32844, 34676, 1)):
    handle = ctypes.c_void_p(lib.TIFFOpen(('good/libtiff-' + name + '.tif').encode(), b'w'))
    for number, value in ((256, W), (257, H), (258, 32 if samples == 3 else 16), (277, samples), (262, photometric),
                          (259, compression), (284, 1), (278, 8)):
        lib.TIFFSetField(handle, number, ctypes.c_int(value))
    lib.TIFFSetField(handle, 65560, ctypes.c_int(0))  # samples are passed as float
    for y in range(H):
        row = []
        for x in range(W):
            r, g, b = ((v / 255) ** 2.2 for v in scene.getpixel((x, y)))
            xyz = (0.497 * r + 0.339 * g + 0.164 * b, 0.256 * r + 0.678 * g + 0.066 * b,
                   0.023 * r + 0.113 * g + 0.864 * b)
            row += xyz if samples == 3 else xyz[1:2]
        lib.TIFFWriteScanline(handle, (ctypes.c_float * len(row))(*row), ctypes.c_uint32(y), ctypes.c_uint16(0))
    lib.TIFFClose(handle)
    run('tiff2rgba', 'good/libtiff-' + name + '.tif', 'tmp.tif')
    pam('libtiff-' + name, Image.open('tmp.tif').convert('RGB' if samples == 3 else 'L'))

# Stored in each of the eight orientations; the decoded image is the same.
turns = {2: (Image.FLIP_LEFT_RIGHT,), 3: (Image.ROTATE_180,), 4: (Image.FLIP_TOP_BOTTOM,), 5: (Image.TRANSPOSE,),
         6: (Image.ROTATE_90,), 7: (Image.TRANSVERSE,), 8: (Image.ROTATE_270,)}
for number, turn in turns.items():
    stored = grey.transpose(turn[0])
    tiff('turned-%d' % number, base(1, width=stored.size[0], height=stored.size[1], _274=(3, [number])),
         [stored.tobytes()], order='<>'[number % 2])
    meant('turned-%d' % number, grey)

# Must be rejected. The directory comes first, so that pixels are what is missing.
head = struct.pack('<2sHI', b'II', 42, 8)
entries = {256: (3, 1, W), 257: (3, 1, H), 258: (3, 1, 8), 259: (3, 1, 1), 262: (3, 1, 1), 273: (4, 1, 140),
           277: (3, 1, 1), 278: (3, 1, H), 279: (4, 1, W * H)}


def directory_first(name, changes, pixels, following=0):
    e = dict(entries)
    e.update(changes)
    out = head + struct.pack('<H', len(e))
    for number in sorted(e):
        kind, count, value = e[number]
        out += struct.pack('<HHII', number, kind, count, value)
    out += struct.pack('<I', following)
    open(name + '.tif', 'wb').write(out.ljust(140, b'\0') + pixels)


directory_first('good/hand-directory-first', {}, grey.tobytes())
meant('directory-first', grey)
directory_first('cut/in-pixels', {}, grey.tobytes()[:-200])
directory_first('lying/size', {256: (4, 1, 20000), 257: (4, 1, 20000), 278: (4, 1, 20000),
                                            279: (4, 1, 400000000)}, grey.tobytes())
directory_first('lying/lzw-size', {256: (4, 1, 20000), 257: (4, 1, 20000), 259: (3, 1, 5),
                                                278: (4, 1, 20000)}, grey.tobytes())
directory_first('lying/too-large', {256: (4, 1, 70000), 259: (3, 1, 32773)}, grey.tobytes())
directory_first('lying/many-strips', {257: (4, 1, 65000), 278: (4, 1, 1), 273: (4, 65000, 140),
                                        279: (4, 65000, 140)}, grey.tobytes())
directory_first('unsupported/compression', {259: (3, 1, 12345)}, grey.tobytes())
directory_first('unsupported/colour-filter', {262: (3, 1, 32803)}, grey.tobytes())
directory_first('unsupported/complex-samples', {258: (3, 1, 64), 339: (3, 1, 6)}, grey.tobytes() * 8)
scene.save('foreign/png.tif', format='PNG')
open('cut/empty.tif', 'wb').write(b'')
open('cut/header-only.tif', 'wb').write(b'II*\0\0\0\0\0')
open('lying/directory-outside.tif', 'wb').write(b'II*\0\0\0\0\x40' + bytes(100))

# A chain of directories that loops back to the first: one page.
directory_first('good/hand-chain-is-a-ring', {}, grey.tobytes(), following=8)
meant('chain-is-a-ring', grey)

for name in os.listdir('.'):
    if '.tmp.' in name or name.startswith('tmp.'):
        os.unlink(name)
