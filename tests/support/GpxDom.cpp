// SPDX-License-Identifier: MIT
#include "support/GpxDom.h"

#include "support/TestFiles.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

class ThrowOnError : public xercesc::ErrorHandler {
public:
    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException& exception) override { Throw(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override { Throw(exception); }
    void resetErrors() override {}

private:
    [[noreturn]] static void Throw(const xercesc::SAXParseException& exception) {
        throw std::runtime_error("the test's XML is bad: " +
                                 Utf8(icu::UnicodeString(exception.getMessage())));
    }
};

} // namespace

DomTree::DomTree(const std::string& xml) : parser_(std::make_unique<xercesc::XercesDOMParser>()) {
    ThrowOnError errors;
    parser_->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser_->setDoNamespaces(true);
    parser_->setErrorHandler(&errors);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xml.data()), xml.size(), "test");
    parser_->parse(source);
    parser_->setErrorHandler(nullptr);
}

DomTree::~DomTree() = default;

xercesc::DOMDocument* DomTree::Document() const {
    return parser_->getDocument();
}
xercesc::DOMElement* DomTree::Root() const {
    return Document()->getDocumentElement();
}

xercesc::DOMNode* DomTree::Find(const std::string& localName) const {
    const icu::UnicodeString wanted = icu::UnicodeString::fromUTF8(localName);
    for (const xercesc::DOMNode* node = Root(); node != nullptr; node = NextInDocument(node))
        if (node->getLocalName() != nullptr && wanted == icu::UnicodeString(node->getLocalName()))
            return const_cast<xercesc::DOMNode*>(node);
    throw std::runtime_error("the test's XML has no " + localName);
}

const xercesc::DOMNode* NextInDocument(const xercesc::DOMNode* node) {
    if (const xercesc::DOMNode* child = node->getFirstChild())
        return child;
    while (node != nullptr && node->getNextSibling() == nullptr)
        node = node->getParentNode();
    return node != nullptr ? node->getNextSibling() : nullptr;
}

} // namespace vexaTransferLib::testing_support
