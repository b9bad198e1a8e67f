// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxError.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"

#include <vexaTransferLib/GpxParser.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using Kind = GpxReadErrorKind;

static_assert(std::is_nothrow_copy_constructible_v<GpxReadError>);
static_assert(std::is_nothrow_copy_assignable_v<GpxReadError>);
static_assert(std::is_nothrow_copy_constructible_v<GpxReadValueError>);
static_assert(std::is_nothrow_copy_constructible_v<GpxWriteError>);
static_assert(std::is_nothrow_copy_assignable_v<GpxWriteError>);
static_assert(std::is_nothrow_copy_assignable_v<GpxReadValueError>);

/// The error that a failed reading has thrown.
struct Caught {
    explicit Caught(const std::function<void(GpxParser&, GpxDocument&)>& read) {
        GpxParser parser;
        GpxDocument document;
        CaptureStandardError([&] {
            try {
                read(parser, document);
            } catch (const std::exception& exception) {
                Note(exception);
            }
        });
    }

    void Note(const std::exception& exception) {
        type = &typeid(exception);
        message = exception.what();
        if (const GpxReadErrorDetails* const found = FindReadErrorDetails(exception))
            details = *found;
    }

    const std::type_info* type = &typeid(void);
    std::string message;
    GpxReadErrorDetails details;
};

Caught CaughtOf(const GpxFile& file) {
    return Caught([&](GpxParser& parser, GpxDocument& document) { parser.Parse(file.Path(), document); });
}

Caught CaughtOfUntrusted(const GpxFile& file, const GpxInputLimits& limits = {}) {
    return Caught([&](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted(limits);
        parser.Parse(file.Path(), document);
    });
}

/// A line break before the text, which ends at the given column of the second line.
std::string OnSecondLine(const std::string& text) {
    return "\n" + text;
}

template <class Error>
void Expect(const Caught& caught, Kind kind, const std::string& file, std::uint64_t line = 0,
            std::uint64_t column = 0) {
    EXPECT_STREQ(caught.type->name(), typeid(Error).name()) << caught.message;
    EXPECT_EQ(caught.details.kind, kind) << caught.message;
    EXPECT_EQ(caught.details.file, file);
    EXPECT_EQ(std::tuple(caught.details.line, caught.details.column), std::tuple(line, column));
    if (kind == Kind::kNotGpx || kind == Kind::kInvalidContent) {
        EXPECT_FALSE(caught.details.namesFile);
        EXPECT_EQ(caught.details.MessageFor("other"), caught.message);
    }
}

/// The message names the file, and can name it otherwise.
void ExpectNamed(const Caught& caught, const std::string& start, const std::string& end = {}) {
    EXPECT_TRUE(caught.details.namesFile);
    EXPECT_EQ(caught.message, start + caught.details.file + end);
    EXPECT_EQ(caught.details.MessageFor(caught.details.file), caught.message);
    EXPECT_EQ(caught.details.MessageFor("other"), start + "other" + end);
}

TEST(GpxErrorTest, AMissingFileCannotBeOpened) {
    const TemporaryFolder folder;
    const std::string path = (folder / "missing.gpx").string();
    const std::function<void(GpxParser&, GpxDocument&)> kReadings[] = {
        [&](GpxParser& parser, GpxDocument& document) {
            parser.Parse(icu::UnicodeString::fromUTF8(path), document);
        },
        [&](GpxParser& parser, GpxDocument& document) { parser.ParseFile(path, document); },
        [&](GpxParser& parser, GpxDocument&) { parser.GetParser(icu::UnicodeString::fromUTF8(path)); },
        [&](GpxParser& parser, GpxDocument& document) {
            parser.SetUntrusted();
            parser.ParseFile(path, document);
        }};
    for (const auto& read : kReadings) {
        const Caught caught(read);
        Expect<GpxReadError>(caught, Kind::kNotOpened, path);
        EXPECT_NE(caught.details.parserMessage.find("missing.gpx"), std::string::npos)
            << caught.details.parserMessage;
        ExpectNamed(caught, "One or more errors encountered while parsing the GPX file: ");
    }
}

TEST(GpxErrorTest, AFolderCannotBeOpened) {
    const TemporaryFolder folder;
    const std::string path = (folder / "").string();
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    const Caught caught([&](GpxParser& parser, GpxDocument& document) { parser.ParseFile(path, document); });
    Expect<GpxReadError>(caught, Kind::kNotOpened, path);
    EXPECT_NE(caught.details.parserMessage, "");
}

