#!/bin/sh
# Builds and runs the consumer with nothing but a compiler and pkg-config. Argument: a folder to build in. Variables:
# compilers and pkg-config, LDFLAGS, and EMULATOR, what runs a program where this system cannot.
set -eu
source=$(dirname "$0")
mkdir -p "$1"

# Windows knows no place of a library but its folder and PATH; Wine takes the latter from WINEPATH.
WINEPATH=$("$PKG_CONFIG" --variable=prefix KyImgLib)/bin PATH=$WINEPATH:$PATH
export WINEPATH PATH
flags="$("$PKG_CONFIG" --cflags --libs KyImgLib) -Wl,-rpath,$("$PKG_CONFIG" --variable=libdir KyImgLib) ${LDFLAGS-}"
# shellcheck disable=SC2086 # flags and the emulator's are meant to be split
{
    "$CXX" -std=c++17 "$source/consumer.cpp" -o "$1/consumer-cpp" $flags
    "$CC" -std=c99 "$source/consumer.c" -o "$1/consumer-c" $flags
}
for program in "$1/consumer-cpp" "$1/consumer-c"; do
    [ -e "$program" ] || program=$program.exe
    $EMULATOR "$program"
done
