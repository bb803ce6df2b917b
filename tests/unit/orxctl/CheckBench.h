// A start under check: a sound configuration with a definition file, a pseudo-terminal as serial
// line and a channel of this process's own, to which a test adds the lines it is about.
#pragma once

#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/ConfigLine.h"
#include "core/InstallPrefix.h"
#include "lens/LensConfig.h"
#include "orxctl/check/Check.h"
#include "support/TemporaryFolder.h"
#include "support/UdpPeer.h"
#include "unit/orxdef/Reading.h"
#include "unit/serial/PseudoTerminal.h"

namespace orx::orxctl {

using Lines = std::vector<std::string>;

/// Lines of a configuration file, and all that is found about them.
struct Case {
    std::string name;
    std::string lines;
    Lines findings;
};

inline void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.name;
}

inline std::string nameOf(const testing::TestParamInfo<Case>& each) {
    return each.param.name;
}

class CheckBench : public testing::Test {
  protected:
    CheckBench() {
        std::filesystem::create_directories(INSTALL_PREFIX + "/var");
        std::filesystem::remove_all(LensConfig::filePath());
        // The tests of access change the user.
        std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
        defineModel("ON = 'on'\nMUTE = 'mute'\nINPUT = 'input'\n");
    }

    /// Makes the definition file from one model, called M, with those commands.
    void defineModel(const std::string& commands) const {
        folder.write("orx.ccd", orxdef::imageOf(orxdef::modelWith(commands)));
    }

    static std::string channel(int number = 0) {
        return test::privateAddress() + ":" + std::to_string(test::privatePort + number);
    }

    /// Writes a configuration file that begins with `lines` and has all that a start needs besides.
    std::string configure(const std::string& lines) const {
        std::string content = lines.empty() || lines.ends_with('\n') ? lines : lines + "\n";
        for (const auto& [key, value] : soundSettings())
            if (!hasKey(lines, key)) content.append(key).append(" = ").append(value).append("\n");
        return folder.write("orx.cfg", content);
    }

    /// What the check prints, with the test's own folders taken out of all paths.
    std::string report(const std::string& lines, CheckFormat format = CheckFormat::text) {
        return reportOn(configure(lines), format);
    }

    std::string reportOn(const std::string& path, CheckFormat format = CheckFormat::text) {
        std::ostringstream output;
        status = check(path, format, output);
        return shortened(output.str());
    }

    /// The findings alone, less what depends on the other users of this machine.
    Lines findings(const std::string& lines) { return findingsIn(report(lines)); }

    /// In what depends on the other users of this machine.
    static constexpr std::string_view ofOthers = "check as root to see";

    static Lines findingsIn(const std::string& text) {
        Lines lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            if (line.find(ofOthers) == std::string::npos) lines.push_back(line);
        constexpr std::size_t countsAndVerdict = 2;
        lines.resize(lines.size() - std::min(lines.size(), countsAndVerdict));
        return lines;
    }

    [[nodiscard]] std::string shortened(std::string text) const {
        for (const auto& prefix : {folder.file(""), INSTALL_PREFIX + "/", line.device()})
            for (auto place = text.find(prefix); place != std::string::npos;
                 place = text.find(prefix, place))
                text.replace(place, prefix.size(), prefix == line.device() ? "LINE" : "");
        return text;
    }

    test::TemporaryFolder folder;
    test::PseudoTerminal line;
    int status = -1;  ///< of the last check

  private:
    using Settings = std::vector<std::pair<std::string, std::string>>;

    [[nodiscard]] Settings soundSettings() const {
        return {{"controlchannel", channel()},
                {"definitionfile", folder.file("orx.ccd")},
                {"logfile", folder.file("orx.log")},
                {"projector", "M"},
                {"serial.device", line.device()}};
    }

    static bool hasKey(const std::string& lines, const std::string& key) {
        std::istringstream stream(lines);
        for (std::string text; std::getline(stream, text);)
            if (parseConfigLine(text).key == key) return true;
        return false;
    }
};

/// For tables of cases.
class CheckTable : public CheckBench, public testing::WithParamInterface<Case> {};

}  // namespace orx::orxctl
