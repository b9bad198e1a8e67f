// SPDX-License-Identifier: MIT

// The reports to an observer about attributes that nothing reads, from every source of a file.

#include <vexaTransferLib/reader/UnreadAttributes.h>

#include "support/ObservedReading.h"

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kUnread = " unread loss: The library does not keep this attribute.\n";

std::string Extensions(const std::string& children) {
    return "<extensions xmlns:g='http://www.groundspeak.com/cache/1/0/1' "
           "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>" +
           children + "</extensions>";
}

TEST(UnreadAttributesTest, TheCreatorOfAFileIsNoLoss) {
    for (const char* version : {"1.0", "1.1"})
        EXPECT_EQ(ReportsOf(GpxFileText(version, "creator='c'", "")),
                  "gpx@creator unread: The library does not keep this attribute.\n");
}

TEST(UnreadAttributesTest, NamespacesSchemasAndEmptyAttributesAreNoData) {
    EXPECT_EQ(ReportsOf(GpxFileText("1.1",
                                    "xmlns:x='urn:x' xmlns:s='http://www.w3.org/2001/XMLSchema-instance' "
                                    "s:schemaLocation='a b' creator=''",
                                    "<wpt lat='1' lon='2' id=''><ele s:nil='true' xmlns=''/></wpt>")),
              "gpx/wpt/ele foreign: It is in no namespace, not that of GPX 1.1.\n");
}

TEST(UnreadAttributesTest, EveryKindOfElementIsLookedAtInBothVersions) {
    const std::string children =
        "<metadata a='1'><name a='2'>n</name></metadata><wpt lat='1' lon='2' id='3'><ele u='4'>5</ele>"
        "<name l='5'/></wpt><rte n='6'><name n='7'>n</name><rtept lat='1' lon='2' n='8'/></rte>"
        "<trk n='9'><trkseg n='10'><trkpt lat='1' lon='2' n='11'><time z='12'>"
        "2009-01-15T10:20:30Z</time></trkpt></trkseg></trk>";
    for (const char* version : {"1.0", "1.1"})
        EXPECT_EQ(ReportsOf(GpxFileText(version, "a='0'", children)),
                  "gpx@a" + kUnread + "gpx/metadata/name@a" + kUnread + "gpx/metadata@a" + kUnread +
                      "gpx/wpt@id" + kUnread + "gpx/wpt/ele@u" + kUnread + "gpx/wpt/name@l" + kUnread +
                      "gpx/rte@n" + kUnread + "gpx/rte/name@n" + kUnread + "gpx/rte/rtept@n" + kUnread +
                      "gpx/trk@n" + kUnread + "gpx/trk/trkseg@n" + kUnread + "gpx/trk/trkseg/trkpt@n" +
                      kUnread + "gpx/trk/trkseg/trkpt/time@z" + kUnread);
}

TEST(UnreadAttributesTest, OfALinkOnlyTheAddressIsRead) {
    EXPECT_EQ(
        ReportsOfChildren("<wpt lat='1' lon='2'><link href='h' title='t'><text n='1'>x</text></link></wpt>"),
        "gpx/wpt/link/text@n" + kUnread + "gpx/wpt/link@title" + kUnread);
}

TEST(UnreadAttributesTest, AGeocacheKeepsNothingButTheIdsOfItsLogs) {
    const std::string cache =
        "<g:cache id='1' available='True' archived='False'><g:name>n</g:name><g:owner id='2'>o</g:owner>"
        "<g:short_description html='False'>s</g:short_description><g:long_description html='True'>l"
        "</g:long_description><g:logs><g:log id='3'><g:date>d</g:date><g:finder id='4'>f</g:finder>"
        "<g:text encoded='False'>t</g:text></g:log></g:logs><g:travelbugs><g:travelbug id='5' ref='r'>"
        "<g:name>b</g:name></g:travelbug></g:travelbugs></g:cache>";
    const std::string expected = "cache/owner@id" + kUnread + "cache/short_description@html" + kUnread +
                                 "cache/long_description@html" + kUnread + "cache/logs/log/finder@id" +
                                 kUnread + "cache/logs/log/text@encoded" + kUnread +
                                 "cache/travelbugs/travelbug@id" + kUnread +
                                 "cache/travelbugs/travelbug@ref" + kUnread + "cache@archived" + kUnread +
                                 "cache@available" + kUnread + "cache@id" + kUnread;
    const auto after = [&expected](const std::string& path) {
        std::string lines = expected;
        for (std::size_t at = 0; at < lines.size(); at = lines.find('\n', at) + 1)
            lines.insert(at, path);
        return lines;
    };
    EXPECT_EQ(ReportsOfChildren("<wpt lat='1' lon='2'>" + Extensions(cache) + "</wpt>"),
              after("gpx/wpt/extensions/"));
    EXPECT_EQ(ReportsOf(GpxFileText("1.0", "xmlns:g='http://www.groundspeak.com/cache/1/0'",
                                    "<wpt lat='1' lon='2'>" + cache + "</wpt>")),
              after("gpx/wpt/"));
}

