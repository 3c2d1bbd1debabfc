#!/usr/bin/env bash
# The layout checks of script/test find what they are there for, in tracked files only.

here=$(cd "${BASH_SOURCE[0]%/*}" && pwd)
source "$here/expect.sh"
source "$here/../../script/lib/format.sh"

cp "$here/../../.clang-format" "$scratch"
root=$scratch
cd "$scratch"
git init -q .
printf 'int main() {\n    return 0;\n}\n' >good.cpp
printf 'good\n\x00binary \t\r' >binary.dat
git add .

found() { "$1" 2>&1 >/dev/null | sed 's/: warning.*//; s/: error.*//' | grep -o '^[a-z]*\.[a-z]*:.*' || true; }

expect "well-formed files pass" "" "$(found check_text)$(found check_cxx_format)"

printf 'blank \ntab\there\nreturn\r\nend' >bad.txt
printf 'two\n\n' >lines.txt
printf 'untracked ' >untracked.txt
git add bad.txt lines.txt
expect "faults of text are found" "bad.txt: no newline at the end
bad.txt:1: blank at the end of the line
bad.txt:2: tab
bad.txt:3: carriage return
lines.txt: blank lines at the end" "$(found check_text)"
expect "faults of text fail" 1 "$(check_text 2>/dev/null && echo 0 || echo 1)"

printf 'int  main() {\n    return 0;\n}\n' >'bad name.cpp'
git add .
expect "a badly formatted source fails" 1 "$(check_cxx_format 2>/dev/null && echo 0 || echo 1)"
finish
