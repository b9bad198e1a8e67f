// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxError.h>

namespace vexaTransferLib {

GpxReadError::GpxReadError(const std::string& message, const GpxReadErrorDetails& details)
    : dbc::postcondition_error(message), details_(std::make_shared<const GpxReadErrorDetails>(details)) {}

GpxReadError::~GpxReadError() = default;

GpxReadValueError::GpxReadValueError(const std::string& message, const GpxReadErrorDetails& details)
    : dbc::precondition_error(message), details_(std::make_shared<const GpxReadErrorDetails>(details)) {}

GpxReadValueError::~GpxReadValueError() = default;

const GpxReadErrorDetails* FindReadErrorDetails(const std::exception& error) noexcept {
    if (const auto* const readError = dynamic_cast<const GpxReadError*>(&error))
        return &readError->Details();
    if (const auto* const valueError = dynamic_cast<const GpxReadValueError*>(&error))
        return &valueError->Details();
    return nullptr;
}

GpxWriteError::GpxWriteError(const std::string& message, const GpxWriteErrorDetails& details)
    : dbc::postcondition_error(message), details_(std::make_shared<const GpxWriteErrorDetails>(details)) {}

GpxWriteError::~GpxWriteError() = default;

} // namespace vexaTransferLib
