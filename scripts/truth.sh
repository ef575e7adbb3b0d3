#!/usr/bin/env bash
# Writes docs/truth.md: what the program shows and sounds like, against what the test movies were made of, and how long a
# person waits beside ffmpeg and mpv. Anyone can run it again:
#
#     scripts/truth.sh              everything; the machine should be quiet for the last part
#     scripts/truth.sh --no-times   without measuring times; those in the file stay
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/scripts/setup.sh"
times=yes
[ "${1:-}" = --no-times ] && times=no

if [ $times = yes ] && ! command -v mpv >/dev/null; then
    echo "mpv, beside which times are measured, isn't installed; --no-times does without" >&2
    exit 1
fi

install_packages build run test
build_preset release media_tests playback_tests picture_tests daylark-tool
bin=$root/build/release/bin
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache XDG_RUNTIME_DIR=$home/run
export QT_QPA_PLATFORM=offscreen DAYLARK_TRUTH_REPORT=$home/pictures.json
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

# A wrong picture is a line in the table, not the end of the report.
"$bin/media_tests" --gtest_filter='*FrameTruthTest*' >"$home/reader.log" || true
"$bin/playback_tests" --gtest_filter='*PlaybackTruthTest*' >"$home/player.log" || true
"$bin/media_tests" --gtest_filter='RandomTruthTest*:SoundTruthTest*' >"$home/sound.log" || true
"$bin/picture_tests" --gtest_filter='*PictureTruthTest*' >"$home/colour.log" || true

if [ $times = yes ]; then
    make() { ffmpeg -v error -y -f lavfi -i "testsrc2=size=1920x1080:rate=24:duration=20" "${@:1:$#-1}" "$home/${!#}"; }
    make -c:v libx264 -preset medium -pix_fmt yuv420p h264_1080.mov
    make -c:v libx265 -preset fast -x265-params log-level=error -pix_fmt yuv420p hevc_1080.mp4
    make -c:v prores_ks -profile:v 2 -pix_fmt yuv422p10le prores_1080.mov
    make -c:v dnxhd -profile:v dnxhr_sq -pix_fmt yuv422p dnxhr_1080.mxf
    make -c:v mpeg2video -b:v 20M -bf 2 -pix_fmt yuv420p mpeg2_1080.ts
    python3 "$root/bench/yardsticks.py" --tool "$bin/daylark-tool" "$home"/*_1080.* >"$home/times.log"
fi
python3 "$root/scripts/truth.py" "$home" "$root/docs/truth.md"
