// SPDX-License-Identifier: MIT
#include <vexagpx/UsageError.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>

namespace vexagpx {

namespace {

/// How many letters must be put in, taken out, replaced or swapped with their neighbours to make one word of the other.
std::size_t SpellingDistance(const std::string& left, const std::string& right) {
    std::vector<std::vector<std::size_t>> rows(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                rows[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = rows[i - 1][j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            rows[i][j] = std::min({replaced, rows[i - 1][j] + 1, rows[i][j - 1] + 1});
            const bool isSwapped =
                i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
            if (isSwapped)
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    }
    return rows.back().back();
}

const CLI::App& InnermostCommand(const CLI::App& app) {
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty())
        command = command->get_subcommands().back();
    return *command;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> OptionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
        for (const std::string& name : option->get_snames())
            names.push_back("-" + name);
    }
    return names;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names)
        joined += (joined.empty() ? "" : ", ") + name;
    return joined;
}

std::string UnknownOptionText(const CLI::App& command, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    const std::string nearest = NearestName(name, OptionNames(command));
    return command.get_name() + " has no option \"" + name + "\"" +
           (nearest.empty() ? "." : "; did you mean \"" + nearest + "\"?");
}

} // namespace

std::string NearestName(const std::string& word, const std::vector<std::string>& names) {
    constexpr std::size_t kLongestWord = 64;
    std::string nearest;
    // One mistake in three letters.
    std::size_t least = std::min<std::size_t>(word.size() / 3, 3) + 1;
    for (const std::string& name : names) {
        const std::size_t distance = word.size() > kLongestWord ? word.size() : SpellingDistance(word, name);
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

std::string UnknownCommandText(const CLI::App& app, const std::string& word) {
    const std::vector<std::string> names = CommandNames(app);
    const std::string nearest = NearestName(word, names);
    return "There is no command \"" + word + "\"" +
           (nearest.empty() ? "; the commands are " + Joined(names) + "."
                            : "; did you mean \"" + nearest + "\"?");
}

std::string UsageErrorText(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& command = InnermostCommand(app);
    const std::vector<std::string> unknown = app.remaining(true);
    const auto option = std::find_if(unknown.begin(), unknown.end(), [](const std::string& word) {
        return word.size() > 1 && word.front() == '-';
    });
    const bool needsCommand = !CommandNames(command).empty();
    if (needsCommand && !unknown.empty() && option != unknown.begin())
        return UnknownCommandText(command, unknown.front());
    if (option != unknown.end())
        return UnknownOptionText(command, *option);
    return error.what();
}

} // namespace vexagpx
