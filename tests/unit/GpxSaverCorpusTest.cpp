// SPDX-License-Identifier: MIT

// Files of many programs, read completely, changed in many ways and saved: what is read again is what was saved.
#include <vexaTransferLib/GpxSaver.h>

#include "support/StandardWriting.h"
#include "support/TestFiles.h"
#include "support/comparison/CanonicalXml.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;

const fs::path kCorpus = fs::path(VEXA_SHARED) / "corpus" / "gpx";

std::vector<fs::path> FilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::is_directory(folder))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".gpx")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string NameOf(const testing::TestParamInfo<fs::path>& file) {
    std::string name = file.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name + "_" + std::to_string(file.index);
}

/// One way to change a document.
struct Change {
    const char* name;
    void (*apply)(GpxDocument&);
};

template <class Apply>
void ForEachPoint(GpxDocument& document, Apply apply) {
    for (GpxPoint& point : document.EditWaypoints())
        apply(point);
    for (GpxRoute& route : document.EditRoutes())
        for (GpxPoint& point : route.EditPoints())
            apply(point);
    for (GpxTrack& track : document.EditTracks())
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            for (GpxPoint& point : track.EditPoints(i))
                apply(point);
}

template <class Apply>
void ForEachList(GpxDocument& document, Apply apply) {
    apply(document.EditWaypoints());
    for (GpxRoute& route : document.EditRoutes())
        apply(route.EditPoints());
    for (GpxTrack& track : document.EditTracks())
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            apply(track.EditPoints(i));
}

