// SPDX-License-Identifier: MIT
#include <vexagpx/schema/SchemaChecker.h>

#include <vexagpx/schema/SchemaErrors.h>
#include <vexagpx/schema/SchemaTexts.h>

#include <unicode/unistr.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>
#include <xercesc/validators/schema/SchemaValidator.hpp>

#include <set>
#include <stdexcept>
#include <utility>

namespace vexagpx {

namespace {

/// Tells which child of an element is the first one that the schema does not allow. The parser itself only says so at
/// the end of the element, without the child's place. The parser also asks it about elements in no namespace, which no
/// schema is for, with declarations that are not those of a schema.
class Validator final : public xercesc::SchemaValidator {
public:
    explicit Validator(SchemaErrors& errors) : errors_(errors) {}

    void validateElement(const xercesc::XMLElementDecl* element) override {
        errors_.StartsNext();
        if (IsOfSchema(*element))
            SchemaValidator::validateElement(element);
    }

    bool checkContent(xercesc::XMLElementDecl* const element, xercesc::QName** const children,
                      const XMLSize_t count, XMLSize_t* const failed) override {
        if (!IsOfSchema(*element))
            return true;
        errors_.BeginContent();
        const bool isValid = SchemaValidator::checkContent(element, children, count, failed);
        errors_.EndContent(isValid ? count : *failed);
        return isValid;
    }

    void validateAttrValue(const xercesc::XMLAttDef* attribute, const XMLCh* value, bool preValidation,
                           const xercesc::XMLElementDecl* element) override {
        if (IsOfSchema(*element))
            SchemaValidator::validateAttrValue(attribute, value, preValidation, element);
    }

private:
    static bool IsOfSchema(const xercesc::XMLElementDecl& element) {
        return element.getObjectType() == xercesc::XMLElementDecl::Schema;
    }

    SchemaErrors& errors_;
};

} // namespace

class SchemaChecker::Parser {
public:
    Parser();

    void Parse(const xercesc::InputSource& source) { reader_->parse(source); }

    SchemaErrors errors;

private:
    void LoadSchemas();

    xercesc::XMLGrammarPoolImpl schemas_;
    Validator validator_; ///< which the reader does not own
    std::unique_ptr<xercesc::SAX2XMLReader> reader_;
};

SchemaChecker::Parser::Parser()
    : validator_(errors), reader_(xercesc::XMLReaderFactory::createXMLReader(
                              xercesc::XMLPlatformUtils::fgMemoryManager, &schemas_)) {
    reader_->setErrorHandler(&errors);
    LoadSchemas();
    reader_->setContentHandler(&errors);
    reader_->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, true);
    reader_->setFeature(xercesc::XMLUni::fgXercesDynamic, false);
    reader_->setFeature(xercesc::XMLUni::fgXercesSchema, true);
    reader_->setFeature(xercesc::XMLUni::fgXercesUseCachedGrammarInParse, true);
    // Neither the schemas that the document names, nor its document type.
    reader_->setFeature(xercesc::XMLUni::fgXercesLoadSchema, false);
    reader_->setFeature(xercesc::XMLUni::fgXercesSkipDTDValidation, true);
    reader_->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader_->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader_->setValidator(&validator_);
}

void SchemaChecker::Parser::LoadSchemas() {
    std::set<std::string> namespaces;
    for (const std::string_view text : kSchemaTexts) {
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                                "schema");
        xercesc::Grammar* const grammar =
            reader_->loadGrammar(source, xercesc::Grammar::SchemaGrammarType, true);
        if (grammar == nullptr)
            throw std::logic_error("A schema cannot be read.");
        std::string nameSpace;
        namespaces.insert(icu::UnicodeString(grammar->getTargetNamespace()).toUTF8String(nameSpace));
    }
    errors.SetNamespaces(std::move(namespaces));
    schemas_.lockPool();
}

SchemaChecker::SchemaChecker() : parser_(std::make_unique<Parser>()) {}

SchemaChecker::~SchemaChecker() = default;

void SchemaChecker::Check(const std::string& path, const CallbackInputSource::Read& read,
                          SchemaReport& report) {
    const CallbackInputSource source(path, read);
    parser_->errors.Begin(report);
    try {
        parser_->Parse(source);
    } catch (const xercesc::XMLException&) {
        // What is not well-formed has been reported by reading.
    } catch (const xercesc::SAXException&) {
    }
    source.RethrowFailure();
}

} // namespace vexagpx
