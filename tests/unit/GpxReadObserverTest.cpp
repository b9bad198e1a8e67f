// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxReadObserver.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/ModelCompare.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxParser.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// A file of some size, with one element that is skipped at its start and one at its end.
std::string BigFile(std::size_t points) {
    return Gpx11("<extensions/>" + Repeat("<wpt lat='1' lon='2'><ele>100</ele></wpt>", points) +
                 "<extensions/>");
}

/// The same file in a form that is read from the DOM.
std::string BigDomFile(std::size_t points) {
    return "<!DOCTYPE gpx>" + BigFile(points);
}

Reading ReadObserved(const GpxFile& file, GpxReadObserver& observer) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document);
    });
}

bool IsUntouched(const GpxDocument& document) {
    return document.GetTrackCount() == 1 && document.GetWaypointCount() == 0;
}

std::string CancelledMessage(const GpxFile& file) {
    return std::string(typeid(dbc::postcondition_error).name()) +
           ": The reading of the GPX file was cancelled: " + file.NarrowPath();
}

TEST(GpxReadObserverTest, DoesNothingUnlessOverridden) {
    GpxReadObserver observer;
    EXPECT_TRUE(observer.Progress(1, 2));
    observer.ParserMessage({});
    observer.Skipped({});
    const Reading reading = ReadObserved(GpxFile(BigFile(10)), observer);
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(reading.document.GetWaypointCount(), 10U);
}

TEST(GpxReadObserverTest, ReceivesTheProgressFromNothingToEverything) {
    const std::string bytes = BigFile(200000);
    RecordingObserver observer;
    EXPECT_EQ(ReadObserved(GpxFile(bytes), observer).error, "");
    ASSERT_GE(observer.progress.size(), 50U);
    EXPECT_LE(observer.progress.size(), 300U);
    EXPECT_EQ(observer.progress.front().first, 0U);
    EXPECT_EQ(observer.progress.back().first, bytes.size());
    std::uint64_t before = 0;
    for (const auto& [bytesRead, bytesInAll] : observer.progress) {
        EXPECT_GE(bytesRead, before);
        EXPECT_EQ(bytesInAll, bytes.size());
        before = bytesRead;
    }
}

TEST(GpxReadObserverTest, ReceivesTheProgressOfBytesInMemory) {
    const std::string bytes = BigFile(20000);
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    GpxDocument document;
    parser.Parse(bytes, u"walk", document);
    ASSERT_GE(observer.progress.size(), 2U);
    EXPECT_EQ(observer.progress.front(), std::make_pair(std::uint64_t{0}, std::uint64_t{bytes.size()}));
    EXPECT_EQ(observer.progress.back(),
              std::make_pair(std::uint64_t{bytes.size()}, std::uint64_t{bytes.size()}));
}

TEST(GpxReadObserverTest, TheProgressOfAFileThatNeedsADomStartsAgain) {
    const std::string bytes = BigDomFile(20000);
    RecordingObserver observer;
    EXPECT_EQ(ReadObserved(GpxFile(bytes), observer).error, "");
    int begun = 0;
    for (const auto& [bytesRead, bytesInAll] : observer.progress)
        begun += bytesRead == 0 ? 1 : 0;
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(observer.progress.back().first, bytes.size());
}

TEST(GpxReadObserverTest, ReceivesTheProgressOfGetParser) {
    const std::string bytes = BigFile(1000);
    const GpxFile file(bytes);
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    parser.GetParser(file.Path());
    ASSERT_GE(observer.progress.size(), 2U);
    EXPECT_EQ(observer.progress.back().first, bytes.size());
}

GpxDocument ReadThroughAPipe(const std::string& bytes, GpxReadObserver& observer) {
    const TemporaryFolder folder;
    const std::string path = (folder / "pipe").string();
    EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { WriteBytes(path, bytes); });
    GpxParser parser;
    parser.SetObserver(&observer);
    GpxDocument document;
    parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    writer.join();
    return document;
}

