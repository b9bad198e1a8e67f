// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Info.h>

#include <vexagpx/commands/HeadDetails.h>
#include <vexagpx/commands/SourceJson.h>
#include <vexagpx/input/CallbackInputSource.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/EntryContent.h>
#include <vexagpx/input/FailureCause.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/output/MetaDataJson.h>
#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr std::size_t kTextWidth = 60;

/// The first line of a file: "walk.gpx: layer Hikes, symbol 5, 12 waypoints".
class InfoLine {
public:
    void Add(const icu::UnicodeString& item) {
        if (!items_.isEmpty())
            items_ += u", ";
        items_ += item;
    }

    void AddText(const char16_t* label, const icu::UnicodeString& text) {
        if (!text.isEmpty())
            Add(label + (u' ' + Fitted(Printable(text), kTextWidth)));
    }

    void AddCount(std::int32_t count, const char* noun) {
        Add(icu::UnicodeString::fromUTF8(Counted(count, noun)));
    }
    void AddCountUnlessZero(std::int32_t count, const char* noun) {
        if (count != 0)
            AddCount(count, noun);
    }

    void Write(const std::string& heading, Output& out) const {
        const icu::UnicodeString line = Printable(icu::UnicodeString::fromUTF8(heading)) + u": " +
                                        (items_.isEmpty() ? u"no vendor metadata and no time" : items_) +
                                        u'\n';
        std::string utf8;
        out.Write(line.toUTF8String(utf8));
    }

private:
    icu::UnicodeString items_;
};

/// The scanner gives a total without a fraction as the bits of an integer. No length in kilometres has such bits.
double Kilometres(double total) {
    if (std::fpclassify(total) == FP_SUBNORMAL)
        return static_cast<double>(std::bit_cast<std::int64_t>(total));
    return total;
}

void AddRecords(const GpxTarvikExtParser& scanner, InfoLine& line) {
    if (const auto layer = scanner.GetGISMetaData()) {
        line.AddText(u"layer", layer->layerName);
        line.AddText(u"key", layer->layerKey);
        line.AddText(u"form", layer->form);
        line.Add(u"symbol " + NumberText(layer->defaultSymbol));
    }
    if (const auto identifiers = scanner.GetAnnotateMetaData()) {
        line.AddText(u"track GUID", identifiers->trackGUID);
        line.AddText(u"waypoint GUID", identifiers->waypointGUID);
    }
    if (const auto stats = scanner.GetStats()) {
        line.AddCountUnlessZero(stats->wptcount, "waypoint");
        line.AddCountUnlessZero(stats->trkcount, "track");
        line.AddCountUnlessZero(stats->trksegcount, "segment");
        if (stats->trktotalkm != 0.0)
            line.Add(LengthText(Kilometres(stats->trktotalkm) * 1000.0));
        if (stats->geocachecount != -1)
            line.AddCount(stats->geocachecount, "geocache");
    }
}

/// The time that the scanner takes for the document's, or else that of a file whose namespace it does not know.
icu::UnicodeString DocumentTimeText(const GpxTarvikExtParser& scanner) {
    if (scanner.GetDocumentTime() != 0.0)
        return TimeText(scanner.GetDocumentTime());
    const std::optional<double>& time = scanner.GetHead().time;
    return time ? TimeText(*time) : icu::UnicodeString();
}

void WriteText(const GpxTarvikExtParser& scanner, const std::string& heading, Output& out) {
    InfoLine line;
    AddRecords(scanner, line);
    const icu::UnicodeString time = DocumentTimeText(scanner);
    if (!time.isEmpty())
        line.Add(time);
    if (scanner.GetScanEnd() == kGpxScanIllFormed)
        line.Add(u"the head is not well-formed XML");
    line.Write(heading, out);
    WriteHeadText(scanner.GetHead(), time, out);
}

