// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/reader/DocumentReader.h>
#include <vexaTransferLib/reader/DomNode.h>
#include <vexaTransferLib/reader/EventParser.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/GpxModelAccess.h>
#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/LimitedParser.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/ObservedErrorHandler.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/reader/XmlInput.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/FileName.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the readers (in reader/), which run on behalf of the parser.
namespace text::sites {

static constexpr CheckSite Here(int line = __builtin_LINE()) {
    return {kGpxParserSource, line};
}

constinit const CheckSite kGpxVersion = Here();        // DocumentReader.cpp: the root has no version
constinit const CheckSite kGpxChildren = Here();       // DocumentReader.cpp: the root has no child list
constinit const CheckSite kGpxChild = Here();          // DocumentReader.cpp: a child of the root is missing
constinit const CheckSite kPointType = Here();         // PointReader.cpp: a point of an unknown kind
constinit const CheckSite kPointLatitude = Here();     // PointReader.cpp: a point has no latitude
constinit const CheckSite kPointLongitude = Here();    // PointReader.cpp: a point has no longitude
constinit const CheckSite kPointChildren = Here();     // PointReader.cpp: a point has no child list
constinit const CheckSite kPointChild = Here();        // PointReader.cpp: a child of a point is missing
constinit const CheckSite kLinkHref = Here();          // LinkReader.cpp: a link has no href
constinit const CheckSite kLinkChildren = Here();      // LinkReader.cpp: a link has no child list
constinit const CheckSite kLinkChild = Here();         // LinkReader.cpp: a child of a link is missing
constinit const CheckSite kRouteChildren = Here();     // RouteReader.cpp: a route has no child list
constinit const CheckSite kRouteChild = Here();        // RouteReader.cpp: a child of a route is missing
constinit const CheckSite kTrackChildren = Here();     // TrackReader.cpp: a track has no child list
constinit const CheckSite kTrackChild = Here();        // TrackReader.cpp: a child of a track is missing
constinit const CheckSite kSegmentChildren = Here();   // TrackReader.cpp: a segment has no child list
constinit const CheckSite kSegmentChild = Here();      // TrackReader.cpp: a child of a segment is missing
constinit const CheckSite kExtensionChildren = Here(); // VendorReader.cpp: extensions have no child list
constinit const CheckSite kExtensionChild = Here();    // VendorReader.cpp: a child of extensions is missing
constinit const CheckSite kDocumentExtensions =
    Here();                                           // VendorReader.cpp: the document's extensions are null
constinit const CheckSite kVendorExtensions = Here(); // VendorReader.cpp: extensions that are no element
constinit const CheckSite kElementText = Here();      // ValueReaders.cpp: the text of a null node
constinit const CheckSite kAttributeText = Here();    // ValueReaders.cpp: an attribute of a null node
constinit const CheckSite kGroundspeakNode = Here();  // ValueReaders.cpp: the namespace of a null node

} // namespace text::sites

namespace {

using reader::ReadContext;
using reader::ViewOf;
using xercesc::DOMNode;

constexpr char kNoPath[] = "The GPX file path was empty or invalid.";

class ParserContext final : public ReadContext {
public:
    ParserContext(GpxParser& parser, GpxReadObserver* observer) : ReadContext(observer), parser_(parser) {}

    void CleanText(icu::UnicodeString& text) override { parser_.CleanGroundspeakText(text); }

private:
    GpxParser& parser_;
};

// Everything else keeps the XML parser's defaults, the reading of external entities among them.
void Configure(xercesc::XercesDOMParser& parser, xercesc::ErrorHandler& errorHandler) {
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Auto);
    parser.setDoNamespaces(true);
    parser.setDoSchema(false);
    parser.setValidationSchemaFullChecking(false);
    parser.setErrorHandler(&errorHandler);
}

