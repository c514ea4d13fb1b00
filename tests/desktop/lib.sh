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

# Rectangle of the panel that the window manager knows: WIDTHxHEIGHT+X+Y.
panel_rectangle() {
    local width=${PERCHLY_DESKTOP_SCREEN:-1280x800} height
    height=${width#*x} width=${width%x*}
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) echo "${width}x30+0+$((height - 30))" ;;
        left) echo "30x${height}+0+0" ;;
        right) echo "30x${height}+$((width - 30))+0" ;;
        *) echo "${width}x30+0+0" ;;
    esac
}

picture_of_panel() {
    import -silent -window root -crop "$(panel_rectangle)" +repage "$1"
}

# Remembers the panel as it is without Perchly; find_icon looks for what has come since.
remember_empty_panel() {
    picture_of_panel "$PERCHLY_DESKTOP/panel-empty.png"
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
content_width=600
content_height=700
toolbar_height=40

# Sets LEFT and TOP to the content's corner. Around it the window has an equal margin for the shadow, except on
# the panel's side, where the arrow is.
locate_content() {
    local margin
    locate_popover || return 1
    margin=$(((WIDTH - content_width) / 2))
    LEFT=$((X + margin))
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) TOP=$((Y + margin)) ;;
        *) TOP=$((Y + HEIGHT - margin - content_height)) ;;
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
    click_at $((X + 60)) $((Y + 20))
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

# Whether the popover's near edge is at the panel's, and the icon is over its width.
popover_is_at_icon() {
    locate_popover || return 1
    local distance
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        bottom) distance=$((ICON_Y - (Y + HEIGHT))) ;;
        *) distance=$((Y - ICON_Y)) ;;
    esac
    echo "popover ${WIDTH}x$HEIGHT+$X+$Y, icon $ICON_X,$ICON_Y"
    ((distance >= 0 && distance <= 40 && X <= ICON_X && ICON_X <= X + WIDTH))
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
