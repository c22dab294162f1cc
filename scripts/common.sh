# shellcheck shell=bash
# What the scripts beside it share; sourced by each of them. Everything said here goes to stderr, so that a
# script's stdout is the output of the program it runs.
set -euo pipefail

root=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)

say() {
    printf '== %s\n' "$*" >&2
}

# quietly COMMAND...: runs it; its output is shown only when it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status != 0)); then
        cat -- "$log" >&2
        say "failed with status $status: $*"
    fi
    rm -f -- "$log"
    return "$status"
}

asRoot() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo "$@"
    fi
}

# packagesOf GROUP...: the names that scripts/packages gives for these groups.
packagesOf() {
    local wanted=" $* " group names
    while read -r group names; do
        if [[ $group == *: && $wanted == *" ${group%:} "* ]]; then
            printf '%s\n' "$names"
        fi
    done <"$root/scripts/packages"
}

# installMissing GROUP...: the packages of these groups that are not there yet, with apt-get.
installMissing() {
    local wanted installed package missing=()
    read -r -d '' -a wanted <<<"$(packagesOf "$@")" || true # status 1: the end of the text
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "no apt-get here; this needs what Debian calls: ${wanted[*]}"
        return
    fi
    # It fails when one of the names is unknown, and still lists the others.
    installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "${wanted[@]}" 2>/dev/null || true)"
    for package in "${wanted[@]}"; do
        if [[ $installed != *" installed:$package "* ]]; then
            missing+=("$package")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        say "missing, and neither root nor sudo to install it: ${missing[*]}"
        return 1
    fi
    say "installing ${missing[*]}"
    quietly asRoot apt-get update || say "the package lists could not be brought up to date; trying with those there are"
    quietly asRoot env DEBIAN_FRONTEND=noninteractive apt-get install --yes --no-install-recommends \
        -o DPkg::Lock::Timeout=300 "${missing[@]}"
}

# buildPreset PRESET [TARGET...]: brings build/PRESET up to date. Silent when there is nothing to do.
buildPreset() {
    local preset=$1 folder=$root/build/$1 targets=()
    shift
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    if command -v ccache >/dev/null && [[ -w ${HOME:-/nonexistent} ]]; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    # Ninja itself runs CMake again for the files that CMake read; the presets are not among them.
    if [[ ! -e $folder/build.ninja || $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        say "configuring build/$preset"
        quietly cmake -S "$root" --preset "$preset"
    fi
    cmake --build "$folder" --parallel "$(nproc)" "${targets[@]}" 2>&1 </dev/null |
        { grep --line-buffered -v -e 'Re-checking globbed directories' -e '^ninja: no work to do' || true; } >&2
}

# useWine: makes a Wine prefix of the project's own below build/ ready for the programs of this script.
wine=/usr/lib/wine/wine64
useWine() {
    export WINEPREFIX=$root/build/wine WINEDEBUG=-all
    mkdir -p "$root/build"
    if [[ ! -e $WINEPREFIX/system.reg ]]; then
        say "preparing Wine"
        quietly "$wine" wineboot --init
    fi
}

# endWine: ends every program in that prefix, also those that Wine itself has started.
endWine() {
    /usr/lib/wine/wineserver64 -k || true # status 1: there are none
    /usr/lib/wine/wineserver64 -w
}
