// SPDX-License-Identifier: MIT
#include <vexagpx/manual/CommandModel.h>

#include <CLI/CLI.hpp>

#include <iterator>
#include <stdexcept>

namespace vexagpx::manual {

namespace {

Value ValueOf(const std::string& name) {
    static const std::map<std::string, Value> values = {
        {"ARCHIVE", {"ARCHIVE", Completion::kFile, {}}},
        {"BOX", {"BOX", Completion::kNothing, {}}},
        {"CIRCLE", {"CIRCLE", Completion::kNothing, {}}},
        {"COLOURS", {"COLOURS", Completion::kWords, {"none", "height", "speed"}}},
        {"CONDITION", {"CONDITION", Completion::kNothing, {}}},
        {"DIR", {"DIR", Completion::kFolder, {}}},
        {"DURATION", {"DURATION", Completion::kNothing, {}}},
        {"ENTRY", {"ENTRY", Completion::kNothing, {}}},
        {"FILE", {"FILE", Completion::kFile, {}}},
        {"FOLDER", {"FOLDER", Completion::kFolder, {}}},
        {"FORMAT", {"FORMAT", Completion::kWords, {"geojson", "csv", "kml"}}},
        {"IN", {"IN", Completion::kFile, {}}},
        {"KEY", {"KEY", Completion::kNothing, {}}},
        {"LAYER", {"LAYER", Completion::kWords, {"waypoints", "routes", "tracks", "points"}}},
        {"LENGTH", {"LENGTH", Completion::kNothing, {}}},
        {"N", {"N", Completion::kNothing, {}}},
        {"NAME", {"NAME", Completion::kNothing, {}}},
        {"NEW", {"NEW", Completion::kFile, {}}},
        {"NUMBER", {"NUMBER", Completion::kNothing, {}}},
        {"OLD", {"OLD", Completion::kFile, {}}},
        {"OLD NEW", {"OLD NEW", Completion::kNothing, {}}},
        {"ORDER", {"ORDER", Completion::kWords, {"code", "time"}}},
        {"OUT", {"OUT", Completion::kFile, {}}},
        {"PLACE", {"PLACE", Completion::kNothing, {}}},
        {"SENSORS",
         {"SENSORS",
          Completion::kWords,
          {"heartrate", "cadence", "temperature", "watertemperature", "power", "speed", "course", "depth"}}},
        {"SIZE", {"SIZE", Completion::kNothing, {}}},
        {"TEXT", {"TEXT", Completion::kNothing, {}}},
        {"TIME", {"TIME", Completion::kNothing, {}}},
        {"UNITS", {"UNITS", Completion::kWords, {"metric", "imperial"}}},
        {"URL", {"URL", Completion::kNothing, {}}},
        {"VERSION", {"VERSION", Completion::kWords, {"1.0", "1.1"}}},
        {"ZONE", {"ZONE", Completion::kNothing, {}}},
        {"WHEN", {"WHEN", Completion::kWords, {"auto", "always", "never"}}},
    };
    const auto found = values.find(name);
    if (found == values.end())
        throw std::runtime_error("CommandModel.cpp does not say how a shell completes the value " + name);
    return found->second;
}

/// On one line.
std::string Description(const CLI::Option& option) {
    return Replaced(option.get_description(), "\n", " ");
}

Option OptionOf(const CLI::Option& described) {
    Option option;
    for (const std::string& name : described.get_snames())
        option.names.push_back("-" + name);
    for (const std::string& name : described.get_lnames())
        option.names.push_back("--" + name);
    option.takesValue = described.get_items_expected_max() != 0;
    if (option.takesValue) {
        option.value = ValueOf(described.get_type_name());
        option.defaultText = described.get_default_str();
    }
    option.description = Description(described);
    option.group = described.get_group();
    return option;
}

Positional PositionalOf(const CLI::Option& described) {
    return {ValueOf(described.get_name(true)), Description(described), described.get_required(),
            described.get_items_expected_max() > 1};
}

Command CommandOf(const CLI::App& app, const std::string& parentPath) {
    Command command;
    command.name = app.get_name();
    command.path = parentPath + command.name;
    command.description = app.get_description();
    command.footer = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional())
            command.positionals.push_back(PositionalOf(*option));
        else
            command.options.push_back(OptionOf(*option));
    }
    for (const CLI::App* below : app.get_subcommands([](const CLI::App*) { return true; }))
        command.commands.push_back(CommandOf(*below, command.path + " "));
    return command;
}

} // namespace

Command Describe(const CLI::App& app) {
    return CommandOf(app, "");
}

std::vector<const Command*> AllOf(const Command& command) {
    std::vector<const Command*> all = {&command};
    for (const Command& below : command.commands) {
        const std::vector<const Command*> allBelow = AllOf(below);
        all.insert(all.end(), allBelow.begin(), allBelow.end());
    }
    return all;
}

std::map<std::string, Value> OptionValues(const Command& tool) {
    std::map<std::string, Value> values;
    for (const Command* command : AllOf(tool)) {
        for (const Option& option : command->options) {
            for (const std::string& name : option.names) {
                // An empty name means no value.
                const Value& first = values.emplace(name, option.value).first->second;
                if (first.name.empty() != option.value.name.empty())
                    throw std::runtime_error(name + " takes a value only sometimes: in " + command->path);
            }
        }
    }
    for (auto option = values.begin(); option != values.end();)
        option = option->second.name.empty() ? values.erase(option) : std::next(option);
    return values;
}

std::vector<OtherValue> OtherValues(const Command& tool) {
    const std::map<std::string, Value> values = OptionValues(tool);
    std::vector<OtherValue> others;
    for (const Command* command : AllOf(tool))
        for (const Option& option : command->options)
            for (const std::string& name : option.names)
                if (const auto first = values.find(name);
                    first != values.end() && first->second.name != option.value.name)
                    others.push_back({command, name, option.value});
    return others;
}

std::string NamesOf(const std::map<std::string, Value>& options, const std::string& separator) {
    std::vector<std::string> names;
    names.reserve(options.size());
    for (const auto& option : options)
        names.push_back(option.first);
    return Join(names, separator);
}

std::string PathBelowTool(const Command& command) {
    const std::size_t space = command.path.find(' ');
    return space == std::string::npos ? "" : command.path.substr(space + 1);
}

std::string Join(const std::vector<std::string>& texts, const std::string& separator) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (&text == &texts.front() ? "" : separator) + text;
    return joined;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string Quoted(const std::string& text) {
    return "'" + Replaced(text, "'", R"('\'')") + "'";
}

} // namespace vexagpx::manual
