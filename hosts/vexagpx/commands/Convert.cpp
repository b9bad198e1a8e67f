// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Convert.h>

#include <vexagpx/commands/Conversion.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/output/ExtractionPaths.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/ShellText.h>

#include <cstddef>
#include <memory>
#include <stdexcept>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

std::size_t CountGpxEntries(const InputFile& file, const ArchiveLimits& limits) {
    Archive archive(file, limits);
    std::size_t count = 0;
    while (archive.Next())
        count += archive.IsGpx() ? 1 : 0;
    return count;
}

class Converter {
public:
    Converter(const ConvertOptions& options, Output& standardOutput)
        : options_(options), standardOutput_(standardOutput), parser_(options.rules),
          conversion_(options.rules.asHost ? MakeHostConversion(options) : MakeCompleteConversion(options)) {
        parser_.Watch(conversion_.get());
    }

    bool Run() {
        RefuseFolder(options_.in);
        const InputFile file = OpenDocument(options_.in, options_.rules.archives);
        isStream_ = file.IsCopy();
        return IsArchive(file) ? ConvertArchive(file) : ConvertFile(file);
    }

    void PrintNotes(bool succeeded) const { conversion_->PrintNotes(succeeded, isStream_); }

private:
    bool ConvertFile(const InputFile& file);
    bool ConvertArchive(const InputFile& file);

    const ConvertOptions& options_;
    Output& standardOutput_;
    FileParser parser_;
    std::unique_ptr<Conversion> conversion_;
    bool isStream_ = false;
};

bool Converter::ConvertFile(const InputFile& file) {
    const bool isUnpacked = !isStream_ && file.FilePath() != options_.in;
    if (isUnpacked && IsSameFile(options_.out, options_.in))
        throw std::runtime_error("The result would replace the gzip file, and is not packed itself. (" +
                                 options_.in + ")");
    GpxDocument document;
    conversion_->StartDocument();
    parser_.ReadFile(file, document);
    Destination destination(options_.out);
    conversion_->Write(document, ShownName(options_.in), {}, destination, standardOutput_);
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
        conversion_->StartDocument();
        ReadEntry(parser_, archive, options_.in, document);
        const std::string entry = archive.Name();
        Destination destination =
            intoFolder ? Destination(paths.DocumentFileFor(archive)) : Destination(options_.out);
        conversion_->Write(document, ShownName(options_.in) + "/" + entry, entry, destination,
                           standardOutput_);
    });
}

} // namespace

std::string ListedBy(const std::string& command, const ConvertOptions& options, bool isOne, bool isStream) {
    return '"' + command + ' ' + ShellText(options.in) + '"' + (isStream ? " with the same input" : "") +
           (isOne ? " lists it." : " lists them.");
}

bool Convert(const ConvertOptions& options, Output& standardOutput) {
    Converter converter(options, standardOutput);
    const bool succeeded = RunReportingErrors(options.in, [&] { return converter.Run(); });
    converter.PrintNotes(succeeded);
    return succeeded;
}

} // namespace vexagpx
