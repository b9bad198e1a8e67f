// SPDX-License-Identifier: MIT
#include <vexagpx/report/Causes.h>

#include <vexagpx/report/LossReport.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

struct Skip {
    GpxSkipReason reason;
    std::string_view title;
    std::string_view advice;
};

constexpr std::string_view kConvert = "Programs with this library do not keep it; vexagpx convert does.";
constexpr std::string_view kCorrect = "Correct it where it is wrong; vexagpx check FILE has every line.";

constexpr Skip kSkips[] = {
    {kGpxForeignNamespace, "Elements of other programs", kConvert},
    {kGpxUnknownElement, "Elements that the library does not keep", kConvert},
    {kGpxOtherVersion, "Elements of the other version of GPX",
     "State the version that the file has, or let vexagpx convert write it."},
    {kGpxOutOfOrder, "Elements in a wrong order", "Let vexagpx convert write them in order."},
    {kGpxUnreadable, "Values that cannot be read", kCorrect},
    {kGpxRefused, "Elements that are refused", kCorrect},
    {kGpxIncomplete, "Elements that lack what they need", kCorrect},
    {kGpxReplaced, "Elements in whose place another one is kept", kConvert},
    {kGpxUnreadAttribute, "Attributes that the library does not keep", kConvert},
    {kGpxRounded, "Digits that are rounded", kConvert},
    {kGpxCleaned, "Texts of geocaches that are cleaned",
     "Nothing needs to be done; vexagpx convert keeps them."},
    {kGpxInvented, "Names that the file does not have", "Nothing needs to be done."},
    {kGpxChanged, "Values that are kept in another form", kConvert},
    {kGpxTolerated, "Things that are not as they should be, but kept", "Let vexagpx convert write them."},
};

} // namespace

const Cause& SkipCause(GpxSkipReason reason) {
    static const std::vector<Cause> causes = [] {
        std::vector<Cause> all;
        for (const Skip& skip : kSkips)
            all.push_back({Word(skip.reason), skip.title, skip.advice});
        return all;
    }();
    const auto* const found = std::find_if(std::begin(kSkips), std::end(kSkips),
                                           [&](const Skip& skip) { return skip.reason == reason; });
    static constexpr Cause kOther = {"other", "Something else", kCorrect};
    return found != std::end(kSkips) ? causes[static_cast<std::size_t>(found - std::begin(kSkips))] : kOther;
}

} // namespace vexagpx
