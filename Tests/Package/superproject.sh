#!/usr/bin/env bash
# Builds the example of a consumer in a project that adds the library as a subfolder, and runs it.
# The project must get the libraries alone: no tests, no program, nothing to install.
#
#   superproject.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source_dir=$1
work=$2/superproject-test

rm -rf "$work"
cmake -S "$source_dir/Tests/Package/superproject" -B "$work" -G Ninja \
    -DTOLVANITE_SOURCES="$source_dir" -DCMAKE_CXX_FLAGS=-O0 >/dev/null
cmake --build "$work"
"$work/consumer" "$source_dir/Models/pavilion.obj" | tee "$work/hits.txt"
grep -q 'triangle' "$work/hits.txt"

unwanted=$(find "$work" -name '*Tests' -o -name CTestTestfile.cmake -o -path '*/bin/tolvanite')
[ -z "$unwanted" ] || { echo "made for nobody: $unwanted" >&2; exit 1; }
cmake --install "$work" --prefix "$work/prefix" >/dev/null
[ -z "$(find "$work/prefix" -type f 2>/dev/null)" ] || { echo "installed unasked" >&2; exit 1; }
