// Definition files with everything that the binary form can say, made up from a seed.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "commands/Vocabulary.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/CommandNumbering.h"
#include "orxdef/Definition.h"

namespace orx::orxdef {

class DefinitionGenerator {
  public:
    explicit DefinitionGenerator(unsigned seed) : random(seed) {}

    /// A file that a compiler would make, or one with the oddities of another compiler.
    DefinitionSet make() {
        DefinitionSet set;
        const bool isUsual = oneIn(3);
        if (!isUsual) makeCommandList(set);
        const auto models = number(4);
        for (unsigned model = 0; model < models; ++model)
            makeModel(set, "MODEL " + std::to_string(!isUsual && oneIn(6) ? 0 : model), isUsual);
        if (isUsual) {
            set.commandList = usualCommandList(set.models);
            return set;
        }
        if (oneIn(2)) set.endianCheck = static_cast<std::uint16_t>(number(256));
        if (oneIn(2)) set.compileDate = static_cast<std::int32_t>(random());
        if (oneIn(4)) set.magic[number(6)] = static_cast<std::uint8_t>(number(256));
        if (oneIn(4)) set.fillers.push_back({{}, 30000 + number(90), bytes(5) + "!"});
        return set;
    }

    /// The bytes of a file as `make` makes it.
    std::string makeImage() {
        Mistakes mistakes({"generated"});
        return binaryImage(make(), mistakes).value_or("");
    }

    unsigned number(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    bool oneIn(unsigned count) { return number(count) == 0; }

    std::string bytes(unsigned most) {
        std::string text(number(most + 1), '\0');
        for (auto& byte : text)
            byte = static_cast<char>(oneIn(3) ? number(256) : ' ' + number(95));
        return text;
    }

  private:
    void makeCommandList(DefinitionSet& set) {
        const auto count = number(30);
        for (unsigned index = 0; index < count; ++index) {
            const auto& entry = vocabulary.at(number(vocabulary.size()));
            auto name = oneIn(8) ? bytes(9) : std::string(entry.keyword);
            if (oneIn(20)) name = "timeout";  // which is a key of the form, too
            set.commandList.push_back({{}, static_cast<std::uint16_t>(number(40)), name});
        }
    }

    void makeModel(DefinitionSet& set, std::string name, bool isUsual) {
        auto& model = set.models.emplace_back();
        model.name = !isUsual && oneIn(6) ? name + bytes(6) : std::move(name);
        model.line.baudrate = static_cast<std::uint32_t>(random());
        model.line.timeout = static_cast<std::uint16_t>(random());
        model.line.delay = static_cast<std::uint16_t>(oneIn(2) ? 0 : random());
        model.line.bytesize = static_cast<std::uint8_t>(isUsual ? 5 + number(4) : number(256));
        model.line.stopbits = static_cast<std::uint8_t>(isUsual ? 1 + number(2) : number(16));
        model.line.parity = static_cast<Parity>(number(isUsual ? 3 : 16));
        model.checksum = static_cast<Checksum>(number(isUsual ? 2 : 4));
        if (!isUsual && oneIn(8))
            model.blockOffset =
                static_cast<std::uint16_t>(3000 + 5000 * set.models.size() + number(9));
        std::vector<std::uint16_t> ids(isUsual ? vocabulary.size() : 40);
        for (std::size_t index = 0; index < ids.size(); ++index)
            ids[index] = static_cast<std::uint16_t>(index + 1);
        if (!isUsual) std::ranges::shuffle(ids, random);
        for (const auto id : ids)
            if (oneIn(3)) makeCommand(model, id, isUsual);
        if (!isUsual && oneIn(4)) std::ranges::shuffle(model.descriptors, random);
        if (!isUsual && oneIn(4)) makeCommand(model, 7, false);
    }

    void makeCommand(ModelDefinition& model, std::uint16_t id, bool isUsual) {
        const auto& string = model.strings.emplace_back(CommandString{{}, id, bytes(12)});
        const bool takesArguments =
            !isUsual || vocabulary.at(id - 1U).argumentKind != ArgumentKind::none;
        if (!takesArguments || model.descriptors.size() > 200) return;
        const auto count = number(4);
        unsigned pos = 0;
        for (unsigned index = 1; index <= count; ++index) {
            const auto rest = static_cast<unsigned>(string.bytes.size()) - pos;
            pos += number(rest + 1);
            auto& argument = model.descriptors.emplace_back(makeArgument(id, index));
            argument.pos = static_cast<std::uint8_t>(pos);
            if (!isUsual && oneIn(5)) makeOdd(argument);
        }
    }

    ArgumentDescriptor makeArgument(std::uint16_t id, unsigned index) {
        auto one = static_cast<std::int32_t>(random());
        auto other = static_cast<std::int32_t>(random() >> number(64));
        if (one > other) std::swap(one, other);
        return {.place = {},
                .id = id,
                .number = static_cast<std::uint16_t>(index),
                .min = one,
                .max = other,
                .len = static_cast<std::uint8_t>(number(256)),
                .type = static_cast<std::uint8_t>("ABDIX"[number(5)])};
    }

    void makeOdd(ArgumentDescriptor& argument) {
        if (oneIn(2)) argument.number = static_cast<std::uint16_t>(number(5));
        if (oneIn(2)) argument.pos = static_cast<std::uint8_t>(number(256));
        if (oneIn(2)) argument.type = static_cast<std::uint8_t>(number(256));
        if (oneIn(2)) std::swap(argument.min, argument.max);
    }

    std::mt19937_64 random;
};

}  // namespace orx::orxdef
