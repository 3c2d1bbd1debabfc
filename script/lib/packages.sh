# The Debian packages that building, running and testing stand on.

packages=(
    g++ make cmake ninja-build clang-format googletest
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools
    wine wine64 fonts-wine fonts-liberation
    libxcomposite1 libxcursor1 libxi6 libxinerama1 libxrandr2 libxrender1
    xvfb xauth xdotool imagemagick
    mmdebstrap arch-test ca-certificates git jq
)

# missing_packages NAME...: those that are not installed.
missing_packages() {
    comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' 2>/dev/null |
            sed -n 's/ installed$//p' | sort -u)
}

# install_packages NAME...: installs the missing ones; the machine's package lists are fetched only
# when the ones it has do not do.
install_packages() {
    local missing=() log
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} = 0 ] && return
    command -v apt-get >/dev/null || die "needs Debian 12 packages: ${missing[*]}"
    say "Installing ${missing[*]}"
    log=$(mktemp)
    install_now "${missing[@]}" >"$log" 2>&1 || {
        as_root apt-get update >>"$log" 2>&1 || true
        install_now "${missing[@]}" >>"$log" 2>&1 || true
    }
    mapfile -t missing < <(missing_packages "$@")
    if [ ${#missing[@]} != 0 ]; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        die "'apt-get install' could not install: ${missing[*]}"
    fi
    rm -f "$log"
}

install_now() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
        -o DPkg::Lock::Timeout=300 "$@"
}

# debian_mirror: the address that this machine gets Debian 12 from.
debian_mirror() {
    local mirror
    mirror=$(apt-get indextargets --format '$(REPO_URI)' \
        'Created-By: Packages' 'Origin: Debian' 'Codename: bookworm' 2>/dev/null | head -n 1)
    printf '%s\n' "${mirror:-http://deb.debian.org/debian}"
}
