# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The panel: where the icons are, and the menus that it opens.

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

# Remembers the panel as it is without Perchly; icons are what has come since.
remember_empty_panel() {
    require "the panel is painted" wait_for 5 has_empty_panel
}

# The panel has one colour, the background behind it many.
has_empty_panel() {
    picture_of_panel "$PERCHLY_DESKTOP/panel-empty.png"
    [[ $(convert "$PERCHLY_DESKTOP/panel-empty.png" -format %k info:) == 1 ]]
}

# --- Icons ----------------------------------------------------------------------------------------------------

# Where the icons in the panel begin and end, along it, a line each. Between two of them there is more room than
# between the letters of a text.
icon_extents() {
    local length
    picture_of_panel "$PERCHLY_DESKTOP/panel-now.png"
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        left | right) length=1x$MONITOR_HEIGHT ;;
        *) length=${MONITOR_WIDTH}x1 ;;
    esac
    convert "$PERCHLY_DESKTOP/panel-empty.png" "$PERCHLY_DESKTOP/panel-now.png" -compose difference -composite \
        -colorspace gray -threshold 10% -scale "$length!" -threshold 0 -depth 8 gray:- | od -An -v -tu1 -w1 |
        awk -v gap=$((6 * scale)) '
            $1 && (!last || NR - last > gap) { first[++count] = NR - 1 }
            $1 { last = NR; end[count] = NR }
            END { for (icon = 1; icon <= count; ++icon) print first[icon], end[icon] }'
}

# Looks where the icons are; fails when one has moved since the last look: the panel finds their places in steps.
icons=
icons_have_settled() {
    local before=$icons
    locate_monitor
    icons=$(icon_extents)
    [[ $icons == "$before" ]]
}

# panel_shows COUNT: whether it has settled with so many icons.
panel_shows() {
    icons_have_settled && (($(grep -c . <<<"$icons") == $1))
}

# The Ids of the items in the order that the panel has for them.
panel_order() {
    local shown
    shown=$("$probe" ids 2>/dev/null) || return 1
    xfconf-query --channel xfce4-panel --property /plugins/plugin-2/known-items 2>/dev/null | grep -Fx "$shown"
}

# find_icon [ID]: sets ICON_X and ICON_Y to the middle of the item's icon. Fails while not every item has a picture.
find_icon() {
    local order panel first='' end=''
    icons_have_settled || return 1
    order=$(panel_order) || return 1
    [[ $(wc -l <<<"$order") == "$(wc -l <<<"$icons")" ]] || return 1
    read -r first end < <(paste -d' ' <(echo "$order") <(echo "$icons") | sed -n "s/^$(item_id "$@") //p") || true
    [[ -n $end ]] || return 1
    panel=$(panel_rectangle)
    panel=${panel#*+}
    ICON_X=$((${panel%+*} + 15 * scale)) ICON_Y=$((${panel#*+} + 15 * scale))
    case ${PERCHLY_DESKTOP_PANEL:-top} in
        left | right) ICON_Y=$((${panel#*+} + (first + end) / 2)) ;;
        *) ICON_X=$((${panel%+*} + (first + end) / 2)) ;;
    esac
}

# click_icon [ID]: a left click, as a hand does it.
click_icon() {
    require "the icon${1:+ of \"$1\"} is in the panel" wait_for 5 find_icon "$@"
    click_at "$ICON_X" "$ICON_Y"
}

# picture_of_icon FILE [ID]: the icon's square in the panel.
picture_of_icon() {
    local side=$((30 * scale))
    require "the icon${2:+ of \"$2\"} is in the panel" wait_for 5 find_icon "${@:2}"
    import -silent -window root -crop "${side}x$side+$((ICON_X - side / 2))+$((ICON_Y - side / 2))" +repage "$1"
}

# --- Menus ----------------------------------------------------------------------------------------------------

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
