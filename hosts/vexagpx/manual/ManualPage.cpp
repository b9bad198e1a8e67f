// SPDX-License-Identifier: MIT
#include <vexagpx/manual/Writers.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>
#include <stdexcept>

namespace vexagpx::manual {

namespace {

bool IsLetter(const std::string& text, std::size_t at) {
    return at < text.size() && std::isalpha(static_cast<unsigned char>(text[at])) != 0;
}

/// In lines of at most 80 columns, none of which starts like a roff request.
std::string Folded(const std::string& text) {
    std::istringstream words(text);
    std::string out;
    std::size_t column = 0;
    for (std::string word; words >> word;) {
        const bool breaks = column + word.size() > 78 && word.find_first_of(".'") != 0;
        out += out.empty() ? "" : breaks ? "\n" : " ";
        column = (breaks ? 0 : column) + word.size() + 1;
        out += word;
    }
    return out;
}

/// Text for roff: a dash between letters may end a line, any other is the sign that is typed.
std::string Text(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool inWord = i > 0 && IsLetter(text, i - 1) && IsLetter(text, i + 1);
        if (text[i] == '-')
            out += inWord ? "-" : "\\-";
        else if (text[i] == '\\')
            out += "\\e";
        else
            out += text[i];
    }
    return Folded(out.find_first_of(".'") == 0 ? "\\&" + out : out);
}

/// Text that is typed literally.
std::string Typed(const std::string& text) {
    std::string out = Replaced(text, "\\", "\\e");
    out = Replaced(out, "-", "\\-");
    out = Replaced(out, "'", "\\(aq");
    out = Replaced(out, "`", "\\(ga");
    out = Replaced(out, "^", "\\(ha");
    return Replaced(out, "~", "\\(ti");
}

std::string Bold(const std::string& text) {
    return "\\fB" + Typed(text) + "\\fR";
}

std::string Italic(const std::string& text) {
    return "\\fI" + Typed(text) + "\\fR";
}

std::string Sentence(const std::string& text) {
    return Text(text) + (text.empty() || text.back() == '.' ? "" : ".");
}

std::string NamesOf(const Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names)
        names.push_back(Bold(name));
    return Join(names, ", ") + (option.takesValue ? " " + Italic(option.value.name) : "");
}

std::string Arguments(const Command& command) {
    std::string arguments;
    for (const Positional& positional : command.positionals) {
        const std::string argument = Italic(positional.value.name) + (positional.repeats ? " ..." : "");
        arguments += positional.isRequired ? " " + argument : " [" + argument + "]";
    }
    return arguments;
}

std::string OptionEntry(const Option& option) {
    std::string entry = ".TP\n" + NamesOf(option) + "\n" + Sentence(option.description) + "\n";
    if (!option.defaultText.empty())
        entry += "The default is " + Bold(option.defaultText) + ".\n";
    return entry;
}

/// How many commands have this option with the same meaning, which its description shows.
std::size_t Occurrences(const Command& tool, const Option& wanted) {
    std::size_t count = 0;
    for (const Command* command : AllOf(tool)) {
        count += static_cast<std::size_t>(
            std::count_if(command->options.begin(), command->options.end(),
                          [&](const Option& option) { return OptionEntry(option) == OptionEntry(wanted); }));
    }
    return count;
}

bool Has(const Command& command, const Option& wanted) {
    return std::any_of(command.options.begin(), command.options.end(),
                       [&](const Option& option) { return OptionEntry(option) == OptionEntry(wanted); });
}

/// Options of many commands, or of the tool itself, are described once for all.
bool IsShared(const Command& tool, const Option& option) {
    return Occurrences(tool, option) > 2 || Has(tool, option);
}

std::string Synopsis(const Command& tool) {
    std::string text;
    for (const Command* command : AllOf(tool)) {
        if (command->commands.empty())
            text += (text.empty() ? "" : ".br\n") + Bold(command->path) + " [" + Italic("OPTION") + " ...]" +
                    Arguments(*command) + "\n";
    }
    return text + ".br\n" + Bold(tool.path) + " [" + Italic("COMMAND") + "] " + Bold("--help") + "\n.br\n" +
           Bold(tool.path) + " " + Bold("--version") + "\n";
}

