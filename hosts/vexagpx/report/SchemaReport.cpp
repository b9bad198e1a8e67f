// SPDX-License-Identifier: MIT
#include <vexagpx/report/SchemaReport.h>

namespace vexagpx {

const Cause& SchemaCause(SchemaErrorKind kind) {
    static constexpr Cause kOtherRoot = {
        "other-root", "The document element is not the gpx of a version of GPX",
        "Write xmlns=\"http://www.topografix.com/GPX/1/1\" in the gpx element, or .../1/0 for version 1.0."};
    static constexpr Cause kNoSchema = {
        "no-schema", "Elements of other programs where GPX 1.0 asks for their schema",
        "Most programs ignore them; vexagpx convert --gpx 1.1 puts them where they need none."};
    static constexpr Cause kUnknown = {"unknown-element", "Elements that have no place where they stand",
                                       "Remove them, or put them into extensions with a namespace."};
    static constexpr Cause kMisplaced = {"misplaced-element", "Elements that come too late or too often",
                                         "Let vexagpx convert write them in order."};
    static constexpr Cause kAttribute = {"unknown-attribute", "Attributes that their elements do not have",
                                         "Remove them; vexagpx convert leaves them out."};
    static constexpr Cause kMissing = {"missing-attribute", "Attributes that are missing",
                                       "Add them, or remove the element."};
    static constexpr Cause kText = {"stray-text", "Text where only elements may be", "Remove it."};
    static constexpr Cause kValue = {
        "bad-value", "Values that are not of their type",
        "Correct them where they are wrong; vexagpx check --schema FILE has every line."};
    switch (kind) {
    case SchemaErrorKind::kOtherRoot:
        return kOtherRoot;
    case SchemaErrorKind::kNoSchema:
        return kNoSchema;
    case SchemaErrorKind::kUnknownElement:
        return kUnknown;
    case SchemaErrorKind::kMisplacedElement:
        return kMisplaced;
    case SchemaErrorKind::kUnknownAttribute:
        return kAttribute;
    case SchemaErrorKind::kMissingAttribute:
        return kMissing;
    case SchemaErrorKind::kStrayText:
        return kText;
    case SchemaErrorKind::kBadValue:
        break;
    }
    return kValue;
}

void SchemaReport::Add(SchemaError error, const Location& location) {
    if (!errors_.Contains(error)) {
        if (listed_.size() >= kMostKinds && !listed_.contains({error.element, error.kind}))
            error = {"...", error.kind, "More elements than are listed."};
        else if (std::size_t& messages = listed_[{error.element, error.kind}]; messages < kMostMessages)
            ++messages;
        else
            error.message = "More of this kind than are listed.";
    }
    errors_.Add(error, location);
}

} // namespace vexagpx
