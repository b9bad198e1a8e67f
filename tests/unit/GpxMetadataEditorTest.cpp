// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElementEditor.h>

#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxSaver.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kHead11 = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";
const std::string kHead10 = "<gpx version='1.0' creator='c' xmlns='http://www.topografix.com/GPX/1/0'>";
const std::string kTail = "</gpx>\n";

std::string Saved(const std::string& head, const std::string& content,
                  const std::function<void(GpxDocument&)>& edit, const GpxSaveOptions& options = {}) {
    GpxDocument document = ReadCompletely(head + content + kTail);
    edit(document);
    const std::string saved = GpxSaver(options).GetText(document);
    EXPECT_TRUE(saved.starts_with(head)) << saved;
    EXPECT_TRUE(saved.ends_with(kTail)) << saved;
    return saved.substr(head.size(), saved.size() - head.size() - kTail.size());
}

GpxPerson Person() {
    GpxPerson person;
    person.name = u"A & B";
    person.email = u"a.b@example.org";
    person.link = GpxLink{u"https://example.org/?a=1&b=2", u"Us", u"text/html"};
    return person;
}

std::string Message(const std::function<void(const GpxMetadataEditor&)>& change) {
    GpxDocument document = ReadCompletely(kHead11 + kTail);
    try {
        change(document.EditMetadata());
    } catch (const dbc::precondition_error& error) {
        EXPECT_EQ(GpxSaver().GetText(document), kHead11 + kTail);
        return error.what();
    }
    return "nothing was thrown";
}

TEST(GpxMetadataEditorTest, WhatIsSetTakesThePlaceOfWhatWasRead) {
    EXPECT_EQ(
        Saved(kHead11,
              "\n  <metadata>\n    <desc>old</desc>\n    <author a='b'><name>x</name></author>\n"
              "    <keywords/>\n    <bounds maxlat='9' minlat = '0' minlon='0' maxlon='0'/>\n  </metadata>\n",
              [](GpxDocument& document) {
                  document.EditMetadata().SetDescription(u"<new>");
                  document.EditMetadata().SetKeywords(u"k");
                  document.EditMetadata().SetAuthor(Person());
                  document.EditMetadata().SetBounds({1.5, -2, 3, 4});
              }),
        "\n  <metadata>\n    <desc>&lt;new&gt;</desc>\n    <author a='b'>\n      <name>A &amp; B</name>\n"
        "      <email id=\"a.b\" domain=\"example.org\"/>\n"
        "      <link href=\"https://example.org/?a=1&amp;b=2\"><text>Us</text><type>text/html</type></link>\n"
        "    </author>\n    <keywords>k</keywords>\n"
        "    <bounds maxlat=\"3\" minlat = \"1.5\" minlon=\"-2\" maxlon=\"4\"/>\n  </metadata>\n");
}

TEST(GpxMetadataEditorTest, WhatIsNewComesInTheOrderOfTheSchema) {
    const auto set = [](GpxDocument& document) {
        document.EditMetadata().SetBounds({1, 2, 3, 4});
        document.EditMetadata().SetKeywords(u"k");
        document.EditMetadata().SetAuthor({icu::UnicodeString(u"A"), std::nullopt, std::nullopt});
        document.EditMetadata().SetDescription(u"d");
        document.SetDocumentTime(0);
        document.SetName(u"n");
    };
    const std::string fields = "<name>n</name><desc>d</desc><author><name>A</name></author>"
                               "<time>1970-01-01T00:00:00Z</time><keywords>k</keywords>"
                               "<bounds minlat=\"1\" minlon=\"2\" maxlat=\"3\" maxlon=\"4\"/>";
    EXPECT_EQ(Saved(kHead11, "<wpt lat='1' lon='1'/>", set),
              "<metadata>" + fields + "</metadata><wpt lat='1' lon='1'/>");
    EXPECT_EQ(Saved(kHead11, "<metadata/>", set), "<metadata>" + fields + "</metadata>");
    EXPECT_EQ(Saved(kHead11, "<metadata></metadata>", set), "<metadata>" + fields + "</metadata>");
    EXPECT_EQ(Saved(kHead10, "<wpt lat='1' lon='1'/>", set),
              "<name>n</name><desc>d</desc><author>A</author><time>1970-01-01T00:00:00Z</time><keywords>k</"
              "keywords>"
              "<bounds minlat=\"1\" minlon=\"2\" maxlat=\"3\" maxlon=\"4\"/><wpt lat='1' lon='1'/>");
}

