// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <functional>
#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'/>");
// An encoding that contradicts the bytes is a warning.
const std::string kWarningFile = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + kGoodFile;
// An undeclared element is a validity error, as soon as the file has declarations at all.
const std::string kInvalidFile = "<!DOCTYPE gpx [<!ELEMENT other EMPTY>]>" + kGoodFile;

// A host's parser, which counts the calls of its virtual functions and passes them to the base class if a
// test asks for that.
class CountingParser : public GpxParser {
public:
    void warning(const xercesc::SAXParseException& exception) override {
        ++warnings;
        GpxParser::warning(exception);
    }
    void error(const xercesc::SAXParseException& exception) override {
        ++errors;
        line = exception.getLineNumber();
        if (callBase)
            GpxParser::error(exception);
    }
    void fatalError(const xercesc::SAXParseException& exception) override {
        ++fatalErrors;
        line = exception.getLineNumber();
        if (whenFatal)
            whenFatal();
        if (callBase)
            GpxParser::fatalError(exception);
    }
    void resetErrors() override {
        ++resets;
        if (callBase)
            GpxParser::resetErrors();
    }

    bool callBase = true;
    std::function<void()> whenFatal;
    int warnings = 0;
    int errors = 0;
    int fatalErrors = 0;
    int resets = 0;
    XMLFileLoc line = 0;
};

void ParseInto(GpxParser& parser, const GpxFile& file) {
    GpxDocument document;
    parser.Parse(file.Path(), document);
}

TEST(GpxParserErrorsTest, AFileWithWarningsOnlyIsAccepted) {
    CountingParser parser;
    const GpxFile file(kWarningFile);
    GpxDocument document;
    parser.Parse(file.Path(), document);
    EXPECT_GE(parser.warnings, 1);
    EXPECT_EQ(parser.errors + parser.fatalErrors, 0);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
}

TEST(GpxParserErrorsTest, AnErrorMakesTheParseFailAtItsEnd) {
    CountingParser parser;
    const GpxFile file(kInvalidFile);
    EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error, ParseErrorsMessage(file.NarrowPath()),
                   "");
    EXPECT_GE(parser.errors, 2) << "the whole file was looked at";
    EXPECT_EQ(parser.fatalErrors, 0);
}

TEST(GpxParserErrorsTest, AFatalErrorMakesTheParseFail) {
    CountingParser parser;
    const GpxFile file("<gpx version='1.1'>\n\n</oops>");
    EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error, ParseErrorsMessage(file.NarrowPath()),
                   "");
    EXPECT_EQ(parser.fatalErrors, 1);
    EXPECT_EQ(parser.line, 3u);
}

TEST(GpxParserErrorsTest, AHostThatKeepsErrorsFromTheBaseAcceptsAnInvalidFile) {
    CountingParser parser;
    parser.callBase = false;
    const GpxFile file(kInvalidFile);
    GpxDocument document;
    parser.Parse(file.Path(), document);
    EXPECT_GE(parser.errors, 2);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
}

TEST(GpxParserErrorsTest, WithoutADocumentTheFileCannotBeInterpreted) {
    CountingParser parser;
    parser.callBase = false;
    const TemporaryFolder folder;
    const std::string path = (folder / "missing.gpx").string();
    GpxDocument document;
    document.AddTrack(GpxTrack());
    EXPECT_FAILURE(
        parser.Parse(icu::UnicodeString::fromUTF8(path), document), dbc::postcondition_error,
        "Unable to interpret the GPX file: " + path + ". The document object could not be obtained.", "");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(NameOf(document), "missing");
}

// Reads the content before the end of the incomplete file, from events and from the DOM.
TEST(GpxParserErrorsTest, AHostThatKeepsErrorsFromTheBaseGetsWhatCameBefore) {
    for (const std::string end :
         {"", "<trkpt lat='3' lon='4'><ele>5", "</trkseg><x><y>", "</trkseg><name>n"}) {
        SCOPED_TRACE(end);
        const std::string whole = Gpx11("<wpt lat='1' lon='2'/><trk><trkseg><trkpt lat='1' lon='2'/>");
        const GpxFile file(whole.substr(0, whole.rfind("</gpx>")) + end);
        CountingParser parser;
        parser.callBase = false;
        GpxDocument byParse;
        parser.Parse(file.Path(), byParse);
        const auto tree = parser.GetParser(file.Path());
        GpxDocument byDom;
        GpxModelAccess::SetName(byDom, u"walk");
        parser.ParseGpxNode(tree->getDocument()->getDocumentElement(), byDom);
        EXPECT_TRUE(IsSameModel(byDom, byParse));
        EXPECT_EQ(CountsOf(byParse), "1 waypoints, 0 routes, 1 tracks");
    }
}

