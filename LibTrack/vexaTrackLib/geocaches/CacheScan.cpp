// SPDX-License-Identifier: MIT
#include <vexaTrackLib/geocaches/CacheScan.h>

#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTrackLib {

using vexaTransferLib::GpxCacheDetails;
using vexaTransferLib::GpxElement;

namespace {

/// A child whose text or number is a member of a geocache.
struct TextField {
    std::string_view name;
    icu::UnicodeString Geocache::*member;
};
struct NumberField {
    std::string_view name;
    std::optional<double> Geocache::*member;
};

constexpr TextField kTexts[] = {
    {"name", &Geocache::name},          {"owner", &Geocache::owner},     {"type", &Geocache::type},
    {"container", &Geocache::size},     {"country", &Geocache::country}, {"state", &Geocache::state},
    {"encoded_hints", &Geocache::hint},
};
constexpr NumberField kNumbers[] = {
    {"difficulty", &Geocache::difficulty},
    {"terrain", &Geocache::terrain},
};

icu::UnicodeString TrimmedText(const GpxElement& element) {
    icu::UnicodeString text = element.GetText();
    return text.trim();
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// As GpxCacheDetails reads the identifiers of logs: with blanks around it or a plus sign.
std::optional<std::int64_t> IdOf(const GpxElement& log) {
    const std::optional<icu::UnicodeString> attribute = log.GetAttribute("id");
    if (!attribute)
        return std::nullopt;
    std::string utf8;
    attribute->toUTF8String(utf8);
    std::string_view text = utf8;
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    std::int64_t id = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), id);
    const bool isNumber = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber ? std::optional(id) : std::nullopt;
}

// The date and the type come before the text of a log, which is long.
void TakeFoundTime(const GpxElement& log, std::string_view nameSpace, Geocache& cache) {
    std::optional<double> time;
    std::optional<bool> isFound;
    for (const GpxElement& child : log.GetChildren()) {
        if (child.GetNamespace() != nameSpace)
            continue;
        if (child.GetName() == "date" && !time)
            time = child.GetTime();
        else if (child.GetName() == "type" && !isFound)
            isFound = SaysFound(child.GetText());
        if (time && isFound)
            break;
    }
    if (time && isFound.value_or(false) && (!cache.foundTime || *time > *cache.foundTime))
        cache.foundTime = time;
}

void TakeLogs(const GpxElement& logs, std::string_view nameSpace, std::set<std::int64_t>& known,
              Geocache& cache) {
    for (const GpxElement& log : logs.GetChildren()) {
        if (log.GetName() != "log" || log.GetNamespace() != nameSpace)
            continue;
        const std::optional<std::int64_t> id = IdOf(log);
        if (id && !known.insert(*id).second)
            continue;
        ++cache.logCount;
        TakeFoundTime(log, nameSpace, cache);
    }
}

// Its name, or else its code.
icu::UnicodeString NameOfBug(const GpxElement& bug, std::string_view nameSpace) {
    const icu::UnicodeString name = TrimmedText(bug.FindChild(nameSpace, "name"));
    return name.isEmpty() ? bug.GetAttribute("ref").value_or(icu::UnicodeString()) : name;
}

void TakeTravelBugs(const GpxElement& bugs, std::string_view nameSpace, Geocache& cache) {
    for (const GpxElement& bug : bugs.GetChildren())
        if (bug.GetName() == "travelbug" && bug.GetNamespace() == nameSpace)
            if (icu::UnicodeString name = NameOfBug(bug, nameSpace); !name.isEmpty())
                cache.travelBugs.push_back(std::move(name));
}

void TakeField(const GpxElement& child, Geocache& cache) {
    const std::string_view name = child.GetName();
    for (const TextField& field : kTexts)
        if (name == field.name && (cache.*field.member).isEmpty())
            cache.*field.member = TrimmedText(child);
    for (const NumberField& field : kNumbers)
        if (name == field.name && !(cache.*field.member))
            cache.*field.member = child.GetNumber();
}

} // namespace

void ScanCache(const GpxElement& element, std::set<std::int64_t>& knownLogs, Geocache& cache) {
    const GpxCacheDetails details(element);
    cache.isAvailable = details.IsAvailable();
    cache.isArchived = details.IsArchived();
    const std::string_view nameSpace = element.GetNamespace();
    for (const GpxElement& child : element.GetChildren()) {
        if (child.GetNamespace() != nameSpace)
            continue;
        if (child.GetName() == "logs")
            TakeLogs(child, nameSpace, knownLogs, cache);
        else if (child.GetName() == "travelbugs")
            TakeTravelBugs(child, nameSpace, cache);
        else
            TakeField(child, cache);
    }
}

void ScanLogs(const GpxElement& element, std::set<std::int64_t>& knownLogs, Geocache& cache) {
    const std::string_view nameSpace = element.GetNamespace();
    for (const GpxElement& child : element.GetChildren())
        if (child.GetName() == "logs" && child.GetNamespace() == nameSpace)
            TakeLogs(child, nameSpace, knownLogs, cache);
}

} // namespace vexaTrackLib
