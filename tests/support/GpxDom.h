// SPDX-License-Identifier: MIT
#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <memory>
#include <string>

namespace vexaTransferLib::testing_support {

/// The DOM of a text (UTF-8 unless it says otherwise), with namespaces, without validation; throws when the
/// text is not well-formed. The nodes exist as long as this object.
class DomTree {
public:
    explicit DomTree(const std::string& xml);
    ~DomTree();
    DomTree(const DomTree&) = delete;
    DomTree& operator=(const DomTree&) = delete;

    xercesc::DOMDocument* Document() const;
    xercesc::DOMElement* Root() const;
    /// The first element with this local name in document order; throws when there is none.
    xercesc::DOMNode* Find(const std::string& localName) const;

private:
    std::unique_ptr<xercesc::XercesDOMParser> parser_;
};

/// The next node after `node` in document order within the same tree; null after the last.
const xercesc::DOMNode* NextInDocument(const xercesc::DOMNode* node);

} // namespace vexaTransferLib::testing_support
