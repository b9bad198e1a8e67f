// SPDX-License-Identifier: MIT
#include "support/comparison/SchemaValidation.h"

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace vexaTransferLib::testing_support;

namespace {

const std::filesystem::path kSchemas = std::filesystem::path(VEXA_SHARED) / "schemas";

const std::vector<std::filesystem::path> kAll = {kSchemas / "gpx10.xsd", kSchemas / "gpx11.xsd",
                                                 kSchemas / "cache10.xsd", kSchemas / "cache101.xsd"};

#define SKIP_WITHOUT_SCHEMAS()                                                                               \
    if (!std::filesystem::is_directory(kSchemas))                                                            \
    GTEST_SKIP() << "the published schemas are not here: " << kSchemas

constexpr const char* kSmallSchema = R"(<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema">
<xsd:element name="a"><xsd:simpleType><xsd:restriction base="xsd:decimal"><xsd:maxInclusive value="90"/>
</xsd:restriction></xsd:simpleType></xsd:element></xsd:schema>)";

// A schema whose one element is a decimal number of at most 90.
class SmallSchema {
public:
    SmallSchema() { WriteBytes(Path(), kSmallSchema); }

    std::string Path() const { return Beside("small.xsd").string(); }
    std::filesystem::path Beside(const std::string& name) const { return folder_ / name; }

    std::optional<std::string> Validate(std::string_view xml) const { return ValidateAgainst(xml, Path()); }

private:
    TemporaryFolder folder_;
};

std::string Gpx10(const std::string& content) {
    return R"(<gpx xmlns="http://www.topografix.com/GPX/1/0" version="1.0" creator="a"><wpt lat="1" lon="2">)" +
           content + "</wpt></gpx>";
}

} // namespace

TEST(SchemaValidationTest, ValidTextHasNoErrors) {
    const SmallSchema schema;
    EXPECT_EQ(schema.Validate("<a>12.5</a>"), std::nullopt);
    EXPECT_EQ(schema.Validate("<a>12.5555555555555555555555555555555555555</a>"), std::nullopt);
    EXPECT_EQ(schema.Validate("<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                              "xsi:noNamespaceSchemaLocation='missing.xsd'>12.5</a>"),
              std::nullopt);
}

TEST(SchemaValidationTest, ErrorsHaveTheirLine) {
    const SmallSchema schema;
    EXPECT_EQ(schema.Validate("\n<b/>"),
              "line 2: Element 'b': No matching global declaration available for the validation root.\n");
    EXPECT_NE(schema.Validate("<a>91.00000000000000000000000000000000000</a>"), std::nullopt);
    EXPECT_NE(schema.Validate("<a>1.0000000000000000000000000000000000x</a>"), std::nullopt);
    EXPECT_NE(schema.Validate("<a/>"), std::nullopt);
}

TEST(SchemaValidationTest, SchemasThatTheTextNamesAreIgnored) {
    const TemporaryFolder folder;
    const std::string schema = (folder / "strict.xsd").string();
    WriteBytes(schema, R"(<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema"><xsd:element name="a">
<xsd:complexType><xsd:sequence><xsd:any/></xsd:sequence></xsd:complexType></xsd:element></xsd:schema>)");
    const std::string other = (folder / "other.xsd").string();
    WriteBytes(other, R"(<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema" targetNamespace="urn:z">
<xsd:element name="z"/></xsd:schema>)");
    EXPECT_NE(ValidateAgainst(
                  "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='urn:z " +
                      other + "'><z xmlns='urn:z'/></a>",
                  schema),
              std::nullopt);
}

TEST(SchemaValidationTest, TextOrSchemaThatCannotBeReadIsAnError) {
    const SmallSchema schema;
    EXPECT_THROW(schema.Validate("<a>"), std::runtime_error);
    EXPECT_THROW(ValidateAgainst("<a/>", schema.Beside("missing.xsd").string()), std::runtime_error);
    EXPECT_THROW(WriteCombinedSchema(schema.Beside(""), {schema.Beside("missing.xsd")}), std::runtime_error);
    EXPECT_THROW(WriteCombinedSchema(schema.Beside(""), {schema.Path()}), std::runtime_error);
}

TEST(SchemaValidationTest, CombinedSchemaChecksGeocachesInGpx10) {
    SKIP_WITHOUT_SCHEMAS();
    const TemporaryFolder folder;
    const std::string schema = WriteCombinedSchema(folder / "", kAll);
    for (const std::string version : {"1/0", "1/0/1"}) {
        const std::string start = "<g:cache xmlns:g='http://www.groundspeak.com/cache/" + version + "'>";
        EXPECT_EQ(ValidateAgainst(Gpx10(start + "<g:name>n</g:name></g:cache>"), schema), std::nullopt);
        EXPECT_NE(ValidateAgainst(Gpx10(start + "<g:nme>n</g:nme></g:cache>"), schema), std::nullopt);
    }
    EXPECT_NE(ValidateAgainst(Gpx10("<link href='u'/>"), schema), std::nullopt);
}

TEST(SchemaValidationTest, CombinedSchemaDeclaresForeignElementsOfTheText) {
    SKIP_WITHOUT_SCHEMAS();
    const TemporaryFolder folder;
    const std::string xml =
        Gpx10("<x:a xmlns:x='urn:x?a&amp;b' b='c'><x:d>t</x:d><y:a xmlns:y='urn:y'/></x:a>");
    EXPECT_NE(ValidateAgainst(xml, WriteCombinedSchema(folder / "", kAll)), std::nullopt);
    const std::string schema = WriteCombinedSchema(folder / "", kAll, xml);
    EXPECT_EQ(ValidateAgainst(xml, schema), std::nullopt);
    EXPECT_NE(ValidateAgainst(Gpx10("<z:a xmlns:z='urn:z'/>"), schema), std::nullopt);
    EXPECT_NE(ValidateAgainst(Gpx10("<ele>x</ele>"), schema), std::nullopt);
}

TEST(SchemaValidationTest, RealFilesAreJudgedByTheirContent) {
    const std::filesystem::path corpus = std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx";
    SKIP_WITHOUT_SCHEMAS();
    if (!std::filesystem::is_directory(corpus))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    const TemporaryFolder folder;
    const auto validate = [&](const char* name) {
        const std::string xml = ReadBytes(corpus / name);
        return ValidateAgainst(xml, WriteCombinedSchema(folder / "", kAll, xml));
    };
    for (const char* name : {"gpxpy-gpx10-all-fields.gpx", "gpxpy-gpx11-all-fields.gpx", "cgeo-oc5952.gpx",
                             "togeojson-blue-hills.gpx", "cgeo-oc120f5.gpx", "gpxanimator-komoot.gpx"})
        EXPECT_EQ(validate(name), std::nullopt) << name;
    for (const char* name : {"sgraaf-out-of-order.gpx", "jpx-empty-extensions.gpx", "phpgpx-timezero.gpx"})
        EXPECT_NE(validate(name), std::nullopt) << name;
}
