// Another process, which holds open all that the test has open.
#pragma once

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orx::orxctl {

class HoldingProcess {
  public:
    /// The system shows it under that name.
    explicit HoldingProcess(const std::string& name) {
        std::array<int, 2> pipe{};
        if (::pipe(pipe.data()) != 0) throw std::runtime_error("no pipe");
        child = ::fork();
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::prctl(PR_SET_NAME, name.c_str());
            static_cast<void>(::write(pipe[1], "x", 1));
            for (;;)
                ::pause();
        }
        char ready = 0;
        const auto count = ::read(pipe[0], &ready, 1);
        ::close(pipe[0]);
        ::close(pipe[1]);
        if (child < 0 || count != 1) throw std::runtime_error("no process");
    }
    HoldingProcess(const HoldingProcess&) = delete;
    HoldingProcess& operator=(const HoldingProcess&) = delete;
    ~HoldingProcess() {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }

    [[nodiscard]] pid_t id() const { return child; }

  private:
    pid_t child = -1;
};

}  // namespace orx::orxctl
