// SPDX-License-Identifier: MIT

// The operations that Xerces calls during a scan, called without one.

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/ContractChecks.h"
#include "support/HeadScan.h"
#include "support/PageEndText.h"

#include <gtest/gtest.h>

#include <xercesc/internal/VecAttributesImpl.hpp>

#include <stdexcept>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

class GpxTarvikExtParserHandlerTest : public testing::Test {
protected:
    static constexpr char16_t kVendor[] = u"https://tarvik.example/xmlschemas/gpx-extensions/1/0";
    static constexpr char16_t kGpx[] = u"http://www.topografix.com/GPX/1/1";

    void Start(const char16_t* uri, const char16_t* name) {
        scanner_.startElement(uri, name, name, attributes_);
    }
    void End(const char16_t* uri, const char16_t* name) { scanner_.endElement(uri, name, name); }
    void Text(const std::u16string& text) { scanner_.characters(text.data(), text.size()); }
    void Blank(const std::u16string& text) { scanner_.ignorableWhitespace(text.data(), text.size()); }

    xercesc::VecAttributesImpl attributes_;
    GpxTarvikExtParser scanner_;
};

TEST_F(GpxTarvikExtParserHandlerTest, BothKindsOfTextAreCollected) {
    Start(kVendor, u"form");
    Text(u"a");
    Blank(u" \n");
    Text(u"bcd");
    Text(u"");
    End(kVendor, u"form");
    EXPECT_EQ(FoundBy(scanner_), "layer ||a \nbcd|1; time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, OnlyTheGivenLengthIsCollected) {
    Start(kVendor, u"form");
    scanner_.characters(u"abc", 2);
    scanner_.ignorableWhitespace(u"xyz", 1);
    End(kVendor, u"form");
    EXPECT_EQ(FoundBy(scanner_), "layer ||abx|1; time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, AStartTagForgetsTheTextAndAnEndTagDoesNot) {
    Text(u"a");
    Start(kVendor, u"form");
    Text(u"b");
    End(kVendor, u"form");
    End(kVendor, u"layername");
    EXPECT_EQ(FoundBy(scanner_), "layer |b|b|1; time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, ANamespaceThatIsMissingIsHarmless) {
    Text(u"a");
    EXPECT_NO_THROW(Start(nullptr, u"wpt"));
    EXPECT_NO_THROW(End(nullptr, u"wpt"));
    EXPECT_NO_THROW(End(nullptr, u"form"));
    EXPECT_NO_THROW(End(kVendor, nullptr));
    EXPECT_NO_THROW(Start(kGpx, nullptr));
    EXPECT_EQ(FoundBy(scanner_), "time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, TheEndOfTheHeadIsThrown) {
    for (const char16_t* name : {u"wpt", u"rte", u"trk", u"WPT", u"Trk", u"tr\u212A"}) {
        for (const char16_t* uri :
             {kGpx, u"http://www.topografix.com/GPX/1/0", u"HTTP://WWW.TOPOGRAFIX.COM/GPX/1/1"}) {
            EXPECT_FAILURE(Start(uri, name), std::runtime_error, "Finished Parsing", "");
            EXPECT_FAILURE(End(uri, name), std::runtime_error, "Finished Parsing", "");
        }
        EXPECT_NO_THROW(Start(kVendor, name));
        EXPECT_NO_THROW(End(kVendor, name));
        EXPECT_NO_THROW(Start(u"", name));
        EXPECT_NO_THROW(End(u"", name));
    }
    EXPECT_NO_THROW(Start(kGpx, u"wpts"));
    EXPECT_NO_THROW(End(kGpx, u"rtept"));
}

// A file can declare a long namespace once and use it for a million elements.
TEST_F(GpxTarvikExtParserHandlerTest, NoMoreOfALongNamespaceIsLookedAtThanTheLongestKnownOneHas) {
    const std::u16string vendor = kVendor;
    const std::u16string gpx = kGpx;
    for (const std::u16string& start : {std::u16string(), vendor, gpx}) {
        const PageEndText uri(start + std::u16string(vendor.size() + 1 - start.size(), u'x'));
        Text(u"a");
        EXPECT_NO_THROW(End(uri.Get(), u"form"));
        EXPECT_NO_THROW(End(uri.Get(), u"wpt"));
        EXPECT_NO_THROW(Start(uri.Get(), u"wpt"));
    }
    EXPECT_EQ(FoundBy(scanner_), "time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, TheStartOfAWaypointForgetsTheTextBeforeItThrows) {
    Text(u"a");
    EXPECT_THROW(Start(kGpx, u"wpt"), std::runtime_error);
    End(kVendor, u"form");
    EXPECT_EQ(FoundBy(scanner_), "layer |||1; time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, TheOtherOperationsDoNothing) {
    Start(kVendor, u"form");
    Text(u"a");
    scanner_.startDocument();
    scanner_.setDocumentLocator(nullptr);
    scanner_.processingInstruction(u"target", u"data");
    scanner_.startPrefixMapping(u"x", kVendor);
    scanner_.endPrefixMapping(u"x");
    scanner_.skippedEntity(u"entity");
    scanner_.endDocument();
    EXPECT_EQ(FoundBy(scanner_), "time 0");
    End(kVendor, u"form");
    EXPECT_EQ(FoundBy(scanner_), "layer ||a|1; time 0");
}

TEST_F(GpxTarvikExtParserHandlerTest, ACallOutsideAScanLeavesNoTextToTheNextOne) {
    Text(u"left over");
    ScanBytes(scanner_, WithExtensions("<tarvik:form/>"));
    EXPECT_EQ(FoundBy(scanner_), "layer |||1; time 0");
}

} // namespace
} // namespace vexaTransferLib
