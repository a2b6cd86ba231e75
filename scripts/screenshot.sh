#!/usr/bin/env bash
# Draws the board of a fresh demo site offscreen into docs/board.png (the README's picture),
# and its Change YOUR Status, Group Change, Options, new message, Preview Messages, Print Reports,
# Display Photo and About screens into status.png, group.png, options.png, message.png, preview.png,
# print.png, photo.png and about.png beside it, with the first page of the printed status list in
# report.png, and the list of
# remote servers (two other offices entered for the picture) into servers.png, and the two pop-ups into
# newmsgalert.png and statusalert.png.
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
# A picture for Alice Moreton in the site's photo folder: a plain portrait outline, drawn as a PPM.
mkdir -p "$site/photos"
awk 'BEGIN { w = 180; h = 220; print "P3", w, h, 255
    for (y = 0; y < h; y++) for (x = 0; x < w; x++) {
        head = (x - 90) ^ 2 + (y - 80) ^ 2 < 42 ^ 2; body = y > 135 && (x - 90) ^ 2 / 80 ^ 2 + (y - 230) ^ 2 / 95 ^ 2 < 1
        if (head || body) print 70, 110, 150; else print 225, 232, 240 } }' >"$site/photos/amoreton.ppm"
"$build/src/admin/veskor-admin" --site "$site" settings set PhotoPath "$site/photos" >/dev/null
sqlite3 "$site/veskor.mdb" "UPDATE EmployeeSettingsTable SET PictureFileName = 'amoreton.ppm' WHERE Name = 'Alice Moreton'"
# The demo's first person, Alice Moreton, looks at her office.
QT_QPA_PLATFORM=offscreen "$build/src/board/tools/veskor-boardshot" "$site" "$out" amoreton "$size" \
    --status="$(dirname "$out")/status.png" --group="$(dirname "$out")/group.png" \
    --options="$(dirname "$out")/options.png" --message="$(dirname "$out")/message.png" \
    --preview="$(dirname "$out")/preview.png" --print="$(dirname "$out")/print.png" \
    --report="$(dirname "$out")/report.png" --photo="$(dirname "$out")/photo.png" \
    --about="$(dirname "$out")/about.png" \
    --servers="$(dirname "$out")/servers.png" --newmsgalert="$(dirname "$out")/newmsgalert.png" \
    --statusalert="$(dirname "$out")/statusalert.png"
