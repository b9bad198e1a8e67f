// SPDX-License-Identifier: MIT
#include <vexagpx/repair/RootRepair.h>

#include <map>
#include <optional>

namespace vexagpx {

namespace {

constexpr std::string_view kRootNamespace10 = "http://www.topografix.com/GPX/1/0";

void Correct(StartTag& tag, const std::string& name, std::string_view value, std::size_t offset,
             RepairLog& log) {
    if (tag.Find(name) == value)
        return;
    log.Add(offset, "root", "the root element gets " + name + "=\"" + std::string(value) + "\"");
    SetTagAttribute(tag, name, value);
}

} // namespace

std::string_view PrefixOfName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view LocalPartOf(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

// A namespace of GPX says which version it is; without one, the version does.
void RepairRoot(StartTag& tag, std::size_t offset, RepairLog& log) {
    const std::string_view prefix = PrefixOfName(tag.name);
    const std::string attribute = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
    const std::optional<std::string_view> space = tag.Find(attribute);
    const bool isGpx = space == kRootNamespace10 || space == kRootNamespace11;
    const bool is10 = isGpx ? space == kRootNamespace10 : tag.Find("version") == "1.0";
    if (!isGpx)
        Correct(tag, attribute, is10 ? kRootNamespace10 : kRootNamespace11, offset, log);
    Correct(tag, "version", is10 ? "1.0" : "1.1", offset, log);
}

std::string NamespaceForPrefix(const std::string& prefix) {
    static const std::map<std::string, std::string> known{
        {"xsi", "http://www.w3.org/2001/XMLSchema-instance"},
        {"gpxx", "http://www.garmin.com/xmlschemas/GpxExtensions/v3"},
        {"gpxtpx", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1"},
        {"tp1", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1"},
        {"wptx1", "http://www.garmin.com/xmlschemas/WaypointExtension/v1"},
        {"groundspeak", "http://www.groundspeak.com/cache/1/0/1"},
        {"topografix", "http://www.topografix.com/GPX/Private/TopoGrafix/0/1"},
    };
    const auto found = known.find(prefix);
    return found == known.end() ? "urn:undeclared:" + prefix : found->second;
}

} // namespace vexagpx