// The file's name without folder and extension; only "/" separates folders.
icu::UnicodeString DefaultName(const icu::UnicodeString& path) {
    icu::UnicodeString name(path);
    const std::int32_t slash = name.lastIndexOf(u'/');
    if (slash >= 0)
        name.remove(0, slash + 1);
    const std::int32_t dot = name.lastIndexOf(u'.');
    if (dot >= 0)
        name.truncate(dot);
    text::ThrowIfBogus(name);
    return name;
}

// Where an observer has thrown or cancelled, that is what the caller gets.
template <class Action>
auto RethrowAbort(Action action) {
    try {
        return action();
    } catch (const reader::ReadAborted& stop) {
        std::rethrow_exception(stop.reason);
    }
}

// What the XML parser throws becomes the library's error.
template <class Action>
void RunParser(const icu::UnicodeString& name, Action parse) {
    const std::string narrowName = UnicodeStrUtils::UnicodeStringToStlString(name);
    try {
        parse();
    } catch (const xercesc::XMLException& exception) {
        std::string message;
        reader::ToNarrow(exception.getMessage(), message);
        throw dbc::postcondition_error("Error parsing the GPX file: " + narrowName +
                                       ". Error message: " + message);
    } catch (const xercesc::DOMException& exception) {
        throw dbc::postcondition_error("Error parsing GPX file: " + narrowName +
                                       ". DOM error code: " + std::to_string(exception.code));
    }
}

[[noreturn]] void FailWithoutDocument(const icu::UnicodeString& name) {
    throw dbc::postcondition_error(
        "Unable to interpret the GPX file: " + UnicodeStrUtils::UnicodeStringToStlString(name) +
        ". The document object could not be obtained.");
}

// Of a file that is well-formed: the document is replaced even if the reading fails, unless it was stopped.
void ReadDomTree(ReadContext& context, xercesc::XercesDOMParser& parser, const icu::UnicodeString& name,
                 GpxDocument& document) {
    GpxDocument read;
    GpxModelAccess::SetName(read, DefaultName(name));
    try {
        const xercesc::DOMDocument* const tree = parser.getDocument();
        if (tree == nullptr)
            FailWithoutDocument(name);
        const reader::NodeView root = ViewOf(tree->getDocumentElement());
        reader::RequireGpxRoot(root);
        reader::ReadDocument(context, root, read);
    } catch (const reader::ReadAborted&) {
        throw;
    } catch (...) {
        document = std::move(read);
        throw;
    }
    document = std::move(read);
}

} // namespace

GpxParser::GpxParser() : errorsSeen_(false) {
    try {
        cleaner_.reset(new CleanText);
    } catch (const std::exception& exception) {
        throw dbc::postcondition_error(std::string("Unable to construct a text cleaner: ") +
                                       exception.what());
    }
}

GpxParser::~GpxParser() = default;

void GpxParser::warning(const xercesc::SAXParseException&) {}

void GpxParser::error(const xercesc::SAXParseException&) {
    errorsSeen_ = true;
}

void GpxParser::fatalError(const xercesc::SAXParseException&) {
    errorsSeen_ = true;
}

void GpxParser::resetErrors() {
    errorsSeen_ = false;
}

void GpxParser::SetObserver(GpxReadObserver* observer) {
    observer_ = observer;
}

void GpxParser::SetUntrusted(const GpxInputLimits& limits) {
    limits_ = limits;
}

void GpxParser::SetTrusted() {
    limits_.reset();
}

std::optional<reader::InputLimiter> GpxParser::MakeLimiter(const icu::UnicodeString& name) const {
    if (!limits_)
        return std::nullopt;
    return reader::InputLimiter(*limits_, UnicodeStrUtils::UnicodeStringToStlString(name));
}

reader::XmlInput GpxParser::MakeInput(const icu::UnicodeString& path) const {
    using AddressPolicy = reader::XmlInput::AddressPolicy;
    dbc::Require(text::IsFileName(path), text::kGpxParserSource, kNoPath);
    reader::XmlInput input(path, UnicodeStrUtils::UnicodeStringToStlString(path),
                           limits_ ? AddressPolicy::kFilesOnly : AddressPolicy::kAllowed, observer_);
    Limit(input);
    return input;
}

