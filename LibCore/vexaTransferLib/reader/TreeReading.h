// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/ObservedErrorHandler.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadSettings.h>
#include <vexaTransferLib/reader/XmlInput.h>

#include <xercesc/parsers/XercesDOMParser.hpp>

#include <memory>

namespace vexaTransferLib::reader {

/// Reads one file through a DOM, in two steps, so that the caller can check between them whether the XML
/// parser has found errors.
class TreeReading {
public:
    /// The caller owns the input.
    TreeReading(XmlInput& input, const ReadSettings& settings);

    /// \throws GpxReadError for what the XML parser throws; ReadAborted; what the receiver of errors throws
    void Parse();
    /// False after the parse when the file could not be opened.
    bool HasDocument() const { return parser_->getDocument() != nullptr; }
    /// After the parse: gives up the parser with its tree. The parser then reports its errors to \p receiver.
    /// This object must not be used after that.
    std::unique_ptr<xercesc::XercesDOMParser> TakeParser(xercesc::ErrorHandler& receiver);
    /// After the parse: replaces \p document, also when the reading fails, but not when it is aborted.
    /// \throws ReadAborted; what the reading fails with, contract errors as GpxReadError and GpxReadValueError
    void ReadInto(ReadContext& context, GpxDocument& document) const;

private:
    void ReadTree(ReadContext& context, GpxDocument& document) const;

    XmlInput& input_;
    ObservedErrorHandler errors_;
    std::unique_ptr<xercesc::XercesDOMParser> parser_;
};

} // namespace vexaTransferLib::reader
