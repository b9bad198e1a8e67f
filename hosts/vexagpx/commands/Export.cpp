// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Export.h>

#include <vexagpx/export/FeatureWalk.h>
#include <vexagpx/export/GeoJsonWriter.h>
#include <vexagpx/export/KmlWriter.h>
#include <vexagpx/export/TableWriter.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

struct FormatName {
    std::string_view text; ///< of the option, or the end of a file name after the point
    ExportFormat format;
};

constexpr std::array kFormatNames = {
    FormatName{"geojson", ExportFormat::kGeoJson},
    FormatName{"json", ExportFormat::kGeoJson},
    FormatName{"csv", ExportFormat::kCsv},
    FormatName{"kml", ExportFormat::kKml},
};

std::string_view TitleOf(ExportFormat format) {
    switch (format) {
    case ExportFormat::kGeoJson:
        return "GeoJSON";
    case ExportFormat::kCsv:
        return "CSV";
    case ExportFormat::kKml:
        return "KML";
    }
    return {};
}

/// The end of a file name after its last point, in lower case.
std::string EndingOf(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::size_t point = name.rfind('.');
    std::string ending = point == std::string::npos ? "" : name.substr(point + 1);
    for (char& letter : ending)
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    return ending;
}

/// \param in the argument that the document was found by
std::string NameOf(const DocumentSource& source, const std::string& in) {
    return source.entry != nullptr && source.file == in ? *source.entry : source.Text();
}

ExportSources ReadSources(const ExportOptions& options, bool& succeeded) {
    ExportSources sources;
    succeeded =
        ReadDocuments({options.in}, options.rules, [&](const DocumentSource& source, GpxDocument& document) {
            sources.push_back({NameOf(source, options.in), std::move(document)});
        });
    // The features of a single document need not say where they are from.
    if (sources.size() == 1)
        sources.front().name.clear();
    return sources;
}

std::uint64_t CountUnread(const GpxDocument& document) {
    std::uint64_t count = document.GetUnreadElements().size();
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        count += route->GetUnreadElements().size();
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        count += track->GetUnreadElements().size();
    return count;
}

class Exporter {
public:
    Exporter(const ExportOptions& options, ExportFormat format, ExportSources sources)
        : options_(options), format_(format), sources_(std::move(sources)) {
        for (const ExportSource& source : sources_)
            counts_.Add(source.document);
    }

    void Run(Output& standardOutput) const;

private:
    std::vector<Layer> Layers() const;
    Layer LayerOfTable() const;
    LeftOut Write(const std::vector<Layer>& layers, Output& out) const;
    LeftOut Write(const std::vector<Layer>& layers, FeatureWriter& writer) const;
    void PrintNotes(const LeftOut& missing) const;

    const ExportOptions& options_;
    ExportFormat format_;
    ExportSources sources_;
    LayerCounts counts_;
};

void Exporter::Run(Output& standardOutput) const {
    const std::vector<Layer> layers = Layers();
    Destination destination(options_.out);
    Output out([&](std::string_view piece) { destination.Write(piece, standardOutput); });
    const LeftOut missing = Write(layers, out);
    out.Flush();
    destination.Commit(standardOutput);
    PrintNotes(missing);
}

std::vector<Layer> Exporter::Layers() const {
    if (const std::optional<Layer> layer = LayerOf(options_.layer)) {
        if (!counts_.Has(*layer))
            throw std::runtime_error(ShownName(options_.in) + " has no " + options_.layer + "; it has " +
                                     counts_.Text() + ".");
        return {*layer};
    }
    if (format_ == ExportFormat::kCsv)
        return {LayerOfTable()};
    std::vector<Layer> layers;
    for (const Layer layer : {Layer::kWaypoints, Layer::kRoutes, Layer::kTracks})
        if (counts_.Has(layer))
            layers.push_back(layer);
    return layers;
}

