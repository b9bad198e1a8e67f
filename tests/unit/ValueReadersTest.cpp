// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/reader/ValueReaders.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/LocaleScopes.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMAttr.hpp>

#include <cmath>
#include <cstring>
#include <limits>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool SameBits(double first, double second) {
    return (std::isnan(first) && std::isnan(second)) || std::memcmp(&first, &second, sizeof first) == 0;
}

// One of each kind of node that can be the first in an element; `e` is an entity.
class ElementTextTest : public testing::Test {
protected:
    const DomTree tree_{
        "<!DOCTYPE r [<!ENTITY e 'entity'>]><r>"
        "<plain>text</plain><blanks>  </blanks><lines>&#13;&#10; x </lines><cdata><![CDATA[a<b]]></cdata>"
        "<twice><![CDATA[a]]><![CDATA[b]]></twice><mixed>a<!-- c -->b</mixed><split>a&e;b</split>"
        "<predefined>a&amp;&#66;&lt;</predefined>"
        "<comment><!-- c -->text</comment><instruction><?p i?>text</instruction>"
        "<nested><b>text</b></nested><entity>&e;</entity><empty/><open></open>"
        "<emptycdata><![CDATA[]]></emptycdata></r>"};
    GpxParser parser_;
};

struct ElementText {
    const char* element;
    const char* text; // null when there is none
};

constexpr ElementText kElementTexts[] = {
    {"plain", "text"},    {"blanks", "  "},         {"lines", "\r\n x "},    {"cdata", "a<b"},
    {"twice", "a"},       {"mixed", "a"},           {"split", "a"},          {"predefined", "a&B<"},
    {"comment", nullptr}, {"instruction", nullptr}, {"nested", nullptr},     {"entity", nullptr},
    {"empty", nullptr},   {"open", nullptr},        {"emptycdata", nullptr},
};

TEST_F(ElementTextTest, IsTheFirstChildIfThatIsText) {
    for (const ElementText& row : kElementTexts) {
        SCOPED_TRACE(row.element);
        xercesc::DOMNode* const node = tree_.Find(row.element);
        const XMLCh* const text = parser_.GetElementText(node);
        ASSERT_EQ(text != nullptr, row.text != nullptr);
        if (text != nullptr) {
            EXPECT_EQ(Utf8(text), row.text);
        }
        EXPECT_EQ(parser_.GetTranscodedElementText(node), row.text != nullptr ? row.text : "");
    }
}

TEST_F(ElementTextTest, StringElementsLeaveTheOutputUntouchedWithoutText) {
    for (const ElementText& row : kElementTexts) {
        SCOPED_TRACE(row.element);
        std::string narrow = "before";
        icu::UnicodeString wide(u"before");
        EXPECT_EQ(parser_.GetStringElement(tree_.Find(row.element), narrow), row.text != nullptr);
        EXPECT_EQ(parser_.GetStringElement(tree_.Find(row.element), wide), row.text != nullptr);
        EXPECT_EQ(narrow, row.text != nullptr ? row.text : "before");
        EXPECT_EQ(Utf8(wide), narrow);
    }
}

TEST_F(ElementTextTest, NodesOtherThanElementsHaveNone) {
    xercesc::DOMNode* const plain = tree_.Find("plain");
    EXPECT_EQ(parser_.GetElementText(plain->getFirstChild()), nullptr) << "text";
    EXPECT_EQ(parser_.GetElementText(tree_.Document()), nullptr) << "document";
    EXPECT_EQ(parser_.GetElementText(tree_.Find("comment")->getFirstChild()), nullptr) << "comment";
    EXPECT_EQ(parser_.GetElementText(tree_.Find("entity")->getFirstChild()), nullptr) << "entity reference";
    const DomTree withAttribute("<r a='text'/>");
    EXPECT_EQ(parser_.GetElementText(withAttribute.Root()->getAttributeNode(u"a")), nullptr) << "attribute";
}

