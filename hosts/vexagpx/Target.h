// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Output.h>
#include <vexagpx/TemporaryFolder.h>

#include <memory>
#include <string>

#include <sys/types.h>

namespace vexagpx {

/// The file that a command replaces as a whole or not at all: it is written under another name beside the
/// target, which it replaces when it is complete. What is no regular file, such as a pipe, takes the bytes
/// instead.
class Target {
public:
    /// \param path a file, which need not exist, or "-" for standard output
    /// \throws std::runtime_error
    explicit Target(const std::string& path);

    /// Where to write; removed unless Commit succeeds.
    const std::string& TemporaryPath() const { return temporaryPath_; }

    /// \throws std::runtime_error, OutputError when the target is standard output
    void Commit(Output& standardOutput);

private:
    [[noreturn]] void Fail(int error) const;
    void MakeTemporaryFile(mode_t mode);
    void MakeTemporaryFolder();
    void CopyTo(Output& out) const;
    void CopyToStream() const;

    std::string path_;
    std::string resolvedPath_;
    bool replaces_ = false;
    std::string temporaryPath_;
    std::unique_ptr<TemporaryFolder> temporaryFolder_;
    std::unique_ptr<Leftover> temporaryFile_;
};

} // namespace vexagpx
