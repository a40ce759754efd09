#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick and OpenJPEG's opj_compress."""
import os
import struct
import subprocess
import sys
from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)

CONVERT = image_magick('convert')
W, H = 83, 61
for folder in ('good', 'cut', 'lying', 'foreign'):
    os.makedirs(folder, exist_ok=True)

picture = Image.new('RGB', (W, H))
for y in range(H):
    for x in range(W):
        inside = (x - 30) ** 2 + (y - 25) ** 2 < 200
        picture.putpixel((x, y), (220, 60, 40) if inside else (x * 3, y * 4, 255 - x * 2))
picture.save('scene.ppm')
picture.convert('L').save('scene-grey.pgm')


def pam(path, picture, note=''):
    """Writes the expected image of a sample; the note is its tolerance."""
    kind = {1: 'GRAYSCALE', 3: 'RGB', 4: 'RGB_ALPHA'}[len(picture.getbands())]
    head = f'P7\n{note}WIDTH {picture.width}\nHEIGHT {picture.height}\nDEPTH {len(picture.getbands())}\nMAXVAL 255\n' \
           f'TUPLTYPE {kind}\nENDHDR\n'
    open(path + '.pam', 'wb').write(head.encode() + picture.tobytes())


def opj(name, *options, source='scene.ppm'):
    """Lossless, unless the options say otherwise."""
    subprocess.run(['opj_compress', '-i', source, '-o', name, *options], check=True, stdout=subprocess.DEVNULL)
    if source.endswith(('.ppm', '.pgm')):
        pam(name, Image.open(source))


def decoded(name):
    """Writes the expected image of a lossy sample, as decoded by OpenJPEG's own program."""
    subprocess.run(['opj_decompress', '-i', name, '-o', 'data.png'], check=True, stdout=subprocess.DEVNULL)
    pam(name, Image.open('data.png').convert('RGB'))
    os.remove('data.png')


def raw(name, data, characteristics, *options):
    open('data.raw', 'wb').write(data)
    opj(name, '-F', f'{W},{H},{characteristics}', *options, source='data.raw')
    os.remove('data.raw')
    pam(name, picture)


opj('good/opj-plain.j2k')
opj('good/opj-plain.jp2')
opj('good/opj-lossy.j2k', '-q', '38', '-I')
decoded('good/opj-lossy.j2k')
opj('good/opj-tiles.j2k', '-t', '32,24', '-n', '3')
opj('good/opj-offset.j2k', '-t', '40,40', '-d', '13,7', '-T', '5,3', '-n', '4')
opj('good/opj-packets.jp2', '-r', '20,5,1', '-c', '[64,64],[32,32]', '-b', '16,16', '-p', 'RPCL', '-SOP', '-EPH', '-PLT')
opj('good/opj-parts.j2k', '-TP', 'R', '-t', '50,50', '-p', 'RPCL')
opj('good/opj-grey.jp2', source='scene-grey.pgm')
subprocess.run([CONVERT, 'scene.ppm', '-quality', '90', 'good/im-lossy.jp2'], check=True)
decoded('good/im-lossy.jp2')
picture.save('good/pil-tiles.jp2', tile_size=(64, 64))
pam('good/pil-tiles.jp2', picture)
clear = picture.convert('RGBA')
clear.putalpha(Image.linear_gradient('L').resize((W, H)))
clear.save('good/pil-alpha.jp2')
pam('good/pil-alpha.jp2', clear)
clear.convert('LA').save('good/pil-grey-alpha.jp2')
pam('good/pil-grey-alpha.jp2', clear.convert('LA').convert('RGBA'))
clear.getchannel('A').save('scene-alpha.pgm')

planes = [list(picture.getchannel(c).getdata()) for c in 'RGB']
flat = [v for plane in planes for v in plane]
raw('good/opj-bits12.j2k', b''.join(struct.pack('>H', (v * 4095 + 127) // 255) for v in flat), '3,12,u', '-mct', '0')
raw('good/opj-bits16.j2k', b''.join(struct.pack('>H', v * 257) for v in flat), '3,16,u', '-mct', '0')
raw('good/opj-signed.j2k', bytes((v - 128) & 255 for v in flat), '3,8,s', '-mct', '0')
black_and_white = picture.getchannel('R').point(lambda v: 255 if v > 127 else 0)
black_and_white.save('scene-bit1.pgm')
black_and_white.convert('1').save('data.png')
opj('good/opj-bit1.j2k', source='data.png')
pam('good/opj-bit1.j2k', black_and_white)
os.remove('data.png')

W, H = 82, 60  # opj_compress miscounts the samples of images with odd sizes
even = picture.crop((0, 0, W, H))
even.save('scene-even.ppm')
ycc = even.convert('YCbCr')
half = [ycc.getchannel(c).resize((W // 2, H // 2), Image.BOX) for c in ('Cb', 'Cr')]
data = ycc.getchannel('Y').tobytes() + half[0].tobytes() + half[1].tobytes()
raw('good/opj-ycc420.j2k', data, '3,8,u@1x1:2x2:2x2', '-mct', '0')
pam('good/opj-ycc420.j2k', even, '# on average within 4\n')

# Unknown markers without parameters in the main header and in that of the only tile-part, and no end marker.
W, H = 83, 61
stream = open('good/opj-plain.j2k', 'rb').read()
part = stream.index(b'\xff\x90')
cod = stream.index(b'\xff\x52')
length = struct.unpack('>I', stream[part + 6:part + 10])[0]
marked = stream[:cod] + b'\xff\x30' + stream[cod:part + 6] + struct.pack('>I', length + 2) + stream[part + 10:part + 12] + \
    b'\xff\x3f' + stream[part + 12:-2]
open('good/hand-markers.j2k', 'wb').write(marked)
pam('good/hand-markers.j2k', picture)
boxed = open('good/opj-plain.jp2', 'rb').read()
at = boxed.index(stream[:40])
open('good/hand-markers.jp2', 'wb').write(boxed[:at - 8] + struct.pack('>I', len(marked) + 8) + b'jp2c' + marked)
pam('good/hand-markers.jp2', picture)
open('good/hand-no-end.jp2', 'wb').write(boxed[:-2])
pam('good/hand-no-end.jp2', picture)

whole = open('good/opj-plain.jp2', 'rb').read()
open('cut/in-pixels.jp2', 'wb').write(whole[:len(whole) * 2 // 3])
whole = open('good/opj-plain.j2k', 'rb').read()
open('cut/in-pixels.j2k', 'wb').write(whole[:len(whole) * 2 // 3])
# 60000 x 8000 pixels in a file of a few thousand bytes, with 2 x 2 precincts.
liar = bytearray(open('good/opj-packets.jp2', 'rb').read())
at = liar.index(b'\xff\x4f\xff\x51')
liar[at + 8:at + 16] = liar[at + 24:at + 32] = struct.pack('>II', 60000, 8000)
cod = liar.index(b'\xff\x52', at)
levels = liar[cod + 9]
liar[cod + 14:cod + 14 + levels + 1] = b'\x11' * (levels + 1)
open('lying/size.jp2', 'wb').write(liar)
large = bytearray(whole)
large[8:12] = struct.pack('>I', 70000)
open('lying/too-large.j2k', 'wb').write(large)
Image.new('RGB', (4, 4)).save('data.png')
os.rename('data.png', 'foreign/png.j2k')
