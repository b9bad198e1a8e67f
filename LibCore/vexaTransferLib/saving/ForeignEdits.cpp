// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/text/ElementNames.h>

#include <string>
#include <utility>

namespace vexaTransferLib::saving {

namespace {

/// The vendor's elements of one object, while they are edited.
class ForeignEditing {
public:
    ForeignEditing(Saving& saving, TextEdits& edits, ElementEdits& parent)
        : saving_(saving), edits_(edits), parent_(parent) {}

    void Remove(const std::function<bool(const ScannedChild&)>& isReplaced) {
        for (const SavedChild& child : parent_.Children()) {
            if (child.kind != NamespaceKind::kGpx)
                RemoveIf(parent_, child, isReplaced);
            else if (child.name == gpx::kExtensions)
                RemoveInner(child, isReplaced);
        }
    }
    void Add(const std::function<void(int depth)>& writeNew) {
        const SavedChild* const extensions = parent_.Find(gpx::kExtensions);
        if (extensions != nullptr && !saving_.Is10())
            AddTo(*extensions, writeNew);
        else if (saving_.Is10())
            parent_.AddLast(saving_.Rendered(parent_.ChildLayout(), 0, [&] { writeNew(0); }));
        else
            AddExtensions(writeNew);
    }

private:
    void RemoveIf(ElementEdits& parent, const SavedChild& child,
                  const std::function<bool(const ScannedChild&)>& isReplaced) {
        if (isReplaced(ScanChild(saving_.Names(), saving_.Source(), child.begin)))
            parent.Remove(child);
    }
    void RemoveInner(const SavedChild& extensions,
                     const std::function<bool(const ScannedChild&)>& isReplaced) {
        ElementEdits inner(saving_, edits_, ElementOf(extensions), {});
        for (const SavedChild& child : inner.Children())
            RemoveIf(inner, child, isReplaced);
    }
    void AddTo(const SavedChild& extensions, const std::function<void(int depth)>& writeNew) {
        ElementEdits inner(saving_, edits_, ElementOf(extensions), {});
        inner.AddLast(saving_.Rendered(inner.ChildLayout(), 0, [&] { writeNew(0); }));
        inner.Finish();
    }
    void AddExtensions(const std::function<void(int depth)>& writeNew) {
        const ElementLayout& layout = parent_.ChildLayout();
        const std::string name = parent_.Qualified(gpx::kExtensions);
        std::string xml = layout.separator + "<" + name + ">";
        xml += saving_.Rendered(layout.Inner(), 0, [&] { writeNew(0); });
        xml += layout.separator + "</" + name + ">";
        parent_.Add(gpx::kExtensions, std::move(xml));
    }
    SavedElement ElementOf(const SavedChild& child) {
        return saving_.ElementAt(saving_.Source().PlaceOf(child.begin));
    }

    Saving& saving_;
    TextEdits& edits_;
    ElementEdits& parent_;
};

} // namespace

void EditForeign(Saving& saving, TextEdits& edits, ElementEdits& parent,
                 const std::function<bool(const ScannedChild&)>& isReplaced,
                 const std::function<void(int depth)>& writeNew) {
    ForeignEditing editing(saving, edits, parent);
    editing.Remove(isReplaced);
    if (writeNew)
        editing.Add(writeNew);
}

void EditText(ElementEdits& parent, std::string_view name, std::string_view content) {
    const SavedChild* const first = parent.Find(name);
    if (content.empty()) {
        for (const SavedChild& child : parent.Children())
            if (first != nullptr && child.kind == first->kind && child.name == name)
                parent.Remove(child);
    } else if (first != nullptr) {
        parent.SetContent(*first, content);
    } else {
        parent.AddText(name, content);
    }
}

} // namespace vexaTransferLib::saving
