// SPDX-License-Identifier: MIT
#include "support/comparison/GpxFields.h"

namespace vexaTransferLib::testing_support {
namespace {

using enum FieldForm;

const FieldGroup kAuthor = {
    {{"name", {kText, "name"}}, {"email", {kEmail, "email"}}, {"link", {kLink, "link"}}}, false};

const FieldGroup kMetadata = {{
                                  {"name", {kText, "name"}},
                                  {"desc", {kText, "desc"}},
                                  {"author", {kGroup, "author", &kAuthor}},
                                  {"copyright", {kText, "copyright"}},
                                  {"link", {kLink, "link"}},
                                  {"time", {kTime, "time"}},
                                  {"keywords", {kText, "keywords"}},
                                  {"bounds", {kBounds, "bounds"}},
                              },
                              true};

// GPX 1.0 has course and speed for track points; files have them in all points, and in GPX 1.1 too.
const ObjectKind kPoint = {{{
                                {"ele", {kNumber, "ele"}},
                                {"time", {kTime, "time"}},
                                {"course", {kNumber, "course"}},
                                {"speed", {kNumber, "speed"}},
                                {"magvar", {kNumber, "magvar"}},
                                {"geoidheight", {kNumber, "geoidheight"}},
                                {"name", {kText, "name"}},
                                {"cmt", {kText, "cmt"}},
                                {"desc", {kText, "desc"}},
                                {"src", {kText, "src"}},
                                {"link", {kLink, "link"}},
                                {"url", {kUrl, "link"}},
                                {"urlname", {kUrlName, "link"}},
                                {"sym", {kText, "sym"}},
                                {"type", {kText, "type"}},
                                {"fix", {kText, "fix"}},
                                {"sat", {kNumber, "sat"}},
                                {"hdop", {kNumber, "hdop"}},
                                {"vdop", {kNumber, "vdop"}},
                                {"pdop", {kNumber, "pdop"}},
                                {"ageofdgpsdata", {kNumber, "ageofdgpsdata"}},
                                {"dgpsid", {kNumber, "dgpsid"}},
                            },
                            true},
                           {},
                           true};

const ObjectKind kSegment = {{{}, true}, {{"trkpt", &kPoint}}, false};

const FieldGroup kLine = {{
                              {"name", {kText, "name"}},
                              {"cmt", {kText, "cmt"}},
                              {"desc", {kText, "desc"}},
                              {"src", {kText, "src"}},
                              {"link", {kLink, "link"}},
                              {"url", {kUrl, "link"}},
                              {"urlname", {kUrlName, "link"}},
                              {"number", {kNumber, "number"}},
                              {"type", {kText, "type"}},
                          },
                          true};

const ObjectKind kRoute = {kLine, {{"rtept", &kPoint}}, false};
const ObjectKind kTrack = {kLine, {{"trkseg", &kSegment}}, false};

const ObjectKind kDocument = {{{
                                   {"metadata", {kGroup, "metadata", &kMetadata}},
                                   {"name", {kText, "metadata/name"}},
                                   {"desc", {kText, "metadata/desc"}},
                                   {"author", {kText, "metadata/author/name"}},
                                   {"email", {kEmail, "metadata/author/email"}},
                                   {"url", {kUrl, "metadata/link"}},
                                   {"urlname", {kUrlName, "metadata/link"}},
                                   {"time", {kTime, "metadata/time"}},
                                   {"keywords", {kText, "metadata/keywords"}},
                                   {"bounds", {kBounds, "metadata/bounds"}},
                               },
                               true},
                              {{"wpt", &kPoint}, {"rte", &kRoute}, {"trk", &kTrack}},
                              false};

} // namespace

const ObjectKind& DocumentKind() {
    return kDocument;
}

} // namespace vexaTransferLib::testing_support
