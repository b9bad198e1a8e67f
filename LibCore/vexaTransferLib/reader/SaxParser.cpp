// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SaxParser.h>

#include <xercesc/util/XMLUni.hpp>

namespace vexaTransferLib::reader {

using xercesc::XMLUni;

SaxParser::SaxParser(xercesc::ErrorHandler& errors) {
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

void SaxParser::startDocument() {
    SAX2XMLReaderImpl::startDocument();
    hasDocument_ = true;
}

} // namespace vexaTransferLib::reader
