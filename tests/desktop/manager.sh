# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The bookmark manager and what it opens, in the hands of a user. After controls.sh.

manager="Bookmarks Manager"

# choose_in_menu KEY...: opens the main item's menu by its icon, and goes through it.
choose_in_menu() {
    require "the icon is in the panel" wait_for 5 find_icon
    click_at "$ICON_X" "$ICON_Y"
    require "the menu opens" wait_for 5 has_panel_menu
    require "painted" wait_for 5 panel_menu_is_painted
    xdotool key "$@"
    require "a row is chosen" wait_for 5 has_no_panel_menu
}

open_manager() {
    choose_in_menu Down Down Return
    require "the manager opens" wait_for 10 is_ready_window "$manager"
    require "with its table" wait_for 5 locate_control "$manager" Title
}

# The titles in the table's rows that are in sight, a line each.
shown_titles() {
    read_accessibility window "$manager" | sed -n 's/^table row|\(..*\), [^,]*|.*/\1/p'
}

# shows_titles [TITLE...]: whether the rows in sight have these and no others.
shows_titles() {
    [[ $(shown_titles) == "$(printf '%s\n' "$@")" ]]
}

# search TEXT: types it in place of what the search field has.
search() {
    click_control "$manager" "Search bookmarks..."
    require "the search field has the keyboard" wait_for 3 keyboard_is_at "Search bookmarks..."
    xdotool key ctrl+a key BackSpace type --delay 5 "$1"
}

# 500 bookmarks, "Number 0" and so on, with the ids many-0 and so on.
store_many() {
    mkdir -p "$(dirname "$(bookmark_file)")"
    python3 -c 'import json
names = ("isPinned", "shouldReloadOnOpen", "isAddedToMenuBar", "isAlwaysOnTop", "prefersDetached", "openInSystemBrowser")
print(json.dumps({"bookmarks": [
    {"id": f"many-{index}", "title": f"Number {index}", "url": f"http://127.0.0.1:9/{index}", "createdAt": 0}
    | dict.fromkeys(names, False) for index in range(500)]}))' >"$(bookmark_file)"
}

# The id of the first bookmark with that title.
id_of() {
    python3 -c 'import json, sys
for bookmark in json.load(open(sys.argv[1]))["bookmarks"]:
    if bookmark["title"] == sys.argv[2]:
        sys.exit(print(bookmark["id"]))
sys.exit(1)' "$(bookmark_file)" "$1"
}

stored_titles() {
    python3 -c 'import json, sys
for bookmark in json.load(open(sys.argv[1]))["bookmarks"]:
    print(bookmark["title"])' "$(bookmark_file)"
}

has_stored_titles() {
    [[ $(stored_titles) == "$(printf '%s\n' "$@")" ]]
}

# answer_alert TITLE KEY
answer_alert() {
    require "\"$1\" has the keyboard" wait_for 5 is_ready_window "$1"
    xdotool key "$2"
    require "\"$1\" is answered" wait_for 5 not has_window "$1"
}

# type_file PANEL FILE: in the panel for files, whose first slash opens a field for a path.
type_file() {
    require "the panel \"$1\" has the keyboard" wait_for 10 is_ready_window "$1"
    [[ $1 != Export* ]] || require "with the name" wait_for 5 window_has "$1" 'text\|[^|]*\|[^|]*focused[^|]*\|.*'
    [[ $1 != Export* ]] || xdotool key ctrl+a
    xdotool type --delay 5 "$2"
    require "the path is typed" wait_for 5 window_has "$1" "text\|[^|]*\|[^|]*\|$2"
}

# choose_file PANEL FILE
choose_file() {
    type_file "$@"
    xdotool key Return
}

# import_file FILE
import_file() {
    click_control "$manager" Import
    choose_file "Import Bookmarks" "$1"
}

# export_to FILE
export_to() {
    click_control "$manager" Export
    choose_file "Export Bookmarks" "$1"
}

# has_alert TITLE TEXT: whether there is such a one, with these words.
has_alert() {
    window_has "$1" "label\|$1\|.*" && window_has "$1" "label\|$2\|.*"
}
