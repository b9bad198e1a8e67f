// SPDX-License-Identifier: MIT
#include <vexagpx/manual/Writers.h>

namespace vexagpx::manual {

namespace {

constexpr char kHead[] = R"(# fish completion for vexagpx

# Prints the command before the cursor, and on a second line how many arguments follow it.
function __vexagpx_place
    set -l words (commandline -opc)
    set -e words[1]
    set -l command
    set -l count 0
    while set -q words[1]
        set -l word $words[1]
        set -e words[1]
        switch $word
            case --
                set count (math $count + (count $words))
                break
            case @VALUE_OPTIONS@
                set -q words[1]; and set -e words[1]
            case -
                set count (math $count + 1)
            case '-*'
            case '*'
                if test $count -eq 0; and contains -- (string join ' ' $command $word) @COMMANDS@
                    set -a command $word
                else
                    set count (math $count + 1)
                end
        end
    end
    echo (string join ' ' $command)
    echo $count
end

# Whether the cursor is in the command COMMAND, after at least FIRST and at most LAST of its arguments.
#   __vexagpx_at COMMAND [FIRST [LAST]]
function __vexagpx_at
    set -l place (__vexagpx_place)
    test "$place[1]" = "$argv[1]"; or return 1
    set -q argv[2]; and test $place[2] -lt $argv[2]; and return 1
    set -q argv[3]; and test $place[2] -gt $argv[3]; and return 1
    return 0
end

complete -c vexagpx -f
)";

/// Between single quotes, in which fish knows a backslash.
std::string FishQuoted(const std::string& text) {
    return "'" + Replaced(Replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

std::string Condition(const Command& command, const std::string& place) {
    return "complete -c vexagpx -n " +
           FishQuoted("__vexagpx_at " + FishQuoted(PathBelowTool(command)) + place);
}

std::string Names(const Option& option) {
    std::string names;
    for (const std::string& name : option.names)
        names += name.compare(0, 2, "--") == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    return names;
}

std::string Action(const Value& value) {
    switch (value.completion) {
    case Completion::kFile:
        return " -F";
    case Completion::kFolder:
        return " -xa '(__fish_complete_directories)'";
    case Completion::kWords:
        return " -xa " + FishQuoted(Join(value.words, " "));
    case Completion::kNothing:
        break;
    }
    return " -x";
}

std::string CommandLines(const Command& command) {
    std::string lines = "\n";
    for (const Option& option : command.options)
        lines += Condition(command, "") + Names(option) +
                 (option.takesValue ? " -r" + Action(option.value) : "") + " -d " +
                 FishQuoted(option.description) + "\n";
    for (const Command& below : command.commands)
        lines +=
            Condition(command, " 0 0") + " -a " + below.name + " -d " + FishQuoted(below.description) + "\n";
    for (std::size_t i = 0; i < command.positionals.size(); ++i) {
        const Positional& positional = command.positionals[i];
        const std::string number = std::to_string(i);
        if (positional.value.completion != Completion::kNothing)
            lines += Condition(command, " " + number + (positional.repeats ? "" : " " + number)) +
                     Action(positional.value) + "\n";
    }
    return lines;
}

} // namespace

std::string FishCompletion(const Command& tool) {
    std::vector<std::string> paths;
    for (const Command* command : AllOf(tool)) {
        if (command != &tool)
            paths.push_back(FishQuoted(PathBelowTool(*command)));
    }
    std::string text = Replaced(kHead, "@VALUE_OPTIONS@", NamesOf(OptionValues(tool), " "));
    text = Replaced(text, "@COMMANDS@", Join(paths, " "));
    for (const Command* command : AllOf(tool))
        text += CommandLines(*command);
    return text;
}

} // namespace vexagpx::manual
