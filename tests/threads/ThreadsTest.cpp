// SPDX-License-Identifier: MIT Objects of all kinds are used on several threads at once. Each thread must get
// the same results as a thread that runs alone. Built with ThreadSanitizer, the tests also fail when two
// threads access the same memory without synchronisation.
#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>
#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/ZIPFileReader.h>

#include "support/ContractChecks.h"
#include "support/HeadScan.h"
#include "support/RecordingObserver.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <gtest/gtest.h>

#include <unicode/gregocal.h>
#include <unicode/numfmt.h>
#include <unicode/regex.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// The work of a thread with objects of its own; the text contains all its results.
struct Work {
    const char* name;
    std::function<std::string()> run;
};

constexpr const char* kGpxFiles[] = {"cli/hand-written.gpx",      "cli/dropped-point.gpx",
                                     "cli/no-position.gpx",       "cli/not-well-formed.gpx",
                                     "cli/raw-markup.gpx",        "cli/empty.gpx",
                                     "writer/everything-1.1.gpx", "writer/everything-1.0.gpx"};

icu::UnicodeString PathOf(const char* name) {
    return icu::UnicodeString::fromUTF8(std::string(VEXA_TEST_DATA) + "/" + name);
}

std::string Bytes(const GpxDocument& document, const GpxVersion& version) {
    std::string out;
    document.WriteToString(version, u"App", u"https://app.example/", out);
    return out;
}

// The result of the action, or the message of its exception.
std::string Outcome(const std::function<std::string()>& action) {
    try {
        return action();
    } catch (const std::exception& exception) {
        return std::string("thrown: ") + exception.what();
    }
}

std::string ForEachFile(const std::function<std::string(const char* file)>& action) {
    std::string seen;
    for (const char* file : kGpxFiles)
        seen += std::string(file) + ":\n" + Outcome([&] { return action(file); }) + "\n";
    return seen;
}

std::string ReadFiles() {
    GpxParser parser;
    return ForEachFile([&](const char* file) {
        GpxDocument document;
        parser.Parse(PathOf(file), document);
        return Bytes(document, GpxVersion(1, 1));
    });
}

std::string ReadUntrustedFilesWatched() {
    GpxParser parser;
    RecordingObserver observer;
    GpxInputLimits limits;
    limits.elementDepth = 6;
    parser.SetUntrusted(limits);
    parser.SetObserver(&observer);
    const std::string seen = ForEachFile([&](const char* file) {
        GpxDocument document;
        parser.Parse(PathOf(file), document);
        return Bytes(document, GpxVersion(1, 0));
    });
    return seen + observer.messages + observer.skipped + std::to_string(observer.progress.size());
}

std::string ReadMemory() {
    GpxParser parser;
    parser.SetUntrusted();
    return ForEachFile([&](const char* file) {
        GpxDocument document;
        parser.Parse(ReadTestData(file), u"memory.gpx", document);
        return Bytes(document, GpxVersion(1, 1));
    });
}

std::string ReadTrees() {
    GpxParser parser;
    return ForEachFile([&](const char* file) {
        const auto tree = parser.GetParser(PathOf(file));
        GpxDocument document;
        parser.ParseGpxNode(tree->getDocument()->getDocumentElement(), document);
        return Bytes(document, GpxVersion(1, 1));
    });
}

std::string ScanFiles() {
    GpxTarvikExtParser trusted;
    GpxTarvikExtParser untrusted;
    untrusted.SetUntrusted();
    return ForEachFile([&](const char* file) {
        trusted.Parse(PathOf(file));
        ScanBytes(untrusted, ReadTestData(file));
        return FoundBy(trusted) + FoundBy(untrusted);
    });
}

std::string Clean() {
    CleanText cleaner;
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(ReadTestData("cli/web-text.html"));
    cleaner.CleanWebTextForTova(text);
    icu::UnicodeString marked = u"<b>x</b> [i]\u201Cy\u201D[/i] &#65;&deg; <script>z</script>";
    cleaner.CleanWebTextForTova(marked);
    return Utf8(text + u"|" + marked);
}

