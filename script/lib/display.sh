# A virtual display for commands that run without one.

display_arguments=(-screen 0 1280x1024x24 -nolisten tcp)

# start_xvfb FILE [WRAPPER...]: starts an Xvfb of our own; its display number goes into FILE, its
# process id into xvfb. It holds none of the caller's locks.
start_xvfb() {
    local tries file=$1
    shift
    : >"$file"
    "$@" Xvfb -displayfd 3 "${display_arguments[@]}" 3>"$file" </dev/null >/dev/null 2>&1 \
        6>&- 7>&- 8>&- &
    xvfb=$!
    for ((tries = 0; tries < 200; tries++)); do
        [ -s "$file" ] && return
        kill -0 "$xvfb" 2>/dev/null || break
        sleep 0.05
    done
    kill "$xvfb" 2>/dev/null || true
    die "'Xvfb -displayfd 3 ${display_arguments[*]}' did not start"
}

# use_display FOLDER: without DISPLAY, shares a virtual one among the commands that run with FOLDER
# at the same time, because all programs of a Wine prefix belong on one display. It ends itself a
# few seconds after the last of them, as Wine's own background processes do.
use_display() {
    [ -n "${DISPLAY:-}" ] && return
    mkdir -p "$1"
    exec 8<>"$1/display.users"
    flock -s 8
    with_lock "$1/display.lock" ensure_display "$1" || exit 1
    export DISPLAY
    DISPLAY=:$(<"$1/display.number")
}

ensure_display() {
    local owner
    if owner=$(cat "$1/display.owner" 2>/dev/null) && [ "$(cat "/proc/$owner/comm" 2>/dev/null)" = Xvfb ]; then
        return
    fi
    start_xvfb "$1/display.starting"
    mv "$1/display.starting" "$1/display.number"
    printf '%s\n' "$xvfb" >"$1/display.owner"
    setsid bash -c '
        while :; do
            flock -x 8
            flock -u 8
            sleep 3
            flock -n -x 8 || continue
            rm -f "$1/display.owner"
            kill "$2"
            exit
        done' keeper "$1" "$xvfb" 8<>"$1/display.users" 6>&- 7>&- </dev/null >/dev/null 2>&1 &
}
