# shellcheck shell=bash disable=SC2034
# Shared by the scripts: where the project is, how they speak, how they wait.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
presets="release debug asan clang fuzz bench"

say() {
    printf '==> %s\n' "$*" >&2
}

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# wait_for SECONDS COMMAND...: tries the command until it succeeds; fails when the time is over. The last try begins
# after the deadline: a machine that stood still must not decide.
wait_for() {
    local deadline=$((${EPOCHREALTIME/./} + $1 * 1000000)) is_over=0
    shift
    until "$@"; do
        ((!is_over)) || return 1
        ((${EPOCHREALTIME/./} < deadline)) || is_over=1
        sleep 0.02
    done
}

is_running() {
    # A zombie still answers signals.
    local state
    state=$(sed 's/.*) //;s/ .*//' "/proc/$1/stat" 2>/dev/null) && [[ $state != Z ]]
}

is_gone() {
    ! is_running "$1"
}

# end_process PID: asks it to end, and insists after three seconds.
end_process() {
    is_running "$1" || return 0
    kill "$1" 2>/dev/null || true
    wait_for 3 is_gone "$1" && return 0 # a bare return inside a trap hands on the status from before it
    kill -KILL "$1" 2>/dev/null || true
    wait_for 3 is_gone "$1"
}
