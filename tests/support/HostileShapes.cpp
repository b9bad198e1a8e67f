// SPDX-License-Identifier: MIT
#include "support/HostileShapes.h"

#include "support/GpxText.h"

namespace vexaTransferLib::testing_support {

namespace {

std::string Wpt(const std::string& children) {
    return Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

std::string Long(std::size_t count) {
    return std::string(20 * count, 'x');
}

std::string Numbered(std::size_t count, const std::string& start, const std::string& end) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += start + std::to_string(i) + end;
    return text;
}

std::string Form(const std::string& strings) {
    return Wpt("<extensions><formdata>" + strings + "</formdata></extensions>");
}

std::string FormStrings(std::size_t count) {
    return Form(Numbered(count, "<formstring key='k", "'>v</formstring>"));
}

std::string OneLongFormKey(std::size_t count) {
    return Form("<formstring key='" + Long(count) + "'/>" + Repeat("<formstring key='k'/>", count));
}

std::string OneLongDescription(std::size_t count) {
    return Wpt("<desc>" + Long(count) + "</desc>" + Repeat("<desc>y</desc>", count));
}

std::string OneLongDescriptionOfATrack(std::size_t count) {
    return Gpx11("<trk><desc>" + Long(count) + "</desc>" + Repeat("<desc>y</desc>", count) + "</trk>");
}

std::string LongAndShortNames(std::size_t count) {
    return Wpt(Repeat("<name>" + std::string(200, 'x') + "</name><name>y</name>", count));
}

std::string OneLongLink(std::size_t count) {
    return Wpt("<link href='" + Long(count) + "'/>" + Repeat("<link href='u'/>", count));
}

std::string OneLongUrl(std::size_t count) {
    return Gpx10("<wpt lat='1' lon='2'><url>" + Long(count) + "</url>" +
                 Repeat("<urlname>n</urlname>", count) + "</wpt>");
}

std::string ALongNamespace(std::size_t count) {
    return Wpt("<extensions xmlns:q='" + Long(count) + "'>" + Repeat("<q:cache/>", count) + "</extensions>" +
               "<x xmlns='" + Long(count) + "'/>");
}

std::string Caches(std::size_t count) {
    return Wpt(Repeat("<extensions><groundspeak:cache><groundspeak:name>n</groundspeak:name>"
                      "</groundspeak:cache></extensions>",
                      count));
}

std::string Logs(std::size_t count) {
    return Wpt("<extensions><groundspeak:cache><groundspeak:logs>" +
               Repeat("<groundspeak:log id='1'/>", count) +
               "</groundspeak:logs></groundspeak:cache></extensions>");
}

std::string Names(std::size_t count) {
    return Wpt(Numbered(count, "<n", "/>"));
}

std::string BadValues(std::size_t count) {
    return Gpx11("<trk><trkseg>" + Numbered(count, "<trkpt lat='1' lon='2'><time>t", "</time></trkpt>") +
                 "</trkseg></trk>");
}

std::string TextInPieces(std::size_t count) {
    return Wpt("<desc>" + Repeat("x<![CDATA[y]]><b>z</b><!---->", count) + "</desc>");
}

std::string Attributes(std::size_t count) {
    return Gpx11("<wpt lat='1' lon='2'" + Numbered(count, " a", "='v'") + "/>");
}

} // namespace

const std::vector<HostileShape>& HostileShapes() {
    static const std::vector<HostileShape> shapes = {
        {"FormStrings", FormStrings},
        {"OneLongFormKey", OneLongFormKey},
        {"OneLongDescription", OneLongDescription},
        {"OneLongDescriptionOfATrack", OneLongDescriptionOfATrack},
        {"LongAndShortNames", LongAndShortNames},
        {"OneLongLink", OneLongLink},
        {"OneLongUrl", OneLongUrl},
        {"ALongNamespace", ALongNamespace},
        {"Caches", Caches},
        {"Logs", Logs},
        {"Names", Names},
        {"BadValues", BadValues},
        {"TextInPieces", TextInPieces},
        {"Attributes", Attributes}};
    return shapes;
}

} // namespace vexaTransferLib::testing_support
