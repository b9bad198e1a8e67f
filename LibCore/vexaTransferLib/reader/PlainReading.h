// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/ByteWindow.h>
#include <vexaTransferLib/reader/EventWalk.h>
#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadSettings.h>
#include <vexaTransferLib/reader/XmlInput.h>

#include <memory>
#include <vector>

namespace vexaTransferLib::reader {

/// Reads one plain file into a document without the XML parser, several times as fast. The bytes are looked at twice:
/// first to find out whether the whole file is plain, and only then to read it. So nothing has happened, no report and
/// no notice, when a file is left to the XML parser.
class PlainReading {
public:
    /// The caller owns context and input.
    PlainReading(ReadContext& context, XmlInput& input, const ReadSettings& settings);

    /// Returns false for a file that is left to the XML parser. Reports and notices are then still to come, except when
    /// the file changed while it was read.
    /// \throws ReadAborted; what the receiver of errors throws; std::bad_alloc
    bool Parse();
    /// Moves the content that was read into \p document, also when the reading has failed.
    /// \throws what the reading failed with, contract errors as GpxReadError and GpxReadValueError
    void MoveTo(GpxDocument& document);

private:
    std::unique_ptr<ByteWindow> OpenPlain();
    bool Restart(ByteWindow& window);
    bool ReadAgain(ByteWindow& window);

    XmlInput& input_;
    const ReadSettings& settings_;
    GpxDocument document_;
    EventWalk walk_;
    /// In the order of the file.
    std::vector<LongElement> longElements_;
};

} // namespace vexaTransferLib::reader
