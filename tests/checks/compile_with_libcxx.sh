#!/bin/sh
# The shared rooms must compile with the other standard library that they have to live with: every source, and all headers
# together.
set -eu
cd "$1"
rooms="support model ports engine actions overlay settings app"
headers=$(mktemp --suffix=.cpp)
trap 'rm -f "$headers"' EXIT
find $rooms -name '*.h' | sort | sed 's/.*/#include "&"/' >"$headers"
[ -s "$headers" ]
{ find $rooms -name '*.cpp'; echo "$headers"; } |
    xargs -P 2 -n 1 clang++-14 -stdlib=libc++ -std=c++20 -Wall -Wextra -Wpedantic -Werror \
        -Wno-missing-field-initializers -fsyntax-only -I .
