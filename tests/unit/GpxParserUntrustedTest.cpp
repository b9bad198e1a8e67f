// SPDX-License-Identifier: MIT

// What the reader refuses in an untrusted file.

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/ModelCompare.h"
#include "support/SystemFiles.h"
#include "support/XercesDoubles.h"

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/GpxParser.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

Reading ReadUntrusted(const std::string& path, const GpxInputLimits& limits = {}) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted(limits);
        parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    });
}

std::string Refusal(const std::string& path, const std::string& why) {
    return std::string(typeid(dbc::postcondition_error).name()) +
           ": The untrusted GPX file was refused: " + path + ". " + why;
}

bool IsUntouched(const GpxDocument& document) {
    return IsSameModel(UsedDocument(), document);
}

const std::string kDocumentType = "It has a document type declaration.";

struct Declaration {
    const char* reason;
    std::string text;
};

void PrintTo(const Declaration& declaration, std::ostream* out) {
    *out << declaration.reason;
}

class DocumentTypeTest : public testing::TestWithParam<Declaration> {};

INSTANTIATE_TEST_SUITE_P(
    Declarations, DocumentTypeTest,
    testing::Values(
        Declaration{"plain", "<!DOCTYPE gpx>"},
        Declaration{"file entity", "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'file:///etc/hostname'>]>"},
        Declaration{"server entity", "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'http://localhost:1/x'>]>"},
        Declaration{"parameter entity", "<!DOCTYPE gpx [<!ENTITY % p SYSTEM 'file:///etc/hostname'>%p;]>"},
        Declaration{"external subset", "<!DOCTYPE gpx SYSTEM 'file:///etc/hostname'>"},
        Declaration{"server subset", "<!DOCTYPE gpx PUBLIC '-//X//Y' 'http://localhost:1/x.dtd'>"},
        Declaration{"expansion", "<!DOCTYPE gpx [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;'>]>"},
        Declaration{"behind a comment", "<!-- c --><?p i?><!DOCTYPE gpx>"},
        Declaration{"of XML 1.1", "<?xml version='1.1'?><!DOCTYPE gpx>"}));

TEST_P(DocumentTypeTest, IsRefusedBeforeAnythingElseIsOpened) {
    const GpxFile file(GetParam().text + Gpx11("<wpt lat='1' lon='2'><name>n</name></wpt>"));
    const XercesFiles xercesFiles;
    const SystemFiles files;
    const XercesNet net;
    const Reading reading = ReadUntrusted(file.NarrowPath());
    EXPECT_EQ(reading.error, Refusal(file.NarrowPath(), kDocumentType));
    EXPECT_TRUE(IsUntouched(reading.document));
    EXPECT_EQ(files.Opened(), 1U);
    EXPECT_EQ(files.StillOpen(), 0U);
    EXPECT_EQ(xercesFiles.Opened(), 0U);
    EXPECT_EQ(net.Requests(), 0U);
}

TEST_P(DocumentTypeTest, IsRefusedByGetParserToo) {
    const GpxFile file(GetParam().text + Gpx11(""));
    const XercesFiles xercesFiles;
    const SystemFiles files;
    const XercesNet net;
    GpxParser parser;
    parser.SetUntrusted();
    try {
        parser.GetParser(file.Path());
        ADD_FAILURE() << "was read";
    } catch (const dbc::postcondition_error& error) {
        EXPECT_EQ(std::string(error.what()),
                  "The untrusted GPX file was refused: " + file.NarrowPath() + ". " + kDocumentType);
    }
    EXPECT_EQ(files.Opened(), 1U);
    EXPECT_EQ(xercesFiles.Opened(), 0U);
    EXPECT_EQ(net.Requests(), 0U);
}

TEST_P(DocumentTypeTest, IsRefusedOfBytesAndOfPipes) {
    const std::string bytes = GetParam().text + Gpx11("");
    const Reading ofBytes([&](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted();
        parser.Parse(bytes, u"mail", document);
    });
    EXPECT_EQ(ofBytes.error, Refusal("mail", kDocumentType));
    const TemporaryFolder folder;
    const std::string path = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { WriteBytes(path, bytes); });
    const Reading ofPipe = ReadUntrusted(path);
    writer.join();
    EXPECT_EQ(ofPipe.error, Refusal(path, kDocumentType));
}

