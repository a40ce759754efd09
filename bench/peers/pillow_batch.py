#!/usr/bin/env python3
"""Converts files with Pillow in one process, as a user's script would.

Usage: pillow_batch.py OPERATION FOLDER EXTENSION FILE ...
"""
import os
import sys

from PIL import Image, ImageFilter, ImageOps, ImageSequence

Image.MAX_IMAGE_PIXELS = None
OPTIONS = {".jpg": {"quality": 75}, ".tif": {"compression": "raw"}, ".lzw.tif": {"compression": "tiff_lzw"}}


def hue(picture):
    h, s, v = picture.convert("HSV").split()
    turned = (h.point(lambda x: (x + 25) & 255), s.point(lambda x: min(255, int(x * 1.3))), v)
    return Image.merge("HSV", turned).convert("RGB")


OPERATIONS = {
    "none": lambda i: i,
    "resize": lambda i: i.resize((1280, round(i.height * 1280 / i.width)), Image.BICUBIC),
    "blur": lambda i: i.filter(ImageFilter.GaussianBlur(5)),
    "rotate": lambda i: i.rotate(30, Image.BILINEAR, expand=True, fillcolor=(255, 255, 255)),
    "hue": hue,
    "equalize": ImageOps.equalize,
    "sobel": lambda i: i.filter(ImageFilter.Kernel((3, 3), (-1, 0, 1, -2, 0, 2, -1, 0, 1), 1, 128)),
    "min5": lambda i: i.filter(ImageFilter.MinFilter(5)),
    "emboss": lambda i: i.filter(ImageFilter.EMBOSS),
}


def main():
    operation, folder, extension = sys.argv[1:4]
    options = OPTIONS.get(extension, {})
    for path in sys.argv[4:]:
        base = os.path.splitext(os.path.basename(path))[0]
        picture = Image.open(path)
        if operation == "pages":
            for number, page in enumerate(ImageSequence.Iterator(picture), 1):
                page.save(f"{folder}/{base}-{number}{extension}", **options)
            continue
        if operation != "none" or extension == ".jpg":
            picture = picture.convert("RGB")
        OPERATIONS[operation](picture).save(f"{folder}/{base}{extension}", **options)


main()
