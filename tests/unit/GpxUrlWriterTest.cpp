// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUrl.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <string>

using namespace vexaTransferLib;
using testing_support::ModelDoors;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxUrl.cpp";

std::string Written(const GpxUrl& url, unsigned long minor) {
    icu::UnicodeString out;
    url.AppendToString(GpxVersion(1, minor), out);
    return Utf8(out);
}

GpxUrl MakeUrl(const char16_t* address, const char16_t* text, const char16_t* type) {
    GpxUrl url(address);
    if (text != nullptr)
        url.SetUrlText(text);
    if (type != nullptr)
        url.SetUrlType(type);
    return url;
}

} // namespace

TEST(GpxUrlWriterTest, WritesWhatIsThere) {
    const struct {
        GpxUrl url;
        const char* as10;
        const char* as11;
        const char* reason;
    } rows[] = {
        {MakeUrl(u"http://a/?x=1&y=\"<2>'", nullptr, nullptr),
         "<url>http://a/?x=1&amp;y=&quot;&lt;2&gt;&apos;</url>\r\n",
         "<link href=\"http://a/?x=1&amp;y=&quot;&lt;2&gt;&apos;\">\r\n</link>\r\n",
         "the address alone, escaped"},
        {MakeUrl(u"a", u"Home & <more>", nullptr),
         "<url>a</url>\r\n<urlname>Home &amp; &lt;more&gt;</urlname>\r\n",
         "<link href=\"a\">\r\n<text>Home &amp; &lt;more&gt;</text>\r\n</link>\r\n", "with a text"},
        {MakeUrl(u"a", nullptr, u"t&t"), "<url>a</url>\r\n",
         "<link href=\"a\">\r\n<type>t&amp;t</type>\r\n</link>\r\n", "1.0 has no place for the type"},
        {MakeUrl(u" ", u" ", u" "), "<url> </url>\r\n<urlname> </urlname>\r\n",
         "<link href=\" \">\r\n<text> </text>\r\n<type> </type>\r\n</link>\r\n", "blanks are there"},
        {MakeUrl(u"\u00E9\n", u"\U0001F30D", nullptr),
         "<url>\xC3\xA9\n</url>\r\n<urlname>\xF0\x9F\x8C\x8D</urlname>\r\n",
         "<link href=\"\xC3\xA9\n\">\r\n<text>\xF0\x9F\x8C\x8D</text>\r\n</link>\r\n",
         "as the model holds it"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(Written(row.url, 0), row.as10);
        EXPECT_EQ(Written(row.url, 1), row.as11);
    }
}

TEST(GpxUrlWriterTest, Appends) {
    icu::UnicodeString out(u"before ");
    GpxUrl(u"a").AppendToString(GpxVersion(1, 0), out);
    EXPECT_EQ(Utf8(out), "before <url>a</url>\r\n");
}

TEST(GpxUrlWriterTest, RefusesUnknownVersionsAndAppendsNothing) {
    for (const GpxVersion& version :
         {ModelDoors::MakeVersion(1, 2), ModelDoors::MakeVersion(2, 0), ModelDoors::MakeVersion(0, 1)}) {
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(GpxUrl(u"a").AppendToString(version, out), dbc::precondition_error,
                       "GPX URLs can only be written to version 1.0 or 1.1 files.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxUrlWriterTest, ReportsATextThatMemoryCannotHold) {
    const GpxUrl url(icu::UnicodeString(20000, u'x', 20000));
    icu::UnicodeString out;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_FAILURE(url.AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                       "The GPX text is too large to be held in memory.", kSource);
    }
    EXPECT_TRUE(out.isBogus());
}

TEST(GpxUrlWriterTest, ReportsATextThatWasGivenUpBefore) {
    icu::UnicodeString out;
    out.setToBogus();
    EXPECT_FAILURE(GpxUrl(u"a").AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                   "The GPX text is too large to be held in memory.", kSource);
}
