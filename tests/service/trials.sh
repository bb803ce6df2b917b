# Sourced by try-service: what orx.service and orx@.service promise. Each function is a trial.

starts_and_answers() {
    start_daemon
    expect "it is active" is active property ActiveState
    expect "it is idle" shows IDLE answers
    expect "nothing is wrong with its configuration" shows "would start with projector" journal orx
}

runs_as_its_own_user_without_any_right() {
    start_daemon
    local status
    status=/proc/$(property MainPID)/status
    expect "it runs as orx" is orx inside stat --format %U "$status"
    expect "it has no capability" inside grep --perl-regexp 'CapEff:\t0+$' "$status"
    expect "it can get none" inside grep --perl-regexp 'NoNewPrivs:\t1$' "$status"
    expect "its system calls are filtered" inside grep --perl-regexp 'Seccomp:\t2$' "$status"
}

reaches_the_projector_by_the_group_of_its_line() {
    start_daemon
    expect "another user could not" refuse inside runuser --user nobody -- \
        sh -c ': >/dev/projector'
    orxctl ON
    expect "the projector gets the command" eventually 10 shows '"command":"ON"' \
        journal projector
}

keeps_its_log_in_memory() {
    start_daemon
    expect "the log is below /run" inside grep --quiet 'listening on' /run/orx/orx.log
    expect "that is memory" is tmpfs inside stat --file-system --format %T /run/orx
    expect "everybody may read it" inside runuser --user nobody -- cat /run/orx/orx.log
    expect "none is on the disk" refuse test -e "$board_root/opt/orx/var/run/orx.log"
}

saves_the_lens_memory_and_finds_it_again() {
    start_daemon
    orxctl MEMSAVE 1
    expect "it is saved" eventually 10 shows 'mem = 1:' lens_memory
    local file=/opt/orx/var/lensmemory.cfg first
    first=$(inside stat --format %i "$file")
    orxctl MEMSAVE 2
    expect "it is saved again" eventually 10 shows ',2:' lens_memory
    expect "by a new file in its place" refuse is "$first" inside stat --format %i "$file"
    expect "the file is the daemon's" is orx:orx inside stat --format %U:%G "$file"
    inside systemctl restart orx
    expect "it is there after a restart" eventually 10 inside grep --quiet 'lensmem slot 2' \
        /run/orx/orx.log
}

takes_over_the_files_of_a_trial_by_root() {
    inside sh -c 'echo "mem = 7:1;2," >/opt/orx/var/lensmemory.cfg'
    inside chown root: /opt/orx/var/lensmemory.cfg
    inside systemd-tmpfiles --create orx.conf
    start_daemon
    orxctl MEMSAVE 8
    expect "it is saved" eventually 10 shows 'mem = 7:1;2,8:' lens_memory
}

stops_in_order() {
    start_daemon
    inside systemctl stop orx
    expect "the last thing it did is to close the log" shows '-- ORX logging end --' \
        inside head --lines=1 /run/orx/orx.log
    expect "it has ended by itself" is 1 property ExecMainCode
    expect "as after QUIT" is 0 property ExecMainStatus
    expect "systemd has nothing to say against it" is success property Result
    expect "it is inactive" is inactive property ActiveState
}

stops_behind_the_command_in_hand() {
    local begun=$EPOCHREALTIME
    start_daemon
    orxctl SETDELAY 3000
    orxctl ON
    expect "the projector gets the command" eventually 10 shows '"command":"ON"' \
        journal projector
    inside systemctl stop orx
    expect "QUIT has had its turn" shows 'executing cmd: QUIT' journal orx --since "@$begun"
    expect "it has ended by itself" is 1 property ExecMainCode
    expect "the last thing it did is to close the log" shows '-- ORX logging end --' \
        inside head --lines=1 /run/orx/orx.log
}

stops_in_order_with_the_board() {
    inside systemctl start orx
    expect "the daemon answers" eventually 10 answers
    inside systemctl stop multi-user.target
    inside systemctl isolate rescue.target
    expect "it is inactive" eventually 30 is inactive property ActiveState
    expect "it has ended as after QUIT" is 1:0 echo \
        "$(property ExecMainCode):$(property ExecMainStatus)"
    inside systemctl isolate multi-user.target
}

is_ended_by_a_signal_where_it_does_not_listen() {
    start_daemon
    inside sh -c "kill -STOP $(property MainPID)"
    inside systemctl stop orx
    expect "a signal has ended it" is 2 property ExecMainCode
    expect "it was TERM" is 15 property ExecMainStatus
    expect "it is inactive" is inactive property ActiveState
}

stays_ended_after_a_quit() {
    start_daemon
    orxctl QUIT
    expect "it is inactive" eventually 10 is inactive property ActiveState
    sleep 3  # longer than it would take to be started again
    expect "it stays so" is inactive property ActiveState
    expect "nobody started it again" is 0 property NRestarts
}

comes_back_after_a_quit_where_that_is_wanted() {
    mkdir --parents "$board_root/etc/systemd/system/orx.service.d"
    take_block always.conf docs/security.md \
        >"$board_root/etc/systemd/system/orx.service.d/always.conf"
    inside systemctl daemon-reload
    start_daemon
    orxctl QUIT
    expect "it has been started again" eventually 15 is 1 property NRestarts
    expect "it answers" eventually 10 answers
    inside systemctl stop orx
    sleep 3  # longer than it would take to be started again
    expect "but not after a stop" is inactive property ActiveState
}

