// SPDX-License-Identifier: MIT

// Reading files completely, whatever their encoding and form: the results, and what happens when they cannot be read.

#include "support/CompleteRead.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/RecordingObserver.h"
#include "support/SmallStack.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxError.h>

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// Two lines before the second waypoint, which has something of everything that the encodings write differently.
std::string WithName(const std::string& name) {
    return Gpx11("<wpt lat='1' lon='2'><name>a</name></wpt>\n\n<wpt lat='3' lon='4'><name>" + name +
                 " &lt;&amp;&gt; \"x\"</name></wpt>");
}

const std::string kPlain = WithName("caf\xC3\xA9");
const std::string kLatin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>" + WithName("caf\xE9");

// The start of a document type, for which a file must be valid.
const std::string kGrammar =
    "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ELEMENT wpt ANY><!ELEMENT name ANY><!ATTLIST gpx version "
    "CDATA #IMPLIED xmlns CDATA 'http://www.topografix.com/GPX/1/1'><!ATTLIST wpt lat CDATA "
    "#IMPLIED lon CDATA '4'>";

std::string Valid(const std::string& children) {
    return "<gpx version='1.1'>" + children + "</gpx>";
}

struct Form {
    const char* name;
    std::string bytes;
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

class CompleteFormsTest : public testing::TestWithParam<Form> {};

INSTANTIATE_TEST_SUITE_P(
    Forms, CompleteFormsTest,
    testing::Values(
        Form{"Plain", kPlain}, Form{"ByteOrderMark", "\xEF\xBB\xBF" + kPlain}, Form{"Latin1", kLatin1},
        Form{"Utf16LittleEndian", "\xFF\xFE" + Wide(WithName("caf\xE9"), 2, false)},
        Form{"Utf16BigEndian", "\xFE\xFF" + Wide(WithName("caf\xE9"), 2, true)},
        Form{"DocumentType", "<!DOCTYPE gpx>" + kPlain},
        Form{"Entities", kGrammar +
                             "<!ENTITY e 'caf&#233;'><!ENTITY w \"<wpt lat='1' "
                             "lon='2'><name>a</name></wpt>\">]>" +
                             Valid("&w;\n\n<wpt lat='3' lon='4'><name>&e; &lt;&amp;&gt; \"x\"</name></wpt>")},
        Form{"DefaultAttributes",
             kGrammar + "]>" +
                 Valid("<wpt lat='1' lon='2'><name>a</name></wpt>\n\n"
                       "<wpt lat='3'><name>caf\xC3\xA9 &lt;&amp;&gt; \"x\"</name></wpt>")},
        Form{"Xml11", "<?xml version='1.1'?>" + kPlain},
        Form{"NamesThatAreNotAscii",
             Gpx11("<wpt lat='1' lon='2'><name>a</name></wpt>\n\n<wpt lat='3' lon='4'><name>caf\xC3\xA9 "
                   "&lt;&amp;&gt; \"x\"</name><\xC3\xA9t\xC3\xA9 \xC3\xA8='1'/></wpt>")},
        Form{"DeepLevels", Gpx11("<wpt lat='1' lon='2'><name>a</name></wpt>\n\n<wpt lat='3' lon='4'><name>"
                                 "caf\xC3\xA9 &lt;&amp;&gt; \"x\"</name><extensions>" +
                                 Repeat("<x>", 300) + Repeat("</x>", 300) + "</extensions></wpt>")}),
    [](const auto& form) { return std::string(form.param.name); });

TEST_P(CompleteFormsTest, GivesTheSameModelAsAPlainFile) {
    const CompleteRead read = ReadCompletely(GetParam().bytes);
    EXPECT_EQ(read.error, "");
    EXPECT_EQ(read.reports, "");
    EXPECT_EQ(read.notices, "");
    EXPECT_TRUE(IsSameModel(DocumentOf(kPlain), read.document));
}

TEST_P(CompleteFormsTest, ElementsHaveTheLinesOfTheFile) {
    const GpxDocument document = DocumentOf(GetParam().bytes);
    ASSERT_EQ(document.GetWaypointCount(), 2U);
    const GpxElement second = (document.GetWaypointIter() + 1)->GetElement();
    EXPECT_EQ(document.GetElement().GetLine(), 1U);
    EXPECT_EQ(second.GetLine(), 3U);
    EXPECT_EQ(Utf8(second.FindChild(kGpx11Uri, "name").GetText()), "caf\xC3\xA9 <&> \"x\"");
}

TEST_P(CompleteFormsTest, IsReadFromAFileAndFromAPipeToo) {
    const GpxFile file(GetParam().bytes);
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {file.NarrowPath(), pipe}) {
        std::thread writer([&] {
            if (path == pipe)
                WriteBytes(path, GetParam().bytes);
        });
        const CompleteRead read = ReadCompletelyBy(
            [&](GpxParser& parser, GpxDocument& document) { parser.ParseFile(path, document); });
        writer.join();
        EXPECT_EQ(read.error, "");
        ASSERT_TRUE(IsSameModel(DocumentOf(kPlain), read.document)) << path;
        EXPECT_EQ((read.document.GetWaypointIter() + 1)->GetElement().GetLine(), 3U) << path;
    }
}

