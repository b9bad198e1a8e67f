// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <xercesc/framework/LocalFileInputSource.hpp>

#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// A file that the system finds by the unchanged bytes of its name. The XML parser's own source for files
/// removes ".." from the path as text, which leads to another file where a folder is a symbolic link.
class FileSource final : public xercesc::LocalFileInputSource {
public:
    /// \param path the name that the XML parser makes absolute and then uses in messages and to resolve the
    ///             relative names of other files
    /// \param fileName the name that makeStream opens
    FileSource(const XMLCh* path, std::string fileName)
        : LocalFileInputSource(path), fileName_(std::move(fileName)) {}

    xercesc::BinInputStream* makeStream() const override;

private:
    std::string fileName_;
};

} // namespace vexaTransferLib::reader
