// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ChildScan.h>

#include "support/GpxText.h"
#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// "gpx", "cache", "vendor" or "other" for each element within the root, in the order of the text, as one cursor finds
// them.
std::string KindsIn(const std::string& text) {
    const SourceText::Pointer source = SourceOf(text);
    NamespaceCursor names(*source);
    std::string kinds;
    std::vector<const char*> tags;
    for (const char* at = source->At(source->RootPlace()) + 1; *at != '\0'; ++at)
        if (*at == '<' && IsStartTag(at))
            tags.push_back(at);
    for (const char* const tag : tags) {
        static constexpr const char* kNames[] = {"gpx ", "cache ", "vendor ", "other "};
        kinds += kNames[static_cast<std::size_t>(ScanChild(names, *source, tag).kind)];
    }
    return kinds;
}

TEST(ChildScanTest, TheNamespaceOfTheRootAndNoneAreGpx) {
    EXPECT_EQ(KindsIn("<gpx xmlns='urn:any'><a/><b xmlns=''/><c xmlns='urn:other'><d/></c><e/></gpx>"),
              "gpx gpx other other gpx ");
    EXPECT_EQ(KindsIn("<gpx><a/><b xmlns='urn:other'><c xmlns=''/><d/></b><e/></gpx>"),
              "gpx other gpx other gpx ");
}

TEST(ChildScanTest, PrefixesAreFoundInTheirScopes) {
    EXPECT_EQ(KindsIn(Gpx11("<tarvik:a/><groundspeak:b/><tarvik:c/><other:d/><gpx10:e/><f/>")),
              "vendor cache vendor other gpx gpx ");
    EXPECT_EQ(KindsIn("<gpx><p:a xmlns:p='urn:x'/><p:b xmlns:p='" + std::string(kVendorUri) +
                      "'><p:c/><p:d xmlns:p='" + kGpx11Uri + "'/><p:e/></p:b><p:f xmlns:p='urn:y'/></gpx>"),
              "other vendor vendor gpx vendor other ");
}

TEST(ChildScanTest, APrefixThatIsTheStartOfAnotherIsAnother) {
    EXPECT_EQ(KindsIn("<gpx xmlns:p='urn:x' xmlns:pq='" + std::string(kVendorUri) +
                      "'><p:a/><pq:a/><p:a/><pq:a/></gpx>"),
              "other vendor other vendor ");
}

TEST(ChildScanTest, SiblingsThatDeclareTheSamePrefixDifferentlyAreDifferent) {
    std::string text = "<gpx>";
    std::string expected;
    for (int i = 0; i < 50; ++i) {
        text += "<p:a xmlns:p='" + std::string(i % 2 == 0 ? kVendorUri : "urn:x") + "'/><b/>";
        expected += i % 2 == 0 ? "vendor gpx " : "other gpx ";
    }
    EXPECT_EQ(KindsIn(text + "</gpx>"), expected);
}

// The text of the first element in a root; "?" when it is not simple.
std::string LeafOf(const std::string& element) {
    const SourceText::Pointer source = SourceOf("<gpx>" + element + "x</gpx>");
    const char* const begin = source->At(5);
    const ScannedLeaf leaf = ScanLeaf(ScanTag(begin), begin);
    EXPECT_EQ(*leaf.end, 'x') << element;
    return leaf.isSimple ? std::string(leaf.text) : "?";
}

TEST(ChildScanTest, ALeafIsSimpleWithOneTextThatStandsAsItIsRead) {
    EXPECT_EQ(LeafOf("<a>b</a>"), "b");
    EXPECT_EQ(LeafOf("<a b='>'> b </a >"), " b ");
    EXPECT_EQ(LeafOf("<a/>"), "");
    EXPECT_EQ(LeafOf("<a></a>"), "");
    for (const char* const element : {"<a>&lt;</a>", "<a>b\r</a>", "<a><b/></a>", "<a>b<!-- c --></a>",
                                      "<a><![CDATA[b]]></a>", "<a><a></a></a>"})
        EXPECT_EQ(LeafOf(element), "?") << element;
}

TEST(ChildScanTest, EachChildIsVisitedOnceWhetherItIsReadOrSkipped) {
    const SourceText::Pointer source =
        SourceOf("<gpx><a><x/></a>t<b c='/>'/><!-- <y/> --><![CDATA[<z/>]]><d><d/></d></gpx>");
    for (const bool isSkipped : {true, false}) {
        NamespaceCursor names(*source);
        std::string visited;
        const char* const end =
            ForEachChild(names, *source, ScanTag(source->At(0)), [&](const ScannedChild& child) {
                visited += child.name;
                return isSkipped ? nullptr : SkipElement(child.begin);
            });
        EXPECT_EQ(visited, "abd");
        EXPECT_EQ(source->PlaceOf(end), source->Text().size());
    }
}

} // namespace
} // namespace vexaTransferLib
