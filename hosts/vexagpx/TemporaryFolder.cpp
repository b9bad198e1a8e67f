// SPDX-License-Identifier: MIT
#include <vexagpx/TemporaryFolder.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <unistd.h>

namespace vexagpx {

namespace {

// Plain memory, because a signal handler walks it. Filled from the front, emptied from the back.
struct Slot {
    std::atomic<bool> used;
    Leftover::Kind kind;
    char path[PATH_MAX];
};
constexpr int kSlotCount = 8;
Slot slots[kSlotCount];

void Remove(Slot& slot) {
    if (!slot.used.exchange(false))
        return;
    if (slot.kind == Leftover::Kind::kFile)
        ::unlink(slot.path);
    else
        ::rmdir(slot.path);
}

extern "C" void RemoveLeftovers(int signal) {
    for (int i = kSlotCount; i-- > 0;)
        Remove(slots[i]);
    // The handler was reset on entry: this time the signal does what it does by default.
    ::raise(signal);
}

void CatchDeadlySignals() {
    static bool caught = false;
    if (caught)
        return;
    caught = true;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGXCPU}) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = RemoveLeftovers;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        ::sigaction(signal, &action, nullptr);
    }
}

std::string MakeFolder() {
    const char* place = std::getenv("TMPDIR");
    std::string path = std::string(place != nullptr && *place != '\0' ? place : "/tmp") + "/vexagpx-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "Unable to create a temporary folder");
    return path;
}

} // namespace

Leftover::Leftover(Kind kind, const std::string& path) : slot_(0) {
    CatchDeadlySignals();
    while (slot_ < kSlotCount && slots[slot_].used)
        ++slot_;
    if (slot_ == kSlotCount || path.size() >= PATH_MAX)
        throw std::system_error(ENAMETOOLONG, std::generic_category(), path);
    slots[slot_].kind = kind;
    std::memcpy(slots[slot_].path, path.c_str(), path.size() + 1);
    slots[slot_].used = true;
}

Leftover::~Leftover() {
    if (slot_ >= 0)
        Remove(slots[slot_]);
}

void Leftover::Keep() {
    if (slot_ >= 0)
        slots[slot_].used = false;
    slot_ = -1;
}

TemporaryFolder::TemporaryFolder(const std::string& fileName)
    : folderPath_(MakeFolder()), filePath_(folderPath_ + '/' + fileName),
      folder_(Leftover::Kind::kFolder, folderPath_), file_(Leftover::Kind::kFile, filePath_) {}

} // namespace vexagpx
