// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxVersion.h>

#include "support/ContractChecks.h"
#include "support/ModelDoors.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

using vexaTransferLib::GpxVersion;
using vexaTransferLib::testing_support::ModelDoors;
using vexaTransferLib::testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxVersion.cpp";
constexpr char kBadNumbers[] = "Only GPX versions 1.0 and 1.1 are supported.";
constexpr char kBadText[] = "Unsupported GPX version string.";

static_assert(!std::is_default_constructible_v<GpxVersion>);
static_assert(std::is_trivially_copyable_v<GpxVersion>);
static_assert(std::is_trivially_destructible_v<GpxVersion>);
static_assert(!std::is_polymorphic_v<GpxVersion>);

void ExpectNumbers(const GpxVersion& version, unsigned long expectedMajor, unsigned long expectedMinor) {
    unsigned long major = 99;
    unsigned long minor = 99;
    version.GetVersion(major, minor);
    EXPECT_EQ(major, expectedMajor);
    EXPECT_EQ(minor, expectedMinor);
}

} // namespace

TEST(GpxVersionTest, TakesTheTwoSupportedPairs) {
    ExpectNumbers(GpxVersion(1, 0), 1, 0);
    ExpectNumbers(GpxVersion(1, 1), 1, 1);
}

TEST(GpxVersionTest, RefusesAllOtherPairs) {
    constexpr std::uint64_t kWrapped = std::uint64_t{1} << 32;
    constexpr std::uint64_t kMax = std::numeric_limits<unsigned long>::max();
    const struct {
        std::uint64_t major;
        std::uint64_t minor;
        const char* reason;
    } rows[] = {
        {1, 2, "minor too large"},
        {2, 0, "major too large"},
        {0, 9, "neither"},
        {0, 0, "no version"},
        {0, 1, "major zero"},
        {2, 1, "major too large"},
        {kWrapped + 1, 0, "1 once cut"},
        {1, kWrapped, "0 once cut"},
        {1, kWrapped + 1, "1 once cut"},
        {kMax, kMax, "largest"},
        {1, kMax, "minus one"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        if (row.major > kMax || row.minor > kMax)
            continue; // no number of a 32-bit system
        const auto major = static_cast<unsigned long>(row.major);
        const auto minor = static_cast<unsigned long>(row.minor);
        EXPECT_FAILURE(GpxVersion(major, minor), dbc::precondition_error, kBadNumbers, kSource);
    }
}

TEST(GpxVersionTest, TakesTheTwoTexts) {
    ExpectNumbers(GpxVersion(icu::UnicodeString(u"1.0")), 1, 0);
    ExpectNumbers(GpxVersion(icu::UnicodeString(u"1.1")), 1, 1);
    EXPECT_EQ(GpxVersion(icu::UnicodeString(u"1.1")), GpxVersion::GetLatestVersion());
}

TEST(GpxVersionTest, RefusesAllOtherTexts) {
    const char16_t withZero[] = {u'1', u'.', u'1', u'\0'};
    const struct {
        icu::UnicodeString text;
        const char* reason;
    } rows[] = {
        {u"", "empty"},
        {u" 1.1", "leading blank"},
        {u"1.1 ", "trailing blank"},
        {u"\t1.0", "leading tab"},
        {u"1.0\n", "line end"},
        {u"1", "no minor number"},
        {u"1.", "no minor number"},
        {u".1", "no major number"},
        {u"1.00", "two digits"},
        {u"1.10", "two digits"},
        {u"01.1", "leading zero"},
        {u"1.1.0", "three numbers"},
        {u"1,1", "comma"},
        {u"1.2", "unknown minor"},
        {u"2.0", "unknown major"},
        {u"+1.1", "sign"},
        {u"\uFF11.\uFF11", "full-width digits"},
        {icu::UnicodeString(withZero, 4), "U+0000 behind it"},
        {u"one", "no number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_FAILURE(GpxVersion(row.text), dbc::precondition_error, kBadText, kSource);
    }
}

TEST(GpxVersionTest, RefusesABogusText) {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_FAILURE(GpxVersion(bogus), dbc::precondition_error, kBadText, kSource);
}

TEST(GpxVersionTest, LatestIs11) {
    ExpectNumbers(GpxVersion::GetLatestVersion(), 1, 1);
}

TEST(GpxVersionTest, TextIsMajorFullStopMinor) {
    EXPECT_EQ(Utf8(GpxVersion(1, 0).GetVersionString()), "1.0");
    EXPECT_EQ(Utf8(GpxVersion(1, 1).GetVersionString()), "1.1");
    EXPECT_EQ(Utf8(ModelDoors::MakeVersion(4294967295U, 4294967295U).GetVersionString()),
              "4294967295.4294967295");
}

TEST(GpxVersionTest, KindFollowsFromBothNumbers) {
    const struct {
        GpxVersion version;
        bool is10;
        bool is11;
    } rows[] = {
        {GpxVersion(1, 0), true, false},
        {GpxVersion(1, 1), false, true},
        {ModelDoors::MakeVersion(1, 2), false, false},
        {ModelDoors::MakeVersion(2, 0), false, false},
        {ModelDoors::MakeVersion(2, 1), false, false},
        {ModelDoors::MakeVersion(0, 1), false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Utf8(row.version.GetVersionString()));
        EXPECT_EQ(row.version.IsGpx10(), row.is10);
        EXPECT_EQ(row.version.IsGpx11(), row.is11);
    }
}

TEST(GpxVersionTest, OrdersByMajorThenMinorWithoutSign) {
    const GpxVersion ascending[] = {
        ModelDoors::MakeVersion(0, 9),
        GpxVersion(1, 0),
        GpxVersion(1, 1),
        ModelDoors::MakeVersion(1, 4294967295U),
        ModelDoors::MakeVersion(2, 0),
        ModelDoors::MakeVersion(4294967295U, 0),
    };
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            const GpxVersion& a = ascending[i];
            const GpxVersion& b = ascending[j];
            SCOPED_TRACE(Utf8(a.GetVersionString() + u" and " + b.GetVersionString()));
            EXPECT_EQ(a == b, i == j);
            EXPECT_EQ(a != b, i != j);
            EXPECT_EQ(a < b, i < j);
            EXPECT_EQ(a > b, i > j);
            EXPECT_EQ(a <= b, i <= j);
            EXPECT_EQ(a >= b, i >= j);
        }
    }
}

TEST(GpxVersionTest, CopiesAreIndependent) {
    GpxVersion version(1, 0);
    const GpxVersion copy(version);
    version = GpxVersion(1, 1);
    ExpectNumbers(copy, 1, 0);
    ExpectNumbers(version, 1, 1);
}

TEST(GpxVersionTest, AssignmentReturnsTheObjectAndMayBeToItself) {
    GpxVersion version(1, 0);
    const GpxVersion& same = version;
    EXPECT_EQ(&(version = same), &version);
    ExpectNumbers(version, 1, 0);
}