const Change kChanges[] = {
    {"nothing", [](GpxDocument&) {}},
    {"positions",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) { point.SetPoint(1.5, -2.25); });
     }},
    {"elevations",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) { point.SetElevation(0.125); });
     }},
    {"no elevations",
     [](GpxDocument& document) { ForEachPoint(document, [](GpxPoint& point) { point.ClearElevation(); }); }},
    {"times",
     [](GpxDocument& document) { ForEachPoint(document, [](GpxPoint& point) { point.SetTime(1e12); }); }},
    {"no times",
     [](GpxDocument& document) { ForEachPoint(document, [](GpxPoint& point) { point.ClearTime(); }); }},
    {"names",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) { point.SetName(u"<a> & \"b\" \U0001F600"); });
     }},
    {"all texts",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) {
             point.SetComment(u"c");
             point.SetDescription(u"d");
             point.SetSource(u"s");
             point.SetSymbol(u"y");
             point.SetType(u"t");
         });
     }},
    {"no texts",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) {
             point.ClearName();
             point.ClearComment();
             point.ClearDescription();
             point.ClearSource();
             point.ClearSymbol();
             point.ClearType();
         });
     }},
    {"numbers",
     [](GpxDocument& document) {
         ForEachPoint(document, [](GpxPoint& point) {
             point.SetMagneticVariation(12.5);
             point.SetGeoidHeight(-40);
             point.SetFix(kGpxFix3D);
         });
     }},
    {"links",
     [](GpxDocument& document) {
         GpxUrl link(u"http://example.org/?a=1&b='2'");
         link.SetUrlText(u"x < y");
         ForEachPoint(document, [&](GpxPoint& point) { point.SetURL(link); });
         for (GpxTrack& track : document.EditTracks())
             track.SetURL(link);
     }},
    {"forms",
     [](GpxDocument& document) {
         for (GpxPoint& point : document.EditWaypoints()) {
             point.ClearFormAttributes();
             point.SetFormAttribute(u"k", u"<v>", 1e12);
         }
     }},
    {"geocaches",
     [](GpxDocument& document) {
         for (GpxPoint& point : document.EditWaypoints()) {
             GpxGroundspeakCache cache;
             point.GetGroundspeakCache(cache);
             cache.name = u"A & B";
             cache.terrain = u"4.5";
             cache.encoded_hints.remove();
             std::reverse(cache.logs.begin(), cache.logs.end());
             GpxGroundspeakCacheLog log;
             log.id = 17;
             log.finder = u"me";
             log.text = u"]]>";
             cache.logs.insert(cache.logs.begin(), log);
             if (cache.logs.size() > 3)
                 cache.logs.erase(cache.logs.begin() + 2);
             if (cache.logs.size() > 2)
                 cache.logs.back().text = u"new";
             cache.travelbugs.push_back(u"bug");
             point.SetGroundspeakCache(cache);
         }
     }},
    {"no geocaches",
     [](GpxDocument& document) {
         for (GpxPoint& point : document.EditWaypoints())
             point.ClearGroundspeakCache();
     }},
    {"reversed", [](GpxDocument& document) { ForEachList(document, [](auto list) { list.Reverse(); }); }},
    {"every second removed",
     [](GpxDocument& document) {
         ForEachList(document, [](auto list) {
             std::size_t index = 0;
             list.RemoveIf([&](const GpxPoint&) { return index++ % 2 == 0; });
         });
     }},
    {"all removed",
     [](GpxDocument& document) {
         ForEachList(document, [](auto list) { list.Remove(0, list.GetCount()); });
     }},
    {"copies inserted",
     [](GpxDocument& document) {
         ForEachList(document, [](auto list) {
             if (list.GetCount() == 0)
                 return;
             list.Insert(0, list[list.GetCount() - 1]);
             list.Insert(list.GetCount() / 2, list[0]);
             list.Append(list[0]);
         });
     }},
    {"new points",
     [](GpxDocument& document) {
         for (std::size_t i = 0; i < 3; ++i) {
             GpxPoint waypoint(kGpxWaypoint, 1, 2);
             waypoint.SetName(u"new");
             document.EditWaypoints().Insert(document.GetWaypointCount() / 2, waypoint);
             for (GpxTrack& track : document.EditTracks())
                 for (std::size_t s = 0; s < track.GetSegmentCount(); ++s)
                     track.EditPoints(s).Insert(track.EditPoints(s).GetCount() / 2,
                                                GpxPoint(kGpxTrackPoint, 1, 2));
         }
     }},
    {"new path",
     [](GpxDocument& document) {
         GpxTrack track;
         track.SetName(u"new");
         track.AddSegment();
         track.AddPoint(GpxPoint(kGpxTrackPoint, 3, 4));
         document.EditTracks().Insert(0, track);
         GpxRoute route(kTarvikRouteStandard);
         route.AddPoint(GpxPoint(kGpxRoutePoint, 5, 6));
         document.AddRoute(route);
     }},
    {"texts of paths",
     [](GpxDocument& document) {
         for (GpxTrack& track : document.EditTracks()) {
             track.SetName(u"name");
             track.SetDescription(u"description");
             track.SetSource(u"source");
         }
         for (GpxRoute& route : document.EditRoutes()) {
             route.ClearName();
             route.SetSource(u"source");
         }
     }},
    {"paths turned round and copied",
     [](GpxDocument& document) {
         document.EditTracks().Reverse();
         document.EditRoutes().Reverse();
         if (document.GetTrackCount() != 0)
             document.AddTrack(document.GetTracks()[0]);
     }},
    {"segments split",
     [](GpxDocument& document) {
         for (GpxTrack& track : document.EditTracks())
             for (std::size_t i = track.GetSegmentCount(); i-- != 0;)
                 track.SplitSegment(i, track.GetSegments()[i].size() / 2);
     }},
    {"segments joined",
     [](GpxDocument& document) {
         for (GpxTrack& track : document.EditTracks())
             while (track.GetSegmentCount() > 1)
                 track.JoinSegments(0);
     }},
    {"tracks split and turned round",
     [](GpxDocument& document) {
         for (std::size_t i = document.GetTrackCount(); i-- != 0;) {
             GpxTrack& track = document.EditTracks()[i];
             track.Reverse();
             GpxTrack rest = track.SplitOff(track.GetSegmentCount() / 2);
             document.EditTracks().Insert(i + 1, std::move(rest));
         }
     }},
    {"tracks joined",
     [](GpxDocument& document) {
         while (document.GetTrackCount() > 1) {
             document.EditTracks()[0].AppendSegments(document.GetTracks()[1]);
             document.EditTracks().Remove(1);
         }
     }},
    {"name and time",
     [](GpxDocument& document) {
         document.SetName(u"A & B");
         document.SetDocumentTime(1e12);
     }},
    {"no name and time",
     [](GpxDocument& document) {
         document.ClearName();
         document.ClearDocumentTime();
     }},
    {"nothing left",
     [](GpxDocument& document) {
         document.EditWaypoints().Remove(0, document.GetWaypointCount());
         document.EditRoutes().Remove(0, document.GetRouteCount());
         document.EditTracks().Remove(0, document.GetTrackCount());
     }},
};

