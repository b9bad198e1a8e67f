// SPDX-License-Identifier: MIT

// Elements that are copied out of a source, into a document that has the same source or another one.
#include <vexaTransferLib/standard/Writing.h>

#include "support/StandardWriting.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::standard {
namespace {

using namespace testing_support;
using Copy = void (*)(Writing&, const SourceElement&);

const std::string kRoot = std::string("<gpx version='1.1' xmlns='") + kGpx11Uri + "'";
const std::string kIn10 = std::string(" xmlns=\"") + kGpx10Uri + "\"";

/// Calls `use(writing, element)` for the first element with this start of a tag, and returns what that writes.
template <class Use>
std::string WrittenFor(const std::string& text, std::string_view tag, const std::string& main, Use use) {
    const GpxDocument document = ReadCompletely(main);
    const GpxDocument from = ReadCompletely(text);
    const bool isMain = text == main;
    const SourceText* const source = GpxModelAccess::GetSource((isMain ? document : from).GetElement());
    std::string written;
    const PieceOutput::Receive receive = [&](std::string_view piece) { written += piece; };
    PieceOutput output(receive);
    const GpxStandardOptions options;
    Writing writing(document, options, output);
    const std::size_t place = source->Text().find(tag);
    EXPECT_NE(place, std::string_view::npos) << tag;
    use(writing, writing.ElementAt(*source, source->At(place)));
    output.Flush();
    return written;
}

/// Copies an element into a document with the same source.
std::string Copied(Copy copy, const std::string& text, std::string_view tag) {
    return WrittenFor(text, tag, text, copy);
}
/// Copies it into a document with a source that declares nothing.
std::string CopiedElsewhere(Copy copy, const std::string& text, std::string_view tag) {
    return WrittenFor(text, tag, Gpx11(""), copy);
}

// Declarations.

TEST(SourceCopyTest, ADeclarationIsAnAttributeAfterABlank) {
    EXPECT_EQ(Declaration("x", "urn:x"), " xmlns:x=\"urn:x\"");
    EXPECT_EQ(Declaration({}, "urn:x"), " xmlns=\"urn:x\"");
    EXPECT_EQ(Declaration({}, {}), " xmlns=\"\"");
    EXPECT_EQ(Declaration("x", "a&b<c>d\"e'f\tg\nh\xC3\xA4"),
              " xmlns:x=\"a&#38;b&#60;c&#62;d&#34;e'f&#9;g&#10;h\xC3\xA4\"");
}

// Foreign elements.

TEST(SourceCopyTest, AForeignElementIsCopiedVerbatim) {
    const std::string element = "<x:a b = '1' ><!-- c --><x:d/>&#49;<![CDATA[<]]></x:a >";
    const std::string text = Gpx11(Waypoint(element), " xmlns:x='urn:x'");
    EXPECT_EQ(Copied(CopyForeign, text, "<x:a"), element);
    EXPECT_EQ(Copied(CopyElement, text, "<x:a"), element);
}

TEST(SourceCopyTest, PrefixesThatTheOutputLacksAreDeclared) {
    const std::string text =
        Gpx11(Waypoint("<x:a y:b='1'><z:c/></x:a>"),
              " xmlns:x='urn:x' xmlns:y='urn:y' xmlns:z='urn:z' xmlns:unused='urn:unused'");
    EXPECT_EQ(Copied(CopyForeign, text, "<x:a"), "<x:a y:b='1'><z:c/></x:a>");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, text, "<x:a"),
              "<x:a xmlns:x=\"urn:x\" xmlns:y=\"urn:y\" xmlns:z=\"urn:z\" y:b='1'><z:c/></x:a>");
}

TEST(SourceCopyTest, PrefixesOfElementsAroundItAreDeclaredInTheSameSourceToo) {
    const std::string text = Gpx11("<wpt lat='1' lon='2' xmlns:x='urn:inner'><extensions xmlns:y='urn:y'>"
                                   "<x:a><y:b/></x:a></extensions></wpt>",
                                   " xmlns:x='urn:x'");
    EXPECT_EQ(Copied(CopyForeign, text, "<x:a"), "<x:a xmlns:x=\"urn:inner\" xmlns:y=\"urn:y\"><y:b/></x:a>");
}

TEST(SourceCopyTest, WhatTheElementOrTheOutputDeclaresIsNotDeclaredAgain) {
    const std::string own = Gpx11(Waypoint("<x:a xmlns:x='urn:own' xmlns:y='urn:y'/>"), " xmlns:x='urn:x'");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, own, "<x:a"), "<x:a xmlns:x='urn:own' xmlns:y='urn:y'/>");
    const std::string text = Gpx11(Waypoint("<x:a/>"), " xmlns:x='urn:x'");
    EXPECT_EQ(WrittenFor(text, "<x:a", Gpx11("", " xmlns:x='urn:x'"), CopyForeign), "<x:a/>");
    EXPECT_EQ(WrittenFor(text, "<x:a", Gpx11("", " xmlns:x='urn:other'"), CopyForeign),
              "<x:a xmlns:x=\"urn:x\"/>");
}

