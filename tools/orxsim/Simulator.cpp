#include "orxsim/Simulator.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <poll.h>
#include <system_error>
#include <utility>

namespace orx::orxsim {
namespace {

/// The time until `due` as ppoll wants it; null, which waits for ever, for nothing due.
const timespec* timeUntil(std::optional<Instant> due, Instant now, timespec& storage) {
    constexpr Instant::rep perSecond = std::nano::den;
    if (!due) return nullptr;
    const auto left = std::max(*due - now, Instant(0)).count();
    storage = {left / perSecond, left % perSecond};
    return &storage;
}

}  // namespace

Simulator::Simulator(SimulatedProjector& simulated, std::string linkPath, Display& shown,
                     Output& standardOutput, StopSignals& stopSignals)
    : projector(simulated),
      display(shown),
      output(standardOutput),
      signals(stopSignals),
      link(std::move(linkPath), line.device()) {}

Instant Simulator::now() const {
    return std::chrono::steady_clock::now() - start;
}

/// Whoever writes may have collected the signal that ends the simulator; so it is asked for last
/// ahead of the wait, which that signal would not end any more.
void Simulator::run(const std::string& model) {
    display.begin({line.device(), link.path(), model}, projector);
    while (true) {
        const auto due = advance();
        if (projector.isUnplugged()) {
            link.remove();
            line.unplug();
            display.unplugged();
            return;
        }
        if (signals.isStopRequested()) break;
        wait(due);
    }
    link.remove();
    display.end(projector.totals());
}

/// An event is out before its answer is: who has the answer can read the event.
std::optional<Instant> Simulator::advance() {
    projector.advance(now());
    for (const auto& report : projector.takeReports())
        display.show(report);
    line.write(projector.takeOutput(now()));
    if (projector.isUnplugged()) return std::nullopt;
    const auto redrawing = display.refresh(projector, now());
    const auto due = projector.nextDue();
    if (!due || !redrawing) return due ? due : redrawing;
    return std::min(*due, *redrawing);
}

void Simulator::wait(std::optional<Instant> due) {
    std::array<pollfd, 3> waiting{
        {{line.descriptor(), POLLIN, 0}, {signals.descriptor(), POLLIN, 0}, {output.get(), 0, 0}}};
    timespec storage{};
    const auto* const timeout = timeUntil(due, now(), storage);
    if (::ppoll(waiting.data(), waiting.size(), timeout, nullptr) < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "poll");
    }
    if ((waiting[0].revents & POLLIN) != 0) projector.receive(line.read(), now());
    if ((waiting[2].revents & POLLERR) != 0) {
        throw std::system_error(EPIPE, std::generic_category(), "standard output");
    }
}

}  // namespace orx::orxsim
