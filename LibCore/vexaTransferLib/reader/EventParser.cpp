// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventParser.h>

#include <vexaTransferLib/reader/KnownNames.h>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include <algorithm>

namespace vexaTransferLib::reader {

EventParser::EventParser(EventWalk& walk, BufferedErrorHandler& errors, bool isWatched)
    : SaxParser(errors), walk_(walk), errors_(errors), isWatched_(isWatched) {}

const char16_t* EventParser::NamespaceUri(unsigned int uriId) {
    if (uriId >= namespaceUris_.size())
        namespaceUris_.resize(uriId + std::size_t{1}, nullptr);
    const char16_t*& uri = namespaceUris_[uriId];
    if (uri == nullptr) {
        const char16_t* const text = getURIText(uriId);
        uri = text != nullptr ? KnownNamespace(text) : u"";
    }
    return *uri != u'\0' ? uri : nullptr;
}

void EventParser::startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                               const XMLCh* const prefix,
                               const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    if (isRoot)
        errors_.Release(); // No declaration that requires the DOM can follow.
    TagPlace place;
    if (isWatched_ || walk_.WantsLocation())
        place.location = Location();
    if (walk_.StartElement(NamespaceUri(uriId), declaration.getBaseName(), place)) {
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
            walk_.AddAttribute(attribute.getQName(), attribute.getValue(),
                               NamespaceUri(attribute.getURIId()));
        }
        walk_.BeginContent();
    }
    if (isEmpty)
        endElement(declaration, uriId, isRoot, prefix);
}

void EventParser::endElement(const xercesc::XMLElementDecl&, const unsigned int, const bool,
                             const XMLCh* const) {
    walk_.EndElement();
}

void EventParser::docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) {
    if (isCData)
        walk_.AddCData(std::u16string_view(text, length));
    else
        walk_.AddText(std::u16string_view(text, length));
}

void EventParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool) {
    walk_.AddText(std::u16string_view(text, length));
}

void EventParser::docComment(const XMLCh* const) {
    walk_.AddOther();
}

void EventParser::docPI(const XMLCh* const, const XMLCh* const) {
    walk_.AddOther();
}

void EventParser::XMLDecl(const XMLCh* const version, const XMLCh* const, const XMLCh* const,
                          const XMLCh* const) {
    if (!Equals(version, u"1.0") && !Equals(version, u"1.1"))
        throw NeedsDom();
}

void EventParser::doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh* const, const XMLCh* const,
                              const bool, const bool) {
    throw NeedsDom();
}

} // namespace vexaTransferLib::reader
