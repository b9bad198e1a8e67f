// SPDX-License-Identifier: MIT
// The schemas of the tool find the same documents valid as the published ones, which cannot be part of this repository.
#include "support/GpxFiles.h"
#include "support/Mutations.h"

#include <vexagpx/schema/SchemaChecker.h>

#include <gtest/gtest.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib::testing_support;

const std::filesystem::path kSchemas = std::filesystem::path(VEXA_SHARED) / "schemas";
const std::filesystem::path kFiles = std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx";

struct Platform {
    Platform() { xercesc::XMLPlatformUtils::Initialize(); }
    ~Platform() { xercesc::XMLPlatformUtils::Terminate(); }
};

class ErrorCount : public xercesc::DefaultHandler {
public:
    std::size_t errors = 0;

    void error(const xercesc::SAXParseException&) override { ++errors; }
};

/// Validates by the published schemas, and by the vendor's.
class PublishedSchemas {
public:
    PublishedSchemas()
        : reader_(xercesc::XMLReaderFactory::createXMLReader(xercesc::XMLPlatformUtils::fgMemoryManager,
                                                             &schemas_)) {
        for (const std::filesystem::path& path :
             {kSchemas / "gpx10.xsd", kSchemas / "gpx11.xsd", kSchemas / "cache10.xsd",
              kSchemas / "cache101.xsd",
              std::filesystem::path(VEXA_SOURCE_FOLDER) / "schemas" / "tarvik-extensions.xsd"})
            if (reader_->loadGrammar(path.c_str(), xercesc::Grammar::SchemaGrammarType, true) == nullptr)
                throw std::runtime_error("This schema cannot be read: " + path.string());
        schemas_.lockPool();
        reader_->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, true);
        reader_->setFeature(xercesc::XMLUni::fgXercesDynamic, false);
        reader_->setFeature(xercesc::XMLUni::fgXercesSchema, true);
        reader_->setFeature(xercesc::XMLUni::fgXercesUseCachedGrammarInParse, true);
        reader_->setFeature(xercesc::XMLUni::fgXercesLoadSchema, false);
        reader_->setFeature(xercesc::XMLUni::fgXercesSkipDTDValidation, true);
    }

    /// The number of errors; none when the document is not well-formed.
    std::optional<std::size_t> Errors(const std::string& xml) {
        ErrorCount count;
        reader_->setErrorHandler(&count);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xml.data()), xml.size(),
                                                "xml");
        try {
            reader_->parse(source);
        } catch (const xercesc::XMLException&) {
            return std::nullopt;
        } catch (const xercesc::SAXException&) {
            return std::nullopt;
        }
        return count.errors;
    }

private:
    xercesc::XMLGrammarPoolImpl schemas_;
    std::unique_ptr<xercesc::SAX2XMLReader> reader_;
};

class SchemaVerdictTest : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(kSchemas) || !std::filesystem::exists(kFiles))
            GTEST_SKIP() << "the published schemas and the real files are not there";
        published_.emplace();
    }

    /// Compares the verdicts; false when the document is not well-formed.
    bool Compare(const std::string& xml, const std::string& name) {
        const std::optional<std::size_t> expected = published_->Errors(xml);
        if (!expected)
            return false;
        vexagpx::SchemaReport report(false);
        std::string_view rest = xml;
        checker_.Check(
            "xml",
            [&rest](char* buffer, std::size_t capacity) {
                const std::size_t count = std::min(capacity, rest.size());
                std::copy_n(rest.data(), count, buffer);
                rest.remove_prefix(count);
                return count;
            },
            report);
        ++compared_;
        valid_ += *expected == 0 ? 1 : 0;
        EXPECT_EQ(report.IsValid(), *expected == 0) << name << '\n' << xml.substr(0, 3000);
        // Errors inside elements without a schema are not told.
        EXPECT_LE(report.Errors().Count(), *expected) << name;
        return true;
    }

    Platform platform_;
    vexagpx::SchemaChecker checker_;
    std::optional<PublishedSchemas> published_;
    std::size_t compared_ = 0;
    std::size_t valid_ = 0;
};

