# Sourced with `base` set to a folder of ours: Wine's environment with a prefix there, and the making of that prefix.
mkdir -p "$base/home"
export HOME=$base/home LC_ALL=C.UTF-8 WINEDEBUG=${WINEDEBUG--all} WINEPREFIX=$base/prefix
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="

# make_prefix: needs DISPLAY, since the first process of a session decides whether windows can be made.
make_prefix() {
    [ ! -e "$WINEPREFIX/ready" ] || return 0
    wineboot -i </dev/null >/dev/null 2>&1
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f </dev/null >/dev/null
    # Without Tahoma and Marlett dialogs are laid out in another, wider font.
    dpkg -L fonts-wine | grep -E '\.(ttf|fon)$' | xargs cp -t "$WINEPREFIX/drive_c/windows/Fonts"
    wineserver -w
    touch "$WINEPREFIX/ready"
}
