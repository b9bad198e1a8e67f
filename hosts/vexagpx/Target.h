// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Output.h>
#include <vexagpx/TemporaryFolder.h>

#include <memory>
#include <string>

#include <sys/types.h>

namespace vexagpx {

inline constexpr char kStandardOutput[] = "-";

/// The file that a command replaces as a whole or not at all: it is written under another name beside the
/// target, which it replaces when it is complete. What is no regular file, such as a pipe, takes the bytes
/// instead.
class Target {
public:
    enum class Existing { kReplaced, kKept };

    /// \param path a file, which need not exist, or "-" for standard output
    /// \param existing kKept makes it an error that there is something at the path
    /// \throws std::runtime_error
    explicit Target(const std::string& path, Existing existing = Existing::kReplaced);

    /// Where to write; removed unless Commit succeeds.
    const std::string& TemporaryPath() const { return temporaryPath_; }

    /// \throws std::runtime_error, OutputError when the target is standard output
    void Commit(Output& standardOutput);

private:
    [[noreturn]] void Fail(int error) const;
    void MakeTemporaryFile(mode_t mode);
    void MakeTemporaryFolder();
    bool Rename() const;
    void CopyTo(Output& out) const;
    void CopyToStream() const;

    std::string path_;
    std::string resolvedPath_;
    Existing existing_;
    bool replaces_ = false;
    std::string temporaryPath_;
    std::unique_ptr<TemporaryFolder> temporaryFolder_;
    std::unique_ptr<Leftover> temporaryFile_;
};

} // namespace vexagpx
