// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/BufferedErrorHandler.h>
#include <vexaTransferLib/reader/EventParser.h>
#include <vexaTransferLib/reader/EventWalk.h>
#include <vexaTransferLib/reader/ObservedErrorHandler.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadSettings.h>
#include <vexaTransferLib/reader/XmlInput.h>

#include <memory>

namespace vexaTransferLib::reader {

/// Reads one file into a document from the XML parser's events, in two steps, so that the caller can check
/// between them whether the XML parser has found errors.
class EventReading {
public:
    /// The caller owns context and input.
    EventReading(ReadContext& context, XmlInput& input, const ReadSettings& settings);

    /// Returns false for a file that must be read from a DOM (see NeedsDom). No error has then been reported
    /// to the receiver of errors.
    /// \throws GpxReadError for what the XML parser throws; ReadAborted; what the receiver throws
    bool Parse();
    /// False after the parse when the file could not be opened.
    bool HasDocument() const { return parser_->HasDocument(); }
    /// Moves the content that was read into \p document, also when the reading has failed.
    /// \throws what the reading failed with, contract errors as GpxReadError and GpxReadValueError
    void MoveTo(GpxDocument& document);

private:
    bool Feed();

    XmlInput& input_;
    GpxDocument document_;
    EventWalk walk_;
    ObservedErrorHandler observedErrors_;
    BufferedErrorHandler errors_;
    std::unique_ptr<EventParser> parser_;
};

} // namespace vexaTransferLib::reader
