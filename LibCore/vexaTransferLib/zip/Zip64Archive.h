// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/zip/Archive.h>
#include <vexaTransferLib/zip/EntryStream.h>
#include <vexaTransferLib/zip/Zip64Directory.h>

#include <memory>
#include <string>

namespace vexaTransferLib::zip {

/// An archive with values in zip64 form, which some versions of minizip do not find. Its memory does not depend on the
/// size of the archive.
class Zip64Archive final : public Archive {
public:
    /// Null for any other archive, and for what is none.
    static std::unique_ptr<Zip64Archive> Open(const std::string& path);

    Zip64Archive(ArchiveBytes bytes, const Directory& directory);

    unsigned long Count() const override { return static_cast<unsigned long>(directory_.count); }
    bool GoToFirst() override;
    bool GoToNext() override;
    bool GetInfo(ZipEntryInfo& info, char* name, std::size_t nameSize) override;
    bool IsReadable(const ZipEntryInfo& info) const override;
    bool Open() override;
    std::optional<ZipEntryRange> Range(const ZipEntryInfo& info) override;
    int Read(char* buffer, unsigned int size) override;
    int Close() override;

private:
    bool GoTo(std::uint64_t at, std::uint64_t index);
    std::optional<std::uint64_t> FindData();

    ArchiveBytes bytes_;
    Directory directory_;
    std::optional<DirectoryRecord> current_;
    std::uint64_t index_ = 0; ///< of the current entry
    std::unique_ptr<EntryStream> open_;
};

} // namespace vexaTransferLib::zip
