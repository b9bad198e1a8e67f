// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A link of a point or a track.

#include <common/Export.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

/// A link: the `url` and `urlname` of GPX 1.0, the `link` element of GPX 1.1.
///
/// The address is given at construction and never empty; text and type are absent while empty. A link is
/// built whole and only grows: nothing can be taken away again. A text of blanks counts as present. Copies
/// are independent. A moved-from link may only be assigned to or destroyed. A failed operation leaves the link
/// unchanged.
class VEXATRANSFERLIB_API GpxUrl {
public:
    /// \throws dbc::precondition_error "GPX URLs must not be empty."
    explicit GpxUrl(const icu::UnicodeString& url);
    /// \{
    /// Copies are independent, moves do not throw; a link that was moved from may only be assigned to or
    /// destroyed.
    GpxUrl(const GpxUrl&) = default;
    GpxUrl(GpxUrl&&) noexcept = default;
    GpxUrl& operator=(const GpxUrl&);
    GpxUrl& operator=(GpxUrl&&) noexcept = default;
    /// \}
    virtual ~GpxUrl();

    /// The address.
    icu::UnicodeString GetUrl() const;

    /// The link's text (GPX 1.0 `urlname`); false, and \p text untouched, when there is none.
    bool GetUrlText(icu::UnicodeString& text) const;
    /// The MIME type of the target (written in GPX 1.1 only); false, and \p type untouched, when there is
    /// none.
    bool GetUrlType(icu::UnicodeString& type) const;

    /// \throws dbc::precondition_error "The GPX URL text must not be empty."
    void SetUrlText(const icu::UnicodeString& text);
    /// \throws dbc::precondition_error "The GPX URL type must not be empty."
    void SetUrlType(const icu::UnicodeString& type);

    /// Appends the link as GPX text; lines end in CR LF. Version 1.0 has no place for the type.
    /// \throws dbc::precondition_error "GPX URLs can only be written to version 1.0 or 1.1 files.", nothing
    ///         appended
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."; \p out is then
    ///         bogus
    void AppendToString(const GpxVersion& version, icu::UnicodeString& out) const;

private:
    friend class GpxModelAccess;

    icu::UnicodeString url_;
    icu::UnicodeString text_;
    icu::UnicodeString type_;
};

} // namespace vexaTransferLib
