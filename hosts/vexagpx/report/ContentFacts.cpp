// SPDX-License-Identifier: MIT
#include <vexagpx/report/ContentFacts.h>

#include <vexagpx/process/Utf8.h>
#include <vexagpx/report/NormalValue.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr int kMostLevels = 32;
constexpr std::string_view kSchemaInstance = "http://www.w3.org/2001/XMLSchema-instance";

enum class ValueForm { kText, kNumber, kTime, kBounds, kLink, kUrl, kUrlName, kEmail, kAuthor, kMetadata };

/// A child that GPX knows, and where GPX 1.1 has it below the object.
struct Field {
    std::string_view name;
    ValueForm form = ValueForm::kText;
    std::string_view path = name;
};

struct ObjectKind;

/// A child that is one of many with an order.
struct ObjectChild {
    std::string_view name;
    const ObjectKind& kind;
};

struct ObjectKind {
    std::span<const Field> fields;
    std::span<const ObjectChild> objects;
};

using enum ValueForm;

constexpr Field kPointFields[] = {
    {"ele", kNumber},
    {"time", kTime},
    {"course", kNumber},
    {"speed", kNumber},
    {"magvar", kNumber},
    {"name"},
    {"cmt"},
    {"desc"},
    {"geoidheight", kNumber},
    {"src"},
    {"link", kLink},
    {"url", kUrl, "link"},
    {"fix"},
    {"sym"},
    {"type"},
    {"urlname", kUrlName, "link"},
    {"sat", kNumber},
    {"hdop", kNumber},
    {"vdop", kNumber},
    {"pdop", kNumber},
    {"ageofdgpsdata", kNumber},
    {"dgpsid", kNumber},
};
constexpr ObjectKind kPoint = {kPointFields, {}};
constexpr ObjectChild kSegmentObjects[] = {{"trkpt", kPoint}};
constexpr ObjectKind kSegment = {{}, kSegmentObjects};
constexpr Field kPathFields[] = {
    {"name"},
    {"cmt"},
    {"desc"},
    {"src"},
    {"link", kLink},
    {"url", kUrl, "link"},
    {"urlname", kUrlName, "link"},
    {"type"},
    {"number", kNumber},
};
constexpr ObjectChild kRouteObjects[] = {{"rtept", kPoint}};
constexpr ObjectKind kRoute = {kPathFields, kRouteObjects};
constexpr ObjectChild kTrackObjects[] = {{"trkseg", kSegment}};
constexpr ObjectKind kTrack = {kPathFields, kTrackObjects};
constexpr Field kDocumentFields[] = {
    {"metadata", kMetadata},
    {"name", kText, "metadata/name"},
    {"desc", kText, "metadata/desc"},
    {"author", kText, "metadata/author/name"},
    {"email", kEmail, "metadata/author/email"},
    {"url", kUrl, "metadata/link"},
    {"urlname", kUrlName, "metadata/link"},
    {"time", kTime, "metadata/time"},
    {"keywords", kText, "metadata/keywords"},
    {"bounds", kBounds, "metadata/bounds"},
};
constexpr ObjectChild kDocumentObjects[] = {{"wpt", kPoint}, {"rte", kRoute}, {"trk", kTrack}};
constexpr ObjectKind kDocument = {kDocumentFields, kDocumentObjects};
constexpr Field kMetadataFields[] = {
    {"name"},        {"desc"},        {"author", kAuthor}, {"copyright"},
    {"link", kLink}, {"time", kTime}, {"keywords"},        {"bounds", kBounds},
};
constexpr Field kAuthorFields[] = {{"name"}, {"email", kEmail}, {"link", kLink}};

template <class T>
const T* FindNamed(std::span<const T> entries, std::string_view name) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const T& entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

bool IsGpxNamespace(std::string_view uri) {
    return uri.starts_with("http://www.topografix.com/GPX/1/") ||
           uri.starts_with("https://www.topografix.com/GPX/1/");
}

/// The local name for GPX, otherwise with the namespace. Below a foreign element, no namespace is one of its own.
std::string StepOf(const GpxElement& element, bool isBelowForeign) {
    const std::string_view uri = element.GetNamespace();
    if (IsGpxNamespace(uri) || (uri.empty() && !isBelowForeign))
        return std::string(element.GetName());
    return "{" + std::string(uri) + "}" + std::string(element.GetName());
}

