// SPDX-License-Identifier: MIT

// Reading files that become unreadable, are shortened, removed or replaced while they are read, and files
// whose names are not text.

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>
#include <vexaTransferLib/ZIPFileReader.h>

#include "support/CFiles.h"
#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/HeadScan.h"
#include "support/ModelCompare.h"
#include "support/RecordingObserver.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"
#include <common/dbc.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using ::testing_support::BuildZip;
using ::testing_support::ZipEntry;

constexpr std::size_t kPoints = 10000;

/// A file several times as long as the XML parser reads at once.
std::string BigFile(const std::string& documentType = "") {
    return documentType + Gpx11(Repeat("<wpt lat='1' lon='2'><ele>100</ele></wpt>", kPoints));
}

std::string BigHead() {
    return WithExtensions("<tarvik:form>f</tarvik:form>" + std::string(200000, ' ') +
                          "<tarvik:layername>n</tarvik:layername>");
}

const char* const kDocumentTypes[] = {"", "<?xml version='1.0' encoding='ISO-8859-1'?>", "<!DOCTYPE gpx>"};

std::string Name(const std::string& documentType) {
    if (documentType.empty())
        return "plain";
    return documentType.starts_with("<?") ? "events" : "DOM";
}

std::string Refused(const std::string& message) {
    return std::string(typeid(dbc::postcondition_error).name()) + ": " + message;
}

std::string IllFormed(const GpxFile& file) {
    return Refused(ParseErrorsMessage(file.NarrowPath()));
}

Reading ReadWith(CFileFaults& faults, const GpxFile& file) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        const CFileFaultsScope scope(faults);
        parser.Parse(file.Path(), document);
    });
}

TEST(ReadFileFaultsTest, AFileThatBreaksIsRefusedAndTheDocumentLeftUntouched) {
    for (const std::string documentType : kDocumentTypes) {
        const GpxFile file(BigFile(documentType));
        const std::size_t descriptors = OpenDescriptors();
        bool isBroken = true;
        for (std::size_t read = 1; isBroken; ++read) {
            SCOPED_TRACE(Name(documentType) + ", read " + std::to_string(read));
            CFileFaults faults;
            faults.faultyRead = read;
            const Reading reading = ReadWith(faults, file);
            isBroken = faults.reads >= read;
            if (isBroken) {
                EXPECT_EQ(reading.error, IllFormed(file));
                EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
            } else {
                EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
                EXPECT_GT(read, 5U);
            }
            EXPECT_EQ(reading.written, "");
        }
        EXPECT_EQ(OpenDescriptors(), descriptors);
    }
}

TEST(ReadFileFaultsTest, AFileThatEndsEarlyIsRefusedAndTheDocumentLeftUntouched) {
    for (const std::string documentType : kDocumentTypes) {
        const GpxFile file(BigFile(documentType));
        const std::size_t descriptors = OpenDescriptors();
        std::size_t refused = 0;
        for (std::size_t read = 1; refused + 1 == read; ++read) {
            SCOPED_TRACE(Name(documentType) + ", read " + std::to_string(read));
            CFileFaults faults;
            faults.faultyRead = read;
            faults.read = CFileFaults::Read::kEnds;
            const Reading reading = ReadWith(faults, file);
            // The last read finds the real end of the file.
            if (reading.error.empty()) {
                EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
                continue;
            }
            ++refused;
            EXPECT_EQ(reading.error, IllFormed(file));
            EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
        }
        EXPECT_GT(refused, 2U);
        EXPECT_EQ(OpenDescriptors(), descriptors);
    }
}

TEST(ReadFileFaultsTest, ReadingGoesOnAfterSignals) {
    for (const std::string documentType : kDocumentTypes) {
        SCOPED_TRACE(Name(documentType));
        const GpxFile file(BigFile(documentType));
        CFileFaults faults;
        faults.interruptsReads = true;
        const Reading reading = ReadWith(faults, file);
        EXPECT_EQ(reading.error, "");
        EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
        EXPECT_GT(faults.interruptions, 100U);
    }
}

/// An observer that runs an action once when a given part of the file has been read.
class Interruption : public GpxReadObserver {
public:
    Interruption(std::uint64_t after, std::function<void()> action)
        : after_(after), action_(std::move(action)) {}

    bool Progress(std::uint64_t bytesRead, std::uint64_t) override {
        if (bytesRead > after_ && action_)
            std::exchange(action_, nullptr)();
        return true;
    }
    bool IsDone() const { return !action_; }

private:
    std::uint64_t after_;
    std::function<void()> action_;
};

Reading ReadInterrupted(const GpxFile& file, GpxReadObserver& observer) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document);
    });
}

TEST(ReadFileFaultsTest, AFileThatIsCutWhileItIsReadIsRefused) {
    for (const std::string documentType : kDocumentTypes) {
        SCOPED_TRACE(Name(documentType));
        const GpxFile file(BigFile(documentType));
        Interruption cut(100000, [&] { std::filesystem::resize_file(file.NarrowPath(), 50000); });
        const Reading reading = ReadInterrupted(file, cut);
        EXPECT_TRUE(cut.IsDone());
        EXPECT_EQ(reading.error, IllFormed(file));
        EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
    }
}

