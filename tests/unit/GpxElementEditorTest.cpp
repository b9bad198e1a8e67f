// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElementEditor.h>

#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxSaver.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kHead =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>";
const std::string kTail = "</gpx>\n";

GpxElement Find(const GpxElement& parent, std::string_view name) {
    for (const GpxElement& child : parent.GetChildren()) {
        if (child.GetName() == name)
            return child;
        if (const GpxElement found = Find(child, name))
            return found;
    }
    return {};
}

using Edit = std::function<void(GpxDocument&, const GpxElementEditor&)>;

// What is saved of the content of the root.
std::string Saved(const std::string& content, const Edit& edit) {
    GpxDocument document = ReadCompletely(kHead + content + kTail);
    edit(document, document.EditElements());
    const std::string saved = GpxSaver().GetText(document);
    EXPECT_TRUE(saved.starts_with(kHead)) << saved;
    EXPECT_TRUE(saved.ends_with(kTail)) << saved;
    return saved.substr(kHead.size(), saved.size() - kHead.size() - kTail.size());
}

// The same for a change of the element with a name.
std::string Changed(const std::string& content, std::string_view name,
                    const std::function<void(const GpxElementEditor&, const GpxElement&)>& change) {
    return Saved(content, [&](GpxDocument& document, const GpxElementEditor& editor) {
        change(editor, Find(document.GetElement(), name));
    });
}

