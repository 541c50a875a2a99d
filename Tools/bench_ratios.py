#!/usr/bin/env python3
"""Runs the benchmark programs of a folder and prints our times beside those of the peers.

    bench_ratios.py FOLDER [PROGRAM] [OPTION...]

A program is a file named *Benchmarks. PROGRAM chooses one (containers for ContainersBenchmarks);
without it all programs run. Each program receives the options. Benchmarks are named CASE/ours and
CASE/PEER. The benchmarks of a case run interleaved in one process, with seven repetitions unless
an option says otherwise. For each case the script prints the median time with its range, and the
ratio of the medians with the least and the greatest ratio that the ranges allow, both ways round.
Where `ours / PEER` is below 1, and `PEER / ours` above it, we are faster.

RenderBenchmarks runs a second time with the OpenGL library that draws nothing, where that was built:
its cases then tell the calls of a frame as well.
"""
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys

MODIFIERS = re.compile(r"(/(iterations|repeats|min_time|min_warmup_time|real_time|process_time"
                       r"|manual_time|threads)(:[^/]*)?)+$")


def quantities(entry):
    """The results of a repetition: bytes, or a time in nanoseconds, of the processor where a
    benchmark measures that; and calls of a library, where they were counted."""
    if "calls" in entry:
        yield entry["calls"], "calls"
    if "bytes" in entry:
        yield entry["bytes"], "bytes"
        return
    if "items_per_second" in entry:
        yield 1e9 / entry["items_per_second"], "time"
        return
    scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
    clock = "cpu_time" if "/process_time" in entry["run_name"] else "real_time"
    yield entry[clock] * scale, "time"


def environments(program):
    """The environments that a program runs in."""
    yield dict(os.environ)
    null_gl = program.parent.parent / "null-gl"
    if program.name == "RenderBenchmarks" and null_gl.is_dir():
        path = os.pathsep.join(filter(None, [str(null_gl), os.environ.get("LD_LIBRARY_PATH")]))
        yield dict(os.environ, LD_LIBRARY_PATH=path)


def run(program, options, environment):
    """The results of all repetitions by case with its unit and contender."""
    print(f"running {program.name}", file=sys.stderr)
    command = [str(program), "--benchmark_format=json", "--benchmark_repetitions=7",
               "--benchmark_enable_random_interleaving=true", *options]
    result = subprocess.run(command, stdout=subprocess.PIPE, check=True, text=True,
                            env=environment)
    times = {}
    for entry in json.loads(result.stdout)["benchmarks"]:
        if entry.get("error_occurred"):
            raise SystemExit(f"{entry['name']}: {entry['error_message']}")
        if entry.get("run_type") != "iteration":
            continue
        case, _, contender = MODIFIERS.sub("", entry["run_name"]).rpartition("/")
        for value, unit in quantities(entry):
            times.setdefault((case, unit), {}).setdefault(contender, []).append(value)
    return times


def describe(values, unit):
    median = statistics.median(values)
    scale = 1.0
    if unit == "time":
        unit, scale = next((name, size) for name, size in
                           (("s", 1e9), ("ms", 1e6), ("us", 1e3), ("ns", 0.0)) if median >= size)
        scale = scale or 1.0
    return (f"{median / scale:10.3f} {unit} "
            f"({min(values) / scale:.3f} to {max(values) / scale:.3f})")


def number(value):
    """Three significant digits, without an exponent where the value is large."""
    return f"{value:,.0f}" if value >= 100 else f"{value:.3g}"


def report(case, unit, contenders):
    print(case)
    for name, values in contenders.items():
        print(f"  {name:<24}{describe(values, unit)}")
    ours = contenders.get("ours")
    for name, values in contenders.items():
        if ours and name != "ours":
            ratio = statistics.median(ours) / statistics.median(values)
            low, high = min(ours) / max(values), max(ours) / min(values)
            print(f"  ours / {name}: {number(ratio)} ({number(low)} to {number(high)}); "
                  f"{name} / ours: {number(1 / ratio)} ({number(1 / high)} to {number(1 / low)})")


def main():
    folder, options = sys.argv[1], sys.argv[2:]
    programs = sorted(pathlib.Path(folder).glob("*Benchmarks"))
    if options and not options[0].startswith("-"):
        wanted = options.pop(0).lower() + "benchmarks"
        programs = [program for program in programs if program.name.lower() == wanted]
    if not programs:
        raise SystemExit(f"no such benchmark program in {folder}")
    for program in programs:
        for environment in environments(program):
            for (case, unit), contenders in sorted(run(program, options, environment).items()):
                report(case, unit, contenders)


if __name__ == "__main__":
    main()
