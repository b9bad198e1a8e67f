// SPDX-License-Identifier: MIT
#include "support/XercesDoubles.h"

#include <xercesc/util/OutOfMemoryException.hpp>

#include <algorithm>
#include <cstring>
#include <utility>

namespace vexaTransferLib::testing_support {

using xercesc::XMLPlatformUtils;

XercesMemory::XercesMemory() : former_(XMLPlatformUtils::fgMemoryManager) {
    XMLPlatformUtils::fgMemoryManager = this;
}

XercesMemory::~XercesMemory() {
    XMLPlatformUtils::fgMemoryManager = former_;
}

void XercesMemory::RefuseRequest(std::size_t number) {
    untilRefused_ = number;
    hasRefused_ = false;
}

xercesc::MemoryManager* XercesMemory::getExceptionMemoryManager() {
    return former_;
}

void* XercesMemory::allocate(XMLSize_t size) {
    ++requests_;
    largestRequest_ = std::max<std::size_t>(largestRequest_, size);
    if (untilRefused_ > 0 && --untilRefused_ == 0) {
        hasRefused_ = true;
        throw xercesc::OutOfMemoryException();
    }
    void* const memory = former_->allocate(size);
    inUse_[memory] = size;
    bytesInUse_ += size;
    return memory;
}

// Also called with memory that the former manager allocated.
void XercesMemory::deallocate(void* memory) {
    if (const auto block = inUse_.find(memory); block != inUse_.end()) {
        bytesInUse_ -= block->second;
        inUse_.erase(block);
    }
    former_->deallocate(memory);
}

XercesFiles::XercesFiles() : former_(XMLPlatformUtils::fgFileMgr) {
    XMLPlatformUtils::fgFileMgr = this;
}

XercesFiles::~XercesFiles() {
    XMLPlatformUtils::fgFileMgr = former_;
}

XercesFiles::Handle XercesFiles::Counted(Handle file) {
    ++opened_;
    stillOpen_ += file != XERCES_Invalid_File_Handle ? 1 : 0;
    return file;
}

XercesFiles::Handle XercesFiles::fileOpen(const XMLCh* path, bool toWrite, Memory* const memory) {
    return Counted(former_->fileOpen(path, toWrite, memory));
}

XercesFiles::Handle XercesFiles::fileOpen(const char* path, bool toWrite, Memory* const memory) {
    return Counted(former_->fileOpen(path, toWrite, memory));
}

XercesFiles::Handle XercesFiles::openStdIn(Memory* const memory) {
    return Counted(former_->openStdIn(memory));
}

void XercesFiles::fileClose(Handle file, Memory* const memory) {
    --stillOpen_;
    former_->fileClose(file, memory);
}

void XercesFiles::fileReset(Handle file, Memory* const memory) {
    former_->fileReset(file, memory);
}

XMLFilePos XercesFiles::curPos(Handle file, Memory* const memory) {
    return former_->curPos(file, memory);
}

XMLFilePos XercesFiles::fileSize(Handle file, Memory* const memory) {
    return former_->fileSize(file, memory);
}

XMLSize_t XercesFiles::fileRead(Handle file, XMLSize_t count, XMLByte* buffer, Memory* const memory) {
    const XMLSize_t read = former_->fileRead(file, count, buffer, memory);
    bytesRead_ += read;
    return read;
}

void XercesFiles::fileWrite(Handle file, XMLSize_t count, const XMLByte* buffer, Memory* const memory) {
    former_->fileWrite(file, count, buffer, memory);
}

XMLCh* XercesFiles::getFullPath(const XMLCh* const path, Memory* const memory) {
    return former_->getFullPath(path, memory);
}

XMLCh* XercesFiles::getCurrentDirectory(Memory* const memory) {
    return former_->getCurrentDirectory(memory);
}

bool XercesFiles::isRelative(const XMLCh* const path, Memory* const memory) {
    return former_->isRelative(path, memory);
}

XercesNet::XercesNet() : former_(XMLPlatformUtils::fgNetAccessor) {
    XMLPlatformUtils::fgNetAccessor = this;
}

XercesNet::~XercesNet() {
    XMLPlatformUtils::fgNetAccessor = former_;
}

const XMLCh* XercesNet::getId() const {
    return u"none";
}

xercesc::BinInputStream* XercesNet::makeNew(const xercesc::XMLURL&, const xercesc::XMLNetHTTPInfo*) {
    ++requests_;
    return nullptr;
}

class GeneratedSource::Stream : public xercesc::BinInputStream {
public:
    explicit Stream(const GeneratedSource& source) : source_(source) {}

    XMLFilePos curPos() const override { return position_; }
    const XMLCh* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t size) override {
        XMLSize_t read = 0;
        while (read < size && piece_ < source_.count_ + 2)
            read += ReadPiece(buffer + read, size - read);
        position_ += read;
        source_.bytesRead_ += read;
        return read;
    }

private:
    const std::string& Piece() const {
        if (piece_ == 0)
            return source_.head_;
        return piece_ <= source_.count_ ? source_.block_ : source_.tail_;
    }

    XMLSize_t ReadPiece(XMLByte* buffer, XMLSize_t size) {
        const std::string& piece = Piece();
        const XMLSize_t read = std::min<XMLSize_t>(size, piece.size() - offset_);
        std::memcpy(buffer, piece.data() + offset_, read);
        offset_ += read;
        if (offset_ == piece.size()) {
            ++piece_;
            offset_ = 0;
        }
        return read;
    }

    const GeneratedSource& source_;
    std::size_t piece_ = 0;
    std::size_t offset_ = 0;
    XMLFilePos position_ = 0;
};

GeneratedSource::GeneratedSource(std::string head, std::string block, std::size_t count, std::string tail)
    : head_(std::move(head)), block_(std::move(block)), count_(count), tail_(std::move(tail)) {}

xercesc::BinInputStream* GeneratedSource::makeStream() const {
    return new (getMemoryManager()) Stream(*this);
}

} // namespace vexaTransferLib::testing_support