TEST(GpxParserErrorsTest, WithoutARootThereIsNoDocumentElement) {
    CountingParser parser;
    parser.callBase = false;
    const GpxFile file("<!-- no root -->");
    EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error,
                   "The GPX document element was not found.", "");
    EXPECT_EQ(parser.fatalErrors, 1);
}

// A handler's exception takes the same path as one that Xerces throws itself.
TEST(GpxParserErrorsTest, AnXmlExceptionIsReportedWithItsMessage) {
    using xercesc::RuntimeException;
    const RuntimeException thrown("test", 1, xercesc::XMLExcepts::Pool_ElemAlreadyExists,
                                  xercesc::XMLPlatformUtils::fgMemoryManager);
    const std::string message = Utf8(icu::UnicodeString(thrown.getMessage()));
    ASSERT_FALSE(message.empty());
    CountingParser parser;
    parser.whenFatal = [&] { throw thrown; };
    const GpxFile file("<gpx version='1.1'></oops>");
    EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error,
                   "Error parsing the GPX file: " + file.NarrowPath() + ". Error message: " + message, "");
}

TEST(GpxParserErrorsTest, ADomExceptionIsReportedWithItsCodeAsASignedNumber) {
    for (const short code : {short{0}, short{12}, short{32767}, short{-5}}) {
        CountingParser parser;
        parser.whenFatal = [&] {
            throw xercesc::DOMException(code, 0, xercesc::XMLPlatformUtils::fgMemoryManager);
        };
        const GpxFile file("<gpx version='1.1'></oops>");
        EXPECT_FAILURE(
            ParseInto(parser, file), dbc::postcondition_error,
            "Error parsing GPX file: " + file.NarrowPath() + ". DOM error code: " + std::to_string(code), "");
    }
}

TEST(GpxParserErrorsTest, AnUnknownXmlVersionIsADomError) {
    const GpxFile file("<?xml version=\"1.2\"?>" + kGoodFile);
    GpxParser parser;
    EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error,
                   "Error parsing GPX file: " + file.NarrowPath() + ". DOM error code: 9", "");
}

TEST(GpxParserErrorsTest, OtherExceptionsOfAHandlerPassThrough) {
    CountingParser parser;
    parser.whenFatal = [] { throw std::runtime_error("the host's own"); };
    const GpxFile file("<gpx version='1.1'></oops>");
    EXPECT_FAILURE(ParseInto(parser, file), std::runtime_error, "the host's own", "");
    const GpxFile good(kGoodFile);
    GpxDocument document;
    parser.Parse(good.Path(), document);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
}

xercesc::SAXParseException AnyException() {
    return xercesc::SAXParseException(u"message", u"public", u"system", 1, 2,
                                      xercesc::XMLPlatformUtils::fgMemoryManager);
}

// Does not reset the errors, so that a flag from before is still set in the next parse.
class RememberingParser : public GpxParser {
public:
    void resetErrors() override { ++resets; }
    int resets = 0;
};

TEST(GpxParserErrorsTest, ErrorAndFatalErrorSetTheFlagThatResetErrorsClears) {
    struct Row {
        const char* slot;
        void (*call)(GpxParser&);
        bool fails;
    };
    const Row kRows[] = {
        {"none", [](GpxParser&) {}, false},
        {"warning", [](GpxParser& parser) { parser.warning(AnyException()); }, false},
        {"error", [](GpxParser& parser) { parser.error(AnyException()); }, true},
        {"fatalError", [](GpxParser& parser) { parser.fatalError(AnyException()); }, true},
        {"error, then the base's resetErrors",
         [](GpxParser& parser) {
             parser.error(AnyException());
             parser.GpxParser::resetErrors();
         },
         false},
        {"error, then warning",
         [](GpxParser& parser) {
             parser.error(AnyException());
             parser.warning(AnyException());
         },
         true},
    };
    const GpxFile file(kGoodFile);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.slot);
        RememberingParser parser;
        row.call(parser);
        if (row.fails)
            EXPECT_FAILURE(ParseInto(parser, file), dbc::postcondition_error,
                           ParseErrorsMessage(file.NarrowPath()), "");
        else
            EXPECT_NO_THROW(ParseInto(parser, file));
    }
}

TEST(GpxParserErrorsTest, GetParserResetsThroughTheVirtualSlot) {
    const GpxFile file(kGoodFile);
    RememberingParser parser;
    parser.GetParser(file.Path());
    EXPECT_GE(parser.resets, 1);

    GpxParser plain;
    plain.error(AnyException());
    EXPECT_NO_THROW(ParseInto(plain, file));
}

TEST(GpxParserErrorsTest, AnEmptyPathIsRefusedBeforeTheReset) {
    RememberingParser parser;
    CaptureStandardError([&] { EXPECT_THROW(parser.GetParser(u""), dbc::precondition_error); });
    EXPECT_EQ(parser.resets, 0);
}

} // namespace
} // namespace vexaTransferLib
