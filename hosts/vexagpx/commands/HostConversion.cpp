// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Conversion.h>

#include <vexagpx/commands/IllFormedField.h>
#include <vexagpx/input/Input.h>
#include <vexagpx/input/XmlCheck.h>
#include <vexagpx/process/Messages.h>

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

/// True for what the result has too, if in another form, or has only because every file has it: a comment that became
/// a description, the name of the document, the program that wrote the file.
bool IsCarriedOver(const GpxSkippedElement& what) {
    return what.reason >= kGpxUnreadAttribute && !what.isLoss;
}

/// Counts what of the documents that were written is not in the result.
class HostConversion final : public Conversion {
public:
    explicit HostConversion(const ConvertOptions& options) : options_(options) {}

    void Skipped(const GpxSkippedElement& what) override { ofDocument_ += IsCarriedOver(what) ? 0 : 1; }

    void StartDocument() override { ofDocument_ = 0; }
    void Write(const GpxDocument& document, const std::string& source, const std::string& /*entry*/,
               Destination& destination, Output& standardOutput) override {
        WriteResult(options_, document, source, destination, standardOutput);
        inAll_ += ofDocument_;
    }
    void PrintNotes(bool succeeded, bool isStream) const override {
        if (succeeded)
            NoteGpx10(options_);
        NoteLosses(isStream);
    }

private:
    void NoteLosses(bool isStream) const;

    const ConvertOptions& options_;
    std::uint64_t ofDocument_ = 0;
    std::uint64_t inAll_ = 0;
};

void HostConversion::NoteLosses(bool isStream) const {
    if (inAll_ == 0)
        return;
    const bool isOne = inAll_ == 1;
    const std::string note = "Note: " + std::to_string(inAll_) + (isOne ? " thing in " : " things in ") +
                             ShownName(options_.in) + (isOne ? " was" : " were") + " not carried over";
    std::error_code error;
    if (std::filesystem::equivalent(options_.in, options_.out, error))
        PrintError(note + ", and the file that held " + (isOne ? "it" : "them") + " was replaced.");
    else
        PrintError(note + "; " + ListedBy("vexagpx check", options_, isOne, isStream));
}

} // namespace

std::unique_ptr<Conversion> MakeHostConversion(const ConvertOptions& options) {
    return std::make_unique<HostConversion>(options);
}

} // namespace vexagpx