reader::XmlInput GpxParser::MakeInput(const std::string& fileName) const {
    dbc::Require(text::IsFileName(fileName), text::kGpxParserSource, kNoPath);
    reader::XmlInput input(icu::UnicodeString::fromUTF8(fileName), fileName,
                           reader::XmlInput::AddressPolicy::kNamedFile, observer_);
    Limit(input);
    return input;
}

void GpxParser::Limit(reader::XmlInput& input) const {
    if (limits_)
        input.Limit(*limits_, reader::InputLimiter::Extent::kFile);
}

std::unique_ptr<xercesc::XercesDOMParser> GpxParser::GetParser(const icu::UnicodeString& path) {
    reader::XmlInput input = MakeInput(path);
    return RethrowAbort([&] { return ParseTree(input); });
}

std::unique_ptr<xercesc::XercesDOMParser> GpxParser::MakeDomParser(const icu::UnicodeString& name) const {
    if (const std::optional<reader::InputLimiter> limiter = MakeLimiter(name))
        return std::make_unique<reader::LimitedParser<xercesc::XercesDOMParser>>(*limiter);
    return std::make_unique<xercesc::XercesDOMParser>(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager,
                                                      nullptr);
}

std::unique_ptr<xercesc::XercesDOMParser> GpxParser::ParseTree(reader::XmlInput& input) {
    dbc::Require(!input.Name().isEmpty(), text::kGpxParserSource, kNoPath);
    resetErrors();
    reader::ObservedErrorHandler errors(*this, observer_);
    std::unique_ptr<xercesc::XercesDOMParser> parser = MakeDomParser(input.Name());
    Configure(*parser, errors);
    RunParser(input.Name(), [&] { input.Feed(*parser); });
    CheckErrors(input.Name());
    parser->setErrorHandler(this);
    return parser;
}

void GpxParser::CheckErrors(const icu::UnicodeString& name) const {
    if (errorsSeen_)
        throw dbc::postcondition_error("One or more errors encountered while parsing the GPX file: " +
                                       UnicodeStrUtils::UnicodeStringToStlString(name));
}

void GpxParser::Parse(const icu::UnicodeString& path, GpxDocument& document) {
    reader::XmlInput input = MakeInput(path);
    RethrowAbort([&] { ParseInput(input, document); });
}

void GpxParser::ParseFile(const std::string& path, GpxDocument& document) {
    reader::XmlInput input = MakeInput(path);
    RethrowAbort([&] { ParseInput(input, document); });
}

void GpxParser::Parse(std::string_view bytes, const icu::UnicodeString& name, GpxDocument& document) {
    reader::XmlInput input(bytes, name, observer_);
    Limit(input);
    RethrowAbort([&] { ParseInput(input, document); });
}

void GpxParser::ParseInput(reader::XmlInput& input, GpxDocument& document) {
    const bool mayNeedDom = !input.IsRepeatable() || input.Name().isEmpty();
    if (!mayNeedDom && ReadEvents(input, document))
        return;
    const std::unique_ptr<xercesc::XercesDOMParser> parser = ParseTree(input);
    std::optional<reader::InputLimiter> limiter = MakeLimiter(input.Name());
    ParserContext context(*this, observer_);
    context.limiter = limiter ? &*limiter : nullptr;
    context.progress = input.GetProgress();
    ReadDomTree(context, *parser, input.Name(), document);
}

