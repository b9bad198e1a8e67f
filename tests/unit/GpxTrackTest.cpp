// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <string>
#include <type_traits>
#include <utility>

using namespace vexaTransferLib;
using testing_support::Utf8;
using testing_support::Written;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxTrack.cpp";
constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
constexpr char kNotATrackPoint[] = "Only track points can be added to GPX tracks.";
constexpr char kNoSegment[] = "A GPX track needs a segment before points can be added.";

static_assert(std::has_virtual_destructor_v<GpxTrack>);
static_assert(std::is_nothrow_move_constructible_v<GpxTrack>);
static_assert(std::is_nothrow_move_assignable_v<GpxTrack>);

struct TextField {
    const char* name;
    bool (GpxTrack::*get)(icu::UnicodeString&) const;
    void (GpxTrack::*set)(const icu::UnicodeString&);
    const char* message;
};

constexpr TextField kTextFields[] = {
    {"name", &GpxTrack::GetName, &GpxTrack::SetName, "The GPX track name cannot be empty."},
    {"description", &GpxTrack::GetDescription, &GpxTrack::SetDescription,
     "The GPX track description cannot be empty."},
    {"source", &GpxTrack::GetSource, &GpxTrack::SetSource, "The GPX track source cannot be empty."},
    {"type", &GpxTrack::GetType, &GpxTrack::SetType, "The GPX track type cannot be empty."},
};

GpxPoint TrackPoint(const char16_t* name) {
    GpxPoint point(kGpxTrackPoint, 1.0, 2.0);
    point.SetName(name);
    return point;
}

// "a b | | c" for two points, an empty segment and one point.
std::string Shape(const GpxTrack& track) {
    icu::UnicodeString shape;
    for (GpxTrack::SegmentIterator segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter();
         ++segment) {
        EXPECT_EQ(track.GetPointEndIter(segment) - track.GetPointIter(segment),
                  static_cast<std::ptrdiff_t>(track.GetPointCount(segment)));
        for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point) {
            icu::UnicodeString name(u"?");
            point->GetName(name);
            shape += name + u" ";
        }
        shape += u"| ";
    }
    return Utf8(shape);
}

GpxTrack FullTrack() {
    GpxTrack track;
    for (const TextField& field : kTextFields)
        (track.*field.set)(u"text");
    track.SetURL(GpxUrl(u"http://a/"));
    GpxModelAccess::SetColor(track, 7);
    track.AddSegment();
    track.AddPoint(TrackPoint(u"a"));
    track.AddSegment();
    track.AddPoint(TrackPoint(u"b"));
    return track;
}

} // namespace

TEST(GpxTrackTest, StartsEmpty) {
    const GpxTrack track;
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        icu::UnicodeString out(u"before");
        EXPECT_FALSE((track.*field.get)(out));
        EXPECT_EQ(Utf8(out), "before");
    }
    GpxUrl url(u"before");
    EXPECT_FALSE(track.GetURL(url));
    EXPECT_EQ(Utf8(url.GetUrl()), "before");
    EXPECT_EQ(GpxModelAccess::GetColor(track), -1);
    EXPECT_EQ(track.GetSegmentCount(), 0U);
    EXPECT_EQ(track.GetSegmentIter(), track.GetSegmentEndIter());
}

TEST(GpxTrackTest, TextsAreSetOneByOneAndReplaced) {
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        GpxTrack track;
        (track.*field.set)(u"first");
        (track.*field.set)(u" ");
        for (const TextField& other : kTextFields) {
            icu::UnicodeString out(u"before");
            EXPECT_EQ((track.*other.get)(out), other.get == field.get);
            EXPECT_EQ(Utf8(out), other.get == field.get ? " " : "before");
        }
    }
}

TEST(GpxTrackTest, TextSettersRefuseAnEmptyTextAndKeepTheOld) {
    GpxTrack track = FullTrack();
    const std::string before = Written(track);
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        EXPECT_FAILURE((track.*field.set)(u""), dbc::precondition_error, field.message, kUtilsSource);
    }
    EXPECT_EQ(Written(track), before);
}

