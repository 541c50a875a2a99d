#!/usr/bin/env bash
# Runs a script of Tools in an empty folder and compares each file that it makes with the committed
# one in Models.
#
#   same_bytes.sh PYTHON SOURCE_DIR WORK_DIR SCRIPT
set -euo pipefail
python=$1
source_dir=$2
work=$3
script=$4

rm -rf "$work"
mkdir -p "$work"
PYTHONDONTWRITEBYTECODE=1 "$python" "$source_dir/Tools/$script.py" "$work"

count=0
while IFS= read -r -d '' file; do
    cmp "$file" "$source_dir/Models/${file#"$work"/}"
    count=$((count + 1))
done < <(find "$work" -type f -print0)
[ "$count" -gt 0 ] || { echo "$script makes no file" >&2; exit 1; }
