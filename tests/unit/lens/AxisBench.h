// One axis on the bench, zoom or focus.
#pragma once

#include <memory>
#include <string>

#include "lens/LensControl.h"
#include "unit/lens/AxisNames.h"
#include "unit/lens/LensBench.h"

namespace orx::test {

class AxisBench : public LensBench, public testing::WithParamInterface<AxisNames> {
  protected:
    /// The axis on a model that knows single steps and the native reset.
    AxisBench() { buildOn({names.stepUp, names.stepDown, names.reset}); }

    /// A fresh axis on a model that knows these keywords.
    void buildOn(const Lines& keywords) {
        axis = std::make_unique<LensControl>(modelKnowing(keywords), *names.commands);
    }

    /// Gives the axis one command; whether it took it.
    bool give(const std::string& text) { return axis->handleCommand(Command(text)); }

    /// Makes an axis with a range know its position, without anything sent.
    void placeAt(int position) { give(names.overridePosition + " " + std::to_string(position)); }

    /// An axis of 0 to 2000 steps that stands at `position`.
    void standAt(int position) {
        axis->setRange(0, 2000);
        placeAt(position);
    }

    /// "- absolute AXIS: " and `text`.
    [[nodiscard]] std::string absolute(const std::string& text) const {
        return "- absolute " + names.axis + ": " + text;
    }

    const AxisNames& names = GetParam();
    std::unique_ptr<LensControl> axis;
};

}  // namespace orx::test
