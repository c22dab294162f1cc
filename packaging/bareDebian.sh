# shellcheck shell=bash
# A bare Debian of its own to try things in; sourced by the scripts beside it, after scripts/common.sh. Needs root
# and mmdebstrap.

# inBareDebian SUITE SCRIPT CACHE OPTION...: makes a minimal Debian, runs SCRIPT in it as root with bash, removes it
# again; its status is that of SCRIPT. The packages come from where this machine's come from. SCRIPT sees DISPLAY, if it
# is set here, and the folder CACHE, unless that is empty, as /var/cache/outside. OPTIONs go to mmdebstrap.
inBareDebian() (
    suite=$1
    script=$2
    export bareCache=$3
    shift 3
    bareStatus=$(mktemp)
    trap 'rm -f -- "$bareStatus"' EXIT
    export bareStatus
    [[ -z $bareCache ]] || mkdir -p "$bareCache"

    own=$(. /etc/os-release && echo "$VERSION_CODENAME")
    # shellcheck disable=SC2016 # apt-get's own names
    readarray -t sites < <(apt-get indextargets --format 'deb $(REPO_URI) $(CODENAME) $(COMPONENT)' \
        'Created-By: Packages' 'Component: main' 'Origin: Debian' | sort -u | sed "s/ $own\\b/ $suite/")
    settings=()
    for scheme in http https; do
        name=${scheme}_proxy
        eval "$(apt-config shell proxy "Acquire::$scheme::Proxy")"
        if [[ -n ${proxy:-${!name:-}} ]]; then
            settings+=("--aptopt=Acquire::$scheme::Proxy \"${proxy:-${!name}}\"")
        fi
        unset proxy
    done

    # The hook gets the bare system's folder as "$1". It has processes and mounts of its own, which end with it: none
    # is there any more when the folder is removed.
    # shellcheck disable=SC2016 # expanded by the hook
    hook='
        cp -- /etc/resolv.conf "$1/etc/resolv.conf"
        status=0
        unshare --pid --fork --kill-child --mount-proc="$1/proc" bash -e -c '\''
            if [ -n "$bareCache" ]; then
                mkdir "$1/var/cache/outside"
                mount --bind "$bareCache" "$1/var/cache/outside"
            fi
            exec chroot "$1" env --ignore-environment HOME=/root TERM=dumb ${DISPLAY:+DISPLAY="$DISPLAY"} \
                PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin bash /tmp/inside
        '\'' -- "$1" </dev/null || status=$?
        echo "$status" >"$bareStatus"'
    mmdebstrap --quiet --mode=root --variant=minbase --format=null --skip=cleanup "${settings[@]}" "$@" \
        --customize-hook="upload '$script' /tmp/inside" --customize-hook="$hook" "$suite" - "${sites[@]}" >&2
    return "$(<"$bareStatus")"
)
