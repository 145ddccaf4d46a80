# shellcheck shell=bash
# What the scripts in this folder share; to be sourced.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# The Wine root and its finished prefix. The name comes from the recipe, so that every clone of the same state
# shares one root, and a changed recipe makes a new one instead of mending the old.
# A service may run without HOME.
home=${HOME:-$(getent passwd "$EUID" | cut -d: -f6)}
cache=${XDG_CACHE_HOME:-$home/.cache}/corvane-scheduler
recipe=$(cat "$top"/tools/{winroot,debian} | sha256sum)
# shellcheck disable=SC2034 # for those who source this
winroot=$cache/${recipe:0:12}${CORVANE_SUITE:+-$CORVANE_SUITE}
# Boost's headers, where the machine's own are too old.
# shellcheck disable=SC2034 # for those who source this, cmake/boost.cmake among them
boost=$cache/boost/usr/include/boost

# On a terminal, set-up's messages appear above the line that ninja rewrites.
say() {
    local line=''
    [[ ! -t 2 ]] || line=$'\r\e[K'
    printf '%s%s: %s\n' "$line" "${0##*/}" "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# Becomes a command which sees this machine's files under their own paths, but the programs of the Wine root: only
# /usr and /etc differ, and what people keep in /usr themselves stays in sight. It has its own processes, the first
# of which is the command: when that ends, or this script does, nothing is left running. No rights are needed for it
# beyond those of an ordinary user; bwrap's own --dev would put it into a second user namespace, which tools/wine could
# not join.
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

# Wine's server has its socket in a folder in /tmp, which only the prefix names. (With TMPDIR in its environment
# Debian's Wine crashes.)
remove_server() { # PREFIX
    local name=''
    [[ ! -s $1/wineserver ]] || read -r name < "$1/wineserver" || true
    [[ $name != wine-?????? ]] || rm -rf "/tmp/$name"
    rm -f "$1/wineserver"
}

# A folder in the cache for one run alone, $use, until end_use. A killed run cannot remove its own: whichever is not
# locked is nobody's.
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
    # A process of the prefix that is just being killed may still write into it.
    for ((tries = 0; tries < 20; tries++)); do
        rm -rf --one-file-system "$1" 2> /dev/null && return
        sleep 0.2
    done
    rm -rf --one-file-system "$1"
}

# Programs which this script has started beside its work; they end, the last one first, in end_helpers, and with the
# script if that is killed.
helpers=()

# Starts a program in the background and waits until it has printed a line, $answer.
start_helper() { # COMMAND...
    local output
    exec {output}< <(exec 6>&- 8>&- 9>&- && exec setpriv --pdeathsig KILL "$@" 2> /dev/null)
    helpers+=($!)
    read -r -t 30 answer <&"$output" || die "$1 did not start"
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

# The picture is good when the next one is the same: everything has been painted.
take_picture() { # FILE WINDOW
    local before='' now=- tries
    for ((tries = 0; tries < 100; tries++)); do
        before=$now
        /usr/bin/import -window "$2" "$1"
        now=$(sha256sum < "$1")
        [[ $now != "$before" ]] || return 0
        sleep 0.3
    done
    die 'the screen does not come to rest'
}
