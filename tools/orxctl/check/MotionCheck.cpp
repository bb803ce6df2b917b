#include <string>

#include "config/ConfigKeys.h"
#include "lens/AxisCommands.h"
#include "lens/LensConfig.h"
#include "lens/LensControl.h"
#include "orxctl/check/LensCheck.h"
#include "orxctl/check/NumberCheck.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

class MotionCheck {
  public:
    MotionCheck(const CheckedConfig& checkedConfig, std::string_view axis, Report& findings)
        : config(checkedConfig), axisName(axis), report(findings) {}

    /// In the order in which the daemon reads the values.
    void check() const {
        checkReduction();
        static_cast<void>(number(config_key::resetOnLoadMem, "0 or 1"));
        const auto steps = number(config_key::resetSteps, "a number of steps such as 50");
        if (steps && *steps <= 0)
            warn(config_key::resetSteps,
                 "with " + std::to_string(*steps) +
                     " no step is sent for a reset; give as many fast steps as "
                     "surely reach the end stop");
        constexpr int lastMode = 6;
        const auto mode = number(config_key::lockInMode, "0 to 6");
        if (mode && (*mode < 0 || *mode > lastMode))
            warn(config_key::lockInMode, std::to_string(*mode) + " does nothing; give 0 to 6");
    }

  private:
    void checkReduction() const {
        const auto text = config.values.getString(axisKey(axisName, config_key::reduceMax));
        if (text.empty()) return;
        const auto percent = text.find('%');
        const auto number = NumberCheck(Stage::withProjector, report)
                                .read(text.substr(0, percent), place(config_key::reduceMax),
                                      "a percentage such as 10% or a number of steps such as 50");
        if (!number) return;
        if (percent != std::string::npos && percent + 1 < text.size())
            warn(config_key::reduceMax, orxdef::quoted(text.substr(percent + 1)) +
                                            " behind the \"%\" is passed over" + "; leave it out");
        if (*number < 0)
            warn(config_key::reduceMax, "a sign means nothing: " + orxdef::quoted(text) +
                                            " withholds as much as without it; leave it out");
        constexpr int everything = 100;
        if (parseReduceMax(text) >= everything)
            warn(config_key::reduceMax,
                 orxdef::quoted(text) +
                     " withholds all of the travel, so the lens cannot move to a "
                     "position; give less than 100%");
    }

    [[nodiscard]] std::optional<int> number(std::string_view key, std::string_view wanted) const {
        return NumberCheck(Stage::withProjector, report)
            .read(config.values, config.text, axisKey(axisName, key), wanted);
    }

    [[nodiscard]] Place place(std::string_view key) const {
        return config.text.placeOf(axisKey(axisName, key));
    }

    void warn(std::string_view key, const std::string& message) const {
        report.warn(place(key), message);
    }

    const CheckedConfig& config;
    std::string_view axisName;
    Report& report;
};

}  // namespace

void checkMotion(const CheckedConfig& config, Report& report) {
    for (const auto& axis : {zoomCommands, focusCommands})
        MotionCheck(config, axis.axisName, report).check();
}

}  // namespace orx::orxctl
