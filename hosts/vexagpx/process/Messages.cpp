// SPDX-License-Identifier: MIT
#include <vexagpx/process/Messages.h>

#include <vexagpx/process/Output.h>
#include <vexagpx/process/Posix.h>
#include <vexagpx/process/TerminalControl.h>

#include <unicode/unistr.h>

#include <atomic>
#include <cstdint>
#include <exception>
#include <new>

#include <unistd.h>

namespace vexagpx {

namespace {

// Atomic, because a signal handler reads them.
std::atomic<int> errorDescriptor{STDERR_FILENO};
std::atomic<bool> statusShown{false};

std::string WithoutControls(const std::string& message) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(message);
    std::string clean;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        icu::UnicodeString(IsTerminalControl(character) ? UChar32{'?'} : character).toUTF8String(clean);
    }
    return clean;
}

} // namespace

void PrintError(const std::string& message) {
    ClearStatus();
    // There is nowhere left to tell that this failed.
    static_cast<void>(WriteAll(errorDescriptor, ErrorLine(message)));
}

std::string ErrorLine(const std::string& message) {
    return "vexagpx: " + WithoutControls(message) + '\n';
}

bool RunReportingErrors(const std::string& about, const std::function<bool()>& work) {
    try {
        return work();
    } catch (const OutputError&) {
        throw;
    } catch (const std::bad_alloc&) {
        PrintError("Out of memory. (" + about + ")");
    } catch (const std::exception& failure) {
        PrintError(failure.what());
    }
    return false;
}

void SetErrorDescriptor(int fd) {
    errorDescriptor = fd;
}

int ErrorDescriptor() {
    return errorDescriptor;
}

void ShowStatus(const std::string& line) {
    // First, so that a signal does not find a status that it knows nothing of.
    statusShown = true;
    static_cast<void>(WriteAll(errorDescriptor, '\r' + line + "\x1B[K"));
}

void ClearStatus() {
    if (!statusShown)
        return;
    static_cast<void>(WriteAll(errorDescriptor, "\r\x1B[K"));
    statusShown = false;
}

} // namespace vexagpx
