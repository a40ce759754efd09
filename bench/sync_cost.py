#!/usr/bin/env python3
"""Measures what bringing saved files to the disk costs a run: 400 small JPEGs to new BMPs, with and without VARNEL_SYNC=0.

    bench/sync_cost.py WORK [--pairs 15] [--program NAME=PATH[:LIBRARY_PATH]]...

WORK is an empty folder on the disk to measure. Each further program runs in every round, too. The runs of a round follow one
another in changing order, so that a drift of the machine affects all of them alike. Prints medians of wall and CPU time.
"""
import argparse
import os
import pathlib
import random
import resource
import shutil
import statistics
import subprocess
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FILES = 400


def make_sources(folder):
    folder.mkdir(parents=True)
    sample = next(iter(sorted((ROOT / "share/samples").glob("*.jpg"))))
    generator = random.Random(1)
    for number in range(FILES):
        width, height = 640 + generator.randrange(64), 480 + generator.randrange(64)
        subprocess.run([str(ROOT / "build/release/bin/varnel"), "/P2", "/a", str(width), "/b", str(height), "/c", "1",
                        "/S", str(sample), "/T", str(folder / f"{number}.jpg")],
                       check=True, env=dict(os.environ, DISPLAY="", WAYLAND_DISPLAY=""))


def run(program, work, variables):
    path, _, libraries = program.partition(":")
    target = work / "out"
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir()
    os.sync()
    environment = dict(os.environ, VARNEL_HOME=str(work / "home"), VARNEL_SETTINGS_DIR=str(work / "home"),
                       DISPLAY="", WAYLAND_DISPLAY="", **variables)
    if libraries:
        environment["LD_LIBRARY_PATH"] = libraries
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    begin = time.perf_counter()
    subprocess.run([path, "/S", str(work / "in/*.jpg"), "/T", str(target / "*.bmp")], env=environment, check=True)
    wall = time.perf_counter() - begin
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    made = len(list(target.glob("*.bmp")))
    if made != FILES:
        raise SystemExit(f"{path} made {made} files")
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--pairs", type=int, default=15)
    parser.add_argument("--program", action="append", default=[])
    arguments = parser.parse_args()
    work = arguments.work.resolve()
    if not (work / "in").exists():
        make_sources(work / "in")
    program = str(ROOT / "build/release/bin/varnel")
    contenders = {"synced": (program, {}), "VARNEL_SYNC=0": (program, {"VARNEL_SYNC": "0"})}
    for entry in arguments.program:
        name, _, path = entry.partition("=")
        contenders[name] = (path, {})
    times = {name: [] for name in contenders}
    for number in range(arguments.pairs + 1):
        names = list(contenders)
        random.shuffle(names)
        for name in names:
            measured = run(contenders[name][0], work, contenders[name][1])
            if number > 0:  # the first round warms up
                times[name].append(measured)
    base = statistics.median(wall for wall, _ in times["VARNEL_SYNC=0"])
    for name, measured in times.items():
        wall = statistics.median(wall for wall, _ in measured)
        cpu = statistics.median(cpu for _, cpu in measured)
        paired = statistics.median(a[0] / b[0] for a, b in zip(measured, times["VARNEL_SYNC=0"]))
        print(f"{name:16} wall {wall:.3f} s ({wall / base:.3f}; pairs {paired:.3f})  CPU {cpu:.3f} s")


if __name__ == "__main__":
    main()