TEST(GpxReadObserverTest, OfAPipeTheLengthIsNotKnown) {
    const std::string bytes = BigFile(20000);
    RecordingObserver observer;
    EXPECT_EQ(ReadThroughAPipe(bytes, observer).GetWaypointCount(), 20000U);
    EXPECT_EQ(observer.progress.front(), std::make_pair(std::uint64_t{0}, std::uint64_t{0}));
    EXPECT_EQ(observer.progress.back(), std::make_pair(std::uint64_t{bytes.size()}, std::uint64_t{0}));
}

TEST(GpxReadObserverTest, OfAFileThatIsNotThereThereIsNoProgress) {
    RecordingObserver observer;
    const Reading reading([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(u"/nowhere/walk.gpx", document);
    });
    EXPECT_NE(reading.error.find("One or more errors"), std::string::npos);
    EXPECT_TRUE(observer.progress.empty());
    EXPECT_NE(observer.messages.find("fatal 0:0"), std::string::npos) << observer.messages;
}

TEST(GpxReadObserverTest, AnAddressIsReadAsWithoutAnObserver) {
    const GpxFile file(BigFile(3));
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    GpxDocument document;
    parser.Parse(u"file://" + file.Path(), document);
    EXPECT_EQ(document.GetWaypointCount(), 3U);
    EXPECT_EQ(observer.progress.back(), std::make_pair(std::uint64_t{BigFile(3).size()}, std::uint64_t{0}));
}

class CancelTest : public testing::TestWithParam<bool> {
protected:
    const GpxFile file_{GetParam() ? BigDomFile(20000) : BigFile(20000)};
};

INSTANTIATE_TEST_SUITE_P(Ways, CancelTest, testing::Bool(), [](const testing::TestParamInfo<bool>& way) {
    return way.param ? "Dom" : "Events";
});

void ExpectCancelledAt(std::size_t calls, const GpxFile& file) {
    RecordingObserver observer;
    observer.goesOn = [&] { return observer.progress.size() < calls; };
    const Reading reading = ReadObserved(file, observer);
    EXPECT_EQ(reading.error, CancelledMessage(file)) << calls;
    EXPECT_TRUE(IsUntouched(reading.document)) << calls;
    EXPECT_EQ(observer.progress.size(), calls);
}

TEST_P(CancelTest, EndsTheReadingAtAnyProgressAndLeavesTheDocument) {
    RecordingObserver whole;
    ReadObserved(file_, whole);
    for (std::size_t calls = 1; calls <= whole.progress.size(); ++calls)
        ExpectCancelledAt(calls, file_);
}

TEST_P(CancelTest, TheCallerGetsTheExceptionOfProgress) {
    RecordingObserver observer;
    observer.goesOn = [&]() -> bool {
        if (observer.progress.size() == 5)
            throw std::out_of_range("stop");
        return true;
    };
    const Reading reading = ReadObserved(file_, observer);
    EXPECT_EQ(reading.error, std::string(typeid(std::out_of_range).name()) + ": stop");
    EXPECT_TRUE(IsUntouched(reading.document));
}

class ThrowingObserver : public GpxReadObserver {
public:
    void Skipped(const GpxSkippedElement&) override {
        ++calls;
        throw std::out_of_range("enough");
    }
    int calls = 0;
};

TEST_P(CancelTest, TheCallerGetsTheExceptionOfSkipped) {
    ThrowingObserver observer;
    const Reading reading = ReadObserved(file_, observer);
    EXPECT_EQ(reading.error, std::string(typeid(std::out_of_range).name()) + ": enough");
    EXPECT_TRUE(IsUntouched(reading.document));
    EXPECT_EQ(observer.calls, 1);
}

