#include "orxctl/check/SerialCheck.h"

#include <array>
#include <string>

#include "config/ConfigKeys.h"
#include "orxctl/check/DeviceCheck.h"
#include "orxctl/check/NumberCheck.h"
#include "orxdef/Wording.h"
#include "serial/SerialSettings.h"

namespace orx::orxctl {
namespace {

constexpr auto parityKey = config_key::serialParity;

std::string rangeText(const SerialRange& range) {
    return std::to_string(range.lowest) + " to " + std::to_string(range.highest);
}

class SerialCheck {
  public:
    SerialCheck(const CheckedConfig& checkedConfig, const std::optional<ChosenModel>& chosenModel,
                Report& findings)
        : config(checkedConfig), model(chosenModel), report(findings) {}

    void check() {
        const int debug = number(serial_range::debug, Stage::always, "0 is used").value_or(0);
        const auto baudrate = lineNumber(serial_range::baudrate, &LineParameters::baudrate);
        lineNumber(serial_range::bytesize, &LineParameters::bytesize);
        lineNumber(serial_range::delay, &LineParameters::delay);
        checkParity();
        lineNumber(serial_range::stopbits, &LineParameters::stopbits);
        lineNumber(serial_range::timeout, &LineParameters::timeout);
        if (debug == SerialSettings::noSerialDevice) {
            report.note(config.text.placeOf(serial_range::debug.key),
                        "with level 2 nothing is sent to the projector, only shown; remove the "
                        "line to drive it");
            return;
        }
        if (baudrate) checkSpeed(*baudrate);
        checkDevice(config.values.serialDevice(), config.text.placeOf(config_key::serialDevice),
                    report);
    }

  private:
    /// The value where it is taken; `otherwise` says what is in its place.
    std::optional<int> number(const SerialRange& range, Stage stage, const std::string& otherwise) {
        const auto value = NumberCheck(stage, report)
                               .read(config.values, config.text, range.key, rangeText(range));
        if (!value || range.contains(*value)) return value;
        report.warn(config.text.placeOf(range.key), std::to_string(*value) + " is passed over, " +
                                                        otherwise + "; give " + rangeText(range));
        return std::nullopt;
    }

    /// What is in force: the model's value where no other is taken.
    std::optional<int> lineNumber(const SerialRange& range, int LineParameters::*field) {
        const auto modelValue = model ? std::optional<int>(model->line.*field) : std::nullopt;
        const auto otherwise = modelValue ? ownValue(std::to_string(*modelValue)) : ownValue("");
        const auto value = number(range, Stage::withProjector, otherwise);
        return value ? value : modelValue;
    }

    [[nodiscard]] std::string ownValue(const std::string& value) const {
        if (!model) return "that of the projector model stays";
        return orxdef::quoted(model->name) + " keeps its " + value;
    }

    void checkParity() {
        const auto text = config.values.getString(parityKey);
        if (text.empty() || parityFromText(text)) return;
        const auto number = static_cast<std::size_t>(model ? model->line.parity : 0);
        const auto own = number < parityTexts.size() ? std::string(parityTexts.at(number))
                                                     : "code " + std::to_string(number);
        report.warn(config.text.placeOf(parityKey),
                    orxdef::quoted(text) + " is passed over, " + ownValue(own) + "; give " +
                        orxdef::alternatives(parityTexts) + " in small letters");
    }

    void checkSpeed(int baudrate) {
        if (isPossibleSpeed(baudrate)) return;
        report.error(config.text.placeOf(serial_range::baudrate.key),
                     "no serial line has " + std::to_string(baudrate) +
                         " bit/s: it hangs up and carries nothing; set serial.baudrate to what the "
                         "projector's manual says, such as 9600");
    }

    const CheckedConfig& config;
    const std::optional<ChosenModel>& model;
    Report& report;
};

}  // namespace

void checkSerial(const CheckedConfig& config, const std::optional<ChosenModel>& model,
                 Report& report) {
    SerialCheck(config, model, report).check();
}

}  // namespace orx::orxctl
