// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <string>
#include <string_view>

namespace vexaTransferLib::standard {

/// A file that is written under another name beside its target and takes its place when it is complete. A target that
/// is no regular file, such as a device, is written directly. Destroyed before Commit, it leaves the target as it was.
class AtomicFile {
public:
    /// \param isAtomic false writes into the target
    /// \throws GpxWriteError when the file cannot be created
    AtomicFile(std::string target, bool isAtomic);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// \throws GpxWriteError
    void Write(std::string_view bytes);
    /// Waits until the bytes are on the disk and replaces the target.
    /// \throws GpxWriteError
    void Commit();

private:
    void CreateBeside(unsigned mode, bool hasTarget);
    void CreateTarget();
    void Sync() const;
    [[noreturn]] void Fail(const char* message) const;

    std::string name_;      ///< as the caller gave it, for errors
    std::string target_;    ///< with symbolic links followed
    std::string temporary_; ///< empty when the target is written itself
    int descriptor_ = -1;
};

} // namespace vexaTransferLib::standard