TEST_F(ElementTextTest, TheTextBelongsToTheTree) {
    xercesc::DOMNode* const plain = tree_.Find("plain");
    EXPECT_EQ(parser_.GetElementText(plain), plain->getFirstChild()->getNodeValue());
}

TEST_F(ElementTextTest, ANullNodeIsReportedAndHasNone) {
    const XMLCh* text = u"before";
    EXPECT_REPORT(text = parser_.GetElementText(nullptr), kParserSource);
    EXPECT_EQ(text, nullptr);
    std::string narrow = "before";
    EXPECT_REPORT(EXPECT_FALSE(parser_.GetStringElement(nullptr, narrow)), kParserSource);
    EXPECT_EQ(narrow, "before");
    icu::UnicodeString wide(u"before");
    EXPECT_REPORT(EXPECT_FALSE(parser_.GetStringElement(nullptr, wide)), kParserSource);
    EXPECT_EQ(wide, u"before");
    EXPECT_REPORT(EXPECT_EQ(parser_.GetTranscodedElementText(nullptr), ""), kParserSource);
    double number = 5.0;
    EXPECT_REPORT(EXPECT_FALSE(parser_.GetDoubleElement(nullptr, number)), kParserSource);
    EXPECT_REPORT(EXPECT_FALSE(parser_.GetTimeElement(nullptr, number)), kParserSource);
    EXPECT_EQ(number, 5.0);
    GpxFix fix = kGpxFixPPS;
    EXPECT_REPORT(EXPECT_FALSE(parser_.GetFixElement(nullptr, fix)), kParserSource);
    EXPECT_EQ(fix, kGpxFixPPS);
}

TEST(ElementTextOfAViewTest, ANodeWithoutChildListHasNone) {
    const FakeNodePtr node = WithoutChildList(*Gpx11Node(u"name"));
    EXPECT_EQ(reader::ElementText(node->View()), nullptr);
    const FakeNodePtr noElement = Gpx11Text(u"name", u"text");
    noElement->isElement = false;
    EXPECT_EQ(reader::ElementText(noElement->View()), nullptr);
    EXPECT_EQ(reader::ElementText(Gpx11Text(u"name", u"")->View()), nullptr);
}

TEST(AttributeTextTest, IsFoundByItsQualifiedName) {
    const DomTree tree(
        "<r xmlns:p='urn:p' a='plain' p:b='prefixed' c='' d=' ' e='x&#10;y' n\u00E4me='\u5C71'>text</r>");
    struct Row {
        const char* name;
        const char* text;
    };
    constexpr Row kRows[] = {{"a", "plain"}, {"p:b", "prefixed"},    {"b", nullptr}, {"c", nullptr},
                             {"d", " "},     {"e", "x\ny"},          {"A", nullptr}, {"f", nullptr},
                             {"", nullptr},  {"n\u00E4me", "\u5C71"}};
    GpxParser parser;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const XMLCh* const text = parser.GetAttributeText(tree.Root(), row.name);
        ASSERT_EQ(text != nullptr, row.text != nullptr);
        if (text != nullptr) {
            EXPECT_EQ(Utf8(text), row.text);
        }
        icu::UnicodeString wide(u"before");
        EXPECT_EQ(parser.GetStringAttribute(tree.Root(), row.name, wide), row.text != nullptr);
        EXPECT_EQ(Utf8(wide), row.text != nullptr ? row.text : "before");
    }
}

TEST(AttributeTextTest, NodesWithoutAttributesHaveNone) {
    const DomTree tree("<r a='1'>text</r>");
    GpxParser parser;
    EXPECT_EQ(parser.GetAttributeText(tree.Root()->getFirstChild(), "a"), nullptr);
    EXPECT_EQ(parser.GetAttributeText(tree.Document(), "a"), nullptr);
}

