// SPDX-License-Identifier: MIT
#include <vexagpx/Zip.h>

#include <vexagpx/EntryPlaces.h>
#include <vexagpx/Messages.h>
#include <vexagpx/Posix.h>
#include <vexagpx/Target.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>

namespace vexagpx {

namespace {

std::string Counted(std::size_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

void WriteEntry(Archive& archive, const std::string& path, Target::Existing existing, Output& out) {
    Target target(path, existing);
    try {
        Descriptor file = OpenFile(target.TemporaryPath(), O_WRONLY);
        archive.Read([&](std::string_view piece) {
            if (!WriteAll(file.Get(), piece))
                throw std::system_error(errno, std::generic_category());
        });
        if (!file.Close())
            throw std::system_error(errno, std::generic_category());
    } catch (const std::system_error& error) {
        throw std::runtime_error("Unable to write the file: " + path + " (" +
                                 ErrorText(error.code().value()) + ")");
    }
    target.Commit(out);
}

/// The number of files written: none for a folder, which is made.
std::size_t ExtractEntry(Archive& archive, EntryPlaces& places, bool overwrite, Output& out) {
    const std::string path = places.PlaceOf(archive);
    if (archive.IsFolder())
        return 0;
    if (!overwrite && std::filesystem::exists(path))
        throw std::runtime_error("There is a file already: " + path + " (--overwrite replaces it)");
    WriteEntry(archive, path, overwrite ? Target::Existing::kReplaced : Target::Existing::kKept, out);
    return 1;
}

} // namespace

bool ZipList(const std::string& archive, const ArchiveLimits& limits, Output& out) {
    return Told(archive, [&] {
        const InputFile file(archive);
        Archive opened(file, limits);
        while (opened.Next())
            out.Write(opened.Name() + "\n");
        return true;
    });
}

bool ZipCat(const std::string& archive, const std::string& entry, const ArchiveLimits& limits, Output& out) {
    return Told(archive, [&] {
        const InputFile file(archive);
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
    return Told(archive, [&] {
        const InputFile file(archive);
        Archive opened(file, limits);
        std::size_t bad = 0;
        while (opened.Next()) {
            const bool good = Told(archive, [&opened] {
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
    return Told(archive, [&] {
        const InputFile file(archive);
        Archive opened(file, limits);
        EntryPlaces places(folder);
        std::size_t written = 0;
        bool fine = true;
        while (opened.Next()) {
            const bool extracted = Told(archive, [&] {
                written += ExtractEntry(opened, places, overwrite, out);
                return true;
            });
            fine = fine && extracted;
        }
        out.Write(Counted(written, "file", "files") + " extracted.\n");
        return fine;
    });
}

} // namespace vexagpx
