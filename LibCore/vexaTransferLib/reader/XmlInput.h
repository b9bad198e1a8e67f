// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/Progress.h>

#include <unicode/unistr.h>
#include <xercesc/sax/InputSource.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

/// One file for an XML parser: a path, an address, or bytes in memory; its reading is watched when there is an
/// observer.
class XmlInput {
public:
    /// What may be behind a path. An address is read by the XML parser from a server or from a file, or refused
    /// where only files are read, unless there is a file of that name. The path of a named file is not even looked
    /// at.
    enum class AddressPolicy { kAllowed, kFilesOnly, kNamedFile };

    /// \param path for messages
    /// \param fileName by which the system knows the file of that path
    /// \param observer null when nobody watches
    XmlInput(const icu::UnicodeString& path, std::string fileName, AddressPolicy policy,
             GpxReadObserver* observer);
    /// \param bytes stay the caller's
    XmlInput(std::string_view bytes, const icu::UnicodeString& name, GpxReadObserver* observer);

    /// From now on the file is a stranger's: what the XML parser could not be stopped at is looked for in its bytes.
    void Limit(const GpxInputLimits& limits, InputLimiter::Extent extent);

    const icu::UnicodeString& Name() const { return name_; }
    /// Null when nobody watches.
    Progress* GetProgress() { return progress_ ? &*progress_ : nullptr; }
    /// What is no file, such as a pipe or an address, cannot be read a second time.
    bool IsRepeatable() const { return isRepeatable_; }

    /// \throws what the parser throws; ReadAborted; std::bad_alloc; dbc::postcondition_error for an address where
    ///         it is not read
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
    /// With a zero behind it; null when the name is bogus.
    const XMLCh* SystemId();
    std::unique_ptr<xercesc::InputSource> MakeSource();
    void Open();
    void Close();
    void LimitSource();
    void Watch(GpxReadObserver& observer, std::uint64_t size);

    icu::UnicodeString name_;
    icu::UnicodeString systemId_;
    std::string fileName_;
    AddressPolicy policy_ = AddressPolicy::kAllowed;
    bool isRepeatable_;
    std::optional<Progress> progress_;
    /// What is read; null where the XML parser is to say why it cannot be.
    std::unique_ptr<xercesc::InputSource> source_;
    /// Of a stranger's file.
    std::optional<GpxInputLimits> limits_;
    InputLimiter::Extent extent_ = InputLimiter::Extent::kFile;
    /// What `source_`, or what it watches, guards.
    std::unique_ptr<xercesc::InputSource> limited_;
    /// What `source_` watches.
    std::unique_ptr<xercesc::InputSource> watched_;
};

} // namespace vexaTransferLib::reader
