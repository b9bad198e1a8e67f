// SPDX-License-Identifier: MIT

// A host: writes a document, reads it back, and catches what the library throws.
//   consumer FILE

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/Version.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

using namespace vexaTransferLib;

// The library leaves the host's language standard as it is.
static_assert(__cplusplus / 100 == CONSUMER_STANDARD);

// The library's headers give its version to the preprocessor.
#if VEXATRANSFERLIB_VERSION_NUMBER < VEXATRANSFERLIB_MAKE_VERSION(0, 1, 0)
#error "0.1.0 is the first version"
#endif
static_assert(VEXATRANSFERLIB_MAKE_VERSION(0, 2, 0) > VEXATRANSFERLIB_MAKE_VERSION(0, 1, 999));
static_assert(VEXATRANSFERLIB_MAKE_VERSION(1, 0, 0) > VEXATRANSFERLIB_MAKE_VERSION(0, 999, 999));

namespace {

int failures = 0;

void Expect(bool holds, const std::string& what) {
    std::printf("%s: %s\n", holds ? "ok" : "FAILED", what.c_str());
    if (!holds)
        ++failures;
}

enum class Caught { nothing, precondition, postcondition, invariant, otherLogic, runtime, other };

struct Outcome {
    Caught caught;
    std::string message;
};

/// The catch clause that catches the exception of an action.
template <class Action>
Outcome Run(Action action) {
    try {
        action();
    } catch (const dbc::precondition_error& error) {
        return {Caught::precondition, error.what()};
    } catch (const dbc::postcondition_error& error) {
        return {Caught::postcondition, error.what()};
    } catch (const dbc::invariant_error& error) {
        return {Caught::invariant, error.what()};
    } catch (const std::logic_error& error) {
        return {Caught::otherLogic, error.what()};
    } catch (const std::runtime_error& error) {
        return {Caught::runtime, error.what()};
    } catch (...) {
        return {Caught::other, "not a standard exception"};
    }
    return {Caught::nothing, ""};
}

template <class Action>
void ExpectError(Caught caught, const std::string& message, Action action) {
    const Outcome outcome = Run(action);
    Expect(outcome.caught == caught && outcome.message == message,
           message + (outcome.message == message ? "" : ", not: " + outcome.message));
}

/// The package that the build found states the same version as the headers, whole and in parts.
void ExpectVersion() {
    const std::string parts = std::to_string(VEXATRANSFERLIB_VERSION_MAJOR) + '.' +
                              std::to_string(VEXATRANSFERLIB_VERSION_MINOR) + '.' +
                              std::to_string(VEXATRANSFERLIB_VERSION_PATCH);
    Expect(std::string(VEXATRANSFERLIB_VERSION) == CONSUMER_VERSION && parts == CONSUMER_VERSION,
           "the version of headers and package: " CONSUMER_VERSION);
}

GpxDocument MakeDocument() {
    GpxDocument document;
    GpxPoint waypoint(kGpxWaypoint, 47.5, -122.25);
    waypoint.SetName(u"Caf\u00e9 & <Bar>");
    waypoint.SetElevation(35.5);
    GpxGroundspeakCache cache;
    cache.name = u"Under the bridge";
    waypoint.SetGroundspeakCache(cache);
    document.AddWaypoint(waypoint);

    GpxRoute route(kTarvikRouteDirections);
    GpxPoint turn(kGpxRoutePoint, 47.25, -122.5);
    turn.SetTarvikRoutePointType(kTarvikRoutePointTurn);
    route.AddPoint(turn);
    document.AddRoute(route);

    GpxTrack track;
    track.AddSegment();
    track.AddPoint(GpxPoint(kGpxTrackPoint, -33.5, 151.25));
    document.AddTrack(track);
    return document;
}

void ExpectSameAsMade(const GpxDocument& document) {
    Expect(document.GetWaypointCount() == 1 && document.GetRouteCount() == 1 && document.GetTrackCount() == 1,
           "one waypoint, one route, one track");
    if (failures > 0)
        return;

    const GpxPoint& waypoint = *document.GetWaypointIter();
    icu::UnicodeString name;
    double elevation = 0.0;
    GpxGroundspeakCache cache;
    Expect(waypoint.GetName(name) && name == u"Caf\u00e9 & <Bar>", "the waypoint's name");
    Expect(waypoint.GetElevation(elevation) && !(elevation < 35.5) && !(elevation > 35.5), "its elevation");
    Expect(waypoint.GetGroundspeakCache(cache) && cache.name == u"Under the bridge", "its geocache");

    const GpxRoute& route = *document.GetRouteIter();
    TarvikRouteType routeType = kTarvikRouteStandard;
    TarvikRoutePointType pointType = kTarvikRoutePointStart;
    Expect(route.GetTarvikRouteType(routeType) && routeType == kTarvikRouteDirections, "the route's type");
    Expect(route.GetPointCount() == 1 && route.GetPointIter()->GetTarvikRoutePointType(pointType) &&
               pointType == kTarvikRoutePointTurn,
           "the route point's type");

    const GpxTrack& track = *document.GetTrackIter();
    Expect(track.GetSegmentCount() == 1 && track.GetPointCount(track.GetSegmentIter()) == 1,
           "one segment of one track point");
}

void ExpectErrors(const GpxDocument& document) {
    ExpectError(Caught::precondition, "GPX URLs must not be empty.", [] { GpxUrl(u""); });
    ExpectError(Caught::precondition, "The GPX file path was empty or invalid.", [] {
        GpxDocument read;
        GpxParser().Parse(u"", read);
    });
    ExpectError(Caught::postcondition,
                "One or more errors encountered while parsing the GPX file: /nowhere/missing.gpx", [] {
                    GpxDocument read;
                    GpxParser().Parse(u"/nowhere/missing.gpx", read);
                });
    ExpectError(Caught::postcondition,
                "Unable to create the GPX file. Target could be write protected or full.", [&document] {
                    document.WriteToFile(GpxVersion::GetLatestVersion(), u"consumer", u"https://example.org/",
                                         u"/nowhere/missing.gpx");
                });
    ExpectError(Caught::invariant,
                "The GPX Groundspeak geocache information is only available for waypoints.", [] {
                    GpxGroundspeakCache cache;
                    GpxPoint(kGpxTrackPoint, 0.0, 0.0).GetGroundspeakCache(cache);
                });
    ExpectError(Caught::runtime, "Unable to open the converter: no-such-code-page",
                [] { UnicodeStrUtils::UnicodeStringToStlString(u"text", "no-such-code-page"); });
}

/// The errors of a reading are caught by their own class and by the one that they derive from, with what they hold.
template <class Error, class Base>
void ExpectReadError(const char* bytes, GpxReadErrorKind kind, std::uint64_t line) {
    const auto read = [bytes] {
        GpxDocument document;
        GpxParser().Parse(bytes, u"walk.gpx", document);
    };
    const auto isExpected = [kind, line](const GpxReadErrorDetails* details) {
        return details != nullptr && details->kind == kind && details->line == line &&
               details->file == "walk.gpx";
    };
    bool isOwn = false;
    try {
        read();
    } catch (const Error& error) {
        isOwn = isExpected(&error.Details());
    }
    bool isBase = false;
    try {
        read();
    } catch (const Base& error) {
        isBase = isExpected(FindReadErrorDetails(error));
    }
    Expect(isOwn && isBase, std::string("a typed error of ") + bytes);
}

void ExpectReadErrors() {
    ExpectReadError<GpxReadError, dbc::postcondition_error>("<gpx>\n</oops>", GpxReadErrorKind::kIllFormed,
                                                            2);
    ExpectReadError<GpxReadError, std::exception>("\n<html/>", GpxReadErrorKind::kNotGpx, 2);
    ExpectReadError<GpxReadValueError, dbc::precondition_error>("<gpx version='2'/>",
                                                                GpxReadErrorKind::kInvalidContent, 1);
    ExpectReadError<GpxReadValueError, std::logic_error>("<gpx version='3'/>",
                                                         GpxReadErrorKind::kInvalidContent, 1);
}

void ExpectWriteError() {
    const auto write = [] {
        GpxDocument().WriteToFile(GpxVersion::GetLatestVersion(), u"consumer", u"https://example.org/",
                                  u"/nowhere/missing.gpx");
    };
    bool isOwn = false;
    try {
        write();
    } catch (const GpxWriteError& error) {
        isOwn = error.Details().systemError == ENOENT && error.Details().file == "/nowhere/missing.gpx";
    }
    Expect(isOwn && Run(write).caught == Caught::postcondition, "a typed error of writing");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    ExpectVersion();
    xercesc::XMLPlatformUtils::Initialize();
    const Outcome outcome = Run([path = icu::UnicodeString::fromUTF8(argv[1])] {
        const GpxDocument document = MakeDocument();
        document.WriteToFile(GpxVersion::GetLatestVersion(), u"consumer", u"https://example.org/", path);
        GpxDocument read;
        GpxParser().Parse(path, read);
        ExpectSameAsMade(read);
        ExpectErrors(document);
        ExpectReadErrors();
        ExpectWriteError();
    });
    Expect(outcome.caught == Caught::nothing, "nothing else is thrown " + outcome.message);
    xercesc::XMLPlatformUtils::Terminate();
    return failures == 0 ? 0 : 1;
}
