#!/bin/sh
# run.sh TARGET MINUTES: fuzzes one boundary for so long, from the seeds in the repository and those that the build makes, and
# says how many inputs were tried. What ends it stands in build/sanitize/found/TARGET. Needs a build of the sanitize preset.
#
#     fuzz/run.sh session 60
#     fuzz/run.sh all 5          every target for 5 minutes
set -eu
cd "$(dirname "$0")/.."
target=${1:?which target, or all} minutes=${2:?how many minutes}
build=${DAYLARK_FUZZ_BUILD:-build/sanitize}
if [ "$target" = all ]; then
    for each in "$build"/bin/*_fuzz; do
        name=$(basename "$each")
        "$0" "${name%_fuzz}" "$minutes"
    done
    exit
fi
program=$build/bin/${target}_fuzz
[ -x "$program" ] || { echo "run.sh: no $program; cmake --preset sanitize && cmake --build --preset sanitize makes it" >&2; exit 2; }
corpus=$build/corpus/$target found=$build/found/$target
mkdir -p "$corpus" "$found"
"$build/bin/make_seeds" "$build/fuzz/seeds" >/dev/null
seeds=""
for folder in "$build/fuzz/seeds/$target" "fuzz/seeds/$target"; do
    if [ -d "$folder" ]; then seeds="$seeds $folder"; fi
done
# The colour library itself loses a little where a table is broken.
if [ "$target" = colour_files ]; then export ASAN_OPTIONS=detect_leaks=0; fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
# shellcheck disable=SC2086 # folders without blanks, made above
"$program" "$corpus" $seeds -max_total_time=$((minutes * 60)) -max_len=65536 -rss_limit_mb=2048 -timeout=20 \
    -artifact_prefix="$found/" -print_final_stats=1 >"$log" 2>&1 || status=$?
printf '%s: %s inputs in %s min, coverage %s, exit %s\n' "$target" \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" "$minutes" \
    "$(sed -n 's/.*cov: \([0-9]*\).*/\1/p' "$log" | tail -1)" "$status"
if [ "$status" -ne 0 ]; then tail -30 "$log"; fi
exit "$status"
