# shellcheck shell=bash
# What the tests of windows and of resizing have in common; they source it after lib.sh.

# shellcheck disable=SC2154 # they are lib.sh's
screen_probe=$build_dir/perchly_screen_probe

# --- Bookmarks and the orders that their status items will give -----------------------------------------------

# bookmark ID TITLE ADDRESS [FIELD...]: one for the file. Put is_on_top=true or is_detached=true before the call.
bookmark() {
    local more="${*:4}"
    printf '{"id":"%s","title":"%s","url":"%s","isPinned":true,"isAddedToMenuBar":false,"createdAt":0,' "${@:1:3}"
    printf '"shouldReloadOnOpen":false,"isAlwaysOnTop":%s,"prefersDetached":%s,"openInSystemBrowser":false%s}' \
        "${is_on_top:-false}" "${is_detached:-false}" "${more:+,$more}"
}

# size WIDTH HEIGHT: the fields of a bookmark that was resized.
size() {
    printf '"preferredWidth":%s,"preferredHeight":%s' "$1" "$2"
}

store_bookmarks() {
    local IFS=,
    mkdir -p "$(dirname "$(bookmark_file)")"
    printf '{"bookmarks":[%s]}' "$*" >"$(bookmark_file)"
}

# Starts the program that takes orders; its process is $perchly.
start_ordered_perchly() {
    local pipe=$PERCHLY_DESKTOP/orders
    [[ -p $pipe ]] || mkfifo "$pipe"
    answers=$PERCHLY_DESKTOP/answers
    : >"$answers"
    "$build_dir/perchly_ordered" <"$pipe" >"$answers" 2>>"$log" &
    perchly=$!
    started+=("$perchly")
    exec {orders}>"$pipe"
    orders_given=0
}

order_is_carried_out() {
    (($(wc -l <"$answers") == orders_given))
}

order() {
    echo "$*" >&"$orders"
    orders_given=$((orders_given + 1))
    require "order \"$*\"" wait_for 20 order_is_carried_out
}

# Whether the bus knows of a Perchly: for a moment also of one that has just ended.
is_on_bus() {
    [[ $(gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner org.perchly.Perchly) == "(true,)" ]]
}

# restart_perchly: ends the program, and starts it with what it has stored.
restart_perchly() {
    require "Perchly is on the bus" is_on_bus
    end_process "$perchly"
    exec {orders}>&-
    require "it leaves the bus" wait_for 5 not is_on_bus
    require "with its item" wait_for 5 not has_main_item
    start_ordered_perchly
    require "it starts again" wait_for 5 has_main_item
}

# WIDTH HEIGHT of the first bookmark in the file that has been resized.
stored_size() {
    python3 -c 'import json, sys
for bookmark in json.load(open(sys.argv[1]))["bookmarks"]:
    if "preferredWidth" in bookmark:
        sys.exit("{preferredWidth:g} {preferredHeight:g}".format(**bookmark))' "$(bookmark_file)" 2>&1 || true
}

times_logged() {
    grep -cF -- "$1" "$log" || true
}

was_logged() {
    [[ $(times_logged "$1") == "$2" ]]
}

# --- Windows --------------------------------------------------------------------------------------------------

# Not a detached window, which is of the same class.
popover_window() {
    local window
    window=$(window_titled Perchly)
    [[ -n $window ]] && printf '%d\n' "$window"
}

# The window with that title, shown or not.
window_titled() {
    wmctrl -l 2>/dev/null | awk -v title="$1" '{ id = $1; $1 = $2 = $3 = ""; sub(/^ +/, "") } $0 == title && !found++ { print id }'
}

has_window() {
    [[ -n $(window_titled "$1") ]]
}

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

# --- Pixels ---------------------------------------------------------------------------------------------------

# RRGGBB of one place on the screen.
colour_at() {
    import -silent -window root -crop "1x1+$1+$2" -depth 8 rgb:- | od -An -tx1 | tr -d ' ' | tr a-f A-F
}

# looks_at blue|green|red|white X Y: red is another program's window, blue and green are the pages' headers.
looks_at() {
    is_colour "$1" "$(colour_at "$2" "$3")"
}

is_colour() {
    local red=$((16#${2:0:2})) green=$((16#${2:2:2})) blue=$((16#${2:4:2}))
    case $1 in
        blue) ((blue > red + 40 && blue > green + 40)) ;;
        green) ((green > red + 40 && blue < green + 40)) ;;
        red) ((red > 200 && green < 40 && blue < 40)) ;;
        white) ((red > 240 && green > 240 && blue > 240)) ;;
    esac
}

# The header of the page in a window, where neither text nor strips are.
window_page_looks() {
    locate_window "$1" && looks_at "$2" $((X + WIDTH / 2)) $((Y + toolbar_height + 18 * scale))
}

pointer_has_shape() {
    [[ $("$screen_probe" cursor) == "$1" ]]
}

# --- Dragging -------------------------------------------------------------------------------------------------

# press_at X Y: begins a drag, in pressed_x and pressed_y.
press_at() {
    # shellcheck disable=SC2034 # for those who source this
    pressed_x=$1 pressed_y=$2
    xdotool mousemove "$1" "$2" mousedown 1
}

release() {
    xdotool mouseup 1
}

# drag_in_steps COUNT X Y: goes on with a drag, each step as far as that, as fast as it goes.
drag_in_steps() {
    local step
    for ((step = 0; step < $1; ++step)); do
        xdotool mousemove_relative -- "$2" "$3"
    done
}

# watch_pixels X,Y...: notes all that these show from now on. They are numbered from 0.
watch_pixels() {
    local pipe=$PERCHLY_DESKTOP/watch
    [[ -p $pipe ]] || mkfifo "$pipe"
    watched=$PERCHLY_DESKTOP/watched
    "$screen_probe" watch "$@" <"$pipe" >"$watched" &
    watcher=$!
    started+=("$watcher")
    exec {watching}>"$pipe"
    require "the screen is watched" wait_for 3 has_watched $#
}

has_watched() {
    (($(wc -l <"$watched") >= $1))
}

# For as long as there was something to see, and often.
stop_watching() {
    local looks
    exec {watching}>&-
    wait "$watcher"
    looks=$(awk '$1 == "looks" { print $2 }' "$watched")
    check "the screen was looked at all the time ($looks times)" test "$looks" -gt 100
}

# Whether a pixel looked the same all the time but for a thirtieth of it: a window manager that moves a window in two
# steps can be caught between them.
pixel_stayed() {
    awk -v number="$1" '
        $1 != "looks" { end = $3 }
        $1 == number && !first { first = $2 }
        $1 == number && since { total += $3 - since }
        $1 == number { since = $2 == first ? 0 : $3 }
        END {
            print "pixel", number, "was not", first, "for", total + 0, "ms of", end
            exit since || !first || total > end / 30
        }' "$watched"
}

# Whether a pixel was blue all the time.
pixel_stayed_blue() {
    local number colour
    while read -r number colour _; do
        if [[ $number == "$1" ]] && ! is_colour blue "$colour"; then
            echo "pixel $1 was $colour"
            return 1
        fi
    done <"$watched"
}
