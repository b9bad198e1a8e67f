// SPDX-License-Identifier: MIT
#include <vexagpx/report/Duplicates.h>

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

namespace vexagpx {

void Duplicates::Add(const IndexEntry& entry) {
    if (entry.content.empty())
        return;
    const auto [found, isNew] = byContent_.try_emplace(entry.content, groups_.size());
    if (isNew)
        groups_.push_back({entry.content, {}});
    groups_[found->second].sources.push_back({entry.file, entry.entry});
}

void Duplicates::WriteText(Output& out) const {
    std::size_t count = 0;
    for (const Group& group : groups_) {
        if (group.sources.size() < 2)
            continue;
        out.Write(count++ == 0 ? "" : "\n");
        out.Write(Counted(group.sources.size(), "document") + " with equal content\n");
        for (const Source& source : group.sources)
            WriteWhole(out,
                       u"  " + Printable(icu::UnicodeString::fromUTF8(
                                   source.entry.empty() ? source.file : source.file + ": " + source.entry)),
                       4);
    }
    if (count == 0)
        out.Write("No documents have equal content.\n");
}

void Duplicates::WriteJson(Output& out) const {
    for (const Group& group : groups_) {
        if (group.sources.size() < 2)
            continue;
        JsonWriter json(out);
        json.BeginObject();
        json.Member("content", group.content);
        json.Key("duplicates");
        json.BeginArray();
        for (const Source& source : group.sources) {
            json.BeginObject();
            json.Member("file", source.file);
            if (!source.entry.empty())
                json.Member("entry", source.entry);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
        out.Write("\n");
    }
}

} // namespace vexagpx
