#include "projector/ProjectorDefinitionFile.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "core/Console.h"
#include "core/Text.h"
#include "projector/DefinitionFormat.h"

namespace orx {

namespace format = definition_format;

namespace {

bool hasMagic(std::string_view header) {
    return std::ranges::equal(format::magic, header.substr(0, format::magic.size()), {}, {},
                              [](char byte) { return static_cast<unsigned char>(byte); });
}

std::string atLeastTwoDigits(int number) {
    const auto digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

LineParameters lineParameters(const LittleEndianView& block) {
    constexpr unsigned bitsPerNibble = 4;
    constexpr unsigned lowNibble = 0x0F;
    const auto stopbitsAndParity = block.number(0, format::block::stopbitsAndParity);
    return {
        .bytesize = block.integer(0, format::block::bytesize),
        .stopbits = static_cast<int>(stopbitsAndParity >> bitsPerNibble),
        .parity = static_cast<int>(stopbitsAndParity & lowNibble),
        .baudrate = block.integer(0, format::block::baudrate),
        .timeout = block.integer(0, format::block::timeout),
        .delay = block.integer(0, format::block::delay),
    };
}

ArgumentDescriptor argumentDescriptor(const LittleEndianView& block, std::size_t entry) {
    return {
        .min = block.integer(entry, format::descriptor::min),
        .max = block.integer(entry, format::descriptor::max),
        .pos = block.integer(entry, format::descriptor::pos),
        .len = block.integer(entry, format::descriptor::len),
        .type = block.integer(entry, format::descriptor::type),
    };
}

}  // namespace

ProjectorDefinitionFile::ProjectorDefinitionFile(const std::string& path) : file(path) {
    if (!file.isOpen()) {
        throw std::runtime_error("projector definition file " + path + " not found");
    }
    readHeader();
    readCommandList();
    readProjectorList();
}

void ProjectorDefinitionFile::readHeader() {
    header = file.read(format::header::size);
    // A header of full length is never refused for its magic: files made elsewhere lack it.
    if (header.size() < format::header::size && !hasMagic(header)) {
        throw std::runtime_error(
            "insufficient mana (wrong or missing magic in projector definition file)");
    }
    const LittleEndianView view(header);
    if (view.number(0, format::header::endianCheck) > format::greatestEndianCheck) {
        throw std::runtime_error("wrong endianness in projector definition file");
    }
    if (view.number(0, format::header::revision) != format::acceptedRevision) {
        throw std::runtime_error("projector definition file has wrong revision");
    }
}

void ProjectorDefinitionFile::readCommandList() {
    namespace entry = format::command_entry;
    const LittleEndianView view(header);
    const auto region = file.read(view.number(0, format::header::commandListLength));
    const LittleEndianView list(region);
    std::size_t place = 0;
    for (auto count = view.number(0, format::header::commandCount); count > 0; --count) {
        const auto length = list.number(place, entry::nameLength);
        commandList[list.integer(place, entry::id)] = list.text(place + entry::fixedSize, length);
        place += entry::fixedSize + length;
    }
}

void ProjectorDefinitionFile::readProjectorList() {
    namespace entry = format::projector_entry;
    const LittleEndianView view(header);
    const auto region = file.read(view.number(0, format::header::projectorListLength));
    const LittleEndianView list(region);
    std::size_t place = 0;
    for (auto count = view.number(0, format::header::projectorCount); count > 0; --count) {
        const auto length = list.number(place, entry::nameLength);
        projectorList[list.text(place + entry::fixedSize, length)] = {
            list.integer(place, entry::blockOffset), list.integer(place, entry::blockLength)};
        place += entry::fixedSize + length;
    }
}

std::shared_ptr<Projector> ProjectorDefinitionFile::projector(const std::string& name) {
    const auto* model = load(name);
    return model != nullptr ? std::make_shared<Projector>(model->projector) : nullptr;
}

std::shared_ptr<SerialSettings> ProjectorDefinitionFile::serialSettings(const std::string& name) {
    const auto* model = load(name);
    return model != nullptr ? std::make_shared<SerialSettings>(model->settings) : nullptr;
}

const ProjectorDefinitionFile::Model* ProjectorDefinitionFile::load(const std::string& name) {
    const auto cached = models.find(name);
    if (cached != models.end()) return &cached->second;
    const auto listed = projectorList.find(name);
    if (listed == projectorList.end()) return nullptr;
    file.seek(static_cast<std::size_t>(listed->second.offset));
    const auto bytes = file.read(static_cast<std::size_t>(listed->second.length));
    return &models.emplace(name, parseBlock(name, LittleEndianView(bytes))).first->second;
}

ProjectorDefinitionFile::Model ProjectorDefinitionFile::parseBlock(const std::string& name,
                                                                   const LittleEndianView& block) {
    namespace string_entry = format::string_entry;
    std::size_t place = format::block::headerSize;
    CommandStrings strings;
    for (auto count = block.number(0, format::block::stringCount); count > 0; --count) {
        const auto length = block.number(place, string_entry::length);
        strings[commandName(block.integer(place, string_entry::commandId))] =
            block.text(place + string_entry::fixedSize, length);
        place += string_entry::fixedSize + length;
    }
    ArgumentTable arguments;
    for (auto count = block.number(0, format::block::descriptorCount); count > 0; --count) {
        const auto& command = commandName(block.integer(place, format::descriptor::commandId));
        const int number = block.integer(place, format::descriptor::number);
        arguments[command][number] = argumentDescriptor(block, place);
        place += format::descriptor::size;
    }
    const SerialSettings settings(lineParameters(block));
    const int checksum = block.integer(0, format::block::checksum);
    return {settings, Projector(name, std::move(arguments), std::move(strings), checksum)};
}

/// The name of a command of the list; a number that is not in it is added with an empty name.
const std::string& ProjectorDefinitionFile::commandName(int id) {
    return commandList[id];
}

void ProjectorDefinitionFile::dump() {
    dumpHeader();
    dumpCommandList();
    printText("\n[PROJECTOR LIST]\n");
    for (const auto& [name, place] : projectorList) {
        printLine("  name: " + name + "  offset: " + std::to_string(place.offset) +
                  " length: " + std::to_string(place.length));
        static_cast<void>(load(name));
    }
    for (const auto& [name, place] : projectorList) {
        printText("\n[PROJECTOR: " + name + "]\n");
        const auto& model = models.at(name);
        model.settings.dump();
        model.projector.dump();
    }
}

void ProjectorDefinitionFile::dumpHeader() const {
    const LittleEndianView view(header);
    const auto value = [&view](format::Field field) {
        return std::to_string(view.number(0, field));
    };
    const auto compileDate = std::to_string(view.integer(0, format::header::compileDate));
    printLine("[HEADER]");
    // The magic ends at the first zero byte, which the high byte of the check value is at the
    // latest.
    printLine("                  magic: " + listBytes(header.c_str()));
    printLine("endiancheck 8bit random: " + value(format::header::endianCheck));
    printLine("               revision: " + value(format::header::revision));
    printLine("           compile date: " + compileDate);
    printLine("        cmd list length: " + value(format::header::commandListLength));
    printLine("                 # cmds: " + value(format::header::commandCount));
    printLine("  projector list length: " + value(format::header::projectorListLength));
    printLine("           # projectors: " + value(format::header::projectorCount));
}

void ProjectorDefinitionFile::dumpCommandList() const {
    printText("\n[COMMAND LIST]\n");
    for (const auto& [id, name] : commandList) {
        printLine("  id: " + atLeastTwoDigits(id) + "  cmd string: " + name);
    }
}

}  // namespace orx
