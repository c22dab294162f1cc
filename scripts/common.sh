# shellcheck shell=bash
# Functions for the other scripts, which source this file. All messages go to stderr, so that a script's stdout is the
# output of the program that it runs.
set -euo pipefail

root=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)

say() {
    printf '== %s\n' "$*" >&2
}

# quietly COMMAND...: runs it, and shows its output only if it fails.
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

# packagesOf GROUP...: prints the packages of these groups in scripts/packages.
packagesOf() {
    local wanted=" $* " group names
    while read -r group names; do
        if [[ $group == *: && $wanted == *" ${group%:} "* ]]; then
            printf '%s\n' "$names"
        fi
    done <"$root/scripts/packages"
}

# installMissing GROUP...: installs the missing packages of these groups with apt-get.
installMissing() {
    local wanted installed package missing=()
    read -r -d '' -a wanted <<<"$(packagesOf "$@")" || true # status 1: the end of the text
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "apt-get not found; this needs the equivalents of these Debian packages: ${wanted[*]}"
        return
    fi
    # This fails if one of the names is unknown, but still lists the others.
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
        say "these packages are missing, and installing them needs root or sudo: ${missing[*]}"
        return 1
    fi
    say "installing ${missing[*]}"
    quietly asRoot apt-get update || say "could not update the package lists; using the existing ones"
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
        # A second checkout of the same sources reuses what the first has compiled.
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
    fi
    # Ninja runs CMake again if a file that CMake has read changes, except for the presets.
    if [[ ! -e $folder/build.ninja || $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        say "configuring build/$preset"
        quietly cmake -S "$root" --preset "$preset"
    fi
    cmake --build "$folder" --parallel "$(nproc)" "${targets[@]}" 2>&1 </dev/null |
        { grep --line-buffered -v -e 'Re-checking globbed directories' -e '^ninja: no work to do' || true; } >&2
}

# useWine: makes a Wine prefix of the project's own below build/ ready for the programs of this script.
wineFolder=${SPANNORY_WINE_FOLDER:-/usr/lib/wine} # Debian's
wine=$wineFolder/wine64
useWine() {
    export WINEPREFIX=$root/build/wine WINEDEBUG=-all
    mkdir -p "$root/build"
    if [[ ! -e $WINEPREFIX/system.reg ]]; then
        say "preparing Wine"
        quietly "$wine" wineboot --init
    fi
}

# endWine: ends every program in that prefix, including those that Wine itself has started.
endWine() {
    "$wineFolder/wineserver64" -k || true # status 1: there are none
    "$wineFolder/wineserver64" -w
}
