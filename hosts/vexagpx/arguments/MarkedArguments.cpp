// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/MarkedArguments.h>

#include <algorithm>
#include <cstddef>

namespace vexagpx {

namespace {

// CLI11 takes an argument such as "[a]" for a list, and an argument after "--" that starts with a dash for an option
// if arguments come before the "--". A mark at the start of such arguments hides what they look like, and is removed
// from the value. An argument that starts with the mark itself gets another one.
constexpr char kMark = '\x01';

/// Where the value of "--option=value" starts; 0 for anything else.
std::size_t ValueStart(const std::string& argument) {
    return argument.starts_with("--") ? argument.find('=') + 1 : 0;
}

std::string Marked(std::string argument, bool isFile) {
    const bool isList = argument.starts_with('[') && argument.ends_with(']');
    const std::size_t value = isFile ? 0 : ValueStart(argument);
    if (isFile || isList || (value < argument.size() && argument[value] == kMark))
        argument.insert(argument.begin() + static_cast<std::ptrdiff_t>(value), kMark);
    return argument;
}

} // namespace

std::vector<std::string> Marked(int argc, char** argv) {
    std::vector<std::string> arguments;
    bool marksAll = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--" && !marksAll)
            marksAll = true;
        else
            arguments.push_back(Marked(argument, marksAll));
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

std::string Unmark(std::string& text) {
    if (text.starts_with(kMark))
        text.erase(0, 1);
    return "";
}

} // namespace vexagpx
