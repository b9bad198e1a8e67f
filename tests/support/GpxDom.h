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
/// text is not well-formed. Nodes live as long as this.
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

/// The node after this one in document order, below the same root; null at the end.
const xercesc::DOMNode* NextInDocument(const xercesc::DOMNode* node);

} // namespace vexaTransferLib::testing_support
