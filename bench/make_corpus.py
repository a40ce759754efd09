#!/usr/bin/env python3
"""Creates the benchmark images from wallpapers and typeset pages. Called by make-corpus.sh."""
import glob
import hashlib
import os
import random
import sys
from multiprocessing import Pool

from PIL import Image, ImageChops

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


def main():
    for folder in SETS:
        for kind in KINDS:
            os.makedirs(f"{OUT}/{folder}/{kind}", exist_ok=True)
    for kind in ("g4", "lzw", "rle"):
        os.makedirs(f"{OUT}/scan/{kind}", exist_ok=True)
    Image.init()
    with Pool() as pool:
        list(pool.imap(make_photograph, list(enumerate(photographs()))))
        list(pool.imap(make_document, ["GPL-3", "GPL-2", "LGPL-2.1"]))


main()
