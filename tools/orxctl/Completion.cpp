#include "orxctl/Completion.h"

#include <algorithm>
#include <sstream>

#include "orxctl/CommandTexts.h"
#include "orxctl/Wording.h"

namespace orx::orxctl {
namespace {

/// `text` with a backslash ahead of each of `characters`.
std::string escaped(std::string_view text, std::string_view characters) {
    std::string result;
    for (const char character : text) {
        if (characters.find(character) != std::string_view::npos) result += '\\';
        result += character;
    }
    return result;
}

/// A word of a shell: `text` as it is, whatever it holds.
std::string inQuotes(std::string_view text) {
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? std::string(R"('\'')") : std::string(1, character);
    return result + "'";
}

std::vector<std::string> keywordList() {
    std::vector<std::string> keywords;
    keywords.reserve(commandTexts.size());
    for (const auto& command : commandTexts)
        keywords.emplace_back(command.keyword);
    return keywords;
}

std::vector<std::string> errandList(const CommandLineWords& words) {
    std::vector<std::string> names;
    for (const auto& errand : words.errands)
        names.push_back(errand.name);
    return names;
}

std::vector<std::string> optionList(const std::vector<OptionWords>& options) {
    std::vector<std::string> names;
    for (const auto& option : options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::vector<std::string> optionsWithValue(const std::vector<OptionWords>& options) {
    std::vector<std::string> names;
    for (const auto& option : options)
        if (option.value != ValueKind::none)
            names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::string shellList() {
    return joined({completionShells.begin(), completionShells.end()}, " ");
}

// ---- bash

/// The cases of an option's value, for all options that have one. All errands take the same ones.
std::string bashValues(const CommandLineWords& words) {
    std::ostringstream script;
    for (const auto& option : words.options) {
        if (option.value == ValueKind::none) continue;
        script << "        " << joined(option.names, "|") << ") "
               << (option.value == ValueKind::file ? "_orxctl_files; " : "") << "return ;;\n";
    }
    return script.str();
}

std::string bashErrand(const ErrandWords& errand) {
    std::ostringstream script;
    script << "        " << errand.name << ")\n            choices="
           << inQuotes(joined(optionList(errand.options), " ") +
                       (errand.argument == ValueKind::shell ? " " + shellList() : ""))
           << '\n';
    if (errand.argument == ValueKind::file) script << "            _orxctl_files\n";
    script << "            ;;\n";
    return script.str();
}

std::string bashScript(const CommandLineWords& words) {
    const auto options = joined(optionList(words.options), " ");
    std::ostringstream script;
    script << R"(# Completion of orxctl for bash: source it, or put it where bash-completion looks.
_orxctl_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
_orxctl() {
    local current previous first= skip= word choices
    local -a words
    # Not the words of bash, which takes HOST:PORT apart.
    read -ra words <<<"${COMP_LINE:0:COMP_POINT}"
    [[ ${COMP_LINE:0:COMP_POINT} == *[[:space:]] ]] && words+=("")
    current=${words[-1]} previous=${words[-2]-}
    COMPREPLY=()
    case $previous in
)" << bashValues(words)
           << R"(    esac
    for word in "${words[@]:1:${#words[@]}-2}"; do
        if [ -n "$skip" ]; then skip=; continue; fi
        case $word in
            )"
           << joined(optionsWithValue(words.options), "|") << R"() skip=yes ;;
            -*) ;;
            *) first=$word; break ;;
        esac
    done
    case $first in
        "")
            choices=)"
           << inQuotes(joined(errandList(words), " ") + " " + joined(keywordList(), " ") + " " +
                       options)
           << "\n            ;;\n";
    for (const auto& errand : words.errands)
        script << bashErrand(errand);
    script << "        *)\n            choices=" << inQuotes(options) << R"(
            ;;
    esac
    COMPREPLY+=($(compgen -W "$choices" -- "$current"))
}
complete -F _orxctl orxctl
)";
    return script.str();
}

// ---- zsh

std::string zshItem(std::string_view name, std::string_view text) {
    return inQuotes(escaped(name, ":") + ":" + std::string(text));
}

/// An option as _arguments takes it, once for each of its names.
std::string zshOption(const OptionWords& option) {
    std::string text;
    for (const auto& name : option.names) {
        auto item = "*" + name + "[" + escaped(option.text, "[]:") + "]";
        if (option.value != ValueKind::none)
            item += option.value == ValueKind::file ? ":file:_files" : ":value: ";
        text += " " + inQuotes(item);
    }
    return text;
}

