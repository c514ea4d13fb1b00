# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The screen: pictures, pixels, the pointer, windows by their titles.

screen_probe=$build_dir/perchly_screen_probe

screenshot() {
    import -silent -window root "$1"
}

# picture NAME: keeps a picture of the screen for people to look at.
picture() {
    mkdir -p "$build_dir/desktop-tests"
    screenshot "$build_dir/desktop-tests/$(basename "$0" .test)-$1.png"
}

# Sets MONITOR_X, MONITOR_WIDTH and MONITOR_HEIGHT of the monitor that has the panel.
locate_monitor() {
    local size=${PERCHLY_DESKTOP_SCREEN:-1280x800}
    MONITOR_X=0 MONITOR_WIDTH=${size%x*} MONITOR_HEIGHT=${size#*x}
    [[ ${PERCHLY_DESKTOP_MONITORS:-one} != right ]] || MONITOR_X=$MONITOR_WIDTH
}

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

click_at() {
    xdotool mousemove "$1" "$2" click 1
}

pointer_has_shape() {
    [[ $("$screen_probe" cursor) == "$1" ]]
}

# The window with that title, shown or not.
window_titled() {
    wmctrl -l 2>/dev/null | awk -v title="$1" '{ id = $1; $1 = $2 = $3 = ""; sub(/^ +/, "") } $0 == title && !found++ { print id }'
}

has_window() {
    [[ -n $(window_titled "$1") ]]
}
