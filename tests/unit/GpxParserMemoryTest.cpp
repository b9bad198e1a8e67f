// SPDX-License-Identifier: MIT

// Reading from bytes in memory: everything that differs from reading a file.

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/RecordingParser.h"
#include "support/SystemFiles.h"
#include "support/TestFiles.h"
#include "support/XercesDoubles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'/>");

TEST(GpxParserMemoryTest, TheDocumentIsNamedAfterTheName) {
    const struct {
        const char* name;
        const char* expected;
    } rows[] = {
        {"walk.gpx", "walk"},
        {"archive.zip/data/walk.2009.gpx", "walk.2009"},
        {"noext", "noext"},
        {"dir.d/file", "file"},
        {"/", ""},
        {"folder/", ""},
        {".gpx", ""},
        {"walk.", "walk"},
        {"..walk.gpx", "..walk"},
        {"back\\slash.gpx", "back\\slash"},
        {" ", " "},
        {"a b#1%20?x.gpx", "a b#1%20?x"},
        {"W\u00E4nderung \u5C71\U0001F30D.gpx", "W\u00E4nderung \u5C71\U0001F30D"},
    };
    for (const auto& row : rows) {
        const Reading reading = ReadingOfBytes(kGoodFile, row.name);
        EXPECT_EQ(reading.error, "") << row.name;
        EXPECT_EQ(NameOf(reading.document), row.expected) << row.name;
        EXPECT_EQ(CountsOf(reading.document), "1 waypoints, 0 routes, 0 tracks") << row.name;
    }
}

TEST(GpxParserMemoryTest, TheNameInTheDocumentWins) {
    EXPECT_EQ(NameOf(ReadingOfBytes(Gpx11("<metadata><name>Walk</name></metadata>"), "x.gpx").document),
              "Walk");
}

TEST(GpxParserMemoryTest, AnEmptyNameIsRefused) {
    GpxParser parser;
    GpxDocument document = UsedDocument();
    icu::UnicodeString bogus;
    bogus.setToBogus();
    for (const std::string& bytes : {kGoodFile, std::string(), std::string("no XML")}) {
        EXPECT_FAILURE(parser.Parse(std::string_view(bytes), u"", document), dbc::precondition_error,
                       "The GPX file path was empty or invalid.", kParserSource);
        EXPECT_FAILURE(parser.Parse(std::string_view(bytes), bogus, document), dbc::precondition_error,
                       "The GPX file path was empty or invalid.", kParserSource);
    }
    EXPECT_TRUE(IsSameModel(UsedDocument(), document));
}

TEST(GpxParserMemoryTest, NoBytesAreIllFormedAndTheDocumentLeftUntouched) {
    GpxParser parser;
    for (const std::string_view bytes : {std::string_view(), std::string_view(""), std::string_view(" \n"),
                                         std::string_view(kGoodFile).substr(0, kGoodFile.size() - 1)}) {
        GpxDocument document = UsedDocument();
        EXPECT_FAILURE(parser.Parse(bytes, u"a/walk.gpx", document), dbc::postcondition_error,
                       ParseErrorsMessage("a/walk.gpx"), "");
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
    }
}

TEST(GpxParserMemoryTest, AFailureAfterTheParseLeavesADocumentPartlyFilled) {
    const Reading root = ReadingOfBytes("<kml/>", "walk.gpx");
    EXPECT_EQ(NameOf(root.document), "walk");
    EXPECT_EQ(CountsOf(root.document), "0 waypoints, 0 routes, 0 tracks");
    const Reading point = ReadingOfBytes(Gpx11("<wpt lat='1' lon='2'/><wpt/>"), "walk.gpx");
    EXPECT_EQ(NameOf(point.document), "walk");
    EXPECT_EQ(CountsOf(point.document), "1 waypoints, 0 routes, 0 tracks");
}

TEST(GpxParserMemoryTest, OneParserReadsBothKindsInTurn) {
    GpxParser parser;
    GpxDocument document;
    const GpxFile file(Gpx11("<trk/>"));
    for (int round = 0; round < 3; ++round) {
        parser.Parse(kGoodFile, u"bytes.gpx", document);
        EXPECT_EQ(NameOf(document) + ": " + CountsOf(document), "bytes: 1 waypoints, 0 routes, 0 tracks");
        EXPECT_THROW(parser.Parse(std::string_view("<bad"), u"bad.gpx", document), dbc::postcondition_error);
        parser.Parse(file.Path(), document);
        EXPECT_EQ(NameOf(document) + ": " + CountsOf(document), "walk: 0 waypoints, 0 routes, 1 tracks");
    }
}

TEST(GpxParserMemoryTest, OnlyTheGivenBytesAreRead) {
    // Nothing follows the bytes, not even a zero.
    const auto exact = std::make_unique<char[]>(kGoodFile.size());
    std::copy(kGoodFile.begin(), kGoodFile.end(), exact.get());
    const Reading ofExact = ReadingOfBytes(std::string_view(exact.get(), kGoodFile.size()), "walk.gpx");
    EXPECT_EQ(ofExact.error, "");
    EXPECT_EQ(CountsOf(ofExact.document), "1 waypoints, 0 routes, 0 tracks");

    const std::string more = "<" + kGoodFile + "<not well-formed";
    const Reading ofPart = ReadingOfBytes(std::string_view(more).substr(1, kGoodFile.size()), "walk.gpx");
    EXPECT_EQ(ofPart.error, "");
    EXPECT_TRUE(IsSameModel(ofExact.document, ofPart.document));
}

