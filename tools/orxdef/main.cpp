// The companion tool for projector definition files: the command line of its subcommands.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "orxdef/Compile.h"

namespace {

/// A wrong command line ends with status 1, as every other failure does.
int exitStatus(const CLI::App& app, const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 1;
}

int run(int argc, char** argv) {
    CLI::App app("Works on the projector definitions of orx", "orxdef");
    app.set_version_flag("--version", "orxdef " ORXDEF_VERSION);
    app.require_subcommand(1);

    std::vector<std::string> models;
    std::string output;
    auto* compile = app.add_subcommand("compile", "Compile definitions for the daemon");
    compile->add_option("models", models, "Definitions in TOML")
        ->required()
        ->type_name("MODEL.toml");
    compile->add_option("-o,--output", output, "The definition file to write")
        ->required()
        ->type_name("orx.ccd");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return exitStatus(app, error);
    }
    return orx::orxdef::compile(models, output, std::cerr);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "orxdef: " << error.what() << '\n';
        return 1;
    }
}