TEST(CompleteReadingTest, NoticesHaveTheLinesOfTheFile) {
    const std::string body = Gpx11("\n\n<wpt lat='x'\n lon='2'/>\n<wpt lat='1' lon='2'/>");
    const std::string expected = "gpx/wpt 4 unreadable: It has no position that a point can have.\n";
    EXPECT_EQ(ReadCompletely(body).notices, expected);
    EXPECT_EQ(ReadCompletely("<?xml version='1.0' encoding='ISO-8859-1'?>" + body).notices, expected);
    EXPECT_EQ(ReadCompletely("<!DOCTYPE gpx>" + body).notices, expected);
}

TEST(CompleteReadingTest, KeepsThePlainBytesAsTheyStand) {
    const std::string bytes =
        "\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<!-- c --><gpx  a = '1'>\r\n<x></x >\t</gpx>";
    EXPECT_EQ(DocumentOf(bytes).GetElement().GetXml(), bytes.substr(bytes.find("<gpx"), bytes.size()));
}

TEST(CompleteReadingTest, WhatIsAfterTheRootIsNotReadAndNoError) {
    const GpxDocument document = DocumentOf(Gpx11("<trk/>") + "<!-- <wpt lat='1' lon='2'/> --><?p x?>\n");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
    EXPECT_FALSE(document.GetElement().GetNextSibling());
}

TEST(CompleteReadingTest, ReadsManyFilesOneAfterAnother) {
    GpxParser parser;
    parser.SetComplete();
    GpxDocument document;
    for (int i = 0; i < 3; ++i) {
        EXPECT_NE(ErrorOf([&] { parser.Parse("<gpx><", u"walk.gpx", document); }), "");
        parser.Parse(kLatin1, u"walk.gpx", document);
        parser.Parse(kPlain, u"walk.gpx", document);
        EXPECT_TRUE(document.GetElement());
    }
    parser.SetCompatible();
    parser.Parse(kPlain, u"walk.gpx", document);
    EXPECT_FALSE(document.GetElement());
    EXPECT_EQ(NameOf(document), "walk");
}