TEST(UnreadAttributesTest, OfTheVendorsElementsOnlyFormFieldsHaveAttributes) {
    EXPECT_EQ(ReportsOfChildren(
                  "<wpt lat='1' lon='2'>" +
                  Extensions("<t:formdata n='1'><t:formstring key='k' modtime='2009-01-15T10:20:30Z' "
                             "type='2'>v</t:formstring></t:formdata><t:objectid n='3'>g</t:objectid>") +
                  "</wpt><trk>" + Extensions("<t:color n='4'>5</t:color>") + "</trk>"),
              "gpx/wpt/extensions/objectid@n" + kUnread + "gpx/wpt/extensions/formdata@n" + kUnread +
                  "gpx/wpt/extensions/formdata/formstring@type" + kUnread + "gpx/trk/extensions/color@n" +
                  kUnread);
}

TEST(UnreadAttributesTest, AnotherProgramsAttributeIsALoss) {
    EXPECT_EQ(ReportsOfChildren("<wpt xmlns:x='urn:x' lat='1' lon='2' x:id='3' xml:lang='de'/>"),
              "gpx/wpt@x:id foreign loss: The namespace of the attribute is \"urn:x\".\n"
              "gpx/wpt@xml:lang foreign loss: The namespace of the attribute is "
              "\"http://www.w3.org/XML/1998/namespace\".\n");
}

TEST(UnreadAttributesTest, AnAttributeInANamespaceOfDocumentsIsALoss) {
    EXPECT_EQ(ReportsOfChildren("<wpt xmlns:a='http://www.topografix.com/GPX/1/1' "
                                "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0' "
                                "lat='1' lon='2' a:lat='3' t:id='4'/>"),
              "gpx/wpt@a:lat" + kUnread + "gpx/wpt@t:id" + kUnread);
}

TEST(UnreadAttributesTest, AreSortedByName) {
    EXPECT_EQ(ReportsOfChildren("<trk z='1' a='2' m='3'/>"),
              "gpx/trk@a" + kUnread + "gpx/trk@m" + kUnread + "gpx/trk@z" + kUnread);
}

TEST(UnreadAttributesTest, NothingIsSaidOfTheAttributesOfASkippedElement) {
    EXPECT_EQ(ReportsOfChildren(
                  "<extensions a='1'/><trk><number a='2'>1</number><name a='3'><b/>n</name>"
                  "<trkseg><trkpt lat='x' lon='2' a='4'/></trkseg></trk><wpt lat='1' lon='2' a='5'/>"),
              "gpx/extensions unknown loss: The library does not keep this element.\n"
              "gpx/trk/number unknown loss: The library does not keep this element.\n"
              "gpx/trk/name unreadable loss: Its text comes after something else and is not read.\n"
              "gpx/trk/name@a" +
                  kUnread +
                  "gpx/trk/trkseg/trkpt refused loss: Unable to read a GPX point's latitude.\n"
                  "gpx/wpt order loss: It comes after a route or a track.\n");
    EXPECT_EQ(
        ReportsOfChildren("<wpt lat='1' lon='2'><ele a='1'>high</ele><fix a='2'>4d</fix><url a='3'>u</url>" +
                          Extensions("<g:cache a='4'><g:logs><g:log a='5'/></g:logs></g:cache>") + "</wpt>"),
        "gpx/wpt/ele unreadable loss: \"high\" is not a number.\n"
        "gpx/wpt/fix unreadable loss: \"4d\" is not a kind of fix.\n"
        "gpx/wpt/url version loss: GPX 1.1 has no such element.\n"
        "gpx/wpt/extensions/cache/logs/log incomplete loss: A log without date, finder or text is not kept.\n"
        "gpx/wpt/extensions/cache@a" +
            kUnread);
}

TEST(UnreadAttributesTest, AnAttributeThatAGrammarAddsIsNotOfTheFile) {
    EXPECT_EQ(
        ReportsOf(
            "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ATTLIST gpx version CDATA #IMPLIED xmlns CDATA #IMPLIED>"
            "<!ELEMENT trk ANY><!ATTLIST trk n CDATA 'added'>]>" +
            GpxFileText("1.1", "", "<trk/><trk n='own'/>")),
        "gpx/trk@n" + kUnread);
}

} // namespace
} // namespace vexaTransferLib
