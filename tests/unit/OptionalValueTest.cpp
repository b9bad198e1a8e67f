// SPDX-License-Identifier: MIT
#include <vexaTransferLib/OptionalValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

using vexaTransferLib::AssignAutoPtrValue;
using vexaTransferLib::GetAutoPtrValue;
using vexaTransferLib::OwnedValue;
using vexaTransferLib::SetAutoPtrValue;

template <class Holder>
class OptionalValueTest : public testing::Test {};

using Holders =
    testing::Types<std::optional<std::string>, std::unique_ptr<std::string>, OwnedValue<std::string>>;
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

namespace {

struct Fragile {
    explicit Fragile(int value) : number(value) {}
    Fragile(const Fragile& other) : number(other.number) {
        if (number < 0)
            throw std::runtime_error("no copy of a negative number");
    }
    Fragile& operator=(const Fragile&) = delete;

    int number;
};

OwnedValue<Fragile> OwnedNumber(int number) {
    OwnedValue<Fragile> owned;
    owned = std::make_unique<Fragile>(number);
    return owned;
}

} // namespace

TEST(OwnedValueTest, ACopyOwnsACopyOfTheValue) {
    OwnedValue<Fragile> source = OwnedNumber(1);
    const OwnedValue<Fragile> copy(source);
    OwnedValue<Fragile> assigned = OwnedNumber(2);
    assigned = source;
    source->number = 3;
    EXPECT_EQ(copy->number, 1);
    EXPECT_EQ(assigned->number, 1);
}

TEST(OwnedValueTest, ACopyOfAnEmptyHolderIsEmpty) {
    const OwnedValue<Fragile> empty;
    const OwnedValue<Fragile> copy(empty);
    OwnedValue<Fragile> assigned = OwnedNumber(1);
    assigned = empty;
    EXPECT_FALSE(copy);
    EXPECT_FALSE(assigned);
}

TEST(OwnedValueTest, AssigningAHolderToItselfKeepsTheValue) {
    OwnedValue<Fragile> owned = OwnedNumber(1);
    const OwnedValue<Fragile>& same = owned;
    owned = same;
    ASSERT_TRUE(owned);
    EXPECT_EQ(owned->number, 1);
}

TEST(OwnedValueTest, AMoveTakesTheValueItself) {
    OwnedValue<Fragile> source = OwnedNumber(-1);
    const Fragile* const value = source.get();
    OwnedValue<Fragile> moved(std::move(source));
    EXPECT_EQ(moved.get(), value);
    OwnedValue<Fragile> assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.get(), value);
    static_assert(std::is_nothrow_move_constructible_v<OwnedValue<Fragile>>);
    static_assert(std::is_nothrow_move_assignable_v<OwnedValue<Fragile>>);
}

TEST(OwnedValueTest, ACopyThatThrowsLeavesBothHolders) {
    const OwnedValue<Fragile> source = OwnedNumber(-1);
    OwnedValue<Fragile> target = OwnedNumber(2);
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_EQ(source->number, -1);
    ASSERT_TRUE(target);
    EXPECT_EQ(target->number, 2);
}
