#!/usr/bin/python3
"""Generates the samples in this folder. Needs Pillow, ImageMagick, GraphicsMagick and gifsicle."""
import os
import subprocess
import sys
from PIL import Image, ImageDraw

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)

CONVERT = image_magick('convert')
W, H = 67, 45


def run(*command):
    subprocess.run(command, check=True)


def pam(path, picture):
    """Writes the expected image of a sample."""
    kind = {1: 'GRAYSCALE', 3: 'RGB', 4: 'RGB_ALPHA'}[len(picture.getbands())]
    head = f'P7\nWIDTH {picture.width}\nHEIGHT {picture.height}\nDEPTH {len(picture.getbands())}\nMAXVAL 255\n' \
           f'TUPLTYPE {kind}\nENDHDR\n'
    open(path + '.pam', 'wb').write(head.encode() + picture.tobytes())


def pages(path, whole=None, count=None):
    """Writes the expected image of each page, or of the first ones of the whole file, as ImageMagick renders them."""
    run(CONVERT, whole or path, '-coalesce', '-alpha', 'set', '-depth', '8', 'frame-%d.png')
    names = sorted(name for name in os.listdir('.') if name.startswith('frame-'))
    for page, name in enumerate(names[:count]):
        picture = Image.open(name).convert('RGBA')
        if picture.getchannel('A').getextrema()[0] == 255:
            picture = picture.convert('RGB')
            channels = [band.tobytes() for band in picture.split()]
            if channels[0] == channels[1] == channels[2]:
                picture = picture.convert('L')
        else:
            picture = Image.composite(picture, Image.new('RGBA', picture.size), picture.getchannel('A'))
        pam(path + (f'.{page}' if page else ''), picture)
    for name in names:
        os.remove(name)


def scene(step=0, mode='RGB', ground=(20, 60, 160)):
    picture = Image.new(mode, (W, H), ground)
    draw = ImageDraw.Draw(picture)
    for x in range(W):
        draw.line((x, 30, x, H), fill=(x * 3, 255 - x * 3, 90) + (255,) * (len(mode) - 3))
    draw.ellipse((5 + step * 8, 5, 25 + step * 8, 25), fill=(220, 60, 40) + (255,) * (len(mode) - 3))
    return picture


for folder in ('good', 'cut', 'lying', 'foreign'):
    os.makedirs(folder, exist_ok=True)
scene().save('scene.ppm')
run('gm', 'convert', 'scene.ppm', 'good/gm-plain.gif')
run(CONVERT, 'scene.ppm', '-interlace', 'GIF', 'good/im-interlaced.gif')
scene().convert('L').save('good/pil-grey.gif')
scene().convert('1').save('good/pil-two-colours.gif')

clear = scene(0, 'RGBA', (0, 0, 0, 0))
clear.save('good/pil-transparent.gif')

frames = [scene(i) for i in range(5)]
for i, frame in enumerate(frames):
    frame.save(f'frame{i}.ppm')
names = [f'frame{i}.ppm' for i in range(5)]
run(CONVERT, '-delay', '10', *names, '-layers', 'optimize-frame', 'good/im-optimised.gif')
for dispose in ('none', 'background', 'previous'):
    spots = []
    for i in range(4):
        spot = Image.new('RGBA', (W, H), (0, 0, 0, 0))
        ImageDraw.Draw(spot).rectangle((i * 12, i * 7, i * 12 + 20, i * 7 + 14), fill=(60 * i, 200, 255 - 60 * i, 255))
        spot.save(f'frame{i}.png')
    run(CONVERT, '-dispose', 'none', '-delay', '10', 'scene.ppm', '-dispose', dispose,
        *(f'frame{i}.png' for i in range(4)), f'good/im-dispose-{dispose}.gif')
for i, name in enumerate(names):
    run('gm', 'convert', name, f'frame{i}.gif')
subprocess.run(['gifsicle', '--delay=10', '-O2', *(f'frame{i}.gif' for i in range(5))],
               stdout=open('good/gifsicle-optimised.gif', 'wb'), check=True)



def lzw(indices, bits):
    """Image data with codes for pixels of `bits` bits, of which a palette only needs eight."""
    clear, out, pending, count = 1 << bits, bytearray(), 0, 0

    def put(code, width):
        nonlocal pending, count
        pending |= code << count
        count += width
        while count >= 8:
            out.append(pending & 255)
            pending >>= 8
            count -= 8

    strings, width, next_code, string = {}, bits + 1, clear + 2, ()
    put(clear, width)
    for index in indices:
        longer = string + (index,)
        if len(longer) == 1 or longer in strings:
            string = longer
            continue
        put(strings[string] if len(string) > 1 else string[0], width)
        string = (index,)
        if next_code < 4096:
            strings[longer] = next_code
            next_code += 1
            if next_code > 1 << width and width < 12:
                width += 1
        else:
            put(clear, width)
            strings, width, next_code = {}, bits + 1, clear + 2
    put(strings[string] if len(string) > 1 else string[0], width)
    put(clear + 1, width)
    put(0, 7)
    blocks = b''.join(bytes([len(out[i:i + 255])]) + out[i:i + 255] for i in range(0, len(out), 255))
    return bytes([bits]) + blocks + b'\0'


# Codes for more bits than giflib takes. The frames are large enough for codes of twelve bits.
speckled = Image.effect_noise((W * 3, H * 3), 60).convert('P')
ramp = Image.linear_gradient('L').resize(speckled.size).convert('P')
head = b'GIF89a' + speckled.width.to_bytes(2, 'little') + speckled.height.to_bytes(2, 'little') + b'\xf7\0\0'
greys = b''.join(bytes([v, 255 - v, 128]) for v in range(256))
for bits in (9, 10, 11):
    data = head + greys
    for page, (picture, width) in enumerate(((speckled, bits), (ramp, 8), (ramp.rotate(180), bits))):
        data += b',\0\0\0\0' + head[6:10] + b'\0' + lzw(picture.tobytes(), width)
        colours = b''.join(greys[v * 3:v * 3 + 3] for v in picture.tobytes())
        pam(f'good/hand-{bits}-bits.gif' + (f'.{page}' if page else ''), Image.frombytes('RGB', picture.size, colours))
    open(f'good/hand-{bits}-bits.gif', 'wb').write(data + b';')

animation = open('good/im-optimised.gif', 'rb').read()
open('cut/last-frame.gif', 'wb').write(animation[:-60])
plain = open('good/gm-plain.gif', 'rb').read()
open('cut/in-pixels.gif', 'wb').write(plain[:len(plain) * 2 // 3])
for name in sorted(os.listdir('good')):
    if name.endswith('.gif') and not name.startswith('hand'):
        pages('good/' + name)
pages('cut/last-frame.gif', 'good/im-optimised.gif', 4)
# A canvas and a frame of 65535 x 65535 in a file of a few hundred bytes.
liar = bytearray(open('good/pil-two-colours.gif', 'rb').read())
at = liar.index(b',\0\0\0\0')
liar[6:10] = liar[at + 5:at + 9] = b'\xff\xff\xff\xff'
open('lying/size.gif', 'wb').write(liar)
Image.new('RGB', (4, 4)).save('frame.png')
os.rename('frame.png', 'foreign/png.gif')
for name in os.listdir('.'):
    if name.startswith('frame'):
        os.remove(name)
