// SPDX-License-Identifier: MIT
#include <vexagpx/page/Page.h>

#include <vexagpx/page/PageHtml.h>
#include <vexagpx/page/PageJson.h>
#include <vexagpx/page/PageTemplate.h>
#include <vexagpx/terminal/DisplayText.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace vexagpx {

namespace {

std::string TitleOf(const std::vector<PageDocument>& documents) {
    return documents.size() == 1 ? documents.front().name : Counted(documents.size(), "GPX document");
}

/// "1 track or route, 12 waypoints".
std::string SummaryOf(const std::vector<PageDocument>& documents) {
    std::size_t paths = 0;
    std::size_t waypoints = 0;
    for (const PageDocument& document : documents) {
        paths += document.paths.size() + document.omittedPaths;
        waypoints += document.waypoints.size() + document.omittedWaypoints;
    }
    return Counted(paths, "track or route", "tracks and routes") + ", " + Counted(waypoints, "waypoint");
}

void WritePart(std::string_view name, const std::vector<PageDocument>& documents, Output& out) {
    if (name == "title")
        WriteHtmlText(TitleOf(documents), out);
    else if (name == "summary")
        WriteHtmlText(SummaryOf(documents), out);
    else if (name == "content")
        WritePageTables(documents, out);
    else if (name == "data")
        WritePageJson(documents, out);
    else
        throw std::logic_error("The page's template has an unknown mark.");
}

} // namespace

void WritePage(const std::vector<PageDocument>& documents, Output& out) {
    std::string_view rest = kPageTemplate;
    for (std::size_t start = rest.find("{{"); start != std::string_view::npos; start = rest.find("{{")) {
        const std::size_t end = rest.find("}}", start);
        out.Write(rest.substr(0, start));
        WritePart(rest.substr(start + 2, end - start - 2), documents, out);
        rest.remove_prefix(end + 2);
    }
    out.Write(rest);
}

} // namespace vexagpx
