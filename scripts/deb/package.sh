#!/usr/bin/env bash
# ./package deb          a package for Debian 12, dist/douisho_<version>_<architecture>.deb, of the sources as they lie here
# ./package deb --check  installs it on a bare Debian too, works it there and removes it without a trace
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh
begin_bare SUDO_UID # by which git knows whose folder it is
# The build has a home of its own, where a compiler cache is empty.
unset -v CMAKE_CXX_COMPILER_LAUNCHER

. scripts/deb/changelog.sh
install_packages scripts/packages.deb
version=$(sed -n 's/^project(douisho VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
deb=douisho_${version}_$(dpkg --print-architecture).deb
sources=build/deb/douisho

# A copy, in which what was built before stays: only what has changed since is compiled again.
say "Building $deb"
mkdir -p "$sources" dist
find "$sources" -mindepth 1 -maxdepth 1 ! -name 'obj-*' -exec rm -rf {} +
git ls-files -z --cached --others --exclude-standard | tar -cf - --null -T - | tar -xf - -C "$sources"
cp -r packaging/debian "$sources/debian"
changelog CHANGES.ja.md >"$sources/debian/changelog"
head -n 1 "$sources/debian/changelog" | grep -qF "($version)" ||
    die "CHANGES.ja.md does not begin with the version $version of CMakeLists.txt."
(cd "$sources" && dpkg-buildpackage -b -nc -us -uc)
mv "build/deb/$deb" dist/

say "Looking it over"
lintian --fail-on error,warning "dist/$deb"
appstreamcli validate --no-net "$sources/debian/douisho/usr/share/metainfo/net.example.douisho.metainfo.xml"
desktop-file-validate "$sources"/debian/douisho/usr/share/applications/*.desktop
say "dist/$deb, $(($(stat -c %s "dist/$deb") / 1024)) kB"

if [ "${1:-}" = --check ]; then
    exec scripts/deb/check.sh "dist/$deb"
fi
