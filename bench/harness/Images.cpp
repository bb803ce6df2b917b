#include "harness/Images.h"

#include "commands/Vocabulary.h"

namespace orx::bench {
namespace {

test::BlockImage model(const std::string& name) {
    test::BlockImage block{.name = name};
    block.timeout = 0;
    block.delay = 0;
    int id = 0;
    for (const auto& entry : vocabulary) {
        block.strings.emplace_back(++id, std::string(entry.keyword).append("\r"));
        if (entry.argumentKind == ArgumentKind::integer)
            block.descriptors.push_back({id, 1, 0, 1000, 2, 4, 'A'});
    }
    return block;
}

}  // namespace

test::DefinitionImage definitions(std::size_t size) {
    test::DefinitionImage image;
    int id = 0;
    for (const auto& entry : vocabulary)
        image.commands.emplace_back(++id, std::string(entry.keyword));
    image.blocks.push_back(model("BENCH"));
    while (image.bytes().size() < size)
        image.blocks.push_back(model("OTHER-" + std::to_string(image.blocks.size())));
    if (image.blocks.size() > 1) image.blocks.pop_back();
    // The rest of the size in commands of a last model, byte by byte.
    const auto missing = size - std::min(size, image.bytes().size());
    constexpr std::size_t emptyModel = 25;
    constexpr std::size_t emptyCommand = 3;
    constexpr std::size_t longest = 200;
    if (missing <= emptyModel) return image;
    test::BlockImage last{.name = "LAST"};
    for (auto left = missing - emptyModel; left > emptyCommand;) {
        const auto length = std::min(left - emptyCommand, longest);
        last.strings.emplace_back(1, std::string(length, '.'));
        left -= length + emptyCommand;
    }
    image.blocks.push_back(last);
    return image;
}

std::string configuration(int lines) {
    std::string text;
    for (int line = 0; line < lines; line += 3) {
        const auto number = std::to_string(line);
        text += "# what the next two lines say\n";
        text.append("key").append(number).append(".first = ").append(number).append("\n");
        text.append("key").append(number).append(".second = some text\n");
    }
    return text;
}

std::string lensMemory(int slots) {
    std::string text = "mem = ";
    for (int slot = 0; slot < slots; ++slot) {
        text.append(std::to_string(slot)).append(":").append(std::to_string(slot % 1000));
        text.append(";").append(std::to_string(slot % 2000)).append(",");
    }
    return text + "\n";
}

}  // namespace orx::bench
