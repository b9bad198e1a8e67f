// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// A file that is open. It can be read from its start more than once if it is a regular one.
class OpenFile {
public:
    /// Null when it cannot be opened.
    static std::unique_ptr<OpenFile> Open(const std::string& fileName);
    explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /// A stream of its bytes from where it is, which for a new file is the start. One stream at a time. The stream does
    /// not own the file, because the XML parser loses streams when its memory runs out.
    std::unique_ptr<xercesc::BinInputStream> MakeStream();
    /// Goes back to the start; false when that is not possible.
    bool Rewind();
    /// Fills the bytes; gives fewer only at the end of the file.
    /// \throws xercesc::XMLPlatformUtilsException
    std::size_t Read(unsigned char* bytes, std::size_t capacity);

private:
    std::size_t ReadSome(unsigned char* bytes, std::size_t capacity);

    int descriptor_;
    bool hasEnded_ = false;
};

/// A file that the system finds by the unchanged bytes of its name. The XML parser's own source for files
/// removes ".." from the path as text, which leads to another file where a folder is a symbolic link.
class FileSource final : public xercesc::LocalFileInputSource {
public:
    /// \param path the name that the XML parser makes absolute and then uses in messages and to resolve the
    ///             relative names of other files
    /// \param fileName the name that makeStream opens
    /// \param file the same file, for the first stream; null when it is not open yet
    FileSource(const XMLCh* path, std::string fileName, std::unique_ptr<OpenFile> file)
        : LocalFileInputSource(path), fileName_(std::move(fileName)), file_(std::move(file)) {}

    /// A stream from the start of the file, valid as long as this source and until the next one is made. Each but the
    /// first is one of the file that has the name now.
    xercesc::BinInputStream* makeStream() const override;

private:
    std::string fileName_;
    mutable std::unique_ptr<OpenFile> file_;
    mutable bool isFirst_ = true;
};

} // namespace vexaTransferLib::reader
