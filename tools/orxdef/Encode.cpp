#include "orxdef/Encode.h"

#include <ostream>
#include <stdexcept>

#include "commands/Command.h"
#include "commands/Vocabulary.h"
#include "core/Text.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/DaemonCommands.h"
#include "orxdef/Files.h"
#include "orxdef/Wording.h"
#include "projector/ProjectorDefinitionFile.h"

namespace orx::orxdef {
namespace {

/// A request that has no bytes for an answer; the text says why.
class Refusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

Command parseCommand(const EncodeRequest& request) {
    auto line = request.keyword;
    for (const auto& argument : request.arguments)
        line.append(" ").append(argument);
    return Command(line);
}

void refuseUnknown(const std::string& keyword) {
    if (isKnownKeyword(keyword)) return;
    const auto nearest = nearestKeyword(keyword);
    throw Refusal("unknown command " + quoted(keyword) +
                  (nearest ? "; did you mean " + quoted(*nearest) + "?" : ""));
}

/// The daemon passes over words that it cannot take.
void refuseDropped(const EncodeRequest& request, const Command& command) {
    if (command.arguments().size() == request.arguments.size()) return;
    const auto kind = argumentKindOf(request.keyword);
    throw Refusal(kind ? request.keyword + " takes words of the kind \"" + std::string(*kind) +
                             "\"; the daemon drops any other"
                       : request.keyword + " takes no argument");
}

/// The names of all models in the file, for somebody who has mistyped one.
std::string modelNames(const SeekableFile& file) {
    Mistakes mistakes({file.path()});
    std::string image;
    std::string names;
    for (const auto& model : readBinaryFile(mistakes, image).models)
        names.append(names.empty() ? "" : ", ").append(quoted(model.name));
    return names.empty() ? "none" : names;
}

SeekableFile seekable(const std::string& path) {
    try {
        return SeekableFile(path);
    } catch (const std::runtime_error& error) {
        throw Refusal(path + ": " + error.what());
    }
}

std::shared_ptr<Projector> loadModel(const EncodeRequest& request) {
    const auto file = seekable(request.definitionFile);
    if (auto projector = ProjectorDefinitionFile(file.path()).projector(request.model))
        return projector;
    throw Refusal("no model " + quoted(request.model) + " in " + request.definitionFile +
                  "; it has " + modelNames(file));
}

std::string bytesFor(const EncodeRequest& request) {
    refuseUnknown(request.keyword);
    if (isForDaemon(request.keyword))
        throw Refusal("the daemon acts on " + request.keyword +
                      " by itself and never sends it as such");
    const auto command = parseCommand(request);
    refuseDropped(request, command);
    const auto projector = loadModel(request);
    if (!projector->supports(request.keyword))
        throw Refusal(request.model + " has no " + request.keyword + ": nothing would be sent");
    try {
        return projector->commandString(command);
    } catch (const std::logic_error& error) {
        throw Refusal("this would end the daemon: " + std::string(error.what()));
    }
}

}  // namespace

int encode(const EncodeRequest& request, std::ostream& output, std::ostream& errors) {
    try {
        const auto bytes = bytesFor(request);
        output << escapeBytes(bytes) << '\n' << listBytes(bytes) << '\n';
        return 0;
    } catch (const std::runtime_error& error) {
        errors << "orxdef: " << error.what() << '\n';
        return 1;
    }
}

}  // namespace orx::orxdef
