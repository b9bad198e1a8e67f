// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/SaxParser.h>
#include <vexaTransferLib/reader/SkipReporter.h>
#include <vexaTransferLib/text/SourceLocation.h>

#include <xercesc/sax/ErrorHandler.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::complete {

/// The XML parser's reader that writes what it reads of a file that is not plain as XML 1.0 in UTF-8 without a
/// document type: entities are expanded, attributes have their defaults, line ends are line feeds. Elements keep their
/// lines. LimitedParser derives a parser for untrusted files from it.
class SourceParser : public reader::SaxParser {
public:
    /// \param observer receives the reports of characters that XML 1.0 cannot hold; may be null
    explicit SourceParser(xercesc::ErrorHandler& errors, GpxReadObserver* observer = nullptr)
        : SaxParser(errors), reporter_(observer) {}

    /// After the parse; null when there is no root. Ends elements that are still open, which there are when the host
    /// ignores the errors of an ill-formed file.
    SourceText::Pointer TakeSource();

    /// \throws xercesc::DOMException as the DOM parser does for a version of XML that it does not know
    void XMLDecl(const XMLCh* const version, const XMLCh* const encoding, const XMLCh* const standalone,
                 const XMLCh* const actualEncoding) override;
    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                      const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override;
    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) override;
    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCData) override;
    void docComment(const XMLCh* const text) override;
    void docPI(const XMLCh* const target, const XMLCh* const data) override;

private:
    struct Open {
        std::uint64_t begin;   ///< the place of its start tag
        std::size_t nameBegin; ///< of its qualified name, in names_
        std::size_t scope;     ///< the scope that it opened; kNoScope for none
        text::SourceLocation location;
        bool isReplacedReported; ///< a replaced character in its text
    };
    static constexpr std::size_t kNoScope = static_cast<std::size_t>(-1);

    enum class Escaping { kNone, kContent, kAttribute };

    void Append(std::string_view text) { text_.Append(text); }
    void Append(const XMLCh* units, std::size_t length, Escaping escaping);
    void AppendUnits(const XMLCh* units, Escaping escaping);
    void AppendAttribute(const xercesc::XMLAttr& attribute, std::size_t& scope, std::uint64_t begin);
    void Declare(std::string_view prefix, const XMLCh* uri, std::size_t& scope, std::uint64_t begin);
    void ReachLine(std::uint64_t line);
    void ReportReplaced(std::string attribute);
    std::string PathOfOpen() const;
    void EndInnermost();

    reader::SkipReporter reporter_;
    SourceBytes text_;
    bool isReplaced_ = false;             ///< a character since this was last asked for
    std::vector<std::string> replacedIn_; ///< attributes of the start tag that is read
    std::uint64_t line_ = 1;
    std::uint64_t root_ = 0;
    bool hasRoot_ = false;
    std::vector<Open> open_;
    std::vector<char> names_; ///< the qualified names of the open elements, one after another
    std::vector<SourceText::Scope> scopes_;
    std::vector<SourceText::LongSpan> longSpans_;
};

} // namespace vexaTransferLib::complete
