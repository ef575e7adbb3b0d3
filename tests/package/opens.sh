#!/usr/bin/env bash
# opens.sh BUILD: a click on a link or on a session in another program starts Daylark, or reaches the one that runs. In a
# display; the clicks are the desktop's own opener's.
. "$(dirname "$0")/common.sh"

unset DBUS_SESSION_BUS_ADDRESS
export XDG_DATA_DIRS=$share:/usr/share XDG_DATA_HOME=$stage/data XDG_CONFIG_HOME=$stage/config XDG_RUNTIME_DIR=$stage/run
export PATH=$stage/usr/bin:$PATH
mkdir -m 700 -p "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME" "$stage/Day 1"
update-mime-database "$share/mime" && update-desktop-database "$share/applications"
for name in 'a 1' b c d; do
    ffmpeg -v error -f lavfi -i testsrc=size=64x36:rate=25:duration=0.4 -y "$stage/Day 1/$name.mov"
done
daylark-tool session new "$stage/other.dls" --playlist Other "$stage/Day 1/c.mov" || fail "no session made"

program=''
trap '[ -z "$program" ] || kill "$program" 2>/dev/null || true; rm -rf "$stage"' EXIT
holds() { # holds TEXT: the journal of the running one knows it
    local waited
    for ((waited = 0; waited < 600; ++waited)); do
        if grep -qa -e "$1" "$XDG_DATA_HOME"/Daylark/*.journal 2>/dev/null; then return 0; fi
        sleep 0.1
    done
    fail "$1 didn't come"
    return 1
}
gio open "$stage/other.dls" || fail "nobody opened the session"
holds 'Other' || true
program=$(pgrep -f "^daylark .*$stage" || true)
[ "$(wc -w <<<"$program")" = 1 ] || fail "one program runs: $program"
gio open "daylark://link$stage/Day%201/a%201.mov" || fail "nobody opened the link"
holds 'a 1\.mov' || true
xdg-open "daylark://addplaylist/From%20mail$stage/Day%201/b.mov," 2>/dev/null || fail "nobody opened the second link"
holds 'From mail' && holds 'b\.mov' || true
daylark "$stage/Day 1/gone.mov" 2>"$stage/said" && fail "a file that isn't there is an error"
[ "$(cat "$stage/said")" = "daylark: $stage/Day 1/gone.mov: no such file or folder" ] || fail "said: $(cat "$stage/said")"

kill -TERM "$program"
for ((waited = 0; waited < 300; ++waited)); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
done
program=''
shown=$(daylark-tool session show "$XDG_DATA_HOME"/Daylark/*_daylarkSession.dls)
for text in '"name": "Media From Link"' '"name": "From mail"' '"name": "Other"' '"filenameString": "a 1.mov"'; do
    grep -qF "$text" <<<"$shown" || fail "the session lacks $text"
done
grep -qF gone.mov <<<"$shown" && fail "an item was made of nothing"
finish
