# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# Windows in which bookmarks have their browsers to themselves, and those of other programs.

# Sets X, Y, WIDTH and HEIGHT to the place of the window's inside.
locate_window() {
    local window
    window=$(window_titled "$1")
    [[ -n $window ]] || return 1
    read -r X Y WIDTH HEIGHT < <(xwininfo -id "$window" |
        awk '/Absolute upper-left/ { printf "%s ", $NF } /Width:|Height:/ { printf "%s ", $NF } END { print "" }')
}

window_is_at() {
    locate_window "$1" && echo "${WIDTH}x$HEIGHT+$X+$Y" && [[ "${WIDTH}x$HEIGHT+$X+$Y" == "$2" ]]
}

# Whether the window manager says so: ABOVE, HIDDEN, FOCUSED...
window_state_has() {
    local states
    states=$(xprop -id "$(window_titled "$1")" -notype _NET_WM_STATE 2>/dev/null) &&
        [[ "${states/=/,}," == *" _NET_WM_STATE_$2,"* ]]
}

is_active_window() {
    local active window
    window=$(window_titled "$1")
    active=$(xdotool getactivewindow 2>/dev/null) && [[ -n $window ]] && ((active == window))
}

# It has the keyboard, and more in it than its ground.
is_ready_window() {
    is_active_window "$1" && (($(import -silent -window "$(window_titled "$1")" -format %k info:) > 16))
}

# The window's inside and its title bar are within what the panels leave of the screen.
window_is_in_work_area() {
    local x y width height top
    locate_window "$1" || return 1
    IFS=' ,' read -r x y width height _ < <(xprop -root -notype _NET_WORKAREA | sed 's/.*= //')
    IFS=' ,' read -r _ _ top _ < <(xprop -id "$(window_titled "$1")" -notype _NET_FRAME_EXTENTS | sed 's/.*= //')
    echo "inside ${WIDTH}x$HEIGHT+$X+$Y, title bar $top, work area ${width}x$height+$x+$y"
    ((X >= x && Y - top >= y && X + WIDTH <= x + width && Y + HEIGHT <= y + height))
}

# The first is nearer to the user than the second.
window_is_above() {
    local -a stack
    local window first second place=0
    first=$(($(window_titled "$1"))) second=$(($(window_titled "$2")))
    IFS=', ' read -r -a stack < <(xprop -root -notype _NET_CLIENT_LIST_STACKING | sed 's/.*# //')
    for window in "${stack[@]}"; do
        ((window != second)) || place=1
        ((window != first)) || { ((place)); return; }
    done
    return 1
}

# Another program's window, in one colour: open_other_window TITLE COLOUR WIDTHxHEIGHT X Y
open_other_window() {
    display -title "$1" -size "$3" -geometry "+$4+$5" "xc:$2" &
    started+=($!)
    require "another program's window opens" wait_for 5 is_active_window "$1"
}

# What another program or the user does to have the window on top.
activate_window() {
    wmctrl -i -a "$(window_titled "$1")"
    require "\"$1\" is activated" wait_for 3 is_active_window "$1"
}

# The header of the page in a window, where neither text nor strips are.
window_page_looks() {
    locate_window "$1" && looks_at "$2" $((X + WIDTH / 2)) $((Y + toolbar_height + 18 * scale))
}
