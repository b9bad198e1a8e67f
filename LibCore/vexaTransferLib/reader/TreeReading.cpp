// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TreeReading.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/DocumentReader.h>
#include <vexaTransferLib/reader/DomNode.h>
#include <vexaTransferLib/reader/LimitedParser.h>
#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

std::unique_ptr<xercesc::XercesDOMParser> MakeParser(const InputName& name, const ReadSettings& settings) {
    if (settings.limits)
        return std::make_unique<LimitedParser<xercesc::XercesDOMParser>>(
            InputLimiter(*settings.limits, name));
    return std::make_unique<xercesc::XercesDOMParser>(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager,
                                                      nullptr);
}

} // namespace

// All other settings keep the XML parser's defaults; it reads external entities, for example.
TreeReading::TreeReading(XmlInput& input, const ReadSettings& settings)
    : input_(input), errors_(settings.receiver, settings.observer),
      parser_(MakeParser(input.Name(), settings)) {
    parser_->setValidationScheme(xercesc::XercesDOMParser::Val_Auto);
    parser_->setDoNamespaces(true);
    parser_->setDoSchema(false);
    parser_->setValidationSchemaFullChecking(false);
    parser_->setErrorHandler(&errors_);
}

void TreeReading::Parse() {
    try {
        input_.Feed(*parser_);
    } catch (...) {
        RethrowParserException(input_.Name(), HasDocument());
    }
}

std::unique_ptr<xercesc::XercesDOMParser> TreeReading::TakeParser(xercesc::ErrorHandler& receiver) {
    parser_->setErrorHandler(&receiver);
    return std::move(parser_);
}

void TreeReading::ReadInto(ReadContext& context, GpxDocument& document) const {
    GpxDocument read;
    GpxModelAccess::SetName(read, DefaultDocumentName(input_.Name()));
    try {
        ReadTree(context, read);
    } catch (const ReadAborted&) {
        throw;
    } catch (...) {
        document = std::move(read);
        throw;
    }
    document = std::move(read);
}

void TreeReading::ReadTree(ReadContext& context, GpxDocument& document) const {
    if (!HasDocument())
        FailWithoutDocument(input_.Name());
    const NodeView root = ViewOf(parser_->getDocument()->getDocumentElement());
    bool isGpx = false;
    try {
        RequireGpxRoot(root);
        isGpx = true;
        ReadDocument(context, root, document);
    } catch (...) {
        RethrowContentError(input_.Name(), isGpx, {});
    }
}

} // namespace vexaTransferLib::reader
