# Sourced by try-service: what the package does to a system that runs. Each function is a trial.

a_package_has_its_service_run() {
    forget_installation
    install_package "$package"
    expect "the daemon answers" eventually 10 answers
    expect "it is the unit of the package" is /lib/systemd/system/orx.service property FragmentPath
    expect "the board will start it, too" is enabled property UnitFileState
    expect "it runs as orx" is orx inside stat --format %U "/proc/$(property MainPID)"
    expect "its log is in memory" is tmpfs inside stat --file-system --format %T /run/orx
}

a_package_has_its_services_run_again_behind_an_upgrade() {
    local first hall
    forget_installation
    install_package "$package"
    configure orx 'projector = DEMO-1' 'serial.device = /dev/projector'
    configure orx@hall 'controlchannel = 127.0.0.1:7801' 'serial.debug = 2'
    inside systemctl restart orx orx@hall
    expect "the daemon answers" eventually 10 answers
    expect "so does that of the hall" eventually 10 answers --host 127.0.0.1:7801
    orxctl MEMSAVE 3
    expect "it is saved" eventually 10 shows 'mem = 3:' lens_memory
    first=$(property MainPID)
    hall=$(property MainPID orx@hall)
    install_package "$newer_package"
    expect "nobody complains" refuse grep --ignore-case --extended-regexp \
        'invalid|error|fail|warning|glob' "$board/dpkg.log"
    expect "the daemon answers again" eventually 10 answers
    expect "it is another process" refuse is "$first" property MainPID
    expect "it knows the lens memory" inside grep --quiet 'lensmem slot 3' /run/orx/orx.log
    expect "the hall has another process, too" refuse is "$hall" property MainPID orx@hall
    expect "which answers" eventually 10 answers --host 127.0.0.1:7801
}

a_package_does_not_overrule_who_has_disabled_its_service() {
    forget_installation
    install_package "$package"
    inside systemctl disable --quiet --now orx
    install_package "$newer_package"
    expect "it is not started" is inactive property ActiveState
    expect "nor will be with the board" is disabled property UnitFileState
}

a_package_that_goes_ends_its_services_in_order() {
    forget_installation
    install_package "$package"
    configure orx@hall 'controlchannel = 127.0.0.1:7801' 'serial.debug = 2'
    inside systemctl start orx@hall
    expect "the daemon answers" eventually 10 answers
    expect "so does that of the hall" eventually 10 answers --host 127.0.0.1:7801
    inside dpkg --remove orx >/dev/null
    expect "the service has ended" is inactive property ActiveState
    expect "so has that of the hall" is inactive property ActiveState orx@hall
    expect "by closing the log" shows '-- ORX logging end --' inside head --lines=1 /run/orx/orx.log
    expect "no daemon is left" refuse inside sh -c \
        'grep --quiet --line-regexp orx /proc/[0-9]*/comm'
    expect "the configuration is left" inside test -e /opt/orx/etc/orx@hall.cfg
    expect "nothing starts it before it is installed again" is masked property LoadState
    inside rm /opt/orx/etc/orx@hall.cfg
    inside dpkg --purge orx >/dev/null
    expect "systemd knows of no service" is not-found property LoadState
    expect "no log is left" refuse inside test -e /run/orx
    expect "nor anything below the prefix" refuse inside test -e /opt/orx
}