TEST(GpxTrackTest, LinkIsCopiedInAndOutAndReplaced) {
    GpxTrack track;
    GpxUrl url(u"http://a/");
    track.SetURL(url);
    url.SetUrlText(u"changed");
    GpxUrl out(u"x");
    icu::UnicodeString text;
    EXPECT_TRUE(track.GetURL(out));
    EXPECT_EQ(Utf8(out.GetUrl()), "http://a/");
    EXPECT_FALSE(out.GetUrlText(text));
    track.SetURL(url);
    EXPECT_TRUE(track.GetURL(out));
    EXPECT_TRUE(out.GetUrlText(text));
    EXPECT_EQ(Utf8(text), "changed");
}

TEST(GpxTrackTest, AddPointAppendsToTheNewestSegment) {
    GpxTrack track;
    const GpxPoint copied = TrackPoint(u"p2");
    track.AddSegment();
    track.AddPoint(TrackPoint(u"p1"));
    track.AddPoint(copied);
    track.AddSegment();
    track.AddPoint(TrackPoint(u"p3"));
    ASSERT_EQ(track.GetSegmentCount(), 2U);
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter()), 2U);
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter() + 1), 1U);
    EXPECT_EQ(Shape(track), "p1 p2 | p3 | ");
    EXPECT_EQ(Written(copied), Written(*(track.GetPointIter(track.GetSegmentIter()) + 1)));
}

TEST(GpxTrackTest, SegmentsMayBeEmpty) {
    GpxTrack track;
    track.AddSegment();
    track.AddSegment();
    ASSERT_EQ(track.GetSegmentCount(), 2U);
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter()), 0U);
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter() + 1), 0U);
}

TEST(GpxTrackTest, RefusesOtherPoints) {
    for (const GpxPointType type : {kGpxWaypoint, kGpxRoutePoint}) {
        GpxTrack track;
        const GpxPoint point(type, 1.0, 2.0);
        EXPECT_FAILURE(track.AddPoint(point), dbc::precondition_error, kNotATrackPoint, kSource);
        track.AddSegment();
        EXPECT_FAILURE(track.AddPoint(point), dbc::precondition_error, kNotATrackPoint, kSource);
        EXPECT_FAILURE(track.AddPoint(GpxPoint(point)), dbc::precondition_error, kNotATrackPoint, kSource);
        EXPECT_EQ(Shape(track), "| ");
    }
}

TEST(GpxTrackTest, RefusesAPointWithoutASegment) {
    GpxTrack track;
    const GpxPoint point = TrackPoint(u"p");
    EXPECT_FAILURE(track.AddPoint(point), dbc::precondition_error, kNoSegment, kSource);
    EXPECT_FAILURE(track.AddPoint(GpxPoint(point)), dbc::precondition_error, kNoSegment, kSource);
    EXPECT_EQ(track.GetSegmentCount(), 0U);
}

TEST(GpxTrackTest, RefusedPointIsNotMovedFrom) {
    GpxTrack track;
    GpxPoint point = TrackPoint(u"p");
    const std::string before = Written(point);
    EXPECT_FAILURE(track.AddPoint(std::move(point)), dbc::precondition_error, kNoSegment, kSource);
    EXPECT_EQ(Written(point), before);
}

TEST(GpxTrackTest, APointOfItsOwnCanBeAddedAgain) {
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(TrackPoint(u"x"));
    for (int i = 0; i < 5; ++i)
        track.AddPoint(*track.GetPointIter(track.GetSegmentIter()));
    EXPECT_EQ(Shape(track), "x x x x x x | ");
}

TEST(GpxTrackTest, CopiesAreDeepAndKeepColourLinkAndSegments) {
    GpxTrack track = FullTrack();
    const std::string before = Written(track);
    const GpxTrack copy(track);
    GpxTrack assigned;
    EXPECT_EQ(&(assigned = track), &assigned);
    track.SetName(u"changed");
    track.SetURL(GpxUrl(u"changed"));
    track.AddPoint(TrackPoint(u"c"));
    track.AddSegment();
    GpxModelAccess::SetColor(track, 8);
    for (const GpxTrack& other : {copy, assigned}) {
        EXPECT_EQ(Written(other), before);
        EXPECT_EQ(GpxModelAccess::GetColor(other), 7);
        EXPECT_EQ(Shape(other), "a | b | ");
        GpxUrl url(u"x");
        EXPECT_TRUE(other.GetURL(url));
        EXPECT_EQ(Utf8(url.GetUrl()), "http://a/");
    }
}

