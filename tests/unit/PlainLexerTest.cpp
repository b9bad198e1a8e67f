// SPDX-License-Identifier: MIT
#include "support/WindowOnBytes.h"

#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/PlainLexer.h>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::reader {

void PrintTo(NotPlain why, std::ostream* out) {
    *out << "reason " << static_cast<int>(why);
}

namespace {

using testing_support::WindowOn;

std::string Narrow(const char16_t* units) {
    std::string narrow;
    for (; units != nullptr && *units != u'\0'; ++units)
        narrow += static_cast<char>(*units);
    return narrow;
}

/// Writes down what it receives: "<uri|name a=[value]>", "text[...]", "</>".
class Recorder final {
public:
    explicit Recorder(ByteWindow& window) : window_(window) {}

    void StartElement(const PlainTag& tag) {
        log += "<" + Narrow(tag.namespaceUri) + "|" + Narrow(tag.name.Local());
        for (const PlainAttribute& attribute : tag.attributes)
            log += " " + Narrow(attribute.name->Qualified()) + "=" + Show(attribute.value);
        log += ">";
        places += std::to_string(tag.begin) + "-" + std::to_string(tag.end) + " ";
        begin_ = tag.begin;
    }
    void EndElement(std::uint64_t end) {
        log += "</>";
        places += "/" + std::to_string(end) + " ";
    }
    void Text(const RawText& text) { log += "text" + Show(text); }
    void CData(const RawText& text) { log += "cdata" + Show(text); }
    void Other() { log += "other"; }
    std::uint64_t KeptFrom(std::uint64_t next) const { return keepsTags ? std::min(begin_, next) : next; }

    bool keepsTags = false;
    std::string log;
    std::string places;

private:
    std::string Show(const RawText& text) const {
        constexpr std::string_view kForms[] = {"", "utf8:", "encoded:", "section:"};
        return "[" + std::string(kForms[static_cast<std::size_t>(text.form)]) +
               std::string(window_.At(text.begin), window_.At(text.end)) + "]";
    }

