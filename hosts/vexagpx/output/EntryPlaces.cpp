// SPDX-License-Identifier: MIT
#include <vexagpx/output/EntryPlaces.h>

#include <vexagpx/input/EntryName.h>
#include <vexagpx/output/PlaceBelow.h>

#include <stdexcept>

namespace vexagpx {

FilePlace EntryPlaces::PlaceOf(const Archive& archive) {
    if (!folder_.IsOpen())
        folder_ = MakeFolder(path_);
    try {
        if (archive.IsLink())
            throw std::runtime_error("it is a link");
        if (archive.IsNameCut())
            throw std::runtime_error("the name cannot be read whole");
        FilePlace place = PlaceBelow(folder_, path_, PathBelow(archive.StoredName()));
        if (!archive.IsFolder() && !taken_.insert(place.path).second)
            throw std::runtime_error("an entry before has the same place");
        return place;
    } catch (const std::runtime_error& reason) {
        throw std::runtime_error("Refused to write the entry: " + archive.Name() + " (" + reason.what() +
                                 ")");
    }
}

} // namespace vexagpx
