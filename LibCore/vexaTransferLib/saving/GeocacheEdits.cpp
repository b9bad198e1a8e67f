// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/GeocacheFields.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Cache = GpxGroundspeakCache;
using Log = GpxGroundspeakCacheLog;
using Place = standard::PieceOutput::Place;

constexpr NamespaceKind kKind = NamespaceKind::kGroundspeak;

// In the order of the schemas.
constexpr std::string_view kCacheOrder[] = {groundspeak::kName.Local(),
                                            groundspeak::kPlacedBy.Local(),
                                            groundspeak::kOwner.Local(),
                                            groundspeak::kType.Local(),
                                            groundspeak::kContainer.Local(),
                                            groundspeak::kAttributes.Local(),
                                            groundspeak::kDifficulty.Local(),
                                            groundspeak::kTerrain.Local(),
                                            groundspeak::kCountry.Local(),
                                            groundspeak::kState.Local(),
                                            groundspeak::kShortDescription.Local(),
                                            groundspeak::kLongDescription.Local(),
                                            groundspeak::kEncodedHints.Local(),
                                            groundspeak::kLogs.Local(),
                                            groundspeak::kTravelbugs.Local()};
constexpr std::string_view kLogOrder[] = {groundspeak::kDate.Local(), groundspeak::kType.Local(),
                                          groundspeak::kFinder.Local(), groundspeak::kText.Local()};

std::string ContentOf(Saving& saving, const icu::UnicodeString& text) {
    return saving.Escaped(text, Place::kContent);
}

/// The logs of one geocache.
class SavedLogs final : public SavedList {
public:
    SavedLogs(Saving& saving, const SavedElement& parent, const Cache& cache, const Cache& read)
        : saving_(saving), parent_(parent), cache_(cache), read_(read) {}

    std::size_t Count() const override { return cache_.logs.size(); }
    const SourceText* SourceOf(std::size_t index) const override {
        return Access::GetSource(cache_.logs[index].element);
    }
    std::uint64_t PlaceOf(std::size_t index) const override {
        return Access::GetPlace(cache_.logs[index].element);
    }
    bool IsChanged(std::size_t index) const override {
        return index >= read_.logs.size() || cache_.logs[index] != read_.logs[index] ||
               cache_.logs[index].element != read_.logs[index].element;
    }
    void Edit(std::size_t index, const SavedElement& element, TextEdits& edits) override {
        const Log& log = cache_.logs[index];
        const Log read = ReadAgain(saving_.ForWriting(element));
        ElementEdits parts(saving_, edits, element, kLogOrder, kKind);
        if (log.id != read.id && log.id != 0)
            parts.SetAttribute(element.child.tag, groundspeak::kId, std::to_string(log.id));
        else if (log.id != read.id)
            parts.RemoveAttribute(element.child.tag, groundspeak::kId);
        for (const auto& field : standard::kLogFields)
            if (log.*field.field != read.*field.field)
                EditText(parts, field.name.Local(), ContentOf(saving_, log.*field.field));
        parts.Finish();
    }
    std::string Render(std::size_t index, const ElementLayout& layout) override {
        return RenderObject(
            saving_, parent_, SourceOf(index), PlaceOf(index), layout, 0,
            [&](const SavedElement& element, TextEdits& edits) { Edit(index, element, edits); },
            [&] { Write(cache_.logs[index]); });
    }

private:
    Log ReadAgain(const standard::SourceElement& element) {
        Cache cache;
        complete::ReadLog(saving_.Writing().ContextOf(*element.source), element.child, cache);
        return cache.logs.front();
    }
    // A log of another file is copied as it is, if it is as it was read.
    void Write(const Log& log) {
        standard::Writing& writing = saving_.Writing();
        const standard::SourceElement element = writing.ElementOf(log.element);
        writing.StartLine(0);
        if (element.source != nullptr && ReadAgain(element) == log)
            standard::CopyElement(writing, element);
        else
            WriteFields(log);
    }
    void WriteFields(const Log& log) {
        standard::PieceOutput& out = saving_.Writing().Out();
        out.AppendAll("<", Qualified(groundspeak::kLog));
        if (log.id != 0)
            out.AppendAll(" ", groundspeak::kId, "=\"", std::to_string(log.id), "\"");
        out.Append(">");
        for (const auto& field : standard::kLogFields) {
            if ((log.*field.field).isEmpty())
                continue;
            saving_.Writing().StartLine(1);
            out.AppendAll("<", Qualified(field.name), ">");
            out.AppendEscaped(log.*field.field, Place::kContent);
            out.AppendAll("</", Qualified(field.name), ">");
        }
        saving_.Writing().StartLine(0);
        out.AppendAll("</", Qualified(groundspeak::kLog), ">");
    }
    std::string Qualified(const text::ElementName& name) const {
        return QualifiedBelow(parent_, name.Local());
    }

    Saving& saving_;
    const SavedElement& parent_;
    const Cache& cache_;
    const Cache& read_;
};

std::string TravelBug(Saving& saving, const ElementEdits& list, const icu::UnicodeString& name,
                      const ElementLayout& layout) {
    const std::string bug = list.Qualified(groundspeak::kTravelbug.Local());
    const std::string inner = list.Qualified(groundspeak::kName.Local());
    return layout.separator + "<" + bug + "><" + inner + ">" + ContentOf(saving, name) + "</" + inner +
           "></" + bug + ">";
}

