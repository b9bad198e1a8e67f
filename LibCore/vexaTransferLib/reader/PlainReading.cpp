// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainReading.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/PlaceProgress.h>
#include <vexaTransferLib/reader/PlainLexer.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <new>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

/// Passes on the parts of a plain file to a walk, and reports to an observer how far it has come.
class WalkHandler {
public:
    /// \param progress may be null
    WalkHandler(EventWalk& walk, ByteWindow& window, Progress* progress,
                const std::vector<LongElement>& longElements)
        : walk_(walk), window_(window), progress_(progress), nextLong_(longElements.data()),
          endOfLong_(longElements.data() + longElements.size()) {}

    void Begin() { progress_.Begin(Known()); }
    void Finish() { Reach(Known()); }

    void StartElement(const PlainTag& tag) {
        Reach(tag.end);
        TagPlace place{{}, tag.begin, tag.end};
        if (walk_.WantsLocation())
            place.location = window_.Locate(tag.end);
        if (nextLong_ != endOfLong_ && nextLong_->begin == tag.begin)
            walk_.ExpectChildren((nextLong_++)->children);
        if (!walk_.StartElement(tag.namespaceUri, tag.name.Local(), place))
            return;
        for (const PlainAttribute& attribute : tag.attributes)
            walk_.AddAttribute(attribute.name->Qualified(), attribute.value,
                               attribute.name->IsSpecial() ? attribute.namespaceUri : nullptr);
        walk_.BeginContent();
    }
    void EndElement(std::uint64_t end) {
        Reach(end);
        walk_.EndElement();
    }
    void Text(const RawText& text) {
        Reach(text.end);
        walk_.AddText(text);
    }
    void CData(const RawText& text) {
        Reach(text.end);
        walk_.AddCData(text);
    }
    void Other() { walk_.AddOther(); }
    std::uint64_t KeptFrom(std::uint64_t next) const { return walk_.KeptFrom(next); }

private:
    std::uint64_t Known() const { return window_.PlaceOf(window_.End()); }
    void Reach(std::uint64_t place) { progress_.Reach(place, Known()); }

    EventWalk& walk_;
    ByteWindow& window_;
    PlaceProgress progress_;
    const LongElement* nextLong_;
    const LongElement* endOfLong_;
};

} // namespace

PlainReading::PlainReading(ReadContext& context, XmlInput& input, const ReadSettings& settings)
    : input_(input), settings_(settings), walk_(context, document_) {
    GpxModelAccess::SetName(document_, DefaultDocumentName(input.Name()));
}

bool PlainReading::Parse() {
    const std::unique_ptr<ByteWindow> window = OpenPlain();
    if (!window)
        return false;
    try {
        return Restart(*window) && ReadAgain(*window);
    } catch (const xercesc::XMLException&) {
        return false; // The file could be read a moment ago.
    }
}

// What goes wrong here goes wrong for the XML parser too, which reports it.
std::unique_ptr<ByteWindow> PlainReading::OpenPlain() {
    // A host can have the XML parser take more characters for line ends.
    if (xercesc::XMLPlatformUtils::isNELRecognized())
        return nullptr;
    try {
        std::unique_ptr<xercesc::BinInputStream> stream = input_.OpenBytes();
        if (!stream)
            return nullptr;
        auto window = std::make_unique<ByteWindow>(std::move(stream));
        window->LeaveLines();
        return CheckPlain(*window, settings_.limits, longElements_) == NotPlain::kIsPlain ? std::move(window)
                                                                                          : nullptr;
    } catch (const xercesc::XMLException&) {
        return nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

// A long file is read again, a short one is still there.
bool PlainReading::Restart(ByteWindow& window) {
    if (window.IsWhole()) {
        window.Restart();
        return true;
    }
    std::unique_ptr<xercesc::BinInputStream> stream = input_.OpenBytes();
    if (!stream)
        return false;
    window.Restart(std::move(stream));
    return true;
}

bool PlainReading::ReadAgain(ByteWindow& window) {
    settings_.receiver.resetErrors();
    walk_.ReadFrom(window);
    WalkHandler handler(walk_, window, input_.GetProgress(), longElements_);
    handler.Begin();
    if (LexPlain(window, settings_.limits, handler) != NotPlain::kIsPlain)
        return false;
    handler.Finish();
    input_.EndProgress();
    return true;
}

void PlainReading::MoveTo(GpxDocument& document) {
    walk_.Finish();
    document = std::move(document_);
    try {
        walk_.RethrowFailure();
    } catch (...) {
        RethrowContentError(input_.Name(), walk_.IsGpx(), walk_.FailureLocation());
    }
}

} // namespace vexaTransferLib::reader
