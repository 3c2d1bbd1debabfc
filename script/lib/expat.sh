# The sources of the XML parser Expat in the cache folder, with Debian's corrections:
# expat-<version>/*.c and *.h.

expat_version=2.5.0
expat_deb_sha256=ab00ee05c7067fd10a35c5d2a4922ebba746ddd50ff83b79c828da17bbdf1757

expat_from_debian() {
    install_packages git xz-utils
    debian_source expat || return 1
    check_sum "$expat_deb_sha256" "expat_$expat_version.orig.tar.gz" || return 1
    tar -xzf "expat_$expat_version.orig.tar.gz" --strip-components=1
    tar -xJf expat_*.debian.tar.xz
    local patch
    while read -r patch; do
        GIT_CEILING_DIRECTORIES=${PWD%/*} git apply --whitespace=nowarn --include='expat/lib/*' \
            "debian/patches/$patch" || return 1
    done <debian/patches/series
    mv expat/lib/*.c expat/lib/*.h expat/COPYING done
}

fetch_expat() {
    fetch_sources "$cache/expat-$expat_version" \
        "Expat $expat_version with 'apt-get source expat'" expat_from_debian
}
