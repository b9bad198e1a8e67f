// SPDX-License-Identifier: MIT

// Files that are put together at random from what GPX and other programs have, in any order and in any spelling.
#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/StandardWriting.h"
#include "support/comparison/GpxComparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// Makes files.
class RandomFile {
public:
    explicit RandomFile(unsigned seed) : random_(seed) {}

    std::string Make() { return Make(true); }
    // Without what belongs to the document itself.
    std::string MakeObjects() { return Make(false); }

private:
    std::string Make(bool hasDocument) {
        is10_ = Chance(2);
        prefix_ = Chance(4) ? "g:" : "";
        const std::string uri = is10_ ? kGpx10Uri : kGpx11Uri;
        std::string text = "<" + prefix_ + "gpx version='" + (is10_ ? "1.0" : "1.1") + "' creator='c' " +
                           (prefix_.empty() ? "xmlns" : "xmlns:g") + "='" + uri + "' xmlns:x='urn:x'";
        if (!prefix_.empty() && Chance(2))
            text += " xmlns='urn:default'";
        text += ">" + (hasDocument ? Head() : "");
        isReadable_ = !hasDocument; // unread waypoints belong to the document
        text += Repeat(3, [&] { return Point("wpt"); });
        isReadable_ = false;
        text +=
            Repeat(2, [&] { return Element("rte", "", Path() + Repeat(3, [&] { return Point("rtept"); })); });
        text += Repeat(2, [&] { return Element("trk", "", Path() + Repeat(3, [&] { return Segment(); })); });
        return text + (hasDocument ? Foreign() : "") + "</" + prefix_ + "gpx>";
    }

    bool Chance(unsigned one) { return random_() % one == 0; }
    template <class MakePart>
    std::string Repeat(unsigned most, MakePart make) {
        std::string text;
        for (auto i = random_() % (most + 1); i > 0; --i)
            text += make();
        return text;
    }
    std::string OneOf(std::initializer_list<const char*> texts) {
        return *(texts.begin() + random_() % texts.size());
    }

    std::string Element(const std::string& name, const std::string& attributes, const std::string& content) {
        std::string own = attributes;
        if (prefix_.empty() && Chance(12))
            own += std::string(" xmlns='") + (Chance(2) ? kGpx10Uri : kGpx11Uri) + "'";
        if (Chance(12))
            own += " xmlns:y='urn:y'";
        std::string start = "<";
        start.append(prefix_).append(name).append(own);
        if (content.empty() && Chance(2))
            return start + "/>" + Space();
        return start + ">" + content + "</" + prefix_ + name + ">" + Space();
    }
    std::string Space() { return OneOf({"", "", "", "\n  ", "<!-- <a> -->", "<?p i?>"}); }
    std::string Text(const std::string& name) {
        return Element(name, "", OneOf({"a", "b &amp; c", "<![CDATA[<d>]]>", "e&#13;f", "\xC3\xA9", " g "}));
    }
    std::string Number(const std::string& name) {
        return Element(name, "", OneOf({"1", "-2.50", " 3 ", "1e2", "x", "", "4<!-- -->5"}));
    }
    std::string Time() {
        return Element("time", "",
                       OneOf({"2009-01-15T10:20:30Z", "2009-01-15T10:20:30.5+01:00", "never", ""}));
    }

    // Everything that an object can have, mostly in the order of the schema.
    std::string Shuffled(std::vector<std::string> parts) {
        if (Chance(3))
            std::shuffle(parts.begin(), parts.end(), random_);
        std::string text;
        for (const std::string& part : parts)
            if (Chance(2))
                text += part;
        return text;
    }
    std::string Link() {
        if (is10_)
            return Text("url") + (Chance(2) ? Text("urlname") : "");
        return Repeat(2, [&] {
            return Element("link", " href='h'", Shuffled({Text("text"), Text("type")}));
        });
    }
    std::string ForeignElement() {
        return OneOf({"<x:a/>", "<x:a x:b='1'>c</x:a>", "<d xmlns='urn:d'><e/>f</d>",
                      "<x:a><y:b xmlns:y='urn:y'/></x:a>", "<x:a xmlns='urn:n'><b/></x:a>",
                      "<tarvik:objectid xmlns:tarvik='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>i"
                      "</tarvik:objectid>",
                      "<s:cache id='1' xmlns:s='http://www.groundspeak.com/cache/1/0'><s:name>n</s:name>"
                      "<s:logs><s:log id='2'><s:text>t</s:text></s:log></s:logs></s:cache>"}) +
               Space();
    }
    std::string Foreign() {
        const std::string elements = Repeat(2, [&] { return ForeignElement(); });
        return is10_ || elements.empty() ? elements : Element("extensions", "", elements);
    }
    std::string Point(const std::string& name) {
        const bool isTrackPoint10 = is10_ && name == "trkpt";
        return Element(
            name,
            OneOf({" lat='1' lon='2'", " lon='02.50' lat=' 1'",
                   isReadable_ ? " lat='-1' lon='0'" : " lat='91' lon='2'"}),
            Shuffled({Number("ele"), Time(), isTrackPoint10 ? Number("course") : "",
                      isTrackPoint10 ? Number("speed") : "", Number("magvar"), Number("geoidheight"),
                      Text("name"), Text("cmt"), Text("desc"), Text("src"), Link(), Text("sym"), Text("type"),
                      Element("fix", "", "3d"), Number("sat"), Number("hdop"), Foreign()}));
    }
    std::string Segment() {
        return Element("trkseg", "",
                       Repeat(4, [&] { return Point("trkpt"); }) + (is10_ ? std::string() : Foreign()));
    }
    std::string Path() {
        return Shuffled({Text("name"), Text("cmt"), Text("desc"), Text("src"), Link(), Number("number"),
                         is10_ ? "" : Text("type"), Foreign()});
    }
    std::string Head() {
        const std::string fields = Shuffled(
            {Text("name"), Text("desc"), is10_ ? Text("author") : Element("author", "", Text("name")),
             is10_ ? Element("email", "", "a@b.c") : "", is10_ ? "" : Element("copyright", " author='a'", ""),
             Link(), Time(), Text("keywords"),
             Element("bounds", " minlat='1' minlon='2' maxlat='3' maxlon='4'", "")});
        return is10_ || Chance(5) ? (is10_ ? fields : "") : Element("metadata", "", fields);
    }

