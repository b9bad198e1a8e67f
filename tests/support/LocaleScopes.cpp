// SPDX-License-Identifier: MIT
#include "support/LocaleScopes.h"

#include <clocale>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

void SetIcuDefault(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(locale, status);
    if (U_FAILURE(status))
        throw std::runtime_error("ICU did not take the default locale");
}

} // namespace

CLocaleScope::CLocaleScope(const char* name)
    : former_(std::setlocale(LC_ALL, nullptr)), installed_(std::setlocale(LC_ALL, name) != nullptr) {}

CLocaleScope::~CLocaleScope() {
    std::setlocale(LC_ALL, former_.c_str());
}

IcuLocaleScope::IcuLocaleScope(const char* name) : former_(icu::Locale::getDefault()) {
    SetIcuDefault(icu::Locale::createFromName(name));
}

IcuLocaleScope::~IcuLocaleScope() {
    SetIcuDefault(former_);
}

} // namespace vexaTransferLib::testing_support
