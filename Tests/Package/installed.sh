#!/usr/bin/env bash
# Installs a build beside itself and builds Examples/consumer against the installed package, once
# through find_package and once through pkg-config, which find all they need from where the package
# lies. Runs both on a model, then builds and runs the other examples.
#
#   installed.sh SOURCE_DIR BUILD_DIR CXX_FLAGS
set -euo pipefail
source_dir=$1
build_dir=$2
flags=${3:-}
work=$build_dir/package-test
prefix=$work/prefix
model=$source_dir/Models/pavilion.obj

rm -rf "$work"
cmake --install "$build_dir" --prefix "$prefix" >/dev/null
[ -n "$(find "$prefix" -name LICENSE)" ] || { echo "the licence is not installed" >&2; exit 1; }

build_example() {
    cmake -S "$source_dir/Examples/$1" -B "$work/$1" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_CXX_FLAGS="$flags" >/dev/null
    cmake --build "$work/$1"
}

build_example consumer
by_cmake=$("$work/consumer/consumer" "$model")
missing=0
"$work/consumer/consumer" "$work/no such file.obj" || missing=$?
[ $missing -eq 1 ] || { echo "a missing file is exit status $missing, not 1" >&2; exit 1; }

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name tolvanite.pc)")
export PKG_CONFIG_PATH
read -ra compile <<<"$(pkg-config --cflags tolvanite) $flags"
read -ra link <<<"$(pkg-config --libs tolvanite) -Wl,-rpath,$(pkg-config --variable=libdir tolvanite)"
g++ "${compile[@]}" "$source_dir/Examples/consumer/main.cpp" -o "$work/by-pkg-config" "${link[@]}"
by_pkg_config=$("$work/by-pkg-config" "$model")

echo "$by_cmake"
[ -n "$by_cmake" ] && [ "$by_cmake" = "$by_pkg_config" ]

# Hosts of Qt have its macros before our headers.
{
    printf '#define emit\n#define slots\n#define signals public\n#define foreach for\n'
    (cd "$prefix/include/tolvanite" && printf '#include "%s"\n' *.h)
} >"$work/headers.cpp"
g++ "${compile[@]}" -fsyntax-only "$work/headers.cpp"

# The first program of the README, as it stands there.
awk '/^```cpp/ { inside = !seen; seen = 1; next } /^```/ { inside = 0 } inside' "$source_dir/README.md" \
    >"$work/first.cpp"
g++ "${compile[@]}" "$work/first.cpp" -o "$work/first" "${link[@]}"
"$work/first" "$model" | grep -q ': triangle '
"$work/first" "$work/no such file.obj"

build_example click
"$work/click/click" "$model" 640 360

build_example graphop
"$work/graphop/graphop" | tee "$work/graphop.txt"
diff "$work/graphop.txt" - <<'EXPECTED'
after Outline:
  house
    cut
    empty room
after GrpMerge:
  house
EXPECTED

build_example plant
"$work/plant/plant" "$work/plant.osb"
cmp "$work/plant.osb" "$source_dir/Models/plant.osb"
