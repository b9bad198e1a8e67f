// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Check.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/CauseSummary.h>
#include <vexagpx/report/Causes.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/LossReportJson.h>
#include <vexagpx/report/LossReportText.h>
#include <vexagpx/report/WritingCheck.h>
#include <vexagpx/schema/DocumentValidation.h>
#include <vexagpx/terminal/Lines.h>

#include <exception>
#include <functional>
#include <optional>
#include <vector>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

namespace {

class Checker {
public:
    Checker(const CheckOptions& options, Output& out) : options_(options), out_(out), parser_(options.rules) {
        if (options.schema)
            validation_.emplace();
    }

    bool Run();

private:
    /// A document that can be read as often as it is checked.
    struct Document {
        DocumentSource source;
        std::function<void(GpxDocument&)> read;
        std::function<void(SchemaReport&)> validate;
    };

    void WriteSummary();
    void WriteCauses();
    bool CheckFile(const std::string& argument);
    void CheckEntry(const std::string& argument, Archive& archive);
    void CheckDocument(const Document& checked);
    bool Validate(const Document& document, SchemaReport& report);
    void WriteReport(const DocumentSource& source, const GpxDocument& document, const Findings& findings);
    void WriteFailure(const DocumentSource& source, const std::string& error, const Findings& findings);
    void WriteText(const DocumentSource& source, const DocumentCounts* counts, const Findings& findings);

    const CheckOptions& options_;
    Output& out_;
    FileParser parser_;
    std::optional<DocumentValidation> validation_;
    CheckTotals totals_;
    CauseSummary causes_;
    bool isFirst_ = true;
};

bool Checker::Run() {
    const bool succeeded =
        ForEachFile(options_.files, [this](const std::string& file) { return CheckFile(file); });
    if (options_.summary)
        WriteCauses();
    else if (!options_.json)
        WriteSummary();
    out_.Flush();
    return succeeded && totals_.lost == 0 && totals_.failures == 0 && totals_.invalid == 0;
}

void Checker::WriteCauses() {
    if (options_.json)
        causes_.WriteJson(out_);
    else
        causes_.WriteText(out_);
}

void Checker::WriteSummary() {
    if (!isFirst_)
        out_.Write("\n");
    std::string summary = options_.keep ? KeepSummaryText(totals_) : SummaryText(totals_);
    if (const std::string schema = SchemaSummaryText(totals_.valid, totals_.invalid); !schema.empty())
        summary += (summary.empty() ? "" : " ") + schema;
    WriteWhole(out_, icu::UnicodeString::fromUTF8(summary), 0);
}

bool Checker::CheckFile(const std::string& argument) {
    // A failure of a document is written where the document is read, any other failure of the file here.
    bool isWritten = false;
    try {
        const InputFile file = OpenDocument(argument, options_.rules.archives);
        if (IsArchive(file))
            return ForEachGpxEntry(file, options_.rules.archives,
                                   [&](Archive& archive) { CheckEntry(argument, archive); });
        isWritten = true;
        CheckDocument({{argument, nullptr},
                       [&](GpxDocument& document) { parser_.ReadFile(file, document); },
                       [&](SchemaReport& report) { validation_->ValidateFile(file, report); }});
        return true;
    } catch (const OutputError&) {
        throw;
    } catch (const std::exception& failure) {
        if (!isWritten)
            WriteFailure({argument, nullptr}, failure.what(), {LossReport(options_.all)});
        // The summary says what is wrong with all files.
        if (options_.summary)
            return false;
        throw;
    }
}

void Checker::CheckEntry(const std::string& argument, Archive& archive) {
    const std::string entry = archive.Name();
    EntryBytes content;
    CheckDocument(
        {{argument, &entry},
         [&](GpxDocument& document) {
             content = ReadEntryBytes(archive, argument);
             parser_.ReadBytes(content.bytes, content.name, document);
         },
         [&](SchemaReport& report) { validation_->ValidateBytes(content.bytes, content.name, report); }});
}

void Checker::CheckDocument(const Document& checked) {
    LossReport losses(options_.all);
    SchemaReport schema(options_.all);
    GpxDocument document;
    parser_.Watch(&losses);
    try {
        checked.read(document);
    } catch (const std::exception& failure) {
        const bool isValidated = IsFailureOfContent(failure.what()) && Validate(checked, schema);
        WriteFailure(checked.source, failure.what(), {losses, nullptr, isValidated ? &schema : nullptr});
        if (options_.summary)
            return;
        throw;
    }
    const SchemaReport* const validated = Validate(checked, schema) ? &schema : nullptr;
    if (!options_.keep)
        return WriteReport(checked.source, document, {losses, nullptr, validated});
    const std::vector<WritingCheck> writing = CheckWriting(document, parser_, checked.source.Text());
    WriteReport(checked.source, document, {losses, &writing, validated});
}

/// False when the documents are not to be checked by their schema.
bool Checker::Validate(const Document& document, SchemaReport& report) {
    if (!validation_)
        return false;
    document.validate(report);
    ++(report.IsValid() ? totals_.valid : totals_.invalid);
    return true;
}

void Checker::WriteReport(const DocumentSource& source, const GpxDocument& document,
                          const Findings& findings) {
    ++totals_.documents;
    totals_.skipped += findings.losses.SkippedElements().Count();
    totals_.lost +=
        findings.losses.LostCount() + (findings.writing != nullptr ? LostCount(*findings.writing) : 0);
    if (options_.summary)
        return causes_.AddDocument(source.Text(), findings);
    const DocumentCounts counts = CountDocument(document);
    if (options_.json)
        WriteLossReportJson(source, counts, findings, out_);
    else
        WriteText(source, &counts, findings);
    out_.Flush();
}

void Checker::WriteFailure(const DocumentSource& source, const std::string& error, const Findings& findings) {
    ++totals_.failures;
    if (options_.summary)
        return causes_.AddFailure(source.Text(), error, findings);
    if (options_.json)
        WriteFailureJson(source, error, findings, out_);
    else if (findings.losses.Messages().Count() > 0 || findings.schema != nullptr)
        WriteText(source, nullptr, findings);
    out_.Flush();
}

void Checker::WriteText(const DocumentSource& source, const DocumentCounts* counts,
                        const Findings& findings) {
    if (!isFirst_)
        out_.Write("\n");
    isFirst_ = false;
    WriteLossReportText(source.Text(), counts, findings, out_);
}

} // namespace

bool Check(const CheckOptions& options, Output& out) {
    return Checker(options, out).Run();
}

} // namespace vexagpx
