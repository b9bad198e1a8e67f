// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReading.h>

#include <vexaTransferLib/complete/CompleteContext.h>
#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/complete/SourceParser.h>
#include <vexaTransferLib/model/ElementScan.h>
#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/reader/LimitedParser.h>
#include <vexaTransferLib/reader/ObservedErrorHandler.h>
#include <vexaTransferLib/reader/PlaceProgress.h>
#include <vexaTransferLib/reader/ReadErrors.h>
#include <vexaTransferLib/reader/SourceMaker.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <common/dbc.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <cstdint>
#include <memory>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

std::unique_ptr<SourceParser> MakeParser(xercesc::ErrorHandler& errors, const reader::InputName& name,
                                         const reader::ReadSettings& settings) {
    if (!settings.limits)
        return std::make_unique<SourceParser>(errors, settings.observer);
    return std::make_unique<reader::LimitedParser<SourceParser>>(reader::InputLimiter(*settings.limits, name),
                                                                 errors, settings.observer);
}

} // namespace

void CompleteReading::ReadSource() {
    settings_.receiver.resetErrors();
    if (input_.IsRepeatable() && ReadPlainSource())
        return;
    try {
        ReadEventSource();
    } catch (...) {
        reader::RethrowParserException(input_.Name(), hasDocument_);
    }
}

// What goes wrong here goes wrong for the XML parser too, which reports it.
bool CompleteReading::ReadPlainSource() {
    // A host can have the XML parser take more characters for line ends.
    if (xercesc::XMLPlatformUtils::isNELRecognized())
        return false;
    try {
        const std::unique_ptr<xercesc::BinInputStream> stream = input_.OpenBytes();
        if (!stream)
            return false;
        SourceBytes bytes = reader::ReadAll(*stream, input_.ExpectedSize());
        source_ = reader::MakeSource(bytes, settings_.limits, longElements_);
    } catch (const xercesc::XMLException&) {
        return false;
    }
    isPlain_ = source_ != nullptr;
    return isPlain_;
}

void CompleteReading::ReadEventSource() {
    reader::ObservedErrorHandler errors(settings_.receiver, settings_.observer);
    const std::unique_ptr<SourceParser> parser = MakeParser(errors, input_.Name(), settings_);
    try {
        input_.Feed(*parser);
    } catch (...) {
        hasDocument_ = parser->HasDocument();
        throw;
    }
    hasDocument_ = parser->HasDocument();
    source_ = parser->TakeSource();
}

void CompleteReading::ReadInto(GpxDocument& document) {
    if (!HasDocument())
        reader::FailWithoutDocument(input_.Name());
    RequireGpxRoot();
    GpxDocument read;
    reader::PlaceProgress places(input_.GetProgress());
    CompleteContext context(context_, source_, isPlain_ ? &places : nullptr, longElements_);
    const std::uint64_t size = source_->Text().size();
    if (isPlain_)
        places.Begin(size);
    ReadDocument(context, read);
    if (isPlain_) {
        places.Reach(size, size);
        input_.EndProgress();
    }
    document = std::move(read);
}

// Says what the other ways of reading say.
void CompleteReading::RequireGpxRoot() const {
    const char* const root = source_ != nullptr ? source_->At(source_->RootPlace()) : nullptr;
    if (root != nullptr && LocalNameOf(ScanTag(root).name) == gpx::kGpx)
        return;
    try {
        throw dbc::postcondition_error("The GPX document element was not found.");
    } catch (...) {
        reader::RethrowContentError(input_.Name(), false, RootLocation());
    }
}

text::SourceLocation CompleteReading::RootLocation() const {
    if (source_ == nullptr)
        return {};
    const ScannedTag root = ScanTag(source_->At(source_->RootPlace()));
    return source_->Locate(source_->PlaceOf(root.end));
}

} // namespace vexaTransferLib::complete