TEST(GpxErrorTest, AnIllFormedFileHasThePlaceOfItsFirstError) {
    const std::string text = "<gpx version='1.1'>\n\n</oops></gpx>";
    const GpxFile file(text);
    const Caught caught = CaughtOf(file);
    Expect<GpxReadError>(caught, Kind::kIllFormed, file.NarrowPath(), 3, 3);
    EXPECT_EQ(caught.details.parserMessage, "expected end of tag 'gpx'");
    const Caught ofTree([&](GpxParser& parser, GpxDocument&) { parser.GetParser(file.Path()); });
    Expect<GpxReadError>(ofTree, Kind::kIllFormed, file.NarrowPath(), 3, 3);
    const Caught ofBytes(
        [&](GpxParser& parser, GpxDocument& document) { parser.Parse(text, u"Grüße", document); });
    Expect<GpxReadError>(ofBytes, Kind::kIllFormed,
                         "Gr\xC3\xBC\xC3\x9F"
                         "e",
                         3, 3);
}

TEST(GpxErrorTest, TheFirstOfManyErrorsCounts) {
    const GpxFile file("<!DOCTYPE gpx [<!ELEMENT other EMPTY>]>\n" + Gpx11("<a/>\n<b/>"));
    const Caught caught = CaughtOf(file);
    EXPECT_EQ(caught.details.kind, Kind::kIllFormed);
    EXPECT_EQ(caught.details.line, 2U);
    EXPECT_NE(caught.details.parserMessage.find("'gpx'"), std::string::npos) << caught.details.parserMessage;
}

TEST(GpxErrorTest, EachReadingStartsWithoutErrors) {
    const GpxFile bad("<gpx>\n\n</oops>");
    const GpxFile other("<gpx></oops>");
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        EXPECT_THROW(parser.Parse(bad.Path(), document), GpxReadError);
        parser.Parse(other.Path(), document);
    });
    Expect<GpxReadError>(caught, Kind::kIllFormed, other.NarrowPath(), 1, 8);
}

TEST(GpxErrorTest, AnUnknownXmlVersionIsIllFormed) {
    const GpxFile file("<?xml version=\"1.2\"?>" + Gpx11(""));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadError>(caught, Kind::kIllFormed, file.NarrowPath());
    ExpectNamed(caught, "Error parsing GPX file: ", ". DOM error code: 9");
}

TEST(GpxErrorTest, AnUntrustedFileIsRefused) {
    const GpxFile file("<!DOCTYPE gpx>" + Gpx11(""));
    const Caught caught = CaughtOfUntrusted(file);
    Expect<GpxReadError>(caught, Kind::kUntrusted, file.NarrowPath());
    ExpectNamed(caught, "The untrusted GPX file was refused: ", ". It has a document type declaration.");
    const GpxFile encoded("<?xml version='1.0' encoding='UTF-7'?>" + Gpx11(""));
    Expect<GpxReadError>(CaughtOfUntrusted(encoded), Kind::kUntrusted, encoded.NarrowPath());
    const std::string address = "http://localhost:1/walk.gpx";
    const Caught ofAddress([&](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted();
        parser.Parse(icu::UnicodeString::fromUTF8(address), document);
    });
    Expect<GpxReadError>(ofAddress, Kind::kUntrusted, address);
    ExpectNamed(ofAddress, "An untrusted GPX file is not read from an address: ");
    EXPECT_EQ(ofAddress.details.parserMessage, "");
}

TEST(GpxErrorTest, AnUntrustedFileHasLimits) {
    struct Row {
        const char* limit;
        std::uint64_t GpxInputLimits::*member;
        std::uint64_t value;
    };
    const Row kRows[] = {{"parser", &GpxInputLimits::elementDepth, 1},
                         {"bytes", &GpxInputLimits::tagBytes, 10},
                         {"model", &GpxInputLimits::points, 0},
                         {"model", &GpxInputLimits::objects, 0}};
    const GpxFile file(Gpx11("<wpt lat='1' lon='2'/><trk/>"));
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.limit);
        GpxInputLimits limits;
        limits.*row.member = row.value;
        Expect<GpxReadError>(CaughtOfUntrusted(file, limits), Kind::kOverLimit, file.NarrowPath());
    }
}

