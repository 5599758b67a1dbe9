# test_windows: what Windows does otherwise, asked of Wine.
. scripts/windows/wine.sh
. scripts/windows/compare_ini.sh

finish_windows() {
    stop_wine
    rm -rf "$own_folder"
}

test_windows() {
    install_packages scripts/packages.port scripts/packages.windows
    own_folder=$(mktemp -d)
    trap finish_windows EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    start_wine "$own_folder"
    compare_ini "$own_folder/ini"
}
