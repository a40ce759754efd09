#!/usr/bin/env python3
"""Benchmarks Varnel against its peers.

Usage: bench/run.py CORPUS WORK [--rounds N] [--only REGEX] [--markdown FILE]

Each measurement is one process against one process, interleaved round by round, so that drifting machine speed affects
all tools alike. CPU is the user and system time of the process and its children. The ratio is the best peer's median
divided by Varnel's.

Three tables: complete jobs, including load and save; single operations, as the difference between runs with and without
the operation on one photograph; and every special process alone with its default parameters.
"""
import argparse
import glob
import os
import re
import shlex
import shutil
import statistics
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
VARNEL = os.path.join(ROOT, "build/release/bin/varnel")
SLOW_SECONDS = 20  # a peer that takes longer runs only once
AFTER_DELETING_SECONDS = 90
LEAST_TELLING = 0.5  # in ms per megapixel; smaller differences drown in the noise of load and save
RUNS_ALONE = 3  # per round: a single operation is a small difference
sys.path.insert(0, os.path.join(ROOT, "tools"))
from catalogue import processes, switches  # noqa: E402  (needs the path set above)
from image_magick import image_magick  # noqa: E402

CONVERT, MOGRIFY = image_magick("convert"), image_magick("mogrify")


class Job:
    """The command lines of Varnel and each peer for one job. {in} and {out} are folders."""

    def __init__(self, name, folder, extension, varnel, target, im=None, gm=None, pillow=None, vips=None):
        self.name, self.folder, self.extension, self.target = name, folder, extension, target
        self.commands = {"varnel": varnel, "im": im, "gm": gm, "pillow": pillow, "vips": vips}

    def files(self, corpus):
        return sorted(os.path.basename(path) for path in glob.glob(f"{corpus}/{self.folder}/*.{self.extension}"))


def convert(name, folder, source, target, extra="", goal="", im="", gm="", pillow="none", vips=None, suffix=None,
            vips_suffix=None, lacks=()):
    """Converts a folder of images."""
    job = Job(name, folder, source, f"/S {{in}}/*.{source} /T {{out}}/*.{target} {extra}", goal,
              im=f"{MOGRIFY} -path {{out}} -format {target} {im}",
              gm=f"gm mogrify -output-directory {{out}} -format {target} {gm}",
              pillow=f"/usr/bin/python3 {HERE}/peers/pillow_batch.py {pillow} {{out}} {suffix or '.' + target}",
              vips=f"{{work}}/vips_batch {vips or pillow} {{out}} {vips_suffix or '.' + target}")
    for tool in lacks:
        job.commands[tool] = None
    return job


QUALITY = "/4 75"
PEER_QUALITY = "-quality 75"


def operation(name, process, goal, im, gm, peer, vips=None, lacks=()):
    """Applies an operation to photographs, from JPEG to JPEG of quality 75."""
    return convert(name, "mid/jpg", "jpg", "jpg", f"{process} {QUALITY}", goal, f"{im} {PEER_QUALITY}",
                   f"{gm} {PEER_QUALITY}", peer, vips, vips_suffix=".jpg[Q=75]", lacks=lacks)