TEST(GpxErrorTest, AnObserverCancels) {
    class Impatient : public GpxReadObserver {
        bool Progress(std::uint64_t, std::uint64_t) override { return false; }
    };
    Impatient observer;
    const GpxFile file(Gpx11(""));
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document);
    });
    Expect<GpxReadError>(caught, Kind::kCancelled, file.NarrowPath());
    ExpectNamed(caught, "The reading of the GPX file was cancelled: ");
}

TEST(GpxErrorTest, AnotherFilesErrorThatAnObserverThrowsIsUnchanged) {
    class Throwing : public GpxReadObserver {
        bool Progress(std::uint64_t, std::uint64_t) override {
            throw GpxReadError("of another file", {"other.gpx", 3, 4, Kind::kIllFormed, "text"});
        }
    };
    Throwing observer;
    const GpxFile file(Gpx11(""));
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document);
    });
    Expect<GpxReadError>(caught, Kind::kIllFormed, "other.gpx", 3, 4);
    EXPECT_EQ(caught.message, "of another file");
}

TEST(GpxErrorTest, AContractErrorThatAnObserverThrowsIsUnchanged) {
    class Throwing : public GpxReadObserver {
        void Skipped(const GpxSkippedElement&) override { throw dbc::postcondition_error("of the host"); }
    };
    Throwing observer;
    const GpxFile file(Gpx11("<oops/>"));
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document);
    });
    EXPECT_STREQ(caught.type->name(), typeid(dbc::postcondition_error).name());
}

TEST(GpxErrorTest, AnotherRootIsNoGpx) {
    const GpxFile file(OnSecondLine("<html/>"));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadError>(caught, Kind::kNotGpx, file.NarrowPath(), 2, 8);
    EXPECT_EQ(caught.message, "The GPX document element was not found.");
    EXPECT_EQ(caught.details.parserMessage, "");
}

TEST(GpxErrorTest, AFileWithoutAVersionHasInvalidContent) {
    const GpxFile file(OnSecondLine("<gpx></gpx>"));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadError>(caught, Kind::kInvalidContent, file.NarrowPath(), 2, 6);
    EXPECT_EQ(caught.message, "Unable to read the GPX version.");
}

TEST(GpxErrorTest, AnotherVersionIsAnInvalidValue) {
    const GpxFile file(OnSecondLine("<gpx version='2'/>"));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadValueError>(caught, Kind::kInvalidContent, file.NarrowPath(), 2, 19);
    EXPECT_EQ(caught.message, "Unsupported GPX version string.");
}

TEST(GpxErrorTest, AWaypointWithoutAPositionHasItsPlace) {
    const GpxFile file(Gpx11("<wpt lat='1' lon='2'/>\n<wpt lat='1'><name>n</name>\n</wpt>"));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadError>(caught, Kind::kInvalidContent, file.NarrowPath(), 2, 14);
    EXPECT_EQ(caught.message, "Unable to read a GPX point's longitude.");
}

TEST(GpxErrorTest, AWaypointBeyondThePoleHasItsPlace) {
    const GpxFile file(Gpx11("\n\n<wpt lat='91' lon='2'/>\n<wpt lat='92' lon='2'/>"));
    const Caught caught = CaughtOf(file);
    Expect<GpxReadValueError>(caught, Kind::kInvalidContent, file.NarrowPath(), 3, 24);
    EXPECT_EQ(caught.message, "The GPX point's latitude is invalid.");
}

TEST(GpxErrorTest, AnObservedFileHasTheSamePlaces) {
    GpxReadObserver observer;
    const GpxFile file(Gpx11("<trk><name>t</name></trk><x><y/></x>\n<wpt lat='91' lon='2'/>"));
    const GpxFile ordered(Gpx11("<wpt lat='1' lon='2'/>\n<wpt lat='91' lon='2'><name/></wpt><trk/>"));
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        parser.SetObserver(&observer);
        parser.Parse(file.Path(), document); // skips the waypoint
        parser.Parse(ordered.Path(), document);
    });
    Expect<GpxReadValueError>(caught, Kind::kInvalidContent, ordered.NarrowPath(), 2, 23);
}

