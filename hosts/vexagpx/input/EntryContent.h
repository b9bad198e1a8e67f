// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/input/UnpackedBytes.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vexagpx {

/// The document that the current entry of an archive has, unpacked when the entry is a gzip file.
class EntryContent {
public:
    /// \param argument the archive, as on the command line
    EntryContent(Archive& archive, const std::string& argument);
    EntryContent(const EntryContent&) = delete;
    EntryContent& operator=(const EntryContent&) = delete;

    /// "pocket-query.zip/9000001.gpx", as messages name the entry.
    const std::string& Name() const { return name_; }

    /// Opens the entry and refuses what is known not to be GPX.
    /// \throws std::runtime_error
    void Open();

    /// The next bytes; 0 at the end, after all checks.
    /// \throws std::runtime_error
    std::size_t Read(char* buffer, std::size_t size);

    /// How many bytes there are to be, as the archive states; 0 when it is not known. After Open.
    std::uint64_t StatedSize() const;

private:
    Archive& archive_;
    std::string name_;
    PeekedBytes stored_;
    std::optional<UnpackedBytes> content_; ///< once it is open
};

} // namespace vexagpx
