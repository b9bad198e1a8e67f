// SPDX-License-Identifier: MIT
#include <vexagpx/schema/SchemaErrors.h>

#include <unicode/unistr.h>
#include <xercesc/sax/SAXParseException.hpp>

#include <string_view>
#include <utility>

namespace vexagpx {

namespace {

constexpr std::size_t kLongestPath = 1000;
constexpr std::int32_t kLongestText = 300;
constexpr char kGpx10[] = "http://www.topografix.com/GPX/1/0";
constexpr char kNoPlace[] = "It has no place here.";

std::string Utf8(const XMLCh* text) {
    std::string utf8;
    icu::UnicodeString(text).toUTF8String(utf8);
    return utf8;
}

/// The beginning of a text that is too long, and an ellipsis.
std::string Shortened(const XMLCh* text) {
    icu::UnicodeString shortened(text);
    if (shortened.length() > kLongestText) {
        shortened.truncate(shortened.getChar32Start(kLongestText));
        shortened += u"...";
    }
    std::string utf8;
    shortened.toUTF8String(utf8);
    return utf8;
}

bool Has(std::string_view message, std::string_view part) {
    return message.find(part) != std::string_view::npos;
}

/// The kind of an error that is not about a child; known by the parser's words.
SchemaErrorKind KindOf(std::string_view message, bool isRoot) {
    // The first one comes before the second one for a namespace that no schema is for.
    if (Has(message, "grammar not found for namespace") || Has(message, "no declaration found for element"))
        return isRoot ? SchemaErrorKind::kOtherRoot : SchemaErrorKind::kNoSchema;
    if (Has(message, "is not declared for element"))
        return SchemaErrorKind::kUnknownAttribute;
    if (message.starts_with("missing required attribute") || Has(message, "required attribute"))
        return SchemaErrorKind::kMissingAttribute;
    if (Has(message, "no character data is allowed"))
        return SchemaErrorKind::kStrayText;
    return SchemaErrorKind::kBadValue;
}

bool IsWithoutSchema(SchemaErrorKind kind) {
    return kind == SchemaErrorKind::kNoSchema || kind == SchemaErrorKind::kOtherRoot;
}

/// "ele" of "element 'ele' is not allowed for content model '(ele?,time?)'".
std::string_view ChildName(std::string_view message) {
    const std::size_t start = message.find('\'') + 1;
    std::string_view name = message.substr(start, message.find('\'', start) - start);
    return name.substr(name.find(':') + 1);
}

/// True when the content model, which the message ends with, has the element.
bool IsInModel(std::string_view message, std::string_view name) {
    constexpr std::string_view kEnds = "?*+,)|";
    const std::size_t model = message.find("content model");
    for (std::size_t at = message.find(name, model); at != std::string_view::npos;
         at = message.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        if (Has("(,:|", message.substr(at - 1, 1)) && end < message.size() &&
            Has(kEnds, message.substr(end, 1)))
            return true;
    }
    return false;
}

} // namespace

void SchemaErrors::Begin(SchemaReport& report) {
    report_ = &report;
    depth_ = 0;
    waiting_.clear();
    isBeforeStart_ = false;
    isInContent_ = false;
    failedChild_ = 0;
}

void SchemaErrors::EndContent(std::size_t failed) {
    isInContent_ = false;
    failedChild_ = failed;
}

Location SchemaErrors::Here() const {
    return {locator_->getLineNumber(), locator_->getColumnNumber()};
}

void SchemaErrors::startElement(const XMLCh* nameSpace, const XMLCh* name, const XMLCh*,
                                const xercesc::Attributes&) {
    isBeforeStart_ = false;
    if (depth_ == levels_.size())
        levels_.emplace_back();
    Level& level = levels_[depth_];
    level.name = Shortened(name);
    level.children.clear();
    level.takesOthers = Utf8(nameSpace) == kGpx10;
    level.hasNoSchema = depth_ > 0 && levels_[depth_ - 1].hasNoSchema;
    ++depth_;
    const bool isReported = !waiting_.empty() && AddWaiting(Utf8(nameSpace));
    if (depth_ > 1)
        levels_[depth_ - 2].children.push_back({Here(), isReported});
}

/// Adds the errors of the element that has just started. True when one of them is that it is not declared. What else is
/// wrong with such an element, and with what is in it, says nothing.
bool SchemaErrors::AddWaiting(const std::string& nameSpace) {
    bool isUndeclared = false;
    for (Waiting& error : waiting_) {
        const bool isOfElement = IsWithoutSchema(error.kind);
        const bool isForeign = depth_ == 1 || (levels_[depth_ - 2].takesOthers && !nameSpace.empty() &&
                                               !namespaces_.contains(nameSpace));
        if (isOfElement && !isForeign)
            error = {SchemaErrorKind::kUnknownElement, kNoPlace, error.location};
        Add(error.kind, std::move(error.message), error.location);
        isUndeclared = isUndeclared || isOfElement;
        levels_[depth_ - 1].hasNoSchema = levels_[depth_ - 1].hasNoSchema || isOfElement;
    }
    waiting_.clear();
    return isUndeclared;
}

void SchemaErrors::endElement(const XMLCh*, const XMLCh*, const XMLCh*) {
    --depth_;
}

void SchemaErrors::error(const xercesc::SAXParseException& exception) {
    const Location location{exception.getLineNumber(), exception.getColumnNumber()};
    const std::string whole = Utf8(exception.getMessage());
    if (Has(whole, "is not allowed for content model"))
        return AddChildError(whole, location);
    const bool isRoot = depth_ == 0;
    const SchemaErrorKind kind = KindOf(whole, isRoot);
    const bool isOfNext = isInContent_ ? isBeforeStart_ : kind != SchemaErrorKind::kStrayText;
    const bool isKnown = !waiting_.empty() && IsWithoutSchema(kind) && waiting_.back().kind == kind;
    if (isOfNext && isKnown)
        return;
    if (isOfNext)
        waiting_.push_back({kind, Shortened(exception.getMessage()), location});
    else
        Add(kind, Shortened(exception.getMessage()), location);
}

void SchemaErrors::AddChildError(const std::string& message, const Location& atEnd) {
    const std::string child(ChildName(message));
    const std::vector<Child>& children = levels_[depth_ - 1].children;
    const bool isKnown = failedChild_ < children.size();
    if (isKnown && children[failedChild_].isReported)
        return;
    const bool isMisplaced = IsInModel(message, child);
    report_->Add({Path(child),
                  isMisplaced ? SchemaErrorKind::kMisplacedElement : SchemaErrorKind::kUnknownElement,
                  isMisplaced ? "It comes too late, or too often." : kNoPlace},
                 isKnown ? children[failedChild_].location : atEnd);
}

void SchemaErrors::Add(SchemaErrorKind kind, std::string message, const Location& location) {
    if (levels_[depth_ - 1].hasNoSchema)
        return;
    report_->Add({Path({}), kind, std::move(message)}, location);
}

/// "gpx/wpt" of the element that is open, with the name of a child if there is one.
std::string SchemaErrors::Path(const std::string& child) const {
    std::string path;
    for (std::size_t i = 0; i < depth_ && path.size() < kLongestPath; ++i)
        path += (i == 0 ? "" : "/") + levels_[i].name;
    return child.empty() ? path : path + "/" + child;
}

} // namespace vexagpx
