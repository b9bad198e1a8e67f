// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TagWatcher.h>

#include "support/GpxText.h"

#include <vexaTransferLib/reader/ReadAborted.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <string>

namespace vexaTransferLib::reader {
namespace {

using testing_support::Repeat;
using testing_support::Wide;
using Extent = InputLimiter::Extent;

GpxInputLimits LowLimits(std::uint64_t tagBytes = 60) {
    GpxInputLimits limits;
    limits.attributes = 3;
    limits.tagBytes = tagBytes;
    limits.textLength = 50;
    return limits;
}

/// The bytes that a parser gets when it reads `step` bytes at a time, and why the rest is refused.
struct Watched {
    Watched(const std::string& bytes, std::size_t step, const GpxInputLimits& limits = LowLimits(),
            const std::u16string& encoding = {}, Extent extent = Extent::kFile) {
        TagWatcher watcher(limits, InputName(u"walk.gpx"), extent, encoding);
        try {
            for (std::size_t at = 0; at < bytes.size(); at += step) {
                // Not called before the first read, which the XML parser does while it makes its reader.
                if (at != 0)
                    watcher.ThrowIfRefused();
                const std::string piece = bytes.substr(at, step);
                given += piece.substr(
                    0, watcher.Watch(reinterpret_cast<const unsigned char*>(piece.data()), piece.size()));
            }
            watcher.ThrowIfRefused();
        } catch (const ReadAborted& stop) {
            try {
                std::rethrow_exception(stop.reason);
            } catch (const std::exception& exception) {
                refusal = exception.what();
            }
        }
    }