JOBS = [
    convert("JPEG to PNG", "mid/jpg", "jpg", "png", goal="8 / vips 3.5"),
    convert("BMP to PNG", "mid/bmp", "bmp", "png", goal="8 / vips 3.5"),
    convert("400 small JPEG to PNG", "small/jpg", "jpg", "png", goal="12 / vips 5"),
    convert("PNG to JPEG q75", "mid/png", "png", "jpg", QUALITY, "1.9", PEER_QUALITY, PEER_QUALITY,
            vips_suffix=".jpg[Q=75]"),
    convert("BMP to JPEG q75", "mid/bmp", "bmp", "jpg", QUALITY, "2.5", PEER_QUALITY, PEER_QUALITY,
            vips_suffix=".jpg[Q=75]"),
    convert("JPEG to BMP", "mid/jpg", "jpg", "bmp", goal="1.6"),
    convert("JPEG to TIFF none", "mid/jpg", "jpg", "tif", "/2 0", "1.25", "-compress None", "-compress None"),
    convert("JPEG to TIFF LZW", "mid/jpg", "jpg", "tif", "/2 1", "1.3", "-compress LZW", "-compress LZW",
            suffix=".lzw.tif", vips_suffix=".tif[compression=lzw,predictor=horizontal]"),
    convert("JPEG to GIF", "mid/jpg", "jpg", "gif", goal="4"),
    convert("JPEG to J2K lossless", "mid/jpg", "jpg", "j2k", "/4 100", "1", vips_suffix=".j2k[lossless]",
            lacks=("gm",)),
    Job("22 G4 pages to PNG", "scan/g4", "tif", "/S {in}/*.tif /T {out}/*.png", "3.5",
        im=f"@pages {CONVERT} {{file}} {{out}}/{{base}}-%d.png", gm="@pages gm convert {file} +adjoin {out}/{base}-%d.png",
        pillow=f"/usr/bin/python3 {HERE}/peers/pillow_batch.py pages {{out}} .png",
        vips="{work}/vips_batch pages {out} .png"),
    operation("resize to 1280, bicubic", "/P2 /a1280 /b0 /c2", "1.6", "-filter Catrom -resize 1280x",
              "-filter Catrom -resize 1280x", "resize"),
    operation("Gaussian blur of 5 pixels", "/P36 /a5", "2", "-blur 0x5", "-blur 0x5", "blur"),
    operation("rotate by 30 degrees, bilinear", "/P3 /a30 /b16777215", "2.7", "-background white -rotate 30",
              "-background white -rotate 30", "rotate"),
    operation("hue and saturation", "/P13 /a36 /b0 /c0.23", "3.5", "-modulate 100,130,120", "-modulate 100,130,120",
              "hue"),
    operation("equalize", "/P19 /a1", "1.7", "-equalize", "-equalize", "equalize"),
    operation("Sobel, one direction", "/P49 /a0", "2.5", "-morphology Convolve Sobel", "-convolve -1,0,1,-2,0,2,-1,0,1",
              "sobel", vips="sobel1"),
    operation("Sobel, vips in both directions", "/P49 /a0", "2.5", "-morphology Convolve Sobel",
              "-convolve -1,0,1,-2,0,2,-1,0,1", "sobel", lacks=("im", "gm", "pillow")),
    operation("minimum of 5x5", "/P58 /a5", "8", "", "", "min5", lacks=("im", "gm")),
    operation("emboss", "/P34 /a135 /b10 /c1", "1.7", "-emboss 1", "-emboss 1", "emboss"),
]

# Single operations: name, our process, ImageMagick's and GraphicsMagick's arguments (None if they lack it or
# take minutes), target ratio.
ALONE = [
    ("motion blur of 31 pixels at 30 degrees", "/P39 /a30 /b31", None, "-motion-blur 15x10+30", "10"),
    ("radial blur of 18 degrees", "/P40 /a50", "-radial-blur 18", None, "10"),
    ("twirl by 60 degrees", "/P9 /a60", "-swirl 60", "-swirl 60", "10"),
    ("Gaussian noise", "/P31 /aFALSE /b20", "+noise Gaussian", "+noise Gaussian", "10"),
    ("mosaic of 10 pixels", "/P38 /aTRUE /b10", "-scale 10% -scale 1000%", "-scale 10% -scale 1000%", "10"),
    ("maximum of 5x5", "/P59 /a5", "-statistic Maximum 5x5", None, "10"),
    ("diffuse over 6 pixels", "/P32 /a100 /b6", "-spread 6", "-spread 6", ""),
]
NO_OPERATION = "/P57"  # an unused number: load and save only


