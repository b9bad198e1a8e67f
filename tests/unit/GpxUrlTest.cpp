// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUrl.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <new>
#include <type_traits>
#include <utility>

using vexaTransferLib::GpxUrl;
using vexaTransferLib::testing_support::RefusedIcuMemory;
using vexaTransferLib::testing_support::Utf8;

namespace {

constexpr char kUrlSource[] = "LibCore/vexaTransferLib/GpxUrl.cpp";
constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";

static_assert(std::has_virtual_destructor_v<GpxUrl>);
static_assert(!std::is_default_constructible_v<GpxUrl>);
static_assert(!std::is_convertible_v<icu::UnicodeString, GpxUrl>);
static_assert(std::is_nothrow_move_constructible_v<GpxUrl>);
static_assert(std::is_nothrow_move_assignable_v<GpxUrl>);

GpxUrl MakeFull() {
    GpxUrl url(u"http://a/");
    url.SetUrlText(u"Home");
    url.SetUrlType(u"text/html");
    return url;
}

void ExpectFull(const GpxUrl& url) {
    icu::UnicodeString text;
    icu::UnicodeString type;
    EXPECT_EQ(Utf8(url.GetUrl()), "http://a/");
    EXPECT_TRUE(url.GetUrlText(text));
    EXPECT_EQ(Utf8(text), "Home");
    EXPECT_TRUE(url.GetUrlType(type));
    EXPECT_EQ(Utf8(type), "text/html");
}

} // namespace

TEST(GpxUrlTest, RefusesAnEmptyAddress) {
    EXPECT_FAILURE(GpxUrl(u""), dbc::precondition_error, "GPX URLs must not be empty.", kUrlSource);
}

TEST(GpxUrlTest, RefusesABogusAddress) {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_FAILURE(GpxUrl(bogus), dbc::precondition_error, "GPX URLs must not be empty.", kUrlSource);
}

TEST(GpxUrlTest, TakesASingleBlank) {
    EXPECT_EQ(Utf8(GpxUrl(u" ").GetUrl()), " ");
}

TEST(GpxUrlTest, StartsWithoutTextAndTypeAndLeavesOutputsUntouched) {
    const GpxUrl url(u"x");
    icu::UnicodeString text(u"before");
    icu::UnicodeString type(u"before");
    EXPECT_FALSE(url.GetUrlText(text));
    EXPECT_FALSE(url.GetUrlType(type));
    EXPECT_EQ(Utf8(text), "before");
    EXPECT_EQ(Utf8(type), "before");
}

TEST(GpxUrlTest, GivesTextAndTypeOnceSet) {
    ExpectFull(MakeFull());
}

TEST(GpxUrlTest, SettersReplace) {
    GpxUrl url(MakeFull());
    url.SetUrlText(u" ");
    url.SetUrlType(u"b");
    icu::UnicodeString out;
    EXPECT_TRUE(url.GetUrlText(out));
    EXPECT_EQ(Utf8(out), " ");
    EXPECT_TRUE(url.GetUrlType(out));
    EXPECT_EQ(Utf8(out), "b");
}

TEST(GpxUrlTest, SettersRefuseAnEmptyTextAndKeepTheOld) {
    GpxUrl url(MakeFull());
    EXPECT_FAILURE(url.SetUrlText(u""), dbc::precondition_error, "The GPX URL text must not be empty.",
                   kUtilsSource);
    EXPECT_FAILURE(url.SetUrlType(u""), dbc::precondition_error, "The GPX URL type must not be empty.",
                   kUtilsSource);
    ExpectFull(url);
}

TEST(GpxUrlTest, CopiesAreIndependent) {
    GpxUrl url(MakeFull());
    const GpxUrl copy(url);
    GpxUrl assigned(u"other");
    EXPECT_EQ(&(assigned = url), &assigned);
    url.SetUrlText(u"changed");
    url.SetUrlType(u"changed");
    ExpectFull(copy);
    ExpectFull(assigned);
}

TEST(GpxUrlTest, AssignmentMakesTextAndTypeAbsentAgain) {
    GpxUrl url(MakeFull());
    url = GpxUrl(u"bare");
    icu::UnicodeString out;
    EXPECT_FALSE(url.GetUrlText(out));
    EXPECT_FALSE(url.GetUrlType(out));
    EXPECT_EQ(Utf8(url.GetUrl()), "bare");
}

TEST(GpxUrlTest, AssignmentToItselfDoesNothing) {
    GpxUrl url(MakeFull());
    const GpxUrl& same = url;
    EXPECT_EQ(&(url = same), &url);
    ExpectFull(url);
}

TEST(GpxUrlTest, MovesCarryEverything) {
    GpxUrl url(MakeFull());
    GpxUrl moved(std::move(url));
    ExpectFull(moved);
    GpxUrl assigned(u"other");
    assigned = std::move(moved);
    ExpectFull(assigned);
}

TEST(GpxUrlTest, ACopyThatMemoryCannotHoldIsReportedAndChangesNothing) {
    GpxUrl url(MakeFull());
    const icu::UnicodeString storage(5000, u'x', 5000);
    const icu::UnicodeString alias(false, storage.getBuffer(), storage.length());
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(1000);
    EXPECT_THROW(GpxUrl{alias}, std::bad_alloc);
    EXPECT_THROW(url.SetUrlText(alias), std::bad_alloc);
    EXPECT_THROW(url.SetUrlType(alias), std::bad_alloc);
    ExpectFull(url);
}
