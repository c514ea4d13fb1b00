# shellcheck shell=bash
# What the desktop tests and the tour have in common. A script that sources this runs inside a desktop
# (scripts/desktop run) and finds the programs in $PERCHLY_BUILD_DIR.

tests_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=scripts/lib.sh
source "$tests_root/scripts/lib.sh"

build_dir=${PERCHLY_BUILD_DIR:-$root/build/release}
probe=$build_dir/perchly_status_probe
program=$build_dir/perchly
log=$PERCHLY_DESKTOP/perchly.log
request_log=$PERCHLY_DESKTOP/requests.log
started=() # ended with the test
scale=${GDK_SCALE:-1}

# --- The frame of a test --------------------------------------------------------------------------------------

failures=0

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

# --- The program ----------------------------------------------------------------------------------------------

# Starts Perchly as a user's session does; its process is $perchly.
start_perchly() {
    "$program" >>"$log" 2>&1 </dev/null &
    perchly=$!
    started+=("$perchly")
}

set_home_page() {
    mkdir -p "$XDG_CONFIG_HOME/Perchly"
    printf '[Preferences]\nHomePageURL=%s\n' "$1" >"$XDG_CONFIG_HOME/Perchly/preferences.ini"
}

bookmark_file() {
    echo "$XDG_DATA_HOME/Perchly/bookmarks.json"
}

log_has() {
    [[ -f $log ]] && grep -qF -- "$1" "$log"
}

# All processes below one, itself included.
process_tree() {
    local child
    echo "$1"
    for child in $(pgrep -P "$1"); do
        process_tree "$child"
    done
}

# --- Status items and menus, over the bus ---------------------------------------------------------------------

# SERVICE PATH of the main item: the one whose click opens its menu.
main_item() {
    local item found
    found=$("$probe" items 2>/dev/null) || return 1
    while read -r item; do
        [[ $item == *" /org/ayatana/NotificationItem/"* ]] && { echo "$item"; return; }
    done <<<"$found"
    return 1
}

has_main_item() {
    main_item >/dev/null
}

item_property() {
    local item
    item=$(main_item) || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" property $item "$1"
}

# The main item's menu, a row a line: DEPTH|TYPE|enabled or disabled|LABEL.
menu_rows() {
    local item
    item=$(main_item) || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" menu $item
}

menu_click() {
    local item
    item=$(main_item) || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" click $item "$1"
}

# --- Windows --------------------------------------------------------------------------------------------------

# The popover's window: of class perchly and on the screen. Prints its number.
popover_window() {
    local window
    window=$(xdotool search --onlyvisible --class '^(org\.perchly\.)?[Pp]erchly$' 2>/dev/null | tail -n 1)
    [[ -n $window ]] && echo "$window"
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

click_at() {
    xdotool mousemove "$1" "$2" click 1
}

has_window_named() {
    xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1
}

# A menu of the panel: an override-redirect window of the panel's, larger than an icon.
panel_menu_window() {
    local window
    for window in $(xdotool search --onlyvisible --class '^[Xx]fce4-panel$|^[Ww]rapper' 2>/dev/null); do
        if xwininfo -id "$window" | grep -q 'Override Redirect State: yes'; then
            echo "$window"
            return
        fi
    done
    return 1
}

has_panel_menu() {
    panel_menu_window >/dev/null
}

# A menu with its texts has many colours; one that is only mapped has none.
panel_menu_is_painted() {
    (($(import -silent -window "$(panel_menu_window)" -format %k info:) > 32))
}

has_no_panel_menu() {
    ! has_panel_menu
}

# --- Pictures -------------------------------------------------------------------------------------------------

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

# Rectangle of the panel: WIDTHxHEIGHT+X+Y.
panel_rectangle() {
    local thickness=$((30 * scale))
    locate_monitor
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) echo "${MONITOR_WIDTH}x$thickness+$MONITOR_X+$((MONITOR_HEIGHT - thickness))" ;;
        left) echo "${thickness}x$MONITOR_HEIGHT+$MONITOR_X+0" ;;
        right) echo "${thickness}x$MONITOR_HEIGHT+$((MONITOR_X + MONITOR_WIDTH - thickness))+0" ;;
        *) echo "${MONITOR_WIDTH}x$thickness+$MONITOR_X+0" ;;
    esac
}

picture_of_panel() {
    import -silent -window root -crop "$(panel_rectangle)" +repage "$1"
}

