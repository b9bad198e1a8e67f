// SPDX-License-Identifier: MIT
#include <vexagpx/repair/RootRepair.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::ChangeList;
using vexagpx::LocalPartOf;
using vexagpx::NamespaceForPrefix;
using vexagpx::ParseStartTag;
using vexagpx::PrefixOfName;
using vexagpx::RepairLog;
using vexagpx::StartTag;

const std::string k11 = "http://www.topografix.com/GPX/1/1";
const std::string k10 = "http://www.topografix.com/GPX/1/0";

std::string Repaired(const std::string& text) {
    ChangeList changes;
    RepairLog log(text, changes);
    StartTag tag = ParseStartTag(text, 0, log);
    RepairRoot(tag, 0, log);
    EXPECT_EQ(changes.Count() == 0, tag.bytes + ">" == text);
    return tag.bytes + ">";
}

TEST(RootRepairTest, ARightRootStaysAsItIs) {
    for (const std::string& root :
         {"<gpx  version = '1.1' xmlns='" + k11 + "' >", "<gpx xmlns=\"" + k10 + "\" version='1.0'>",
          "<g:gpx version='1.1' xmlns:g='" + k11 + "'>"})
        EXPECT_EQ(Repaired(root), root);
}

TEST(RootRepairTest, WhatIsMissingIsAdded) {
    EXPECT_EQ(Repaired("<gpx>"), "<gpx version=\"1.1\" xmlns=\"" + k11 + "\">");
    EXPECT_EQ(Repaired("<gpx version='1.0'>"), "<gpx xmlns=\"" + k10 + "\" version='1.0'>");
    EXPECT_EQ(Repaired("<gpx xmlns='" + k10 + "'>"), "<gpx version=\"1.0\" xmlns='" + k10 + "'>");
    EXPECT_EQ(Repaired("<g:gpx version='1.1'>"), "<g:gpx xmlns:g=\"" + k11 + "\" version='1.1'>");
}

TEST(RootRepairTest, WhatIsNoneOfGpxIsCorrected) {
    EXPECT_EQ(
        Repaired("<gpx a='version=' version = '1.2' xmlns='http://www.topografix.com/GPX/1/1/gpx.xsd'>"),
        "<gpx a='version=' version = '1.1' xmlns='" + k11 + "'>");
    EXPECT_EQ(Repaired("<gpx version='1.1' xmlns='" + k10 + "'>"), "<gpx version='1.0' xmlns='" + k10 + "'>");
}

TEST(RootRepairTest, NamesHaveTwoParts) {
    EXPECT_EQ(PrefixOfName("a:b"), "a");
    EXPECT_EQ(PrefixOfName("b"), "");
    EXPECT_EQ(LocalPartOf("a:b"), "b");
    EXPECT_EQ(LocalPartOf("b"), "b");
}

TEST(RootRepairTest, KnowsTheNamespacesOfUsualPrefixes) {
    EXPECT_EQ(NamespaceForPrefix("groundspeak"), "http://www.groundspeak.com/cache/1/0/1");
    EXPECT_EQ(NamespaceForPrefix("mine"), "urn:undeclared:mine");
}

} // namespace
