// SPDX-License-Identifier: MIT
#include <vexagpx/input/FolderFiles.h>

#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/Input.h>
#include <vexagpx/process/Messages.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace vexagpx {

namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& argument) {
    std::error_code error;
    return argument != kStandardInput && fs::is_directory(argument, error);
}

/// Finds the files below a folder. The folders that are still to be examined are in a list, so that no depth of folders
/// exhausts the stack.
class FolderWalk {
public:
    explicit FolderWalk(const std::string& folder) : folders_{folder} {}

    std::vector<std::string> Files() {
        while (!folders_.empty()) {
            const std::string folder = std::move(folders_.back());
            folders_.pop_back();
            Examine(folder);
        }
        std::sort(files_.begin(), files_.end());
        return std::move(files_);
    }

private:
    void Examine(const std::string& folder) {
        std::error_code error;
        for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator();
             at.increment(error))
            Take(*at);
        if (error)
            files_.push_back(folder);
    }

    void Take(const fs::directory_entry& entry) {
        const std::string path = entry.path().native();
        std::error_code error;
        const fs::file_type type = entry.symlink_status(error).type();
        if (type == fs::file_type::directory)
            folders_.push_back(path);
        else if (type == fs::file_type::symlink && entry.is_directory(error))
            PrintError("Note: a link to a folder is not followed. (" + path + ")");
        else if (IsFile(entry) && (IsGpxName(path) || IsArchiveName(path)))
            files_.push_back(path);
    }

    /// True also for what cannot be examined, so that the reading reports it.
    static bool IsFile(const fs::directory_entry& entry) {
        std::error_code error;
        const fs::file_status status = entry.status(error);
        return status.type() == fs::file_type::regular || !fs::status_known(status) || !fs::exists(status);
    }

    std::vector<std::string> folders_;
    std::vector<std::string> files_;
};

std::vector<std::string> FilesOf(const std::string& argument) {
    if (!IsFolder(argument))
        return {argument};
    std::vector<std::string> files = FolderWalk(argument).Files();
    if (files.empty())
        files.push_back(argument);
    return files;
}

} // namespace

std::vector<std::string> ExpandFolders(const std::vector<std::string>& arguments) {
    std::vector<std::string> files;
    for (const std::string& argument : arguments)
        for (std::string& file : FilesOf(argument))
            files.push_back(std::move(file));
    return files;
}

bool ForEachFile(const std::vector<std::string>& arguments, const TakeFile& take) {
    bool succeeded = true;
    for (const std::string& argument : arguments)
        for (const std::string& file : FilesOf(argument))
            succeeded = RunReportingErrors(file, [&] { return take(file); }) && succeeded;
    return succeeded;
}

void RefuseFolder(const std::string& argument) {
    if (IsFolder(argument))
        throw std::runtime_error("This is a folder, and one file is needed: run the command for each file in "
                                 "it. (" +
                                 argument + ")");
}

void FailForFolder(const std::string& folder) {
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    if (error)
        throw std::runtime_error("Unable to read the folder: " + folder + " (" + ErrorText(error.value()) +
                                 ")");
    throw std::runtime_error("The folder holds no GPX file and no archive. (" + folder + ")");
}

} // namespace vexagpx
