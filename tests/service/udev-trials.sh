# Sourced by try-service: what the rule of the adapter promises. Each function is a trial.

udev_gives_the_adapter_its_name_and_its_group() {
    set_up_rule
    plug_in
    expect "it has the name" is /dev/tty63 inside readlink --canonicalize /dev/projector
    expect "it is for the group dialout" is root:dialout:660 inside stat --dereference \
        --format %U:%G:%a /dev/projector
    expect "ModemManager is to leave it alone" shows ID_MM_PORT_IGNORE=1 \
        inside udevadm info --query property /dev/projector
}

udev_starts_the_daemon_when_the_adapter_appears() {
    local begun=$EPOCHREALTIME
    set_up_rule
    plug_in
    expect "the daemon answers" eventually 10 answers
    expect "it has opened the line" is 1 lines_opened
    expect "and was told no RESTART" refuse shows RESTART journal orx --since "@$begun"
}

udev_has_the_line_taken_up_again() {
    local begun=$EPOCHREALTIME first
    set_up_rule
    plug_in
    expect "the daemon answers" eventually 10 answers
    first=$(property MainPID)
    pull_out
    expect "the daemon goes on without the line" answers
    plug_in
    expect "it opens the line once more" eventually 10 is 2 lines_opened
    expect "it is the same process" is "$first" property MainPID
    expect "it answers" eventually 10 answers
}

udev_starts_a_daemon_that_had_given_up() {
    local begun=$EPOCHREALTIME
    set_up_rule
    inside systemctl start orx
    expect "without the line it gives up" eventually 60 is failed property ActiveState
    expect "and may not be started again" refuse inside systemctl start orx
    plug_in
    expect "the daemon answers" eventually 10 answers
    expect "it has opened the line" is 1 lines_opened
}

udev_starts_the_daemon_of_a_name() {
    set_up_rule
    sed --in-place 's/orx-replug.service orx.service/orx-replug@hall.service orx@hall.service/' \
        "$board_root/etc/udev/rules.d/60-orx.rules"
    inside udevadm control --reload
    configure orx@hall 'controlchannel = 127.0.0.1:7801' 'projector = DEMO-1' \
        'serial.device = /dev/projector'
    plug_in
    expect "it answers" eventually 10 answers --host 127.0.0.1:7801
    pull_out
    plug_in
    expect "it takes the line up again" eventually 10 shows RESTART journal orx@hall
}

# What udev would do with an adapter that there is not.
udev_knows_the_adapter_by_what_it_says_of_itself() {
    local usb=/devices/pci0000:00/0000:00:14.0/usb1/1-2
    local tty=$usb/1-2:1.0/ttyUSB0/tty/ttyUSB0
    printf '%s\n' "P: $usb" 'E: DEVTYPE=usb_device' 'E: SUBSYSTEM=usb' 'A: idVendor=0403' \
        'A: idProduct=6001' 'A: serial=A50285BI' '' "P: $tty" 'N: ttyUSB0' \
        'E: DEVNAME=/dev/ttyUSB0' 'E: MAJOR=188' 'E: MINOR=0' 'E: SUBSYSTEM=tty' \
        >"$board_root/root/adapter"
    cp packaging/udev/60-orx.rules.example "$board_root/etc/udev/rules.d/60-orx.rules"
    udev_test() { inside umockdev-run --device /root/adapter -- udevadm test "/sys$1" 2>&1; }
    expect "ModemManager is to leave it alone" shows ID_MM_DEVICE_IGNORE=1 udev_test "$usb"
    expect "its line gets the name" shows DEVLINKS=/dev/projector udev_test "$tty"
    expect "its line starts the services" shows \
        'SYSTEMD_WANTS=orx-replug.service orx.service' udev_test "$tty"
    sed --in-place 's/A50285BI/A50285BJ/' "$board_root/root/adapter"
    expect "the line of another adapter does not" refuse shows SYSTEMD_WANTS udev_test "$tty"
}
