// A daemon that runs outlives every failing call: it answers, executes and ends as ever.
#include "system/faults/ErrorNumbers.h"
#include "system/faults/FaultStory.h"

namespace orx::test {
namespace {

/// A function that fails in turn with each of its error numbers, once each.
struct RunningFault {
    const char* name;
    const char* call;
    const char* place;
    const char* request;  ///< what makes the daemon call it; empty: it does so by itself
    ErrorNumbers errors;
    const char* told = "";  ///< the beginning of a console line that ends with the system's text
};

void PrintTo(const RunningFault& fault, std::ostream* out) {
    *out << fault.name;
}

constexpr const char* sockets = "socket:";
constexpr const char* console = "pipe:";
constexpr const char* terminal = "/dev/pts/";
constexpr const char* logFile = "orx.log";

const std::vector<RunningFault> runningFaults{
    {"Receive",
     "recvfrom",
     sockets,
     "STATUS",
     {EAGAIN, EBADF, ECONNREFUSED, EFAULT, EINTR, EINVAL, ENOMEM, ENOTCONN, ENOTSOCK}},
    {"Reply", "sendto", sockets, "STATUS", {EACCES,     EAGAIN,       EALREADY,    EBADF,
                                            ECONNRESET, EDESTADDRREQ, EFAULT,      EINTR,
                                            EINVAL,     EISCONN,      EMSGSIZE,    ENOBUFS,
                                            ENOMEM,     ENOTCONN,     ENOTSOCK,    EOPNOTSUPP,
                                            EPIPE,      EHOSTUNREACH, ENETUNREACH, ENETDOWN}},
    {"ConsoleWrite", "write", console, "nonsense", writeErrors},
    {"LogOpen", "open", logFile, "nonsense", openErrors},
    {"LogWrite", "write", logFile, "nonsense", writeErrors},
    {"LogSize", "lseek", logFile, "nonsense", seekErrors},
    {"LogTruncate", "ftruncate", logFile, "nonsense", truncateErrors},
    {"LogClose", "close", logFile, "nonsense", closeErrors},
    {"SerialWrite", "write", terminal, "ON", writeErrors},
    {"SerialDrain", "tcdrain", terminal, "ON", terminalErrors},
    {"SerialRead", "read", terminal, "ON", readErrors, "[RS232] read error: "},
    {"SerialReadBySignal", "read", terminal, "ON", {EINTR}, "[RS232] read error: "},
    {"Sleep", "nanosleep", "", "", {EFAULT, EINTR, EINVAL}},
    {"Clock", "gettimeofday", "", "nonsense", {EFAULT, EINVAL}},
};

class RunningFaults : public FaultStory, public testing::WithParamInterface<RunningFault> {};

TEST_P(RunningFaults, AreOutlived) {
    const auto& fault = GetParam();
    const std::string told = fault.told;
    startUnderFaults();
    for (const int error : fault.errors) {
        SCOPED_TRACE(reason(error));
        const auto place = daemon->place();
        lengthenLog();
        faults.arm({.call = fault.call, .place = fault.place, .error = error});
        if (*fault.request != '\0') send(fault.request);
        faults.waitUntilDone();
        if (!told.empty()) daemon->waitForLine(told + reason(error), place);
        expectToServe();
    }
    waitUntilCalm();
}

INSTANTIATE_TEST_SUITE_P(Of, RunningFaults, testing::ValuesIn(runningFaults));

/// A function that fails while the daemon takes itself down and builds itself up again.
struct RestartFault {
    const char* name;
    const char* call;
    const char* place;
    ErrorNumbers errors;
};

void PrintTo(const RestartFault& fault, std::ostream* out) {
    *out << fault.name;
}

const std::vector<RestartFault> restartFaults{
    {"SocketShutdown", "shutdown", sockets, {EBADF, EINVAL, ENOTCONN, ENOTSOCK}},
    {"SocketClose", "close", sockets, closeErrors},
    {"SocketListen", "listen", sockets, listenErrors},
    {"SerialClose", "close", terminal, closeErrors},
    {"SerialAttributes", "tcsetattr", terminal, terminalErrors},
    {"ConfigurationClose", "close", "orx.cfg", closeErrors},
    {"DefinitionsClose", "close", "models.ccd", closeErrors},
    {"LensMemoryOpen", "openForReading", "lensmemory.cfg", openErrors},
    {"LensMemoryRead", "read", "lensmemory.cfg", readErrors},
    {"LensMemoryClose", "close", "lensmemory.cfg", closeErrors},
};

class RestartFaults : public FaultStory, public testing::WithParamInterface<RestartFault> {};

TEST_P(RestartFaults, AreOutlived) {
    const auto& fault = GetParam();
    startUnderFaults();
    for (const int error : fault.errors) {
        SCOPED_TRACE(reason(error));
        faults.arm({.call = fault.call, .place = fault.place, .error = error});
        restart();
        EXPECT_EQ(faults.done(), 1U);
        expectToServe();
    }
    waitUntilCalm();
}

INSTANTIATE_TEST_SUITE_P(Of, RestartFaults, testing::ValuesIn(restartFaults));

}  // namespace
}  // namespace orx::test
