# Configures and builds presets.

variants=(win32 win64 win32-debug win64-debug native)

check_variant() {
    [[ " ${variants[*]} " == *" $1 "* ]] || die "no variant '$1': there are ${variants[*]}"
}

# build_variant VARIANT [NINJA-OPTION...] [TARGET...]: everything, or the targets. The build system
# itself sees changed CMake files, but not changed presets.
build_variant() {
    with_lock "$root/build/$1.lock" build_variant_alone "$@"
}

build_variant_alone() {
    local folder=$root/build/$1 preset=$1
    shift
    cd "$root"
    if [ ! "$folder/build.ninja" -nt CMakePresets.json ]; then
        cmake --preset "$preset" --log-level=WARNING >"$folder.log" 2>&1 || {
            cat "$folder.log" >&2
            say "'cmake --preset $preset' failed"
            return 1
        }
    fi
    cmake --build --preset "$preset" -- "$@" | { grep -v '^ninja: no work to do' || true; } || {
        say "'cmake --build --preset $preset' failed"
        return 1
    }
}
