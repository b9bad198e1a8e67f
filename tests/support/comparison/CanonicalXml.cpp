// SPDX-License-Identifier: MIT
#include "support/comparison/CanonicalXml.h"

#include "support/comparison/XmlDocument.h"

#include <libxml/c14n.h>

#include <stdexcept>

namespace vexaTransferLib::testing_support {

std::string CanonicalXml(std::string_view text) {
    const XmlDocument document(text);
    xmlChar* canonical = nullptr;
    const int size = xmlC14NDocDumpMemory(document.Get(), nullptr, XML_C14N_1_0, nullptr, 1, &canonical);
    if (size < 0)
        throw std::runtime_error("libxml2 makes no canonical XML of it");
    const std::string result(reinterpret_cast<const char*>(canonical), static_cast<std::size_t>(size));
    xmlFree(canonical);
    return result;
}

} // namespace vexaTransferLib::testing_support
