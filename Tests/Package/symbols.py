#!/usr/bin/env python3
"""Looks at the symbol tables of the libraries for what hidden visibility and static order promise.

  symbols.py doubles LIBRARY...    what must exist once in the process is exported by one library,
                                   and no library replaces the global operators new and delete
  symbols.py initialisers FOLDER   in the object files below FOLDER only the module file has a
                                   dynamic initialiser
"""

import collections
import pathlib
import re
import subprocess
import sys

# Statics of templates, run-time types and singletons: two of one of these are two worlds.
ONCE = re.compile(r"OSG::(SingletonHolder<|PointerFieldTypesOf<|FieldTraits<|ContainerPattern<"
                  r"|[SM]Field<.*>::getClassType|\w+::_type\b|TypeFactory::the\(|vtable for OSG::)")
MODULE = "OSGContribTolvaniteModule"


def symbols(path, *options):
    text = subprocess.run(["nm", "--demangle", *options, str(path)], check=True,
                          capture_output=True, text=True).stdout
    for line in text.splitlines():
        found = re.match(r"[0-9a-f]+ ([A-Za-z]) (.*)", line)
        if found:
            yield found.group(1), found.group(2)


def doubles(libraries):
    homes = collections.defaultdict(set)
    replaced = []
    for library in libraries:
        for kind, name in symbols(library, "--dynamic", "--defined-only"):
            if re.match(r"operator (new|delete)", name):
                replaced.append(f"{library}: replaces {name}")
            if ONCE.search(name):
                homes[name].add(library)
    # Hidden copies count as well: they would be found in the full table.
    for library in libraries:
        for kind, name in symbols(library, "--defined-only"):
            if ONCE.search(name) and "[clone" not in name:
                homes[name].add(library)
    problems = replaced + [f"{name}: in {', '.join(sorted(map(str, where)))}"
                           for name, where in sorted(homes.items()) if len(where) > 1]
    if not homes:
        problems.append("no symbol of the kinds looked for was found at all")
    return problems, f"{len(homes)} symbols, each in one of {len(libraries)} libraries"


def initialisers(folder):
    objects = sorted(pathlib.Path(folder).rglob("*.o"))
    guilty, module = [], False
    for path in objects:
        if any("_GLOBAL__sub_I_" in name or name == "__static_initialization_and_destruction_0"
               for _, name in symbols(path)):
            if MODULE in path.name:
                module = True
            else:
                guilty.append(f"{path.name} has a dynamic initialiser")
    if not module:
        guilty.append(f"{MODULE} has none: the test looks in the wrong place")
    return guilty, f"{len(objects)} object files, only the module file has a dynamic initialiser"


def main():
    what, arguments = sys.argv[1], sys.argv[2:]
    problems, summary = doubles(arguments) if what == "doubles" else initialisers(arguments[0])
    print("\n".join(problems) if problems else summary)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
