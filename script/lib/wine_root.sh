# The 32-bit Wine: the machine's own where it has one, else a private i386 Debian in the cache
# folder, which leaves the machine's package system alone.

# A change of the recipe needs a new name, so that older clones keep what they have.
wine_root=$cache/wine32-root-1
wine_root_packages=wine,wine32,fonts-wine,fonts-liberation,libxcomposite1,libxcursor1,libxi6,libxinerama1,libxrandr2,libxrender1

# host_runs_32_bits: whether the machine's own wine runs 32-bit programs in a 32-bit prefix.
host_runs_32_bits() {
    local prefix result=0
    command -v wine >/dev/null || return 1
    prefix=$(mktemp -d)
    env -i PATH="$PATH" HOME="$prefix" WINEARCH=win32 WINEPREFIX="$prefix/prefix" WINEDEBUG=-all \
        WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe=" \
        timeout -k 2 120 wine cmd /c "exit 7" >/dev/null 2>&1 </dev/null || result=$?
    WINEPREFIX="$prefix/prefix" wineserver -k >/dev/null 2>&1 || true
    rm -rf "$prefix"
    [ $result = 7 ]
}

# wine32_engine: "host", or the folder of the private root; fails when there is neither.
wine32_engine() {
    if [ -d "$wine_root" ]; then
        printf '%s\n' "$wine_root"
    elif [ -f "$cache/wine32-is-host" ]; then
        printf 'host\n'
    else
        return 1
    fi
}

make_wine_root() {
    local made log failed=0
    wine32_engine >/dev/null && return
    if host_runs_32_bits; then
        touch "$cache/wine32-is-host"
        return
    fi
    # What an interrupted run has left.
    if compgen -G "$cache/.wine32-root.*" >/dev/null; then
        as_root rm -rf --one-file-system "$cache"/.wine32-root.*
    fi
    made=$(mktemp -d "$cache/.wine32-root.XXXXXX")
    log=$(mktemp)
    say "Making the 32-bit Wine in $wine_root (about 900 MB, half a minute)"
    as_root mmdebstrap --mode=root --architectures=i386 --variant=apt \
        --include="$wine_root_packages" \
        --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
        --dpkgopt='path-exclude=/usr/share/locale/*' \
        bookworm "$made" "deb $(debian_mirror) bookworm main" >"$log" 2>&1 || failed=1
    if [ $failed = 0 ] && [ -x "$made/usr/lib/wine/wine" ]; then
        as_root chmod 755 "$made"
        as_root mv -T "$made" "$wine_root"
    else
        tail -n 15 "$log" >&2
        say "'mmdebstrap' could not make a 32-bit Debian with Wine"
        as_root rm -rf --one-file-system "$made"
        failed=1
    fi
    rm -f "$log"
    return $failed
}

# fetch_wine32: makes sure that there is a 32-bit Wine; fails with a message when there cannot be.
fetch_wine32() {
    wine32_engine >/dev/null || with_lock "$cache/wine32-root.lock" make_wine_root
}