comes_back_after_a_crash() {
    start_daemon
    orxctl MEMSAVE 5
    expect "it is saved" eventually 10 shows 'mem = 5:' lens_memory
    local first
    first=$(property MainPID)
    inside sh -c "kill -SEGV $first"
    expect "it has been started again" eventually 15 is 1 property NRestarts
    expect "it answers" eventually 10 answers
    expect "it is another process" refuse is "$first" property MainPID
    expect "it knows the lens memory" inside grep --quiet 'lensmem slot 5' /run/orx/orx.log
}

gives_up_where_it_cannot_start() {
    local begun=$EPOCHREALTIME
    configure orx 'projector = DEMO-1' 'serial.device = /dev/nowhere'
    inside systemctl start orx
    expect "it gives up" eventually 60 is failed property ActiveState
    expect "after as many starts as it may have" is 10 starts_in_vain
}

writes_nowhere_but_to_its_own_folders() {
    inside mkdir --mode=777 --parents /srv/open
    expect "the same user may write elsewhere" unconfined ': >/srv/open/file'
    expect "the service may not" refuse confined ': >/srv/open/other'
    expect "there is no such file" refuse test -e "$board_root/srv/open/other"
    expect "it may write to its own" confined ': >/opt/orx/var/file && : >/run/orx/file'
    expect "what it writes to /tmp nobody sees" confined ': >/tmp/secret'
    expect "there is no such file" refuse inside test -e /tmp/secret
    confined 'find / \( -path /proc -o -path /sys \) -prune -o -type d -writable -print |
        sort >/run/orx/writable'
    expect "these are all folders" is '/opt/orx/var /opt/orx/var/run /run/orx /tmp /var/tmp' \
        inside xargs --arg-file /run/orx/writable
}

keeps_its_log_out_of_where_it_may_not_write() {
    inside mkdir --mode=777 --parents /srv/open
    configure orx 'projector = DEMO-1' 'serial.device = /dev/projector' 'logfile = /srv/open/log'
    start_daemon
    expect "there is no such log" refuse test -e "$board_root/srv/open/log"
    expect "the journal tells why" shows /srv/open/log journal orx
}

opens_no_device_but_a_serial_line() {
    inside rm -f /dev/trial-line /dev/trial-disk
    inside mknod -m 666 /dev/trial-line c 4 63
    inside mknod -m 666 /dev/trial-disk b 7 0
    expect "the same user could open a disk" unconfined ': </dev/trial-disk'
    expect "the service cannot" refuse confined ': </dev/trial-disk'
    expect "it can open a line" confined ': </dev/trial-line'
}

talks_to_this_machine_alone_until_it_is_allowed_more() {
    inside ip address replace 192.168.10.5/32 dev lo
    configure orx 'controlchannel = *:7781' 'projector = DEMO-1' 'serial.device = /dev/projector'
    start_daemon
    expect "an address of the network is kept out" refuse answers --host 192.168.10.5
    inside systemctl stop orx
    install -D --mode=644 --target-directory="$board_root/etc/systemd/system/orx.service.d" \
        packaging/systemd/network.conf
    inside systemctl daemon-reload
    start_daemon
    expect "it gets in where network.conf names it" answers --host 192.168.10.5
}

runs_twice_with_a_memory_each() {
    inside systemctl stop orx
    local name port=7800
    for name in hall dome; do
        projector "/dev/projector-$name"
        port=$((port + 1))
        configure "orx@$name" "controlchannel = 127.0.0.1:$port" 'projector = DEMO-1' \
            "serial.device = /dev/projector-$name"
        inside systemctl start "orx@$name"
        expect "$name answers" eventually 10 answers --host "127.0.0.1:$port"
    done
    orxctl MEMSAVE 1 --host 127.0.0.1:7801
    orxctl MEMSAVE 2 --host 127.0.0.1:7802
    expect "the hall has its slot" eventually 10 shows 'mem = 1:' lens_memory /var/lib/orx/hall
    expect "the dome has its slot" eventually 10 shows 'mem = 2:' lens_memory /var/lib/orx/dome
    expect "the hall has a log" inside grep --quiet 127.0.0.1:7801 /run/orx/hall/orx.log
    expect "the dome has a log" inside grep --quiet 127.0.0.1:7802 /run/orx/dome/orx.log
    expect "the memory of one daemon alone is left alone" refuse test -e \
        "$board_root/opt/orx/var/lensmemory.cfg"
    orxctl ON --host 127.0.0.1:7802
    expect "the projector of the dome gets a command" eventually 10 shows '"command":"ON"' \
        journal projector-dome
    expect "the one of the hall does not" refuse shows '"command":"ON"' journal projector-hall
    inside systemctl stop orx@hall
    expect "the hall has ended as after QUIT" shows '-- ORX logging end --' \
        inside head --lines=1 /run/orx/hall/orx.log
    expect "with nothing to say against it" shows 'orx@hall.service: Deactivated successfully' \
        journal orx@hall
    expect "the dome goes on" answers --host 127.0.0.1:7802
}
