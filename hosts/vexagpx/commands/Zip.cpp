// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Zip.h>

#include <vexagpx/commands/ZipEntryJson.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/output/ExtractionPaths.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

#include <stdexcept>

namespace vexagpx {

namespace {

/// \return the number of files written: 0 for a folder, which is created
std::size_t ExtractEntry(Archive& archive, ExtractionPaths& paths, bool overwrite) {
    FileInFolder target = paths.FileFor(archive);
    if (archive.IsFolder())
        return 0;
    if (!overwrite && StatusOf(target))
        throw std::runtime_error("There is a file already: " + target.path + " (--overwrite replaces it)");
    AtomicFile file(std::move(target),
                    overwrite ? AtomicFile::Existing::kReplaced : AtomicFile::Existing::kKept);
    archive.Read([&file](std::string_view piece) { file.Write(piece); });
    file.Commit();
    return 1;
}

template <class Work>
bool WithArchive(const ZipOptions& options, Work work) {
    return RunReportingErrors(options.archive, [&] {
        RefuseFolder(options.archive);
        const InputFile file(options.archive, options.limits, InputUse::kArchive);
        Archive archive(file, options.limits);
        return work(archive);
    });
}

/// False when `work` on one entry failed, which has been reported.
template <class Work>
bool TryEntry(const ZipOptions& options, Work work) {
    return RunReportingErrors(options.archive, [&] {
        work();
        return true;
    });
}

} // namespace

bool ZipList(const ZipListOptions& options, Output& out) {
    return WithArchive(options, [&](Archive& archive) {
        while (archive.Next()) {
            if (options.json)
                WriteEntryJson(archive, options.archive, out);
            else
                out.Write(archive.Name() + "\n");
        }
        return true;
    });
}

bool ZipCat(const ZipCatOptions& options, Output& out) {
    return WithArchive(options, [&](Archive& archive) {
        while (archive.Next()) {
            if (archive.Name() == options.entry) {
                archive.Read([&out](std::string_view piece) { out.Write(piece); });
                return true;
            }
        }
        throw std::runtime_error("There is no such entry in the archive. (" + options.archive + ", " +
                                 options.entry + ")");
    });
}

bool ZipTest(const ZipOptions& options, Output& out) {
    return WithArchive(options, [&](Archive& archive) {
        std::size_t bad = 0;
        while (archive.Next())
            bad += TryEntry(options, [&] { archive.Read([](std::string_view) {}); }) ? 0 : 1;
        out.Write(Counted(archive.EntryCount(), "entry", "entries") + " tested, " + std::to_string(bad) +
                  " bad.\n");
        return bad == 0;
    });
}

bool ZipExtract(const ZipExtractOptions& options, Output& out) {
    return WithArchive(options, [&](Archive& archive) {
        ExtractionPaths paths(options.folder);
        std::size_t written = 0;
        bool succeeded = true;
        while (archive.Next())
            if (!TryEntry(options, [&] { written += ExtractEntry(archive, paths, options.overwrite); }))
                succeeded = false;
        out.Write(Counted(written, "file") + " extracted.\n");
        return succeeded;
    });
}

} // namespace vexagpx