TEST_F(SchemaVerdictTest, RealFilesAreValidByBothOrByNeither) {
    for (const std::filesystem::path& path : GpxFilesBelow(kFiles))
        Compare(ReadBytes(path), path.string());
    EXPECT_GT(valid_, 40U);
    EXPECT_GT(compared_ - valid_, 20U);
}

TEST_F(SchemaVerdictTest, ChangedFilesAreValidByBothOrByNeither) {
    constexpr std::uintmax_t kLongest = 20000;
    const char* const more = std::getenv("VEXA_SCHEMA_MUTATIONS");
    const int mutations = more != nullptr ? std::atoi(more) : 20;
    Mutator mutator(17);
    for (const std::filesystem::path& path : GpxFilesBelow(kFiles, kLongest)) {
        const std::string xml = ReadBytes(path);
        for (int i = 0; i < mutations; ++i)
            Compare(mutator.Mutate(xml), path.string());
    }
    EXPECT_GT(valid_, 100U);
    EXPECT_GT(compared_ - valid_, 100U);
}

/// A place in a document where elements are put.
struct Place {
    std::string before;
    std::string after;
};

std::vector<Place> Places(const std::string& version) {
    const std::string start = "<gpx version='" + version +
                              "' creator='c' xmlns='http://www.topografix.com/GPX/" +
                              (version == "1.0" ? "1/0" : "1/1") + "'>";
    std::vector<Place> places = {
        {start, "</gpx>"},
        {start + "<wpt lat='1' lon='2'>", "</wpt></gpx>"},
        {start + "<rte>", "</rte></gpx>"},
        {start + "<rte><rtept lat='1' lon='2'>", "</rtept></rte></gpx>"},
        {start + "<trk>", "</trk></gpx>"},
        {start + "<trk><trkseg>", "</trkseg></trk></gpx>"},
        {start + "<trk><trkseg><trkpt lat='1' lon='2'>", "</trkpt></trkseg></trk></gpx>"},
        {start + "<metadata>", "</metadata></gpx>"},
        {start + "<metadata><author>", "</author></metadata></gpx>"},
        {start + "<metadata><copyright author='a'>", "</copyright></metadata></gpx>"},
        {start + "<wpt lat='1' lon='2'><link href='u'>", "</link></wpt></gpx>"},
        {start + "<wpt lat='1' lon='2'><extensions>", "</extensions></wpt></gpx>"}};
    // Geocaches are the same in both.
    // A geocache has the same elements in both.
    if (version == "1.1")
        return places;
    for (const std::string cache : {"1/0", "1/0/1"}) {
        const std::string open =
            start + "<wpt lat='1' lon='2'><cache xmlns='http://www.groundspeak.com/cache/" + cache + "'>";
        const std::string close = "</cache></wpt></gpx>";
        places.push_back({open, close});
        for (const std::string name : {"attributes", "logs", "travelbugs"})
            places.push_back({open + "<" + name + ">", "</" + name + ">" + close});
        places.push_back({open + "<logs><log>", "</log></logs>" + close});
        places.push_back({open + "<travelbugs><travelbug>", "</travelbug></travelbugs>" + close});
    }
    return places;
}

