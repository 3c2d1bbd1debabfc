# The SQLite amalgamation in the cache folder: sqlite-<version>/sqlite3.c and sqlite3.h.
# Both origins below give the same bytes.

sqlite_version=3.40.1
sqlite_c_sha256=de365966681a951cd2fd7b76796a683f0ec6458dfa8fc54cf16029d6833ef1d1
sqlite_h_sha256=dc419c400665bd43b335d04d7562d78e1d5dcd464fa0d6150c9d5c3bc5d705f4
sqlite_npm_package=better-sqlite3@8.1.0
sqlite_npm_sha256=9006504eac0c86e8d5f42d6b7a8282866bf041bc856ff4438fec83cb98e4c05f
sqlite_deb_sha256=aaa776260ab4dc976db34aa7891819484c8676b5b2783123ebc6301e2ca5d655

sqlite_from_npm() {
    command -v npm >/dev/null || return 1
    npm pack --silent "$sqlite_npm_package" >npm.log 2>&1 || return 1
    check_sum "$sqlite_npm_sha256" better-sqlite3-*.tgz || return 1
    tar -xzf better-sqlite3-*.tgz --strip-components=3 -C done \
        package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h
    sqlite_is_right
}

# sqlite_from_debian: makes the amalgamation from Debian's source package.
sqlite_from_debian() {
    install_packages tcl xz-utils
    debian_source sqlite3 || return 1
    check_sum "$sqlite_deb_sha256" "sqlite3_$sqlite_version.orig.tar.xz" || return 1
    mkdir build
    tar -xJf "sqlite3_$sqlite_version.orig.tar.xz" -C build --strip-components=1
    cd build
    # The published amalgamation that the checksum is of has this option in its grammar.
    { CFLAGS=-DSQLITE_ENABLE_UPDATE_DELETE_LIMIT ./configure --disable-tcl --disable-readline &&
        make sqlite3.c; } >make.log 2>&1 || { tail make.log >&2; return 1; }
    cd ..
    mv build/sqlite3.c build/sqlite3.h done
    sqlite_is_right
}

sqlite_is_right() {
    check_sum "$sqlite_c_sha256" done/sqlite3.c && check_sum "$sqlite_h_sha256" done/sqlite3.h
}

fetch_sqlite() {
    fetch_sources "$cache/sqlite-$sqlite_version" "SQLite $sqlite_version, neither with 'npm pack \
$sqlite_npm_package' nor with 'apt-get source sqlite3'" sqlite_from_npm sqlite_from_debian
}
