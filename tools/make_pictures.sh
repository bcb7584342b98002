#!/bin/bash
# make_pictures.sh BELVOR.EXE: the pictures of the window in README.md and the user guide, taken from the running program.
# Start it with tools/with-wine.sh, which gives it a display of 1280 x 1024; needs xdotool and ImageMagick.
set -eu
program=$1
top=$(cd "$(dirname "$0")/.." && pwd)
out=$top/docs/pictures
mkdir -p "$out"
screen=$(mktemp --suffix=.png)
trap 'rm -f "$screen"' EXIT

keys() { for key; do xdotool key --delay 50 "$key"; sleep 0.7; done; }
# take NAME WIDTHxHEIGHT+LEFT+TOP: that part of the screen
take() {
    sleep 1.5
    import -window root "$screen"
    convert "$screen" -crop "$2" +repage +dither -colors 250 -define png:exclude-chunks=date,time "PNG8:$out/$1.png"
}

# The model in a folder whose name says nothing of this machine: a dialog shows it.
models=$WINEPREFIX/drive_c/models
mkdir -p "$models"
cp "$top"/samples/square.thf "$top"/samples/square.bvp "$models"
wine reg delete 'HKCU\Software\Calderwood\Belvor' /f >/dev/null 2>&1 || true    # no files and settings of former runs

# The window opens at the left upper corner of the desktop, 800 x 600; dialogs at a fixed place over it.
wine "$program" 'C:\models\square.thf' & belvor=$!
sleep "${START_SECONDS:-10}"
take window 800x600+0+0
take slide 54x530+620+46
take plan-and-elevation 122x236+674+46
take sphere 122x156+674+283
take sliders 124x140+674+434

keys alt+e i;  take image-size 270x196+46+69;             keys Escape
keys alt+f m;  take model-properties 456x274+46+69;       keys Escape
keys alt+e v;  take view-parameters 305x368+46+69;        keys Escape
keys alt+h a;  take about 491x358+46+69;                  keys Escape

# The view of the sample, as README.md shows it.
keys alt+e l; xdotool type --delay 50 'C:\models\square.bvp'; keys Return; xdotool mousemove 300 590
take ../window 800x600+0+0
keys alt+F4 n
wait "$belvor"
