// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the file has for points, routes and tracks alike.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxLink.h>

#include <unicode/unistr.h>

#include <optional>
#include <utility>
#include <vector>

namespace vexaTransferLib {

/// The values that points, routes and tracks have in common, read from an element on demand: GpxPointDetails and
/// GpxPathDetails have all of it, and all that is said here holds for them.
///
/// Elements of every version of GPX are looked for, whatever the version of the file says, and of several with one
/// name the first counts. An optional is empty when the file has no such element, and, for a number or a time, when
/// its text is none. An empty element gives an empty text. Texts come as they stand in the file, with references
/// replaced and nothing trimmed.
///
/// It is a view, as GpxElement is: it shares the source, and what it returns are copies. Nothing is kept, so each
/// call reads the element again and costs at most as much as its content; for a track that is all its points, and a
/// value that the file does not have costs as much as that. Of a view of nothing everything is empty. Const
/// operations may run on several threads at once. All throw std::bad_alloc when memory runs out, and nothing else.
class VEXATRANSFERLIB_API GpxObjectDetails {
public:
    /// \param element a `wpt`, `rtept`, `trkpt`, `rte` or `trk`; its name is not checked
    explicit GpxObjectDetails(GpxElement element) : element_(std::move(element)) {}

    /// The element that all is read from.
    const GpxElement& GetElement() const { return element_; }

    /// \{
    /// The texts of `name`, `cmt`, `desc`, `src` and `type`.
    std::optional<icu::UnicodeString> GetName() const;
    std::optional<icu::UnicodeString> GetComment() const;
    std::optional<icu::UnicodeString> GetDescription() const;
    std::optional<icu::UnicodeString> GetSource() const;
    std::optional<icu::UnicodeString> GetType() const;
    /// \}

    /// All links in their order: each `link` of GPX 1.1, and each `url` of 1.0, whose text is its `urlname`. Of
    /// several the first `urlname` belongs to the first `url`, and so on.
    std::vector<GpxLink> GetLinks() const;

    /// The elements of other formats; see ForeignElements.
    std::vector<GpxElement> GetExtensions() const;

private:
    GpxElement element_;
};

} // namespace vexaTransferLib
