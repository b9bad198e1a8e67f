// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace vexagpx {

/// What is wrong with a command line that could not be parsed, in one sentence: a command or an option that there is
/// not is named, with the one that is the nearest in spelling.
/// \param app after the parse that failed
std::string UsageErrorText(const CLI::App& app, const CLI::ParseError& error);

/// The same for a word that is no command of this one.
std::string UnknownCommandText(const CLI::App& app, const std::string& word);

/// Of several names, the one that a misspelt word is most likely meant to be; empty when none is near.
std::string NearestName(const std::string& word, const std::vector<std::string>& names);

} // namespace vexagpx
