// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxSaver.h>

#include "support/ChildProcess.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kHead = "<?xml version='1.0'?>\n<gpx version='1.1' creator='c' "
                          "xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>";
const std::string kHead10 = "<gpx version='1.0' creator='c' xmlns='http://www.topografix.com/GPX/1/0'>";

constexpr char kNotWritten[] = "Unable to write the GPX file. Target could be write protected or full.";

// What is saved of a file after a change.
std::string Saved(const std::string& file, const std::function<void(GpxDocument&)>& change) {
    GpxDocument document = ReadCompletely(file);
    change(document);
    const std::string saved = GpxSaver().GetText(document);
    EXPECT_TRUE(ReadCompletely(saved) == document) << saved;
    return saved;
}

// The same for what is inside the root, which is all that may change.
std::string SavedInside(const std::string& content, const std::function<void(GpxDocument&)>& change,
                        const std::string& head = kHead) {
    const std::string tail = "</gpx><!-- end -->\n";
    std::string saved = Saved(head + content + tail, change);
    EXPECT_TRUE(saved.starts_with(head)) << saved;
    EXPECT_TRUE(saved.ends_with(tail)) << saved;
    return saved.substr(head.size(), saved.size() - head.size() - tail.size());
}

std::string SavedWaypoint(const std::string& waypoint, const std::function<void(GpxPoint&)>& change,
                          const std::string& head = kHead) {
    return SavedInside(
        waypoint, [&](GpxDocument& document) { change(document.EditWaypoints()[0]); }, head);
}

const std::string kSegment = "\n  <trk>\n    <trkseg>\n"
                             "      <trkpt lat='01' lon='1'/> <!-- one -->\n"
                             "      <trkpt lat='02' lon='1'><ele>2</ele></trkpt>\n"
                             "      <!-- three -->\n"
                             "      <trkpt lat='03' lon='1'/>\n"
                             "    </trkseg>\n  </trk>\n";

std::string SavedPoints(const std::function<void(const GpxListEditor<GpxPoint>&)>& change) {
    return SavedInside(kSegment,
                       [&](GpxDocument& document) { change(document.EditTracks()[0].EditPoints(0)); });
}

std::string Replaced(std::string text, const std::string& part, const std::string& other) {
    const std::size_t place = text.find(part);
    EXPECT_NE(place, std::string::npos) << part;
    return text.replace(place, part.size(), other);
}

TEST(GpxSaverTest, OnlyTheTextOfAChangedValueIsReplaced) {
    const std::string waypoint =
        "<wpt\tlon = '2.50'  lat=\"01.0\"><ele> 1 </ele><name a='b'><![CDATA[n]]></name>"
        "<desc>&#100;<!-- c --></desc><sat>07</sat></wpt>";
    const auto changed = [&](void (*change)(GpxPoint&)) { return SavedWaypoint(waypoint, change); };
    EXPECT_EQ(changed([](GpxPoint&) {}), waypoint);
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetName(u"n"); }), waypoint);
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetName(u"<m>"); }),
              Replaced(waypoint, "<![CDATA[n]]>", "&lt;m&gt;"));
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetElevation(0.1); }), Replaced(waypoint, " 1 ", "0.1"));
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetDescription(u"e"); }),
              Replaced(waypoint, "&#100;<!-- c -->", "e"));
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetPoint(1.0, -3.0); }), Replaced(waypoint, "'2.50'", "\"-3\""));
    EXPECT_EQ(changed([](GpxPoint& p) { p.SetPoint(1.5, 2.5); }), Replaced(waypoint, "\"01.0\"", "\"1.5\""));
    EXPECT_EQ(changed([](GpxPoint& p) { p.ClearDescription(); }),
              Replaced(waypoint, "<desc>&#100;<!-- c --></desc>", ""));
}

TEST(GpxSaverTest, ANewValueComesWhereTheSchemaHasItAndIsLaidOutAsItsNeighbours) {
    EXPECT_EQ(SavedWaypoint("\n\t<wpt lat='1' lon='2'>\n\t\t<ele>1</ele>\n\t\t<sym>s</sym>\n\t</wpt>\n",
                            [](GpxPoint& p) {
                                p.SetName(u"n");
                                p.SetType(u"t");
                                p.SetTime(0.0);
                            }),
              "\n\t<wpt lat='1' lon='2'>\n\t\t<ele>1</ele>\n\t\t<time>1970-01-01T00:00:00Z</time>\n"
              "\t\t<name>n</name>\n\t\t<sym>s</sym>\n\t\t<type>t</type>\n\t</wpt>\n");
    EXPECT_EQ(SavedWaypoint("<wpt lat='1' lon='2'><sym>s</sym></wpt>", [](GpxPoint& p) { p.SetName(u"n"); }),
              "<wpt lat='1' lon='2'><name>n</name><sym>s</sym></wpt>");
    EXPECT_EQ(SavedWaypoint("<wpt lat='1' lon='2'><x:a/></wpt>", [](GpxPoint& p) { p.SetName(u"n"); }),
              "<wpt lat='1' lon='2'><name>n</name><x:a/></wpt>");
}