TEST(GpxReadObserverTest, ItsExceptionIsNoFailureOfAChild) {
    // The failures of children are isolated on three levels above this element.
    const GpxFile file(Gpx11("<trk><trkseg><trkpt lat='1' lon='2'><hdop/></trkpt></trkseg></trk>"));
    ThrowingObserver observer;
    EXPECT_EQ(ReadObserved(file, observer).error, std::string(typeid(std::out_of_range).name()) + ": enough");
    EXPECT_EQ(observer.calls, 1);
}

/// A file that consists almost only of one long element.
struct LongElement {
    const char* name;
    std::string gpx;
    bool isReadAfterItsEnd; ///< its children are read one by one after the XML parser has read all of it
};

std::string LongWaypoint(const std::string& children) {
    return Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

std::string Numbered(std::size_t count, const std::string& start, const std::string& end) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += start + std::to_string(i) + end;
    return text;
}

std::string InCache(const std::string& children) {
    return LongWaypoint("<extensions><groundspeak:cache>" + children + "</groundspeak:cache></extensions>");
}

const std::vector<LongElement>& LongElements() {
    static const std::vector<LongElement> elements = {
        {"children", LongWaypoint(Repeat("<x/>", 150000)), true},
        {"form strings",
         LongWaypoint("<extensions><formdata>" + Numbered(20000, "<formstring key='k", "'>v</formstring>") +
                      "</formdata></extensions>"),
         true},
        {"extensions", LongWaypoint("<extensions>" + Repeat("<x/>", 150000) + "</extensions>"), true},
        {"link", LongWaypoint("<link href='u'>" + Repeat("<x/>", 150000) + "</link>"), true},
        {"metadata", Gpx11("<metadata>" + Repeat("<x/>", 150000) + "</metadata>"), true},
        {"travel bugs",
         InCache("<groundspeak:travelbugs>" + Repeat("<groundspeak:x/>", 40000) +
                 "</groundspeak:travelbugs>"),
         true},
        {"geocache text", InCache("<groundspeak:name>" + Repeat("abc ", 10000) + "</groundspeak:name>"),
         true},
        {"CDATA", LongWaypoint("<desc>" + Repeat("<![CDATA[x]]>", 40000) + "</desc>"), false},
        {"text", LongWaypoint("<desc>" + Repeat("text", 150000) + "</desc>"), false},
        {"attributes",
         Gpx11("<wpt lat='1' lon='2'" + Numbered(1000, " a", "='" + std::string(600, 'v') + "'") + "/>"),
         false},
    };
    return elements;
}

class LongElementTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Ways, LongElementTest, testing::Values("", "<!DOCTYPE gpx>"),
                         [](const testing::TestParamInfo<const char*>& way) {
                             return *way.param != '\0' ? "Dom" : "Events";
                         });

TEST_P(LongElementTest, TheProgressWithinItIsReportedButNotTooOften) {
    for (const LongElement& element : LongElements()) {
        SCOPED_TRACE(element.name);
        const std::string bytes = GetParam() + element.gpx;
        RecordingObserver observer;
        EXPECT_EQ(ReadObserved(GpxFile(bytes), observer).error, "");
        const auto atEnd =
            std::count(observer.progress.begin(), observer.progress.end(),
                       std::make_pair(std::uint64_t{bytes.size()}, std::uint64_t{bytes.size()}));
        EXPECT_GE(observer.progress.size() - static_cast<std::size_t>(atEnd), bytes.size() / 100000);
        EXPECT_GE(atEnd, element.isReadAfterItsEnd ? 3 : 1);
        EXPECT_LE(observer.progress.size(), 300U);
        EXPECT_EQ(observer.progress.back().first, bytes.size());
    }
}

TEST_P(LongElementTest, CanBeCancelledAtAnyProgressWithinIt) {
    for (const LongElement& element : LongElements()) {
        SCOPED_TRACE(element.name);
        const GpxFile file(GetParam() + element.gpx);
        RecordingObserver whole;
        ReadObserved(file, whole);
        const std::size_t last = whole.progress.size();
        for (const std::size_t calls : {last / 2, last - 1, last})
            ExpectCancelledAt(calls, file);
    }
}

