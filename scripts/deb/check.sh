#!/usr/bin/env bash
# check.sh PACKAGE: installs a package on a bare Debian 12, works its programs there as a user without rights, removes
# it and looks for whatever is left. As root. The bare system is made once, in build/bare, and packages that were
# fetched are kept beside it.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh
begin_bare
[ "$(id -u)" -eq 0 ] || die "A bare system is made and entered by root: sudo ./package deb --check"
install_packages scripts/packages.deb

deb=$1
bare=$PWD/build/bare/debian
run=$PWD/build/bare/run
archives=$PWD/build/bare/archives
log=$PWD/build/bare/apt.log

inside() { chroot "$run" env -i HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"; }
as_user() { inside setpriv --reuid=1000 --regid=1000 --clear-groups env HOME=/home/user "$@"; }
leave() { umount -l "$run"/{var/cache/apt/archives,dev,proc} 2>/dev/null || true; }
trap leave EXIT

if [ ! -e "$bare/.made" ]; then
    say "Making a bare Debian 12 in $bare"
    rm -rf "$bare"
    mirror=$(apt-get indextargets --format '$(SITE)' | head -n 1)
    debootstrap --variant=minbase --include=ca-certificates bookworm "$bare" "${mirror:-http://deb.debian.org/debian}" >/dev/null
    cp -a /etc/apt/sources.list.d /etc/apt/apt.conf.d "$bare/etc/apt/"
    [ ! -e /etc/apt/sources.list ] || cp -a /etc/apt/sources.list "$bare/etc/apt/"
    # A machine that fetches through a proxy of its own needs what it trusts.
    cp -L /etc/ssl/certs/ca-certificates.crt "$bare/etc/ssl/certs/"
    cp -a /usr/share/keyrings/. "$bare/usr/share/keyrings/"
    touch "$bare/.made"
fi
leave
rm -rf --one-file-system "$run"
cp -a "$bare" "$run"
cp -L /etc/resolv.conf "$run/etc/resolv.conf"
mkdir -p "$archives/partial"
mount -t proc proc "$run/proc"
mount --bind /dev "$run/dev"
mount --make-private "$run/dev"
mount --bind "$archives" "$run/var/cache/apt/archives"
cp "$deb" "$run/root/douisho.deb"
cp tests/package/work.sh "$run/usr/local/bin/work"

# files: whatever there is but for what users and the package manager write.
files() { (cd "$run" && find . -xdev \( -path ./home -o -path ./tmp -o -path ./root -o -path ./var/log -o -path ./var/lib/dpkg \
    -o -path ./var/cache -o -path ./var/lib/apt \) -prune -o -printf '%p %l\n' | sort); }

say "Installing what the package depends on, and a screen"
get() { inside apt-get -q -o APT::Keep-Downloaded-Packages=true "$@" >>"$log" 2>&1 || die "apt-get $1 fails, see $log"; }
: >"$log"
get update
get install -y --no-install-recommends xvfb xdotool openbox
get satisfy -y --no-install-recommends "$(dpkg-deb -f "$deb" Depends)"
inside useradd --create-home --uid 1000 user
before=$(files)

say "Installing, working and removing $deb"
inside dpkg -i /root/douisho.deb
as_user /usr/local/bin/work
inside dpkg --purge douisho
if ! left=$(diff <(echo "$before") <(files)); then
    die "The package leaves or takes: $left"
fi
say "The package installs, works and goes without a trace."