TEST(GpxSaverTest, AnElementWithoutContentIsOpened) {
    EXPECT_EQ(SavedWaypoint("\r\n  <wpt lat='1' lon='2'/>\r\n",
                            [](GpxPoint& p) {
                                p.SetElevation(5);
                                p.SetName(u"n");
                            }),
              "\r\n  <wpt lat='1' lon='2'>\r\n    <ele>5</ele>\r\n    <name>n</name>\r\n  </wpt>\r\n");
    EXPECT_EQ(SavedWaypoint("\n  <wpt lat='1' lon='2'></wpt>\n", [](GpxPoint& p) { p.SetName(u"n"); }),
              "\n  <wpt lat='1' lon='2'>\n    <name>n</name>\n  </wpt>\n");
    EXPECT_EQ(SavedWaypoint("<wpt lat='1' lon='2' />", [](GpxPoint& p) { p.SetName(u"n"); }),
              "<wpt lat='1' lon='2' ><name>n</name></wpt>");
    EXPECT_EQ(SavedWaypoint("<wpt lat='1' lon='2'><name/></wpt>", [](GpxPoint& p) { p.SetName(u"n"); }),
              "<wpt lat='1' lon='2'><name>n</name></wpt>");
}

TEST(GpxSaverTest, WhatIsRemovedGoesWithItsLine) {
    const std::string waypoint = "\n <wpt lat='1' lon='2'>\n  <ele>1</ele> \t\n  <name>n</name>\n"
                                 "  <sym>s</sym><!-- sym -->\n  <name>m</name>\n </wpt>\n";
    EXPECT_EQ(SavedWaypoint(waypoint,
                            [](GpxPoint& p) {
                                p.ClearElevation();
                                p.ClearName();
                                p.ClearSymbol();
                            }),
              "\n <wpt lat='1' lon='2'>\n  <!-- sym -->\n </wpt>\n");
}

TEST(GpxSaverTest, PointsAreRemovedInsertedAndMoved) {
    EXPECT_EQ(SavedPoints([](const auto& points) { points.Remove(1); }),
              Replaced(kSegment, "      <trkpt lat='02' lon='1'><ele>2</ele></trkpt>\n", ""));
    EXPECT_EQ(SavedPoints([](const auto& points) { points.Remove(0); }),
              Replaced(kSegment, "<trkpt lat='01' lon='1'/>", ""));
    EXPECT_EQ(SavedPoints([](const auto& points) { points.Insert(2, GpxPoint(kGpxTrackPoint, 9, 8)); }),
              Replaced(kSegment, "</ele></trkpt>\n",
                       "</ele></trkpt>\n      <trkpt lat=\"9\" lon=\"8\"></trkpt>\n"));
    EXPECT_EQ(SavedPoints([](const auto& points) { points.Insert(0, GpxPoint(kGpxTrackPoint, 9, 8)); }),
              Replaced(kSegment, "      <trkpt lat='01'",
                       "      <trkpt lat=\"9\" lon=\"8\"></trkpt>\n      <trkpt lat='01'"));
    // The third point comes first; its text is taken along.
    EXPECT_EQ(SavedPoints([](const auto& points) { points.Move(2, 0); }),
              Replaced(Replaced(kSegment, "      <trkpt lat='03' lon='1'/>\n", ""), "      <trkpt lat='01'",
                       "      <trkpt lat='03' lon='1'/>\n      <trkpt lat='01'"));
    EXPECT_EQ(
        SavedPoints([](const auto& points) { points.Remove(0, 3); }),
        "\n  <trk>\n    <trkseg>\n       <!-- one -->\n      <!-- three -->\n    </trkseg>\n  </trk>\n");
}

