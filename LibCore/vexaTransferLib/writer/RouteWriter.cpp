// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/RouteWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/PointWriter.h>
#include <vexaTransferLib/writer/VendorWriter.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

void GpxRoute::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    writer::WriteRoute(sink, version, *this);
    writer::RequireNotBogus(out, text::sites::kRouteOutput);
}

namespace writer {

void WriteRoute(TextSink& sink, const GpxVersion& version, const GpxRoute& route) {
    using Access = GpxModelAccess;
    text::Require(version.IsGpx10() || version.IsGpx11(), text::sites::kRouteVersion,
                  "GPX routes can only be written to version 1.0 or 1.1 files.");
    text::Invariant(Access::GetRawRouteType(route) < text::kRouteTypeTexts.size(),
                    text::sites::kUnknownRouteType, "Unable to write an unknown GPX route type.");
    sink.Ascii("<rte>", kEndOfLine);
    AppendTextElement(sink, "name", Access::GetName(route));
    AppendTextElement(sink, "src", Access::GetSource(route));
    if (version.IsGpx11()) {
        AppendTextElement(sink, "type", Access::GetType(route));
        WriteRouteType(sink, route);
    }
    for (const GpxPoint& point : Access::GetPoints(route))
        WritePoint(sink, version, point);
    sink.Ascii("</rte>", kEndOfLine);
}

} // namespace writer

} // namespace vexaTransferLib
