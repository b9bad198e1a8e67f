// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/locid.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// The C locale of the process while this lives; the former one afterwards.
class CLocaleScope {
public:
    explicit CLocaleScope(const char* name);
    ~CLocaleScope();
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

    /// False when this machine does not have the locale; nothing was changed then.
    bool IsInstalled() const { return installed_; }

private:
    std::string former_;
    bool installed_;
};

/// ICU's default locale while this lives; the former one afterwards.
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
