// The fault shim: a library that is loaded ahead of all others (LD_PRELOAD) into a daemon under
// test and stands between it and the system. Each function below does what the system's does,
// unless the current plan of the board (FaultBoard.h) has something else in mind for it.
//
// Environment: LD_PRELOAD names this library, ORX_TEST_FAULTS the file of the board. Without a
// board every call passes.
//
// The place of a call is the path that it names or, for a descriptor, what the system says it is
// open on: the path of a file or device, "socket:[NUMBER]", "pipe:[NUMBER]". `close` and `shutdown`
// do their work before they report a failure, as the kernel does. A file that is opened for reading
// alone is met as "openForReading".
//
// What the C library calls within itself does not come by here. It is built without a sanitizer;
// the real functions are whatever comes behind it.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <termios.h>
#include <unistd.h>

#include "support/FaultBoard.h"
#include "support/LinkName.h"

namespace {

using orx::test::Deed;
using orx::test::FaultBoard;

/// The function of that name behind this library.
template <typename Function>
Function* next(const char* name) noexcept {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, orx::test::linkName(name)));
}

FaultBoard* mapBoard() noexcept {
    const char* path = std::getenv(orx::test::faultBoardVariable);
    if (path == nullptr) return nullptr;
    const int file = next<decltype(::open)>("open")(path, O_RDWR | O_CLOEXEC);
    void* memory = ::mmap(nullptr, sizeof(FaultBoard), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    next<decltype(::close)>("close")(file);
    return memory != MAP_FAILED ? static_cast<FaultBoard*>(memory) : nullptr;
}

/// None before the library is set up: what runs earlier is no business of a test.
FaultBoard* board = nullptr;

/// The calling thread's errno is to be what the daemon's own calls make of it.
class KeptErrno {
  public:
    KeptErrno() noexcept = default;
    KeptErrno(const KeptErrno&) = delete;
    KeptErrno& operator=(const KeptErrno&) = delete;
    ~KeptErrno() { errno = kept; }

  private:
    int kept = errno;
};

/// Where a call is made.
class Place {
  public:
    Place() noexcept = default;
    explicit Place(const char* path) noexcept : text(path != nullptr ? path : "") {}
    explicit Place(int descriptor) noexcept {
        static const auto realReadlink = next<decltype(::readlink)>("readlink");
        const KeptErrno kept;
        std::array<char, sizeof "/proc/self/fd/-2147483648"> entry{};
        std::snprintf(entry.data(), entry.size(), "/proc/self/fd/%d", descriptor);
        const auto size = realReadlink(entry.data(), buffer.data(), buffer.size());
        text = {buffer.data(), static_cast<std::size_t>(size < 0 ? 0 : size)};
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() = default;

    [[nodiscard]] std::string_view view() const noexcept { return text; }

  private:
    std::array<char, 512> buffer{};
    std::string_view text;
};

void note(std::string_view call, const Place& place) noexcept {
    const auto number = board->noted.fetch_add(1);
    if (number >= FaultBoard::maxNotes) return;
    auto& entry = board->notes[number];
    entry.call.set(call);
    entry.place.set(place.view());
    entry.complete = true;
}

struct Verdict {
    Deed deed = Deed::pass;
    int error = 0;
};

Verdict judge(std::string_view call, const Place& place) noexcept {
    if (board == nullptr) return {};
    ++(call == "nanosleep" ? board->sleeps : board->calls);
    auto& plan = board->plans[board->current];
    if (&plan == board->plans.data()) return {};
    const auto meant = plan.call.view();
    if (!meant.empty() && meant != call) return {};
    if (place.view().find(plan.place.view()) == std::string_view::npos) return {};
    const auto number = ++plan.met;
    note(call, place);
    if (number < plan.first || number - plan.first >= plan.times) return {};
    ++plan.done;
    if (plan.deed == Deed::kill) ::kill(::getpid(), SIGKILL);
    return {plan.deed, plan.error};
}

/// Makes the call, or fails without it.
template <typename Result, typename Real>
Result call(const char* name, const Place& place, Result failure, const Real& real) {
    const auto verdict = judge(name, place);
    if (verdict.deed != Deed::fail) return real();
    errno = verdict.error;
    return failure;
}

/// Makes the call, and may then say that it failed.
template <typename Result, typename Real>
Result callFirst(const char* name, const Place& place, Result failure, const Real& real) {
    const auto verdict = judge(name, place);
    const Result result = real();
    if (verdict.deed != Deed::fail) return result;
    errno = verdict.error;
    return failure;
}

/// How many of `size` bytes are to be written.
std::size_t sizeFor(Deed deed, std::size_t size) noexcept {
    return deed == Deed::shorten && size > 1 ? size / 2 : size;
}

const char* nameOfOpening(int flags) noexcept {
    const bool reads = (flags & O_ACCMODE) == O_RDONLY && (flags & O_DIRECTORY) == 0;
    return reads ? "openForReading" : "open";
}

bool takesMode(int flags) noexcept {
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

/// Moves the seconds of a wall clock.
template <typename Seconds>
void shift(Seconds& seconds) noexcept {
    if (board != nullptr) seconds += static_cast<Seconds>(board->clockShift);
}

[[gnu::constructor]] void setUp() noexcept {
    board = mapBoard();
}

}  // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

int socket(int domain, int type, int protocol) noexcept {
    static const auto real = next<decltype(::socket)>("socket");
    return call("socket", Place(), -1, [&] { return real(domain, type, protocol); });
}

int bind(int socket, const sockaddr* address, socklen_t size) noexcept {
    static const auto real = next<decltype(::bind)>("bind");
    return call("bind", Place(socket), -1, [&] { return real(socket, address, size); });
}

int listen(int socket, int backlog) noexcept {
    static const auto real = next<decltype(::listen)>("listen");
    return call("listen", Place(socket), -1, [&] { return real(socket, backlog); });
}

int shutdown(int socket, int how) noexcept {
    static const auto real = next<decltype(::shutdown)>("shutdown");
    return callFirst("shutdown", Place(socket), -1, [&] { return real(socket, how); });
}

ssize_t recvfrom(int socket, void* bytes, size_t size, int flags, sockaddr* sender,
                 socklen_t* senderSize) {
    static const auto real = next<decltype(::recvfrom)>("recvfrom");
    return call("recvfrom", Place(socket), ssize_t{-1},
                [&] { return real(socket, bytes, size, flags, sender, senderSize); });
}

ssize_t sendto(int socket, const void* bytes, size_t size, int flags, const sockaddr* receiver,
               socklen_t receiverSize) {
    static const auto real = next<decltype(::sendto)>("sendto");
    return call("sendto", Place(socket), ssize_t{-1},
                [&] { return real(socket, bytes, size, flags, receiver, receiverSize); });
}

int open(const char* path, int flags, ...) {
    static const auto real = next<decltype(::open)>("open");
    std::va_list more;
    va_start(more, flags);
    const auto mode = takesMode(flags) ? va_arg(more, mode_t) : mode_t{0};
    va_end(more);
    return call(nameOfOpening(flags), Place(path), -1, [&] { return real(path, flags, mode); });
}

int close(int descriptor) {
    static const auto real = next<decltype(::close)>("close");
    return callFirst("close", Place(descriptor), -1, [&] { return real(descriptor); });
}

ssize_t read(int descriptor, void* bytes, size_t size) {
    static const auto real = next<decltype(::read)>("read");
    return call("read", Place(descriptor), ssize_t{-1},
                [&] { return real(descriptor, bytes, size); });
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    static const auto real = next<decltype(::write)>("write");
    const auto verdict = judge("write", Place(descriptor));
    if (verdict.deed != Deed::fail) return real(descriptor, bytes, sizeFor(verdict.deed, size));
    errno = verdict.error;
    return -1;
}

off_t lseek(int descriptor, off_t offset, int whence) noexcept {
    static const auto real = next<decltype(::lseek)>("lseek");
    return call("lseek", Place(descriptor), off_t{-1},
                [&] { return real(descriptor, offset, whence); });
}

int ftruncate(int descriptor, off_t size) noexcept {
    static const auto real = next<decltype(::ftruncate)>("ftruncate");
    return call("ftruncate", Place(descriptor), -1, [&] { return real(descriptor, size); });
}

int fsync(int descriptor) {
    static const auto real = next<decltype(::fsync)>("fsync");
    return call("fsync", Place(descriptor), -1, [&] { return real(descriptor); });
}

int fchmod(int descriptor, mode_t mode) noexcept {
    static const auto real = next<decltype(::fchmod)>("fchmod");
    return call("fchmod", Place(descriptor), -1, [&] { return real(descriptor, mode); });
}

int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
    static const auto real = next<decltype(::fchown)>("fchown");
    return call("fchown", Place(descriptor), -1, [&] { return real(descriptor, owner, group); });
}

int fstat(int descriptor, struct stat* result) noexcept {
    static const auto real = next<decltype(::fstat)>("fstat");
    return call("fstat", Place(descriptor), -1, [&] { return real(descriptor, result); });
}

int lstat(const char* path, struct stat* result) noexcept {
    static const auto real = next<decltype(::lstat)>("lstat");
    return call("lstat", Place(path), -1, [&] { return real(path, result); });
}

ssize_t readlink(const char* path, char* bytes, size_t size) noexcept {
    static const auto real = next<decltype(::readlink)>("readlink");
    return call("readlink", Place(path), ssize_t{-1}, [&] { return real(path, bytes, size); });
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<decltype(::rename)>("rename");
    return call("rename", Place(to), -1, [&] { return real(from, to); });
}

int unlink(const char* path) noexcept {
    static const auto real = next<decltype(::unlink)>("unlink");
    return call("unlink", Place(path), -1, [&] { return real(path); });
}

int tcsetattr(int descriptor, int when, const termios* attributes) noexcept {
    static const auto real = next<decltype(::tcsetattr)>("tcsetattr");
    return call("tcsetattr", Place(descriptor), -1,
                [&] { return real(descriptor, when, attributes); });
}

int tcdrain(int descriptor) {
    static const auto real = next<decltype(::tcdrain)>("tcdrain");
    return call("tcdrain", Place(descriptor), -1, [&] { return real(descriptor); });
}

int poll(pollfd* descriptors, nfds_t count, int timeout) {
    static const auto real = next<decltype(::poll)>("poll");
    return call("poll", Place(count > 0 ? descriptors->fd : -1), -1,
                [&] { return real(descriptors, count, timeout); });
}

int nanosleep(const timespec* duration, timespec* left) {
    static const auto real = next<decltype(::nanosleep)>("nanosleep");
    return call("nanosleep", Place(), -1, [&] { return real(duration, left); });
}

/// Gives the error instead of setting it.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*),
                   void* argument) noexcept {
    static const auto real = next<decltype(::pthread_create)>("pthread_create");
    const auto verdict = judge("pthread_create", Place());
    return verdict.deed == Deed::fail ? verdict.error : real(thread, attributes, routine, argument);
}

