// SPDX-License-Identifier: MIT

// One edit of one object of each file, saved: the file is the same outside of that object, and its canonical XML is
// that of the same edit made by libxml2.
#include <vexaTransferLib/GpxSaver.h>

#include "support/StandardWriting.h"
#include "support/TestFiles.h"
#include "support/comparison/XmlEdits.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;
using Path = XmlEdits::Path;
using Order = std::vector<std::string_view>;

const fs::path kCorpus = fs::path(VEXA_SHARED) / "corpus" / "gpx";
constexpr std::uintmax_t kLongest = 300000;

const Order kPointOrder = {"ele", "time", "course", "speed", "magvar",        "geoidheight", "name",
                           "cmt", "desc", "src",    "link",  "sym",           "type",        "fix",
                           "sat", "hdop", "vdop",   "pdop",  "ageofdgpsdata", "dgpsid",      "extensions"};
const Order kPathOrder = {"name",   "cmt",  "desc",       "src",   "link",
                          "number", "type", "extensions", "rtept", "trkseg"};
const Order kMetadataOrder = {"name", "desc",     "author", "copyright", "link",
                              "time", "keywords", "bounds", "extensions"};
const Order kRootOrder = {"metadata", "name",   "desc", "author", "email", "link",      "time",
                          "keywords", "bounds", "wpt",  "rte",    "trk",   "extensions"};

/// A part of the bytes.
struct Part {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// What is around the first difference of two texts; empty for none.
std::string Difference(std::string_view saved, std::string_view expected) {
    constexpr std::size_t kAround = 60;
    const auto place = std::mismatch(saved.begin(), saved.end(), expected.begin(), expected.end()).first;
    if (saved == expected)
        return {};
    const auto at = static_cast<std::size_t>(place - saved.begin());
    const std::size_t start = at - std::min(at, kAround);
    return "saved: " + std::string(saved.substr(start, 2 * kAround)) +
           "\nedited: " + std::string(expected.substr(start, 2 * kAround));
}

/// One edit of a document, made by the library and by libxml2.
class Edit {
public:
    explicit Edit(const std::string& bytes)
        : document(ReadCompletely(bytes)), xml(bytes), root_(document.GetElement()) {}

    GpxDocument document;
    XmlEdits xml;

    bool Is10() const {
        return root_.GetNamespace().ends_with("GPX/1/0") ||
               (root_.GetNamespace().empty() && root_.GetAttribute("version") == u"1.0");
    }
    bool HasRootChild(std::string_view name) const {
        for (const GpxElement& child : root_.GetChildren())
            if (child.GetName() == name && child.GetNamespace() == root_.GetNamespace())
                return true;
        return false;
    }

    /// \{
    /// Says what may differ, and returns its path.
    Path PathOf(const GpxElement& element) {
        touched_ = PartOf(element);
        Path path;
        Descend(root_, PartOf(element).begin, path);
        return path;
    }
    Path Head() {
        touched_ = PartOf(root_);
        for (const GpxElement& child : root_.GetChildren())
            if (child.GetName() == "wpt" || child.GetName() == "rte" || child.GetName() == "trk") {
                touched_.end = PartOf(child).begin;
                break;
            }
        return {};
    }
    /// \}
    GpxElement FirstForeign() const { return FindForeign(root_); }

    void Compare(const std::string& bytes) {
        const std::string saved = GpxSaver().GetText(document);
        ExpectOnlyTouched(bytes, saved);
        EXPECT_EQ(Difference(XmlEdits(saved).TakeCanonical(), xml.TakeCanonical()), "");
    }

private:
    static Part PartOf(const GpxElement& element) {
        const auto begin = static_cast<std::size_t>(GpxModelAccess::GetPlace(element));
        return {begin, begin + element.GetXml().size()};
    }
    static void Descend(const GpxElement& parent, std::size_t place, Path& path) {
        std::size_t index = 0;
        for (const GpxElement& child : parent.GetChildren()) {
            const Part part = PartOf(child);
            if (place >= part.begin && place < part.end) {
                path.push_back(index);
                if (place != part.begin)
                    Descend(child, place, path);
                return;
            }
            ++index;
        }
    }
    GpxElement FindForeign(const GpxElement& parent) const {
        for (const GpxElement& child : parent.GetChildren()) {
            if (child.GetNamespace() != root_.GetNamespace() && !child.GetNamespace().empty())
                return child;
            if (const GpxElement found = FindForeign(child))
                return found;
        }
        return {};
    }
    // The lines around it belong to what is removed.
    void ExpectOnlyTouched(const std::string& bytes, const std::string& saved) const {
        constexpr char kBlanks[] = " \t\r\n";
        const std::size_t first =
            touched_.begin == 0 ? 0 : bytes.find_last_not_of(kBlanks, touched_.begin - 1) + 1;
        const std::size_t last = std::min(bytes.find_first_not_of(kBlanks, touched_.end), bytes.size());
        EXPECT_EQ(Difference(saved.substr(0, first), bytes.substr(0, first)), "");
        const std::size_t rest = bytes.size() - last;
        ASSERT_GE(saved.size(), rest);
        EXPECT_EQ(Difference(saved.substr(saved.size() - rest), bytes.substr(last)), "");
    }

