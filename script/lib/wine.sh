# Runs Windows programs in this checkout's own Wine prefixes.
# ORVANE_WINE_FOLDER holds the prefixes (default build/wine), ORVANE_WINE_TIMEOUT limits each run.

source "${BASH_SOURCE[0]%/*}/common.sh"
source "$root/script/lib/wine_root.sh"
source "$root/script/lib/display.sh"

wine_folder=${ORVANE_WINE_FOLDER:-$root/build/wine}
wine_timeout=${ORVANE_WINE_TIMEOUT:-600}

# set_wine WIDTH: fills prefix, engine and the environment of each run of that width.
set_wine() {
    local name
    width=$1
    prefix=$wine_folder/win$width
    wine_environment=(
        PATH=/usr/local/bin:/usr/bin:/usr/sbin:/bin:/sbin HOME="$wine_folder/home" LC_ALL=C.UTF-8
        USER=user WINEPREFIX="$prefix" WINEARCH="win$width"
        WINEDEBUG="${ORVANE_WINEDEBUG:--all}"
        WINEDLLOVERRIDES="${ORVANE_WINEDLLOVERRIDES:-mscoree,mshtml,winedbg.exe=}"
    )
    for name in "${!ORVANE_@}" "${!GTEST_@}" DISPLAY XAUTHORITY TMPDIR TZ; do
        [ -n "${!name+set}" ] && wine_environment+=("$name=${!name}")
    done
    engine=host
    [ "$width" = 64 ] || engine=$(wine32_engine) || die "there is no 32-bit Wine: run script/bootstrap"
}

# in_wine COMMAND...: runs a command of Wine's with its environment, in the private root if need be.
in_wine() {
    if [ "$engine" = host ]; then
        exec env -i "${wine_environment[@]}" "$@"
    fi
    local unshare=(unshare --mount)
    [ "$EUID" = 0 ] || unshare+=(--map-current-user --keep-caps)
    exec env -i "${wine_environment[@]}" "${unshare[@]}" sh \
        "$root/script/lib/enter_root.sh" "$engine" "$root" "$PWD" "$@"
}

# windows_path PATH: the same as Windows programs write it.
windows_path() {
    local path
    path=$(realpath -m "$1")
    printf 'Z:%s\n' "${path//\//\\}"
}

prefix_is_ready() { [ "$(cat "$prefix/.ready" 2>/dev/null)" = "$engine" ]; }

# Debian's Wine does not find its own fonts (Tahoma, Marlett, MS Sans Serif); it finds them here.
link_fonts() {
    mkdir -p "$prefix/drive_c/windows/Fonts"
    ln -s /usr/share/wine/fonts/* "$prefix/drive_c/windows/Fonts"
}

# Without a window manager each top-level window that goes away costs two seconds unless Wine manages
# its windows itself.
make_prefix() {
    local log
    prefix_is_ready && return
    rm -rf "$prefix"
    mkdir -p "$prefix" "$wine_folder/home"
    link_fonts
    log=$wine_folder/win$width.log
    (
        (in_wine timeout -k 2 300 wine wineboot --init) &&
            (in_wine timeout -k 2 60 wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f) &&
            { (in_wine wineserver -k) || true; } && (in_wine timeout -k 2 60 wineserver -w)
    ) </dev/null >"$log" 2>&1 8>&- || {
        tail -n 20 "$log" >&2
        die "'wine wineboot --init' could not make the Wine prefix $prefix"
    }
    mkdir "$prefix/.pristine"
    cp "$prefix"/*.reg "$prefix/.pristine"
    printf '%s\n' "$engine" >"$prefix/.ready"
}

# open_prefix WIDTH: makes prefix and display ready.
open_prefix() {
    use_display "$wine_folder"
    set_wine "$1"
    prefix_is_ready || with_lock "$wine_folder/win$width.lock" make_prefix || exit 1
}

# run_wine WIDTH PROGRAM [ARGUMENT...]: runs PROGRAM and ends with its exit code.
run_wine() {
    local program=$2 child code=0
    open_prefix "$1"
    shift 2
    # A path from the repository root works in its sub-folders as well.
    [ -f "$program" ] || [ ! -f "$root/$program" ] || program=$root/$program
    case $program in /* | *:*) ;; */*) program=$PWD/$program ;; esac
    exec 7<>"$wine_folder/win$width.users"
    flock -s 7
    (in_wine timeout --foreground -k 2 "$wine_timeout" wine "$program" "$@") <&0 7>&- 8>&- &
    child=$!
    trap 'kill "$child" 2>/dev/null' TERM INT HUP
    wait "$child" || code=$?
    trap - TERM INT HUP
    if [ $code = 124 ] || [ $code = 137 ]; then
        say "${0##*/}: $program took longer than $wine_timeout s or was killed"
        # What it started would stay behind; others that use the prefix now keep their processes.
        if flock -n -x 7; then (in_wine wineserver -k) 7>&- 8>&- || true; fi
    fi
    exit $code
}
