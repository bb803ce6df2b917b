#include "orxsim/Options.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "orxsim/AnswerText.h"

namespace orx::orxsim {
namespace {

constexpr std::uint64_t mostSteps = 1'000'000;
constexpr std::uint64_t longestTime = 86'400'000;  // milliseconds: a day
constexpr std::uint64_t greatest32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t greatest64 = std::numeric_limits<std::uint64_t>::max();

/// What stands in for a middle that depends on another option.
constexpr int unset = -1;

std::optional<std::uint64_t> number(std::string_view text, std::uint64_t least,
                                    std::uint64_t greatest) {
    std::uint64_t value = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) return std::nullopt;
    if (value < least || value > greatest) return std::nullopt;
    return value;
}

/// One option of the command line while its text is read; says under its name what is wrong.
class OptionText {
  public:
    OptionText(std::string optionName, std::string optionText)
        : name(std::move(optionName)), text(std::move(optionText)) {}

    [[noreturn]] void refuse(const std::string& expected) const {
        throw CLI::ValidationError(name, "must be " + expected + ", not " + text);
    }

    [[nodiscard]] std::uint64_t whole(std::uint64_t least, std::uint64_t greatest) const {
        const auto value = number(text, least, greatest);
        if (!value) {
            refuse("a whole number from " + std::to_string(least) + " to " +
                   std::to_string(greatest));
        }
        return *value;
    }

    [[nodiscard]] Instant milliseconds() const {
        return std::chrono::milliseconds(whole(0, longestTime));
    }

    /// Whole numbers of steps between commas.
    [[nodiscard]] std::vector<int> steps(std::uint64_t least) const {
        std::vector<int> values;
        std::string_view rest = text;
        while (true) {
            const auto comma = rest.find(',');
            const auto value = number(rest.substr(0, comma), least, mostSteps);
            if (!value) return {};
            values.push_back(static_cast<int>(*value));
            if (comma == std::string_view::npos) return values;
            rest.remove_prefix(comma + 1);
        }
    }

    /// One value for both axes, or one for each.
    [[nodiscard]] std::array<int, axisCount> bothAxes(std::uint64_t least) const {
        const auto values = steps(least);
        if (values.empty() || values.size() > axisCount) {
            refuse("ZOOM or ZOOM,FOCUS in steps from " + std::to_string(least) + " to " +
                   std::to_string(mostSteps));
        }
        return {values.front(), values.back()};
    }

    [[nodiscard]] std::array<int, 3> jogs() const {
        const auto values = steps(1);
        if (values.size() != 3) refuse("SMALL,MEDIUM,LARGE in steps");
        return {values[0], values[1], values[2]};
    }

    [[nodiscard]] Ratio ratio() const {
        const auto slash = text.find('/');
        const auto of = slash == std::string::npos
                            ? std::nullopt
                            : number(view().substr(slash + 1), 1, greatest32);
        const auto count = number(view().substr(0, slash), 0, of.value_or(0));
        if (!of || !count) refuse("N/M, N times in M");
        return {static_cast<std::uint32_t>(*count), static_cast<std::uint32_t>(*of)};
    }

    [[nodiscard]] Unplugging unplugging() const {
        const auto unit = text.find_first_not_of("0123456789");
        const auto value = number(view().substr(0, unit), 0, longestTime);
        const auto suffix = unit == std::string::npos ? std::string() : text.substr(unit);
        if (value && suffix == "ms") return {{}, std::chrono::milliseconds(*value)};
        if (value && suffix == "s") return {{}, std::chrono::seconds(*value)};
        if (!value || *value == 0 || !suffix.empty()) {
            refuse("a number of commands, or a time in ms or s");
        }
        return {*value, {}};
    }

    [[nodiscard]] std::string answer() const {
        try {
            return answerBytes(text);
        } catch (const std::invalid_argument& mistake) {
            throw CLI::ValidationError(name, mistake.what());
        }
    }

  private:
    [[nodiscard]] std::string_view view() const noexcept { return text; }

