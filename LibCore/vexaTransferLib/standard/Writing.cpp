// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/Writing.h>

#include <vexaTransferLib/model/GpxModelAccess.h>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;

/// For reading a source again, without an observer and limits.
class QuietContext final : public reader::ReadContext {
public:
    void CleanText(icu::UnicodeString&) override {}
};

SourceText::Pointer PointerTo(const SourceText* source) {
    return SourceText::Pointer(source);
}

// That of the document, or of the first of its objects that has one.
SourceText::Pointer FindMainSource(const GpxDocument& document) {
    if (const SourceText* const source = Access::GetSource(document.GetElement()))
        return PointerTo(source);
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        if (const SourceText* const source = Access::GetSource(*point))
            return PointerTo(source);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        if (const SourceText* const source = Access::GetSource(route->GetElement()))
            return PointerTo(source);
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        if (const SourceText* const source = Access::GetSource(track->GetElement()))
            return PointerTo(source);
    return nullptr;
}

} // namespace

Writing::Writing(const GpxDocument& document, const GpxStandardOptions& options, PieceOutput& output)
    : options_(options), output_(output), is10_(options.version.IsGpx10()), main_(FindMainSource(document)),
      host_(std::make_unique<QuietContext>()) {
    if (!main_)
        return;
    std::string_view rest = ScanTag(main_->At(main_->RootPlace())).attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (!IsDeclaration(attribute.name) || attribute.name.find(':') == std::string_view::npos)
            continue;
        const std::string_view prefix = LocalNameOf(attribute.name);
        declarations_.push_back({std::string(prefix),
                                 std::string(main_->FindNamespace(prefix, main_->RootPlace()).value_or(""))});
    }
}

bool Writing::IsDeclared(std::string_view prefix, std::string_view uri) const {
    if (hasInner_ && inner_.prefix == prefix)
        return inner_.uri == uri;
    if (prefix == "xml")
        return true;
    return !declaresAll_ && main_ && !prefix.empty() &&
           main_->FindNamespace(prefix, main_->RootPlace()) == uri;
}

complete::CompleteContext& Writing::ContextOf(const SourceText& source) {
    if (contextSource_ != &source) {
        context_ =
            std::make_unique<complete::CompleteContext>(*host_, PointerTo(&source), nullptr, noLongElements_);
        contextSource_ = &source;
    }
    return *context_;
}

SourceElement Writing::ElementAt(const SourceText& source, const char* begin) {
    return {&source, ScanChild(NamesOf(source), source, begin), source.EndOf(begin)};
}

SourceElement Writing::ElementOf(const GpxElement& element) {
    const SourceText* const source = Access::GetSource(element);
    return source != nullptr ? ElementAt(*source, source->At(Access::GetPlace(element))) : SourceElement();
}

SourceElements Writing::ElementsOf(const std::vector<GpxElement>& elements) {
    SourceElements found;
    found.reserve(elements.size());
    for (const GpxElement& element : elements)
        found.push_back(ElementOf(element));
    return found;
}

SourceElements Writing::ChildrenOf(const SourceElement& parent) {
    SourceElements children;
    if (parent.source == nullptr)
        return children;
    ForEachChild(NamesOf(*parent.source), *parent.source, parent.child.tag, [&](const ScannedChild& child) {
        const char* const end = parent.source->EndOf(child.begin);
        children.push_back({parent.source, child, end});
        return end;
    });
    return children;
}

void Writing::StartLine(int depth) {
    if (layout_.separator.empty())
        return;
    output_.Append(layout_.separator);
    for (int i = layout_.depth; i < depth; ++i)
        output_.Append(layout_.indent);
}

std::string Writing::ObjectName() const {
    std::string name(object_);
    if (index_ != 0)
        name += ' ' + std::to_string(index_);
    if (segment_ != 0)
        name += ", segment " + std::to_string(segment_);
    if (point_ != 0)
        name += ", point " + std::to_string(point_);
    return name;
}

void Writing::ReportUnwritten(std::string_view element, std::string message) {
    if (options_.unwritten)
        options_.unwritten({ObjectName(), std::string(element), std::move(message)});
}

} // namespace vexaTransferLib::standard
