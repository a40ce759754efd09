#!/usr/bin/python3
"""Renders the expected images of the samples in this folder and generates the files that must be rejected. Needs Pillow,
fig2dev, gs, emf2svg-conv and rsvg-convert.

The files in good/ were written by gnuplot, fig2dev and pstoedit (see README.md). Their expected images are rendered by
another program, from the same source or from the file. Edges and text differ between renderers, so the comparison is coarse.
"""
import os
import struct
import subprocess
import tempfile

from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
WORK = tempfile.mkdtemp()
CELL = 4


def run(*command):
    subprocess.run(command, check=True, stderr=subprocess.DEVNULL)


def drawn_by_gs(source):
    out = os.path.join(WORK, 'gs.png')
    run('gs', '-q', '-dNOPAUSE', '-dBATCH', '-dEPSCrop', '-sDEVICE=png16m', '-dTextAlphaBits=4', '-dGraphicsAlphaBits=4',
        '-r144', '-sOutputFile=' + out, source)
    return out


def shown(name, size, path, within):
    """Writes the expected image of good/NAME.emf: scaled to its size, with a tolerance for the mean difference."""
    picture = Image.open(path).convert('RGB').resize(size, Image.LANCZOS)
    width, height = size[0] // CELL, size[1] // CELL
    picture = picture.resize((width, height), Image.BOX, box=(0, 0, width * CELL, height * CELL))
    head = f'P7\n# on average within {within}\n# cells of {CELL}\nWIDTH {width}\nHEIGHT {height}\nDEPTH 3\nMAXVAL 255\n' \
           'TUPLTYPE RGB\nENDHDR\n'
    open(f'good/{name}.emf.pam', 'wb').write(head.encode() + picture.tobytes())


eps = os.path.join(WORK, 'drawing.eps')
run('fig2dev', '-L', 'eps', 'drawing.fig', eps)
shown('fig2dev-drawing', (371, 232), drawn_by_gs(eps), 7)
shown('pstoedit-page', (354, 235), drawn_by_gs('page.ps'), 6)
svg = os.path.join(WORK, 'plot.svg')
run('emf2svg-conv', '-i', 'good/gnuplot-plot.emf', '-o', svg)
run('rsvg-convert', svg, '-w', '399', '-h', '264', '-b', 'white', '-o', svg + '.png')
shown('gnuplot-plot', (399, 264), svg + '.png', 8)

for folder in ('cut', 'lying', 'foreign'):
    os.makedirs(folder, exist_ok=True)
whole = open('good/fig2dev-drawing.emf', 'rb').read()
open('cut/empty.emf', 'wb').write(b'')
open('cut/in-records.emf', 'wb').write(whole[:len(whole) * 2 // 3])
open('cut/in-header.emf', 'wb').write(whole[:60])
# A frame of 3 by 3 kilometres; the unit is 0.01 mm.
open('lying/size.emf', 'wb').write(whole[:24] + struct.pack('<4i', 0, 0, 300000000, 300000000) + whole[40:])
second = struct.unpack('<I', whole[4:8])[0]
open('lying/record-size.emf', 'wb').write(whole[:second + 4] + struct.pack('<I', 0x7ffffff0) + whole[second + 8:])
open('lying/record-of-no-size.emf', 'wb').write(whole[:second + 4] + struct.pack('<I', 0) + whole[second + 8:])
open('foreign/text.emf', 'wb').write(b'This is a text, whatever its name says.\n' * 30)
