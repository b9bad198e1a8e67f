// SPDX-License-Identifier: MIT
#include <vexagpx/process/TemporaryFolder.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace vexagpx {

namespace {

// Plain memory, because a signal handler walks it. Filled from the front, emptied from the back.
struct Slot {
    std::atomic<bool> used;
    int folder;
    int flags;
    char name[NAME_MAX + 1];
};
constexpr int kSlotCount = 8;
Slot slots[kSlotCount];

void Remove(Slot& slot) {
    if (!slot.used)
        return;
    // Forgotten only then: a signal in between removes it once more, which does no harm.
    ::unlinkat(slot.folder, slot.name, slot.flags);
    slot.used = false;
}

[[noreturn]] void Fail(int error) {
    throw std::system_error(error, std::generic_category(), "Unable to create a temporary folder");
}

std::string TemporaryPlace() {
    const char* place = std::getenv("TMPDIR");
    return place != nullptr && *place != '\0' ? place : "/tmp";
}

Descriptor OpenTemporaryPlace() {
    try {
        return OpenFolder(TemporaryPlace());
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

std::string MakeFolder() {
    std::string path = TemporaryPlace() + "/vexagpx-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        Fail(errno);
    return path;
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

void RemoveLeftovers() {
    for (int i = kSlotCount; i-- > 0;)
        Remove(slots[i]);
}

Leftover::Leftover(Kind kind, Descriptor folder, const std::string& name)
    : folder_(std::move(folder)), slot_(0) {
    while (slot_ < kSlotCount && slots[slot_].used)
        ++slot_;
    if (slot_ == kSlotCount || name.size() > NAME_MAX)
        throw std::system_error(ENAMETOOLONG, std::generic_category(), name);
    Slot& slot = slots[slot_];
    slot.folder = folder_.Get();
    slot.flags = kind == Kind::kFolder ? AT_REMOVEDIR : 0;
    std::memcpy(slot.name, name.c_str(), name.size() + 1);
    slot.used = true;
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
    : parent_(OpenTemporaryPlace()), folderPath_(MakeFolder()), filePath_(folderPath_ + '/' + fileName),
      folder_(Leftover::Kind::kFolder, Duplicate(parent_), NameOf(folderPath_)),
      file_(Leftover::Kind::kFile, OpenFolderIn(parent_, NameOf(folderPath_)), fileName) {}

} // namespace vexagpx