# Remembers the panel as it is without Perchly; find_icon looks for what has come since.
remember_empty_panel() {
    require "the panel is painted" wait_for 5 has_empty_panel
}

# The panel has one colour, the background behind it many.
has_empty_panel() {
    picture_of_panel "$PERCHLY_DESKTOP/panel-empty.png"
    [[ $(convert "$PERCHLY_DESKTOP/panel-empty.png" -format %k info:) == 1 ]]
}

# Sets ICON_X and ICON_Y to the middle of what is new in the panel; fails when nothing is, or when it has moved since
# the last look: the panel finds an icon's place in several steps.
icon_box=
find_icon() {
    local box width height panel icon_left icon_top before=$icon_box
    icon_box=
    picture_of_panel "$PERCHLY_DESKTOP/panel-now.png"
    # Nothing new trims to a place of -1.
    box=$(convert "$PERCHLY_DESKTOP/panel-empty.png" "$PERCHLY_DESKTOP/panel-now.png" -compose difference -composite \
        -colorspace gray -threshold 10% -trim -format '%w %h %X %Y' info: 2>/dev/null) || return 1
    read -r width height icon_left icon_top <<<"$box"
    ((icon_left >= 0)) || return 1
    icon_box=$box
    [[ $box == "$before" ]] || return 1
    panel=$(panel_rectangle)
    panel=${panel#*+}
    ICON_X=$((${panel%+*} + ${icon_left#+} + width / 2))
    ICON_Y=$((${panel#*+} + ${icon_top#+} + height / 2))
}

# --- The popover's inside -------------------------------------------------------------------------------------

# The content of a browser that nobody has resized, and the toolbar on top of it.
content_width=$((600 * scale))
content_height=$((700 * scale))
toolbar_height=$((40 * scale))

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

# Open Browser as a user chooses it: by the icon and its menu's first row.
open_browser_in_panel() {
    click_at "$ICON_X" "$ICON_Y"
    require "the menu opens" wait_for 5 has_panel_menu
    choose_first_row
}

choose_first_row() {
    eval "$(xdotool getwindowgeometry --shell "$(panel_menu_window)")"
    click_at $((X + 60 * scale)) $((Y + 20 * scale))
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
    locate_content
    xdotool mousemove $((LEFT + content_width / 2)) $((TOP + toolbar_height / 2)) click --repeat 3 --delay 30 1
    xdotool key ctrl+a type --delay 5 "$1"
    xdotool key Return
}

# Whether the top of the page has the colour of the tests' first page (blue), second (green), or none (white).
page_looks() {
    local red green blue
    locate_content || return 1
    read -r red green blue < <(import -silent -window root -crop \
        "20x20+$((LEFT + content_width / 2))+$((TOP + toolbar_height + 8))" +repage -resize '1x1!' -depth 8 rgb:- | od -An -tu1)
    case $1 in
        blue) ((blue > red + 40 && blue > green + 40)) ;;
        green) ((green > red + 40 && blue < green + 40)) ;;
        white) ((red > 240 && green > 240 && blue > 240)) ;;
    esac
}

page_does_not_look() {
    ! page_looks "$1"
}

# The strip between the popover's box and the panel: white where it has the box's colour, turned so that the panel is
# on top. Sets STRIP_X and STRIP_Y to where on the screen it begins.
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

# --- Accessibility, on a desktop that has it -------------------------------------------------------------------

# Every object on the screen, or with "focus" the one with the keyboard: ROLE|NAME|STATES|TEXT.
read_accessibility() {
    "$tests_root/tests/desktop/accessibility.py" "$@"
}

# --- Pages ----------------------------------------------------------------------------------------------------

# Starts the web server with the tests' pages; $site is its address.
start_page_server() {
    coproc SERVER { exec "$build_dir/perchly_page_server" "$root/tests/support/pages" "$request_log"; }
    local port
    # The server ends with its input, and so with this script, whatever happens.
    exec {server_input}>&"${SERVER[1]}"
    read -r port <&"${SERVER[0]}" || fail "the page server did not start"
    : >>"$request_log"
    # shellcheck disable=SC2034 # for those who source this
    site=http://127.0.0.1:$port
}

# asked_for PATH COUNT: whether the page was asked for exactly so many times.
asked_for() {
    [[ $(grep -c -E "^GET $1\$" "$request_log") == "$2" ]]
}
