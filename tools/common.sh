# shellcheck shell=bash
# Variables and functions for the scripts that source this file.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# HOME may be unset, for example in a service.
home=${HOME:-$(getent passwd "$EUID" | cut -d: -f6)}
cache=${XDG_CACHE_HOME:-$home/.cache}/corvane-scheduler
# The Wine root is named after a hash of the scripts that make it, so clones with the same scripts share one root, and
# changed scripts make a new one.
recipe=$(cat "$top"/tools/{winroot,debian} | sha256sum)
# shellcheck disable=SC2034 # used by the scripts that source this
winroot=$cache/${recipe:0:12}${CORVANE_SUITE:+-$CORVANE_SUITE}
# Boost's headers, if the machine's are too old.
# shellcheck disable=SC2034 # used by cmake/boost.cmake, too
boost=$cache/boost/usr/include/boost

# On a terminal, first clears the line, because ninja may have written its status there.
say() {
    local line=''
    [[ ! -t 2 ]] || line=$'\r\e[K'
    printf '%s%s: %s\n' "$line" "${0##*/}" "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# Replaces this shell by a command in a container. The container has this machine's files under their own paths, except
# /usr and /etc, which come from the Wine root; /usr/local and /usr/src stay visible. The command is the first process
# of a process namespace, so everything in the container ends with the command or with this script. Root is not
# needed. Does not use --dev, which would add a second user namespace that tools/wine could not join.
box() { # ROOT PREFIX [BWRAP-OPTION...] -- COMMAND...
    local root=$1 prefix=$2 own=() dir
    shift 2
    for dir in "$root"/usr/*; do
        [[ ${dir##*/} == @(local|src) ]] || own+=(--ro-bind "$dir" "/usr/${dir##*/}")
    done
    for dir in /usr/local /usr/src; do
        [[ ! -d $dir ]] || own+=(--bind "$dir" "$dir")
    done
    exec bwrap --bind / / --tmpfs /usr "${own[@]}" --ro-bind "$root/etc" /etc \
        --dev-bind /dev /dev --tmpfs /dev/shm --proc /proc \
        --unshare-pid --as-pid-1 --die-with-parent --clearenv \
        --setenv PATH /usr/lib/wine:/usr/bin --setenv HOME "$prefix" --setenv LC_ALL C.UTF-8 \
        --setenv WINEPREFIX "$prefix" --setenv XDG_RUNTIME_DIR "$prefix/run" \
        --setenv WINESERVER /usr/lib/wine/wineserver32 --setenv WINEDEBUG -all \
        --setenv WINEDLLOVERRIDES winemenubuilder.exe=d "$@"
}

# Removes the socket folder of Wine's server in /tmp. The file `wineserver` in the prefix contains the folder's name.
# (TMPDIR cannot move the folder: Debian's Wine crashes with TMPDIR in its environment.)
remove_server() { # PREFIX
    local name=''
    [[ ! -s $1/wineserver ]] || read -r name < "$1/wineserver" || true
    [[ $name != wine-?????? ]] || rm -rf "/tmp/$name"
    rm -f "$1/wineserver"
}

# Sets $use to a new folder in the cache for this run; end_use removes it. Also removes unlocked folders, whose runs were
# killed.
use=''
make_use() {
    local old
    mkdir -p "$cache/uses"
    exec 5> "$cache/uses/lock"
    flock 5
    for old in "$cache"/uses/*/; do
        [[ -d $old ]] || continue
        ! flock -n "$old" true || remove_use "$old"
    done 2> /dev/null
    use=$(mktemp -d "$cache/uses/XXXXXXXX")
    exec 6< "$use"
    flock 6
    exec 5>&-
}

end_use() { [[ -z $use ]] || remove_use "$use"; }

remove_use() { # FOLDER
    local tries
    remove_server "$1/prefix"
    # A process that is being killed may still write into the prefix.
    for ((tries = 0; tries < 20; tries++)); do
        rm -rf --one-file-system "$1" 2> /dev/null && return
        sleep 0.2
    done
    rm -rf --one-file-system "$1"
}

# Background programs. end_helpers ends them, newest first. They also end if this script is killed.
helpers=()

# Starts a program in the background and sets $answer to its first line of output.
start_helper() { # COMMAND...
    local output
    exec {output}< <(exec 6>&- 8>&- 9>&- && exec setpriv --pdeathsig KILL "$@" 2> /dev/null)
    helpers+=($!)
    read -r -t 30 answer <&"$output" || die "$1 did not start within 30 seconds: if the machine is busy, try again"
}

end_helpers() {
    local i
    for ((i = ${#helpers[@]} - 1; i >= 0; i--)); do
        kill -KILL "${helpers[i]}" && wait "${helpers[i]}"
    done 2> /dev/null || true
}

# Starts a virtual screen with a window manager, and sets DISPLAY.
start_screen() { # WIDTHxHEIGHT DPI
    start_helper Xvfb -displayfd 1 -screen 0 "${1}x24" -dpi "$2" -nolisten tcp
    export DISPLAY=:$answer
    start_helper openbox --sm-disable --startup 'echo ready'
}

# Takes screenshots until two in a row are equal: then painting is complete.
take_picture() { # FILE WINDOW
    local before='' now=- tries
    for ((tries = 0; tries < 100; tries++)); do
        before=$now
        /usr/bin/import -window "$2" "$1"
        now=$(sha256sum < "$1")
        [[ $now != "$before" ]] || return 0
        sleep 0.3
    done
    die "no screenshot $1: the screen keeps changing; try again"
}