TEST(AttributeTextTest, ANullNodeOrNameIsReported) {
    const DomTree tree("<r a='1'/>");
    GpxParser parser;
    const XMLCh* text = u"before";
    EXPECT_REPORT(text = parser.GetAttributeText(nullptr, "a"), kParserSource);
    EXPECT_EQ(text, nullptr);
    text = u"before";
    EXPECT_REPORT(text = parser.GetAttributeText(tree.Root(), nullptr), kParserSource);
    EXPECT_EQ(text, nullptr);
    EXPECT_REPORT(EXPECT_EQ(parser.GetAttributeText(nullptr, nullptr), nullptr), kParserSource);
    icu::UnicodeString wide(u"before");
    EXPECT_REPORT(EXPECT_FALSE(parser.GetStringAttribute(nullptr, "a", wide)), kParserSource);
    EXPECT_REPORT(EXPECT_FALSE(parser.GetStringAttribute(tree.Root(), nullptr, wide)), kParserSource);
    EXPECT_EQ(wide, u"before");
    double number = 5.0;
    EXPECT_REPORT(EXPECT_FALSE(parser.GetDoubleAttribute(nullptr, "a", number)), kParserSource);
    EXPECT_REPORT(EXPECT_FALSE(parser.GetDoubleAttribute(tree.Root(), nullptr, number)), kParserSource);
    EXPECT_EQ(number, 5.0);
}

TEST(XMLChToStdStringTest, ConvertsToTheLocalCodePage) {
    GpxParser parser;
    std::string out = "before";
    EXPECT_FALSE(parser.XMLChToStdString(nullptr, out));
    EXPECT_EQ(out, "before");
    EXPECT_TRUE(parser.XMLChToStdString(u"", out));
    EXPECT_EQ(out, "");
    EXPECT_TRUE(parser.XMLChToStdString(u"ascii ~\x7F\x01", out));
    EXPECT_EQ(out, "ascii ~\x7F\x01");
    EXPECT_TRUE(parser.XMLChToStdString(u"\u0080\u00E9\u5C71\U0001F30D after", out));
    EXPECT_EQ(out, "\u0080\u00E9\u5C71\U0001F30D after");
}

struct Number {
    const char* text;
    bool whole;
    double number; // stored whenever the text is not empty
};

constexpr Number kNumbers[] = {
    {"0", true, 0.0},
    {"-0", true, -0.0},
    {"47.5", true, 47.5},
    {"-122.25", true, -122.25},
    {"+12", true, 12.0},
    {".5", true, 0.5},
    {"5.", true, 5.0},
    {"007", true, 7.0},
    {" 12.5", true, 12.5},
    {" \t\n\v\f\r12.5", true, 12.5},
    {"1e3", true, 1000.0},
    {"1E+3", true, 1000.0},
    {"25e-1", true, 2.5},
    {"0x1p4", true, 16.0},
    {"0X1A.8", true, 26.5},
    {"-0x10", true, -16.0},
    {"inf", true, kInfinity},
    {"-INFINITY", true, -kInfinity},
    {"nan", true, kNaN},
    {"-NaN", true, kNaN},
    {"nan(12)", true, kNaN},
    {"1e999", true, kInfinity},
    {"-1e999", true, -kInfinity},
    {"1.7976931348623157e308", true, 1.7976931348623157e308},
    {"1.7976931348623159e308", true, kInfinity},
    {"4.9406564584124654e-324", true, 4.9406564584124654e-324},
    {"2.2250738585072011e-308", true, 2.2250738585072011e-308},
    {"1e-999", true, 0.0},
    {"-1e-999", true, -0.0},
    {"0.1000000000000000055511151231257827021181583404541015625", true, 0.1},
    {"9007199254740993", true, 9007199254740992.0},
    {"47.5x", false, 47.5},
    {"12.5 ", false, 12.5},
    {"12,5", false, 12.0},
    {"1.2.3", false, 1.2},
    {"1 2", false, 1.0},
    {"1e", false, 1.0},
    {"1e+", false, 1.0},
    {"0x", false, 0.0},
    {"infx", false, kInfinity},
    {"nan(", false, kNaN},
    {"x", false, 0.0},
    {"  ", false, 0.0},
    {".", false, 0.0},
    {"+", false, 0.0},
    {"--5", false, 0.0},
    {"+-5", false, 0.0},
    {"- 5", false, 0.0},
    {"\u00A05", false, 0.0},
    {"\u0665", false, 0.0},
    {"1e999x", false, kInfinity},
};

