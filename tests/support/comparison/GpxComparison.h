// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::testing_support {

/// What a text was to be written as.
enum class GpxTarget { k10, k11 };

/// Something that one GPX text has and another lacks.
struct MissingContent {
    /// Where it is, in the terms of GPX 1.1: "gpx/trk[0]/trkseg[1]/trkpt[17]/ele", "gpx/metadata/link[1]/@href".
    /// Objects are counted from 0; of other elements with one name, the first has no number. A path that starts
    /// with "order of " is that of elements that are all there in another order.
    std::string path;
    std::string value;
    std::size_t times = 1;

    bool operator==(const MissingContent&) const = default;
};

std::ostream& operator<<(std::ostream& out, const MissingContent& missing);

/// What `before` has and `after` lacks, however the two are spelled. These are the same:
/// - GPX 1.0 and 1.1 for what both can say: url and link, an author with or without `metadata`, foreign elements
///   with or without `extensions` around them; all namespaces of GPX, and none outside of foreign elements;
/// - numbers and times of GPX with one value, and any layout, prefix, CDATA section, comment or encoding.
/// The creator, version and schema locations of the root are not compared, and neither are comments, processing
/// instructions, and the order of elements that have different names and the same GPX parent. The time is
/// proportional to the length of the texts. With k10 as target, FindWithoutPlace has what GPX 1.0 cannot say.
/// Throws std::runtime_error when a text is not well-formed.
std::vector<MissingContent> FindMissing(std::string_view before, std::string_view after, GpxTarget target);

/// What `before` has, `after` lacks, and GPX 1.0 has no place for.
std::vector<MissingContent> FindWithoutPlace(std::string_view before, std::string_view after);

/// What `after` has and `before` lacks.
std::vector<MissingContent> FindInvented(std::string_view before, std::string_view after);

} // namespace vexaTransferLib::testing_support
