// SPDX-License-Identifier: MIT
#include <vexagpx/input/DocumentReading.h>

#include <vexagpx/input/EntryContent.h>
#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <vexaTransferLib/GpxReadObserver.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <utility>

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
        throw std::runtime_error("The archive holds no GPX file. (" + file.Argument() +
                                 ") vexagpx zip list tells what it has.");
    return succeeded;
}

EntryBytes ReadEntryBytes(Archive& archive, const std::string& argument) {
    // The size in the archive may be false.
    constexpr std::uint64_t kMostInAdvance = std::uint64_t{1} << 26;
    EntryContent content(archive, argument);
    const FatalSignalMessage message(CancelledMessage(content.Name()));
    std::string bytes;
    ProgressBar bar(content.Name());
    content.Open();
    bytes.reserve(static_cast<std::size_t>(std::min(content.StatedSize(), kMostInAdvance)));
    std::array<char, 1 << 16> buffer;
    while (const std::size_t count = content.Read(buffer.data(), buffer.size())) {
        bytes.append(buffer.data(), count);
        bar.Update({bytes.size(), content.StatedSize()});
    }
    return {content.Name(), std::move(bytes)};
}

void ReadEntry(FileParser& parser, Archive& archive, const std::string& argument, GpxDocument& document) {
    const EntryBytes entry = ReadEntryBytes(archive, argument);
    parser.ReadBytes(entry.bytes, entry.name, document);
}

namespace {

/// Notices that the reader has named a document itself.
class NameWatch : public vexaTransferLib::GpxReadObserver {
public:
    void Skipped(const vexaTransferLib::GpxSkippedElement& what) override {
        isInvented_ = isInvented_ || what.reason == vexaTransferLib::kGpxInvented;
    }

    void Reset() { isInvented_ = false; }
    bool IsInvented() const { return isInvented_; }

private:
    bool isInvented_ = false;
};

/// Reads the documents of one argument after another.
class DocumentReader {
public:
    DocumentReader(const InputRules& rules, const TakeDocument& take, Watched watched)
        : parser_(rules), limits_(rules.archives), take_(take) {
        // Only a document that is read as hosts do is named by the reader.
        if (watched == Watched::kInventedNames && rules.asHost)
            parser_.Watch(&names_);
    }

    bool Read(const std::string& argument);

private:
    bool ReadArchive(const InputFile& file);

    FileParser parser_;
    const ArchiveLimits& limits_;
    const TakeDocument& take_;
    NameWatch names_;
};

bool DocumentReader::ReadArchive(const InputFile& file) {
    return ForEachGpxEntry(file, limits_, [&](Archive& archive) {
        GpxDocument document;
        names_.Reset();
        ReadEntry(parser_, archive, file.Argument(), document);
        const std::string entry = archive.Name();
        take_({file.Argument(), &entry, names_.IsInvented()}, document);
    });
}

bool DocumentReader::Read(const std::string& argument) {
    const InputFile file = OpenDocument(argument, limits_);
    if (IsArchive(file))
        return ReadArchive(file);
    GpxDocument document;
    names_.Reset();
    parser_.ReadFile(file, document);
    take_({argument, nullptr, names_.IsInvented()}, document);
    return true;
}

} // namespace

bool ReadDocuments(const std::vector<std::string>& arguments, const InputRules& rules,
                   const TakeDocument& take, Watched watched) {
    DocumentReader reader(rules, take, watched);
    return ForEachFile(arguments, [&](const std::string& file) { return reader.Read(file); });
}

} // namespace vexagpx
