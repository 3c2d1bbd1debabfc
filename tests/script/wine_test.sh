#!/usr/bin/env bash
# wine_test.sh WINE PROGRAM: script/wine32 and script/wine64 hand everything through.

here=$(cd "${BASH_SOURCE[0]%/*}" && pwd)
source "$here/expect.sh"
root=$(cd "$here/../.." && pwd -P)
wine=$root/script/$1 program=$2
windows() { printf 'Z:%s' "${1//\//\\}"; }
prefix=${ORVANE_WINE_FOLDER:-$root/build/wine}/win${1#wine}

cd "$here"
code=0
output=$(printf 'one\ntwo' | ORVANE_ECHO='three four' WINEPREFIX=/nowhere "$wine" "$program" 7 \
    'a b' 'c"d' '' 'e\' '*' 2>"$scratch/err" | tr -d '\r') || code=$?
expect "output, arguments, folder, environment, input" "[a b]
[c\"d]
[]
[e\\]
[*]
$(windows "$here")
three four
$prefix
one
two" "$output"
expect "exit code" 7 "$code"
expect "standard error" err "$(tr -d '\r' <"$scratch/err")"

code=0
"$wine" "$program" 256 </dev/null >/dev/null 2>&1 || code=$?
expect "an exit code beyond 8 bits is no success" 1 "$((code != 0))"

if [[ $program = "$root"/* ]]; then
    output=$("$wine" "${program#"$root"/}" 0 </dev/null 2>/dev/null | tr -d '\r' | head -n 1)
    expect "a path from the repository root" "$(windows "$here")" "$output"
fi
cp "$program" "$scratch/a copy.exe"
cd "$scratch"
expect "a program in the temporary folder" "[x]" \
    "$("$wine" "./a copy.exe" 0 x </dev/null 2>/dev/null | tr -d '\r' | head -n 1)"
expect "a program that Wine knows" hello "$("$wine" cmd /c echo hello 2>/dev/null | tr -d '\r')"

code=0
"$wine" "$scratch/missing.exe" >/dev/null 2>&1 || code=$?
expect "a missing program fails" 1 "$((code != 0))"
code=0
ORVANE_WINE_TIMEOUT=0.5 "$wine" cmd /c 'pause' < <(sleep 5) >/dev/null 2>&1 || code=$?
expect "a program that does not end is ended" 124 "$code"
finish