TEST(GpxSaverTest, AMovedPointTakesItsChangesAlong) {
    const std::string second = "      <trkpt lat='02' lon='1'><ele>2</ele></trkpt>\n";
    EXPECT_EQ(SavedPoints([](const auto& points) {
                  points[1].SetElevation(7);
                  points.Move(1, 0);
              }),
              Replaced(Replaced(kSegment, second, ""), "      <trkpt lat='01'",
                       Replaced(second, ">2<", ">7<") + "      <trkpt lat='01'"));
}

TEST(GpxSaverTest, ACommentAtTheEndOfALineStaysWithItsPoint) {
    EXPECT_EQ(
        SavedPoints([](const auto& points) { points.Insert(1, GpxPoint(kGpxTrackPoint, 9, 8)); }),
        Replaced(kSegment, "<!-- one -->\n", "<!-- one -->\n      <trkpt lat=\"9\" lon=\"8\"></trkpt>\n"));
}

TEST(GpxSaverTest, NewObjectsComeWhereTheSchemaHasThem) {
    const auto addAll = [](GpxDocument& document) {
        GpxTrack track;
        track.SetName(u"t");
        document.AddTrack(track);
        document.AddWaypoint(GpxPoint(kGpxWaypoint, 1, 2));
        document.AddRoute(GpxRoute(kTarvikRouteStandard));
    };
    EXPECT_EQ(SavedInside("\n\t<metadata/>\n\t<extensions/>\n", addAll),
              "\n\t<metadata/>\n\t<wpt lat=\"1\" lon=\"2\"></wpt>\n\t<rte>\n\t</rte>\n"
              "\t<trk>\n\t\t<name>t</name>\n\t</trk>\n\t<extensions/>\n");
    EXPECT_EQ(
        SavedInside("\n", [](GpxDocument& document) { document.AddWaypoint(GpxPoint(kGpxWaypoint, 1, 2)); }),
        "\n  <wpt lat=\"1\" lon=\"2\"></wpt>\n");
}

TEST(GpxSaverTest, TheNameAndTheTimeOfTheDocumentAreInItsMetadata) {
    const auto set = [](GpxDocument& document) {
        document.SetName(u"n");
        document.SetDocumentTime(0.0);
    };
    EXPECT_EQ(SavedInside("\n <metadata>\n  <name>m</name>\n  <keywords>k</keywords>\n </metadata>\n", set),
              "\n <metadata>\n  <name>n</name>\n  <time>1970-01-01T00:00:00Z</time>\n"
              "  <keywords>k</keywords>\n </metadata>\n");
    EXPECT_EQ(SavedInside("\n <wpt lat='1' lon='2'/>\n", set),
              "\n <metadata>\n  <name>n</name>\n  <time>1970-01-01T00:00:00Z</time>\n </metadata>\n"
              " <wpt lat='1' lon='2'/>\n");
    EXPECT_EQ(SavedInside("<desc>d</desc><wpt lat='1' lon='2'/>", set, kHead10),
              "<name>n</name><desc>d</desc><time>1970-01-01T00:00:00Z</time><wpt lat='1' lon='2'/>");
    EXPECT_EQ(SavedInside("\n <metadata>\n  <name>m</name>\n </metadata>\n",
                          [](GpxDocument& document) { document.ClearName(); }),
              "\n <metadata>\n </metadata>\n");
}

TEST(GpxSaverTest, ALinkIsChangedPartByPart) {
    const std::string waypoint =
        "<wpt lat='1' lon='2'><link  href='a' x:y=''><text>t</text><x:z/></link><link href='b'/></wpt>";
    EXPECT_EQ(
        SavedWaypoint(waypoint,
                      [](GpxPoint& p) {
                          GpxUrl link(u"\"c\"");
                          link.SetUrlText(u"u");
                          link.SetUrlType(u"v");
                          p.SetURL(link);
                      }),
        "<wpt lat='1' lon='2'><link  href=\"&quot;c&quot;\" x:y=''><text>u</text><type>v</type><x:z/></link>"
        "<link href='b'/></wpt>");
    EXPECT_EQ(SavedWaypoint("<wpt lat='1' lon='2'><link href='a'/></wpt>", [](GpxPoint& p) { p.ClearURL(); }),
              "<wpt lat='1' lon='2'></wpt>");
    EXPECT_EQ(
        SavedWaypoint("<wpt lat='1' lon='2'><sym>s</sym></wpt>", [](GpxPoint& p) { p.SetURL(GpxUrl(u"a")); }),
        "<wpt lat='1' lon='2'><link href=\"a\"></link><sym>s</sym></wpt>");
    EXPECT_EQ(SavedWaypoint(
                  "<wpt lat='1' lon='2'><url>a</url><urlname>t</urlname></wpt>",
                  [](GpxPoint& p) { p.SetURL(GpxUrl(u"b")); }, kHead10),
              "<wpt lat='1' lon='2'><url>b</url></wpt>");
}

