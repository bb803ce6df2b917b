// How numbers are written from some argument of a command on, as earlier ones leave it behind.
#pragma once

#include "orxdef/Definition.h"

namespace orx::orxdef {

struct NumberStyle {
    bool withSign = false;    ///< a sign always, and zeros behind it rather than ahead of it
    bool fixedPoint = false;  ///< decimals with all their places

    /// The style that `descriptor` asks for, for itself and all arguments after it.
    [[nodiscard]] NumberStyle with(const ArgumentDescriptor& descriptor) const noexcept {
        const bool isFixed = descriptor.type == 'D' && descriptor.digits() != 0;
        return {withSign || isFixed || descriptor.type == 'B', fixedPoint || isFixed};
    }
};

}  // namespace orx::orxdef
