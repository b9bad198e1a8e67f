// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;
using Place = PieceOutput::Place;

constexpr std::string_view kGpx10Declaration = " xmlns=\"http://www.topografix.com/GPX/1/0\"";

icu::UnicodeString AttributeOf(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return DecodedValue(attribute.value);
    return {};
}

/// The links of an object, while they are written.
class LinkWriter {
public:
    LinkWriter(Writing& writing, const SourceElements& elements, int depth)
        : writing_(writing), elements_(elements), depth_(depth) {}

    void WriteAsRead() { writing_.Is10() ? Write10(true) : Write11(true); }
    // The model's link takes the place of the first.
    void WriteModels(const GpxUrl* link) {
        if (link != nullptr)
            Write(Access::GetUrl(*link), Access::GetText(*link), Access::GetType(*link));
        writing_.Is10() ? Write10(false) : Write11(false);
    }

private:
    const SourceElement* Find(std::string_view name) const {
        for (const SourceElement& element : elements_)
            if (element.child.IsGpx(name))
                return &element;
        return nullptr;
    }
    static icu::UnicodeString TextOf(const SourceElement* element) {
        return element != nullptr ? ContentText(element->child.begin) : icu::UnicodeString();
    }

    void Write11(bool writesFirst) {
        const SourceElement* const url = Find(gpx::kUrl);
        bool isFirst = url == nullptr || Find(gpx::kLink) != nullptr;
        for (const SourceElement& element : elements_) {
            if (!element.child.IsGpx(gpx::kLink))
                continue;
            if (writesFirst || !isFirst) {
                writing_.StartLine(depth_);
                CopyElement(writing_, element);
            }
            isFirst = false;
        }
        if (url != nullptr && (writesFirst || Find(gpx::kLink) != nullptr))
            Write(TextOf(url), TextOf(Find(gpx::kUrlname)), {});
        else if (url == nullptr && Find(gpx::kUrlname) != nullptr)
            writing_.ReportUnwritten(gpx::kUrlname,
                                     "GPX 1.1 has no place for the name of a link without its address.");
    }

    void Write10(bool writesFirst) {
        bool isFirst = true;
        for (const SourceElement& element : elements_) {
            if (element.child.IsGpx(gpx::kUrl) || element.child.IsGpx(gpx::kUrlname))
                CopyIf(writesFirst, element);
            else if (element.child.IsGpx(gpx::kLink))
                WriteLink10(element, isFirst && writesFirst && Find(gpx::kUrl) == nullptr,
                            isFirst && !writesFirst);
            isFirst = isFirst && !element.child.IsGpx(gpx::kLink);
        }
    }
    void CopyIf(bool isWanted, const SourceElement& element) {
        if (!isWanted)
            return;
        writing_.StartLine(depth_);
        CopyElement(writing_, element);
    }
    void WriteLink10(const SourceElement& element, bool isTheLink, bool isReplaced) {
        if (isReplaced)
            return;
        if (!isTheLink) {
            writing_.ReportUnwritten(gpx::kLink, "GPX 1.0 has a place for one link only.");
            return;
        }
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
    const SourceElements& elements_;
    int depth_;
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

// An element that only GPX 1.0 has becomes one of another format.
void CopyOther(Writing& writing, const SourceElement& element) {
    const std::string_view xml = element.Xml();
    const std::size_t nameEnd = 1 + element.child.tag.name.size();
    if (element.child.prefix.empty())
        writing.Out().AppendAll(xml.substr(0, nameEnd), kGpx10Declaration, xml.substr(nameEnd));
    else
        CopyElement(writing, element);
}

bool IsOnlyIn10(const SourceElement& element) {
    return element.child.name == gpx::kSpeed || element.child.name == gpx::kCourse;
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
        CopyElement(writing, child);
    });
    for (const SourceElement& child : parts.other) {
        if (!IsOnlyIn10(child))
            continue;
        open();
        writing.StartLine(depth + 1);
        CopyOther(writing, child);
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

bool IsOneExtensions(Writing& writing, const ForeignParts& parts) {
    if (parts.extensions.size() != 1 || !parts.direct.empty() || parts.writeNew ||
        IsAnyReplaced(writing, parts))
        return false;
    for (const SourceElement& child : parts.other)
        if (IsOnlyIn10(child))
            return false;
    return true;
}

} // namespace

void WriteForeign(Writing& writing, const ForeignParts& parts, int depth) {
    // No version has a place for these; they are as wrong as they were.
    for (const SourceElement& child : parts.other) {
        if (!writing.Is10() && IsOnlyIn10(child))
            continue;
        writing.StartLine(depth);
        CopyElement(writing, child);
    }
    if (writing.Is10()) {
        ForEachKept(writing, parts, [&](const SourceElement& child) {
            writing.StartLine(depth);
            CopyElement(writing, child);
        });
        if (parts.writeNew)
            parts.writeNew(depth);
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
