#!/bin/bash
# installer.sh SETUP.EXE: the installer installs, upgrades in place, keeps what opens a type of file, refuses while the program
# runs, F1 opens the installed guide, and it takes everything away again. Started with tools/with-wine.sh.
set -eu
setup=$1
faults=0
fault() { echo "fault: $1"; faults=1; }
user=$WINEPREFIX/drive_c/users/$(id -un)
folder=$user/AppData/Local/Programs/Belvor
registered() { wine reg query "$1" ${2:+/v "$2"} >/dev/null 2>&1; }
uninstall='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Belvor'

rm -rf "$folder"
wine reg add 'HKCU\Software\Classes\.dxf' /ve /d Other.Drawing /f >/dev/null 2>&1
for round in first upgrade; do
    wine "$setup" /S || fault "$round: status $?"
    for file in belvor.exe belvor-render.exe belvor-image.exe Belvor.html uninstall.exe; do
        [ -s "$folder/$file" ] || fault "$round: $file is missing"
        [ "$(stat -c %s "$folder/$file")" -lt 3000000 ] || fault "$round: $file is larger than 3 MB"
    done
    [ "$round" = first ] && echo old >"$folder/Belvor.html"
done
[ "$(cat "$folder/Belvor.html")" != old ] || fault "the upgrade keeps an old file"
registered "$uninstall" DisplayVersion || fault "no entry among the programs"
for type in thf/Model dxf/Model man/Model omb/Picture; do
    registered "HKCU\Software\Classes\.${type%/*}\OpenWithProgids" Belvor.${type#*/} || fault "not offered for ${type%/*}"
done
wine reg query 'HKCU\Software\Classes\.dxf' /ve 2>/dev/null | grep -q Other.Drawing || fault ".dxf was taken over"

# The system opens a page with a program that notes the page's path.
page='HKLM\Software\Classes\Noted.Page\shell\open\command'
shown=$WINEPREFIX/drive_c/shown.txt
rm -f "$shown"
wine reg add "$page" /ve /d 'cmd.exe /c echo %1> C:\shown.txt' /f >/dev/null 2>&1
wine reg add 'HKLM\Software\Classes\.html' /ve /d Noted.Page /f >/dev/null 2>&1
wine "$folder/belvor.exe" & running=$!
sleep 10
xdotool key F1
for _ in $(seq 100); do [ -s "$shown" ] && break; sleep 0.1; done
grep -qi 'Programs.Belvor.Belvor.html' "$shown" || fault "F1 opens no guide: $(cat "$shown" 2>&1)"
wine reg delete 'HKLM\Software\Classes\.html' /f >/dev/null 2>&1
wine reg delete 'HKLM\Software\Classes\Noted.Page' /f >/dev/null 2>&1
before=$(stat -c %Y "$folder/belvor.exe")
wine "$setup" /S && fault "installs over a program that runs"
[ "$(stat -c %Y "$folder/belvor.exe")" = "$before" ] || fault "replaces a program that runs"
kill $running; wait $running 2>/dev/null || true

wine "$folder/uninstall.exe" /S
for _ in $(seq 50); do [ -e "$folder" ] || break; sleep 0.1; done    # it goes on in a copy of itself
[ ! -e "$folder" ] || fault "left behind: $(ls "$folder")"
registered "$uninstall" && fault "still among the programs"
for key in Belvor.Model Belvor.Picture .thf .man .omb; do
    registered "HKCU\Software\Classes\$key" && fault "$key is still there"
done
wine reg query 'HKCU\Software\Classes\.dxf' /ve 2>/dev/null | grep -q Other.Drawing || fault ".dxf is lost"
exit $faults