// False for a file that needs the DOM.
bool GpxParser::ReadEvents(reader::XmlInput& input, GpxDocument& document) {
    GpxDocument read;
    GpxModelAccess::SetName(read, DefaultName(input.Name()));
    std::optional<reader::InputLimiter> limiter = MakeLimiter(input.Name());
    ParserContext context(*this, observer_);
    context.limiter = limiter ? &*limiter : nullptr;
    context.progress = input.GetProgress();
    reader::EventWalk walk(context, read);
    reader::ObservedErrorHandler watchedErrors(*this, observer_);
    reader::BufferedErrorHandler errors(watchedErrors);
    reader::EventParser parser(walk, errors, observer_ != nullptr, context.limiter);
    bool needsDom = false;
    RunParser(input.Name(), [&] {
        try {
            input.Feed(parser);
        } catch (const reader::NeedsDom&) {
            needsDom = true;
            return;
        } catch (...) {
            errors.Release();
            throw;
        }
        errors.Release();
    });
    if (needsDom)
        return false;
    CheckErrors(input.Name());
    walk.Finish();
    document = std::move(read);
    if (!parser.HasDocument())
        FailWithoutDocument(input.Name());
    walk.RethrowFailure();
    return true;
}

template <class Read>
auto GpxParser::Reading(Read read) {
    ParserContext context(*this, observer_);
    return RethrowAbort([&] { return read(context); });
}

void GpxParser::ParseGpxNode(DOMNode* gpxElement, GpxDocument& document) {
    Reading([&](ReadContext& context) { reader::ReadDocument(context, ViewOf(gpxElement), document); });
}

bool GpxParser::IsStdGPXNode(const GpxVersion& version, DOMNode* node) {
    return reader::IsStandard(version, ViewOf(node));
}

void GpxParser::ParseExtensionsElement(DOMNode* extensions, GpxDocument& document) {
    Reading([&](ReadContext& context) {
        return reader::ReadDocumentData(context, ViewOf(extensions), document);
    });
}

void GpxParser::ParsePointNode(const GpxVersion& version, GpxPointType type, DOMNode* node, GpxPoint& point) {
    point = Reading(
        [&](ReadContext& context) { return reader::ReadPoint(context, version, type, ViewOf(node)); });
}

void GpxParser::ParseLinkNode(DOMNode* node, GpxUrl& link) {
    Reading([&](ReadContext& context) { reader::ReadLink(context, ViewOf(node), link); });
}

void GpxParser::ParseRteNode(const GpxVersion& version, DOMNode* node, GpxDocument& document) {
    Reading(
        [&](ReadContext& context) { return reader::ReadRoute(context, version, ViewOf(node), document); });
}

void GpxParser::ParseTrkNode(const GpxVersion& version, DOMNode* node, GpxDocument& document) {
    Reading(
        [&](ReadContext& context) { return reader::ReadTrack(context, version, ViewOf(node), document); });
}

void GpxParser::ParseTrkSegNode(const GpxVersion& version, DOMNode* node, GpxTrack& track) {
    Reading([&](ReadContext& context) { return reader::ReadSegment(context, version, ViewOf(node), track); });
}

const XMLCh* GpxParser::GetElementText(DOMNode* node) {
    return reader::ElementText(ViewOf(node));
}

std::string GpxParser::GetTranscodedElementText(DOMNode* node) {
    std::string text;
    reader::ReadText(ViewOf(node), text);
    return text;
}

bool GpxParser::XMLChToStdString(const XMLCh* text, std::string& out) {
    return reader::ToNarrow(text, out);
}

bool GpxParser::GetStringElement(DOMNode* node, std::string& out) {
    return reader::ReadText(ViewOf(node), out);
}

bool GpxParser::GetStringElement(DOMNode* node, icu::UnicodeString& out) {
    return reader::ReadText(ViewOf(node), out);
}

const XMLCh* GpxParser::GetAttributeText(DOMNode* node, const char* name) {
    if (!dbc::SoftCheck(name != nullptr, text::kGpxParserSource))
        return nullptr;
    icu::UnicodeString wideName(name);
    text::ThrowIfBogus(wideName);
    const char16_t* const terminated = wideName.getTerminatedBuffer();
    if (terminated == nullptr) // ICU's memory ran out
        throw std::bad_alloc();
    return reader::AttributeText(ViewOf(node), terminated);
}

