# Sourced by try-service: the words that its trials are told in, besides those of board.sh.

# expect WHAT COMMAND...: lets a trial fail, and says why, where the command does.
expect() {
    local what=$1
    shift
    if "$@" >"$board/output" 2>&1; then return; fi
    echo "    not so: $what"
    tail --lines=5 "$board/output" | sed 's/^/    /'
    exit 1
}

# refuse COMMAND...: whether it fails.
refuse() { ! "$@"; }

# is TEXT COMMAND...: whether that is what the command prints.
is() { [ "$("${@:2}")" = "$1" ] || { echo "got: $("${@:2}")" && return 1; }; }

# Not by a pipe: who still writes when the text is found would end by a signal, as a failure.
shows() { grep --quiet --fixed-strings -e "$1" < <("${@:2}"); }

# property NAME [UNIT]: what systemd knows of a service.
property() { inside systemctl show "${2:-orx}" --property "$1" --value; }

orxctl() { inside /opt/orx/bin/orxctl "$@"; }
answers() { orxctl status --timeout 0.5 "$@"; }
journal() { inside journalctl --boot --output cat --unit "$@"; }
lens_memory() { cat "$board_root${1:-/opt/orx/var}/lensmemory.cfg"; }

# configure NAME LINE...: the whole configuration etc/NAME.cfg.
configure() { printf '%s\n' "${@:2}" >"$board_root/opt/orx/etc/$1.cfg"; }

# projector LINK: simulates one, whose line the group dialout alone may use, as with a real one.
projector() {
    local name=${1##*/}
    inside systemd-run --quiet --collect --unit "$name" /opt/orx/bin/orxsim --model DEMO-1 \
        --definitions /opt/orx/lib/orx.ccd --link "$1"
    expect "there is a line $1" eventually 10 inside test -e "$1"
    inside chgrp --dereference dialout "$1"
    inside chmod 660 "$1"
}

# leave_package: back to the installation by hand.
leave_package() {
    inside rm -rf /opt/orx/etc/orx@hall.cfg
    inside dpkg --purge orx
    install_daemon
    install_services
} >"$board/leave.log" 2>&1

# Everything as on a board that has just been set up.
begin_anew() {
    [ -f "$board_root/etc/systemd/system/orx.service" ] || leave_package
    [ ! -e "$board_root/etc/udev/rules.d/60-orx.rules" ] || pull_out
    inside systemctl stop 'orx*.service' 'projector*.service'
    inside rm -rf /run/orx /opt/orx/var /var/lib/orx /etc/systemd/system/orx.service.d \
        /etc/udev/rules.d/60-orx.rules
    inside mkdir -p /opt/orx/var/run
    inside systemctl daemon-reload
    inside systemctl reset-failed
    inside systemd-tmpfiles --create orx.conf
    configure orx 'projector = DEMO-1' 'serial.device = /dev/projector'
    projector /dev/projector
}

start_daemon() {
    inside systemctl start orx
    expect "the daemon answers" eventually 10 answers
}

# confined SCRIPT: runs it in a shell with every setting that the daemon's service has.
confined() {
    sed -e '/^Exec/d; /^Restart/d; s/^Type=.*/Type=oneshot/' \
        "$board_root/etc/systemd/system/orx.service" >"$board/orx-probe.service"
    sed --in-place "/^\[Service\]/a ExecStart=/bin/sh /run/orx-probe" "$board/orx-probe.service"
    inside tee /run/systemd/system/orx-probe.service <"$board/orx-probe.service" >/dev/null
    inside tee /run/orx-probe <<<"$1" >/dev/null
    inside systemctl daemon-reload
    inside systemctl start orx-probe
}

# unconfined SCRIPT: runs it as the same user, who is in the same groups.
unconfined() { inside runuser --user orx -- /bin/sh -c "$1"; }

# The adapter of a line is a terminal of the kernel that nobody uses, and whose name no rule of
# Debian's knows. The rule is the packaged one but for what it recognises the adapter by.
set_up_rule() {
    inside systemctl stop projector
    inside sh -c 'test -e /dev/tty63 || mknod -m 600 /dev/tty63 c 4 63'
    sed -e '/ATTRS{idVendor}/d; s/SUBSYSTEMS=="usb", /KERNEL=="tty63", /' \
        packaging/udev/60-orx.rules.example >"$board_root/etc/udev/rules.d/60-orx.rules"
    inside udevadm control --reload
    pull_out
}

pull_out() {
    inside sh -c 'echo remove >/sys/class/tty/tty63/uevent'
    expect "the name of the line is gone" eventually 10 refuse inside test -e /dev/projector
    expect "systemd sees the adapter go" eventually 10 is inactive property ActiveState \
        dev-projector.device
}

plug_in() {
    inside sh -c 'echo add >/sys/class/tty/tty63/uevent'
    expect "systemd sees the adapter come" eventually 10 is active property ActiveState \
        dev-projector.device
}

# How often the daemon has opened the line since the beginning of the trial, which is told to the
# microsecond: what the trial before has done may be no second ago.
lines_opened() { journal orx --since "@$begun" | grep --count 'serial init /dev/projector'; }

# How often the daemon has ended at its start since the beginning of the trial.
starts_in_vain() { journal orx --since "@$begun" | grep --count '^ERROR: '; }