std::string ReadArchive() {
    using namespace ::testing_support;
    const std::string stored = ReadTestData("cli/hand-written.gpx");
    const ArchiveFile file(BuildZip({{.name = "a.gpx", .content = stored, .method = kZipStored},
                                     {.name = "b.gpx", .content = Lines(2000)}}));
    ZipFileReader reader(file.Path());
    std::string seen = std::to_string(reader.GetFileCount());
    for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile())
        seen += Utf8(reader.GetCurrentFileName()) + ReadEntry(reader).bytes;
    return seen;
}

std::string Convert() {
    const icu::UnicodeString text = u"\u00E9\u20AC\U0001F30D<&>" + icu::UnicodeString(3000, 0x20AC, 3000);
    std::string seen;
    for (const char* codePage : {"utf-8", "utf-16le", "iso-8859-1", "shift_jis", "no-such-code-page"})
        seen += Outcome([&] {
            const UnicodeStrUtils::ByteString bytes(text, codePage);
            return std::string(bytes.buffer.get(), bytes.length);
        });
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getUS(), status);
    double millis = 0.0;
    for (const char* time : {"2009-01-15T10:20:30Z", "2009-01-15T10:20:30.5+02:00", "2009-02-30"}) {
        seen += ParseGpxTime(time, millis) ? " read " : " refused ";
        calendar.setTime(millis, status);
        seen += Utf8(ToGpxTime(&calendar));
    }
    double number = 0.0;
    StrToDouble("1.25e3x", number);
    seen += Utf8(EscapeXMLValueString(text)) + std::to_string(number) + std::to_string(StrToInt(u"1,234"));
    return seen;
}

std::string WriteFiles() {
    const GpxDocument document = FullDocument();
    const TemporaryFolder folder;
    document.WriteToFile(GpxVersion(1, 1), u"App", u"https://app.example/", AsPath(folder / "out.gpx"));
    return ReadBytes(folder / "out.gpx") + Bytes(document, GpxVersion(1, 0));
}

std::string FailChecks() {
    GpxPoint point(kGpxWaypoint, 1.0, 2.0);
    GpxDocument document;
    GpxParser parser;
    return Outcome([&]() -> std::string {
               point.SetName(u"");
               return "";
           }) +
           Outcome([&]() -> std::string {
               document.AddWaypoint(GpxPoint(kGpxTrackPoint, 1.0, 2.0));
               return "";
           }) +
           Outcome([&]() -> std::string {
               parser.Parse(u"", document);
               return "";
           });
}

const std::vector<Work>& AllWork() {
    static const std::vector<Work> work = {
        {"files", ReadFiles},          {"untrusted files", ReadUntrustedFilesWatched},
        {"memory", ReadMemory},        {"trees", ReadTrees},
        {"heads", ScanFiles},          {"texts", Clean},
        {"archives", ReadArchive},     {"conversions", Convert},
        {"written files", WriteFiles}, {"failed checks", FailChecks},
    };
    return work;
}

// Lets all threads start at once.
class Gate {
public:
    explicit Gate(std::size_t threads) : awaited_(threads) {}

    void Pass() {
        std::unique_lock<std::mutex> lock(mutex_);
        if (--awaited_ == 0)
            opened_.notify_all();
        opened_.wait(lock, [this] { return awaited_ == 0; });
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    std::size_t awaited_;
};

// The results of the threads, in the order of their numbers.
std::vector<std::string> SeenBy(std::size_t threads,
                                const std::function<std::string(std::size_t thread)>& run) {
    std::vector<std::string> seen(threads);
    Gate gate(threads);
    std::vector<std::thread> running;
    for (std::size_t number = 0; number < threads; ++number)
        running.emplace_back([&, number] {
            gate.Pass();
            seen[number] = Outcome([&] { return run(number); });
        });
    for (std::thread& thread : running)
        thread.join();
    return seen;
}

// Standard error contains only whole contract reports, and nothing from a sanitizer.
void ExpectOnlyReports(const std::string& written) {
    std::istringstream lines(written);
    for (std::string line; std::getline(lines, line);)
        ASSERT_NE(ReportedLine(line), "") << "written to standard error:\n" << written;
    EXPECT_NE(written, "") << "the failed checks must be reported";
}

// ICU publishes what it makes on first use by atomics that ThreadSanitizer cannot see in Debian's library,
// which is not instrumented; so these objects are made before the threads start. The objects that this
// library makes on first use are left to the threads.
class ThreadsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        UErrorCode status = U_ZERO_ERROR;
        icu::RegexMatcher matcher(u"(?i)[a-z]\\d\\s\\w.$", 0, status);
        const icu::UnicodeString input(u"x1 y");
        matcher.reset(input);
        matcher.find();
        const std::unique_ptr<icu::NumberFormat> format(
            icu::NumberFormat::createInstance(icu::Locale::getUS(), status));
        icu::UnicodeString text;
        icu::Formattable number;
        format->parse(format->format(1234.5, text), number, status);
        const icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getUS(), status);
        ASSERT_TRUE(U_SUCCESS(status)) << u_errorName(status);
        ASSERT_EQ(text.caseCompare(u"1,234.5", U_FOLD_CASE_DEFAULT), 0);
    }
};

