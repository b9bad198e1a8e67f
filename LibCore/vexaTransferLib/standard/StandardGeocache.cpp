// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/GeocacheFields.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexaTransferLib::standard {

namespace {

using Cache = GpxGroundspeakCache;
using Log = GpxGroundspeakCacheLog;
using Place = PieceOutput::Place;

/// Writes the elements of a geocache in the prefix that its element has, or in the usual one.
class CacheWriter {
public:
    CacheWriter(Writing& writing, const Cache& cache, int depth)
        : writing_(writing), cache_(cache), depth_(depth), element_(writing.ElementOf(cache.element)) {
        if (element_.source != nullptr) {
            prefix_ = element_.child.prefix;
            uri_ = writing.NamesOf(*element_.source)
                       .UriOf(prefix_, element_.source->PlaceOf(element_.child.begin));
            complete::ReadGeocache(writing.ContextOf(*element_.source), element_.child, read_);
        }
    }

    void Write() {
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_);
        const std::string name = Qualified(groundspeak::kCache);
        out.AppendAll("<", name, Declaration(prefix_, uri_));
        if (element_.source != nullptr)
            CopyAttributes(
                writing_, element_, [](std::string_view) { return false; }, prefix_);
        out.Append(">");
        writing_.SetDeclared(prefix_, uri_);
        WriteChildren();
        writing_.ForgetDeclared();
        writing_.StartLine(depth_);
        out.AppendAll("</", name, ">");
    }

private:
    std::string Qualified(const text::ElementName& name) const {
        return prefix_.empty() ? std::string(name.Local())
                               : std::string(prefix_) + ':' + std::string(name.Local());
    }
    // What the model has no member for stays where it is among its neighbours.
    void WriteChildren() {
        std::size_t next = 0;
        bool hasLogs = false;
        bool hasBugs = false;
        for (const SourceElement& child : writing_.ChildrenOf(element_)) {
            const std::size_t field = FieldOf(child);
            if (field != std::size(kCacheFields)) {
                for (; next < field; ++next)
                    WriteMissing(next);
                WriteField(field, child, next == field);
                next = std::max(next, field + 1);
            } else if (IsNamed(child, groundspeak::kLogs)) {
                hasLogs = true;
                WriteRest(next);
                WriteLogs(child);
            } else if (IsNamed(child, groundspeak::kTravelbugs)) {
                hasBugs = true;
                WriteRest(next);
                WriteBugs(child);
            } else {
                Copy(child, depth_ + 1);
            }
        }
        WriteRest(next);
        if (!hasLogs && !cache_.logs.empty())
            WriteLogs({});
        if (!hasBugs && !cache_.travelbugs.empty())
            WriteBugs({});
    }
    static bool IsNamed(const SourceElement& child, const text::ElementName& name) {
        return child.child.Is(NamespaceKind::kGroundspeak, name.Local());
    }
    static std::size_t FieldOf(const SourceElement& child) {
        std::size_t field = 0;
        while (field < std::size(kCacheFields) && !IsNamed(child, kCacheFields[field].name))
            ++field;
        return field;
    }
    void WriteRest(std::size_t& next) {
        for (; next < std::size(kCacheFields); ++next)
            WriteMissing(next);
    }
    // A field that the element may have later is written then.
    void WriteMissing(std::size_t field) {
        if ((read_.*kCacheFields[field].field).isEmpty())
            WriteText(kCacheFields[field].name, {}, cache_.*kCacheFields[field].field, depth_ + 1);
    }
    void WriteField(std::size_t field, const SourceElement& child, bool isFirst) {
        const icu::UnicodeString& now = cache_.*kCacheFields[field].field;
        if (!isFirst || now == read_.*kCacheFields[field].field)
            Copy(child, depth_ + 1);
        else
            WriteText(kCacheFields[field].name, child, now, depth_ + 1);
    }
    void Copy(const SourceElement& child, int depth) {
        writing_.StartLine(depth);
        CopyElement(writing_, child);
    }
    // An empty text is left out.
    void WriteText(const text::ElementName& name, const SourceElement& old, const icu::UnicodeString& text,
                   int depth) {
        if (text.isEmpty())
            return;
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth);
        out.AppendAll("<", Qualified(name));
        if (old.source != nullptr)
            CopyAttributes(writing_, old, [](std::string_view) { return false; });
        out.Append(">");
        out.AppendEscaped(text, Place::kContent);
        out.AppendAll("</", Qualified(name), ">");
    }

    void WriteLogs(const SourceElement& list) {
        writing_.StartLine(depth_ + 1);
        writing_.Out().AppendAll("<", Qualified(groundspeak::kLogs), ">");
        for (const Log& log : cache_.logs)
            WriteLog(log);
        CopyOthers(list, groundspeak::kLog);
        writing_.StartLine(depth_ + 1);
        writing_.Out().AppendAll("</", Qualified(groundspeak::kLogs), ">");
    }
    void CopyOthers(const SourceElement& list, const text::ElementName& name) {
        for (const SourceElement& child : writing_.ChildrenOf(list))
            if (!IsNamed(child, name))
                Copy(child, depth_ + 2);
    }
    // The log as its element has it, or an empty one. Those that were read are in the order of their places.
    Log ReadAgain(const Log& log) const {
        const std::uint64_t place = GpxModelAccess::GetPlace(log.element);
        const auto found = std::partition_point(read_.logs.begin(), read_.logs.end(), [&](const Log& read) {
            return GpxModelAccess::GetPlace(read.element) < place;
        });
        return found != read_.logs.end() && log.element && found->element == log.element ? *found : Log();
    }
    void WriteLog(const Log& log) {
        const Log read = ReadAgain(log);
        const SourceElement element = writing_.ElementOf(read.element);
        if (element.source != nullptr && log == read) {
            Copy(element, depth_ + 2);
            return;
        }
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_ + 2);
        out.AppendAll("<", Qualified(groundspeak::kLog));
        const bool isSameId = element.source != nullptr && log.id == read.id;
        if (!isSameId && log.id != 0) {
            out.AppendAll(" ", groundspeak::kId, "=\"");
            out.AppendInteger(log.id);
            out.Append("\"");
        }
        if (element.source != nullptr)
            CopyAttributes(writing_, element,
                           [&](std::string_view name) { return !isSameId && name == groundspeak::kId; });
        out.Append(">");
        WriteLogFields(log, read, element);
        writing_.StartLine(depth_ + 2);
        out.AppendAll("</", Qualified(groundspeak::kLog), ">");
    }
    void WriteLogFields(const Log& log, const Log& read, const SourceElement& element) {
        const SourceElements children = writing_.ChildrenOf(element);
        for (const GeocacheField<Log>& field : kLogFields) {
            const auto old = std::find_if(children.begin(), children.end(), [&](const SourceElement& child) {
                return IsNamed(child, field.name);
            });
            if (old != children.end() && log.*field.field == read.*field.field)
                Copy(*old, depth_ + 3);
            else
                WriteText(field.name, old != children.end() ? *old : SourceElement(), log.*field.field,
                          depth_ + 3);
        }
        for (const SourceElement& child : children)
            if (std::none_of(std::begin(kLogFields), std::end(kLogFields),
                             [&](const GeocacheField<Log>& field) { return IsNamed(child, field.name); }))
                Copy(child, depth_ + 3);
    }

    void WriteBugs(const SourceElement& list) {
        if (list.source != nullptr && cache_.travelbugs == read_.travelbugs) {
            Copy(list, depth_ + 1);
            return;
        }
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_ + 1);
        out.AppendAll("<", Qualified(groundspeak::kTravelbugs), ">");
        for (const icu::UnicodeString& bug : cache_.travelbugs) {
            writing_.StartLine(depth_ + 2);
            out.AppendAll("<", Qualified(groundspeak::kTravelbug), "><", Qualified(groundspeak::kName), ">");
            out.AppendEscaped(bug, Place::kContent);
            out.AppendAll("</", Qualified(groundspeak::kName), "></", Qualified(groundspeak::kTravelbug),
                          ">");
        }
        writing_.StartLine(depth_ + 1);
        out.AppendAll("</", Qualified(groundspeak::kTravelbugs), ">");
    }

    Writing& writing_;
    const Cache& cache_;
    int depth_;
    SourceElement element_;
    std::string_view prefix_ = "groundspeak";
    std::string_view uri_ = text::kGroundspeak10Uri;
    /// What the element says.
    Cache read_;
};

} // namespace

void WriteGeocache(Writing& writing, const GpxGroundspeakCache& cache, int depth) {
    CacheWriter(writing, cache, depth).Write();
}

} // namespace vexaTransferLib::standard
