// SPDX-License-Identifier: MIT
#include <vexagpx/input/XmlCheck.h>

#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/InputRules.h>

#include <vexaTransferLib/GpxInputLimits.h>

#include <unicode/unistr.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace vexagpx {

namespace {

class FirstErrorHandler : public xercesc::DefaultHandler {
public:
    std::optional<std::string> text;

    void error(const xercesc::SAXParseException& exception) override { Note(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override { Note(exception); }
    void resetErrors() override {}

protected:
    virtual void Note(const xercesc::SAXParseException& exception) {
        if (!text)
            text = Describe(exception);
    }
};

/// Ends the parsing where a limit of untrusted files is exceeded.
class LimitedHandler final : public FirstErrorHandler {
public:
    struct LimitReached {};

    void startElement(const XMLCh*, const XMLCh*, const XMLCh*, const xercesc::Attributes&) override {
        if (++depth_ > limits_.elementDepth)
            Stop("its elements are nested deeper than " + std::to_string(limits_.elementDepth) +
                 " (limit of element depth).");
    }
    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override { --depth_; }
    void startPrefixMapping(const XMLCh*, const XMLCh*) override {
        if (++namespaces_ > limits_.namespaces)
            Stop("more than " + std::to_string(limits_.namespaces) +
                 " namespaces are declared (limit of namespaces).");
    }
    void endPrefixMapping(const XMLCh*) override { --namespaces_; }

private:
    [[noreturn]] void Stop(const std::string& reason) {
        if (!text)
            text = reason + kTrustAdvice;
        throw LimitReached();
    }

    vexaTransferLib::GpxInputLimits limits_;
    std::uint64_t depth_ = 0;
    std::uint64_t namespaces_ = 0;
};

/// Also keeps the path of the element with the first error.
class ErrorPathHandler final : public FirstErrorHandler {
public:
    ErrorPathHandler() : levels_(1) {}

    std::string path;

    void startElement(const XMLCh*, const XMLCh*, const XMLCh* qualifiedName,
                      const xercesc::Attributes&) override {
        const icu::UnicodeString name(qualifiedName);
        const int number = ++levels_.back().counts[name];
        levels_.push_back({name, number, {}});
    }
    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override { levels_.pop_back(); }

private:
    struct Level {
        icu::UnicodeString name;
        int number = 0;
        std::map<icu::UnicodeString, int> counts;
    };

    void Note(const xercesc::SAXParseException& exception) override {
        FirstErrorHandler::Note(exception);
        if (!path.empty())
            return;
        for (std::size_t i = 1; i < levels_.size(); ++i) {
            path += '/';
            levels_[i].name.toUTF8String(path);
            if (levels_[i].number > 1)
                path += '[' + std::to_string(levels_[i].number) + ']';
        }
    }

    std::vector<Level> levels_;
};

void Parse(std::string_view xml, FirstErrorHandler& handler) {
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xml.data()), xml.size(), "text");
    source.setCopyBufToStream(false);
    const std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xercesc::XMLUni::fgXercesDynamic, false);
    reader->setFeature(xercesc::XMLUni::fgXercesSchema, false);
    reader->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader->setContentHandler(&handler);
    reader->setErrorHandler(&handler);
    try {
        reader->parse(source);
    } catch (const xercesc::XMLException& exception) {
        if (!handler.text)
            icu::UnicodeString(exception.getMessage()).toUTF8String(handler.text.emplace());
    }
}

} // namespace

std::optional<std::string> FindXmlError(std::string_view xml, bool isTrusted) {
    if (isTrusted) {
        FirstErrorHandler handler;
        Parse(xml, handler);
        return handler.text;
    }
    LimitedHandler handler;
    try {
        Parse(xml, handler);
    } catch (const LimitedHandler::LimitReached&) {
    }
    return handler.text;
}

std::string XmlErrorPath(std::string_view xml) {
    ErrorPathHandler handler;
    Parse(xml, handler);
    return handler.path;
}

} // namespace vexagpx
