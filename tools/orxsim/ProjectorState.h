// What a projector remembers beside its lens: power, mutes, input and the values set.
//
// Standby refuses nothing: the projector takes and keeps every command, as many models do.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxsim {

using Arguments = std::vector<std::string>;

class ProjectorState {
  public:
    /// Something that is on or off; all are off at first.
    struct Switch {
        std::string_view name;
        bool on = false;

        bool operator==(const Switch&) const = default;
    };
    static constexpr std::size_t switchCount = 6;
    /// The last arguments of each command that had some, by command.
    using Values = std::map<std::string, Arguments, std::less<>>;

    /// Carries out a command that does not move the lens. Gives whether anything is other than it
    /// was.
    bool apply(const std::string& command, const Arguments& arguments);

    [[nodiscard]] const std::array<Switch, switchCount>& switches() const noexcept {
        return allSwitches;
    }
    /// Empty as long as none was chosen.
    [[nodiscard]] const std::string& input() const noexcept { return chosenInput; }
    [[nodiscard]] const Values& values() const noexcept { return lastValues; }

    bool operator==(const ProjectorState&) const = default;

  private:
    std::array<Switch, switchCount> allSwitches{
        {{"power"}, {"shutter"}, {"audio mute"}, {"picture mute"}, {"av mute"}, {"freeze"}}};
    std::string chosenInput;
    Values lastValues;
};

}  // namespace orx::orxsim
