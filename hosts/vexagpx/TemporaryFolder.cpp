// SPDX-License-Identifier: MIT
#include <vexagpx/TemporaryFolder.h>

#include <atomic>
#include <cerrno>
#include <climits>
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
    if (!slot.used)
        return;
    // Forgotten only then: a signal in between removes it once more, which does no harm.
    if (slot.kind == Leftover::Kind::kFile)
        ::unlink(slot.path);
    else
        ::rmdir(slot.path);
    slot.used = false;
}

std::string MakeFolder() {
    const char* place = std::getenv("TMPDIR");
    std::string path = std::string(place != nullptr && *place != '\0' ? place : "/tmp") + "/vexagpx-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "Unable to create a temporary folder");
    return path;
}

} // namespace

void RemoveLeftovers() {
    for (int i = kSlotCount; i-- > 0;)
        Remove(slots[i]);
}

Leftover::Leftover(Kind kind, const std::string& path) : slot_(0) {
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

TemporaryFolder::TemporaryFolder(const std::string& fileName, const SignalsHeld&)
    : folderPath_(MakeFolder()), filePath_(folderPath_ + '/' + fileName),
      folder_(Leftover::Kind::kFolder, folderPath_), file_(Leftover::Kind::kFile, filePath_) {}

} // namespace vexagpx
