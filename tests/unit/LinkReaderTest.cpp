// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LinkReader.h>

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

std::string Parsed(const std::string& xml) {
    const DomTree tree(xml);
    GpxUrl link(u"before");
    link.SetUrlText(u"text before");
    link.SetUrlType(u"type before");
    GpxParser().ParseLinkNode(tree.Root(), link);
    return LinkText(link);
}

TEST(LinkReaderTest, ReadsAddressTextAndType) {
    struct Row {
        const char* xml;
        const char* link;
    };
    constexpr Row kRows[] = {
        {"<link href='http://a/?x=1&amp;y=2'><text>T</text><type>text/html</type></link>",
         "http://a/?x=1&y=2|T|text/html"},
        {"<link href='u'/>", "u|-|-"},
        {"<link href=' '/>", " |-|-"},
        {"<link href='u'><type>m</type></link>", "u|-|m"},
        {"<link href='u'><text/><type></type></link>", "u|-|-"},
        {"<link href='u'><text>a</text><text>b</text><text/></link>", "u|b|-"},
        {"<link href='u'><text> a </text></link>", "u| a |-"},
        {"<link href='u'><text><![CDATA[<b>]]></text></link>", "u|<b>|-"},
        {"<link href='u'><text><b>a</b></text></link>", "u|-|-"},
        {"<link href='u'><Text>a</Text><name>b</name>c</link>", "u|-|-"},
        {"<link href='u' xmlns:o='urn:o'><o:text>a</o:text><o:type>b</o:type></link>", "u|a|b"},
        {"<anything href='u'><text>a</text></anything>", "u|a|-"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Parsed(row.xml), row.link) << row.xml;
}

constexpr char kNoHref[] = "A link element was missing the href attribute.";

TEST(LinkReaderTest, WithoutHrefTheLinkIsRefusedAndTheOutputUnchanged) {
    GpxParser parser;
    for (const char* xml :
         {"<link/>", "<link href=''/>", "<link Href='u'/>", "<link xmlns:o='urn:o' o:href='u'/>"}) {
        const DomTree tree(xml);
        GpxUrl link(u"before");
        EXPECT_FAILURE(parser.ParseLinkNode(tree.Root(), link), dbc::postcondition_error, kNoHref,
                       kParserSource)
            << xml;
        EXPECT_EQ(LinkText(link), "before|-|-");
    }
}

FakeNodePtr Link(std::vector<FakeNodePtr> children) {
    const FakeNodePtr link = Gpx11Node(u"link", std::move(children));
    link->attributes = {{u"href", u"u"}};
    return link;
}

TEST(LinkReaderTest, WithoutAChildListTheLinkIsRefusedAndTheOutputUnchanged) {
    GpxUrl link(u"before");
    EXPECT_FAILURE(reader::ReadLink(AnyContext(), WithoutChildList(*Link({}))->View(), link),
                   dbc::postcondition_error, "Unable to read GPX link child elements.", kParserSource);
    EXPECT_EQ(LinkText(link), "before|-|-");
}

TEST(LinkReaderTest, AMissingChildIsReportedAndSkipped) {
    GpxUrl link(u"before");
    EXPECT_REPORT(
        reader::ReadLink(AnyContext(),
                         Link({Gpx11Text(u"text", u"a"), nullptr, Gpx11Text(u"type", u"b")})->View(), link),
        kParserSource);
    EXPECT_EQ(LinkText(link), "u|a|b");
}

TEST(LinkReaderTest, AChildWithoutALocalNameIsSkipped) {
    const FakeNodePtr nameless = Gpx11Text(u"text", u"a");
    nameless->localName.reset();
    GpxUrl link(u"before");
    reader::ReadLink(AnyContext(), Link({nameless, Gpx11Text(u"type", u"b")})->View(), link);
    EXPECT_EQ(LinkText(link), "u|-|b");
}

TEST(LinkReaderTest, AFailingChildIsSkipped) {
    const FakeNodePtr failing = Throwing(*Gpx11Text(u"text", u"a"), std::runtime_error("any"));
    GpxUrl link(u"before");
    reader::ReadLink(AnyContext(), Link({failing, Gpx11Text(u"type", u"b")})->View(), link);
    EXPECT_EQ(LinkText(link), "u|-|b");
}

TEST(LinkReaderTest, OnlyStandardExceptionsAreSwallowed) {
    GpxUrl link(u"before");
    EXPECT_THROW(reader::ReadLink(AnyContext(), Link({Throwing(*Gpx11Text(u"text", u"a"), 5)})->View(), link),
                 int);
    EXPECT_EQ(LinkText(link), "before|-|-");
}

} // namespace
} // namespace vexaTransferLib