TEST(SourceCopyTest, APrefixIsTheWholeNameBeforeAColon) {
    const std::string text = Gpx11(Waypoint("<a-b.c_1:d/>"), " xmlns:c_1='urn:c' xmlns:a-b.c_1='urn:a'");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, text, "<a-b"), "<a-b.c_1:d xmlns:a-b.c_1=\"urn:a\"/>");
    const std::string umlaut = Gpx11(Waypoint("<\xC3\xA4:d></\xC3\xA4:d>"), " xmlns:\xC3\xA4='urn:a'");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, umlaut, "<\xC3\xA4"),
              "<\xC3\xA4:d xmlns:\xC3\xA4=\"urn:a\"></\xC3\xA4:d>");
}

TEST(SourceCopyTest, APrefixInAValueIsDeclared) {
    const std::string text = Gpx11(Waypoint("<x:a type='y:t'>z:v http://a</x:a>"),
                                   " xmlns:x='urn:x' xmlns:y='urn:y' xmlns:z='urn:z'");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, text, "<x:a"),
              "<x:a xmlns:x=\"urn:x\" xmlns:y=\"urn:y\" xmlns:z=\"urn:z\" type='y:t'>z:v http://a</x:a>");
}

TEST(SourceCopyTest, ThePrefixXmlIsNeverDeclared) {
    const std::string text = Gpx11(Waypoint("<x:a xml:lang='de'/>"), " xmlns:x='urn:x'");
    EXPECT_EQ(CopiedElsewhere(CopyForeign, text, "<x:a"), "<x:a xmlns:x=\"urn:x\" xml:lang='de'/>");
}

TEST(SourceCopyTest, AnElementWithoutAPrefixKeepsItsNamespace) {
    const std::string start = std::string("<g:gpx version='1.1' xmlns:g='") + kGpx11Uri + "'";
    const std::string content = "><g:wpt lat='1' lon='2'><a><b/></a></g:wpt></g:gpx>";
    EXPECT_EQ(Copied(CopyForeign, start + " xmlns='urn:d'" + content, "<a>"), "<a xmlns=\"urn:d\"><b/></a>");
    const std::string own = Gpx11(Waypoint("<a xmlns='urn:d'><b/></a>"));
    EXPECT_EQ(CopiedElsewhere(CopyForeign, own, "<a"), "<a xmlns='urn:d'><b/></a>");
}

TEST(SourceCopyTest, TheDefaultNamespaceIsDeclaredOnlyForElementsWithoutAPrefix) {
    const std::string start =
        std::string("<g:gpx version='1.1' xmlns='urn:d' xmlns:x='urn:x' xmlns:g='") + kGpx11Uri + "'>";
    const std::string end = "</g:wpt></g:gpx>";
    EXPECT_EQ(Copied(CopyForeign, start + "<g:wpt lat='1' lon='2'><x:a b='1'/>" + end, "<x:a"),
              "<x:a b='1'/>");
    EXPECT_EQ(Copied(CopyForeign, start + "<g:wpt lat='1' lon='2'><x:a><b/></x:a>" + end, "<x:a"),
              "<x:a xmlns=\"urn:d\"><b/></x:a>");
}

// Elements of GPX.

TEST(SourceCopyTest, APlainElementOfGpxIsCopiedAsItStands) {
    const std::string element = "<link href = 'a' ><!-- c --><text>&#49;</text></link >";
    EXPECT_EQ(Copied(CopyElement, Gpx11(Waypoint(element)), "<link"), element);
    EXPECT_EQ(CopiedElsewhere(CopyElement, Gpx10(Waypoint(element)), "<link"), element);
}

TEST(SourceCopyTest, PrefixesOfGpxAreLeftOut) {
    const std::string text =
        std::string("<g:gpx version='1.1' xmlns:x='urn:x' xmlns:g='") + kGpx11Uri +
        "'><g:wpt lat='1' lon='2'><g:link href=\"a\" x:b='c'><!--d--><g:text>t&amp;</g:text>"
        "<g:type/><x:e/></g:link></g:wpt></g:gpx>";
    EXPECT_EQ(Copied(CopyElement, text, "<g:link"),
              "<link href=\"a\" x:b='c'><!--d--><text>t&amp;</text><type/><x:e/></link>");
}

TEST(SourceCopyTest, ADeclarationOfTheDefaultNamespaceOfGpxIsLeftOut) {
    const std::string text = Gpx11(Waypoint("<link xmlns='" + std::string(kGpx10Uri) +
                                            "' href='a' xmlns:x='urn:x'><text>t</text></link>"));
    EXPECT_EQ(Copied(CopyElement, text, "<link"), "<link href='a' xmlns:x='urn:x'><text>t</text></link>");
}