// What is no GPX file, and what is ill-formed, in many ways.
const std::string kRefused[] = {
    "",
    " ",
    "text",
    "<gpx>",
    "<gpx></gpx",
    "<gpx>\n\n<wpt></gpx>",
    "<gpx a='1' a='2'/>",
    "<gpx>\n&undefined;</gpx>",
    "<gpx>&#0;</gpx>",
    std::string("<gpx>\0</gpx>", 12),
    "<gpx/>\n\n<gpx/>",
    "<gpx/>text",
    "<gpx><p:x/></gpx>",
    "<gpx xmlns:p=''/>",
    "<gpx>]]></gpx>",
    "<gpx><!-- -- --></gpx>",
    "<gpx>\xFF</gpx>",
    "<gpx><a b='<'/></gpx>",
    "<gpx><?xml version='1.0'?></gpx>",
    "\n<?xml version='1.0'?><gpx/>",
    "<?xml version='1.2'?><gpx/>",
    "<?xml version='1.2'?>\n<gpx><",
    "<?xml version='1.3' encoding='ISO-8859-1'?>\n<gpx/>",
    "<?xml version='2.0'?>\n\n<gpx/>",
    "<?xml version='1.0' encoding='no-such-encoding'?><gpx/>",
    "<!DOCTYPE gpx [<!ELEMENT gpx EMPTY>]><gpx>\n<x/></gpx>",
    "<!DOCTYPE gpx [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><gpx>&a;</gpx>",
    "<!DOCTYPE gpx SYSTEM 'file:///no/such/file.dtd'><gpx/>",
    "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'file:///no/such/file'>]><gpx>&e;</gpx>",
    "<kml/>",
    "\n\n<GPX xmlns='u'\n a='1'/>",
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<kml\n a='\xE9'/>",
};

// The default way knows no line when it needs a DOM.
TEST(CompleteReadingTest, OfAFileWithADocumentTypeThatIsNotGpxTheLineIsKnown) {
    const std::string bytes = "<!DOCTYPE kml>\n<kml/>";
    std::string expected = CompatibleErrorOf(bytes);
    expected.replace(expected.find("line 0"), 6, "line 2");
    EXPECT_EQ(ReadCompletely(bytes).error, expected);
}

// The XML parser takes a zero byte after the root for the end of the file, and UTF-8 for what cannot be UTF-16.
TEST(CompleteReadingTest, ReadsWhatTheXmlParserReads) {
    for (const std::string& bytes :
         {std::string("<gpx/>\0<", 8), std::string("<?xml version='1.0' encoding='UTF-16'?><gpx/>"),
          std::string("<?xml version='1.1'?><gpx/>")}) {
        const CompleteRead read = ReadCompletely(bytes);
        EXPECT_EQ(read.error, "");
        EXPECT_EQ(read.document.GetElement().GetXml().substr(0, 4), "<gpx");
    }
}

TEST(CompleteReadingTest, FailsWithTheErrorOfTheDefaultWayAndLeavesTheDocument) {
    for (const std::string& bytes : kRefused) {
        SCOPED_TRACE(bytes);
        const CompleteRead read = ReadCompletely(bytes);
        EXPECT_EQ(read.error, CompatibleErrorOf(bytes));
        EXPECT_NE(read.error, "");
        EXPECT_TRUE(IsSameModel(UsedDocument(), read.document));
        EXPECT_FALSE(read.document.GetElement());
        EXPECT_EQ(read.reports, "");
    }
}

TEST(CompleteReadingTest, FailsWithTheErrorOfTheDefaultWayForFilesThatCannotBeOpened) {
    const TemporaryFolder folder;
    for (const std::string& path : {(folder / "absent.gpx").string(), std::string()}) {
        const auto errorOf = [&](bool isComplete) {
            GpxParser parser;
            GpxDocument document;
            if (isComplete)
                parser.SetComplete();
            return ErrorOf([&] { parser.ParseFile(path, document); });
        };
        EXPECT_EQ(errorOf(true), errorOf(false));
        EXPECT_NE(errorOf(true), "");
    }
}

TEST(CompleteReadingTest, EveryPrefixOfAFileFailsAsInTheDefaultWay) {
    const std::string bytes = ReadTestData("reader/unusual-but-plain.gpx");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::string prefix = bytes.substr(0, size);
        ASSERT_EQ(ReadCompletely(prefix).error, CompatibleErrorOf(prefix)) << prefix;
    }
}

// A host that ignores the errors of the XML parser gets what could be read.
class IgnoringParser : public GpxParser {
public:
    void error(const xercesc::SAXParseException&) override {}
    void fatalError(const xercesc::SAXParseException&) override {}
};

