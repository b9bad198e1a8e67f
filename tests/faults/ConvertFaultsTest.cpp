// SPDX-License-Identifier: MIT

// Converting text while one request for memory is refused. Each request is refused in turn.

#include <common/UnicodeStrUtils.h>

#include "support/Attempts.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const icu::UnicodeString kText(u"A text of more units than ICU holds in place: \u00E9\u20AC");

/// A conversion in one way. It replaces `out`, which is unchanged when the conversion fails.
struct Conversion {
    const char* name;
    void (*convert)(std::string& out);
};

void ToBytes(std::string& out, const char* codePage) {
    const UnicodeStrUtils::ByteString bytes(kText, codePage);
    const MemoryPause pause;
    out.assign(bytes.buffer.get(), bytes.length);
}

constexpr Conversion kConversions[] = {
    {"default", [](std::string& out) { ToBytes(out, nullptr); }},
    {"utf8", [](std::string& out) { ToBytes(out, "utf-8"); }},
    {"windows", [](std::string& out) { ToBytes(out, "windows-1252"); }},
    {"utf16", [](std::string& out) { ToBytes(out, "UTF-16LE"); }},
    {"japanese", [](std::string& out) { ToBytes(out, "ISO-2022-JP"); }},
    {"string", [](std::string& out) { out = UnicodeStrUtils::UnicodeStringToStlString(kText); }},
    {"clear",
     [](std::string& out) {
         UnicodeStrUtils::ByteString bytes(u"");
         bytes.Clear();
         const MemoryPause pause;
         out.assign(bytes.buffer.get(), bytes.length);
     }},
};

bool IsDocumented(std::string_view failure) {
    return failure == kBadAlloc || failure == "runtime: Unable to convert the UnicodeString." ||
           failure.starts_with("runtime: Unable to open the converter: ");
}

template <class Refuse>
std::size_t ConvertWithEachRefused(const Conversion& conversion, Refuse refuse) {
    std::string whole;
    conversion.convert(whole);
    return ForEachCall([&](std::size_t call) {
        const long blocks = CppMemory::Blocks();
        Attempt attempt;
        {
            std::string out = "before";
            attempt = AttemptWith([&] { return refuse(call); }, [&] { conversion.convert(out); });
            EXPECT_EQ(out, attempt.Failure().empty() ? whole : "before") << attempt.Failure();
            EXPECT_TRUE(attempt.Failure().empty() || IsDocumented(attempt.Failure())) << attempt.Failure();
            conversion.convert(out);
            EXPECT_EQ(out, whole) << "without a refusal";
        }
        EXPECT_EQ(CppMemory::Blocks(), blocks) << "blocks of memory are lost; " << attempt.Failure();
        return attempt;
    });
}

template <class Refuse>
std::size_t ConvertEachWay(const std::string& what, Refuse refuse) {
    std::size_t calls = 0;
    for (const Conversion& conversion : kConversions) {
        SCOPED_TRACE(conversion.name);
        calls += ConvertWithEachRefused(conversion, refuse);
    }
    Record(what, calls);
    return calls;
}

TEST(ConvertFaultsTest, OneRequestToOperatorNew) {
    EXPECT_GT(ConvertEachWay("new", [](std::size_t call) { return RefusedNew::AtCall(call); }), 12U);
}

TEST(ConvertFaultsTest, OneRequestOfIcu) {
    EXPECT_GT(ConvertEachWay("icu", [](std::size_t call) { return RefusedIcuMemory::AtCall(call); }), 5U);
}

TEST(ConvertFaultsTest, OneRequestToTheCLibrary) {
#ifndef VEXA_FAULTS_MALLOC
    GTEST_SKIP() << "malloc is the sanitizer's and cannot be replaced";
#endif
    EXPECT_GT(ConvertEachWay("malloc", [](std::size_t call) { return RefusedMalloc::AtCall(call); }), 17U);
}

template <class Refuse>
void ConvertToSharedWithEachRefused(Refuse refuse) {
    boost::shared_array<char> whole;
    const std::int32_t length = UnicodeStrUtils::UnicodeStringToUTF8(kText, whole);
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        boost::shared_array<char> out = whole;
        const Attempt attempt = AttemptWith([&] { return refuse(call); },
                                            [&] { UnicodeStrUtils::UnicodeStringToUTF8(kText, out); });
        EXPECT_TRUE(attempt.Failure().empty() || IsDocumented(attempt.Failure())) << attempt.Failure();
        EXPECT_EQ(out == whole, !attempt.Failure().empty()) << "replaced by success only";
        EXPECT_EQ(UnicodeStrUtils::UnicodeStringToUTF8(kText, out), length);
        EXPECT_STREQ(out.get(), whole.get());
        return attempt;
    });
    EXPECT_GT(calls, 0U);
}

TEST(ConvertFaultsTest, ABufferIsReplacedOnlyWhenTheConversionSucceeds) {
    ConvertToSharedWithEachRefused([](std::size_t call) { return RefusedNew::AtCall(call); });
    ConvertToSharedWithEachRefused([](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

TEST(ConvertFaultsTest, ACopyKeepsItsBytesWhenClearingAnotherFails) {
    UnicodeStrUtils::ByteString bytes(kText);
    const UnicodeStrUtils::ByteString copy = bytes;
    for (const std::size_t call : {1U, 2U}) {
        const Attempt attempt = AttemptWith([&] { return RefusedNew::AtCall(call); }, [&] { bytes.Clear(); });
        EXPECT_EQ(attempt.Failure(), kBadAlloc);
        EXPECT_EQ(bytes.length, copy.length);
        EXPECT_EQ(bytes.buffer, copy.buffer);
    }
    bytes.Clear();
    EXPECT_EQ(bytes.length, 0U);
    EXPECT_STREQ(copy.buffer.get(), "A text of more units than ICU holds in place: \u00E9\u20AC");
}

} // namespace
} // namespace vexaTransferLib
