#!/usr/bin/env bash
# A fresh Debian system in a folder. Run as root:
#   fresh-root.sh make SUITE FOLDER [PACKAGE...]   makes one of Debian's SUITE, with git and these packages
#   fresh-root.sh run FOLDER COMMAND...            runs a command in it, as root and without a terminal
#   fresh-root.sh remove FOLDER                    removes it
set -euo pipefail

usage() {
    echo "usage: fresh-root.sh make SUITE FOLDER [PACKAGE...] | run FOLDER COMMAND... | remove FOLDER" >&2
    exit 2
}

make_root() {
    local suite=$1 root=$2 packages
    shift 2
    packages=$(IFS=,; echo "git,ca-certificates${*:+,$*}")
    debootstrap --variant=minbase --include="$packages" "$suite" "$root" > "$root.log" ||
        { tail -n 20 "$root.log" >&2; exit 1; }
    # Adds the updates of the suite as a source, as in an installed system. Installed packages are not upgraded.
    sed "s/ $suite / $suite-updates /" "$root/etc/apt/sources.list" > "$root/etc/apt/sources.list.d/updates.list"
    cp /etc/resolv.conf "$root/etc/resolv.conf" 2> /dev/null || true
}

# Mounts and processes made here end with the command.
run_in_root() {
    local root=$1
    shift
    env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive \
        unshare --mount --pid --fork --kill-child bash -c '
            set -e
            root=$1
            shift
            mount -t proc proc "$root/proc"
            # Its own terminals, which tests open.
            mkdir -p "$root/dev/pts"
            mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
            ln -sf pts/ptmx "$root/dev/ptmx"
            exec chroot "$root" "$@"
        ' fresh-root.sh "$root" "$@" < /dev/null
}

[ $# -ge 2 ] || usage
case "$1" in
    make) [ $# -ge 3 ] || usage; shift; make_root "$@" ;;
    run) [ $# -ge 3 ] || usage; shift; run_in_root "$@" ;;
    remove) [ $# -eq 2 ] || usage; rm -rf --one-file-system "$2" "$2.log" ;;
    *) usage ;;
esac