TEST(GpxErrorTest, AFileThatNeedsADomHasNoPlaces) {
    const std::string declaration = "<!DOCTYPE gpx [<!ENTITY e 'text'>]>\n";
    const GpxReadErrorKind kKinds[] = {Kind::kInvalidContent, Kind::kNotGpx};
    const char* const kRoots[] = {"<gpx/>", "<html/>"};
    class Lenient : public GpxParser {
        void error(const xercesc::SAXParseException&) override {}
    };
    for (int i = 0; i < 2; ++i) {
        const GpxFile lenient(declaration + kRoots[i]);
        const Caught caught([&](GpxParser&, GpxDocument& document) {
            Lenient parser;
            parser.Parse(lenient.Path(), document);
        });
        Expect<GpxReadError>(caught, kKinds[i], lenient.NarrowPath());
    }
}

TEST(GpxErrorTest, AHostThatIgnoresErrorsLearnsThatNothingWasOpened) {
    class Lenient : public GpxParser {
        void fatalError(const xercesc::SAXParseException&) override {}
    };
    const Caught caught([&](GpxParser&, GpxDocument& document) {
        Lenient parser;
        parser.Parse(u"/nowhere/missing.gpx", document);
    });
    Expect<GpxReadError>(caught, Kind::kNotOpened, "/nowhere/missing.gpx");
}

TEST(GpxErrorTest, ANameThatIsNoUtf8IsShownWithReplacements) {
    const Caught caught([&](GpxParser& parser, GpxDocument& document) {
        parser.ParseFile("/nowhere/caf\xE9.gpx", document);
    });
    Expect<GpxReadError>(caught, Kind::kNotOpened, "/nowhere/caf\xEF\xBF\xBD.gpx");
}

TEST(GpxErrorTest, AnInvalidPathIsTheCallersError) {
    const Caught caught([&](GpxParser& parser, GpxDocument& document) { parser.Parse(u"", document); });
    EXPECT_STREQ(caught.type->name(), typeid(dbc::precondition_error).name());
}

GpxWriteErrorDetails DetailsOfWriting(const icu::UnicodeString& path) {
    GpxWriteErrorDetails details;
    CaptureStandardError([&] {
        try {
            GpxDocument().WriteToFile(GpxVersion::GetLatestVersion(), u"test", u"https://example.org/", path);
            ADD_FAILURE() << "was written";
        } catch (const GpxWriteError& error) {
            details = error.Details();
        }
    });
    return details;
}

TEST(GpxErrorTest, AFileThatCannotBeCreatedHasTheSystemsReason) {
    const GpxWriteErrorDetails missing = DetailsOfWriting(u"/nowhere/Grüße.gpx");
    EXPECT_EQ(missing.file, "/nowhere/Gr\xC3\xBC\xC3\x9F"
                            "e.gpx");
    EXPECT_EQ(missing.systemError, ENOENT);
    const TemporaryFolder folder;
    EXPECT_EQ(DetailsOfWriting(icu::UnicodeString::fromUTF8((folder / "").string())).systemError, EISDIR);
}

TEST(GpxErrorTest, AFileThatCannotBeWrittenHasTheSystemsReason) {
    EXPECT_EQ(DetailsOfWriting(u"/dev/full").systemError, ENOSPC);
}

TEST(GpxErrorTest, ANameThatNoFileCanHaveIsNotTheSystemsError) {
    errno = EIO;
    EXPECT_EQ(DetailsOfWriting(u"").systemError, 0);
}

TEST(GpxErrorTest, CopiesHaveTheSameDetails) {
    const GpxReadErrorDetails details = {"walk.gpx", 3, 4, Kind::kNotGpx, "text"};
    GpxReadError copy("other", {});
    {
        const GpxReadError original("message", details);
        copy = original;
    }
    EXPECT_STREQ(copy.what(), "message");
    EXPECT_EQ(copy.Details().file, "walk.gpx");
    EXPECT_EQ(copy.Details().parserMessage, "text");
    const GpxReadValueError value("message", details);
    const GpxReadValueError valueCopy(value);
    EXPECT_EQ(valueCopy.Details().line, 3U);
    EXPECT_EQ(FindReadErrorDetails(valueCopy)->column, 4U);
    EXPECT_EQ(FindReadErrorDetails(std::runtime_error("")), nullptr);
    EXPECT_EQ(FindReadErrorDetails(dbc::postcondition_error("")), nullptr);
}

} // namespace
} // namespace vexaTransferLib
