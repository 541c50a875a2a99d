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

# A click in the middle hits the wall behind the door first.
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

# A band to the left takes what it touches, and a click what is in front. S prints what is selected and
# saves the picture, Escape ends.
rm -f "$work"/qt.ppm
"$work/qt/qt-view" "$model" "$work/qt.ppm" >"$work/qt.txt" &
host=$!
wait_for xdotool search --onlyvisible --name qt-view
save() {
    : >"$work/qt.txt"
    rm -f "$work/qt.ppm"
    xdotool key s
    wait_for is_whole "$work/qt.ppm"
}
is_whole() { [ "$(stat -c %s "$1")" -ge $((640 * 480 * 3)) ]; }
# Pixels of the colour of what is selected.
orange_pixels() {
    python3 - "$work/qt.ppm" <<'PYTHON'
import sys
picture = open(sys.argv[1], 'rb').read().split(b'\n', 3)[3]
print(sum(picture[i] > 100 and picture[i + 2] < 20 for i in range(0, len(picture) - 2, 3)))
PYTHON
}
answers() { # there is no window manager to give it the keys
    xdotool search --onlyvisible --name qt-view windowfocus key s
    is_whole "$work/qt.ppm"
}
wait_for answers
save
[ "$(orange_pixels)" -eq 0 ] && [ ! -s "$work/qt.txt" ]

xdotool mousemove 320 240 click 1
sleep 0.2
save
[ "$(cat "$work/qt.txt")" = /7 ] || { echo "a click into the door gives $(cat "$work/qt.txt")" >&2; exit 1; }
[ "$(orange_pixels)" -gt 300 ]

# To the right, around one column: only that is wholly inside. To the left it is not alone.
xdotool key b
xdotool mousemove 90 165 mousedown 1 mousemove 120 200 mousemove 135 305 mouseup 1
sleep 0.2
save
enclosed=$(wc -l <"$work/qt.txt")
xdotool mousemove 135 305 mousedown 1 mousemove 120 200 mousemove 90 165 mouseup 1
sleep 0.2
save
touched=$(wc -l <"$work/qt.txt")
echo "enclosed $enclosed, touched $touched"
[ "$enclosed" -ge 1 ] && [ "$touched" -gt "$enclosed" ]
xdotool key Escape
wait $host
