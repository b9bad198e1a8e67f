// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputGuard.h>

#include <vexaTransferLib/reader/ReadingStop.h>

#include <common/dbc.h>

#include <exception>

namespace vexaTransferLib::reader {

void InputGuard::RefuseDocumentType() const {
    Refuse("It has a document type declaration.");
}

void InputGuard::Refuse(const char* what, std::uint64_t limit, const char* limitName) const {
    Refuse(std::string(what) + " " + std::to_string(limit) + " (limit of " + limitName + ").");
}

void InputGuard::Refuse(const std::string& why) const {
    throw ReadingStop{std::make_exception_ptr(
        dbc::postcondition_error("The untrusted GPX file was refused: " + name_ + ". " + why))};
}

} // namespace vexaTransferLib::reader
