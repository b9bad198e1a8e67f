// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/complete/CompleteReading.h>
#include <vexaTransferLib/reader/DocumentReader.h>
#include <vexaTransferLib/reader/DomNode.h>
#include <vexaTransferLib/reader/EventReading.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/InputLimiter.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/ModelLimiter.h>
#include <vexaTransferLib/reader/ObservedErrorHandler.h>
#include <vexaTransferLib/reader/PlainReading.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadErrors.h>
#include <vexaTransferLib/reader/ReadSettings.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/TreeReading.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/reader/XmlInput.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/FileName.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <common/dbc.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the readers (in reader/), which run on behalf of the parser.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxParserSource};

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
    /// For the reading of a file.
    ParserContext(GpxParser& parser, reader::XmlInput& input, const reader::ReadSettings& settings)
        : ParserContext(parser, settings.observer) {
        progress = input.GetProgress();
        if (settings.limits)
            limiter = std::make_unique<reader::ModelLimiter>(*settings.limits, input.Name());
    }

    void CleanText(icu::UnicodeString& text) override { parser_.CleanGroundspeakText(text); }

private:
    GpxParser& parser_;
};

// Rethrows to the caller the exception of an observer, or the error for which a reading was ended.
template <class Action>
auto RethrowAbort(Action action) {
    try {
        return action();
    } catch (const reader::ReadAborted& stop) {
        std::rethrow_exception(stop.reason);
    }
}

} // namespace

GpxParser::GpxParser() {
    try {
        cleaner_.reset(new CleanText);
    } catch (const std::exception& exception) {
        throw dbc::postcondition_error(std::string("Unable to construct a text cleaner: ") +
                                       exception.what());
    }
}

GpxParser::~GpxParser() = default;

void GpxParser::warning(const xercesc::SAXParseException&) {}

void GpxParser::error(const xercesc::SAXParseException& exception) {
    if (!firstError_)
        firstError_ = reader::MessageOf(kGpxMessageError, exception);
}

void GpxParser::fatalError(const xercesc::SAXParseException& exception) {
    if (!firstError_)
        firstError_ = reader::MessageOf(kGpxMessageFatalError, exception);
}

void GpxParser::resetErrors() {
    firstError_.reset();
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

void GpxParser::SetComplete() {
    isComplete_ = true;
}

void GpxParser::SetCompatible() {
    isComplete_ = false;
}

reader::XmlInput GpxParser::MakeInput(const icu::UnicodeString& path) const {
    using AddressPolicy = reader::XmlInput::AddressPolicy;
    dbc::Require(text::IsFileName(path), text::kGpxParserSource, kNoPath);
    return {path, limits_ ? AddressPolicy::kFilesOnly : AddressPolicy::kAllowed, observer_};
}

reader::XmlInput GpxParser::MakeInput(const std::string& fileName) const {
    dbc::Require(text::IsFileName(fileName), text::kGpxParserSource, kNoPath);
    return {fileName, observer_};
}

std::unique_ptr<xercesc::XercesDOMParser> GpxParser::GetParser(const icu::UnicodeString& path) {
    reader::XmlInput input = MakeInput(path);
    return RethrowAbort([&] {
        reader::TreeReading reading(Limited(input), Settings());
        ParseTree(reading, input.Name());
        return reading.TakeParser(*this);
    });
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
    RethrowAbort([&] { ParseInput(input, document); });
}

reader::ReadSettings GpxParser::Settings() {
    return {*this, observer_, limits_};
}

reader::XmlInput& GpxParser::Limited(reader::XmlInput& input) const {
    if (limits_)
        input.Limit(*limits_, reader::InputLimiter::Extent::kFile);
    return input;
}

void GpxParser::ParseInput(reader::XmlInput& input, GpxDocument& document) {
    dbc::Require(!input.Name().Text().isEmpty(), text::kGpxParserSource, kNoPath);
    Limited(input);
    if (isComplete_) {
        ReadCompletely(input, document);
        return;
    }
    if (!input.IsRepeatable() || (!ReadPlain(input, document) && !ReadEvents(input, document)))
        ReadTree(input, document);
}

void GpxParser::ReadCompletely(reader::XmlInput& input, GpxDocument& document) {
    const reader::ReadSettings settings = Settings();
    ParserContext context(*this, input, settings);
    complete::CompleteReading reading(context, input, settings);
    reading.ReadSource();
    CheckErrors(input.Name(), reading.HasDocument());
    reading.ReadInto(document);
}

// False for a file that needs the XML parser.
bool GpxParser::ReadPlain(reader::XmlInput& input, GpxDocument& document) {
    const reader::ReadSettings settings = Settings();
    ParserContext context(*this, input, settings);
    reader::PlainReading reading(context, input, settings);
    if (!reading.Parse())
        return false;
    CheckErrors(input.Name(), true);
    reading.MoveTo(document);
    return true;
}

// False for a file that needs the DOM.
bool GpxParser::ReadEvents(reader::XmlInput& input, GpxDocument& document) {
    ParserContext context(*this, input, Settings());
    reader::EventReading reading(context, input, Settings());
    if (!reading.Parse())
        return false;
    CheckErrors(input.Name(), reading.HasDocument());
    reading.MoveTo(document);
    return true;
}

void GpxParser::ReadTree(reader::XmlInput& input, GpxDocument& document) {
    reader::TreeReading reading(input, Settings());
    ParseTree(reading, input.Name());
    ParserContext context(*this, input, Settings());
    reading.ReadInto(context, document);
}

void GpxParser::ParseTree(reader::TreeReading& reading, const reader::InputName& name) {
    resetErrors();
    reading.Parse();
    CheckErrors(name, reading.HasDocument());
}

void GpxParser::CheckErrors(const reader::InputName& name, bool isOpened) const {
    if (firstError_)
        reader::FailWithErrors(name, isOpened, *firstError_);
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
