// SPDX-License-Identifier: MIT
#include "support/Tool.h"

namespace {

using cli::Gpx;
using cli::Result;
using cli::Tool;
using testing::HasSubstr;
using testing::Not;

std::string ShowOf(const std::string& document, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"show", "-"});
    const Result result = Tool(std::move(options)).Stdin(document).Run();
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    return result.out;
}

TEST(ShowCompleteTest, TheHeadHasAuthorDescriptionKeywordsAndLinks) {
    const std::string document =
        Gpx("<metadata><name>N</name><desc>A walk</desc><author><name>Me</name><email id='a' "
            "domain='b.c'/></author>"
            "<link href='u'><text>U</text></link><link href='v'/><keywords>k, l</keywords></metadata>");
    EXPECT_EQ(ShowOf(document), "-\n"
                                "  Name       N\n"
                                "  Author     Me, a@b.c\n"
                                "  About      A walk\n"
                                "  Keywords   k, l\n"
                                "  Links      u (U)\n"
                                "             v\n"
                                "  Waypoints  0\n"
                                "  Routes     0\n"
                                "  Tracks     0\n"
                                "  It holds no waypoint, route or track.\n");
    EXPECT_EQ(ShowOf(document, {"--as-host"}),
              "-\n"
              "  Name       N\n"
              "  Waypoints  0\n"
              "  Routes     0\n"
              "  Tracks     0\n"
              "  It holds no waypoint, route or track in the GPX namespace of its version.\n");
    EXPECT_THAT(ShowOf(Gpx("")), Not(HasSubstr("Name")));
}

TEST(ShowCompleteTest, OnlyTheFirstLinksAreShown) {
    std::string links;
    for (int i = 1; i <= 7; ++i)
        links += "<link href='a" + std::to_string(i) + "'/>";
    const std::string shown = ShowOf(Gpx("<metadata>" + links + "</metadata>"));
    EXPECT_THAT(shown, HasSubstr("             a5\n             … and 2 more\n  Waypoints"));
}

std::string Sensed(const std::string& values) {
    return "<trkpt lat='1' lon='2'><extensions><x xmlns='urn:x'>" + values + "</x></extensions></trkpt>";
}

TEST(ShowCompleteTest, ATrackHasItsNumberTypeAndCommentAndWhatSensorsMeasured) {
    const std::string document =
        Gpx("<trk><name>T</name><cmt>c</cmt><number>3</number><type>run</type><trkseg>" +
            Sensed("<hr>90</hr><cad>80</cad><atemp>-0.2</atemp>") + Sensed("<hr>150</hr><cad>80</cad>") +
            Sensed("<hr>120.4</hr><power>200</power><hr>999</hr>") + "</trkseg></trk><trk/>");
    const std::string shown = ShowOf(document);
    EXPECT_THAT(shown, HasSubstr("     number 3, type run, comment: c\n"
                                 "     heart rate 90 to 150 (mean 120) bpm, cadence 80 rpm\n"
                                 "     power 200 W, temperature 0 °C\n"));
    EXPECT_THAT(ShowOf(document, {"--as-host"}), Not(HasSubstr("heart rate")));
    EXPECT_THAT(ShowOf(Gpx("<rte><number>4</number></rte>")), HasSubstr("     number 4\n"));
}

TEST(ShowCompleteTest, AGeocacheHasItsAvailabilityAndCountry) {
    const auto cache = [](const std::string& attributes, const std::string& content) {
        return Gpx("<wpt lat='1' lon='2'><name>GC1</name><extensions><g:cache " + attributes +
                   "><g:name>n</g:name>" + content + "</g:cache></extensions></wpt>");
    };
    EXPECT_THAT(
        ShowOf(cache("available='False' archived='False'", "<g:country>C</g:country><g:state>S</g:state>")),
        HasSubstr("     not available, S, C\n"));
    EXPECT_THAT(ShowOf(cache("available='False' archived='True'", "")), HasSubstr("     archived\n"));
    EXPECT_THAT(ShowOf(cache("available='True' archived='False'", "")), Not(HasSubstr("available")));
}

TEST(ShowCompleteTest, AFileWithoutANamespaceIsShown) {
    EXPECT_THAT(ShowOf("<gpx><wpt lat='1' lon='2'/></gpx>"), HasSubstr("  Waypoints  1\n"));
}

} // namespace
