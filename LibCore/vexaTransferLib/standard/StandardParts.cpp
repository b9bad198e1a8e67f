// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;
using Place = PieceOutput::Place;

constexpr std::string_view kGpx10Uri = "http://www.topografix.com/GPX/1/0";
constexpr std::string_view kGpx10Declaration = " xmlns=\"http://www.topografix.com/GPX/1/0\"";

icu::UnicodeString AttributeOf(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return DecodedValue(attribute.value);
    return {};
}

/// One link of an object: a `link`, or a `url` and a `urlname`.
struct LinkElements {
    const SourceElement* link = nullptr;
    const SourceElement* url = nullptr;
    const SourceElement* name = nullptr;

    icu::UnicodeString Address() const {
        if (link != nullptr)
            return AttributeOf(link->child.tag, gpx::kHref);
        return url != nullptr ? ContentText(url->child.begin) : icu::UnicodeString();
    }
};

std::vector<LinkElements> LinksIn(const SourceElements& elements) {
    std::vector<LinkElements> links;
    const auto withRoomFor = [&](const SourceElement* LinkElements::*part) -> LinkElements& {
        if (links.empty() || links.back().link != nullptr || links.back().*part != nullptr)
            links.emplace_back();
        return links.back();
    };
    for (const SourceElement& element : elements) {
        if (element.child.IsGpx(gpx::kLink))
            links.push_back({&element, nullptr, nullptr});
        else if (element.child.IsGpx(gpx::kUrl))
            withRoomFor(&LinkElements::url).url = &element;
        else if (element.child.IsGpx(gpx::kUrlname))
            withRoomFor(&LinkElements::name).name = &element;
    }
    return links;
}

/// The links of an object, while they are written.
class LinkWriter {
public:
    LinkWriter(Writing& writing, const SourceElements& elements, int depth)
        : writing_(writing), links_(LinksIn(elements)), depth_(depth) {
        while (models_ < links_.size() && links_[models_].Address().isEmpty())
            ++models_;
        hasModels_ = models_ < links_.size();
        if (!hasModels_)
            models_ = 0;
    }

    void WriteAsRead() {
        for (std::size_t i = 0; i < links_.size(); ++i)
            Copy(links_[i], i == models_);
    }
    // The model's link takes the place of the one that was read.
    void WriteModels(const GpxUrl* link) {
        if (!hasModels_)
            WriteIfAny(link);
        for (std::size_t i = 0; i < links_.size(); ++i) {
            if (hasModels_ && i == models_)
                WriteIfAny(link);
            else
                Copy(links_[i], false);
        }
    }

private:
    void WriteIfAny(const GpxUrl* link) {
        if (link != nullptr)
            Write(Access::GetUrl(*link), Access::GetText(*link), Access::GetType(*link));
    }
    void Copy(const LinkElements& link, bool isTheLink) {
        if (writing_.Is10())
            Copy10(link, isTheLink);
        else if (link.link != nullptr)
            CopyPart(link.link);
        else if (link.url != nullptr)
            Write(link.Address(), TextOf(link.name), {});
        else
            writing_.ReportUnwritten(gpx::kUrlname,
                                     "GPX 1.1 has no place for the name of a link without its address.");
    }
    void Copy10(const LinkElements& link, bool isTheLink) {
        if (!isTheLink) {
            writing_.ReportUnwritten(gpx::kLink, "GPX 1.0 has a place for one link only.");
        } else if (link.link != nullptr) {
            WriteLink10(*link.link);
        } else {
            CopyPart(link.url);
            CopyPart(link.name);
        }
    }
    void CopyPart(const SourceElement* element) {
        if (element == nullptr)
            return;
        writing_.StartLine(depth_);
        CopyElement(writing_, *element);
    }
    static icu::UnicodeString TextOf(const SourceElement* element) {
        return element != nullptr ? ContentText(element->child.begin) : icu::UnicodeString();
    }
    void WriteLink10(const SourceElement& element) {
        icu::UnicodeString text;
        icu::UnicodeString type;
        for (const SourceElement& part : writing_.ChildrenOf(element)) {
            if (part.child.IsGpx(gpx::kText) && text.isEmpty())
                text = TextOf(&part);
            else if (part.child.IsGpx(gpx::kType) && type.isEmpty())
                type = TextOf(&part);
        }
        Write(AttributeOf(element.child.tag, gpx::kHref), text, type);
    }

