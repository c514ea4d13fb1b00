# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# Controls of the program's windows, found by the names that screen readers have for them, and used by mouse. On a
# desktop that has accessibility, after windows.sh and accessibility.sh.

# locate_control WINDOW NAME [ROW]: sets CONTROL_X and CONTROL_Y to the control's middle on the screen, CONTROL_RIGHT to
# its right end; with ROW, the one in the table's row that begins so.
locate_control() {
    local place x y width height
    place=$(read_accessibility place "$@") || return 1
    read -r x y width height <<<"$place"
    locate_window "$1" && locate_shadow "$1" || return 1
    ((width > 0 && height > 0)) || return 1
    CONTROL_X=$((X + SHADOW_LEFT + (2 * x + width) * scale / 2))
    CONTROL_RIGHT=$((X + SHADOW_LEFT + (x + width) * scale))
    CONTROL_Y=$((Y + SHADOW_TOP + (2 * y + height) * scale / 2))
}

# Sets SHADOW_LEFT and SHADOW_TOP to how much of the window is the shadow that it draws itself.
locate_shadow() {
    local extents
    extents=$(xprop -id "$(window_titled "$1")" -notype _GTK_FRAME_EXTENTS 2>/dev/null) || return 1
    SHADOW_LEFT=0 SHADOW_TOP=0
    [[ $extents != *=* ]] || IFS=' ,' read -r SHADOW_LEFT _ SHADOW_TOP _ <<<"${extents#*= }"
}

# click_control WINDOW NAME [ROW]
click_control() {
    require "\"$2\" is in \"$1\"" wait_for 5 locate_control "$@"
    click_at "$CONTROL_X" "$CONTROL_Y"
}

# window_has WINDOW LINE: whether it has an object of which that regular expression tells all: ROLE|NAME|STATES|TEXT.
window_has() {
    local found
    found=$(read_accessibility window "$1")
    grep -qxE -- "$2" <<<"$found"
}

# keyboard_is_at NAME: whether that, and nothing else, has the keyboard.
keyboard_is_at() {
    found=$(read_accessibility focus)
    [[ $found == *"|$1|"* && $found != *$'\n'* ]]
}

# press_through KEY NAME...: each press of the key takes the keyboard on to the next of the names.
press_through() {
    local name
    for name in "${@:2}"; do
        xdotool key "$1"
        require "$1 goes to $name" wait_for 3 keyboard_is_at "$name"
    done
}

# enter TEXT: in place of what the field with the keyboard has. Pasted, as from a picker of emoji.
enter() {
    printf '%s' "$1" | xclip -selection clipboard -in >/dev/null 2>&1
    xdotool key ctrl+a ctrl+v
}