/// What a footer says before its examples.
std::string NotesOf(const Command& command) {
    std::string notes = command.footer.substr(0, command.footer.find("Examples:"));
    while (!notes.empty() && notes.back() == '\n')
        notes.pop_back();
    return Replaced(notes, "\n", " ");
}

/// What a person types and gets: the lines of the command between its own and the next line that starts with "##".
std::string ExampleOf(const Command& command, const std::string& examples) {
    const std::string start = "\n## " + command.path + "\n";
    const std::size_t found = examples.find(start);
    if (found == std::string::npos)
        throw std::runtime_error("There is no example of " + command.path);
    std::istringstream lines(examples.substr(found + start.size()));
    std::string text = ".PP\nExample:\n.PP\n.nf\n.RS\n";
    for (std::string line; std::getline(lines, line) && !line.starts_with("##");)
        text += (line.empty() || line.front() == '.' ? "\\&" : "") + Typed(line) + "\n";
    return text + ".RE\n.fi\n";
}

std::string CommandSection(const Command& tool, const Command& command, const std::string& examples) {
    std::string text = ".SS \"" + Typed(command.path) + "\"\n" + Bold(command.path);
    for (const Option& option : command.options)
        text += "\n[" + Replaced(NamesOf(option), ", ", " | ") + "]";
    text += "\n" + Arguments(command) + "\n.PP\n" + Sentence(command.description) + "\n";
    text = Replaced(text, "\n ", "\n");

    for (const Positional& positional : command.positionals)
        text += ".TP\n" + Italic(positional.value.name) + "\n" + Sentence(positional.description) + "\n";
    for (const Option& option : command.options) {
        if (!IsShared(tool, option))
            text += OptionEntry(option);
    }
    const std::string notes = NotesOf(command);
    if (!notes.empty())
        text += ".PP\n" + Text(notes) + "\n";
    return text + ExampleOf(command, examples);
}

std::string Commands(const Command& tool, const std::string& examples) {
    std::string text;
    for (const Command* command : AllOf(tool)) {
        if (command->commands.empty())
            text += CommandSection(tool, *command, examples);
    }
    return text;
}

std::string SharedOptions(const Command& tool) {
    std::vector<std::string> groups;
    std::vector<std::string> sections;
    std::set<std::string> written;
    for (const Command* command : AllOf(tool)) {
        for (const Option& option : command->options) {
            if (!IsShared(tool, option) || !written.insert(OptionEntry(option)).second)
                continue;
            const auto group = std::find(groups.begin(), groups.end(), option.group);
            const auto index = static_cast<std::size_t>(group - groups.begin());
            if (group == groups.end()) {
                groups.push_back(option.group);
                sections.push_back(groups.size() == 1 ? "" : ".SS \"" + Text(option.group) + "\"\n");
            }
            sections[index] += OptionEntry(option);
        }
    }
    return Join(sections, "");
}

std::string Examples(const Command& tool) {
    std::string text = ".nf\n";
    std::set<std::string> written;
    std::vector<const Command*> commands = AllOf(tool);
    // The tool's own examples are a choice of the others.
    std::rotate(commands.begin(), commands.begin() + 1, commands.end());
    for (const Command* command : commands) {
        std::istringstream lines(command->footer);
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, 2, "  ") == 0 && written.insert(line).second)
                text += Typed(line.substr(2)) + "\n";
        }
    }
    return text + ".fi\n";
}

std::string Filled(const std::string& text, const std::string& place, const std::string& content) {
    const std::string line = "\n" + place + "\n";
    if (text.find(line) == std::string::npos)
        throw std::runtime_error("The manual page has no line " + place);
    return Replaced(text, line, "\n" + content);
}

} // namespace

std::string ManualPage(const Command& tool, const std::string& text, const std::string& examples) {
    std::string page = Filled(text, "%SYNOPSIS%", Synopsis(tool));
    page = Filled(page, "%COMMANDS%", Commands(tool, examples));
    page = Filled(page, "%OPTIONS%", SharedOptions(tool));
    return Filled(page, "%EXAMPLES%", Examples(tool));
}

} // namespace vexagpx::manual
