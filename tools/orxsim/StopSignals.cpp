#include "orxsim/StopSignals.h"

#include <cerrno>
#include <csignal>
#include <pthread.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orx::orxsim {
namespace {

bool isIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

FileDescriptor collectedSignals() {
    sigset_t wanted;
    ::sigemptyset(&wanted);
    ::sigaddset(&wanted, SIGINT);
    ::sigaddset(&wanted, SIGTERM);
    ::sigaddset(&wanted, SIGWINCH);
    if (!isIgnored(SIGHUP)) ::sigaddset(&wanted, SIGHUP);
    ::pthread_sigmask(SIG_BLOCK, &wanted, nullptr);
    FileDescriptor signals(::signalfd(-1, &wanted, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!signals.isOpen()) throw std::system_error(errno, std::generic_category(), "signals");
    return signals;
}

}  // namespace

StopSignals::StopSignals() : signals(collectedSignals()) {
    std::signal(SIGPIPE, SIG_IGN);
}

bool StopSignals::isStopRequested() {
    collect();
    return stop;
}

bool StopSignals::takeResize() {
    collect();
    return std::exchange(resize, false);
}

void StopSignals::collect() {
    signalfd_siginfo signal{};
    while (::read(signals.get(), &signal, sizeof signal) == sizeof signal) {
        (signal.ssi_signo == SIGWINCH ? resize : stop) = true;
    }
}

}  // namespace orx::orxsim
