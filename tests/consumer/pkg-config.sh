#!/bin/sh
# Builds and runs the consumer with nothing but a compiler and pkg-config. Argument: a folder to build in.
set -eu
source=$(dirname "$0")
mkdir -p "$1"

flags="$("$PKG_CONFIG" --cflags --libs KyImgLib) -Wl,-rpath,$("$PKG_CONFIG" --variable=libdir KyImgLib)"
# shellcheck disable=SC2086 # flags are meant to be split
{
    "$CXX" -std=c++17 "$source/consumer.cpp" -o "$1/consumer-cpp" $flags
    "$CC" -std=c99 "$source/consumer.c" -o "$1/consumer-c" $flags
}
"$1/consumer-cpp"
"$1/consumer-c"
