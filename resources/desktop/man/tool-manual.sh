#!/bin/sh
# tool-manual.sh TOOL VERSION DATE: the manual page of daylark-tool, its commands as the program itself explains them.
set -eu
tool=$1 version=$2 date=$3
here=$(dirname "$0")

# section HEADING COMMAND...: a command's help as a subsection; then those of its own commands.
section() {
    heading=$1
    shift
    "$tool" "$@" --help | awk -v heading="$heading" '
        function escaped(text) { gsub(/\\/, "\\e", text); gsub(/-/, "\\-", text); return text }
        function line(text) { sub(/^[.\047]/, "\\\\\\&&", text); print text }
        function flush() {
            if (term == "") return
            print ".TP"; print ".B " escaped(term)
            line(meaning == "" ? "\\&" : escaped(meaning))
            term = ""; meaning = ""
        }
        BEGIN { print ".SS " escaped(heading) }
        /^Usage: / { usage = substr($0, 8); if (said != "") line(escaped(said)); print ".PP"; print ".I " escaped(usage); next }
        usage == "" { said = said (said == "" ? "" : " ") $0; next }
        /^(Positionals|Options|Subcommands):$/ { flush(); part = $1; next }
        /^  [^ ]/ && part != "Subcommands:" {
            flush()
            text = substr($0, 3)
            if (match(text, /   *[^ ]/)) { term = substr(text, 1, RSTART - 1); meaning = substr(text, RSTART + RLENGTH - 1) }
            else { term = text; sub(/ +$/, "", term) }
            sub(/ REQUIRED$/, "", term)
            sub(/ (TEXT|INT|FLOAT|UINT)( \.\.\.)?$/, "", term)
            if (term ~ /^-h,--help/) { term = ""; meaning = "" }
            next
        }
        /^   / && part != "Subcommands:" { text = $0; sub(/^ +/, "", text); meaning = meaning (meaning == "" ? "" : " ") text; next }
        /^[^ ]/ { flush(); part = ""; print ".PP"; line(escaped($0)) }
        END { flush() }'
}
commands() {
    "$tool" "$@" --help | awk '/^Subcommands:$/ { inside = 1; next } /^[^ ]/ { inside = 0 } inside && /^  [^ ]/ { print $1 }'
}

sed -e "s/@VERSION@/$version/" -e "s/@DATE@/$date/" "$here/daylark-tool.1.head"
for command in $(commands); do
    section "$command" "$command"
    for inner in $(commands "$command"); do section "$command $inner" "$command" "$inner"; done
done
sed -e "s/@VERSION@/$version/" "$here/daylark-tool.1.tail"
