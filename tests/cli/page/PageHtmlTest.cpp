// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageHtml.h>

#include <gmock/gmock.h>

#include <string>

namespace {

using testing::HasSubstr;
using testing::Not;
using vexagpx::Output;
using vexagpx::PageDocument;

template <class Write>
std::string Written(const Write& write) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    write(out);
    out.Flush();
    return text;
}

std::string Tables(const std::vector<PageDocument>& documents) {
    return Written([&](Output& out) { vexagpx::WritePageTables(documents, out); });
}

TEST(PageHtmlTest, EscapesWhatHtmlWouldTakeForMarkup) {
    EXPECT_EQ(Written([](Output& out) { vexagpx::WriteHtmlText("<b a=\"1\">&amp; 'ö'</b>", out); }),
              "&lt;b a=&quot;1&quot;&gt;&amp;amp; 'ö'&lt;/b&gt;");
}

TEST(PageHtmlTest, EveryTextIsEscaped) {
    const std::string hostile = "</script><img src=x>";
    PageDocument document;
    document.name = hostile;
    document.paths.push_back({hostile, {}, {{hostile, hostile}}, {}});
    document.waypoints.resize(1);
    document.waypoints[0].name = hostile;
    document.waypoints[0].note = hostile;
    const std::string html = Tables({document, document});
    EXPECT_THAT(html, HasSubstr("&lt;/script&gt;&lt;img src=x&gt;"));
    EXPECT_THAT(html, Not(HasSubstr("</script>")));
    EXPECT_THAT(html, Not(HasSubstr("<img")));
}

TEST(PageHtmlTest, SectionsHaveTheNumbersOfTheData) {
    PageDocument document;
    document.paths.resize(2);
    const std::string html = Tables({document, document});
    EXPECT_THAT(html, HasSubstr("id=\"document-1\""));
    EXPECT_THAT(html, HasSubstr("id=\"path-0-1\""));
    EXPECT_THAT(html, HasSubstr("id=\"path-1-0\""));
}

TEST(PageHtmlTest, AnEmptyDocumentSaysSo) {
    EXPECT_THAT(Tables({PageDocument()}), HasSubstr("It contains no point."));
}

TEST(PageHtmlTest, SaysWhatIsLeftOut) {
    PageDocument document;
    document.omittedPaths = 1;
    document.omittedWaypoints = 12;
    const std::string html = Tables({document});
    EXPECT_THAT(html, HasSubstr("This page leaves out 1 more route or track.</p>"));
    EXPECT_THAT(html, HasSubstr("This page leaves out 12 more waypoints.</p>"));
}

} // namespace