TEST(GpxSaverTest, NewElementsHaveThePrefixOfTheirParent) {
    const std::string head = "<g:gpx xmlns:g='http://www.topografix.com/GPX/1/1' version='1.1' creator='c'>";
    const std::string tail = "</g:gpx>";
    const auto change = [](GpxDocument& document) {
        document.SetName(u"n");
        document.EditWaypoints()[0].SetName(u"w");
        document.EditWaypoints()[0].SetFormAttribute(u"k", u"v", 0);
        GpxTrack track;
        track.AddSegment();
        document.AddTrack(track);
    };
    EXPECT_EQ(
        Saved(head + "<g:wpt lat='1' lon='2'/>" + tail, change),
        head +
            "<g:metadata><g:name>n</g:name></g:metadata>"
            "<g:wpt lat='1' lon='2'><g:name>w</g:name><g:extensions>"
            "<tarvik:formdata xmlns:tarvik=\"" +
            std::string(text::kTarvikUri) +
            "\">"
            "<tarvik:formstring key=\"k\">v</tarvik:formstring></tarvik:formdata></g:extensions></g:wpt>"
            "<trk xmlns=\"http://www.topografix.com/GPX/1/1\"><trkseg></trkseg></trk>" +
            tail);
}

TEST(GpxSaverTest, AFileInNoNamespaceStaysInNone) {
    EXPECT_EQ(Saved("<gpx><wpt lat='1' lon='2'/></gpx>",
                    [](GpxDocument& document) {
                        document.EditWaypoints()[0].SetName(u"w");
                        document.AddWaypoint(GpxPoint(kGpxWaypoint, 3, 4));
                    }),
              "<gpx><wpt lat='1' lon='2'><name>w</name></wpt><wpt lat=\"3\" lon=\"4\"></wpt></gpx>");
}

TEST(GpxSaverTest, AnObjectOfAnotherFileBringsTheNamespacesThatItNeeds) {
    const GpxDocument other = ReadCompletely(
        "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:other' "
        "xmlns:y='urn:y'>"
        "<wpt lat='07' lon='8'><sat>3</sat><extensions><x:a y:b=''/></extensions></wpt></gpx>");
    EXPECT_EQ(SavedInside("\n  <wpt lat='1' lon='2'/>\n",
                          [&](GpxDocument& document) { document.AddWaypoint(other.GetWaypoints()[0]); }),
              "\n  <wpt lat='1' lon='2'/>\n  <wpt lat='07' lon='8'>\n    <sat>3</sat>\n    <extensions "
              "xmlns:x=\"urn:other\" "
              "xmlns:y=\"urn:y\"><x:a y:b=''/></extensions>\n  </wpt>\n");
}

TEST(GpxSaverTest, OtherEncodingsAreSavedInUtf8WithADeclaration) {
    const std::string file =
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<gpx version='1.1' creator='c' "
        "xmlns='http://www.topografix.com/GPX/1/1'><wpt lat='1' lon='2'><name>\xE9</name>"
        "</wpt></gpx>";
    const std::string saved =
        Saved(file, [](GpxDocument& document) { document.EditWaypoints()[0].SetElevation(3); });
    EXPECT_TRUE(saved.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx ")) << saved;
    EXPECT_NE(saved.find("<name>\xC3\xA9</name>"), std::string::npos) << saved;
    EXPECT_NE(saved.find("<ele>3</ele><name>"), std::string::npos) << saved;
}

TEST(GpxSaverTest, AByteOrderMarkStays) {
    const std::string file = "\xEF\xBB\xBF<gpx><wpt lat='1' lon='2'/></gpx>\n\n";
    EXPECT_EQ(Saved(file, [](GpxDocument&) {}), file);
}

TEST(GpxSaverTest, WhatWasNotReadCompletelyIsRefused) {
    GpxDocument document;
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1, 2));
    try {
        GpxSaver().GetText(document);
        FAIL() << "it was not refused";
    } catch (const dbc::precondition_error& error) {
        EXPECT_STREQ(error.what(), "Only a GPX document that was read completely can be saved.");
    }
}

