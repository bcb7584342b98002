#!/bin/bash
# with-wine.sh COMMAND...: runs it with a private display, Wine prefix and Wine session; WINE_BASE names their folder.
# The session is held open while the command runs: starting Wine's services for every program costs seconds each.
set -eu
tools=$(cd "$(dirname "$0")" && pwd)
base=${WINE_BASE:-$(dirname "$tools")/build/wine}
. "$tools/wine-env.sh"
hold=$base/hold.$$
: >"$base/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$base/display" 2>/dev/null & xvfb=$!
trap 'wineserver -k || true; wineserver -w; kill $xvfb; rm -f "$hold"' EXIT
until [ -s "$base/display" ]; do kill -0 $xvfb; sleep 0.05; done
DISPLAY=:$(cat "$base/display"); export DISPLAY
make_prefix
if [ ! -e "$WINEPREFIX/desktop" ]; then     # Wine's own desktop: maximising and full screen then behave as on Windows
    wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null
    wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x1024 /f >/dev/null
    wineserver -w
    touch "$WINEPREFIX/desktop"
fi
mkfifo "$hold"
wine explorer.exe /desktop=Default,1280x1024 cmd.exe <"$hold" >/dev/null 2>&1 & exec 4>"$hold"
for _ in $(seq 200); do xdotool search --name 'Wine desktop' >/dev/null 2>&1 && break; sleep 0.05; done
"$@" 4>&-
