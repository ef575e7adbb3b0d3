#!/usr/bin/env bash
# A minimal Debian 12 (bash, git, apt) made on the spot, and in it, from a clean clone of what is committed here, what a
# newcomer does: ./run.sh --demo. Shows whether scripts/packages is true. Needs root and mmdebstrap.
#   scripts/bare.sh [--test] [--ccache DIR] [--out DIR] [--shell]
#     --test         ./test.sh too
#     --ccache DIR   a compiler cache to use there (without it everything is built from nothing)
#     --out DIR      copy the demo's pictures and files there
#     --shell        a shell in it at the end, before it is removed
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
test=false shell=false cache='' out=''
while [ $# -gt 0 ]; do
    case $1 in
        --test) test=true ;;
        --shell) shell=true ;;
        --ccache) cache=$(realpath "$2"); shift ;;
        --out) out=$(realpath -m "$2"); shift ;;
        *) sed -n '2,8s/^# \?//p' "${BASH_SOURCE[0]}"; exit 2 ;;
    esac
    shift
done
command -v mmdebstrap >/dev/null || { echo "bare.sh needs mmdebstrap: apt-get install mmdebstrap" >&2; exit 1; }
[ "$(id -u)" = 0 ] || { echo "bare.sh must be run by root" >&2; exit 1; }

bare=$(mktemp -d "${TMPDIR:-/tmp}/daylark-bare.XXXXXX")
mounted=()
clean_up() {
    local place
    for place in "${mounted[@]}"; do umount -l "$place" || true; done
    rm -rf --one-file-system "$bare"
}
trap clean_up EXIT
attach() { # attach KIND FROM PLACE [OPTIONS]
    mkdir -p "$bare/$3"
    case $1 in bind) mount --bind "$2" "$bare/$3" ;; *) mount -t "$1" ${4:+-o "$4"} "$2" "$bare/$3" ;; esac
    mounted=("$bare/$3" "${mounted[@]}")
}

# The archive that this machine asks, and nothing else of it.
sources=(/etc/apt/sources.list.d/debian.sources)
[ -f "${sources[0]}" ] || sources=(/etc/apt/sources.list)
started=$SECONDS
mmdebstrap --quiet --mode=root --variant=apt --include=git,ca-certificates bookworm "$bare" "${sources[@]}"
for file in /etc/resolv.conf /etc/apt/apt.conf.d/*proxy*; do
    if [ -e "$file" ]; then cp -L "$file" "$bare$file"; fi
done
attach proc proc proc
attach bind /sys sys
attach bind /dev dev
attach tmpfs tmpfs dev/shm mode=1777
[ -z "$cache" ] || attach bind "$cache" var/cache/ccache
echo "bare system made in $((SECONDS - started)) s: $(chroot "$bare" dpkg-query -W | wc -l) packages"

git clone --quiet --no-hardlinks "$root" "$bare/root/daylark"
if [ -d "$root/../shared" ]; then cp -r "$root/../shared" "$bare/root/shared"; fi
inside() { # inside SECONDS-LABEL COMMAND
    local began=$SECONDS status=0
    chroot "$bare" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 TERM="${TERM:-dumb}" CI="${CI:-}" \
        ${cache:+CCACHE_DIR=/var/cache/ccache} bash -c "cd /root/daylark && $2" || status=$?
    echo "$1: exit $status after $((SECONDS - began)) s"
    return $status
}
status=0
inside "./run.sh --demo" "./run.sh --demo" || status=1
if $test; then inside "./test.sh" "./test.sh" || status=1; fi
if [ -n "$out" ]; then mkdir -p "$out" && cp -r "$bare/root/daylark/demo-out/." "$out/"; fi
if $shell; then chroot "$bare" bash -l || true; fi
exit $status