void WriteJson(const GpxTarvikExtParser& scanner, const DocumentSource& source, Output& out) {
    JsonWriter json(out);
    json.BeginObject();
    WriteSource(json, source);
    if (scanner.GetDocumentTime() != 0.0)
        TimeMember(json, "time", scanner.GetDocumentTime());
    MetaDataJson records(json, EmptyTexts::kShown);
    records.Write(scanner.GetGISMetaData().get());
    records.Write(scanner.GetAnnotateMetaData().get());
    records.Write(scanner.GetStats().get());
    WriteHeadJson(scanner.GetHead(), json);
    json.EndObject();
    out.Write("\n");
}

/// ", line 1, column 1: invalid document structure"
std::string PlaceText(const std::optional<GpxHead::Error>& error) {
    if (!error || error->line == 0)
        return "";
    return ", line " + std::to_string(error->line) + ", column " + std::to_string(error->column) + ": " +
           error->message;
}

constexpr char kNoGpx[] = "The GPX document element was not found.";

/// A head that is ill-formed is no failure when there is a root element: what precedes the error is the result.
void ThrowUnlessScanned(const GpxTarvikExtParser& scanner, const std::string& name) {
    if (scanner.GetScanEnd() == kGpxScanRefused)
        throw std::runtime_error("The head of the untrusted GPX file was refused: " + name +
                                 ". It has a document type declaration or is beyond a limit." + kTrustAdvice);
    if (scanner.GetScanEnd() == kGpxScanFailed)
        throw std::runtime_error("Unable to read the head of the file: " + name);
    const GpxHead& head = scanner.GetHead();
    if (head.end == GpxHead::End::kNotGpx)
        throw std::runtime_error(kNoGpx + (" (" + name + ")") + FailureAdvice(kNoGpx));
    if (head.end == GpxHead::End::kIllFormed && head.rootName.isEmpty())
        throw std::runtime_error("The file has no head that can be read. (" + name + PlaceText(head.error) +
                                 ")" + (head.error ? FailureAdvice(head.error->message) : ""));
}

void ScanFile(GpxTarvikExtParser& scanner, const InputFile& file) {
    const Descriptor descriptor = OpenInput(file.FilePath(), file.Argument());
    const CallbackInputSource source(file.FilePath(), [&](char* buffer, std::size_t size) {
        return ReadPiece(descriptor, file.Argument(), buffer, size);
    });
    scanner.ParseSource(source);
    source.RethrowFailure();
}

void ScanEntry(GpxTarvikExtParser& scanner, Archive& archive, const std::string& file) {
    EntryContent content(archive, file);
    content.Open();
    const CallbackInputSource source(
        content.Name(), [&](char* buffer, std::size_t size) { return content.Read(buffer, size); });
    scanner.ParseSource(source);
    source.RethrowFailure();
}

/// Writes what the scan found.
void WriteResult(const GpxTarvikExtParser& scanner, const DocumentSource& source, bool json, Output& out) {
    if (json)
        WriteJson(scanner, source, out);
    else
        WriteText(scanner, source.Text(), out);
}

bool InfoOfArgument(GpxTarvikExtParser& scanner, const std::string& argument, const InfoOptions& options,
                    Output& out) {
    const InputFile file = OpenDocument(argument, options.rules.archives);
    if (!IsArchive(file)) {
        ScanFile(scanner, file);
        WriteResult(scanner, {argument, nullptr}, options.json, out);
        ThrowUnlessScanned(scanner, argument);
        return true;
    }
    return ForEachGpxEntry(file, options.rules.archives, [&](Archive& archive) {
        ScanEntry(scanner, archive, argument);
        const std::string entry = archive.Name();
        WriteResult(scanner, {argument, &entry}, options.json, out);
        ThrowUnlessScanned(scanner, argument + "/" + entry);
    });
}

} // namespace

bool Info(const InfoOptions& options, Output& out) {
    GpxTarvikExtParser scanner;
    if (!options.rules.isTrusted)
        scanner.SetUntrusted();
    return ForEachFile(options.files, [&](const std::string& file) {
        const bool succeeded =
            RunReportingErrors(file, [&] { return InfoOfArgument(scanner, file, options, out); });
        out.Flush();
        return succeeded;
    });
}

} // namespace vexagpx
