// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/Causes.h>
#include <vexagpx/report/Occurrences.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace vexagpx {

/// How a document differs from what its schema allows.
enum class SchemaErrorKind {
    kOtherRoot,        ///< the document element is of no schema that is known
    kNoSchema,         ///< an element of another program, where GPX 1.0 asks for its schema
    kUnknownElement,   ///< an element that has no place where it stands
    kMisplacedElement, ///< one that comes too late or too often
    kUnknownAttribute,
    kMissingAttribute,
    kStrayText, ///< text where only elements may be
    kBadValue,
};

/// A sentence and a word for the kind, and what to do.
const Cause& SchemaCause(SchemaErrorKind kind);

struct SchemaError {
    std::string element; ///< "gpx/wpt/ele"
    SchemaErrorKind kind;
    std::string message;

    bool operator<(const SchemaError& other) const {
        return std::tie(element, kind, message) < std::tie(other.element, other.kind, other.message);
    }
};

/// Collects what is not valid in one document. Everything is counted; how much is listed has a limit, so that the
/// memory depends on that and not on the document.
class SchemaReport {
public:
    static constexpr std::size_t kMostKinds = 1000;
    static constexpr std::size_t kMostMessages = 10;

    /// \param each keeps every occurrence by itself instead of counting equal ones
    explicit SchemaReport(bool each) : errors_(each) {}

    void Add(SchemaError error, const Location& location);

    const Occurrences<SchemaError>& Errors() const { return errors_; }
    bool IsValid() const { return errors_.Count() == 0; }

private:
    Occurrences<SchemaError> errors_;
    /// How many different messages are listed of each kind at each element.
    std::map<std::pair<std::string, SchemaErrorKind>, std::size_t> listed_;
};

} // namespace vexagpx
