// A start whose calls fail: it ends with its own text and exit status 1 where the daemon could not
// do its work, and goes on where it can.
#include "system/faults/ErrorNumbers.h"
#include "system/faults/FaultStory.h"

namespace orx::test {
namespace {

/// A function that fails in turn with each of its error numbers, each in a start of its own.
struct StartFault {
    const char* name;
    const char* call;
    const char* place;
    std::uint32_t first;  ///< which of the calls fails
    ErrorNumbers errors;
    const char* told = "";  ///< what ends the start; {prefix} and {reason} stand for what they say
};

void PrintTo(const StartFault& fault, std::ostream* out) {
    *out << fault.name;
}

constexpr const char* noConfiguration = "projector definition file {prefix}/lib/orx.ccd not found";
constexpr const char* noThread = "{reason}";

const std::vector<StartFault> startFaults{
    {"ConfigurationOpen", "openForReading", "orx.cfg", 1, openErrors,
     "config file not found: {prefix}/etc/orx.cfg"},
    {"ConfigurationOpenAgain", "openForReading", "orx.cfg", 2, openErrors, noConfiguration},
    {"ConfigurationRead", "read", "orx.cfg", 1, readErrors, noConfiguration},
    {"ConfigurationReadBySignal", "read", "orx.cfg", 1, {EINTR}},
    {"ConfigurationClose", "close", "orx.cfg", 1, closeErrors},
    {"DefinitionsOpen", "openForReading", "models.ccd", 1, openErrors,
     "projector definition file {prefix}/lib/models.ccd not found"},
    {"DefinitionsRead", "read", "models.ccd", 1, readErrors,
     "insufficient mana (wrong or missing magic in projector definition file)"},
    {"DefinitionsReadBySignal", "read", "models.ccd", 1, {EINTR}},
    {"DefinitionsClose", "close", "models.ccd", 1, closeErrors},
    {"SerialOpen", "open", "/dev/pts/", 1, openErrors,
     "[RS232] could not init serial device: {reason}"},
    {"LensMemoryOpen", "openForReading", "lensmemory.cfg", 1, openErrors},
    {"LensMemoryRead", "read", "lensmemory.cfg", 1, readErrors},
    {"LensMemoryClose", "close", "lensmemory.cfg", 1, closeErrors},
    {"Socket",
     "socket",
     "",
     1,
     {EACCES, EAFNOSUPPORT, EINVAL, EMFILE, ENFILE, ENOBUFS, ENOMEM, EPROTONOSUPPORT},
     "[LISTENER] socket bind failed: Bad file descriptor"},
    {"Bind",
     "bind",
     "socket:",
     1,
     {EACCES, EADDRINUSE, EADDRNOTAVAIL, EBADF, EFAULT, EINVAL, ENOMEM, ENOTSOCK},
     "[LISTENER] socket bind failed: {reason}"},
    {"Listen", "listen", "socket:", 1, listenErrors},
    {"LogOpen", "open", "orx.log", 1, openErrors},
    {"LogSizeAhead", "fstat", "orx.log", 1, statErrors},
    {"LogWrite", "write", "orx.log", 1, writeErrors},
    {"LogSize", "lseek", "orx.log", 1, seekErrors},
    {"LogTruncate", "ftruncate", "orx.log", 1, truncateErrors},
    {"LogClose", "close", "orx.log", 1, closeErrors},
    {"ListenerThread", "pthread_create", "", 1, {EAGAIN, EINVAL, EPERM}, noThread},
    {"LensThread", "pthread_create", "", 2, {EAGAIN, EINVAL, EPERM}, noThread},
    {"QueueThread", "pthread_create", "", 3, {EAGAIN, EINVAL, EPERM}, noThread},
};

class StartFaults : public FaultStory, public testing::WithParamInterface<StartFault> {
  protected:
    [[nodiscard]] Launch launch() const {
        auto wanted = underFaults();
        wanted.arguments = {installation.file("etc/orx.cfg")};
        return wanted;
    }

    void expectStart() {
        start(launch());
        expectToServe();
        EXPECT_EQ(quit(), "exit status 0");
    }
    void expectEnd(const std::string& told) {
        EXPECT_EQ(startAndWaitForEnd(launch()), "exit status 1");
        EXPECT_EQ(daemon->lines().back(), "ERROR: " + told);
    }

    /// `text` with what its marks stand for.
    [[nodiscard]] std::string withMarks(std::string text, int error) const {
        for (const auto& [mark, meaning] :
             {std::pair{std::string("{prefix}"), installation.prefix()},
              {std::string("{reason}"), reason(error)}}) {
            const auto place = text.find(mark);
            if (place != std::string::npos) text.replace(place, mark.size(), meaning);
        }
        return text;
    }
};

TEST_P(StartFaults, EndTheStartOrAreOutlived) {
    const auto& fault = GetParam();
    const std::string told = fault.told;
    for (const int error : fault.errors) {
        SCOPED_TRACE(reason(error));
        lengthenLog();
        faults.arm(
            {.call = fault.call, .place = fault.place, .error = error, .first = fault.first});
        if (told.empty()) {
            expectStart();
        } else {
            expectEnd(withMarks(told, error));
        }
        EXPECT_EQ(faults.done(), 1U);
    }
}

class CutConfiguration : public FaultStory {};

TEST_F(CutConfiguration, LosesALineThatAFailingDiskHasCut) {
    configure("");
    auto text = contentOf(installation.file("etc/orx.cfg"));
    installation.writeConfiguration(text + "serial.debug = 2");  // the end of which never comes
    faults.arm({.call = "read", .place = "orx.cfg", .error = EIO, .first = 2});
    auto wanted = underFaults();
    wanted.arguments = {};
    start(wanted);
    expectToServe();
    EXPECT_EQ(faults.done(), 1U);
    EXPECT_THAT(status(), testing::Not(testing::HasSubstr("DEBUG")));
    EXPECT_EQ(quit(), "exit status 0");
}

INSTANTIATE_TEST_SUITE_P(Of, StartFaults, testing::ValuesIn(startFaults));

}  // namespace
}  // namespace orx::test
