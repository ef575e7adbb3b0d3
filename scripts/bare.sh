#!/usr/bin/env bash
# A minimal Debian 12 (bash, git, apt) made on the spot, and in it, from a clean clone of what is committed here, what a
# newcomer does: ./run.sh --demo. Shows whether scripts/packages is true. Needs root and mmdebstrap.
#   scripts/bare.sh [--test | --package | --deb FILE] [--ccache DIR] [--out DIR] [--shell]
#     --test         ./test.sh too
#     --package      instead of the demo: ./run.sh --package, the package installed in a second system made bare, started there
#                    from its desktop entry by a link in a display, and removed
#     --deb FILE     the same with a package that was built already
#     --ccache DIR   a compiler cache to use there (without it everything is built from nothing)
#     --out DIR      copy the demo's pictures and files there
#     --shell        a shell in it at the end, before it is removed
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
test=false package=false shell=false cache='' out='' deb=''
while [ $# -gt 0 ]; do
    case $1 in
        --test) test=true ;;
        --package) package=true ;;
        --deb) deb=$(realpath "$2"); shift ;;
        --shell) shell=true ;;
        --ccache) cache=$(realpath "$2"); shift ;;
        --out) out=$(realpath -m "$2"); shift ;;
        *) sed -n '2,11s/^# \?//p' "${BASH_SOURCE[0]}"; exit 2 ;;
    esac
    shift
done
command -v mmdebstrap >/dev/null || { echo "bare.sh needs mmdebstrap: apt-get install mmdebstrap" >&2; exit 1; }
[ "$(id -u)" = 0 ] || { echo "bare.sh must be run by root" >&2; exit 1; }

bare=$(mktemp -d "${TMPDIR:-/tmp}/daylark-bare.XXXXXX")
first=$bare
systems=("$bare")
mounted=()
clean_up() {
    local place
    for place in "${mounted[@]}"; do umount -l "$place" || true; done
    rm -rf --one-file-system "${systems[@]}"
}
trap clean_up EXIT
attach() { # attach KIND FROM PLACE [OPTIONS]
    mkdir -p "$bare/$3"
    case $1 in bind) mount --bind "$2" "$bare/$3" ;; *) mount -t "$1" ${4:+-o "$4"} "$2" "$bare/$3" ;; esac
    mounted=("$bare/$3" "${mounted[@]}")
}

# The archive that this machine asks, and nothing else of it.
make_system() { # make_system PACKAGES: in $bare
    local sources=(/etc/apt/sources.list.d/debian.sources) began=$SECONDS file
    [ -f "${sources[0]}" ] || sources=(/etc/apt/sources.list)
    mmdebstrap --quiet --mode=root --variant=apt --include="$1" bookworm "$bare" "${sources[@]}"
    for file in /etc/resolv.conf /etc/apt/apt.conf.d/*proxy*; do
        if [ -e "$file" ]; then cp -L "$file" "$bare$file"; fi
    done
    mount --bind "$bare" "$bare" && mount --make-private "$bare" # a root that is a mount point: unshare -m works inside
    mounted=("$bare" "${mounted[@]}")
    attach proc proc proc
    attach bind /sys sys
    attach bind /dev dev
    attach tmpfs tmpfs dev/shm mode=1777
    echo "bare system made in $((SECONDS - began)) s: $(chroot "$bare" dpkg-query -W | wc -l) packages"
}
inside() { # inside SECONDS-LABEL COMMAND
    local began=$SECONDS status=0
    chroot "$bare" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 TERM="${TERM:-dumb}" CI="${CI:-}" \
        ${cache:+CCACHE_DIR=/var/cache/ccache} bash -c "cd /root/daylark && $2" || status=$?
    echo "$1: exit $status after $((SECONDS - began)) s"
    return $status
}

# try_package FILE.deb: installed where nothing of the build is, started as a desktop starts it, removed.
try_package() {
    bare=$(mktemp -d "${TMPDIR:-/tmp}/daylark-bare.XXXXXX")
    systems+=("$bare")
    make_system ca-certificates
    mkdir -p "$bare/root/daylark/fb"
    cp "$1" "$root/scripts/start-installed.sh" "$bare/root/daylark/"
    local name=${1##*/} before after
    inside "installing what the check itself needs" "apt-get update -q && DEBIAN_FRONTEND=noninteractive apt-get install -q -y \
        --no-install-recommends xvfb xauth libglib2.0-bin desktop-file-utils shared-mime-info ffmpeg procps" >"$bare/root/log" ||
        { cat "$bare/root/log"; return 1; }
    before=$(chroot "$bare" dpkg-query -W -f '${Package}\n')
    inside "apt-get install ./$name" "DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends ./$name" >"$bare/root/log" ||
        { cat "$bare/root/log"; return 1; }
    inside "start from the desktop entry" "./start-installed.sh fb" || return 1
    inside "apt-get purge daylark" "DEBIAN_FRONTEND=noninteractive apt-get purge -q -y --autoremove daylark" >"$bare/root/log" ||
        { cat "$bare/root/log"; return 1; }
    if find "$bare/usr" "$bare/etc" -iname '*daylark*' | grep .; then echo "left behind by the package"; return 1; fi
    after=$(chroot "$bare" dpkg-query -W -f '${db:Status-Abbrev}${Package}\n' | sed -n 's/^ii *//p')
    diff <(echo "$before") <(echo "$after") && echo "installed and removed without a trace"
}

status=0
if [ -z "$deb" ]; then
    make_system git,ca-certificates
    [ -z "$cache" ] || attach bind "$cache" var/cache/ccache
    git clone --quiet --no-hardlinks "$root" "$bare/root/daylark"
    if [ -d "$root/../shared" ]; then cp -r "$root/../shared" "$bare/root/shared"; fi
fi
if [ -n "$deb" ]; then
    try_package "$deb" || status=1
    if [ -n "$out" ]; then mkdir -p "$out" && cp "$bare"/root/daylark/fb/*.png "$out/"; fi
elif $package; then
    inside "./run.sh --package" "./run.sh --package" || exit 1
    made=$(echo "$bare"/root/daylark/build/release/daylark_*.deb)
    try_package "$made" || status=1
    if [ -n "$out" ]; then mkdir -p "$out" && cp "$made" "$bare"/root/daylark/fb/*.png "$out/"; fi
else
    inside "./run.sh --demo" "./run.sh --demo" || status=1
    if $test; then inside "./test.sh" "./test.sh" || status=1; fi
    if [ -n "$out" ]; then mkdir -p "$out" && cp -r "$first/root/daylark/demo-out/." "$out/"; fi
fi
if $shell; then chroot "$bare" bash -l || true; fi
exit $status
