#!/usr/bin/env bash
# Draws the board of a fresh demo site offscreen into docs/board.png (the README's picture),
# and its Change YOUR Status, Group Change, Options, new message and Preview Messages screens into
# status.png, group.png, options.png, message.png and preview.png beside it, and the list of
# remote servers (two other offices entered for the picture) into servers.png.
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
sqlite3 "$site/veskor.mdb" "INSERT INTO ServersTable (UNCPath, Description) VALUES
    ('\\\\fileserver-north\\veskor\\', 'North office'),
    ('\\\\fileserver-harbour\\Staff Share\\veskor\\', 'Harbour office')"
mkdir -p "$(dirname "$out")"
# The demo's first person, Alice Moreton, looks at her office.
QT_QPA_PLATFORM=offscreen "$build/src/board/tools/veskor-boardshot" "$site" "$out" amoreton "$size" \
    --status="$(dirname "$out")/status.png" --group="$(dirname "$out")/group.png" \
    --options="$(dirname "$out")/options.png" --message="$(dirname "$out")/message.png" \
    --preview="$(dirname "$out")/preview.png" --servers="$(dirname "$out")/servers.png"
