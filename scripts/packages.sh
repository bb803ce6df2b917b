# Sourced by the other scripts: brings the Debian packages that they need.

# is_installed NAME[:ARCHITECTURE]: for this machine's architecture where none is named.
is_installed() {
    local architecture=${1#*:}
    [ "$architecture" != "$1" ] || architecture=$(dpkg --print-architecture)
    dpkg-query --show --showformat='${Architecture} ${db:Status-Status}\n' "${1%%:*}" 2>/dev/null |
        grep --quiet --extended-regexp "^(all|$architecture) installed$"
}

# add_architectures NAME...: has the system know the architectures behind the colons of the names.
add_architectures() {
    local name
    for name in "$@"; do
        if [[ $name == *:* ]] &&
            ! grep --quiet "^${name#*:}$" < <(dpkg --print-foreign-architectures); then
            "${as_root[@]}" dpkg --add-architecture "${name#*:}"
        fi
    done
}

# ensure_packages NAME...: installs those that are missing, with sudo where the user is not root.
ensure_packages() {
    local missing=() name
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Please install as root: apt-get install ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    add_architectures "${missing[@]}"
    # A list that cannot be brought matters only where a package is not found for it.
    "${as_root[@]}" apt-get update --quiet=2 || echo "Going on with the package lists there are." >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --quiet=2 --no-install-recommends "${missing[@]}" >/dev/null
}

# What building the daemon and its tools takes, and what the tests and the demo take besides.
BUILD_PACKAGES=(g++ make cmake libtomlplusplus-dev libcli11-dev nlohmann-json3-dev)
TEST_PACKAGES=(libgtest-dev libgmock-dev python3-minimal libpython3-stdlib python3-jsonschema
    netcat-openbsd zsh fish man-db groff-base systemd)
DEMO_PACKAGES=(python3-minimal libpython3-stdlib)
CI_PACKAGES=(clang libclang-rt-14-dev llvm clang-format clang-tidy ccache)
FUZZ_PACKAGES=(clang libclang-rt-14-dev llvm)
COVERAGE_PACKAGES=(gcovr)
SANITIZER_PACKAGES=(clang libclang-rt-14-dev llvm)
HELGRIND_PACKAGES=(valgrind libc6-dbg)
SECURITY_PACKAGES=(nftables iproute2 systemd)
BENCH_PACKAGES=(libbenchmark-dev strace binutils gnuplot-nox)
SERVICE_PACKAGES=(systemd systemd-container debootstrap procps)
MUTATION_PACKAGES=(ninja-build lld python3-clang)
PACKAGE_PACKAGES=(dpkg-dev lintian)
PACKAGE_TEST_PACKAGES=(debootstrap iproute2)
EMULATOR_PACKAGES=(qemu-user-static iproute2)

# cross_packages ARCHITECTURE: what building for boards takes besides; cross_test_packages: their
# tests. The libraries lie beside those of this machine, each below a folder of its architecture.
cross_packages() {
    case "$1" in
    arm64) echo g++-aarch64-linux-gnu ;;
    armhf) echo g++-arm-linux-gnueabihf ;;
    esac
    echo "libstdc++6:$1" "libtomlplusplus-dev:$1"
}
cross_test_packages() { echo "libgtest-dev:$1" "libgmock-dev:$1"; }
