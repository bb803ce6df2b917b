// Many daemons that are sockets alone, looked after by one thread. They show what a client does
// with many at the same time: none of them answers before all of them have been asked.
//
// The zoom of the daemon with the number 7 stands at 7/2000.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "system/orxctl/ReadingThread.h"
#include "system/orxctl/UdpSocket.h"

namespace orx::test {

class Crowd {
  public:
    explicit Crowd(std::size_t size);

    /// The address of each, in their order.
    [[nodiscard]] std::vector<std::string> addresses() const;

    /// How many of them have got `command` once before this call, and no other.
    [[nodiscard]] std::size_t countOfThoseWith(const std::string& command);

  private:
    struct Member {
        UdpSocket socket{};
        std::vector<sockaddr_in> waiting{};  ///< those who have asked and have no answer yet
        std::vector<std::string> commands{};
        bool wasAsked = false;
    };

    void hear();
    void answerAll();

    std::vector<Member> members;
    std::mutex mutex;  ///< guards all of the members but their sockets
    ReadingThread thread;
};

}  // namespace orx::test
