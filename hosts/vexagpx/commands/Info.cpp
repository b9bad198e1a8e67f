// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Info.h>

#include <vexagpx/input/CallbackInputSource.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/MetaDataJson.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr std::size_t kTextWidth = 60;

icu::UnicodeString Text(std::int64_t number) {
    return icu::UnicodeString::fromUTF8(std::to_string(number));
}

/// The line of a file: "walk.gpx: layer Hikes, symbol 5, 12 waypoints".
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

    void AddCount(std::int32_t count, const char16_t* noun) {
        if (count != 0)
            Add(Text(count) + u' ' + noun + (count == 1 ? u"" : u"s"));
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

/// A total without a fraction comes out of the scanner as the bits of an integer, which no length in
/// kilometres looks like.
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
        line.Add(u"symbol " + Text(layer->defaultSymbol));
    }
    if (const auto identifiers = scanner.GetAnnotateMetaData()) {
        line.AddText(u"track GUID", identifiers->trackGUID);
        line.AddText(u"waypoint GUID", identifiers->waypointGUID);
    }
    if (const auto stats = scanner.GetStats()) {
        line.AddCount(stats->wptcount, u"waypoint");
        line.AddCount(stats->trkcount, u"track");
        line.AddCount(stats->trksegcount, u"segment");
        if (stats->trktotalkm != 0.0)
            line.Add(LengthText(Kilometres(stats->trktotalkm) * 1000.0));
        if (stats->geocachecount != -1)
            line.Add(Text(stats->geocachecount) + (stats->geocachecount == 1 ? u" geocache" : u" geocaches"));
    }
}

void WriteLine(const GpxTarvikExtParser& scanner, const std::string& heading, Output& out) {
    InfoLine line;
    AddRecords(scanner, line);
    const double time = scanner.GetDocumentTime();
    if (time != 0.0)
        line.Add(TimeText(time));
    if (scanner.GetScanEnd() == kGpxScanIllFormed)
        line.Add(u"the head is not well-formed XML");
    line.Write(heading, out);
}

void WriteJson(const GpxTarvikExtParser& scanner, const std::string& file, const std::string* entry,
               Output& out) {
    JsonWriter json(out);
    json.BeginObject();
    if (entry != nullptr) {
        json.Key("entry");
        json.String(icu::UnicodeString::fromUTF8(*entry));
    }
    json.Key("file");
    json.String(icu::UnicodeString::fromUTF8(file));
    if (scanner.GetDocumentTime() != 0.0) {
        json.Key("time");
        json.Number(scanner.GetDocumentTime());
    }
    MetaDataJson records(json, EmptyTexts::kShown);
    records.Write(scanner.GetGISMetaData().get());
    records.Write(scanner.GetAnnotateMetaData().get());
    records.Write(scanner.GetStats().get());
    json.EndObject();
    out.Write("\n");
}

/// Of a head that is ill-formed, what comes before the error is the answer.
void ThrowUnlessScanned(const GpxTarvikExtParser& scanner, const std::string& name) {
    if (scanner.GetScanEnd() == kGpxScanRefused)
        throw std::runtime_error("The head of the untrusted GPX file was refused: " + name +
                                 ". It has a document type declaration or is beyond a limit." + kTrustAdvice);
    if (scanner.GetScanEnd() == kGpxScanFailed)
        throw std::runtime_error("Unable to read the head of the file: " + name);
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
    archive.Open();
    bool ended = false;
    const CallbackInputSource source(file + "/" + archive.Name(), [&](char* buffer, std::size_t size) {
        // An entry that has ended is closed and cannot be read again.
        const std::size_t count = ended ? 0 : archive.Read(buffer, size);
        ended = count == 0;
        return count;
    });
    scanner.ParseSource(source);
    source.RethrowFailure();
}

bool InfoOfArgument(GpxTarvikExtParser& scanner, const std::string& argument, const InputRules& rules,
                    InfoForm form, Output& out) {
    const InputFile file = OpenDocument(argument, rules.archives);
    if (!IsArchive(file)) {
        ScanFile(scanner, file);
        WriteInfo(scanner, argument, nullptr, form, out);
        ThrowUnlessScanned(scanner, argument);
        return true;
    }
    return ForEachGpxEntry(file, rules.archives, [&](Archive& archive) {
        ScanEntry(scanner, archive, argument);
        const std::string entry = archive.Name();
        WriteInfo(scanner, argument, &entry, form, out);
        ThrowUnlessScanned(scanner, argument + "/" + entry);
    });
}

} // namespace

void WriteInfo(const GpxTarvikExtParser& scanner, const std::string& file, const std::string* entry,
               InfoForm form, Output& out) {
    if (form == InfoForm::kJson)
        WriteJson(scanner, file, entry, out);
    else
        WriteLine(scanner, DocumentSource{file, entry}.Text(), out);
}

bool Info(const std::vector<std::string>& files, const InputRules& rules, InfoForm form, Output& out) {
    bool fine = true;
    GpxTarvikExtParser scanner;
    if (!rules.isTrusted)
        scanner.SetUntrusted();
    for (const std::string& file : files) {
        fine =
            RunReportingErrors(file, [&] { return InfoOfArgument(scanner, file, rules, form, out); }) && fine;
        out.Flush();
    }
    return fine;
}

} // namespace vexagpx
