// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/FileSource.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace vexaTransferLib::reader {

namespace {

class FileStream final : public xercesc::BinInputStream {
public:
    explicit FileStream(const std::string& fileName) {
        do
            fd_ = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC | O_LARGEFILE);
        while (fd_ < 0 && errno == EINTR);
    }
    ~FileStream() override {
        if (IsOpen())
            ::close(fd_);
    }
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    bool IsOpen() const { return fd_ >= 0; }

    XMLFilePos curPos() const override { return position_; }
    const XMLCh* getContentType() const override { return nullptr; }

    // Returns less than `capacity` only at the end of the file. The XML parser guesses the encoding from the
    // first bytes that it gets, and a single read from a pipe may give only a few.
    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
        XMLSize_t count = 0;
        while (count < capacity && !hasEnded_)
            count += ReadSome(bytes + count, capacity - count);
        position_ += count;
        return count;
    }

private:
    XMLSize_t ReadSome(XMLByte* bytes, XMLSize_t capacity) {
        const ssize_t count = ::read(fd_, bytes, capacity);
        if (count > 0)
            return static_cast<XMLSize_t>(count);
        if (count == 0)
            hasEnded_ = true; // A terminal could give more bytes after its end.
        else if (errno != EINTR)
            throw xercesc::XMLPlatformUtilsException("LibCore/vexaTransferLib/reader/FileSource.cpp",
                                                     __LINE__, xercesc::XMLExcepts::File_CouldNotReadFromFile,
                                                     xercesc::XMLPlatformUtils::fgMemoryManager);
        return 0;
    }

    int fd_;
    XMLFilePos position_ = 0;
    bool hasEnded_ = false;
};

} // namespace

xercesc::BinInputStream* FileSource::makeStream() const {
    std::unique_ptr<FileStream> stream(new (getMemoryManager()) FileStream(fileName_));
    return stream->IsOpen() ? stream.release() : nullptr;
}

} // namespace vexaTransferLib::reader
