# Sourced by try-service: a Debian of its own with the daemon installed, booted beside this system.
# Needs to be root. Nothing outside of its folder is touched, and what it starts ends with it.

board=$PWD/build/service
board_root=$board/root
board_cgroup=orx-board-$$

# make_board: unpacks a fresh Debian, of the release that this one is, which is fetched once, and
# installs the daemon there.
make_board() {
    local suite archive
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    archive=$board/$suite.tar
    mkdir -p "$board"
    [ -s "$archive" ] || fetch_debian "$suite" "$archive"
    rm -rf "$board_root"
    mkdir "$board_root"
    tar --extract --numeric-owner --file "$archive" --directory "$board_root"
    install_daemon
}

fetch_debian() {
    local fetched=$board/fetched
    rm -rf "$fetched"
    debootstrap --variant=minbase \
        --include=systemd,systemd-sysv,dbus,udev,kmod,iproute2,umockdev,libtomlplusplus3 \
        "$1" "$fetched" >"$board/debootstrap.log" || { tail "$board/debootstrap.log" && return 1; }
    rm -rf "$fetched"/var/cache/apt/* "$fetched"/var/lib/apt/lists/*
    : >"$fetched/etc/machine-id"
    tar --create --numeric-owner --file "$2.new" --directory "$fetched" .
    mv "$2.new" "$2"
    rm -rf "$fetched"
}

install_daemon() {
    DESTDIR=$board_root cmake --install build/release --prefix /opt/orx >/dev/null
    mkdir --parents "$board_root/root/orx"
    cp --recursive packaging "$board_root/root/orx"
    echo board >"$board_root/etc/hostname"
}

# install_services: by the commands that stand in docs/security.md.
install_services() {
    {
        echo 'set -e; cd /root/orx; sudo() { "$@"; }'
        take_block install-services docs/security.md
    } | inside bash
}

# forget_installation: nothing is left of the two above.
forget_installation() {
    inside systemctl disable --quiet --now orx
    inside rm -rf /opt/orx /run/orx /etc/sysusers.d/orx.conf /etc/tmpfiles.d/orx.conf
    inside sh -c 'rm /etc/systemd/system/orx*.service'
    inside systemctl daemon-reload
}

# make_packages: $package, and $newer_package, which is nothing but newer.
make_packages() {
    local log=$board/packages.log
    mkdir -p "$board"
    rm -f build/packages/orx_*_"$(dpkg --print-architecture)".deb
    { ORX_PACKAGE_REVISION=+1 scripts/package && scripts/package; } >"$log" 2>&1 ||
        { cat "$log" && return 1; }
    newer_package=$(ls build/packages/orx_*+1_"$(dpkg --print-architecture)".deb)
    package=${newer_package/+1_/_}
}

# install_package FILE: what is said meanwhile goes to $board/dpkg.log.
install_package() {
    cp "$1" "$board_root/root/orx.deb"
    inside dpkg --install /root/orx.deb >"$board/dpkg.log" 2>&1
}

# take_block NAME DOCUMENT: the code block of that name.
take_block() {
    awk -v name="$1" '$1 ~ /^```/ { inside = ($2 == name); next } inside' "$2" | grep .
}

# The folders of this kernel's control groups that a systemd goes by, one a line.
cgroup_folders() {
    findmnt --raw --noheadings --output TARGET --types cgroup2 | head --lines=1
    findmnt --raw --noheadings --output TARGET --types cgroup --options name=systemd |
        head --lines=1
}

# The board has a group for itself. Its systemd needs bpf() to keep services from devices.
start_board() {
    local folder
    for folder in $(cgroup_folders); do
        mkdir "$folder/$board_cgroup"
        echo "$BASHPID" >"$folder/$board_cgroup/cgroup.procs"
    done
    export SYSTEMD_NSPAWN_UNIFIED_HIERARCHY=1
    exec systemd-nspawn --quiet --boot --register=no --keep-unit --private-network --console=pipe \
        --capability=all --system-call-filter=bpf --directory="$board_root" </dev/null
}

# boot_board: returns when the board is up. ${board_leader} is its first process.
boot_board() {
    (start_board) >"$board/boot.log" 2>&1 &
    board_process=$!
    eventually 60 find_leader && eventually 60 is_up || { cat "$board/boot.log" && return 1; }
    watch_devices
}

# Neither systemd nor udev deals with devices where /sys is read-only, as it is on a board that boots:
# it would go on to set up the machine that lends its kernel.
watch_devices() {
    local folder
    for folder in /sys /sys/class /sys/devices; do
        inside mount -o remount,rw "$folder"
    done
    inside systemctl start systemd-udevd
    inside systemctl daemon-reexec
    eventually 60 is_up
}

find_leader() { board_leader=$(pgrep --parent "$board_process" --exact systemd); }

is_up() {
    inside systemctl is-system-running 2>/dev/null |
        grep --quiet --extended-regexp 'running|degraded'
}

# inside COMMAND...: runs it on the board, as root.
inside() { nsenter --target "$board_leader" --all -- "$@"; }

has_ended() { ! kill -0 "$1" 2>/dev/null; }

# end_board: switches the board off and takes away what it has left in the kernel.
end_board() {
    [ -n "${board_process:-}" ] || return 0
    inside systemctl poweroff 2>/dev/null || true
    eventually 40 has_ended "$board_process" || kill -KILL "$board_process"
    wait "$board_process" || true
    local folder
    for folder in $(cgroup_folders); do
        [ ! -d "$folder/$board_cgroup" ] ||
            find "$folder/$board_cgroup" -depth -type d -exec rmdir {} +
    done
}

# eventually SECONDS COMMAND...: waits until the command succeeds, so long at most.
eventually() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}
