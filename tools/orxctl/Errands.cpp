#include "orxctl/Errands.h"

#include <algorithm>
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

/// QUIT has been carried out when the host says that nobody listens any more. Not every network
/// passes that on, and silence alone can be that of a channel that waits.
Outcome confirmEnd(const Client& daemon, milliseconds limit) {
    for (const auto end = Clock::now() + limit; Clock::now() < end;) {
        const auto presence = daemon.presence(std::min(limit, Client::answerTime));
        if (presence == client::Presence::deserted) return {ExitStatus::done, "confirmed"};
        if (presence == client::Presence::silent)
            return {ExitStatus::done, "sent; the daemon does not answer any more, or late"};
        std::this_thread::sleep_for(betweenQuestions);
    }
    return {ExitStatus::noAnswer, "sent, but the daemon goes on answering"};
}

/// A daemon that restarts answers again, unless there is a mistake in what it reads.
Outcome confirmRestart(const Client& daemon, const Request& request, milliseconds limit) {
    if (daemon.status(limit)) return cannotTell(request);
    return {ExitStatus::noAnswer,
            "sent, but within " + secondsText(limit) +
                " the daemon did not answer; \"orxctl check\" tells what would end its start"};
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
                                      " STATUS did not show that it was carried out"};
}

Outcome confirm(const Client& daemon, const Request& request,
                const std::optional<DaemonStatus>& before, milliseconds limit) {
    if (!before)
        return {ExitStatus::noAnswer, "sent, but there was no answer before it to compare with"};
    if (request.keyword() == CMD_QUIT) return confirmEnd(daemon, limit);
    if (request.keyword() == CMD_RESTART) return confirmRestart(daemon, request, limit);
    const auto effect = visibleEffect(request, *before);
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

/// What there is to say once the lens is at rest: that it has not moved at all, or else `text`.
std::string afterRest(const Request& request, const Outcome& waited, const std::string& text) {
    const auto* const axis = waited.daemon ? movedAxis(request, *waited.daemon) : nullptr;
    if (axis == nullptr || axis->position) return text;
    return "the " + axis->name +
           " has not moved: nobody knows where it stands or how far it goes; calibrate it";
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
    if (options.confirm) outcome = confirm(daemon, request, before, options.answerTime);
    if (outcome.status != ExitStatus::done || !options.wait) return outcome;
    // A restart may take its time, and until then nobody listens.
    if (request.keyword() == CMD_RESTART) static_cast<void>(daemon.status(options.waitTime));
    auto waited = waitUntilAtRest(daemon, options.waitTime, observer);
    if (waited.status == ExitStatus::done) waited.text = afterRest(request, waited, outcome.text);
    return waited;
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
