# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# Dragging, and what is on the screen meanwhile.

# press_at X Y: begins a drag, in pressed_x and pressed_y.
press_at() {
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
