# A run of many Windows programs: its own display, its own prefixes, and Wine kept alive, because a
# program starts in 0.1 s then instead of 2.5 s. All of it ends with the run.

source "${BASH_SOURCE[0]%/*}/wine.sh"

# start_session FOLDER WIDTH...: FOLDER holds the prefixes; their registries start as new ones.
# Returns 1 when another session of FOLDER is running.
start_session() {
    local width
    export ORVANE_WINE_FOLDER=$1
    wine_folder=$1
    shift
    mkdir -p "$wine_folder"
    exec 6>"$wine_folder/session.lock"
    flock -n 6 || return 1
    session_widths=("$@")
    session_keepers=()
    trap end_session EXIT
    trap 'exit 130' INT TERM HUP
    make_temporary_folder
    start_xvfb "$wine_folder/session.display" setpriv --pdeathsig TERM
    session_display=$xvfb
    export DISPLAY=:$(<"$wine_folder/session.display")
    for width in "$@"; do
        open_prefix "$width"
        (in_wine wineserver -k) >/dev/null 2>&1 || true
        cp "$prefix"/.pristine/*.reg "$prefix"
        rm -rf "$prefix/drive_c/users/user/Temp"
        ln -s "$TMPDIR" "$prefix/drive_c/users/user/Temp"
        # The pipe's end would be the program's end too, should this script die without its traps.
        exec {keeper}> >(in_wine wine 'C:\windows\system32\cmd.exe' >/dev/null 2>&1 6>&- 8>&-)
        session_keepers+=($!)
        # Wine's own processes keep the output of the program that they come up with: not a test's.
        (in_wine timeout -k 2 60 wine cmd /c exit) </dev/null >/dev/null 2>&1 6>&- 8>&- || true
    done
}

# make_temporary_folder: in memory where there is room, because on a disk many small durable writes
# take most of a run's time.
make_temporary_folder() {
    local free
    free=$(df --output=avail -k /dev/shm 2>/dev/null | tail -n 1) || free=0
    [ "$free" -lt 1000000 ] || export TMPDIR=/dev/shm
    # What a session that was killed could not remove.
    session_temporary=$(cat "$wine_folder/session.temporary" 2>/dev/null) || session_temporary=
    [[ "$session_temporary" != */orvane-session.* ]] || rm -rf "$session_temporary"
    session_temporary=$(mktemp -d -t orvane-session.XXXXXX)
    printf '%s\n' "$session_temporary" >"$wine_folder/session.temporary"
    export TMPDIR=$session_temporary
}

end_session() {
    local width
    [ ${#session_keepers[@]} = 0 ] || kill "${session_keepers[@]}" 2>/dev/null || true
    for width in "${session_widths[@]}"; do
        # Whatever a crashed or timed-out program has left in the session's own prefixes.
        (set_wine "$width" && in_wine wineserver -k) >/dev/null 2>&1 || true
    done
    [ -z "${session_temporary:-}" ] || rm -rf "$session_temporary"
    [ -z "${session_display:-}" ] || kill "$session_display" 2>/dev/null || true
}
