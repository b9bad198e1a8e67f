// SPDX-License-Identifier: MIT

// Reading while one request for memory, or that request and all later ones, is refused. Each request is
// refused in turn.

#include <vexaTransferLib/GpxParser.h>

#include "support/Attempts.h"
#include "support/FaultReading.h"
#include "support/FaultSample.h"
#include "support/GpxReading.h"
#include "support/GpxValues.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/ModelCompare.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

using Read = void (*)(GpxParser&, const FaultFile&, GpxDocument&);

void ReadFromFile(GpxParser& parser, const FaultFile& file, GpxDocument& document) {
    parser.Parse(file.Path(), document);
}

void ReadUntrusted(GpxParser& parser, const FaultFile& file, GpxDocument& document) {
    parser.SetUntrusted();
    parser.Parse(file.Path(), document);
}

void ReadFromBytes(GpxParser& parser, const FaultFile& file, GpxDocument& document) {
    parser.Parse(file.Bytes(), file.Path(), document);
}

struct Way {
    const char* name;
    const char* prolog; ///< decides what reads the file
    Read read;
    bool isWatched;
};

// Only the XML parser reads another encoding than UTF-8, and only from a DOM a file with a document type.
constexpr char kPlain[] = "";
constexpr char kEvents[] = "<?xml version='1.0' encoding='ISO-8859-1'?>";
constexpr char kDom[] = "<!DOCTYPE gpx>";

void PrintTo(const Way& way, std::ostream* out) {
    *out << way.name;
}

class ReadFaultsTest : public testing::TestWithParam<Way> {
protected:
    /// Reads while the request that `refuse` chooses is refused, then without a refusal.
    template <class Refuse>
    Attempt ReadTwice(FaultFile& file, Refuse refuse) {
        const long blocks = CppMemory::Blocks();
        long blocksOfChecks = 0;
        Attempt attempt;
        {
            GpxDocument document = UsedDocument();
            attempt = AttemptWith(refuse, [&] { GetParam().read(parser_, file, document); });
            blocksOfChecks = -CppMemory::Blocks();
            CheckDocument(file, attempt, document);
            blocksOfChecks += CppMemory::Blocks();
            observer_.Forget();
            document = UsedDocument();
            GetParam().read(parser_, file, document);
            EXPECT_TRUE(IsSameModel(file.Whole(), document)) << "without a refusal";
            observer_.Forget();
        }
        EXPECT_EQ(CppMemory::Blocks(), blocks + blocksOfChecks)
            << "blocks of memory are lost; " << attempt.Failure();
        return attempt;
    }

    /// The same, for each request in turn.
    template <class Refuse>
    void ReadWithEachRefused(const std::string& what, SampleNumbers numbers, Refuse refuse) {
        FaultFile file(GetParam().prolog + FaultSample(numbers));
        if (GetParam().isWatched)
            parser_.SetObserver(&observer_);
        ReadTwice(file, [&] { return refuse(0); });
        const std::size_t calls =
            ForEachCall([&](std::size_t call) { return ReadTwice(file, [&] { return refuse(call); }); });
        // Of the memory of Xerces, a plain file needs little more than its stream.
        EXPECT_GT(calls, GetParam().prolog == kPlain && what.starts_with("xerces") ? 2U : 20U);
        Record(what, calls);
    }

private:
    void CheckDocument(FaultFile& file, const Attempt& attempt, const GpxDocument& document) {
        if (!attempt.Failure().empty()) {
            EXPECT_TRUE(IsOutOfMemory(attempt.Failure(), file.NarrowPath()));
            EXPECT_TRUE(DifferencesOf(UsedDocument(), document).empty() || file.IsPart(document))
                << attempt.Failure();
        } else if (GetParam().isWatched) {
            EXPECT_TRUE(file.HasAllBut(observer_.things, document));
            EXPECT_TRUE(file.IsToldAll(observer_.things));
        } else if (attempt.refused <= 1) {
            EXPECT_TRUE(file.HasAllButOne(document));
        } else {
            EXPECT_TRUE(file.IsPart(document));
        }
    }

    GpxParser parser_;
    UnrefusedObserver observer_;
};

TEST_P(ReadFaultsTest, OneRequestToOperatorNew) {
    ReadWithEachRefused("new", SampleNumbers::kAll,
                        [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST_P(ReadFaultsTest, AllFurtherRequestsToOperatorNew) {
    ReadWithEachRefused("new_on", SampleNumbers::kAll,
                        [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST_P(ReadFaultsTest, OneRequestOfXerces) {
    ReadWithEachRefused("xerces", SampleNumbers::kAll,
                        [](std::size_t call) { return RefusedXercesMemory::AtCall(call); });
}

TEST_P(ReadFaultsTest, AllFurtherRequestsOfXerces) {
    ReadWithEachRefused("xerces_on", SampleNumbers::kAll,
                        [](std::size_t call) { return RefusedXercesMemory::FromCall(call); });
}

TEST_P(ReadFaultsTest, OneRequestOfIcu) {
    ReadWithEachRefused("icu", SampleNumbers::kNoneOfIcu,
                        [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

INSTANTIATE_TEST_SUITE_P(Ways, ReadFaultsTest,
                         testing::Values(Way{"Plain", kPlain, ReadFromFile, false},
                                         Way{"WatchedPlain", kPlain, ReadFromFile, true},
                                         Way{"WatchedUntrustedPlain", kPlain, ReadUntrusted, true},
                                         Way{"WatchedPlainOfBytes", kPlain, ReadFromBytes, true},
                                         Way{"Events", kEvents, ReadFromFile, false},
                                         Way{"WatchedEvents", kEvents, ReadFromFile, true},
                                         Way{"WatchedUntrustedEvents", kEvents, ReadUntrusted, true},
                                         Way{"WatchedEventsOfBytes", kEvents, ReadFromBytes, true},
                                         Way{"Dom", kDom, ReadFromFile, false},
                                         Way{"WatchedDom", kDom, ReadFromFile, true}),
                         [](const auto& way) { return std::string(way.param.name); });

} // namespace
} // namespace vexaTransferLib
