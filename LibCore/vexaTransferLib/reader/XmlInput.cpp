// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/XmlInput.h>

#include <vexaTransferLib/reader/FileSource.h>
#include <vexaTransferLib/reader/LimitedSource.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLURL.hpp>

#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

/// The size of a regular file; empty for everything else.
std::optional<std::uint64_t> FileSize(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

// Decides as the XML parser's scanner does when it is given a path.
bool IsAddress(const XMLCh* path, xercesc::XMLURL& url) {
    return xercesc::XMLURL::parse(path, url) && !url.isRelative();
}

} // namespace

XmlInput::XmlInput(const icu::UnicodeString& path, AddressPolicy policy, GpxReadObserver* observer)
    : name_(path), systemId_(name_.Text()), fileName_(name_.Bytes()), policy_(policy) {
    LookForFile(observer);
}

XmlInput::XmlInput(const std::string& fileName, GpxReadObserver* observer)
    : name_(icu::UnicodeString::fromUTF8(fileName)), systemId_(name_.Text()), fileName_(fileName) {
    LookForFile(observer);
}

XmlInput::XmlInput(std::string_view bytes, const icu::UnicodeString& name, GpxReadObserver* observer)
    : name_(name), systemId_(name_.Text()), expectedSize_(bytes.size()) {
    auto source = std::make_unique<xercesc::MemBufInputSource>(reinterpret_cast<const XMLByte*>(bytes.data()),
                                                               bytes.size(), SystemId());
    source->setCopyBufToStream(false);
    source_ = std::move(source);
    if (observer != nullptr)
        Watch(*observer, bytes.size());
}

void XmlInput::LookForFile(GpxReadObserver* observer) {
    const std::optional<std::uint64_t> size = FileSize(fileName_);
    isRepeatable_ = size.has_value();
    expectedSize_ = size.value_or(0);
    if (observer != nullptr)
        Watch(*observer, expectedSize_);
}

void XmlInput::Watch(GpxReadObserver& observer, std::uint64_t size) {
    progress_.emplace(observer, size, name_);
}

const XMLCh* XmlInput::SystemId() {
    const XMLCh* const systemId = systemId_.getTerminatedBuffer();
    if (systemId == nullptr && !name_.Text().isBogus()) // ICU's memory ran out
        throw std::bad_alloc();
    return systemId;
}

std::unique_ptr<xercesc::InputSource> XmlInput::MakeSource() {
    const XMLCh* const path = SystemId();
    xercesc::XMLURL url(xercesc::XMLPlatformUtils::fgMemoryManager);
    if (!policy_ || !IsAddress(path, url))
        return std::make_unique<FileSource>(path, fileName_, std::move(opened_));
    if (policy_ == AddressPolicy::kAllowed)
        return std::make_unique<xercesc::URLInputSource>(url);
    // If a file has this name, the path is not taken for an address.
    if (isRepeatable_)
        return std::make_unique<FileSource>(path, fileName_, std::move(opened_));
    throw MakeError(name_, MakeDetails(GpxReadErrorKind::kUntrusted, name_,
                                       "An untrusted GPX file is not read from an address: "));
}

// A source whose progress is reported, or whose bytes are limited, has been made for an XML parser.
std::unique_ptr<xercesc::BinInputStream> XmlInput::OpenBytes() {
    if (watched_ || limited_)
        return nullptr;
    if (source_)
        return std::unique_ptr<xercesc::BinInputStream>(source_->makeStream());
    xercesc::XMLURL url(xercesc::XMLPlatformUtils::fgMemoryManager);
    if (policy_ && IsAddress(SystemId(), url))
        return nullptr;
    if (!opened_)
        opened_ = OpenFile::Open(fileName_);
    return opened_ && opened_->Rewind() ? opened_->MakeStream() : nullptr;
}

void XmlInput::Open() {
    try {
        if (!source_)
            source_ = MakeSource();
    } catch (const xercesc::XMLException&) {
        // There is no current folder. When the XML parser is given the path itself, it reports this to its
        // error handler.
        if (progress_ || policy_ != AddressPolicy::kAllowed)
            throw;
    }
    LimitSource();
    if (!progress_ || watched_)
        return;
    watched_ = std::move(source_);
    source_ = std::make_unique<ProgressInputSource>(*watched_, *progress_);
}

void XmlInput::Limit(const GpxInputLimits& limits, InputLimiter::Extent extent) {
    limits_ = limits;
    extent_ = extent;
}

void XmlInput::LimitSource() {
    if (!limits_ || limited_)
        return;
    limited_ = std::move(source_);
    source_ = std::make_unique<LimitedSource>(*limited_, *limits_, name_, extent_);
}

void XmlInput::EndProgress() {
    if (!progress_)
        return;
    progress_->End();
    progress_->ThrowIfStopped();
}

} // namespace vexaTransferLib::reader
