// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/FileName.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/PointWriter.h>
#include <vexaTransferLib/writer/RouteWriter.h>
#include <vexaTransferLib/writer/TrackWriter.h>
#include <vexaTransferLib/writer/Utf8Sink.h>
#include <vexaTransferLib/writer/VendorWriter.h>

#include <common/ScopeGuard.h>
#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <unicode/unistr.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

namespace vexaTransferLib {

namespace writer {

namespace {

using Access = GpxModelAccess;

bool HasGeocache(const GpxDocument& document) {
    return std::any_of(document.GetWaypointIter(), document.GetWaypointEndIter(), [](const GpxPoint& point) {
        const auto* rare = Access::GetRareData(point);
        return rare != nullptr && rare->geocache;
    });
}

void WriteStartTag(TextSink& sink, const GpxVersion& version, const icu::UnicodeString& applicationName,
                   const icu::UnicodeString& applicationUrl, bool hasGeocache) {
    sink.Ascii("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>", kEndOfLine);
    sink.Ascii("<", gpx::kGpx, " ", gpx::kVersion, "=\"");
    sink.Raw(version.GetVersionString());
    sink.Ascii("\"\r\n creator=\"");
    sink.Escaped(applicationName);
    sink.Ascii(" - ");
    sink.Escaped(applicationUrl);
    sink.Ascii("\"\r\n xmlns:xsi=\"", text::kXsiUri);
    sink.Ascii("\"\r\n xmlns=\"", text::kGpx11Uri);
    sink.Ascii("\"\r\n xmlns:tarvik=\"", text::kTarvikUri);
    sink.Ascii("\"\r\n xsi:schemaLocation=\"", text::kGpx11Uri, " ", text::kGpx11SchemaLocation);
    sink.Ascii("\r\n ", text::kTarvikUri, " ", text::kTarvikSchemaLocation);
    if (hasGeocache)
        sink.Ascii("\r\n ", text::kGroundspeak10Uri, " ", text::kGroundspeak10SchemaLocation);
    sink.Ascii("\">", kEndOfLine);
}

void WriteMetaData(TextSink& sink, const GpxDocument& document) {
    if (document.HasMetaData())
        AppendLineStart(sink, gpx::kMetadata);
    if (!Access::GetName(document).isEmpty()) {
        sink.Ascii("\t");
        AppendTextElement(sink, gpx::kName, Access::GetName(document));
    }
    // A document that has a time and nothing else for the metadata gets no metadata element around it.
    if (Access::GetTime(document) > 0.0) {
        sink.Ascii("\t");
        AppendAsciiElement(sink, gpx::kTime,
                           sink.TimeText(Access::GetTime(document), text::YearDigits::kFour));
    }
    if (document.HasExtensionData())
        WriteDocumentData(sink, document);
    if (document.HasMetaData())
        AppendLineEnd(sink, gpx::kMetadata);
}

void WriteDocument(TextSink& sink, const GpxVersion& version, const icu::UnicodeString& applicationName,
                   const icu::UnicodeString& applicationUrl, const GpxDocument& document) {
    text::Require(version.IsGpx10() || version.IsGpx11(), text::sites::kDocumentVersion,
                  "Cannot write to unknown GPX schema version.");
    text::Require(!applicationName.isEmpty(), text::sites::kApplicationName,
                  "The application name is required to write a GPX document.");
    text::Require(!applicationUrl.isEmpty(), text::sites::kApplicationUrl,
                  "The application URL is required to write a GPX document.");
    WriteStartTag(sink, version, applicationName, applicationUrl, HasGeocache(document));
    WriteMetaData(sink, document);
    for (auto waypoint = document.GetWaypointIter(); waypoint != document.GetWaypointEndIter(); ++waypoint)
        WritePoint(sink, version, *waypoint);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        WriteRoute(sink, version, *route);
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        WriteTrack(sink, version, *track);
    AppendLineEnd(sink, gpx::kGpx);
}

[[noreturn]] void FailWriting(const text::CheckSite& site, const char* message,
                              const icu::UnicodeString& fileName, int systemError) {
    dbc::ReportFailure(site.source, site.line);
    GpxWriteErrorDetails details;
    fileName.toUTF8String(details.file);
    details.systemError = systemError;
    throw GpxWriteError(message, details);
}

// With a buffer the C library would accept a small document on a full disk and fail only when the file is closed;
// without one the count of `fwrite` says what was written.
void WriteBytes(std::FILE* file, const UnicodeStrUtils::ByteString& bytes,
                const icu::UnicodeString& fileName) {
    constexpr char kWriteFailed[] = "Unable to write the GPX file. Target could be write protected or full.";
    ScopeGuard closeFile([file] { std::fclose(file); });
    std::setvbuf(file, nullptr, _IONBF, 0);
    const std::size_t written = std::fwrite(bytes.buffer.get(), 1, bytes.length, file);
    if (written != bytes.length)
        FailWriting(text::sites::kFileWritten, kWriteFailed, fileName, errno);
    closeFile.Dismiss();
    if (std::fclose(file) != 0)
        FailWriting(text::sites::kFileClosed, kWriteFailed, fileName, errno);
}

} // namespace

} // namespace writer

UnicodeStrUtils::ByteString GpxDocument::GetAsByteString(const GpxVersion& version,
                                                         const icu::UnicodeString& applicationName,
                                                         const icu::UnicodeString& applicationUrl) const {
    writer::Utf8Sink sink(text::sites::kDocumentOutput);
    writer::WriteDocument(sink, version, applicationName, applicationUrl, *this);
    return sink.Take();
}

void GpxDocument::WriteToString(const GpxVersion& version, const icu::UnicodeString& applicationName,
                                const icu::UnicodeString& applicationUrl, std::string& out) const {
    const UnicodeStrUtils::ByteString bytes = GetAsByteString(version, applicationName, applicationUrl);
    out = bytes.buffer.get();
}

void GpxDocument::WriteToFile(const GpxVersion& version, const icu::UnicodeString& applicationName,
                              const icu::UnicodeString& applicationUrl,
                              const icu::UnicodeString& fileName) const {
    const UnicodeStrUtils::ByteString bytes = GetAsByteString(version, applicationName, applicationUrl);
    const UnicodeStrUtils::ByteString path(fileName);
    errno = 0;
    std::FILE* const file = text::IsFileName(fileName) ? std::fopen(path.buffer.get(), "w+b") : nullptr;
    if (file == nullptr)
        writer::FailWriting(text::sites::kFileCreated,
                            "Unable to create the GPX file. Target could be write protected or full.",
                            fileName, errno);
    writer::WriteBytes(file, bytes, fileName);
}

} // namespace vexaTransferLib