TEST(GpxMetadataEditorTest, AnAuthorOfGpx10IsTwoTextsWithoutALink) {
    std::string unwritten;
    GpxSaveOptions options;
    options.unwritten = [&](const GpxUnwritten& what) { unwritten += what.message; };
    EXPECT_EQ(Saved(
                  kHead10, "<author>x</author>",
                  [](GpxDocument& document) { document.EditMetadata().SetAuthor(Person()); }, options),
              "<author>A &amp; B</author><email>a.b@example.org</email>");
    EXPECT_EQ(unwritten, "GPX 1.0 has no place for the link of an author.");
}

TEST(GpxMetadataEditorTest, ClearedValuesAreGone) {
    const auto clear = [](GpxDocument& document) {
        document.EditMetadata().ClearAuthor();
        document.EditMetadata().ClearBounds();
        document.EditMetadata().ClearDescription();
        document.EditMetadata().ClearKeywords();
    };
    EXPECT_EQ(Saved(kHead11,
                    "<metadata><name>n</name><desc>d</desc><author/><keywords>k</keywords><keywords/>"
                    "<bounds minlat='1' minlon='1' maxlat='1' maxlon='1'/></metadata>",
                    clear),
              "<metadata><name>n</name></metadata>");
    EXPECT_EQ(Saved(kHead10, "<desc>d</desc><author>a</author><email>a@b</email><bounds/>", clear), "");
    EXPECT_EQ(Saved(kHead11, "", clear), "");
}

TEST(GpxMetadataEditorTest, AnEmptyTextClears) {
    EXPECT_EQ(Saved(kHead11, "<metadata><desc>d</desc><keywords>k</keywords></metadata>",
                    [](GpxDocument& document) {
                        document.EditMetadata().SetDescription(u"");
                        document.EditMetadata().SetKeywords(u"");
                    }),
              "<metadata></metadata>");
}

TEST(GpxMetadataEditorTest, WhatIsSavedIsReadAgain) {
    for (const std::string& head : {kHead10, kHead11}) {
        GpxDocument document = ReadCompletely(head + kTail);
        document.EditMetadata().SetAuthor(Person());
        document.EditMetadata().SetBounds({-1.25, 2, 3, 4});
        const GpxDocument saved = ReadCompletely(GpxSaver().GetText(document));
        const GpxMetadata metadata(saved.GetElement());
        ASSERT_TRUE(metadata.GetAuthor());
        EXPECT_EQ(metadata.GetAuthor()->name, u"A & B");
        EXPECT_EQ(metadata.GetAuthor()->email, u"a.b@example.org");
        ASSERT_TRUE(metadata.GetBounds());
        EXPECT_EQ(metadata.GetBounds()->minLatitude, -1.25);
    }
}

TEST(GpxMetadataEditorTest, WhatCannotBeWrittenIsRefused) {
    const icu::UnicodeString bad(u'\x01');
    const std::string noText = "XML cannot hold this text.";
    const std::string noAddress = "An address of mail has an @ with something before and after it.";
    const auto author = [](const GpxPerson& person) {
        return Message([&](const GpxMetadataEditor& editor) { editor.SetAuthor(person); });
    };
    EXPECT_EQ(Message([&](const GpxMetadataEditor& editor) { editor.SetDescription(bad); }), noText);
    EXPECT_EQ(Message([&](const GpxMetadataEditor& editor) { editor.SetKeywords(bad); }), noText);
    EXPECT_EQ(author({bad, std::nullopt, std::nullopt}), noText);
    EXPECT_EQ(author({std::nullopt, u"a@" + bad, std::nullopt}), noText);
    EXPECT_EQ(author({std::nullopt, std::nullopt, GpxLink{bad, u"", u""}}), noText);
    EXPECT_EQ(author({std::nullopt, std::nullopt, GpxLink{u"", bad, u""}}), noText);
    EXPECT_EQ(author({std::nullopt, std::nullopt, GpxLink{u"", u"", bad}}), noText);
    for (const char16_t* const address : {u"", u"a", u"a@", u"@b"})
        EXPECT_EQ(author({std::nullopt, icu::UnicodeString(address), std::nullopt}), noAddress);
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const GpxBounds& bounds : {GpxBounds{none, 0, 0, 0}, GpxBounds{0, none, 0, 0},
                                    GpxBounds{0, 0, none, 0}, GpxBounds{0, 0, 0, none}})
        EXPECT_EQ(Message([&](const GpxMetadataEditor& editor) { editor.SetBounds(bounds); }),
                  "Bounds must be finite.");
}

TEST(GpxMetadataEditorTest, ADocumentThatWasNotReadCompletelyHasNoMetadataToChange) {
    GpxDocument document;
    EXPECT_THROW(document.EditMetadata().ClearAuthor(), dbc::precondition_error);
    try {
        document.EditMetadata().SetKeywords(u"k");
    } catch (const dbc::precondition_error& error) {
        EXPECT_STREQ(error.what(),
                     "Only the metadata of a document that was read completely can be changed.");
    }
}

} // namespace
} // namespace vexaTransferLib
