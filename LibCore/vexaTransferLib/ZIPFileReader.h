// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reads the entries of a ZIP archive.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <memory>
#include <string>

namespace vexaTransferLib {

namespace zip {
class Archive;
}

/// What an archive's directory states about an entry. It need not be true: an archive may state any size. A size
/// that is in zip64 form but missing there is 4294967295.
struct VEXATRANSFERLIB_API ZipEntryInfo {
    std::uint64_t size = 0;           ///< bytes of the entry's content
    std::uint64_t compressedSize = 0; ///< bytes that it takes in the archive
    std::uint32_t nameLength = 0;     ///< bytes of the stored name, of which GetCurrentFileName gives 1023
    bool isSymbolicLink = false;      ///< the content is the path to which the link leads
    bool isEncrypted = false;         ///< a password is needed, which no operation takes (bit 0 of `flags`)
    bool isNameUtf8 = false;  ///< the archive states that name and comment are UTF-8 (bit 11 of `flags`)
    std::uint16_t method = 0; ///< the compression method: 0 stored, 8 deflated; others cannot be read
    std::uint16_t flags = 0;  ///< the general purpose bits
    std::uint32_t crc = 0;    ///< CRC-32 of the content
    /// When the content was changed, as MS-DOS has it, in the local time of whoever packed it: from the lowest bit, two
    /// seconds in 5 bits, minute in 6, hour in 5, day in 5, month in 4, and the years since 1980 in 7. It may be no
    /// date.
    std::uint32_t dosTime = 0;
};

/// The bytes of the archive's file that an entry claims: its local header and its packed bytes.
struct VEXATRANSFERLIB_API ZipEntryRange {
    std::uint64_t begin = 0; ///< where the local header starts
    std::uint64_t end = 0;   ///< after the last packed byte; may lie after the end of the file
};

/// Walks the entries of a ZIP archive on disk and reads them, one at a time. An archive may have data descriptors,
/// comments, and other bytes in front of it. Stored and deflated entries can be read, also those of zip64 archives,
/// whose sizes and places may be in zip64 form.
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
/// The current entry is the one that the last successful move reached; in a new reader it is the first. After a
/// move to an entry that cannot be read in the directory there is no current entry. An archive without entries can
/// be opened and has no current entry. A comment that contains the end mark of an archive hides the entries or
/// makes the archive unreadable, unless it is a zip64 archive.
///
/// Every failure is a `dbc::precondition_error`. On a closed reader every operation but Close writes the contract
/// report and throws "Zip file not opened for reading."; failures of the archive itself write no report.
///
/// The memory that a reader needs does not depend on the size of the archive or its entries. One thread at a time
/// may use a reader; readers on different threads are independent, also on the same archive.
///
/// **A warning.** A few kilobytes can contain gigabytes: a host that takes untrusted archives counts what
/// it reads, of each entry and of all together. Many entries can claim the same bytes of the file: each size that
/// the directory states is then plausible, but not their sum. GetCurrentFileRange shows that. Names cannot be
/// trusted either: they may be absolute, contain "..", or occur twice.
class VEXATRANSFERLIB_API ZipFileReader {
public:
    /// Opens the archive; it stays open until Close or the destructor. Looks through its directory once for entries in
    /// zip64 form.
    /// \throws dbc::precondition_error "No file specified for reading." for an empty path and for one that
    ///         contains U+0000 or an unpaired surrogate, with the contract report; "Could not open ZIP for
    ///         reading." when there is no archive at the path, when its comment has more than 65,513 bytes and it
    ///         is no zip64 archive, and when its end is cut off; "Could not obtain global information table for ZIP file."
    /// \throws std::bad_alloc when memory runs out; where it runs out in minizip, the failure may instead be
    ///         "Could not open ZIP for reading."
    /// \throws std::runtime_error when the path cannot be converted to UTF-8; see
    ///         UnicodeStrUtils::UnicodeStringToUTF8
    explicit ZipFileReader(const icu::UnicodeString& path);

    /// Opens the archive whose path is these bytes. They are not converted, so that the name need not be UTF-8.
    /// \throws dbc::precondition_error and std::bad_alloc as the constructor does; "No file specified for
    ///         reading." for an empty path and for one with a zero byte in it
    static ZipFileReader OpenFile(const std::string& path);

    virtual ~ZipFileReader();
    ZipFileReader(const ZipFileReader&) = delete;
    ZipFileReader& operator=(const ZipFileReader&) = delete;

    /// Closes the archive and an entry that is open. Does nothing when the archive is closed.
    void Close();

    /// \{
    /// Makes the first or the next entry the current one. An open entry is closed first, without a check of
    /// its content. False when there is no such entry, or when the archive's directory cannot be read there;
    /// GetFileCount shows which of the two it was.
    bool GoToFirstFile();
    bool GoToNextFile();
    /// \}

    /// The number of entries that the archive states. 65535 may also mean that there are more; the walk then finds
    /// them all.
    unsigned long GetFileCount() const;

    /// The entry's stored name. Each byte becomes the code unit with the same value; neither UTF-8 nor any code
    /// page is decoded. A name is cut off after 1023 bytes. The name of a folder ends with "/".
    /// \throws dbc::precondition_error "Could not obtain file info for current file."
    /// \throws std::bad_alloc when ICU cannot hold the name
    icu::UnicodeString GetCurrentFileName() const;

    /// \throws what GetCurrentFileName throws
    ZipEntryInfo GetCurrentFileInfo() const;

    /// Reads the entry's local header to find which bytes of the file the entry claims. An open entry is
    /// closed, without a check of its content. In a correct archive no two ranges overlap.
    /// \throws what OpenCurrentFile throws
    ZipEntryRange GetCurrentFileRange();

    /// Opens the current entry for reading from its start. An entry that was open is closed.
    /// \throws dbc::precondition_error "Could not open file at the current position within the zip file.",
    ///         also for an entry that is encrypted, neither stored nor deflated, or of unknown size
    void OpenCurrentFile();

    /// Reads the next bytes of the open entry. `size` above INT_MAX counts as INT_MAX.
    /// \return the number of bytes; 0 at the entry's end, or for a size of 0; negative on failure: -102 when
    ///         no entry is open, -5 or -3 for damaged data, -1 when the file could not be read
    int ReadFromCurrentFile(char* buffer, unsigned int size);

    /// Closes the open entry. Its checksum is compared when as many bytes were read as the archive states. An
    /// entry that was read only in part, or whose reading failed, is closed without a check.
    /// \throws dbc::precondition_error "Encountered CRC error in current file."; "Could not close file at the
    ///         current position within the zip file." when no entry is open, and when a read returned 0 before as
    ///         many bytes were read as the archive states. The entry is then closed as well.
    void CloseCurrentFile();

private:
    struct FilePath {
        std::string bytes; ///< empty when no file can have this path
    };
    VEXATRANSFERLIB_LOCAL explicit ZipFileReader(const FilePath& path);

    void RequireOpen(int line) const;
    VEXATRANSFERLIB_LOCAL void RequireReadable();
    void LeaveCurrentFile();

    std::unique_ptr<zip::Archive> archive_; ///< null when closed, and for an archive without entries
    unsigned long fileCount_ = 0;
    bool isOpen_ = false;
    mutable bool isKnownReadable_ = false; ///< OpenCurrentFile need not look into the directory again
    mutable std::uint64_t statedSize_ = 0; ///< of the current entry, when it is known to be readable
    std::uint64_t readCount_ = 0;          ///< bytes read of the open entry
    bool isReadToEnd_ = false;             ///< a read of the open entry returned 0
};

} // namespace vexaTransferLib
