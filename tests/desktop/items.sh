# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# Status items and their menus, over the bus. Wherever an item is meant, an absent ID means the main item, whose click
# opens its menu, and the id of a bookmark that bookmark's own.

probe=$build_dir/perchly_status_probe

# The Id by which status areas know an item.
item_id() {
    echo "perchly${1:+-$1}"
}

# Its SERVICE and PATH.
item() {
    "$probe" item "$(item_id "$@")" 2>/dev/null
}

has_item() {
    item "$1" >/dev/null
}

has_main_item() {
    item >/dev/null
}

# item_property NAME [ID]
item_property() {
    local found
    found=$(item "${@:2}") || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" property $found "$1"
}

# The item's menu, a row a line: DEPTH|TYPE|enabled or disabled|LABEL. TYPE also tells the checkmark.
menu_rows() {
    local found
    found=$(item "$@") || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" menu $found
}

# menu_has TYPE LABEL [ID]: whether there is such a row.
menu_has() {
    menu_rows "${@:3}" | grep -qxE "[0-9]\|$1\|enabled\|$2"
}

# menu_click LABEL [ID]
menu_click() {
    local found
    found=$(item "${@:2}") || return 1
    # shellcheck disable=SC2086 # two words
    "$probe" click $found "$1"
}
