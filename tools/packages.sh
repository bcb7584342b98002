# Sourced. need_packages NAME...: installs the Debian packages that are missing, and touches nothing when none is.
need_packages() {
    local missing=() name as_root=()
    for name in "$@"; do
        # Those of another processor may be there too.
        dpkg-query -W -f='${db:Status-Status} ${Architecture}\n' "$name" 2>/dev/null |
            grep -qxE "installed (all|$(dpkg --print-architecture))" || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "installing: ${missing[*]}"
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || { echo "these packages are missing and installing them needs root" >&2; return 1; }
        as_root=(sudo)
    fi
    local install=(env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends)
    # A package index that is missing or old is the usual reason for a failure: refresh it and try once more.
    "${as_root[@]}" "${install[@]}" "${missing[@]}" </dev/null >/dev/null 2>&1 ||
        { "${as_root[@]}" apt-get update -q </dev/null >/dev/null && "${as_root[@]}" "${install[@]}" "${missing[@]}" </dev/null; }
}

packages_render=(g++ cmake ninja-build nlohmann-json3-dev zlib1g-dev)
packages_windows=(python3 g++-mingw-w64-x86-64-posix libz-mingw-w64-dev nsis wine wine64 fonts-wine)
packages_browser=(chromium)     # shows SVG files in the tests, where it can be had
packages_test=(python3 git clang-format clang-tidy python3-ezdxf python3-jsonschema googletest libbenchmark-dev libmpfr-dev libtiff-dev libopenexr-dev imagemagick lintian make parallel python3-pil python3-numpy g++-mingw-w64-i686-posix xvfb xauth xdotool)
