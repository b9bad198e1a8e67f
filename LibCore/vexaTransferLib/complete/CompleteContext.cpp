// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteContext.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

// Quotes only the start of a long value.
constexpr std::size_t kQuotedBytes = 60;

std::string Quoted(std::string_view value) {
    if (value.size() <= kQuotedBytes)
        return '"' + std::string(value) + '"';
    std::size_t end = kQuotedBytes;
    while ((static_cast<unsigned char>(value[end]) & 0xC0U) == 0x80U)
        --end;
    return '"' + std::string(value.substr(0, end)) + "...\"";
}

// True for content that the XML parser gives as one text: nothing, a text, or a CDATA section alone.
bool IsOneText(const ScannedTag& tag) {
    const ScannedPart first = ScanPart(tag.end);
    if (first.kind == ScannedPart::Kind::kEnd)
        return true;
    return (first.kind == ScannedPart::Kind::kText || first.kind == ScannedPart::Kind::kSection) &&
           ScanPart(first.end).kind == ScannedPart::Kind::kEnd;
}

} // namespace

GpxElement CompleteContext::ElementOf(const ScannedChild& element) const {
    return GpxModelAccess::MakeElement(source_, PlaceOf(element));
}

std::uint64_t CompleteContext::ExpectedChildren(const ScannedChild& element) const {
    const std::uint64_t place = PlaceOf(element);
    const auto found = std::lower_bound(
        longElements_.begin(), longElements_.end(), place,
        [](const reader::LongElement& known, std::uint64_t wanted) { return known.begin < wanted; });
    return found != longElements_.end() && found->begin == place ? found->children : 0;
}

const char* CompleteContext::ReadText(const ScannedChild& element, icu::UnicodeString& value) {
    if (!value.isEmpty()) {
        ReportSecond(element);
        return nullptr;
    }
    const ScannedLeaf leaf = ScanLeaf(element.tag, element.begin);
    if (leaf.isSimple) {
        value = icu::UnicodeString::fromUTF8(
            icu::StringPiece(leaf.text.data(), static_cast<int>(leaf.text.size())));
    } else {
        ReportPieces(element);
        value = ContentText(element.begin);
    }
    text::ThrowIfBogus(value);
    return leaf.end;
}

CompleteContext::Value CompleteContext::ValueOf(const ScannedChild& element, std::string& scratch) {
    const ScannedLeaf leaf = ScanLeaf(element.tag, element.begin);
    std::string_view text = leaf.text;
    if (!leaf.isSimple) {
        ReportPieces(element);
        ContentText(element.begin).toUTF8String(scratch);
        // What looks beyond the value finds the end of a number there.
        const std::size_t size = scratch.size();
        scratch.append(SourceText::kPadding, '\0');
        text = std::string_view(scratch).substr(0, size);
    }
    const std::string_view trimmed = text::Trimmed(text);
    if (trimmed.size() != text.size() && !trimmed.empty())
        Tolerate(element, "There are blanks around its value.");
    return {trimmed, leaf.end};
}

const char* CompleteContext::ReadNumber(const ScannedChild& element, std::optional<double>& value) {
    if (value) {
        ReportSecond(element);
        return nullptr;
    }
    std::string scratch;
    const Value found = ValueOf(element, scratch);
    value = NumberIn(found.trimmed);
    if (!value)
        ReportUnreadable(element, found.trimmed, "a number");
    return found.end;
}

const char* CompleteContext::ReadTime(const ScannedChild& element, std::optional<double>& value) {
    if (value) {
        ReportSecond(element);
        return nullptr;
    }
    std::string scratch;
    const Value found = ValueOf(element, scratch);
    value = TimeIn(found.trimmed);
    if (!value)
        ReportUnreadable(element, found.trimmed, "a time");
    else if (*value < 0.0)
        Tolerate(element, "It is a time before 1970.");
    return found.end;
}

const char* CompleteContext::ReadInteger(const ScannedChild& element, std::optional<std::int32_t>& value) {
    if (value) {
        ReportSecond(element);
        return nullptr;
    }
    std::string scratch;
    const Value found = ValueOf(element, scratch);
    value = IntegerIn(found.trimmed);
    if (!value)
        ReportUnreadable(element, found.trimmed, "a whole number");
    return found.end;
}

void CompleteContext::ReportUnreadable(const ScannedChild& element, std::string_view value,
                                       const char* what) {
    if (IsWatched() && !value.empty())
        Notify(element, kGpxUnreadable, Quoted(value) + " is not " + what + '.');
}

void CompleteContext::ReportSecond(const ScannedChild& element) {
    if (IsWatched())
        Notify(element, kGpxReplaced, "The first element of this name is the one that is read.");
}

void CompleteContext::ReportPieces(const ScannedChild& element) {
    if (IsWatched() && !IsOneText(element.tag))
        Notify(element, kGpxTolerated, "Its text is in several pieces, or does not come first in it.");
}

// Nothing is lost: the source has it.
void CompleteContext::Notify(const ScannedChild& element, GpxSkipReason reason, std::string message) {
    const text::SourceLocation location = source_->Locate(source_->PlaceOf(element.tag.end));
    GpxSkippedElement what;
    for (const std::string_view name : path_)
        what.element.append(name).append(1, '/');
    what.element += element.name;
    what.line = location.line;
    what.column = location.column;
    what.reason = reason;
    what.message = std::move(message);
    host_.reporter.Notify(what);
}

} // namespace vexaTransferLib::complete
