// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>
#include <vexagpx/process/ScopedRemoval.h>
#include <vexagpx/process/Signals.h>

#include <string>

namespace vexagpx {

/// A folder of its own in the system's folder for temporary files, with one file in it. Both are removed when this
/// object is destroyed.
class TemporaryFolder {
public:
    /// \param fileName name of the file, which is not created yet
    /// \param block only there so that no signal ends the program after the folder is created and before its
    /// removal is arranged
    /// \throws std::system_error
    explicit TemporaryFolder(const std::string& fileName, const SignalBlock& block = SignalBlock());

    /// The path of the file.
    const std::string& FilePath() const { return filePath_; }

private:
    Descriptor parent_;
    std::string folderPath_;
    std::string filePath_;
    ScopedRemoval folder_;
    ScopedRemoval file_;
};

} // namespace vexagpx
