// SPDX-License-Identifier: MIT
#include <vexagpx/export/KmlWriter.h>

#include "export/Reading.h"

namespace {

using vexagpx::Field;
using vexagpx::KmlWriter;
using vexagpx::Layer;
using vexagpx::Output;
using vexagpx::Position;
using vexagpx::Properties;

/// What is written for one waypoint with this name.
std::string KmlOf(const icu::UnicodeString& name) {
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    KmlWriter writer(out);
    Properties properties;
    properties.Add(Field::kName, name);
    writer.StartLayer(Layer::kWaypoints);
    writer.WritePoint({2, 1, {}, {}}, properties);
    out.Flush();
    return bytes;
}

TEST(KmlWriterTest, MarkupAndControlCharactersInTextsMakeNoMarkup) {
    struct Row {
        icu::UnicodeString name;
        std::string written;
    };
    const Row rows[] = {
        {u"a<b>&\"'", "a&lt;b&gt;&amp;\"'"},
        {u"]]>", "]]&gt;"},
        {u"a\tb\nc\rd", "a\tb\nc&#13;d"},
        {icu::UnicodeString(u"a\u0001b\u001Fc\0d", 7), "a\xEF\xBF\xBD"
                                                       "b\xEF\xBF\xBD"
                                                       "c\xEF\xBF\xBD"
                                                       "d"},
        {icu::UnicodeString(u"a\uFFFEb\uFFFFc"), "a\xEF\xBF\xBD"
                                                 "b\xEF\xBF\xBD"
                                                 "c"},
        {icu::UnicodeString(u"\U0001F600\uFFFD\u4e00"), "\xF0\x9F\x98\x80\xEF\xBF\xBD\xE4\xB8\x80"},
        {icu::UnicodeString(char16_t{0xDC00}), "\xEF\xBF\xBD"},
    };
    for (const Row& row : rows)
        EXPECT_THAT(KmlOf(row.name), testing::HasSubstr("<name>" + row.written + "</name>\n"));
}

TEST(KmlWriterTest, TheTimesOfPointsInLinesAreCounted) {
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    KmlWriter writer(out);
    const vexaTransferLib::GpxDocument document = cli::DocumentOf(
        "<trk><trkseg>" + cli::PointText("trkpt", "1", "2", "<time>1970-01-01T00:00:01Z</time>") +
        cli::PointText("trkpt", "1", "3") + "</trkseg></trk>");
    writer.StartLayer(Layer::kTracks);
    writer.WritePath(vexagpx::PathGeometry(*document.GetTrackIter()), Properties());
    EXPECT_EQ(writer.Missing().pointTimes, 1U);
}

} // namespace
