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

int compile(const CompileRequest& request, std::ostream& standardOutput, std::ostream& errors) {
    const auto& [models, output] = request;
    const auto isOutput = [&request](const auto& model) {
        return isSameFile(model, request.output);
    };
    if (std::ranges::any_of(models, isOutput))
        return refuseOutput(output, "would be written over: it is one of the definitions", errors);

    Mistakes mistakes(models);
    const auto definitions = readToml(mistakes);
    const auto image = binaryImage(definitions, mistakes);
    mistakes.print(errors);
    if (!mistakes.empty()) return failure;
    if (output != "-") return write(*image, output, errors);
    standardOutput << *image;
    return success;
}

}  // namespace orx::orxdef
