// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A link of a point or a track.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

/// A link: the `url` and `urlname` of GPX 1.0, the `link` element of GPX 1.1.
///
/// The address is given at construction, cannot be changed and is never empty. Text and type are absent at first. A
/// text of blanks counts as present. Copies are independent. A moved-from link may only be assigned to or destroyed. A
/// failed operation leaves the link unchanged.
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

    /// The link's text (GPX 1.0 `urlname`). Returns false and leaves \p text unchanged when there is none.
    bool GetUrlText(icu::UnicodeString& text) const;
    /// The MIME type of the target, which is written in GPX 1.1 only. Returns false and leaves \p type unchanged
    /// when there is none.
    bool GetUrlType(icu::UnicodeString& type) const;

    /// \throws dbc::precondition_error "The GPX URL text must not be empty."
    void SetUrlText(const icu::UnicodeString& text);
    /// \throws dbc::precondition_error "The GPX URL type must not be empty."
    void SetUrlType(const icu::UnicodeString& type);

    /// \{
    /// Removes the value; nothing happens when there is none.
    void ClearUrlText() noexcept { text_.remove(); }
    void ClearUrlType() noexcept { type_.remove(); }
    /// \}

    /// \{
    /// Whether address, text and type are equal, unit by unit.
    friend bool operator==(const GpxUrl& left, const GpxUrl& right) {
        return left.url_ == right.url_ && left.text_ == right.text_ && left.type_ == right.type_;
    }
    friend bool operator!=(const GpxUrl& left, const GpxUrl& right) { return !(left == right); }
    /// \}

    /// Appends the link as GPX text; lines end in CR LF. The type is written in version 1.1 only.
    /// \throws dbc::precondition_error "GPX URLs can only be written to version 1.0 or 1.1 files."; nothing is
    ///         appended then
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."; \p out is then
    ///         bogus
    void AppendToString(const GpxVersion& version, icu::UnicodeString& out) const;

    /// The `link` or `url` element that the link was read from, if its document was read completely; otherwise a view
    /// of nothing.
    GpxElement GetElement() const { return element_; }

private:
    friend class GpxModelAccess;

    icu::UnicodeString url_;
    icu::UnicodeString text_;
    icu::UnicodeString type_;
    GpxElement element_;
};

} // namespace vexaTransferLib
