// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vexaTransferLib::testing_support {

/// The faults of files: those that the writer writes and minizip reads with the C library, and those that the
/// GPX reader reads with the system's functions.
struct CFileFaults {
    // Writing.
    int openError = 0; ///< errno of every fopen; 0 to open
    std::size_t room =
        static_cast<std::size_t>(-1); ///< the bytes that all calls of fwrite together can write
    bool failsToClose = false;        ///< fclose closes, and reports a failure
    bool failsToUnbuffer = false;     ///< setvbuf does nothing

    // Reading.
    enum class Read {
        kFails, ///< like a defective disk
        kEnds   ///< like a file that has become shorter
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

/// Applies the faults to all files of this thread as long as this object exists, and counts in them. There
/// may be one at a time.
class CFileFaultsScope {
public:
    explicit CFileFaultsScope(CFileFaults& faults);
    ~CFileFaultsScope();
    CFileFaultsScope(const CFileFaultsScope&) = delete;
    CFileFaultsScope& operator=(const CFileFaultsScope&) = delete;
};

} // namespace vexaTransferLib::testing_support
