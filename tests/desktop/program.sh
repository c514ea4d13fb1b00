# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# The program, what it stores, and the pages that it is shown.

program=$build_dir/perchly
log=$PERCHLY_DESKTOP/perchly.log
request_log=$PERCHLY_DESKTOP/requests.log

# Starts Perchly as a user's session does; its process is $perchly.
start_perchly() {
    "$program" >>"$log" 2>&1 </dev/null &
    perchly=$!
    started+=("$perchly")
}

# stop_perchly: ends the program, as a session that ends does.
stop_perchly() {
    end_process "$perchly"
    require "Perchly leaves the bus" wait_for 5 not is_on_bus
    require "with its item" wait_for 5 not has_main_item
}

# restart_perchly: ends the program, and starts it with what it has stored.
restart_perchly() {
    require "Perchly is on the bus" is_on_bus
    stop_perchly
    start_perchly
    require "it starts again" wait_for 5 has_main_item
}

# Whether the bus knows of a Perchly: for a moment also of one that has just ended.
is_on_bus() {
    [[ $(gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner org.perchly.Perchly) == "(true,)" ]]
}

# All processes below one, itself included.
process_tree() {
    local child
    echo "$1"
    for child in $(pgrep -P "$1"); do
        process_tree "$child"
    done
}

log_has() {
    [[ -f $log ]] && grep -qF -- "$1" "$log"
}

times_logged() {
    grep -cF -- "$1" "$log" || true
}

was_logged() {
    [[ $(times_logged "$1") == "$2" ]]
}

# --- Preferences ----------------------------------------------------------------------------------------------

# No start asks for anything beyond this machine: nothing answers there, unless the test has a page server.
favicon_service=http://127.0.0.1:9
home_page=

write_preferences() {
    mkdir -p "$XDG_CONFIG_HOME/Perchly"
    printf '[Preferences]\nHomePageURL=%s\nFaviconServiceURL=%s\n' "$home_page" "$favicon_service" \
        >"$XDG_CONFIG_HOME/Perchly/preferences.ini"
}
write_preferences

set_home_page() {
    home_page=$1
    write_preferences
}

# --- Bookmarks ------------------------------------------------------------------------------------------------

bookmark_file() {
    echo "$XDG_DATA_HOME/Perchly/bookmarks.json"
}

# bookmark ID TITLE ADDRESS [FIELD...]: one for the file. Put has_icon=true, is_on_top=true, is_detached=true or
# in_system=true before the call.
bookmark() {
    local IFS=,
    local more="${*:4}"
    printf '{"id":"%s","title":"%s","url":"%s","isPinned":true,"createdAt":0,"shouldReloadOnOpen":false,' "${@:1:3}"
    printf '"isAddedToMenuBar":%s,"isAlwaysOnTop":%s,"prefersDetached":%s,"openInSystemBrowser":%s%s}' \
        "${has_icon:-false}" "${is_on_top:-false}" "${is_detached:-false}" "${in_system:-false}" "${more:+,$more}"
}

# size WIDTH HEIGHT: the fields of a bookmark that was resized.
size() {
    printf '"preferredWidth":%s,"preferredHeight":%s' "$1" "$2"
}

# symbol NAME: the field of a bookmark whose item shows a symbol or a text.
symbol() {
    printf '"sfSymbolName":"%s"' "$1"
}

# store_bookmarks [BOOKMARK...]: what the next start finds. Where none has an item, the main item is alone.
store_bookmarks() {
    local IFS=,
    mkdir -p "$(dirname "$(bookmark_file)")"
    printf '{"bookmarks":[%s]}' "$*" >"$(bookmark_file)"
}

# stored ID FIELD: what the file says of a bookmark, as JSON; nothing where the field is absent.
stored() {
    python3 -c 'import json, sys
for bookmark in json.load(open(sys.argv[1]))["bookmarks"]:
    if bookmark["id"] == sys.argv[2] and sys.argv[3] in bookmark:
        print(json.dumps(bookmark[sys.argv[3]], ensure_ascii=False))' "$(bookmark_file)" "$1" "$2"
}

has_stored() {
    [[ $(stored "$1" "$2") == "$3" ]]
}

# WIDTH HEIGHT of the first bookmark in the file that has been resized.
stored_size() {
    python3 -c 'import json, sys
for bookmark in json.load(open(sys.argv[1]))["bookmarks"]:
    if "preferredWidth" in bookmark:
        sys.exit("{preferredWidth:g} {preferredHeight:g}".format(**bookmark))' "$(bookmark_file)" 2>&1 || true
}

# --- Pages ----------------------------------------------------------------------------------------------------

# Starts the web server with the tests' pages and icons; $site is its address.
start_page_server() {
    coproc SERVER { exec "$build_dir/perchly_page_server" "$root/tests/support/pages" "$request_log"; }
    local port
    # The server ends with its input, and so with this script, whatever happens.
    exec {server_input}>&"${SERVER[1]}"
    read -r port <&"${SERVER[0]}" || fail "the page server did not start"
    : >>"$request_log"
    site=http://127.0.0.1:$port
    favicon_service=$site
    write_preferences
}

# asked_for PATH COUNT: whether the page was asked for exactly so many times.
asked_for() {
    [[ $(grep -c -E "^GET $1\$" "$request_log") == "$2" ]]
}
