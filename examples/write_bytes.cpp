// SPDX-License-Identifier: MIT
// Makes a route, writes it into memory and the bytes to standard output: write_bytes
#include <iostream>
#include <utility>
#include <vexaTransferLib/GpxDocument.h>

using namespace vexaTransferLib;

GpxPoint RoutePoint(double latitude, double longitude, const icu::UnicodeString& name,
                    TarvikRoutePointType type) {
    GpxPoint point(kGpxRoutePoint, latitude, longitude);
    point.SetName(name);
    point.SetTarvikRoutePointType(type);
    return point;
}

int main() {
    try {
        GpxRoute route(kTarvikRouteDirections);
        route.SetName(u"To the hut & back");
        route.AddPoint(RoutePoint(46.4966, 7.6737, u"Car park", kTarvikRoutePointStart));
        route.AddPoint(RoutePoint(46.4961, 7.6912, u"Left at the barn", kTarvikRoutePointTurn));
        route.AddPoint(RoutePoint(46.4981, 7.7114, u"Seeh\u00FCtte", kTarvikRoutePointFinish));

        GpxDocument document;
        document.AddRoute(std::move(route));
        const UnicodeStrUtils::ByteString bytes =
            document.GetAsByteString(GpxVersion::GetLatestVersion(), u"MyApp", u"https://example.org/");
        std::cout.write(bytes.buffer.get(), bytes.length);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
