# shellcheck shell=bash disable=SC2034,SC2154 # others of the parts set and use these
# A default browser for the desktop: a program that notes what it is asked to open.

opened=$PERCHLY_DESKTOP/opened

make_default_browser() {
    local browser=$PERCHLY_DESKTOP/default-browser
    printf '#!/bin/sh\necho "$1" >>"%s"\n' "$opened" >"$browser"
    chmod +x "$browser"
    mkdir -p "$XDG_DATA_HOME/applications" "$XDG_CONFIG_HOME"
    printf '[Desktop Entry]\nType=Application\nName=Notes\nExec=%s %%u\nMimeType=%s\n' "$browser" \
        'x-scheme-handler/http;x-scheme-handler/https;' >"$XDG_DATA_HOME/applications/notes.desktop"
    printf '[Default Applications]\nx-scheme-handler/http=notes.desktop\nx-scheme-handler/https=notes.desktop\n' \
        >"$XDG_CONFIG_HOME/mimeapps.list"
}

has_opened() {
    [[ -f $opened && $(<"$opened") == "$1" ]]
}
