// SPDX-License-Identifier: MIT
#include <vexagpx/EntryPlaces.h>

#include <vexagpx/EntryName.h>
#include <vexagpx/PlaceBelow.h>

#include <stdexcept>

namespace vexagpx {

std::string EntryPlaces::PlaceOf(const Archive& archive) {
    MakeFolder(folder_);
    try {
        if (archive.IsLink())
            throw std::runtime_error("it is a link");
        if (archive.IsNameCut())
            throw std::runtime_error("the name cannot be read whole");
        std::string path = PlaceBelow(folder_, PathBelow(archive.StoredName()));
        if (!archive.IsFolder() && !taken_.insert(path).second)
            throw std::runtime_error("an entry before has the same place");
        return path;
    } catch (const std::runtime_error& reason) {
        throw std::runtime_error("Refused to write the entry: " + archive.Name() + " (" + reason.what() +
                                 ")");
    }
}

} // namespace vexagpx
