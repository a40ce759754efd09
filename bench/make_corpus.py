#!/usr/bin/env python3
"""Creates the benchmark images from wallpapers and typeset pages. Called by make-corpus.sh."""
import glob
import hashlib
import os
import random
import sys
from multiprocessing import Pool

from PIL import Image, ImageChops, ImageDraw, ImageFont

Image.MAX_IMAGE_PIXELS = None
OUT, WALLPAPERS, PAGES = sys.argv[1:4]
LARGEST = 12.5e6
SETS = ("photos", "mid", "small")
KINDS = ("jpg", "bmp", "png", "tif")


def photographs():
    """Distinct wallpaper photographs over 1.7 megapixels, sorted by content hash."""
    found = {}
    for path in glob.glob(f"{WALLPAPERS}/**/*.jpg", recursive=True):
        if os.path.islink(path) or os.path.getsize(path) < 150000 or "vertical" in path:
            continue
        with Image.open(path) as picture:
            pixels = picture.size[0] * picture.size[1]
        if pixels > 1.7e6:
            with open(path, "rb") as file:
                found[hashlib.md5(file.read()).hexdigest()] = path
    return [found[key] for key in sorted(found)][:40]


def save_variants(picture, folder, name):
    picture.save(f"{OUT}/{folder}/bmp/{name}.bmp")
    picture.save(f"{OUT}/{folder}/png/{name}.png", compress_level=6)
    picture.save(f"{OUT}/{folder}/tif/{name}.tif", compression="raw")


def make_photograph(job):
    index, path = job
    name = f"p{index:02d}"
    target = f"{OUT}/photos/jpg/{name}.jpg"
    picture = Image.open(path).convert("RGB")
    width, height = picture.size
    if width * height > LARGEST:
        scale = (12e6 / (width * height)) ** 0.5
        picture.resize((int(width * scale), int(height * scale)), Image.LANCZOS).save(target, quality=90)
        picture = Image.open(target).convert("RGB")
    else:
        with open(path, "rb") as source, open(target, "wb") as copy:
            copy.write(source.read())
    save_variants(picture, "photos", name)
    if index % 4 == 1:
        for kind in KINDS:
            link = f"{OUT}/mid/{kind}/{name}.{kind}"
            if os.path.exists(link):
                os.unlink(link)
            os.link(f"{OUT}/photos/{kind}/{name}.{kind}", link)
    rng = random.Random(index)
    for number in range(10):
        x, y = rng.randrange(picture.size[0] - 640), rng.randrange(picture.size[1] - 480)
        crop = picture.crop((x, y, x + 640, y + 480))
        crop.save(f"{OUT}/small/jpg/s{index:02d}{number}.jpg", quality=80, subsampling="4:2:0")
        save_variants(crop, "small", f"s{index:02d}{number}")


def make_document(licence):
    """Bilevel pages with the skew and speckles of a scan."""
    pages = []
    for number, path in enumerate(sorted(glob.glob(f"{PAGES}/{licence}-*.pgm"))[:8]):
        page = Image.open(path).convert("L").rotate(0.3 * ((number % 5) - 2), Image.BILINEAR, fillcolor=255)
        noise = Image.effect_noise((page.size[0] // 2, page.size[1] // 2), 60).resize(page.size, Image.BILINEAR)
        page = ImageChops.add(page, noise, 1, -128)
        pages.append(page.point(lambda v: 255 if v > 110 else 0).convert("1", dither=0))
    for kind, compression in (("g4", "group4"), ("lzw", "tiff_lzw"), ("rle", "packbits")):
        pages[0].save(f"{OUT}/scan/{kind}/{licence}.tif", save_all=True, append_images=pages[1:],
                      compression=compression, dpi=(300, 300))


def make_drawing(number):
    """A screen of text, tables, charts and buttons, drawn at twice its size and reduced for smooth edges."""
    rng = random.Random(100 + number)
    picture = Image.new("RGB", (3200, 2000), (250, 250, 252) if number % 2 else (38, 42, 48))
    draw = ImageDraw.Draw(picture)
    ink = (30, 30, 30) if number % 2 else (220, 222, 226)
    fonts = [ImageFont.truetype(f"DejaVu{name}.ttf", size) for name in ("Sans", "SansMono") for size in (22, 28, 44)]
    words = open("/usr/share/common-licenses/GPL-3").read().split()
    for x in range(0, 3200, 800):
        kind = rng.randrange(4)
        for y in range(60, 1960, 40):
            colour = ink if rng.random() < 0.8 else tuple(rng.randrange(40, 220) for _ in range(3))
            if kind == 0:
                at = rng.randrange(len(words) - 12)
                draw.text((x + 30, y), " ".join(words[at:at + 9])[:58], colour, fonts[(number + x // 800) % 2])
            elif kind == 1:
                for column in range(5):
                    draw.text((x + 30 + column * 150, y), f"{rng.randrange(100000) / 100:.2f}", colour, fonts[3])
                draw.line((x + 20, y - 6, x + 780, y - 6), (128, 128, 128), 2)
            elif kind == 2:
                draw.rectangle((x + 40, y, x + 40 + rng.randrange(60, 700), y + 28), colour)
            elif y % 120 == 60:
                draw.rounded_rectangle((x + 60, y, x + 360, y + 90), 20, colour, (128, 128, 128), 3)
                draw.text((x + 90, y + 20), words[rng.randrange(len(words))][:10], (255, 255, 255), fonts[2])
                draw.ellipse((x + 460, y, x + 560, y + 90), tuple(rng.randrange(256) for _ in range(3)))
    picture.resize((1600, 1000), Image.LANCZOS).save(f"{OUT}/graphics/g{number}.png")


def main():
    os.makedirs(f"{OUT}/graphics", exist_ok=True)
    for folder in SETS:
        for kind in KINDS:
            os.makedirs(f"{OUT}/{folder}/{kind}", exist_ok=True)
    for kind in ("g4", "lzw", "rle"):
        os.makedirs(f"{OUT}/scan/{kind}", exist_ok=True)
    Image.init()
    with Pool() as pool:
        list(pool.imap(make_photograph, list(enumerate(photographs()))))
        list(pool.imap(make_document, ["GPL-3", "GPL-2", "LGPL-2.1"]))
        list(pool.imap(make_drawing, range(12)))


main()
