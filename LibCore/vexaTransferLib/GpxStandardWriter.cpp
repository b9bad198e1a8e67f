// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxStandardWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/AtomicFile.h>
#include <vexaTransferLib/standard/PieceOutput.h>
#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/standard/TextCheck.h>
#include <vexaTransferLib/text/FileName.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <memory>
#include <utility>

namespace vexaTransferLib {

GpxStandardWriter::GpxStandardWriter(GpxStandardOptions options) : options_(std::move(options)) {}
GpxStandardWriter::GpxStandardWriter(const GpxStandardWriter&) = default;
GpxStandardWriter& GpxStandardWriter::operator=(const GpxStandardWriter&) = default;
GpxStandardWriter::~GpxStandardWriter() = default;

void GpxStandardWriter::Write(const GpxDocument& document,
                              const std::function<void(std::string_view)>& receive) const {
    if (!options_.version.IsGpx10() && !options_.version.IsGpx11())
        throw dbc::precondition_error("Cannot write to unknown GPX schema version.");
    if (!options_.replacesCharacters)
        standard::CheckTexts(document, options_.creator);
    standard::PieceOutput output(receive);
    standard::Writing writing(document, options_, output);
    standard::WriteDocument(writing, document);
    output.Flush();
}

std::string GpxStandardWriter::GetText(const GpxDocument& document) const {
    std::string text;
    // Most documents are about as long as their source.
    if (const SourceText* const source = GpxModelAccess::GetSource(document.GetElement()))
        text.reserve(source->Text().size());
    Write(document, [&](std::string_view piece) { text.append(piece); });
    return text;
}

void GpxStandardWriter::WriteToFile(const GpxDocument& document, const icu::UnicodeString& fileName) const {
    WriteFile(document, UnicodeStrUtils::UnicodeStringToStlString(fileName));
}

// The file is created when its first bytes are there: what is refused before that has touched nothing.
void GpxStandardWriter::WriteFile(const GpxDocument& document, const std::string& fileName) const {
    std::unique_ptr<standard::AtomicFile> file;
    Write(document, [&](std::string_view piece) {
        if (!file)
            file = std::make_unique<standard::AtomicFile>(fileName, options_.isAtomic);
        file->Write(piece);
    });
    file->Commit();
}

} // namespace vexaTransferLib
