#!/bin/sh
# wayland.sh COMMAND...: runs it in a Wayland compositor without a screen, which ends with it.
set -eu
XDG_RUNTIME_DIR=$(mktemp -d "${TMPDIR:-/tmp}/daylark-wayland.XXXXXX")
export XDG_RUNTIME_DIR WAYLAND_DISPLAY=daylark-test QT_QPA_PLATFORM=wayland
weston --backend=headless-backend.so --width=1920 --height=1080 --socket=$WAYLAND_DISPLAY --idle-time=0 \
    >"$XDG_RUNTIME_DIR/log" 2>&1 &
compositor=$!
trap 'kill $compositor 2>/dev/null || true; wait $compositor 2>/dev/null || true; rm -rf "$XDG_RUNTIME_DIR"' EXIT
waited=0
until [ -S "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" ]; do
    waited=$((waited + 1))
    if [ $waited -gt 100 ]; then cat "$XDG_RUNTIME_DIR/log"; exit 1; fi
    sleep 0.1
done
"$@"