/// \throws std::runtime_error when there are several to choose from
Layer Exporter::LayerOfTable() const {
    const bool hasWaypoints = counts_.Has(Layer::kWaypoints);
    const bool hasRoutes = counts_.Has(Layer::kRoutes);
    const bool hasTracks = counts_.Has(Layer::kTracks);
    if (hasWaypoints + hasRoutes + hasTracks < 2)
        return hasWaypoints ? Layer::kWaypoints : Layer::kPoints;
    std::string layers;
    for (const Layer layer : kLayers)
        if (counts_.Has(layer))
            layers.append(layers.empty() ? "--layer " : ", --layer ").append(NameOf(layer));
    throw std::runtime_error("A table has one kind of rows, and " + ShownName(options_.in) + " has " +
                             counts_.Text() + ". Choose one: " + layers + ".");
}

LeftOut Exporter::Write(const std::vector<Layer>& layers, FeatureWriter& writer) const {
    LeftOut missing = WalkFeatures(sources_, layers, writer);
    missing.metadata += writer.Missing().metadata;
    missing.pointTimes = writer.Missing().pointTimes;
    missing.pathPoints = writer.Missing().pathPoints;
    // A missing point lacks its details too.
    if (missing.pathPoints != 0)
        missing.pointDetails = 0;
    return missing;
}

LeftOut Exporter::Write(const std::vector<Layer>& layers, Output& out) const {
    if (format_ == ExportFormat::kGeoJson) {
        GeoJsonWriter writer(out);
        return Write(layers, writer);
    }
    if (format_ == ExportFormat::kKml) {
        KmlWriter writer(out);
        return Write(layers, writer);
    }
    ColumnFinder columns;
    WalkFeatures(sources_, layers, columns);
    TableWriter writer(out, columns);
    return Write(layers, writer);
}

void Exporter::PrintNotes(const LeftOut& missing) const {
    const std::vector<std::string> lines = missing.Lines();
    if (!lines.empty())
        PrintError("Note: not everything in " + ShownName(options_.in) + " has a place in " +
                   std::string(TitleOf(format_)) + "; these were left out:");
    for (const std::string& line : lines)
        PrintError("  " + line);
    std::uint64_t unread = 0;
    for (const ExportSource& source : sources_)
        unread += CountUnread(source.document);
    if (unread != 0)
        PrintError("Note: " + Counted(unread, "thing") + " in " + ShownName(options_.in) +
                   " could not be read and " + (unread == 1 ? "was" : "were") +
                   " left out; \"vexagpx check --keep\" lists " + (unread == 1 ? "it." : "them."));
}

/// \throws std::runtime_error when the input would be replaced: no other command could read the result
void CheckDestination(const ExportOptions& options) {
    if (options.out != kStandardOutput && options.in != kStandardInput && IsSameFile(options.in, options.out))
        throw std::runtime_error("The result would replace the input. (" + options.in + ")");
}

bool ExportFile(const ExportOptions& options, Output& standardOutput) {
    const std::optional<ExportFormat> format = FormatOf(options);
    if (!format)
        throw std::runtime_error("The name of the result says no format: " + options.out +
                                 ". --format sets one.");
    CheckDestination(options);
    bool succeeded = true;
    ExportSources sources = ReadSources(options, succeeded);
    if (!succeeded) {
        if (!sources.empty())
            PrintError("Nothing was written, because the rest would be incomplete. (" + options.in + ")");
        return false;
    }
    Exporter(options, *format, std::move(sources)).Run(standardOutput);
    return true;
}

} // namespace

std::optional<ExportFormat> FormatOf(const ExportOptions& options) {
    const std::string text = options.format.empty() ? EndingOf(options.out) : options.format;
    const auto found = std::find_if(kFormatNames.begin(), kFormatNames.end(),
                                    [&text](const FormatName& name) { return name.text == text; });
    return found == kFormatNames.end() ? std::nullopt : std::optional(found->format);
}

bool Export(const ExportOptions& options, Output& standardOutput) {
    return RunReportingErrors(options.in, [&] { return ExportFile(options, standardOutput); });
}

} // namespace vexagpx
