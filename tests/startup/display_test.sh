#!/usr/bin/env bash
# The virtual screen and the VNC server show nothing to those who were not given the run's secrets.
#   display_test.sh TOP
set -euo pipefail
cd "$1"
. scripts/common.sh
. scripts/display.sh
begin_bare
trap stop_display EXIT

start_display 640x480
[ "$(xdotool getdisplaygeometry)" = "640 480" ] || die "The screen does not know its own cookie."
! XAUTHORITY=/dev/null xdotool getdisplaygeometry >/dev/null 2>&1 || die "The screen is shown without a cookie."

serve_vnc >"$display_folder/said"
[[ $(cat "$display_folder/said") =~ 127\.0\.0\.1:([0-9]+),\ password\ ([[:alnum:]]{8})$'\n' ]] ||
    die "The address and a password of eight characters are not told."

# The server names the ways in that it offers: their number, then each; 2 is the password.
exec 7<>"/dev/tcp/127.0.0.1/${BASH_REMATCH[1]}"
head -c 12 <&7 >/dev/null
printf 'RFB 003.008\n' >&7
[ "$(head -c 2 <&7 | od -An -tu1 | tr -s ' ')" = " 1 2" ] || die "There is a way in without the password."

folder=$display_folder
stop_display
[ ! -e "$folder" ] || die "The secrets are left behind."
