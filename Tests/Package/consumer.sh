#!/usr/bin/env bash
# Installs a build beside itself, builds Examples/consumer against the installed package, once
# through find_package and once through pkg-config, and runs both on a model.
#
#   consumer.sh SOURCE_DIR BUILD_DIR CXX_FLAGS
set -euo pipefail
source_dir=$1
build_dir=$2
flags=$3
work=$build_dir/package-test
prefix=$work/prefix
model=$source_dir/Models/pavilion.obj

rm -rf "$work"
cmake --install "$build_dir" --prefix "$prefix" >/dev/null

cmake -S "$source_dir/Examples/consumer" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake"
by_cmake=$("$work/cmake/consumer" "$model")

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name tolvanite.pc)")
export PKG_CONFIG_PATH
package() { pkg-config --define-variable=prefix="$prefix" "$@" tolvanite; }
read -ra compile <<<"$(package --cflags) $flags"
read -ra link <<<"$(package --libs) -Wl,-rpath,$(package --variable=libdir)"
g++ "${compile[@]}" "$source_dir/Examples/consumer/main.cpp" -o "$work/by-pkg-config" "${link[@]}"
by_pkg_config=$("$work/by-pkg-config" "$model")

echo "$by_cmake"
[ -n "$by_cmake" ] && [ "$by_cmake" = "$by_pkg_config" ]