// Whether the document has the bytes of its file.
bool IsFile(const GpxDocument& document) {
    return GpxModelAccess::GetSource(document.GetElement())->IsFile();
}

class GpxSaverCorpusTest : public testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        bytes_ = ReadBytes(GetParam());
        try {
            document_ = ReadCompletely(bytes_);
        } catch (const GpxReadError& error) {
            GTEST_SKIP() << "this file cannot be read: " << error.what();
        }
    }

    std::string bytes_;
    GpxDocument document_;
};

TEST_P(GpxSaverCorpusTest, AnUnchangedFileIsSavedByteForByte) {
    const std::string saved = GpxSaver().GetText(document_);
    if (IsFile(document_)) {
        EXPECT_TRUE(saved == bytes_);
    }
    EXPECT_TRUE(ReadCompletely(saved) == document_);
}

TEST_P(GpxSaverCorpusTest, AnUnchangedFileInAnotherEncodingHasTheSameCanonicalXml) {
    if (IsFile(document_))
        GTEST_SKIP() << "this file is saved byte for byte";
    std::string canonical;
    try {
        canonical = CanonicalXml(bytes_);
    } catch (const std::runtime_error& error) {
        GTEST_SKIP() << "libxml2 does not read this file: " << error.what();
    }
    EXPECT_EQ(CanonicalXml(GpxSaver().GetText(document_)), canonical);
}

TEST_P(GpxSaverCorpusTest, WhatIsReadAgainIsWhatWasSaved) {
    for (const Change& change : kChanges) {
        GpxDocument changed = document_;
        change.apply(changed);
        const std::string saved = GpxSaver().GetText(changed);
        GpxDocument again;
        ASSERT_NO_THROW(again = ReadCompletely(saved)) << change.name;
        EXPECT_TRUE(again == changed) << change.name;
        if (IsFile(again)) {
            EXPECT_TRUE(GpxSaver().GetText(again) == saved) << change.name;
        }
    }
}

TEST_P(GpxSaverCorpusTest, WhatIsChangedBackIsTheSameFile) {
    GpxDocument changed = document_;
    ForEachList(changed, [](auto list) { list.Reverse(); });
    ForEachList(changed, [](auto list) { list.Reverse(); });
    ForEachPoint(changed, [](GpxPoint& point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        point.SetPoint(0.5, 0.5);
        point.SetPoint(latitude, longitude);
    });
    EXPECT_TRUE(GpxSaver().GetText(changed) == GpxSaver().GetText(document_));
}

INSTANTIATE_TEST_SUITE_P(Corpus, GpxSaverCorpusTest, testing::ValuesIn(FilesBelow(kCorpus)), NameOf);
INSTANTIATE_TEST_SUITE_P(TestData, GpxSaverCorpusTest, testing::ValuesIn(FilesBelow(VEXA_TEST_DATA)), NameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(GpxSaverCorpusTest);

} // namespace
} // namespace vexaTransferLib