    std::string name;
    std::string text;
};

using Reader = std::function<void(const OptionText&)>;

CLI::Option* add(CLI::App& app, const std::string& name, const std::string& type,
                 const std::string& help, const Reader& read) {
    const auto take = [name, read](const std::string& text) { read(OptionText(name, text)); };
    return app.add_option_function<std::string>(name, take, help)->type_name(type);
}

void addFiles(CLI::App& app, Options& options) {
    app.add_option("--definitions", options.definitions, "The compiled definition file")
        ->required()
        ->type_name("orx.ccd");
    app.add_option("--model", options.model, "The model to be, as the file calls it")
        ->required()
        ->type_name("NAME");
    app.add_option("--link", options.link, "The name of the line: the daemon's serial.device")
        ->required()
        ->type_name("PATH");
}

void addLens(CLI::App& app, Behaviour& lens) {
    add(app, "--travel", "ZOOM[,FOCUS]", "Steps from end to end; 2000,1000 if left out",
        [&lens](const auto& text) { lens.travel = text.bothAxes(1); });
    add(app, "--start", "ZOOM[,FOCUS]", "Where the lens stands; the middle if left out",
        [&lens](const auto& text) { lens.start = text.bothAxes(0); });
    add(app, "--jog", "SMALL,MEDIUM,LARGE", "Steps of the three jogs; 5,20,100 if left out",
        [&lens](const auto& text) { lens.jogSteps = text.jogs(); });
    add(app, "--step-time", "MS", "Time of one motor step; none if left out",
        [&lens](const auto& text) { lens.stepTime = text.milliseconds(); });
    add(app, "--backlash", "STEPS", "Play between motor and lens; none if left out",
        [&lens](const auto& text) { lens.backlash = static_cast<int>(text.whole(0, mostSteps)); });
    add(app, "--lose", "N/M", "Lose N in M motor steps, but none in a reset",
        [&lens](const auto& text) { lens.lostSteps = text.ratio(); });
}

void addLine(CLI::App& app, Behaviour& line) {
    app.add_flag("--real-time", line.realTime, "Take the time that bytes take on a real line");
    add(app, "--line-noise", "N/M", "Alter or drop N in M bytes received",
        [&line](const auto& text) { line.lineNoise = text.ratio(); });
    add(app, "--unplug-after", "N[ms|s]", "Cut the line after N commands, or after a time",
        [&line](const auto& text) { line.unplugging = text.unplugging(); });
}

void addAnswers(CLI::App& app, Behaviour& answers) {
    add(app, "--ack", "TEXT", R"(The answer to a command; \xNN \r \n \t \\ as such)",
        [&answers](const auto& text) { answers.acknowledgement = text.answer(); });
    add(app, "--error", "TEXT", "The answer to anything else",
        [&answers](const auto& text) { answers.error = text.answer(); });
    add(app, "--slow-answer", "MS", "Answer so much later",
        [&answers](const auto& text) { answers.answerDelay = text.milliseconds(); });
    auto* const silent = app.add_flag_callback(
        "--no-answer", [&answers] { answers.answers = AnswerFault::silent; }, "Answer nothing");
    app.add_flag_callback(
           "--garbage-answer", [&answers] { answers.answers = AnswerFault::garbage; },
           "Answer with bytes that mean nothing")
        ->excludes(silent);
}

void checkStart(Behaviour& lens) {
    for (std::size_t axis = 0; axis < axisCount; ++axis) {
        if (lens.start[axis] == unset) lens.start[axis] = lens.travel[axis] / 2;
        if (lens.start[axis] > lens.travel[axis]) {
            throw CLI::ValidationError("--start", "must lie within the travel");
        }
    }
}

}  // namespace

Options readOptions(CLI::App& app, int argc, const char* const* argv) {
    Options options;
    options.behaviour.start.fill(unset);
    addFiles(app, options);
    addLens(app, options.behaviour);
    addLine(app, options.behaviour);
    addAnswers(app, options.behaviour);
    add(app, "--seed", "N", "Other faults of the same kinds; 1 if left out",
        [&options](const auto& text) { options.behaviour.seed = text.whole(0, greatest64); });
    app.add_flag("--json", options.json, "Write one event a line also on a terminal");
    app.footer(
        "A single value of ZOOM stands for both axes. A terminal shows a picture of the\n"
        "projector, anything else gets one event a line.");
    app.parse(argc, argv);
    checkStart(options.behaviour);
    return options;
}

}  // namespace orx::orxsim
