#!/bin/sh
# What a screen reader is told: the real program in a display, a session bus and an accessibility bus of its own.
# accessibility.sh PROGRAM_FOLDER. 77: nothing here to ask with.
set -eu
programs=$1
here=$(dirname "$(readlink -f "$0")")
command -v dbus-run-session >/dev/null && /usr/bin/python3 -c 'import pyatspi' 2>/dev/null || exit 77
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/run"
mkdir -m 700 "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
mkdir "$home/DAY_12"
for shot in 10 20 30; do
    ffmpeg -v error -f lavfi -i "testsrc=size=160x90:rate=24:duration=2" -c:v mjpeg "$home/DAY_12/SH00$shot.mov"
done
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb LANGUAGE="${DAYLARK_TEST_LANGUAGE:-en}" LC_ALL=C.UTF-8
xvfb-run -a -s "-screen 0 1920x1080x24" dbus-run-session -- sh -c '
    openbox >/dev/null 2>&1 &
    "$1/daylark" "$2/DAY_12" & program=$!
    timeout 120 /usr/bin/python3 "$3/accessibility.py" "$program"; answer=$?
    kill "$program" 2>/dev/null; wait "$program" 2>/dev/null
    exit $answer' - "$programs" "$home" "$here"
