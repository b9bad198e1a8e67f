// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/BufferedErrorHandler.h>
#include <vexaTransferLib/reader/EventWalk.h>
#include <vexaTransferLib/reader/SaxParser.h>

#include <vector>

namespace vexaTransferLib::reader {

/// Thrown out of the parse of a file that must be read from a DOM, because its events may differ from its
/// DOM: a file that has a document type declaration, or whose XML declaration names a version other than 1.0
/// and 1.1.
struct NeedsDom {};

/// The XML parser's reader that passes its events to a walk. It receives the events one step before
/// they become calls of a content handler. There a namespace still has its number, by which its text is found
/// at no cost. LimitedParser derives a parser for untrusted files from it.
class EventParser : public SaxParser {
public:
    /// \param isWatched true gives the walk the location of every element; false only where the walk asks for
    ///             it
    EventParser(EventWalk& walk, BufferedErrorHandler& errors, bool isWatched);

    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                      const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override;
    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) override;
    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCData) override;
    void docComment(const XMLCh* const text) override;
    void docPI(const XMLCh* const target, const XMLCh* const data) override;
    void XMLDecl(const XMLCh* const version, const XMLCh* const encoding, const XMLCh* const standalone,
                 const XMLCh* const actualEncoding) override;
    void doctypeDecl(const xercesc::DTDElementDecl& declaration, const XMLCh* const publicId,
                     const XMLCh* const systemId, const bool hasInternalSubset,
                     const bool hasExternalSubset) override;

private:
    const char16_t* NamespaceUri(unsigned int uriId);

    EventWalk& walk_;
    BufferedErrorHandler& errors_;
    bool isWatched_;
    /// Indexed by the parser's numbers of the namespaces.
    std::vector<const char16_t*> namespaceUris_;
};

} // namespace vexaTransferLib::reader