    std::mt19937 random_;
    bool is10_ = false;
    bool isReadable_ = false;
    std::string prefix_;
};

// What is wrong with a file that was written; empty when it is right.
std::string WrongIn(const std::string& file, const std::string& written, GpxTarget target,
                    const GpxVersion& version) {
    std::ostringstream wrong;
    for (const MissingContent& content : FindMissing(file, written, target))
        wrong << "lacks " << content << '\n';
    for (const MissingContent& content : FindInvented(file, written))
        wrong << "has gained " << content << '\n';
    const std::string again = StandardText(ReadCompletely(written), version).text;
    if (again != written)
        wrong << "is written again as\n" << again;
    return wrong.str();
}

// Writes a document that has what a file has, in both versions. Returns how many are wrong.
int FailuresOf(const std::string& file, const GpxDocument& document) {
    int failures = 0;
    for (const GpxTarget target : {GpxTarget::k10, GpxTarget::k11}) {
        const GpxVersion& version = target == GpxTarget::k10 ? kGpx10 : kGpx11;
        const std::string written = StandardText(document, version).text;
        const std::string wrong = WrongIn(file, written, target, version);
        EXPECT_EQ(wrong, "") << file << '\n' << written;
        failures += wrong.empty() ? 0 : 1;
    }
    return failures;
}

TEST(GpxStandardWriterRandomTest, NothingIsLostAndWritingAgainGivesTheSame) {
    int failures = 0;
    for (unsigned seed = 0; seed < 2000 && failures < 5; ++seed) {
        const std::string file = RandomFile(seed).Make();
        const GpxDocument document = ReadCompletely(file);
        failures += FailuresOf(file, document);
    }
}

void AddObjects(const GpxDocument& from, GpxDocument& document) {
    for (auto point = from.GetWaypointIter(); point != from.GetWaypointEndIter(); ++point)
        document.AddWaypoint(*point);
    for (auto route = from.GetRouteIter(); route != from.GetRouteEndIter(); ++route)
        document.AddRoute(*route);
    for (auto track = from.GetTrackIter(); track != from.GetTrackEndIter(); ++track)
        document.AddTrack(*track);
}

TEST(GpxStandardWriterRandomTest, ObjectsLoseNothingInAnotherDocument) {
    const std::string strangers[] = {
        Gpx11("", " xmlns:x='urn:1' xmlns:y='urn:2' xmlns:s='urn:3' xmlns:g='urn:4'"),
        Gpx10("", " xmlns:n='urn:x' xmlns:y='urn:y' xmlns:x='urn:n'"), "<gpx version='1.1'/>",
        std::string("<h:gpx version='1.1' xmlns='urn:d' xmlns:h='") + kGpx11Uri + "'/>"};
    int failures = 0;
    for (unsigned seed = 0; seed < 1000 && failures < 5; ++seed) {
        const std::string file = RandomFile(seed).MakeObjects();
        GpxDocument document;
        if (seed % 5 != 0)
            document = ReadCompletely(strangers[seed % 5 - 1]);
        AddObjects(ReadCompletely(file), document);
        failures += FailuresOf(file, document);
    }
}

TEST(GpxStandardWriterRandomTest, ANameChangesNothingElse) {
    int failures = 0;
    for (unsigned seed = 0; seed < 1000 && failures < 5; ++seed) {
        const std::string file = RandomFile(seed).MakeObjects();
        const GpxDocument read = ReadCompletely(file);
        GpxDocument changed;
        GpxDocument unchanged;
        for (auto point = read.GetWaypointIter(); point != read.GetWaypointEndIter(); ++point) {
            GpxPoint copy = *point;
            copy.SetName(u"NEW");
            changed.AddWaypoint(copy);
            unchanged.AddWaypoint(*point);
        }
        for (const GpxTarget target : {GpxTarget::k10, GpxTarget::k11}) {
            const GpxVersion& version = target == GpxTarget::k10 ? kGpx10 : kGpx11;
            const std::string before = StandardText(unchanged, version).text;
            const std::string after = StandardText(changed, version).text;
            std::ostringstream wrong;
            for (const MissingContent& content : FindMissing(before, after, target))
                if (!content.path.ends_with("/name"))
                    wrong << "lacks " << content << '\n';
            std::size_t names = 0;
            for (const MissingContent& content : FindInvented(before, after)) {
                ++names;
                if (!content.path.ends_with("/name") || content.value != "NEW")
                    wrong << "has gained " << content << '\n';
            }
            EXPECT_EQ(wrong.str(), "") << seed << '\n' << before << '\n' << after;
            EXPECT_EQ(names, changed.GetWaypointCount());
            failures += wrong.str().empty() ? 0 : 1;
        }
    }
}

} // namespace
} // namespace vexaTransferLib
