// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The GPX schema version of a document.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>

namespace vexaTransferLib {

/// GPX 1.0 or GPX 1.1; no other version can exist as a value.
///
/// A plain value: copies are independent, and only the two checking constructors can fail. Versions are ordered by
/// major, then minor number.
///
///     document.WriteToFile(GpxVersion::GetLatestVersion(), "MyApp", "https://example.org/", path);
class VEXATRANSFERLIB_API GpxVersion {
public:
    /// \throws dbc::precondition_error "Only GPX versions 1.0 and 1.1 are supported." for any pair but (1, 0)
    ///         and (1, 1)
    GpxVersion(unsigned long major, unsigned long minor);

    /// Accepts exactly "1.0" and "1.1", without blanks.
    /// \throws dbc::precondition_error "Unsupported GPX version string."
    GpxVersion(const icu::UnicodeString& version);

    /// GPX 1.1.
    static GpxVersion GetLatestVersion();

    /// The two numbers: 1 and 0, or 1 and 1.
    void GetVersion(unsigned long& major, unsigned long& minor) const;

    /// \{
    /// True for the version in the function's name.
    bool IsGpx10() const noexcept { return major_ == 1 && minor_ == 0; }
    bool IsGpx11() const noexcept { return major_ == 1 && minor_ == 1; }
    /// \}

    /// "1.0" or "1.1".
    icu::UnicodeString GetVersionString() const;

    friend bool operator==(const GpxVersion& a, const GpxVersion& b) noexcept {
        return a.major_ == b.major_ && a.minor_ == b.minor_;
    }
    friend bool operator!=(const GpxVersion& a, const GpxVersion& b) noexcept { return !(a == b); }
    friend bool operator<(const GpxVersion& a, const GpxVersion& b) noexcept {
        return a.major_ != b.major_ ? a.major_ < b.major_ : a.minor_ < b.minor_;
    }
    friend bool operator>(const GpxVersion& a, const GpxVersion& b) noexcept { return b < a; }
    friend bool operator<=(const GpxVersion& a, const GpxVersion& b) noexcept { return !(b < a); }
    friend bool operator>=(const GpxVersion& a, const GpxVersion& b) noexcept { return !(a < b); }

private:
    friend class GpxModelAccess;

    std::uint32_t major_;
    std::uint32_t minor_;
};

} // namespace vexaTransferLib
