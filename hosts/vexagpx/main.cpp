// SPDX-License-Identifier: MIT
#include <vexagpx/CommandLine.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Posix.h>
#include <vexagpx/process/ReportLog.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <csignal>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

using vexagpx::Output;
using vexagpx::PrintError;

/// The XML library's global state, which must outlive every parser.
class XercesPlatform {
public:
    XercesPlatform() { xercesc::XMLPlatformUtils::Initialize(); }
    ~XercesPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XercesPlatform(const XercesPlatform&) = delete;
    XercesPlatform& operator=(const XercesPlatform&) = delete;
};

/// \throws std::runtime_error
vexagpx::Descriptor OpenLog(const std::string& path) {
    if (path.empty())
        return vexagpx::Descriptor();
    try {
        return vexagpx::OpenFile(path, O_WRONLY | O_CREAT | O_TRUNC);
    } catch (const std::system_error& error) {
        throw std::runtime_error("Unable to write the debug log: " + path + " (" +
                                 vexagpx::ErrorText(error.code().value()) + ")");
    }
}

int Run(const vexagpx::Invocation& invocation, Output& out) {
    if (invocation.noProgress)
        vexagpx::HideProgress();
    vexagpx::ReportLog reports(OpenLog(invocation.debugLog));
    int status = vexagpx::kSuccess;
    {
        const XercesPlatform platform;
        status = invocation.command(out);
    }
    out.Close();
    if (!reports.Close()) {
        PrintError("Unable to write the debug log: " + invocation.debugLog);
        status = std::max(status, vexagpx::kFailure);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    vexagpx::KeepStandardDescriptors();
    // A failed write is then an error first, so that temporary files are removed.
    const bool endsByPipe = std::signal(SIGPIPE, SIG_IGN) == SIG_DFL;
    std::signal(SIGXFSZ, SIG_IGN);
    vexagpx::CatchDeadlySignals();
    try {
        Output out(STDOUT_FILENO);
        vexagpx::Invocation invocation;
        const std::optional<int> status = vexagpx::ParseArguments(argc, argv, invocation, out);
        return status ? *status : Run(invocation, out);
    } catch (const vexagpx::ClosedPipe& failure) {
        // In silence, unless the caller wants to be told by ignoring the signal.
        if (endsByPipe)
            vexagpx::RaiseDefault({SIGPIPE});
        PrintError(failure.what());
    } catch (const std::exception& failure) {
        PrintError(failure.what());
    } catch (const vexagpx::Interruption& interruption) {
        vexagpx::RaiseDefault(interruption);
    } catch (const xercesc::XMLException&) {
        PrintError("The XML library could not be started.");
    } catch (const xercesc::OutOfMemoryException&) {
        PrintError("Out of memory.");
    }
    return vexagpx::kFailure;
}
