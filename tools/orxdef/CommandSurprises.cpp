// What is odd about one command and its arguments.
#include <optional>
#include <utility>

#include "commands/Vocabulary.h"
#include "orxdef/DaemonCommands.h"
#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

/// The ArgumentKind of names that no client can send is unknown.
std::optional<ArgumentKind> kindOf(const std::string& name) {
    return isKnownKeyword(name) ? std::optional(argumentKind(name)) : std::nullopt;
}

/// Whether an argument makes those behind it in the same command show their sign.
bool setsSign(const ArgumentDescriptor& argument) {
    return argument.type == 'B' || (argument.type == 'D' && argument.digits() != 0);
}

/// Whether `value` needs more than `count` bytes as a signed or unsigned number.
bool exceedsBytes(std::int64_t value, unsigned count) {
    constexpr unsigned bitsPerByte = 8;
    if (count >= sizeof(std::int32_t)) return false;
    const auto beyond = std::int64_t{1} << (count * bitsPerByte);
    return value >= beyond || value < -beyond / 2;
}

class Finder {
  public:
    Finder(const std::string& modelName, const std::string& commandName,
           const ModelCommand& modelCommand, Mistakes& all)
        : title(quoted(commandName) + " of " + quoted(modelName)),
          command(modelCommand),
          kind(kindOf(commandName)),
          isOwn(isForDaemon(commandName)),
          mistakes(all) {}

    void find() {
        if (command.string == nullptr)
            return add(Severity::warning, command.arguments.begin()->second->place,
                       title + " has arguments but no bytes to send: they are never used");
        if (isOwn)
            add(Severity::warning, command.string->place,
                title + " is never sent: the daemon acts on that command by itself");
        if (command.string->bytes.empty() && command.arguments.empty())
            add(Severity::note, command.string->place, title + " has no bytes to send");
        if (!command.arguments.empty()) findArguments();
    }

  private:
    void findArguments() {
        const auto& first = *command.arguments.begin()->second;
        if (kind == ArgumentKind::none)
            return add(Severity::warning, first.place,
                       title + " takes no argument: its descriptors are never used");
        unsigned expected = 1;
        const ArgumentDescriptor* previous = nullptr;
        bool isSigned = false;
        for (const auto& [number, argument] : command.arguments) {
            findNumber(number, expected, argument->place);
            findPlace(*argument, previous);
            findType(*argument);
            findBounds(*argument, isSigned);
            isSigned = isSigned || setsSign(*argument);
            previous = argument;
            expected = number + 1;
        }
    }

    void findNumber(unsigned number, unsigned expected, const Place& place) {
        if (number == 0)
            add(Severity::warning, place, title + " has a descriptor number 0; they count from 1");
        for (auto missing = expected; missing < number && number - missing < 3; ++missing)
            add(Severity::warning, place,
                title + " has no descriptor " + std::to_string(missing) +
                    ": that argument is dropped");
    }

    void findPlace(const ArgumentDescriptor& argument, const ArgumentDescriptor* previous) {
        const auto size = command.string->bytes.size();
        if (argument.pos > size)
            add(Severity::error, argument.place,
                name(argument) + " has its place at byte " + std::to_string(argument.pos) + " of " +
                    std::to_string(size) + ": sending it ends the daemon");
        if (previous != nullptr && argument.pos < previous->pos)
            add(Severity::warning, argument.place,
                name(argument) + " has its place ahead of argument " +
                    std::to_string(previous->number) +
                    ": bytes of the command are sent more than once");
    }

    void findType(const ArgumentDescriptor& argument) {
        constexpr std::string_view types = "ABDIX";
        if (types.find(static_cast<char>(argument.type)) == std::string_view::npos)
            add(Severity::warning, argument.place,
                name(argument) + " has the unknown type " +
                    quoted(std::string(1, static_cast<char>(argument.type))) +
                    " and is sent as a plain number");
        if (kind == ArgumentKind::decimal && argument.type != 'D')
            add(Severity::error, argument.place,
                name(argument) + " is a decimal number, which type " +
                    quoted(std::string(1, static_cast<char>(argument.type))) +
                    R"( cannot read: ".5" ends the daemon; use type "D")");
        if (argument.type == 'D' && argument.digits() == 0)
            add(Severity::note, argument.place,
                name(argument) + " has no digits ahead of the point: it is sent with " +
                    std::to_string(argument.decimals()) + " significant digits and without sign");
        if (argument.type == 'I' && argument.len == 0)
            add(Severity::warning, argument.place, name(argument) + " is 0 bytes long");
    }

    void findBounds(const ArgumentDescriptor& argument, bool isSigned) {
        constexpr unsigned shortestNegative = 2;  // characters: "-1"
        if (argument.min > argument.max)
            add(Severity::warning, argument.place,
                name(argument) + " has min above max: every value is sent as min or max");
        if (argument.type == 'I' && argument.len > 0 &&
            (exceedsBytes(argument.min, argument.len) || exceedsBytes(argument.max, argument.len)))
            add(Severity::warning, argument.place,
                name(argument) + " has bounds that do not fit into " +
                    std::to_string(argument.len) + " bytes: the highest bytes are left out");
        if (argument.type == 'A' && argument.min < 0 && argument.len > shortestNegative &&
            !isSigned)
            add(Severity::warning, argument.place,
                name(argument) + R"( can be negative, and type "A" fills with zeros ahead of the )"
                                 R"(sign: 0-1; use type "B")");
        if (argument.type == 'X' && argument.min < 0)
            add(Severity::warning, argument.place,
                name(argument) +
                    " can be negative, and type \"X\" shows that as 32 bits: ffffffff");
        if (argument.type == 'A' && isSigned)
            add(Severity::note, argument.place,
                name(argument) + " is sent with a sign, as the argument ahead of it");
    }

    [[nodiscard]] std::string name(const ArgumentDescriptor& argument) const {
        return "argument " + std::to_string(argument.number) + " of " + title;
    }

    void add(Severity severity, const Place& place, std::string message) {
        mistakes.add(place, std::move(message), severity);
    }

    std::string title;
    const ModelCommand& command;
    std::optional<ArgumentKind> kind;
    bool isOwn;
    Mistakes& mistakes;
};

}  // namespace

void findCommandSurprises(const std::string& model, const std::string& name,
                          const ModelCommand& command, Mistakes& mistakes) {
    Finder(model, name, command, mistakes).find();
}

}  // namespace orx::orxdef
