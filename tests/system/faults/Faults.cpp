#include "system/faults/Faults.h"

#include <ctime>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>

#include "core/FileDescriptor.h"
#include "system/harness/Waiting.h"

namespace orx::test {

static_assert(std::atomic_uint32_t::is_always_lock_free, "two processes share them");
static_assert(std::atomic_int64_t::is_always_lock_free, "two processes share them");

Faults::Faults() {
    const FileDescriptor file(
        ::open(folder.file("board").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    void* memory = MAP_FAILED;
    // A new file is all zeros, which is a board without faults.
    if (::ftruncate(file.get(), sizeof(FaultBoard)) == 0) {
        memory =
            ::mmap(nullptr, sizeof(FaultBoard), PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    }
    if (memory == MAP_FAILED) throw std::runtime_error("no board for faults");
    board = static_cast<FaultBoard*>(memory);
}

Faults::~Faults() {
    ::munmap(board, sizeof(FaultBoard));
}

std::vector<std::string> Faults::environment() const {
    return {"LD_PRELOAD=" ORX_FAULT_SHIM,
            std::string(faultBoardVariable).append("=").append(folder.file("board"))};
}

void Faults::arm(const Fault& fault) {
    if (++plans >= FaultBoard::maxPlans) throw std::runtime_error("too many faults for one daemon");
    auto& plan = board->plans[plans];
    plan.call.set(fault.call);
    plan.place.set(fault.place);
    plan.deed = fault.deed;
    plan.error = fault.error;
    plan.first = fault.first;
    plan.times = fault.times;
    disarm();
    notedBefore = board->noted;
    board->current = plans;
}

void Faults::waitUntilDone() const {
    waitUntil([this] { return done() > 0; },
              [this] {
                  return "a fault of " + std::string(current().call.view()) + " at " +
                         std::string(current().place.view());
              });
}

std::vector<std::string> Faults::trace() const {
    std::vector<std::string> texts;
    for (auto number = notedBefore; number < board->noted; ++number) {
        const auto& noted = board->notes.at(number);  // throws where there were too many
        if (!noted.complete) throw std::runtime_error("a call is still being noted");
        texts.push_back(std::string(noted.call.view()) + " " + std::string(noted.place.view()));
    }
    return texts;
}

void Faults::setClock(std::int64_t seconds) noexcept {
    board->clockShift = seconds - std::int64_t{std::time(nullptr)};
}

}  // namespace orx::test
