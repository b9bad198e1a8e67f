// SPDX-License-Identifier: MIT The lines that contract reports name for checks that run in another file than
// the one named.
#include <vexaTransferLib/text/CheckSites.h>

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/reader/DocumentReader.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace reader;
using namespace testing_support;

constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
constexpr char kParserSource[] = "LibCore/vexaTransferLib/GpxParser.cpp";
constexpr char kLinkSource[] = "LibCore/vexaTransferLib/GpxUrl.cpp";
constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kRouteSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";
constexpr char kTrackSource[] = "LibCore/vexaTransferLib/GpxTrack.cpp";
constexpr char kDocumentSource[] = "LibCore/vexaTransferLib/GpxDocument.cpp";
constexpr char kCleanerSource[] = "LibCore/vexaTransferLib/CleanText.h";

std::string WrittenBy(const std::function<void()>& action) {
    return CaptureStandardError([&] {
        try {
            action();
        } catch (const std::exception&) {
        }
    });
}

struct Row {
    const char* check; // how the line names it
    std::function<void()> fail;
};

// Each row writes one report of the source. The line that the report names contains the name of the check and
// differs from those of all other rows.
template <std::size_t Size>
void ExpectPlaces(const Row (&rows)[Size], const char* source) {
    std::map<std::string, const char*> checks;
    for (const Row& row : rows) {
        const std::string report = WrittenBy(row.fail);
        EXPECT_TRUE(IsOneReport(report, source)) << row.check;
        EXPECT_TRUE(ReportedLine(report).ends_with(row.check)) << report << ReportedLine(report);
        const auto [known, isNew] = checks.emplace(report, row.check);
        EXPECT_TRUE(isNew) << row.check << " and " << known->second << ": " << report;
    }
}

const GpxVersion k11(1, 1);

NodeView View(const FakeNodePtr& node) {
    static std::set<FakeNodePtr> kept; // must exist as long as the views
    return (*kept.insert(node).first)->View();
}

NodeView Childless(const char16_t* name) {
    return View(WithoutChildList(*Gpx11Node(name)));
}

NodeView WithMissingChild(const char16_t* name) {
    return View(Gpx11Node(name, {nullptr}));
}

FakeNodePtr With(FakeNodePtr node, const char16_t* attribute, const char16_t* value) {
    node->attributes[attribute] = value;
    return node;
}

TEST(CheckSitesTest, EachCheckOfTheReadersHasALineOfItsOwnInTheParsersSource) {
    GpxDocument document;
    GpxTrack track;
    GpxUrl link(u"x");
    GpxPoint point(kGpxWaypoint, 1.0, 2.0);
    TarvikRouteType type = kTarvikRouteStandard;
    ReadContext& context = AnyContext();
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    const FakeNodePtr root = With(Gpx11Node(u"gpx", {nullptr}), u"version", u"1.1");
    const FakeNodePtr linkNode = With(Gpx11Node(u"link", {nullptr}), u"href", u"x");
    const auto readPoint = [&](GpxPointType kind, const FakeNodePtr& node) {
        return [&context, kind, node] { ReadPoint(context, k11, kind, View(node)); };
    };
    const Row rows[] = {
        {"the root has no version", [&] { ReadDocument(context, View(Gpx11Node(u"gpx")), document); }},
        {"the root has no child list",
         [&] { ReadDocument(context, View(WithoutChildList(*root)), document); }},
        {"a child of the root is missing", [&] { ReadDocument(context, View(root), document); }},
        {"a point of an unknown kind", readPoint(static_cast<GpxPointType>(4), Gpx11Point(u"wpt"))},
        {"a point has no latitude", readPoint(kGpxWaypoint, Gpx11Node(u"wpt"))},
        {"a point has no longitude", readPoint(kGpxWaypoint, With(Gpx11Node(u"wpt"), u"lat", u"1"))},
        {"a point has no child list", readPoint(kGpxWaypoint, WithoutChildList(*Gpx11Point(u"wpt")))},
        {"a child of a point is missing", readPoint(kGpxWaypoint, Gpx11Point(u"wpt", {nullptr}))},
        {"a link has no href", [&] { ReadLink(context, View(Gpx11Node(u"link")), link); }},
        {"a link has no child list", [&] { ReadLink(context, View(WithoutChildList(*linkNode)), link); }},
        {"a child of a link is missing", [&] { ReadLink(context, View(linkNode), link); }},
        {"a route has no child list", [&] { ReadRoute(context, k11, Childless(u"rte"), document); }},
        {"a child of a route is missing",
         [&] { ReadRoute(context, k11, WithMissingChild(u"rte"), document); }},
        {"a track has no child list", [&] { ReadTrack(context, k11, Childless(u"trk"), document); }},
        {"a child of a track is missing",
         [&] { ReadTrack(context, k11, WithMissingChild(u"trk"), document); }},
        {"a segment has no child list", [&] { ReadSegment(context, k11, Childless(u"trkseg"), track); }},
        {"a child of a segment is missing",
         [&] { ReadSegment(context, k11, WithMissingChild(u"trkseg"), track); }},
        {"extensions have no child list", [&] { ReadRouteType(context, Childless(u"extensions"), type); }},
        {"a child of extensions is missing",
         [&] { ReadRouteType(context, WithMissingChild(u"extensions"), type); }},
        {"the document's extensions are null", [&] { ReadDocumentData(context, NodeView(), document); }},
        {"extensions that are no element", [&] { ReadWaypointData(context, sources, NodeView(), point); }},
        {"the text of a null node", [] { ElementText(NodeView()); }},
        {"an attribute of a null node", [] { AttributeText(NodeView(), u"a"); }},
        {"the namespace of a null node", [] { IsGroundspeak(NodeView()); }},
    };
    ExpectPlaces(rows, kParserSource);
}

