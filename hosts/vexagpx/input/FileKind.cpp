// SPDX-License-Identifier: MIT
#include <vexagpx/input/FileKind.h>

#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/XmlRoot.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace vexagpx {

namespace {

using std::string_view_literals::operator""sv;

constexpr char kGpsBabel[] = "GPSBabel can turn it into GPX";
constexpr char kPicture[] = "GPSBabel can take the place from a photo that has one";
constexpr char kNoPlaces[] = "it has no tracks or waypoints";

/// Bytes at a place from which a kind is known.
struct Mark {
    std::size_t at;
    std::string_view bytes;
    const char* name;
    const char* advice;
};

constexpr Mark kMarks[] = {
    {0, "PK\3\4"sv, "a ZIP archive", "unpack it first"},
    {0, "PK\5\6"sv, "a ZIP archive", "unpack it first"},
    {0, "PK\7\10"sv, "a ZIP archive", "unpack it first"},
    {0, "PK00"sv, "a ZIP archive", "unpack it first"},
    {0, "\x1F\x8B"sv, "a gzip file", "unpack it first, with gunzip"},
    {0, "BZh"sv, "a bzip2 file", "unpack it first, with bunzip2"},
    {0,
     "\xFD"
     "7zXZ\0"sv,
     "an xz file", "unpack it first, with unxz"},
    {0, "\x28\xB5\x2F\xFD"sv, "a zstd file", "unpack it first, with unzstd"},
    {0, "\x04\x22\x4D\x18"sv, "an lz4 file", "unpack it first, with unlz4"},
    {0, "LZIP"sv, "an lzip file", "unpack it first, with lzip -d"},
    {0, "\x1F\x9D"sv, "a compress file", "unpack it first, with uncompress"},
    {0, "7z\xBC\xAF\x27\x1C"sv, "a 7z archive", "unpack it first, with 7z x"},
    {0, "Rar!\x1A\x07"sv, "a RAR archive", "unpack it first, with unrar x"},
    {257, "ustar"sv, "a tar archive", "unpack it first, with tar -xf"},
    {8, ".FIT"sv, "a FIT file", kGpsBabel},
    {0, "\xFF\xD8\xFF"sv, "a JPEG picture", kPicture},
    {0, "\x89PNG\r\n\x1A\n"sv, "a PNG picture", kNoPlaces},
    {0, "GIF8"sv, "a GIF picture", kNoPlaces},
    {0, "II*\0"sv, "a TIFF picture", kPicture},
    {0, "MM\0*"sv, "a TIFF picture", kPicture},
    {8, "WEBP"sv, "a WebP picture", kNoPlaces},
    {4, "ftyphei"sv, "a HEIC picture", kPicture},
    {4, "ftypmif1"sv, "a HEIC picture", kPicture},
    {4, "ftypavif"sv, "an AVIF picture", kNoPlaces},
    {4, "ftyp"sv, "an MP4 video", "the camera's program may take a track from it"},
    {4, "moov"sv, "a QuickTime video", "the camera's program may take a track from it"},
    {4, "mdat"sv, "a QuickTime video", "the camera's program may take a track from it"},
    {8, "AVI "sv, "an AVI video", kNoPlaces},
    {8, "WAVE"sv, "a sound file", kNoPlaces},
    {0, "\x1A\x45\xDF\xA3"sv, "a Matroska video", kNoPlaces},
    {0, "ID3"sv, "a sound file", kNoPlaces},
    {0, "OggS"sv, "a sound or video file", kNoPlaces},
    {0, "%PDF-"sv, "a PDF document", "look where it comes from for the GPX file"},
    {0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "an office document",
     "look where it comes from for the GPX file"},
    {0, "{\\rtf"sv, "an RTF document", "look where it comes from for the GPX file"},
    {0, "SQLite format 3\0"sv, "an SQLite database", "ogr2ogr can turn a GeoPackage into GPX"},
    {0,
     "\x7F"
     "ELF"sv,
     "a program", kNoPlaces},
    {0, "MsRcd\0"sv, "a MapSource file", kGpsBabel},
    {0, "MsRcf\0"sv, "a MapSource file", kGpsBabel},
    {0, "\0\5\26\7"sv, "what macOS notes about a file", "the file itself has the name without \"._\""},
    {0, "OziExplorer "sv, "an OziExplorer file", kGpsBabel},
    {0, "B  UTF-8"sv, "a CompeGPS file", kGpsBabel},
};

bool Has(std::string_view head, std::size_t at, std::string_view bytes) {
    return head.size() >= at && head.substr(at).starts_with(bytes);
}

std::optional<FileKind> FindByMarks(std::string_view head) {
    for (const Mark& mark : kMarks)
        if (Has(head, mark.at, mark.bytes))
            return FileKind{mark.name, mark.advice, {}};
    return std::nullopt;
}

struct Root {
    std::string_view name;
    const char* kind;
    const char* advice;
};

// Names of root elements. That of HTML is found in any case.
constexpr Root kRoots[] = {
    {"kml", "a KML file", kGpsBabel},
    {"TrainingCenterDatabase", "a TCX file", kGpsBabel},
    {"html", "a web page", "a server sends one instead of a file that needs a login or is gone"},
    {"osm", "OpenStreetMap data", kGpsBabel},
    {"loc", "a LOC file", kGpsBabel},
    {"rss", "a news feed", kNoPlaces},
    {"feed", "a news feed", kNoPlaces},
    {"svg", "an SVG picture", kNoPlaces},
    {"plist", "a property list of macOS", kNoPlaces},
};

std::optional<FileKind> FindByRoot(std::string_view head) {
    const std::optional<XmlRoot> root = FindXmlRoot(head);
    if (!root)
        return std::nullopt;
    for (const Root& row : kRoots)
        if (root->name == row.name)
            return FileKind{row.kind, row.advice,
                            "line " + std::to_string(root->line) + ", column " +
                                std::to_string(root->column)};
    return std::nullopt;
}

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

std::string_view WithoutBlanks(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// A sentence of a receiver: "$GPRMC,".
bool IsNmea(std::string_view text) {
    constexpr std::size_t kNameEnd = 6;
    return text.size() > kNameEnd && text[0] == '$' && text[kNameEnd] == ',' &&
           std::all_of(text.begin() + 1, text.begin() + kNameEnd,
                       [](unsigned char byte) { return std::isalnum(byte) != 0 && std::islower(byte) == 0; });
}

/// Two lines of text with the same number of the same separator.
bool IsCsv(std::string_view text) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos || text.starts_with('<'))
        return false;
    const std::string_view first = text.substr(0, end);
    const std::string_view second = text.substr(end + 1, text.find('\n', end + 1) - end - 1);
    const bool isText =
        !Contains(second, "<") && std::none_of(first.begin(), first.end(), [](unsigned char byte) {
            return byte < ' ' && byte != '\t' && byte != '\r';
        });
    for (const char separator : {',', ';', '\t'}) {
        const auto count = std::count(first.begin(), first.end(), separator);
        if (isText && count > 0 && count == std::count(second.begin(), second.end(), separator))
            return true;
    }
    return false;
}

