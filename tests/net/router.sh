#!/usr/bin/env bash
# router.sh PROGRAM...: runs PROGRAM in a network of its own, behind a router that isn't switched on yet. The network lives in
# namespaces and goes with the program; this machine's own is not touched. For PROGRAM, DAYLARK_ROUTER names this script, which
# it calls again as `on [CONF…]`, `off`, `forget` and `rules`. Ends with 77 where no namespace can be had.
#
#   program --- lan 192.168.77.2 === 192.168.77.1 router 11.22.33.44 === wan
set -u
if [ "${DAYLARK_ROUTER_PLACE:-}" = "" ]; then
    for program in miniupnpd nft ip unshare nsenter; do
        if ! PATH=$PATH:/usr/sbin:/sbin command -v $program >/dev/null; then
            echo "NOT TESTED: a real router needs $program" >&2
            exit 77
        fi
    done
    unshare=(unshare -n -m)
    "${unshare[@]}" true 2>/dev/null || unshare=(unshare -r -n -m)
    if ! "${unshare[@]}" true 2>/dev/null; then
        echo "NOT TESTED: a real router needs network namespaces, and here neither root nor a user may make one" >&2
        exit 77
    fi
    place=$(mktemp -d)
    trap 'rm -rf "$place"' EXIT
    DAYLARK_ROUTER=$(realpath "$0") DAYLARK_ROUTER_PLACE=$place PATH=$PATH:/usr/sbin:/sbin "${unshare[@]}" "$(realpath "$0")" inside "$@"
    exit
fi
place=$DAYLARK_ROUTER_PLACE

inRouter() { nsenter -t "$(cat "$place/namespace")" -n "$@"; }

switchOff() {
    [ -s "$place/daemon" ] && kill "$(cat "$place/daemon")" 2>/dev/null
    for _ in $(seq 50); do
        [ -s "$place/daemon" ] && kill -0 "$(cat "$place/daemon")" 2>/dev/null || break
        sleep 0.1
    done
    rm -f "$place/daemon"
}

# What it forwards stands in tables of its own.
emptyTables() {
    inRouter nft flush ruleset
    inRouter nft -f - <<RULES
table inet filter {
    chain forward { type filter hook forward priority 0; policy drop; jump miniupnpd; }
    chain miniupnpd { }
    chain prerouting { type nat hook prerouting priority -100; policy accept; jump prerouting_miniupnpd; }
    chain postrouting { type nat hook postrouting priority 100; policy accept; jump postrouting_miniupnpd; }
    chain prerouting_miniupnpd { }
    chain postrouting_miniupnpd { }
}
RULES
}

case $1 in
inside)
    shift
    unshare -n sleep 100000 &
    keeper=$!
    echo $keeper >"$place/namespace"
    trap 'switchOff; kill $keeper 2>/dev/null' EXIT
    for _ in $(seq 50); do # until it has a network of its own
        [ "$(readlink /proc/$keeper/ns/net)" != "$(readlink /proc/self/ns/net)" ] && break
        sleep 0.05
    done
    ip link set lo up &&
        ip link add lan type veth peer name inner netns $keeper &&
        ip addr add 192.168.77.2/24 dev lan && ip link set lan up &&
        inRouter ip link set lo up && inRouter ip addr add 192.168.77.1/24 dev inner && inRouter ip link set inner up &&
        inRouter ip link add outer type veth peer name beyond && inRouter ip addr add 11.22.33.44/24 dev outer &&
        inRouter ip link set outer up && inRouter ip link set beyond up &&
        ip route add default via 192.168.77.1 || {
        echo "NOT TESTED: a real router needs a network that can be laid" >&2
        exit 77
    }
    emptyTables || exit 77
    "$@"
    exit
    ;;
on)
    shift
    cat >"$place/conf" <<CONF
ext_ifname=outer
listening_ip=inner
enable_natpmp=yes
enable_upnp=yes
min_lifetime=1
max_lifetime=86400
upnp_table_name=filter
upnp_nat_table_name=filter
upnp_forward_chain=miniupnpd
upnp_nat_chain=prerouting_miniupnpd
upnp_nat_postrouting_chain=postrouting_miniupnpd
secure_mode=yes
system_uptime=yes
uuid=00000000-0000-0000-0000-000000000001
CONF
    for line in "$@"; do # a setting takes the place of the one above
        sed -i "/^${line%%=*}=/d" "$place/conf"
        echo "$line" >>"$place/conf"
    done
    echo "allow 1-65535 192.168.77.0/24 1-65535" >>"$place/conf"
    inRouter miniupnpd -d -f "$place/conf" -P "$place/daemon" >"$place/log" 2>&1 &
    for _ in $(seq 50); do
        inRouter cat /proc/net/udp | grep -q ':14E7 \|:076C ' && exit 0 # 5351, 1900
        sleep 0.1
    done
    cat "$place/log" >&2
    exit 1
    ;;
off) switchOff ;;
forget) emptyTables ;;
rules) inRouter nft list chain inet filter prerouting_miniupnpd ;;
esac