TEST(GpxTrackTest, AssignmentMakesTheLinkAbsentAgain) {
    GpxTrack track = FullTrack();
    track = GpxTrack();
    GpxUrl url(u"x");
    EXPECT_FALSE(track.GetURL(url));
    EXPECT_EQ(Written(track), Written(GpxTrack()));
    EXPECT_EQ(GpxModelAccess::GetColor(track), -1);
}

TEST(GpxTrackTest, AssignmentToItselfDoesNothing) {
    GpxTrack track = FullTrack();
    const std::string before = Written(track);
    const GpxTrack& same = track;
    EXPECT_EQ(&(track = same), &track);
    EXPECT_EQ(Written(track), before);
}

TEST(GpxTrackTest, MovesCarryEverything) {
    const std::string before = Written(FullTrack());
    GpxTrack track = FullTrack();
    GpxTrack moved(std::move(track));
    EXPECT_EQ(Written(moved), before);
    GpxTrack assigned;
    assigned = std::move(moved);
    EXPECT_EQ(Written(assigned), before);
}

TEST(GpxTrackTest, TextsAndLinkAreCleared) {
    GpxTrack track = FullTrack();
    track.ClearName();
    track.ClearDescription();
    track.ClearSource();
    track.ClearType();
    track.ClearURL();
    for (const TextField& field : kTextFields) {
        icu::UnicodeString out(u"before");
        EXPECT_FALSE((track.*field.get)(out)) << field.name;
        EXPECT_EQ(Utf8(out), "before");
    }
    GpxUrl url(u"x");
    EXPECT_FALSE(track.GetURL(url));
    EXPECT_EQ(Shape(track), "a | b | ");
}

TEST(GpxTrackTest, SegmentsAreInsertedMovedAndRemoved) {
    GpxTrack track = FullTrack();
    track.InsertSegment(0, {TrackPoint(u"0"), TrackPoint(u"1")});
    track.InsertSegment(3, {});
    EXPECT_EQ(Shape(track), "0 1 | a | b | | ");
    track.MoveSegment(0, 2);
    EXPECT_EQ(Shape(track), "a | b | 0 1 | | ");
    track.MoveSegment(3, 1);
    EXPECT_EQ(Shape(track), "a | | b | 0 1 | ");
    track.RemoveSegments(1);
    track.RemoveSegments(1, 2);
    track.RemoveSegments(1, 0);
    EXPECT_EQ(Shape(track), "a | ");
}

TEST(GpxTrackTest, SegmentsAreSplitAndJoined) {
    GpxTrack track;
    track.InsertSegment(0, {TrackPoint(u"a"), TrackPoint(u"b"), TrackPoint(u"c")});
    track.SplitSegment(0, 1);
    EXPECT_EQ(Shape(track), "a | b c | ");
    track.SplitSegment(1, 2);
    track.SplitSegment(0, 0);
    EXPECT_EQ(Shape(track), "| a | b c | | ");
    track.JoinSegments(0);
    track.JoinSegments(1);
    track.JoinSegments(0);
    EXPECT_EQ(Shape(track), "a b c | ");
}

TEST(GpxTrackTest, SegmentsAreSplitAtManyPlacesAtOnce) {
    GpxTrack track;
    track.InsertSegment(0, {TrackPoint(u"a"), TrackPoint(u"b"), TrackPoint(u"c"), TrackPoint(u"d")});
    track.InsertSegment(1, {TrackPoint(u"e")});
    track.InsertSegment(2, {TrackPoint(u"f"), TrackPoint(u"g")});
    track.SplitSegments({});
    EXPECT_EQ(Shape(track), "a b c d | e | f g | ");
    track.SplitSegments({{0, 1}, {0, 3}, {0, 3}, {2, 0}, {2, 1}, {2, 2}});
    EXPECT_EQ(Shape(track), "a | b c | | d | e | | f | g | | ");
}

TEST(GpxTrackTest, SegmentsAreRemovedByACondition) {
    GpxTrack track;
    track.InsertSegment(0, {TrackPoint(u"a")});
    track.InsertSegment(1, {});
    track.InsertSegment(2, {TrackPoint(u"b"), TrackPoint(u"c")});
    const auto isEmpty = [](const GpxTrack::Segment& points) { return points.empty(); };
    EXPECT_EQ(track.RemoveSegmentsIf(isEmpty), 1U);
    EXPECT_EQ(Shape(track), "a | b c | ");
    EXPECT_EQ(track.RemoveSegmentsIf(isEmpty), 0U);
    const GpxTrack before = track;
    const auto throws = [](const GpxTrack::Segment& points) -> bool {
        return points.size() == 1 ? true : throw std::runtime_error("no");
    };
    EXPECT_THROW(track.RemoveSegmentsIf(throws), std::runtime_error);
    EXPECT_EQ(track, before);
}

