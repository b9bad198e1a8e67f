// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Interruption.h>
#include <vexagpx/process/Posix.h>

#include <string>

namespace vexagpx {

/// A file or an empty folder that is removed when this goes, also when a signal ends the program. It is known
/// by its name in an open folder: a link that somebody puts into the path is not followed to another file.
class Leftover {
public:
    enum class Kind { kFile, kFolder };

    /// \throws std::system_error when the name is too long, or too many are left over
    Leftover(Kind kind, Descriptor folder, const std::string& name);
    ~Leftover();
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;

    /// It has become something else and stays.
    void Keep();

private:
    Descriptor folder_;
    int slot_;
};

/// Removes all of them. Fit for a signal handler.
void RemoveLeftovers();

/// A folder of our own in the system's place for temporary files, with one file in it.
class TemporaryFolder {
public:
    /// \param fileName name of the file, which is not made yet
    /// \param held only there so that no signal comes between making the folder and noting it as left over
    /// \throws std::system_error
    explicit TemporaryFolder(const std::string& fileName, const SignalsHeld& held = SignalsHeld());

    /// Where the file belongs.
    const std::string& FilePath() const { return filePath_; }

private:
    Descriptor parent_;
    std::string folderPath_;
    std::string filePath_;
    Leftover folder_;
    Leftover file_;
};

} // namespace vexagpx
