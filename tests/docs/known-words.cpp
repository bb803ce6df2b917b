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

void printKey(std::string_view key, std::string_view constant) {
    std::cout << "key\t" << key << '\t' << constant << '\n';
}

void printKeys() {
    for (const auto key : config_key::texts)
        printKey(key, key);
    for (const auto& range : serial_range::all)
        printKey(range.key, range.key);
    printKey(config_key::aliasPrefix, config_key::aliasPrefix);
    printKey(config_key::memorySlots, config_key::memorySlots);
    for (const auto& axis : {zoomCommands, focusCommands}) {
        for (const auto key : config_key::motion)
            printKey(axisKey(axis.axisName, key), key);
        for (const auto key : config_key::range)
            printKey(axisKey(axis.axisName, key), key);
    }
}

}  // namespace

int main() {
    printCommands();
    printKeys();
}
