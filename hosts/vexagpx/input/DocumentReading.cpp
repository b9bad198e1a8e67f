// SPDX-License-Identifier: MIT
#include <vexagpx/input/DocumentReading.h>

#include <vexagpx/input/EntryContent.h>
#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

InputFile OpenDocument(const std::string& argument, const ArchiveLimits& limits) {
    const FatalSignalMessage message(CancelledMessage(argument));
    return InputFile(argument, limits);
}

bool ForEachGpxEntry(const InputFile& file, const ArchiveLimits& limits, const TakeEntry& take) {
    Archive archive(file, limits);
    bool succeeded = true;
    std::size_t count = 0;
    bool hasKml = false;
    while (archive.Next()) {
        hasKml = hasKml || IsKmlName(archive.StoredName());
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
    if (count == 0 && hasKml)
        throw std::runtime_error(ShownName(file.Argument()) +
                                 " is a KMZ file, not GPX; GPSBabel can turn the KML in it into GPX.");
    if (count == 0)
        throw std::runtime_error("The archive holds no GPX file. (" + file.Argument() + ")");
    return succeeded;
}

void ReadEntry(FileParser& parser, Archive& archive, const std::string& argument, GpxDocument& document) {
    // The size in the archive may be false.
    constexpr std::uint64_t kMostInAdvance = std::uint64_t{1} << 26;
    EntryContent content(archive, argument);
    const FatalSignalMessage message(CancelledMessage(content.Name()));
    std::string bytes;
    {
        ProgressBar bar(content.Name());
        content.Open();
        bytes.reserve(static_cast<std::size_t>(std::min(content.StatedSize(), kMostInAdvance)));
        std::array<char, 1 << 16> buffer;
        while (const std::size_t count = content.Read(buffer.data(), buffer.size())) {
            bytes.append(buffer.data(), count);
            bar.Update({bytes.size(), content.StatedSize()});
        }
    }
    parser.ReadBytes(bytes, content.Name(), document);
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
