// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventParser.h>

#include <vexaTransferLib/text/GpxNames.h>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>

namespace vexaTransferLib::reader {

namespace {

using xercesc::XMLUni;

// For a namespace that the readers know, returns the constant with which they compare: equal pointers need no
// comparison of the texts.
const char16_t* Known(const char16_t* uri) {
    for (const char16_t* known : {text::kGpx11Namespace, text::kGpx10Namespace, text::kTarvikNamespace,
                                  text::kGroundspeak10Namespace, text::kGroundspeak101Namespace})
        if (Equals(uri, known))
            return known;
    return uri;
}

} // namespace

// Has the same settings as the DOM parser: namespaces, no schema, and validation only when the file names a
// grammar.
EventParser::EventParser(EventWalk& walk, BufferedErrorHandler& errors, bool isWatched)
    : walk_(walk), errors_(errors), isWatched_(isWatched) {
    setErrorHandler(&errors);
    // Without handlers the parser would not report its events.
    setContentHandler(&handler_);
    setLexicalHandler(&handler_);
    setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    setFeature(XMLUni::fgSAX2CoreValidation, true);
    setFeature(XMLUni::fgXercesDynamic, true);
    setFeature(XMLUni::fgXercesSchema, false);
    setFeature(XMLUni::fgXercesSchemaFullChecking, false);
    setFeature(XMLUni::fgXercesCalculateSrcOfs, false);
}

const char16_t* EventParser::NamespaceUri(unsigned int uriId) {
    if (uriId >= namespaceUris_.size())
        namespaceUris_.resize(uriId + std::size_t{1}, nullptr);
    const char16_t*& uri = namespaceUris_[uriId];
    if (uri == nullptr) {
        const char16_t* const text = getURIText(uriId);
        uri = text != nullptr ? Known(text) : u"";
    }
    return *uri != u'\0' ? uri : nullptr;
}

void EventParser::startDocument() {
    SAX2XMLReaderImpl::startDocument();
    hasDocument_ = true;
}

void EventParser::startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                               const XMLCh* const prefix,
                               const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    if (isRoot)
        errors_.Release(); // No declaration that requires the DOM can follow.
    if (walk_.StartElement(NamespaceUri(uriId), declaration.getBaseName(),
                           isWatched_ || walk_.WantsLocation() ? handler_.Location() : SourceLocation())) {
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
            walk_.AddAttribute(attribute.getQName(), attribute.getValue());
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
        walk_.AddCData({text, length});
    else
        walk_.AddText({text, length});
}

void EventParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool) {
    walk_.AddText({text, length});
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