def commands_of(job, tool, corpus, work, out):
    """The command lines of one run, for the job's folder: a single one, or one per file if the peer needs that."""
    template = job.commands[tool]
    folder = os.path.join(corpus, job.folder)
    files = job.files(corpus)
    if tool == "varnel":
        line = template.replace("{in}", folder).replace("{out}", out)
        return [[VARNEL] + line.split()]
    if template.startswith("@pages "):
        result = []
        for file in files:
            base = os.path.splitext(os.path.basename(file))[0]
            result.append(shlex.split(template[7:].replace("{file}", file).replace("{out}", out).replace("{base}", base)))
        return result
    return [shlex.split(template.replace("{out}", out).replace("{work}", work)) + files]


def run_once(commands, folder, out, settings):
    shutil.rmtree(out, ignore_errors=True)
    os.makedirs(out)
    environment = dict(os.environ, VARNEL_SETTINGS_DIR=settings, VARNEL_HOME=settings)
    cpu, peak = 0.0, 0
    begin = time.monotonic()
    for command in commands:
        process = subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        _, _, usage = os.wait4(process.pid, 0)
        cpu += usage.ru_utime + usage.ru_stime
        peak = max(peak, usage.ru_maxrss)
    wall = time.monotonic() - begin
    sizes = [os.path.getsize(path) for path in glob.glob(f"{out}/*")]
    return {"cpu": cpu, "wall": wall, "peak": peak / 1024, "size": sum(sizes) / 1e6, "files": len(sizes)}


def measure(job, corpus, work, rounds):
    """Each run writes to a new folder: after deleting files, some file systems create files ten times more slowly for a
    minute, which would penalise the next tool."""
    results, slow = {}, set()
    all_out = os.path.join(work, "out")
    if os.path.exists(all_out):
        shutil.rmtree(all_out)
        time.sleep(AFTER_DELETING_SECONDS)
    for number in range(rounds):
        for tool, command in job.commands.items():
            if not command or tool in slow:
                continue
            out = os.path.join(all_out, f"{tool}-{number}")
            run = run_once(commands_of(job, tool, corpus, work, out), os.path.join(corpus, job.folder), out,
                           os.path.join(work, "settings"))
            results.setdefault(tool, []).append(run)
            if run["wall"] > SLOW_SECONDS:
                slow.add(tool)
    shutil.rmtree(all_out)
    return {tool: {key: statistics.median(run[key] for run in runs) for key in runs[0]}
            for tool, runs in results.items()}


def report(job, medians, lines):
    ours = medians["varnel"]
    peers = {tool: median for tool, median in medians.items() if tool != "varnel" and median["files"] > 0}
    best = min(peers, key=lambda tool: peers[tool]["cpu"])
    ratios = ", ".join(f"{tool} {peers[tool]['cpu'] / ours['cpu']:.2f}" for tool in sorted(peers))
    lines.append(f"| {job.name} | {job.target} | **{peers[best]['cpu'] / ours['cpu']:.2f}** ({best}) | {ratios} | "
                 f"{ours['cpu']:.2f} | {ours['wall']:.2f} | {ours['peak']:.0f} | {ours['size']:.1f} | "
                 + ", ".join(f"{tool} {peers[tool]['size']:.1f}" for tool in sorted(peers)) + " |")
    print(lines[-1], flush=True)


