// SPDX-License-Identifier: MIT

// Reads the input completely, edits it at random, saves it, and reads it again. Stops when an unchanged plain file is not
// saved byte for byte, when what was saved cannot be read, when its model is not what the edits say, or when the same
// edits of elements save another text the second time.

#include "DocumentType.h"
#include "Stop.h"
#include "support/RandomEdits.h"
#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/GpxSaver.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vexaTransferLib;
using namespace vexaTransferLib::testing_support;

constexpr char kOther[] =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>\n"
    "  <wpt lat='1' lon='2'><ele>3</ele><name>a</name><extensions><x:a b='c'>d</x:a></extensions></wpt>\n"
    "  <wpt lat='1' lon='2'><name>GC1</name><cache xmlns='http://www.groundspeak.com/cache/1/0/1' id='1'>"
    "<name>n</name><logs><log id='1'><text>t</text></log></logs></cache></wpt>\n"
    "  <rte><name>r</name><rtept lat='1' lon='2'/><x:b/></rte>\n"
    "  <trk><name>t</name><trkseg><trkpt lat='1' lon='2'><time>2024-05-01T00:00:00Z</time></trkpt>\n"
    "    <trkpt lat='3' lon='4'/></trkseg><trkseg/></trk>\n"
    "</gpx>\n";

std::optional<GpxDocument> TryToRead(std::string_view text) {
    try {
        return ReadCompletely(text);
    } catch (const GpxReadError&) {
        return std::nullopt;
    }
}

struct Saved {
    std::string text;
    bool isUnwritten = false;
};

Saved Save(const GpxDocument& document) {
    Saved saved;
    GpxSaveOptions options;
    options.unwritten = [&saved](const GpxUnwritten&) { saved.isUnwritten = true; };
    saved.text = GpxSaver(options).GetText(document);
    return saved;
}

void CheckUnchanged(const GpxDocument& document, std::string_view input) {
    const std::string text = Save(document).text;
    if (GpxModelAccess::GetSource(document.GetElement())->IsFile() && text != input)
        StopBecause("an unchanged file became:\n" + text);
    const std::optional<GpxDocument> read = TryToRead(text);
    if (!read || *read != document)
        StopBecause("an unchanged document is not what was saved:\n" + text);
}

/// A route whose points contradict the type that the file states is a standard one. When an edit removes those points,
/// the type, which nobody changed and which is saved as it stood, holds again.
void ForgetTypesThatHoldAgain(const GpxDocument& document, GpxDocument& read) {
    const std::size_t count = std::min(document.GetRouteCount(), read.GetRouteCount());
    for (std::size_t index = 0; index < count; ++index) {
        TarvikRouteType type{};
        const GpxRoute& route = document.GetRoutes()[index];
        if (!route.GetTarvikRouteType(type) && route.GetElement())
            read.EditRoutes()[index].SetTarvikRouteType(kTarvikRouteStandard);
    }
}

void CheckModel(GpxDocument document, const GpxDocument& other, std::uint64_t seed) {
    EditAtRandom(document, other, seed, static_cast<int>(1 + seed % 9));
    const Saved saved = Save(document);
    std::optional<GpxDocument> read = TryToRead(saved.text);
    if (!read)
        StopBecause("an edited document cannot be read:\n" + saved.text);
    ForgetTypesThatHoldAgain(document, *read);
    if (!saved.isUnwritten && *read != document)
        StopBecause("an edited document is not what was saved:\n" + saved.text);
}

void CollectElements(const GpxElement& root, std::vector<GpxElement>& elements) {
    constexpr std::size_t kMost = 500;
    elements.push_back(root);
    for (std::size_t i = 0; i < elements.size() && elements.size() < kMost; ++i) {
        const GpxElement parent = elements[i];
        for (const GpxElement& child : parent.GetChildren())
            elements.push_back(child);
    }
}

void EditElement(GpxDocument& document, const GpxElement& element, std::uint64_t choice) {
    const GpxElementEditor editor = document.EditElements();
    switch (choice % 6) {
    case 0:
        return editor.SetText(element, u"<new> & ]]>");
    case 1:
        return editor.SetAttribute(element, "new", u"<\"'&");
    case 2:
        for (const GpxAttribute& attribute : element.GetAttributes())
            if (attribute.nameSpace.empty())
                editor.RemoveAttribute(element, attribute.name);
        return;
    case 3:
        return editor.AddChild(element, choice % 4 < 2 ? "urn:new" : "", "new", u"<new>");
    case 4:
        editor.RemoveComments([&](std::string_view content) { return (content.size() + choice) % 3 != 0; });
        return;
    default:
        return editor.Remove(element);
    }
}

// The root is left alone: without its version a file cannot be read.
void CheckElements(GpxDocument document, const GpxDocument& other, std::uint64_t seed) {
    std::vector<GpxElement> elements;
    CollectElements(document.GetElement(), elements);
    std::mt19937_64 random(seed);
    for (std::uint64_t i = 0; i < 1 + seed % 7 && elements.size() > 1; ++i)
        EditElement(document, elements[1 + random() % (elements.size() - 1)], random());
    if (seed % 2 == 0)
        EditAtRandom(document, other, seed, static_cast<int>(1 + seed % 5));
    const std::string text = Save(document).text;
    const std::optional<GpxDocument> read = TryToRead(text);
    if (!read)
        StopBecause("a document with edited elements cannot be read:\n" + text);
    CheckUnchanged(*read, text);
    if (Save(document).text != text)
        StopBecause("another text the second time:\n" + text);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const GpxDocument other = ReadCompletely(kOther);
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    if (HasDocumentType(input))
        return -1;
    const std::optional<GpxDocument> document = TryToRead(input);
    if (!document)
        return 0;
    CheckUnchanged(*document, input);
    // The edits are other ones for each input, and the same ones whenever it is read.
    const std::uint64_t seed = std::hash<std::string_view>()(input);
    for (std::uint64_t i = 0; i < 4; ++i) {
        CheckModel(*document, other, seed + i);
        CheckElements(*document, other, seed + i);
    }
    return 0;
}
