#include "orxdef/Compile.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

#include "orxdef/BinaryWriter.h"
#include "orxdef/Files.h"
#include "orxdef/TomlReader.h"

namespace orx::orxdef {
namespace {

constexpr int success = 0;
constexpr int failure = 1;

int refuseOutput(const std::string& output, std::string_view reason, std::ostream& errors) {
    errors << output << ": " << reason << '\n';
    return failure;
}

int write(const std::string& image, const std::string& output, std::ostream& errors) {
    try {
        replaceFile(output, image);
        return success;
    } catch (const std::runtime_error& error) {
        return refuseOutput(output, std::string("cannot be written: ") + error.what(), errors);
    }
}

}  // namespace

int compile(const std::vector<std::string>& models, const std::string& output,
            std::ostream& errors) {
    const auto isOutput = [&output](const auto& model) { return isSameFile(model, output); };
    if (std::ranges::any_of(models, isOutput))
        return refuseOutput(output, "would be written over: it is one of the definitions", errors);

    Mistakes mistakes(models);
    TomlReader reader(mistakes);
    for (std::size_t file = 0; file < models.size(); ++file)
        reader.read(file);
    const auto image = binaryImage(reader.definitions(), mistakes);
    for (const auto& line : mistakes.lines())
        errors << line << '\n';
    return mistakes.empty() ? write(*image, output, errors) : failure;
}

}  // namespace orx::orxdef
