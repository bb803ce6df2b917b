#include "orxctl/Show.h"

#include <algorithm>
#include <array>
#include <istream>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "commands/Keywords.h"
#include "core/Text.h"
#include "orxctl/Requests.h"

namespace orx::orxctl {
namespace {

/// What a show file has besides commands.
constexpr std::array<std::string_view, 2> ownWords{"sleep", "wait"};

}  // namespace

Show::Show(std::istream& input, const std::string& name) {
    std::string mistakes;
    std::size_t number = 0;
    for (std::string line; std::getline(input, line);) {
        const auto place = name + ":" + std::to_string(++number);
        try {
            if (auto action = parseLine(line.substr(0, line.find('#'))))
                steps.push_back({place, *std::move(action)});
        } catch (const std::invalid_argument& mistake) {
            mistakes.append(mistakes.empty() ? "" : "\n").append(place).append(": ");
            mistakes.append(mistake.what());
        }
    }
    if (input.bad()) throw std::invalid_argument("show file cannot be read: " + name);
    if (!mistakes.empty()) throw std::invalid_argument(mistakes);
}

std::optional<Show::Action> Show::parseLine(std::string line) {
    line = trim(line);
    if (line.empty()) return std::nullopt;
    std::istringstream words(line);
    std::string first;
    std::string second;
    std::string third;
    words >> first >> second >> third;
    if (first == CMD_STATUS)
        throw std::invalid_argument("a show has no place for STATUS; \"wait\" waits for the lens");
    if (std::ranges::find(ownWords, first) == ownWords.end()) return parseRequest(line, ownWords);
    if (!third.empty()) throw std::invalid_argument(first + " takes one time");
    if (first == "sleep" && second.empty()) throw std::invalid_argument("sleep takes a time");
    if (first == "sleep") return Sleep{parseSeconds(second)};
    return second.empty() ? Wait{} : Wait{parseSeconds(second)};
}

std::vector<Outcome> Show::run(Fleet& fleet, const SendOptions& options,
                               const Observers& observers) const {
    auto outcomes = reach(fleet, options);
    for (const auto& step : steps) {
        if (const auto* const pause = std::get_if<Sleep>(&step.action)) {
            std::this_thread::sleep_for(pause->time);
            continue;
        }
        outcomes = fleet.doForAll([&](const client::Client& daemon, std::size_t number) {
            if (outcomes[number].status != ExitStatus::done) return outcomes[number];
            auto outcome = perform(step.action, daemon, options, observers(number));
            if (outcome.status != ExitStatus::done) outcome.text = step.place + ": " + outcome.text;
            return outcome;
        });
    }
    return outcomes;
}

/// Who is not there is found out at once; later on, an answer may take as long as a line.
std::vector<Outcome> Show::reach(Fleet& fleet, const SendOptions& options) {
    if (options.force) return std::vector<Outcome>(fleet.size());
    const auto limit = std::min(client::Client::answerTime, options.answerTime);
    return fleet.doForAll([&](const client::Client& daemon, std::size_t) {
        auto outcome = askStatus(daemon, limit);
        if (outcome.status != ExitStatus::done) outcome.text += "; nothing was sent";
        return outcome;
    });
}

Outcome Show::perform(const Action& action, const client::Client& daemon,
                      const SendOptions& options, const client::Client::Observer& observer) {
    if (const auto* const request = std::get_if<client::Request>(&action)) {
        // Commands in a row would be queued, and a "wait" behind them might see the rest before
        // they move anything. A question between them lets the daemon catch up.
        if (options.force)
            static_cast<void>(
                daemon.presence(std::min(client::Client::answerTime, options.answerTime)));
        return send(daemon, *request, options, observer);
    }
    const auto limit = std::get<Wait>(action).limit.value_or(options.waitTime);
    return orx::orxctl::waitUntilAtRest(daemon, limit, observer);
}

}  // namespace orx::orxctl
