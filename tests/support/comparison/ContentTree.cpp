// SPDX-License-Identifier: MIT
#include "support/comparison/ContentTree.h"

#include "support/comparison/NormalValues.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

namespace vexaTransferLib::testing_support {
namespace {

// Takes the start off the text if it is there in any case.
bool TakeStart(std::string_view& text, std::string_view start) {
    if (text.size() < start.size())
        return false;
    for (std::size_t i = 0; i < start.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(text[i])) != start[i])
            return false;
    }
    text.remove_prefix(start.size());
    return true;
}

bool TakeDigits(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(count);
    return count > 0;
}

// A closing brace is doubled, so that no namespace looks like the end of a step.
std::string Braced(std::string_view uri) {
    std::string text = "{";
    for (const char c : uri)
        text.append(c == '}' ? 2 : 1, c);
    return text + "}";
}

} // namespace

bool IsGpxNamespace(std::string_view uri) {
    if (!TakeStart(uri, "http://") && !TakeStart(uri, "https://"))
        return false;
    TakeStart(uri, "www.");
    if (!TakeStart(uri, "topografix.com/gpx/") || !TakeDigits(uri) || !TakeStart(uri, "/") ||
        !TakeDigits(uri))
        return false;
    return uri.empty() || uri == "/";
}

bool IsForeign(const xmlNode* element) {
    const std::string_view uri = NamespaceOf(element);
    return !uri.empty() && !IsGpxNamespace(uri);
}

std::string StepOf(const xmlNode* element, bool belowForeign) {
    const std::string_view uri = NamespaceOf(element);
    const std::string local(ViewOf(element->name));
    if (IsGpxNamespace(uri) || (uri.empty() && !belowForeign))
        return local;
    return Braced(uri) + local;
}

std::string StepOf(const xmlAttr* attribute) {
    const std::string_view uri = NamespaceOf(attribute);
    return "@" + (uri.empty() ? "" : Braced(uri)) + std::string(ViewOf(attribute->name));
}

std::string TextOf(const xmlNode* node) {
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE)
        return std::string(ViewOf(node->content));
    if (node->type == XML_ENTITY_REF_NODE)
        return "&" + std::string(ViewOf(node->name)) + ";";
    return {};
}

void AddFact(GpxObject& object, std::string_view path, std::string_view value) {
    object.facts.append(path).append(1, '\0').append(value).append(1, '\0');
}

std::string NormalValue(FieldForm form, std::string_view text) {
    switch (form) {
    case FieldForm::kNumber:
        return NormalNumber(text);
    case FieldForm::kTime:
        return NormalTime(text);
    case FieldForm::kBounds:
        return TrimmedXml(text).empty() ? "" : std::string(text);
    default:
        return std::string(text);
    }
}

void ContentTree::Add(xmlNode* element, const std::string& path, const std::string& valuePath,
                      FieldForm form) {
    top_ = path_ = path;
    Enter(element, "");
    AddAttributes(element, form);
    while (!levels_.empty()) {
        Level& level = levels_.back();
        xmlNode* child = std::exchange(level.next, level.next == nullptr ? nullptr : level.next->next);
        if (child != nullptr && child->type == XML_ELEMENT_NODE) {
            AddChild(child);
        } else if (child != nullptr) {
            level.text += TextOf(child);
        } else {
            if (level.children == 0)
                AddFact(object_, levels_.size() == 1 ? valuePath : path_,
                        levels_.size() == 1 ? NormalValue(form, level.text) : level.text);
            else
                EndText(level);
            Leave();
        }
    }
}

void ContentTree::AddChild(xmlNode* child) {
    Level& level = levels_.back();
    EndText(level);
    ++level.children;
    std::string step = StepOf(child, level.foreign);
    if (level.firstStep.empty())
        level.firstStep = step;
    level.mixed = level.mixed || step != level.firstStep;
    level.steps.append(level.steps.empty() ? "" : " ").append(step);
    Enter(child, level.counter.Indexed(std::move(step)));
    AddAttributes(child, FieldForm::kText);
}

void ContentTree::Enter(xmlNode* element, const std::string& step) {
    constexpr std::size_t kLevelsInOnePath = 64;
    Level level;
    level.element = element;
    level.next = element->children;
    level.foreign = IsForeign(element) || (!levels_.empty() && levels_.back().foreign);
    level.lengthBefore = path_.size();
    if (!levels_.empty()) {
        if (levels_.size() % kLevelsInOnePath == 0) {
            level.pathBefore = path_;
            path_ = top_ + "/" + deepPaths_.NameOf(path_);
        }
        path_.append("/").append(step);
    }
    levels_.push_back(std::move(level));
}

void ContentTree::Leave() {
    Level& level = levels_.back();
    if (level.foreign && level.mixed)
        AddFact(object_, std::string(kOrderOf) + path_, level.steps);
    if (!level.pathBefore.empty())
        path_ = std::move(level.pathBefore);
    else
        path_.resize(level.lengthBefore);
    levels_.pop_back();
}

void ContentTree::AddAttributes(const xmlNode* element, FieldForm form) {
    static const std::set<std::string_view> kLimits = {"@minlat", "@minlon", "@maxlat", "@maxlon"};
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        const std::string step = StepOf(attribute);
        const bool number = form == FieldForm::kBounds && kLimits.contains(step);
        AddFact(object_, path_ + "/" + step, number ? NormalNumber(ValueOf(attribute)) : ValueOf(attribute));
    }
}

// White space beside child elements is layout. The number of elements before a text says where it is.
void ContentTree::EndText(Level& level) {
    if (!TrimmedXml(level.text).empty())
        AddFact(object_, path_ + "/text()[" + std::to_string(level.children) + "]", level.text);
    level.text.clear();
}

} // namespace vexaTransferLib::testing_support
