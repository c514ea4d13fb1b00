# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The whole journey of a bookmark, by mouse and keyboard alone. Whoever sources this has `take NAME`, which keeps a
# picture, and the page server. After windows.sh, dragging.sh, accessibility.sh, controls.sh and manager.sh.

wren="🐦 Wren"
backup=$PERCHLY_DESKTOP/home/wren.json

main_menu_has() {
    menu_has standard "$1"
}

# wren_is FIELD VALUE: in the file.
wren_is() {
    has_stored "$wren_id" "$@"
}

# Whether the agent that the page was last asked for with is one of Chrome.
last_agent_is_chrome() {
    grep -A1 '^GET /$' "$request_log" | tail -n 1 | grep -q '^User-Agent: .*Chrome/'
}

# The menu of the bookmark's own item, for keys.
open_own_menu() {
    require "its icon is in the panel" wait_for 5 find_icon "$wren_id"
    xdotool mousemove "$ICON_X" "$ICON_Y" click 3
    require "a right click opens its menu" wait_for 5 has_panel_menu
    require "painted" wait_for 5 panel_menu_is_painted
}

journey() {
    begin_the_journey
    add_wren
    find_wren
    show_wren_in_menus
    read_wren
    lose_wren_and_find_it_again
    leave_everything
}

begin_the_journey() {
    start_perchly
    require "the first start shows three bookmarks beside the program" wait_for 10 panel_shows 4
    check "of the five in the file" has_stored_titles "Google Translate" Youtube ChatGPT Slack Perchly
    take first-start
    open_manager
    check "the table has them all" wait_for 3 shows_titles "Google Translate" Youtube ChatGPT Slack Perchly
    take manager
}

add_wren() {
    click_control "$manager" "+ New Bookmark"
    require "a dialog asks for a bookmark" wait_for 5 is_ready_window "Add New Bookmark"
    require "in its first field" wait_for 3 keyboard_is_at Title:
    enter "$wren"
    xdotool key Tab
    xdotool type --delay 5 "$site/"
    xdotool key Tab
    enter 🐦
    require "an emoji can be its icon" wait_for 3 window_has "Add New Bookmark" 'text\|Custom Icon.*\|🐦'
    take new-bookmark
    answer_alert "Add New Bookmark" Return
    require "it is in the file" wait_for 3 has_stored_titles "Google Translate" Youtube ChatGPT Slack Perchly "$wren"
    wren_id=$(id_of "$wren")
    check "with its address" wren_is url "\"$site/\""
    check "and its icon" wren_is sfSymbolName '"🐦"'
    check "the table has it" wait_for 3 shows_titles "Google Translate" Youtube ChatGPT Slack Perchly "$wren"
    check "the menu does not" not main_menu_has "$wren"
    take added
}

find_wren() {
    search wren
    check "searching finds it" wait_for 3 shows_titles "$wren"
    take found
}

show_wren_in_menus() {
    click_control "$manager" "Pin to main menu quick access" "$wren"
    check "it is pinned in the file" wait_for 3 wren_is isPinned true
    check "and in the menu" wait_for 3 main_menu_has "$wren"
    check "and its row says so" wait_for 3 locate_control "$manager" "Unpin from main menu" "$wren"
    take pinned
    click_control "$manager" "Add as a separate icon to system menubar" "$wren"
    check "in the file it has an icon" wait_for 3 wren_is isAddedToMenuBar true
    require "which comes into the panel" wait_for 10 panel_shows 5
    take menu-bar
    open_own_menu
    xdotool key Down Down Down Down Down Down Right Down Down
    take agents
    xdotool key Return
    require "the menu closes" wait_for 5 has_no_panel_menu
    check "another agent is in the file" wait_for 3 wren_is userAgent \
        '"Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/131.0.0.0 Safari/537.36"'
    check "its menu shows it" equals "$(menu_rows "$wren_id" | grep -c '^1|checked|enabled|Chrome$')" 1
}

read_wren() {
    click_icon "$wren_id"
    require "its own icon opens its page" wait_for 10 page_looks blue
    check "asked for as that agent does" last_agent_is_chrome
    take page
    open_own_menu
    xdotool key Down Return
    require "which moves to a window" wait_for 10 window_page_looks "$wren" blue
    check "with the keyboard" wait_for 3 is_active_window "$wren"
    check "out of the popover" wait_for 3 has_no_popover
    take detached
    locate_window "$wren"
    wide=$WIDTH
    press_at $((X + WIDTH - 2)) $((Y + HEIGHT / 2))
    drag_in_steps 12 -8 0
    release
    require "the window follows the drag of an edge" wait_for 5 wren_has_become_narrower
    require "and the file" wait_for 5 wren_size_is_stored
    take resized
    wmctrl -i -c "$(window_titled "$wren")"
    require "it closes" wait_for 3 not has_window "$wren"
}

