# Other projects' sources that the build takes in: each in a folder of its own in the cache folder.

check_sum() { printf '%s  %s\n' "$1" "$2" | sha256sum --check --status; }

# fetch_sources FOLDER WHAT ORIGIN...: makes the folder, unless it is there, by the first of these
# functions that can. Each runs in an empty folder of its own, checks what it fetched and leaves in
# ./done what is wanted. WHAT says in a message what could not be fetched.
fetch_sources() {
    [ -d "$1" ] || with_lock "$1.lock" fetch_sources_locked "$@"
}

fetch_sources_locked() {
    local folder=$1 what=$2 made origin
    shift 2
    [ -d "$folder" ] && return
    for origin in "$@"; do
        made=$(mktemp -d "$cache/.sources.XXXXXX")
        mkdir "$made/done"
        if (cd "$made" && "$origin"); then
            mv -T "$made/done" "$folder"
            rm -rf "$made"
            return
        fi
        rm -rf "$made"
    done
    die "could not fetch $what"
}

# debian_source PACKAGE: downloads Debian's source package into the current folder; apt checks its
# signature. The private state folder leaves the machine's own package lists alone.
debian_source() {
    local apt
    mkdir -p apt/lists/partial apt/cache/archives/partial
    printf 'deb-src %s bookworm main\n' "$(debian_mirror)" >apt/sources.list
    apt="-o Dir::State=$PWD/apt -o Dir::State::status=/var/lib/dpkg/status
        -o Dir::Cache=$PWD/apt/cache -o Dir::Etc::SourceList=$PWD/apt/sources.list
        -o Dir::Etc::SourceParts=/dev/null -o APT::Sandbox::User=$(id -un)"
    # shellcheck disable=SC2086
    apt-get $apt update >apt.log 2>&1 && apt-get $apt source --download-only "$1" >>apt.log 2>&1 ||
        { cat apt.log >&2; return 1; }
}