void ExpectNumbers() {
    for (const Number& row : kNumbers) {
        double number = 12345.0;
        EXPECT_EQ(StrToDouble(row.text, number), row.whole) << '"' << row.text << '"';
        EXPECT_TRUE(SameBits(number, row.number)) << '"' << row.text << "\" gave " << number;
    }
}

TEST(StrToDoubleTest, ReadsAsStrtodOfTheClassicLocale) {
    ExpectNumbers();
}

TEST(StrToDoubleTest, NullAndEmptyLeaveTheOutputUntouched) {
    double number = 5.0;
    EXPECT_FALSE(StrToDouble(nullptr, number));
    EXPECT_FALSE(StrToDouble("", number));
    EXPECT_EQ(number, 5.0);
}

TEST(StrToDoubleTest, ReadsAllOfALongText) {
    double number = 0.0;
    EXPECT_TRUE(StrToDouble(("0." + Repeat("0", 5000) + "1e5001").c_str(), number));
    EXPECT_EQ(number, 1.0);
    EXPECT_TRUE(StrToDouble(Repeat("9", 320000).c_str(), number));
    EXPECT_EQ(number, kInfinity);
}

TEST(StrToDoubleTest, ADecimalCommaOfTheCLocaleDoesNotShow) {
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    ExpectNumbers();
}

TEST(DoubleReadersTest, ReadElementsAndAttributesAsStrToDouble) {
    GpxParser parser;
    for (const Number& row : kNumbers) {
        const std::string text = row.text;
        if (text.find_first_of("\v\f") != std::string::npos)
            continue; // no XML
        SCOPED_TRACE('"' + text + '"');
        const DomTree tree("<r a='" + text + "'>" + text + "</r>");
        double number = 12345.0;
        EXPECT_EQ(parser.GetDoubleElement(tree.Root(), number), row.whole);
        EXPECT_TRUE(SameBits(number, row.number));
        number = 12345.0;
        EXPECT_EQ(parser.GetDoubleAttribute(tree.Root(), "a", number), row.whole);
        EXPECT_TRUE(SameBits(number, row.number));
    }
}

TEST(DoubleReadersTest, WithoutTextTheOutputIsUntouched) {
    const DomTree tree("<r a=''><!-- 5 -->5</r>");
    GpxParser parser;
    double number = 12345.0;
    EXPECT_FALSE(parser.GetDoubleElement(tree.Root(), number));
    EXPECT_FALSE(parser.GetDoubleAttribute(tree.Root(), "a", number));
    EXPECT_FALSE(parser.GetDoubleAttribute(tree.Root(), "b", number));
    EXPECT_EQ(number, 12345.0);
}

TEST(TimeElementTest, ReadsGpxTime) {
    struct Row {
        const char* xml;
        bool read;
        double time;
    };
    constexpr Row kRows[] = {
        {"<t>2009-01-15T10:20:30Z</t>", true, 1232014830000.0},
        {"<t>2009-01-15T10:20:30.5+02:00</t>", true, 1232007630500.0},
        {"<t>1970-01-01T00:00:00Z</t>", true, 0.0},
        {"<t><![CDATA[1970-01-01T00:00:01Z]]></t>", true, 1000.0},
        {"<t> 2009-01-15T10:20:30Z</t>", false, 0.0},
        {"<t>2009-01-15</t>", false, 0.0},
        {"<t>not-a-timestamp</t>", false, 0.0},
        {"<t>\u0662\u0660\u0660\u0669-01-15T10:20:30Z</t>", false, 0.0},
        {"<t><!-- c -->2009-01-15T10:20:30Z</t>", false, 0.0},
        {"<t/>", false, 0.0},
    };
    GpxParser parser;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.xml);
        const DomTree tree(row.xml);
        double time = -1.0;
        const std::string written =
            CaptureStandardError([&] { EXPECT_EQ(parser.GetTimeElement(tree.Root(), time), row.read); });
        EXPECT_EQ(time, row.read ? row.time : -1.0);
        EXPECT_EQ(written, "");
    }
}

