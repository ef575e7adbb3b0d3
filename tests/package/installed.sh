#!/usr/bin/env bash
# installed.sh BUILD: what `cmake --install` puts down is what desktops, catalogues, manuals and shells take.
. "$(dirname "$0")/common.sh"

export XDG_DATA_DIRS=$share:/usr/share XDG_DATA_HOME=$stage/data XDG_CONFIG_HOME=$stage/config
desktop-file-validate "$share/applications/daylark.desktop" || fail "the desktop entry"
appstreamcli validate --no-net --pedantic "$share"/metainfo/*.metainfo.xml || fail "the metainfo"
update-mime-database "$share/mime" 2>"$stage/mime.log" || fail "the media types"
[ ! -s "$stage/mime.log" ] || fail "the media types: $(cat "$stage/mime.log")"
[ -x "$stage/usr/bin/daylark" ] && [ -x "$stage/usr/bin/daylark-tool" ] || fail "a program is missing"
find "$stage/usr" -path '*/daylark/daylark-formats.so' | grep -q . || fail "the module that reads runs of pictures is missing"
grep -q libOpenImageIO "$(find "$stage/usr" -path '*/daylark/daylark-formats.needs')" || fail "what the module needs is not listed"

# Icons: every size is what its folder says.
for name in apps/daylark mimetypes/application-x-daylark-session mimetypes/application-x-daylark-bundle; do
    for side in 16 22 24 32 48 64 128 256 512; do
        png=$share/icons/hicolor/${side}x$side/$name.png
        [ "$(od -An -tu1 -j16 -N8 "$png" | awk '{ print $3 * 256 + $4, $7 * 256 + $8 }')" = "$side $side" ] || fail "$png"
    done
    [ -s "$share/icons/hicolor/scalable/$name.svg" ] || fail "no scalable $name"
done

# A desktop's own look-up: by name for files, by scheme for links.
update-desktop-database "$share/applications"
echo "x" >"$stage/day.dls"
type=$(gio info -a standard::content-type "$stage/day.dls" | awk '/content-type:/ { print $2 }')
[ "$type" = application/x-daylark-session ] || fail "a session is $type"
export PATH=$stage/usr/bin:$PATH
for kind in x-scheme-handler/daylark application/x-daylark-session application/x-daylark-bundle; do
    [ "$(xdg-mime query default $kind)" = daylark.desktop ] || fail "nobody opens $kind"
done
gio mime video/quicktime | grep daylark.desktop >/dev/null || fail "movies aren't offered"

# Manual pages: no complaint of the formatter, every command explained.
for page in daylark daylark-tool; do
    manual=$share/man/man1/$page.1.gz
    complaints=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$manual" 2>&1 >/dev/null) || fail "$page.1"
    [ -z "$complaints" ] || fail "$page.1: $complaints"
done
tool=$stage/usr/bin/daylark-tool
inside() { "$tool" "$@" --help | awk '/^Subcommands:$/ { inside = 1; next } /^[^ ]/ { inside = 0 } inside && /^  [^ ]/ { print $1 }'; }
commands=$(inside)
[ "$(wc -w <<<"$commands")" -gt 8 ] || fail "the tool has commands: $commands"
for command in $commands; do
    zcat "$share/man/man1/daylark-tool.1.gz" | grep -F ".SS ${command//-/\\-}" >/dev/null || fail "daylark-tool.1 lacks $command"
done

# Completion: as a shell would ask.
complete_line() { # complete_line WORD...: what may stand for the last one
    bash -c '. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _daylark_tool; printf "%s\n" "${COMPREPLY[@]}"' - \
        "$share/bash-completion/completions/daylark-tool" "$tool" "$@" 2>/dev/null | sort | paste -sd' '
}
[ "$(complete_line '')" = "$(sort <<<"$commands" | paste -sd' ')" ] || fail "completion of commands: $(complete_line '')"
[ "$(complete_line session s)" = "set show" ] || fail "completion of session: $(complete_line session s)"
[[ " $(complete_line session set --) " == *" --item --out "* ]] || fail "completion of options"
[[ " $(complete_line notes day.dls --format '') " == *" csv "* ]] || fail "completion of formats"
[ "$(cd "$stage" && complete_line link da)" = day.dls ] || fail "completion of files: $(cd "$stage" && complete_line link da)"

# The copyright file names the libraries that the programs and their module ask for, and no other.
needed=$(for program in "$stage"/usr/bin/* "$stage"/usr/lib/daylark/*.so; do objdump -p "$program"; done |
    awk '/NEEDED/ { sub(/(-x86.*)?(-[0-9.]+)?\.so.*/, "", $2); print $2 }' | sort -u)
for library in $needed; do
    grep -qE "(^| )${library//+/\\+}[ ,:]" "$share/doc/daylark/copyright" || fail "copyright lacks $library"
done
for library in $(grep -oE '\blib[A-Za-z0-9+_]+' "$share/doc/daylark/copyright" | grep -vxE 'librar(y|ies)'); do
    grep -qxF "$library" <<<"$needed" || fail "copyright names $library, which isn't linked"
done
finish
