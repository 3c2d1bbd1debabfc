# The SQLite amalgamation in the cache folder: sqlite-<version>/sqlite3.c and sqlite3.h.
# Both origins below give the same bytes.

sqlite_version=3.40.1
sqlite_c_sha256=de365966681a951cd2fd7b76796a683f0ec6458dfa8fc54cf16029d6833ef1d1
sqlite_h_sha256=dc419c400665bd43b335d04d7562d78e1d5dcd464fa0d6150c9d5c3bc5d705f4
sqlite_npm_package=better-sqlite3@8.1.0
sqlite_npm_sha256=9006504eac0c86e8d5f42d6b7a8282866bf041bc856ff4438fec83cb98e4c05f
sqlite_deb_sha256=aaa776260ab4dc976db34aa7891819484c8676b5b2783123ebc6301e2ca5d655

sqlite_folder=$cache/sqlite-$sqlite_version

sqlite_is_there() { [ -f "$sqlite_folder/sqlite3.c" ] && [ -f "$sqlite_folder/sqlite3.h" ]; }

check_sum() { printf '%s  %s\n' "$1" "$2" | sha256sum --check --status; }

# sqlite_from_npm FOLDER
sqlite_from_npm() (
    command -v npm >/dev/null || exit 1
    cd "$1"
    npm pack --silent "$sqlite_npm_package" >npm.log 2>&1 || exit 1
    check_sum "$sqlite_npm_sha256" better-sqlite3-*.tgz || exit 1
    tar -xzf better-sqlite3-*.tgz --strip-components=3 \
        package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h
)

# sqlite_from_debian FOLDER — makes the amalgamation from Debian's source package. The private
# state folder leaves the machine's own package lists alone.
sqlite_from_debian() (
    local apt
    cd "$1"
    install_packages tcl xz-utils
    mkdir -p apt/lists/partial apt/cache/archives/partial build
    printf 'deb-src %s bookworm main\n' "$(debian_mirror)" >apt/sources.list
    apt="-o Dir::State=$PWD/apt -o Dir::State::status=/var/lib/dpkg/status
        -o Dir::Cache=$PWD/apt/cache -o Dir::Etc::SourceList=$PWD/apt/sources.list
        -o Dir::Etc::SourceParts=/dev/null -o APT::Sandbox::User=$(id -un)"
    # shellcheck disable=SC2086
    apt-get $apt update >apt.log 2>&1 && apt-get $apt source --download-only sqlite3 >>apt.log 2>&1 ||
        { cat apt.log >&2; exit 1; }
    check_sum "$sqlite_deb_sha256" "sqlite3_$sqlite_version.orig.tar.xz" || exit 1
    tar -xJf "sqlite3_$sqlite_version.orig.tar.xz" -C build --strip-components=1
    cd build
    # The published amalgamation that the checksum is of has this option in its grammar.
    { CFLAGS=-DSQLITE_ENABLE_UPDATE_DELETE_LIMIT ./configure --disable-tcl --disable-readline &&
        make sqlite3.c; } >make.log 2>&1 || { tail make.log >&2; exit 1; }
    mv sqlite3.c sqlite3.h ..
)

fetch_sqlite_locked() {
    local made origin
    sqlite_is_there && return
    for origin in npm debian; do
        made=$(mktemp -d "$cache/.sqlite.XXXXXX")
        if "sqlite_from_$origin" "$made" && check_sum "$sqlite_c_sha256" "$made/sqlite3.c" &&
            check_sum "$sqlite_h_sha256" "$made/sqlite3.h"; then
            mkdir "$made/done"
            mv "$made/sqlite3.c" "$made/sqlite3.h" "$made/done"
            rm -rf "$sqlite_folder"
            mv -T "$made/done" "$sqlite_folder"
            rm -rf "$made"
            return
        fi
        rm -rf "$made"
    done
    die "could not fetch SQLite $sqlite_version, neither with 'npm pack $sqlite_npm_package' nor" \
        "with 'apt-get source sqlite3'"
}

fetch_sqlite() {
    sqlite_is_there || with_lock "$cache/sqlite.lock" fetch_sqlite_locked
}
