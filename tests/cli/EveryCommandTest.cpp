// SPDX-License-Identifier: MIT

// Every file of the tests, the examples and the corpus through every command: none may end by a signal, hang, fail
// without a message or leave half a file.
#include "support/Tool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using cli::Folder;
using cli::Result;
using cli::RunTool;

// Larger files have tests of their own.
constexpr std::uintmax_t kLargest = 2'000'000;

/// What comes before and after the files, and how many of them are given at once: starting a process takes longer than
/// reading most files.
struct Command {
    std::vector<std::string> before;
    std::vector<std::string> after;
    std::size_t files = 20;
    /// Of so many files one is taken, another one for each command: all that edit files read and save them in the same
    /// way.
    std::size_t every = 1;
};

const Command kCommands[] = {
    {{"show", "--all"}, {}},
    {{"show", "--as-host"}, {}},
    {{"stats", "--total"}, {}},
    {{"stats", "--json"}, {}},
    {{"caches", "--hint", "--text", "--logs", "2", "--near", "47.5,8.25"}, {}},
    {{"caches", "--json"}, {}},
    {{"caches", "--csv", "--sort", "-found"}, {}},
    {{"dump"}, {}},
    {{"info", "--json"}, {}},
    {{"index", "--duplicates"}, {}},
    {{"check", "--all"}, {}},
    {{"check", "--keep", "--json"}, {}},
    {{"check", "--schema"}, {}},
    {{"convert", "--gpx", "1.0"}, {"out.gpx"}, 1},
    {{"convert"}, {"out.gpx"}, 1},
    {{"diff", cli::Data("../../../examples/sample.gpx")}, {}, 1, 4},
    {{"set", "--name", "n", "--shift-time", "1h", "--strip", "heartrate"}, {"out.gpx"}, 1, 4},
    {{"cut", "--around", "46.5,7.5,5km"}, {"out.gpx"}, 1, 4},
    {{"merge", "-o", "out.gpx", "--conflicts", "out.left.gpx", cli::Data("../../../examples/sample.gpx")},
     {},
     1,
     4},
    {{"split", "--every", "10km"}, {"out.parts"}, 1, 4},
    {{"simplify", "--error", "5m"}, {"out.gpx"}, 1, 4},
    {{"reverse", "--json"}, {"out.gpx"}, 1, 4},
    {{"repair"}, {"out.gpx"}, 1, 4},
    {{"export", "-o", "out.geojson"}, {}, 1},
    {{"export", "-o", "out.kml"}, {}, 1},
    {{"export", "-o", "out.csv", "--layer", "points"}, {}, 1},
    {{"plot", "-o", "out.svg"}, {}, 3},
    {{"plot", "-o", "out.png", "--colour", "height", "--size", "300x400"}, {}, 3},
    {{"plot", "-o", "out.html"}, {}, 3},
    {{"zip", "list"}, {}, 1},
    {{"zip", "test"}, {}, 1},
    {{"clean"}, {}, 1},
};

std::vector<std::string> FilesBelow(const std::string& folder) {
    std::vector<std::string> files;
    if (!std::filesystem::is_directory(folder))
        return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.file_size() <= kLargest)
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

/// True when there is nothing but whole results.
bool LeavesNothingHalfDone(const Folder& folder) {
    for (const std::string& name : folder.Names())
        if (!name.starts_with("out."))
            return false;
    return true;
}

void Run(const Command& command, const std::vector<std::string>& files) {
    const Folder folder;
    std::vector<std::string> arguments = command.before;
    arguments.insert(arguments.end(), files.begin(), files.end());
    arguments.insert(arguments.end(), command.after.begin(), command.after.end());
    std::string shown;
    for (const std::string& argument : arguments)
        shown += argument + " ";
    const Result result = RunTool(arguments, folder.Path());
    // 1 of diff is a difference.
    const int failure = arguments.front() == "diff" ? 2 : 1;
    EXPECT_TRUE(result.status >= 0 && result.status <= failure) << shown << "ends with " << result.status;
    // What these find is on standard output.
    const bool isFinding =
        arguments.front() == "check" || arguments.front() == "index" || arguments.front() == "diff";
    const bool saysWhy = isFinding || !result.err.empty();
    EXPECT_TRUE(result.status == 0 || saysWhy) << shown << "fails without a message";
    EXPECT_TRUE(LeavesNothingHalfDone(folder)) << shown << "leaves something else";
}

void RunEveryCommand(const std::vector<std::string>& files) {
    std::size_t number = 0;
    for (const Command& command : kCommands)
        for (std::size_t start = number++ % command.every; start < files.size();
             start += command.files * command.every) {
            const std::size_t count = std::min(command.files, files.size() - start);
            const auto first = files.begin() + static_cast<std::ptrdiff_t>(start);
            Run(command, std::vector<std::string>(first, first + static_cast<std::ptrdiff_t>(count)));
        }
}

TEST(EveryCommandTest, TakesEveryFileOfTheTests) {
    const std::vector<std::string> files = FilesBelow(cli::Data(".."));
    ASSERT_GT(files.size(), 20U);
    RunEveryCommand(files);
}

TEST(EveryCommandTest, TakesEveryFileOfTheCorpus) {
    std::vector<std::string> files;
    for (const char* const kind : {"gpx", "gpx-malformed", "zip"})
        for (const std::string& file : cli::Corpus(kind))
            if (std::filesystem::file_size(file) <= kLargest)
                files.push_back(file);
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    RunEveryCommand(files);
}

} // namespace