    std::string given;
    std::string refusal;
};

std::string Refusal(const std::string& why) {
    return "The untrusted GPX file was refused: walk.gpx. " + why;
}

const std::string kAttributes =
    Refusal("One of its elements has more attributes than 3 (limit of attributes).");
const std::string kTagBytes = Refusal("One of its start tags has more bytes than 60 (limit of tag bytes).");
const std::string kTextLength = Refusal("One of its texts is longer than 50 (limit of text length).");

void ExpectAll(const std::string& bytes, const std::u16string& encoding = {}) {
    for (const std::size_t step : {std::size_t{1}, std::size_t{3}, bytes.size()}) {
        const Watched watched(bytes, step, LowLimits(), encoding);
        EXPECT_EQ(watched.refusal, "") << bytes;
        EXPECT_EQ(watched.given, bytes);
    }
}

/// \param before the bytes before the place of the refusal
void ExpectCut(const std::string& before, const std::string& after, const std::string& refusal) {
    for (const std::size_t step : {std::size_t{1}, before.size() + after.size()}) {
        const Watched watched(before + after, step);
        EXPECT_EQ(watched.refusal, refusal) << before;
        EXPECT_EQ(watched.given, before);
    }
}

const std::string kTooMany = "<x a='' b='' c='' d=''/>";

TEST(TagWatcherTest, CutsAStartTagBeforeTheEqualsSignOfTheFirstAttributeTooMany) {
    ExpectAll("<x a='' b='' c=''/>");
    ExpectCut("<x a='' b='' c='' d", "=''/>", kAttributes);
    ExpectCut("<?p?><!-- c --><x><y a='>' b=\"'>\" c='\"' d ", "= '1'></y></x>", kAttributes);
    ExpectCut("<x a='1'>t</x><![CDATA[]]]><x a='1' b='1' c='1'\n\td", "=''>", kAttributes);
}

TEST(TagWatcherTest, CountsNoEqualsSignElsewhere) {
    for (const std::string& plain :
         {Repeat("=", 20), std::string("<x a='====' b=\"'=='==\" c='>=='/>====</x ==>"),
          "<!--" + kTooMany + "-->" + "<!-- - -- " + kTooMany + "-->", "<![CDATA[" + kTooMany + "]]>",
          "<![CDATA[]>]]" + kTooMany + "]]]>", "<?p " + kTooMany + "? >?>",
          "<?p?" + kTooMany +
              "?"
              "?>",
          std::string("<x a=''/><x a=''/><x a=''/><x a=''/>"),
          std::string("<!DOCTYPE g [<!E a = b = c = d = e>")})
        ExpectAll("<g>" + plain);
}

TEST(TagWatcherTest, LeavesWhatIsIllFormedToTheParser) {
    for (const char* start : {"<!x", "<!-x", "<!>"})
        ExpectAll(start + kTooMany);
}

TEST(TagWatcherTest, CutsAStartTagThatIsTooLong) {
    const std::string longest = "<x a='" + std::string(52, 'v') + "'";
    ExpectAll(longest + ">" + "</x" + std::string(1000, ' ') + ">");
    const std::string name = "<" + std::string(59, 'n');
    EXPECT_EQ(Watched("<y/>" + name + "n/>", 1).refusal, kTagBytes);
    EXPECT_EQ(Watched("<y/>" + name + "n/>", 1).given, "<y/>" + name);
    const Watched watched("<y/>" + longest + "vvvv'/>", 1000);
    EXPECT_EQ(watched.refusal, kTagBytes);
    EXPECT_LE(watched.given.size(), 64U);
}

TEST(TagWatcherTest, CutsOtherMarkupThatCannotHoldATextWithinTheLimit) {
    const std::string fine(50, 'a');
    const std::string threeBytes = Repeat("\xE2\x82\xAC", 50);
    for (const std::string& text : {fine, threeBytes, Repeat("\r\n", 50)})
        ExpectAll("<!--" + text + "--><?p " + text + "?><![CDATA[" + text + "]]>");
    const std::string tooLong(300, 'a');
    for (const char* start : {"<!--", "<?p ", "<![CDATA["}) {
        EXPECT_EQ(Watched(start + tooLong, 1).refusal, kTextLength) << start;
        EXPECT_EQ(Watched(start + tooLong, 1000).refusal, kTextLength) << start;
        EXPECT_LT(Watched(start + tooLong, 1).given.size(), 270U) << start;
    }
    // Outside markup the parser reports texts in pieces.
    ExpectAll("<x>" + std::string(10000, 'a'));
}

TEST(TagWatcherTest, CutsADocumentTypeThatDoesNotGetToItsEnd) {
    const Watched watched("<!DOCTYPE " + std::string(100000, 'a'), 5000);
    EXPECT_EQ(watched.refusal, Refusal("It has a document type declaration."));
    EXPECT_LE(watched.given.size(), 70000U);
}

TEST(TagWatcherTest, KnowsCharactersOfMoreThanOneByte) {
    for (const std::size_t width : {2U, 4U}) {
        for (const bool isBigEndian : {false, true}) {
            std::string mark = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
            if (width == 4)
                mark = isBigEndian ? std::string("\0\0\xFE\xFF", 4) : std::string("\xFF\xFE\0\0", 4);
            const auto wide = [&](const std::string& text) { return Wide(text, width, isBigEndian); };
            for (const std::string& before : {std::string(), mark, wide("<?xml version='1.0'?>"),
                                              mark + wide("<?xml version='1.0' encoding='UTF-16'?>\n")}) {
                ExpectAll(before + wide("<x a='=='/><!--" + std::string(40, 'c') + "-->"));
                const std::string tooMany = before + wide("<x a='' b='' c='' d");
                const Watched watched(tooMany + wide("=''/>"), 5, LowLimits(1000));
                EXPECT_EQ(watched.refusal, kAttributes);
                // Up to the last byte of the character.
                EXPECT_LT(watched.given.size() - tooMany.size(), width);
            }
        }
    }
    ExpectCut("\xEF\xBB\xBF<x a='' b='' c='' d", "=''/>", kAttributes);
}

TEST(TagWatcherTest, FollowsADeclarationToAnotherWidth) {
    const std::string tag = "<x a='' b='' c='' d";
    const std::string ofBytes = "<?xml version='1.0' encoding='UTF-16LE'?>";
    EXPECT_EQ(Watched(ofBytes + Wide(tag + "=", 2, false), 3, LowLimits(1000)).refusal, kAttributes);
    const std::string wide = Wide("<?xml version='1.0' encoding='UTF-8'?>", 2, true);
    EXPECT_EQ(Watched(wide + tag + "=", 3).refusal, kAttributes);
    EXPECT_EQ(Watched(wide + Wide(tag + "=", 4, true), 3, LowLimits(1000)).refusal, kAttributes);
}

std::string OfEncoding(const std::string& name) {
    return Refusal("Its encoding is read from trusted files only: " + name + ".");
}

TEST(TagWatcherTest, RefusesEncodingsThatItCannotFollow) {
    ExpectCut("<?xml version='1.0' encoding='UTF-7'?", ">+ADw-x/+AD4-", OfEncoding("UTF-7"));
    ExpectCut("<?xml version = \"1.0\"\n\t encoding\r=  \"ISO-2022-JP\" standalone='yes'?", "><x/>",
              OfEncoding("ISO-2022-JP"));
    EXPECT_EQ(Watched(Wide("<?xml version='1.0' encoding='IBM037'?>", 2, false), 7).refusal,
              OfEncoding("IBM037"));
    ExpectCut("\x4C\x6F\xA7", "\x94\x93\x40", OfEncoding("EBCDIC"));
    for (const char* fine : {"<?xml version='1.0' encoding='windows-1252'?>", "<?xml version='1.0'?>",
                             "<?xml version='1.0' encoding='no-such'?>", "<?xml-style encoding='UTF-7'?>",
                             "<?xml version=\"encoding='UTF-7'\"?>", "<x/><?xml encoding='UTF-7'?>",
                             "<?xml version='1.0' encoding='UTF-16'?>"})
        ExpectAll(std::string(fine) + "<x a='1'/>");
}

TEST(TagWatcherTest, TheHostsEncodingWinsOverThatOfTheFile) {
    ExpectAll("<?xml version='1.0' encoding='UTF-7'?><x/>", u"UTF-8");
    const Watched watched("<x/>", 10, LowLimits(), u"UTF-7");
    EXPECT_EQ(watched.refusal, OfEncoding("UTF-7"));
    // At least one byte, because no byte would mean an empty file.
    EXPECT_EQ(watched.given, "<");
    EXPECT_EQ(Watched(Wide("<x a='' b='' c='' d=", 2, false), 9, LowLimits(), u"UTF-16").refusal,
              kAttributes);
}

TEST(TagWatcherTest, ABracketThatIsPartOfACharacterEndsNoCData) {
    const std::string declaration = "<?xml version='1.0' encoding='Shift_JIS'?>";
    // In Shift_JIS 83 5D is one character, as is B1.
    ExpectAll(declaration + "<![CDATA[\x83]]>" + kTooMany + "]]>");
    ExpectCut(declaration + "<![CDATA[\xB1]]><x a='' b='' c='' d", "=''/>", kAttributes);
    ExpectCut(declaration + "<![CDATA[\x83\x83]]><x a='' b='' c='' d", "=''/>", kAttributes);
    ExpectCut(declaration + "\x83<x a='' b='' c='' d", "=''/>", kAttributes);
}

TEST(TagWatcherTest, EndsAHeadThatIsTooLong) {
    GpxInputLimits limits;
    limits.headBytes = 5000;
    const std::string head = "<x>" + std::string(5000 + 1024 - 3, ' ');
    for (const std::size_t step : {1U, 1000U, 10000U}) {
        const Watched fine(head, step, limits, {}, Extent::kHead);
        EXPECT_EQ(fine.refusal, "");
        EXPECT_EQ(fine.given, head);
        const Watched tooLong(head + "<wpt/>", step, limits, {}, Extent::kHead);
        EXPECT_EQ(tooLong.refusal, Refusal("Its head has more bytes than 5000 (limit of head bytes)."));
        EXPECT_EQ(tooLong.given, head);
        EXPECT_EQ(Watched(head + "<wpt/>", step, limits).refusal, "");
    }
    limits.headBytes = UINT64_MAX;
    EXPECT_EQ(Watched(head, 100, limits, {}, Extent::kHead).refusal, "");
}

} // namespace
} // namespace vexaTransferLib::reader