TEST(FixElementTest, TakesTheFiveTextsExactly) {
    struct Row {
        const char* text;
        int fix; // 0 when refused
    };
    constexpr Row kRows[] = {{"none", 1}, {"2d", 2},   {"3d", 3},   {"dgps", 4},   {"pps", 5},
                             {"2D", 0},   {"DGPS", 0}, {"None", 0}, {" 3d", 0},    {"3d ", 0},
                             {"3", 0},    {"3dd", 0},  {"0", 0},    {"\u0663d", 0}};
    GpxParser parser;
    for (const Row& row : kRows) {
        const DomTree tree("<fix>" + std::string(row.text) + "</fix>");
        auto fix = static_cast<GpxFix>(9);
        EXPECT_EQ(parser.GetFixElement(tree.Root(), fix), row.fix != 0) << row.text;
        EXPECT_EQ(static_cast<int>(fix), row.fix != 0 ? row.fix : 9) << row.text;
    }
    GpxFix fix = kGpxFixPPS;
    EXPECT_FALSE(parser.GetFixElement(DomTree("<fix/>").Root(), fix));
    EXPECT_EQ(fix, kGpxFixPPS);
}

TEST(StrToIntTest, ReadsTheIntegerAtTheStartInUsForm) {
    struct Row {
        const char16_t* text;
        long number;
    };
    constexpr Row kRows[] = {
        {u"", 0},
        {u"abc", 0},
        {u"x12", 0},
        {u"0", 0},
        {u"42", 42},
        {u"-42", -42},
        {u"+12", 0},
        {u"(12)", 0},
        {u" 5", 0},
        {u"5 ", 5},
        {u"12abc", 12},
        {u"7.9", 7},
        {u"-7.9", -7},
        {u".9", 0},
        {u"1,234", 1234},
        {u"1,234,567", 1234567},
        {u"1E3", 1000},
        {u"007", 7},
        {u"-0", 0},
        {u"2147483647", 2147483647},
        {u"2147483648", 2147483647},
        {u"-2147483648", -2147483648L},
        {u"-2147483649", -2147483648L},
        {u"4294967296", 2147483647},
        {u"99999999999", 2147483647},
        {u"-99999999999", -2147483648L},
        {u"1E20", 2147483647},
        {u"NaN", -2147483648L},
        {u"\u221E", 2147483647},
        {u"-\u221E", -2147483648L},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(StrToInt(row.text), row.number) << Utf8(row.text);
}

TEST(StrToIntTest, LooksAtTheFirst400CodeUnits) {
    const auto digits = [](std::size_t zeros, const char* end) {
        return icu::UnicodeString::fromUTF8(Repeat("0", zeros) + end);
    };
    EXPECT_EQ(StrToInt(digits(398, "12")), 12);
    EXPECT_EQ(StrToInt(digits(399, "12")), 1);
    EXPECT_EQ(StrToInt(digits(400, "12")), 0);
    EXPECT_EQ(StrToInt(icu::UnicodeString::fromUTF8(Repeat("9", 320000))), 2147483647);
}

TEST(StrToIntTest, TheDefaultLocaleDoesNotShow) {
    for (const char* locale : {"de_DE", "ar_EG", "fa_IR"}) {
        const IcuLocaleScope scope(locale);
        EXPECT_EQ(StrToInt(u"1,234.5"), 1234) << locale;
        EXPECT_EQ(StrToInt(u"1.234,5"), 1) << locale;
    }
}

} // namespace
} // namespace vexaTransferLib
