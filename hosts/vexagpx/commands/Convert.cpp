// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Convert.h>

#include <vexagpx/commands/IllFormedField.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/XmlCheck.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/output/ExtractionPaths.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/ShellText.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

icu::UnicodeString FromUtf8(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

/// Writes one document in the form that the options ask for.
/// \param source what the document was read from
/// \throws std::runtime_error when the result would be ill-formed, or would not say what the document says
void WriteResult(const ConvertOptions& options, const GpxDocument& document, const std::string& source,
                 Destination& destination, Output& standardOutput) {
    const GpxVersion version(FromUtf8(options.version));
    const icu::UnicodeString name = FromUtf8(options.applicationName);
    const icu::UnicodeString url = FromUtf8(options.applicationUrl);
    const UnicodeStrUtils::ByteString bytes = document.GetAsByteString(version, name, url);
    const std::string_view xml(bytes.buffer.get(), bytes.length);
    if (const std::optional<std::string> error = FindXmlError(xml))
        throw std::runtime_error("The result would not be well-formed XML because of the " +
                                 FindIllFormedField(document, version, name, url, xml) + ". " +
                                 destination.Path() + " was not written. (" + *error + ")");
    if (const std::optional<std::string> field = FindChangedText(document, version))
        throw std::runtime_error("The result would not say what the input says: the " + *field +
                                 " is written without escapes and would be read as something else. " +
                                 destination.Path() + " was not written. (" + source + ")");
    destination.Commit(xml, standardOutput);
}

void NoteGpx10(const ConvertOptions& options) {
    if (options.version == "1.0")
        PrintError("Note: this library reads no points from a GPX 1.0 file that it wrote, such as " +
                   options.out + ".");
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

/// True for what the result has too, if in another form, or has only because every file has it: a comment that became
/// a description, the name of the document, the program that wrote the file.
bool IsCarriedOver(const GpxSkippedElement& what) {
    return what.reason >= kGpxUnreadAttribute && !what.isLoss;
}

/// Counts what of the documents that were written is not in the result.
class LossCount final : public GpxReadObserver {
public:
    void Skipped(const GpxSkippedElement& what) override { ofDocument_ += IsCarriedOver(what) ? 0 : 1; }

    void StartDocument() { ofDocument_ = 0; }
    /// The document has been written.
    void EndDocument() { inAll_ += ofDocument_; }
    std::uint64_t InAll() const { return inAll_; }

private:
    std::uint64_t ofDocument_ = 0;
    std::uint64_t inAll_ = 0;
};

void NoteLosses(const ConvertOptions& options, std::uint64_t count, bool isStream) {
    if (count == 0)
        return;
    const bool isOne = count == 1;
    const std::string note = "Note: " + std::to_string(count) + (isOne ? " thing in " : " things in ") +
                             ShownName(options.in) + (isOne ? " was" : " were") + " not carried over";
    const std::string command = "\"vexagpx check " + ShellText(options.in) + "\"";
    const std::string lists = isOne ? "lists it." : "lists them.";
    if (IsSameFile(options.in, options.out))
        PrintError(note + ", and the file that held " + (isOne ? "it" : "them") + " was replaced.");
    else if (isStream)
        PrintError(note + "; " + command + " with the same input " + lists);
    else
        PrintError(note + "; " + command + ' ' + lists);
}

class Converter {
public:
    Converter(const ConvertOptions& options, Output& standardOutput)
        : options_(options), standardOutput_(standardOutput), parser_(options.rules.isTrusted) {
        parser_.Watch(&losses_);
    }

    bool Run() {
        const InputFile file = OpenDocument(options_.in, options_.rules.archives);
        isStream_ = file.IsCopy();
        return IsArchive(file) ? ConvertArchive(file) : ConvertFile(file);
    }

    void NoteLosses() const { vexagpx::NoteLosses(options_, losses_.InAll(), isStream_); }

private:
    bool ConvertFile(const InputFile& file);
    bool ConvertArchive(const InputFile& file);
    void Write(const GpxDocument& document, const std::string& source, Destination destination);

    const ConvertOptions& options_;
    Output& standardOutput_;
    FileParser parser_;
    LossCount losses_;
    bool isStream_ = false;
};

bool Converter::ConvertFile(const InputFile& file) {
    GpxDocument document;
    losses_.StartDocument();
    parser_.ReadFile(file, document);
    Write(document, ShownName(options_.in), Destination(options_.out));
    return true;
}

bool Converter::ConvertArchive(const InputFile& file) {
    const std::size_t count = CountGpxEntries(file, options_.rules.archives);
    const bool intoFolder = count != 1;
    if (count > 1 && options_.out == kStandardOutput)
        throw std::runtime_error("Standard output takes one GPX file, and the archive holds more. (" +
                                 options_.in + ")");
    if (!intoFolder && IsSameFile(options_.out, file.FilePath()))
        throw std::runtime_error("The result would replace the archive. (" + options_.in + ")");
    ExtractionPaths paths(options_.out);
    return ForEachGpxEntry(file, options_.rules.archives, [&](Archive& archive) {
        GpxDocument document;
        losses_.StartDocument();
        ReadEntry(parser_, archive, options_.in, document);
        Write(document, ShownName(options_.in) + "/" + archive.Name(),
              intoFolder ? Destination(paths.FileFor(archive)) : Destination(options_.out));
    });
}

void Converter::Write(const GpxDocument& document, const std::string& source, Destination destination) {
    WriteResult(options_, document, source, destination, standardOutput_);
    losses_.EndDocument();
}

} // namespace

bool Convert(const ConvertOptions& options, Output& standardOutput) {
    Converter converter(options, standardOutput);
    const bool succeeded = RunReportingErrors(options.in, [&] { return converter.Run(); });
    if (succeeded)
        NoteGpx10(options);
    converter.NoteLosses();
    return succeeded;
}

} // namespace vexagpx
