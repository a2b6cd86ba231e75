#!/usr/bin/env bash
# The main job: builds, creates a demo site (once) and opens the client on it.
# Usage: scripts/run.sh [SITE_DIR]   (default: ./demo-site)
# The board opens for the person whose UID is in VESKOR_UID; on the demo site, by
# default, for its first person, Alice Moreton (amoreton). On another site without
# VESKOR_UID the person is the one whose UID is your login name.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
site=${1:-$root/demo-site}
if [ -z "${VESKOR_UID:-}" ] && [ "$site" = "$root/demo-site" ]; then
    VESKOR_UID=amoreton
fi
args=()
if [ -n "${VESKOR_UID:-}" ]; then
    args=("-UID:$VESKOR_UID")
fi
build=$root/build
"$root/scripts/build.sh" "$build"
admin=$build/src/admin/veskor-admin
if [ ! -f "$site/veskor.mdb" ]; then
    "$admin" demo "$site"
fi
echo "Demo site: $site"
"$admin" board --site "$site"
client=$build/src/start/user
if [ -x "$client" ]; then
    # The client reads veskor.ini beside the program; give it a copy pointing at the site.
    cp "$site/veskor.ini" "$(dirname "$client")/veskor.ini"
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        echo "No display: running the client under Xvfb."
        exec xvfb-run -a "$client" "${args[@]}"
    fi
    exec "$client" "${args[@]}"
fi
