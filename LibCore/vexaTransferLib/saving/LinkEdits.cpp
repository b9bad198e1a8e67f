// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Place = standard::PieceOutput::Place;

constexpr std::string_view kParts[] = {gpx::kText, gpx::kType};

/// The link of one object, while it is edited.
class LinkEditing {
public:
    LinkEditing(Saving& saving, TextEdits& edits, ElementEdits& parent)
        : saving_(saving), edits_(edits), parent_(parent) {}

    void Change(const SavedChild& element, const GpxUrl& link, const GpxUrl& read) {
        if (element.name == gpx::kLink)
            ChangeLink(element, link, read);
        else
            ChangeAddress(element, link, read);
    }
    void Remove(const SavedChild& element) {
        parent_.Remove(element);
        if (element.name != gpx::kLink)
            EditText(parent_, gpx::kUrlname, {});
    }
    void Add(const GpxUrl& link) {
        if (saving_.Is10()) {
            parent_.AddText(gpx::kUrl, Content(Access::GetUrl(link)));
            if (!Access::GetText(link).isEmpty())
                EditText(parent_, gpx::kUrlname, Content(Access::GetText(link)));
            ReportType(link);
            return;
        }
        const std::string name = parent_.Qualified(gpx::kLink);
        std::string xml = parent_.ChildLayout().separator;
        xml.append("<").append(name).append(" ").append(gpx::kHref).append("=\"");
        xml.append(saving_.Escaped(Access::GetUrl(link), Place::kAttribute)).append("\">");
        xml.append(Part(gpx::kText, Access::GetText(link))).append(Part(gpx::kType, Access::GetType(link)));
        xml.append("</").append(name).append(">");
        parent_.Add(gpx::kLink, std::move(xml));
    }

private:
    void ChangeLink(const SavedChild& element, const GpxUrl& link, const GpxUrl& read) {
        const SavedElement child = saving_.ElementAt(saving_.Source().PlaceOf(element.begin));
        ElementEdits parts(saving_, edits_, child, kParts);
        if (Access::GetUrl(link) != Access::GetUrl(read))
            parts.SetAttribute(child.child.tag, gpx::kHref,
                               saving_.Escaped(Access::GetUrl(link), Place::kAttribute));
        if (Access::GetText(link) != Access::GetText(read))
            EditText(parts, gpx::kText, Content(Access::GetText(link)));
        if (Access::GetType(link) != Access::GetType(read))
            EditText(parts, gpx::kType, Content(Access::GetType(link)));
        parts.Finish();
    }
    // `url` and `urlname`, which has no place for a type.
    void ChangeAddress(const SavedChild& element, const GpxUrl& link, const GpxUrl& read) {
        if (Access::GetUrl(link) != Access::GetUrl(read))
            parent_.SetContent(element, Content(Access::GetUrl(link)));
        if (Access::GetText(link) != Access::GetText(read))
            EditText(parent_, gpx::kUrlname, Content(Access::GetText(link)));
        ReportType(link);
    }
    void ReportType(const GpxUrl& link) {
        if (!Access::GetType(link).isEmpty())
            saving_.Writing().ReportUnwritten(gpx::kType, "GPX 1.0 has no place for the type of a link.");
    }
    std::string Content(const icu::UnicodeString& text) { return saving_.Escaped(text, Place::kContent); }
    std::string Part(std::string_view name, const icu::UnicodeString& text) {
        if (text.isEmpty())
            return {};
        const std::string qualified = parent_.Qualified(name);
        return "<" + qualified + ">" + Content(text) + "</" + qualified + ">";
    }

    Saving& saving_;
    TextEdits& edits_;
    ElementEdits& parent_;
};

} // namespace

void EditLink(Saving& saving, TextEdits& edits, ElementEdits& parent, const GpxUrl* link,
              const GpxUrl* read) {
    LinkEditing editing(saving, edits, parent);
    if (read == nullptr) {
        editing.Add(*link);
        return;
    }
    const char* const begin = saving.Source().At(Access::GetPlace(read->GetElement()));
    for (const SavedChild& child : parent.Children()) {
        if (child.begin != begin)
            continue;
        if (link != nullptr)
            editing.Change(child, *link, *read);
        else
            editing.Remove(child);
    }
}

} // namespace vexaTransferLib::saving