std::string StepOf(const GpxAttribute& attribute) {
    return (attribute.nameSpace.empty() ? "@" : "@{" + std::string(attribute.nameSpace) + "}") +
           std::string(attribute.name);
}

/// What the root says about the file and not about the world.
bool IsFileAttribute(const GpxAttribute& attribute) {
    return (attribute.nameSpace.empty() && (attribute.name == "creator" || attribute.name == "version")) ||
           (attribute.nameSpace == kSchemaInstance && attribute.name == "schemaLocation");
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// A piece of XML between elements without comments and processing instructions.
std::string TextBetween(std::string_view xml) {
    std::string text;
    const auto takeTo = [&](std::string_view start, std::string_view end) {
        const std::size_t length =
            std::min(xml.find(end, start.size()), xml.size() - end.size()) + end.size();
        const std::string_view part = xml.substr(0, length);
        xml.remove_prefix(length);
        return part.substr(start.size(), part.size() - start.size() - end.size());
    };
    while (!xml.empty()) {
        if (xml.starts_with("<!--"))
            takeTo("<!--", "-->");
        else if (xml.starts_with("<![CDATA["))
            text += takeTo("<![CDATA[", "]]>");
        else if (xml.starts_with("<?"))
            takeTo("<?", "?>");
        else {
            const std::size_t end = std::min(xml.find('<', 1), xml.size());
            text += xml.substr(0, end);
            xml.remove_prefix(end);
        }
    }
    return IsBlank(text) ? std::string() : text;
}

/// Where the content of an element starts.
const char* ContentStart(std::string_view xml) {
    char quote = '\0';
    for (const char& c : xml) {
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>')
            return &c + 1;
    }
    return xml.data() + xml.size();
}

class FactWalk {
public:
    FactWalk(const GpxDocument& document, ContentForm form,
             const std::function<void(const ContentFact&)>& take)
        : form_(form), take_(take) {
        AddUnread(document.GetUnreadElements());
        for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
            AddUnread(route->GetUnreadElements());
        for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
            AddUnread(track->GetUnreadElements());
    }

    void Run(const GpxElement& root) {
        path_ = "gpx";
        TakeObject(root, kDocument);
    }

private:
    /// Appends a step to the path until the end of a block.
    class Step {
    public:
        Step(FactWalk& walk, std::string_view step) : walk_(walk), length_(walk.path_.size()) {
            walk.path_.append("/").append(step);
        }
        ~Step() { walk_.path_.resize(length_); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        FactWalk& walk_;
        std::size_t length_;
    };

    /// The addresses of the parent's `url` elements, the first of which belongs to the first `urlname`.
    struct UrlPairs {
        std::optional<std::vector<std::string>> urls;
        std::size_t names = 0;
    };

    void AddUnread(const std::vector<GpxElement>& elements) {
        for (const GpxElement& element : elements)
            unread_.insert(element.GetXml().data());
    }
    bool IsUnread(const GpxElement& element) const {
        return !unread_.empty() && unread_.contains(element.GetXml().data());
    }

    void Take(const GpxElement& element, std::string_view value, std::string_view shown) {
        take_({path_, value, shown, element});
    }
    void Take(const GpxElement& element, std::string_view value) { Take(element, value, value); }

    void TakeObject(const GpxElement& element, const ObjectKind& kind);
    void TakeChild(const GpxElement& parent, const GpxElement& child, const std::string& step,
                   std::span<const Field> fields, UrlPairs& pairs);
    void TakeField(const GpxElement& parent, const GpxElement& child, const Field& field, UrlPairs& pairs);
    void TakeGroup(const GpxElement& element, std::span<const Field> fields);
    void TakeExtension(const GpxElement& child, const std::string& step);
    void TakeExtensions(const GpxElement& element, std::span<const Field> fields);
    void TakeLink(const GpxElement& element);
    void TakeUrlName(const GpxElement& parent, const GpxElement& child, UrlPairs& pairs);
    void TakeEmail(const GpxElement& element);
    void TakeTree(const GpxElement& element, ValueForm form = kText, int level = 1, bool isForeign = false);
    void TakeAttributes(const GpxElement& element, ValueForm form = kText);
    void TakeValue(const GpxElement& element, ValueForm form);
    template <class Function>
    std::size_t ForEachChild(const GpxElement& element, Function function);

    ContentForm form_;
    const std::function<void(const ContentFact&)>& take_;
    std::unordered_set<const char*> unread_;
    std::string path_;
};

/// Also takes text between the elements, which has no place in GPX.
template <class Function>
std::size_t FactWalk::ForEachChild(const GpxElement& element, Function function) {
    const std::string_view xml = element.GetXml();
    const char* at = ContentStart(xml);
    const auto takeText = [&](const char* end) {
        const std::string_view gap(at, static_cast<std::size_t>(end - at));
        if (IsBlank(gap))
            return;
        if (const std::string text = TextBetween(gap); !text.empty()) {
            const Step step(*this, "text()");
            Take(element, text);
        }
    };
    std::size_t count = 0;
    for (const GpxElement& child : element.GetChildren()) {
        const std::string_view childXml = child.GetXml();
        takeText(childXml.data());
        at = childXml.data() + childXml.size();
        function(child, ++count);
    }
    const std::size_t end = xml.rfind("</");
    if (end != std::string_view::npos && xml.data() + end > at)
        takeText(xml.data() + end);
    return count;
}

void FactWalk::TakeObject(const GpxElement& element, const ObjectKind& kind) {
    const bool isRoot = &kind == &kDocument;
    Take(element, "");
    for (const GpxAttribute& attribute : element.GetAttributes()) {
        if (isRoot && IsFileAttribute(attribute))
            continue;
        const Step step(*this, StepOf(attribute));
        const std::string value = Utf8(attribute.value);
        const bool isNumber = &kind == &kPoint && (attribute.name == "lat" || attribute.name == "lon");
        Take(element, isNumber ? NormalNumber(value) : value, value);
    }
    std::vector<std::size_t> counts(2 * kind.objects.size());
    UrlPairs pairs;
    ForEachChild(element, [&](const GpxElement& child, std::size_t) {
        const std::string step = StepOf(child, false);
        const ObjectChild* const object = FindNamed(kind.objects, step);
        if (object == nullptr)
            return TakeChild(element, child, step, kind.fields, pairs);
        const bool isUnread = IsUnread(child);
        const auto index = static_cast<std::size_t>(object - kind.objects.data()) * 2 + (isUnread ? 1 : 0);
        const Step into(*this,
                        step + (isUnread ? " (unread)[" : "[") + std::to_string(++counts[index]) + "]");
        TakeObject(child, object->kind);
    });
}

void FactWalk::TakeChild(const GpxElement& parent, const GpxElement& child, const std::string& step,
                         std::span<const Field> fields, UrlPairs& pairs) {
    if (const Field* const field = FindNamed(fields, step))
        TakeField(parent, child, *field, pairs);
    else if (step == "extensions")
        TakeExtensions(child, fields);
    else
        TakeExtension(child, step);
}

void FactWalk::TakeExtension(const GpxElement& child, const std::string& step) {
    // The extensions of metadata become those of the document in GPX 1.0.
    const bool isMoved = form_ == ContentForm::kGpx10 && path_ == "gpx/metadata";
    const std::string before = path_;
    if (isMoved)
        path_ = "gpx";
    {
        const Step into(*this, "extensions/" + step);
        TakeTree(child, kText, 1, step.starts_with('{'));
    }
    path_ = before;
}

void FactWalk::TakeExtensions(const GpxElement& element, std::span<const Field> fields) {
    {
        const Step step(*this, "extensions");
        TakeAttributes(element);
    }
    ForEachChild(element, [&](const GpxElement& child, std::size_t) {
        const std::string step = StepOf(child, false);
        // In GPX 1.1 they are extensions, in 1.0 children of the point.
        if (fields.data() != kPointFields || (step != "course" && step != "speed"))
            return TakeExtension(child, step);
        const Step into(*this, step);
        TakeTree(child, kNumber);
    });
}

void FactWalk::TakeField(const GpxElement& parent, const GpxElement& child, const Field& field,
                         UrlPairs& pairs) {
    const Step step(*this, field.path);
    switch (field.form) {
    case kLink:
        return TakeLink(child);
    case kUrl: {
        const Step address(*this, "@href");
        return TakeTree(child);
    }
    case kUrlName:
        return TakeUrlName(parent, child, pairs);
    case kEmail:
        return TakeEmail(child);
    case kAuthor:
        return TakeGroup(child, kAuthorFields);
    case kMetadata:
        return TakeGroup(child, kMetadataFields);
    default:
        return TakeTree(child, field.form);
    }
}

void FactWalk::TakeGroup(const GpxElement& element, std::span<const Field> fields) {
    TakeAttributes(element);
    UrlPairs pairs;
    ForEachChild(element, [&](const GpxElement& child, std::size_t) {
        TakeChild(element, child, StepOf(child, false), fields, pairs);
    });
}

void FactWalk::TakeLink(const GpxElement& element) {
    std::string address;
    if (const auto href = element.GetAttribute("href"))
        address = Utf8(*href);
    {
        const Step step(*this, "@href");
        Take(element, address);
    }
    path_ += "(" + address + ")";
    for (const GpxAttribute& attribute : element.GetAttributes()) {
        const std::string name = StepOf(attribute);
        if (name == "@href")
            continue;
        const Step step(*this, name);
        Take(element, Utf8(attribute.value));
    }
    ForEachChild(element, [&](const GpxElement& child, std::size_t) {
        const Step step(*this, StepOf(child, false));
        TakeTree(child);
    });
}

void FactWalk::TakeUrlName(const GpxElement& parent, const GpxElement& child, UrlPairs& pairs) {
    if (!pairs.urls) {
        pairs.urls.emplace();
        for (const GpxElement& one : parent.GetChildren())
            if (StepOf(one, false) == "url")
                pairs.urls->push_back(Utf8(one.GetText()));
    }
    const std::size_t number = pairs.names++;
    path_ += "(" + (number < pairs.urls->size() ? (*pairs.urls)[number] : std::string()) + ")";
    const Step step(*this, "text");
    TakeTree(child);
}

/// GPX 1.0 has the address as text, GPX 1.1 its two parts as attributes.
void FactWalk::TakeEmail(const GpxElement& element) {
    const auto id = element.GetAttribute("id");
    const auto domain = element.GetAttribute("domain");
    if (!id || !domain)
        return TakeTree(element);
    Take(element, Utf8(*id) + "@" + Utf8(*domain));
    for (const GpxAttribute& attribute : element.GetAttributes()) {
        const std::string name = StepOf(attribute);
        if (name == "@id" || name == "@domain")
            continue;
        const Step step(*this, name);
        Take(element, Utf8(attribute.value));
    }
    ForEachChild(element, [&](const GpxElement& child, std::size_t) {
        const Step step(*this, StepOf(child, false));
        TakeTree(child);
    });
}

/// The children of foreign elements are numbered, for their order may say something.
void FactWalk::TakeTree(const GpxElement& element, ValueForm form, int level, bool isForeign) {
    if (level > kMostLevels)
        return Take(element, element.GetXml());
    TakeAttributes(element, form);
    if (!element.GetFirstChild())
        return TakeValue(element, form);
    Take(element, "");
    ForEachChild(element, [&](const GpxElement& child, std::size_t number) {
        const std::string name = StepOf(child, isForeign);
        const Step step(*this, name + "[" + std::to_string(number) + "]");
        TakeTree(child, kText, level + 1, isForeign || name.starts_with('{'));
    });
}

void FactWalk::TakeAttributes(const GpxElement& element, ValueForm form) {
    for (const GpxAttribute& attribute : element.GetAttributes()) {
        const Step step(*this, StepOf(attribute));
        const std::string value = Utf8(attribute.value);
        Take(element, form == kBounds ? NormalNumber(value) : value, value);
    }
}

void FactWalk::TakeValue(const GpxElement& element, ValueForm form) {
    const std::string text = Utf8(element.GetText());
    if (form == kNumber)
        Take(element, NormalNumber(text), text);
    else if (form == kTime)
        Take(element, NormalTime(element, text), text);
    else if (form == kBounds)
        Take(element, IsBlank(text) ? std::string() : text, text);
    else
        Take(element, text);
}

} // namespace

void ForEachFact(const GpxDocument& document, ContentForm form,
                 const std::function<void(const ContentFact&)>& take) {
    if (const GpxElement root = document.GetElement())
        FactWalk(document, form, take).Run(root);
}

} // namespace vexagpx
