#!/usr/bin/env bash
# Draws the board of a fresh demo site offscreen into docs/board.png (the README's picture),
# and its Change YOUR Status, Group Change, Options, new message, Preview Messages and Print Reports
# screens into status.png, group.png, options.png, message.png, preview.png and print.png beside it,
# with the first page of the printed status list in report.png.
# Usage: scripts/screenshot.sh [OUT.png] [WIDTHxHEIGHT]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$root/docs/board.png}
size=${2:-1100x650}
build=$root/build
"$root/scripts/build.sh" "$build"
# A fixed folder, as it shows in the board's status bar.
site=${TMPDIR:-/tmp}/veskor-demo-site
rm -rf "$site"
trap 'rm -rf "$site"' EXIT
"$build/src/admin/veskor-admin" demo "$site" >/dev/null
mkdir -p "$(dirname "$out")"
# The demo's first person, Alice Moreton, looks at her office.
QT_QPA_PLATFORM=offscreen "$build/src/board/tools/veskor-boardshot" "$site" "$out" amoreton "$size" \
    --status="$(dirname "$out")/status.png" --group="$(dirname "$out")/group.png" \
    --options="$(dirname "$out")/options.png" --message="$(dirname "$out")/message.png" \
    --preview="$(dirname "$out")/preview.png" --print="$(dirname "$out")/print.png" \
    --report="$(dirname "$out")/report.png"
