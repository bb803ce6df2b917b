#include "system/orxctl/Crowd.h"

#include <algorithm>

namespace orx::test {

Crowd::Crowd(std::size_t size)
    : members(size),
      thread(
          [this] {
              std::vector<int> descriptors;
              for (const auto& member : members)
                  descriptors.push_back(member.socket.descriptor());
              return descriptors;
          },
          [this] {
              const std::lock_guard lock(mutex);
              hear();
          }) {}

std::vector<std::string> Crowd::addresses() const {
    std::vector<std::string> all;
    for (const auto& member : members)
        all.push_back(member.socket.address());
    return all;
}

std::size_t Crowd::countOfThoseWith(const std::string& command) {
    const std::lock_guard lock(mutex);
    hear();
    return static_cast<std::size_t>(
        std::ranges::count(members, std::vector{command}, &Member::commands));
}

/// With the mutex held.
void Crowd::hear() {
    for (auto& member : members) {
        while (const auto arrival = member.socket.take()) {
            if (arrival->text != "STATUS") {
                member.commands.push_back(arrival->text);
                continue;
            }
            member.wasAsked = true;
            member.waiting.push_back(arrival->from);
        }
    }
    if (std::ranges::all_of(members, &Member::wasAsked)) answerAll();
}

void Crowd::answerAll() {
    for (std::size_t number = 0; number < members.size(); ++number) {
        auto& member = members[number];
        const auto reply = "IDLE; zoom: " + std::to_string(number) + "/2000;HELO \n";
        for (const auto& asker : member.waiting)
            member.socket.send(reply, asker);
        member.waiting.clear();
    }
}

}  // namespace orx::test
