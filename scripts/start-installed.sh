#!/usr/bin/env bash
# start-installed.sh OUT: starts the installed Daylark in a virtual display by its desktop entry, as a click on a link does, and
# looks whether the link's movie came. Leaves a picture of the display in OUT. Run by bare.sh, where nothing but the package is.
set -euo pipefail
if [ -z "${IN_DISPLAY:-}" ]; then IN_DISPLAY=1 exec xvfb-run -a -s "-screen 0 1280x720x24" "$0" "$@"; fi
out=$(realpath "$1")
home=$(mktemp -d)
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_RUNTIME_DIR=$home/run
mkdir -m 700 -p "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME"
ffmpeg -v error -f lavfi -i testsrc=size=320x180:rate=25:duration=2 "$home/clip.mov"
gio mime x-scheme-handler/daylark
gio open "daylark://link$home/clip.mov"
came=false
for ((waited = 0; waited < 300; ++waited)); do
    if grep -qa clip.mov "$XDG_DATA_HOME"/Daylark/*.journal 2>/dev/null; then came=true && break; fi
    sleep 0.1
done
sleep 3
ffmpeg -v error -f x11grab -video_size 1280x720 -i "$DISPLAY" -frames:v 1 -y "$out/installed.png"
pkill -TERM -x daylark
for ((waited = 0; waited < 100; ++waited)); do
    pgrep -x daylark >/dev/null || break
    sleep 0.1
done
daylark-tool session show "$XDG_DATA_HOME"/Daylark/*_daylarkSession.dls >"$home/session.json"
grep -F '"filenameString": "clip.mov"' "$home/session.json"
grep -F '"creatingThumbnailText": ""' "$home/session.json" # its thumbnail was made
$came
