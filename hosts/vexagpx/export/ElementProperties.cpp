// SPDX-License-Identifier: MIT
#include <vexagpx/export/ElementProperties.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vexagpx {

using vexaTransferLib::GpxElement;

namespace {

// Whole numbers beyond this one are not exact in a double.
constexpr double kMostExact = 9007199254740992.0;

Value ValueOf(const GpxElement& element, ElementField::Kind kind) {
    if (kind == ElementField::Kind::kText)
        return element.GetText();
    const std::optional<double> number = element.GetNumber();
    if (!number || !std::isfinite(*number))
        return element.GetText().trim();
    const bool isCount = *number >= 0.0 && *number <= kMostExact && std::floor(*number) == *number;
    if (kind == ElementField::Kind::kCount && isCount)
        return static_cast<std::uint64_t>(*number);
    return *number;
}

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

/// Counts the texts and attributes in well-formed XML without making anything of it.
class ValueCounter {
public:
    explicit ValueCounter(std::string_view xml) : rest_(xml) {}

    std::uint64_t Count();

private:
    void TakeText(std::string_view text);
    void TakeTag();
    void SkipTo(std::string_view end);

    std::string_view rest_;
    std::uint64_t values_ = 0;
};

std::uint64_t ValueCounter::Count() {
    constexpr std::string_view kCData = "<![CDATA[";
    while (!rest_.empty()) {
        const std::size_t markup = std::min(rest_.find('<'), rest_.size());
        TakeText(rest_.substr(0, markup));
        rest_.remove_prefix(markup);
        if (rest_.starts_with("<!--"))
            SkipTo("-->");
        else if (rest_.starts_with("<?"))
            SkipTo("?>");
        else if (rest_.starts_with(kCData)) {
            TakeText(rest_.substr(kCData.size(), rest_.find("]]>") - kCData.size()));
            SkipTo("]]>");
        } else
            TakeTag();
    }
    return values_;
}

void ValueCounter::TakeText(std::string_view text) {
    values_ += std::all_of(text.begin(), text.end(), IsBlank) ? 0 : 1;
}

/// Every attribute has an equals sign before its value, which is in quotation marks.
void ValueCounter::TakeTag() {
    constexpr std::string_view kDeclaration = "xmlns";
    std::size_t at = 1;
    bool isDeclaration = false;
    for (; at < rest_.size() && rest_[at] != '>'; ++at) {
        if (IsBlank(rest_[at - 1]) && rest_[at] != '=' && !IsBlank(rest_[at]))
            isDeclaration = isDeclaration || rest_.compare(at, kDeclaration.size(), kDeclaration) == 0;
        if (rest_[at] != '"' && rest_[at] != '\'')
            continue;
        values_ += isDeclaration ? 0 : 1;
        isDeclaration = false;
        at = std::min(rest_.find(rest_[at], at + 1), rest_.size());
    }
    rest_.remove_prefix(std::min(at + 1, rest_.size()));
}

void ValueCounter::SkipTo(std::string_view end) {
    const std::size_t at = rest_.find(end);
    rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + end.size());
}

} // namespace

bool TakeElement(const GpxElement& element, const ElementField* begin, const ElementField* end,
                 Properties& properties) {
    const ElementField* const found = std::find_if(
        begin, end, [name = element.GetName()](const ElementField& field) { return field.element == name; });
    if (found == end)
        return false;
    if (!properties.Has(found->field))
        properties.Add(found->field, ValueOf(element, found->kind));
    return true;
}

std::uint64_t CountValues(const GpxElement& element) {
    return ValueCounter(element.GetXml()).Count();
}

bool IsForeign(const GpxElement& child, std::string_view objectNameSpace) {
    return child.GetName() == "extensions" || child.GetNamespace() != objectNameSpace;
}

} // namespace vexagpx