// Appends the object to a bogus text, which only the last check examines.
template <class Object>
std::function<void()> Writing(const Object& object, const GpxVersion& version = k11) {
    return [object, version] {
        icu::UnicodeString out;
        out.setToBogus();
        object.AppendToString(version, out);
    };
}

TEST(CheckSitesTest, EachCheckOfTheWritersOfLinksAndPointsHasALineOfItsOwnInTheSourceOfTheClass) {
    const GpxVersion k20 = ModelDoors::MakeVersion(2, 0);
    const GpxUrl link(u"x");
    const Row linkRows[] = {
        {"neither GPX 1.0 nor 1.1", Writing(link, k20)},
        {"the text is too large", Writing(link)},
    };
    ExpectPlaces(linkRows, kLinkSource);

    const GpxPoint point(kGpxRoutePoint, 1.0, 2.0);
    GpxPoint unknownKind(point);
    ModelDoors::SetPointType(unknownKind, 4);
    GpxPoint unknownFix(point);
    ModelDoors::SetFix(unknownFix, 6);
    GpxPoint unknownRoutePoint(point);
    ModelDoors::SetRoutePointType(unknownRoutePoint, 6);
    const Row pointRows[] = {
        {"neither GPX 1.0 nor 1.1", Writing(point, k20)},
        {"the text is too large", Writing(point)},
        {"a point of an unknown kind", Writing(unknownKind)},
        {"an unknown kind of fix", Writing(unknownFix)},
        {"an unknown route point type", Writing(unknownRoutePoint)},
    };
    ExpectPlaces(pointRows, kPointSource);
}

TEST(CheckSitesTest, EachCheckOfTheWritersOfRoutesAndTracksHasALineOfItsOwnInTheSourceOfTheClass) {
    const GpxVersion k20 = ModelDoors::MakeVersion(2, 0);
    const GpxRoute route(kTarvikRouteStandard);
    GpxRoute unknownRoute(route);
    ModelDoors::SetRouteType(unknownRoute, 3);
    const Row routeRows[] = {
        {"neither GPX 1.0 nor 1.1", Writing(route, k20)},
        {"the text is too large", Writing(route)},
        {"an unknown route type", Writing(unknownRoute)},
    };
    ExpectPlaces(routeRows, kRouteSource);

    const Row trackRows[] = {
        {"neither GPX 1.0 nor 1.1", Writing(GpxTrack(), k20)},
        {"the text is too large", Writing(GpxTrack())},
    };
    ExpectPlaces(trackRows, kTrackSource);
}

TEST(CheckSitesTest, EachCheckOfTheWriterOfDocumentsHasALineOfItsOwnInTheSourceOfTheDocument) {
    const GpxDocument document;
    const Row rows[] = {
        {"neither GPX 1.0 nor 1.1",
         [&] { document.GetAsByteString(ModelDoors::MakeVersion(2, 0), u"a", u"b"); }},
        {"no name of the application", [&] { document.GetAsByteString(k11, u"", u"b"); }},
        {"no URL of the application", [&] { document.GetAsByteString(k11, u"a", u""); }},
        {"the file cannot be created", [&] { document.WriteToFile(k11, u"a", u"b", u""); }},
    };
    ExpectPlaces(rows, kDocumentSource);
}