/// The travel bugs of one geocache. The model has only their names, by which their elements are found again.
class SavedTravelBugs final : public SavedList {
public:
    SavedTravelBugs(Saving& saving, ElementEdits& list, const std::vector<icu::UnicodeString>& names)
        : saving_(saving), list_(list), names_(names), places_(names.size()) {
        std::multimap<icu::UnicodeString, std::uint64_t> byName;
        for (const SavedChild& child : list.Children()) {
            if (!child.Is(kKind, groundspeak::kTravelbug.Local()))
                continue;
            const std::uint64_t place = saving.Source().PlaceOf(child.begin);
            const GpxElement element = Access::MakeElement(&saving.Source(), place);
            const icu::UnicodeString name = NameOf(element);
            if (name.isEmpty())
                unnamed_.push_back(element);
            else
                byName.emplace(name, place);
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto found = byName.find(names[i]);
            if (found == byName.end())
                continue;
            places_[i] = found->second;
            byName.erase(found);
        }
    }

    const std::vector<GpxElement>& Unnamed() const { return unnamed_; }
    std::size_t Count() const override { return names_.size(); }
    const SourceText* SourceOf(std::size_t index) const override {
        return places_[index] != 0 ? &saving_.Source() : nullptr;
    }
    std::uint64_t PlaceOf(std::size_t index) const override { return places_[index]; }
    bool IsChanged(std::size_t) const override { return false; }
    void Edit(std::size_t, const SavedElement&, TextEdits&) override {}
    std::string Render(std::size_t index, const ElementLayout& layout) override {
        if (SourceOf(index) != nullptr)
            return MovedText(saving_, places_[index], layout, [](const SavedElement&, TextEdits&) {});
        return TravelBug(saving_, list_, names_[index], layout);
    }

private:
    // The first text of a name that is not empty, as it is read.
    static icu::UnicodeString NameOf(const GpxElement& bug) {
        for (const GpxElement& child : bug.GetChildren()) {
            icu::UnicodeString name;
            if (IsGroundspeakElement(child, groundspeak::kName))
                name = child.GetText();
            if (!name.isEmpty())
                return name;
        }
        return {};
    }

    Saving& saving_;
    const ElementEdits& list_;
    const std::vector<icu::UnicodeString>& names_;
    /// 0 for a name without an element.
    std::vector<std::uint64_t> places_;
    std::vector<GpxElement> unnamed_;
};

/// One geocache, while its element is edited.
class GeocacheEditing {
public:
    GeocacheEditing(Saving& saving, TextEdits& edits, const Cache& cache, const Cache& read)
        : saving_(saving), edits_(edits), cache_(cache), read_(read),
          parent_(saving, edits, saving.ElementAt(Access::GetPlace(read.element)), kCacheOrder, kKind) {}

    void Edit() {
        for (const auto& field : standard::kCacheFields)
            if (cache_.*field.field != read_.*field.field)
                EditText(parent_, field.name.Local(), ContentOf(saving_, cache_.*field.field));
        if (cache_.logs != read_.logs || !HasSameElements())
            EditLogs();
        if (cache_.travelbugs != read_.travelbugs)
            EditTravelBugs();
        parent_.Finish();
    }

private:
    bool HasSameElements() const {
        for (std::size_t i = 0; i < cache_.logs.size(); ++i)
            if (cache_.logs[i].element != read_.logs[i].element)
                return false;
        return true;
    }
    // Adds a list that is not there yet, empty, and edits what is in it.
    void EditLogs() {
        const SavedChild* const logs = parent_.Find(groundspeak::kLogs.Local());
        if (logs == nullptr) {
            AddLogs();
            return;
        }
        const SavedElement element = saving_.ElementAt(saving_.Source().PlaceOf(logs->begin));
        ElementEdits list(saving_, edits_, element, {}, kKind);
        SavedLogs saved(saving_, element, cache_, read_);
        SaveList(saving_, edits_, list, {groundspeak::kLog.Local(), read_.logs.size(), nullptr, kKind},
                 saved);
        list.Finish();
    }
    void AddLogs() {
        const ElementLayout& layout = parent_.ChildLayout();
        SavedLogs saved(saving_, parent_.Element(), cache_, read_);
        const std::string name = parent_.Qualified(groundspeak::kLogs.Local());
        std::string xml = layout.separator + "<" + name + ">";
        for (std::size_t i = 0; i < cache_.logs.size(); ++i)
            xml += saved.Render(i, layout.Inner());
        parent_.Add(groundspeak::kLogs.Local(), xml + layout.separator + "</" + name + ">");
    }
    void EditTravelBugs() {
        const SavedChild* const bugs = parent_.Find(groundspeak::kTravelbugs.Local());
        if (bugs == nullptr) {
            AddTravelBugs();
            return;
        }
        const SavedElement element = saving_.ElementAt(saving_.Source().PlaceOf(bugs->begin));
        ElementEdits list(saving_, edits_, element, {}, kKind);
        SavedTravelBugs saved(saving_, list, cache_.travelbugs);
        const std::vector<GpxElement> unnamed = saved.Unnamed();
        SaveList(saving_, edits_, list,
                 {groundspeak::kTravelbug.Local(), read_.travelbugs.size(), &unnamed, kKind}, saved);
        list.Finish();
    }
    void AddTravelBugs() {
        const ElementLayout& layout = parent_.ChildLayout();
        const std::string name = parent_.Qualified(groundspeak::kTravelbugs.Local());
        std::string xml = layout.separator + "<" + name + ">";
        for (const icu::UnicodeString& bug : cache_.travelbugs)
            xml += TravelBug(saving_, parent_, bug, layout.Inner());
        parent_.Add(groundspeak::kTravelbugs.Local(), xml + layout.separator + "</" + name + ">");
    }

    Saving& saving_;
    TextEdits& edits_;
    const Cache& cache_;
    const Cache& read_;
    ElementEdits parent_;
};

} // namespace

void EditGeocache(Saving& saving, TextEdits& edits, const Cache& cache, const Cache& read) {
    GeocacheEditing(saving, edits, cache, read).Edit();
}

} // namespace vexaTransferLib::saving
