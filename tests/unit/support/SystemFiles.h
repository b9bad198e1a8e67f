// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vexaTransferLib::testing_support {

/// Counts the calls of open(2) and read(2) on this thread as long as this object exists. The library opens
/// the files that it is asked for with these functions; Xerces and the tests do not use them. There may be
/// one at a time.
class SystemFiles {
public:
    SystemFiles();
    ~SystemFiles();
    SystemFiles(const SystemFiles&) = delete;
    SystemFiles& operator=(const SystemFiles&) = delete;

    /// Includes files that could not be opened.
    std::size_t Opened() const { return opened_; }
    /// Of files that were opened since this object was made.
    std::size_t StillOpen() const;
    std::size_t BytesRead() const { return bytesRead_; }

    /// \{
    /// Called by the functions that replace the system's.
    void NoteOpen() { ++opened_; }
    void NoteRead(std::size_t count) { bytesRead_ += count; }
    /// \}

private:
    std::size_t opened_ = 0;
    std::size_t bytesRead_ = 0;
    std::size_t openAtFirst_;
};

} // namespace vexaTransferLib::testing_support
