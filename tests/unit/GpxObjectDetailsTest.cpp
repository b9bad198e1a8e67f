// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxObjectDetails.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

using Text = std::optional<icu::UnicodeString>;

struct TextField {
    const char* element;
    Text (GpxObjectDetails::*get)() const;
};

constexpr TextField kTexts[] = {{"name", &GpxObjectDetails::GetName},
                                {"cmt", &GpxObjectDetails::GetComment},
                                {"desc", &GpxObjectDetails::GetDescription},
                                {"src", &GpxObjectDetails::GetSource},
                                {"type", &GpxObjectDetails::GetType}};

// In a file of each version, and in one without a namespace.
const char* const kNamespaces[] = {"http://www.topografix.com/GPX/1/0", "http://www.topografix.com/GPX/1/1",
                                   ""};

TEST(GpxObjectDetailsTest, GivesEachTextAsItStands) {
    for (const char* nameSpace : kNamespaces)
        for (const char* object : {"wpt", "rtept", "trkpt", "rte", "trk"})
            for (const TextField& field : kTexts) {
                const std::string name = field.element;
                const GpxObjectDetails details(
                    RootOf(std::string("<") + object + " xmlns='" + nameSpace +
                           "' xmlns:f='urn:f'><f:" + name + ">no</f:" + name + "><extensions><" + name +
                           ">no</" + name + "></extensions><" + name + "> a &amp;\n<![CDATA[<b>]]> </" +
                           name + "><" + name + ">2</" + name + "></" + object + ">"));
                EXPECT_EQ((details.*field.get)(), Text(u" a &\n<b> ")) << nameSpace << object << name;
            }
}

TEST(GpxObjectDetailsTest, TellsAnEmptyTextFromNone) {
    for (const TextField& field : kTexts) {
        const std::string name = field.element;
        EXPECT_EQ((GpxObjectDetails(RootOf("<trk><" + name + "/></trk>")).*field.get)(), Text(u"")) << name;
        EXPECT_EQ((GpxObjectDetails(RootOf("<trk><trkseg/></trk>")).*field.get)(), std::nullopt) << name;
    }
}

TEST(GpxObjectDetailsTest, FindsTextsAfterThePoints) {
    EXPECT_EQ(GpxObjectDetails(RootOf("<rte><rtept><name>p</name></rtept><name>r</name></rte>")).GetName(),
              Text(u"r"));
}

TEST(GpxObjectDetailsTest, GivesAllLinks) {
    const std::vector<GpxLink> links =
        GpxObjectDetails(RootOf("<wpt><link href='a'><text>t</text><type>y</type></link><url>b</url>"
                                "<urlname>n</urlname></wpt>"))
            .GetLinks();
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].href, u"a");
    EXPECT_EQ(links[0].text, u"t");
    EXPECT_EQ(links[0].type, u"y");
    EXPECT_EQ(links[1].href, u"b");
    EXPECT_EQ(links[1].text, u"n");
    EXPECT_EQ(links[1].type, u"");
}

TEST(GpxObjectDetailsTest, GivesItsExtensions) {
    const std::vector<GpxElement> extensions =
        GpxObjectDetails(RootOf("<trk xmlns:f='urn:f'><extensions><a/></extensions><f:b/></trk>"))
            .GetExtensions();
    ASSERT_EQ(extensions.size(), 2u);
    EXPECT_EQ(extensions[0].GetName(), "a");
    EXPECT_TRUE(extensions[1].Is("urn:f", "b"));
}

TEST(GpxObjectDetailsTest, KnowsItsElement) {
    const GpxElement root = RootOf("<trk/>");
    EXPECT_EQ(GpxObjectDetails(root).GetElement(), root);
}

TEST(GpxObjectDetailsTest, OfNothingIsEmpty) {
    const GpxObjectDetails none{GpxElement()};
    for (const TextField& field : kTexts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    EXPECT_TRUE(none.GetLinks().empty());
    EXPECT_TRUE(none.GetExtensions().empty());
    EXPECT_FALSE(none.GetElement());
}

} // namespace
} // namespace vexaTransferLib
