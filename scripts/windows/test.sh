# test_windows [--programs [ctest's arguments]]: what Windows does otherwise; then the programs' tests for it and the main
# road through their windows, which is in the making. All run by Wine on a virtual screen.
. scripts/display.sh
. scripts/windows/wine.sh
. scripts/windows/compare_ini.sh
. scripts/windows/road.sh

finish_windows() {
    stop_wine
    stop_display
    rm -rf "$own_folder"
}

test_windows() {
    install_packages scripts/packages.port scripts/packages.windows
    own_folder=$(mktemp -d)
    trap finish_windows EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    start_display 1280x800
    start_wine "$own_folder"
    compare_ini "$own_folder/ini"
    [ "${1:-}" = --programs ] || return 0
    shift
    scripts/windows/toolchain.sh
    build dev lend_server
    build windows
    DOUISHO_WINE=$own_folder ctest --preset windows "$@"
    [ $# -gt 0 ] || windows_road "$own_folder/installation"
}
