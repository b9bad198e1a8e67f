// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ReadErrors.h>

#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/IcuText.h>

#include <common/dbc.h>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <exception>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

GpxReadErrorKind KindOfFailedParse(bool isOpened) {
    return isOpened ? GpxReadErrorKind::kIllFormed : GpxReadErrorKind::kNotOpened;
}

} // namespace

std::string ToUtf8(const char16_t* units) {
    std::string narrow;
    if (units != nullptr)
        text::Alias(units).toUTF8String(narrow);
    return narrow;
}

GpxReadErrorDetails MakeDetails(GpxReadErrorKind kind, const InputName& name, SourceLocation location,
                                std::string parserMessage) {
    GpxReadErrorDetails details;
    name.Text().toUTF8String(details.file);
    details.line = location.line;
    details.column = location.column;
    details.kind = kind;
    details.parserMessage = std::move(parserMessage);
    return details;
}

void RefuseUntrusted(GpxReadErrorKind kind, const InputName& name, const std::string& why) {
    throw ReadAborted{std::make_exception_ptr(GpxReadError(
        "The untrusted GPX file was refused: " + name.Bytes() + ". " + why, MakeDetails(kind, name)))};
}

void RefuseOverLimit(const InputName& name, const char* what, std::uint64_t limit, const char* limitName) {
    RefuseUntrusted(GpxReadErrorKind::kOverLimit, name,
                    std::string(what) + " " + std::to_string(limit) + " (limit of " + limitName + ").");
}

void FailWithErrors(const InputName& name, bool isOpened, const GpxParserMessage& firstError) {
    throw GpxReadError("One or more errors encountered while parsing the GPX file: " + name.Bytes(),
                       MakeDetails(KindOfFailedParse(isOpened), name, {firstError.line, firstError.column},
                                   firstError.text));
}

void FailWithoutDocument(const InputName& name) {
    throw GpxReadError("Unable to interpret the GPX file: " + name.Bytes() +
                           ". The document object could not be obtained.",
                       MakeDetails(GpxReadErrorKind::kNotOpened, name));
}

void RethrowParserException(const InputName& name, bool isOpened) {
    const GpxReadErrorKind kind = KindOfFailedParse(isOpened);
    try {
        throw;
    } catch (const xercesc::XMLException& exception) {
        std::string message;
        ToNarrow(exception.getMessage(), message);
        throw GpxReadError("Error parsing the GPX file: " + name.Bytes() + ". Error message: " + message,
                           MakeDetails(kind, name, {}, ToUtf8(exception.getMessage())));
    } catch (const xercesc::DOMException& exception) {
        throw GpxReadError("Error parsing GPX file: " + name.Bytes() +
                               ". DOM error code: " + std::to_string(exception.code),
                           MakeDetails(kind, name, {}, ToUtf8(exception.getMessage())));
    }
}

void RethrowContentError(const InputName& name, bool isGpx, SourceLocation location) {
    const GpxReadErrorKind kind = isGpx ? GpxReadErrorKind::kInvalidContent : GpxReadErrorKind::kNotGpx;
    try {
        throw;
    } catch (const dbc::postcondition_error& error) {
        throw GpxReadError(error.what(), MakeDetails(kind, name, location));
    } catch (const dbc::precondition_error& error) {
        throw GpxReadValueError(error.what(), MakeDetails(kind, name, location));
    }
}

} // namespace vexaTransferLib::reader
