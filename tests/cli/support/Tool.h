// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace cli {

struct Result {
    int status; ///< the exit status, or the negative number of the signal that ended it
    std::string out;
    std::string err;
};

/// One run of vexagpx, with a folder of its own as current folder and another one for temporary files.
class Tool {
public:
    explicit Tool(std::vector<std::string> arguments);

    Tool& In(const std::string& folder);
    Tool& Stdin(const std::string& bytes);
    Tool& CloseStdin();
    Tool& StdoutTo(const std::string& path);
    Tool& CloseStdout();
    Tool& CloseStderr();
    /// Both streams into `out`, in the order in which they were written.
    Tool& MergeOutput();
    Tool& Set(const std::string& name, const std::string& value);
    /// With the rights of an ordinary user, also when root runs the tests.
    Tool& AsOrdinaryUser();

    Result Run();

private:
    [[noreturn]] void Become(int in, int out, int err) const;

    std::vector<std::string> arguments_;
    std::map<std::string, std::string> environment_;
    std::string folder_;
    std::string input_;
    std::optional<std::string> stdoutPath_;
    bool closeStdin_ = false;
    bool closeStdout_ = false;
    bool closeStderr_ = false;
    bool merge_ = false;
    bool ordinaryUser_ = false;
};

/// True for exit status 1 and only messages on standard error, one of which contains the text.
testing::AssertionResult Failed(const Result& result, const std::string& text);

/// Runs the tool in `folder`.
Result RunTool(std::vector<std::string> arguments, const std::string& folder = ".");

/// A folder that is removed with its content.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::string Write(const std::string& name, const std::string& bytes) const;
    /// Names of what it contains, sorted.
    std::vector<std::string> Names() const;
    /// Paths of everything below it, sorted; those of folders end with "/".
    std::vector<std::string> Tree() const;

private:
    std::string path_;
};

std::string ReadFile(const std::string& path);
/// A file of the tests' own.
std::string Data(const std::string& name);
/// Files of the shared corpus, sorted; empty when it is not there.
std::vector<std::string> Corpus(const std::string& kind);

std::vector<std::string> Lines(const std::string& text);

/// A GPX 1.1 document around some elements, with the vendor's and the geocache prefixes.
std::string Gpx(const std::string& elements);

/// A waypoint with a name, for documents of which only this matters: that something is in them.
inline const std::string kWaypoint = "<wpt lat='1' lon='2'><name>w</name></wpt>";

} // namespace cli
