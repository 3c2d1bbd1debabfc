# Shared by all commands: where things are, messages, locks, rights.

set -euo pipefail
root=$(cd "${BASH_SOURCE[0]%/*}/../.." && pwd -P)
# A service may have no HOME; the account's own folder is meant then as well.
[ -n "${HOME:-}" ] || HOME=$(getent passwd "$(id -u)" | cut -d: -f6)
export HOME
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orvane-controls

say() { printf '%s\n' "$*" >&2; }

die() {
    say "${0##*/}: $*"
    exit 1
}

# help_if_asked "$@": with --help first, prints the comment at the top of the command.
help_if_asked() {
    case ${1:-} in
    -h | --help)
        awk 'NR > 1 && !/^#/ { exit } NR > 1 { sub(/^# ?/, ""); print }' "$0"
        exit 0
        ;;
    esac
}

# with_lock FILE COMMAND...: one process at a time; what COMMAND leaves in the background does not
# hold the lock.
with_lock() {
    local file=$1
    shift
    mkdir -p "${file%/*}"
    (
        flock 9
        "$@" 9>&-
    ) 9>"$file"
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "'$*' needs root: run script/bootstrap as root or install sudo"
    fi
}
