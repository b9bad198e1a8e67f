// SPDX-License-Identifier: MIT

// Writing while one request for memory, or that request and all later ones, is refused. Each request is
// refused in turn.

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/Attempts.h"
#include "support/FaultSample.h"
#include "support/GpxFiles.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const icu::UnicodeString kApp(u"An application whose name has more units than ICU holds");
const icu::UnicodeString kUrl(u"https://app.example/an/address/of/more/units/than/ICU/holds");
const icu::UnicodeString kElementName(u"aNameOfMoreUnitsThanIcuHoldsInPlace");
const GpxVersion k11(1, 1);

const std::set<std::string_view> kOutOfMemory = {
    kBadAlloc,
    "postcondition: The GPX text is too large to be held in memory.",
    "postcondition: Unable to create the GPX file. Target could be write protected or full.",
    "runtime: Unable to convert the UnicodeString.",
    "runtime: Unable to open the converter: UTF-8 (default)",
};

/// Writes the document in one way and keeps the written text.
struct Writer {
    virtual ~Writer() = default;
    /// Replaces the written text by another one.
    virtual void Reset() = 0;
    virtual void Write(const GpxDocument& document) = 0;
    virtual std::string Written() const = 0;
    /// The text after Reset.
    virtual std::string Before() const { return "before"; }
};

struct ByteStringWriter : Writer {
    void Reset() override { bytes.Clear(); }
    void Write(const GpxDocument& document) override { bytes = document.GetAsByteString(k11, kApp, kUrl); }
    std::string Written() const override { return {bytes.buffer.get(), bytes.length}; }
    std::string Before() const override { return ""; }

    UnicodeStrUtils::ByteString bytes{icu::UnicodeString()};
};

struct StringWriter : Writer {
    void Reset() override { out = "before"; }
    void Write(const GpxDocument& document) override { document.WriteToString(k11, kApp, kUrl, out); }
    std::string Written() const override { return out; }

    std::string out;
};

struct FileWriter : Writer {
    void Reset() override { WriteBytes(path, "before"); }
    void Write(const GpxDocument& document) override { document.WriteToFile(k11, kApp, kUrl, name); }
    std::string Written() const override { return ReadBytes(path); }

    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "a file whose name has more units than ICU holds.gpx";
    const icu::UnicodeString name = icu::UnicodeString::fromUTF8(path.string());
};

/// Writes while the request that `refuse` chooses is refused, then without a refusal.
template <class Refuse>
Attempt WriteTwice(Writer& writer, const GpxDocument& document, const std::string& whole, Refuse refuse) {
    writer.Reset();
    const Attempt attempt = AttemptWith(refuse, [&] { writer.Write(document); });
    if (attempt.Failure().empty()) {
        EXPECT_EQ(writer.Written(), whole);
    } else {
        EXPECT_TRUE(kOutOfMemory.contains(attempt.Failure())) << attempt.Failure();
        EXPECT_EQ(writer.Written(), writer.Before()) << attempt.Failure();
    }
    writer.Write(document);
    EXPECT_EQ(writer.Written(), whole) << "without a refusal";
    return attempt;
}

/// The same, for each request in turn.
template <class Refuse>
void WriteWithEachRefused(const std::string& what, Writer& writer, const GpxDocument& document,
                          Refuse refuse) {
    const std::string whole(document.GetAsByteString(k11, kApp, kUrl).buffer.get());
    WriteTwice(writer, document, whole, [&] { return refuse(0); });
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        writer.Reset();
        const long blocks = CppMemory::Blocks();
        const Attempt attempt = WriteTwice(writer, document, whole, [&] { return refuse(call); });
        writer.Reset();
        EXPECT_EQ(CppMemory::Blocks(), blocks) << "blocks of memory are lost; " << attempt.Failure();
        return attempt;
    });
    EXPECT_GT(calls, 0U) << what;
    Record(what, calls);
}

template <class Refuse>
void WriteEachWay(const std::string& what, const GpxDocument& document, Refuse refuse) {
    ByteStringWriter bytes;
    WriteWithEachRefused(what + "_bytes", bytes, document, refuse);
    StringWriter string;
    WriteWithEachRefused(what + "_string", string, document, refuse);
    FileWriter file;
    WriteWithEachRefused(what + "_file", file, document, refuse);
}