int gettimeofday(timeval* moment, void* zone) noexcept {
    static const auto real = next<decltype(::gettimeofday)>("gettimeofday");
    return call("gettimeofday", Place(), -1, [&] {
        const int result = real(moment, zone);
        if (result == 0) shift(moment->tv_sec);
        return result;
    });
}

int clock_gettime(clockid_t clock, timespec* moment) noexcept {
    static const auto real = next<decltype(::clock_gettime)>("clock_gettime");
    const int result = real(clock, moment);
    if (result == 0 && clock == CLOCK_REALTIME) shift(moment->tv_sec);
    return result;
}

// Where the functions above have not taken these names themselves.
#ifndef __USE_FILE_OFFSET64
int open64(const char* path, int flags, ...) {
    static const auto real = next<decltype(::open64)>("open64");
    std::va_list more;
    va_start(more, flags);
    const auto mode = takesMode(flags) ? va_arg(more, mode_t) : mode_t{0};
    va_end(more);
    return call(nameOfOpening(flags), Place(path), -1, [&] { return real(path, flags, mode); });
}

off64_t lseek64(int descriptor, off64_t offset, int whence) noexcept {
    static const auto real = next<decltype(::lseek64)>("lseek64");
    return call("lseek", Place(descriptor), off64_t{-1},
                [&] { return real(descriptor, offset, whence); });
}

int ftruncate64(int descriptor, off64_t size) noexcept {
    static const auto real = next<decltype(::ftruncate64)>("ftruncate64");
    return call("ftruncate", Place(descriptor), -1, [&] { return real(descriptor, size); });
}

int fstat64(int descriptor, struct stat64* result) noexcept {
    static const auto real = next<decltype(::fstat64)>("fstat64");
    return call("fstat", Place(descriptor), -1, [&] { return real(descriptor, result); });
}
#endif

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
