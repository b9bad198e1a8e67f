// SPDX-License-Identifier: MIT

// Which file a path means, and what is reported about a file that cannot be read.

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/RecordingParser.h"
#include "support/SystemFiles.h"
#include "support/XercesDoubles.h"
#include "support/ZipFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/ioctl.h>
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

// Records what an observer is notified of.
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

/// Removes a part of a text wherever it occurs.
std::string Without(std::string text, const std::string& part) {
    for (std::size_t at = 0; (at = text.find(part)) != std::string::npos;)
        text.erase(at, part.size());
    return text;
}

class GpxParserUnreadableTest : public testing::TestWithParam<Setting> {
protected:
    std::string Base() const { return (folder_ / "").string(); }

    /// Everything that is reported about a failed reading: the message, the calls of the error handler, those
    /// of the observer. Paths lack the folder.
    std::string TraceOf(const std::string& path) const {
        return TraceOf([&](GpxParser& parser, GpxDocument& document) {
            parser.Parse(icu::UnicodeString::fromUTF8(path), document);
        });
    }
    std::string TraceOfBytes(const std::string& path) const {
        return TraceOf([&](GpxParser& parser, GpxDocument& document) { parser.ParseFile(path, document); });
    }

    std::string TraceOf(const std::function<void(GpxParser&, GpxDocument&)>& read) const {
        RecordingParser parser;
        Notes notes;
        if (GetParam().isObserved)
            parser.SetObserver(&notes);
        if (!GetParam().isTrusted)
            parser.SetUntrusted();
        GpxDocument document = UsedDocument();
        std::string error = "was read";
        const std::string written = CaptureStandardError([&] {
            try {
                read(parser, document);
            } catch (const dbc::postcondition_error& failure) {
                error = failure.what();
            }
        });
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
        EXPECT_EQ(written, "");
        EXPECT_EQ(parser.Resets(), 1U);
        return Without(error + "\n" + parser.Messages() + notes.text, Base());
    }

    /// Reads the file both by the path and by its bytes.
    void ExpectTold(const std::string& path, const std::string& trace) const {
        EXPECT_EQ(TraceOf(path), trace);
        EXPECT_EQ(TraceOfBytes(path), trace);
    }

    /// The expected reports when Xerces finds one fatal error.
    static std::string Fatal(const std::string& path, const std::string& complaint,
                             const std::string& progressBefore = "", const std::string& progressAfter = "") {
        std::string trace = ParseErrorsMessage(path) + "\nfatal error " + complaint + "\n";
        if (GetParam().isObserved)
            trace += progressBefore + "message 2 " + complaint + "\n" + progressAfter;
        return trace;
    }

    static std::string NotOpened(const std::string& path, const std::string& shown) {
        return Fatal(path, "0:0 : unable to open primary document entity '" + shown + "'");
    }

    TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Settings, GpxParserUnreadableTest,
                         testing::Values(Setting{"Trusted", true, false},
                                         Setting{"TrustedObserved", true, true},
                                         Setting{"Untrusted", false, false},
                                         Setting{"UntrustedObserved", false, true}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(GpxParserUnreadableTest, AMissingFileIsReported) {
    for (const std::string name : {"missing.gpx", "no folder/x.gpx", "f\u00E4hlt %20#.gpx"})
        ExpectTold(Base() + name, NotOpened(name, name));
}

TEST_P(GpxParserUnreadableTest, AFolderIsReported) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    fs::create_directory(folder_ / "way");
    ExpectTold(Base() + "way",
               Fatal("way", "0:0 : unable to read data from file", "progress 0/0\n", "progress 0/0\n"));
}

TEST_P(GpxParserUnreadableTest, AFileThatMayNotBeReadIsReported) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    WriteBytes(folder_ / "walk.gpx", kGoodFile);
    fs::permissions(folder_ / "walk.gpx", fs::perms::none);
    ExpectTold(Base() + "walk.gpx", NotOpened("walk.gpx", "walk.gpx"));
}

TEST_P(GpxParserUnreadableTest, APipeThatEndsEarlyIsReported) {
    const std::string path = Base() + "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { WriteBytes(path, "<gpx>\n"); });
    const std::string trace = TraceOf(path);
    writer.join();
    EXPECT_EQ(trace,
              Fatal("pipe",
                    "2:1 pipe: input ended before all started tags were ended; last tag started is 'gpx'",
                    "progress 0/0\n", "progress 6/0\n"));
}

