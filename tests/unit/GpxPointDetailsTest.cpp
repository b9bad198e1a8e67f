// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPointDetails.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

using Text = std::optional<icu::UnicodeString>;
using Number = std::optional<double>;
using Count = std::optional<std::uint64_t>;

GpxPointDetails Point(const std::string& content, const std::string& version = "1/1") {
    return GpxPointDetails(
        RootOf("<trkpt lat='1' lon='2' xmlns='http://www.topografix.com/GPX/" + version +
               "' xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0' xmlns:f='urn:f'>" + content +
               "</trkpt>"));
}

GpxPointDetails Extended(const std::string& content) {
    return Point("<extensions>" + content + "</extensions>");
}

struct NumberField {
    const char* element;
    Number (GpxPointDetails::*get)() const;
};

constexpr NumberField kNumbers[] = {
    {"ele", &GpxPointDetails::GetElevation},           {"magvar", &GpxPointDetails::GetMagneticVariation},
    {"geoidheight", &GpxPointDetails::GetGeoidHeight}, {"hdop", &GpxPointDetails::GetHorizontalDilution},
    {"vdop", &GpxPointDetails::GetVerticalDilution},   {"pdop", &GpxPointDetails::GetPositionDilution},
    {"ageofdgpsdata", &GpxPointDetails::GetDgpsAge}};

struct CountField {
    const char* element;
    Count (GpxPointDetails::*get)() const;
};

constexpr CountField kCounts[] = {{"sat", &GpxPointDetails::GetSatelliteCount},
                                  {"dgpsid", &GpxPointDetails::GetDgpsStation}};

struct TextField {
    const char* element;
    Text (GpxPointDetails::*get)() const;
};

constexpr TextField kTexts[] = {{"sym", &GpxPointDetails::GetSymbol}, {"fix", &GpxPointDetails::GetFix}};

using Getter = Number (GpxPointDetails::*)() const;

constexpr Getter kSensors[] = {&GpxPointDetails::GetHeartRate,   &GpxPointDetails::GetCadence,
                               &GpxPointDetails::GetTemperature, &GpxPointDetails::GetWaterTemperature,
                               &GpxPointDetails::GetPower,       &GpxPointDetails::GetSpeed,
                               &GpxPointDetails::GetCourse,      &GpxPointDetails::GetDepth};

std::string Element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

TEST(GpxPointDetailsTest, HasWhatAllObjectsHave) {
    EXPECT_EQ(Point("<cmt>c</cmt>").GetComment(), Text(u"c"));
}

TEST(GpxPointDetailsTest, GivesItsPosition) {
    const GpxPointDetails point(RootOf("<wpt lat=' -91.5 ' lon='200'/>"));
    EXPECT_EQ(point.GetLatitude(), Number(-91.5));
    EXPECT_EQ(point.GetLongitude(), Number(200.0));
    const GpxPointDetails bad(RootOf("<wpt lat='1,5' lon=''/>"));
    EXPECT_EQ(bad.GetLatitude(), std::nullopt);
    EXPECT_EQ(bad.GetLongitude(), std::nullopt);
}

TEST(GpxPointDetailsTest, GivesItsNumbers) {
    for (const char* version : {"1/0", "1/1"})
        for (const NumberField& field : kNumbers) {
            const auto get = [&](const std::string& content) {
                return (Point(content, version).*field.get)();
            };
            EXPECT_EQ(get(Element("f:" + std::string(field.element), "1") +
                          Element(field.element, "\n-12.5 ") + Element(field.element, "2")),
                      Number(-12.5))
                << field.element;
            EXPECT_EQ(get(Element(field.element, "12 m")), std::nullopt) << field.element;
            EXPECT_EQ(get(Element(field.element, "")), std::nullopt) << field.element;
            EXPECT_EQ(get("<name>1</name>"), std::nullopt) << field.element;
        }
}

TEST(GpxPointDetailsTest, GivesItsCounts) {
    for (const CountField& field : kCounts) {
        const auto get = [&](const std::string& text) {
            return (Point(Element(field.element, text)).*field.get)();
        };
        EXPECT_EQ(get(" 12 "), Count(12)) << field.element;
        EXPECT_EQ(get("2000"), Count(2000)) << field.element;
        EXPECT_EQ(get("-1"), std::nullopt) << field.element;
        EXPECT_EQ(get("1.5"), std::nullopt) << field.element;
        EXPECT_EQ((Point("").*field.get)(), std::nullopt) << field.element;
    }
}

