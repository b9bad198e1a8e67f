// SPDX-License-Identifier: MIT
#include <vexagpx/process/ScopedRemoval.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace vexagpx {

namespace {

// Plain memory, because a signal handler reads it. Used from the first slot on, emptied from the last one on.
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
    // The slot is freed after the removal: a signal between the two removes the file again, which does no harm.
    ::unlinkat(slot.folder, slot.name, slot.flags);
    slot.used = false;
}

} // namespace

void RemoveScopedFiles() {
    for (int i = kSlotCount; i-- > 0;)
        Remove(slots[i]);
}

ScopedRemoval::ScopedRemoval(Kind kind, Descriptor folder, const std::string& name)
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

ScopedRemoval::~ScopedRemoval() {
    if (slot_ >= 0)
        Remove(slots[slot_]);
}

void ScopedRemoval::Keep() {
    if (slot_ >= 0)
        slots[slot_].used = false;
    slot_ = -1;
}

} // namespace vexagpx
