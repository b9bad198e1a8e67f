// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>

namespace vexaTransferLib::text {

/// A date of the Gregorian calendar, also before it was introduced.
struct CivilDate {
    std::int64_t year;
    int month;
    int day;
};

/// Days from 1970-01-01 to a date, and back.
std::int64_t DaysFromCivil(std::int64_t year, int month, int day);
CivilDate CivilFromDays(std::int64_t days);

/// \param month 1 to 12
int DaysInMonth(std::int64_t year, int month);

} // namespace vexaTransferLib::text
