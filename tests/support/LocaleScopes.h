// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/locid.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// Sets the C locale of the process as long as this object exists, and restores the former one.
class CLocaleScope {
public:
    explicit CLocaleScope(const char* name);
    ~CLocaleScope();
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

    /// False when this machine does not have the locale; it was then not changed.
    bool IsInstalled() const { return installed_; }

private:
    std::string former_;
    bool installed_;
};

/// Sets ICU's default locale as long as this object exists, and restores the former one.
class IcuLocaleScope {
public:
    explicit IcuLocaleScope(const char* name);
    ~IcuLocaleScope();
    IcuLocaleScope(const IcuLocaleScope&) = delete;
    IcuLocaleScope& operator=(const IcuLocaleScope&) = delete;

private:
    icu::Locale former_;
};

} // namespace vexaTransferLib::testing_support
