// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Check.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/CauseSummary.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/LossReportJson.h>
#include <vexagpx/report/LossReportText.h>
#include <vexagpx/report/WritingCheck.h>
#include <vexagpx/terminal/Lines.h>

#include <exception>
#include <functional>
#include <vector>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

namespace {

class Checker {
public:
    Checker(const CheckOptions& options, Output& out)
        : options_(options), out_(out), parser_(options.rules) {}

    bool Run();

private:
    using Read = std::function<void(GpxDocument&)>;

    void WriteSummary();
    void WriteCauses();
    bool CheckFile(const std::string& argument);
    void CheckDocument(const DocumentSource& source, const Read& read);
    void WriteReport(const DocumentSource& source, const GpxDocument& document, const LossReport& report,
                     const std::vector<WritingCheck>* writing);
    void WriteFailure(const DocumentSource& source, const std::string& error, const LossReport& report);
    void WriteText(const DocumentSource& source, const DocumentCounts* counts, const LossReport& report,
                   const std::vector<WritingCheck>* writing);

    const CheckOptions& options_;
    Output& out_;
    FileParser parser_;
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
    return succeeded && totals_.lost == 0 && totals_.failures == 0;
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
    const std::string summary = options_.keep ? KeepSummaryText(totals_) : SummaryText(totals_);
    WriteWhole(out_, icu::UnicodeString::fromUTF8(summary), 0);
}

bool Checker::CheckFile(const std::string& argument) {
    // A failure of a document is written where the document is read, any other failure of the file here.
    bool isWritten = false;
    try {
        const InputFile file = OpenDocument(argument, options_.rules.archives);
        if (IsArchive(file))
            return ForEachGpxEntry(file, options_.rules.archives, [&](Archive& archive) {
                const std::string entry = archive.Name();
                CheckDocument({argument, &entry}, [&](GpxDocument& document) {
                    ReadEntry(parser_, archive, argument, document);
                });
            });
        isWritten = true;
        CheckDocument({argument, nullptr}, [&](GpxDocument& document) { parser_.ReadFile(file, document); });
        return true;
    } catch (const OutputError&) {
        throw;
    } catch (const std::exception& failure) {
        if (!isWritten)
            WriteFailure({argument, nullptr}, failure.what(), LossReport(options_.all));
        // The summary says what is wrong with all files.
        if (options_.summary)
            return false;
        throw;
    }
}

void Checker::CheckDocument(const DocumentSource& source, const Read& read) {
    LossReport report(options_.all);
    GpxDocument document;
    parser_.Watch(&report);
    try {
        read(document);
    } catch (const std::exception& failure) {
        WriteFailure(source, failure.what(), report);
        if (options_.summary)
            return;
        throw;
    }
    if (!options_.keep)
        return WriteReport(source, document, report, nullptr);
    const std::vector<WritingCheck> writing = CheckWriting(document, parser_, source.Text());
    WriteReport(source, document, report, &writing);
}

void Checker::WriteReport(const DocumentSource& source, const GpxDocument& document, const LossReport& report,
                          const std::vector<WritingCheck>* writing) {
    ++totals_.documents;
    totals_.skipped += report.SkippedElements().Count();
    totals_.lost += report.LostCount() + (writing != nullptr ? LostCount(*writing) : 0);
    if (options_.summary)
        return causes_.AddDocument(source.Text(), report);
    const DocumentCounts counts = CountDocument(document);
    if (options_.json)
        WriteLossReportJson(source, counts, report, writing, out_);
    else
        WriteText(source, &counts, report, writing);
    out_.Flush();
}

void Checker::WriteFailure(const DocumentSource& source, const std::string& error, const LossReport& report) {
    ++totals_.failures;
    if (options_.summary)
        return causes_.AddFailure(source.Text(), error);
    if (options_.json)
        WriteFailureJson(source, error, report, out_);
    else if (report.Messages().Count() > 0)
        WriteText(source, nullptr, report, nullptr);
    out_.Flush();
}

void Checker::WriteText(const DocumentSource& source, const DocumentCounts* counts, const LossReport& report,
                        const std::vector<WritingCheck>* writing) {
    if (!isFirst_)
        out_.Write("\n");
    isFirst_ = false;
    WriteLossReportText(source.Text(), counts, report, writing, out_);
}

} // namespace

bool Check(const CheckOptions& options, Output& out) {
    return Checker(options, out).Run();
}

} // namespace vexagpx
