#include "common/Console.h"

#include <string_view>
#include <utility>

#include "core/Console.h"

namespace orx {
namespace {

std::string& printed() {
    static std::string text;
    return text;
}

}  // namespace

void printLine(std::string_view line) {
    printLine({}, line);
}

void printLine(std::string_view tag, std::string_view line) {
    printed().append(tag).append(line).append("\n");
}

void printText(std::string_view text) {
    printed().append(text);
}

std::string fuzz::takeConsole() {
    return std::exchange(printed(), {});
}

}  // namespace orx
