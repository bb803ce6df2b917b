#include "orxctl/check/DeviceCheck.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "orxctl/check/Holders.h"
#include "orxctl/check/Person.h"
#include "orxctl/check/ShellWord.h"
#include "orxctl/check/TerminalDrivers.h"
#include "orxdef/Wording.h"
#include "serial/SerialConnector.h"

namespace orx::orxctl {
namespace {

namespace fs = std::filesystem;

/// What a name below the folder leads to, for an adapter that is plugged in.
std::vector<std::string> adapterNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); entry != end(entry); entry.increment(error))
        names.push_back(entry->path().string());
    std::ranges::sort(names);
    return names;
}

/// Whether a device has a name that another adapter can get the next time.
bool isNamedByOrder(const std::string& path) {
    const auto name = fs::path(path).filename().string();
    return name.starts_with("ttyUSB") || name.starts_with("ttyACM");
}

std::string memberAdvice(gid_t group) {
    const auto name = groupName(group);
    if (isListedIn(group) && !hasRightsOf(group))
        return "the user was put into its group " + orxdef::quoted(name) +
               " after this session began; log in again";
    return "it belongs to group " + orxdef::quoted(name) + ": sudo usermod -aG " + name + " " +
           userName() + ", then log in again";
}

std::string accessAdvice(const std::string& path, const struct stat& status) {
    constexpr mode_t groupMayUse = S_IRGRP | S_IWGRP;
    constexpr gid_t administrators = 0;  // too much of a right for a serial line
    if ((status.st_mode & groupMayUse) == groupMayUse && status.st_gid != administrators &&
        !hasRightsOf(status.st_gid))
        return memberAdvice(status.st_gid);
    return "its permissions shut the user out: sudo chmod a+rw " + shellWord(path);
}

class DeviceCheck {
  public:
    DeviceCheck(const std::string& devicePath, Place devicePlace, std::string namesFolder,
                Report& findings)
        : path(devicePath),
          place(std::move(devicePlace)),
          byIdFolder(std::move(namesFolder)),
          report(findings) {}

    void check() {
        if (path.empty()) {
            cannotOpen(ENOENT, "there is no serial device; set serial.device" + suggestions());
            return;
        }
        if (::stat(path.c_str(), &status) != 0) {
            explainMissing(errno);
            return;
        }
        if (S_ISDIR(status.st_mode)) {
            refuseKind(EISDIR, " is a folder");
            return;
        }
        if (S_ISSOCK(status.st_mode)) {
            refuseKind(ENXIO, " is a socket");
            return;
        }
        if (const int error = accessError(path, R_OK | W_OK); error != 0) {
            cannotOpen(error, "user " + orxdef::quoted(userName()) + " may not read and write " +
                                  orxdef::quoted(path) + "; " + accessAdvice(path, status));
        }
        if (isLine()) {
            checkHolders();
            checkName();
        }
    }

  private:
    void cannotOpen(int errorNumber, const std::string& reason) {
        report.ends(place, SerialConnector::openFailure(errorNumber), reason, Stage::withProjector);
    }

    void refuseKind(int errorNumber, const std::string& kind) {
        cannotOpen(errorNumber, orxdef::quoted(path) + kind + "; name a device" + suggestions());
    }

    void explainMissing(int errorNumber) {
        const auto reason = errorNumber == ENOENT
                                ? "there is no " + orxdef::quoted(path) +
                                      "; plug in the adapter, or mend the name" + suggestions()
                                : orxdef::quoted(path) + " cannot be reached; mend the name";
        cannotOpen(errorNumber, reason);
    }

    [[nodiscard]] std::string suggestions() const {
        const auto names = adapterNames(byIdFolder);
        if (names.empty()) return "";
        const std::vector<std::string_view> views(names.begin(), names.end());
        return "; plugged in: " + orxdef::listed(views);
    }

    /// What is no serial line can be opened all the same, and swallows the commands.
    bool isLine() {
        const auto refuse = [this](const std::string& what) {
            report.error(place, orxdef::quoted(path) + what +
                                    ", so no command reaches a projector; name the device of the "
                                    "serial line" +
                                    suggestions());
            return false;
        };
        if (!S_ISCHR(status.st_mode)) return refuse(" is no device");
        if (!isTerminal(status.st_rdev).value_or(true)) return refuse(" is no serial line");
        if (lacksHardware(status.st_rdev)) return refuse(" has no hardware behind it");
        return true;
    }

    void checkHolders() {
        const auto [processes, hidden, suspects] = holdersOfDevice(status);
        for (const auto& process : processes)
            if (!isSimulator(process))
                report.warn(place, orxdef::quoted(path) + " is held by " + owner(process));
        if (processes.empty() && !suspects.empty())
            report.note(place, orxdef::quoted(path) +
                                   " may be held by a daemon that already runs, " +
                                   listed(suspects) + "; check as root to see");
        else if (processes.empty() && hidden > 0)
            report.note(place, "whether another process holds " + orxdef::quoted(path) +
                                   " is not known: " + unseen(hidden));
    }

    /// The projector in software is the other end of its line.
    static bool isSimulator(const Process& process) { return process.name == "orxsim"; }

    [[nodiscard]] std::string owner(const Process& process) const {
        if (process.isDaemon())
            return "a daemon that already runs, " + listed({process}) +
                   "; two of them would mix up their commands: end it with QUIT first";
        if (process.name.find("getty") != std::string::npos)
            return "a login prompt, " + listed({process}) +
                   ", which would talk to the projector: sudo systemctl disable --now "
                   "serial-getty@" +
                   fs::path(path).filename().string();
        return listed({process}) + ", which would take away answers and mix in bytes; end it first";
    }

    /// Names the same device by what it is, where the system has such a name for it.
    void checkName() {
        if (!isNamedByOrder(path)) return;
        for (const auto& name : adapterNames(byIdFolder)) {
            struct stat named {};
            if (::stat(name.c_str(), &named) != 0 || named.st_rdev != status.st_rdev) continue;
            report.note(place, orxdef::quoted(path) +
                                   " can be another adapter after the next start; this one is "
                                   "always called " +
                                   name);
            return;
        }
    }

    const std::string& path;
    const Place place;
    const std::string byIdFolder;
    Report& report;
    struct stat status {};
};

}  // namespace

void checkDevice(const std::string& path, const Place& place, Report& report,
                 const std::string& byIdFolder) {
    DeviceCheck(path, place, byIdFolder, report).check();
}

}  // namespace orx::orxctl
