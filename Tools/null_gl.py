#!/usr/bin/env python3
"""Writes the C++ source of an OpenGL library whose functions do nothing but count their calls.

    null_gl.py OUT HEADER...

A function is written for each OpenGL function that the headers declare. Each is weak: a function of
the same name elsewhere in the library replaces it. All return 0. The calling convention leaves
arguments to the caller, so that functions without parameters serve.
"""
import pathlib
import re
import sys

DECLARATION = re.compile(r"\b(?:GL)?APIENTRY\s+(gl[A-Z]\w*)\s*\(")

SOURCE = """\
// Written by Tools/null_gl.py.
#include "NullGL.h"

#define FUNCTION(name, number) \\
    extern "C" __attribute__((weak, visibility("default"))) void *name() \\
    {{ \\
        ++null_gl_counts[number]; \\
        return nullptr; \\
    }}

unsigned long long null_gl_counts[{count}];
{functions}
NullGLFunction const null_gl_functions[] = {{
{rows}
}};
unsigned const null_gl_function_count = {count};
"""


def main():
    out, headers = pathlib.Path(sys.argv[1]), sys.argv[2:]
    names = sorted({name for header in headers
                    for name in DECLARATION.findall(pathlib.Path(header).read_text())})
    out.write_text(SOURCE.format(
        count=len(names),
        functions="\n".join(f"FUNCTION({name}, {i})" for i, name in enumerate(names)),
        rows=",\n".join(f'    {{"{name}", reinterpret_cast<void *>(&{name})}}' for name in names)))


if __name__ == "__main__":
    main()
