// SPDX-License-Identifier: MIT
#include <vexagpx/repair/MarkupRepair.h>

#include <vexagpx/repair/RepairLog.h>
#include <vexagpx/repair/RootRepair.h>
#include <vexagpx/repair/StartTag.h>
#include <vexagpx/repair/TextRepair.h>
#include <vexagpx/repair/ValueRepair.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vexagpx {

namespace {

bool IsSpace(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool IsContainer(std::string_view name) {
    name = LocalPartOf(name);
    return name == "gpx" || name == "metadata" || name == "rte" || name == "trk" || name == "trkseg";
}

bool IsPoint(std::string_view name) {
    name = LocalPartOf(name);
    return name == "wpt" || name == "rtept" || name == "trkpt";
}

bool IsObject(std::string_view name) {
    name = LocalPartOf(name);
    return name == "wpt" || name == "rte" || name == "trk";
}

/// True for the end of a text that was cut off in what starts markup.
bool IsCutOpening(std::string_view rest) {
    for (const std::string_view opening : {"<!--", "<![CDATA[", "<!DOCTYPE", "</a", "<?"})
        if (rest.size() < opening.size() && opening.starts_with(rest))
            return true;
    return false;
}

class MarkupRepair {
public:
    MarkupRepair(std::string_view text, const RepairRules& rules, ChangeList& changes)
        : text_(text), rules_(rules), log_(text, changes) {}

    RepairedMarkup Run();

private:
    struct Open {
        std::string_view name;
        std::size_t outStart;                   ///< where its start tag is in the result
        std::vector<std::string_view> declared; ///< prefixes
        bool hasChildren = false;
        bool isDropped = false; ///< is not in the result when it ends
    };

    void TakeText();
    void TakeTime(std::string_view text);
    void TakeMarkup();
    void TakeSpecial(std::string_view start, std::string_view end, std::string_view what);
    void LeaveOutStart(std::string_view start, std::string_view what);
    void TakeComment(std::string_view content);
    void TakeDocumentType();
    void TakeStartTag();
    void TakeEndTag();
    void AddRootFor(const StartTag& tag);
    void StartAnother(const StartTag& tag);
    void ReopenRoot();
    void Push(const StartTag& tag, std::size_t outStart);
    void CheckPoint(const StartTag& tag);
    void NotePrefixes(const StartTag& tag);
    void NotePrefix(std::string_view name);
    void CloseTop();
    void CutOff();
    void DeclarePrefixes();

    std::string_view text_;
    const RepairRules& rules_;
    RepairLog log_;
    std::size_t at_ = 0;
    std::string out_;
    RepairedMarkup result_;
    std::vector<Open> open_;
    std::unordered_map<std::string_view, std::size_t> openNames_;
    std::unordered_map<std::string_view, std::size_t> declared_;
    std::map<std::string, std::size_t> undeclared_; ///< prefixes, with the place of the first
    std::map<std::string, std::string>
        declaredLater_; ///< prefixes that other documents declare, with their namespaces
    std::map<std::string_view, bool> hasEnd_; ///< of comments and the like: whether one may follow
    Open root_{};
    std::string rootNamespace_;
    std::size_t rootNameEnd_ = 0; ///< in the result; 0 before the root
    std::size_t rootEnd_ = 0;     ///< where its end tag is in the result, when it has ended
    bool hasEnded_ = false;       ///< behind the end of the root
    bool isAnother_ = false;      ///< in a document behind the first
};

void MarkupRepair::TakeText() {
    const std::size_t end = std::min(text_.find('<', at_), text_.size());
    const std::string_view piece = text_.substr(at_, end - at_);
    if (!open_.empty()) {
        if (LocalPartOf(open_.back().name) == "time")
            TakeTime(piece);
        else
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

void MarkupRepair::TakeTime(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::size_t end = text.find_last_not_of(" \t\r\n") + 1;
    const std::string_view time = begin < end ? text.substr(begin, end - begin) : std::string_view();
    if (!LacksZone(time)) {
        AppendRepairedText(text, at_, out_, log_);
        return;
    }
    if (rules_.zone == nullptr) {
        ++result_.timesWithoutZone;
        out_ += text;
        return;
    }
    const std::string zone = ZoneText(time, *rules_.zone);
    log_.Add(at_, "zone", "the time " + std::string(time) + " gets the zone " + zone);
    out_.append(text.substr(0, end)).append(zone).append(text.substr(end));
}

/// A comment, CDATA or an instruction.
void MarkupRepair::TakeSpecial(std::string_view start, std::string_view end, std::string_view what) {
    bool& mayEnd = hasEnd_.emplace(end, true).first->second;
    const std::size_t close = mayEnd ? text_.find(end, at_ + start.size()) : std::string_view::npos;
    if (close == std::string_view::npos) {
        mayEnd = false;
        LeaveOutStart(start, what);
        return;
    }
    const bool isDeclaration = text_.substr(at_, 6) == "<?xml ";
    const bool isMisplaced = (isDeclaration && !out_.empty()) || (start == "<![CDATA[" && open_.empty());
    const std::string_view content = text_.substr(at_ + start.size(), close - at_ - start.size());
    if (isMisplaced) {
        log_.Add(at_, "left-out", std::string(what) + " in a wrong place is left out");
    } else {
        out_ += start;
        if (start == "<!--")
            TakeComment(content);
        else
            AppendWithoutBadCharacters(content, at_ + start.size(), out_, log_);
        out_ += end;
    }
    at_ = close + end.size();
}

/// What has no end ends with its line, or before the next markup, so that no points are lost in it.
void MarkupRepair::LeaveOutStart(std::string_view start, std::string_view what) {
    log_.Add(at_, "left-out", std::string(what) + " without an end is left out");
    at_ += start.size();
    if (start == "<![CDATA[")
        return;
    const bool isLast = text_.find('<', at_) == std::string_view::npos;
    at_ = isLast ? text_.size() : text_.find_first_of("<\n", at_);
}

void MarkupRepair::TakeComment(std::string_view content) {
    if (content.find("--") == std::string_view::npos && !content.ends_with('-')) {
        AppendWithoutBadCharacters(content, at_ + 4, out_, log_);
        return;
    }
    log_.Add(at_, "comment", "-- in a comment became - -");
    std::string mended;
    for (const char c : content)
        mended += c == '-' ? std::string("- ") : std::string(1, c);
    AppendWithoutBadCharacters(mended, at_, out_, log_);
}

void MarkupRepair::TakeDocumentType() {
    log_.Add(at_, "left-out", "a document type is left out");
    std::size_t end = text_.find_first_of("[>", at_);
    if (end != std::string_view::npos && text_[end] == '[')
        end = text_.find('>', std::min(text_.find(']', end), text_.size()));
    at_ = end == std::string_view::npos ? text_.size() : end + 1;
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
    Open open{tag.name, outStart, {}};
    for (const TagAttribute& attribute : tag.attributes)
        if (attribute.name.starts_with("xmlns:")) {
            open.declared.push_back(attribute.name.substr(6));
            ++declared_[open.declared.back()];
        }
    ++openNames_[tag.name];
    open_.push_back(std::move(open));
    if (open_.size() == 1)
        root_ = open_.back();
}

void MarkupRepair::CloseTop() {
    const Open top = std::move(open_.back());
    open_.pop_back();
    if (open_.empty())
        rootEnd_ = out_.size();
    if (top.isDropped)
        out_.resize(top.outStart);
    else
        out_ += "</" + std::string(top.name) + ">";
    for (const std::string_view prefix : top.declared)
        --declared_[prefix];
    --openNames_[top.name];
    hasEnded_ = open_.empty();
}

/// What stands alone gets the elements in which it belongs.
void MarkupRepair::AddRootFor(const StartTag& tag) {
    if (!IsObject(tag.name) && tag.name != "trkseg" && tag.name != "trkpt")
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
    rootNamespace_ = kRootNamespace11;
    add("gpx", " version=\"1.1\" creator=\"vexagpx\" xmlns=\"" + rootNamespace_ + "\"");
    if (tag.name == "trkseg" || tag.name == "trkpt")
        add("trk", "");
    if (tag.name == "trkpt")
        add("trkseg", "");
}

/// The root is open again behind its last child. What follows its end tag is left out.
void MarkupRepair::ReopenRoot() {
    out_.resize(rootEnd_);
    open_.push_back(root_);
    ++openNames_[root_.name];
    for (const std::string_view prefix : root_.declared)
        ++declared_[prefix];
    hasEnded_ = false;
}

/// The root of another document in the same file.
void MarkupRepair::StartAnother(const StartTag& tag) {
    if (!open_.empty())
        CutOff();
    const std::string prefix(PrefixOfName(tag.name));
    const std::string_view space =
        tag.Find(prefix.empty() ? "xmlns" : "xmlns:" + prefix).value_or(rootNamespace_);
    if (space != rootNamespace_ || tag.name != root_.name)
        throw std::runtime_error(
            "Another document with another version of GPX follows, which is not repaired.");
    log_.Add(at_, "document",
             "the waypoints, routes and tracks of another document are put into the first one");
    for (const TagAttribute& attribute : tag.attributes)
        if (attribute.name.starts_with("xmlns:"))
            declaredLater_.emplace(attribute.name.substr(6), attribute.value);
    ReopenRoot();
    isAnother_ = true;
    at_ = tag.end;
    if (tag.isEmpty)
        CloseTop();
}

void MarkupRepair::CheckPoint(const StartTag& tag) {
    if (!IsPoint(tag.name) || HasPlace(tag))
        return;
    if (rules_.dropsBadPoints) {
        open_.back().isDropped = true;
        log_.Add(at_, "bad-point",
                 "the point <" + std::string(tag.name) + "> without a place on the earth is removed");
    } else {
        ++result_.badPoints;
    }
}

void MarkupRepair::TakeStartTag() {
    StartTag tag = ParseStartTag(text_, at_, log_);
    const bool isRoot = LocalPartOf(tag.name) == "gpx";
    if (rootNameEnd_ == 0 && isRoot) {
        RepairRoot(tag, at_, log_);
        rootNameEnd_ = out_.size() + 1 + tag.name.size();
        const std::string prefix(PrefixOfName(tag.name));
        rootNamespace_ = tag.Find(prefix.empty() ? "xmlns" : "xmlns:" + prefix).value_or(kRootNamespace11);
    } else if (rootNameEnd_ == 0) {
        AddRootFor(tag);
    } else if (isRoot && tag.name == root_.name && !tag.isCut) {
        StartAnother(tag);
        return;
    } else if (hasEnded_ && !tag.isCut) {
        if (!IsObject(tag.name))
            throw std::runtime_error("Elements follow the end of the document, which is not repaired.");
        log_.Add(at_, "outside", "what follows the end of the document is put into it");
        ReopenRoot();
    }
    if (tag.isCut && (!open_.empty() || hasEnded_)) {
        log_.Add(at_, "left-out", "the unfinished tag <" + std::string(tag.name) + "> is left out");
        at_ = text_.size();
        return;
    }
    const std::size_t outStart = out_.size();
    Push(tag, outStart);
    CheckPoint(tag);
    if (isAnother_ && open_.size() == 2 && !IsObject(tag.name)) {
        open_.back().isDropped = true;
        log_.Add(at_, "left-out", "<" + std::string(tag.name) + "> of another document is left out");
    }
    NotePrefixes(tag);
    out_ += tag.bytes;
    if (tag.isEmpty) {
        // The end is in the start tag.
        const bool isDropped = open_.back().isDropped;
        CloseTop();
        if (!isDropped) {
            out_.resize(outStart + tag.bytes.size());
            out_ += "/>";
        }
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
        const bool isDropped = open_.back().isDropped;
        CloseTop();
        if (!isDropped)
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
    if (IsCutOpening(rest)) {
        log_.Add(at_, "left-out", "unfinished markup is left out");
        at_ = text_.size();
    } else if (rest.substr(0, 4) == "<!--") {
        TakeSpecial("<!--", "-->", "a comment");
    } else if (rest.substr(0, 9) == "<![CDATA[") {
        TakeSpecial("<![CDATA[", "]]>", "CDATA");
    } else if (rest.substr(0, 2) == "<?") {
        TakeSpecial("<?", "?>", "an instruction");
    } else if (rest.substr(0, 9) == "<!DOCTYPE" && rootNameEnd_ == 0) {
        TakeDocumentType();
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

void MarkupRepair::DeclarePrefixes() {
    std::string declarations;
    for (const auto& [prefix, place] : undeclared_) {
        const auto later = declaredLater_.find(prefix);
        const std::string space = later != declaredLater_.end() ? later->second : NamespaceForPrefix(prefix);
        declarations.append(" xmlns:").append(prefix).append("=\"").append(space).append("\"");
        std::string what = "the prefix ";
        what.append(prefix).append(" is declared as ").append(space);
        log_.Add(place, "prefix", std::move(what));
    }
    out_.insert(rootNameEnd_, declarations);
}

RepairedMarkup MarkupRepair::Run() {
    while (at_ < text_.size()) {
        if (text_[at_] == '<')
            TakeMarkup();
        else
            TakeText();
    }
    CutOff();
    if (rootNameEnd_ == 0)
        throw std::runtime_error("There is no element of GPX in it.");
    DeclarePrefixes();
    result_.text = std::move(out_);
    return std::move(result_);
}

} // namespace

RepairedMarkup RepairMarkup(std::string_view text, const RepairRules& rules, ChangeList& changes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (!text.starts_with(kMark))
        return MarkupRepair(text, rules, changes).Run();
    RepairedMarkup markup = MarkupRepair(text.substr(kMark.size()), rules, changes).Run();
    markup.text.insert(0, kMark);
    return markup;
}

} // namespace vexagpx
