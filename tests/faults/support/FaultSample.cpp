// SPDX-License-Identifier: MIT
#include "support/FaultSample.h"

#include "support/GpxText.h"

namespace vexaTransferLib::testing_support {

namespace {

std::string Element(const std::string& name, const std::string& content, const std::string& attributes = "") {
    return "<" + name + attributes + ">" + content + "</" + name + ">\n";
}

std::string Text(const std::string& name) {
    return Element(name, "The " + name + ", of more units than ICU holds in place: \u5C71\u9053");
}

std::string Time() {
    return Element("time", "2009-01-15T10:20:30." + std::string(20, '0') + "Z");
}

std::string Link(const std::string& number) {
    return Element("link", Text("text") + Text("type"),
                   " href='https://example.org/an/address/of/more/units/" + number + "'");
}

// Longer than the texts that are read without the XML parser's transcoder.
std::string Number(const std::string& name) {
    return Element(name, "1" + std::string(70, '0') + "." + std::string(70, '0'));
}

std::string MetaData(bool numbers) {
    return Element(
        "metadata",
        Text("name") + Text("keywords") + Time() +
            Element("extensions", Text("tarvik:layername") + Text("tarvik:layerkey") + Text("tarvik:form") +
                                      Text("tarvik:trackGUID") +
                                      (numbers ? Element("tarvik:defaultsymbol", "1,234") : std::string())));
}

std::string Geocache(bool numbers) {
    return Element(
        "groundspeak:cache",
        Text("groundspeak:name") + Text("groundspeak:owner") + Text("groundspeak:long_description") +
            Element("groundspeak:logs", Element("groundspeak:log",
                                                Text("groundspeak:date") + Text("groundspeak:finder") +
                                                    Text("groundspeak:type") + Text("groundspeak:text"),
                                                numbers ? " id='77'" : "")) +
            Element("groundspeak:travelbugs", Element("groundspeak:travelbug", Text("groundspeak:name"))));
}

std::string WaypointExtensions(bool numbers) {
    return Element("extensions",
                   Geocache(numbers) +
                       Element("tarvik:formdata",
                               Element("tarvik:formstring", "a value of more units than ICU holds in place",
                                       " key='a key of more units than ICU holds in place' "
                                       "modtime='2009-01-15T10:20:30Z'")) +
                       Element("tarvik:objectid", "{1b4e28ba-2fa1-11d2-883f-0016d3cca427}") +
                       (numbers ? Element("tarvik:tovasymbol", "1,234") : std::string()));
}

std::string Point(const std::string& kind, const std::string& children) {
    return Element(kind, children, " lat='12.345' lon='-67.89'");
}

std::string Waypoint(bool numbers) {
    return Point("wpt", Number("ele") + Time() + Element("magvar", "12") + Element("geoidheight", "x") +
                            Text("name") + Text("desc") + Text("cmt") + Text("src") + Link("1") + Link("2") +
                            Text("sym") + Text("type") + Element("fix", "dgps") + Element("sat", "3") +
                            WaypointExtensions(numbers));
}

std::string Route() {
    return Element(
        "rte",
        Text("name") + Text("src") + Text("type") + Text("number") +
            Element("extensions", Element("tarvik:routeType", "Directions")) +
            Point("rtept", Text("name") + Element("extensions", Element("tarvik:routePointType", "start"))) +
            Point("rtept", ""));
}

std::string Track(bool numbers) {
    return Element("trk",
                   Text("name") + Text("desc") + Text("src") + Link("3") + Text("type") +
                       (numbers ? Element("extensions", Element("tarvik:color", "123")) : std::string()) +
                       Element("trkseg", Point("trkpt", Element("ele", "12.5") + Time() + Text("name")) +
                                             Text("number") + Point("trkpt", "")) +
                       Element("trkseg", Point("trkpt", "")));
}

} // namespace

std::string FaultSample(SampleNumbers kind) {
    const bool numbers = kind == SampleNumbers::kAll;
    return Gpx11(MetaData(numbers) + Waypoint(numbers) + Point("wpt", Text("name")) + Route() +
                 Track(numbers) + Element("trk", Text("name") + Element("trkseg", Point("trkpt", ""))) +
                 Point("wpt", ""));
}

} // namespace vexaTransferLib::testing_support
