#!/usr/bin/env bash
# debian.sh BUILD: the package that CPack makes holds what is installed, says what it needs, and pleases lintian.
. "$(dirname "$0")/common.sh"

(cd "$build" && cpack -G DEB -B "$stage/out") >"$stage/cpack.log" 2>&1 || { cat "$stage/cpack.log"; exit 1; }
package=$(find "$stage/out" -maxdepth 1 -name 'daylark_*.deb')
[ -n "$package" ] || { cat "$stage/cpack.log"; exit 1; }
lintian --allow-root --no-cfg --fail-on error --info "$package" || fail "lintian"
depends=$(dpkg-deb -f "$package" Depends)
for library in libavcodec59 libqt6widgets6 libplist3 libsoundtouch1 libpulse0 libc6 qt6-qpa-plugins qt6-image-formats-plugins; do
    [[ $depends == *"$library"* ]] || fail "the package doesn't ask for $library: $depends"
done
dpkg-deb -c "$package" >"$stage/contents"
for file in usr/bin/daylark usr/bin/daylark-tool usr/share/applications/daylark.desktop usr/share/mime/packages/daylark.xml \
    usr/share/man/man1/daylark.1.gz usr/share/doc/daylark/copyright usr/share/bash-completion/completions/daylark-tool; do
    grep -q " ./$file$" "$stage/contents" || fail "the package lacks $file"
done
awk '$2 != "root/root" || $1 ~ /^.....w/ || $1 ~ /^........w/ { print; bad = 1 } END { exit bad }' "$stage/contents" ||
    fail "owners or rights"
finish
