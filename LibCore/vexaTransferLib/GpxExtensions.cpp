// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxExtensions.h>

#include <vexaTransferLib/model/ElementFields.h>

namespace vexaTransferLib {

std::vector<GpxElement> ForeignElements(const GpxElement& object) {
    std::vector<GpxElement> elements;
    ForEachForeign(object, [&](const GpxElement& element) {
        elements.push_back(element);
        return true;
    });
    return elements;
}

} // namespace vexaTransferLib
