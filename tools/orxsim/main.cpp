// The simulator's entry: command line, definition, and the way out.

#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "core/StandardDescriptors.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/CommandTable.h"
#include "orxsim/EventWriter.h"
#include "orxsim/LiveScreen.h"
#include "orxsim/Options.h"
#include "orxsim/Simulator.h"

namespace orx::orxsim {
namespace {

const orxdef::ModelDefinition& modelCalled(const std::string& name,
                                           const orxdef::DefinitionSet& definitions,
                                           const std::string& file) {
    const auto* const model = orxdef::findModel(definitions, name);
    if (model != nullptr) return *model;
    std::string others;
    for (const auto& other : definitions.models)
        others.append(others.empty() ? "" : ", ").append(other.name);
    throw std::runtime_error(file + " has no model " + name +
                             (others.empty() ? ", nor any other" : "; it has " + others));
}

std::unique_ptr<Display> makeDisplay(bool wantsEvents, Output& output, StopSignals& signals) {
    if (wantsEvents || ::isatty(output.get()) == 0) return std::make_unique<EventWriter>(output);
    return std::make_unique<LiveScreen>(output, signals);
}

int simulate(const Options& options) {
    std::string image;
    const auto definitions = orxdef::readSoundFile(options.definitions, image, std::cerr);
    if (!definitions) return 1;
    const auto& model = modelCalled(options.model, *definitions, options.definitions);
    const auto commands = orxdef::commandTable(*definitions, model);
    StopSignals signals;
    Output output(STDOUT_FILENO, signals);
    const auto display = makeDisplay(options.json, output, signals);
    SimulatedProjector projector(commands, model, options.behaviour);
    Simulator simulator(projector, options.link, *display, output, signals);
    simulator.run(model.name);
    return 0;
}

int run(int argc, char** argv) {
    CLI::App app("Simulates a projector on a serial line of its own", "orxsim");
    app.set_version_flag("--version", "orxsim " ORXSIM_VERSION);
    try {
        return simulate(readOptions(app, argc, argv));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 1;
    }
}

}  // namespace
}  // namespace orx::orxsim

int main(int argc, char** argv) {
    try {
        orx::occupyStandardDescriptors();
        return orx::orxsim::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "orxsim: " << error.what() << '\n';
        return 1;
    }
}
