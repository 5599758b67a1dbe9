# Recipes of scripts/windows/toolchain.sh, one function a library. Each is called in the library's unpacked source
# with an empty or half-done folder "$work", and installs into "$windows_prefix".

windows_cache=${XDG_CACHE_HOME:-$HOME/.cache}/douisho/windows
windows_prefix=$windows_cache/libraries
# Quick ones last: whoever waits sees early whether the long one goes well.
windows_libraries=(harfbuzz qt6-base icu sqlite3 curl qrencode googletest)

cross_cmake() {
    local source=$1
    shift
    [ -f "$work/configured" ] ||
        cmake -S "$source" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
            -DCMAKE_TOOLCHAIN_FILE="$top/cmake/windows.cmake" -DCMAKE_INSTALL_PREFIX="$windows_prefix" "$@"
    touch "$work/configured"
    cmake --build "$work" -j "$(nproc)"
    cmake --install "$work"
}

# One file holds both libraries: the toolkit uses it as well.
recipe_harfbuzz() {
    x86_64-w64-mingw32-g++-posix -O2 -fno-ipa-ra -fno-exceptions -fno-rtti -c src/harfbuzz-subset.cc -o "$work/harfbuzz.o"
    mkdir -p "$windows_prefix"/{lib/pkgconfig,include/harfbuzz}
    rm -f "$windows_prefix/lib/libharfbuzz.a"
    x86_64-w64-mingw32-ar rcs "$windows_prefix/lib/libharfbuzz.a" "$work/harfbuzz.o"
    cp src/hb*.h "$windows_prefix/include/harfbuzz"
    local name
    for name in harfbuzz harfbuzz-subset; do
        printf '%s\n' "Name: $name" "Description: text shaping" "Version: $version" \
            "Cflags: -I$windows_prefix/include/harfbuzz" "Libs: -L$windows_prefix/lib -lharfbuzz" \
            >"$windows_prefix/lib/pkgconfig/$name.pc"
    done
}

recipe_qt6-base() {
    local feature
    local -a features=()
    for feature in tabletevent network sql dbus icu xml concurrent openssl glib zstd vulkan direct2d1_1 \
        system_zlib system_png system_jpeg system_freetype system_pcre2 system_doubleconversion; do
        features+=("-DFEATURE_$feature=OFF")
    done
    cross_cmake . -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF \
        -DFEATURE_pkg_config=ON -DFEATURE_system_harfbuzz=ON "${features[@]}"
}


# Of the data what Japanese needs: all languages' are 30 MB.
recipe_icu() {
    local name # of the package, by which its contents are looked up
    name=$(basename source/data/in/icudt*l.dat .dat)
    icupkg -l source/data/in/icudt*l.dat >"$work/all"
    # Breaks of lines and words are the toolkit's.
    grep -E '^brkitr/|(^|/)[a-z]{2,3}(_[^/]*)?\.res$|^(unit|zone|region|lang|curr|rbnf)/|\.cnv$' "$work/all" |
        grep -Ev '^([^b][^/]*/|)(root|pool|res_index|ja|ja_JP|en)\.res$|^ibm-943_P15A-2003\.cnv$' >"$work/out.txt"
    icupkg -r "$work/out.txt" source/data/in/icudt*l.dat "$work/$name.dat"
    genccode -q -a gcc-mingw64 --skip-dll-export -n "${name%l}" -e "${name%l}" -d "$work" "$work/$name.dat"
    x86_64-w64-mingw32-gcc-posix -c "$work/${name}_dat.S" -o "$work/data.o"
    cross_cmake "$top/scripts/windows/icu" -DSOURCE="$PWD/source" -DDATA="$work/data.o"
}

recipe_sqlite3() {
    [ -f Makefile ] || ./configure -q
    make -s sqlite3.c
    # As Debian's own is built, where the program could notice.
    x86_64-w64-mingw32-gcc-posix -O2 -DSQLITE_SECURE_DELETE -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_SOUNDEX=1 \
        -DSQLITE_ENABLE_UNLOCK_NOTIFY -DSQLITE_ENABLE_DBSTAT_VTAB -DSQLITE_ENABLE_UPDATE_DELETE_LIMIT=1 \
        -DSQLITE_LIKE_DOESNT_MATCH_BLOBS -DSQLITE_THREADSAFE=1 -DSQLITE_USE_URI=1 -DSQLITE_MAX_SCHEMA_RETRY=25 \
        -DSQLITE_MAX_VARIABLE_NUMBER=250000 -c sqlite3.c -o "$work/sqlite3.o"
    mkdir -p "$windows_prefix"/{lib,include}
    rm -f "$windows_prefix/lib/libsqlite3.a"
    x86_64-w64-mingw32-ar rcs "$windows_prefix/lib/libsqlite3.a" "$work/sqlite3.o"
    cp sqlite3.h "$windows_prefix/include"
}

