# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The frame of a test: what it claims, and what is left when it ends.

failures=0
ended_at=nothing
set -o errtrace
trap 'ended_at="line $LINENO: $BASH_COMMAND"' ERR
started=() # processes that end with the test

# check SENTENCE COMMAND...: notes a failure, and goes on.
check() {
    local sentence=$1
    shift
    if "$@"; then
        echo "ok: $sentence"
    else
        echo "FAILED: $sentence"
        failures=$((failures + 1))
        picture_of_failure
    fi
}

# require SENTENCE COMMAND...: for what the rest of the test stands on.
require() {
    local before=$failures
    check "$@"
    ((failures == before)) || exit 1
}

picture_of_failure() {
    mkdir -p "$build_dir/desktop-failures"
    screenshot "$build_dir/desktop-failures/$(basename "$0" .test)-$failures.png" 2>/dev/null || true
}

end_test() {
    local status=$? pid
    trap - EXIT
    for pid in "${started[@]}"; do
        end_process "$pid" || true
    done
    if [[ -n ${server_input:-} ]]; then
        exec {server_input}>&-
    fi
    if ((status && !failures)); then
        echo "FAILED: the test ended at \"$ended_at\""
    fi
    if ((status || failures)); then
        echo "--- what the program said"
        cat "$log" 2>/dev/null || true
        exit 1
    fi
}
trap end_test EXIT

equals() {
    [[ $1 == "$2" ]] || { printf 'wanted:\n%s\nfound:\n%s\n' "$2" "$1"; return 1; }
}

not() {
    ! "$@"
}
