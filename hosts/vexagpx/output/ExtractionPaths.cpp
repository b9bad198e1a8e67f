// SPDX-License-Identifier: MIT
#include <vexagpx/output/ExtractionPaths.h>

#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/GzipFile.h>
#include <vexagpx/output/ResolveBelow.h>

#include <stdexcept>

namespace vexagpx {

FileInFolder ExtractionPaths::FileFor(const Archive& archive) {
    return FileFor(archive, archive.StoredName());
}

FileInFolder ExtractionPaths::DocumentFileFor(const Archive& archive) {
    return FileFor(archive, WithoutGzipSuffix(archive.StoredName()));
}

FileInFolder ExtractionPaths::FileFor(const Archive& archive, const std::string& storedName) {
    if (!folder_.IsOpen())
        folder_ = MakeFolder(path_);
    try {
        if (archive.IsLink())
            throw std::runtime_error("it is a link");
        if (archive.IsNameCut())
            throw std::runtime_error("the name cannot be read whole");
        FileInFolder file = ResolveBelow(folder_, path_, SplitEntryName(storedName));
        if (!archive.IsFolder() && !taken_.insert(file.path).second)
            throw std::runtime_error("an entry before has the same place");
        return file;
    } catch (const std::runtime_error& reason) {
        throw std::runtime_error("Refused to write the entry: " + archive.Name() + " (" + reason.what() +
                                 ")");
    }
}

} // namespace vexagpx