TEST_P(LongElementTest, ACancelledReadingOfChildrenReportsNothingMore) {
    for (const LongElement& element : LongElements()) {
        if (!element.isReadAfterItsEnd)
            continue;
        SCOPED_TRACE(element.name);
        const GpxFile file(GetParam() + element.gpx);
        RecordingObserver whole;
        ReadObserved(file, whole);
        RecordingObserver observer;
        std::size_t told = 0;
        observer.goesOn = [&] {
            told = observer.things.size();
            return observer.progress.size() + 1 < whole.progress.size();
        };
        ReadObserved(file, observer);
        EXPECT_EQ(observer.things.size(), told);
        if (!whole.things.empty()) {
            EXPECT_LT(told, whole.things.size());
        }
    }
}

TEST(GpxReadObserverTest, TheProgressWithinALongElementFromAPipeIsReportedToo) {
    const std::string bytes = LongWaypoint(Repeat("<x/>", 150000));
    RecordingObserver observer;
    ReadThroughAPipe(bytes, observer);
    EXPECT_GE(std::count(observer.progress.begin(), observer.progress.end(),
                         std::make_pair(std::uint64_t{bytes.size()}, std::uint64_t{0})),
              3);
}

TEST(GpxReadObserverTest, AfterACancelledReadingTheParserReadsOn) {
    const GpxFile file(BigFile(20000));
    RecordingObserver observer;
    observer.goesOn = [] { return false; };
    GpxParser parser;
    GpxDocument document;
    parser.SetObserver(&observer);
    EXPECT_THROW(parser.Parse(file.Path(), document), dbc::postcondition_error);
    parser.SetObserver(nullptr);
    parser.Parse(file.Path(), document);
    EXPECT_EQ(document.GetWaypointCount(), 20000U);
}

TEST(GpxReadObserverTest, ReceivesTheParsersMessagesBeforeTheHandler) {
    class Handler : public GpxParser {
    public:
        void fatalError(const xercesc::SAXParseException& exception) override {
            heardBefore = observer.messages;
            GpxParser::fatalError(exception);
        }
        RecordingObserver observer;
        std::string heardBefore;
    };
    const GpxFile file("<gpx version='1.1'>\n<wpt></gpx>");
    Handler parser;
    parser.SetObserver(&parser.observer);
    GpxDocument document;
    EXPECT_THROW(parser.Parse(file.Path(), document), dbc::postcondition_error);
    EXPECT_EQ(parser.observer.messages, "fatal 2:8 expected end of tag 'wpt'\n");
    EXPECT_EQ(parser.heardBefore, parser.observer.messages);
}

TEST(GpxReadObserverTest, ReceivesWarningsAndErrorsOfAValidatingParse) {
    class Files : public RecordingObserver {
    public:
        void ParserMessage(const GpxParserMessage& message) override {
            RecordingObserver::ParserMessage(message);
            file = message.file;
        }
        std::string file;
    };
    const GpxFile file(
        "<!DOCTYPE gpx [<!ELEMENT gpx EMPTY><!ATTLIST nobody a CDATA #IMPLIED>]>\n<gpx><wpt/></gpx>");
    Files observer;
    EXPECT_NE(ReadObserved(file, observer).error.find("One or more errors"), std::string::npos);
    EXPECT_NE(observer.messages.find("error 2:"), std::string::npos) << observer.messages;
    EXPECT_NE(observer.file.find("walk.gpx"), std::string::npos) << observer.file;
}

TEST(GpxReadObserverTest, ObservedOrNotTheModelIsTheSame) {
    const GpxFile file(ReadTestData("cli/hand-written.gpx"));
    RecordingObserver observer;
    const Reading observed = ReadObserved(file, observer);
    const Reading silent = ReadingOfFile(file.NarrowPath());
    EXPECT_TRUE(IsSameModel(silent.document, observed.document));
    EXPECT_EQ(observed.written, silent.written);
}

} // namespace
} // namespace vexaTransferLib
