# check_port: whether the files that see the system itself compile for Windows; against the toolkit's headers of this
# machine, so that it takes a compiler alone.
check_port() {
    local qt=/usr/include/x86_64-linux-gnu/qt6
    local -a files=()
    mapfile -t files < <(git ls-files 'app/base/*.cpp' 'db/odbc/*.cpp' 'tests/windows/ini_native.cpp' |
        grep -v '_unix.cpp$' | xargs grep -lE 'windows\.h|native\.h|odbc_|platform/')
    printf '%s\0' "${files[@]}" | xargs -0 -n1 -P"$(nproc)" x86_64-w64-mingw32-g++-posix -std=c++20 -fsyntax-only \
        -D_WIN32_WINNT=0x0A00 -DQT_NO_CAST_FROM_ASCII -DQT_NO_KEYWORDS -Wall -Wextra -Wconversion -Werror \
        -I. -isystem "$qt" -isystem "$qt/QtCore"
}
