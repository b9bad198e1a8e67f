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

GpxReadErrorDetails MakeDetails(GpxReadErrorKind kind, const InputName& name, std::string messageStart,
                                std::string messageEnd) {
    GpxReadErrorDetails details;
    name.Text().toUTF8String(details.file);
    details.kind = kind;
    details.messageStart = std::move(messageStart);
    details.messageEnd = std::move(messageEnd);
    details.namesFile = true;
    return details;
}

GpxReadError MakeError(const InputName& name, const GpxReadErrorDetails& details) {
    return GpxReadError(details.MessageFor(name.Bytes()), details);
}

void RefuseUntrusted(GpxReadErrorKind kind, const InputName& name, const std::string& why) {
    throw ReadAborted{std::make_exception_ptr(
        MakeError(name, MakeDetails(kind, name, "The untrusted GPX file was refused: ", ". " + why)))};
}

void RefuseOverLimit(const InputName& name, const char* what, std::uint64_t limit, const char* limitName) {
    RefuseUntrusted(GpxReadErrorKind::kOverLimit, name,
                    std::string(what) + " " + std::to_string(limit) + " (limit of " + limitName + ").");
}

void FailWithErrors(const InputName& name, bool isOpened, const GpxParserMessage& firstError) {
    GpxReadErrorDetails details = MakeDetails(KindOfFailedParse(isOpened), name,
                                              "One or more errors encountered while parsing the GPX file: ");
    details.line = firstError.line;
    details.column = firstError.column;
    details.parserMessage = firstError.text;
    throw MakeError(name, details);
}

void FailWithoutDocument(const InputName& name) {
    throw MakeError(name,
                    MakeDetails(GpxReadErrorKind::kNotOpened, name, "Unable to interpret the GPX file: ",
                                ". The document object could not be obtained."));
}

void RethrowParserException(const InputName& name, bool isOpened) {
    const GpxReadErrorKind kind = KindOfFailedParse(isOpened);
    try {
        throw;
    } catch (const xercesc::XMLException& exception) {
        std::string message;
        ToNarrow(exception.getMessage(), message);
        GpxReadErrorDetails details =
            MakeDetails(kind, name, "Error parsing the GPX file: ", ". Error message: " + message);
        details.parserMessage = ToUtf8(exception.getMessage());
        throw MakeError(name, details);
    } catch (const xercesc::DOMException& exception) {
        GpxReadErrorDetails details = MakeDetails(
            kind, name, "Error parsing GPX file: ", ". DOM error code: " + std::to_string(exception.code));
        details.parserMessage = ToUtf8(exception.getMessage());
        throw MakeError(name, details);
    }
}

void RethrowContentError(const InputName& name, bool isGpx, SourceLocation location) {
    GpxReadErrorDetails details =
        MakeDetails(isGpx ? GpxReadErrorKind::kInvalidContent : GpxReadErrorKind::kNotGpx, name, {});
    details.line = location.line;
    details.column = location.column;
    details.namesFile = false;
    try {
        throw;
    } catch (const dbc::postcondition_error& error) {
        details.messageStart = error.what();
        throw GpxReadError(error.what(), details);
    } catch (const dbc::precondition_error& error) {
        details.messageStart = error.what();
        throw GpxReadValueError(error.what(), details);
    }
}

} // namespace vexaTransferLib::reader
