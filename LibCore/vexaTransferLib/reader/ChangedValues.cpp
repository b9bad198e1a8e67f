// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ChangedValues.h>

#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/WrittenDigits.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

namespace {

const char16_t* TextOf(const NodeView& element, const char16_t* attribute) {
    return attribute != nullptr ? element.Attribute(attribute) : element.FirstChildText();
}

std::string NameOf(const char16_t* attribute) {
    std::string name;
    ToNarrow(attribute, name);
    return name;
}

// Compares without copies: a text may be long.
bool DifferOnlyInLineEnds(const icu::UnicodeString& one, const icu::UnicodeString& other) {
    const auto next = [](const icu::UnicodeString& text, std::int32_t at) {
        while (at < text.length() && text[at] == u'\r')
            ++at;
        return at;
    };
    std::int32_t left = next(one, 0);
    std::int32_t right = next(other, 0);
    while (left < one.length() && right < other.length() && one[left] == other[right]) {
        left = next(one, left + 1);
        right = next(other, right + 1);
    }
    return left == one.length() && right == other.length();
}

} // namespace

void NotifyLostDigits(SkipReporter& reporter, const NodeView& element, const char16_t* attribute, double kept,
                      int decimals) {
    const char16_t* const wide = TextOf(element, attribute);
    std::string text;
    if (!ToNarrow(wide, text))
        return;
    const text::DigitsLeft left = text::CompareDigits(text.c_str(), kept, decimals);
    if (left == text::DigitsLeft::kRounded)
        reporter.Report(element, kGpxRounded, "Only " + std::to_string(decimals) + " decimals are written.",
                        true, NameOf(attribute));
    else if (left == text::DigitsLeft::kOther)
        reporter.Report(element, kGpxRounded,
                        Quoted(wide) + " is written as " +
                            std::string(text::FixedText(kept, decimals).View()) + ".",
                        true, NameOf(attribute));
}

void NotifyTimeLosses(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                      double millis, const text::TimeLosses& losses) {
    if (losses.hasFraction)
        reporter.Report(element, kGpxRounded, "Fractions of a second are not written.", true,
                        NameOf(attribute));
    if (losses.hasNoSuchDay)
        reporter.Report(element, kGpxChanged,
                        Quoted(TextOf(element, attribute)) + " is kept as " +
                            std::string(text::TimeText(millis, text::YearDigits::kFour).View()) + ".",
                        true, NameOf(attribute));
    if (losses.hasRest)
        reporter.Report(element, kGpxChanged, "Text after the time is not read.", true, NameOf(attribute));
}

void ReportTimeAsNone(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                      const char* consequence) {
    if (reporter.IsWanted())
        reporter.Report(element, kGpxChanged, consequence, true, NameOf(attribute));
}

// Line ends are no loss: a reader of XML takes all of them for the same.
void ReportCleaned(SkipReporter& reporter, const NodeView& element, const icu::UnicodeString& before,
                   const icu::UnicodeString& after) {
    if (!reporter.IsWanted() || before == after)
        return;
    if (after.isEmpty())
        reporter.Report(element, kGpxCleaned, "The text cleaner has left nothing of its text.", true);
    else if (DifferOnlyInLineEnds(before, after))
        reporter.Report(element, kGpxCleaned, "The text cleaner has changed its line ends.", false);
    else
        reporter.Report(element, kGpxCleaned, "The text cleaner has changed its text.", true);
}

} // namespace vexaTransferLib::reader
