// SPDX-License-Identifier: MIT
#include <vexagpx/manual/Writers.h>

namespace vexagpx::manual {

namespace {

/// The form of a text in a description of _arguments, between brackets.
std::string Description(const std::string& text) {
    std::string escaped = Replaced(text, "\\", "\\\\");
    for (const char* sign : {":", "[", "]"})
        escaped = Replaced(escaped, sign, std::string("\\") + sign);
    return escaped;
}

std::string Action(const Value& value) {
    switch (value.completion) {
    case Completion::kFile:
        return "_files";
    case Completion::kFolder:
        return "_files -/";
    case Completion::kWords:
        return "(" + Join(value.words, " ") + ")";
    case Completion::kNothing:
        break;
    }
    return " ";
}

std::string FunctionName(const Command& command) {
    return "_" + Replaced(command.path, " ", "_");
}

std::string OptionLines(const Option& option) {
    std::string lines;
    for (const std::string& name : option.names) {
        std::string entry = option.names.size() > 1 ? "(" + Join(option.names, " ") + ")" : "";
        entry += name;
        if (option.takesValue)
            entry += "=";
        entry += "[" + Description(option.description) + "]";
        if (option.takesValue)
            entry += ":" + option.value.name + ":" + Action(option.value);
        lines += " \\\n        " + Quoted(entry);
    }
    return lines;
}

std::string PositionalLines(const Command& command) {
    std::string lines;
    int place = 0;
    for (const Positional& positional : command.positionals) {
        ++place;
        const std::string where = positional.repeats      ? "*"
                                  : positional.isRequired ? std::to_string(place)
                                                          : std::to_string(place) + ":";
        lines +=
            " \\\n        " + Quoted(where + ":" + positional.value.name + ":" + Action(positional.value));
    }
    return lines;
}

/// Hands over to the functions of the commands.
std::string CommandsFunction(const Command& command) {
    std::string text = FunctionName(command) + "_commands() {\n    local -a commands=(\n";
    for (const Command& below : command.commands)
        text += "        " + Quoted(below.name + ":" + Description(below.description)) + "\n";
    return text + "    )\n    _describe -t commands command commands\n}\n\n";
}

std::string CommandFunction(const Command& command) {
    const bool hasCommands = !command.commands.empty();
    std::string text = hasCommands ? CommandsFunction(command) : "";
    text += FunctionName(command) + "() {\n";
    if (hasCommands)
        text += "    local context state state_descr line\n    typeset -A opt_args\n";
    text += std::string("    _arguments -S") + (hasCommands ? " -C -A '-*'" : "");
    for (const Option& option : command.options)
        text += OptionLines(option);
    text += PositionalLines(command);
    if (!hasCommands)
        return text + "\n}\n\n";

    text += " \\\n        '1:command:" + FunctionName(command) +
            "_commands' \\\n        '*::argument:->argument'";
    text += " && return\n    [[ $state == argument ]] || return 1\n    case $words[1] in\n";
    for (const Command& below : command.commands)
        text += "    " + below.name + ") " + FunctionName(below) + " ;;\n";
    return text + "    *) return 1 ;;\n    esac\n}\n\n";
}

} // namespace

std::string ZshCompletion(const Command& tool) {
    std::string text = "#compdef vexagpx\n\n";
    for (const Command* command : AllOf(tool))
        text += CommandFunction(*command);
    return text + FunctionName(tool) + " \"$@\"\n";
}

} // namespace vexagpx::manual
