# Shared by run, test, bench and .ci/run, which source it from the top folder.

say() { printf '== %s\n' "$*"; }
die() {
    printf '** %s\n' "$*" >&2
    exit 1
}

# begin_bare [NAME…]: goes on as on a bare machine, so that nothing that lies about on this one helps or harms:
# programs come from the system's folders, and of the variables only these and those named stay.
begin_bare() {
    # Not names that somebody may have exported: they would be taken for our own.
    local bare_name
    local -A bare_stays=()
    for bare_name in HOME USER LOGNAME TERM PWD "$@"; do
        bare_stays[$bare_name]=1
    done
    while IFS= read -r bare_name; do
        # A few belong to the shell, which cannot unset them: they are kept from the programs.
        [ -n "${bare_stays[$bare_name]:-}" ] || unset -v "$bare_name" 2>/dev/null || export -n "$bare_name"
    done < <(compgen -e)
    while read -r _ _ bare_name; do
        unset -f "$bare_name"
    done < <(declare -Fx)
    export PATH=/usr/sbin:/usr/bin:/sbin:/bin
    hash -r
    HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
    # File names and texts are Japanese.
    export HOME LC_ALL=C.UTF-8
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
}

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
    # The build itself notices changes of CMake's files, but not of the presets.
    [ "build/$preset/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset"
    cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"
}