    void Write(const icu::UnicodeString& address, const icu::UnicodeString& text,
               const icu::UnicodeString& type) {
        if (writing_.Is10()) {
            WriteTextElement(writing_, gpx::kUrl, address, depth_);
            if (!text.isEmpty())
                WriteTextElement(writing_, gpx::kUrlname, text, depth_);
            if (!type.isEmpty())
                writing_.ReportUnwritten(gpx::kType, "GPX 1.0 has no place for the type of a link.");
            return;
        }
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_);
        out.AppendAll("<", gpx::kLink, " ", gpx::kHref, "=\"");
        out.AppendEscaped(address, Place::kAttribute);
        out.Append("\">");
        WritePart(gpx::kText, text);
        WritePart(gpx::kType, type);
        out.AppendAll("</", gpx::kLink, ">");
    }
    void WritePart(std::string_view name, const icu::UnicodeString& text) {
        if (text.isEmpty())
            return;
        writing_.Out().AppendAll("<", name, ">");
        writing_.Out().AppendEscaped(text, Place::kContent);
        writing_.Out().AppendAll("</", name, ">");
    }

    Writing& writing_;
    std::vector<LinkElements> links_;
    int depth_;
    /// The one that the model has, or the first.
    std::size_t models_ = 0;
    bool hasModels_ = false;
};

// The elements in `extensions` and beside it that are written, one for each line.
template <class Visit>
void ForEachKept(Writing& writing, const ForeignParts& parts, Visit visit) {
    for (const SourceElement& extensions : parts.extensions)
        for (const SourceElement& child : writing.ChildrenOf(extensions))
            if (!parts.isReplaced(child.child))
                visit(child);
    for (const SourceElement& child : parts.direct)
        if (!parts.isReplaced(child.child))
            visit(child);
}

bool IsAnyReplaced(Writing& writing, const ForeignParts& parts) {
    for (const SourceElement& extensions : parts.extensions)
        for (const SourceElement& child : writing.ChildrenOf(extensions))
            if (parts.isReplaced(child.child))
                return true;
    return false;
}

// An element that only GPX 1.0 has, a number, becomes one of another format.
void CopyOther(Writing& writing, const SourceElement& element) {
    PieceOutput& out = writing.Out();
    out.AppendAll("<", element.child.name, kGpx10Declaration);
    CopyAttributes(writing, element, [](std::string_view) { return false; });
    if (element.child.tag.isEmpty) {
        out.Append("/>");
        return;
    }
    out.Append(">");
    const ScannedLeaf leaf = ScanLeaf(element.child.tag, element.child.begin);
    if (leaf.isSimple)
        out.Append(leaf.text);
    else
        out.AppendEscaped(ContentText(element.child.begin), Place::kContent);
    out.AppendAll("</", element.child.name, ">");
}

// GPX 1.1 allows elements of GPX 1.0 in `extensions`, because they are in another namespace than its own.
bool BecomesExtension(Writing& writing, const SourceElement& element) {
    if (writing.Is10())
        return false;
    const std::uint64_t place = element.source->PlaceOf(element.child.begin);
    return IsOnlyIn10(element.child) ||
           writing.NamesOf(*element.source).UriOf(element.child.prefix, place) == kGpx10Uri;
}

