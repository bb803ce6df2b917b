// What is odd about one argument of a command.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

/// Narrower fields are usual for numbers of any length.
constexpr int leastFilledWidth = 2;

/// Whether `value` needs more than `count` bytes as a signed or unsigned number.
bool exceedsBytes(std::int64_t value, unsigned count) {
    constexpr unsigned bitsPerByte = 8;
    if (count >= sizeof(std::int32_t)) return false;
    const auto beyond = std::int64_t{1} << (count * bitsPerByte);
    return value >= beyond || value < -beyond / 2;
}

int digitsOf(std::int64_t value, int base) {
    int digits = 1;
    for (value = std::abs(value); value >= base; value /= base)
        ++digits;
    return digits;
}

class Finder {
  public:
    Finder(const ArgumentDescriptor& descriptor, const ArgumentSetting& all, Mistakes& found)
        : argument(descriptor),
          setting(all),
          mistakes(found),
          name("argument " + std::to_string(descriptor.number) + " of " + all.title) {}

    void find() {
        findPlace();
        findKind();
        findBounds();
        findNegative();
        if (argument.type == 'I')
            findBytes();
        else if (argument.type == 'D')
            findPoint();
        else
            findWidth();
        if (setting.style.withSign && (argument.type == 'A' || !argument.hasKnownType()))
            add(Severity::note, " is sent with a sign, as the argument ahead of it");
    }

  private:
    void findPlace() {
        if (argument.pos > setting.commandSize)
            add(Severity::error, " has its place at byte " + std::to_string(argument.pos) + " of " +
                                     std::to_string(setting.commandSize) +
                                     ": sending it ends the daemon");
        if (setting.previous != nullptr && argument.pos < setting.previous->pos)
            add(Severity::warning, " has its place ahead of argument " +
                                       std::to_string(setting.previous->number) +
                                       ": bytes of the command are sent more than once");
    }

    void findKind() {
        if (!argument.hasKnownType())
            add(Severity::warning,
                " has the unknown type " + typeName() + " and is sent as a plain number");
        if (setting.kind == ArgumentKind::decimal && argument.type != 'D')
            add(Severity::error, " is a decimal number, which type " + typeName() +
                                     R"( cannot read: ".5" ends the daemon; use type "D")");
        if (setting.kind == ArgumentKind::integer && argument.type == 'D')
            add(Severity::error, R"( is a whole number, which type "D" reads as a decimal one: )"
                                 R"("1e999" ends the daemon; use another type)");
    }

    void findBounds() {
        if (argument.min > argument.max)
            add(Severity::warning, " has min above max: every value is sent as min or max");
    }

    void findNegative() {
        if (argument.min >= 0) return;
        if (argument.type == 'A' && argument.len > leastFilledWidth && !setting.style.withSign)
            add(Severity::warning,
                R"( can be negative, and type "A" fills with zeros ahead of the sign: 0-1; )"
                R"(use type "B")");
        if (argument.type == 'X')
            add(Severity::warning,
                R"( can be negative, and type "X" shows that as 32 bits: ffffffff)");
    }

    void findBytes() {
        if (argument.len == 0) return add(Severity::warning, " is 0 bytes long");
        if (exceedsBytes(argument.min, argument.len) || exceedsBytes(argument.max, argument.len))
            add(Severity::warning, " has bounds that do not fit into " +
                                       std::to_string(argument.len) +
                                       " bytes: the highest bytes are left out");
        const auto greatest = (1 << setting.line.characterSize()) - 1;
        if (greatest < 0xFF && (argument.min < 0 || argument.max > greatest))
            add(Severity::warning, " has bytes that the line cannot carry: its characters have " +
                                       std::to_string(setting.line.characterSize()) + " bits");
    }

    /// The number of characters is what "digits" says, but for two traps of the format: the point
    /// counts also where there is none, and without digits the style is another one.
    void findPoint() {
        const int digits = argument.digits();
        const int decimals = argument.decimals();
        if (digits != 0 && decimals == 0)
            add(Severity::note,
                " has no decimals: it is sent with " + std::to_string(digits + 1) + " digits");
        if (digits != 0) return findDigits(digits + (decimals == 0 ? 1 : 0));
        if (setting.style.fixedPoint)
            return add(Severity::note,
                       " has no digits ahead of the point: it is sent with sign and decimals, but "
                       "not filled up, as the argument ahead of it is of type \"D\"");
        const int significant = std::max(decimals, 1);
        add(Severity::note, " has no digits ahead of the point: it is sent with " +
                                std::to_string(significant) +
                                (significant == 1 ? " significant digit" : " significant digits") +
                                (setting.style.withSign ? " and a sign" : " and without sign") +
                                ", with an exponent where it has more ahead of the point");
    }

    void findDigits(int available) {
        std::int64_t scale = 1;
        for (int place = argument.decimals(); place > 0; --place)
            scale *= 10;
        const int needed =
            std::max(digitsOf(argument.min / scale, 10), digitsOf(argument.max / scale, 10));
        if (needed > available)
            add(Severity::warning, " can have " + std::to_string(needed) +
                                       " digits ahead of the point, more than its " +
                                       std::to_string(available));
    }

    /// A number that is longer than its field moves all that stands behind it.
    void findWidth() {
        const bool isSigned = argument.type == 'B' || setting.style.withSign;
        const int base = argument.type == 'X' ? 16 : 10;
        const auto width = [&](std::int64_t value) {
            const bool hasSign = value < 0 || (isSigned && base == 10);
            return digitsOf(value, base) + (hasSign ? 1 : 0);
        };
        const int available = argument.len + (argument.type == 'B' ? 1 : 0);
        const int needed = base == 16 && argument.min < 0
                               ? 0  // has been told already
                               : std::max(width(argument.min), width(argument.max));
        if (argument.hasKnownType() && argument.len >= leastFilledWidth && needed > available)
            add(Severity::warning, " can have " + std::to_string(needed) +
                                       " characters, more than its " + std::to_string(available));
    }

    [[nodiscard]] std::string typeName() const {
        return quoted(std::string(1, static_cast<char>(argument.type)));
    }

    void add(Severity severity, const std::string& message) {
        mistakes.add(argument.place, name + message, severity);
    }

    const ArgumentDescriptor& argument;
    const ArgumentSetting& setting;
    Mistakes& mistakes;
    std::string name;
};

}  // namespace

void findArgumentSurprises(const ArgumentDescriptor& argument, const ArgumentSetting& setting,
                           Mistakes& mistakes) {
    Finder(argument, setting, mistakes).find();
}

}  // namespace orx::orxdef
