// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/FileInFolder.h>
#include <vexagpx/process/ScopedRemoval.h>

#include <memory>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace vexagpx {

/// The permissions of a file that replaces another one: those of the old file, but never its set-user-ID, set-group-ID
/// and sticky bits, which would give the rights of the new owner to whoever wrote the old file. When the owner or the
/// group changes, nobody gets a permission that a new file would not give. When the group changes, neither the new
/// group nor the others get a permission that the old file did not give to both.
/// \param usual the permissions of a new file
mode_t ReplacementMode(const struct stat& old, const struct stat& replacement, mode_t usual);

/// A regular file that is written as a whole or not at all. It is written under another name in the same folder, for
/// its owner alone, and gets its permissions and its name when it is complete. Only the descriptors of the folder and
/// of the file are used: no link is followed, and no path is looked up again.
class AtomicFile {
public:
    enum class Existing { kReplaced, kKept };

    /// \param existing with kKept it is an error when the name is in use
    /// \throws std::runtime_error
    AtomicFile(FileInFolder target, Existing existing);

    /// \throws std::runtime_error
    void Write(std::string_view bytes);

    /// Gives the file its permissions and its name. Without this call it is removed.
    /// \throws std::runtime_error
    void Commit();

private:
    [[noreturn]] void Fail(int error) const;
    std::optional<struct stat> Status() const;
    void CheckReplaceable(const struct stat& status) const;
    void MakeTemporaryFile();
    void SetMode() const;
    bool Rename() const;

    FileInFolder target_;
    Existing existing_;
    std::string temporaryName_;
    Descriptor file_;
    std::unique_ptr<ScopedRemoval> removal_;
};

} // namespace vexagpx
