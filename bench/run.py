#!/usr/bin/env python3
"""Measures Varnel side by side with its peers and prints ratios.

Usage: bench/run.py CORPUS WORK [--rounds N] [--only REGEX] [--markdown FILE]

One process against one process, interleaved round by round, so that a machine whose speed drifts treats all alike. CPU
is user and system time of the process and its children. The ratio is the best peer's median over Varnel's.
"""
import argparse
import glob
import os
import re
import shlex
import shutil
import statistics
import subprocess
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
VARNEL = os.path.join(ROOT, "build/release/bin/varnel")
SLOW_SECONDS = 20  # a peer that took longer isn't run again


class Job:
    """One job: what Varnel and each peer are started with. {in} and {out} are folders."""

    def __init__(self, name, folder, extension, varnel, target, im=None, gm=None, pillow=None, vips=None):
        self.name, self.folder, self.extension, self.target = name, folder, extension, target
        self.commands = {"varnel": varnel, "im": im, "gm": gm, "pillow": pillow, "vips": vips}


def convert(name, folder, source, target, extra="", goal="", im="", gm="", pillow="none", vips=None, suffix=None,
            vips_suffix=None, lacks=()):
    """A plain conversion of a folder."""
    job = Job(name, folder, source, f"/S {{in}}/*.{source} /T {{out}}/*.{target} {extra}", goal,
              im=f"mogrify-im6.q16 -path {{out}} -format {target} {im}",
              gm=f"gm mogrify -output-directory {{out}} -format {target} {gm}",
              pillow=f"/usr/bin/python3 {HERE}/peers/pillow_batch.py {pillow} {{out}} {suffix or '.' + target}",
              vips=f"{{work}}/vips_batch {vips or pillow} {{out}} {vips_suffix or '.' + target}")
    for tool in lacks:
        job.commands[tool] = None
    return job


QUALITY = "/4 75"
PEER_QUALITY = "-quality 75"

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
        im="@pages convert-im6.q16 {file} {out}/{base}-%d.png", gm="@pages gm convert {file} +adjoin {out}/{base}-%d.png",
        pillow=f"/usr/bin/python3 {HERE}/peers/pillow_batch.py pages {{out}} .png",
        vips="{work}/vips_batch pages {out} .png"),
]


def commands_of(job, tool, corpus, work, out):
    """The command lines of one run of a tool, started in the job's folder: one, or one a file where a peer needs it."""
    template = job.commands[tool]
    folder = os.path.join(corpus, job.folder)
    files = sorted(os.path.basename(path) for path in glob.glob(f"{folder}/*.{job.extension}"))
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
    results, slow = {}, set()
    for _ in range(rounds):
        for tool, command in job.commands.items():
            if not command or tool in slow:
                continue
            out = os.path.join(work, "out")
            run = run_once(commands_of(job, tool, corpus, work, out), os.path.join(corpus, job.folder), out,
                           os.path.join(work, "settings"))
            results.setdefault(tool, []).append(run)
            if run["wall"] > SLOW_SECONDS:
                slow.add(tool)
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
    lines = ["| job | target | CPU ratio to the best peer | to each peer | CPU s | wall s | peak MiB | MB | peers' MB |",
             "|---|---|---|---|---|---|---|---|---|"]
    print("\n".join(lines))
    for job in JOBS:
        if re.search(arguments.only, job.name):
            report(job, measure(job, os.path.abspath(arguments.corpus), work, arguments.rounds), lines)
    if arguments.markdown:
        with open(arguments.markdown, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")


main()