TEST_P(GpxParserUnreadableTest, ThePathThatXercesReportsIsAbsoluteAndWithoutDots) {
    fs::create_directory(folder_ / "way");
    const std::string bad = Gpx11("").substr(0, Gpx11("").find("</gpx>"));
    WriteBytes(folder_ / "way/bad.gpx", bad);
    const CurrentFolder current(folder_ / "way");
    const std::string size = std::to_string(bad.size());
    const std::string whole = "progress " + size + "/" + size + "\n";
    const auto expected = [&](const std::string& path, const std::string& shown) {
        return Fatal(path,
                     "1:" + std::to_string(bad.size() + 1) + " " + shown +
                         ": input ended before all started tags were ended; last tag started is 'gpx'",
                     "progress 0/" + size + "\n" + whole, whole);
    };
    for (const std::string path : {"bad.gpx", "./bad.gpx", "../way/bad.gpx"})
        ExpectTold(path, expected(path, "way/bad.gpx"));
    // ".." is kept in an absolute path.
    ExpectTold(Base() + "way/../way/./bad.gpx", expected("way/../way/./bad.gpx", "way/../way/bad.gpx"));
    ExpectTold("missing.gpx", NotOpened("missing.gpx", "way/missing.gpx"));
}

TEST_P(GpxParserUnreadableTest, AMissingCurrentFolderIsReported) {
    fs::create_directory(folder_ / "gone");
    const CurrentFolder current(folder_ / "gone");
    fs::remove(folder_ / "gone");
    const std::string complaint = "unable to determine file base pathname";
    const std::string thrown = "Error parsing the GPX file: walk.gpx. Error message: " + complaint + "\n";
    const bool isToldByXerces = GetParam().isTrusted && !GetParam().isObserved;
    EXPECT_EQ(TraceOf("walk.gpx"), isToldByXerces ? Fatal("walk.gpx", "0:0 : " + complaint) : thrown);
    EXPECT_EQ(TraceOfBytes("walk.gpx"), thrown);
}

using Read = std::function<void(GpxParser&, const std::string&, GpxDocument&)>;

struct Visit {
    const char* name;
    Read read;
};

void PrintTo(const Visit& way, std::ostream* out) {
    *out << way.name;
}

void ReadByPath(GpxParser& parser, const std::string& path, GpxDocument& document) {
    parser.Parse(icu::UnicodeString::fromUTF8(path), document);
}

void ReadByBytes(GpxParser& parser, const std::string& path, GpxDocument& document) {
    parser.ParseFile(path, document);
}

void ReadTree(GpxParser& parser, const std::string& path, GpxDocument& document) {
    const auto tree = parser.GetParser(icu::UnicodeString::fromUTF8(path));
    parser.ParseGpxNode(tree->getDocument()->getDocumentElement(), document);
}

Read Untrusted(const Read& read) {
    return [read](GpxParser& parser, const std::string& path, GpxDocument& document) {
        parser.SetUntrusted();
        read(parser, path, document);
    };
}

Read Observed(const Read& read) {
    return [read](GpxParser& parser, const std::string& path, GpxDocument& document) {
        Notes notes;
        parser.SetObserver(&notes);
        read(parser, path, document);
    };
}

class GpxParserWayTest : public testing::TestWithParam<Visit> {
protected:
    static std::string NameIn(const std::string& path) {
        GpxParser parser;
        GpxDocument document;
        GetParam().read(parser, path, document);
        return NameOf(document);
    }
};

INSTANTIATE_TEST_SUITE_P(Ways, GpxParserWayTest,
                         testing::Values(Visit{"Path", ReadByPath}, Visit{"Bytes", ReadByBytes},
                                         Visit{"Tree", ReadTree}, Visit{"ObservedPath", Observed(ReadByPath)},
                                         Visit{"UntrustedPath", Untrusted(ReadByPath)},
                                         Visit{"UntrustedBytes", Untrusted(ReadByBytes)},
                                         Visit{"UntrustedTree", Untrusted(ReadTree)},
                                         Visit{"UntrustedObservedBytes", Untrusted(Observed(ReadByBytes))}),
                         [](const auto& row) { return std::string(row.param.name); });

std::string Named(const std::string& name) {
    return Gpx11("<metadata><name>" + name + "</name></metadata>");
}

TEST_P(GpxParserWayTest, TwoDotsLeadWhereTheSystemSays) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "far/away");
    fs::create_directory(folder / "here");
    fs::create_directory_symlink(folder / "far/away", folder / "here/way");
    WriteBytes(folder / "far/x.gpx", Named("asked for"));
    WriteBytes(folder / "here/x.gpx", Named("another"));
    const CurrentFolder current(folder / "here");
    EXPECT_EQ(NameIn("way/../x.gpx"), "asked for");
    EXPECT_EQ(NameIn("./way/../x.gpx"), "asked for");
    EXPECT_EQ(NameIn("way/../../here/x.gpx"), "another");
    EXPECT_EQ(NameIn((folder / "here/way/../x.gpx").string()), "asked for");
    EXPECT_EQ(NameIn("../here/x.gpx"), "another");
    WriteBytes(folder / "far/only.gpx", Named("only there"));
    EXPECT_EQ(NameIn("way/../only.gpx"), "only there");
}