std::string zshOptions(const std::vector<OptionWords>& options) {
    std::string text;
    for (const auto& option : options)
        text += zshOption(option);
    return text;
}

std::string zshArgument(ValueKind argument) {
    switch (argument) {
        case ValueKind::file:
            return " '1:file:_files'";
        case ValueKind::shell:
            return " '1:shell:(" + shellList() + ")'";
        case ValueKind::text:
            return " '1:pattern: '";
        case ValueKind::none:
            break;
    }
    return "";
}

std::string zshScript(const CommandLineWords& words) {
    std::ostringstream script;
    script << R"(#compdef orxctl
# Completion of orxctl for zsh: put it as _orxctl into a folder of $fpath, or source it.
_orxctl() {
    local curcontext=$curcontext state line
    local -a errands keywords
    errands=()"
           << '\n';
    for (const auto& errand : words.errands)
        script << "        " << zshItem(errand.name, errand.text) << '\n';
    script << "    )\n    keywords=(\n";
    for (const auto& command : commandTexts)
        script << "        " << zshItem(command.keyword, command.text) << '\n';
    script << "    )\n    _arguments -C" << zshOptions(words.options)
           << R"( '1: :->first' '*:: :->rest'
    case $state in
        first)
            _describe -t errands errand errands
            _describe -t commands command keywords
            ;;
        rest)
            case $words[1] in
)";
    for (const auto& errand : words.errands)
        script << "                " << errand.name << ") _arguments" << zshOptions(errand.options)
               << zshArgument(errand.argument) << " ;;\n";
    script << "                *) _arguments" << zshOptions(words.options) << R"( '*: : ' ;;
            esac
            ;;
    esac
}
if [ "$funcstack[1]" = _orxctl ]; then _orxctl "$@"; else compdef _orxctl orxctl; fi
)";
    return script.str();
}

// ---- fish

/// A function that tells whether the word to be completed is the first that is neither an option
/// nor the value of one. What fish brings along takes such a value for a subcommand.
std::string fishFirst(const CommandLineWords& words) {
    std::ostringstream script;
    script << R"(function __orxctl_is_first
    set -l skip
    for word in (commandline -opc)[2..-1]
        if set -q skip[1]
            set skip
            continue
        end
        switch $word
            case )"
           << joined(optionsWithValue(words.options), " ") << R"(
                set skip yes
            case '-*'
            case '*'
                return 1
        end
    end
    return 0
end
)";
    return script.str();
}

/// One "complete" line, shown where `condition` holds.
std::string fishLine(const std::string& condition, const std::string& rest) {
    return "complete -c orxctl -n " + inQuotes(condition) + " " + rest + "\n";
}

std::string fishOption(const std::string& condition, const OptionWords& option) {
    std::string rest;
    for (const auto& name : option.names) {
        const bool isLong = name.starts_with("--");
        rest += (isLong ? "-l " : "-s ") + name.substr(isLong ? 2 : 1) + " ";
    }
    if (option.value != ValueKind::none) rest += option.value == ValueKind::file ? "-rF " : "-x ";
    return fishLine(condition, rest + "-d " + inQuotes(option.text));
}

std::string fishErrand(const ErrandWords& errand) {
    const auto within = "__fish_seen_subcommand_from " + errand.name;
    auto script =
        fishLine("__orxctl_is_first", "-a " + errand.name + " -d " + inQuotes(errand.text));
    for (const auto& option : errand.options)
        script += fishOption(within, option);
    if (errand.argument == ValueKind::file) script += fishLine(within, "-F");
    if (errand.argument == ValueKind::shell)
        script += fishLine(within, "-a " + inQuotes(shellList()));
    return script;
}

std::string fishScript(const CommandLineWords& words) {
    std::string script =
        "# Completion of orxctl for fish: put it as orxctl.fish into a folder of "
        "$fish_complete_path, or source it.\n"
        "complete -c orxctl -f\n" +
        fishFirst(words);
    for (const auto& errand : words.errands)
        script += fishErrand(errand);
    for (const auto& command : commandTexts)
        script += fishLine("__orxctl_is_first",
                           "-a " + inQuotes(command.keyword) + " -d " + inQuotes(command.text));
    const auto elsewhere = "not __fish_seen_subcommand_from " + joined(errandList(words), " ");
    for (const auto& option : words.options)
        script += fishOption(elsewhere, option);
    return script;
}

}  // namespace

std::string completionScript(std::string_view shell, const CommandLineWords& words) {
    if (shell == "bash") return bashScript(words);
    if (shell == "zsh") return zshScript(words);
    return fishScript(words);
}

}  // namespace orx::orxctl