TEST(CompleteReadingTest, OfAnIllFormedFileWhoseErrorsAreIgnoredTheStartIsRead) {
    IgnoringParser parser;
    parser.SetComplete();
    GpxDocument document;
    parser.Parse("<gpx><wpt lat='1' lon='2'><name>a</name><ele>5</ele", u"walk.gpx", document);
    ASSERT_EQ(document.GetWaypointCount(), 1U);
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetName), "a");
    EXPECT_EQ(document.GetElement().GetXml().substr(0, 5), "<gpx>");
    EXPECT_NE(ErrorOf([&] { parser.Parse("<", u"walk.gpx", document); }), "");
}

std::string LongFile(const std::string& start) {
    return start + Gpx11(Repeat("<wpt lat='1' lon='2'><ele>100</ele></wpt>\n", 10000));
}

class CompleteProgressTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Ways, CompleteProgressTest,
                         testing::Values("", "<?xml version='1.0' encoding='ISO-8859-1'?>", "<!DOCTYPE gpx>"),
                         [](const auto& way) {
                             const std::string start = way.param;
                             return std::string(start.empty() ? "Plain" : start[1] == '?' ? "Events" : "Dtd");
                         });

TEST_P(CompleteProgressTest, IsReportedFromNothingToEverything) {
    const GpxFile file(LongFile(GetParam()));
    const std::uint64_t size = LongFile(GetParam()).size();
    GpxParser parser;
    RecordingObserver observer;
    parser.SetObserver(&observer);
    parser.SetComplete();
    GpxDocument document;
    parser.Parse(file.Path(), document);
    ASSERT_GT(observer.progress.size(), 5U);
    EXPECT_LT(observer.progress.size(), 310U);
    EXPECT_EQ(observer.progress.front().first, 0U);
    EXPECT_EQ(observer.progress.back().first, size);
    std::uint64_t before = 0;
    for (const auto& [bytesRead, bytesInAll] : observer.progress) {
        EXPECT_LE(before, bytesRead);
        EXPECT_EQ(bytesInAll, size);
        before = bytesRead;
    }
}

TEST_P(CompleteProgressTest, CanBeCancelledAtEachCall) {
    const std::string bytes = LongFile(GetParam());
    GpxParser parser;
    parser.SetComplete();
    std::size_t cancelled = 0;
    for (std::string error = "?"; !error.empty();) {
        RecordingObserver observer;
        std::size_t calls = 0;
        observer.goesOn = [&] { return ++calls <= cancelled; };
        parser.SetObserver(&observer);
        GpxDocument document = UsedDocument();
        error = ErrorOf([&] { parser.Parse(bytes, u"walk.gpx", document); });
        if (error.empty())
            break;
        ++cancelled;
        EXPECT_NE(error.find("The reading of the GPX file was cancelled: walk.gpx"), std::string::npos)
            << error;
        EXPECT_TRUE(IsSameModel(UsedDocument(), document));
        ASSERT_EQ(calls, cancelled);
    }
    EXPECT_GT(cancelled, 5U);
}

TEST_P(CompleteProgressTest, TheCallerGetsTheExceptionOfTheObserver) {
    GpxParser parser;
    parser.SetComplete();
    RecordingObserver observer;
    observer.goesOn = []() -> bool { throw std::domain_error("stop"); };
    parser.SetObserver(&observer);
    GpxDocument document = UsedDocument();
    EXPECT_THROW(parser.Parse(LongFile(GetParam()), u"walk.gpx", document), std::domain_error);
    EXPECT_TRUE(IsSameModel(UsedDocument(), document));
}

TEST(CompleteReadingTest, TheCallerGetsTheExceptionOfANotice) {
    class Thrower : public GpxReadObserver {
        void Skipped(const GpxSkippedElement&) override { throw std::domain_error("stop"); }
    } observer;
    GpxParser parser;
    parser.SetComplete();
    parser.SetObserver(&observer);
    GpxDocument document = UsedDocument();
    EXPECT_THROW(parser.Parse(Gpx11("<wpt/>"), u"walk.gpx", document), std::domain_error);
    EXPECT_TRUE(IsSameModel(UsedDocument(), document));
}

} // namespace
} // namespace vexaTransferLib
