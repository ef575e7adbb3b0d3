# Sourced by run.sh and test.sh: installs what is missing and builds a preset. Needs bash and apt only.

# install_packages PURPOSE...: what scripts/packages lists for these purposes, if it isn't there yet.
install_packages() {
    local purpose package missing=()
    local -A installed=()
    while read -r package; do installed[${package%%:*}]=1; done < <(
        dpkg-query -W -f '${db:Status-Abbrev} ${binary:Package}\n' 2>/dev/null | awk '$1 == "ii" { print $2 }')
    while read -r purpose package; do
        case " $* " in *" $purpose "*) [ -n "${installed[$package]:-}" ] || missing+=("$package") ;; esac
    done < <(grep -v '^#' "$root/scripts/packages")
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" = 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -q
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build_preset PRESET [TARGET...]: configures it once, then builds what changed.
build_preset() {
    local preset=$1
    shift
    local log
    if [ ! -f "$root/build/$preset/build.ninja" ]; then
        log=$(cd "$root" && cmake --preset "$preset" 2>&1) || { echo "$log"; return 1; }
    fi
    NINJA_STATUS="[%f/%t %es] " ninja -C "$root/build/$preset" "$@"
}