TEST(ReadFileFaultsTest, AFileThatIsRemovedWhileItIsReadIsReadWhole) {
    const GpxFile file(BigFile());
    Interruption removal(100000, [&] { std::filesystem::remove(file.NarrowPath()); });
    const Reading reading = ReadInterrupted(file, removal);
    EXPECT_TRUE(removal.IsDone());
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
}

// A file that needs a DOM is opened a second time.
TEST(ReadFileFaultsTest, AFileThatIsGoneForTheDomIsRefused) {
    const GpxFile file(BigFile("<!DOCTYPE gpx>"));
    Interruption removal(0, [&] { std::filesystem::remove(file.NarrowPath()); });
    const Reading reading = ReadInterrupted(file, removal);
    EXPECT_TRUE(removal.IsDone());
    EXPECT_EQ(reading.error, IllFormed(file));
    EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
}

TEST(ReadFileFaultsTest, OfAFileThatIsReplacedForTheDomTheNewOneIsRead) {
    for (const std::string documentType : kDocumentTypes) {
        const GpxFile file(BigFile("<!DOCTYPE gpx>"));
        Interruption exchange(0, [&] {
            std::filesystem::remove(file.NarrowPath());
            WriteBytes(file.NarrowPath(), documentType + Gpx11("<trk/><trk/>"));
        });
        const Reading reading = ReadInterrupted(file, exchange);
        EXPECT_EQ(reading.error, "");
        EXPECT_EQ(CountsOf(reading.document), "0 waypoints, 0 routes, 2 tracks");
    }
}

TEST(ReadFileFaultsTest, APipeWhoseWriterDiesIsRefused) {
    for (const std::string documentType : kDocumentTypes) {
        SCOPED_TRACE(Name(documentType));
        const TemporaryFolder folder;
        const std::string path = (folder / "pipe").string();
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        std::thread writer([&] { WriteBytes(path, BigFile(documentType).substr(0, 100000)); });
        const Reading reading = ReadingOfFile(path);
        writer.join();
        EXPECT_EQ(reading.error, Refused(ParseErrorsMessage(path)));
        EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
    }
}

TEST(ReadFileFaultsTest, AScanKeepsWhatItFoundBeforeTheFileBrokeOrEnded) {
    const std::string complete = "layer |n|f|1; time 0";
    const GpxFile file(BigHead());
    for (const CFileFaults::Read kind : {CFileFaults::Read::kFails, CFileFaults::Read::kEnds}) {
        GpxTarvikExtParser scanner;
        std::string found;
        std::size_t partly = 0;
        for (std::size_t read = 1; found != complete; ++read) {
            SCOPED_TRACE(read);
            {
                CFileFaults faults;
                faults.faultyRead = read;
                faults.read = kind;
                const std::string written = CaptureStandardError([&] {
                    const CFileFaultsScope scope(faults);
                    ScanFile(scanner, file.NarrowPath());
                });
                EXPECT_EQ(written, "");
                ASSERT_LT(read, 100U);
            }
            found = FoundBy(scanner);
            partly += found != complete ? 1 : 0;
            EXPECT_TRUE(found == "time 0" || found == "layer ||f|1; time 0" || found == complete) << found;
            ScanFile(scanner, file.NarrowPath());
            EXPECT_EQ(FoundBy(scanner), complete) << "the next time";
        }
        EXPECT_GT(partly, 1U);
    }
}

std::vector<ZipEntry> Entries() {
    return {{.name = "first.txt", .content = Lines(4000)},
            {.name = "second.txt", .content = Lines(4000), .method = ::testing_support::kZipStored}};
}

