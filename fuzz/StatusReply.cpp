// Any text as a status reply for the client, and any state as the daemon's: what the client takes
// it must be able to say again and take alike, and every reply of the daemon it must take for
// exactly what the daemon's state is.
//
// The input: an even first byte, then the text of a reply; or an odd one, whose other bits are the
// flags, then the axes: busy or not, form, position, end and target in 1, 1, 4, 4 and 4 bytes.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "common/Check.h"
#include "common/InputBytes.h"
#include "control/Status.h"
#include "orx/client/DaemonStatus.h"

namespace orx::fuzz {
namespace {

using client::AxisStatus;
using client::DaemonStatus;

class ShownAxis final : public StatusAxis {
  public:
    ShownAxis(AxisStatus axis, bool busyOrNot) : shown(std::move(axis)), busy(busyOrNot) {}

    [[nodiscard]] const std::string& name() const noexcept override { return shown.name; }
    [[nodiscard]] bool isBusy() const noexcept override { return busy; }
    [[nodiscard]] std::string positionText() const override { return shown.positionText(); }

  private:
    AxisStatus shown;
    bool busy;
};

std::string replyOf(const DaemonStatus& status) {
    std::string text = status.busy ? "BUSY;" : "IDLE;";
    for (const auto& axis : status.axes)
        text.append(" ").append(axis.name).append(": ").append(axis.positionText());
    return text.append(";").append(status.flagsText()).append("\n");
}

void checkText(const std::string& text) {
    const auto status = DaemonStatus::parse(text);
    if (!status) return;
    expect(text.starts_with(status->busy ? "BUSY;" : "IDLE;") && text.ends_with('\n'),
           "something else was taken for a reply");
    const auto again = DaemonStatus::parse(replyOf(*status));
    expect(again == status, "a reply that was said again says something else");
    expectEqual(status->hasProjector(), !status->axes.empty(), "whether there is a projector");
    for (const auto& axis : status->axes)
        expect(status->axis(axis.name) != nullptr, "an axis cannot be found");
}

/// The forms that the daemon has for a position.
AxisStatus takeAxis(InputBytes& input, const std::string& name) {
    enum Form { undefined, resetting, counted, atRest, moving, forms };
    const int form = input.byte() % forms;
    AxisStatus axis{.name = name};
    const auto position = input.integer();
    const auto end = input.integer();
    const auto target = input.integer();
    axis.resetting = form == resetting;
    if (form == counted || form == atRest || form == moving) axis.position = position;
    if (form == atRest || form == moving) axis.upperEnd = end;
    if (form == resetting || form == moving) axis.target = target;
    return axis;
}

void setFlags(const DaemonStatus& status) {
    Status::reset();
    Status::clearFlags();
    if (status.hello) Status::setHello();
    if (status.lensConfigLoaded) Status::setLensConfigLoaded();
    Status::setDumb(status.dumbMode);
    Status::setDebug(status.debugMode);
}

void checkState(int bits, InputBytes input) {
    DaemonStatus status{.hello = (bits & 1) != 0,
                        .lensConfigLoaded = (bits & 2) != 0,
                        .dumbMode = (bits & 4) != 0,
                        .debugMode = (bits & 8) != 0};
    setFlags(status);
    for (const std::string name : {"zoom", "focus"}) {
        if (input.isEmpty()) break;
        const bool busy = input.byte() % 2 != 0;
        status.busy = status.busy || busy;
        status.axes.push_back(takeAxis(input, name));
        Status::addAxis(std::make_shared<ShownAxis>(status.axes.back(), busy));
    }
    const auto reply = Status::statusReply();
    expect(DaemonStatus::parse(reply) == status, "the client misreads " + reply);
    Status::reset();
}

void check(InputBytes input) {
    const int first = input.byte();
    if (first % 2 == 0) {
        checkText(input.rest());
    } else {
        checkState(first / 2, input);
    }
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({data, size});
    return 0;
}
