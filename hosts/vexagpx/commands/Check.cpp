// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Check.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/LossReportJson.h>
#include <vexagpx/report/LossReportText.h>

#include <exception>
#include <functional>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

namespace {

class Checker {
public:
    Checker(const InputRules& rules, CheckForm form, Output& out)
        : rules_(rules), form_(form), out_(out), parser_(rules.isTrusted) {}

    bool Run(const std::vector<std::string>& files);

private:
    using Read = std::function<void(GpxDocument&)>;

    bool CheckFile(const std::string& argument);
    void CheckDocument(const DocumentSource& source, const Read& read);
    void WriteReport(const DocumentSource& source, const GpxDocument& document, const LossReport& report);
    void WriteFailure(const DocumentSource& source, const std::string& error, const LossReport& report);
    void WriteText(const DocumentSource& source, const DocumentCounts* counts, const LossReport& report);

    InputRules rules_;
    CheckForm form_;
    Output& out_;
    FileParser parser_;
    CheckTotals totals_;
    bool isFirst_ = true;
};

bool Checker::Run(const std::vector<std::string>& files) {
    bool fine = true;
    for (const std::string& file : files)
        fine = RunReportingErrors(file, [&] { return CheckFile(file); }) && fine;
    if (!form_.json)
        out_.Write((isFirst_ ? "" : "\n") + SummaryText(totals_) + "\n");
    out_.Flush();
    return fine && totals_.lost == 0;
}

bool Checker::CheckFile(const std::string& argument) {
    // What goes wrong with the file as a whole; with a document that is told by the time it arrives here.
    bool isTold = false;
    try {
        const InputFile file = OpenDocument(argument, rules_.archives);
        if (IsArchive(file))
            return ForEachGpxEntry(file, rules_.archives, [&](Archive& archive) {
                const std::string entry = archive.Name();
                CheckDocument({argument, &entry}, [&](GpxDocument& document) {
                    ReadEntry(parser_, archive, argument, document);
                });
            });
        isTold = true;
        CheckDocument({argument, nullptr}, [&](GpxDocument& document) { parser_.ReadFile(file, document); });
        return true;
    } catch (const OutputError&) {
        throw;
    } catch (const std::exception& failure) {
        if (!isTold)
            WriteFailure({argument, nullptr}, failure.what(), LossReport(form_.all));
        throw;
    }
}

void Checker::CheckDocument(const DocumentSource& source, const Read& read) {
    LossReport report(form_.all);
    GpxDocument document;
    parser_.Watch(&report);
    try {
        read(document);
    } catch (const std::exception& failure) {
        WriteFailure(source, failure.what(), report);
        throw;
    }
    WriteReport(source, document, report);
}

void Checker::WriteReport(const DocumentSource& source, const GpxDocument& document,
                          const LossReport& report) {
    ++totals_.documents;
    totals_.skipped += report.SkippedElements().Count();
    totals_.lost += report.LostCount();
    const DocumentCounts counts = CountDocument(document);
    if (form_.json)
        WriteLossReportJson(source, counts, report, out_);
    else
        WriteText(source, &counts, report);
    out_.Flush();
}

void Checker::WriteFailure(const DocumentSource& source, const std::string& error, const LossReport& report) {
    ++totals_.failures;
    if (form_.json)
        WriteFailureJson(source, error, report, out_);
    else if (report.Messages().Count() > 0)
        WriteText(source, nullptr, report);
    out_.Flush();
}

void Checker::WriteText(const DocumentSource& source, const DocumentCounts* counts,
                        const LossReport& report) {
    if (!isFirst_)
        out_.Write("\n");
    isFirst_ = false;
    WriteLossReportText(source.Text(), counts, report, out_);
}

} // namespace

bool Check(const std::vector<std::string>& files, const InputRules& rules, CheckForm form, Output& out) {
    return Checker(rules, form, out).Run(files);
}

} // namespace vexagpx
