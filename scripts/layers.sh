#!/usr/bin/env bash
# Fails when a source folder includes a header of a folder above it. The layers,
# lowest first; a folder may include its own layer and the ones below it:
#   platform < dao < kernel < database < status, messaging, presence < platform/gui < the screens the
#   board opens (messaging/gui and presence/gui hold the message and presence screens) < board < start, admin < board/tools
set -euo pipefail
cd "$(dirname "$0")/../src"

rank() {
    case $1 in
    platform) echo 0 ;;
    dao) echo 1 ;;
    kernel) echo 2 ;;
    database) echo 3 ;;
    status | messaging | presence) echo 4 ;;
    platform/gui) echo 5 ;;
    statusscreens | messaging/gui | presence/gui | alerts | servers | users | options | reports | side) echo 6 ;;
    board) echo 7 ;;
    start | admin) echo 8 ;;
    board/tools) echo 9 ;;
    *) echo 99 ;;
    esac
}

status=0
while IFS=: read -r file line used; do
    folder=$(dirname "$file")
    own=$(rank "$folder")
    if [ "$own" = 99 ]; then
        echo "src/$file: the folder $folder has no place in the layers"
        status=1
        continue
    fi
    # The folder of the header included, or its first part when the file is not there.
    if [ -f "$used" ]; then target=$(dirname "$used"); else target=${used%%/*}; fi
    if [ "$(rank "$target")" -gt "$own" ]; then
        echo "src/$file:$line: $folder includes $used, from a layer above it"
        status=1
    fi
done < <(grep -rnoE --include='*.h' --include='*.cpp' '^#include "[a-z_]+/[^"]+"' . |
    sed -E 's#^\./##; s#:\#include "([^"]+)"$#:\1#')
exit $status
