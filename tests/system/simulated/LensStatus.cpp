#include "system/simulated/LensStatus.h"

#include <regex>
#include <stdexcept>

namespace orx::test {
namespace {

AxisStatus readAxis(const std::string& text) {
    static const std::regex number(R"((-?\d+)(/(-?\d+))?(>-?\d+)?)");
    AxisStatus axis{.text = text, .onTheWay = text.find('>') != std::string::npos};
    std::smatch parts;
    if (!std::regex_match(text, parts, number)) return axis;
    axis.position = std::stoi(parts[1]);
    if (parts[3].matched) axis.upperEnd = std::stoi(parts[3]);
    return axis;
}

}  // namespace

LensStatus readLensStatus(const std::string& reply) {
    static const std::regex form(R"((BUSY|IDLE); zoom: (\S+) focus: ([^ ;]+);[^;]*\n)");
    std::smatch parts;
    if (!std::regex_match(reply, parts, form)) {
        throw std::runtime_error("no status of a lens: " + reply);
    }
    return {.idle = parts[1] == "IDLE", .zoom = readAxis(parts[2]), .focus = readAxis(parts[3])};
}

}  // namespace orx::test
