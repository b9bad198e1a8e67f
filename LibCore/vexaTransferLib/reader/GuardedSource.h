// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputGuard.h>

#include <xercesc/sax/InputSource.hpp>

#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// A stranger's source of bytes, watched over by a TagWatcher: throws ReadingStop out of the parse. The source stays
/// the caller's.
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
};

} // namespace vexaTransferLib::reader
