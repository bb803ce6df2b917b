// The companion tool for projector definition files: the command line of its subcommands.

#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>

#include "orxdef/Check.h"
#include "orxdef/Compile.h"
#include "orxdef/Decompile.h"
#include "orxdef/Encode.h"
#include "orxdef/List.h"
#include "orxdef/Schema.h"

namespace {

using namespace orx::orxdef;

/// A wrong command line ends with status 1, as every other failure does.
int exitStatus(const CLI::App& app, const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 1;
}

/// The words of a command line, from the last one to the first. The arguments of a command to be
/// encoded can be negative numbers, which a parser takes for options unless "--" stands ahead.
std::vector<std::string> withoutMistakenOptions(std::vector<std::string> words) {
    constexpr std::size_t encodeFileModelAndCommand = 4;
    const auto isNumber = [](const std::string& word) {
        return word.size() > 1 && word[0] == '-' &&
               word.find_first_of("0123456789.iInN", 1) == 1;  // -5, -.5, -inf, -nan
    };
    if (words.size() > encodeFileModelAndCommand && words.front() == "encode" &&
        std::ranges::find(words, "--") == words.end() && std::ranges::any_of(words, isNumber))
        words.insert(words.begin() + encodeFileModelAndCommand, "--");
    std::ranges::reverse(words);
    return words;
}

/// The command line; `run` is what the chosen subcommand does, and gives the exit status.
class CommandLine {
  public:
    CommandLine() {
        app.set_version_flag("--version", "orxdef " ORXDEF_VERSION);
        app.require_subcommand(1);
        addCompile();
        addDecompile();
        addCheck();
        addList();
        addEncode();
        addSchema();
        app.footer("A file called - is standard input or standard output.");
    }

    int parseAndRun(int argc, char** argv) {
        try {
            app.parse(withoutMistakenOptions({argv + 1, argv + argc}));
        } catch (const CLI::ParseError& error) {
            return exitStatus(app, error);
        }
        return run();
    }

  private:
    void addCompile() {
        auto* command = app.add_subcommand("compile", "Compile definitions for the daemon");
        command
            ->add_option("models", compileRequest.models,
                         "Definitions in TOML; standard input where it is no terminal")
            ->required(::isatty(STDIN_FILENO) == 1)
            ->type_name("MODEL.toml");
        command->add_option("-o,--output", compileRequest.output, "The definition file to write")
            ->required()
            ->type_name("orx.ccd");
        command->callback([this] {
            if (compileRequest.models.empty()) compileRequest.models = {"-"};
            run = [this] { return compile(compileRequest, std::cout, std::cerr); };
        });
    }

    void addDecompile() {
        auto* command = app.add_subcommand(
            "decompile", "Give back TOML that compiles to the same bytes, on standard output");
        addDefinitionFile(*command);
        command->callback(
            [this] { run = [this] { return decompile(definitionFile, std::cout, std::cerr); }; });
    }

    void addCheck() {
        auto* command = app.add_subcommand(
            "check", "Show everything that would surprise at run time; status 1 where it matters");
        command
            ->add_option("files", checkedFiles,
                         "Definition files, or definitions in TOML that are compiled together")
            ->required()
            ->type_name("FILE");
        command->add_flag("--json", asJson, "Print one JSON object");
        command->callback([this] {
            run = [this] {
                const auto format = asJson ? CheckFormat::json : CheckFormat::text;
                return check(checkedFiles, format, std::cout);
            };
        });
    }

    void addList() {
        auto* command = app.add_subcommand("list", "Show the models and their commands as tables");
        addDefinitionFile(*command);
        command->callback(
            [this] { run = [this] { return list(definitionFile, std::cout, std::cerr); }; });
    }

    void addEncode() {
        auto* command = app.add_subcommand(
            "encode", "Show the bytes that the daemon would send, escaped and in hexadecimal");
        command->add_option("file", encodeRequest.definitionFile, "The definition file")
            ->required()
            ->type_name("orx.ccd");
        command->add_option("model", encodeRequest.model, "The name of the model")
            ->required()
            ->type_name("MODEL");
        command->add_option("command", encodeRequest.keyword, "The keyword of the command")
            ->required()
            ->type_name("COMMAND");
        command->add_option("arguments", encodeRequest.arguments, "Its arguments")
            ->type_name("ARG");
        command->callback(
            [this] { run = [this] { return encode(encodeRequest, std::cout, std::cerr); }; });
    }

    void addSchema() {
        app.add_subcommand("schema", "Print the JSON Schema of definitions in TOML")
            ->callback([this] { run = [] { return printSchema(std::cout); }; });
    }

    void addDefinitionFile(CLI::App& command) {
        command.add_option("file", definitionFile, "The definition file")
            ->required()
            ->type_name("orx.ccd");
    }

    CLI::App app{"Works on the projector definitions of orx", "orxdef"};
    std::function<int()> run;
    CompileRequest compileRequest;
    EncodeRequest encodeRequest;
    std::string definitionFile;
    std::vector<std::string> checkedFiles;
    bool asJson = false;
};

}  // namespace

int main(int argc, char** argv) {
    try {
        const int status = CommandLine().parseAndRun(argc, argv);
        std::cout.flush();
        if (std::cout) return status;
        std::cerr << "orxdef: standard output cannot be written\n";
    } catch (const std::exception& error) {
        std::cerr << "orxdef: " << error.what() << '\n';
    }
    return 1;
}
