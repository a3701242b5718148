# Read by ./run, ./test and .ci/run: one way to configure and build a preset.

# ccache finds what another clone of the project has compiled, because paths inside the clone count as relative.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

# configure PRESET: quiet unless it fails.
configure() {
    local log=build/$1-configure.log
    mkdir -p build
    if ! cmake --preset "$1" >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# build PRESET [cmake --build argument...]
build() {
    configure "$1"
    cmake --build --preset "$@"
}