TEST_P(GpxParserWayTest, TheFileIsOpenedByTheLibraryAloneAndClosed) {
    const GpxFile file(Named("n"));
    const XercesFiles xercesFiles;
    const SystemFiles files;
    EXPECT_EQ(NameIn(file.NarrowPath()), "n");
    EXPECT_EQ(files.Opened(), 1U);
    EXPECT_EQ(files.BytesRead(), Named("n").size());
    EXPECT_EQ(xercesFiles.Opened(), 0U);
    EXPECT_EQ(files.StillOpen(), 0U);
}

TEST_P(GpxParserWayTest, APathThatIsEmptyOrHasAZeroIsRefused) {
    const GpxFile file(kGoodFile);
    for (const std::string& path :
         {std::string(), std::string(1, '\0'), file.NarrowPath() + '\0', file.NarrowPath() + '\0' + "x"}) {
        GpxParser parser;
        GpxDocument document = UsedDocument();
        EXPECT_FAILURE(GetParam().read(parser, path, document), dbc::precondition_error,
                       "The GPX file path was empty or invalid.", "LibCore/vexaTransferLib/GpxParser.cpp");
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
    }
}

TEST(GpxParserPathTest, APathWithALoneSurrogateIsRefusedAndNoLookAlikeRead) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a\uFFFD.gpx", kGoodFile);
    WriteBytes(folder / "a\U0001F30D.gpx", kGoodFile);
    const icu::UnicodeString start = AsPath(folder / "a");
    for (const icu::UnicodeString& end :
         {icu::UnicodeString(char16_t{0xD83C}) + u".gpx", icu::UnicodeString(char16_t{0xDF0D}) + u".gpx",
          icu::UnicodeString(char16_t{0xD83C}), icu::UnicodeString(char16_t{0xDF0D}) + char16_t{0xD83C}}) {
        GpxParser parser;
        GpxDocument document = UsedDocument();
        EXPECT_FAILURE(parser.Parse(start + end, document), dbc::precondition_error,
                       "The GPX file path was empty or invalid.", "LibCore/vexaTransferLib/GpxParser.cpp");
        EXPECT_FAILURE(parser.GetParser(start + end), dbc::precondition_error,
                       "The GPX file path was empty or invalid.", "LibCore/vexaTransferLib/GpxParser.cpp");
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
    }
    GpxDocument document;
    GpxParser().Parse(start + icu::UnicodeString::fromUTF8("\U0001F30D.gpx"), document);
    EXPECT_EQ(document.GetWaypointCount(), 1U);
}

const char* const kDocumentTypes[] = {"", "<!DOCTYPE gpx>"};

TEST(GpxParserPathTest, BytesThatAreNoTextNameAFileAndAreShownAsReplacements) {
    struct Row {
        const char* bytes;
        const char* shown;
    };
    constexpr Row kRows[] = {
        {"caf\xE9", "caf\uFFFD"}, {"\xFF\xFE", "\uFFFD\uFFFD"},     {"\xED\xA0\x80z", "\uFFFD\uFFFD\uFFFDz"},
        {"a\xC3", "a\uFFFD"},     {"\xC3\xA9\x80", "\u00E9\uFFFD"}, {"\x01z", "\x01z"}};
    for (const Row& row : kRows) {
        for (const std::string documentType : kDocumentTypes) {
            SCOPED_TRACE(row.shown + documentType);
            const TemporaryFolder folder;
            WriteBytes(folder / (std::string(row.shown) + ".gpx"), Named("look-alike"));
            WriteBytes(folder / (std::string(row.bytes) + ".gpx"), documentType + kGoodFile);
            const std::string path = (folder / (std::string(row.bytes) + ".gpx")).string();
            GpxDocument document;
            GpxParser().ParseFile(path, document);
            EXPECT_EQ(NameOf(document), row.shown);
            WriteBytes(path, documentType + "<");
            EXPECT_FAILURE(GpxParser().ParseFile(path, document), dbc::postcondition_error,
                           ParseErrorsMessage((folder / (std::string(row.shown) + ".gpx")).string()), "");
        }
    }
}

