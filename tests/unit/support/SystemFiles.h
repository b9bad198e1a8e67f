// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vexaTransferLib::testing_support {

/// Counts what this thread does with open(2) and read(2) while this lives: the library opens by them what it is
/// asked for, Xerces and the tests do not use them. One at a time.
class SystemFiles {
public:
    SystemFiles();
    ~SystemFiles();
    SystemFiles(const SystemFiles&) = delete;
    SystemFiles& operator=(const SystemFiles&) = delete;

    /// Also those that could not be opened.
    std::size_t Opened() const { return opened_; }
    /// Of what was opened since this was made.
    std::size_t StillOpen() const;
    std::size_t BytesRead() const { return bytesRead_; }

    /// \{
    /// Called by the functions that take the place of the system's.
    void NoteOpen() { ++opened_; }
    void NoteRead(std::size_t count) { bytesRead_ += count; }
    /// \}

private:
    std::size_t opened_ = 0;
    std::size_t bytesRead_ = 0;
    std::size_t openAtFirst_;
};

} // namespace vexaTransferLib::testing_support
