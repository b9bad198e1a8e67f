// SPDX-License-Identifier: MIT
#include "support/comparison/GpxFields.h"

namespace vexaTransferLib::testing_support {
namespace {

using enum FieldForm;

constexpr Field kAuthorFields[] = {
    {"name", kText, "name"},
    {"email", kEmail, "email"},
    {"link", kLink, "link"},
};
constexpr FieldGroup kAuthor = {kAuthorFields, false};

constexpr Field kMetadataFields[] = {
    {"name", kText, "name"},           {"desc", kText, "desc"},       {"author", kGroup, "author", &kAuthor},
    {"copyright", kText, "copyright"}, {"link", kLink, "link"},       {"time", kTime, "time"},
    {"keywords", kText, "keywords"},   {"bounds", kBounds, "bounds"},
};
constexpr FieldGroup kMetadata = {kMetadataFields, true};

// GPX 1.0 has course and speed for track points; files have them in all points, and in GPX 1.1 too.
constexpr Field kPointFields[] = {
    {"ele", kNumber, "ele"},       {"time", kTime, "time"},       {"course", kNumber, "course"},
    {"speed", kNumber, "speed"},   {"magvar", kNumber, "magvar"}, {"geoidheight", kNumber, "geoidheight"},
    {"name", kText, "name"},       {"cmt", kText, "cmt"},         {"desc", kText, "desc"},
    {"src", kText, "src"},         {"link", kLink, "link"},       {"url", kUrl, "link"},
    {"urlname", kUrlName, "link"}, {"sym", kText, "sym"},         {"type", kText, "type"},
    {"fix", kText, "fix"},         {"sat", kNumber, "sat"},       {"hdop", kNumber, "hdop"},
    {"vdop", kNumber, "vdop"},     {"pdop", kNumber, "pdop"},     {"ageofdgpsdata", kNumber, "ageofdgpsdata"},
    {"dgpsid", kNumber, "dgpsid"},
};
constexpr ObjectKind kPoint = {{kPointFields, true}, {}, true};

constexpr NamedKind kSegmentObjects[] = {{"trkpt", &kPoint}};
constexpr ObjectKind kSegment = {{{}, true}, kSegmentObjects, false};

// Of routes and tracks.
constexpr Field kLineFields[] = {
    {"name", kText, "name"},       {"cmt", kText, "cmt"},         {"desc", kText, "desc"},
    {"src", kText, "src"},         {"link", kLink, "link"},       {"url", kUrl, "link"},
    {"urlname", kUrlName, "link"}, {"number", kNumber, "number"}, {"type", kText, "type"},
};

constexpr NamedKind kRouteObjects[] = {{"rtept", &kPoint}};
constexpr ObjectKind kRoute = {{kLineFields, true}, kRouteObjects, false};
constexpr NamedKind kTrackObjects[] = {{"trkseg", &kSegment}};
constexpr ObjectKind kTrack = {{kLineFields, true}, kTrackObjects, false};

constexpr Field kDocumentFields[] = {
    {"metadata", kGroup, "metadata", &kMetadata},
    {"name", kText, "metadata/name"},
    {"desc", kText, "metadata/desc"},
    {"author", kText, "metadata/author/name"},
    {"email", kEmail, "metadata/author/email"},
    {"url", kUrl, "metadata/link"},
    {"urlname", kUrlName, "metadata/link"},
    {"time", kTime, "metadata/time"},
    {"keywords", kText, "metadata/keywords"},
    {"bounds", kBounds, "metadata/bounds"},
};
constexpr NamedKind kDocumentObjects[] = {{"wpt", &kPoint}, {"rte", &kRoute}, {"trk", &kTrack}};
constexpr ObjectKind kDocument = {{kDocumentFields, true}, kDocumentObjects, false};

} // namespace

const ObjectKind& DocumentKind() {
    return kDocument;
}

} // namespace vexaTransferLib::testing_support
