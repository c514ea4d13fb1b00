# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The program's windows in each of their states. Whoever sources this has `take NAME`, which keeps a picture, and the
# page server. After windows.sh, accessibility.sh, controls.sh and manager.sh.

visit_surfaces() {
    visit_manager_without_rows
    visit_manager_with_many_rows
    visit_manager
    visit_bookmark_dialog
    visit_sheets
    visit_settings
    visit_about
    require "Perchly runs on" is_running "$perchly"
    stop_perchly
}

start_to_visit() {
    start_perchly
    require "the item appears" wait_for 5 has_main_item
}

visit_manager_without_rows() {
    store_bookmarks
    start_to_visit
    open_manager
    require "the table is empty" wait_for 5 shows_titles
    take manager-without-rows
    stop_perchly
}

visit_manager_with_many_rows() {
    store_many
    start_to_visit
    open_manager
    require "the table has many rows" wait_for 5 locate_control "$manager" "Number 10"
    take manager-with-many-rows
    stop_perchly
}

visit_manager() {
    local has_icon=false title="A title that is far too long for its column, and goes on beyond it"
    set_home_page "$site/"
    store_bookmarks "$(is_on_top=true is_detached=true in_system=true has_icon=true bookmark robin "A robin came to stay" \
        "$site/" "$(symbol 🐦)" '"userAgent":"Robin/1.0"')" "$(bookmark map "🗺 A map of its paths" "$site/second.html")" \
        "$(bookmark news "News & <b>views</b>" "$site/form.html?so=$(printf 'far%.0s' {1..30})")" \
        "$(bookmark long "$title" "$site/keys.html")" "$(bookmark arabic "ملاحظات من الحديقة" "$site/editing.html")"
    start_to_visit
    open_manager
    require "the table has five rows" wait_for 5 locate_control "$manager" "News & <b>views</b>"
    take manager
    click_control "$manager" "🗺 A map of its paths"
    require "a row is selected" wait_for 3 keyboard_is_at "🗺 A map of its paths, $site/second.html"
    take manager-row
    search robin
    require "one row is found" wait_for 3 shows_titles "A robin came to stay"
    take manager-filter
    xdotool key Escape
    click_control "$manager" "Permanently delete this bookmark" "News"
    require "an alert asks" wait_for 5 is_ready_window "Delete Bookmark"
    take delete
    answer_alert "Delete Bookmark" Escape
}

visit_bookmark_dialog() {
    click_control "$manager" "+ New Bookmark"
    require "the bookmark dialog opens" wait_for 5 is_ready_window "Add New Bookmark"
    take bookmark-dialog
    require "with the keyboard in its first field" wait_for 3 keyboard_is_at Title:
    xdotool key Tab Tab Tab Tab Tab
    require "its list of agents has the keyboard" wait_for 3 keyboard_is_at "Browser Agent:"
    xdotool key space
    require "a list of agents opens" wait_for 5 not keyboard_is_at "Browser Agent:"
    take bookmark-dialog-agents
    xdotool key Escape
    require "it closes" wait_for 5 keyboard_is_at "Browser Agent:"
    answer_alert "Add New Bookmark" Escape
    click_control "$manager" "Edit bookmark name or URL" "A robin"
    require "the dialog opens for a bookmark" wait_for 5 is_ready_window "Edit Bookmark"
    require "with an agent of its own" window_has "Edit Bookmark" 'text\|Custom User Agent\|.*\|Robin/1.0'
    take bookmark-dialog-edit
    answer_alert "Edit Bookmark" Escape
}

visit_sheets() {
    import_file "$request_log"
    require "a sheet tells that an import failed" wait_for 10 is_ready_window "Import Failed"
    take import-failed
    answer_alert "Import Failed" Return
    wmctrl -i -c "$(window_titled "$manager")"
    require "the manager closes" wait_for 3 not has_window "$manager"
}

visit_settings() {
    menu_click Settings...
    require "the settings open" wait_for 5 is_ready_window Settings
    take settings
    click_control Settings "Save URL"
    require "an alert tells of the home page" wait_for 5 is_ready_window Saved
    take settings-saved
    answer_alert Saved Return
    click_control Settings "Clear Cache"
    require "an alert asks about the sites' data" wait_for 5 is_ready_window "Clear Cache?"
    take settings-clear
    answer_alert "Clear Cache?" Escape
    click_control Settings "Reset All Data"
    require "an alert asks about everything" wait_for 5 is_ready_window "Reset Everything?"
    take settings-reset
    answer_alert "Reset Everything?" Escape
    wmctrl -i -c "$(window_titled Settings)"
    require "the settings close" wait_for 3 not has_window Settings
}

visit_about() {
    menu_click About
    require "About opens" wait_for 5 is_ready_window About
    take about
    wmctrl -i -c "$(window_titled About)"
    require "About closes" wait_for 3 not has_window About
}
