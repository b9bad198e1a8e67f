// SPDX-License-Identifier: MIT
#include <vexaTransferLib/OptionalValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

using vexaTransferLib::AssignAutoPtrValue;
using vexaTransferLib::GetAutoPtrValue;
using vexaTransferLib::SetAutoPtrValue;

template <class Holder>
class OptionalValueTest : public testing::Test {};

using Holders = testing::Types<std::optional<std::string>, std::unique_ptr<std::string>>;
TYPED_TEST_SUITE(OptionalValueTest, Holders);

namespace {

template <class Holder>
Holder Holding(const std::string& value) {
    Holder holder;
    SetAutoPtrValue(holder, value);
    return holder;
}

} // namespace

TYPED_TEST(OptionalValueTest, GetOfAnEmptyHolderIsFalseAndLeavesTheOutput) {
    const TypeParam holder;
    std::string out = "before";
    EXPECT_FALSE(GetAutoPtrValue(out, holder));
    EXPECT_EQ(out, "before");
}

TYPED_TEST(OptionalValueTest, SetFillsAnEmptyHolderWithACopy) {
    TypeParam holder;
    std::string value = "value";
    SetAutoPtrValue(holder, value);
    value = "changed";
    std::string out;
    EXPECT_TRUE(GetAutoPtrValue(out, holder));
    EXPECT_EQ(out, "value");
}

TYPED_TEST(OptionalValueTest, SetAssignsToTheHeldObject) {
    TypeParam holder = Holding<TypeParam>("first");
    const std::string* object = &*holder;
    SetAutoPtrValue(holder, std::string("second"));
    EXPECT_EQ(&*holder, object);
    EXPECT_EQ(*holder, "second");
}

TYPED_TEST(OptionalValueTest, AssignFromAnEmptyHolderEmptiesTheTarget) {
    TypeParam target = Holding<TypeParam>("old");
    AssignAutoPtrValue(target, TypeParam());
    EXPECT_FALSE(target);
    AssignAutoPtrValue(target, TypeParam());
    EXPECT_FALSE(target);
}

TYPED_TEST(OptionalValueTest, AssignCopiesDeeplyIntoEmptyAndFullTargets) {
    TypeParam source = Holding<TypeParam>("source");
    TypeParam empty;
    TypeParam full = Holding<TypeParam>("old");
    const std::string* object = &*full;
    AssignAutoPtrValue(empty, source);
    AssignAutoPtrValue(full, source);
    *source = "changed";
    EXPECT_EQ(*empty, "source");
    EXPECT_EQ(*full, "source");
    EXPECT_EQ(&*full, object);
}

TYPED_TEST(OptionalValueTest, AssignToItselfKeepsTheValue) {
    TypeParam holder = Holding<TypeParam>("value");
    const TypeParam& same = holder;
    AssignAutoPtrValue(holder, same);
    EXPECT_EQ(*holder, "value");
}
