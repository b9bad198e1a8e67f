// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vexaTransferLib::testing_support {

/// What goes wrong with files: those that the writer writes and minizip reads, by the C library, and those that
/// the GPX reader reads, by the system.
struct CFileFaults {
    // Writing.
    int openError = 0;                               ///< errno of every fopen; 0 to open
    std::size_t room = static_cast<std::size_t>(-1); ///< how many bytes all fwrites together write
    bool failsToClose = false;                       ///< fclose closes, and reports a failure
    bool failsToUnbuffer = false;                    ///< setvbuf does nothing

    // Reading.
    enum class Read {
        kFails, ///< as from a disk that is broken
        kEnds   ///< as in a file that has become shorter
    };
    std::size_t faultyRead =
        0; ///< which read or fread, counted from 1; that one and all later ones of the file
    Read read = Read::kFails;
    bool interruptsReads = false; ///< every other read is interrupted by a signal, and the others give little

    std::size_t opened = 0;
    std::size_t closed = 0;
    std::size_t reads = 0;
    std::size_t interruptions = 0;
};

/// The faults of all files of this thread while this lives; the counts are kept in them. One at a time.
class CFileFaultsScope {
public:
    explicit CFileFaultsScope(CFileFaults& faults);
    ~CFileFaultsScope();
    CFileFaultsScope(const CFileFaultsScope&) = delete;
    CFileFaultsScope& operator=(const CFileFaultsScope&) = delete;
};

} // namespace vexaTransferLib::testing_support