template <class Change>
std::string Message(Change change) {
    try {
        change();
    } catch (const dbc::precondition_error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(GpxElementEditorTest, ATextTakesThePlaceOfWhatIsInAnElement) {
    const auto set = [](const GpxElementEditor& editor, const GpxElement& element) {
        editor.SetText(element, u"<&>\u00e9");
    };
    EXPECT_EQ(Changed("<x:a b='c'> old <i/><!-- c --></x:a>", "a", set), "<x:a b='c'>&lt;&amp;&gt;é</x:a>");
    EXPECT_EQ(Changed("<x:a b='c'/>", "a", set), "<x:a b='c'>&lt;&amp;&gt;é</x:a>");
    EXPECT_EQ(Changed("<x:a></x:a >", "a", set), "<x:a>&lt;&amp;&gt;é</x:a >");
    EXPECT_EQ(Changed("<x:a>b</x:a>", "a",
                      [](const GpxElementEditor& editor, const GpxElement& element) {
                          editor.SetText(element, u"");
                      }),
              "<x:a></x:a>");
}

TEST(GpxElementEditorTest, TheLastTextCounts) {
    EXPECT_EQ(Changed("<x:a>b</x:a>", "a",
                      [](const GpxElementEditor& editor, const GpxElement& element) {
                          editor.AddChild(element, "urn:x", "gone", u"1");
                          editor.SetText(element, u"1");
                          editor.SetText(element, u"2");
                          editor.AddChild(element, "urn:x", "n", u"3");
                      }),
              "<x:a>2<x:n>3</x:n></x:a>");
}

TEST(GpxElementEditorTest, AttributesAreReplacedAddedAndRemoved) {
    EXPECT_EQ(Changed("<x:a b = 'c'  d='e' x:b='f'>t</x:a>", "a",
                      [](const GpxElementEditor& editor, const GpxElement& element) {
                          editor.SetAttribute(element, "b", u"\"1\"");
                          editor.SetAttribute(element, "n", u"2");
                          editor.RemoveAttribute(element, "d");
                          editor.RemoveAttribute(element, "nowhere");
                      }),
              "<x:a n=\"2\" b = \"&quot;1&quot;\"  x:b='f'>t</x:a>");
}

TEST(GpxElementEditorTest, AnElementGoesWithItsLine) {
    const auto remove = [](const GpxElementEditor& editor, const GpxElement& element) {
        editor.Remove(element);
    };
    EXPECT_EQ(Changed("\n  <x:a>\n    <x:b/>\n  </x:a>\n  <x:c/>\n", "a", remove), "\n  <x:c/>\n");
    EXPECT_EQ(Changed("<x:a/><x:c/>", "a", remove), "<x:c/>");
}

TEST(GpxElementEditorTest, WhatIsInARemovedElementIsGoneWithItsChanges) {
    EXPECT_EQ(Saved("<x:a><x:b/></x:a><x:c/>",
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        editor.SetText(Find(document.GetElement(), "b"), u"1");
                        editor.Remove(Find(document.GetElement(), "a"));
                        editor.SetText(Find(document.GetElement(), "c"), u"2");
                    }),
              "<x:c>2</x:c>");
}

TEST(GpxElementEditorTest, CommentsAndInstructionsGoWithTheirLines) {
    const auto remove = [](GpxDocument&, const GpxElementEditor& editor) {
        const auto hasOne = [](std::string_view content) { return content.find('1') != content.npos; };
        EXPECT_EQ(editor.RemoveComments(hasOne), 3U);
        EXPECT_EQ(editor.RemoveComments(hasOne), 0U);
    };
    EXPECT_EQ(Saved("\n  <!-- 1 -->  \n  <x:a>b<!--1-->c</x:a> <?p 1?>\n  <!-- 2 -->\n", remove),
              "\n  <x:a>bc</x:a> \n  <!-- 2 -->\n");
}

TEST(GpxElementEditorTest, CommentsOutsideTheRootAreRemoved) {
    GpxDocument document =
        ReadCompletely("<?xml version='1.0'?>\n<!-- 1 -->\n" + kHead + kTail + "<!-- 1 -->\n");
    EXPECT_EQ(document.EditElements().RemoveComments([](std::string_view) { return true; }), 2U);
    EXPECT_EQ(GpxSaver().GetText(document), "<?xml version='1.0'?>\n" + kHead + kTail.substr(0, 6) + "\n");
}

TEST(GpxElementEditorTest, ACommentIsRemovedBesideOtherChanges) {
    EXPECT_EQ(
        Saved("\n  <wpt lat='1' lon='2'>\n    <ele>1</ele> <!-- 1 -->  \n  </wpt>\n  <x:a><!-- 2 --></x:a>\n",
              [](GpxDocument& document, const GpxElementEditor& editor) {
                  editor.RemoveComments([](std::string_view) { return true; });
                  editor.SetText(Find(document.GetElement(), "a"), u"t");
                  document.EditWaypoints()[0].SetName(u"n");
                  document.AddWaypoint(GpxPoint(kGpxWaypoint, 3, 4));
              }),
        "\n  <wpt lat='1' lon='2'>\n    <ele>1</ele> \n    <name>n</name>  \n  </wpt>\n"
        "  <wpt lat=\"3\" lon=\"4\"></wpt>\n  <x:a>t</x:a>\n");
}

TEST(GpxElementEditorTest, NoCommentIsRemovedWhenTheQuestionThrows) {
    EXPECT_EQ(Saved("<!-- 1 --><!-- 2 -->",
                    [](GpxDocument&, const GpxElementEditor& editor) {
                        EXPECT_THROW(editor.RemoveComments([](std::string_view content) {
                            return content == " 1 " ? true : throw std::runtime_error("no");
                        }),
                                     std::runtime_error);
                    }),
              "<!-- 1 --><!-- 2 -->");
}

TEST(GpxElementEditorTest, OnlyACompleteReadingHasComments) {
    GpxDocument document;
    EXPECT_EQ(Message([&] { document.EditElements().RemoveComments([](std::string_view) { return true; }); }),
              "Only comments of a document that was read completely can be removed.");
}

TEST(GpxElementEditorTest, AChildComesLastInTheLayoutOfItsNeighbours) {
    const auto add = [](const GpxElementEditor& editor, const GpxElement& element) {
        editor.AddChild(element, "urn:x", "n", u"1");
        editor.AddChild(element, "urn:y&", "m", u"");
        editor.AddChild(element, "", "o", u"2");
    };
    EXPECT_EQ(Changed("\n  <x:a>\n    <x:b/>\n  </x:a>\n", "a", add),
              "\n  <x:a>\n    <x:b/>\n    <x:n>1</x:n>\n    <m xmlns=\"urn:y&#38;\"/>\n    <o "
              "xmlns=\"\">2</o>\n  </x:a>\n");
    EXPECT_EQ(Changed("<x:a/>", "a", add),
              "<x:a><x:n>1</x:n><m xmlns=\"urn:y&#38;\"/><o xmlns=\"\">2</o></x:a>");
}

TEST(GpxElementEditorTest, AChildComesBehindATextThatStaysAsItIs) {
    const auto add = [](const GpxElementEditor& editor, const GpxElement& element) {
        editor.AddChild(element, "urn:x", "n", u"1");
    };
    EXPECT_EQ(Changed("\n  <x:a>b\n  </x:a>\n", "a", add), "\n  <x:a>b\n  <x:n>1</x:n></x:a>\n");
    EXPECT_EQ(Changed("<x:b><x:a>c</x:a></x:b>", "a", add), "<x:b><x:a>c<x:n>1</x:n></x:a></x:b>");
    EXPECT_EQ(Changed("<x:a><![CDATA[</x:a>]]></x:a >", "a", add),
              "<x:a><![CDATA[</x:a>]]><x:n>1</x:n></x:a >");
    EXPECT_EQ(Changed("\n  <x:a> \n </x:a>", "a", add), "\n  <x:a>\n    <x:n>1</x:n> \n </x:a>");
}

TEST(GpxElementEditorTest, AChildOfGpxComesWhereTheSchemaWantsIt) {
    EXPECT_EQ(Changed("<wpt lat='1' lon='2'><ele>1</ele><sym>s</sym></wpt>", "wpt",
                      [](const GpxElementEditor& editor, const GpxElement& element) {
                          editor.AddChild(element, "http://www.topografix.com/GPX/1/1", "hdop", u"3");
                          editor.AddChild(element, "http://www.topografix.com/GPX/1/1", "cmt", u"c");
                      }),
              "<wpt lat='1' lon='2'><ele>1</ele><cmt>c</cmt><sym>s</sym><hdop>3</hdop></wpt>");
}

TEST(GpxElementEditorTest, AnObjectThatMovesTakesTheChangesAlong) {
    const std::string one = "<wpt lat='1' lon='1'><extensions><x:a>1</x:a></extensions></wpt>";
    const std::string other = "<wpt lat='2' lon='2'/>";
    EXPECT_EQ(Saved(one + other,
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        editor.SetText(Find(document.GetElement(), "a"), u"9");
                        document.EditWaypoints()[0].SetName(u"n");
                        document.EditWaypoints().Move(0, 1);
                    }),
              other + "<wpt lat='1' lon='1'><name>n</name><extensions><x:a>9</x:a></extensions></wpt>");
}