TEST(CheckSitesTest, EachCheckOfTheTextsHasALineOfItsOwnInTheHelpersSource) {
    long number = 0;
    double millis = 0.0;
    const text::CheckSite& format = text::sites::kNumberFormat; // a failure of this check ends the process
    const Row rows[] = {
        {"a text to set is empty", [] { GpxPoint(kGpxWaypoint, 1.0, 2.0).SetName(u""); }},
        {"a field without text or too wide", [&] { ReadLongFromString(number, nullptr, 2, 0, 99); }},
        {"a fraction without text or too long", [&] { ReadAndScaleDoubleFromString(number, nullptr, 1.0); }},
        {"an empty time text", [&] { ParseGpxTime("", millis); }},
        {"ICU has no number format", [&] { dbc::ReportFailure(format.source, format.line); }},
    };
    ExpectPlaces(rows, kUtilsSource);
}

TEST(CheckSitesTest, EveryTextSetterNamesTheOneCheckOfAll) {
    GpxPoint point(kGpxWaypoint, 1.0, 2.0);
    GpxTrack track;
    GpxRoute route(kTarvikRouteStandard);
    GpxUrl url(u"x");
    icu::UnicodeString text;
    const std::set<std::string> reports = {
        WrittenBy([&] { point.SetName(u""); }),   WrittenBy([&] { point.SetType(u""); }),
        WrittenBy([&] { track.SetSource(u""); }), WrittenBy([&] { route.SetName(u""); }),
        WrittenBy([&] { url.SetUrlText(u""); }),  WrittenBy([&] { SetStringValue("m", text, u""); }),
    };
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(IsOneReport(*reports.begin(), kUtilsSource));
}

// All lines that the operation's reports name while each request for memory is refused in turn.
void AddLines(void (CleanText::*operation)(icu::UnicodeString&), std::map<std::string, std::string>& lines) {
    CleanText cleaner;
    bool isRefused = true;
    for (std::size_t number = 1; isRefused; ++number) {
        icu::UnicodeString text;
        for (int i = 0; i < 20; ++i)
            text += u"\t <!--c--><style>x</style><p>\ta<br>\u2018b\u2019 <i>\u201Cc\u201D &#65;\r\n\n\n\n"
                    u"  \r d [b]e [/b] f\t \tg\n[b] h ";
        const RefusedIcuMemory memory = RefusedIcuMemory::AtCall(number);
        std::string message;
        const std::string report = CaptureStandardError([&] {
            try {
                (cleaner.*operation)(text);
            } catch (const std::exception& exception) {
                message = exception.what();
            }
        });
        isRefused = memory.Refused() > 0;
        if (report.empty())
            continue;
        ASSERT_TRUE(IsOneReport(report, kCleanerSource));
        const std::string& known = lines.emplace(ReportedLine(report), message).first->second;
        EXPECT_EQ(known, message) << "two checks name " << report;
    }
}

TEST(CheckSitesTest, EachCheckOfTheCleanerHasALineOfItsOwnInItsHeader) {
    std::map<std::string, std::string> lines;
    AddLines(&CleanText::HTMLToPlainText, lines);
    AddLines(&CleanText::StripBBCode, lines);
    AddLines(&CleanText::CleanPlainTextForTova, lines);
    const std::string failedReplacement = WrittenBy([] {
        UErrorCode status = U_ZERO_ERROR;
        const boost::scoped_ptr<icu::RegexMatcher> matcher(new icu::RegexMatcher(u"b", 0, status));
        icu::UnicodeString text(u"b");
        CleanText().RegexReplaceAll(matcher, text, u"$", "m");
    });
    lines.emplace(ReportedLine(failedReplacement), "");

    std::set<std::string> checks;
    for (const auto& [line, message] : lines) {
        const std::size_t comment = line.find(" = __LINE__");
        EXPECT_NE(comment, line.npos) << line;
        checks.insert(line.substr(line.find("// ")));
    }
    const std::set<std::string> expected = {
        "// HTMLToPlainText: comments",
        "// HTMLToPlainText: style and script elements",
        "// HTMLToPlainText: tabs",
        "// HTMLToPlainText: tags of blocks",
        "// HTMLToPlainText: tags that break the line",
        "// HTMLToPlainText: all other tags",
        "// HTMLToPlainText: spaces at the edges of lines",
        "// HTMLToPlainText: runs of spaces",
        "// HTMLToPlainText: runs of line breaks",
        "// StripBBCode",
        "// CleanPlainTextForTova: spaces at the edges of lines",
        "// CleanPlainTextForTova: single quotes",
        "// CleanPlainTextForTova: double quotes",
        "// CleanPlainTextForTova: tabs",
        "// CleanPlainTextForTova: runs of spaces",
        "// CleanPlainTextForTova: spaces at the edges of the text",
        "// ConvertToDosLineBreaks: carriage returns alone",
        "// ConvertToDosLineBreaks: line feeds alone",
        "// ReplaceNumericCharacterReferences",
        "// RegexReplaceAll: the engine",
    };
    EXPECT_EQ(checks, expected);
}

} // namespace
} // namespace vexaTransferLib
