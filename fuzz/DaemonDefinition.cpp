// Any bytes as the definition file of the daemon: read, dumped, and every command of its models
// sent to a line in memory. Only a wrong header may have it refused. The dump must be that of a
// second reader, for which zeros follow every part of a file that is cut short or lies about its
// counts; and of a file without damage the daemon must send for each command what the tools read in
// it and a slower encoder makes of that.
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Vocabulary.h"
#include "common/Check.h"
#include "common/Console.h"
#include "common/ReferenceCommand.h"
#include "common/ReferenceDump.h"
#include "common/RewrittenFile.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/CommandTable.h"
#include "projector/ProjectorDefinitionFile.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTime.h"

namespace orx::fuzz {
namespace {

using orxdef::DefinitionSet;
using orxdef::Mistakes;

/// A damaged count can make each model long to read; a few show all that there is to see.
constexpr std::size_t mostModels = 8;

const RewrittenFile& definitionFile() {
    static const RewrittenFile file("orx.ccd");
    return file;
}

/// The text with which a file is refused; empty where it must open.
std::string expectedRefusal(std::string_view image) {
    constexpr std::size_t headerSize = 22;
    const auto byte = [image](std::size_t place) {
        return place < image.size() ? static_cast<unsigned char>(image[place]) : 0;
    };
    if (image.size() < headerSize && !image.starts_with("\x77\x81\x6A\xCD\xCC\xDF"))
        return "insufficient mana (wrong or missing magic in projector definition file)";
    if (byte(7) != 0) return "wrong endianness in projector definition file";
    if (byte(8) != 13 || byte(9) != 0) return "projector definition file has wrong revision";
    return {};
}

/// What a daemon with diagnostic output prints of the file.
std::string dumpOf(ProjectorDefinitionFile& file) {
    clearConsole();
    file.dump();
    return takeConsole();
}

ModelledCommand modelled(const orxdef::ModelCommand& command) {
    ModelledCommand result;
    if (command.string != nullptr) result.commandString = command.string->bytes;
    for (const auto& [number, descriptor] : command.arguments)
        result.descriptors[static_cast<int>(number)] = {.min = descriptor->min,
                                                        .max = descriptor->max,
                                                        .pos = descriptor->pos,
                                                        .len = descriptor->len,
                                                        .type = descriptor->type};
    return result;
}

/// One model of the file, on a line in memory.
class Bench {
  public:
    Bench(ProjectorDefinitionFile& file, const std::string& name)
        : projector(file.projector(name)), settings(file.serialSettings(name)) {
        expect(projector != nullptr && settings != nullptr, "a listed model is missing");
        projector->setConnector(std::make_shared<SerialConnector>(
            settings, std::make_unique<test::FakeSerialPort>(line), time));
    }

    [[nodiscard]] bool supports(std::string_view keyword) const {
        return projector->supports(keyword);
    }

    /// What goes out for `command`; an empty text where nothing does.
    Outcome<std::string> send(const Command& command) {
        line.writes.clear();
        return outcomeOf([&] {
            projector->send(command);
            expect(line.writes.size() <= 1, "one command was sent twice");
            return line.written();
        });
    }

    [[nodiscard]] LineParameters parameters() const { return settings->parameters(); }

  private:
    test::FakeLine line;
    test::FakeTime time;
    std::shared_ptr<Projector> projector;
    std::shared_ptr<SerialSettings> settings;
};

/// Arguments that no check has refused: in and out of all bounds, of all lengths, as decimals.
std::vector<Command> commandsOf(const std::string& keyword) {
    std::vector<Command> commands;
    for (const auto* arguments : {"", " 7", " -2147483648 2147483647 12,5", " 1.5e2 -300 0x1F 4"})
        commands.emplace_back(keyword + arguments);
    return commands;
}

void sendAll(Bench& bench) {
    for (const auto& entry : vocabulary) {
        if (!bench.supports(entry.keyword)) continue;
        for (const auto& command : commandsOf(std::string(entry.keyword))) {
            const auto& error = bench.send(command).error;
            expect(error.empty() || error == beyondTheEnd() || error == noNumber("stoi") ||
                       error == tooGreat("stoi"),
                   "a command ends with " + error);
        }
    }
}

void checkLine(const Bench& bench, const orxdef::LineSettings& line) {
    const auto parameters = bench.parameters();
    expectEqual(parameters.baudrate, static_cast<int>(line.baudrate), "the baud rate");
    expectEqual(parameters.timeout, int{line.timeout}, "the timeout");
    expectEqual(parameters.delay, int{line.delay}, "the delay");
    expectEqual(parameters.bytesize, int{line.bytesize}, "the character size");
    expectEqual(parameters.stopbits, int{line.stopbits}, "the stop bits");
    expectEqual(parameters.parity, static_cast<int>(line.parity), "the parity");
}

void checkAgainstTools(Bench& bench, const DefinitionSet& definitions,
                       const orxdef::ModelDefinition& model) {
    checkLine(bench, model.line);
    for (const auto& [keyword, entry] : commandTable(definitions, model)) {
        expectEqual(bench.supports(keyword), entry.string != nullptr, "whether it is supported");
        if (entry.string == nullptr || !isKnownKeyword(keyword)) continue;
        for (const auto& command : commandsOf(keyword))
            expectSame(bench.send(command),
                       bytesFor(modelled(entry), static_cast<int>(model.checksum), command),
                       "the bytes for " + command.text(true));
    }
}

/// Takes the highest bits off the number whose high byte that is.
void shorten(std::string& image, std::size_t highByte) {
    if (highByte < image.size()) image[highByte] &= 0x03;
}

/// Lists that claim tens of thousands of entries show nothing that those of a thousand do not, and
/// take long to read.
std::string withShortLists(std::string image) {
    constexpr std::size_t commandCount = 17;
    constexpr std::size_t projectorCount = 21;
    constexpr std::size_t stringCountOfBlock = 9;
    shorten(image, commandCount);
    shorten(image, projectorCount);
    Mistakes ignored({"any bytes"});
    for (const auto& model : orxdef::readBinary(image, 0, ignored).models)
        shorten(image, *model.blockOffset + stringCountOfBlock);
    return image;
}

void check(const std::string& image) {
    definitionFile().write(image);
    std::unique_ptr<ProjectorDefinitionFile> file;
    const auto refusal =
        errorOf([&] { file = std::make_unique<ProjectorDefinitionFile>(definitionFile().path()); });
    expectEqual(refusal, expectedRefusal(image), "opening the file");
    if (file == nullptr) return;
    Mistakes damage({"any bytes"});
    const auto definitions = orxdef::readBinary(image, 0, damage);
    if (definitions.models.size() > mostModels) return;
    // Before a model is used: those that are loaded may add commands to the list.
    expectEqual(dumpOf(*file), ReferenceDump(image).text(), "the dump");
    for (const auto& listed : definitions.models) {
        Bench bench(*file, listed.name);
        sendAll(bench);
        if (damage.empty())
            checkAgainstTools(bench, definitions, *findModel(definitions, listed.name));
    }
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::clearConsole();
    orx::fuzz::check(orx::fuzz::withShortLists({reinterpret_cast<const char*>(data), size}));
    return 0;
}
