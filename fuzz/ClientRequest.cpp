// Any text as a request of the client: what it lets through must reach the daemon as the command
// that was meant, with all of its words; what it refuses, the daemon would drop words of.
#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>

#include "commands/Command.h"
#include "commands/Keywords.h"
#include "common/Check.h"
#include "orx/client/Request.h"

namespace orx::fuzz {
namespace {

constexpr std::size_t mostBytes = 2048;

std::size_t wordCount(const std::string& source) {
    std::istringstream words(source);
    std::size_t count = 0;
    for (std::string word; words >> word;)
        ++count;
    return count;
}

/// Whether the daemon would not take all words behind the keyword of a known command.
bool losesWords(const std::string& source, const Command& command) {
    const auto words = wordCount(source) - 1;
    const auto taken = command.arguments().size();
    return command.is(CMD_RAW) ? words > 0 && taken == 0 : words != taken;
}

void checkPassed(const client::Request& request, const std::string& source,
                 const Command& command) {
    expect(command.isValid() && !losesWords(source, command), "it should have been refused");
    expect(request.text().size() <= mostBytes, "the daemon cuts it");
    const Command received(request.text());
    expectEqual(received.text(true), command.text(true), "what the daemon receives");
    expectEqualLists(request.arguments(), received.arguments(), "the arguments");
    expectEqual(request.keyword(), received.text(false), "the keyword");
}

void check(const std::string& source) {
    const Command command(source);
    try {
        checkPassed(client::Request(source), source, command);
    } catch (const client::UnknownCommand& unknown) {
        expect(!command.isValid(), "the client does not know a keyword");
        expectEqual(unknown.keyword(), command.text(false), "the unknown keyword");
    } catch (const std::invalid_argument&) {
        expect(command.isValid(), "an unknown keyword was not called so");
        expect(losesWords(source, command) || source.size() > mostBytes,
               "the daemon would have taken it");
    }
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({reinterpret_cast<const char*>(data), size});
    return 0;
}
