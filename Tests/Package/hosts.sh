#!/usr/bin/env bash
# Builds the examples with a window against the package that installed.sh has installed, and uses
# them as a person would: on an X server without a screen, by the pointer and the keys.
#
#   hosts.sh SOURCE_DIR BUILD_DIR CXX_FLAGS
set -euo pipefail
source_dir=$1
work=$2/package-test
flags=${3:-}
model=$source_dir/Models/pavilion.obj

build_example() {
    cmake -S "$source_dir/Examples/$1" -B "$work/$1" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
        -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror $flags" >/dev/null
    cmake --build "$work/$1"
}

# Waits at most 30 s for a command to succeed.
wait_for() {
    for _ in $(seq 300); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.1
    done
    echo "in vain: $*" >&2
    return 1
}

build_example glfw
build_example qt

trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp >"$work/display" 2>/dev/null &
wait_for grep -q . "$work/display"
DISPLAY=:$(cat "$work/display")
export DISPLAY
export XDG_RUNTIME_DIR=$work/runtime
mkdir -p -m 700 "$XDG_RUNTIME_DIR"

# A click in the middle hits the roof first.
"$work/glfw/glfw-view" "$model" >"$work/glfw.txt" &
host=$!
wait_for xdotool search --onlyvisible --name pavilion
xdotool mousemove 400 300
clicked() {
    xdotool click 1
    grep -q '^/7, triangle ' "$work/glfw.txt"
}
wait_for clicked
kill $host
wait $host || true

# A band to the left takes what it touches, S saves the picture, Escape ends.
rm -f "$work/qt.png"
"$work/qt/qt-view" "$model" "$work/qt.png" >"$work/qt.txt" &
host=$!
wait_for xdotool search --onlyvisible --name qt-view
answers() { # there is no window manager to give it the keys
    xdotool search --onlyvisible --name qt-view windowfocus key s
    [ -s "$work/qt.png" ]
}
wait_for answers
xdotool key b
banded() {
    xdotool mousemove 600 400 mousedown 1 mousemove 500 300 mousemove 350 250 mouseup 1
    xdotool key s
    grep -q '^/' "$work/qt.txt" && [ -s "$work/qt.png" ]
}
wait_for banded
xdotool key Escape
wait $host
sort -u "$work/qt.txt" | head -3
