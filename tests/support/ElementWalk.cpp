// SPDX-License-Identifier: MIT
#include "support/ElementWalk.h"

#include "support/TestFiles.h"

#include <cstdint>
#include <vector>

namespace vexaTransferLib::testing_support {

void ForEachElement(const GpxElement& root, const std::function<void(const GpxElement&)>& visit) {
    std::vector<GpxElement> open{root};
    while (!open.empty()) {
        const GpxElement element = open.back();
        open.pop_back();
        visit(element);
        if (const GpxElement next = element != root ? element.GetNextSibling() : GpxElement())
            open.push_back(next);
        if (const GpxElement child = element.GetFirstChild())
            open.push_back(child);
    }
}

std::string ContentOf(const GpxElement& root) {
    std::string content;
    ForEachElement(root, [&](const GpxElement& element) {
        content.append(element.GetNamespace()).append(" ").append(element.GetName());
        for (const GpxAttribute& attribute : element.GetAttributes())
            content.append(" {")
                .append(attribute.nameSpace)
                .append("}")
                .append(attribute.name)
                .append("=")
                .append(Utf8(attribute.value));
        content += ": " + Utf8(element.GetText()) + "\n";
    });
    return content;
}

std::size_t AskAll(const GpxElement& root) {
    std::size_t count = 0;
    std::uint64_t size = 0;
    ForEachElement(root, [&](const GpxElement& element) {
        ++count;
        size +=
            element.GetXml().size() + element.GetPrefix().size() + element.GetLine() + element.GetColumn();
        size += element.GetNumber() && element.GetTime() ? 1 : 0;
        size += element.GetAttribute("lat") || element.FindChild("", "name") ? 1 : 0;
    });
    return size != 0 ? count : 0;
}

} // namespace vexaTransferLib::testing_support
