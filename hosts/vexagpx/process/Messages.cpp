// SPDX-License-Identifier: MIT
#include <vexagpx/process/Messages.h>

#include <vexagpx/process/Output.h>
#include <vexagpx/process/PlainText.h>
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

// Atomic, because a signal handler reads it.
std::atomic<bool> statusShown{false};

std::string WithoutControls(const std::string& message) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(message);
    const bool isAscii = ShowsOnlyAscii(STDERR_FILENO);
    std::string clean;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        const bool isShown = !IsTerminalControl(character) && (character < 0x80 || !isAscii);
        icu::UnicodeString(isShown ? character : UChar32{'?'}).toUTF8String(clean);
    }
    return clean;
}

} // namespace

void PrintError(const std::string& message) {
    ClearStatus();
    // A failure cannot be reported anywhere.
    static_cast<void>(WriteAll(STDERR_FILENO, ErrorLine(message)));
}

void PrintLines(const std::string& lines) {
    ClearStatus();
    static_cast<void>(WriteAll(STDERR_FILENO, lines));
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

void ShowStatus(const std::string& line) {
    // Set before the line is written, so that a signal in between clears it.
    statusShown = true;
    static_cast<void>(WriteAll(STDERR_FILENO, '\r' + line + "\x1B[K"));
}

void ClearStatus() {
    if (!statusShown)
        return;
    static_cast<void>(WriteAll(STDERR_FILENO, "\r\x1B[K"));
    statusShown = false;
}

} // namespace vexagpx
