// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/XmlInput.h>

#include <common/UnicodeStrUtils.h>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLURL.hpp>

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

/// Of a regular file.
std::optional<std::uint64_t> FileSize(const icu::UnicodeString& path) {
    const std::filesystem::path file = UnicodeStrUtils::UnicodeStringToStlString(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

// As the XML parser's scanner decides when it is given a path.
std::unique_ptr<xercesc::InputSource> MakeSource(const XMLCh* path) {
    xercesc::XMLURL url(xercesc::XMLPlatformUtils::fgMemoryManager);
    if (xercesc::XMLURL::parse(path, url) && !url.isRelative())
        return std::make_unique<xercesc::URLInputSource>(url);
    return std::make_unique<xercesc::LocalFileInputSource>(path);
}

} // namespace

XmlInput::XmlInput(const icu::UnicodeString& path, GpxReadObserver* observer) : name_(path), systemId_(path) {
    const std::optional<std::uint64_t> size = FileSize(path);
    isRepeatable_ = size.has_value();
    if (observer != nullptr)
        Watch(*observer, size.value_or(0));
}

XmlInput::XmlInput(std::string_view bytes, const icu::UnicodeString& name, GpxReadObserver* observer)
    : name_(name), systemId_(name), isRepeatable_(true) {
    auto source = std::make_unique<xercesc::MemBufInputSource>(reinterpret_cast<const XMLByte*>(bytes.data()),
                                                               bytes.size(), systemId_.getTerminatedBuffer());
    source->setCopyBufToStream(false);
    source_ = std::move(source);
    if (observer != nullptr)
        Watch(*observer, bytes.size());
}

void XmlInput::Watch(GpxReadObserver& observer, std::uint64_t size) {
    progress_.emplace(observer, size, UnicodeStrUtils::UnicodeStringToStlString(name_));
}

void XmlInput::Open() {
    if (!progress_ || watched_)
        return;
    watched_ = source_ ? std::move(source_) : MakeSource(systemId_.getTerminatedBuffer());
    source_ = std::make_unique<WatchedSource>(*watched_, *progress_);
}

void XmlInput::Close() {
    if (!progress_)
        return;
    progress_->End();
    progress_->ThrowIfStopped();
}

} // namespace vexaTransferLib::reader
