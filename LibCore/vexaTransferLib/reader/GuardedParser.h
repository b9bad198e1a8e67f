// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputGuard.h>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <utility>

namespace vexaTransferLib::reader {

/// Checks an attribute, and counts it when it declares a namespace.
inline void TakeAttribute(InputGuard& guard, const xercesc::XMLAttr& attribute) {
    const XMLCh* const value = attribute.getValue();
    guard.CheckText(xercesc::XMLString::stringLen(value));
    const XMLCh* const prefix = attribute.getPrefix();
    const XMLCh* const name = attribute.getName();
    if (prefix != nullptr && *prefix != u'\0') {
        if (xercesc::XMLString::equals(prefix, u"xmlns"))
            guard.AddNamespace(name, value);
    } else if (xercesc::XMLString::equals(name, u"xmlns")) {
        guard.AddNamespace({}, value);
    }
}

/// Checks a start tag, and counts what is in it.
inline void TakeStartTag(InputGuard& guard, const xercesc::XMLElementDecl& declaration,
                         const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count) {
    guard.StartElement(declaration.getId(), count);
    for (XMLSize_t i = 0; i < count; ++i)
        TakeAttribute(guard, *attributes.elementAt(i));
}

/// One of Xerces' parsers, for a file from a stranger. Throws ReadingStop out of the parse.
template <class Parser>
class GuardedParser : public Parser {
public:
    explicit GuardedParser(InputGuard guard) : guard_(std::move(guard)) {}

    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                      const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override {
        TakeStartTag(guard_, declaration, attributes, attributeCount);
        // Not every parser calls endElement for an empty element.
        if (isEmpty)
            guard_.EndElement();
        isEmpty_ = isEmpty;
        Parser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
        isEmpty_ = false;
    }

    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override {
        if (!isEmpty_)
            guard_.EndElement();
        Parser::endElement(declaration, uriId, isRoot, prefix);
    }

    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) override {
        guard_.AddText(length);
        Parser::docCharacters(text, length, isCData);
    }

    void docComment(const XMLCh* const text) override {
        guard_.CheckText(xercesc::XMLString::stringLen(text));
        Parser::docComment(text);
    }

    void docPI(const XMLCh* const target, const XMLCh* const data) override {
        guard_.CheckText(xercesc::XMLString::stringLen(data));
        Parser::docPI(target, data);
    }

    // Called before anything that the declaration names is opened.
    void doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh* const, const XMLCh* const, const bool,
                     const bool) override {
        guard_.RefuseDocumentType();
    }

private:
    InputGuard guard_;
    bool isEmpty_ = false;
};

} // namespace vexaTransferLib::reader
