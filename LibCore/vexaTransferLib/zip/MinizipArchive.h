// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/zip/Archive.h>

namespace vexaTransferLib::zip {

/// An archive that minizip reads.
class MinizipArchive final : public Archive {
public:
    ~MinizipArchive() override;

    /// To be called first. False when minizip cannot open the file.
    bool OpenFile(const char* path);
    /// To be called next. False when minizip has no numbers of the archive.
    bool ReadCount();

    unsigned long Count() const override { return count_; }
    bool GoToFirst() override;
    bool GoToNext() override;
    bool GetInfo(ZipEntryInfo& info, char* name, std::size_t nameSize) override;
    bool IsReadable(const ZipEntryInfo& info) const override;
    bool Open() override;
    std::optional<ZipEntryRange> Range(const ZipEntryInfo& info) override;
    int Read(char* buffer, unsigned int size) override;
    int Close() override;

private:
    void* handle_ = nullptr; ///< of minizip
    unsigned long count_ = 0;
};

} // namespace vexaTransferLib::zip
