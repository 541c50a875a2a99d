#!/usr/bin/env bash
# Builds the loader of 3DS files against a lib3ds that is installed, and reads a file with it. The
# reader of this tree is the installed library here, with the node's matrix under its other name.
# A header of lib3ds 1.3 must be refused.
#
#   installed-lib3ds.sh SOURCE_DIR BUILD_DIR CXX_COMPILER CXX_FLAGS
set -euo pipefail
source_dir=$1
build_dir=$2
cxx=$3
flags=${4:-}
work=$build_dir/lib3ds-test
prefix=$work/prefix
loader=$source_dir/Source/Contrib/Tolvanite/FileIO/3DSLib

rm -rf "$work"
mkdir -p "$work/reader" "$prefix/include" "$prefix/lib"
read -ra compile <<<"$cxx -std=c++20 -O0 -fPIC -ffp-contract=off $flags"

cp "$loader"/Internal/Lib3ds/* "$work/reader"
sed -i 's/\bmatrixNode\b/matrix/g' "$work"/reader/*
cp "$work/reader/lib3ds.h" "$prefix/include"
printf '%s\n' "$work"/reader/*.cpp | xargs -P "$(nproc)" -I{} "${compile[@]}" -c {} -o {}.o \
    -I"$work/reader" -I"$loader/Internal" -I"$source_dir/Source/Base" -I"$source_dir/Source/Drawable" \
    -I"$build_dir/generated/Base" -I"$build_dir/generated/ContribTolvanite"
"${compile[@]}" -shared "$work"/reader/*.o -o "$prefix/lib/lib3ds.so" \
    -L"$build_dir/lib" -lOSGBase -lhwy -Wl,-soname,lib3ds.so,-rpath,"$build_dir/lib"

configure() {
    cmake -S "$source_dir" -B "$1" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="-O0 $flags" \
        -DTOLVANITE_TESTS=OFF -DTOLVANITE_TOOL=OFF -DTOLVANITE_INSTALLED_LIB3DS=ON "${@:2}"
}
configure "$work/tree" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
grep -q "LINK_LIBRARIES = .*$prefix/lib/lib3ds.so" "$work/tree/build.ninja"

# Of such a tree only the loader is compiled, and a program in the same way. What is generated and
# the units come from the build.
python3 - "$work/tree" "$build_dir" "$source_dir" >"$work/commands" <<'PYTHON'
import json, sys
tree, build, source = sys.argv[1:]
commands = {c['file']: c['command'] for c in json.load(open(tree + '/compile_commands.json'))
            if '/3DSLib/Internal/' in c['file']}
if any('/Lib3ds/' in file for file in commands):
    sys.exit("the tree's own reader is compiled beside the installed one")
helper = next(command for file, command in commands.items() if file.endswith('/OSGHelper3DS.cpp'))
commands[source + '/Tests/Package/lib3ds/main.cpp'] = \
    helper + f' -I{source}/Tests/Contrib/Tolvanite/FileIO/3DSLib'
for number, (file, command) in enumerate(commands.items()):
    words = [word.replace(tree, build) for word in command.split()]
    for option in '-o', '-c', '-include':
        at = words.index(option)
        del words[at:at + 2]
    print(*words, '-c', file, '-o', f'object{number}.o')
PYTHON
(cd "$work" && xargs -P "$(nproc)" -I{} sh -c '{}' <commands)
"${compile[@]}" "$work"/object*.o -o "$work/main" -L"$build_dir/lib" -Wl,--no-as-needed \
    -lOSGContribTolvanite -lOSGWindowWIN32 -lOSGWindow -lOSGGroup -lOSGDrawable -lOSGFileIO -lOSGState \
    -lOSGSystem -lOSGBase -lhwy "$prefix/lib/lib3ds.so" -Wl,-rpath,"$build_dir/lib:$prefix/lib"
nm -D --undefined-only "$work/main" | grep -q lib3ds_file_read
"$work/main" | tee "$work/main.txt"
[ "$(cat "$work/main.txt")" = "2 triangles from 14 20 30" ]

# A header that gives what lib3ds 1.3 has. Where that is not installed, it has nothing at all.
mkdir "$work/old"
echo '#include <lib3ds/file.h>
#include <lib3ds/io.h>
#include <lib3ds/mesh.h>' >"$work/old/lib3ds.h"
if configure "$work/refused" -DTOLVANITE_LIB3DS_INCLUDE_DIR="$work/old" \
    -DTOLVANITE_LIB3DS_LIBRARY="$prefix/lib/lib3ds.so" >"$work/refused.txt" 2>&1; then
    echo "lib3ds 1.3 is taken" >&2
    exit 1
fi
grep -q 'TOLVANITE_INSTALLED_LIB3DS wants lib3ds 2, and another was found' "$work/refused.txt"
