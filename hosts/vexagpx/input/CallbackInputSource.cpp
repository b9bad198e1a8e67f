// SPDX-License-Identifier: MIT
#include <vexagpx/input/CallbackInputSource.h>

#include <unicode/unistr.h>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <utility>

namespace vexagpx {

namespace {

class CallbackInputStream final : public xercesc::BinInputStream {
public:
    CallbackInputStream(const CallbackInputSource::Read& read, std::exception_ptr& failure)
        : read_(read), failure_(failure) {}

    XMLFilePos curPos() const override { return position_; }

    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
        try {
            const std::size_t count = read_(reinterpret_cast<char*>(bytes), capacity);
            position_ += count;
            return count;
        } catch (...) {
            // Xerces leaks memory when an exception passes through it here.
            failure_ = std::current_exception();
            return 0;
        }
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    const CallbackInputSource::Read& read_;
    std::exception_ptr& failure_;
    XMLFilePos position_ = 0;
};

} // namespace

CallbackInputSource::CallbackInputSource(const std::string& path, Read read) : read_(std::move(read)) {
    // A relative path could be taken for an address.
    icu::UnicodeString name = icu::UnicodeString::fromUTF8(path.starts_with('/') ? path : "./" + path);
    setSystemId(name.getTerminatedBuffer());
}

xercesc::BinInputStream* CallbackInputSource::makeStream() const {
    return new (xercesc::XMLPlatformUtils::fgMemoryManager) CallbackInputStream(read_, failure_);
}

void CallbackInputSource::RethrowFailure() const {
    if (failure_)
        std::rethrow_exception(failure_);
}

} // namespace vexagpx
