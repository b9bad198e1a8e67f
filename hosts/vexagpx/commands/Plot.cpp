// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Plot.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/page/CollectPage.h>
#include <vexagpx/page/Page.h>
#include <vexagpx/page/PathThinning.h>
#include <vexagpx/picture/CairoPainter.h>
#include <vexagpx/picture/PathData.h>
#include <vexagpx/process/Messages.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace vexagpx {

namespace {

/// Reads the files and writes what is drawn of them to the destination.
using PlotWriter = bool (*)(const PlotOptions&, Destination&, Output& standardOutput);

bool PlotPage(const PlotOptions& options, Destination& destination, Output& standardOutput) {
    std::vector<PageDocument> documents;
    const bool areRead =
        ReadDocuments(options.files, options.rules, [&](const DocumentSource& source, const auto& document) {
            documents.push_back(CollectPage(document, source.Text()));
        });
    if (documents.empty())
        return false;
    ThinDocuments(documents, kPagePoints);
    Output page([&](std::string_view piece) { destination.Write(piece, standardOutput); });
    WritePage(documents, page);
    page.Flush();
    destination.Commit(standardOutput);
    return areRead;
}

template <PictureFormat format>
bool PlotPicture(const PlotOptions& options, Destination& destination, Output& standardOutput) {
    PathData data;
    bool hasDocument = false;
    const bool areRead =
        ReadDocuments(options.files, options.rules, [&](const DocumentSource& source, const auto& document) {
            hasDocument = true;
            data.Add(document, source.Text());
        });
    if (!hasDocument)
        return false;
    if (data.IsEmpty())
        throw std::runtime_error("There is no point to draw. " + options.out + " was not written.");
    PaintPicture(LayOutPicture(data, options.picture, MakeTextMeasure()), format,
                 [&](std::string_view piece) { destination.Write(piece, standardOutput); });
    destination.Commit(standardOutput);
    return areRead;
}

PlotWriter FindWriter(const std::string& path) {
    static constexpr std::array<std::pair<std::string_view, PlotWriter>, 4> kWriters = {
        {{".html", PlotPage},
         {".svg", PlotPicture<PictureFormat::kSvg>},
         {".png", PlotPicture<PictureFormat::kPng>},
         {".pdf", PlotPicture<PictureFormat::kPdf>}}};
    std::string ending = path.substr(std::min(path.rfind('.'), path.size()));
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    for (const auto& [name, writer] : kWriters)
        if (ending == name)
            return writer;
    return nullptr;
}

/// Takes a number from the start of the text.
std::optional<int> TakeNumber(std::string_view& text) {
    int number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return number;
}

} // namespace

std::string FindPlotNameError(const std::string& path) {
    return FindWriter(path) != nullptr ? "" : "must end with .svg, .png, .pdf or .html";
}

std::string ReadPictureSize(const std::string& text, PictureOptions& picture) {
    constexpr int kLeastWidth = 200;
    constexpr int kLeastHeight = 150;
    constexpr int kMost = 10000;
    std::string_view rest = text;
    const std::optional<int> width = TakeNumber(rest);
    const bool hasCross = rest.starts_with('x');
    rest.remove_prefix(hasCross ? 1 : 0);
    const std::optional<int> height = TakeNumber(rest);
    if (!width || !hasCross || !height || !rest.empty())
        return "must be a width and a height, such as 1000x800";
    if (*width < kLeastWidth || *height < kLeastHeight || *width > kMost || *height > kMost)
        return "must be from 200x150 to 10000x10000";
    picture.width = *width;
    picture.height = *height;
    return "";
}

bool Plot(const PlotOptions& options, Output& standardOutput) {
    return RunReportingErrors(options.out, [&] {
        for (const std::string& file : options.files)
            if (IsSameFile(file, options.out))
                throw std::runtime_error(options.out + " is one of the files to read.");
        Destination destination(options.out);
        return FindWriter(options.out)(options, destination, standardOutput);
    });
}

} // namespace vexagpx