TEST(GpxPointDetailsTest, GivesItsTexts) {
    for (const TextField& field : kTexts) {
        EXPECT_EQ((Point(Element(field.element, " 3D ")).*field.get)(), Text(u" 3D ")) << field.element;
        EXPECT_EQ((Point(Element(field.element, "")).*field.get)(), Text(u"")) << field.element;
        EXPECT_EQ((Point("").*field.get)(), std::nullopt) << field.element;
    }
}

TEST(GpxPointDetailsTest, GivesItsTime) {
    EXPECT_EQ(Point("<time> 1970-01-01T00:00:01.5Z </time>").GetTime(), Number(1500.0));
    EXPECT_EQ(Point("<time>1970-01-01T02:00:01+02:00</time>").GetTime(), Number(1000.0));
    EXPECT_EQ(Point("<time>yesterday</time>").GetTime(), std::nullopt);
    EXPECT_EQ(Point("").GetTime(), std::nullopt);
}

TEST(GpxPointDetailsTest, GivesTheVendorsValues) {
    const GpxPointDetails point =
        Extended("<t:tovasymbol>1,234</t:tovasymbol><t:objectid> {G} </t:objectid>"
                 "<t:routePointType>via</t:routePointType><f:tovasymbol>1</f:tovasymbol>");
    EXPECT_EQ(point.GetSymbolNumber(), std::optional(1234));
    EXPECT_EQ(point.GetIdentifier(), Text(u" {G} "));
    EXPECT_EQ(point.GetRoutePointType(), Text(u"via"));
    const GpxPointDetails several = Extended("<t:tovasymbol>1</t:tovasymbol><t:tovasymbol>2</t:tovasymbol>"
                                             "<t:objectid>a</t:objectid><t:objectid>b</t:objectid>");
    EXPECT_EQ(several.GetSymbolNumber(), std::optional(2));
    EXPECT_EQ(several.GetIdentifier(), Text(u"b"));
    EXPECT_EQ(Extended("<t:tovasymbol>x</t:tovasymbol>").GetSymbolNumber(), std::nullopt);
    EXPECT_EQ(Point("").GetSymbolNumber(), std::nullopt);
    EXPECT_EQ(Point("").GetIdentifier(), std::nullopt);
    EXPECT_EQ(Point("").GetRoutePointType(), std::nullopt);
}

TEST(GpxPointDetailsTest, GivesTheAttributesOfItsLastForm) {
    const std::vector<GpxFormAttribute> attributes =
        Extended("<t:formdata><t:formstring key='no'>1</t:formstring></t:formdata>"
                 "<t:formdata><t:formstring key='K &amp;' modtime='1970-01-01T00:00:02Z'> v </t:formstring>"
                 "<t:formstring key=''>1</t:formstring><t:formstring>1</t:formstring>"
                 "<f:formstring key='f'>1</f:formstring><t:other key='o'>1</t:other>"
                 "<formstring key='k' modtime='x'/></t:formdata>")
            .GetFormAttributes();
    ASSERT_EQ(attributes.size(), 2u);
    EXPECT_EQ(attributes[0].key, u"K &");
    EXPECT_EQ(attributes[0].value, u" v ");
    EXPECT_EQ(attributes[0].modificationTime, Number(2000.0));
    EXPECT_EQ(attributes[1].key, u"k");
    EXPECT_EQ(attributes[1].value, u"");
    EXPECT_EQ(attributes[1].modificationTime, std::nullopt);
    EXPECT_TRUE(Point("").GetFormAttributes().empty());
}

TEST(GpxPointDetailsTest, GivesTheElementsOfSensorsWhateverIsInThem) {
    const GpxPointDetails point =
        Extended("<f:t><f:hr>90</f:hr><f:cad>many</f:cad><f:HR/></f:t><f:depth>3</f:depth>");
    std::string found;
    for (const GpxSensorElement& element : point.GetSensorElements())
        found +=
            std::to_string(static_cast<int>(element.sensor)) + std::string(element.element.GetXml()) + " ";
    EXPECT_EQ(found, "0<f:hr>90</f:hr> 1<f:cad>many</f:cad> 0<f:HR/> 7<f:depth>3</f:depth> ");
    EXPECT_TRUE(GpxPointDetails(GpxElement()).GetSensorElements().empty());
}

