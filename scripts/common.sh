# Shared by run, test, bench and .ci/run, which source it from the top folder.

say() { printf '== %s\n' "$*"; }
die() {
    printf '** %s\n' "$*" >&2
    exit 1
}

# File names and texts are Japanese; a bare machine has no UTF-8 locale set.
case "${LC_ALL:-${LC_CTYPE:-${LANG:-}}}" in
*[Uu][Tt][Ff]-8 | *[Uu][Tt][Ff]8) ;;
*) export LC_ALL=C.UTF-8 ;;
esac

if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER-ccache}"
fi

# missing_packages LIST…
missing_packages() {
    comm -23 <(sed 's/#.*//; s/[[:space:]]//g; /^$/d' "$@" | sort -u) \
        <(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' | sed -n 's/^ii *//p' | sort -u)
}

# install_packages [LIST…]: installs the packages of scripts/packages and of further lists that are missing;
# quick when none is.
install_packages() {
    local -a lists=(scripts/packages "$@")
    if ! command -v apt-get >/dev/null; then
        say "This is no Debian system: please see to the packages of ${lists[*]} yourself."
        return
    fi
    local -a missing as_root=()
    mapfile -t missing < <(missing_packages "${lists[@]}")
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "Please install as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing Debian packages: ${missing[*]}"
    local -a apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    "${apt[@]}" update </dev/null
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null
}

# build PRESET [TARGET…]: without a target, all of them.
build() {
    local preset=$1
    shift
    local -a targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    say "Building ($preset)"
    # Later changes of CMake files are noticed by the build itself.
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
    cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"
}