TEST(GpxParserPathTest, BytesAreNeverAnAddress) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder / "");
    fs::create_directories("http:/localhost:1");
    WriteBytes("http:/localhost:1/walk.gpx", Named("a file"));
    const XercesNet net;
    for (const bool isTrusted : {true, false}) {
        GpxParser parser;
        if (!isTrusted)
            parser.SetUntrusted();
        GpxDocument document;
        parser.ParseFile("http://localhost:1/walk.gpx", document);
        EXPECT_EQ(NameOf(document), "a file");
        for (const std::string missing : {"http://localhost:1/x.gpx", "file:///etc/hostname"})
            EXPECT_FAILURE(parser.ParseFile(missing, document), dbc::postcondition_error,
                           ParseErrorsMessage(missing), "");
    }
    EXPECT_EQ(net.Requests(), 0U);
}

TEST(GpxParserPathTest, ATrustedPathThatIsAnAddressIsReadAsOne) {
    const GpxFile file(Named("from an address"));
    Notes notes;
    for (GpxReadObserver* observer : std::initializer_list<GpxReadObserver*>{nullptr, &notes}) {
        const SystemFiles files;
        GpxParser parser;
        parser.SetObserver(observer);
        GpxDocument document;
        parser.Parse(u"file://" + file.Path(), document);
        EXPECT_EQ(NameOf(document), "from an address");
        EXPECT_EQ(files.Opened(), 0U) << "Xerces reads it";
        const XercesNet net;
        EXPECT_THROW(parser.Parse(u"http://localhost:1/walk.gpx", document), dbc::postcondition_error);
        EXPECT_EQ(net.Requests(), 1U);
    }
}

TEST(GpxParserPathTest, NamesOfOtherFilesAreResolvedAsXercesShowsThePath) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "far/away");
    fs::create_directory_symlink(folder / "far/away", folder / "way");
    WriteBytes(folder / "part.txt", "beside the path");
    WriteBytes(folder / "far/part.txt", "beside the file");
    WriteBytes(folder / "far/x\xFF.gpx",
               "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ATTLIST gpx version CDATA #IMPLIED xmlns CDATA #FIXED "
               "'http://www.topografix.com/GPX/1/1'><!ELEMENT name ANY><!ENTITY e SYSTEM 'part.txt'>]>"
               "<gpx version='1.1'><name>&e;</name></gpx>");
    const CurrentFolder current(folder / "");
    GpxDocument document;
    GpxParser().ParseFile("far/x\xFF.gpx", document);
    EXPECT_EQ(NameOf(document), "beside the file");
    GpxParser().ParseFile("way/../x\xFF.gpx", document);
    EXPECT_EQ(NameOf(document), "beside the path");
}

TEST(GpxParserPathTest, APipeThatGivesItsBytesOneByOneIsRead) {
    const std::string bytes = "<?xml version='1.0' encoding='windows-1252'?>" + Named("\x80");
    const TemporaryFolder folder;
    const std::string path = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    for (const Read& read : {Read(ReadByPath), Read(ReadByBytes), Untrusted(ReadByBytes)}) {
        std::thread writer([&] {
            const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
            for (const char byte : bytes.substr(0, 20)) {
                static_cast<void>(!::write(fd, &byte, 1));
                int waiting = 1;
                while (::ioctl(fd, FIONREAD, &waiting) == 0 && waiting > 0)
                    std::this_thread::yield();
            }
            static_cast<void>(!::write(fd, bytes.data() + 20, bytes.size() - 20));
            ::close(fd);
        });
        GpxParser parser;
        GpxDocument document;
        read(parser, path, document);
        writer.join();
        EXPECT_EQ(NameOf(document), "\u20AC");
    }
}

/// Finds out, while a file is read, whether a program that this process starts would inherit it.
class InheritanceWatch : public GpxReadObserver {
public:
    explicit InheritanceWatch(const std::string& path) : path_(path) {}

    bool Progress(std::uint64_t, std::uint64_t) override {
        for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
            std::error_code error;
            if (fs::read_symlink(entry.path(), error) != path_)
                continue;
            ++seen;
            inherited += (::fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC) == 0 ? 1 : 0;
        }
        return true;
    }

    int seen = 0;
    int inherited = 0;

private:
    fs::path path_;
};

TEST(GpxParserPathTest, NoOtherProgramInheritsTheOpenFile) {
    const GpxFile file(kGoodFile);
    InheritanceWatch watch(file.NarrowPath());
    GpxParser parser;
    parser.SetObserver(&watch);
    GpxDocument document;
    parser.Parse(file.Path(), document);
    EXPECT_GT(watch.seen, 0);
    EXPECT_EQ(watch.inherited, 0);
}

} // namespace
} // namespace vexaTransferLib
