#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick, GraphicsMagick and netpbm.

For files written by a program, the expected image is what another program decodes; for files assembled here, it is what this
script encoded. Prints the samples that two programs decode differently.
"""
import math
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import zlib

from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)

for folder in ('good', 'cut', 'lying', 'foreign', 'unsupported'):
    shutil.rmtree(folder, ignore_errors=True)
    os.mkdir(folder)
CONVERT = image_magick('convert')
W, H = 37, 23  # prime: rows end inside a byte, and the passes of interlaced images differ in width
WORK = tempfile.mkdtemp()

scene = Image.new('RGBA', (W, H))
for y in range(H):
    for x in range(W):
        box = 8 < x < 20 and 6 < y < 14
        colour = (230, 150, 70) if box else (x * 255 // (W - 1), y * 255 // (H - 1), (x * 7 + y * 13) % 256)
        scene.putpixel((x, y), colour + (255 if box else max(0, 255 - abs(x - 18) * 14),))
rgb, grey, alpha = scene.convert('RGB'), scene.convert('L'), scene.getchannel('A')
with_alpha, grey_alpha = scene, Image.merge('LA', (grey, alpha))


def few_greys(bits):
    """Reduces the scene to the grey levels of so many bits."""
    top = 2 ** bits - 1
    return grey.point(lambda v: (v * top + 127) // 255 * 255 // top)


def run(command):
    return subprocess.run(command, shell=True, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def source(name, picture):
    path = os.path.join(WORK, name)
    picture.save(path)
    return path


SOURCES = {'rgb': source('rgb.ppm', rgb), 'grey': source('grey.pgm', grey), 'alpha': source('alpha.pgm', alpha),
           'rgba': source('rgba.png', with_alpha), 'la': source('la.png', grey_alpha),
           'bw': source('bw.pgm', few_greys(1)), 'grey2': source('grey2.pgm', few_greys(2)),
           'grey4': source('grey4.pgm', few_greys(4))}
for colours in (2, 4, 16, 200):
    SOURCES['p%d' % colours] = source('p%d.ppm' % colours, rgb.quantize(colours).convert('RGB'))


def by_im(path):
    return Image.frombytes('RGBA', (W, H), run(f"{CONVERT} '{path}' -depth 8 rgba:-"))


def by_gm(path):
    return Image.frombytes('RGBA', (W, H), run(f"gm convert '{path}' -depth 8 rgba:-"))


def by_pil(path):
    return Image.open(path).convert('RGBA')


def by_netpbm(path):
    parts = []
    for option in ('', '-alpha'):
        out = os.path.join(WORK, 'out.pnm')
        with open(out, 'wb') as file:
            file.write(run(f"pngtopam {option} '{path}' | pamdepth 255"))
        parts.append(Image.open(out).convert('L' if option else 'RGB'))
    parts[0].putalpha(parts[1])
    return parts[0]


def write_pam(name, picture, note=''):
    kind = {1: 'GRAYSCALE', 3: 'RGB', 4: 'RGB_ALPHA'}[len(picture.getbands())]
    head = f'P7\n{note}WIDTH {picture.width}\nHEIGHT {picture.height}\nDEPTH {len(picture.getbands())}\nMAXVAL 255\n' \
           f'TUPLTYPE {kind}\nENDHDR\n'
    with open(f'good/{name}.png.pam', 'wb') as file:
        file.write(head.encode() + picture.tobytes())


def visible(picture):
    return [p if p[3] else (0, 0, 0, 0) for p in picture.getdata()]


def shown(name, channels, *decoders):
    """Writes the expected image as decoded by the first decoder."""
    path = f'good/{name}.png'
    picture = decoders[0](path)
    for decoder in decoders[1:]:
        if visible(decoder(path)) != visible(picture):
            print(path, 'decodes differently with', decoder.__name__)
    # ImageMagick rounds 16-bit colours with alpha twice.
    note = '# within 1\n' if 'rgba-16' in name else ''
    write_pam(name, picture.convert({1: 'L', 3: 'RGB', 4: 'RGBA'}[channels]), note)


def made_by(program, name, command, channels, kind, *decoders):
    """kind: the colour type, depth and interlace that the file must have."""
    name = f'{program}-{name}'
    run(command.format(**SOURCES, out=f'good/{name}.png'))
    data = open(f'good/{name}.png', 'rb').read()
    if (data[25], data[24], data[28]) != kind:
        raise SystemExit(f'{name} has type {data[25]}, depth {data[24]}, interlace {data[28]}')
    shown(name, channels, *decoders)


# Every colour type, depth and interlace.
for kind, picture, depths, number, channels in (('grey', 'grey', (8, 16), 0, 1), ('rgb', 'rgb', (8, 16), 2, 3),
                                                ('grey-alpha', 'la', (8, 16), 4, 4),
                                                ('rgba', 'rgba', (8, 16), 6, 4), ('grey', 'bw', (1,), 0, 1),
                                                ('grey', 'grey2', (2,), 0, 1), ('grey', 'grey4', (4,), 0, 1),
                                                ('palette', 'p200', (8,), 3, 3)):
    for depth in depths:
        for interlace in (0, 1):
            # 16-bit levels that have no exact 8-bit equivalent.
            level = '-evaluate Multiply 0.987 ' if depth == 16 else ''
            made_by('im', f'{kind}-{depth}' + ('-interlaced' if interlace else ''),
                    f'{CONVERT} {{{picture}}} {level}-define png:color-type={number} '
                    f'-define png:bit-depth={depth} -define png:exclude-chunk=date,tIME '
                    + ('-interlace PNG ' if interlace else '') + '{out}',
                    channels, (number, depth, interlace), by_im, *([by_pil, by_netpbm] if depth < 16 else []))

made_by('gm', 'rgb', 'gm convert {rgb} {out}', 3, (2, 8, 0), by_pil, by_im)
made_by('gm', 'rgba', 'gm convert {rgba} {out}', 4, (6, 8, 0), by_pil, by_im)
made_by('gm', 'interlaced', 'gm convert {rgb} -interlace Line {out}', 3, (2, 8, 1), by_pil, by_im)
made_by('gm', 'palette', 'gm convert {p16} -type Palette {out}', 3, (3, 4, 0), by_pil, by_im)
made_by('gm', 'bilevel', 'gm convert {bw} -monochrome {out}', 1, (0, 1, 0), by_pil, by_im)
made_by('netpbm', 'rgb', 'pnmtopng {rgb} > {out}', 3, (2, 8, 0), by_pil, by_im)
made_by('netpbm', 'alpha', 'pnmtopng -alpha {alpha} {rgb} > {out}', 4, (6, 8, 0), by_pil, by_im)
for depth in (1, 2, 4):  # ImageMagick uses more bits than needed
    made_by('netpbm', f'palette-{depth}', f'pnmtopng {{p{2 ** depth}}} > {{out}}', 3, (3, depth, 0), by_pil, by_im)
    made_by('netpbm', f'palette-{depth}-interlaced', f'pnmtopng -interlace {{p{2 ** depth}}} > {{out}}', 3, (3, depth, 1),
            by_pil, by_im)
made_by('netpbm', 'palette-transparent', 'pnmtopng -transparent rgb:e6/96/46 {p200} > {out}', 4, (3, 8, 0), by_pil, by_im)
made_by('netpbm', 'grey-4', 'pamdepth 15 {grey} | pnmtopng > {out}', 1, (0, 4, 0), by_pil, by_im)
made_by('netpbm', 'no-filter', 'pnmtopng -nofilter -compression 0 {rgb} > {out}', 3, (2, 8, 0), by_pil, by_im)
made_by('netpbm', 'paeth', 'pnmtopng -paeth -size "100 200 1" {rgb} > {out}', 3, (2, 8, 0), by_pil, by_im)


def pillow(name, picture, channels, **options):
    picture.save(f'good/pil-{name}.png', **options)
    shown('pil-' + name, channels, by_im, by_gm)


pillow('1', few_greys(1).convert('1'), 1)
pillow('grey', grey, 1, dpi=(300, 150))
pillow('grey-alpha', grey_alpha, 4)
pillow('rgb', rgb, 3, optimize=True)
pillow('rgba', with_alpha, 4)
pillow('palette', rgb.quantize(50), 3)
pillow('palette-2', rgb.quantize(4), 3, bits=2)
pillow('palette-alpha', rgb.quantize(40), 4, transparency=bytes(range(0, 200, 5)))
pillow('grey-transparent', few_greys(4), 4, transparency=17 * 5)
pillow('rgb-transparent', rgb, 4, transparency=(230, 150, 70))
pillow('grey-16', grey.point(lambda v: v * 257, 'I'), 1)


# Assembled here, chunk by chunk.
def chunk(name, data):
    return struct.pack('>I', len(data)) + name + data + struct.pack('>I', zlib.crc32(name + data))


SIGNATURE = b'\x89PNG\r\n\x1a\n'
END = chunk(b'IEND', b'')


def header(colour, depth=8, width=W, height=H, interlace=0, compression=0):
    return chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, depth, colour, compression, 0, interlace))


def filtered(data, row_bytes, pixel_bytes, filter_of):
    """Filters row y with filter_of(y), 0 to 4."""
    out = b''
    above = bytes(row_bytes)
    for y in range(len(data) // row_bytes):
        row = data[y * row_bytes:(y + 1) * row_bytes]
        kind = filter_of(y)
        out += bytes([kind])
        for i, value in enumerate(row):
            a = row[i - pixel_bytes] if i >= pixel_bytes else 0
            b = above[i]
            c = above[i - pixel_bytes] if i >= pixel_bytes else 0
            nearest = min((a, b, c), key=lambda v: abs(a + b - c - v))
            out += bytes([(value - (0, a, b, (a + b) // 2, nearest)[kind]) & 255])
        above = row
    return out


def hand(name, head, packed, picture, between=b'', after=b'', folder='good', note=''):
    """packed: the zlib stream, or a list with the data of each IDAT chunk."""
    data = b''.join(chunk(b'IDAT', piece) for piece in ([packed] if isinstance(packed, bytes) else packed))
    path = f'{folder}/hand-{name}.png' if folder == 'good' else f'{folder}/{name}.png'
    with open(path, 'wb') as file:
        file.write(SIGNATURE + head + between + data + after + END)
    if picture:
        write_pam('hand-' + name, picture, note)
    return path


plain = filtered(rgb.tobytes(), W * 3, 3, lambda y: 0)
for name, picture, colour, pixel_bytes in (('filters-grey', grey, 0, 1), ('filters-rgb', rgb, 2, 3),
                                           ('filters-rgba', with_alpha, 6, 4)):
    rows = filtered(picture.tobytes(), W * pixel_bytes, pixel_bytes, lambda y: (y * 3 + y // 5) % 5)
    hand(name, header(colour), zlib.compress(rows), picture)
squeezed = zlib.compress(plain, 9)
hand('stored', header(2), zlib.compress(plain, 0), rgb)
fixed = zlib.compressobj(9, zlib.DEFLATED, 15, 9, zlib.Z_FIXED)
hand('fixed-codes', header(2), fixed.compress(plain) + fixed.flush(), rgb)
small = zlib.compressobj(9, zlib.DEFLATED, 9)
hand('small-window', header(2), small.compress(plain) + small.flush(), rgb)
hand('chunks-of-one-byte', header(2), [squeezed[i:i + 1] for i in range(len(squeezed))], rgb)
hand('empty-chunks', header(2), [b'', squeezed[:50], b'', b'', squeezed[50:], b''], rgb)
# The chunk's checksum covers all of the stream, and like libpng we do without the stream's own.
hand('wrong-adler', header(2), squeezed[:-1] + bytes([squeezed[-1] ^ 1]), rgb)
hand('suggested-palette', header(2), squeezed, rgb, between=chunk(b'PLTE', bytes(range(48))))
hand('unknown-chunks', header(2), squeezed, rgb, between=chunk(b'vaRn', b'private data'),
     after=chunk(b'tEXt', b'Title\0after the pixels') + chunk(b'prVt', b''))
short_palette = chunk(b'PLTE', bytes((10, 20, 30, 200, 100, 50, 0, 255, 0)))
# The pixels use one colour more than the palette has; it decodes as black.
hand('colour-beyond-the-palette', header(3), zlib.compress(filtered(bytes(x % 4 for x in range(W)) * H, W, 1, lambda y: 0)),
     Image.frombytes('RGB', (W, H), b''.join((b'\x0a\x14\x1e', b'\xc8\x64\x32', b'\0\xff\0', b'\0\0\0')[x % 4]
                                             for x in range(W)) * H), between=short_palette)
for width, height in ((1, 1), (1, 9), (9, 1), (3, 5)):  # most passes are empty
    part = grey.crop((3, 3, 3 + width, 3 + height))
    passes = b''
    for left, top, across, down in ((0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2),
                                    (0, 1, 1, 2)):
        for y in range(top, height, down):
            row = bytes(part.getpixel((x, y)) for x in range(left, width, across))
            passes += b'\0' + row if row else b''
    hand(f'interlaced-{width}x{height}', header(0, width=width, height=height, interlace=1), zlib.compress(passes), part)

# Colour spaces given by numbers. The matrices from linear light to that of sRGB are the published ones.
P3 = ((1.2249, -0.2247, 0.0), (-0.0420, 1.0419, 0.0), (-0.0196, -0.0786, 1.0979))
ADOBE = ((1.3983, -0.3983, 0.0), (0.0, 1.0, 0.0), (0.0, -0.0429, 1.0429))
BT2020 = ((1.6605, -0.5876, -0.0728), (-0.1246, 1.1329, -0.0083), (-0.0182, -0.1006, 1.1187))
SAME = ((1, 0, 0), (0, 1, 0), (0, 0, 1))


def srgb_light(v):
    return v / 12.92 if v <= 0.04045 else ((v + 0.055) / 1.055) ** 2.4


def bt709_light(v):
    return v / 4.5 if v < 0.081 else ((v + 0.099) / 1.099) ** (1 / 0.45)


def pq_light(v):
    root = v ** (32 / 2523)
    nits = 10000 * (max(root - 0.8359375, 0) / (18.8515625 - 18.6875 * root)) ** (16384 / 2610)
    light, peak = nits / 203, 1000 / 203
    return light * (1 + light / peak ** 2) / (1 + light)


def hlg_light(v):
    scene = v * v / 3 if v <= 0.5 else (math.exp((v - 0.55991073) / 0.17883277) + 0.28466892) / 12
    light, peak = 1000 * scene ** 1.2 / 203, 1000 / 203
    return light * (1 + light / peak ** 2) / (1 + light)


def as_srgb(picture, light_of, matrix):
    def level(light):
        light = min(max(light, 0), 1)
        return round(255 * (light * 12.92 if light <= 0.0031308 else 1.055 * light ** (1 / 2.4) - 0.055))

    out = Image.new('RGB', picture.size)
    out.putdata([tuple(level(sum(m * light_of(v / 255) for m, v in zip(row, pixel))) for row in matrix)
                 for pixel in picture.getdata()])
    return out


def space(gamma, *chromaticities):
    return chunk(b'gAMA', struct.pack('>I', gamma)) + (
        chunk(b'cHRM', struct.pack('>8I', *chromaticities)) if chromaticities else b'')


def coded(*codes):
    return chunk(b'cICP', bytes(codes))


SRGB_PRIMARIES = (31270, 32900, 64000, 33000, 30000, 60000, 15000, 6000)
ADOBE_PRIMARIES = (31270, 32900, 64000, 33000, 21000, 71000, 15000, 6000)
wide = b''.join(b'\0' + bytes(v for v in row for _ in (0, 1)) for row in (rgb.tobytes()[y * W * 3:(y + 1) * W * 3] for y in range(H)))
for name, between, light_of, matrix in (
        ('gamma', space(100000), lambda v: v, SAME),
        ('gamma-and-primaries', space(55556, *ADOBE_PRIMARIES), lambda v: v ** 1.8, ADOBE),
        ('ordinary-gamma', space(45455, *SRGB_PRIMARIES), srgb_light, SAME),
        ('ordinary-gamma-and-primaries', space(45455, *ADOBE_PRIMARIES), srgb_light, ADOBE),
        ('primaries-only', space(100000, *ADOBE_PRIMARIES)[16:], srgb_light, SAME),
        ('srgb-beats-gamma', chunk(b'sRGB', b'\0') + space(100000), srgb_light, SAME),
        ('cicp-p3', coded(12, 13, 0, 1), srgb_light, P3),
        ('cicp-beats-srgb', chunk(b'sRGB', b'\0') + coded(12, 13, 0, 1), srgb_light, P3),
        ('cicp-srgb', coded(1, 13, 0, 1) + space(100000), srgb_light, SAME),
        ('cicp-bt709', coded(1, 1, 0, 1), bt709_light, SAME),
        ('cicp-bt2020', coded(9, 14, 0, 1), bt709_light, BT2020),
        ('cicp-pq', coded(9, 16, 0, 1), pq_light, BT2020),
        ('cicp-hlg', coded(9, 18, 0, 1), hlg_light, BT2020),
        ('cicp-limited-range', coded(9, 16, 0, 0), srgb_light, SAME)):
    meant = rgb if light_of == srgb_light and matrix == SAME else as_srgb(rgb, light_of, matrix)
    note = '' if meant == rgb else '# within 1\n'
    hand(name, header(2), squeezed, meant, between=between, note=note)
    if name in ('gamma', 'cicp-pq', 'gamma-and-primaries'):
        hand(name + '-16', header(2, depth=16), zlib.compress(wide), meant, between=between, note=note)

# Must be rejected.
whole = open(hand('rgb', header(2), squeezed, rgb), 'rb').read()


def refused(path, data):
    with open(path + '.png', 'wb') as file:
        file.write(data)


refused('cut/empty', b'')
refused('cut/header-only', whole[:33])
refused('cut/in-pixels', whole[:len(whole) * 2 // 3])
refused('cut/no-end', whole[:-12])
hand('rows', header(2), zlib.compress(plain[:-W * 3 - 1]), None, folder='cut')  # a valid stream with one row too few
hand('size', header(2, width=60000, height=8000), squeezed, None, folder='lying')
hand('too-large', header(2, width=70000, height=70000), squeezed, None, folder='lying')
hand('more-rows', header(2, height=H + 1), squeezed, None, folder='lying')
hand('no-width', header(2, width=0), squeezed, None, folder='lying')
hand('no-palette', header(3), squeezed, None, folder='lying')
hand('filter', header(2), zlib.compress(b'\x07' + plain[1:]), None, folder='lying')
# A fixed-code block whose match starts before the first byte.
hand('distance', header(0, width=3, height=1), b'\x78\x9c' + b'\x63\x60\x84\x4f\x00\x00\x00\x00\x00', None, folder='lying')
refused('lying/chunk-length', whole[:33] + b'\x7f\xff\xff\xff' + whole[37:])
refused('lying/crc-of-header', whole[:32] + bytes([whole[32] ^ 1]) + whole[33:])
refused('lying/crc-of-pixels', whole[:-13] + bytes([whole[-13] ^ 1]) + whole[-12:])
hand('compression', header(2, compression=1), squeezed, None, folder='unsupported')
hand('depth', header(2, depth=4), squeezed, None, folder='unsupported')
hand('critical-chunk', header(2), squeezed, None, between=chunk(b'VaRN', b'needed'), folder='unsupported')
refused('foreign/text', b'This is a text, whatever its name says.\n' * 30)
rgb.save('foreign/gif.png', format='GIF')
shutil.rmtree(WORK)
