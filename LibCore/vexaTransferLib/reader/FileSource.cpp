// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/FileSource.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>

#include <cerrno>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace vexaTransferLib::reader {

namespace {

class FileStream final : public xercesc::BinInputStream {
public:
    explicit FileStream(OpenFile& file) : file_(file) {}

    XMLFilePos curPos() const override { return position_; }
    const XMLCh* getContentType() const override { return nullptr; }
    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
        const XMLSize_t count = file_.Read(bytes, capacity);
        position_ += count;
        return count;
    }

private:
    OpenFile& file_;
    XMLFilePos position_ = 0;
};

} // namespace

std::unique_ptr<OpenFile> OpenFile::Open(const std::string& fileName) {
    int descriptor = -1;
    do
        descriptor = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC | O_LARGEFILE);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0)
        return nullptr;
    try {
        return std::make_unique<OpenFile>(descriptor);
    } catch (...) {
        ::close(descriptor);
        throw;
    }
}

OpenFile::~OpenFile() {
    ::close(descriptor_);
}

std::unique_ptr<xercesc::BinInputStream> OpenFile::MakeStream() {
    return std::unique_ptr<xercesc::BinInputStream>(new (xercesc::XMLPlatformUtils::fgMemoryManager)
                                                        FileStream(*this));
}

bool OpenFile::Rewind() {
    hasEnded_ = false;
    return ::lseek(descriptor_, 0, SEEK_SET) == 0;
}

// The XML parser guesses the encoding from the first bytes that it gets, and a single read from a pipe may give only a
// few.
std::size_t OpenFile::Read(unsigned char* bytes, std::size_t capacity) {
    std::size_t count = 0;
    while (count < capacity && !hasEnded_)
        count += ReadSome(bytes + count, capacity - count);
    return count;
}

std::size_t OpenFile::ReadSome(unsigned char* bytes, std::size_t capacity) {
    const ssize_t count = ::read(descriptor_, bytes, capacity);
    if (count > 0)
        return static_cast<std::size_t>(count);
    if (count == 0)
        hasEnded_ = true; // A terminal could give more bytes after its end.
    else if (errno != EINTR)
        throw xercesc::XMLPlatformUtilsException("LibCore/vexaTransferLib/reader/FileSource.cpp", __LINE__,
                                                 xercesc::XMLExcepts::File_CouldNotReadFromFile,
                                                 xercesc::XMLPlatformUtils::fgMemoryManager);
    return 0;
}

xercesc::BinInputStream* FileSource::makeStream() const {
    if (!std::exchange(isFirst_, false) || !file_ || !file_->Rewind())
        file_ = OpenFile::Open(fileName_);
    return file_ ? file_->MakeStream().release() : nullptr;
}

} // namespace vexaTransferLib::reader
