// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputGuard.h>
#include <vexaTransferLib/reader/TagWatcher.h>

#include <xercesc/sax/InputSource.hpp>

#include <optional>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// A stranger's source of bytes, watched over by a TagWatcher: throws ReadingStop out of the parse. The source stays
/// the caller's. Serves one parse at a time.
class GuardedSource final : public xercesc::InputSource {
public:
    /// \param name of the file, for messages
    GuardedSource(const xercesc::InputSource& source, const GpxInputLimits& limits, std::string name,
                  InputGuard::Extent extent);

    xercesc::BinInputStream* makeStream() const override;

private:
    const xercesc::InputSource& source_;
    GpxInputLimits limits_;
    std::string name_;
    InputGuard::Extent extent_;
    /// Of the last stream, which the XML parser loses when its memory runs out as it makes its reader.
    mutable std::optional<TagWatcher> watcher_;
};

} // namespace vexaTransferLib::reader