const char* const kNames[] = {"name",
                              "desc",
                              "author",
                              "email",
                              "url",
                              "urlname",
                              "time",
                              "keywords",
                              "bounds",
                              "wpt",
                              "rte",
                              "trk",
                              "rtept",
                              "trkseg",
                              "trkpt",
                              "ele",
                              "magvar",
                              "geoidheight",
                              "cmt",
                              "src",
                              "sym",
                              "type",
                              "fix",
                              "sat",
                              "hdop",
                              "vdop",
                              "pdop",
                              "ageofdgpsdata",
                              "dgpsid",
                              "course",
                              "speed",
                              "number",
                              "link",
                              "extensions",
                              "metadata",
                              "copyright",
                              "year",
                              "license",
                              "text",
                              "cache",
                              "placed_by",
                              "owner",
                              "container",
                              "attributes",
                              "attribute",
                              "difficulty",
                              "terrain",
                              "country",
                              "state",
                              "logs",
                              "log",
                              "date",
                              "finder",
                              "log_wpt",
                              "travelbugs",
                              "travelbug",
                              "gpx",
                              "other",
                              "encoded_hints",
                              "short_description",
                              "long_description"};

TEST_F(SchemaVerdictTest, EveryElementWithEveryValueIsValidByBothOrByNeither) {
    const char* const values[] = {"",     "1",  "-1", "1.5",  "1024", "2020-01-01T00:00:00Z",
                                  "2020", "3d", "a",  "a@b.c"};
    for (const std::string version : {"1.0", "1.1"})
        for (const Place& place : Places(version))
            for (const std::string name : kNames)
                for (const std::string value : values)
                    Compare(place.before + "<" + name + ">" + value + "</" + name + ">" + place.after,
                            "element");
    EXPECT_GT(valid_, 1000U);
    EXPECT_GT(compared_ - valid_, 10000U);
}

TEST_F(SchemaVerdictTest, EveryOrderOfTwoElementsIsValidByBothOrByNeither) {
    // A value that most types have.
    const auto element = [](const std::string& name) {
        const bool hasText = name != "bounds" && name != "link" && name != "extensions" && name != "author";
        const std::string value = name == "time" ? "2020-01-01T00:00:00Z" : name == "fix" ? "3d" : "1";
        return "<" + name + (name == "link" ? " href='u'" : "") + ">" + (hasText ? value : "") + "</" + name +
               ">";
    };
    for (const std::string version : {"1.0", "1.1"})
        for (const Place& place : Places(version))
            for (const std::string first : kNames)
                for (const std::string second : kNames)
                    Compare(place.before + element(first) + element(second) + place.after, "two elements");
    EXPECT_GT(valid_, 1000U);
    EXPECT_GT(compared_ - valid_, 10000U);
}

TEST_F(SchemaVerdictTest, EveryAttributeWithEveryValueIsValidByBothOrByNeither) {
    const char* const elements[] = {"gpx",       "bounds",    "wpt",
                                    "link",      "copyright", "email",
                                    "owner",     "attribute", "short_description",
                                    "text",      "log",       "log_wpt",
                                    "travelbug", "ele",       "cache"};
    const char* const attributes[] = {"lat",      "lon",   "minlat",  "maxlat",  "minlon",
                                      "maxlon",   "href",  "author",  "id",      "domain",
                                      "inc",      "html",  "encoded", "ref",     "available",
                                      "archived", "other", "version", "xsi:nil", "xsi:type"};
    const char* const values[] = {"1",     "90",   "90.1",   "-90", "-90.1", "180",
                                  "180.1", "-180", "-180.1", "200", "true",  ""};
    const std::string xsi = " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ";
    for (const std::string version : {"1.0", "1.1"})
        for (const Place& place : Places(version))
            for (const std::string element : elements)
                for (const std::string attribute : attributes)
                    for (const std::string value : values) {
                        // The others that its type requires, but for one of this name.
                        std::string others;
                        const char* const required[] = {"lat", "lon", "minlat", "minlon", "maxlat", "maxlon"};
                        for (const std::string name : required)
                            if (name != attribute && (name.size() > 3) == (element == "bounds") &&
                                (element == "wpt" || element == "bounds"))
                                others += " " + name + "='1'";
                        Compare(place.before + "<" + element + xsi + attribute + "='" + value + "'" + others +
                                    "/>" + place.after,
                                "attribute");
                    }
    EXPECT_GT(valid_, 100U);
    EXPECT_GT(compared_ - valid_, 10000U);
}

} // namespace
