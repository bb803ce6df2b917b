// The state of the daemon as clients see it: a few flags and the lens axes.
//
// There is one status per process. Any thread may call any operation; a lock keeps the flags text
// and the list of axes whole.
#pragma once

#include <memory>
#include <string>

#include "control/StatusAxis.h"

namespace orx {

class Status {
  public:
    virtual ~Status() = default;

    /// No valid projector is configured: "DUMB ".
    static void setDumb(bool dumb);
    /// There is no serial device behind the daemon: "DEBUG".
    static void setDebug(bool debug);
    /// The lens configuration was saved: "LCU ".
    static void setLensConfigLoaded();
    /// A lens axis starts to move or to reset: "HELO ".
    static void setHello();
    /// Takes back "HELO " and "LCU ".
    static void clearFlags();

    /// Forgets the axes and puts all flags back as at program start, but leaves the text of the
    /// flags alone: replies show the flags of before until the next setter runs.
    static void reset();

    /// Adds an axis behind those already shown.
    static void addAxis(std::shared_ptr<const StatusAxis> axis);

    /// The reply to a status request: "BUSY;" or "IDLE;", " NAME: POSITION" for each axis, ";", the
    /// flags and a line feed.
    [[nodiscard]] static std::string statusReply();
};

}  // namespace orx
