// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadSettings.h>
#include <vexaTransferLib/reader/XmlInput.h>
#include <vexaTransferLib/text/SourceLocation.h>

#include <vector>

namespace vexaTransferLib::complete {

/// Reads one file completely, in two steps, so that the caller can check between them whether the XML parser has found
/// errors: first the source, from the bytes of a plain file or from the XML parser's events, then the model from it.
class CompleteReading {
public:
    /// The caller owns context and input.
    CompleteReading(reader::ReadContext& context, reader::XmlInput& input,
                    const reader::ReadSettings& settings)
        : context_(context), input_(input), settings_(settings) {}

    /// \throws GpxReadError for what the XML parser throws; ReadAborted; what the receiver throws
    void ReadSource();
    /// False after ReadSource when the file could not be opened.
    bool HasDocument() const { return source_ != nullptr || hasDocument_; }
    /// Reads the source into the document, which is only changed when the reading succeeds.
    /// \throws GpxReadError for a file whose root is not that of GPX, and without a document; ReadAborted
    void ReadInto(GpxDocument& document);

private:
    bool ReadPlainSource();
    void ReadEventSource();
    void RequireGpxRoot() const;
    text::SourceLocation RootLocation() const;

    reader::ReadContext& context_;
    reader::XmlInput& input_;
    const reader::ReadSettings& settings_;
    SourceText::Pointer source_;
    /// Of a plain file, in its order.
    std::vector<reader::LongElement> longElements_;
    bool isPlain_ = false;
    bool hasDocument_ = false;
};

} // namespace vexaTransferLib::complete
