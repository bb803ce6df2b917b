#include "control/Status.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/Mutex.h"

namespace orx {
namespace {

struct Flags {
    bool hello = true;
    bool lensConfigLoaded = false;
    bool dumbMode = false;
    bool debugMode = false;

    [[nodiscard]] std::string text() const {
        std::string tokens;
        if (hello) tokens += "HELO ";
        if (lensConfigLoaded) tokens += "LCU ";
        if (dumbMode) tokens += "DUMB ";
        if (debugMode) tokens += "DEBUG";
        return tokens;
    }
};

using Axes = std::vector<std::shared_ptr<const StatusAxis>>;

/// What the process-wide status holds.
struct State {
    Mutex mutex;
    Flags flags ORX_GUARDED_BY(mutex);
    std::string flagsText ORX_GUARDED_BY(mutex);
    Axes axes ORX_GUARDED_BY(mutex);
};

State& state() {
    static State instance;
    return instance;
}

/// Lets `change` change the flags, then renews their text.
void changeFlags(auto change) {
    auto& status = state();
    const MutexLock lock(status.mutex);
    change(status.flags);
    status.flagsText = status.flags.text();
}

}  // namespace

void Status::setDumb(bool dumb) {
    changeFlags([dumb](Flags& flags) { flags.dumbMode = dumb; });
}

void Status::setDebug(bool debug) {
    changeFlags([debug](Flags& flags) { flags.debugMode = debug; });
}

void Status::setLensConfigLoaded() {
    changeFlags([](Flags& flags) { flags.lensConfigLoaded = true; });
}

void Status::setHello() {
    changeFlags([](Flags& flags) { flags.hello = true; });
}

void Status::clearFlags() {
    changeFlags([](Flags& flags) { flags.hello = flags.lensConfigLoaded = false; });
}

void Status::reset() {
    Axes released;  // the last owner of an axis lets it go outside of the lock
    auto& status = state();
    const MutexLock lock(status.mutex);
    released.swap(status.axes);
    status.flags = Flags{};
}

void Status::addAxis(std::shared_ptr<const StatusAxis> axis) {
    auto& status = state();
    const MutexLock lock(status.mutex);
    status.axes.push_back(std::move(axis));
}

std::string Status::statusReply() {
    auto& status = state();
    const MutexLock lock(status.mutex);
    const bool busy =
        std::ranges::any_of(status.axes, [](const auto& axis) { return axis->isBusy(); });
    std::string reply;
    constexpr std::size_t usualSize = 100;
    reply.reserve(usualSize);
    reply += busy ? "BUSY;" : "IDLE;";
    for (const auto& axis : status.axes)
        reply.append(" ").append(axis->name()).append(": ").append(axis->positionText());
    return reply.append(";").append(status.flagsText).append("\n");
}

}  // namespace orx
