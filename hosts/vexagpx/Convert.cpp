// SPDX-License-Identifier: MIT
#include <vexagpx/Convert.h>

#include <vexagpx/Culprit.h>
#include <vexagpx/Documents.h>
#include <vexagpx/EntryPlaces.h>
#include <vexagpx/Messages.h>
#include <vexagpx/Posix.h>
#include <vexagpx/ShellText.h>
#include <vexagpx/Target.h>
#include <vexagpx/WellFormed.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

icu::UnicodeString FromUtf8(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

/// \param path named in messages
void WriteBytes(const UnicodeStrUtils::ByteString& bytes, const std::string& path,
                const std::string& temporaryPath) {
    try {
        Descriptor file = OpenFile(temporaryPath, O_WRONLY | O_CREAT | O_TRUNC);
        if (!WriteAll(file.Get(), {bytes.buffer.get(), bytes.length}) || !file.Close())
            throw std::system_error(errno, std::generic_category());
    } catch (const std::system_error& error) {
        throw std::runtime_error("Unable to write the file: " + path + " (" +
                                 ErrorText(error.code().value()) + ")");
    }
}

/// Writes one document as the request says, to a path instead of the request's.
void WriteResult(const ConvertRequest& request, const GpxDocument& document, const std::string& path,
                 Output& standardOutput) {
    const GpxVersion version(FromUtf8(request.version));
    const icu::UnicodeString name = FromUtf8(request.applicationName);
    const icu::UnicodeString url = FromUtf8(request.applicationUrl);
    Target target(path);
    WriteBytes(document.GetAsByteString(version, name, url), path, target.TemporaryPath());
    if (const std::optional<std::string> complaint = FindXmlError(target.TemporaryPath()))
        throw std::runtime_error("The result would not be well-formed XML because of the " +
                                 FindCulprit(document, version, name, url, target.TemporaryPath()) + ". " +
                                 path + " was not written. (" + *complaint + ")");
    target.Commit(standardOutput);
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

/// Counts what the documents do not hold of the files that they were read from.
class LossCount final : public GpxReadObserver {
public:
    void PassedOver(const GpxPassedOver&) override { ++ofDocument_; }

    void BeginDocument() { ofDocument_ = 0; }
    /// The document has been written.
    void EndDocument() { inAll_ += ofDocument_; }
    std::uint64_t InAll() const { return inAll_; }

private:
    std::uint64_t ofDocument_ = 0;
    std::uint64_t inAll_ = 0;
};

void NoteLosses(const ConvertRequest& request, std::uint64_t count, bool isStream) {
    if (count == 0)
        return;
    const bool isOne = count == 1;
    const std::string note = "Note: " + std::to_string(count) + (isOne ? " thing in " : " things in ") +
                             (request.in == kStandardInput ? "standard input" : request.in) +
                             (isOne ? " was" : " were") + " not carried over";
    const std::string command = "\"vexagpx check " + ShellText(request.in) + "\"";
    const std::string lists = isOne ? "lists it." : "lists them.";
    if (IsSameFile(request.in, request.out))
        Complain(note + ", and the file that held " + (isOne ? "it" : "them") + " was replaced.");
    else if (isStream)
        Complain(note + "; " + command + " with the same input " + lists);
    else
        Complain(note + "; " + command + ' ' + lists);
}

class Converter {
public:
    Converter(const ConvertRequest& request, Output& standardOutput)
        : request_(request), standardOutput_(standardOutput), parser_(request.rules.isTrusted) {
        parser_.Watch(&losses_);
    }

    bool Run() {
        const InputFile file = OpenDocument(request_.in);
        isStream_ = file.IsCopy();
        return IsArchive(file) ? ConvertArchive(file) : ConvertFile(file);
    }

    void NoteLosses() const { vexagpx::NoteLosses(request_, losses_.InAll(), isStream_); }

private:
    bool ConvertFile(const InputFile& file);
    bool ConvertArchive(const InputFile& file);
    void Write(const GpxDocument& document, const std::string& path);

    const ConvertRequest& request_;
    Output& standardOutput_;
    FileParser parser_;
    LossCount losses_;
    bool isStream_ = false;
};

bool Converter::ConvertFile(const InputFile& file) {
    GpxDocument document;
    losses_.BeginDocument();
    parser_.ReadFile(file, document);
    Write(document, request_.out);
    return true;
}

bool Converter::ConvertArchive(const InputFile& file) {
    const std::size_t count = CountGpxEntries(file, request_.rules.archives);
    const bool intoFolder = count != 1;
    if (count > 1 && request_.out == kStandardOutput)
        throw std::runtime_error("Standard output takes one GPX file, and the archive holds more. (" +
                                 request_.in + ")");
    if (!intoFolder && IsSameFile(request_.out, file.FilePath()))
        throw std::runtime_error("The result would replace the archive. (" + request_.in + ")");
    EntryPlaces places(request_.out);
    return ForEachGpxEntry(file, request_.rules.archives, [&](Archive& archive) {
        GpxDocument document;
        losses_.BeginDocument();
        ReadEntry(parser_, archive, request_.in, document);
        Write(document, intoFolder ? places.PlaceOf(archive) : request_.out);
    });
}

void Converter::Write(const GpxDocument& document, const std::string& path) {
    WriteResult(request_, document, path, standardOutput_);
    losses_.EndDocument();
}

} // namespace

bool Convert(const ConvertRequest& request, Output& standardOutput) {
    Converter converter(request, standardOutput);
    const bool fine = Told(request.in, [&] { return converter.Run(); });
    if (fine)
        NoteGpx10(request);
    converter.NoteLosses();
    return fine;
}

} // namespace vexagpx
