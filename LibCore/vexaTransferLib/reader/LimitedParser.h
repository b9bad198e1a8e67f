// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputLimiter.h>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <utility>

namespace vexaTransferLib::reader {

/// A parser of Xerces, or one derived from it, for an untrusted file: its content is checked before it is
/// processed. Throws ReadAborted out of the parse.
template <class Parser>
class LimitedParser : public Parser {
public:
    /// \param arguments for the constructor of the parser
    template <class... Arguments>
    explicit LimitedParser(InputLimiter limiter, Arguments&&... arguments)
        : Parser(std::forward<Arguments>(arguments)...), limiter_(std::move(limiter)) {}

    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                      const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override {
        limiter_.StartElement(declaration.getId(), attributeCount);
        for (XMLSize_t i = 0; i < attributeCount; ++i)
            CheckAttribute(*attributes.elementAt(i));
        // Not every parser calls endElement for an empty element.
        if (isEmpty)
            limiter_.EndElement();
        isEmpty_ = isEmpty;
        Parser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
        isEmpty_ = false;
    }

    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override {
        if (!isEmpty_)
            limiter_.EndElement();
        Parser::endElement(declaration, uriId, isRoot, prefix);
    }

    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) override {
        limiter_.AddText(length);
        Parser::docCharacters(text, length, isCData);
    }

    void docComment(const XMLCh* const text) override {
        limiter_.CheckText(xercesc::XMLString::stringLen(text));
        Parser::docComment(text);
    }

    void docPI(const XMLCh* const target, const XMLCh* const data) override {
        limiter_.CheckText(xercesc::XMLString::stringLen(data));
        Parser::docPI(target, data);
    }

    // Called before anything that the declaration names is opened.
    void doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh* const, const XMLCh* const, const bool,
                     const bool) override {
        limiter_.RefuseDocumentType();
    }

private:
    // Checks an attribute, and counts it if it declares a namespace.
    void CheckAttribute(const xercesc::XMLAttr& attribute) {
        const XMLCh* const value = attribute.getValue();
        limiter_.CheckText(xercesc::XMLString::stringLen(value));
        const XMLCh* const prefix = attribute.getPrefix();
        const XMLCh* const name = attribute.getName();
        if (prefix != nullptr && *prefix != u'\0') {
            if (xercesc::XMLString::equals(prefix, u"xmlns"))
                limiter_.AddNamespace(name, value);
        } else if (xercesc::XMLString::equals(name, u"xmlns")) {
            limiter_.AddNamespace({}, value);
        }
    }

    InputLimiter limiter_;
    bool isEmpty_ = false;
};

} // namespace vexaTransferLib::reader