TEST(GpxTrackTest, RefusesToSplitAtPlacesThatItDoesNotHave) {
    GpxTrack track;
    track.InsertSegment(0, {TrackPoint(u"a"), TrackPoint(u"b")});
    track.InsertSegment(1, {TrackPoint(u"c")});
    const GpxTrack before = track;
    constexpr char kOrder[] = "The places to split at must rise.";
    EXPECT_FAILURE(track.SplitSegments({{0, 1}, {0, 0}}), dbc::precondition_error, kOrder, kSource);
    EXPECT_FAILURE(track.SplitSegments({{1, 0}, {0, 1}}), dbc::precondition_error, kOrder, kSource);
    constexpr char kPlace[] = "There is no such place in the list.";
    constexpr char kListSource[] = "LibCore/vexaTransferLib/GpxListEditor.cpp";
    EXPECT_FAILURE(track.SplitSegments({{0, 1}, {0, 3}}), dbc::precondition_error, kPlace, kListSource);
    EXPECT_FAILURE(track.SplitSegments({{0, 1}, {2, 0}}), dbc::precondition_error, kPlace, kListSource);
    EXPECT_EQ(track, before);
}

TEST(GpxTrackTest, ReversesSegmentsAndTheirPoints) {
    GpxTrack track;
    track.InsertSegment(0, {TrackPoint(u"a"), TrackPoint(u"b")});
    track.InsertSegment(1, {TrackPoint(u"c")});
    track.Reverse();
    EXPECT_EQ(Shape(track), "c | b a | ");
}

TEST(GpxTrackTest, ATrackIsSplitWithItsTextsAndJoinedAgain) {
    GpxTrack track = FullTrack();
    const GpxTrack whole = track;
    GpxTrack rest = track.SplitOff(1);
    EXPECT_EQ(Shape(track), "a | ");
    EXPECT_EQ(Shape(rest), "b | ");
    GpxTrack texts = rest;
    texts.RemoveSegments(0);
    GpxTrack expected = whole;
    expected.RemoveSegments(0, 2);
    EXPECT_EQ(texts, expected);
    rest.SetName(u"left out");
    track.AppendSegments(rest);
    EXPECT_EQ(track, whole);
    EXPECT_EQ(Shape(GpxTrack(whole).SplitOff(2)), "");
}

TEST(GpxTrackTest, RefusesSegmentsThatItDoesNotHave) {
    GpxTrack track = FullTrack();
    const GpxTrack before = track;
    constexpr char kNone[] = "There is no such segment in the GPX track.";
    EXPECT_FAILURE(track.EditPoints(2), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.InsertSegment(3, {}), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.RemoveSegments(1, 2), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.MoveSegment(2, 0), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.MoveSegment(0, 2), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.SplitSegment(2, 0), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.SplitSegment(0, 2), dbc::precondition_error, "There is no such place in the list.",
                   "LibCore/vexaTransferLib/GpxListEditor.cpp");
    EXPECT_FAILURE(track.JoinSegments(1), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.SplitOff(3), dbc::precondition_error, kNone, kSource);
    EXPECT_FAILURE(track.InsertSegment(9, {GpxPoint(kGpxWaypoint, 1.0, 2.0)}), dbc::precondition_error,
                   kNotATrackPoint, kSource);
    EXPECT_EQ(track, before);
}

TEST(GpxTrackTest, TracksAreEqualWhenAllTheirValuesAre) {
    const GpxTrack track = FullTrack();
    EXPECT_EQ(track, FullTrack());
    for (const TextField& field : kTextFields) {
        GpxTrack other = track;
        (other.*field.set)(u"other");
        EXPECT_NE(track, other) << field.name;
    }
    GpxTrack other = track;
    other.ClearURL();
    EXPECT_NE(track, other);
    other = track;
    GpxModelAccess::SetColor(other, 8);
    EXPECT_NE(track, other);
    other = track;
    other.EditPoints(1)[0].SetElevation(1.0);
    EXPECT_NE(track, other);
    other = track;
    other.AddSegment();
    EXPECT_NE(track, other);
}
