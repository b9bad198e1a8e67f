// SPDX-License-Identifier: MIT
#include <vexagpx/commands/HeadDetails.h>

#include <vexagpx/commands/BoundsJson.h>
#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Table.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

using vexaTransferLib::GpxHead;

namespace {

constexpr char16_t kNoLabel[] = u"";

/// A line "  Name         Walk"; none for an empty text.
void WriteLabelled(const char16_t* label, const icu::UnicodeString& text, Output& out) {
    constexpr std::int32_t kLabelWidth = 13;
    const icu::UnicodeString shown = Printable(text).trim();
    if (shown.isEmpty())
        return;
    icu::UnicodeString line(label);
    line.padTrailing(kLabelWidth);
    WriteLine(out, u"  " + line + shown);
}

void WriteLabelled(const char16_t* label, const std::optional<icu::UnicodeString>& text, Output& out) {
    if (text)
        WriteLabelled(label, *text, out);
}

void WriteAuthor(const GpxHead::Author& author, Output& out) {
    const icu::UnicodeString email =
        author.email.isEmpty() ? icu::UnicodeString() : u'<' + author.email + u'>';
    WriteLabelled(u"Author", author.name + u' ' + email, out);
}

void WriteBounds(const GpxHead::Bounds& bounds, Output& out) {
    WriteLabelled(u"Bounds",
                  u"latitude " + DegreesText(bounds.minLatitude) + u" to " + DegreesText(bounds.maxLatitude),
                  out);
    WriteLabelled(
        kNoLabel,
        u"longitude " + DegreesText(bounds.minLongitude) + u" to " + DegreesText(bounds.maxLongitude), out);
}

// The message has a line of its own, because its end may say most.
void WriteError(const GpxHead::Error& error, Output& out) {
    const icu::UnicodeString message = icu::UnicodeString::fromUTF8(error.message);
    if (error.line == 0) {
        WriteLabelled(u"Error", message, out);
        return;
    }
    WriteLabelled(u"Error", u"line " + NumberText(error.line) + u", column " + NumberText(error.column), out);
    WriteLabelled(kNoLabel, message, out);
}

std::string_view NameOf(GpxHead::End end) {
    switch (end) {
    case GpxHead::End::kNone:
        break;
    case GpxHead::End::kObject:
        return "object";
    case GpxHead::End::kEndOfFile:
        return "endOfFile";
    case GpxHead::End::kIllFormed:
        return "illFormed";
    case GpxHead::End::kNotGpx:
        return "notGpx";
    case GpxHead::End::kMissing:
        return "missing";
    case GpxHead::End::kRefused:
        return "refused";
    case GpxHead::End::kFailed:
        return "failed";
    }
    return "none";
}

void WriteMember(std::string_view key, const std::optional<icu::UnicodeString>& text, JsonWriter& json) {
    if (text)
        json.Member(key, *text);
}

void WriteMember(const GpxHead::Author& author, JsonWriter& json) {
    json.Key("author");
    json.BeginObject();
    json.Member("name", author.name);
    json.Member("email", author.email);
    json.EndObject();
}

void WriteMember(const GpxHead::Error& error, JsonWriter& json) {
    json.Key("error");
    json.BeginObject();
    json.Member("line", error.line);
    json.Member("column", error.column);
    json.Member("message", error.message);
    json.EndObject();
}

} // namespace

void WriteHeadText(const GpxHead& head, const icu::UnicodeString& shownTime, Output& out) {
    if (head.end == GpxHead::End::kNotGpx)
        WriteLabelled(u"Root", head.rootName + u", which is not GPX", out);
    WriteLabelled(u"Version", head.version, out);
    WriteLabelled(u"Creator", head.creator, out);
    WriteLabelled(u"Name", head.name, out);
    WriteLabelled(u"Description", head.description, out);
    if (head.author)
        WriteAuthor(*head.author, out);
    if (head.time && TimeText(*head.time) != shownTime)
        WriteLabelled(u"Time", TimeText(*head.time), out);
    if (head.bounds)
        WriteBounds(*head.bounds, out);
    if (head.end == GpxHead::End::kEndOfFile)
        WriteLabelled(u"Contents", icu::UnicodeString(u"no waypoint, route or track"), out);
    if (head.error)
        WriteError(*head.error, out);
}

void WriteHeadJson(const GpxHead& head, JsonWriter& json) {
    json.Key("head");
    json.BeginObject();
    if (head.end == GpxHead::End::kNotGpx)
        json.Member("rootName", head.rootName);
    WriteMember("version", head.version, json);
    WriteMember("creator", head.creator, json);
    WriteMember("name", head.name, json);
    WriteMember("description", head.description, json);
    TimeMember(json, "time", head.time);
    if (head.author)
        WriteMember(*head.author, json);
    if (head.bounds)
        WriteBounds(json, *head.bounds);
    json.Member("end", NameOf(head.end));
    if (head.error)
        WriteMember(*head.error, json);
    json.EndObject();
}

} // namespace vexagpx