wren_has_become_narrower() {
    locate_window "$wren" && ((WIDTH < wide - 40 * scale)) && window_page_looks "$wren" blue
}

wren_size_is_stored() {
    locate_window "$wren" && [[ $(stored_size) == "$((WIDTH / scale)) $((HEIGHT / scale))" ]]
}

# The same bookmarks in two files, however they are written.
have_same_bookmarks() {
    python3 -c 'import json, sys
first, second = (json.load(open(name))["bookmarks"] for name in sys.argv[1:])
sys.exit(first != second)' "$@"
}

lose_wren_and_find_it_again() {
    open_manager
    click_control "$manager" Export
    type_file "Export Bookmarks" "$backup"
    take export
    xdotool key Return
    require "a sheet tells of the export" wait_for 5 is_ready_window "Export Successful"
    check "the file has the same bookmarks" have_same_bookmarks "$backup" "$(bookmark_file)"
    take exported
    answer_alert "Export Successful" Return

    click_control "$manager" "Permanently delete this bookmark" "$wren"
    require "an alert asks first" wait_for 5 is_ready_window "Delete Bookmark"
    take delete
    answer_alert "Delete Bookmark" Return
    require "it is gone from the file" wait_for 3 has_stored_titles "Google Translate" Youtube ChatGPT Slack Perchly
    check "from the menu" wait_for 3 not main_menu_has "$wren"
    check "from the panel" wait_for 5 panel_shows 4
    check "from the table" wait_for 3 shows_titles "Google Translate" Youtube ChatGPT Slack Perchly
    take deleted

    click_control "$manager" Import
    type_file "Import Bookmarks" "$backup"
    take import
    xdotool key Return
    require "a sheet tells of the import" wait_for 5 is_ready_window "Import Successful"
    check "the file has all that was exported" have_same_bookmarks "$backup" "$(bookmark_file)"
    check "it is in the menu" wait_for 3 main_menu_has "$wren"
    check "and in the panel" wait_for 10 panel_shows 5
    take imported
    answer_alert "Import Successful" Return
    check "and in the table" wait_for 3 shows_titles "Google Translate" Youtube ChatGPT Slack Perchly "$wren"
}

home_page_is_stored() {
    grep -qxF "HomePageURL=$1" "$XDG_CONFIG_HOME/Perchly/preferences.ini"
}

has_home_page() {
    grep -q '^HomePageURL=' "$XDG_CONFIG_HOME/Perchly/preferences.ini"
}

leave_everything() {
    # From below: Quit, About, Settings.
    choose_in_menu Up Up Up Return
    require "the settings open" wait_for 5 is_ready_window Settings
    require "in the field for the home page" wait_for 3 keyboard_is_at "Home Page"
    xdotool type --delay 5 "$site/second.html"
    click_control Settings "Save URL"
    require "an alert tells that the home page is saved" wait_for 5 is_ready_window Saved
    check "it is" home_page_is_stored "$site/second.html"
    take home-page
    answer_alert Saved Return
    click_control Settings "Reset All Data"
    require "an alert asks first" wait_for 5 is_ready_window "Reset Everything?"
    take reset
    answer_alert "Reset Everything?" Return
    require "the file has the first bookmarks" wait_for 3 has_stored_titles "Google Translate" Youtube ChatGPT Slack Perchly
    check "and no home page is stored" wait_for 3 not has_home_page
    check "the menu is as it was" wait_for 3 not main_menu_has "$wren"
    check "and the panel" wait_for 5 panel_shows 4
    check "and the table" wait_for 3 shows_titles "Google Translate" Youtube ChatGPT Slack Perchly
    take as-before
    choose_in_menu Up Return
    require "Quit ends the program" wait_for 5 is_gone "$perchly"
    status=0
    wait "$perchly" || status=$?
    check "with a success" equals "$status" 0
    check "its icons are gone" wait_for 5 panel_shows 0
    check "the file stays" has_stored_titles "Google Translate" Youtube ChatGPT Slack Perchly
    take left
}
