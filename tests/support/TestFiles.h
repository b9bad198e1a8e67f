// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <filesystem>
#include <string>

namespace vexaTransferLib::testing_support {

/// The text as UTF-8, so that the output of a failed comparison is readable.
std::string Utf8(const icu::UnicodeString& text);

/// The bytes of a file; throws when it cannot be read.
std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

/// The bytes of a file below tests/data.
std::string ReadTestData(const std::string& name);

/// A new empty folder that is removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// Sets the current folder of the process as long as this object exists.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : former_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() { std::filesystem::current_path(former_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path former_;
};

} // namespace vexaTransferLib::testing_support
