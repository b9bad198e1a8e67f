// SPDX-License-Identifier: MIT
#include <vexagpx/editing/EditRun.h>

#include <vexagpx/editing/EditInput.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/UnwrittenReport.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <common/dbc.h>
#include <vexaTransferLib/GpxSaver.h>

#include <optional>
#include <stdexcept>
#include <string>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

class EditRun {
public:
    EditRun(const EditOptions& options, Output& standardOutput)
        : options_(options), standardOutput_(standardOutput) {}

    bool Run(const Edit& edit);
    bool RunBytes(const ByteEdit& edit);

private:
    InputFile Open() const;
    std::optional<std::string> PathToWrite() const;
    void Save(const GpxDocument& document, const std::string& path);
    void Report(const std::optional<std::string>& written);
    void ReportJson(const std::optional<std::string>& written, Output& out) const;
    void ReportText(const std::optional<std::string>& written, Output& out) const;

    const EditOptions& options_;
    Output& standardOutput_;
    ChangeList changes_;
    UnwrittenReport unwritten_;
};

InputFile EditRun::Open() const {
    if (options_.in != kStandardInput && !options_.out.empty() && options_.out != kStandardOutput &&
        IsSameFile(options_.in, options_.out))
        throw std::runtime_error("The result would replace what it is made of; write another file, or use "
                                 "--in-place. (" +
                                 ShownName(options_.in) + ")");
    InputFile file = OpenForEditing(options_.in, options_.rules);
    // What was unpacked or came from a pipe is a copy.
    if (options_.inPlace && file.FilePath() != options_.in)
        throw std::runtime_error("Only a GPX file can be changed in place, not a pipe or a gzip file. (" +
                                 ShownName(options_.in) + ")");
    return file;
}

/// Nothing when nothing is to be written: a document that an edit does not change stays in its place as it is.
std::optional<std::string> EditRun::PathToWrite() const {
    if (options_.dryRun || (options_.inPlace && changes_.Count() == 0))
        return std::nullopt;
    return options_.inPlace ? options_.in : options_.out;
}

void EditRun::Save(const GpxDocument& document, const std::string& path) {
    GpxSaveOptions options;
    options.unwritten = [this](const GpxUnwritten& what) { unwritten_.Add(what); };
    Destination destination(path);
    try {
        GpxSaver(options).Save(document,
                               [&](std::string_view piece) { destination.Write(piece, standardOutput_); });
    } catch (const dbc::precondition_error& refusal) {
        throw std::runtime_error(std::string(refusal.what()) + " " + path + " was not written. (" +
                                 ShownName(options_.in) + ")");
    }
    destination.Commit(standardOutput_);
}

void EditRun::ReportJson(const std::optional<std::string>& written, Output& out) const {
    JsonWriter json(out);
    json.BeginObject();
    json.Member("file", options_.in);
    if (written)
        json.Member("written", *written);
    changes_.WriteJson(json);
    json.EndObject();
    out.Write("\n");
}

void EditRun::ReportText(const std::optional<std::string>& written, Output& out) const {
    WriteHeading(out, ShownName(options_.in));
    changes_.WriteText(out);
    std::string end = changes_.Count() == 0 ? "Nothing is to change." : "Nothing was written.";
    if (written) {
        const std::string name = *written == kStandardOutput ? "Standard output" : *written;
        end = name + (changes_.Count() == 0 ? " was written without a change." : " was written.");
    }
    WriteWhole(out, Printable(icu::UnicodeString::fromUTF8(end)), 0);
}

void EditRun::Report(const std::optional<std::string>& written) {
    std::string text;
    Output toError([&text](std::string_view piece) { text += piece; });
    const bool isTaken = written == kStandardOutput;
    Output& out = isTaken ? toError : standardOutput_;
    if (options_.json)
        ReportJson(written, out);
    else
        ReportText(written, out);
    out.Flush();
    if (isTaken)
        PrintLines(text);
    for (const std::string& line : UnwrittenLines(unwritten_))
        PrintError("Note: left out, because the version has no place for it: " + line);
}

bool EditRun::Run(const Edit& edit) {
    const InputFile file = Open();
    GpxDocument document;
    FileParser(options_.rules).ReadFile(file, document);
    edit(document, changes_);
    const std::optional<std::string> path = PathToWrite();
    if (path)
        Save(document, *path);
    Report(path);
    return true;
}

bool EditRun::RunBytes(const ByteEdit& edit) {
    const InputFile file = Open();
    const std::string bytes = edit(file, changes_);
    const std::optional<std::string> path = PathToWrite();
    if (path)
        Destination(*path).Commit(bytes, standardOutput_);
    Report(path);
    return true;
}

} // namespace

bool RunEdit(const EditOptions& options, const Edit& edit, Output& standardOutput) {
    return RunReportingErrors(options.in, [&] { return EditRun(options, standardOutput).Run(edit); });
}

bool RunByteEdit(const EditOptions& options, const ByteEdit& edit, Output& standardOutput) {
    return RunReportingErrors(options.in, [&] { return EditRun(options, standardOutput).RunBytes(edit); });
}

} // namespace vexagpx
