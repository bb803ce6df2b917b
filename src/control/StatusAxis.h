// What the status reply asks of a lens axis. Called on the threads of the control channel while
// other threads move the axis.
#pragma once

#include <string>

namespace orx {

class StatusAxis {
  public:
    StatusAxis() = default;
    StatusAxis(const StatusAxis&) = delete;
    StatusAxis& operator=(const StatusAxis&) = delete;
    virtual ~StatusAxis() = default;

    /// The name under which the axis stands in the reply.
    [[nodiscard]] virtual const std::string& name() const noexcept = 0;

    /// Whether the axis moves or is being reset.
    [[nodiscard]] virtual bool isBusy() const noexcept = 0;

    /// The position in motor steps, or what is to be said in its place.
    [[nodiscard]] virtual std::string positionText() const = 0;
};

}  // namespace orx
