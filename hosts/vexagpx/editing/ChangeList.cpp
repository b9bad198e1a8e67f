// SPDX-License-Identifier: MIT
#include <vexagpx/editing/ChangeList.h>

#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <unicode/uchar.h>

namespace vexagpx {

namespace {

/// "Track 2: Lake loop".
icu::UnicodeString ObjectText(const Change& change) {
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(std::string(change.object));
    text.setCharAt(0, static_cast<char16_t>(u_toupper(text[0])));
    if (change.number != 0)
        text += u' ' + NumberText(change.number);
    const icu::UnicodeString name = Printable(change.name).trim();
    return name.isEmpty() ? text : text + u" (" + name + u")";
}

void WriteValues(JsonWriter& json, const std::vector<std::string>& values) {
    if (values.empty())
        return;
    json.Key("values");
    json.BeginArray();
    for (const std::string& value : values)
        json.String(value);
    json.EndArray();
}

} // namespace

void ChangeList::Add(Change change) {
    ++count_;
    if (changes_.size() < kMostListed)
        changes_.push_back(std::move(change));
}

void ChangeList::WriteText(Output& out) const {
    for (const Change& change : changes_)
        WriteWhole(out,
                   u"  " + ObjectText(change) + u": " + Printable(icu::UnicodeString::fromUTF8(change.text)),
                   4);
    if (count_ > changes_.size())
        WriteWhole(out, u"  and " + NumberText(count_ - changes_.size()) + u" other changes", 4);
}

void ChangeList::WriteJson(JsonWriter& json) const {
    json.Member("changeCount", count_);
    json.Key("changes");
    json.BeginArray();
    for (const Change& change : changes_) {
        json.BeginObject();
        json.Member("kind", change.kind);
        json.Member("object", change.object);
        if (change.number != 0)
            json.Member("number", change.number);
        if (!change.name.isEmpty())
            json.Member("name", change.name);
        for (const auto& [name, figure] : change.figures)
            json.Member(name, figure);
        for (const auto& [name, text] : change.texts)
            json.Member(name, text);
        for (const auto& [name, flag] : change.flags)
            json.Member(name, flag);
        WriteValues(json, change.values);
        json.EndObject();
    }
    json.EndArray();
}

} // namespace vexagpx
