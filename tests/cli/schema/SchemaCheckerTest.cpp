// SPDX-License-Identifier: MIT
#include <vexagpx/schema/SchemaChecker.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vexagpx::SchemaChecker;
using vexagpx::SchemaReport;

class SchemaCheckerTest : public testing::Test {
protected:
    struct Platform {
        Platform() { xercesc::XMLPlatformUtils::Initialize(); }
        ~Platform() { xercesc::XMLPlatformUtils::Terminate(); }
    };

    SchemaReport Report(std::string_view xml, bool each = false) {
        SchemaReport report(each);
        checker_.Check(
            "walk.gpx",
            [&xml](char* buffer, std::size_t capacity) {
                const std::size_t count = std::min(capacity, xml.size());
                std::copy_n(xml.data(), count, buffer);
                xml.remove_prefix(count);
                return count;
            },
            report);
        return report;
    }

    /// "3:7 gpx/wpt/ele bad-value" for each error.
    std::vector<std::string> Errors(std::string_view xml) {
        std::vector<std::string> lines;
        Report(xml, true).Errors().ForEach([&](const auto& entry) {
            lines.push_back(std::to_string(entry.locations.front().line) + ':' +
                            std::to_string(entry.locations.front().column) + ' ' + entry.value.element + ' ' +
                            std::string(SchemaCause(entry.value.kind).word));
        });
        return lines;
    }

    static std::string Gpx11(const std::string& content) {
        return "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>\n" + content +
               "\n</gpx>";
    }
    static std::string Gpx10(const std::string& content) {
        return "<gpx version='1.0' creator='c' xmlns='http://www.topografix.com/GPX/1/0'>\n" + content +
               "\n</gpx>";
    }
    static std::string Cache(const std::string& version, const std::string& content) {
        return Gpx10("<wpt lat='1' lon='2'>\n<g:cache xmlns:g='http://www.groundspeak.com/cache/" + version +
                     "'>" + content + "</g:cache></wpt>");
    }

    Platform platform_;
    SchemaChecker checker_;
};

TEST_F(SchemaCheckerTest, FindsNothingInValidDocuments) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'><ele>3</ele><link href='u'/></wpt><rte/><trk/>")),
                IsEmpty());
    EXPECT_THAT(Errors(Gpx10("<name>n</name><wpt lat='1' lon='180'><url>u</url></wpt>")), IsEmpty());
    EXPECT_THAT(Errors(Cache("1/0", "<g:name>n</g:name>")), IsEmpty());
    EXPECT_THAT(
        Errors(Cache("1/0/1", "<g:attributes><g:attribute id='1' inc='1'>a</g:attribute></g:attributes>")),
        IsEmpty());
}

TEST_F(SchemaCheckerTest, NamesValuesWithTheirElementAndPlace) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='91' lon='2'>\n<ele>high</ele>\n</wpt>")),
                ElementsAre("2:23 gpx/wpt bad-value", "3:16 gpx/wpt/ele bad-value"));
}

TEST_F(SchemaCheckerTest, TellsOfAnEmptyElementByItself) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'>\n<ele/><time/></wpt>")),
                ElementsAre("3:7 gpx/wpt/ele bad-value", "3:14 gpx/wpt/time bad-value"));
}

TEST_F(SchemaCheckerTest, TellsWhereTheElementIsThatComesTooLate) {
    EXPECT_THAT(Errors(Gpx11("<trk/>\n<wpt lat='1' lon='2'/>\n<rte/>")),
                ElementsAre("3:23 gpx/wpt misplaced-element"));
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'><name>a</name>\n<ele>1</ele>\n</wpt>")),
                ElementsAre("3:6 gpx/wpt/ele misplaced-element"));
}

TEST_F(SchemaCheckerTest, TellsWhereTheElementIsThatComesTooOften) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'><ele>1</ele>\n<ele>1</ele>\n</wpt>")),
                ElementsAre("3:6 gpx/wpt/ele misplaced-element"));
}

TEST_F(SchemaCheckerTest, KnowsElementsThatHaveNoPlace) {
    EXPECT_THAT(
        Errors(Gpx11("<trk><trkseg><trkpt lat='1' lon='2'>\n<speed>1</speed></trkpt></trkseg></trk>")),
        ElementsAre("3:8 gpx/trk/trkseg/trkpt/speed unknown-element"));
    // The end of another name is not the name.
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'>\n<height>1</height></wpt>")),
                ElementsAre("3:9 gpx/wpt/height unknown-element"));
}

TEST_F(SchemaCheckerTest, KnowsAttributes) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1'/>")), ElementsAre("2:15 gpx/wpt missing-attribute"));
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2' id='3'/>")),
                ElementsAre("2:30 gpx/wpt unknown-attribute"));
    EXPECT_THAT(Errors("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'/>"),
                ElementsAre("1:63 gpx missing-attribute"));
}

