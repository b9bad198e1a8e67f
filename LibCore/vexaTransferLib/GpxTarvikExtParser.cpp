// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/reader/HeadReader.h>
#include <vexaTransferLib/reader/LimitedParser.h>
#include <vexaTransferLib/reader/LimitedSource.h>
#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ReadErrors.h>
#include <vexaTransferLib/reader/XmlInput.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/FileName.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <boost/make_shared.hpp>
#include <unicode/uchar.h>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <bit>
#include <cstdint>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>

namespace vexaTransferLib {

namespace {

using reader::XmlInput;
using xercesc::XMLUni;
using Extent = reader::InputLimiter::Extent;

// Wraps the text instead of copying it; a null one counts as empty.
icu::UnicodeString Alias(const XMLCh* text) {
    return icu::UnicodeString(true, text, -1);
}

// A namespace counts for each of its elements and may be of any length: what is longer than those that the scanner
// knows is a different one.
icu::UnicodeString AliasOfNamespace(const XMLCh* uri) {
    constexpr std::int32_t kLongestKnown = std::size(text::kTarvikNamespace) - 1;
    static_assert(kLongestKnown >= std::size(text::kGpx10Namespace) - 1 &&
                  kLongestKnown >= std::size(text::kGpx11Namespace) - 1);
    return text::AliasOfStart(uri, kLongestKnown + 1);
}

bool EqualsIgnoringCase(const icu::UnicodeString& text, const char16_t* other) {
    return text.caseCompare(Alias(other), U_FOLD_CASE_DEFAULT) == 0;
}

bool IsGpxNamespace(const icu::UnicodeString& uri) {
    return EqualsIgnoringCase(uri, text::kGpx10Namespace) || EqualsIgnoringCase(uri, text::kGpx11Namespace);
}

bool EndsHead(const icu::UnicodeString& name) {
    return EqualsIgnoringCase(name, gpx::kWpt) || EqualsIgnoringCase(name, gpx::kTrk) ||
           EqualsIgnoringCase(name, gpx::kRte);
}

/// The event parser for an untrusted file.
class UntrustedReader final : public reader::LimitedParser<xercesc::SAX2XMLReaderImpl> {
public:
    explicit UntrustedReader(const reader::InputLimiter& limiter) : LimitedParser(limiter) {
        // Without a handler the parser would not report document types.
        setLexicalHandler(&lexicalHandler_);
    }

private:
    xercesc::DefaultHandler lexicalHandler_;
};

std::unique_ptr<xercesc::SAX2XMLReader> MakeReader(const std::optional<GpxInputLimits>& limits) {
    if (!limits)
        return std::unique_ptr<xercesc::SAX2XMLReader>(xercesc::XMLReaderFactory::createXMLReader());
    // Its messages are never shown.
    return std::make_unique<UntrustedReader>(
        reader::InputLimiter(*limits, reader::InputName(), Extent::kHead));
}

/// An address where only files are read.
struct RefusedAddress {};

void Feed(XmlInput& input, const std::optional<GpxInputLimits>& limits, xercesc::SAX2XMLReader& xmlReader) {
    if (limits)
        input.Limit(*limits, Extent::kHead);
    try {
        input.Feed(xmlReader);
    } catch (const dbc::postcondition_error&) {
        throw RefusedAddress();
    }
}

/// Keeps the first error. Without memory for its message the message stays empty, so that a scan ends in the same
/// way.
void NoteError(GpxHead& head, std::uint64_t line, std::uint64_t column, const XMLCh* message) {
    if (head.error)
        return;
    head.error = {line, column, {}};
    try {
        head.error->message = reader::ToUtf8(message);
    } catch (const std::bad_alloc&) {
        head.error->message.clear();
    }
}

/// Records that the file is ill-formed, which the XML parser would not report otherwise.
class NotedErrors final : public xercesc::ErrorHandler {
public:
    NotedErrors(bool& areThere, GpxHead& head) : areThere_(areThere), head_(head) {}

    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException& exception) override { Note(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override { Note(exception); }
    void resetErrors() override {}

private:
    void Note(const xercesc::SAXParseException& exception) {
        areThere_ = true;
        NoteError(head_, exception.getLineNumber(), exception.getColumnNumber(), exception.getMessage());
    }

    bool& areThere_;
    GpxHead& head_;
};

GpxHead::End HeadEndOf(GpxScanEnd end) {
    switch (end) {
    case kGpxScanNone:
        break;
    case kGpxScanComplete:
        return GpxHead::End::kEndOfFile;
    case kGpxScanContent:
        return GpxHead::End::kObject;
    case kGpxScanMissing:
        return GpxHead::End::kMissing;
    case kGpxScanIllFormed:
        return GpxHead::End::kIllFormed;
    case kGpxScanRefused:
        return GpxHead::End::kRefused;
    case kGpxScanFailed:
        return GpxHead::End::kFailed;
    }
    return GpxHead::End::kNone;
}

template <class Record>
Record& Made(boost::shared_ptr<Record>& record) {
    if (!record)
        record = boost::make_shared<Record>();
    return *record;
}

template <class Record, class Value>
struct Field {
    const char16_t* name;
    Value Record::*value;
};

using LayerField = Field<GISMetaData, icu::UnicodeString>;
constexpr LayerField kLayerTexts[] = {{tarvik::kLayername, &GISMetaData::layerName},
                                      {tarvik::kLayerkey, &GISMetaData::layerKey},
                                      {tarvik::kForm, &GISMetaData::form}};
using AnnotateField = Field<AnnotateMetaData, icu::UnicodeString>;
constexpr AnnotateField kAnnotateTexts[] = {{tarvik::kTrackGUID, &AnnotateMetaData::trackGUID},
                                            {tarvik::kWaypointGUID, &AnnotateMetaData::waypointGUID}};
using LayerNumber = Field<GISMetaData, std::int32_t>;
constexpr LayerNumber kLayerNumbers[] = {{tarvik::kDefaultsymbol, &GISMetaData::defaultSymbol}};
using Count = Field<GPXStats, std::int32_t>;
constexpr Count kCounts[] = {{tarvik::kWptcount, &GPXStats::wptcount},
                             {tarvik::kTrkcount, &GPXStats::trkcount},
                             {tarvik::kTrksegcount, &GPXStats::trksegcount},
                             {tarvik::kGeocachecount, &GPXStats::geocachecount},
                             {tarvik::kGeocachesymbolcount, &GPXStats::geocachecount}};
using Total = Field<GPXStats, double>;
constexpr Total kTotals[] = {{tarvik::kTrktotalkm, &GPXStats::trktotalkm}};

/// Stores what `read` gives in the field of that name, if there is one.
template <class Record, class Value, std::size_t size, class Read>
bool Take(const icu::UnicodeString& name, const Field<Record, Value> (&fields)[size],
          boost::shared_ptr<Record>& record, Read read) {
    for (const auto& field : fields) {
        if (EqualsIgnoringCase(name, field.name)) {
            Made(record).*field.value = read();
            return true;
        }
    }
    return false;
}

} // namespace

GpxTarvikExtParser::GpxTarvikExtParser()
    : head_(std::make_unique<reader::HeadReader>()),
      errors_(std::make_unique<NotedErrors>(isIllFormed_, head_->Head())), documentTime_(0.0) {}

GpxTarvikExtParser::~GpxTarvikExtParser() = default;

boost::shared_ptr<GPXStats> GpxTarvikExtParser::GetStats() const {
    return stats_;
}

boost::shared_ptr<AnnotateMetaData> GpxTarvikExtParser::GetAnnotateMetaData() const {
    return annotateMetaData_;
}

boost::shared_ptr<GISMetaData> GpxTarvikExtParser::GetGISMetaData() const {
    return gisMetaData_;
}

GpxScanEnd GpxTarvikExtParser::GetScanEnd() const {
    return scanEnd_;
}

double GpxTarvikExtParser::GetDocumentTime() const {
    return documentTime_;
}

const GpxHead& GpxTarvikExtParser::GetHead() const {
    return head_->Head();
}

void GpxTarvikExtParser::Parse(const icu::UnicodeString& path) {
    if (!dbc::SoftCheck(text::IsFileName(path), text::kGpxTarvikExtParserSource))
        return;
    // Two captures: a std::function holds them without memory of its own, whose lack would be thrown.
    Scan([this, &path] {
        const auto policy = limits_ ? XmlInput::AddressPolicy::kFilesOnly : XmlInput::AddressPolicy::kAllowed;
        XmlInput input(path, policy, nullptr);
        Feed(input, limits_, *reader_);
    });
}

void GpxTarvikExtParser::ParseFile(const std::string& path) {
    if (!dbc::SoftCheck(text::IsFileName(path), text::kGpxTarvikExtParserSource))
        return;
    Scan([this, &path] {
        XmlInput input(path, nullptr);
        Feed(input, limits_, *reader_);
    });
}

void GpxTarvikExtParser::ParseSource(const xercesc::InputSource& source) {
    if (limits_)
        Scan([&] {
            reader_->parse(reader::LimitedSource(source, *limits_, reader::InputName(), Extent::kHead));
        });
    else
        Scan([&] { reader_->parse(source); });
}

void GpxTarvikExtParser::SetUntrusted(const GpxInputLimits& limits) {
    limits_ = limits;
}

void GpxTarvikExtParser::SetTrusted() {
    limits_.reset();
}

void GpxTarvikExtParser::Scan(const std::function<void()>& feed) {
    Reset();
    scanEnd_ = EndOf(feed);
    head_->Finish(HeadEndOf(scanEnd_));
    // What the XML parser says of a file that it cannot open is not about its XML.
    if (scanEnd_ == kGpxScanMissing)
        head_->Head().error.reset();
}

void GpxTarvikExtParser::Configure() {
    reader_ = MakeReader(limits_);
    reader_->setContentHandler(this);
    reader_->setErrorHandler(errors_.get());
    reader_->setFeature(XMLUni::fgSAX2CoreValidation, false);
    reader_->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
    reader_->setFeature(XMLUni::fgXercesSkipDTDValidation, true);
    reader_->setFeature(XMLUni::fgXercesSchema, false);
    reader_->setFeature(XMLUni::fgXercesSchemaFullChecking, false);
}

// The regular end of a scan is an exception too. The results so far are kept, no matter how the scan ended.
GpxScanEnd GpxTarvikExtParser::EndOf(const std::function<void()>& feed) {
    try {
        Configure();
        feed();
        if (!isOpen_)
            return kGpxScanMissing;
        return isIllFormed_ ? kGpxScanIllFormed : kGpxScanComplete;
    } catch (const reader::ReadAborted&) {
        return kGpxScanRefused;
    } catch (const RefusedAddress&) {
        return kGpxScanRefused;
    } catch (const xercesc::OutOfMemoryException&) {
        return kGpxScanFailed;
    } catch (const xercesc::XMLException& exception) {
        NoteError(head_->Head(), 0, 0, exception.getMessage());
        return isOpen_ ? kGpxScanIllFormed : kGpxScanMissing;
    } catch (...) {
        return hasContent_ ? kGpxScanContent : kGpxScanFailed;
    }
}

void GpxTarvikExtParser::Reset() {
    reader_.reset();
    head_->Reset();
    stats_.reset();
    annotateMetaData_.reset();
    gisMetaData_.reset();
    documentTime_ = 0.0;
    isOpen_ = false;
    isIllFormed_ = false;
    hasContent_ = false;
}

void GpxTarvikExtParser::characters(const XMLCh* const chars, const XMLSize_t length) {
    head_->AddText(chars, length);
    buffer_.append(chars, static_cast<std::int32_t>(length));
    // A text that ICU cannot hold would be lost without a trace.
    if (buffer_.isBogus())
        throw std::bad_alloc();
}

void GpxTarvikExtParser::ignorableWhitespace(const XMLCh* const chars, const XMLSize_t length) {
    characters(chars, length);
}

void GpxTarvikExtParser::startElement(const XMLCh* const uri, const XMLCh* const localname,
                                      const XMLCh* const, const xercesc::Attributes& attributes) {
    buffer_.remove();
    head_->StartElement(uri, localname, attributes);
    if (IsGpxNamespace(AliasOfNamespace(uri)) && EndsHead(Alias(localname)))
        FinishScan();
}

void GpxTarvikExtParser::endElement(const XMLCh* const uri, const XMLCh* const localname,
                                    const XMLCh* const) {
    head_->EndElement();
    const icu::UnicodeString space = AliasOfNamespace(uri);
    const icu::UnicodeString name = Alias(localname);
    if (EqualsIgnoringCase(space, text::kTarvikNamespace)) {
        buffer_.trim();
        TakeVendorElement(name);
    } else if (IsGpxNamespace(space)) {
        if (EqualsIgnoringCase(name, gpx::kTime))
            TakeTime();
        else if (EndsHead(name))
            FinishScan();
    }
}

// Only an exception stops the XML parser in the middle of a file.
void GpxTarvikExtParser::FinishScan() {
    hasContent_ = true;
    throw std::runtime_error("Finished Parsing");
}

void GpxTarvikExtParser::TakeVendorElement(const icu::UnicodeString& name) {
    const auto text = [this] { return buffer_; };
    const auto integer = [this] { return static_cast<std::int32_t>(StoredNumber()); };
    const auto total = [this] { return std::bit_cast<double>(StoredNumber()); };
    static_cast<void>(Take(name, kLayerTexts, gisMetaData_, text) ||
                      Take(name, kAnnotateTexts, annotateMetaData_, text) ||
                      Take(name, kLayerNumbers, gisMetaData_, integer) ||
                      Take(name, kCounts, stats_, integer) || Take(name, kTotals, stats_, total));
}

void GpxTarvikExtParser::TakeTime() {
    buffer_.trim();
    ParseGpxTime(UnicodeStrUtils::UnicodeStringToStlString(buffer_), documentTime_);
}

std::int64_t GpxTarvikExtParser::StoredNumber() {
    if (!numberFormat_)
        numberFormat_ = std::make_unique<text::UsNumberFormat>();
    return numberFormat_->ParseStored(buffer_);
}

void GpxTarvikExtParser::endDocument() {}

void GpxTarvikExtParser::processingInstruction(const XMLCh* const, const XMLCh* const) {}

void GpxTarvikExtParser::setDocumentLocator(const xercesc::Locator* const) {}

void GpxTarvikExtParser::startDocument() {
    isOpen_ = true;
}

void GpxTarvikExtParser::startPrefixMapping(const XMLCh* const, const XMLCh* const) {}

void GpxTarvikExtParser::endPrefixMapping(const XMLCh* const) {}

void GpxTarvikExtParser::skippedEntity(const XMLCh* const) {}

} // namespace vexaTransferLib
