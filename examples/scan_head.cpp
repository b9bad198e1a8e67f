// SPDX-License-Identifier: MIT
// Shows what the head of a GPX file says of it, without reading its points: scan_head FILE
#include <iostream>
#include <string>
#include <unicode/gregocal.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>
#include <vexaTransferLib/GpxUtils.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

void Print(const char* label, const icu::UnicodeString& text) {
    std::string utf8;
    std::cout << label << text.toUTF8String(utf8) << '\n';
}

void Show(const icu::UnicodeString& path) {
    GpxTarvikExtParser scanner; // deleted before Xerces is terminated
    scanner.SetUntrusted();
    scanner.Parse(path);
    const GpxHead& head = scanner.GetHead();
    if (head.end == GpxHead::End::kNotGpx)
        Print("No GPX: ", head.rootName);
    if (head.name)
        Print("Name    ", *head.name);
    if (head.author)
        Print("Author  ", head.author->name);
    if (head.creator)
        Print("Program ", *head.creator);
    if (head.bounds)
        std::cout << "Bounds  " << head.bounds->minLatitude << " to " << head.bounds->maxLatitude << ", "
                  << head.bounds->minLongitude << " to " << head.bounds->maxLongitude << '\n';
    if (const auto layer = scanner.GetGISMetaData())
        Print("Layer   ", layer->layerName);
    if (const auto stats = scanner.GetStats())
        std::cout << "Counts  " << stats->wptcount << " waypoints, " << stats->trkcount << " tracks, "
                  << stats->trktotalkm << " km\n";
    if (scanner.GetDocumentTime() > 0.0) {
        UErrorCode status = U_ZERO_ERROR;
        icu::GregorianCalendar calendar(status);
        calendar.setTime(scanner.GetDocumentTime(), status);
        Print("Time    ", ToGpxTime(&calendar));
    }
}

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    Show(argv[1]);
    xercesc::XMLPlatformUtils::Terminate();
}
