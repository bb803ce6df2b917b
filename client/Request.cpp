#include "orx/client/Request.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

#include "commands/Command.h"
#include "commands/Keywords.h"
#include "commands/Vocabulary.h"

namespace orx::client {
namespace {

/// What the daemon reads of one datagram.
constexpr std::size_t mostBytes = 2048;

std::vector<std::string> wordsOf(std::string_view source) {
    std::istringstream stream{std::string(source)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// Whether `word` alone would be dropped. The words of RAW are one argument together.
bool isDropped(const std::string& keyword, const std::string& word) {
    return keyword != CMD_RAW && Command(keyword + " " + word).arguments().empty();
}

std::string expectation(const std::string& keyword) {
    const auto kind = argumentKindOf(keyword);
    if (!kind) return " takes no argument";
    if (kind == "integer") return " takes whole numbers of 32 bits";
    if (kind == "decimal") return " takes decimal numbers";
    return " takes pairs of hexadecimal digits";
}

void checkArguments(const std::vector<std::string>& words, const Command& command) {
    const auto& keyword = words.front();
    const auto dropped = std::find_if(words.begin() + 1, words.end(),
                                      [&](const auto& word) { return isDropped(keyword, word); });
    if (dropped != words.end())
        throw std::invalid_argument(keyword + expectation(keyword) + ", not \"" + *dropped + '"');
    if (words.size() > 1 && command.arguments().empty())
        throw std::invalid_argument(keyword + expectation(keyword));
}

}  // namespace

UnknownCommand::UnknownCommand(std::string keyword)
    : std::invalid_argument(keyword.empty() ? "a command is missing"
                                            : "unknown command \"" + keyword + '"'),
      word(std::move(keyword)) {}

Request::Request(std::string_view source) {
    const auto words = wordsOf(source);
    const Command command(source);
    if (!command.isValid()) throw UnknownCommand(command.text(false));
    checkArguments(words, command);
    name = words.front();
    argumentList = command.arguments();
    datagram = name;
    for (const auto& argument : argumentList)
        datagram.append(" ").append(argument);
    if (datagram.size() > mostBytes)
        throw std::invalid_argument(name + ": the daemon takes " + std::to_string(mostBytes) +
                                    " bytes at most, not " + std::to_string(datagram.size()));
}

bool Request::needsProjector() const noexcept {
    constexpr std::array<std::string_view, 4> ofTheDaemon{CMD_STATUS, CMD_CLEAR_FLAGS, CMD_QUIT,
                                                          CMD_RESTART};
    return std::ranges::find(ofTheDaemon, name) == ofTheDaemon.end();
}

}  // namespace orx::client
