#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick 6 and libjpeg-turbo's cjpeg and djpeg."""
import os
import struct
import subprocess
from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
W, H = 83, 61  # not a multiple of the block size

picture = Image.new('RGB', (W, H))
for y in range(H):
    for x in range(W):
        inside = (x - 30) ** 2 + (y - 25) ** 2 < 200
        picture.putpixel((x, y), (220, 60, 40) if inside else (x * 3, y * 4, 255 - x * 2))
picture.save('scene.ppm')


def cjpeg(name, *options):
    subprocess.run(['cjpeg', *options, '-outfile', name, 'scene.ppm'], check=True)


cjpeg('baseline.jpg', '-quality', '85')
cjpeg('progressive.jpg', '-quality', '85', '-progressive', '-sample', '1x1')
cjpeg('wide-chroma.jpg', '-quality', '85', '-sample', '2x1')
cjpeg('tall-chroma.jpg', '-quality', '85', '-sample', '1x2')
cjpeg('restarts.jpg', '-quality', '85', '-restart', '1')
cjpeg('arithmetic.jpg', '-quality', '85', '-arithmetic')
cjpeg('grey.jpg', '-quality', '85', '-grayscale')
cjpeg('rgb.jpg', '-quality', '85', '-rgb')

picture.convert('CMYK').save('cmyk.jpg', quality=90)  # Adobe marker, inverted CMYK, no transform
subprocess.run(['convert-im6.q16', 'scene.ppm', '-colorspace', 'CMYK', '-quality', '90', 'ycck.jpg'], check=True)
# A file whose Adobe marker was stripped along with its metadata; its CMYK values are still inverted.
adobe = open('cmyk.jpg', 'rb').read()
at = adobe.index(b'\xff\xee')
size = struct.unpack('>H', adobe[at + 2:at + 4])[0]
open('cmyk-plain.jpg', 'wb').write(adobe[:at] + adobe[at + 2 + size:])

# As stored by a camera in portrait orientation: rotated, with an orientation tag.
exif = Image.Exif()
exif[0x0112] = 6
exif[0x010F] = 'Cameras Ltd'
block = exif.tobytes()
picture.transpose(Image.ROTATE_90).save('turned.jpg', quality=95, exif=block, dpi=(72, 144))

good = open('baseline.jpg', 'rb').read()
open('cut.jpg', 'wb').write(good[:len(good) * 2 // 3])
open('no-end.jpg', 'wb').write(good[:-2])
open('end-too-soon.jpg', 'wb').write(good[:len(good) * 2 // 3] + b'\xff\xd9')
at = good.index(b'\xff\xc0')
open('lies-about-size.jpg', 'wb').write(good[:at + 5] + struct.pack('>HH', 20000, 20000) + good[at + 9:])
open('too-large.jpg', 'wb').write(good[:at + 5] + struct.pack('>HH', 65535, 65535) + good[at + 9:])
picture.resize((8, 8)).save('foreign.jpg', format='GIF')

# A progressive file that repeats its last scan more often than any encoder would.
bomb = open('progressive.jpg', 'rb').read()
scan = bomb.rindex(b'\xff\xda')
open('many-scans.jpg', 'wb').write(bomb[:scan] + bomb[scan:-2] * 600 + b'\xff\xd9')
