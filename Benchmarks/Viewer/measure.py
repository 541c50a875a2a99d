#!/usr/bin/env python3
"""Measures the viewer on an X server without a screen, and prints a table.

    measure.py BIN_FOLDER MODEL [--rounds N]

- Start to picture: the whole life of a program that opens the model in a window of 1280 by 720
  pixels, saves a picture and ends; f3d does the same where it is installed. Rounds are interleaved.
- Hover: what it costs to find out what lies under the pointer, while it goes over the model.
- Share of the driver: the samples of a turning view that lie in the driver, by perf where it is
  installed.
- Idle: the processor's time in ten seconds without an event.
"""
import argparse
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Tools"))
from viewer_driver import Screen, Viewer  # noqa: E402

SIZE = (1280, 720)
# Mesa with its compiler of shaders, and what stands between it and a program.
DRIVER = re.compile(r"swrast|gallium|LLVM|libGL|libGLX|libGLdispatch|libepoxy|libX|libxcb|glapi|"
                    r"perf-\d+\.map|\[unknown\]|\[JIT\]|memfd|anon")


def life(command, environment):
    """Wall and processor seconds of a program from its start to its end."""
    begin = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise RuntimeError(f"{command[0]} ended with {process.returncode}")
    return time.monotonic() - begin, usage.ru_utime + usage.ru_stime


def spread(values, scale=1, unit="s"):
    low, middle, high = min(values), statistics.median(values), max(values)
    return f"{middle * scale:.3g} {unit} ({low * scale:.3g} to {high * scale:.3g})"


def measure_start(screen, program, model, rounds, folder):
    width, height = SIZE
    environment = {**os.environ, "DISPLAY": screen.display, "LP_NUM_THREADS": "0",
                   "XDG_CONFIG_HOME": folder, "XDG_STATE_HOME": folder}
    commands = {"ours": [program, model, f"--size={width}x{height}",
                         f"--screenshot={folder}/ours.png", "--exit"]}
    if shutil.which("f3d"):
        commands["f3d"] = ["f3d", model, f"--output={folder}/f3d.png",
                           f"--resolution={width},{height}", "--dry-run"]
    else:
        print("f3d is not installed, its half is left out", file=sys.stderr)
    results = {name: [] for name in commands}
    for _ in range(rounds + 1):
        for name, command in commands.items():
            results[name].append(life(command, environment))
    for which, title in enumerate(("start to picture, wall", "start to picture, processor")):
        columns = {name: [one[which] for one in lives[1:]] for name, lives in results.items()}
        for name, values in columns.items():
            print(f"{title:<30} {name:<6} {spread(values, 1e3, 'ms')}")
        if "f3d" in columns:
            ours, peer = columns["ours"], columns["f3d"]
            print(f"{title:<30} f3d / ours {statistics.median(peer) / statistics.median(ours):.2f} "
                  f"({min(peer) / max(ours):.2f} to {max(peer) / min(ours):.2f})")


def measure_hover(screen, program, model, rounds):
    """The longest one builds the index of the model's triangles."""
    firsts, others = [], []
    for _ in range(rounds):
        with Viewer(screen, program, [model, "--verbose"], SIZE) as viewer:
            viewer.wait_for_title(os.path.basename(model))
            for i in range(200):
                viewer.screen.act("mousemove", 400 + 5 * (i % 100), 250 + i)
            viewer.quit()
            count, mean, longest = map(float, re.search(
                r"(\d+) hovers, ([0-9.]+) s each, the longest ([0-9.]+) s",
                viewer.log_text()).groups())
            firsts.append(longest)
            others.append((count * mean - longest) / (count - 1))
    print(f"{'the longest hover':<30} ours   {spread(firsts, 1e3, 'ms')}")
    print(f"{'the others, each':<30} ours   {spread(others, 1e6, 'us')}")


def driver_share(report):
    """The share of the driver in a report of perf by shared object."""
    driver = everything = 0.0
    for line in report.splitlines():
        found = re.match(r"\s*([0-9.]+)%\s+(.*\S)", line)
        if found:
            everything += float(found[1])
            driver += float(found[1]) if DRIVER.search(found[2]) else 0
    return driver / everything if everything else None


def measure_share(screen, program, model, folder):
    if not shutil.which("perf"):
        print("perf is not installed, the share of the driver is left out", file=sys.stderr)
        return
    data = os.path.join(folder, "perf.data")
    os.environ["LP_NUM_THREADS"] = "0"
    with Viewer(screen, program, [model], SIZE) as viewer:
        viewer.wait_for_title(os.path.basename(model))
        perf = subprocess.Popen(["perf", "record", "-q", "-o", data, "-p",
                                 str(viewer.process.pid)], stderr=subprocess.DEVNULL)
        time.sleep(1)
        for turn in range(3):
            viewer.drag(*((300 + 6 * i, 300 + 40 * turn) for i in range(60)))
        perf.terminate()
        perf.wait()
        viewer.quit()
    done = subprocess.run(["perf", "report", "-i", data, "--sort", "dso", "--stdio", "-q"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
    share = driver_share(done.stdout)
    if share is None:
        print("perf saw nothing, the share of the driver is left out", file=sys.stderr)
        return
    print(f"{'turning, not the driver':<30} ours   {100 * (1 - share):.1f} % of the samples")


def measure_idle(screen, program, model, rounds):
    used = []
    for _ in range(rounds):
        with Viewer(screen, program, [model], SIZE) as viewer:
            viewer.wait_for_title(os.path.basename(model))
            time.sleep(2)
            before = viewer.cpu_seconds()
            time.sleep(10)
            used.append(viewer.cpu_seconds() - before)
            viewer.quit()
    print(f"{'ten idle seconds, processor':<30} ours   {spread(used, 1e3, 'ms')}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("bin_folder")
    parser.add_argument("model")
    parser.add_argument("--rounds", type=int, default=7)
    options = parser.parse_args()
    program = os.path.abspath(os.path.join(options.bin_folder, "tolvanite-view"))
    model = os.path.abspath(options.model)
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        measure_start(screen, program, model, options.rounds, folder)
        measure_hover(screen, program, model, max(1, options.rounds // 2))
        measure_share(screen, program, model, folder)
        measure_idle(screen, program, model, max(1, options.rounds // 3))


if __name__ == "__main__":
    main()