bool GpxParser::GetStringAttribute(DOMNode* node, const char* name, icu::UnicodeString& out) {
    const XMLCh* const units = GetAttributeText(node, name);
    if (units == nullptr)
        return false;
    out = text::CopyOf(units);
    return true;
}

bool GpxParser::GetDoubleAttribute(DOMNode* node, const char* name, double& out) {
    std::string text;
    return reader::ToNarrow(GetAttributeText(node, name), text) && StrToDouble(text.c_str(), out);
}

bool GpxParser::GetDoubleElement(DOMNode* node, double& out) {
    return reader::ReadDouble(ViewOf(node), out);
}

bool GpxParser::GetTimeElement(DOMNode* node, double& out) {
    return reader::ReadTime(ViewOf(node), out);
}

bool GpxParser::GetFixElement(DOMNode* node, GpxFix& out) {
    return reader::ReadFix(ViewOf(node), out);
}

bool GpxParser::GetTarvikRouteTypeElement(DOMNode* extensions, TarvikRouteType& type) {
    return Reading(
        [&](ReadContext& context) { return reader::ReadRouteType(context, ViewOf(extensions), type); });
}

bool GpxParser::GetTarvikRoutePointTypeElement(DOMNode* extensions, TarvikRoutePointType& type) {
    return Reading(
        [&](ReadContext& context) { return reader::ReadRoutePointType(context, ViewOf(extensions), type); });
}

void GpxParser::GetTarvikDataElementsFromWptExtensions(DOMNode* extensions, GpxPoint& point) {
    Reading([&](ReadContext& context) {
        reader::FieldSources sources(context.reporter, reader::FieldSources::Lifetime::kLong);
        reader::ReadWaypointData(context, sources, ViewOf(extensions), point);
    });
}

void GpxParser::GetTarvikDataElementsFromTrkExtensions(DOMNode* extensions, GpxTrack& track) {
    Reading([&](ReadContext& context) { return reader::ReadTrackData(context, ViewOf(extensions), track); });
}

bool GpxParser::IsGroundspeakNode(DOMNode* node) {
    return reader::IsGroundspeak(ViewOf(node));
}

bool GpxParser::GetGroundspeakCacheElementFromExtensions(DOMNode* extensions, GpxGroundspeakCache& cache) {
    return Reading([&](ReadContext& context) {
        return reader::ReadGeocacheFromExtensions(context, ViewOf(extensions), cache);
    });
}

bool GpxParser::GetGroundspeakCacheElement(DOMNode* cacheNode, GpxGroundspeakCache& cache) {
    return Reading(
        [&](ReadContext& context) { return reader::ReadGeocache(context, ViewOf(cacheNode), cache); });
}

bool GpxParser::GetGroundspeakCacheLogs(DOMNode* logsNode, GpxGroundspeakCache& cache) {
    return Reading(
        [&](ReadContext& context) { return reader::ReadGeocacheLogs(context, ViewOf(logsNode), cache); });
}

bool GpxParser::GetGroundspeakTravelBugs(DOMNode* travelbugsNode, GpxGroundspeakCache& cache) {
    return Reading(
        [&](ReadContext& context) { return reader::ReadTravelBugs(context, ViewOf(travelbugsNode), cache); });
}

bool GpxParser::CleanGroundspeakText(icu::UnicodeString& text) {
    if (!dbc::SoftCheck(cleaner_ != nullptr, text::kGpxParserSource))
        std::abort();
    try {
        cleaner_->CleanWebTextForTova(text);
        return true;
    } catch (...) {
        return false;
    }
}

bool StrToDouble(const char* text, double& out) {
    return reader::ReadNumber(text, out);
}

long StrToInt(const icu::UnicodeString& text) {
    return text::UsNumberFormat().ParseInteger(text);
}

} // namespace vexaTransferLib