TEST_F(ThreadsTest, AThreadSeesTheSameBesideOthersOfItsKindAsAlone) {
    constexpr std::size_t kThreads = 4;
    ExpectOnlyReports(CaptureStandardError([] {
        for (const Work& work : AllWork()) {
            // The threads come first, so that what is made on first use is made by several of them.
            const std::vector<std::string> seen = SeenBy(kThreads, [&](std::size_t) { return work.run(); });
            const std::string alone = work.run();
            EXPECT_GT(alone.size(), 20U) << work.name;
            for (const std::string& text : seen)
                EXPECT_TRUE(text == alone) << work.name << ":\n" << text << "\nalone:\n" << alone;
        }
    }));
}

TEST_F(ThreadsTest, AThreadSeesTheSameBesideOthersOfEveryKindAsAlone) {
    const std::vector<Work>& works = AllWork();
    constexpr std::size_t kRounds = 3;
    ExpectOnlyReports(CaptureStandardError([&] {
        for (std::size_t round = 0; round < kRounds; ++round) {
            const auto workOf = [&](std::size_t thread) { return works[(thread + round) % works.size()]; };
            const std::vector<std::string> seen =
                SeenBy(works.size(), [&](std::size_t thread) { return workOf(thread).run(); });
            for (std::size_t thread = 0; thread < seen.size(); ++thread)
                EXPECT_TRUE(seen[thread] == workOf(thread).run()) << workOf(thread).name << ":\n"
                                                                  << seen[thread];
        }
    }));
}

TEST_F(ThreadsTest, OneDocumentIsReadByManyThreads) {
    const GpxDocument document = FullDocument();
    const std::vector<std::string> seen = SeenBy(4, [&](std::size_t) {
        const GpxDocument copy = document;
        std::string texts = Bytes(document, GpxVersion(1, 1)) + Bytes(copy, GpxVersion(1, 0));
        for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
            icu::UnicodeString name;
            point->GetName(name);
            texts += Utf8(name);
        }
        return texts;
    });
    for (const std::string& text : seen)
        EXPECT_TRUE(text == seen.front()) << text;
    EXPECT_NE(seen.front().find("</gpx>"), std::string::npos) << seen.front();
}

struct ReportCounts {
    int handler;
    std::atomic<std::size_t> own{0};
    std::atomic<std::size_t> foreign{0};
};

template <int kHandler>
void CountReport(const char*, int, void* context) noexcept {
    auto& counts = *static_cast<ReportCounts*>(context);
    ++(counts.handler == kHandler ? counts.own : counts.foreign);
}

TEST_F(ThreadsTest, AHandlerOfReportsIsCalledWithItsOwnContextWhileAnotherIsSet) {
    constexpr std::size_t kCalls = 20000;
    ReportCounts first{1};
    ReportCounts second{2};
    const dbc::ReportReceiver former = dbc::SetReportHandler(CountReport<1>, &first);
    SeenBy(3, [&](std::size_t thread) {
        for (std::size_t i = 0; i < kCalls; ++i)
            if (thread != 0)
                dbc::ReportFailure("x", 1);
            else if (i % 2 == 0)
                dbc::SetReportHandler(CountReport<2>, &second);
            else
                dbc::SetReportHandler(CountReport<1>, &first);
        return std::string();
    });
    dbc::SetReportHandler(former.handler, former.context);
    EXPECT_EQ(first.own + second.own, 2 * kCalls);
    EXPECT_EQ(first.foreign + second.foreign, 0U);
}

} // namespace
} // namespace vexaTransferLib