TEST(GpxParserUntrustedTest, APathIsNeverTakenForAnAddress) {
    const GpxFile file(Gpx11(""));
    for (const std::string& address :
         {std::string("http://localhost:1/walk.gpx"), "file://" + file.NarrowPath()}) {
        const XercesNet net;
        const XercesFiles xercesFiles;
        const SystemFiles files;
        const Reading reading = ReadUntrusted(address);
        EXPECT_EQ(reading.error, std::string(typeid(dbc::postcondition_error).name()) +
                                     ": An untrusted GPX file is not read from an address: " + address);
        EXPECT_TRUE(IsUntouched(reading.document));
        EXPECT_EQ(xercesFiles.Opened(), 0U);
        EXPECT_EQ(net.Requests(), 0U);
        EXPECT_EQ(files.Opened(), 0U);
    }
}

TEST(GpxParserUntrustedTest, AfterSetTrustedDeclarationsAreReadAgain) {
    const GpxFile file("<!DOCTYPE gpx>" + Gpx11("<wpt lat='1' lon='2'/>"));
    GpxParser parser;
    GpxDocument document;
    parser.SetUntrusted();
    EXPECT_THROW(parser.Parse(file.Path(), document), dbc::postcondition_error);
    parser.SetTrusted();
    parser.Parse(file.Path(), document);
    EXPECT_EQ(document.GetWaypointCount(), 1U);
}

TEST(GpxParserUntrustedTest, OrdinaryFilesAreReadAsEver) {
    const GpxFile full(ReadTestData("cli/hand-written.gpx"));
    EXPECT_EQ(ReadUntrusted(full.NarrowPath()).error, "");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(VEXA_TEST_DATA)) {
        const std::string path = entry.path().string();
        if (entry.path().extension() != ".gpx")
            continue;
        SCOPED_TRACE(path);
        const Reading trusted = ReadingOfFile(path);
        const Reading untrusted = ReadUntrusted(path);
        EXPECT_EQ(untrusted.error, trusted.error);
        EXPECT_TRUE(IsSameModel(trusted.document, untrusted.document));
        EXPECT_EQ(untrusted.written, trusted.written);
    }
}

std::string Nested(std::size_t depth) {
    // The root is the first level.
    return Gpx11(Repeat("<x>", depth - 1) + Repeat("</x>", depth - 1));
}

struct Limit {
    const char* name;
    GpxInputLimits limits;
    std::string within;
    std::string beyond;
    std::string why;
};

void PrintTo(const Limit& limit, std::ostream* out) {
    *out << limit.name;
}

GpxInputLimits Limits(std::uint64_t GpxInputLimits::*field, std::uint64_t value) {
    GpxInputLimits limits;
    limits.*field = value;
    return limits;
}

std::string Point(const char* name) {
    return "<" + std::string(name) + " lat='1' lon='2'/>";
}

class InputLimitTest : public testing::TestWithParam<Limit> {};

