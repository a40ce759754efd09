#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick and libjpeg-turbo's cjpeg and djpeg."""
import os
import struct
import subprocess
import sys
from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)

CONVERT = image_magick('convert')
W, H = 83, 61  # not a multiple of the block size
for folder in ('good', 'cut', 'lying', 'foreign'):
    os.makedirs(folder, exist_ok=True)

picture = Image.new('RGB', (W, H))
for y in range(H):
    for x in range(W):
        inside = (x - 30) ** 2 + (y - 25) ** 2 < 200
        picture.putpixel((x, y), (220, 60, 40) if inside else (x * 3, y * 4, 255 - x * 2))
picture.save('scene.ppm')


def pam(path, picture, note=''):
    """Writes the expected image of a sample; the note is its tolerance."""
    kind = {1: 'GRAYSCALE', 3: 'RGB', 4: 'RGB_ALPHA'}[len(picture.getbands())]
    head = f'P7\n{note}WIDTH {picture.width}\nHEIGHT {picture.height}\nDEPTH {len(picture.getbands())}\nMAXVAL 255\n' \
           f'TUPLTYPE {kind}\nENDHDR\n'
    open(path + '.pam', 'wb').write(head.encode() + picture.tobytes())


def cjpeg(name, *options):
    subprocess.run(['cjpeg', *options, '-outfile', name, 'scene.ppm'], check=True)
    # As decoded by ImageMagick; decoders round differently.
    subprocess.run([CONVERT, name, '-colorspace', 'sRGB', '-depth', '8', 'seen.ppm'], check=True)
    pam(name, Image.open('seen.ppm').convert('L' if '-grayscale' in options else 'RGB'), '# within 2\n')
    os.remove('seen.ppm')


cjpeg('good/cjpeg-baseline.jpg', '-quality', '85')
cjpeg('good/cjpeg-progressive.jpg', '-quality', '85', '-progressive', '-sample', '1x1')
cjpeg('good/cjpeg-wide-chroma.jpg', '-quality', '85', '-sample', '2x1')
cjpeg('good/cjpeg-tall-chroma.jpg', '-quality', '85', '-sample', '1x2')
cjpeg('good/cjpeg-restarts.jpg', '-quality', '85', '-restart', '1')
cjpeg('good/cjpeg-arithmetic.jpg', '-quality', '85', '-arithmetic')
cjpeg('good/cjpeg-grey.jpg', '-quality', '85', '-grayscale')
cjpeg('good/cjpeg-rgb.jpg', '-quality', '85', '-rgb')

picture.convert('CMYK').save('good/pil-cmyk.jpg', quality=90)  # Adobe marker, inverted CMYK, no transform
subprocess.run([CONVERT, 'scene.ppm', '-colorspace', 'CMYK', '-quality', '90', 'good/im-ycck.jpg'], check=True)
# A file whose Adobe marker was stripped along with its metadata; its CMYK values are still inverted.
adobe = open('good/pil-cmyk.jpg', 'rb').read()
at = adobe.index(b'\xff\xee')
size = struct.unpack('>H', adobe[at + 2:at + 4])[0]
open('good/pil-cmyk-plain.jpg', 'wb').write(adobe[:at] + adobe[at + 2 + size:])

# As stored by a camera in portrait orientation: rotated, with an orientation tag.
exif = Image.Exif()
exif[0x0112] = 6
exif[0x010F] = 'Cameras Ltd'
block = exif.tobytes()
picture.transpose(Image.ROTATE_90).save('good/pil-turned.jpg', quality=95, exif=block, dpi=(72, 144))

# CMYK comes close to the scene, and the rotated image is upright.
for name, within in (('pil-cmyk', 5), ('pil-cmyk-plain', 5), ('im-ycck', 5), ('pil-turned', 4)):
    pam(f'good/{name}.jpg', picture, f'# on average within {within}\n')

# Incomplete files show what is there. djpeg warns, and so returns 2.
good = open('good/cjpeg-baseline.jpg', 'rb').read()
progressive = open('good/cjpeg-progressive.jpg', 'rb').read()
third_scan = progressive.index(b'\xff\xda', progressive.index(b'\xff\xda', progressive.index(b'\xff\xda') + 1) + 1)
for name, data in (('cut-in-pixels', good[:len(good) * 2 // 3]),
                   ('no-end', good[:-2]),
                   ('end-too-soon', good[:len(good) * 2 // 3] + b'\xff\xd9'),
                   ('scans-missing', progressive[:third_scan] + b'\xff\xd9')):
    open(f'good/hand-{name}.jpg', 'wb').write(data)
    done = subprocess.run(['djpeg', '-outfile', 'seen.ppm', f'good/hand-{name}.jpg'], capture_output=True)
    assert done.returncode in (0, 2)
    pam(f'good/hand-{name}.jpg', Image.open('seen.ppm'))
os.remove('seen.ppm')

# Files without picture data.
scan = good.index(b'\xff\xda')
pixels = scan + 2 + struct.unpack('>H', good[scan + 2:scan + 4])[0]
open('cut/in-header.jpg', 'wb').write(good[:scan - 30])
open('cut/no-pixels.jpg', 'wb').write(good[:pixels])
open('cut/end-before-pixels.jpg', 'wb').write(good[:pixels] + b'\xff\xd9')
at = good.index(b'\xff\xc0')
open('lying/size.jpg', 'wb').write(good[:at + 5] + struct.pack('>HH', 20000, 20000) + good[at + 9:])
open('lying/too-large.jpg', 'wb').write(good[:at + 5] + struct.pack('>HH', 65535, 65535) + good[at + 9:])
picture.resize((8, 8)).save('foreign/gif.jpg', format='GIF')

# A progressive file that repeats its last scan more often than any encoder would.
bomb = open('good/cjpeg-progressive.jpg', 'rb').read()
scan = bomb.rindex(b'\xff\xda')
open('lying/many-scans.jpg', 'wb').write(bomb[:scan] + bomb[scan:-2] * 600 + b'\xff\xd9')
