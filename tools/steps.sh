# SPDX-License-Identifier: MIT
# Sourced by ./run and ./test, from the top folder: steps that are quiet when they succeed.
# shellcheck shell=bash

logs=build/logs
mkdir -p "$logs"

# A compiler cache speeds up every build after the first, where there is one.
use_ccache() {
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
}

# step NAME LOG COMMAND...: runs the command with its output in build/logs/LOG.log and prints one line with the
# time. A failure shows the end of the log and ends the script.
step() {
    local name=$1 log=$logs/$2.log began=$SECONDS status=0
    shift 2
    printf '%-48s' "$name" >&2
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status == 0)); then
        printf 'ok %5d s\n' $((SECONDS - began)) >&2
        return
    fi
    printf 'FAILED after %d s\n' $((SECONDS - began)) >&2
    # Of a suite's output, the tests that passed say nothing.
    sed -E '/^ *(Start +[0-9]+:|[0-9]+\/[0-9]+ Test .* Passed )/d' "$log" | tail -n 60 >&2
    printf '\n%s: "%s" failed with status %d; its whole output is in %s\n' "$0" "$name" "$status" "$log" >&2
    exit 1
}

build_program() {
    cmake --preset release && cmake --build --preset release --target kstnedit-program
}

build_pictures() {
    cmake --preset release && cmake --build --preset release --target kstnedit-pictures
}
