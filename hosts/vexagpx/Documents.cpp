// SPDX-License-Identifier: MIT
#include <vexagpx/Documents.h>

#include <vexagpx/Messages.h>

#include <stdexcept>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

bool ForEachGpxEntry(const InputFile& file, const ArchiveLimits& limits, const TakeEntry& take) {
    Archive archive(file, limits);
    bool fine = true;
    std::size_t count = 0;
    while (archive.Next()) {
        if (archive.IsNameCut()) {
            Complain("Note: an entry is passed over, for its name cannot be read whole. (" + file.Argument() +
                     ")");
            continue;
        }
        if (!archive.IsGpx())
            continue;
        ++count;
        const bool taken = Told(file.Argument(), [&] { return take(archive); });
        fine = fine && taken;
    }
    if (count == 0)
        throw std::runtime_error("The archive holds no GPX file. (" + file.Argument() + ")");
    return fine;
}

bool ReadEntry(FileParser& parser, Archive& archive, const std::string& argument, GpxDocument& document) {
    const std::string bytes = archive.ReadAll();
    return parser.ReadBytes(bytes, argument + "/" + archive.Name(), document);
}

namespace {

bool ReadArchive(FileParser& parser, const InputFile& file, const ArchiveLimits& limits,
                 const TakeDocument& take) {
    return ForEachGpxEntry(file, limits, [&](Archive& archive) {
        GpxDocument document;
        if (!ReadEntry(parser, archive, file.Argument(), document))
            return false;
        const std::string entry = archive.Name();
        take({file.Argument(), &entry}, document);
        return true;
    });
}

bool ReadArgument(FileParser& parser, const std::string& argument, const ArchiveLimits& limits,
                  const TakeDocument& take) {
    const InputFile file(argument);
    if (IsArchive(file))
        return ReadArchive(parser, file, limits, take);
    GpxDocument document;
    if (!parser.ReadFile(file, document))
        return false;
    take({argument, nullptr}, document);
    return true;
}

} // namespace

bool ReadDocuments(const std::vector<std::string>& arguments, const ArchiveLimits& limits,
                   const TakeDocument& take) {
    bool fine = true;
    FileParser parser;
    for (const std::string& argument : arguments)
        fine = Told(argument, [&] { return ReadArgument(parser, argument, limits, take); }) && fine;
    return fine;
}

} // namespace vexagpx