TEST(GpxPointDetailsTest, FindsWhatSensorsMeasuredByTheNamesOfTheExtensions) {
    const struct {
        const char* name;
        Getter get;
    } kNames[] = {{"hr", &GpxPointDetails::GetHeartRate},
                  {"heartrate", &GpxPointDetails::GetHeartRate},
                  {"heart_rate", &GpxPointDetails::GetHeartRate},
                  {"HeartRateBpm", &GpxPointDetails::GetHeartRate},
                  {"cad", &GpxPointDetails::GetCadence},
                  {"cadence", &GpxPointDetails::GetCadence},
                  {"RunCadence", &GpxPointDetails::GetCadence},
                  {"atemp", &GpxPointDetails::GetTemperature},
                  {"temp", &GpxPointDetails::GetTemperature},
                  {"Temperature", &GpxPointDetails::GetTemperature},
                  {"wtemp", &GpxPointDetails::GetWaterTemperature},
                  {"power", &GpxPointDetails::GetPower},
                  {"PowerInWatts", &GpxPointDetails::GetPower},
                  {"Watts", &GpxPointDetails::GetPower},
                  {"speed", &GpxPointDetails::GetSpeed},
                  {"course", &GpxPointDetails::GetCourse},
                  {"bearing", &GpxPointDetails::GetCourse},
                  {"Depth", &GpxPointDetails::GetDepth}};
    for (const auto& name : kNames) {
        const std::string plain = Element(name.name, "7.5");
        const std::string prefixed = Element("f:" + std::string(name.name), "7.5");
        // Directly in the extensions, in a container there, below the point, and in a container below it.
        const GpxPointDetails points[] = {
            Extended(plain), Extended(prefixed),     Extended(Element("f:x", prefixed)),
            Point(plain),    Point(prefixed, "1/0"), Point(Element("f:x", prefixed), "1/0")};
        for (const GpxPointDetails& point : points)
            for (const Getter get : kSensors)
                EXPECT_EQ((point.*get)(), get == name.get ? Number(7.5) : std::nullopt)
                    << name.name << " in " << point.GetElement().GetXml();
    }
}

TEST(GpxPointDetailsTest, ReadsTheExtensionsOfDevices) {
    const GpxPointDetails garmin = Extended(
        "<ns3:TrackPointExtension xmlns:ns3='http://www.garmin.com/xmlschemas/TrackPointExtension/v2'>"
        "<ns3:atemp>21.5</ns3:atemp><ns3:wtemp>12</ns3:wtemp><ns3:depth>3.5</ns3:depth><ns3:hr>142</ns3:hr>"
        "<ns3:cad>88</ns3:cad><ns3:speed>4.25</ns3:speed><ns3:course>271</ns3:course>"
        "<ns3:bearing>90</ns3:bearing></ns3:TrackPointExtension>"
        "<p:PowerExtension xmlns:p='http://www.garmin.com/xmlschemas/PowerExtension/v1'>"
        "<p:PowerInWatts>215</p:PowerInWatts></p:PowerExtension>");
    const double kExpected[] = {142, 88, 21.5, 12, 215, 4.25, 271, 3.5};
    for (std::size_t i = 0; i < std::size(kSensors); ++i)
        EXPECT_EQ((garmin.*kSensors[i])(), Number(kExpected[i])) << i;

    const GpxPointDetails cluetrust = Point(
        "<gpxdata:hr xmlns:gpxdata='http://www.cluetrust.com/XML/GPXDATA/1/0'>99</gpxdata:hr>"
        "<gpxdata:cadence xmlns:gpxdata='http://www.cluetrust.com/XML/GPXDATA/1/0'>60</gpxdata:cadence>",
        "1/0");
    EXPECT_EQ(cluetrust.GetHeartRate(), Number(99.0));
    EXPECT_EQ(cluetrust.GetCadence(), Number(60.0));

    const GpxPointDetails osmand =
        Extended("<osmand:speed xmlns:osmand='https://osmand.net'>0.2</osmand:speed><power>180</power>");
    EXPECT_EQ(osmand.GetSpeed(), Number(0.2));
    EXPECT_EQ(osmand.GetPower(), Number(180.0));

    EXPECT_EQ(Extended("<f:HeartRateBpm><f:Value> 72 </f:Value></f:HeartRateBpm>").GetHeartRate(),
              Number(72.0));
}