    ByteWindow& window_;
    std::uint64_t begin_ = 0;
};

struct Lexed {
    NotPlain why;
    std::string log;
    std::string places;
};

Lexed Lex(std::string_view bytes, std::size_t capacity = ByteWindow::kStartCapacity, bool keepsTags = false) {
    ByteWindow window = WindowOn(bytes, capacity);
    Recorder recorder(window);
    recorder.keepsTags = keepsTags;
    const NotPlain why = LexPlain(window, std::nullopt, recorder);
    return {why, recorder.log, recorder.places};
}

std::string LogOf(std::string_view bytes) {
    const Lexed lexed = Lex(bytes);
    EXPECT_EQ(lexed.why, NotPlain::kIsPlain) << bytes;
    return lexed.log;
}

NotPlain WhyNot(std::string_view bytes, const std::optional<GpxInputLimits>& limits = std::nullopt) {
    ByteWindow window = WindowOn(bytes);
    std::vector<LongElement> longElements;
    return CheckPlain(window, limits, longElements);
}

TEST(PlainLexerTest, FindsElementsAndTexts) {
    EXPECT_EQ(LogOf("<a/>"), "<|a></>");
    EXPECT_EQ(LogOf("<a></a>"), "<|a></>");
    EXPECT_EQ(LogOf("<?xml version='1.0'?>\n<a >x<b\n/>y</a\t>\r\n "), "<|a>text[x]<|b></>text[y]</>");
    EXPECT_EQ(LogOf("<a>\n <b-1._/></a>"), "<|a>text[\n ]<|b-1._></></>");
}

TEST(PlainLexerTest, FindsAttributes) {
    EXPECT_EQ(LogOf("<a b='1' c=\"'2'\"\n d = 'x\"y'/>"), "<|a b=[1] c=['2'] d=[x\"y]></>");
    EXPECT_EQ(LogOf("<a b='' />"), "<|a b=[]></>");
}

TEST(PlainLexerTest, SaysInWhatFormATextIs) {
    EXPECT_EQ(LogOf("<a>\xC3\xA9</a>"), "<|a>text[utf8:\xC3\xA9]</>");
    EXPECT_EQ(LogOf("<a>\xC3\xA9&amp;</a>"), "<|a>text[encoded:\xC3\xA9&amp;]</>");
    EXPECT_EQ(LogOf("<a>x\r\n</a>"), "<|a>text[encoded:x\r\n]</>");
    EXPECT_EQ(LogOf("<a>]]]&gt;]>></a>"), "<|a>text[encoded:]]]&gt;]>>]</>");
    EXPECT_EQ(LogOf("<a b='x\ty' c='\n' d='\xF0\x9F\x97\xBB' e='&#65;'/>"),
              "<|a b=[encoded:x\ty] c=[encoded:\n] d=[utf8:\xF0\x9F\x97\xBB] e=[encoded:&#65;]></>");
}

TEST(PlainLexerTest, FindsSectionsCommentsAndInstructions) {
    EXPECT_EQ(LogOf("<a><![CDATA[]]><![CDATA[<&]]]]><![CDATA[x\r]]></a>"),
              "<|a>cdata[]cdata[<&]]]cdata[section:x\r]</>");
    EXPECT_EQ(LogOf("<!----><?p?><a><!--x-y--><?p  q?r?\?></a><!-- \xC3\xA9\r --><?q-1 ?>"),
              "otherother<|a>otherother</>otherother");
}

TEST(PlainLexerTest, FindsNamespaces) {
    EXPECT_EQ(LogOf("<a xmlns='u'><b xmlns=''/><p:c xmlns:p='v' p:d='' e=''/><f/></a>"),
              "<u|a xmlns=[u]><|b xmlns=[]></><v|c xmlns:p=[v] p:d=[] e=[]></><u|f></></>");
    EXPECT_EQ(LogOf("<a p:b='' xmlns:p='u' p:c='' xml:lang='en'/>"),
              "<|a p:b=[] xmlns:p=[u] p:c=[] xml:lang=[en]></>");
}

TEST(PlainLexerTest, KnowsWhereTagsAre) {
    EXPECT_EQ(Lex("<?xml version='1.0'?><a><bc d=''/>x</a >").places, "21-24 24-34 /34 /40 ");
}

TEST(PlainLexerTest, LeavesUnusualFilesToTheXmlParser) {
    EXPECT_EQ(WhyNot("<?xml version='1.0' encoding='ISO-8859-1'?><a/>"), NotPlain::kDeclaration);
    EXPECT_EQ(WhyNot("<!DOCTYPE a><a/>"), NotPlain::kDocumentType);
    for (const std::string lineEnd : {"\xC2\x85", "\xE2\x80\xA8"})
        for (const auto& [before, after] :
             {std::pair{"<a b='", "'/>"}, {"<!--", "--><a/>"}, {"<a><![CDATA[", "]]></a>"}})
            EXPECT_EQ(WhyNot(before + lineEnd + after), NotPlain::kOther);
    EXPECT_EQ(WhyNot("<a b='\xC2\x84\xC2\x86\xE2\x80\xA7\xE2\x80\xA9'>\xC2\x85\xE2\x80\xA8</a>"),
              NotPlain::kIsPlain);
    EXPECT_EQ(WhyNot("<\xC3\xA9/>"), NotPlain::kName);
    EXPECT_EQ(WhyNot("<a \xC3\xA9=''/>"), NotPlain::kName);
    EXPECT_EQ(WhyNot("<a xmlns:p=''/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a xmlns='&amp;'/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a xmlns='\xC3\xA9'/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<p:a/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a p:b=''/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a><b xmlns:p='u'/><p:c/></a>"), NotPlain::kNamespace);
}

TEST(PlainLexerTest, LeavesIllFormedFilesToTheXmlParser) {
    for (const std::string_view bytes : {"",
                                         " ",
                                         "x",
                                         "<",
                                         "<a",
                                         "<a ",
                                         "<a>",
                                         "<a><b></a>",
                                         "</a>",
                                         "<a/><b/>",
                                         "<a/>x",
                                         "<a/>&amp;",
                                         "x<a/>",
                                         "<a>]]></a>",
                                         "<a>&x;</a>",
                                         "<a>&amp</a>",
                                         "<a>&#0;</a>",
                                         "<a>&#xD800;</a>",
                                         "<a>\x01</a>",
                                         "<a b/>",
                                         "<a b=/>",
                                         "<a b=1/>",
                                         "<a b='<'/>",
                                         "<a b='&'/>",
                                         "<a b='1'c='2'/>",
                                         "<a b='\x01'/>",
                                         "<a / >",
                                         "<a></a",
                                         "<a></ a>",
                                         "<a></ab>",
                                         "<a></>",
                                         "<ab></a>",
                                         "<a><!-- -- --></a>",
                                         "<a><!--->",
                                         "<a><!-- --->",
                                         "<a><!-- x",
                                         "<![CDATA[x]]><a/>",
                                         "<a/><![CDATA[x]]>",
                                         "<a><![CDATA[x]></a>",
                                         "<a><![CDATA[\x02]]></a>",
                                         "<a><![cdata[x]]></a>",
                                         "<a><!x></a>",
                                         "<a><!-x--></a>",
                                         "<? p?><a/>",
                                         "<?p:q?><a/>",
                                         "<?p",
                                         "<?p x",
                                         "<?pq+?><a/>",
                                         "<?p?x?><a/>",
                                         " <?xml version='1.0'?><a/>",
                                         "<a><?XmL x?></a>",
                                         "<a>\xC0\xAF</a>",
                                         "<a>\xE0\x80\xAF</a>",
                                         "<a>\xED\xA0\x80</a>",
                                         "<a>\xEF\xBF\xBE</a>",
                                         "<a>\xEF\xBF\xBF</a>",
                                         "<a>\xF4\x90\x80\x80</a>",
                                         "<a>\xF8\x88\x80\x80\x80</a>",
                                         "<a>\x80</a>",
                                         "<a>\xC3</a>",
                                         "<a b='\xC3'/>",
                                         "<a><!--\xE9--></a>"})
        EXPECT_EQ(WhyNot(bytes), NotPlain::kOther) << bytes;
    EXPECT_EQ(WhyNot(std::string_view("<a>\0</a>", 8)), NotPlain::kOther);
    EXPECT_EQ(WhyNot(std::string_view("<a\0/>", 5)), NotPlain::kOther);
}

TEST(PlainLexerTest, LeavesNamesWithMisplacedColonsToTheXmlParser) {
    for (const std::string_view bytes :
         {"<:a/>", "<a:/>", "<a:b:c xmlns:a='u'/>", "<a:1 xmlns:a='u'/>", "<1/>", "<-a/>", "<a .b=''/>"})
        EXPECT_NE(WhyNot(bytes), NotPlain::kIsPlain) << bytes;
}

TEST(PlainLexerTest, LeavesRepeatedAttributesToTheXmlParser) {
    EXPECT_EQ(WhyNot("<a b='' b=''/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a b='' c='' b=''/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a p:b='' q:b='' xmlns:p='u' xmlns:q='u'/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a xmlns='u' xmlns='u'/>"), NotPlain::kNamespace);
    EXPECT_EQ(WhyNot("<a p:b='' q:b='' b='' xmlns:p='u' xmlns:q='v' xmlns='u'/>"), NotPlain::kIsPlain);
}

TEST(PlainLexerTest, StopsAtTheLimitsOfAnUntrustedFile) {
    const auto expectLimit = [](std::uint64_t GpxInputLimits::*limit, std::uint64_t value,
                                std::string_view atLimit, std::string_view beyond) {
        GpxInputLimits limits;
        limits.*limit = value;
        EXPECT_EQ(WhyNot(atLimit, limits), NotPlain::kIsPlain) << atLimit;
        EXPECT_NE(WhyNot(beyond, limits), NotPlain::kIsPlain) << beyond;
        EXPECT_EQ(WhyNot(beyond), NotPlain::kIsPlain) << beyond;
    };
    expectLimit(&GpxInputLimits::elementDepth, 2, "<a><b/></a>", "<a><b><c/></b></a>");
    expectLimit(&GpxInputLimits::attributes, 2, "<a b='' c=''/>", "<a b='' c='' d=''/>");
    expectLimit(&GpxInputLimits::tagBytes, 9, "<a b='1'></a>", "<a b='12'></a>");
    expectLimit(&GpxInputLimits::textLength, 9, "<a>123456789<b/>1<![CDATA[23456789]]></a>",
                "<a>1<![CDATA[234567890]]></a>");
    expectLimit(&GpxInputLimits::textLength, 9, "<a b='123456789'/>", "<a b='1234567890'/>");
    expectLimit(&GpxInputLimits::textLength, 9, "<a><!--12--></a>", "<a><!--123--></a>");
    expectLimit(&GpxInputLimits::textLength, 9, "<a><?p 123?></a>", "<a><?p 1234?></a>");
    expectLimit(&GpxInputLimits::names, 4, "<a b='' xmlns='u'/>", "<a b='' xmlns='u'><c/></a>");
    expectLimit(&GpxInputLimits::namespaces, 1, "<a xmlns='u'/>", "<a xmlns='u'><a xmlns='u'/></a>");
    expectLimit(&GpxInputLimits::namespaceLength, 2, "<a xmlns='uv'/>", "<a xmlns='uvw'/>");
}

std::string Repeated(int count, const std::string& text) {
    std::string repeated;
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

TEST(PlainLexerTest, StopsAtWhatNoFileHasWithoutLimits) {
    EXPECT_EQ(WhyNot(Repeated(256, "<a>") + Repeated(256, "</a>")), NotPlain::kIsPlain);
    EXPECT_EQ(WhyNot(Repeated(257, "<a>") + Repeated(257, "</a>")), NotPlain::kLimit);
    std::string attributes;
    for (int i = 0; i < 64; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(WhyNot("<a" + attributes + "/>"), NotPlain::kIsPlain);
    EXPECT_EQ(WhyNot("<a" + attributes + " b=''/>"), NotPlain::kLimit);
}

const std::string kEverything =
    "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>\r\n<!-- c-d --><?p q?><a-long-name xmlns='u' "
    "xmlns:pre='v' "
    "b = '1&amp;\xC3\xA9' pre:attribute=\"x\ty\">t\xF0\x9F\x97\xBB]]&gt;&#x1F5FB;&quot;\r<pre:element-name\n>"
    "<![CDATA[<]] >]]]></pre:element-name  ><e/>\xE2\x82\xAC\xE2\x82\xAC\n<e></e ><e "
    "f=''/></a-long-name>\n<!--\xC3\xA9-->\n";

TEST(PlainLexerTest, FindsTheSameWhereverTheWindowEnds) {
    const Lexed whole = Lex(kEverything);
    ASSERT_EQ(whole.why, NotPlain::kIsPlain);
    for (std::size_t capacity = 1; capacity < kEverything.size() + 2; ++capacity)
        for (const bool keepsTags : {false, true}) {
            const Lexed parts = Lex(kEverything, capacity, keepsTags);
            ASSERT_EQ(parts.why, NotPlain::kIsPlain) << capacity;
            ASSERT_EQ(parts.log, whole.log) << capacity;
            ASSERT_EQ(parts.places, whole.places) << capacity;
        }
}

TEST(PlainLexerTest, AcceptsNoFileThatIsCutOff) {
    const std::size_t rootEnd = kEverything.find("</a-long-name>") + std::string("</a-long-name>").size();
    for (std::size_t length = 0; length < rootEnd; ++length)
        ASSERT_NE(WhyNot(std::string_view(kEverything).substr(0, length)), NotPlain::kIsPlain) << length;
}

TEST(PlainLexerTest, ReadsALongTextInAWindowThatGrows) {
    const std::string text(3'000'000, 'x');
    const Lexed lexed = Lex("<a>" + text + "<b c='" + text + "'/></a>");
    EXPECT_EQ(lexed.why, NotPlain::kIsPlain);
    EXPECT_EQ(lexed.log.size(), 2 * text.size() + std::string("<|a>text[]<|b c=[]></></>").size());
}

} // namespace
} // namespace vexaTransferLib::reader
