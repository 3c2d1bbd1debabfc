# enter_root.sh TREE REPOSITORY FOLDER COMMAND... — runs COMMAND in the i386 Debian TREE, in FOLDER.
# Started by unshare: every mount below is this process's own and vanishes with it. What the outside
# has under REPOSITORY, its neighbour "shared" and the temporary folders has the same path inside.

set -eu
tree=$1 repository=$2 folder=$3
shift 3

# An empty folder of the tree carries the new root, so that TREE itself is never written to.
new=$tree/mnt
mount -t tmpfs -o mode=755 tmpfs "$new"
for name in bin sbin lib; do ln -s "usr/$name" "$new/$name"; done
mkdir "$new/usr" "$new/etc" "$new/var"
for name in usr etc; do mount --bind "$tree/$name" "$new/$name"; done

show() {
    [ -d "$1" ] || return 0
    mkdir -p "$new$1"
    mount --rbind "$1" "$new$1"
}
for path in /dev /proc /tmp "${TMPDIR:-/tmp}" "$repository" "$(dirname "$repository")/shared"; do
    # Nothing to do for what lies in a folder that is visible already.
    [ "$path" -ef "$new$path" ] || show "$path"
done
if [ -n "${XAUTHORITY:-}" ] && [ ! -e "$new$XAUTHORITY" ]; then
    mkdir -p "$new$(dirname "$XAUTHORITY")"
    : >"$new$XAUTHORITY"
    mount --bind "$XAUTHORITY" "$new$XAUTHORITY"
fi

[ -d "$new$folder" ] || folder=$repository
exec chroot "$new" env -C "$folder" "$@"