    GpxElement root_;
    Part touched_;
};

/// The middle one of a list; null for an empty one.
template <class List>
auto* Middle(const List& list) {
    return list.GetCount() == 0 ? nullptr : &list[list.GetCount() / 2];
}

GpxPoint* TrackPoint(Edit& edit) {
    for (GpxTrack& track : edit.document.EditTracks())
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            if (GpxPoint* const point = Middle(track.EditPoints(i)))
                return point;
    return nullptr;
}
GpxPoint* RoutePoint(Edit& edit) {
    for (GpxRoute& route : edit.document.EditRoutes())
        if (GpxPoint* const point = Middle(route.EditPoints()))
            return point;
    return nullptr;
}
GpxPoint* AnyPoint(Edit& edit) {
    if (GpxPoint* const waypoint = Middle(edit.document.EditWaypoints()))
        return waypoint;
    GpxPoint* const routePoint = RoutePoint(edit);
    return routePoint != nullptr ? routePoint : TrackPoint(edit);
}

/// Makes the same change to a point in both ways. False when there is no point.
template <class Change>
bool Set(Edit& edit, GpxPoint* point, const char* name, const char* text, Change change) {
    if (point == nullptr)
        return false;
    edit.xml.SetChild(edit.PathOf(point->GetElement()), name, text, kPointOrder);
    change(*point);
    return true;
}
template <class Change>
bool Clear(Edit& edit, GpxPoint* point, const char* name, Change change) {
    if (point == nullptr)
        return false;
    edit.xml.RemoveChildren(edit.PathOf(point->GetElement()), name);
    change(*point);
    return true;
}
template <class Object, class Change>
bool SetOfPath(Edit& edit, Object* path, const char* name, const char* text, Change change) {
    if (path == nullptr)
        return false;
    edit.xml.SetChild(edit.PathOf(path->GetElement()), name, text, kPathOrder);
    change(*path);
    return true;
}
template <class Object>
bool RemoveMiddle(Edit& edit, const GpxListEditor<Object>& list) {
    if (list.GetCount() == 0)
        return false;
    edit.xml.Remove(edit.PathOf(Middle(list)->GetElement()));
    list.Remove(list.GetCount() / 2);
    return true;
}

// A file with the head of the other version has two places for it.
template <class Change>
bool SetInHead(Edit& edit, const char* name, const char* text, Change change) {
    if (edit.Is10() ? edit.HasRootChild("metadata") : edit.HasRootChild(name))
        return false;
    const Path root = edit.Head();
    if (edit.Is10()) {
        edit.xml.SetChild(root, name, text, kRootOrder);
    } else {
        edit.xml.MakeChild(root, "metadata", kRootOrder);
        edit.xml.SetChild({edit.xml.NumberOf("metadata")}, name, text, kMetadataOrder);
    }
    change(edit.document);
    return true;
}

template <class Change>
bool ChangeForeign(Edit& edit, Change change) {
    const GpxElement element = edit.FirstForeign();
    if (!element)
        return false;
    change(edit.PathOf(element), element);
    return true;
}

/// One way to edit. Returns false when the document has nothing to be edited in this way.
struct Kind {
    const char* name;
    bool (*apply)(Edit&);
};

constexpr char kText[] = "<a> & \"b\" \xC3\xA9";
const icu::UnicodeString kValue = u"<a> & \"b\" \u00E9";

const Kind kKinds[] = {
    {"name of a point",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "name", kText, [](GpxPoint& point) { point.SetName(kValue); });
     }},
    {"no name of a point",
     [](Edit& edit) {
         return Clear(edit, AnyPoint(edit), "name", [](GpxPoint& point) { point.ClearName(); });
     }},
    {"comment",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "cmt", kText, [](GpxPoint& point) { point.SetComment(kValue); });
     }},
    {"description",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "desc", kText,
                    [](GpxPoint& point) { point.SetDescription(kValue); });
     }},
    {"no description",
     [](Edit& edit) {
         return Clear(edit, AnyPoint(edit), "desc", [](GpxPoint& point) { point.ClearDescription(); });
     }},
    {"source",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "src", kText, [](GpxPoint& point) { point.SetSource(kValue); });
     }},
    {"symbol",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "sym", kText, [](GpxPoint& point) { point.SetSymbol(kValue); });
     }},
    {"type",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "type", kText, [](GpxPoint& point) { point.SetType(kValue); });
     }},
    {"elevation",
     [](Edit& edit) {
         return Set(edit, TrackPoint(edit), "ele", "0.125",
                    [](GpxPoint& point) { point.SetElevation(0.125); });
     }},
    {"no elevation",
     [](Edit& edit) {
         return Clear(edit, TrackPoint(edit), "ele", [](GpxPoint& point) { point.ClearElevation(); });
     }},
    {"time",
     [](Edit& edit) {
         return Set(edit, TrackPoint(edit), "time", "2001-09-09T01:46:40Z",
                    [](GpxPoint& point) { point.SetTime(1e12); });
     }},
    {"no time",
     [](Edit& edit) {
         return Clear(edit, TrackPoint(edit), "time", [](GpxPoint& point) { point.ClearTime(); });
     }},
    {"magnetic variation",
     [](Edit& edit) {
         return Set(edit, RoutePoint(edit), "magvar", "12.5",
                    [](GpxPoint& point) { point.SetMagneticVariation(12.5); });
     }},
    {"fix",
     [](Edit& edit) {
         return Set(edit, AnyPoint(edit), "fix", "dgps", [](GpxPoint& point) { point.SetFix(kGpxFixDGPS); });
     }},
    {"place",
     [](Edit& edit) {
         GpxPoint* const point = AnyPoint(edit);
         if (point == nullptr)
             return false;
         const Path path = edit.PathOf(point->GetElement());
         edit.xml.SetAttribute(path, "lat", "1.5");
         edit.xml.SetAttribute(path, "lon", "-2.25");
         point->SetPoint(1.5, -2.25);
         return true;
     }},
    {"removed waypoint", [](Edit& edit) { return RemoveMiddle(edit, edit.document.EditWaypoints()); }},
    {"removed route", [](Edit& edit) { return RemoveMiddle(edit, edit.document.EditRoutes()); }},
    {"removed track", [](Edit& edit) { return RemoveMiddle(edit, edit.document.EditTracks()); }},
    {"removed point of a track",
     [](Edit& edit) {
         for (GpxTrack& track : edit.document.EditTracks())
             for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
                 if (track.EditPoints(i).GetCount() != 0)
                     return RemoveMiddle(edit, track.EditPoints(i));
         return false;
     }},
    {"removed point of a route",
     [](Edit& edit) {
         for (GpxRoute& route : edit.document.EditRoutes())
             if (route.GetPointCount() != 0)
                 return RemoveMiddle(edit, route.EditPoints());
         return false;
     }},
    {"removed segment",
     [](Edit& edit) {
         for (GpxTrack& track : edit.document.EditTracks())
             if (track.GetSegmentCount() != 0) {
                 edit.xml.Remove(edit.PathOf(track.GetSegmentElement(track.GetSegmentIter())));
                 track.RemoveSegments(0, 1);
                 return true;
             }
         return false;
     }},
    {"name of a track",
     [](Edit& edit) {
         return SetOfPath(edit, Middle(edit.document.EditTracks()), "name", kText,
                          [](GpxTrack& track) { track.SetName(kValue); });
     }},
    {"description of a track",
     [](Edit& edit) {
         return SetOfPath(edit, Middle(edit.document.EditTracks()), "desc", kText,
                          [](GpxTrack& track) { track.SetDescription(kValue); });
     }},
    {"source of a route",
     [](Edit& edit) {
         return SetOfPath(edit, Middle(edit.document.EditRoutes()), "src", kText,
                          [](GpxRoute& route) { route.SetSource(kValue); });
     }},
    {"name of the document",
     [](Edit& edit) {
         return SetInHead(edit, "name", kText, [](GpxDocument& document) { document.SetName(kValue); });
     }},
    {"time of the document",
     [](Edit& edit) {
         return SetInHead(edit, "time", "2001-09-09T01:46:40Z",
                          [](GpxDocument& document) { document.SetDocumentTime(1e12); });
     }},
    {"description of the document",
     [](Edit& edit) {
         return SetInHead(edit, "desc", kText,
                          [](GpxDocument& document) { document.EditMetadata().SetDescription(kValue); });
     }},
    {"keywords of the document",
     [](Edit& edit) {
         return SetInHead(edit, "keywords", kText,
                          [](GpxDocument& document) { document.EditMetadata().SetKeywords(kValue); });
     }},
    {"text of a foreign element",
     [](Edit& edit) {
         return ChangeForeign(edit, [&](const Path& path, const GpxElement& element) {
             edit.xml.SetText(path, kText);
             edit.document.EditElements().SetText(element, kValue);
         });
     }},
    {"attribute of a foreign element",
     [](Edit& edit) {
         return ChangeForeign(edit, [&](const Path& path, const GpxElement& element) {
             edit.xml.SetAttribute(path, "new", kText);
             edit.document.EditElements().SetAttribute(element, "new", kValue);
         });
     }},
    {"no attributes of a foreign element",
     [](Edit& edit) {
         return ChangeForeign(edit, [&](const Path& path, const GpxElement& element) {
             for (const GpxAttribute& attribute : element.GetAttributes())
                 if (attribute.nameSpace.empty()) {
                     edit.xml.RemoveAttribute(path, std::string(attribute.name).c_str());
                     edit.document.EditElements().RemoveAttribute(element, attribute.name);
                 }
         });
     }},
    {"child of a foreign element",
     [](Edit& edit) {
         return ChangeForeign(edit, [&](const Path& path, const GpxElement& element) {
             edit.xml.AppendChild(path, "new", kText);
             edit.document.EditElements().AddChild(element, "", "new", kValue);
         });
     }},
    {"removed foreign element",
     [](Edit& edit) {
         return ChangeForeign(edit, [&](const Path& path, const GpxElement& element) {
             edit.xml.Remove(path);
             edit.document.EditElements().Remove(element);
         });
     }},
};