void WriteExtensions(Writing& writing, const ForeignParts& parts, int depth) {
    PieceOutput& out = writing.Out();
    bool isOpen = false;
    const auto open = [&] {
        if (!isOpen) {
            writing.StartLine(depth);
            out.AppendAll("<", gpx::kExtensions, ">");
        }
        isOpen = true;
    };
    ForEachKept(writing, parts, [&](const SourceElement& child) {
        open();
        writing.StartLine(depth + 1);
        CopyForeign(writing, child);
    });
    for (const SourceElement& child : parts.other) {
        if (!BecomesExtension(writing, child))
            continue;
        open();
        writing.StartLine(depth + 1);
        if (IsOnlyIn10(child.child))
            CopyOther(writing, child);
        else
            CopyIn10(writing, child);
    }
    if (parts.writeNew) {
        open();
        parts.writeNew(depth + 1);
    }
    if (!isOpen)
        return;
    writing.StartLine(depth);
    out.AppendAll("</", gpx::kExtensions, ">");
}

// Elements of GPX in `extensions` would mean something else directly in the object: they stay in `extensions`, which
// GPX 1.0 does not have, as GPX 1.1 does not have them there.
void WriteForeign10(Writing& writing, const ForeignParts& parts, int depth) {
    SourceElements inner;
    ForEachKept(writing, parts, [&](const SourceElement& child) {
        if (child.child.kind == NamespaceKind::kGpx) {
            inner.push_back(child);
            return;
        }
        writing.StartLine(depth);
        CopyForeign(writing, child);
    });
    if (parts.writeNew)
        parts.writeNew(depth);
    if (inner.empty())
        return;
    writing.StartLine(depth);
    writing.Out().AppendAll("<", gpx::kExtensions, ">");
    for (const SourceElement& child : inner) {
        writing.StartLine(depth + 1);
        CopyForeign(writing, child);
    }
    writing.StartLine(depth);
    writing.Out().AppendAll("</", gpx::kExtensions, ">");
}

bool IsOneExtensions(Writing& writing, const ForeignParts& parts) {
    if (parts.extensions.size() != 1 || !parts.direct.empty() || parts.writeNew ||
        IsAnyReplaced(writing, parts))
        return false;
    for (const SourceElement& child : parts.other)
        if (BecomesExtension(writing, child))
            return false;
    return true;
}

} // namespace

bool IsOnlyIn10(const ScannedChild& child) {
    return child.IsGpx(gpx::kSpeed) || child.IsGpx(gpx::kCourse);
}

void WriteForeign(Writing& writing, const ForeignParts& parts, int depth) {
    // No version has a place for these; they are as wrong as they were.
    for (const SourceElement& child : parts.other) {
        if (BecomesExtension(writing, child))
            continue;
        writing.StartLine(depth);
        CopyForeign(writing, child);
    }
    if (writing.Is10()) {
        WriteForeign10(writing, parts, depth);
    } else if (IsOneExtensions(writing, parts)) {
        writing.StartLine(depth);
        CopyElement(writing, parts.extensions.front());
    } else {
        WriteExtensions(writing, parts, depth);
    }
}

void WriteLinks(Writing& writing, const SourceElements& elements, const GpxUrl* link, bool isAsRead,
                int depth) {
    LinkWriter writer(writing, elements, depth);
    if (isAsRead)
        writer.WriteAsRead();
    else
        writer.WriteModels(link);
}

void WriteTextElement(Writing& writing, std::string_view name, const icu::UnicodeString& text, int depth) {
    writing.StartLine(depth);
    writing.Out().AppendAll("<", name, ">");
    writing.Out().AppendEscaped(text, Place::kContent);
    writing.Out().AppendAll("</", name, ">");
}

void WriteAsciiElement(Writing& writing, std::string_view name, std::string_view text, int depth) {
    writing.StartLine(depth);
    writing.Out().AppendAll("<", name, ">", text, "</", name, ">");
}

} // namespace vexaTransferLib::standard
