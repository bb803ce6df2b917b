#include "orxctl/check/Check.h"

#include <exception>

#include "config/ConfigKeys.h"
#include "lens/LensConfig.h"
#include "orxctl/check/AliasCheck.h"
#include "orxctl/check/ChannelCheck.h"
#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/DefinitionCheck.h"
#include "orxctl/check/Files.h"
#include "orxctl/check/KeyCheck.h"
#include "orxctl/check/LensCheck.h"
#include "orxctl/check/Report.h"
#include "orxctl/check/ReportWriter.h"
#include "orxctl/check/SerialCheck.h"
#include "orxctl/check/Writability.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

/// A given file must be there. False where there is nothing to judge.
bool checkGivenFile(const std::string& path, Report& report) {
    try {
        MainConfig::requireReadable(path);
        return true;
    } catch (const std::exception& error) {
        report.ends({.subject = "configuration", .file = path}, error.what(),
                    exists(path) ? "the file is there, but cannot be read; let the user of the "
                                   "daemon read it"
                                 : "there is no such file; mend the name");
        return false;
    }
}

/// The default file may be missing; the daemon does not tell.
void checkDefaultFile(const std::string& path, Report& report) {
    const Place place{.subject = "configuration", .file = path};
    if (!exists(path))
        report.note(place,
                    "there is no configuration file, so the defaults are taken; make one that "
                    "names projector and serial.device");
    else if (!ConfigFile::isReadable(path))
        report.error(place,
                     "the file cannot be read, so the defaults are taken in its place; let the "
                     "user of the daemon read it");
}

void checkLog(const CheckedConfig& config, Report& report) {
    const auto path = config.values.logFile();
    const auto place = config.text.placeOf(config_key::logFile);
    if (path.empty())
        report.warn(place, "no log is kept; give the path of a file, or remove the line");
    else if (const auto obstacle = obstacleToWriting(path))
        report.warn(place, obstacle->reason + ", so no log is kept; " + obstacle->cure);
}

/// The lens memory is read ahead of the values that say how the lens is to move.
void checkLens(const CheckedConfig& config, Report& report) {
    const ConfigText memory(LensConfig::filePath());
    checkLines(memory, Stage::withProjector, report);
    checkMotion(config, report);
    checkLensMemory(memory, report);
}

/// The parts of the start, one behind the other as the daemon goes through them.
void checkParts(const std::string& path, Report& report) {
    const CheckedConfig config(path);
    checkLines(config.text, Stage::always, report);
    checkKeys(config, report);
    checkLog(config, report);
    const auto model = checkDefinition(config, report);
    checkSerial(config, model, report);
    checkAliases(config, model, report);
    checkLens(config, report);
    checkChannels(config, ownPortRights(), report);
}

void checkStart(const std::string& given, Report& report) {
    const auto path = given.empty() ? MainConfig::defaultPath() : given;
    if (!given.empty() && !checkGivenFile(given, report)) return;
    if (given.empty()) checkDefaultFile(path, report);
    if (isFolder(path))
        report.error({.subject = "configuration", .file = path},
                     "that is a folder, so the defaults are taken; name a file");
    checkParts(path, report);
}

}  // namespace

int check(const std::string& configPath, CheckFormat format, std::ostream& output) {
    Report report;
    checkStart(configPath, report);
    if (format == CheckFormat::json)
        printJson(report, output);
    else
        printText(report, output);
    return report.count(Severity::error) == 0 ? 0 : 1;
}

}  // namespace orx::orxctl
