// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ElementEdits.h>

#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/XmlBlank.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib::saving {

std::string QualifiedBelow(const SavedElement& parent, std::string_view name) {
    const std::string_view prefix = parent.child.prefix;
    return prefix.empty() ? std::string(name) : std::string(prefix) + ':' + std::string(name);
}

ElementEdits::ElementEdits(Saving& saving, TextEdits& edits, const SavedElement& element, Order order,
                           NamespaceKind kind)
    : saving_(saving), edits_(edits), element_(element), order_(order), kind_(kind) {}

const std::vector<SavedChild>& ElementEdits::Children() {
    if (!std::exchange(areChildrenKnown_, true))
        ForEachChild(saving_.Names(), saving_.Source(), element_.child.tag, [&](const ScannedChild& child) {
            const char* const end = saving_.Source().EndOf(child.begin);
            children_.push_back({child.begin, end, child.name, child.kind});
            return end;
        });
    return children_;
}

const SavedChild* ElementEdits::Find(std::string_view name) {
    for (const SavedChild& child : Children())
        if (child.Is(kind_, name))
            return &child;
    return nullptr;
}

void ElementEdits::SetContent(const SavedChild& child, std::string_view content) {
    const SourceText& source = saving_.Source();
    const ScannedTag tag = ScanTag(child.begin);
    if (!tag.isEmpty) {
        const std::string_view xml(child.begin, static_cast<std::size_t>(child.end - child.begin));
        edits_.Replace(source.PlaceOf(tag.end), source.PlaceOf(child.begin) + xml.rfind('<'),
                       std::string(content));
        return;
    }
    const std::uint64_t slash = source.PlaceOf(tag.end) - 2;
    edits_.Replace(slash, slash + 2, ">" + std::string(content) + "</" + std::string(tag.name) + ">");
}

void ElementEdits::SetAttribute(const ScannedTag& tag, std::string_view name, std::string_view value) {
    const SourceText& source = saving_.Source();
    std::string_view rest = tag.attributes;
    const std::string quoted = '"' + std::string(value) + '"';
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (attribute.name != name)
            continue;
        const std::uint64_t begin = source.PlaceOf(attribute.value.data());
        edits_.Replace(begin - 1, begin + attribute.value.size() + 1, quoted);
        return;
    }
    const std::uint64_t place = source.PlaceOf(tag.name.data()) + tag.name.size();
    edits_.Insert(place, ' ' + std::string(name) + '=' + quoted);
}

void ElementEdits::RemoveAttribute(const ScannedTag& tag, std::string_view name) {
    const SourceText& source = saving_.Source();
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            edits_.Remove(source.PlaceOf(attribute.name.data()) - 1,
                          source.PlaceOf(attribute.value.data()) + attribute.value.size() + 1);
}

void ElementEdits::Remove(const SavedChild& child) {
    const SourceText& source = saving_.Source();
    const TextPart part = LinesOf(source.Text(), {source.PlaceOf(child.begin), source.PlaceOf(child.end)});
    edits_.Remove(part.begin, part.end);
}

void ElementEdits::AddText(std::string_view name, std::string_view content) {
    const std::string qualified = Qualified(name);
    std::string xml = ChildLayout().separator;
    xml.append("<").append(qualified).append(">").append(content).append("</").append(qualified).append(">");
    Add(name, std::move(xml));
}

std::size_t ElementEdits::RankOf(std::string_view name) const {
    if (kind_ == NamespaceKind::kGpx && (name == gpx::kUrl || name == gpx::kUrlname))
        name = gpx::kLink;
    return static_cast<std::size_t>(std::find(order_.begin(), order_.end(), name) - order_.begin());
}

std::size_t ElementEdits::RankOf(const SavedChild& child) const {
    return child.kind == kind_ ? RankOf(child.name) : order_.size();
}

std::uint64_t ElementEdits::ContentEnd() const {
    const auto end = static_cast<std::size_t>(saving_.Source().PlaceOf(element_.end));
    return saving_.Text().rfind("</", end - 1);
}

bool ElementEdits::HasTextOnly() {
    if (!HasContent() || !Children().empty())
        return false;
    const auto begin = static_cast<std::size_t>(saving_.Source().PlaceOf(element_.child.tag.end));
    const std::string_view content = saving_.Text().substr(begin, ContentEnd() - begin);
    return !std::all_of(content.begin(), content.end(), text::IsBlank);
}

// After the last child that does not come after it; before all others when there is none, but behind a text.
void ElementEdits::Add(std::string_view name, std::string xml) {
    if (!HasContent()) {
        content_ += xml;
        return;
    }
    const std::size_t rank = RankOf(name);
    const SourceText& source = saving_.Source();
    std::uint64_t place = HasTextOnly() ? ContentEnd() : source.PlaceOf(element_.child.tag.end);
    for (const SavedChild& child : Children())
        if (RankOf(child) <= rank)
            place = source.PlaceOf(child.end);
    edits_.Insert(PlaceAfter(source.Text(), place), std::move(xml));
    hasAdded_ = true;
}

const ElementLayout& ElementEdits::ChildLayout() {
    if (!std::exchange(isLayoutKnown_, true))
        layout_ = MakeLayout();
    return layout_;
}

// As the first child that starts a line; without children, within the lines of the element.
ElementLayout ElementEdits::MakeLayout() {
    const SourceText& source = saving_.Source();
    const std::string_view outer = SeparatorBefore(source.Text(), source.PlaceOf(element_.child.begin));
    for (const SavedChild& child : Children()) {
        const std::string_view separator = SeparatorBefore(source.Text(), source.PlaceOf(child.begin));
        if (!separator.empty())
            return {std::string(separator),
                    outer.empty() ? saving_.Indent() : IndentBetween(outer, separator)};
    }
    const std::string& indent = saving_.Indent();
    if (!Children().empty() || outer.empty() || HasTextOnly())
        return {{}, indent};
    return {std::string(outer) + indent, indent};
}

// What was added to an empty element ends with the line of its end tag.
void ElementEdits::Finish() {
    const SourceText& source = saving_.Source();
    const std::string_view outer = SeparatorBefore(source.Text(), source.PlaceOf(element_.child.begin));
    const std::string_view lastLine = ChildLayout().separator.empty() ? std::string_view() : outer;
    const std::uint64_t end = source.PlaceOf(element_.child.tag.end);
    if (!content_.empty())
        edits_.Replace(end - 2, end,
                       ">" + content_ + std::string(lastLine) + "</" + std::string(element_.child.tag.name) +
                           ">");
    else if (hasAdded_ && source.Text().substr(static_cast<std::size_t>(end)).starts_with("</"))
        edits_.Insert(end, std::string(lastLine));
    content_.clear();
    hasAdded_ = false;
}

} // namespace vexaTransferLib::saving
