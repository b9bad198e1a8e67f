// SPDX-License-Identifier: MIT
#include <vexagpx/input/EntryContent.h>

#include <vexagpx/input/FileKind.h>

namespace vexagpx {

EntryContent::EntryContent(Archive& archive, const std::string& argument)
    : archive_(archive), name_(argument + "/" + archive.Name()),
      stored_([this](char* buffer, std::size_t size) { return archive_.Read(buffer, size); }) {}

void EntryContent::Open() {
    archive_.Open();
    content_.emplace(stored_, archive_.Limits(), name_);
    RefuseOtherKinds(content_->Get().Head(), name_);
}

std::size_t EntryContent::Read(char* buffer, std::size_t size) {
    const std::size_t count = content_->Get().Read(buffer, size);
    if (content_->IsUnpacked())
        archive_.CountUnpacked(count);
    return count;
}

std::uint64_t EntryContent::StatedSize() const {
    return content_->IsUnpacked() ? 0 : archive_.StatedSize();
}

} // namespace vexagpx
