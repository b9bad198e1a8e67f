// SPDX-License-Identifier: MIT
#include <vexagpx/input/DocumentReading.h>

#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Signals.h>

#include <stdexcept>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

InputFile OpenDocument(const std::string& argument, const ArchiveLimits& limits) {
    const FatalSignalMessage message(CancelledMessage(argument));
    return InputFile(argument, limits.streamSize);
}

bool ForEachGpxEntry(const InputFile& file, const ArchiveLimits& limits, const TakeEntry& take) {
    Archive archive(file, limits);
    bool succeeded = true;
    std::size_t count = 0;
    while (archive.Next()) {
        if (archive.IsNameCut()) {
            PrintError("Note: an entry is skipped because its name cannot be read whole. (" +
                       file.Argument() + ")");
            continue;
        }
        if (!archive.IsGpx())
            continue;
        ++count;
        const bool taken = RunReportingErrors(file.Argument(), [&] {
            take(archive);
            return true;
        });
        succeeded = succeeded && taken;
    }
    if (count == 0)
        throw std::runtime_error("The archive holds no GPX file. (" + file.Argument() + ")");
    return succeeded;
}

void ReadEntry(FileParser& parser, Archive& archive, const std::string& argument, GpxDocument& document) {
    const std::string name = argument + "/" + archive.Name();
    const FatalSignalMessage message(CancelledMessage(name));
    const std::string bytes = archive.ReadAll(name);
    parser.ReadBytes(bytes, name, document);
}

namespace {

bool ReadArchive(FileParser& parser, const InputFile& file, const ArchiveLimits& limits,
                 const TakeDocument& take) {
    return ForEachGpxEntry(file, limits, [&](Archive& archive) {
        GpxDocument document;
        ReadEntry(parser, archive, file.Argument(), document);
        const std::string entry = archive.Name();
        take({file.Argument(), &entry}, document);
    });
}

bool ReadArgument(FileParser& parser, const std::string& argument, const ArchiveLimits& limits,
                  const TakeDocument& take) {
    const InputFile file = OpenDocument(argument, limits);
    if (IsArchive(file))
        return ReadArchive(parser, file, limits, take);
    GpxDocument document;
    parser.ReadFile(file, document);
    take({argument, nullptr}, document);
    return true;
}

} // namespace

bool ReadDocuments(const std::vector<std::string>& arguments, const InputRules& rules,
                   const TakeDocument& take) {
    FileParser parser(rules);
    return ForEachFile(
        arguments, [&](const std::string& file) { return ReadArgument(parser, file, rules.archives, take); });
}

} // namespace vexagpx
