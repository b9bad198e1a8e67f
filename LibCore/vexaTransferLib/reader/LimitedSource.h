// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/TagWatcher.h>

#include <xercesc/sax/InputSource.hpp>

#include <optional>
#include <utility>

namespace vexaTransferLib::reader {

/// Passes on the bytes of an untrusted file, which a TagWatcher checks; throws ReadAborted out of the parse
/// when they exceed a limit. The caller owns the source of the bytes. For one parse at a time.
class LimitedSource final : public xercesc::InputSource {
public:
    /// \param the file's name, for messages
    LimitedSource(const xercesc::InputSource& source, const GpxInputLimits& limits, InputName name,
                  InputLimiter::Extent extent);

    xercesc::BinInputStream* makeStream() const override;

private:
    const xercesc::InputSource& source_;
    GpxInputLimits limits_;
    InputName name_;
    InputLimiter::Extent extent_;
    /// The watcher of the last stream. It is not a part of the stream, because the XML parser loses the
    /// stream when memory runs out while it makes its reader.
    mutable std::optional<TagWatcher> watcher_;
};

} // namespace vexaTransferLib::reader
