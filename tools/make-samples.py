#!/usr/bin/env python3
"""Generates share/samples: small images drawn by this script, so that no one else holds rights to them.

Usage: tools/make-samples.py [FOLDER]        (needs python3-pil)
"""
import math
import os
import random
import sys

from PIL import Image, ImageDraw, ImageFilter


def landscape(width, height):
    """A photo-like landscape: sky, sun, hills, water, grain."""
    rng = random.Random(7)
    picture = Image.new("RGB", (width, height))
    pixels = picture.load()
    for y in range(height):
        for x in range(width):
            t = y / height
            sun = math.exp(-((x - width * 0.7) ** 2 + (y - height * 0.3) ** 2) / (0.004 * width * width))
            sky = (90 + 120 * t + 120 * sun, 140 + 70 * t + 90 * sun, 215 - 20 * t + 10 * sun)
            pixels[x, y] = tuple(min(255, int(c)) for c in sky)
    draw = ImageDraw.Draw(picture)
    for layer, colour in enumerate(((96, 122, 128), (66, 98, 84), (38, 70, 48))):
        base = height * (0.52 + 0.12 * layer)
        line = [(x, base + 14 * math.sin(x / (31 - 6 * layer) + layer * 2) + 7 * math.sin(x / 9.0 + layer))
                for x in range(width + 1)]
        draw.polygon(line + [(width, height), (0, height)], fill=colour)
    for y in range(int(height * 0.84), height):
        for x in range(width):
            glint = 26 * math.sin(x / 5.0 + y * 1.7) * math.sin(y / 2.0)
            pixels[x, y] = (int(52 + glint), int(84 + glint), int(118 + glint))
    picture = picture.filter(ImageFilter.GaussianBlur(0.6))
    pixels = picture.load()
    for y in range(height):
        for x in range(width):
            grain = rng.randint(-4, 4)
            pixels[x, y] = tuple(max(0, min(255, c + grain)) for c in pixels[x, y])
    return picture


def chart(width, height):
    """A chart with a few flat colours and sharp edges."""
    picture = Image.new("RGB", (width, height), (250, 250, 246))
    draw = ImageDraw.Draw(picture)
    colours = ((200, 60, 50), (240, 170, 40), (60, 140, 90), (50, 90, 170), (120, 70, 150))
    step = width // 7
    for index, colour in enumerate(colours):
        top = height - 20 - (index * 37 + 40) % (height - 50)
        draw.rectangle((step * (index + 1), top, step * (index + 1) + step - 8, height - 20), fill=colour)
    draw.line((step - 10, height - 20, width - 20, height - 20), fill=(40, 40, 40), width=2)
    draw.line((step - 10, height - 20, step - 10, 15), fill=(40, 40, 40), width=2)
    return picture


def badge(size):
    """A round badge on a transparent background, with antialiased edges."""
    big = Image.new("RGBA", (size * 4, size * 4), (0, 0, 0, 0))
    draw = ImageDraw.Draw(big)
    draw.ellipse((8, 8, size * 4 - 8, size * 4 - 8), fill=(40, 110, 180, 255))
    draw.ellipse((size, size, size * 3, size * 3), fill=(250, 210, 60, 200))
    return big.resize((size, size), Image.LANCZOS)


def pages():
    """Three bilevel pages of a scanned form."""
    result = []
    for number in range(1, 4):
        page = Image.new("1", (425, 550), 1)
        draw = ImageDraw.Draw(page)
        draw.rectangle((20, 20, 404, 529), outline=0)
        for line in range(30):
            draw.line((50, 110 + line * 13, 250 + (line * 53 * number) % 120, 110 + line * 13), fill=0, width=3)
        for dot in range(number):
            draw.ellipse((50 + dot * 45, 45, 80 + dot * 45, 75), fill=0)
        result.append(page)
    return result


def spinner():
    """Eight frames of a spinner."""
    frames = []
    for index in range(8):
        frame = Image.new("P", (48, 48), 0)
        frame.putpalette([255, 255, 255, 40, 110, 180, 200, 220, 240] + [0] * 759)
        draw = ImageDraw.Draw(frame)
        for spoke in range(8):
            angle = spoke * math.pi / 4
            x, y = 24 + 16 * math.cos(angle), 24 + 16 * math.sin(angle)
            draw.ellipse((x - 4, y - 4, x + 4, y + 4), fill=1 if spoke == index else 2)
        frames.append(frame)
    return frames


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "share", "samples")
    os.makedirs(os.path.join(folder, "graphics"), exist_ok=True)
    path = lambda *names: os.path.join(folder, *names)
    photo = landscape(320, 200)
    photo.save(path("landscape.jpg"), quality=85)
    photo.resize((160, 100), Image.LANCZOS).save(path("landscape-small.bmp"))
    photo.convert("L").resize((160, 100), Image.LANCZOS).save(path("landscape-grey.tga"))
    chart(280, 180).save(path("graphics", "chart.png"))
    chart(140, 90).save(path("graphics", "bars.pcx"))
    badge(64).save(path("graphics", "badge.png"))
    badge(48).save(path("graphics", "icon.ico"), sizes=[(16, 16), (32, 32), (48, 48)])
    frames = spinner()
    frames[0].save(path("graphics", "spinner.gif"), save_all=True, append_images=frames[1:], duration=90, loop=0)
    sheets = pages()
    sheets[0].save(path("form.tif"), save_all=True, append_images=sheets[1:], compression="group4", dpi=(50, 50))


if __name__ == "__main__":
    main()
