// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>

#include "support/SampleDocument.h"

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include <filesystem>
#include <string>

using namespace vexaTransferLib;
using testing_support::FullDocument;

namespace {

class Complaints : public xercesc::HandlerBase {
public:
    void error(const xercesc::SAXParseException& exception) override { Note(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override { Note(exception); }

    std::string text;

private:
    void Note(const xercesc::SAXParseException& exception) {
        char* message = xercesc::XMLString::transcode(exception.getMessage());
        text += std::to_string(exception.getLineNumber()) + ": " + message + "\n";
        xercesc::XMLString::release(&message);
    }
};

// The errors that a validation with the published schema finds in the text; nothing is fetched.
std::string Validate(const std::string& schema, const std::string& text) {
    Complaints complaints;
    xercesc::XercesDOMParser parser;
    parser.setErrorHandler(&complaints);
    parser.setDoNamespaces(true);
    parser.setDoSchema(true);
    if (parser.loadGrammar(schema.c_str(), xercesc::Grammar::SchemaGrammarType, true) == nullptr)
        return "the schema cannot be loaded";
    parser.useCachedGrammarInParse(true);
    parser.setLoadSchema(false);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Always);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                            "written");
    parser.parse(source);
    return complaints.text;
}

} // namespace

TEST(WrittenSchemaTest, Gpx11IsValid) {
    const std::string schema = std::string(VEXA_SHARED) + "/schemas/gpx11.xsd";
    if (!std::filesystem::exists(schema))
        GTEST_SKIP() << "the published GPX 1.1 schema is not here: " << schema;
    std::string text;
    FullDocument().WriteToString(GpxVersion(1, 1), u"App", u"http://x/", text);
    EXPECT_EQ(Validate(schema, text), "");

    const std::string latitude = "lat=\"45.500000000\"";
    text.replace(text.find(latitude), latitude.size(), "lat=\"91\"");
    EXPECT_NE(Validate(schema, text), "") << "the validation sees nothing";
}
