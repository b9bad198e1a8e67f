// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/SourceLocation.h>

#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>

namespace vexaTransferLib::reader {

/// The XML parser's SAX2 reader with the settings that all readers of documents share, the DOM parser among them:
/// namespaces, no schema, and validation only when the file names a grammar. A class derived from it receives the
/// events.
class SaxParser : public xercesc::SAX2XMLReaderImpl {
public:
    /// False after the parse when the file could not be opened.
    bool HasDocument() const { return hasDocument_; }

    void startDocument() override;

protected:
    /// \param errors must exist as long as the parser
    explicit SaxParser(xercesc::ErrorHandler& errors);

    /// How far the parser has read; during the parse only.
    text::SourceLocation Location() const { return handler_.Location(); }

private:
    // The parser gives its locator only to a content handler.
    class Handler final : public xercesc::DefaultHandler {
    public:
        void setDocumentLocator(const xercesc::Locator* const locator) override { locator_ = locator; }
        text::SourceLocation Location() const {
            return {locator_->getLineNumber(), locator_->getColumnNumber()};
        }

    private:
        const xercesc::Locator* locator_ = nullptr;
    };

    Handler handler_;
    bool hasDocument_ = false;
};

} // namespace vexaTransferLib::reader
