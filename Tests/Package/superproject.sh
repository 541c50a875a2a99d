#!/usr/bin/env bash
# Builds a program in a project that adds the library as a subfolder, and runs it. The project must
# get the libraries alone: no tests, no program, nothing to install.
#
#   superproject.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source_dir=$1
work=$2/superproject-test

rm -rf "$work"
cmake -S "$source_dir/Tests/Package/superproject" -B "$work" -G Ninja \
    -DTOLVANITE_SOURCES="$source_dir" -DCMAKE_CXX_FLAGS=-O0 >/dev/null
cmake --build "$work" --target host
[ "$("$work/host")" = "1 child" ]

targets=$(ninja -C "$work" -t targets all)
for unwanted in tolvanite/bin/tolvanite TolvaniteTool SystemTests; do
    if grep -q "$unwanted" <<<"$targets"; then
        echo "a project around the sources also gets $unwanted" >&2
        exit 1
    fi
done
if grep -q 'TYPE \(SHARED_LIBRARY\|FILE\)' "$work/tolvanite/cmake_install.cmake" \
    "$work/tolvanite/Source/cmake_install.cmake"; then
    echo "a project around the sources installs them unasked" >&2
    exit 1
fi
