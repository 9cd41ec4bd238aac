#!/bin/sh
# Every C++ source looks as .clang-format says.
set -eu
files=$(find src tests bench fuzz -name '*.cpp' -o -name '*.mm' -o -name '*.h')
[ -n "$files" ]
# shellcheck disable=SC2086 # no file name has blanks
clang-format-14 --dry-run --Werror $files
