// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/Progress.h>

#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <memory>

namespace vexaTransferLib::reader {

namespace {

constexpr std::uint64_t kNotices = 200;
// For a file of unknown length. With these two, a terabyte gives about 300 calls.
constexpr std::uint64_t kFirstStep = 65536;
constexpr std::uint64_t kGrowth = 16;
// The shortest element has four bytes and counts twice at most, so that work causes at most half as many
// calls as there are hundredths.
constexpr std::uint64_t kWorkNotices = 100;
// Less work than this is done so fast that cancelling it is of no use.
constexpr std::uint64_t kLeastWork = 4096;

class ProgressInputStream final : public xercesc::BinInputStream {
public:
    ProgressInputStream(std::unique_ptr<xercesc::BinInputStream> stream, Progress& progress)
        : stream_(std::move(stream)), progress_(progress) {}

    XMLFilePos curPos() const override { return stream_->curPos(); }
    const XMLCh* getContentType() const override { return stream_->getContentType(); }
    const XMLCh* getEncoding() const override { return stream_->getEncoding(); }

    // Never throws at the first read: the XML parser does it while it makes its reader, and an exception
    // would leak the reader's memory.
    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
        if (!isFirst_)
            progress_.ThrowIfStopped();
        isFirst_ = false;
        const XMLSize_t count = stream_->readBytes(bytes, capacity);
        progress_.Add(count);
        return count;
    }

private:
    std::unique_ptr<xercesc::BinInputStream> stream_;
    Progress& progress_;
    bool isFirst_ = true;
};

} // namespace

void Progress::Begin() {
    hasBegun_ = true;
    bytesRead_ = 0;
    work_ = 0;
    nextWorkNotice_ = NextWorkNotice();
    Notify();
}

void Progress::Add(std::uint64_t bytes) {
    bytesRead_ += bytes;
    if (bytesRead_ >= nextNotice_)
        Notify();
}

void Progress::End() {
    if (!hasBegun_)
        return;
    nextNotice_ = bytesRead_;
    Notify();
}

void Progress::Notify() noexcept {
    if (stop_)
        return;
    const std::uint64_t step =
        bytesInAll_ != 0 ? bytesInAll_ / kNotices + 1 : std::max(kFirstStep, bytesRead_ / kGrowth);
    nextNotice_ = bytesRead_ + step;
    // A file may grow while it is read.
    const std::uint64_t bytesInAll = bytesInAll_ != 0 ? std::max(bytesInAll_, bytesRead_) : 0;
    try {
        if (!observer_.Progress(bytesRead_, bytesInAll))
            throw MakeError(name_, MakeDetails(GpxReadErrorKind::kCancelled, name_,
                                               "The reading of the GPX file was cancelled: "));
    } catch (...) {
        stop_ = std::current_exception();
    }
}

std::uint64_t Progress::NextWorkNotice() const {
    const std::uint64_t ofFile = bytesInAll_ != 0 ? bytesInAll_ / kWorkNotices : kFirstStep;
    const std::uint64_t beyondFile = work_ > bytesInAll_ ? work_ / kGrowth : 0;
    return work_ + std::max({kLeastWork, ofFile, beyondFile});
}

void Progress::NotifyWork() {
    nextWorkNotice_ = NextWorkNotice();
    Notify();
    ThrowIfStopped();
}

void Progress::ThrowIfStopped() const {
    if (stop_)
        throw ReadAborted{stop_};
}

ProgressInputSource::ProgressInputSource(const xercesc::InputSource& source, Progress& progress)
    : InputSource(source.getSystemId(), source.getPublicId()), source_(source), progress_(progress) {
    setEncoding(source.getEncoding());
    setIssueFatalErrorIfNotFound(source.getIssueFatalErrorIfNotFound());
}

xercesc::BinInputStream* ProgressInputSource::makeStream() const {
    std::unique_ptr<xercesc::BinInputStream> stream(source_.makeStream());
    if (!stream)
        return nullptr;
    progress_.Begin();
    return new (xercesc::XMLPlatformUtils::fgMemoryManager) ProgressInputStream(std::move(stream), progress_);
}

} // namespace vexaTransferLib::reader
