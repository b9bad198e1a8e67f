// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/Signals.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cli {

namespace fs = std::filesystem;

namespace {

int Open(const std::string& path, int flags) {
    const int fd = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (fd < 0)
        throw std::runtime_error("cannot open " + path);
    return fd;
}

} // namespace

Tool::Tool(std::vector<std::string> arguments) : arguments_(std::move(arguments)), folder_(".") {}

Tool& Tool::In(const std::string& folder) {
    folder_ = folder;
    return *this;
}

Tool& Tool::Stdin(const std::string& bytes) {
    input_ = bytes;
    return *this;
}

Tool& Tool::CloseStdin() {
    closeStdin_ = true;
    return *this;
}

Tool& Tool::StdoutTo(const std::string& path) {
    stdoutPath_ = path;
    return *this;
}

Tool& Tool::CloseStdout() {
    closeStdout_ = true;
    return *this;
}

Tool& Tool::CloseStderr() {
    closeStderr_ = true;
    return *this;
}

Tool& Tool::MergeOutput() {
    merge_ = true;
    return *this;
}

Tool& Tool::Set(const std::string& name, const std::string& value) {
    environment_[name] = value;
    return *this;
}

Tool& Tool::AsOrdinaryUser() {
    ordinaryUser_ = true;
    return *this;
}

void Tool::Become(int in, int out, int err) const {
    ResetSignals();
    ::dup2(in, STDIN_FILENO);
    ::dup2(out, STDOUT_FILENO);
    ::dup2(merge_ ? out : err, STDERR_FILENO);
    for (const auto& [fd, close] : {std::pair{0, closeStdin_}, {1, closeStdout_}, {2, closeStderr_}})
        if (close)
            ::close(fd);
    for (const auto& [name, value] : environment_)
        ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    arguments.push_back(const_cast<char*>("vexagpx"));
    for (const std::string& argument : arguments_)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    // All ids: with the effective one alone, the sanitizers take the tool for a program with set-user-ID.
    constexpr uid_t kNobody = 65534;
    if (ordinaryUser_ && ::geteuid() == 0 && ::setuid(kNobody) != 0)
        ::_exit(126);
    if (::chdir(folder_.c_str()) == 0)
        ::execv(VEXAGPX_TOOL, arguments.data());
    ::_exit(127);
}

Result Tool::Run() {
    const Folder files;
    const int in = Open(files.Write("in", input_), O_RDONLY);
    const int out = Open(stdoutPath_.value_or(files.File("out")), O_WRONLY | O_CREAT | O_APPEND);
    const int err = Open(files.File("err"), O_WRONLY | O_CREAT | O_APPEND);
    // Ends when the last process of this run has ended.
    int lifeline[2];
    if (::pipe(lifeline) != 0)
        throw std::runtime_error("cannot make a pipe");
    ::fcntl(lifeline[0], F_SETFD, FD_CLOEXEC);
    const pid_t child = ::fork();
    if (child == 0)
        Become(in, out, err);
    ::close(lifeline[1]);
    int status = 0;
    ::waitpid(child, &status, 0);
    char byte;
    while (::read(lifeline[0], &byte, 1) > 0) {
    }
    ::close(lifeline[0]);
    for (const int fd : {in, out, err})
        ::close(fd);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
            stdoutPath_ ? std::string() : ReadFile(files.File("out")), ReadFile(files.File("err"))};
}

testing::AssertionResult Failed(const Result& result, const std::string& text) {
    if (result.status != 1)
        return testing::AssertionFailure() << "exit status " << result.status << "\n" << result.err;
    bool told = false;
    for (const std::string& line : Lines(result.err)) {
        if (!line.starts_with("vexagpx: "))
            return testing::AssertionFailure() << "no message: " << line;
        told = told || line.find(text) != std::string::npos;
    }
    if (!told)
        return testing::AssertionFailure() << "nothing about " << text << "\n" << result.err;
    return testing::AssertionSuccess();
}

Result RunTool(std::vector<std::string> arguments, const std::string& folder) {
    return Tool(std::move(arguments)).In(folder).Run();
}

Folder::Folder() : path_((fs::temp_directory_path() / "cli-test-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr)
        throw std::runtime_error("cannot make a folder " + path_);
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string Folder::Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(File(name), std::ios::binary) << bytes;
    return File(name);
}

std::vector<std::string> Folder::Names() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> Folder::Tree() const {
    std::vector<std::string> paths;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_)) {
        const bool isFolder = entry.is_directory() && !entry.is_symlink();
        paths.push_back(entry.path().string().substr(path_.size() + 1) + (isFolder ? "/" : ""));
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::string Data(const std::string& name) {
    return std::string(VEXA_TEST_DATA "/cli/") + name;
}

std::vector<std::string> Corpus(const std::string& kind) {
    std::vector<std::string> paths;
    const fs::path folder = fs::path(VEXA_SHARED) / "corpus" / kind;
    if (fs::is_directory(folder))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Gpx(const std::string& elements) {
    return "<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\""
           " xmlns:t=\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\""
           " xmlns:g=\"http://www.groundspeak.com/cache/1/0\">\n" +
           elements + "\n</gpx>\n";
}

} // namespace cli
