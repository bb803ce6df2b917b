#include "orxctl/Errands.h"

#include <optional>
#include <thread>

#include "commands/Keywords.h"
#include "orxctl/VisibleEffect.h"
#include "orxctl/Wording.h"

namespace orx::orxctl {
namespace {

using client::Client;
using client::DaemonStatus;
using client::Request;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds betweenQuestions{20};

Outcome noAnswer(milliseconds limit, const std::string& consequence = "") {
    return {ExitStatus::noAnswer, "no answer within " + secondsText(limit) + consequence};
}

Outcome cannotTell(const Request& request) {
    return {ExitStatus::done,
            "sent; STATUS cannot tell whether " + request.keyword() + " has been carried out"};
}

/// QUIT has been carried out when there is no answer any more.
Outcome confirmEnd(const Client& daemon, milliseconds limit) {
    constexpr milliseconds longEnough{1000};  // five questions, none of them answered
    for (const auto end = Clock::now() + limit; Clock::now() < end;) {
        if (!daemon.status(longEnough)) return {ExitStatus::done, "confirmed"};
        std::this_thread::sleep_for(betweenQuestions);
    }
    return {ExitStatus::noAnswer, "sent, but the daemon goes on answering"};
}

/// Asks until the effect is shown. One that need not show is given the time that a move takes to
/// begin.
Outcome confirmEffect(const Client& daemon, const Request& request, const VisibleEffect& effect,
                      milliseconds limit) {
    const auto end = Clock::now() + limit;
    const auto enough = effect.mustShow ? end : Clock::now() + Client::settlingTime;
    for (auto asked = Clock::now(); asked < end; asked = Clock::now()) {
        const auto status = daemon.status(std::chrono::ceil<milliseconds>(end - asked));
        if (!status) break;
        if (effect.isShown(*status)) return {ExitStatus::done, "confirmed", status};
        if (asked >= enough) return cannotTell(request);
        std::this_thread::sleep_for(betweenQuestions);
    }
    return {ExitStatus::noAnswer, "sent, but within " + secondsText(limit) +
                                      " STATUS did not show that it was carried "
                                      "out"};
}

Outcome confirm(const Client& daemon, const Request& request, const DaemonStatus& before,
                milliseconds limit) {
    if (request.keyword() == CMD_QUIT) return confirmEnd(daemon, limit);
    const auto effect = visibleEffect(request, before);
    return effect ? confirmEffect(daemon, request, *effect, limit) : cannotTell(request);
}

/// Why `request` is not to be sent to a daemon with that status; nothing where it may be.
std::optional<Outcome> refusal(const Request& request, const std::optional<DaemonStatus>& before,
                               const SendOptions& options) {
    if (!before) return noAnswer(options.answerTime, "; nothing was sent");
    if (!request.needsProjector() || before->hasProjector()) return std::nullopt;
    return Outcome{ExitStatus::refused,
                   "the daemon has no projector (dumb mode): " + request.keyword() +
                       " was not sent; --force sends it anyway",
                   before};
}

}  // namespace

Outcome send(const Client& daemon, const Request& request, const SendOptions& options,
             const Client::Observer& observer) {
    if (request.keyword() == CMD_STATUS) return askStatus(daemon, options.answerTime);
    std::optional<DaemonStatus> before;
    if (!options.force || options.confirm) before = daemon.status(options.answerTime);
    if (!options.force)
        if (auto refused = refusal(request, before, options)) return *refused;
    daemon.send(request);
    Outcome outcome;
    if (options.confirm && before) outcome = confirm(daemon, request, *before, options.answerTime);
    if (outcome.status != ExitStatus::done || !options.wait) return outcome;
    const auto waited = waitUntilAtRest(daemon, options.waitTime, observer);
    return waited.status == ExitStatus::done ? outcome : waited;
}

Outcome askStatus(const Client& daemon, milliseconds limit) {
    const auto status = daemon.status(limit);
    return status ? Outcome{ExitStatus::done, "", status} : noAnswer(limit);
}

Outcome ping(const Client& daemon, milliseconds limit) {
    const auto asked = Clock::now();
    auto outcome = askStatus(daemon, limit);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - asked;
    if (outcome.daemon) outcome.text = "answered in " + millisecondsText(taken.count());
    return outcome;
}

Outcome waitUntilAtRest(const Client& daemon, milliseconds limit,
                        const Client::Observer& observer) {
    Outcome outcome;
    const auto remember = [&](const DaemonStatus& status) {
        outcome.daemon = status;
        if (observer) observer(status);
    };
    switch (daemon.waitUntilAtRest(limit, remember)) {
        case client::Rest::reached:
            break;
        case client::Rest::busy:
            outcome.status = ExitStatus::stillBusy;
            outcome.text = "not at rest within " + secondsText(limit);
            break;
        case client::Rest::silent:
            outcome.status = ExitStatus::noAnswer;
            outcome.text = "no answer";
            break;
    }
    return outcome;
}

}  // namespace orx::orxctl
