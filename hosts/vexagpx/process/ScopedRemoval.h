// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>

#include <string>

namespace vexagpx {

/// A file or an empty folder that is removed when this object is destroyed, and also when a signal ends the program.
/// It is known by its name in an open folder, so that a link that another process puts into the path does not lead
/// to another file.
class ScopedRemoval {
public:
    enum class Kind { kFile, kFolder };

    /// \throws std::system_error when the name is too long, or when too many of these objects exist
    ScopedRemoval(Kind kind, Descriptor folder, const std::string& name);
    ~ScopedRemoval();
    ScopedRemoval(const ScopedRemoval&) = delete;
    ScopedRemoval& operator=(const ScopedRemoval&) = delete;

    /// The file is no longer temporary and is not removed.
    void Keep();

private:
    Descriptor folder_;
    int slot_;
};

/// Removes what all objects of the class would remove. A signal handler may call it.
void RemoveScopedFiles();

} // namespace vexagpx