TEST(GpxSaverTest, ATextThatXmlCannotHoldIsRefusedBeforeAnythingIsWritten) {
    GpxDocument document = ReadCompletely(kHead + "<wpt lat='1' lon='2'/></gpx>");
    document.EditWaypoints()[0].SetName(icu::UnicodeString(u'\u0001'));
    try {
        GpxSaver().Save(document, [](std::string_view) { FAIL() << "something was written"; });
        FAIL() << "it was not refused";
    } catch (const dbc::precondition_error& error) {
        EXPECT_STREQ(error.what(), "The name of waypoint 1 has a character that XML cannot hold: U+0001.");
    }
    GpxSaveOptions options;
    options.replacesCharacters = true;
    EXPECT_NE(GpxSaver(options).GetText(document).find("<name>\xEF\xBF\xBD</name>"), std::string::npos);
}

TEST(GpxSaverTest, WhatTheVersionHasNoPlaceForIsReported) {
    GpxDocument document = ReadCompletely(kHead10 + "<wpt lat='1' lon='2'/><trk/></gpx>");
    GpxUrl link(u"a");
    link.SetUrlType(u"t");
    document.EditWaypoints()[0].SetURL(link);
    document.EditTracks()[0].SetType(u"t");
    std::vector<std::string> reports;
    GpxSaveOptions options;
    options.unwritten = [&](const GpxUnwritten& what) {
        reports.push_back(what.object + ": " + what.message);
    };
    EXPECT_EQ(GpxSaver(options).GetText(document),
              kHead10 + "<wpt lat='1' lon='2'><url>a</url></wpt><trk/></gpx>");
    EXPECT_EQ(reports, (std::vector<std::string>{
                           "waypoint 1: GPX 1.0 has no place for the type of a link.",
                           "track 1: GPX 1.0 has no place for the type of a route or a track."}));
}

TEST(GpxSaverTest, AFileIsSavedInItsOwnPlace) {
    const TemporaryFolder folder;
    const std::string path = (folder / "walk.gpx").string();
    const std::string file = kHead + "<wpt lat='1' lon='2'/></gpx>";
    WriteBytes(path, file);
    GpxDocument document = ReadCompletely(file);
    document.EditWaypoints()[0].SetName(u"n");
    GpxSaver().SaveFile(document, path);
    EXPECT_EQ(ReadBytes(path), GpxSaver().GetText(document));
    EXPECT_THROW(GpxSaver().SaveFile(document, (folder / "no/such.gpx").string()), GpxWriteError);
}

// Where a file that grows beyond a length ends the process, or is an error as on a full disk.
enum class AtLimit { kKill, kError };

// Saves a document over its file in a process that can write so many bytes to a file. Returns how that ended.
int SaveWithin(const GpxDocument& document, const std::string& file, std::size_t bytes, AtLimit atLimit) {
    return InChild([&] {
        ::signal(SIGXFSZ, atLimit == AtLimit::kKill ? SIG_DFL : SIG_IGN);
        const struct rlimit noCore = {0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        const struct rlimit limit = {bytes, bytes};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            GpxSaver().SaveFile(document, file);
            return 0;
        } catch (const GpxWriteError& error) {
            return error.what() == std::string(kNotWritten) ? 1 : 2;
        }
    });
}

TEST(GpxSaverTest, AProcessThatIsKilledAtAnyWriteAndAFullDiskLeaveTheOriginal) {
    std::string points;
    for (int i = 0; i < 5000; ++i)
        points += "<trkpt lat='1' lon='2'><ele>" + std::to_string(i) + "</ele></trkpt>\n";
    const std::string original = kHead + "<trk><trkseg>" + points + "</trkseg></trk></gpx>\n";
    GpxDocument document = ReadCompletely(original);
    document.EditTracks()[0].EditPoints(0).RemoveIf(
        [odd = false](const GpxPoint&) mutable { return odd = !odd; });
    const std::string saved = GpxSaver().GetText(document);
    const TemporaryFolder folder;
    const std::filesystem::path file = folder / "a.gpx";
    for (std::size_t bytes = 0; bytes < saved.size() + 5000; bytes += 4999) {
        const bool fits = bytes >= saved.size();
        for (const AtLimit atLimit : {AtLimit::kKill, AtLimit::kError}) {
            WriteBytes(file, original);
            const int status = SaveWithin(document, file.string(), bytes, atLimit);
            if (fits)
                EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << bytes;
            else if (atLimit == AtLimit::kKill)
                EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << bytes;
            else
                EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << bytes;
            EXPECT_TRUE(ReadBytes(file) == (fits ? saved : original)) << bytes;
        }
    }
}

} // namespace
} // namespace vexaTransferLib
