# shellcheck shell=bash
# The steps of tools/setup, which sources common.sh and this file, and defines `packages`, `unpackers`, `stage`,
# `remove` and wine_is_wanted.
# shellcheck disable=SC2154

# ------------------------------------------------------------------------------------------------- installed packages

boost_is_there() {
    local version
    [[ ! -d $boost ]] || return 0
    version=$(sed -n 's/^#define BOOST_VERSION \([0-9]*\).*/\1/p' /usr/include/boost/version.hpp 2> /dev/null || true)
    ((${version:-0} >= 107600))
}

# Prints the package of a Boost that is new enough, if apt offers one. Debian 12 offers two versions.
boost_package() {
    local name version
    for name in libboost-dev libboost1.81-dev; do
        version=$(LC_ALL=C apt-cache policy "$name" 2> /dev/null | sed -n 's/^  Candidate: //p')
        [[ $version != [0-9]* ]] || dpkg --compare-versions "$version" lt 1.76 || {
            echo "$name"
            return
        }
    done
}

# Sets `missing` to the packages in `packages` that are not installed, and adds those for Boost if needed. For an entry
# a|b, either package suffices.
find_missing() {
    local have entry names wanted=("${packages[@]}")
    missing=()
    if ! boost_is_there; then
        mapfile -t missing < <(boost_package)
        ((${#missing[@]})) || wanted+=("${unpackers[@]}")
    fi
    mapfile -t names < <(printf '%s\n' "${wanted[@]}" | tr '|' '\n' | sort -u)
    have=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${names[@]}" 2> /dev/null) || true
    for entry in "${wanted[@]}"; do
        grep -qE "^(${entry//+/\\+}) installed$" <<< "$have" || missing+=("$entry")
    done
}

# ------------------------------------------------------------------------------------------------- checks of the machine

check_room() { # FOLDER MEGABYTES ADVICE
    local free
    free=$(df --output=avail -BM "$1" | tail -n 1 | tr -d ' M')
    ((free >= $2)) || die "$1 has $free MB free, and set-up needs $2 MB there: $3"
}

check_namespaces() {
    local enter=(unshare --mount --pid --fork --mount-proc) advice
    advice='in a container, start it with --privileged, or with
        --cap-add SYS_ADMIN --security-opt seccomp=unconfined --security-opt apparmor=unconfined'
    if ((EUID != 0)); then
        enter+=(--map-root-user)
        advice="as root, call sysctl -w kernel.apparmor_restrict_unprivileged_userns=0 (Ubuntu) or sysctl -w
            kernel.unprivileged_userns_clone=1 (Debian); $advice"
    fi
    ! command -v bwrap > /dev/null || enter=(bwrap --bind / / --dev-bind /dev /dev --proc /proc --unshare-pid)
    # shellcheck disable=SC2086 # joins the lines of the advice
    "${enter[@]}" true > /dev/null 2>&1 || die 'this machine does not allow namespaces, which Wine needs:' $advice
}

check_machine() {
    local room=0 cache_room=0 folder=$cache unpacked
    [[ $(uname -sm) == 'Linux x86_64' ]] || die "this is $(uname -sm), and set-up needs Linux on x86-64"
    command -v apt-get > /dev/null || die 'apt-get is missing: set-up needs Debian 12 or 13, or Ubuntu 22.04 or 24.04'
    if ((${#missing[@]} && EUID != 0)); then
        command -v sudo > /dev/null || die "sudo is missing: as root, run tools/setup --packages ${stage:-test}"
        sudo -n true 2> /dev/null || sudo -v || die "sudo refused: as root, run tools/setup --packages ${stage:-test}"
    fi
    [[ $stage == build ]] || check_namespaces
    # Megabytes, including the downloads.
    [[ "${missing[*]}" != *mingw* ]] || room=1000
    [[ "${missing[*]}" != *imagemagick* ]] || room=$((room + 550))
    [[ "${missing[*]}" != *clang-tidy* ]] || room=$((room + 650))
    # Files of an interrupted run are reused or deleted, so their space counts as free.
    unpacked=$(du -sm "$winroot.half" 2> /dev/null | cut -f 1 || true)
    # Checked with --packages, too, so that the run that installs Wine does not find the disk full.
    [[ $stage == build || -d $winroot ]] || cache_room=$((1500 - ${unpacked:-0}))
    boost_is_there || [[ "${missing[*]}" == *libboost* ]] || cache_room=$((cache_room + 400))
    until [[ -d $folder ]]; do
        folder=$(dirname "$folder")
    done
    [[ $(stat -c %d "$folder") != $(stat -c %d /usr) ]] || cache_room=$((cache_room + room)) room=0
    check_room /usr "$room" 'delete files'
    check_room "$folder" "$cache_room" 'delete files, or set XDG_CACHE_HOME to a folder on another disk'
}

# ------------------------------------------------------------------------------------------------- one set-up at a time

# Locks the cache folder. Tries again if --remove has deleted the lock file meanwhile.
lock() { # [FLOCK-OPTION]
    mkdir -p "$cache"
    exec 9> "$cache/setup.lock"
    flock "$@" 9 || return
    [[ $cache/setup.lock -ef /dev/fd/9 ]] || lock "$@"
}

# ------------------------------------------------------------------------------------------------- long steps

# Runs a command, and ends it and its child processes when standard input is closed. This works even if tools/setup is
# killed, and for root's commands, to which an ordinary user cannot send signals. The guard holds the lock of set-up
# until the command has ended. The command does not inherit the lock, because a process that it leaves running would
# keep the lock.
# shellcheck disable=SC2016 # expanded by the shell that runs this
guard='
    trap : INT TERM HUP
    set -m
    exec 3>&2 2> /dev/null # hides the job messages of bash
    "$@" < /dev/null 2>&3 3>&- 9>&- &
    job=$!
    { read -r _; kill -TERM -- -$job; sleep 10; kill -KILL -- -$job; } <&0 &
    while
        wait $job
        status=$?
        kill -0 $job
    do :; done
    kill -KILL -- -$! -$job
    exit $status'

guard_input='' job='' become=()

# Runs a long command. Every few seconds, prints the elapsed time and the command's last line of output.
step() { # TITLE NAME COMMAND...
    local title=$1 log=$cache/logs/$2.log start=$SECONDS shown=$SECONDS status=0
    shift 2
    say "$title …"
    mkdir -p "${log%/*}"
    exec {guard_input}> >(exec "${become[@]}" bash -c "$guard" guard "$@" > "$log" 2>&1)
    job=$!
    while [[ -d /proc/$job ]]; do
        sleep 0.2
        ((SECONDS - shown < 5)) || {
            shown=$SECONDS
            say "  $((SECONDS - start)) s  $(tail -n 1 "$log" | tr '\r' '\n' | tail -n 1 | cut -c 1-100)"
        }
    done
    wait "$job" || status=$?
    exec {guard_input}>&-
    guard_input=''
    ((status == 0)) || {
        say "failed: $title. All output is in $log, which ends with:"
        tail -n 12 "$log" >&2
        return 1
    }
    say "$title: done in $((SECONDS - start)) s"
}

end_step() {
    trap '' INT TERM HUP
    [[ -n $guard_input ]] || return 0
    exec {guard_input}>&-
    wait "$job" || true
}

# ------------------------------------------------------------------------------------------------- packages

# Prints the ids of the processes that hold a lock of apt.
apt_users() {
    local device inode
    stat -c '%D %i' /var/lib/dpkg/lock{,-frontend} /var/lib/apt/lists/lock /var/cache/apt/archives/lock 2> /dev/null |
        while read -r device inode; do
            printf ' %02x:%02x:%d \n' $((0x$device >> 8)) $((0x$device & 255)) "$inode"
        done | grep -F -f - /proc/locks | awk '!seen[$5]++ { print $5 }'
}

as_root() { # TITLE NAME COMMAND...
    local title=$1 name=$2 become=() users said=''
    shift 2
    ((EUID == 0)) || become=(sudo)
    while users=$(apt_users || true) && [[ -n $users ]]; do
        [[ $users == "$said" ]] || say "waiting for another installation to end (process ${users//$'\n'/, })"
        said=$users
        sleep 1
    done
    step "$title" "$name" env DEBIAN_FRONTEND=noninteractive "$@"
}

# Continues after a failure, because a source that cannot be read may not be needed.
update() { as_root 'reading the package lists' update apt-get update || say 'continuing with the package lists that could be read'; }

install_packages() { # PACKAGE...
    local entry name chosen=()
    for entry in "$@"; do
        for name in ${entry//|/ }; do
            [[ -z $(apt-cache show "$name" 2> /dev/null) ]] || break
        done
        chosen+=("$name")
    done
    as_root "installing ${chosen[*]}" install apt-get install -y --no-install-recommends \
        -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "${chosen[@]}"
}

# ------------------------------------------------------------------------------------------------- removal

# Renames each folder first, so that an interrupted removal never leaves an incomplete root under its real name.
remove() { # FOLDER...
    local folder
    for folder in "$@"; do
        [[ -d $folder ]] || continue
        say "removing $folder"
        [[ $folder == *.half ]] || mv -T "$folder" "$folder.half"
        rm -rf --one-file-system "${folder%.half}.half"
    done
}

# Sets `old_roots` to the roots, complete or not, that other versions of the scripts made; with --remove, to all roots.
find_old_roots() {
    local folder
    old_roots=()
    for folder in "$cache"/*; do
        [[ -d $folder && ${folder##*/} =~ ^([0-9a-f]{12}(-[a-z]+)?|.*\.half)$ ]] || continue
        [[ -z $remove && ${folder##*/} == "${recipe:0:12}"* ]] || old_roots+=("$folder")
    done
}

# Keeps roots that are in use: tools/wine holds a lock on its root.
remove_old_roots() {
    local folder
    find_old_roots
    for folder in "${old_roots[@]}"; do
        [[ -d $folder ]] || continue
        exec 8< "$folder"
        if flock -n 8; then
            remove "$folder"
        elif [[ -n $remove ]]; then
            say "kept: $folder, because a program still runs in it; end the program and run tools/setup --remove again"
        fi
        exec 8<&-
    done
}
