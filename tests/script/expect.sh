# For tests of the commands: counts what differs and fails at the end.

set -euo pipefail
failures=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# expect WHAT EXPECTED ACTUAL
expect() {
    [ "$2" = "$3" ] && return
    printf '%s:\nexpected: %s\nactual:   %s\n' "$1" "$2" "$3" >&2
    failures=$((failures + 1))
}

finish() { exit $((failures > 0)); }
