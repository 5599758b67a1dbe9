# test_windows [ctest's arguments]: what Windows does otherwise; then the programs' tests for it and, without arguments, the
# main road through their windows. All run by Wine on a virtual screen.
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
    scripts/windows/toolchain.sh
    build dev ini_ours lend_server
    build windows
    own_folder=$(mktemp -d)
    trap finish_windows EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    start_display 1280x800
    start_wine "$own_folder"
    compare_ini "$own_folder/ini"
    # The road first: ctest says its figures last, as with the other tests.
    [ $# -gt 0 ] || windows_road "$own_folder/installation"
    DOUISHO_WINE=$own_folder ctest --preset windows "$@"
}
