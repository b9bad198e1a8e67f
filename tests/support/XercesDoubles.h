// SPDX-License-Identifier: MIT
#pragma once

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLFileMgr.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <cstddef>
#include <string>
#include <unordered_map>

namespace vexaTransferLib::testing_support {

/// Replaces Xerces' default memory manager as long as this object exists. Counts requests, and refuses one if
/// a test asks for that. Memory that Xerces keeps is still valid afterwards. There may be one at a time.
class XercesMemory : private xercesc::MemoryManager {
public:
    XercesMemory();
    ~XercesMemory() override;
    XercesMemory(const XercesMemory&) = delete;
    XercesMemory& operator=(const XercesMemory&) = delete;

    std::size_t Requests() const { return requests_; }
    std::size_t LargestRequest() const { return largestRequest_; }
    std::size_t BlocksInUse() const { return inUse_.size(); }
    std::size_t BytesInUse() const { return bytesInUse_; }

    /// The request with this number, counted from now and from 1, throws xercesc::OutOfMemoryException.
    void RefuseRequest(std::size_t number);
    bool HasRefused() const { return hasRefused_; }

private:
    xercesc::MemoryManager* getExceptionMemoryManager() override;
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;

    xercesc::MemoryManager* former_;
    std::unordered_map<void*, std::size_t> inUse_;
    std::size_t requests_ = 0;
    std::size_t largestRequest_ = 0;
    std::size_t bytesInUse_ = 0;
    std::size_t untilRefused_ = 0;
    bool hasRefused_ = false;
};

/// Counts what Xerces does with files as long as this object exists.
class XercesFiles : private xercesc::XMLFileMgr {
public:
    XercesFiles();
    ~XercesFiles() override;
    XercesFiles(const XercesFiles&) = delete;
    XercesFiles& operator=(const XercesFiles&) = delete;

    /// Includes files that could not be opened.
    std::size_t Opened() const { return opened_; }
    std::size_t StillOpen() const { return stillOpen_; }
    std::size_t BytesRead() const { return bytesRead_; }

private:
    using Handle = xercesc::FileHandle;
    using Memory = xercesc::MemoryManager;

    Handle fileOpen(const XMLCh* path, bool toWrite, Memory* const memory) override;
    Handle fileOpen(const char* path, bool toWrite, Memory* const memory) override;
    Handle openStdIn(Memory* const memory) override;
    void fileClose(Handle file, Memory* const memory) override;
    void fileReset(Handle file, Memory* const memory) override;
    XMLFilePos curPos(Handle file, Memory* const memory) override;
    XMLFilePos fileSize(Handle file, Memory* const memory) override;
    XMLSize_t fileRead(Handle file, XMLSize_t count, XMLByte* buffer, Memory* const memory) override;
    void fileWrite(Handle file, XMLSize_t count, const XMLByte* buffer, Memory* const memory) override;
    XMLCh* getFullPath(const XMLCh* const path, Memory* const memory) override;
    XMLCh* getCurrentDirectory(Memory* const memory) override;
    bool isRelative(const XMLCh* const path, Memory* const memory) override;

    Handle Counted(Handle file);

    xercesc::XMLFileMgr* former_;
    std::size_t opened_ = 0;
    std::size_t stillOpen_ = 0;
    std::size_t bytesRead_ = 0;
};

/// Counts the requests that Xerces makes to the network as long as this object exists; none of them is sent.
class XercesNet : private xercesc::XMLNetAccessor {
public:
    XercesNet();
    ~XercesNet() override;
    XercesNet(const XercesNet&) = delete;
    XercesNet& operator=(const XercesNet&) = delete;

    std::size_t Requests() const { return requests_; }

private:
    const XMLCh* getId() const override;
    xercesc::BinInputStream* makeNew(const xercesc::XMLURL& url,
                                     const xercesc::XMLNetHTTPInfo* info) override;

    xercesc::XMLNetAccessor* former_;
    std::size_t requests_ = 0;
};

/// A text that is made while it is read: `head`, then `count` times `block`, then `tail`.
class GeneratedSource : public xercesc::InputSource {
public:
    GeneratedSource(std::string head, std::string block, std::size_t count, std::string tail);

    xercesc::BinInputStream* makeStream() const override;
    std::size_t BytesRead() const { return bytesRead_; }

private:
    class Stream;

    std::string head_;
    std::string block_;
    std::size_t count_;
    std::string tail_;
    mutable std::size_t bytesRead_ = 0;
};

} // namespace vexaTransferLib::testing_support
