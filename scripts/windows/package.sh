#!/usr/bin/env bash
# ./package windows: dist/douisho-<version>-windows-x64.zip and an installer beside it.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh
. scripts/windows/libraries.sh
begin_bare XDG_CACHE_HOME

scripts/windows/toolchain.sh
programs=(douisho douisho-menu douisho-sample wfrfv10 wfrimg10)
build windows "${programs[@]}"
version=$(sed -n 's/^project(douisho VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=douisho-$version-windows-x64

say "Packing"
rm -rf "dist/$name" "dist/$name.zip" "dist/$name.exe"
mkdir -p "dist/$name/licences"
for program in "${programs[@]}"; do
    x86_64-w64-mingw32-strip -o "dist/$name/$program.exe" "build/windows/bin/$program.exe"
done
cp README.ja.md CHANGES.ja.md LICENSE "dist/$name"
cp "$windows_cache"/licences/* "dist/$name/licences"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "dist/$name/licences/gcc.txt"
(cd dist && zip -q -9 -r "$name.zip" "$name")
makensis -V2 -INPUTCHARSET UTF8 "-DVERSION=$version" "-DSOURCE=$PWD/dist/$name" "-DTARGET=$PWD/dist/$name.exe" \
    "-DICON=$PWD/app/desktop/icons/douisho.ico" scripts/windows/installer.nsi
rm -rf "dist/$name"
for made in "dist/$name".{zip,exe}; do
    say "$made, $(($(stat -c %s "$made") / 1024)) kB"
done
