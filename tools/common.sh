# shellcheck shell=bash
# Shared functions of the scripts; to be sourced.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# A service may run without HOME.
home=${HOME:-$(getent passwd "$EUID" | cut -d: -f6)}
cache=${XDG_CACHE_HOME:-$home/.cache}/corvane-scheduler
# The folder of the Wine root and its prefix is named after a hash of the scripts that make it: clones with the same
# scripts share one root, and changed scripts make a new one.
recipe=$(cat "$top"/tools/{winroot,debian} | sha256sum)
# shellcheck disable=SC2034 # used by the scripts that source this
winroot=$cache/${recipe:0:12}${CORVANE_SUITE:+-$CORVANE_SUITE}
# Boost's headers if those of the machine are too old.
# shellcheck disable=SC2034 # used by cmake/boost.cmake, too
boost=$cache/boost/usr/include/boost

# On a terminal, first clears the line: ninja may be rewriting it.
say() {
    local line=''
    [[ ! -t 2 ]] || line=$'\r\e[K'
    printf '%s%s: %s\n' "$line" "${0##*/}" "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# Replaces this shell by a command in a container. It sees this machine's files under their own paths, except /usr and
# /etc, which are those of the Wine root; /usr/local and /usr/src stay visible. The command is the first process of its
# own process namespace: when the command or this script ends, everything in the container ends. An ordinary user may
# do this. Does not use --dev, which would add a second user namespace that tools/wine could not join.
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

# Removes the folder in /tmp with the socket of Wine's server, whose name is in the prefix. (TMPDIR cannot move it:
# Debian's Wine crashes with TMPDIR in its environment.)
remove_server() { # PREFIX
    local name=''
    [[ ! -s $1/wineserver ]] || read -r name < "$1/wineserver" || true
    [[ $name != wine-?????? ]] || rm -rf "/tmp/$name"
    rm -f "$1/wineserver"
}

# Makes $use, a folder in the cache for one run, which end_use removes. Folders without a lock were left by killed runs
# and are removed, too.
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

# Background programs. end_helpers ends them, the last one first. They also end if this script is killed.
helpers=()

# Starts a program in the background and waits for its first line of output, $answer.
start_helper() { # COMMAND...
    local output
    exec {output}< <(exec 6>&- 8>&- 9>&- && exec setpriv --pdeathsig KILL "$@" 2> /dev/null)
    helpers+=($!)
    read -r -t 30 answer <&"$output" || die "$1 did not start within 30 seconds"
}

end_helpers() {
    local i
    for ((i = ${#helpers[@]} - 1; i >= 0; i--)); do
        kill -KILL "${helpers[i]}" && wait "${helpers[i]}"
    done 2> /dev/null || true
}

# Starts a screen with a window manager, and makes it the DISPLAY.
start_screen() { # WIDTHxHEIGHT DPI
    start_helper Xvfb -displayfd 1 -screen 0 "${1}x24" -dpi "$2" -nolisten tcp
    export DISPLAY=:$answer
    start_helper openbox --sm-disable --startup 'echo ready'
}

# Takes a picture when painting is complete: when two in a row are the same.
take_picture() { # FILE WINDOW
    local before='' now=- tries
    for ((tries = 0; tries < 100; tries++)); do
        before=$now
        /usr/bin/import -window "$2" "$1"
        now=$(sha256sum < "$1")
        [[ $now != "$before" ]] || return 0
        sleep 0.3
    done
    die "no picture $1: the screen keeps changing"
}
