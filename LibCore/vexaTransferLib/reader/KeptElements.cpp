// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/KeptElements.h>

#include <vexaTransferLib/text/HeldText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// What makes two elements of one field say the same; links have theirs in an attribute.
icu::UnicodeString ContentOf(const NodeView& element) {
    icu::UnicodeString content;
    element.TextContent(content);
    if (const char16_t* const href = element.Attribute(u"href"))
        content.append(u'\n').append(href, -1);
    text::CheckHeld(content);
    return content;
}

GpxPassedOver AsReplaced(const NodeView& element) {
    return Receipt::Describe(element, kGpxReplaced, "Another element was kept in its place.", true);
}

} // namespace

// Built once, however many elements are compared with it.
const icu::UnicodeString& KeptElements::ContentOf(Kept& kept) {
    if (!kept.content)
        kept.content = reader::ContentOf(kept.element);
    return *kept.content;
}

KeptElements::Kept* KeptElements::Find(const char16_t* field) {
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) { return Equals(kept.field, field); });
    return found != kept_.end() ? &*found : nullptr;
}

KeptElements::Kept KeptElements::Describe(const char16_t* field, const NodeView& element) const {
    if (elements_ == Elements::kStay)
        return {field, element, {}, std::nullopt};
    return {field, {}, AsReplaced(element), reader::ContentOf(element)};
}

void KeptElements::Replace(const char16_t* field, const NodeView& element) {
    Kept* const kept = Find(field);
    if (kept == nullptr) {
        kept_.push_back(Describe(field, element));
        return;
    }
    Kept lost = std::exchange(*kept, Describe(field, element));
    if (ContentOf(lost) != ContentOf(*kept))
        receipt_.Tell(lost.element.IsNull() ? lost.description : AsReplaced(lost.element));
}

void KeptElements::Drop(const char16_t* field) {
    const Kept* const kept = Find(field);
    if (kept == nullptr)
        return;
    const GpxPassedOver lost = kept->element.IsNull() ? kept->description : AsReplaced(kept->element);
    kept_.erase(kept_.begin() + (kept - kept_.data()));
    receipt_.Tell(lost);
}

void KeptElements::TellRefused(const char16_t* field, const NodeView& element) {
    Kept* const kept = Find(field);
    if (kept == nullptr || ContentOf(*kept) != reader::ContentOf(element))
        receipt_.Tell(AsReplaced(element));
}

} // namespace vexaTransferLib::reader
