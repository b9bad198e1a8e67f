// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/Progress.h>

#include <unicode/unistr.h>
#include <xercesc/sax/InputSource.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

/// One file for an XML parser: a path, an address, or bytes in memory. Its reading is watched when there is an
/// observer.
class XmlInput {
public:
    /// What a path may be. An address is read by the XML parser from a server or from a file, or refused where only
    /// files are read, unless there is a file of that name.
    enum class AddressPolicy { kAllowed, kFilesOnly };

    // The observer may be null.

    XmlInput(const icu::UnicodeString& path, AddressPolicy policy, GpxReadObserver* observer);
    /// \param fileName the bytes that the system is given; never an address
    XmlInput(const std::string& fileName, GpxReadObserver* observer);
    /// \param bytes stay the caller's
    XmlInput(std::string_view bytes, const icu::UnicodeString& name, GpxReadObserver* observer);

    /// From now on the file is untrusted: its bytes are checked for what the XML parser cannot be stopped at.
    void Limit(const GpxInputLimits& limits, InputLimiter::Extent extent);

    const InputName& Name() const { return name_; }
    /// Null when there is no observer.
    Progress* GetProgress() { return progress_ ? &*progress_ : nullptr; }
    /// What is no file, such as a pipe or an address, cannot be read a second time.
    bool IsRepeatable() const { return isRepeatable_; }

    /// \throws what the parser throws; ReadAborted; std::bad_alloc; GpxReadError for an address where it is not
    ///         read
    template <class Parser>
    void Feed(Parser& parser) {
        Open();
        if (source_)
            parser.parse(*source_);
        else
            parser.parse(SystemId());
        Close();
    }

private:
    /// With a zero after it; null when the name is bogus.
    const XMLCh* SystemId();
    std::unique_ptr<xercesc::InputSource> MakeSource();
    void Open();
    void Close();
    void LimitSource();
    void LookForFile(GpxReadObserver* observer);
    void Watch(GpxReadObserver& observer, std::uint64_t size);

    InputName name_;
    icu::UnicodeString systemId_;
    std::string fileName_;
    /// None: whatever the name looks like, it is a file's.
    std::optional<AddressPolicy> policy_;
    bool isRepeatable_ = true;
    std::optional<Progress> progress_;
    /// What is read; null where the XML parser is to say why it cannot be.
    std::unique_ptr<xercesc::InputSource> source_;
    /// Of an untrusted file.
    std::optional<GpxInputLimits> limits_;
    InputLimiter::Extent extent_ = InputLimiter::Extent::kFile;
    /// What `source_`, or what it watches, checks.
    std::unique_ptr<xercesc::InputSource> limited_;
    /// What `source_` watches.
    std::unique_ptr<xercesc::InputSource> watched_;
};

} // namespace vexaTransferLib::reader
