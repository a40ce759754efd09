#!/usr/bin/python3
"""Generates BMP, PCX, RAS, TGA, ICO, CUR and ANI samples written by other programs, each with its expected image (PAM).

Needs ImageMagick, GraphicsMagick, netpbm and Pillow. The expected image comes from
decoder listed with the sample; the script reports any other decoder that disagrees.
"""
import os
import subprocess
import sys
import tempfile

from PIL import Image

os.chdir(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.abspath('../../tools'))
from image_magick import image_magick  # noqa: E402  (needs the path set above)
WORK = tempfile.mkdtemp()
CONVERT = image_magick('convert')
W, H = 37, 23


def source(name, kind):
    """Gradients, a box and a few single dots; the odd width defeats any alignment."""
    image = Image.new("RGBA", (W, H))
    for y in range(H):
        for x in range(W):
            box = 8 < x < 20 and 6 < y < 14
            pixel = (230, 150, 70) if box else (x * 255 // (W - 1), y * 255 // (H - 1), (x * 7 + y * 13) % 256)
            if (x * y) % 17 == 5:
                pixel = (255, 255, 255)
            alpha = 255 if box else max(0, 255 - abs(x - 18) * 14)
            image.putpixel((x, y), pixel + (alpha,))
    path = os.path.join(WORK, name + ".png")
    if kind == "RGBA":
        image.save(path)
    elif kind == "P16":
        image.convert("RGB").quantize(16).save(path)
    elif kind == "P256":
        image.convert("RGB").quantize(200).save(path)
    elif kind == "P4":
        image.convert("RGB").quantize(4).save(path)
    elif kind == "1":
        image.convert("1").save(path)
    else:
        image.convert(kind).save(path)
    return path


SOURCES = {kind: source(kind.lower(), kind) for kind in ("RGB", "RGBA", "L", "P256", "P16", "P4", "1")}


def run(command):
    done = subprocess.run(command, shell=True, capture_output=True)
    if done.returncode != 0:
        print("FAILED", command, done.stderr.decode(errors="replace")[:300])
    return done.stdout


def by_im(path):
    size = run(f"{image_magick('identify')} -format '%w %h\n' '{path}[0]'").split()[:2]
    return int(size[0]), int(size[1]), run(f"{CONVERT} '{path}[0]' -auto-orient -depth 8 rgba:-")


def by_gm(path):
    size = run(f"gm identify -format '%w %h\n' '{path}[0]'").split()[:2]
    return int(size[0]), int(size[1]), run(f"gm convert '{path}[0]' -depth 8 rgba:-")


def by_pil(path):
    image = Image.open(path)
    return image.size + (image.convert("RGBA").tobytes(),)


def by_netpbm(program):
    def decode(path):
        out = os.path.join(WORK, "netpbm.pnm")
        with open(out, "wb") as file:
            file.write(run(f"{program} '{path}'"))
        return by_pil(out)
    return decode


def by_masks(path):
    """Decodes a 16-bit BMP with masks exactly: each channel is rounded to 8 bits. Other programs only come close."""
    data = open(path, "rb").read()
    start, width, height = (int.from_bytes(data[i:i + 4], "little") for i in (10, 18, 22))
    masks = [int.from_bytes(data[i:i + 4], "little") for i in (54, 58, 62, 66)]
    rgba = bytearray()
    for y in reversed(range(height)):
        row = start + y * ((width * 2 + 3) // 4 * 4)
        for x in range(width):
            pixel = int.from_bytes(data[row + x * 2:row + x * 2 + 2], "little")
            for mask in masks:
                low = mask & -mask
                rgba.append(round((pixel & mask) // low * 255 / (mask // low)) if mask else 255)
    return width, height, bytes(rgba)


def write_pam(path, width, height, rgba, channels):
    pixels = bytearray()
    for i in range(0, len(rgba), 4):
        r, g, b, a = rgba[i:i + 4]
        if channels == 1 and not r == g == b:
            raise SystemExit(f"{path}: not grey")
        pixels += bytes((r,)) if channels == 1 else bytes((r, g, b)) if channels == 3 else bytes((r, g, b, a))
    kind = {1: "GRAYSCALE", 3: "RGB", 4: "RGB_ALPHA"}[channels]
    with open(path, "wb") as file:
        file.write(f"P7\nWIDTH {width}\nHEIGHT {height}\nDEPTH {channels}\nMAXVAL 255\nTUPLTYPE {kind}\nENDHDR\n".encode())
        file.write(pixels)


def visible(rgba, channels):
    return [rgba[i:i + channels] if channels == 4 else rgba[i:i + 3] for i in range(0, len(rgba), 4)]


def numbers(*values):
    return b"".join(value.to_bytes(4, "little") for value in values)


def sample(folder, name, command, channels, *decoders):
    """Creates a sample. In command, {RGB}, {L} and so on are source images and {out} is the sample."""
    path = os.path.join(folder, "good", name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    values = dict(SOURCES, BW=SOURCES["1"], out=path)
    if callable(command):
        command(path)
    else:
        run(command.format(**values))
    width, height, rgba = decoders[0](path)
    for decoder in decoders[1:]:
        try:
            other = decoder(path)
        except Exception as fault:
            print(path, "is rejected by", decoder.__qualname__, str(fault)[:80])
            continue
        if (width, height) != other[:2] or visible(rgba, channels) != visible(other[2], channels):
            print(path, "decodes differently with", decoder.__qualname__)
    write_pam(path + ".pam", width, height, rgba, channels)


def pil(kind, **options):
    def save(path):
        image = Image.open(SOURCES[{"P": "P256", "LA": "RGBA"}.get(kind, kind)])
        if kind == "LA":
            image = image.convert("LA")
        image.save(path, **options)
    return save


IM = CONVERT + " "
GM = "gm convert "
bmp, pcx, ras, tga = by_netpbm("bmptopnm"), by_netpbm("pcxtoppm"), by_netpbm("rasttopnm"), by_netpbm("tgatoppm")

# BMP
sample("bmp", "im-24.bmp", IM + "{RGB} -type TrueColor BMP3:{out}", 3, by_pil, by_gm, bmp)
sample("bmp", "im-v4-24.bmp", IM + "{RGB} -type TrueColor {out}", 3, by_pil, by_gm, bmp)
sample("bmp", "im-os2-24.bmp", IM + "{RGB} -type TrueColor BMP2:{out}", 3, by_pil, by_gm, bmp)
sample("bmp", "im-palette-8.bmp", IM + "{P256} -compress none BMP3:{out}", 3, by_pil, by_gm, bmp)
sample("bmp", "im-palette-4.bmp", IM + "{P16} -compress none BMP3:{out}", 3, by_pil, by_gm, bmp)
sample("bmp", "im-palette-1.bmp", IM + "{BW} -compress none BMP3:{out}", 1, by_pil, by_gm, bmp)
sample("bmp", "im-grey-8.bmp", IM + "{L} -compress none BMP3:{out}", 1, by_pil, by_gm, bmp)
sample("bmp", "im-rle8.bmp", IM + "{P256} -compress RLE BMP3:{out}", 3, by_pil, by_gm)
sample("bmp", "im-565.bmp", IM + "{RGB} -define bmp:subtype=RGB565 {out}", 3, by_masks)
sample("bmp", "im-555.bmp", IM + "{RGB} -define bmp:subtype=RGB555 {out}", 3, by_masks)
sample("bmp", "im-4444.bmp", IM + "{RGBA} -define bmp:subtype=ARGB4444 {out}", 4, by_masks)
sample("bmp", "im-1555.bmp", IM + "{RGBA} -define bmp:subtype=ARGB1555 {out}", 4, by_masks)
sample("bmp", "im-v4-32.bmp", IM + "{RGBA} {out}", 4, by_pil, by_im)
sample("bmp", "gm-24.bmp", GM + "{RGB} -type TrueColor {out}", 3, by_pil, by_im)
sample("bmp", "gm-os2-8.bmp", GM + "{P256} BMP2:{out}", 3, by_pil, by_im)
sample("bmp", "netpbm-os2-4.bmp", "pngtopam {P16} | ppmtobmp -os2 > {out}", 3, by_pil, by_im)
sample("bmp", "netpbm-windows-8.bmp", "pngtopam {P256} | ppmtobmp -windows > {out}", 3, by_pil, by_im)
sample("bmp", "netpbm-windows-1.bmp", "pngtopam {BW} | ppmtobmp -windows > {out}", 1, by_pil, by_im)
sample("bmp", "pil-32.bmp", pil("RGBA"), 3, by_im, by_gm)
sample("bmp", "pil-8.bmp", pil("P", dpi=(300, 300)), 3, by_im, by_gm)



def with_long_header(path):
    """A 64-byte OS/2 header before the three-byte palette of the short one."""
    data = open("bmp/good/gm-os2-8.bmp", "rb").read()
    width, height, _, bits = (int.from_bytes(data[i:i + 2], "little") for i in (18, 20, 22, 24))
    start = int.from_bytes(data[10:14], "little")
    header = numbers(64, width, height) + b"\1\0" + bits.to_bytes(2, "little") + bytes(48)
    data = data[:10] + numbers(start + 52) + header + data[26:]
    with open(path, "wb") as file:
        file.write(data[:2] + numbers(len(data)) + data[6:])


sample("bmp", "hand-os2-64-short-palette.bmp", with_long_header, 3, lambda path: by_im("bmp/good/gm-os2-8.bmp"))

# PCX
sample("pcx", "im-24.pcx", IM + "{RGB} -type TrueColor {out}", 3, by_pil, by_gm, pcx)
sample("pcx", "im-palette-8.pcx", IM + "{P256} {out}", 3, by_pil, by_gm, pcx)
sample("pcx", "pil-grey-8.pcx", pil("L"), 1, by_im, by_gm, pcx)
sample("pcx", "im-rgba.pcx", IM + "{RGBA} {out}", 4, by_im)
sample("pcx", "gm-24.pcx", GM + "{RGB} -type TrueColor {out}", 3, by_im, by_gm)
sample("pcx", "netpbm-24.pcx", "pngtopam {RGB} | ppmtopcx -24bit > {out}", 3, by_pil, by_im)
sample("pcx", "netpbm-8.pcx", "pngtopam {P256} | ppmtopcx > {out}", 3, by_pil, by_im)
sample("pcx", "netpbm-planes-4.pcx", "pngtopam {P16} | ppmtopcx > {out}", 3, pcx, by_pil, by_im)
sample("pcx", "netpbm-packed-4.pcx", "pngtopam {P16} | ppmtopcx -packed > {out}", 3, pcx, by_im)
sample("pcx", "netpbm-planes-2.pcx", "pngtopam {P4} | ppmtopcx > {out}", 3, pcx, by_pil)
sample("pcx", "netpbm-packed-2.pcx", "pngtopam {P4} | ppmtopcx -packed > {out}", 3, pcx, by_im)
sample("pcx", "netpbm-stdpalette.pcx", "pngtopam {BW} | pamtopnm | ppmtopcx -stdpalette > {out}", 3, pcx, by_pil)
sample("pcx", "pil-8.pcx", pil("P"), 3, by_im, by_gm)
sample("pcx", "pil-1.pcx", pil("1", dpi=(200, 100)), 1, by_gm, by_pil)

# RAS
sample("ras", "im-24.ras", IM + "{RGB} -type TrueColor {out}", 3, by_pil, by_gm, ras)
sample("ras", "im-palette-8.ras", IM + "{P256} {out}", 3, by_pil, by_gm, ras)
sample("ras", "gm-1.ras", GM + "{BW} -monochrome {out}", 1, by_im, by_gm)
sample("ras", "netpbm-grey-8.ras", "pngtopam {L} | pnmtorast -standard > {out}", 1, ras, by_im)
sample("ras", "gm-24.ras", GM + "{RGB} -type TrueColor {out}", 3, by_pil, by_im, ras)
sample("ras", "netpbm-24-rle.ras", "pngtopam {RGB} | pnmtorast -rle > {out}", 3, ras, by_pil, by_im)
sample("ras", "netpbm-24.ras", "pngtopam {RGB} | pnmtorast -standard > {out}", 3, ras, by_pil, by_im)
sample("ras", "netpbm-8-rle.ras", "pngtopam {P256} | pnmtorast -rle > {out}", 3, ras, by_gm)
sample("ras", "netpbm-grey-8-rle.ras", "pngtopam {L} | pnmtorast -rle > {out}", 1, ras, by_gm)
sample("ras", "netpbm-1-rle.ras", "pngtopam {BW} | pamtopnm | pnmtorast -rle > {out}", 1, ras, by_im)
sample("ras", "netpbm-1.ras", "pngtopam {BW} | pamtopnm | pnmtorast -standard > {out}", 1, ras, by_pil, by_im)

# TGA
sample("tga", "im-24.tga", IM + "{RGB} -type TrueColor -compress none {out}", 3, by_pil, by_gm, tga)
sample("tga", "im-24-rle.tga", IM + "{RGB} -type TrueColor -compress rle {out}", 3, by_pil, by_gm, tga)
sample("tga", "im-32-rle.tga", IM + "{RGBA} -compress rle {out}", 4, by_pil, by_im)
sample("tga", "im-palette-8.tga", IM + "{P256} {out}", 3, by_pil, by_gm, tga)
sample("tga", "im-grey-8.tga", IM + "{L} {out}", 1, by_pil, by_gm, tga)
sample("tga", "gm-32.tga", GM + "{RGBA} {out}", 4, by_pil, by_im)
sample("tga", "netpbm-24-rle.tga", "pngtopam {RGB} | pamtotga -rgb > {out}", 3, by_pil, by_im, by_gm)
sample("tga", "netpbm-palette-8.tga", "pngtopam {P256} | pamtotga -cmap > {out}", 3, by_pil, by_im, by_gm)
sample("tga", "netpbm-grey-norle.tga", "pngtopam {L} | pamtotga -mono -norle > {out}", 1, by_pil, by_im, by_gm)
sample("tga", "netpbm-32.tga", "pngtopam -alphapam {RGBA} | pamtotga -rgb -norle > {out}", 4, by_pil, by_im)
sample("tga", "pil-24-top.tga", pil("RGB", orientation=1), 3, by_im, by_gm, tga)
sample("tga", "pil-24-bottom-rle.tga", pil("RGB", orientation=-1, compression="tga_rle", id_section=b"hello"), 3, by_im, by_gm, tga)
sample("tga", "pil-32-rle.tga", pil("RGBA", compression="tga_rle"), 4, by_im, by_gm)
sample("tga", "pil-grey-alpha.tga", pil("LA"), 4, by_pil)
sample("tga", "pil-palette.tga", pil("P"), 3, by_im, by_gm)
sample("tga", "pil-grey-rle.tga", pil("L", compression="tga_rle"), 1, by_im, by_gm)



def with_extension(alpha, name):
    """The named sample with an extension area of the given attributes type instead of its footer, if any."""
    def save(path):
        data = open(os.path.join("tga", "good", name), "rb").read()
        size = 18 + W * H * 4
        area = (495).to_bytes(2, "little") + bytes(492) + bytes((alpha,))
        with open(path, "wb") as file:
            file.write(data[:size] + area + size.to_bytes(4, "little") + bytes(4) + b"TRUEVISION-XFILE.\0")
    return save


sample("tga", "hand-alpha-denied.tga", with_extension(0, "netpbm-32.tga"), 4, lambda path: by_pil("tga/good/netpbm-32.tga"))
sample("tga", "hand-alpha-retained.tga", with_extension(2, "netpbm-32.tga"), 4, lambda path: by_pil("tga/good/netpbm-32.tga"))

# ICO
sample("ico", "im-32.ico", IM + "{RGBA} {out}", 4, by_pil, by_im)
sample("ico", "im-palette-8.ico", IM + "{P256} {out}", 4, by_pil, by_im)
sample("ico", "im-palette-4.ico", IM + "{P16} {out}", 4, by_pil, by_im)
sample("ico", "im-1.ico", IM + "{BW} {out}", 4, by_pil, by_im)
sample("ico", "netpbm-8.ico", "pngtopam {P256} > {out}.src && pngtopam {BW} | pamtopnm > {out}.mask; "
       "ppmtowinicon -andpgms {out}.src {out}.mask > {out}; rm {out}.src {out}.mask", 4, by_pil, by_im)
sample("ico", "netpbm-4.ico", "pngtopam {P16} | ppmtowinicon > {out}", 4, by_pil, by_im)
sample("ico", "netpbm-32.ico", "pngtopam -alphapam {RGBA} | pamtowinicon > {out}", 4, by_pil, by_im)
sample("ico", "pil-png.ico", pil("RGBA", sizes=[(32, 20)]), 4, by_pil)
sample("ico", "pil-bmp.ico", pil("RGBA", sizes=[(32, 20)], bitmap_format="bmp"), 4, by_pil, by_im)

# Cursors and animated cursors: none of these programs writes them, so build them from the icons.
def cursor_of(icon):
    data = bytearray(open(os.path.join("ico", "good", icon), "rb").read())
    data[2] = 2
    data[10:14] = (5).to_bytes(2, "little") + (7).to_bytes(2, "little")  # hotspot
    return bytes(data)


def copy_pam(icon, path):
    with open(os.path.join("ico", "good", icon + ".pam"), "rb") as old, open(path, "wb") as new:
        new.write(old.read())


def chunk(name, data):
    return name.encode() + len(data).to_bytes(4, "little") + data + b"\0" * (len(data) % 2)


def animation(frames, sequence=None, flags=1):
    body = b"ACON" + chunk("LIST", b"INFO" + chunk("INAM", b"A walk\0"))
    steps = len(sequence or frames)
    body += chunk("anih", numbers(36, len(frames), steps, 0, 0, 0, 0, 6, flags | (2 if sequence else 0)))
    body += chunk("rate", numbers(*[6] * steps))
    if sequence:
        body += chunk("seq ", numbers(*sequence))
    body += chunk("LIST", b"fram" + b"".join(chunk("icon", frame) for frame in frames))
    return b"RIFF" + len(body).to_bytes(4, "little") + body


def put(folder, name, data):
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as file:
        file.write(data)


for name in ("im-32", "netpbm-4", "netpbm-8"):
    put("cur/good", name + ".cur", cursor_of(name + ".ico"))
    copy_pam(name + ".ico", "cur/good/" + name + ".cur.pam")

# A directory that counts the mask's rows, and one that tells no size; the bitmap's header is right.
for name, width, height in (("doubled", 37, 46), ("no-size", 0, 0)):
    data = bytearray(cursor_of("netpbm-8.ico"))
    data[6:8] = bytes((width, height))
    put("cur/good", f"hand-{name}.cur", bytes(data))
    copy_pam("netpbm-8.ico", f"cur/good/hand-{name}.cur.pam")


def icon_of(names):
    """An icon of the first pictures of others."""
    directory = b"\0\0\1\0" + len(names).to_bytes(2, "little")
    pictures = b""
    for name in names:
        data = open(os.path.join("ico", "good", name), "rb").read()
        size, offset = (int.from_bytes(data[i:i + 4], "little") for i in (14, 18))
        directory += data[6:14] + numbers(size, 6 + 16 * len(names) + len(pictures))
        pictures += data[offset:offset + size]
    return directory + pictures


sizes = ["pil-bmp.ico", "netpbm-4.ico", "im-32.ico", "netpbm-8.ico"]
put("ico/good", "hand-sizes.ico", icon_of(sizes))
for page, name in enumerate(sizes):
    copy_pam(name, "ico/good/hand-sizes.ico" + (f".{page}" if page else "") + ".pam")

frames = [cursor_of("im-32.ico"), open("ico/good/netpbm-4.ico", "rb").read(), cursor_of("netpbm-8.ico")]
icons = ["im-32.ico", "netpbm-4.ico", "netpbm-8.ico"]
put("ani/good", "hand-in-order.ani", animation(frames))
put("ani/good", "hand-sequence.ani", animation(frames, [2, 0, 0, 1]))
for name, order in (("in-order", [0, 1, 2]), ("sequence", [2, 0, 0, 1])):
    for page, frame in enumerate(order):
        copy_pam(icons[frame], f"ani/good/hand-{name}.ani" + (f".{page}" if page else "") + ".pam")

# Files that must be rejected.
for folder, good in (("bmp", "im-24.bmp"), ("pcx", "im-24.pcx"), ("ras", "netpbm-24-rle.ras"), ("tga", "im-24.tga"),
                     ("ico", "im-32.ico"), ("cur", "im-32.cur"), ("ani", "hand-in-order.ani")):
    data = open(os.path.join(folder, "good", good), "rb").read()
    extension = good.rsplit(".", 1)[1]
    lying = bytearray(data)
    if folder == "bmp":
        lying[18:26] = numbers(60000, 8000)
    elif folder == "pcx":
        lying[8:12] = b"\xff\xf0\xff\xf0"
    elif folder == "ras":
        lying[4:12] = b"\0\0\xea\x60\0\0\x1f\x40"
    elif folder == "tga":
        lying[12:16] = b"\x60\xea\x40\x1f"
    elif folder in ("ico", "cur"):
        lying[14:18] = numbers(1 << 30)
    else:
        lying = bytearray(animation([data[:40]]))
    put(folder + "/lying", "size." + extension, bytes(lying))
    put(folder + "/cut", "in-pixels." + extension, data[:len(data) * 2 // 3] if folder != "ani" else data[:300])
    put(folder + "/foreign", "text." + extension, b"This is a text, whatever its name says.\n" * 30)
    put(folder + "/cut", "empty." + extension, b"")