TEST(SourceCopyTest, AnEmptyElementOfGpxStaysEmpty) {
    const std::string text =
        std::string("<g:gpx version='1.1' xmlns:g='") + kGpx11Uri + "'><g:trk><g:name/></g:trk></g:gpx>";
    EXPECT_EQ(Copied(CopyElement, text, "<g:name"), "<name/>");
}

TEST(SourceCopyTest, ElementsInExtensionsKeepTheirPrefixes) {
    const std::string text = std::string("<g:gpx version='1.1' xmlns:g='") + kGpx11Uri +
                             "'><g:wpt lat='1' lon='2'><g:extensions><g:a><g:b/></g:a></g:extensions></g:wpt>"
                             "</g:gpx>";
    EXPECT_EQ(Copied(CopyElement, text, "<g:extensions"), "<extensions><g:a><g:b/></g:a></extensions>");
}

// GPX 1.0 in the extensions of GPX 1.1.

TEST(SourceCopyTest, AnElementOfGpx10KeepsItsNamespace) {
    EXPECT_EQ(Copied(CopyIn10, Gpx10(Waypoint("<a b='1'>2<c/></a>")), "<a"),
              "<a" + kIn10 + " b='1'>2<c/></a>");
    const std::string declared = "<a xmlns='" + std::string(kGpx10Uri) + "'/>";
    EXPECT_EQ(Copied(CopyIn10, Gpx11(Waypoint(declared)), "<a"), declared);
}

TEST(SourceCopyTest, AnElementOfGpx10WithAPrefixNeedsNoDefaultNamespace) {
    const std::string text = Gpx11(Waypoint("<g:a/>"), " xmlns:g='" + std::string(kGpx10Uri) + "'");
    EXPECT_EQ(Copied(CopyIn10, text, "<g:a"), "<g:a/>");
    EXPECT_EQ(CopiedElsewhere(CopyIn10, text, "<g:a"), "<g:a xmlns:g=\"" + std::string(kGpx10Uri) + "\"/>");
}

// Plain elements.

bool IsPlain(const std::string& element, const std::string& attributes = "") {
    const std::string text = Gpx11(Waypoint(element), attributes);
    bool isPlain = false;
    WrittenFor(text, element.substr(0, 3), text, [&](Writing& writing, const SourceElement& found) {
        isPlain = IsPlainGpx(writing.NamesOf(*found.source), *found.source, found.child.begin, found.end);
    });
    return isPlain;
}

TEST(SourceCopyTest, GpxWithoutPrefixesAndDefaultNamespacesIsPlain) {
    const std::string declared = std::string(" xmlns='") + kGpx11Uri + "'";
    const std::string prefix = std::string(" xmlns:g='") + kGpx11Uri + "'";
    EXPECT_TRUE(IsPlain("<link href='a'><text>t</text><!-- c --></link>"));
    EXPECT_TRUE(IsPlain("<link xmlns:x='urn:x'><x:a xmlns='urn:b'><c/></x:a></link>"));
    EXPECT_TRUE(IsPlain("<extensions><a" + declared + "/><g:b/></extensions>", prefix));
    EXPECT_FALSE(IsPlain("<link" + declared + "/>"));
    EXPECT_FALSE(IsPlain("<link><text" + declared + "/></link>"));
    EXPECT_FALSE(IsPlain("<g:link/>", prefix));
    EXPECT_FALSE(IsPlain("<link><g:text/></link>", prefix));
    EXPECT_FALSE(IsPlain("<extensions" + declared + "/>"));
}

// Attributes.

std::string AttributesOf(const std::string& text, const std::string& main, std::string_view declared = {}) {
    return WrittenFor(text, "<wpt", main, [&](Writing& writing, const SourceElement& element) {
        CopyAttributes(
            writing, element, [](std::string_view name) { return name == "lat"; }, declared);
    });
}

TEST(SourceCopyTest, AttributesKeepTheirQuotesAndAreLeftOutByName) {
    const std::string text = kRoot + "><wpt lat='1' lon = \"2\" a='\"&lt;'/></gpx>";
    EXPECT_EQ(AttributesOf(text, text), " lon=\"2\" a='\"&lt;'");
}

TEST(SourceCopyTest, PrefixesOfAttributesAreDeclaredOnce) {
    const std::string text = kRoot + " xmlns:x='urn:x' xmlns:y='urn:y'><wpt lat='1' lon='2' x:a='1' y:b='2' "
                                     "x:c='3' xml:lang='de' xmlns:z='urn:z'/></gpx>";
    EXPECT_EQ(AttributesOf(text, text), " lon='2' x:a='1' y:b='2' x:c='3' xml:lang='de'");
    EXPECT_EQ(AttributesOf(text, Gpx11("")), " lon='2' xmlns:x=\"urn:x\" x:a='1' xmlns:y=\"urn:y\" y:b='2' "
                                             "x:c='3' xml:lang='de'");
    EXPECT_EQ(AttributesOf(text, Gpx11(""), "x"),
              " lon='2' x:a='1' xmlns:y=\"urn:y\" y:b='2' x:c='3' xml:lang='de'");
}

} // namespace
} // namespace vexaTransferLib::standard
