// SPDX-License-Identifier: MIT

// Which file a path means, and what is told of one that cannot be read.

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;

namespace fs = std::filesystem;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'/>");

// The current folder of the process while this lives.
class CurrentFolder {
public:
    explicit CurrentFolder(const fs::path& folder) : former_(fs::current_path()) { fs::current_path(folder); }
    ~CurrentFolder() { fs::current_path(former_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    fs::path former_;
};

// Notes what Xerces tells its error handler, and passes it on.
class NotingParser : public GpxParser {
public:
    void error(const xercesc::SAXParseException& exception) override {
        Note("error", exception);
        GpxParser::error(exception);
    }
    void fatalError(const xercesc::SAXParseException& exception) override {
        Note("fatal", exception);
        GpxParser::fatalError(exception);
    }
    void resetErrors() override {
        ++resets;
        GpxParser::resetErrors();
    }

    std::string calls;
    int resets = 0;

private:
    void Note(const char* kind, const xercesc::SAXParseException& exception) {
        const icu::UnicodeString systemId(exception.getSystemId());
        calls += std::string(kind) + " " + std::to_string(exception.getLineNumber()) + ":" +
                 std::to_string(exception.getColumnNumber()) + " " + Utf8(systemId) + ": " +
                 Utf8(icu::UnicodeString(exception.getMessage())) + "\n";
    }
};

// The same of an observer.
class Notes : public GpxReadObserver {
public:
    bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override {
        text += "progress " + std::to_string(bytesRead) + "/" + std::to_string(bytesInAll) + "\n";
        return true;
    }
    void ParserMessage(const GpxParserMessage& message) override {
        text += "message " + std::to_string(message.severity) + " " + std::to_string(message.line) + ":" +
                std::to_string(message.column) + " " + message.file + ": " + message.text + "\n";
    }

    std::string text;
};

struct Setting {
    const char* name;
    bool isTrusted;
    bool isObserved;
};

void PrintTo(const Setting& setting, std::ostream* out) {
    *out << setting.name;
}

class GpxParserUnreadableTest : public testing::TestWithParam<Setting> {
protected:
    /// Everything that is told of a failed reading: the message, the calls of the error handler, what the observer
    /// got. The folder's name is replaced by "F".
    static std::string TraceOf(const std::string& path, const std::string& folder) {
        NotingParser parser;
        Notes notes;
        if (GetParam().isObserved)
            parser.SetObserver(&notes);
        if (!GetParam().isTrusted)
            parser.SetUntrusted();
        GpxDocument document = UsedDocument();
        std::string error = "read";
        const std::string written = CaptureStandardError([&] {
            try {
                parser.Parse(icu::UnicodeString::fromUTF8(path), document);
            } catch (const dbc::postcondition_error& failure) {
                error = failure.what();
            }
        });
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
        EXPECT_EQ(written, "");
        std::string trace =
            error + "\nresets " + std::to_string(parser.resets) + "\n" + parser.calls + notes.text;
        for (std::size_t at = 0; (at = trace.find(folder)) != std::string::npos;)
            trace.replace(at, folder.size(), "F");
        return trace;
    }

    static std::string Trace(const std::string& error, const std::string& call, const std::string& observed) {
        std::string trace = error + "\nresets 1\nfatal " + call + "\n";
        if (GetParam().isObserved)
            trace += observed;
        return trace;
    }
};

INSTANTIATE_TEST_SUITE_P(Settings, GpxParserUnreadableTest,
                         testing::Values(Setting{"Trusted", true, false},
                                         Setting{"TrustedObserved", true, true},
                                         Setting{"Untrusted", false, false},
                                         Setting{"UntrustedObserved", false, true}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(GpxParserUnreadableTest, AMissingFileIsTold) {
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    for (const char* name : {"missing.gpx", "no folder/x.gpx", "f\u00E4hlt %20#.gpx"}) {
        const std::string place = "F" + std::string(name);
        const std::string message = "unable to open primary document entity '" + place + "'";
        EXPECT_EQ(TraceOf(base + name, base),
                  Trace(ParseErrorsMessage(place), "0:0 : " + message, "message 2 0:0 : " + message + "\n"));
    }
}

TEST_P(GpxParserUnreadableTest, AFolderIsTold) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    EXPECT_EQ(TraceOf(base, base), "");
}

TEST_P(GpxParserUnreadableTest, AFileThatMayNotBeReadIsTold) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    WriteBytes(base + "walk.gpx", kGoodFile);
    fs::permissions(base + "walk.gpx", fs::perms::none);
    const std::string message = "unable to open primary document entity 'Fwalk.gpx'";
    EXPECT_EQ(TraceOf(base + "walk.gpx", base), Trace(ParseErrorsMessage("Fwalk.gpx"), "0:0 : " + message,
                                                      "message 2 0:0 : " + message + "\n"));
}

TEST_P(GpxParserUnreadableTest, APipeThatEndsEarlyIsTold) {
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    ASSERT_EQ(::mkfifo((base + "pipe").c_str(), 0600), 0);
    std::thread writer([&] { WriteBytes(base + "pipe", "<gpx>\n"); });
    const std::string trace = TraceOf(base + "pipe", base);
    writer.join();
    EXPECT_EQ(trace, "");
}

TEST_P(GpxParserUnreadableTest, ARelativePathIsMadeAbsoluteAndPlainInWhatIsTold) {
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    fs::create_directory(folder / "way");
    WriteBytes(folder / "way/bad.gpx", "<gpx>");
    const CurrentFolder current(folder / "way");
    for (const char* path : {"bad.gpx", "./bad.gpx", "../way/bad.gpx", "no/../bad.gpx"})
        EXPECT_EQ(TraceOf(path, base), "");
    EXPECT_EQ(TraceOf("missing.gpx", base), "");
    EXPECT_EQ(TraceOf(base + "way/../way/./bad.gpx", base), "");
}

TEST_P(GpxParserUnreadableTest, OfARemovedCurrentFolderARelativePathIsTold) {
    const TemporaryFolder folder;
    const std::string base = (folder / "").string();
    fs::create_directory(folder / "gone");
    const CurrentFolder current(folder / "gone");
    fs::remove(folder / "gone");
    EXPECT_EQ(TraceOf("walk.gpx", base), "");
}

} // namespace
} // namespace vexaTransferLib
