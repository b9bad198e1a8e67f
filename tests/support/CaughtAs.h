// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxError.h>

#include <common/dbc.h>

#include <exception>
#include <typeinfo>

namespace vexaTransferLib::testing_support {

/// The class by which a host catches an exception. For a typed error this is the contract error that it
/// derives from, for every other exception its own class.
inline const std::type_info& CaughtAs(const std::exception& exception) {
    if (dynamic_cast<const GpxReadError*>(&exception) != nullptr ||
        dynamic_cast<const GpxWriteError*>(&exception) != nullptr)
        return typeid(dbc::postcondition_error);
    if (dynamic_cast<const GpxReadValueError*>(&exception) != nullptr)
        return typeid(dbc::precondition_error);
    return typeid(exception);
}

} // namespace vexaTransferLib::testing_support
