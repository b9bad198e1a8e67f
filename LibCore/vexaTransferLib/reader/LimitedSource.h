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

/// An untrusted source of bytes, which a TagWatcher checks: throws ReadAborted out of the parse. The source stays the
/// caller's. Serves one parse at a time.
class LimitedSource final : public xercesc::InputSource {
public:
    /// \param name of the file, for messages
    LimitedSource(const xercesc::InputSource& source, const GpxInputLimits& limits, InputName name,
                  InputLimiter::Extent extent);

    xercesc::BinInputStream* makeStream() const override;

private:
    const xercesc::InputSource& source_;
    GpxInputLimits limits_;
    InputName name_;
    InputLimiter::Extent extent_;
    /// Of the last stream, which the XML parser loses when its memory runs out as it makes its reader.
    mutable std::optional<TagWatcher> watcher_;
};

} // namespace vexaTransferLib::reader
