// SPDX-License-Identifier: MIT

// Reading completely while one request for memory, or that request and all later ones, is refused: each in turn. And of
// files that become unreadable while they are read. The reading succeeds and has everything, or fails and changes
// nothing.

#include <vexaTransferLib/GpxParser.h>

#include "support/Attempts.h"
#include "support/CFiles.h"
#include "support/FaultReading.h"
#include "support/FaultSample.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/ModelCompare.h"
#include "support/ZipFiles.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

struct Way {
    const char* name;
    const char* prolog; ///< decides what reads the file
    bool isUntrusted;
};

void PrintTo(const Way& way, std::ostream* out) {
    *out << way.name;
}

// Has notices, elements that are unread, and texts in pieces beside the usual elements.
std::string Sample() {
    std::string file = FaultSample(SampleNumbers::kNoneOfIcu);
    return file.insert(file.rfind("</gpx>"),
                       "<wpt lat='x' lon='2'/><rte><rtept/></rte><trk><trkseg><trkpt/></trkseg>"
                       "<name>a<!-- c -->name of more units than ICU holds in place</name></trk>");
}

class CompleteFaultsTest : public testing::TestWithParam<Way> {
protected:
    CompleteFaultsTest() {
        if (GetParam().isUntrusted)
            parser_.SetUntrusted();
        parser_.SetObserver(&observer_);
        parser_.SetComplete();
        parser_.Parse(file_.Path(), whole_);
        notices_ = observer_.things.size();
        EXPECT_GT(notices_, 5U);
        observer_.Forget();
    }

    /// Reads while the request that `refuse` chooses is refused, then without a refusal.
    template <class Refuse>
    Attempt ReadTwice(Refuse refuse) {
        const long blocks = CppMemory::Blocks();
        long blocksOfChecks = 0;
        Attempt attempt;
        {
            GpxDocument document = UsedDocument();
            attempt = AttemptWith(refuse, [&] { parser_.Parse(path_, document); });
            blocksOfChecks = -CppMemory::Blocks();
            CheckDocument(attempt, document);
            blocksOfChecks += CppMemory::Blocks();
            observer_.Forget();
            document = UsedDocument();
            parser_.Parse(path_, document);
            EXPECT_TRUE(IsSameModel(whole_, document)) << "without a refusal";
            observer_.Forget();
        }
        EXPECT_EQ(CppMemory::Blocks(), blocks + blocksOfChecks) << "blocks are lost; " << attempt.Failure();
        return attempt;
    }

    template <class Refuse>
    void ReadWithEachRefused(const std::string& what, std::size_t least, Refuse refuse) {
        ReadTwice([&] { return refuse(0); });
        const std::size_t calls =
            ForEachCall([&](std::size_t call) { return ReadTwice([&] { return refuse(call); }); });
        EXPECT_GT(calls, least);
        Record(what, calls);
    }

private:
    void CheckDocument(const Attempt& attempt, const GpxDocument& document) {
        if (attempt.Failure().empty()) {
            EXPECT_TRUE(IsSameModel(whole_, document));
            EXPECT_EQ(observer_.things.size(), notices_);
            EXPECT_TRUE(document.GetElement());
            return;
        }
        EXPECT_TRUE(IsOutOfMemory(attempt.Failure(), file_.NarrowPath()));
        EXPECT_TRUE(IsSameModel(UsedDocument(), document)) << attempt.Failure();
        EXPECT_FALSE(document.GetElement());
    }

    GpxFile file_{GetParam().prolog + Sample(), "walk.gpx"};
    icu::UnicodeString path_ = file_.Path();
    GpxParser parser_;
    UnrefusedObserver observer_;
    GpxDocument whole_;
    std::size_t notices_ = 0;
};

TEST_P(CompleteFaultsTest, OneRequestToOperatorNew) {
    ReadWithEachRefused("new", 20, [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST_P(CompleteFaultsTest, AllFurtherRequestsToOperatorNew) {
    ReadWithEachRefused("new_on", 20, [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST_P(CompleteFaultsTest, OneRequestOfXerces) {
    ReadWithEachRefused("xerces", 1, [](std::size_t call) { return RefusedXercesMemory::AtCall(call); });
}

TEST_P(CompleteFaultsTest, OneRequestOfIcu) {
    ReadWithEachRefused("icu", 5, [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

#ifdef VEXA_FAULTS_MALLOC
TEST_P(CompleteFaultsTest, OneRequestToTheCLibrary) {
    ReadWithEachRefused("malloc", 20, [](std::size_t call) { return RefusedMalloc::AtCall(call); });
}
#endif

INSTANTIATE_TEST_SUITE_P(Ways, CompleteFaultsTest,
                         testing::Values(Way{"Plain", "", false}, Way{"UntrustedPlain", "", true},
                                         Way{"Events", "<?xml version='1.0' encoding='ISO-8859-1'?>", false},
                                         Way{"UntrustedEvents", "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                             true},
                                         Way{"DocumentType", "<!DOCTYPE gpx>", false}),
                         [](const auto& way) { return std::string(way.param.name); });

constexpr std::size_t kPoints = 10000;

Reading ReadWith(CFileFaults& faults, const GpxFile& file) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.SetComplete();
        const CFileFaultsScope scope(faults);
        parser.Parse(file.Path(), document);
    });
}

class CompleteFileFaultsTest : public testing::TestWithParam<const char*> {
protected:
    GpxFile file_{GetParam() + Gpx11(Repeat("<wpt lat='1' lon='2'><ele>100</ele></wpt>", kPoints))};
};

INSTANTIATE_TEST_SUITE_P(Ways, CompleteFileFaultsTest,
                         testing::Values("", "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                         "<!DOCTYPE gpx>"));

TEST_P(CompleteFileFaultsTest, AFileThatBreaksOrEndsEarlyIsRefusedAndTheDocumentLeftUntouched) {
    for (const CFileFaults::Read kind : {CFileFaults::Read::kFails, CFileFaults::Read::kEnds}) {
        const std::size_t descriptors = OpenDescriptors();
        std::size_t refused = 0;
        for (std::size_t read = 1; refused + 1 == read; ++read) {
            CFileFaults faults;
            faults.faultyRead = read;
            faults.read = kind;
            const Reading reading = ReadWith(faults, file_);
            EXPECT_EQ(reading.written, "");
            if (reading.error.empty()) {
                EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
                continue;
            }
            ++refused;
            EXPECT_NE(reading.error.find(ParseErrorsMessage(file_.NarrowPath())), std::string::npos);
            EXPECT_TRUE(IsSameModel(UsedDocument(), reading.document));
        }
        // A plain file is read at once.
        EXPECT_GT(refused, 0U);
        EXPECT_EQ(OpenDescriptors(), descriptors);
    }
}

TEST_P(CompleteFileFaultsTest, ReadingGoesOnAfterSignals) {
    CFileFaults faults;
    faults.interruptsReads = true;
    const Reading reading = ReadWith(faults, file_);
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(reading.document.GetWaypointCount(), kPoints);
    EXPECT_GT(faults.interruptions, 100U);
}

} // namespace
} // namespace vexaTransferLib
