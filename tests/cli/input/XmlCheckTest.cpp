// SPDX-License-Identifier: MIT
#include <vexagpx/input/XmlCheck.h>

#include "support/Tool.h"
#include "support/XercesPlatform.h"

#include <string>

namespace {

using testing::HasSubstr;
using vexagpx::FindXmlError;
using vexagpx::XmlErrorPath;

std::string Deep(int depth) {
    std::string xml;
    for (int i = 0; i < depth; ++i)
        xml += "<a>";
    for (int i = 0; i < depth; ++i)
        xml += "</a>";
    return xml;
}

std::string WithNamespaces(int count) {
    std::string xml = "<a";
    for (int i = 0; i < count; ++i)
        xml += " xmlns:p" + std::to_string(i) + "='urn:p'";
    return xml + "/>";
}

TEST(XmlCheckTest, WellFormedTextHasNoError) {
    const cli::XercesPlatform platform;
    EXPECT_EQ(FindXmlError("<a b='c'>\u00E4<d xmlns='urn:d'/></a>"), std::nullopt);
    EXPECT_EQ(FindXmlError("<a/>", false), std::nullopt);
}

TEST(XmlCheckTest, TheFirstErrorIsTold) {
    const cli::XercesPlatform platform;
    for (const bool isTrusted : {true, false}) {
        EXPECT_THAT(FindXmlError("<a>\n<b></a>", isTrusted).value_or(""), HasSubstr("line 2"));
        EXPECT_THAT(FindXmlError("<x:a/>", isTrusted).value_or(""), HasSubstr("'x'"));
        EXPECT_NE(FindXmlError("", isTrusted), std::nullopt);
    }
}

TEST(XmlCheckTest, DepthAndNamespacesOfUntrustedTextAreLimited) {
    const cli::XercesPlatform platform;
    EXPECT_EQ(FindXmlError(Deep(256), false), std::nullopt);
    EXPECT_EQ(FindXmlError(Deep(257), false), "its elements are nested deeper than 256 (limit of element "
                                              "depth). If you know where it comes from, --trust reads it.");
    EXPECT_EQ(FindXmlError(Deep(257), true), std::nullopt);
    EXPECT_EQ(FindXmlError(WithNamespaces(512), false), std::nullopt);
    EXPECT_EQ(FindXmlError(WithNamespaces(513), false),
              "more than 512 namespaces are declared (limit of namespaces). If you know where it comes from, "
              "--trust reads it.");
    EXPECT_EQ(FindXmlError(WithNamespaces(513), true), std::nullopt);
}

TEST(XmlCheckTest, WhatIsClosedDoesNotCount) {
    const cli::XercesPlatform platform;
    std::string xml = "<r>";
    for (int i = 0; i < 1000; ++i)
        xml += "<a xmlns:p='urn:p'/>";
    EXPECT_EQ(FindXmlError(xml + "</r>", false), std::nullopt);
}

TEST(XmlCheckTest, ThePathOfTheErrorCountsElementsOfOneName) {
    const cli::XercesPlatform platform;
    EXPECT_EQ(XmlErrorPath("<gpx><wpt/><wpt/><wpt><name>&</name></wpt></gpx>"), "/gpx/wpt[3]/name");
    EXPECT_EQ(XmlErrorPath("<gpx/>"), "");
}

} // namespace
