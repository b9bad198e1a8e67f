// SPDX-License-Identifier: MIT
#include "support/DomReading.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <common/dbc.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <filesystem>

namespace vexaTransferLib::testing_support {

namespace {

icu::UnicodeString NameFromPath(const std::string& path) {
    return icu::UnicodeString::fromUTF8(std::filesystem::path(path).stem().string());
}

} // namespace

void ReadByDom(GpxParser& parser, const std::string& path, GpxDocument& document) {
    const auto tree = parser.GetParser(icu::UnicodeString::fromUTF8(path));
    document.Clear();
    GpxModelAccess::SetName(document, NameFromPath(path));
    if (tree->getDocument() == nullptr)
        throw dbc::postcondition_error("Unable to interpret the GPX file: " + path +
                                       ". The document object could not be obtained.");
    xercesc::DOMElement* const root = tree->getDocument()->getDocumentElement();
    if (root == nullptr || icu::UnicodeString(root->getLocalName()) != u"gpx")
        throw dbc::postcondition_error("The GPX document element was not found.");
    parser.ParseGpxNode(root, document);
}

} // namespace vexaTransferLib::testing_support
