// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reads the entries of a ZIP archive.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <string>

namespace vexaTransferLib {

/// What an archive's directory says of an entry. Nothing vouches for it: an archive may state any size. Where
/// minizip cannot read sizes in zip64 form, both are 4294967295.
struct VEXATRANSFERLIB_API ZipEntryInfo {
    std::uint64_t size = 0;           ///< bytes of the entry's content
    std::uint64_t compressedSize = 0; ///< bytes that it takes in the archive
    std::uint32_t nameLength = 0;     ///< bytes of the stored name, of which GetCurrentFileName gives 1023
    bool isSymbolicLink = false;      ///< the content is where the link leads
    bool isEncrypted = false;         ///< a password is needed, which no operation takes (bit 0 of `flags`)
    bool isNameUtf8 = false;          ///< the archive says so of the name and the comment (bit 11 of `flags`)
    std::uint16_t method = 0;         ///< of compression: 0 stored, 8 deflated; others cannot be read
    std::uint16_t flags = 0;          ///< the general purpose bits
    std::uint32_t crc = 0;            ///< CRC-32 of the content
};

/// Which bytes of the archive's file an entry claims: its local header and its packed bytes.
struct VEXATRANSFERLIB_API ZipEntryRange {
    std::uint64_t begin = 0; ///< where the local header starts
    std::uint64_t end = 0;   ///< after the last packed byte; may state a place after the end of the file
};

/// Walks the entries of a ZIP archive on disk and reads them, one at a time. Data descriptors, comments and
/// bytes before the archive are understood; stored and deflated entries can be read. zip64 archives are
/// walked; bytes before one of those only where its offsets count them. With minizip 1.1 (Debian 12) an entry
/// whose sizes stand in zip64 form cannot be opened, later versions read it.
///
///     ZipFileReader archive("pocket-query.zip");
///     for (bool found = archive.GoToFirstFile(); found; found = archive.GoToNextFile()) {
///         archive.OpenCurrentFile();
///         char buffer[65536];
///         int count;
///         while ((count = archive.ReadFromCurrentFile(buffer, sizeof buffer)) > 0)
///             use(buffer, count);
///         archive.CloseCurrentFile(); // compares the checksum of what was read whole
///     }
///
/// The current entry is the one that the last successful move reached; in a fresh reader it is the first.
/// Past an entry that cannot be read in the directory there is none. An archive without entries opens, and
/// has none. A comment in which an archive's own end mark stands hides the entries or makes the archive
/// unreadable.
///
/// Every failure is a `dbc::precondition_error`. Every operation but Close on a closed reader writes the
/// contract report and throws "Zip file not opened for reading."; failures of the archive itself write no
/// report.
///
/// Memory does not depend on the size of the archive or its entries. One thread at a time uses a reader;
/// readers on different threads are independent, also on the same archive.
///
/// **A warning.** A few kilobytes can hold gigabytes: a host that takes archives from strangers counts what
/// it reads, of each entry and of all together. Many entries can claim the same bytes of the file: then the
/// sizes that the directory states are each plausible and their sum is not. GetCurrentFileRange shows that.
/// Nor are names to be trusted: they may be absolute, hold "..", occur twice.
class VEXATRANSFERLIB_API ZipFileReader {
public:
    /// Opens the archive; it stays open until Close or the destructor. Reads only its directory's end.
    /// \throws dbc::precondition_error "No file specified for reading." for an empty path and for one with
    ///         U+0000 or an unpaired surrogate in it, with the contract report; "Could not open ZIP for
    ///         reading." when there is no archive at the path, a comment of more than 65,513 bytes or a cut
    ///         end included; "Could not obtain global information table for ZIP file."
    /// \throws std::bad_alloc when memory runs out; minizip then says perhaps only that it could not open
    /// \throws std::runtime_error when the path cannot be converted to UTF-8; see
    ///         UnicodeStrUtils::UnicodeStringToUTF8
    explicit ZipFileReader(const icu::UnicodeString& path);

    /// Opens the archive whose path is these bytes, which no encoding changes: of a name that is not UTF-8 as
    /// well.
    /// \throws dbc::precondition_error and std::bad_alloc as the constructor does; "No file specified for
    ///         reading." for an empty path and for one with a zero byte in it
    static ZipFileReader OpenFile(const std::string& path);

    virtual ~ZipFileReader();
    ZipFileReader(const ZipFileReader&) = delete;
    ZipFileReader& operator=(const ZipFileReader&) = delete;

    /// Closes the archive and an entry that is open. Harmless when it is closed.
    void Close();

    /// \{
    /// Makes the first or the next entry the current one. An open entry is closed first, without a check of
    /// its content. False when there is no such entry, or when the archive's directory cannot be read there:
    /// GetFileCount tells the two apart.
    bool GoToFirstFile();
    bool GoToNextFile();
    /// \}

    /// The number of entries that the archive states. 65535 may also mean more than that; the walk then finds
    /// them all.
    unsigned long GetFileCount() const;

    /// The entry's stored name, each byte the code unit of its value: neither UTF-8 nor any code page is
    /// decoded. At most 1023 bytes, the rest is cut off. A folder's name ends with "/".
    /// \throws dbc::precondition_error "Could not obtain file info for current file."
    /// \throws std::bad_alloc when ICU cannot hold the name
    icu::UnicodeString GetCurrentFileName() const;

    /// \throws what GetCurrentFileName throws
    ZipEntryInfo GetCurrentFileInfo() const;

    /// Reads the entry's local header to find which bytes of the file the entry claims. An open entry is
    /// closed, without a check of its content. In a sound archive no two ranges overlap.
    /// \throws what OpenCurrentFile throws
    ZipEntryRange GetCurrentFileRange();

    /// Opens the current entry for reading from its beginning. One that was open is closed.
    /// \throws dbc::precondition_error "Could not open file at the current position within the zip file.",
    ///         also for one that is encrypted, neither stored nor deflated, or of unknown size
    void OpenCurrentFile();

    /// Reads the next bytes of the open entry. `size` above INT_MAX counts as INT_MAX.
    /// \return the number of bytes; 0 at the entry's end, or for a size of 0; negative on failure: -102 when
    ///         no entry is open, -5 or -3 for damaged data, -1 when the file could not be read
    int ReadFromCurrentFile(char* buffer, unsigned int size);

    /// Closes the open entry. Its checksum is compared when as many bytes were read as the archive states. An
    /// entry that was read only in part, or whose reading failed, is closed without a check.
    /// \throws dbc::precondition_error "Encountered CRC error in current file."; "Could not close file at the
    ///         current position within the zip file." when none is open, and when a read gave 0 before as
    ///         many bytes as the archive states. The entry is closed all the same.
    void CloseCurrentFile();

private:
    struct FilePath {
        std::string bytes; ///< none when there is no such path
    };
    VEXATRANSFERLIB_LOCAL explicit ZipFileReader(const FilePath& path);

    void RequireOpen(int line) const;
    VEXATRANSFERLIB_LOCAL void RequireReadable();
    void LeaveCurrentFile();

    void* archive_ = nullptr; ///< minizip's handle; null when closed, and for an archive without entries
    unsigned long fileCount_ = 0;
    unsigned long commentLength_ = 0;
    bool isOpen_ = false;
    mutable bool isKnownReadable_ = false; ///< spares OpenCurrentFile a second look into the directory
    mutable std::uint64_t statedSize_ = 0; ///< of the current entry, when it is known to be readable
    std::uint64_t readCount_ = 0;          ///< bytes read of the open entry
    bool isReadToEnd_ = false;             ///< a read of the open entry gave 0
};

} // namespace vexaTransferLib
