// SPDX-License-Identifier: MIT
#include <vexagpx/repair/MarkupRepair.h>

#include <vexagpx/repair/RepairLog.h>
#include <vexagpx/repair/StartTag.h>
#include <vexagpx/repair/TextRepair.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vexagpx {

namespace {

constexpr std::string_view kGpx10 = "http://www.topografix.com/GPX/1/0";
constexpr std::string_view kGpx11 = "http://www.topografix.com/GPX/1/1";

bool IsSpace(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool IsContainer(std::string_view name) {
    return name == "gpx" || name == "metadata" || name == "rte" || name == "trk" || name == "trkseg";
}

/// The namespace that is declared for a prefix that has none.
std::string NamespaceOf(const std::string& prefix) {
    static const std::map<std::string, std::string> known{
        {"xsi", "http://www.w3.org/2001/XMLSchema-instance"},
        {"gpxx", "http://www.garmin.com/xmlschemas/GpxExtensions/v3"},
        {"gpxtpx", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1"},
        {"tp1", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1"},
        {"wptx1", "http://www.garmin.com/xmlschemas/WaypointExtension/v1"},
        {"groundspeak", "http://www.groundspeak.com/cache/1/0/1"},
        {"topografix", "http://www.topografix.com/GPX/Private/TopoGrafix/0/1"},
    };
    const auto found = known.find(prefix);
    return found == known.end() ? "urn:undeclared:" + prefix : found->second;
}

class MarkupRepair {
public:
    MarkupRepair(std::string_view text, ChangeList& changes) : text_(text), log_(text, changes) {}

    std::string Run();

private:
    struct Open {
        std::string_view name;
        std::size_t outStart;                   ///< where its start tag is in the result
        std::vector<std::string_view> declared; ///< prefixes
        bool hasChildren = false;
    };

    void TakeText();
    void TakeMarkup();
    void TakeSpecial(std::string_view start, std::string_view end, std::string_view what);
    void TakeStartTag();
    void TakeEndTag();
    void StartRoot(StartTag& tag);
    void AddRootFor(const StartTag& tag);
    void Push(const StartTag& tag, std::size_t outStart);
    void NotePrefixes(const StartTag& tag);
    void NotePrefix(std::string_view name);
    void CloseTop();
    void CutOff();
    void Finish();

    std::string_view text_;
    RepairLog log_;
    std::size_t at_ = 0;
    std::string out_;
    std::vector<Open> open_;
    std::unordered_map<std::string_view, std::size_t> openNames_;
    std::unordered_map<std::string_view, std::size_t> declared_;
    std::map<std::string, std::size_t> undeclared_; ///< prefixes, with the place of the first
    std::size_t rootNameEnd_ = 0;                   ///< in the result; 0 before the root
    bool hasEnded_ = false;                         ///< behind the end of the root
};

void MarkupRepair::TakeText() {
    const std::size_t end = std::min(text_.find('<', at_), text_.size());
    const std::string_view piece = text_.substr(at_, end - at_);
    if (!open_.empty()) {
        AppendRepairedText(piece, at_, out_, log_);
    } else if (!IsSpace(piece)) {
        log_.Add(at_, "outside", "text outside the root element is removed");
    } else if (out_.empty()) {
        if (!piece.empty())
            log_.Add(at_, "outside", "white space before the document is removed");
    } else {
        out_ += piece;
    }
    at_ = end;
}

/// A comment, CDATA or an instruction; one that is cut off is left out.
void MarkupRepair::TakeSpecial(std::string_view start, std::string_view end, std::string_view what) {
    const std::size_t close = text_.find(end, at_ + start.size());
    const bool isLost = close == std::string_view::npos;
    const std::size_t next = isLost ? text_.size() : close + end.size();
    const bool isDeclaration = text_.substr(at_, 6) == "<?xml ";
    const bool isMisplaced = (isDeclaration && !out_.empty()) || (start == "<![CDATA[" && open_.empty());
    if (isLost || isMisplaced) {
        log_.Add(at_, "left-out",
                 std::string(what) + (isLost ? " without an end" : " in a wrong place") + " is left out");
    } else {
        std::string_view content = text_.substr(at_ + start.size(), close - at_ - start.size());
        out_ += start;
        if (start == "<!--" &&
            (content.find("--") != std::string_view::npos || (!content.empty() && content.back() == '-'))) {
            log_.Add(at_, "comment", "-- in a comment became - -");
            std::string mended;
            for (const char c : content)
                mended += c == '-' ? std::string("- ") : std::string(1, c);
            AppendWithoutBadCharacters(mended, at_, out_, log_);
        } else {
            AppendWithoutBadCharacters(content, at_ + start.size(), out_, log_);
        }
        out_ += end;
    }
    at_ = next;
}

void MarkupRepair::NotePrefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return;
    const std::string_view prefix = name.substr(0, colon);
    const auto found = declared_.find(prefix);
    if (prefix != "xml" && prefix != "xmlns" && (found == declared_.end() || found->second == 0))
        undeclared_.emplace(prefix, at_);
}

void MarkupRepair::NotePrefixes(const StartTag& tag) {
    NotePrefix(tag.name);
    for (const TagAttribute& attribute : tag.attributes)
        NotePrefix(attribute.name);
}

void MarkupRepair::Push(const StartTag& tag, std::size_t outStart) {
    if (!open_.empty())
        open_.back().hasChildren = true;
    Open open{tag.name, outStart, {}, false};
    for (const TagAttribute& attribute : tag.attributes)
        if (attribute.name.substr(0, 6) == "xmlns:") {
            open.declared.push_back(attribute.name.substr(6));
            ++declared_[open.declared.back()];
        }
    ++openNames_[tag.name];
    open_.push_back(std::move(open));
}

void MarkupRepair::CloseTop() {
    Open& top = open_.back();
    out_ += "</" + std::string(top.name) + ">";
    for (const std::string_view prefix : top.declared)
        --declared_[prefix];
    --openNames_[top.name];
    open_.pop_back();
    hasEnded_ = open_.empty();
}

void MarkupRepair::StartRoot(StartTag& tag) {
    const std::string_view space = tag.Find("xmlns").value_or("");
    std::string added;
    const bool isOld = space == kGpx10 || (space.empty() && tag.Find("version") == "1.0");
    if (!tag.Find("version"))
        added += isOld ? " version=\"1.0\"" : " version=\"1.1\"";
    if (!tag.Find("xmlns"))
        added += " xmlns=\"" + std::string(isOld ? kGpx10 : kGpx11) + "\"";
    if (tag.isCut && !tag.Find("creator"))
        added += " creator=\"vexagpx\"";
    if (!added.empty()) {
        log_.Add(at_, "root", "the root element gets" + added);
        tag.bytes.insert(4, added);
    }
    rootNameEnd_ = out_.size() + 4;
}

/// What stands alone gets the elements in which it belongs.
void MarkupRepair::AddRootFor(const StartTag& tag) {
    if (tag.name != "wpt" && tag.name != "rte" && tag.name != "trk" && tag.name != "trkseg" &&
        tag.name != "trkpt")
        throw std::runtime_error("The root element is not gpx but " + std::string(tag.name.substr(0, 80)) +
                                 '.');
    log_.Add(at_, "root", "a root element is put around the points");
    const auto add = [this](std::string_view name, const std::string& attributes) {
        StartTag parent;
        parent.name = name;
        Push(parent, out_.size());
        out_ += "<" + std::string(name) + attributes + ">";
    };
    rootNameEnd_ = out_.size() + 4;
    add("gpx", " version=\"1.1\" creator=\"vexagpx\" xmlns=\"" + std::string(kGpx11) + "\"");
    if (tag.name == "trkseg" || tag.name == "trkpt")
        add("trk", "");
    if (tag.name == "trkpt")
        add("trkseg", "");
}

void MarkupRepair::TakeStartTag() {
    StartTag tag = ParseStartTag(text_, at_, log_);
    if (rootNameEnd_ == 0) {
        if (tag.name == "gpx")
            StartRoot(tag);
        else
            AddRootFor(tag);
    } else if (hasEnded_) {
        // Points that are lost in silence are worse than a file that is not repaired.
        throw std::runtime_error("Elements follow the end of the document, which is not repaired.");
    }
    if (tag.isCut && !open_.empty()) {
        at_ = text_.size();
        log_.Add(at_, "left-out", "the unfinished tag <" + std::string(tag.name) + "> is left out");
        return;
    }
    const std::size_t outStart = out_.size();
    Push(tag, outStart);
    NotePrefixes(tag);
    out_ += tag.bytes;
    if (tag.isEmpty) {
        // The end is in the start tag.
        CloseTop();
        out_.resize(outStart + tag.bytes.size());
        out_ += "/>";
    } else {
        out_ += '>';
    }
    at_ = tag.end;
}

void MarkupRepair::TakeEndTag() {
    const std::size_t size = NameSize(text_.substr(at_ + 2));
    const std::string_view name = text_.substr(at_ + 2, size);
    const std::size_t close = text_.find_first_not_of(" \t\r\n", at_ + 2 + size);
    if (close == std::string_view::npos) {
        at_ = text_.size();
        return;
    }
    const std::size_t start = at_;
    const std::string_view tail = text_.substr(at_ + 2 + size, close - at_ - 2 - size);
    at_ = text_[close] == '>' ? close + 1 : close;
    const auto found = openNames_.find(name);
    if (found != openNames_.end() && found->second > 0) {
        while (open_.back().name != name) {
            log_.Add(start, "end-tag", "</" + std::string(open_.back().name) + "> is added");
            CloseTop();
        }
        CloseTop();
        out_.insert(out_.size() - 1, tail);
    } else if (!open_.empty() && !open_.back().hasChildren && !IsContainer(open_.back().name)) {
        log_.Add(start, "end-tag",
                 "</" + std::string(name) + "> became </" + std::string(open_.back().name) + ">");
        CloseTop();
    } else {
        log_.Add(start, "end-tag", "</" + std::string(name) + "> without a start is removed");
    }
}

void MarkupRepair::TakeMarkup() {
    const std::string_view rest = text_.substr(at_);
    if (rest.substr(0, 4) == "<!--") {
        TakeSpecial("<!--", "-->", "a comment");
    } else if (rest.substr(0, 9) == "<![CDATA[") {
        TakeSpecial("<![CDATA[", "]]>", "CDATA");
    } else if (rest.substr(0, 2) == "<?") {
        TakeSpecial("<?", "?>", "an instruction");
    } else if (rest.substr(0, 2) == "</") {
        TakeEndTag();
    } else if (NameSize(rest.substr(1)) > 0) {
        TakeStartTag();
    } else {
        if (open_.empty())
            log_.Add(at_, "outside", "< outside the root element is removed");
        else
            AppendRepairedText("<", at_, out_, log_);
        ++at_;
    }
}

/// Leaves out what is unfinished, so that only whole points are left, and closes what is open.
void MarkupRepair::CutOff() {
    for (const Open& open : open_)
        if (!IsContainer(open.name)) {
            log_.Add(text_.size(), "cut-off", "the unfinished <" + std::string(open.name) + "> is left out");
            const std::size_t start = open.outStart;
            while (open_.size() > 1 && open_.back().outStart >= start)
                CloseTop();
            out_.resize(start);
            break;
        }
    while (!open_.empty()) {
        log_.Add(text_.size(), "cut-off", "</" + std::string(open_.back().name) + "> is added at the end");
        CloseTop();
    }
}

void MarkupRepair::Finish() {
    std::string declarations;
    for (const auto& [prefix, place] : undeclared_) {
        declarations += " xmlns:" + prefix + "=\"" + NamespaceOf(prefix) + "\"";
        log_.Add(place, "prefix", "the prefix " + prefix + " is declared as " + NamespaceOf(prefix));
    }
    out_.insert(rootNameEnd_, declarations);
}

std::string MarkupRepair::Run() {
    while (at_ < text_.size()) {
        if (text_[at_] == '<')
            TakeMarkup();
        else
            TakeText();
    }
    CutOff();
    if (rootNameEnd_ == 0)
        throw std::runtime_error("There is no element of GPX in it.");
    Finish();
    return std::move(out_);
}

} // namespace

std::string RepairMarkup(std::string_view text, ChangeList& changes) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") {
        std::string mended("\xEF\xBB\xBF");
        return mended += MarkupRepair(text.substr(3), changes).Run();
    }
    return MarkupRepair(text, changes).Run();
}

} // namespace vexagpx