// How many kinds of edits the file has something for.
std::size_t CompareEdits(const std::string& bytes) {
    std::size_t count = 0;
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        Edit edit(bytes);
        if (!kind.apply(edit))
            continue;
        edit.Compare(bytes);
        ++count;
    }
    return count;
}

std::vector<fs::path> Files() {
    std::vector<fs::path> files;
    for (const fs::path& folder : {kCorpus, fs::path(VEXA_TEST_DATA)})
        if (fs::is_directory(folder))
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

class GpxSaverEditsTest : public testing::TestWithParam<fs::path> {};

TEST_P(GpxSaverEditsTest, AnEditIsThatOfLibxml2AndNothingElseChanges) {
    const std::string bytes = ReadBytes(GetParam());
    if (bytes.size() > kLongest)
        GTEST_SKIP() << "a file of " << bytes.size() << " bytes";
    try {
        const GpxDocument document = ReadCompletely(bytes);
        if (!GpxModelAccess::GetSource(document.GetElement())->IsFile())
            GTEST_SKIP() << "this file is saved in another encoding";
    } catch (const GpxReadError& error) {
        GTEST_SKIP() << "this file cannot be read: " << error.what();
    }
    try {
        XmlEdits(bytes).TakeCanonical();
    } catch (const std::runtime_error& error) {
        GTEST_SKIP() << error.what();
    }
    CompareEdits(bytes);
}

INSTANTIATE_TEST_SUITE_P(Files, GpxSaverEditsTest, testing::ValuesIn(Files()), NameOf);

TEST(GpxSaverEditsTest, AFileWithEverythingHasSomethingForEachKind) {
    const fs::path folder = fs::path(VEXA_TEST_DATA) / "writer";
    EXPECT_EQ(CompareEdits(ReadBytes(folder / "everything-1.1.gpx")), std::size(kKinds));
    EXPECT_EQ(CompareEdits(ReadBytes(folder / "everything-1.0.gpx")), std::size(kKinds));
}

} // namespace
} // namespace vexaTransferLib