std::optional<FileKind> FindText(std::string_view text) {
    if (text.starts_with('{') || text.starts_with('[')) {
        if (Contains(text, "\"FeatureCollection\"") || Contains(text, "\"Feature\""))
            return FileKind{"a GeoJSON file", "ogr2ogr can turn it into GPX", {}};
        return FileKind{"a JSON file", "look where it comes from for the GPX file", {}};
    }
    if (IsNmea(text))
        return FileKind{"an NMEA file", kGpsBabel, {}};
    if (text.starts_with('A') && Contains(text, "\nHFDTE"))
        return FileKind{"an IGC file", kGpsBabel, {}};
    if (IsCsv(text))
        return FileKind{"a CSV file", kGpsBabel, {}};
    return std::nullopt;
}

} // namespace

bool IsZip(std::string_view head) {
    return std::any_of(std::begin(kMarks), std::end(kMarks), [head](const Mark& mark) {
        return mark.bytes.starts_with("PK") && Has(head, mark.at, mark.bytes);
    });
}

bool IsReadAsArchive(std::string_view head, const std::string& name) {
    return IsZip(head) || (IsArchiveName(name) && !head.empty() && !IsGpx(head));
}

bool IsGzip(std::string_view head) {
    return head.starts_with("\x1F\x8B");
}

bool IsGpx(std::string_view head) {
    const std::optional<XmlRoot> root = FindXmlRoot(head);
    return root && root->name == "gpx";
}

std::optional<FileKind> FindKind(std::string_view head) {
    if (std::optional<FileKind> kind = FindByMarks(head))
        return kind;
    if (std::optional<FileKind> kind = FindByRoot(head))
        return kind;
    return FindText(WithoutBlanks(head));
}

void RefuseOtherKinds(std::string_view head, const std::string& name) {
    if (head.empty())
        throw std::runtime_error(name + " is empty; look where it comes from for the whole file.");
    if (const std::optional<FileKind> kind = FindKind(head))
        throw std::runtime_error(name + " is " + kind->name + ", not GPX; " + kind->advice + "." +
                                 (kind->place.empty() ? "" : " (" + kind->place + ")"));
}

} // namespace vexagpx
