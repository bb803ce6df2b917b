// Prints what the manual pages have to tell of, as the daemon itself knows it: one line each, with
// tabs between what the word is, the word, and what belongs to it.
#include <array>
#include <iostream>
#include <string>
#include <string_view>

#include "commands/Vocabulary.h"
#include "config/ConfigKeys.h"
#include "lens/AxisCommands.h"
#include "lens/LensControl.h"
#include "serial/SerialSettings.h"

namespace {

using namespace orx;

void printCommands() {
    for (const auto& entry : vocabulary)
        std::cout << "keyword\t" << entry.keyword << '\t'
                  << argumentKindOf(entry.keyword).value_or("") << '\n'
                  << "name\t" << entry.symbolicName << '\t' << entry.keyword << '\n';
}

void printKey(std::string_view file, std::string_view key, std::string_view constant) {
    std::cout << file << '\t' << key << '\t' << constant << '\n';
}

void printKeys() {
    constexpr std::string_view configuration = "key";
    constexpr std::string_view lensMemory = "memory";
    for (const auto key : config_key::texts)
        printKey(configuration, key, key);
    for (const auto& range : serial_range::all)
        printKey(configuration, range.key, range.key);
    printKey(configuration, config_key::aliasPrefix, config_key::aliasPrefix);
    printKey(lensMemory, config_key::memorySlots, config_key::memorySlots);
    for (const auto& axis : {zoomCommands, focusCommands}) {
        for (const auto key : config_key::motion)
            printKey(configuration, axisKey(axis.axisName, key), key);
        for (const auto key : config_key::range)
            printKey(lensMemory, axisKey(axis.axisName, key), key);
    }
}

}  // namespace

int main() {
    printCommands();
    printKeys();
}
