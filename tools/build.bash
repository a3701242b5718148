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

# run_tests PRESET [ctest argument...]: shows what failed and, as the last line, CTest's count. Every result goes to a log.
run_tests() {
    local preset=$1 log=build/$1/ctest.log status=0
    shift
    echo "Testing; every result goes to $log"
    ctest --preset "$preset" -j "$(nproc)" "$@" </dev/null 2>&1 | tee "$log" \
        | grep --line-buffered -v -E '^ +Start +[0-9]+: | +Passed +[0-9.]+ sec$' || status=${PIPESTATUS[0]}
    grep -E '^[0-9]+% tests passed' "$log" || echo "No test was run."
    return "$status"
}
