# shellcheck shell=bash
# What the desktop tests and the tour have in common. A script that sources this runs inside a desktop
# (scripts/desktop run) and finds the programs in $PERCHLY_BUILD_DIR. Beside it are parts that only some tests need:
# windows.sh, dragging.sh, accessibility.sh.

desktop_tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
source "$desktop_tests/../../scripts/lib.sh"

build_dir=${PERCHLY_BUILD_DIR:-$root/build/release}
scale=${GDK_SCALE:-1}

# shellcheck source=tests/desktop/frame.sh
source "$desktop_tests/frame.sh"
# shellcheck source=tests/desktop/screen.sh
source "$desktop_tests/screen.sh"
# shellcheck source=tests/desktop/program.sh
source "$desktop_tests/program.sh"
# shellcheck source=tests/desktop/items.sh
source "$desktop_tests/items.sh"
# shellcheck source=tests/desktop/panel.sh
source "$desktop_tests/panel.sh"
# shellcheck source=tests/desktop/popover.sh
source "$desktop_tests/popover.sh"