INSTANTIATE_TEST_SUITE_P(
    Limits, InputLimitTest,
    testing::Values(
        Limit{"depth",
              {},
              Nested(256),
              Nested(257),
              "Its elements are nested deeper than 256 (limit of element depth)."},
        Limit{"adjusted depth", Limits(&GpxInputLimits::elementDepth, 3), Nested(3), Nested(4),
              "Its elements are nested deeper than 3 (limit of element depth)."},
        Limit{"siblings are not deep", Limits(&GpxInputLimits::elementDepth, 2),
              Gpx11(Repeat("<x/><y></y>", 50)), Nested(3),
              "Its elements are nested deeper than 2 (limit of element depth)."},
        Limit{"text", Limits(&GpxInputLimits::textLength, 100),
              Gpx11("<metadata><name>" + std::string(100, 'a') + "</name></metadata>"),
              Gpx11("<metadata><name>" + std::string(101, 'a') + "</name></metadata>"),
              "One of its texts is longer than 100 (limit of text length)."},
        Limit{"text in pieces", Limits(&GpxInputLimits::textLength, 100),
              Gpx11("<x>" + std::string(96, 'a') + "&amp;<!-- c --><![CDATA[bbb]]></x>"),
              Gpx11("<x>" + std::string(96, 'a') + "&amp;<!-- c --><![CDATA[bbbb]]></x>"),
              "One of its texts is longer than 100 (limit of text length)."},
        Limit{"comment", Limits(&GpxInputLimits::textLength, 100),
              Gpx11("<!--" + std::string(100, 'a') + "-->"), Gpx11("<!--" + std::string(101, 'a') + "-->"),
              "One of its texts is longer than 100 (limit of text length)."},
        Limit{"processing instruction", Limits(&GpxInputLimits::textLength, 100),
              Gpx11("<?p " + std::string(100, 'a') + "?>"), Gpx11("<?p " + std::string(101, 'a') + "?>"),
              "One of its texts is longer than 100 (limit of text length)."},
        Limit{"attribute value", Limits(&GpxInputLimits::textLength, 100),
              Gpx11("<x a='" + std::string(100, 'a') + "'/>"),
              Gpx11("<x a='" + std::string(101, 'a') + "'/>"),
              "One of its texts is longer than 100 (limit of text length)."},
        Limit{"attributes", Limits(&GpxInputLimits::attributes, 20), Gpx11("<x a='1' b='2'/>"),
              "<gpx version='1.1' a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' "
              "m='' n='' o='' p='' q=''"
              " r='' s='' t=''/>",
              "One of its elements has more attributes than 20 (limit of attributes)."},
        Limit{"points", Limits(&GpxInputLimits::points, 3),
              Gpx11(Point("wpt") + "<rte>" + Point("rtept") + "</rte><trk><trkseg>" + Point("trkpt") +
                    "</trkseg></trk>"),
              Gpx11(Point("wpt") + "<rte>" + Point("rtept") + "</rte><trk><trkseg>" + Point("trkpt") +
                    Point("trkpt") + "</trkseg></trk>"),
              "It has more points than 3 (limit of points)."},
        // The root is a name, and it declares seven prefixes and six namespaces.
        Limit{"names", Limits(&GpxInputLimits::names, 17), Gpx11("<a/><b/><a/><gpx11:a/><gpx11:a/>"),
              Gpx11("<a/><b/><a/><gpx11:a/><gpx10:a/>"),
              "It has more different names than 17 (limit of names)."},
        Limit{"names of namespaces", Limits(&GpxInputLimits::names, 17),
              Gpx11("<gpx xmlns:a='b'/><gpx xmlns:a='c'/><gpx a='1' d='e'/>"),
              Gpx11("<gpx xmlns:a='b'/><gpx xmlns:a='c'/><gpx xmlns='d'/>"),
              "It has more different names than 17 (limit of names)."},
        Limit{"namespaces", Limits(&GpxInputLimits::namespaces, 9),
              Gpx11(Repeat("<x xmlns:a='u'><x xmlns='v'></x></x><x xmlns:b='u'/>", 3)),
              Gpx11("<x xmlns:a='u'><x xmlns='v'><x xmlns='u'/></x></x>"),
              "It has more namespace declarations in scope than 9 (limit of namespaces)."},
        Limit{"namespace length", Limits(&GpxInputLimits::namespaceLength, 100),
              Gpx11("<x xmlns='" + std::string(100, 'n') + "'/>"),
              Gpx11("<x xmlns='" + std::string(101, 'n') + "'/>"),
              "One of its namespaces is longer than 100 (limit of namespace length)."},
        Limit{"tag bytes", Limits(&GpxInputLimits::tagBytes, 1000),
              Gpx11("<x a='" + std::string(991, 'a') + "'/>"),
              Gpx11("<x a='" + std::string(992, 'a') + "'/>"),
              "One of its start tags has more bytes than 1000 (limit of tag bytes)."}));

TEST_P(InputLimitTest, IsReadUpToAndRefusedBeyond) {
    const GpxFile within(GetParam().within);
    EXPECT_EQ(ReadUntrusted(within.NarrowPath(), GetParam().limits).error, "");
    const GpxFile beyond(GetParam().beyond);
    const Reading refused = ReadUntrusted(beyond.NarrowPath(), GetParam().limits);
    EXPECT_EQ(refused.error, Refusal(beyond.NarrowPath(), GetParam().why));
    EXPECT_TRUE(IsUntouched(refused.document));
    EXPECT_EQ(refused.written, "");
    EXPECT_EQ(ReadingOfFile(beyond.NarrowPath()).error, "");
}