# Mail alone, over the system's own TLS.
recipe_curl() {
    local protocol # HTTP stays, since the mail part of this version does not link without it
    local -a without=()
    for protocol in DICT FILE FTP GOPHER IMAP LDAP LDAPS MQTT POP3 RTSP SMB TELNET TFTP; do
        without+=("-DCURL_DISABLE_$protocol=ON")
    done
    cross_cmake . -DBUILD_CURL_EXE=OFF -DBUILD_TESTING=OFF -DCURL_USE_SCHANNEL=ON -DCURL_ZLIB=OFF -DCURL_DISABLE_ALTSVC=ON \
        -DUSE_LIBIDN2=OFF -DUSE_WIN32_IDN=ON -DCURL_USE_LIBSSH2=OFF -DCURL_USE_LIBPSL=OFF -DUSE_NGHTTP2=OFF "${without[@]}"
}

recipe_qrencode() {
    cross_cmake . -DWITH_TOOLS=NO -DWITHOUT_PNG=YES
}

recipe_googletest() {
    cross_cmake .
}

# Apt with lists of our own: the system's stay as they are.
source_apt() {
    local apt=$windows_cache/apt
    apt-get -q -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$apt/sources" \
        -o "Dir::State::Lists=$apt/lists" "$@"
}

read_sources() {
    local apt=$windows_cache/apt
    rm -f "$apt/read"
    mkdir -p "$apt/lists/partial" "$apt/sources"
    local place
    for place in "debian bookworm bookworm-updates" "debian-security bookworm-security"; do
        printf '%s\n' "Types: deb-src" "URIs: http://deb.debian.org/${place%% *}" "Suites: ${place#* }" "Components: main" \
            "Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg" ""
    done >"$apt/sources/debian.sources"
    source_apt -o APT::Update::Error-Mode=any update || return
    touch "$apt/read"
}

# fetch_source NAME FOLDER: Debian's source of a package with Debian's own patches, checked by apt, unpacked.
fetch_source() {
    if [ -z "$(find "$windows_cache/apt/read" -mmin -1440 2>/dev/null)" ]; then
        read_sources || die "The list of Debian's sources cannot be read."
    fi
    rm -rf "$2" "$2.new"
    mkdir -p "$2.new"
    # A list of yesterday may name what a fix has replaced since.
    unpack_source "$1" "$2.new" || { read_sources && unpack_source "$1" "$2.new"; } || unpack_authors "$1" "$2.new" ||
        die "Debian's source of $1 is not to be had."
    mv "$2.new" "$2"
}

unpack_source() {
    rm -rf -- "$2"/*
    (cd "$2" && source_apt source "$1" && rm -f -- *.dsc *.tar.* && mv -- */ unpacked)
}

# Not every mirror has Debian's part of this package; any other would lose its fixes.
unpack_authors() {
    [ "$1" = qrencode ] || return
    say "Only the author's own archive of $1 is to be had"
    rm -rf -- "$2"/*
    (cd "$2" && source_apt source --tar-only "$1" && tar -xf *.orig.tar.bz2 && rm -f -- *.tar.* && mv -- */ unpacked)
}

# make_library NAME: unless it is there, made by this recipe and compiler.
make_library() {
    local name=$1 top=$PWD
    local work=$windows_cache/build/$name source=$windows_cache/source/$name made=$windows_cache/made/$name
    local key
    key=$({
        declare -f "recipe_$name"
        cat "scripts/windows/$name/CMakeLists.txt" 2>/dev/null || true
        grep _FLAGS_ cmake/windows.cmake
        x86_64-w64-mingw32-g++-posix -dumpfullversion
    } | sha256sum | cut -d' ' -f1)
    if [ "$(cat "$made" 2>/dev/null)" = "$key" ]; then
        return
    fi
    say "Making $name for Windows (all of them take an hour or less, this once)"
    # What is half done names the tree that it was configured from.
    if [ "$(cat "$work/key" 2>/dev/null)" != "$key $top" ]; then
        rm -rf "$work"
        mkdir -p "$work"
        printf '%s\n' "$key $top" >"$work/key"
    fi
    [ -d "$source/unpacked" ] || fetch_source "$name" "$source"
    local version
    version=$(cd "$source/unpacked" && dpkg-parsechangelog -S Version 2>/dev/null | sed 's/[+-].*//' || true)
    # By itself, not behind "||": there no command's failure would end it.
    (
        trap '[ $? -eq 0 ] || say "$name could not be made. The same command goes on from here."' EXIT
        cd "$source/unpacked"
        "recipe_$name"
    )
    mkdir -p "${made%/*}" "$windows_cache/licences"
    local licence
    for licence in "$source"/unpacked/{COPYING,LICENSE,debian/copyright}; do
        [ ! -f "$licence" ] || cp "$licence" "$windows_cache/licences/$name.txt"
    done
    printf '%s\n' "$key" >"$made"
    rm -rf "$work" "$source"
}