TEST(GpxPointDetailsTest, HasTheSpeedAndTheCourseOfGpx10) {
    const GpxPointDetails point =
        Point("<course>271.5</course><speed>-1</speed><f:course>3</f:course>", "1/0");
    EXPECT_EQ(point.GetCourse(), Number(271.5));
    EXPECT_EQ(point.GetSpeed(), Number(-1.0));
}

TEST(GpxPointDetailsTest, TakesTheFirstNumberOfASensor) {
    EXPECT_EQ(Extended("<f:hr/><f:hr>--</f:hr><f:a><f:hr>70</f:hr></f:a><f:hr>80</f:hr>").GetHeartRate(),
              Number(70.0));
    EXPECT_EQ(Extended("<f:hr>NaN</f:hr>").GetHeartRate(), std::nullopt);
}

TEST(GpxPointDetailsTest, LooksForSensorsFourLevelsDeep) {
    EXPECT_EQ(Extended("<a><b><c><hr>70</hr></c></b></a>").GetHeartRate(), Number(70.0));
    EXPECT_EQ(Extended("<a><b><c><d><hr>70</hr></d></c></b></a>").GetHeartRate(), std::nullopt);
    EXPECT_EQ(Point("<f:a><f:b><f:c><hr>70</hr></f:c></f:b></f:a>").GetHeartRate(), Number(70.0));
    EXPECT_EQ(Point("<f:a><f:b><f:c><f:d><hr>70</hr></f:d></f:c></f:b></f:a>").GetHeartRate(), std::nullopt);
    EXPECT_EQ(Point("<link><speed>70</speed></link>").GetSpeed(), std::nullopt);
}

TEST(GpxPointDetailsTest, LooksForSensorsOutsideOfGeocaches) {
    const std::string cache =
        "<g:cache xmlns:g='http://www.groundspeak.com/cache/1/0/1'><g:temp>1</g:temp></g:cache>";
    EXPECT_EQ(Extended(cache).GetTemperature(), std::nullopt);
    EXPECT_EQ(Extended(cache + "<temp>2</temp>").GetTemperature(), Number(2.0));
    EXPECT_EQ(Point(cache + "<temp>2</temp>", "1/0").GetTemperature(), Number(2.0));
}

TEST(GpxPointDetailsTest, GivesAllSensorsOfOneWalk) {
    const GpxSensors all =
        Extended(
            "<a><hr>1</hr><cad>2</cad><atemp>3</atemp><wtemp>4</wtemp></a><power>5</power><speed><!-- a -->6"
            "</speed><course><![CDATA[7]]></course><depth> 8 </depth><hr>9</hr>")
            .GetSensors();
    const std::optional<double> values[] = {all.heartRate, all.cadence, all.temperature, all.waterTemperature,
                                            all.power,     all.speed,   all.course,      all.depth};
    for (std::size_t i = 0; i < std::size(values); ++i)
        EXPECT_EQ(values[i], Number(static_cast<double>(i + 1))) << i;
    const GpxSensors none = Extended("<z/><hr>x</hr>").GetSensors();
    EXPECT_EQ(none.heartRate, std::nullopt);
    EXPECT_EQ(none.depth, std::nullopt);
}

TEST(GpxPointDetailsTest, OfNothingIsEmpty) {
    const GpxPointDetails none{GpxElement()};
    EXPECT_EQ(none.GetLatitude(), std::nullopt);
    EXPECT_EQ(none.GetLongitude(), std::nullopt);
    EXPECT_EQ(none.GetTime(), std::nullopt);
    for (const NumberField& field : kNumbers)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const CountField& field : kCounts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const TextField& field : kTexts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const Getter get : kSensors)
        EXPECT_EQ((none.*get)(), std::nullopt);
    EXPECT_EQ(none.GetSensors().heartRate, std::nullopt);
    EXPECT_EQ(none.GetSymbolNumber(), std::nullopt);
    EXPECT_EQ(none.GetIdentifier(), std::nullopt);
    EXPECT_EQ(none.GetRoutePointType(), std::nullopt);
    EXPECT_TRUE(none.GetFormAttributes().empty());
}

} // namespace
} // namespace vexaTransferLib
