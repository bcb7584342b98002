#!/bin/bash
# make_release.sh URL: builds what is published into build/release-files: for each word size the archive and the installer, and the
# manifests by which winget and Scoop install them. URL: where the files will be, each as URL/vVERSION/its name.
set -eu
[ $# -eq 1 ] || { sed -n 2,3p "$0" >&2; exit 2; }
cd "$(dirname "$(readlink -f "$0")")/.."
out=$PWD/build/release-files
version=$(sed -n 's/^project(belvor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
rm -rf "$out"
mkdir -p "$out"
for bits in win64 win32; do
    cmake --preset $bits >/dev/null
    cmake --build --preset $bits --target belvor belvor-render belvor-image belvor-help installer
    cpack --config build/$bits/CPackConfig.cmake -B build/$bits >/dev/null
    mv build/$bits/belvor-"$version"-$bits.zip build/$bits/belvor-"$version"-$bits-setup.exe "$out"
done
python3 tools/make_manifests.py "$version" "$1" "$out" "$out"/belvor-*
ls -l "$out"
