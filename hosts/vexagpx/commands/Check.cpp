// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Check.h>

#include <vexagpx/input/Documents.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/Contents.h>
#include <vexagpx/report/Receipt.h>
#include <vexagpx/report/ReceiptJson.h>
#include <vexagpx/report/ReceiptText.h>

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
    void CheckDocument(const Origin& origin, const Read& read);
    void WriteReceipt(const Origin& origin, const GpxDocument& document, const Receipt& receipt);
    void WriteFailure(const Origin& origin, const std::string& error, const Receipt& receipt);
    void WriteText(const Origin& origin, const Contents* contents, const Receipt& receipt);

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
        fine = Told(file, [&] { return CheckFile(file); }) && fine;
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
            WriteFailure({argument, nullptr}, failure.what(), Receipt(form_.all));
        throw;
    }
}

void Checker::CheckDocument(const Origin& origin, const Read& read) {
    Receipt receipt(form_.all);
    GpxDocument document;
    parser_.Watch(&receipt);
    try {
        read(document);
    } catch (const std::exception& failure) {
        WriteFailure(origin, failure.what(), receipt);
        throw;
    }
    WriteReceipt(origin, document, receipt);
}

void Checker::WriteReceipt(const Origin& origin, const GpxDocument& document, const Receipt& receipt) {
    ++totals_.documents;
    totals_.passed += receipt.Passed().Count();
    totals_.lost += receipt.LostCount();
    const Contents contents = CountContents(document);
    if (form_.json)
        WriteReceiptJson(origin, contents, receipt, out_);
    else
        WriteText(origin, &contents, receipt);
    out_.Flush();
}

void Checker::WriteFailure(const Origin& origin, const std::string& error, const Receipt& receipt) {
    ++totals_.failures;
    if (form_.json)
        WriteFailureJson(origin, error, receipt, out_);
    else if (receipt.Complaints().Count() > 0)
        WriteText(origin, nullptr, receipt);
    out_.Flush();
}

void Checker::WriteText(const Origin& origin, const Contents* contents, const Receipt& receipt) {
    if (!isFirst_)
        out_.Write("\n");
    isFirst_ = false;
    WriteReceiptText(origin.Text(), contents, receipt, out_);
}

} // namespace

bool Check(const std::vector<std::string>& files, const InputRules& rules, CheckForm form, Output& out) {
    return Checker(rules, form, out).Run(files);
}

} // namespace vexagpx
