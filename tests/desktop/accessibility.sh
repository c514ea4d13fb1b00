# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# What screen readers find, on a desktop that has accessibility.

# Every object on the screen, or with "focus" the one with the keyboard: ROLE|NAME|STATES|TEXT.
read_accessibility() {
    "$desktop_tests/accessibility.py" "$@"
}
