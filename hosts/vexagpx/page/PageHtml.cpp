// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageHtml.h>

#include <vexagpx/page/PageFigures.h>
#include <vexagpx/terminal/DisplayText.h>

#include <string>

namespace vexagpx {

namespace {

std::string_view EscapeOf(char byte) {
    switch (byte) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

void WriteRow(const PageFigure& figure, Output& out) {
    out.Write("<tr><th scope=\"row\">");
    WriteHtmlText(figure.label, out);
    out.Write("</th><td>");
    WriteHtmlText(figure.value, out);
    out.Write("</td></tr>\n");
}

void WriteHeading(std::string_view level, std::string_view text, Output& out) {
    out.Write("<");
    out.Write(level);
    out.Write(">");
    WriteHtmlText(text, out);
    out.Write("</");
    out.Write(level);
    out.Write(">\n");
}

void WritePath(const PagePath& path, const std::string& id, Output& out) {
    out.Write("<section class=\"path\" id=\"" + id + "\">\n");
    WriteHeading("h3", path.name, out);
    out.Write("<table>\n");
    for (const PageFigure& figure : path.figures)
        WriteRow(figure, out);
    out.Write("</table>\n</section>\n");
}

void WriteCell(std::string_view text, Output& out, std::string_view kind = {}) {
    out.Write("<td");
    if (!kind.empty()) {
        out.Write(" class=\"");
        out.Write(kind);
        out.Write("\"");
    }
    out.Write(">");
    WriteHtmlText(text, out);
    out.Write("</td>");
}

std::string PlaceText(const PageWaypoint& waypoint) {
    std::string text;
    DegreesText(waypoint.latitude).toUTF8String(text);
    text += ' ';
    DegreesText(waypoint.longitude).toUTF8String(text);
    return text;
}

void WriteWaypoints(const std::vector<PageWaypoint>& waypoints, Output& out) {
    out.Write("<section class=\"waypoints\">\n<h3>Waypoints</h3>\n<table>\n<thead><tr><th>Name</th>"
              "<th>Description</th><th>Place</th><th>Height</th></tr></thead>\n<tbody>\n");
    std::size_t number = 0;
    for (const PageWaypoint& waypoint : waypoints) {
        out.Write("<tr><td data-waypoint=\"" + std::to_string(number++) + "\">");
        WriteHtmlText(waypoint.name.empty() ? "(no name)" : waypoint.name, out);
        out.Write("</td>");
        WriteCell(waypoint.note, out);
        WriteCell(PlaceText(waypoint), out, "place");
        WriteCell(HeightOrNothing(waypoint.height), out, "height");
        out.Write("</tr>\n");
    }
    out.Write("</tbody>\n</table>\n</section>\n");
}

void WriteOmitted(std::size_t count, const std::string& noun, Output& out) {
    if (count > 0)
        out.Write("<p class=\"note\">This page leaves out " + Counted(count, noun) + ".</p>\n");
}

void WriteDocument(const PageDocument& document, std::size_t number, bool isOnly, Output& out) {
    const std::string id = std::to_string(number);
    out.Write("<section class=\"document\" id=\"document-" + id + "\">\n");
    if (!isOnly)
        WriteHeading("h2", document.name, out);
    std::size_t path = 0;
    for (const PagePath& each : document.paths)
        WritePath(each, "path-" + id + '-' + std::to_string(path++), out);
    WriteOmitted(document.omittedPaths, "more route or track", out);
    if (!document.waypoints.empty())
        WriteWaypoints(document.waypoints, out);
    WriteOmitted(document.omittedWaypoints, "more waypoint", out);
    if (document.paths.empty() && document.waypoints.empty())
        out.Write("<p class=\"note\">It contains no point.</p>\n");
    out.Write("</section>\n");
}

} // namespace

void WriteHtmlText(std::string_view utf8, Output& out) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const std::string_view escape = EscapeOf(utf8[i]);
        if (escape.empty())
            continue;
        out.Write(utf8.substr(start, i - start));
        out.Write(escape);
        start = i + 1;
    }
    out.Write(utf8.substr(start));
}

void WritePageTables(const std::vector<PageDocument>& documents, Output& out) {
    std::size_t number = 0;
    for (const PageDocument& document : documents)
        WriteDocument(document, number++, documents.size() == 1, out);
}

} // namespace vexagpx
