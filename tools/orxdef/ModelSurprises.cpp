// What is odd about the serial line and the lens of one model.
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "commands/Keywords.h"
#include "lens/AxisCommands.h"
#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"
#include "serial/SerialSettings.h"

namespace orx::orxdef {
namespace {

/// The relative steps upwards of an axis, which a lens has that can be moved at all.
using UpCommands = std::array<std::string_view, 3>;
constexpr UpCommands zoomUp{CMD_ZOOM_PLUS, CMD_ZOOM_PLUS2, CMD_ZOOM_PLUS3};
constexpr UpCommands focusUp{CMD_FOCUS_PLUS, CMD_FOCUS_PLUS2, CMD_FOCUS_PLUS3};

class AxisFinder {
  public:
    AxisFinder(const ModelDefinition& definition, const CommandTable& table,
               const AxisCommands& axisCommands, const UpCommands& upCommands, Mistakes& all)
        : model(definition), commands(table), axis(axisCommands), up(upCommands), mistakes(all) {}

    void find() {
        const bool stepsUp = has(axis.stepUpCommand);
        const bool stepsDown = has(axis.stepDownCommand);
        if (!stepsUp && !stepsDown) {
            if (has(axis.resetCommand) || hasAny(axis.fastResetCommands) || hasAny(up))
                add("cannot be moved to a position: there is neither " +
                    quoted(axis.stepUpCommand) + " nor " + quoted(axis.stepDownCommand));
            return;
        }
        if (!stepsUp) add("has no steps up: " + quoted(axis.stepUpCommand) + " is missing");
        if (!stepsDown) add("has no steps down: " + quoted(axis.stepDownCommand) + " is missing");
        if (!has(axis.resetCommand) && !hasAny(axis.fastResetCommands))
            add("cannot be reset, so it never knows its position: there is none of " +
                quoted(axis.resetCommand) + ", " + alternatives(axis.fastResetCommands));
        if (stepsUp && stepsDown && bytesOf(axis.stepUpCommand) == bytesOf(axis.stepDownCommand))
            add("has the same bytes for " + quoted(axis.stepUpCommand) + " and " +
                quoted(axis.stepDownCommand));
        findSilentMoves();
    }

  private:
    /// Positions are counted by commands, whatever these send.
    void findSilentMoves() {
        for (const auto keyword : {axis.stepUpCommand, axis.stepDownCommand, resetInUse()})
            if (has(keyword) && bytesOf(keyword).empty())
                add("is counted as moved by " + quoted(keyword) + ", which sends no bytes");
    }

    /// The command that a reset sends: the native one, else the first of the fast steps.
    [[nodiscard]] std::string_view resetInUse() const {
        if (has(axis.resetCommand)) return axis.resetCommand;
        const auto* const fast = std::ranges::find_if(
            axis.fastResetCommands, [this](auto keyword) { return has(keyword); });
        return fast != axis.fastResetCommands.end() ? *fast : axis.resetCommand;
    }

    [[nodiscard]] bool has(std::string_view keyword) const {
        const auto command = commands.find(keyword);
        return command != commands.end() && command->second.string != nullptr;
    }

    /// Of a command that there is.
    [[nodiscard]] const std::string& bytesOf(std::string_view keyword) const {
        return commands.find(keyword)->second.string->bytes;
    }

    [[nodiscard]] bool hasAny(const std::array<std::string_view, 3>& keywords) const {
        return std::ranges::any_of(keywords, [this](auto keyword) { return has(keyword); });
    }

    void add(const std::string& message) {
        mistakes.add(
            model.place,
            "the " + std::string(axis.axisName) + " of " + quoted(model.name) + " " + message,
            Severity::warning);
    }

    const ModelDefinition& model;
    const CommandTable& commands;
    const AxisCommands& axis;
    const UpCommands& up;
    Mistakes& mistakes;
};

}  // namespace

void findLineSurprises(const ModelDefinition& model, Mistakes& mistakes) {
    constexpr unsigned msPerTenth = 100;
    constexpr unsigned greatestTimeout = 25'599;  // the system counts tenths of a second in a byte
    const auto& line = model.line;
    const auto add = [&](Severity severity, const std::string& message) {
        mistakes.add(model.place, quoted(model.name) + " " + message, severity);
    };
    const auto warnUnless = [&](bool usual, const std::string& message) {
        if (!usual) add(Severity::warning, message);
    };
    warnUnless(isPossibleSpeed(static_cast<int>(line.baudrate)),
               "has the baud rate " + std::to_string(line.baudrate) +
                   ", which no serial line has: it would be dead");
    warnUnless(line.bytesize >= 5 && line.bytesize <= 8,
               "has the character size " + std::to_string(line.bytesize) + ", which counts as 8");
    warnUnless(line.stopbits == 1 || line.stopbits == 2,
               "has " + std::to_string(line.stopbits) + " stop bits, which count as 1");
    warnUnless(line.parity <= Parity::even, "has the parity code " +
                                                std::to_string(static_cast<int>(line.parity)) +
                                                ", which counts as none");
    warnUnless(model.checksum <= Checksum::sum8,
               "has the checksum kind " + std::to_string(static_cast<int>(model.checksum)) +
                   ", which counts as none");
    if (model.checksum == Checksum::sum8 && line.characterSize() < 8)
        add(Severity::note, "has a checksum of 8 bits, of which the line carries " +
                                std::to_string(line.characterSize()));
    warnUnless(line.timeout <= greatestTimeout, "has a timeout of " + std::to_string(line.timeout) +
                                                    " ms; above 25599 it begins again at 0");
    if (line.timeout < msPerTenth)
        add(Severity::note, "has a timeout of " + std::to_string(line.timeout) +
                                " ms; below 100 no answer is waited for");
    else if (line.timeout <= greatestTimeout && line.timeout % msPerTenth != 0)
        add(Severity::note, "has a timeout of " + std::to_string(line.timeout) +
                                " ms, which counts as " +
                                std::to_string(line.timeout / msPerTenth * msPerTenth));
}

void findLensSurprises(const ModelDefinition& model, const CommandTable& commands,
                       Mistakes& mistakes) {
    AxisFinder(model, commands, zoomCommands, zoomUp, mistakes).find();
    AxisFinder(model, commands, focusCommands, focusUp, mistakes).find();
}

}  // namespace orx::orxdef
