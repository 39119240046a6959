# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the commands share: packages, a quiet build, a profile apart from the operator's own.
# A command sets nothing before `source`; afterwards strict mode is on, and it knows $root and $logs.

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
logs=$root/build/logs
mkdir -p "$logs"
export DEBIAN_FRONTEND=noninteractive

say() { printf '%s\n' "$*" >&2; }
fail() {
    say "$@"
    exit 1
}

# quietly LOG WHAT-TO-DO COMMAND...: its output goes to the log, and the end of it to the terminal when it fails.
quietly() {
    local log=$logs/$1 advice=$2
    shift 2
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        say "" "This failed: $*" "$advice"
        fail "The whole output is in $log"
    fi
}

# missing GROUP...: the packages of these groups that this computer lacks.
missing() {
    local wanted
    wanted=$(awk -v groups=" $* " '!/^#/ && index(groups, " " $1 " ") { $1 = ""; print }' "$root/scripts/packages")
    # shellcheck disable=SC2086
    dpkg-query -W -f '${Package} ${db:Status-Status}\n' $wanted 2>/dev/null |
        awk -v wanted="$wanted" '$2 == "installed" { have[$1] } END {
            for (n = split(wanted, name); n > 0; --n) if (!(name[n] in have)) print name[n] }' || true
}

# need GROUP...: installs what is missing of these groups; asks nobody when nothing is.
need() {
    command -v dpkg-query >/dev/null || fail "This is not Debian: please install what scripts/packages names, with g++ >= 12" \
        "and Qt >= 6.4, and build with: cmake --preset release && cmake --build --preset release"
    local packages as_root=()
    mapfile -t packages < <(missing "$@")
    [ ${#packages[@]} -gt 0 ] || return 0
    say "Installing ${packages[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "There is no sudo here. As root: apt-get install ${packages[*]}"
        as_root=(sudo env DEBIAN_FRONTEND=noninteractive)
    fi
    quietly apt-update.log "Is the network up, and does /etc/apt name Debian's packages?" \
        "${as_root[@]}" apt-get -o DPkg::Lock::Timeout=300 update
    quietly apt-install.log "Please install these packages by hand and try again." \
        "${as_root[@]}" apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "${packages[@]}"
}

# build PRESET WITH-TESTS TARGET...: configures and builds; without a target, everything.
build() {
    local preset=$1 tests=$2
    shift 2
    local advice="A fresh start may help: rm -r build/$preset"
    cd "$root"
    quietly "$preset-configure.log" "$advice" cmake --preset "$preset" "-DOSTREL_TESTS=$tests"
    quietly "$preset-build.log" "$advice" cmake --build --preset "$preset" ${1:+--target "$@"}
    cd "$OLDPWD"
}

# await SECONDS WHAT COMMAND...: until the command succeeds.
await() {
    local tries=$(($1 * 10)) what=$2
    shift 2
    until "$@"; do
        [ $((tries -= 1)) -gt 0 ] || fail "$what"
        sleep 0.1
    done
}
