// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/FileSource.h>
#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/Progress.h>

#include <unicode/unistr.h>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

/// One file for an XML parser: a path, an address, or bytes in memory. With an observer, the progress of its
/// reading is reported.
class XmlInput {
public:
    /// Whether a path that looks like an address may be one. With kAllowed, the XML parser reads the address
    /// from a server or from a file. With kFilesOnly, the address is refused unless a file has this name.
    enum class AddressPolicy { kAllowed, kFilesOnly };

    // The observer may be null.

    XmlInput(const icu::UnicodeString& path, AddressPolicy policy, GpxReadObserver* observer);
    /// \param fileName the bytes that the system is given; never taken for an address
    XmlInput(const std::string& fileName, GpxReadObserver* observer);
    /// \param bytes not copied; they must stay valid while this object is in use
    XmlInput(std::string_view bytes, const icu::UnicodeString& name, GpxReadObserver* observer);

    /// Makes the file an untrusted one: its bytes are then checked for everything that the XML parser reads
    /// to its end before it can be stopped.
    void Limit(const GpxInputLimits& limits, InputLimiter::Extent extent);

    const InputName& Name() const { return name_; }
    /// Null when there is no observer.
    Progress* GetProgress() { return progress_ ? &*progress_ : nullptr; }
    /// False for a pipe, an address and everything else that is not a regular file: it cannot be read a
    /// second time.
    bool IsRepeatable() const { return isRepeatable_; }
    /// How many bytes it had when this object was made; 0 when it is not repeatable.
    std::uint64_t ExpectedSize() const { return expectedSize_; }

    /// The bytes from their start, for a reader that needs no XML parser: not limited, and their progress is not
    /// reported. Null for an address, and for what cannot be opened. A file is opened once, for this and then for the
    /// XML parser, so that all see the same file.
    std::unique_ptr<xercesc::BinInputStream> OpenBytes();

    /// \throws what the parser throws; ReadAborted; std::bad_alloc; GpxReadError for an address that is
    ///         refused
    template <class Parser>
    void Feed(Parser& parser) {
        Open();
        if (source_)
            parser.parse(*source_);
        else
            parser.parse(SystemId());
        EndProgress();
    }

    /// Reports the end of the reading to the observer.
    /// \throws ReadAborted when the observer has cancelled the reading
    void EndProgress();

private:
    /// The zero-terminated name for the XML parser; null when the name is bogus.
    const XMLCh* SystemId();
    std::unique_ptr<xercesc::InputSource> MakeSource();
    void Open();
    void LimitSource();
    void LookForFile(GpxReadObserver* observer);
    void Watch(GpxReadObserver& observer, std::uint64_t size);

    InputName name_;
    icu::UnicodeString systemId_;
    std::string fileName_;
    /// Empty when the name is always that of a file, even if it looks like an address.
    std::optional<AddressPolicy> policy_;
    bool isRepeatable_ = true;
    std::uint64_t expectedSize_ = 0;
    /// The file that OpenBytes has opened, until the XML parser gets it.
    std::unique_ptr<OpenFile> opened_;
    std::optional<Progress> progress_;
    /// The source that is read; null when it cannot be made and the XML parser is to report why.
    std::unique_ptr<xercesc::InputSource> source_;
    /// The limits of an untrusted file; empty for a trusted one.
    std::optional<GpxInputLimits> limits_;
    InputLimiter::Extent extent_ = InputLimiter::Extent::kFile;
    /// The source whose bytes are checked by `source_`, or by `watched_` when there is an observer.
    std::unique_ptr<xercesc::InputSource> limited_;
    /// The source whose progress `source_` reports.
    std::unique_ptr<xercesc::InputSource> watched_;
};

} // namespace vexaTransferLib::reader