TEST(GpxElementEditorTest, WhatIsRemovedWithItsObjectIsGone) {
    EXPECT_EQ(Saved("<wpt lat='1' lon='1'><x:a/></wpt><wpt lat='2' lon='2'/>",
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        editor.SetText(Find(document.GetElement(), "a"), u"9");
                        document.EditWaypoints().Remove(0);
                    }),
              "<wpt lat='2' lon='2'/>");
}

TEST(GpxElementEditorTest, TheModelCountsWhereBothChangeAnElement) {
    EXPECT_EQ(Saved("<wpt lat='1' lon='1'><name>a</name><desc>b</desc></wpt>",
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        document.EditWaypoints()[0].SetName(u"model");
                        editor.SetText(Find(document.GetElement(), "name"), u"element");
                        editor.SetText(Find(document.GetElement(), "desc"), u"element");
                    }),
              "<wpt lat='1' lon='1'><name>model</name><desc>element</desc></wpt>");
}

TEST(GpxElementEditorTest, WhatIsAddedByTheModelStaysInAnElementThatIsRemoved) {
    EXPECT_EQ(Saved("<wpt lat='1' lon='1'><name>a</name></wpt>",
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        document.EditWaypoints()[0].SetElevation(3);
                        editor.Remove(Find(document.GetElement(), "wpt"));
                    }),
              "<wpt lat='1' lon='1'><ele>3</ele><name>a</name></wpt>");
}

TEST(GpxElementEditorTest, CopiesOfTheDocumentHaveTheChangesAndOwnThem) {
    GpxDocument document = ReadCompletely(kHead + "<x:a>1</x:a>" + kTail);
    const GpxElement element = Find(document.GetElement(), "a");
    document.EditElements().SetText(element, u"2");
    GpxDocument copy(document);
    copy.EditElements().SetText(element, u"3");
    EXPECT_EQ(GpxSaver().GetText(document), kHead + "<x:a>2</x:a>" + kTail);
    EXPECT_EQ(GpxSaver().GetText(copy), kHead + "<x:a>3</x:a>" + kTail);
    const GpxDocument moved(std::move(copy));
    EXPECT_EQ(GpxSaver().GetText(moved), kHead + "<x:a>3</x:a>" + kTail);
}

TEST(GpxElementEditorTest, ViewsShowWhatWasRead) {
    GpxDocument document = ReadCompletely(kHead + "<x:a>1</x:a>" + kTail);
    const GpxElement element = Find(document.GetElement(), "a");
    document.EditElements().SetText(element, u"2");
    EXPECT_EQ(element.GetText(), u"1");
}

