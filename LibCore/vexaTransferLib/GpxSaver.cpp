// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxSaver.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/saving/ElementChanges.h>
#include <vexaTransferLib/saving/ObjectEdits.h>
#include <vexaTransferLib/saving/Saving.h>
#include <vexaTransferLib/saving/TextEdits.h>
#include <vexaTransferLib/standard/AtomicFile.h>
#include <vexaTransferLib/standard/PieceOutput.h>
#include <vexaTransferLib/standard/TextCheck.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <memory>
#include <utility>

namespace vexaTransferLib {

GpxSaver::GpxSaver(GpxSaveOptions options) : options_(std::move(options)) {}
GpxSaver::GpxSaver(const GpxSaver&) = default;
GpxSaver& GpxSaver::operator=(const GpxSaver&) = default;
GpxSaver::~GpxSaver() = default;

void GpxSaver::Save(const GpxDocument& document, const std::function<void(std::string_view)>& receive) const {
    const SourceText* const source = GpxModelAccess::GetSource(document.GetElement());
    if (source == nullptr)
        throw dbc::precondition_error("Only a GPX document that was read completely can be saved.");
    if (!options_.replacesCharacters)
        standard::CheckTexts(document, {});
    saving::Saving saving(document, options_);
    saving.SetElementChanges(saving::MakeElementChanges(saving, document));
    saving::TextEdits edits;
    saving::EditDocument(saving, edits, document);
    standard::PieceOutput output(receive);
    const std::string_view text = source->Text();
    edits.AddUntouched(saving.ElementChanges(), 0, text.size());
    if (!source->IsFile())
        output.AppendAll("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", text.starts_with('\n') ? "" : "\n");
    edits.Apply(text, 0, text.size(), [&](std::string_view piece) { output.Append(piece); });
    if (!source->IsFile() && !text.ends_with('\n'))
        output.Append("\n");
    output.Flush();
}

std::string GpxSaver::GetText(const GpxDocument& document) const {
    std::string text;
    if (const SourceText* const source = GpxModelAccess::GetSource(document.GetElement()))
        text.reserve(source->Text().size());
    Save(document, [&](std::string_view piece) { text.append(piece); });
    return text;
}

void GpxSaver::SaveToFile(const GpxDocument& document, const icu::UnicodeString& fileName) const {
    SaveFile(document, UnicodeStrUtils::UnicodeStringToStlString(fileName));
}

// The file is created when its first bytes are there: what is refused before that has touched nothing.
void GpxSaver::SaveFile(const GpxDocument& document, const std::string& fileName) const {
    std::unique_ptr<standard::AtomicFile> file;
    Save(document, [&](std::string_view piece) {
        if (!file)
            file = std::make_unique<standard::AtomicFile>(fileName, options_.isAtomic);
        file->Write(piece);
    });
    file->Commit();
}

} // namespace vexaTransferLib