/// A document without numbers that ICU formats; see SampleNumbers.
GpxDocument DocumentWithoutNumbersOfIcu() {
    GpxDocument document = ReadGpx(FaultSample(SampleNumbers::kNoneOfIcu));
    // This record has a number, even if only the default.
    GpxModelAccess::SetGISMetaData(document, nullptr);
    return document;
}

TEST(WriteFaultsTest, OneRequestToOperatorNew) {
    WriteEachWay("new", FullDocument(), [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST(WriteFaultsTest, AllFurtherRequestsToOperatorNew) {
    WriteEachWay("new_on", FullDocument(), [](std::size_t call) { return RefusedNew::FromCall(call); });
}

// These requests include those for the text itself, whose memory is resized.
TEST(WriteFaultsTest, OneRequestToTheCLibrary) {
#ifndef VEXA_FAULTS_MALLOC
    GTEST_SKIP() << "malloc is the sanitizer's and cannot be replaced";
#endif
    WriteEachWay("malloc", DocumentWithoutNumbersOfIcu(),
                 [](std::size_t call) { return RefusedMalloc::AtCall(call); });
}

TEST(WriteFaultsTest, AllFurtherRequestsToTheCLibrary) {
#ifndef VEXA_FAULTS_MALLOC
    GTEST_SKIP() << "malloc is the sanitizer's and cannot be replaced";
#endif
    WriteEachWay("malloc_on", DocumentWithoutNumbersOfIcu(),
                 [](std::size_t call) { return RefusedMalloc::FromCall(call); });
}

// Only the name of the file needs memory of ICU. GpxDocumentWriterTest checks that the text needs none.
TEST(WriteFaultsTest, OneRequestOfIcu) {
    FileWriter file;
    WriteWithEachRefused("icu_file", file, DocumentWithoutNumbersOfIcu(),
                         [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

using Append = void (*)(const GpxDocument&, icu::UnicodeString&);

/// Appends while ICU's memory is refused: after a failure the text is bogus, never shortened.
void AppendWithEachRefused(const std::string& what, Append append) {
    const GpxDocument document = DocumentWithoutNumbersOfIcu();
    icu::UnicodeString whole;
    append(document, whole);
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        icu::UnicodeString out;
        const Attempt attempt =
            AttemptWith([&] { return RefusedIcuMemory::AtCall(call); }, [&] { append(document, out); });
        if (attempt.Failure().empty()) {
            EXPECT_EQ(Utf8(out), Utf8(whole));
        } else {
            EXPECT_TRUE(kOutOfMemory.contains(attempt.Failure()) && out.isBogus()) << attempt.Failure();
        }
        out = u"";
        append(document, out);
        EXPECT_EQ(Utf8(out), Utf8(whole)) << "without a refusal";
        return attempt;
    });
    EXPECT_GT(calls, 0U) << what;
    Record(what, calls);
}

TEST(WriteFaultsTest, OneRequestOfIcuWhileATextIsAppendedTo) {
    AppendWithEachRefused("icu_point", [](const GpxDocument& document, icu::UnicodeString& out) {
        document.GetWaypointIter()->AppendToString(k11, out);
    });
    AppendWithEachRefused("icu_route", [](const GpxDocument& document, icu::UnicodeString& out) {
        document.GetRouteIter()->AppendToString(k11, out);
    });
    AppendWithEachRefused("icu_track", [](const GpxDocument& document, icu::UnicodeString& out) {
        document.GetTrackIter()->AppendToString(k11, out);
    });
    AppendWithEachRefused("icu_element", [](const GpxDocument&, icu::UnicodeString& out) {
        AppendStringElement(out, kElementName, kApp);
    });
}

TEST(WriteFaultsDeathTest, StopsTheProcessWhenIcuCannotMakeANumberFormat) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const GpxDocument document = FullDocument();
    EXPECT_DEATH(
        {
            const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
            static_cast<void>(document.GetAsByteString(k11, kApp, kUrl));
        },
        "^ASSERT failed at LibCore/vexaTransferLib/GpxUtils\\.cpp:[1-9][0-9]*\n$");
}

} // namespace
} // namespace vexaTransferLib
