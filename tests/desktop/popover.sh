# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The popover: its place, its arrow, its inside.

# The content of a browser that nobody has resized, and the toolbar on top of it.
content_width=$((600 * scale))
content_height=$((700 * scale))
toolbar_height=$((40 * scale))

# Not a detached window, which is of the same class.
popover_window() {
    local window
    window=$(window_titled Perchly)
    [[ -n $window ]] && printf '%d\n' "$window"
}

has_popover() {
    popover_window >/dev/null
}

has_no_popover() {
    ! has_popover
}

# Sets X, Y, WIDTH and HEIGHT to the popover's place on the screen.
locate_popover() {
    local window
    window=$(popover_window) || return 1
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
}

popover_has_focus() {
    [[ $(xdotool getwindowfocus 2>/dev/null) == "$(popover_window)" ]] ||
        [[ $(xdotool getactivewindow 2>/dev/null) == "$(popover_window)" ]]
}

# Sets LEFT and TOP to the content's corner. Around it the window has an equal margin for the shadow, except on
# the panel's side, where the arrow is.
locate_content() {
    local margin
    locate_popover || return 1
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        left | right) margin=$(((HEIGHT - content_height) / 2)) ;;
        *) margin=$(((WIDTH - content_width) / 2)) ;;
    esac
    LEFT=$((X + margin))
    TOP=$((Y + margin))
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        top) TOP=$((Y + HEIGHT - margin - content_height)) ;;
        left) LEFT=$((X + WIDTH - margin - content_width)) ;;
    esac
}

# The same, where it must be there.
require_content() {
    require "the popover is there" wait_for 2 locate_content
}

# What every place of the panel is tried with: Open Browser, by the icon, and a look at where the popover is then.
# $1 names the picture.
check_popover_at_icon() {
    require "the icon is in the panel" wait_for 5 find_icon
    click_at "$ICON_X" "$ICON_Y"
    require "the menu opens" wait_for 5 has_panel_menu
    # By keys, because Perchly looks where the pointer is when the menu opens; a hand is slower than xdotool.
    xdotool key Down Return
    require "the popover opens" wait_for 10 has_popover
    require "with the home page" wait_for 10 page_looks blue
    check "it is on its monitor, beside the panel" popover_is_on_monitor
    check "its arrow points at the icon" arrow_points_at_icon
    picture "$1"
}

type_address() {
    require_content
    xdotool mousemove $((LEFT + content_width / 2)) $((TOP + toolbar_height / 2)) click --repeat 3 --delay 30 1
    xdotool key ctrl+a type --delay 5 "$1"
    xdotool key Return
}

# Whether the top of the page has the colour of the tests' first page (blue), second (green), or none (white).
page_looks() {
    locate_content || return 1
    is_colour "$1" "$(import -silent -window root -crop \
        "20x20+$((LEFT + content_width / 2))+$((TOP + toolbar_height + 8))" +repage -resize '1x1!' -depth 8 rgb:- |
        od -An -tx1 | tr -d ' ')"
}

page_does_not_look() {
    ! page_looks "$1"
}

arrow_length=$((10 * scale))

picture_of_arrow() {
    local area=${WIDTH}x$arrow_length colour turn=()
    # What is off the screen is in no picture.
    STRIP_X=$((X > 0 ? X : 0)) STRIP_Y=$((Y > 0 ? Y : 0))
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) STRIP_Y=$((Y + HEIGHT - arrow_length)) turn=(-flip) ;;
        left) area=${arrow_length}x$HEIGHT turn=(-transpose) ;;
        right) area=${arrow_length}x$HEIGHT STRIP_X=$((X + WIDTH - arrow_length)) turn=(-flop -transpose) ;;
    esac
    colour=$(import -silent -window root -crop "1x1+$((LEFT + 4 * scale))+$((TOP + toolbar_height / 2))" -depth 8 rgb:- |
        od -An -tx1 | tr -d ' ')
    import -silent -window root -crop "$area+$STRIP_X+$STRIP_Y" +repage png:- |
        convert - "${turn[@]}" +repage -alpha off -fuzz 4% -fill black +opaque "#$colour" -fuzz 0 -fill white +opaque black "$1"
}

# white_in FILE ROWS FROM: prints how wide the white is in so many rows from that one on, and where it begins.
white_in() {
    convert "$1" -crop "x$2+0+$3" +repage -bordercolor black -border 1 -trim -format '%w %X' info: 2>/dev/null
}

# Sets ARROW_X and ARROW_Y to the tip of the popover's arrow; fails unless there is something that grows from a tip.
find_arrow() {
    local strip=$PERCHLY_DESKTOP/arrow.png tip_width tip_start foot_width along
    locate_content || return 1
    picture_of_arrow "$strip"
    read -r tip_width tip_start < <(white_in "$strip" $((4 * scale)) 0)
    read -r foot_width _ < <(white_in "$strip" $((2 * scale)) $((8 * scale)))
    ((tip_start > 0 && tip_width <= 8 * scale && foot_width >= 14 * scale)) || return 1
    along=$((tip_start - 1 + tip_width / 2))
    ARROW_X=$STRIP_X ARROW_Y=$STRIP_Y
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) ARROW_X=$((STRIP_X + along)) ARROW_Y=$((STRIP_Y + arrow_length)) ;;
        left) ARROW_Y=$((STRIP_Y + along)) ;;
        right) ARROW_X=$((STRIP_X + arrow_length)) ARROW_Y=$((STRIP_Y + along)) ;;
        *) ARROW_X=$((STRIP_X + along)) ;;
    esac
}

# Whether the arrow's tip is at the panel's edge, and no farther from the icon's middle than the corner of the screen
# makes it.
arrow_points_at_icon() {
    local along across
    find_arrow || return 1
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        left | right) along=$((ARROW_Y - ICON_Y)) across=$((ARROW_X - ICON_X)) ;;
        *) along=$((ARROW_X - ICON_X)) across=$((ARROW_Y - ICON_Y)) ;;
    esac
    echo "arrow $ARROW_X,$ARROW_Y, icon $ICON_X,$ICON_Y"
    ((${along#-} <= 3 * scale && ${across#-} >= 11 * scale && ${across#-} <= 20 * scale))
}

# Whether all of the popover's box is on its icon's monitor and off the panel.
popover_is_on_monitor() {
    local left top right bottom
    locate_content || return 1
    locate_monitor
    left=$MONITOR_X top=0 right=$((MONITOR_X + MONITOR_WIDTH)) bottom=$MONITOR_HEIGHT
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) bottom=$((bottom - 30 * scale)) ;;
        left) left=$((left + 30 * scale)) ;;
        right) right=$((right - 30 * scale)) ;;
        *) top=$((30 * scale)) ;;
    esac
    echo "content ${content_width}x$content_height+$LEFT+$TOP, room $left,$top to $right,$bottom"
    ((LEFT > left && TOP > top && LEFT + content_width < right && TOP + content_height < bottom))
}
