#!/usr/bin/env python3
"""Makes compile commands for clang tools from the compile commands of a gcc build.

    tidy_commands.py BUILD OUT [SOURCE...]

clang cannot read gcc's precompiled headers, but would find them by name. The commands in
OUT/compile_commands.json therefore include a copy of the header's text instead. Prints the files
among SOURCE (by default all) that the build compiles, one per line.
"""
import json
import pathlib
import re
import sys


def without_gcc_parts(entry, out, build):
    def text_copy(match):
        header = pathlib.Path(match.group(1))
        copy = out / (re.sub(r"\W+", "_", str(header.relative_to(build.resolve()))) + ".h")
        copy.write_text(header.read_text())
        return "-include " + str(copy)

    command = re.sub(r"-include (\S+cmake_pch\.hxx)", text_copy, entry["command"])
    return dict(entry, command=command.replace(" -Winvalid-pch", ""))


def main():
    build, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    out.mkdir(parents=True, exist_ok=True)
    commands = json.loads((build / "compile_commands.json").read_text())
    commands = [c for c in commands if "cmake_pch" not in pathlib.Path(c["file"]).name]
    commands = [without_gcc_parts(c, out, build) for c in commands]
    (out / "compile_commands.json").write_text(json.dumps(commands, indent=1))

    compiled = {pathlib.Path(c["file"]).resolve() for c in commands}
    named = [pathlib.Path(s).resolve() for s in sys.argv[3:]]
    root = pathlib.Path.cwd().resolve()
    for source in sorted(compiled.intersection(named)):
        print(source.relative_to(root))


if __name__ == "__main__":
    main()
