// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vexagpx::manual {

/// How a shell completes a value.
enum class Completion { kNothing, kFile, kFolder, kWords };

struct Value {
    std::string name; ///< as the help shows it: "FILE"
    Completion completion = Completion::kNothing;
    std::vector<std::string> words; ///< for kWords
};

struct Option {
    std::vector<std::string> names; ///< with their dashes, the short one first
    bool takesValue = false;
    Value value;
    std::string defaultText;
    std::string description;
    std::string group;
};

struct Positional {
    Value value;
    std::string description;
    bool isRequired = false;
    bool repeats = false;
};

/// The tool or one of its commands.
struct Command {
    std::string path; ///< "vexagpx zip list"
    std::string name; ///< "list"
    std::string description;
    std::string footer;
    std::vector<Option> options;
    std::vector<Positional> positionals;
    std::vector<Command> commands;
};

/// What the command line of \p app takes.
/// \throws std::runtime_error when an option or argument has a value of a name that no completion is known for
Command Describe(const CLI::App& app);

/// \p command and all below it, each before its own commands.
std::vector<const Command*> AllOf(const Command& command);

/// The values of all options that take one, by the option's name: "--gpx". Of an option that takes another value in
/// another command the first one.
/// \throws std::runtime_error when an option takes a value in one command and none in another
std::map<std::string, Value> OptionValues(const Command& tool);

/// An option that takes another value in this command than in the first one that has it.
struct OtherValue {
    const Command* command;
    std::string option;
    Value value;
};

std::vector<OtherValue> OtherValues(const Command& tool);

/// "--app|--gpx|--url"
std::string NamesOf(const std::map<std::string, Value>& options, const std::string& separator);

/// The command's path without the tool's own name: "zip list", and "" for the tool.
std::string PathBelowTool(const Command& command);

std::string Join(const std::vector<std::string>& texts, const std::string& separator);

/// \p text with every \p from replaced.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// Between single quotes, for bash and zsh.
std::string Quoted(const std::string& text);

} // namespace vexagpx::manual