TEST_P(InputLimitTest, HoldsForTheDom) {
    GpxParser parser;
    parser.SetUntrusted(GetParam().limits);
    const GpxFile within(GetParam().within);
    GpxDocument document;
    parser.GetParser(within.Path());
    // Points are not counted when only the DOM is built.
    if (GetParam().limits.points < 100)
        return;
    EXPECT_THROW(parser.GetParser(GpxFile(GetParam().beyond).Path()), dbc::postcondition_error);
}

struct Objects {
    const char* name;
    std::string three;
    std::string four;
};

void PrintTo(const Objects& objects, std::ostream* out) {
    *out << objects.name;
}

std::string Waypoint(const std::string& children) {
    return "<wpt lat='1' lon='2'><extensions>" + children + "</extensions></wpt>";
}

class ObjectLimitTest : public testing::TestWithParam<Objects> {};

const std::string kLog = "<groundspeak:log><groundspeak:text>t</groundspeak:text></groundspeak:log>";
const std::string kBug =
    "<groundspeak:travelbug><groundspeak:name>b</groundspeak:name></groundspeak:travelbug>";
const std::string kField = "<tarvik:formstring key='k'>v</tarvik:formstring>";

std::string Cache(const std::string& children) {
    return Waypoint("<groundspeak:cache>" + children + "</groundspeak:cache>");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ObjectLimitTest,
    testing::Values(
        Objects{"routes", Repeat("<rte/>", 3), Repeat("<rte/>", 4)},
        Objects{"tracks", Repeat("<trk/>", 3), Repeat("<trk/>", 4)},
        Objects{"segments", "<trk><trkseg/><trkseg/></trk>", "<trk><trkseg/><trkseg/><trkseg/></trk>"},
        Objects{"geocaches", Repeat(Cache(""), 3), Repeat(Cache(""), 4)},
        Objects{"logs", Cache("<groundspeak:logs>" + kLog + kLog + "</groundspeak:logs>"),
                Cache("<groundspeak:logs>" + kLog + kLog + kLog + "</groundspeak:logs>")},
        Objects{"travel bugs", Cache("<groundspeak:travelbugs>" + kBug + kBug + "</groundspeak:travelbugs>"),
                Cache("<groundspeak:travelbugs>" + kBug + kBug + kBug + "</groundspeak:travelbugs>")},
        Objects{"form attributes", Waypoint("<tarvik:formdata>" + Repeat(kField, 3) + "</tarvik:formdata>"),
                Waypoint("<tarvik:formdata>" + Repeat(kField, 4) + "</tarvik:formdata>")},
        Objects{"all together", "<rte/><trk><trkseg/></trk>",
                Waypoint("<tarvik:formdata>" + kField + "</tarvik:formdata>") +
                    "<rte/><trk><trkseg/></trk>"}));

TEST_P(ObjectLimitTest, IsReadUpToAndRefusedBeyond) {
    const GpxInputLimits limits = Limits(&GpxInputLimits::objects, 3);
    const GpxFile three(Gpx11(GetParam().three));
    EXPECT_EQ(ReadUntrusted(three.NarrowPath(), limits).error, "");
    const GpxFile four(Gpx11(GetParam().four));
    const Reading refused = ReadUntrusted(four.NarrowPath(), limits);
    EXPECT_EQ(refused.error, Refusal(four.NarrowPath(), "It has more objects than 3 (limit of objects)."));
    EXPECT_TRUE(IsUntouched(refused.document));
    EXPECT_EQ(ReadingOfFile(four.NarrowPath()).error, "");
}

TEST(GpxParserUntrustedTest, AnEncodingThatHidesMarkupIsRefused) {
    const std::string bytes = "<?xml version='1.0' encoding='UTF-7'?>" + Gpx11("");
    const GpxFile file(bytes);
    EXPECT_EQ(ReadingOfFile(file.NarrowPath()).error, "");
    const std::string why = "Its encoding is read from trusted files only: UTF-7.";
    EXPECT_EQ(ReadUntrusted(file.NarrowPath()).error, Refusal(file.NarrowPath(), why));
}

