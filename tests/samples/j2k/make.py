#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick 6 and OpenJPEG's opj_compress."""
import os
import struct
import subprocess
from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
W, H = 83, 61

picture = Image.new('RGB', (W, H))
for y in range(H):
    for x in range(W):
        inside = (x - 30) ** 2 + (y - 25) ** 2 < 200
        picture.putpixel((x, y), (220, 60, 40) if inside else (x * 3, y * 4, 255 - x * 2))
picture.save('scene.ppm')
picture.convert('L').save('scene-grey.pgm')


def opj(name, *options, source='scene.ppm'):
    subprocess.run(['opj_compress', '-i', source, '-o', name, *options], check=True, stdout=subprocess.DEVNULL)


def raw(name, data, characteristics, *options):
    open('data.raw', 'wb').write(data)
    opj(name, '-F', f'{W},{H},{characteristics}', *options, source='data.raw')
    os.remove('data.raw')


opj('plain.j2k')
opj('plain.jp2')
opj('lossy.j2k', '-q', '38', '-I')
opj('tiles.j2k', '-t', '32,24', '-n', '3')
opj('offset.j2k', '-t', '40,40', '-d', '13,7', '-T', '5,3', '-n', '4')
opj('packets.jp2', '-r', '20,5,1', '-c', '[64,64],[32,32]', '-b', '16,16', '-p', 'RPCL', '-SOP', '-EPH', '-PLT')
opj('parts.j2k', '-TP', 'R', '-t', '50,50', '-p', 'RPCL')
opj('grey.jp2', source='scene-grey.pgm')
subprocess.run(['convert-im6.q16', 'scene.ppm', '-quality', '90', 'magick.jp2'], check=True)
picture.save('pillow.jp2', tile_size=(64, 64))
clear = picture.convert('RGBA')
clear.putalpha(Image.linear_gradient('L').resize((W, H)))
clear.save('alpha.jp2')
clear.convert('LA').save('grey-alpha.jp2')
clear.getchannel('A').save('scene-alpha.pgm')

planes = [list(picture.getchannel(c).getdata()) for c in 'RGB']
flat = [v for plane in planes for v in plane]
raw('bits12.j2k', b''.join(struct.pack('>H', (v * 4095 + 127) // 255) for v in flat), '3,12,u', '-mct', '0')
raw('bits16.j2k', b''.join(struct.pack('>H', v * 257) for v in flat), '3,16,u', '-mct', '0')
raw('signed.j2k', bytes((v - 128) & 255 for v in flat), '3,8,s', '-mct', '0')
black_and_white = picture.getchannel('R').point(lambda v: 255 if v > 127 else 0)
black_and_white.save('scene-bit1.pgm')
black_and_white.convert('1').save('data.png')
opj('bit1.j2k', source='data.png')
os.remove('data.png')

W, H = 82, 60  # opj_compress miscounts the samples of images with odd sizes
even = picture.crop((0, 0, W, H))
even.save('scene-even.ppm')
ycc = even.convert('YCbCr')
half = [ycc.getchannel(c).resize((W // 2, H // 2), Image.BOX) for c in ('Cb', 'Cr')]
data = ycc.getchannel('Y').tobytes() + half[0].tobytes() + half[1].tobytes()
raw('ycc420.j2k', data, '3,8,u@1x1:2x2:2x2', '-mct', '0')

whole = open('plain.jp2', 'rb').read()
open('cut.jp2', 'wb').write(whole[:len(whole) * 2 // 3])
whole = open('plain.j2k', 'rb').read()
open('cut.j2k', 'wb').write(whole[:len(whole) * 2 // 3])
# 60000 x 8000 pixels in a file of a few thousand bytes, with 2 x 2 precincts.
liar = bytearray(open('packets.jp2', 'rb').read())
at = liar.index(b'\xff\x4f\xff\x51')
liar[at + 8:at + 16] = liar[at + 24:at + 32] = struct.pack('>II', 60000, 8000)
cod = liar.index(b'\xff\x52', at)
levels = liar[cod + 9]
liar[cod + 14:cod + 14 + levels + 1] = b'\x11' * (levels + 1)
open('lies-about-size.jp2', 'wb').write(liar)
large = bytearray(whole)
large[8:12] = struct.pack('>I', 70000)
open('too-large.j2k', 'wb').write(large)
Image.new('RGB', (4, 4)).save('foreign.png')
os.rename('foreign.png', 'foreign.j2k')
