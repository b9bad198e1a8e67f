// SPDX-License-Identifier: MIT
#include "support/Mutations.h"

#include <algorithm>
#include <iterator>

namespace vexaTransferLib::testing_support {

namespace {

// Pieces that change how a reader understands the place where they are put.
constexpr const char* kPieces[] = {
    "<!-- comment -->",
    "<?pi data?>",
    "<![CDATA[<b>&]]>",
    "<![CDATA[]]>",
    "&amp;",
    "&#8364;",
    "&#10;",
    "\r\n",
    "\xC3\xA9",
    "text",
    " ",
    "<name/>",
    "<name>n</name>",
    "<name>a<b>c</b>d</name>",
    "<time>2009-01-15T10:20:30Z</time>",
    "<ele>1.5</ele>",
    "<ele>none</ele>",
    "<cmt>comment</cmt>",
    "<wpt lat='1' lon='2'/>",
    "<wpt lat='1'/>",
    "<wpt lat='95' lon='2'/>",
    "<rte><rtept lat='1' lon='2'/></rte>",
    "<rte><name>r</name></rte>",
    "<trk><trkseg><trkpt lat='3' lon='4'><ele>5</ele></trkpt></trkseg></trk>",
    "<trkseg/>",
    "<trkpt lat='1' lon='2'/>",
    "<trkpt lat='x' lon='2'/>",
    "<rtept lat='1' lon='2'/>",
    "<extensions "
    "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'><t:routeType>points</t:routeType>"
    "<t:routePointType>start</t:routePointType><t:color>7</t:color><t:objectid>{g}</t:objectid></extensions>",
    "<x xmlns='http://example.org/'><wpt lat='1' lon='2'/></x>",
    "<g:cache xmlns:g='http://www.groundspeak.com/cache/1/0'><g:name>c</g:name></g:cache>",
    "<metadata><name>m</name><extensions><layername>l</layername></extensions></metadata>",
    "<!DOCTYPE gpx>",
    "<undeclared:x/>",
    "</gpx>",
    "<a>",
    "]]>",
    "&undefined;",
};

} // namespace

std::size_t Mutator::Below(std::size_t bound) {
    return bound == 0 ? 0 : random_() % bound;
}

// Finds elements of small files by their tags. A wrong match does no harm: it only makes another mutation.
std::vector<Mutator::Range> Mutator::FindElements(const std::string& xml) const {
    std::vector<Range> elements;
    std::vector<std::size_t> open;
    for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const std::size_t end = xml.find('>', at);
        if (end == std::string::npos)
            break;
        if (xml[at + 1] == '?' || xml[at + 1] == '!')
            continue;
        if (xml[at + 1] == '/') {
            if (open.empty())
                continue;
            elements.push_back({open.back(), end + 1});
            open.pop_back();
        } else if (xml[end - 1] == '/') {
            elements.push_back({at, end + 1});
        } else {
            open.push_back(at);
        }
    }
    return elements;
}

void Mutator::MutateNodes(std::string& xml) {
    const std::vector<Range> elements = FindElements(xml);
    if (elements.empty())
        return;
    const Range one = elements[Below(elements.size())];
    const Range other = elements[Below(elements.size())];
    const std::string first = xml.substr(one.begin, one.end - one.begin);
    const std::string second = xml.substr(other.begin, other.end - other.begin);
    switch (Below(4)) {
    case 0:
        xml.erase(one.begin, first.size());
        break;
    case 1:
        xml.insert(one.end, first);
        break;
    case 2: // swap, when neither lies within the other
        if (one.end <= other.begin) {
            xml.replace(other.begin, second.size(), first);
            xml.replace(one.begin, first.size(), second);
        }
        break;
    default:
        xml.insert(std::min(xml.find('>', other.begin) + 1, xml.size()), first);
        break;
    }
}

void Mutator::MutateBytes(std::string& xml) {
    if (xml.empty())
        return;
    const std::size_t at = Below(xml.size());
    const std::size_t count = 1 + Below(std::min<std::size_t>(12, xml.size() - at));
    switch (Below(4)) {
    case 0:
        xml.erase(at, count);
        break;
    case 1:
        xml.insert(at, xml.substr(at, count));
        break;
    case 2:
        xml[at] = static_cast<char>(Below(256));
        break;
    default:
        xml.insert(at, xml.substr(Below(xml.size()), count));
        break;
    }
}

// Mostly chooses a place between tags, where the result is well-formed more often.
void Mutator::InsertPiece(std::string& xml) {
    const std::string piece = kPieces[Below(std::size(kPieces))];
    const std::size_t tag = xml.find('>', Below(xml.size() + 1));
    xml.insert(tag == std::string::npos ? Below(xml.size() + 1) : tag + 1, piece);
}

std::string Mutator::Mutate(const std::string& xml) {
    std::string mutated = xml;
    for (std::size_t changes = 1 + Below(3); changes > 0; --changes) {
        const std::size_t kind = Below(10);
        if (kind < 4)
            MutateNodes(mutated);
        else if (kind < 9)
            InsertPiece(mutated);
        else
            MutateBytes(mutated);
    }
    return mutated;
}

} // namespace vexaTransferLib::testing_support