TEST(GpxParserMemoryTest, TheBytesAreNotCopied) {
    // Many small nodes, so that a large request could only be for a copy of the whole.
    const std::string plain = Gpx11(Repeat("<wpt lat='1' lon='2'><name>n</name></wpt>", 100000));
    for (const std::string& bytes : {plain, "<?xml version='1.0' encoding='ISO-8859-1'?>" + plain}) {
        GpxParser parser;
        GpxDocument document;
        const XercesMemory memory;
        parser.Parse(bytes, u"walk.gpx", document);
        EXPECT_EQ(document.GetWaypointCount(), 100000U);
        EXPECT_LT(memory.LargestRequest(), bytes.size() / 4);
        // The XML parser reads only the second.
        EXPECT_EQ(memory.Requests() > 100U, bytes != plain);
    }
}

TEST(GpxParserMemoryTest, NothingLeaks) {
    GpxParser parser;
    GpxDocument document;
    const auto readAll = [&] {
        parser.Parse(kGoodFile, u"good.gpx", document);
        EXPECT_THROW(parser.Parse(std::string_view("<bad"), u"bad.gpx", document), dbc::postcondition_error);
        EXPECT_THROW(parser.Parse(std::string_view("<kml/>"), u"x", document), dbc::postcondition_error);
    };
    readAll();
    const XercesMemory memory;
    for (int round = 0; round < 20; ++round) {
        readAll();
        EXPECT_EQ(memory.BlocksInUse(), 0U);
    }
    EXPECT_GT(memory.Requests(), 20U);
}

TEST(GpxParserMemoryTest, ANameOpensNothing) {
    const TemporaryFolder folder;
    WriteBytes(folder / "other.gpx", Gpx11("<trk/>"));
    const XercesFiles xercesFiles;
    const SystemFiles files;
    const XercesNet net;
    for (const std::string& name :
         {std::string("http://missing.invalid/walk.gpx"), std::string("ftp://x/y"),
          "file://" + (folder / "other.gpx").string(), (folder / "other.gpx").string(),
          (folder / "missing.gpx").string(), (folder / "").string(), std::string("a b%zz?#")}) {
        const Reading reading = ReadingOfBytes(kGoodFile, name);
        EXPECT_EQ(reading.error, "") << name;
        EXPECT_EQ(CountsOf(reading.document), "1 waypoints, 0 routes, 0 tracks") << name;
        EXPECT_FALSE(ReadingOfBytes("<bad", name).error.empty()) << name;
    }
    EXPECT_EQ(files.Opened(), 0U);
    EXPECT_EQ(xercesFiles.Opened(), 0U);
    EXPECT_EQ(net.Requests(), 0U);
}

// Declarations for everything in the document, so that it is valid.
std::string WithEntity(const std::string& entity) {
    return "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ATTLIST gpx version CDATA #IMPLIED xmlns CDATA #FIXED "
           "'http://www.topografix.com/GPX/1/1'><!ELEMENT name ANY>" +
           entity + "]><gpx version='1.1'><name>&e;</name></gpx>";
}

TEST(GpxParserMemoryTest, RelativeNamesAreResolvedAgainstTheName) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "below");
    WriteBytes(folder / "below/part.txt", "from below");
    WriteBytes(folder / "part.txt", "from beside");
    const std::string bytes = WithEntity("<!ENTITY e SYSTEM 'part.txt'>");
    EXPECT_EQ(NameOf(ReadingOfBytes(bytes, (folder / "walk.gpx").string()).document), "from beside");
    EXPECT_EQ(NameOf(ReadingOfBytes(bytes, (folder / "below/walk.gpx").string()).document), "from below");
    EXPECT_NE(ReadingOfBytes(bytes, (folder / "missing/walk.gpx").string()).error, "");
}

std::vector<std::string> NotesOf(const RecordingParser& parser) {
    std::vector<std::string> notes;
    for (const RecordingParser::Call& call : parser.calls)
        if (call.kind != "reset")
            notes.push_back(call.kind + " in line " + std::to_string(call.line) + " of " + call.file);
    return notes;
}

TEST(GpxParserMemoryTest, TheErrorHandlerHearsOfEverything) {
    using Notes = std::vector<std::string>;
    const struct {
        std::string bytes;
        Notes notes;
    } rows[] = {
        {kGoodFile, {}},
        {"<gpx>\n<a>\n</gpx>", {"fatal error in line 3 of a/walk.gpx"}},
        {"<!DOCTYPE gpx [\n<!ELEMENT gpx EMPTY><!ATTLIST gpx a CDATA #REQUIRED>]>\n<gpx/>",
         {"error in line 3 of a/walk.gpx"}},
        {"<?xml version='1.0' encoding='UTF-16'?>" + kGoodFile, {"warning in line 1 of a/walk.gpx"}},
    };
    for (const auto& row : rows) {
        RecordingParser parser;
        GpxDocument document;
        try {
            parser.Parse(std::string_view(row.bytes), u"a/walk.gpx", document);
        } catch (const dbc::postcondition_error&) {
            EXPECT_FALSE(row.notes.empty());
        }
        EXPECT_EQ(NotesOf(parser), row.notes) << row.bytes;
        EXPECT_GE(parser.Resets(), 1U);
    }
}

TEST(GpxParserMemoryTest, AHandlerThatHearsNothingLetsAnInvalidDocumentPass) {
    struct Deaf : GpxParser {
        void error(const xercesc::SAXParseException&) override {}
    } parser;
    GpxDocument document;
    parser.Parse("<!DOCTYPE gpx [<!ELEMENT other EMPTY>]>" + kGoodFile, u"walk.gpx", document);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
}

} // namespace
} // namespace vexaTransferLib
