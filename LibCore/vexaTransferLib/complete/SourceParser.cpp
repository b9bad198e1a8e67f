// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/SourceParser.h>

#include <vexaTransferLib/model/ElementText.h>

#include <unicode/utf16.h>
#include <unicode/utf8.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <string>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kLongestEscape = 6;

// Characters that only XML 1.1 has become the replacement character, as in any program that cannot hold them.
bool IsXml10(char32_t character) {
    return character >= 0x20
               ? character < 0xD800 || (character > 0xDFFF && character < 0xFFFE) || character > 0xFFFF
               : character == 0x9 || character == 0xA || character == 0xD;
}

std::string_view EscapeOf(char32_t character, bool isInAttribute) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case 0xD:
        return "&#13;";
    case '"':
        return isInAttribute ? "&quot;" : "";
    case 0x9:
        return isInAttribute ? "&#9;" : "";
    case 0xA:
        return isInAttribute ? "&#10;" : "";
    default:
        return "";
    }
}

std::string Utf8(const XMLCh* units) {
    std::string text;
    icu::UnicodeString(units).toUTF8String(text);
    return text;
}

} // namespace

void SourceParser::XMLDecl(const XMLCh* const version, const XMLCh* const, const XMLCh* const,
                           const XMLCh* const) {
    if (!xercesc::XMLString::equals(version, u"1.0") && !xercesc::XMLString::equals(version, u"1.1"))
        throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR);
}

// Blanks within a tag mean nothing, so they can be line feeds.
void SourceParser::ReachLine(std::uint64_t line) {
    for (; line_ < line; ++line_)
        Append("\n");
}

void SourceParser::startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                                const XMLCh* const prefix,
                                const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    const std::uint64_t begin = text_.Size();
    if (isRoot) {
        root_ = begin;
        hasRoot_ = true;
    }
    const std::string name = Utf8(declaration.getFullName());
    Append("<");
    Append(name);
    std::size_t scope = kNoScope;
    for (XMLSize_t i = 0; i < attributeCount; ++i)
        AppendAttribute(*attributes.elementAt(i), scope, begin);
    const text::SourceLocation location = Location();
    ReachLine(location.line);
    Append(">");
    open_.push_back({begin, names_.size(), scope, location, false});
    names_.insert(names_.end(), name.begin(), name.end());
    for (std::string& replaced : std::exchange(replacedIn_, {}))
        ReportReplaced(std::move(replaced));
    if (isEmpty)
        endElement(declaration, uriId, isRoot, prefix);
}

void SourceParser::AppendAttribute(const xercesc::XMLAttr& attribute, std::size_t& scope,
                                   std::uint64_t begin) {
    const std::string name = Utf8(attribute.getQName());
    Append(" ");
    Append(name);
    Append("=\"");
    isReplaced_ = false;
    AppendUnits(attribute.getValue(), Escaping::kAttribute);
    Append("\"");
    if (isReplaced_)
        replacedIn_.push_back(name);
    if (IsDeclaration(name))
        Declare(name.size() > 5 ? std::string_view(name).substr(6) : std::string_view(), attribute.getValue(),
                scope, begin);
}

void SourceParser::Declare(std::string_view prefix, const XMLCh* uri, std::size_t& scope,
                           std::uint64_t begin) {
    if (scope == kNoScope) {
        scope = scopes_.size();
        scopes_.push_back({begin, begin, {}});
    }
    scopes_[scope].declarations.push_back({std::string(prefix), Utf8(uri)});
}

void SourceParser::endElement(const xercesc::XMLElementDecl&, const unsigned int, const bool,
                              const XMLCh* const) {
    EndInnermost();
}

void SourceParser::EndInnermost() {
    const Open ended = open_.back();
    open_.pop_back();
    Append("</");
    Append({names_.data() + ended.nameBegin, names_.size() - ended.nameBegin});
    Append(">");
    names_.resize(ended.nameBegin);
    if (ended.scope != kNoScope)
        scopes_[ended.scope].end = text_.Size();
    if (text_.Size() - ended.begin >= SourceText::kLongSpan)
        longSpans_.push_back({ended.begin, text_.Size()});
}

void SourceParser::Append(const XMLCh* units, std::size_t length, Escaping escaping) {
    for (std::size_t i = 0; i < length;) {
        char32_t character = 0;
        U16_NEXT(units, i, length, character);
        line_ += character == 0xA && escaping != Escaping::kAttribute ? 1 : 0;
        const std::string_view escape = escaping == Escaping::kNone
                                            ? std::string_view()
                                            : EscapeOf(character, escaping == Escaping::kAttribute);
        if (!escape.empty()) {
            Append(escape);
            continue;
        }
        std::uint8_t* const out = reinterpret_cast<std::uint8_t*>(text_.MakeRoom(kLongestEscape));
        std::size_t size = 0;
        isReplaced_ = isReplaced_ || !IsXml10(character);
        U8_APPEND_UNSAFE(out, size, IsXml10(character) ? character : kReplacement);
        text_.Grow(size);
    }
}

void SourceParser::AppendUnits(const XMLCh* units, Escaping escaping) {
    Append(units, xercesc::XMLString::stringLen(units), escaping);
}

void SourceParser::docCharacters(const XMLCh* const text, const XMLSize_t length, const bool) {
    if (open_.empty())
        return;
    isReplaced_ = false;
    Append(text, length, Escaping::kContent);
    if (isReplaced_ && !std::exchange(open_.back().isReplacedReported, true))
        ReportReplaced({});
}

// Unlike everything else, such a character is not in the source.
void SourceParser::ReportReplaced(std::string attribute) {
    if (!reporter_.IsWanted())
        return;
    GpxSkippedElement what;
    what.element = PathOfOpen();
    what.line = open_.back().location.line;
    what.column = open_.back().location.column;
    what.reason = kGpxChanged;
    what.message = reader::kReplacedMessage;
    what.isLoss = true;
    what.attribute = std::move(attribute);
    reporter_.Notify(what);
}

std::string SourceParser::PathOfOpen() const {
    std::string path;
    for (std::size_t i = 0; i < open_.size(); ++i) {
        const std::size_t end = i + 1 < open_.size() ? open_[i + 1].nameBegin : names_.size();
        const std::string_view name(names_.data() + open_[i].nameBegin, end - open_[i].nameBegin);
        path.append(i == 0 ? "" : "/").append(name.substr(name.find(':') + 1));
    }
    return path;
}

void SourceParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool) {
    docCharacters(text, length, false);
}

void SourceParser::docComment(const XMLCh* const text) {
    Append("<!--");
    AppendUnits(text, Escaping::kNone);
    Append("-->");
}

void SourceParser::docPI(const XMLCh* const target, const XMLCh* const data) {
    Append("<?");
    AppendUnits(target, Escaping::kNone);
    if (data != nullptr && *data != u'\0') {
        Append(" ");
        AppendUnits(data, Escaping::kNone);
    }
    Append("?>");
}

SourceText::Pointer SourceParser::TakeSource() {
    if (!hasRoot_)
        return nullptr;
    while (!open_.empty())
        EndInnermost();
    text_.Finish(SourceText::kPadding);
    return SourceText::Make(std::move(text_), root_, std::move(scopes_), std::move(longSpans_));
}

} // namespace vexaTransferLib::complete