class Alone:
    """Measures single operations as the difference between runs with and without them on one photograph."""

    def __init__(self, corpus, work, rounds):
        folder = os.path.join(corpus, "mid/bmp")
        largest = max(glob.glob(f"{folder}/*.bmp"), key=os.path.getsize)
        self.folder, self.file, self.out = folder, os.path.basename(largest), os.path.join(work, "out")
        self.settings, self.rounds, self.plain = os.path.join(work, "settings"), rounds, {}
        self.megapixels = os.path.getsize(largest) / 3e6

    def command(self, tool, arguments):
        if tool == "varnel":
            return [VARNEL, "/S", f"{self.folder}/{self.file}", "/T", f"{self.out}/{self.file}"] + arguments.split()
        head = [MOGRIFY, "-path"] if tool == "im" else ["gm", "mogrify", "-output-directory"]
        return head + [self.out, "-format", "bmp"] + shlex.split(arguments) + [self.file]

    def least(self, tool, arguments):
        """The lowest CPU seconds of several runs (a single one if slow) and the highest peak in MiB."""
        runs, most = [], self.rounds * (RUNS_ALONE if tool == "varnel" else 1)
        while len(runs) < most and (not runs or runs[-1]["wall"] < SLOW_SECONDS):
            runs.append(run_once([self.command(tool, arguments)], self.folder, self.out, self.settings))
        if not all(run["files"] for run in runs):
            sys.exit(f"{tool} produced no output for {arguments}")
        return min(run["cpu"] for run in runs), max(run["peak"] for run in runs)

    def milliseconds(self, tool, arguments):
        """CPU ms per megapixel of the operation alone, and the peak of the complete run in MiB."""
        plain_arguments = NO_OPERATION if tool == "varnel" else ""
        if tool not in self.plain:
            self.plain[tool] = self.least(tool, plain_arguments)[0]
        run = self.least(tool, arguments)
        return max(run[0] - self.plain[tool], 0) * 1000 / self.megapixels, run[1]


def report_alone(alone, lines, only):
    table = ["", "| operation alone | target | CPU ratio to best peer | ms/megapixel | peers' ms/megapixel | peak MiB |",
             "|---|---|---|---|---|---|"]
    for name, ours, im, gm, target in ALONE:
        if not re.search(only, name):
            continue
        own, peak = alone.milliseconds("varnel", ours)
        peers = {tool: alone.milliseconds(tool, told)[0] for tool, told in (("im", im), ("gm", gm)) if told}
        best = min(peers, key=peers.get)
        least = max(own, LEAST_TELLING)
        table.append(f"| {name} | {target} | **{'over ' if own < least else ''}{peers[best] / least:.0f}** ({best}) | "
                     f"{own:.1f} | "
                     + ", ".join(f"{tool} {peers[tool]:.0f}" for tool in peers) + f" | {peak:.0f} |")
        print(table[-1], flush=True)
    if len(table) > 3:
        lines += table


def report_first_starts(alone, lines, only):
    table = ["", "| process | default parameters | ms/megapixel | peak MiB |", "|---|---|---|---|"]
    for number, label, _, parameters in processes():
        name = f"process {number}"
        if number == 100 or not label or not re.search(only, name):
            continue
        told = switches([value for _, _, value in parameters])
        cost, peak = alone.milliseconds("varnel", f"/P{number} {told}")
        table.append(f"| {number} {label} | {told} | {cost:.1f} | {peak:.0f} |")
        print(table[-1], flush=True)
    if len(table) > 3:
        lines += table


def build_vips_peer(work):
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "vips"], capture_output=True, text=True, check=True)
    subprocess.run(["gcc", "-O2", f"{HERE}/peers/vips_batch.c", "-o", f"{work}/vips_batch"] + flags.stdout.split(),
                   check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("corpus")
    parser.add_argument("work")
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--only", default=".")
    parser.add_argument("--markdown")
    arguments = parser.parse_args()
    work = os.path.abspath(arguments.work)
    os.makedirs(os.path.join(work, "settings"), exist_ok=True)
    build_vips_peer(work)
    lines = ["| job | target | CPU ratio to best peer | to each peer | CPU s | wall s | peak MiB | MB | peers' MB |",
             "|---|---|---|---|---|---|---|---|---|"]
    print("\n".join(lines))
    for job in JOBS:
        if re.search(arguments.only, job.name):
            report(job, measure(job, os.path.abspath(arguments.corpus), work, arguments.rounds), lines)
    alone = Alone(os.path.abspath(arguments.corpus), work, arguments.rounds)
    report_alone(alone, lines, arguments.only)
    report_first_starts(alone, lines, arguments.only)
    if arguments.markdown:
        with open(arguments.markdown, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")


main()
