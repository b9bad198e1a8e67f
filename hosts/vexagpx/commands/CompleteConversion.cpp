// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Conversion.h>

#include <vexagpx/input/Input.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/UnwrittenReport.h>
#include <vexagpx/terminal/DisplayText.h>

#include <common/dbc.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

bool IsXmlCharacter(UChar32 character) {
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return !U_IS_SURROGATE(character) && character != 0xFFFE && character != 0xFFFF;
}

/// \param field names the text, for messages
/// \throws std::runtime_error when it has a character that XML cannot hold
icu::UnicodeString Checked(const std::string& field, const std::string& utf8) {
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        if (IsXmlCharacter(text.char32At(i)))
            continue;
        std::string shown;
        Printable(text).trim().toUTF8String(shown);
        std::string message = "The result would not be well-formed XML because of the ";
        message.append(field).append(" \"").append(shown).append("\".");
        throw std::runtime_error(message);
    }
    return text;
}

/// The `creator` of the result.
icu::UnicodeString CreatorOf(const ConvertOptions& options) {
    return Checked("application name", options.applicationName) + " - " +
           Checked("application URL", options.applicationUrl);
}

class CompleteConversion final : public Conversion {
public:
    explicit CompleteConversion(const ConvertOptions& options) : options_(options) {}

    void Skipped(const GpxSkippedElement& what) override {
        unreadOfDocument_ += what.reason == kGpxUnreadable ? 1 : 0;
    }

    void StartDocument() override { unreadOfDocument_ = 0; }
    void Write(const GpxDocument& document, const std::string& source, const std::string& entry,
               Destination& destination, Output& standardOutput) override;
    void PrintNotes(bool succeeded, bool isStream) const override;

private:
    void NoteUnwritten() const;
    void NoteUnread(bool isStream) const;

    const ConvertOptions& options_;
    UnwrittenReport unwritten_;
    std::uint64_t unreadOfDocument_ = 0;
    std::uint64_t unread_ = 0; ///< of the documents that were written
};

void CompleteConversion::Write(const GpxDocument& document, const std::string& source,
                               const std::string& entry, Destination& destination, Output& standardOutput) {
    UnwrittenReport unwritten;
    GpxStandardOptions options;
    options.version = GpxVersion(icu::UnicodeString::fromUTF8(options_.version));
    options.creator = CreatorOf(options_);
    options.unwritten = [&unwritten](const GpxUnwritten& what) { unwritten.Add(what); };
    try {
        GpxStandardWriter(options).Write(
            document, [&](std::string_view piece) { destination.Write(piece, standardOutput); });
    } catch (const dbc::precondition_error& refusal) {
        throw std::runtime_error(std::string(refusal.what()) + " " + destination.Path() +
                                 " was not written. (" + source + ")");
    }
    destination.Commit(standardOutput);
    unwritten_.Add(unwritten, entry);
    unread_ += unreadOfDocument_;
}

void CompleteConversion::PrintNotes(bool, bool isStream) const {
    NoteUnwritten();
    NoteUnread(isStream);
}

void CompleteConversion::NoteUnwritten() const {
    const std::uint64_t count = unwritten_.Count();
    if (count == 0)
        return;
    PrintError("Note: " + Counted(count, "thing") + " in " + ShownName(options_.in) +
               (count == 1 ? " has" : " have") + " no place in GPX " + options_.version +
               (count == 1 ? " and was" : " and were") + " left out:");
    for (const std::string& line : UnwrittenLines(unwritten_))
        PrintError("  " + line);
}

void CompleteConversion::NoteUnread(bool isStream) const {
    if (unread_ == 0)
        return;
    const bool isOne = unread_ == 1;
    PrintError("Note: " + Counted(unread_, "thing") + " in " + ShownName(options_.in) +
               " could not be read and " + (isOne ? "was" : "were") + " carried over unchanged; " +
               ListedBy("vexagpx check --keep", options_, isOne, isStream));
}

} // namespace

std::unique_ptr<Conversion> MakeCompleteConversion(const ConvertOptions& options) {
    return std::make_unique<CompleteConversion>(options);
}

} // namespace vexagpx
