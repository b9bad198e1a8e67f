// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Zip.h>

#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/output/ExtractionPaths.h>
#include <vexagpx/process/Messages.h>

#include <stdexcept>

namespace vexagpx {

namespace {

std::string Counted(std::size_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

/// The number of files written: none for a folder, which is made.
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

} // namespace

bool ZipList(const std::string& archive, const ArchiveLimits& limits, Output& out) {
    return RunReportingErrors(archive, [&] {
        const InputFile file(archive, limits.streamSize);
        Archive opened(file, limits);
        while (opened.Next())
            out.Write(opened.Name() + "\n");
        return true;
    });
}

bool ZipCat(const std::string& archive, const std::string& entry, const ArchiveLimits& limits, Output& out) {
    return RunReportingErrors(archive, [&] {
        const InputFile file(archive, limits.streamSize);
        Archive opened(file, limits);
        while (opened.Next()) {
            if (opened.Name() == entry) {
                opened.Read([&out](std::string_view piece) { out.Write(piece); });
                return true;
            }
        }
        throw std::runtime_error("There is no such entry in the archive. (" + archive + ", " + entry + ")");
    });
}

bool ZipTest(const std::string& archive, const ArchiveLimits& limits, Output& out) {
    return RunReportingErrors(archive, [&] {
        const InputFile file(archive, limits.streamSize);
        Archive opened(file, limits);
        std::size_t bad = 0;
        while (opened.Next()) {
            const bool good = RunReportingErrors(archive, [&opened] {
                opened.Read([](std::string_view) {});
                return true;
            });
            bad += good ? 0 : 1;
        }
        out.Write(Counted(opened.EntryCount(), "entry", "entries") + " tested, " + std::to_string(bad) +
                  " bad.\n");
        return bad == 0;
    });
}

bool ZipExtract(const std::string& archive, const std::string& folder, bool overwrite,
                const ArchiveLimits& limits, Output& out) {
    return RunReportingErrors(archive, [&] {
        const InputFile file(archive, limits.streamSize);
        Archive opened(file, limits);
        ExtractionPaths paths(folder);
        std::size_t written = 0;
        bool fine = true;
        while (opened.Next()) {
            const bool extracted = RunReportingErrors(archive, [&] {
                written += ExtractEntry(opened, paths, overwrite);
                return true;
            });
            fine = fine && extracted;
        }
        out.Write(Counted(written, "file", "files") + " extracted.\n");
        return fine;
    });
}

} // namespace vexagpx