TEST(ReadFileFaultsTest, AnArchiveThatBreaksOrEndsIsReportedAndCanBeClosed) {
    const ArchiveFile file(BuildZip(Entries()));
    const std::size_t descriptors = OpenDescriptors();
    std::size_t flagged = 0;
    for (const CFileFaults::Read kind : {CFileFaults::Read::kFails, CFileFaults::Read::kEnds})
        for (std::size_t read = 1, isReached = 1; isReached != 0; ++read) {
            SCOPED_TRACE(read);
            std::size_t right = 0;
            CFileFaults faults;
            faults.faultyRead = read;
            faults.read = kind;
            try {
                const CFileFaultsScope scope(faults);
                ZipFileReader reader(file.Path());
                for (const auto& entry : Entries()) {
                    const EntryRead content = ReadEntry(reader);
                    EXPECT_TRUE(content.IsFlagged() || content.bytes == entry.content ||
                                content.bytes.size() < entry.content.size());
                    right += content.bytes == entry.content ? 1 : 0;
                    reader.GoToNextFile();
                }
            } catch (const dbc::precondition_error& error) {
                EXPECT_STREQ(error.what(), "Could not open ZIP for reading.");
            }
            isReached = faults.reads >= read ? 1 : 0;
            flagged += right != Entries().size() ? 1 : 0;
            EXPECT_TRUE(right == Entries().size() || isReached != 0);
        }
    EXPECT_GT(flagged, 20U);
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(ReadFileFaultsTest, AnArchiveThatIsCutAfterItWasOpenedIsReported) {
    const std::string content = Lines(40000);
    const ArchiveFile file(BuildZip({{.name = "first.txt", .content = content}, Entries()[1]}));
    ZipFileReader reader(file.Path());
    reader.OpenCurrentFile();
    char byte = 'x';
    ASSERT_EQ(reader.ReadFromCurrentFile(&byte, 1), 1);
    std::filesystem::resize_file(Utf8(file.Path()), 0);
    std::string buffer(1 << 20, '\0');
    int count = 0;
    std::size_t all = 1;
    while ((count = reader.ReadFromCurrentFile(buffer.data(), static_cast<unsigned>(buffer.size()))) > 0)
        all += static_cast<std::size_t>(count);
    EXPECT_LT(count, 0);
    EXPECT_LT(all, content.size());
    reader.CloseCurrentFile();
    EXPECT_FALSE(reader.GoToNextFile());
    EXPECT_THROW(reader.OpenCurrentFile(), dbc::precondition_error);
}

TEST(ReadFileFaultsTest, AnArchiveThatIsRemovedAfterItWasOpenedIsReadWhole) {
    const ArchiveFile file(BuildZip(Entries()));
    ZipFileReader reader(file.Path());
    std::filesystem::remove(Utf8(file.Path()));
    for (const auto& entry : Entries()) {
        EXPECT_TRUE(ReadEntry(reader).bytes == entry.content);
        reader.GoToNextFile();
    }
}

icu::UnicodeString NoText(const TemporaryFolder& folder, char16_t surrogate) {
    return AsPath(folder / "a").append(surrogate).append(u".gpx", -1);
}

TEST(ReadFileFaultsTest, ANameThatIsNoTextIsRefused) {
    for (const char16_t surrogate : {char16_t{0xD800}, char16_t{0xDC00}}) {
        const TemporaryFolder folder;
        const icu::UnicodeString path = NoText(folder, surrogate);
        const Reading reading(
            [&](GpxParser& parser, GpxDocument& document) { parser.Parse(path, document); });
        EXPECT_EQ(reading.error, std::string(typeid(dbc::precondition_error).name()) +
                                     ": The GPX file path was empty or invalid.");
        EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
        EXPECT_FAILURE(ZipFileReader{path}, dbc::precondition_error, "No file specified for reading.",
                       "LibCore/vexaTransferLib/ZIPFileReader.cpp");
        GpxTarvikExtParser scanner;
        EXPECT_REPORT(scanner.Parse(path), kScannerSource);
        EXPECT_EQ(FoundBy(scanner), "time 0");
    }
}

/// Runs every operation that opens a file by its name, and exits with the number of operations that failed.
void UseNamesBeyondAscii() {
    int failed = 0;
    const auto expect = [&](bool holds, const char* what) {
        if (!holds)
            std::fprintf(stderr, "%s\n", what);
        failed += holds ? 0 : 1;
    };
    try {
        const TemporaryFolder folder;
        const std::string name = "W\u00E4nderung \u5C71\u9053 \U0001F30D";
        const icu::UnicodeString path = AsPath(folder / name);
        GpxDocument document;
        document.AddTrack(GpxTrack());
        GpxModelAccess::SetName(document, u"\u00E9\u5C71");
        document.WriteToFile(GpxVersion(1, 1), u"App", u"x", path);
        expect(std::filesystem::exists(folder / name), "written under its name");
        GpxDocument read;
        GpxParser().Parse(path, read);
        expect(CountsOf(read) == "0 waypoints, 0 routes, 1 tracks" && NameOf(read) == "\u00E9\u5C71", "read");
        WriteBytes(folder / name, WithExtensions("<tarvik:form>\u00E9</tarvik:form>"));
        GpxTarvikExtParser scanner;
        scanner.Parse(path);
        expect(FoundBy(scanner) == "layer ||\u00E9|1; time 0", "scanned");
        WriteBytes(folder / name, BuildZip(Entries()));
        expect(ZipFileReader(path).GetFileCount() == 2, "opened as an archive");
        const Reading missing = ReadingOfFile((folder / (name + "x")).string());
        expect(missing.error == Refused(ParseErrorsMessage((folder / (name + "x")).string())),
               missing.error.c_str());
    } catch (const std::exception& exception) {
        expect(false, exception.what());
    }
    std::_Exit(failed);
}

// The code page of the C locale has only ASCII characters, but names are UTF-8 nevertheless.
TEST(ReadFileFaultsDeathTest, NamesBeyondAsciiAreFoundInTheCLocale) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    setenv("LC_ALL", "C", 1);
    EXPECT_EXIT(
        {
            std::setlocale(LC_ALL, "");
            UseNamesBeyondAscii();
        },
        testing::ExitedWithCode(0), "");
    unsetenv("LC_ALL");
}

} // namespace
} // namespace vexaTransferLib