TEST_F(SchemaCheckerTest, KnowsTextBetweenElements) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'>text<ele>1</ele></wpt>")),
                ElementsAre("2:26 gpx/wpt stray-text"));
}

TEST_F(SchemaCheckerTest, ChecksThatTheVersionIsThatOfTheNamespace) {
    EXPECT_THAT(Errors("<gpx version='1.0' creator='c' xmlns='http://www.topografix.com/GPX/1/1'/>"),
                ElementsAre("1:75 gpx bad-value"));
}

TEST_F(SchemaCheckerTest, TellsOnceOfARootThatNoSchemaIsFor) {
    EXPECT_THAT(Errors("<gpx version='1.1' creator='c'><wpt lat='91'><ele/></wpt></gpx>"),
                ElementsAre("1:32 gpx other-root"));
}

TEST_F(SchemaCheckerTest, AsksForTheSchemaOfOtherProgramsInVersion10Only) {
    const std::string other = "<a xmlns='urn:a' b='c'>\n<d/></a>";
    EXPECT_THAT(Errors(Gpx10("<wpt lat='1' lon='2'>" + other + "</wpt>")),
                ElementsAre("2:45 gpx/wpt/a no-schema"));
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'><extensions>" + other + "</extensions></wpt>")),
                IsEmpty());
}

TEST_F(SchemaCheckerTest, TellsOnceOfElementsOfOtherProgramsOutsideExtensions) {
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1' lon='2'><a xmlns='urn:a' b='c'/></wpt>")),
                ElementsAre("2:46 gpx/wpt/a unknown-element"));
    EXPECT_THAT(Errors(Gpx10("<wpt lat='1' lon='2'><a xmlns=''/></wpt>")),
                ElementsAre("2:35 gpx/wpt/a unknown-element"));
}

TEST_F(SchemaCheckerTest, ChecksGeocachesAndTheVendorsElements) {
    EXPECT_THAT(Errors(Cache("1/0/1", "<g:nme/>")), ElementsAre("3:67 gpx/wpt/cache/nme unknown-element"));
    EXPECT_THAT(Errors(Cache("1/0", "<g:attributes><g:attribute inc='1'>a</g:attribute></g:attributes>")),
                ElementsAre("3:92 gpx/wpt/cache/attributes/attribute unknown-attribute"));
    EXPECT_THAT(Errors(Gpx11("<rte><extensions><t:routeType xmlns:t='https://tarvik.example/xmlschemas/"
                             "gpx-extensions/1/0'>line</t:routeType></extensions></rte>")),
                ElementsAre("2:112 gpx/rte/extensions/routeType bad-value"));
}

TEST_F(SchemaCheckerTest, DoesNotReadSchemasThatTheDocumentNames) {
    EXPECT_THAT(
        Errors("<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' "
               "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
               "xsi:schemaLocation='http://www.topografix.com/GPX/1/1 no-such-file.xsd urn:a b.xsd'/>"),
        IsEmpty());
}

TEST_F(SchemaCheckerTest, ServesAnotherDocumentAfterOneThatIsNotWellFormed) {
    Report("<gpx><wpt>");
    EXPECT_THAT(Errors(Gpx11("<wpt lat='1'/>")), ElementsAre("2:15 gpx/wpt missing-attribute"));
}

TEST_F(SchemaCheckerTest, PassesOnWhatReadingThrows) {
    SchemaReport report(false);
    const auto fail = [](char*, std::size_t) -> std::size_t { throw std::runtime_error("read error"); };
    EXPECT_THROW(checker_.Check("walk.gpx", fail, report), std::runtime_error);
    EXPECT_THAT(Errors(Gpx11("<trk/>")), IsEmpty());
}

TEST_F(SchemaCheckerTest, KeepsOnlyTheBeginningOfLongTexts) {
    const SchemaReport report =
        Report(Gpx11("<wpt lat='1' lon='2'><fix>" + std::string(100000, 'x') + "</fix></wpt>"));
    report.Errors().ForEach([](const auto& entry) {
        EXPECT_LT(entry.value.message.size(), 400U);
        EXPECT_THAT(entry.value.message, HasSubstr("xxx..."));
    });
}

TEST_F(SchemaCheckerTest, CountsErrorsWithoutKeepingEachOfThem) {
    std::string points;
    for (int i = 0; i < 5000; ++i)
        points += "<wpt lat='1' lon='2'><fix>x" + std::to_string(i) + "</fix></wpt>\n";
    const SchemaReport report = Report(Gpx11(points));
    EXPECT_EQ(report.Errors().Count(), 5000U);
    EXPECT_EQ(report.Errors().DifferentCount(), SchemaReport::kMostMessages + 1);
}

} // namespace
