#!/usr/bin/env bash
# Makes the libraries with which the Windows programs are linked, from Debian's own sources, static:
#   scripts/windows/toolchain.sh [LIBRARY…]    without a name all that are not there yet
# They are kept outside of the tree and made anew when their recipe or the compiler changes. A run that was cut off
# goes on where it was.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh
. scripts/windows/libraries.sh
begin_bare XDG_CACHE_HOME

install_packages scripts/packages.port scripts/packages.windows
mkdir -p "$windows_cache"
exec {lock}>"$windows_cache/lock"
flock -n "$lock" || {
    say "Waiting for another run that makes libraries for Windows"
    flock "$lock"
}
[ $# -gt 0 ] || set -- "${windows_libraries[@]}"
for library in "$@"; do
    make_library "$library"
done
