// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/TextCheck.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/PieceOutput.h>

#include <common/dbc.h>

#include <unicode/utf16.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;

/// Checks the texts of one object after another.
class TextChecker {
public:
    void SetObject(const char* kind, std::size_t number) {
        kind_ = kind;
        number_ = number;
        segment_ = 0;
        point_ = 0;
    }
    void SetSegment(std::size_t segment) {
        segment_ = segment;
        point_ = 0;
    }
    void SetPoint(std::size_t point) { point_ = point; }

    void Check(const char* field, const icu::UnicodeString& text) const {
        if (const std::optional<char32_t> character = FirstUnwritable(text))
            Refuse(field, *character);
    }
    void Check(const GpxUrl* link) const {
        if (link == nullptr)
            return;
        Check("link", Access::GetUrl(*link));
        Check("text of the link", Access::GetText(*link));
        Check("type of the link", Access::GetType(*link));
    }
    void Check(const GpxPoint& point) const {
        const auto* const rare = Access::GetRareData(point);
        if (rare == nullptr)
            return;
        Check("name", rare->name);
        Check("comment", rare->comment);
        Check("description", rare->description);
        Check("source", rare->source);
        Check("symbol", rare->symbol);
        Check("type", rare->type);
        Check("identifier", rare->guid);
        Check(rare->url.get());
        for (const auto& [key, record] : rare->formAttributes) {
            Check("key of a form field", key);
            Check("form field", record->value);
        }
        if (rare->geocache)
            Check(*rare->geocache);
    }

private:
    void Check(const GpxGroundspeakCache& cache) const {
        Check("name of the geocache", cache.name);
        Check("owner of the geocache", cache.owner);
        Check("type of the geocache", cache.type);
        Check("container of the geocache", cache.container);
        Check("difficulty of the geocache", cache.difficulty);
        Check("terrain of the geocache", cache.terrain);
        Check("short description of the geocache", cache.short_description);
        Check("long description of the geocache", cache.long_description);
        Check("hint of the geocache", cache.encoded_hints);
        for (const GpxGroundspeakCacheLog& log : cache.logs) {
            Check("date of a log", log.date);
            Check("type of a log", log.type);
            Check("finder of a log", log.finder);
            Check("text of a log", log.text);
        }
        for (const icu::UnicodeString& bug : cache.travelbugs)
            Check("name of a travel bug", bug);
    }

    [[noreturn]] void Refuse(const char* field, char32_t character) const {
        std::array<char, 16> code;
        std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(character));
        std::string object = kind_;
        if (number_ != 0)
            object += ' ' + std::to_string(number_);
        if (segment_ != 0)
            object = "segment " + std::to_string(segment_) + " of " + object;
        if (point_ != 0)
            object = "point " + std::to_string(point_) + " of " + object;
        throw dbc::precondition_error("The " + std::string(field) + " of " + object +
                                      " has a character that XML cannot hold: " + code.data() + '.');
    }

    const char* kind_ = "the document";
    std::size_t number_ = 0;
    std::size_t segment_ = 0;
    std::size_t point_ = 0;
};

template <class Points>
void CheckPoints(TextChecker& checker, const Points& points) {
    std::size_t number = 0;
    for (const GpxPoint& point : points) {
        checker.SetPoint(++number);
        checker.Check(point);
    }
}

void CheckDocument(const TextChecker& checker, const GpxDocument& document) {
    checker.Check("name", Access::GetName(document));
    if (const auto& layer = Access::GetGISMetaData(document)) {
        checker.Check("layer name", layer->layerName);
        checker.Check("layer key", layer->layerKey);
        checker.Check("form", layer->form);
    }
    if (const auto& annotation = Access::GetAnnotateMetaData(document)) {
        checker.Check("track identifier", annotation->trackGUID);
        checker.Check("waypoint identifier", annotation->waypointGUID);
    }
}

void CheckRoute(TextChecker& checker, const GpxRoute& route) {
    checker.Check("name", Access::GetName(route));
    checker.Check("source", Access::GetSource(route));
    checker.Check("type", Access::GetType(route));
    CheckPoints(checker, Access::GetPoints(route));
}

void CheckTrack(TextChecker& checker, const GpxTrack& track) {
    checker.Check("name", Access::GetName(track));
    checker.Check("description", Access::GetDescription(track));
    checker.Check("source", Access::GetSource(track));
    checker.Check("type", Access::GetType(track));
    checker.Check(Access::GetLink(track));
    std::size_t number = 0;
    for (const GpxTrack::Segment& segment : Access::GetSegments(track)) {
        checker.SetSegment(++number);
        CheckPoints(checker, segment);
    }
}

} // namespace

std::optional<char32_t> FirstUnwritable(const icu::UnicodeString& text) {
    const char16_t* const units = text.getBuffer();
    const std::int32_t length = text.length();
    for (std::int32_t i = 0; i < length;) {
        char32_t character = 0;
        U16_NEXT(units, i, length, character);
        if (!IsXmlCharacter(character))
            return character;
    }
    return std::nullopt;
}

void CheckTexts(const GpxDocument& document, const icu::UnicodeString& creator) {
    TextChecker checker;
    checker.Check("creator", creator);
    CheckDocument(checker, document);
    std::size_t number = 0;
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        checker.SetObject("waypoint", ++number);
        checker.Check(*point);
    }
    number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        checker.SetObject("route", ++number);
        CheckRoute(checker, *route);
    }
    number = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        checker.SetObject("track", ++number);
        CheckTrack(checker, *track);
    }
}

} // namespace vexaTransferLib::standard
