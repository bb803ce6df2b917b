#include "system/orxctl/Proxy.h"

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>

#include "system/harness/Waiting.h"

namespace orx::test {

Proxy::Proxy(int daemonPort)
    : daemon(ownPlace(daemonPort)),
      rule([](const Datagram&) { return Fate::pass; }),
      thread([this] { return descriptors(); },
             [this] {
                 const std::lock_guard lock(mutex);
                 passOn();
             }) {}

void Proxy::setRule(Rule newRule) {
    const std::lock_guard lock(mutex);
    rule = std::move(newRule);
}

void Proxy::release(int times) {
    const std::lock_guard lock(mutex);
    for (const auto& letter : held)
        for (int number = 0; number < times; ++number)
            letter.sender->send(letter.text, letter.receiver);
    held.clear();
}

std::vector<std::string> Proxy::requests() {
    const std::lock_guard lock(mutex);
    passOn();
    return received;
}

std::size_t Proxy::count(const std::string& text) {
    const std::lock_guard lock(mutex);
    passOn();
    return countOf(text);
}

/// With the mutex held.
std::size_t Proxy::countOf(const std::string& text) const {
    return static_cast<std::size_t>(std::ranges::count(received, text));
}

void Proxy::waitForMore(const std::string& text, std::size_t more) {
    std::unique_lock lock(mutex);
    const auto enough = countOf(text) + more;
    if (heard.wait_for(lock, patience, [&] { return countOf(text) >= enough; })) return;
    throw std::runtime_error("waited in vain for request " + std::to_string(enough) + " of " +
                             text);
}

Proxy::Fate Proxy::dropReplies(const Datagram& datagram) {
    return datagram.isReply ? Fate::drop : Fate::pass;
}

Proxy::Fate Proxy::dropCommands(const Datagram& datagram) {
    return datagram.isReply || datagram.text == "STATUS" ? Fate::pass : Fate::drop;
}

Proxy::Rule Proxy::dropFirstReplies(std::size_t replies) {
    return [replies](const Datagram& datagram) {
        return datagram.isReply && datagram.number <= replies ? Fate::drop : Fate::pass;
    };
}

Proxy::Rule Proxy::dropHalf(std::uint32_t seed) {
    return [dice = std::mt19937(seed)](const Datagram& datagram) mutable {
        const bool isLost = dice() % 2 == 0;
        return isLost && (datagram.isReply || datagram.text == "STATUS") ? Fate::drop : Fate::pass;
    };
}

std::vector<int> Proxy::descriptors() const {
    const std::lock_guard lock(mutex);
    std::vector<int> all{clientSide.descriptor()};
    for (const auto& route : routes)
        all.push_back(route->daemonSide.descriptor());
    return all;
}

/// With the mutex held.
void Proxy::passOn() {
    while (const auto request = clientSide.take())
        handle({&routeOf(request->from), daemon, request->text}, false);
    for (const auto& route : routes)
        while (const auto reply = route->daemonSide.take())
            handle({&clientSide, route->client, reply->text}, true);
}

const UdpSocket& Proxy::routeOf(const sockaddr_in& client) {
    const auto found = std::ranges::find_if(
        routes, [&](const auto& route) { return isSame(route->client, client); });
    if (found != routes.end()) return (*found)->daemonSide;
    routes.push_back(std::make_unique<Route>(Route{client, {}}));
    return routes.back()->daemonSide;
}

void Proxy::handle(const Letter& letter, bool isReply) {
    if (!isReply) {
        received.push_back(letter.text);
        heard.notify_all();
    }
    const auto number = isReply ? ++replies : received.size();
    const auto fate = rule({isReply, letter.text, number});
    if (fate == Fate::hold) held.push_back(letter);
    const int times = fate == Fate::pass ? 1 : fate == Fate::twice ? 2 : 0;
    for (int sent = 0; sent < times; ++sent)
        letter.sender->send(letter.text, letter.receiver);
}

}  // namespace orx::test