TEST(GpxParserUntrustedTest, IllFormedContentBeforeALimitIsReportedAsSuch) {
    std::string attributes;
    for (int i = 0; i < 2000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    const std::string tooMany = "<x" + attributes + "/>";
    const GpxFile file(Gpx11("<a></b>" + std::string(200, ' ') + tooMany));
    EXPECT_EQ(ReadUntrusted(file.NarrowPath()).error, ReadingOfFile(file.NarrowPath()).error);
    EXPECT_NE(ReadUntrusted(file.NarrowPath()).error, "");
}

/// The memory that Xerces requests until these bytes are refused.
std::size_t RequestsToRefuse(const std::string& bytes) {
    const XercesMemory memory;
    {
        GpxParser parser;
        GpxDocument document;
        parser.SetUntrusted();
        EXPECT_THROW(parser.Parse(bytes, u"hostile", document), dbc::postcondition_error);
        EXPECT_THROW(parser.GetParser(GpxFile(bytes).Path()), dbc::postcondition_error);
    }
    EXPECT_EQ(memory.BlocksInUse(), 0U);
    return memory.Requests();
}

using MakeShape = std::string (*)(std::size_t);

TEST(GpxParserUntrustedTest, RefusingALongerFileCostsNoMore) {
    const MakeShape shapes[] = {
        [](std::size_t count) {
            std::string attributes;
            for (std::size_t i = 0; i < count; ++i)
                attributes += " a" + std::to_string(i) + "=''";
            return Gpx11("<x" + attributes + "/>");
        },
        [](std::size_t count) {
            std::string names;
            for (std::size_t i = 0; i < count; ++i)
                names += "<a" + std::to_string(i) + "/>";
            return Gpx11(names);
        },
        [](std::size_t count) {
            std::string levels;
            for (std::size_t i = 0; i < count / 50; ++i) {
                levels += "<x";
                for (std::size_t k = 0; k < 50; ++k)
                    levels += " xmlns:p" + std::to_string(k) + "='u'";
                levels += ">";
            }
            return Gpx11(levels);
        },
        [](std::size_t count) {
            return "<?xml version='1.0' encoding='UTF-7'?>" + Gpx11(Repeat("<x/>", count));
        },
        [](std::size_t count) { return Gpx11("<x a='" + std::string(count * 1000, 'a') + "'/>"); },
        [](std::size_t count) { return Gpx11("<!--" + std::string(count * 17000, 'a')); },
    };
    for (const MakeShape shape : shapes) {
        const std::size_t once = RequestsToRefuse(shape(5000));
        EXPECT_LE(RequestsToRefuse(shape(10000)), once) << &shape - shapes;
    }
}

TEST(GpxParserUntrustedTest, NothingIsLostWhereverTheBytesAreRefused) {
    const std::string ebcdic = "\x4C\x6F\xA7\x94\x93\x40";
    for (const std::string& bytes :
         {ebcdic, ebcdic + std::string(100000, ' '), "<?xml version='1.0' encoding='UTF-7'?>" + Gpx11(""),
          "<" + std::string(5000000, 'x'), std::string(100000, ' ') + "<!DOCTYPE x>",
          "<!DOCTYPE " + std::string(200000, 'x')})
        RequestsToRefuse(bytes);
}

TEST(GpxParserUntrustedTest, TheDefaultLimitsOfTextsAndAttributesAreThoseOfTheHeader) {
    const auto errorOf = [](const std::string& bytes) {
        return Reading([&](GpxParser& parser, GpxDocument& document) {
                   parser.SetUntrusted();
                   parser.Parse(bytes, u"big", document);
               })
            .error;
    };
    const std::size_t mebibytes = 16 * 1024 * 1024;
    EXPECT_EQ(errorOf(Gpx11("<x>" + std::string(mebibytes, 'a') + "</x>")), "");
    EXPECT_EQ(errorOf(Gpx11("<x>" + std::string(mebibytes + 1, 'a') + "</x>")),
              Refusal("big", "One of its texts is longer than 16777216 (limit of text length)."));
    std::string attributes;
    for (int i = 0; i < 1024; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(errorOf(Gpx11("<x" + attributes + "/>")), "");
    EXPECT_EQ(errorOf(Gpx11("<x" + attributes + " b=''/>")),
              Refusal("big", "One of its elements has more attributes than 1024 (limit of attributes)."));
}

} // namespace
} // namespace vexaTransferLib
