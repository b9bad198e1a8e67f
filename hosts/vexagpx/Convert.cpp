// SPDX-License-Identifier: MIT
#include <vexagpx/Convert.h>

#include <vexagpx/Culprit.h>
#include <vexagpx/Documents.h>
#include <vexagpx/EntryPlaces.h>
#include <vexagpx/Messages.h>
#include <vexagpx/Target.h>
#include <vexagpx/WellFormed.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

icu::UnicodeString FromUtf8(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

/// Writes one document as the request says, to a path instead of the request's.
bool WriteResult(const ConvertRequest& request, const GpxDocument& document, const std::string& path,
                 Output& standardOutput) {
    const GpxVersion version(FromUtf8(request.version));
    const icu::UnicodeString name = FromUtf8(request.applicationName);
    const icu::UnicodeString url = FromUtf8(request.applicationUrl);
    Target target(path);
    document.WriteToFile(version, name, url, FromUtf8(target.TemporaryPath()));
    if (const std::optional<std::string> complaint = FindXmlError(target.TemporaryPath()))
        throw std::runtime_error("The result would not be well-formed XML because of the " +
                                 FindCulprit(document, version, name, url, target.TemporaryPath()) + ". " +
                                 path + " was not written. (" + *complaint + ")");
    target.Commit(standardOutput);
    return true;
}

void NoteGpx10(const ConvertRequest& request) {
    if (request.version == "1.0")
        Complain("Note: from a GPX 1.0 file that it wrote, as " + request.out +
                 ", this library reads no points.");
}

std::size_t CountGpxEntries(const InputFile& file, const ArchiveLimits& limits) {
    Archive archive(file, limits);
    std::size_t count = 0;
    while (archive.Next())
        count += archive.IsGpx() ? 1 : 0;
    return count;
}

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return std::filesystem::equivalent(path, other, error);
}

bool ConvertArchive(const ConvertRequest& request, const InputFile& file, Output& standardOutput) {
    const std::size_t count = CountGpxEntries(file, request.limits);
    const bool intoFolder = count != 1;
    if (count > 1 && request.out == kStandardOutput)
        throw std::runtime_error("Standard output takes one GPX file, and the archive holds more. (" +
                                 request.in + ")");
    if (!intoFolder && IsSameFile(request.out, file.FilePath()))
        throw std::runtime_error("The result would replace the archive. (" + request.in + ")");
    FileParser parser;
    EntryPlaces places(request.out);
    return ForEachGpxEntry(file, request.limits, [&](Archive& archive) {
        GpxDocument document;
        if (!ReadEntry(parser, archive, request.in, document))
            return false;
        return WriteResult(request, document, intoFolder ? places.PlaceOf(archive) : request.out,
                           standardOutput);
    });
}

bool ConvertInput(const ConvertRequest& request, Output& standardOutput) {
    const InputFile file(request.in);
    if (IsArchive(file))
        return ConvertArchive(request, file, standardOutput);
    GpxDocument document;
    return FileParser().ReadFile(file, document) &&
           WriteResult(request, document, request.out, standardOutput);
}

} // namespace

bool Convert(const ConvertRequest& request, Output& standardOutput) {
    const bool fine = Told(request.in, [&] { return ConvertInput(request, standardOutput); });
    if (fine)
        NoteGpx10(request);
    return fine;
}

} // namespace vexagpx
