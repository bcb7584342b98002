#!/bin/bash
# tools/same_bytes.sh: the hash of 200 random scenes from many builds: g++ and clang++ at -O0 and -O3, with and without AVX2,
# Windows under Wine, 64-bit ARM under qemu-user; each for 1, 2, 3 and 8 threads. Says what it cannot run here. Exit status 0
# when all that ran gave the known hash. ./test runs the same scenes in the builds that it makes.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 2
if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
fi
ran=0 differed=0 skipped=0

# try NAME RUNNER CMAKE_OPTION...: builds the program of the hashes in build/same/NAME and runs it by RUNNER (empty: directly).
try() {
    local name=$1 runner=$2 folder=build/same/$1 program
    shift 2
    mkdir -p "$folder"
    # What the hashes need is the core and GoogleTest.
    if ! { cmake -S . -B "$folder" -G Ninja -DBELVOR_TESTS=ON "$@" && cmake --build "$folder" --target belvor-scene-hashes; } \
        >"$folder/build.log" 2>&1; then
        echo "$name: BUILD FAILED, see $folder/build.log"
        differed=$((differed + 1))
        return
    fi
    program=$folder/bin/belvor-scene-hashes
    [ -e "$program" ] || program=$program.exe
    # shellcheck disable=SC2086
    if $runner "$program" --gtest_brief=1 </dev/null >"$folder/hashes" 2>"$folder/hashes.err"; then
        echo "$name: same"
        ran=$((ran + 1))
    else
        echo "$name: DIFFERENT"
        cat "$folder/hashes" "$folder/hashes.err"
        differed=$((differed + 1))
    fi
}
skip() { echo "$1: not run, $2"; skipped=$((skipped + 1)); }
has() { command -v "$1" >/dev/null; }

for compiler in g++ clang++; do
    if ! has "$compiler"; then skip "$compiler" "it is not installed"; continue; fi
    for level in 0 3; do
        try "$compiler-O$level" "" "-DCMAKE_CXX_COMPILER=$compiler" -DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=-O$level"
    done
    if grep -qw avx2 /proc/cpuinfo; then
        try "$compiler-O3-avx2" "" "-DCMAKE_CXX_COMPILER=$compiler" -DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=-O3 -mavx2"
    else
        skip "$compiler-O3-avx2" "the processor has no AVX2"
    fi
done
for bits in x86_64 i686; do
    if ! has "$bits-w64-mingw32-g++-posix"; then skip "windows-$bits" "the cross compiler is not installed"
    elif [ "$bits" = i686 ] && ! [ -e /usr/lib/i386-linux-gnu/wine ]; then skip "windows-$bits" "this Wine runs no 32-bit program"
    elif ! has wine; then skip "windows-$bits" "Wine is not installed"
    else try "windows-$bits" "tools/with-wine.sh wine" --toolchain "$PWD/cmake/mingw-$bits.cmake" -DCMAKE_BUILD_TYPE=Release; fi
done
if ! has aarch64-linux-gnu-g++; then skip aarch64 "g++-aarch64-linux-gnu is not installed"
elif ! has qemu-aarch64; then skip aarch64 "qemu-user is not installed"
elif ! [ -e /usr/lib/aarch64-linux-gnu/libz.a ]; then skip aarch64 "zlib1g-dev:arm64 is not installed"
else
    for level in 0 3; do
        try "aarch64-O$level" qemu-aarch64 --toolchain "$PWD/cmake/aarch64-linux.cmake" -DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=-O$level"
    done
fi
echo "$ran builds gave the known hash, $differed did not, $skipped were not run"
[ "$differed" -eq 0 ] && [ "$ran" -gt 0 ]
