#!/usr/bin/env bash
# demo.sh BIN OUT: a whole review in a real window of a virtual display, with real mouse and key events. Exit status 0 only
# if everything that it leaves in OUT is as it should be.
set -euo pipefail
bin=$1 out=$2
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$out"
"$bin/daylark-demo-dailies" "$out/dailies"
export XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_RUNTIME_DIR=$home/run QT_QPA_PLATFORM=xcb
export DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent # no dialog of the desktop that this is run on
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
rm -f "$out"/*.png "$out"/*.jpg "$out"/*.csv "$out"/*.rtf "$out"/*.dls
xvfb-run -a -s "-screen 0 1920x1080x24" sh -c 'openbox >/dev/null 2>&1 & exec "$0" "$@"' \
    "$bin/daylark-demo-review" "$out/dailies" "$out"