TEST(GpxElementEditorTest, ChangesAreCountedAndTakenBack) {
    GpxDocument document = ReadCompletely(kHead + "<x:a>1</x:a><x:b/>" + kTail);
    const GpxElementEditor editor = document.EditElements();
    const GpxElement element = Find(document.GetElement(), "a");
    editor.Restore(element);
    EXPECT_EQ(editor.GetCount(), 0U);
    editor.SetText(element, u"2");
    editor.SetAttribute(element, "b", u"2");
    editor.Remove(Find(document.GetElement(), "b"));
    EXPECT_EQ(editor.GetCount(), 2U);
    editor.Restore(element);
    EXPECT_EQ(editor.GetCount(), 1U);
    EXPECT_EQ(GpxSaver().GetText(document), kHead + "<x:a>1</x:a>" + kTail);
}

TEST(GpxElementEditorTest, AClearedDocumentHasNoChanges) {
    GpxDocument document = ReadCompletely(kHead + "<x:a>1</x:a>" + kTail);
    document.EditElements().Remove(Find(document.GetElement(), "a"));
    document.Clear();
    EXPECT_EQ(document.EditElements().GetCount(), 0U);
}

TEST(GpxElementEditorTest, OnlyElementsOfTheDocumentCanBeChanged) {
    const std::string message = "Only an element of the document can be changed.";
    GpxDocument document = ReadCompletely(kHead + "<x:a/>" + kTail);
    const GpxDocument other = ReadCompletely(kHead + "<x:a/>" + kTail);
    const GpxElement strange = Find(other.GetElement(), "a");
    const GpxElementEditor editor = document.EditElements();
    EXPECT_EQ(Message([&] { editor.SetText(strange, u"1"); }), message);
    EXPECT_EQ(Message([&] { editor.SetAttribute(strange, "a", u"1"); }), message);
    EXPECT_EQ(Message([&] { editor.RemoveAttribute(strange, "a"); }), message);
    EXPECT_EQ(Message([&] { editor.AddChild(strange, "", "a", u"1"); }), message);
    EXPECT_EQ(Message([&] { editor.Remove(GpxElement()); }), message);
    EXPECT_EQ(Message([&] { editor.Restore(strange); }), message);
    GpxDocument made;
    EXPECT_EQ(Message([&] { made.EditElements().Remove(strange); }), message);
    EXPECT_EQ(Message([&] { made.EditElements().Remove(GpxElement()); }), message);
    EXPECT_EQ(editor.GetCount(), 0U);
}

TEST(GpxElementEditorTest, WhatXmlCannotHoldIsRefused) {
    GpxDocument document = ReadCompletely(kHead + "<x:a/>" + kTail);
    const GpxElementEditor editor = document.EditElements();
    const GpxElement element = Find(document.GetElement(), "a");
    const icu::UnicodeString bad(u'\x01');
    EXPECT_EQ(Message([&] { editor.SetText(element, bad); }), "XML cannot hold this text.");
    EXPECT_EQ(Message([&] { editor.SetAttribute(element, "a", bad); }), "XML cannot hold this text.");
    EXPECT_EQ(Message([&] { editor.AddChild(element, "", "a", bad); }), "XML cannot hold this text.");
    EXPECT_EQ(Message([&] { editor.AddChild(element, "\x01", "a", u""); }), "XML cannot hold this text.");
    for (const char* name : {"", "1", "a b", "x:a", "-a", "a\xff", "a>", "\xc3\x97"}) {
        EXPECT_EQ(Message([&] { editor.SetAttribute(element, name, u""); }), "This is no name of XML.")
            << name;
        EXPECT_EQ(Message([&] { editor.AddChild(element, "", name, u""); }), "This is no name of XML.")
            << name;
    }
    for (const char* name :
         {"a", "_", "A-1.b", "\xc3\xa9\xc2\xb7", "\xe2\x82\x81\xe2\x80\xbf", "\xf0\x90\x80\x80"})
        EXPECT_EQ(Message([&] { editor.SetAttribute(element, name, u""); }), "nothing was thrown") << name;
    EXPECT_EQ(Message([&] { editor.Remove(document.GetElement()); }),
              "The root of a document cannot be removed.");
}

TEST(GpxElementEditorTest, ManyChangesAreSavedInTheirPlaces) {
    std::string content;
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        content += "<wpt lat='1' lon='1'><extensions><x:a>1</x:a></extensions></wpt>";
        expected +=
            "<wpt lat='1' lon='1'><extensions><x:a>" + std::to_string(i) + "</x:a></extensions></wpt>";
    }
    EXPECT_EQ(Saved(content,
                    [](GpxDocument& document, const GpxElementEditor& editor) {
                        int number = 0;
                        for (const GpxPoint& point : document.GetWaypoints())
                            editor.SetText(Find(point.GetElement(), "a"),
                                           icu::UnicodeString::fromUTF8(std::to_string(number++)));
                    }),
              expected);
}

} // namespace
} // namespace vexaTransferLib
