// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LimitedSource.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>

namespace vexaTransferLib::reader {

namespace {

class LimitedStream final : public xercesc::BinInputStream {
public:
    LimitedStream(std::unique_ptr<xercesc::BinInputStream> stream, TagWatcher& watcher)
        : stream_(std::move(stream)), watcher_(watcher) {}

    XMLFilePos curPos() const override { return stream_->curPos(); }
    const XMLCh* getContentType() const override { return stream_->getContentType(); }
    const XMLCh* getEncoding() const override { return stream_->getEncoding(); }

    // The parser first gets the bytes before the place where the file is refused, because they may be
    // ill-formed. The first read never throws: the XML parser does it while it makes its reader, and an
    // exception would leak the reader's memory.
    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
        if (!isFirst_)
            watcher_.ThrowIfRefused();
        const XMLSize_t count = watcher_.Watch(bytes, stream_->readBytes(bytes, capacity));
        // If the file is refused here, returning no byte would look like the end of the file.
        if (count == 0 && !isFirst_)
            watcher_.ThrowIfRefused();
        isFirst_ = false;
        return count;
    }

private:
    std::unique_ptr<xercesc::BinInputStream> stream_;
    TagWatcher& watcher_;
    bool isFirst_ = true;
};

} // namespace

LimitedSource::LimitedSource(const xercesc::InputSource& source, const GpxInputLimits& limits, InputName name,
                             InputLimiter::Extent extent)
    : InputSource(source.getSystemId(), source.getPublicId()), source_(source), limits_(limits),
      name_(std::move(name)), extent_(extent) {
    setEncoding(source.getEncoding());
    setIssueFatalErrorIfNotFound(source.getIssueFatalErrorIfNotFound());
}

xercesc::BinInputStream* LimitedSource::makeStream() const {
    std::unique_ptr<xercesc::BinInputStream> stream(source_.makeStream());
    if (!stream)
        return nullptr;
    const XMLCh* const given = getEncoding() != nullptr ? getEncoding() : stream->getEncoding();
    watcher_.emplace(limits_, name_, extent_, given != nullptr ? given : u"");
    return new (xercesc::XMLPlatformUtils::fgMemoryManager) LimitedStream(std::move(stream), *watcher_);
}

} // namespace vexaTransferLib::reader
