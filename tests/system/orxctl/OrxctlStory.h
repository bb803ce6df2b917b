// Stories of the client and the daemon: on the way between them is a proxy.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "system/harness/LensStory.h"
#include "system/orxctl/Orxctl.h"
#include "system/orxctl/Proxy.h"

namespace orx::test {

class OrxctlStory : public LensStory {
  protected:
    /// A call with `words`, for the daemon behind the proxy.
    [[nodiscard]] std::string toDaemon(const std::string& words) const {
        return words + " -H " + proxy.address();
    }

    [[nodiscard]] CallResult call(const std::string& words) const {
        return resultOf(toDaemon(words));
    }

    /// A failure with `exitStatus`, and what is said of it.
    [[nodiscard]] CallResult failure(int exitStatus, const std::string& text) const {
        return {"exit status " + std::to_string(exitStatus), "",
                "orxctl: " + proxy.address() + ": " + text + "\n"};
    }

    /// Starts a daemon without a projector.
    void startDumb() {
        installation.writeConfiguration("controlchannel = " + controlAddress() + "\n");
        installation.writeDefinitions(define({motorModel()}));
        start();
    }

    /// What clients have sent. A question that a busy machine was slow to answer was sent again and
    /// counts once.
    [[nodiscard]] std::vector<std::string> requests() {
        auto all = proxy.requests();
        all.erase(std::unique(all.begin(), all.end()), all.end());
        return all;
    }

    /// Waits until the client has asked so often that the lens, had it been at rest, would have
    /// been found so; it must go on waiting.
    void expectGoesOn(Orxctl& orxctl) {
        constexpr std::size_t often = 10;
        proxy.waitForMore("STATUS", often);
        EXPECT_FALSE(orxctl.hasEnded());
    }

    Proxy proxy;
};

}  // namespace orx::test
