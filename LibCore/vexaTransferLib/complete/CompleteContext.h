// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/PlaceProgress.h>
#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::complete {

/// What the functions that read a source into the model share.
class CompleteContext {
public:
    /// \param host its observer, progress and limits
    /// \param places the progress by place; null when the file has been read and reported already
    /// \param longElements in the order of the file, as far as they are known
    CompleteContext(reader::ReadContext& host, SourceText::Pointer source, reader::PlaceProgress* places,
                    const std::vector<reader::LongElement>& longElements)
        : host_(host), source_(std::move(source)), places_(places), longElements_(longElements),
          names_(*source_) {}

    const SourceText::Pointer& Source() const { return source_; }
    reader::ReadContext& Host() { return host_; }
    NamespaceCursor& Names() { return names_; }
    std::uint64_t PlaceOf(const ScannedChild& element) const { return source_->PlaceOf(element.begin); }
    GpxElement ElementOf(const ScannedChild& element) const;
    /// How many children of an element may become points; 0 when that is not known.
    std::uint64_t ExpectedChildren(const ScannedChild& element) const;
    /// True when an observer hears the notices.
    bool IsWatched() const { return host_.reporter.IsWanted(); }

    /// Calls `visit(child)` for each child that is an element, as ForEachChild does, and reports the progress.
    /// \throws reader::ReadAborted
    template <class Visit>
    const char* ForEach(const ScannedChild& parent, Visit visit) {
        path_.push_back(parent.name);
        const char* const end = ForEachChild(names_, *source_, parent.tag, [&](const ScannedChild& child) {
            Reach(child);
            return visit(child);
        });
        path_.pop_back();
        return end;
    }

    // The values of an element that has only text. Each returns the place after the element, and leaves the value
    // unchanged when the element has none. A second element of a kind that GPX allows once is reported.

    const char* ReadText(const ScannedChild& element, icu::UnicodeString& value);
    const char* ReadNumber(const ScannedChild& element, std::optional<double>& value);
    const char* ReadTime(const ScannedChild& element, std::optional<double>& value);
    const char* ReadInteger(const ScannedChild& element, std::optional<std::int32_t>& value);
    /// The index of the text among those that are known; 0 means that there is none.
    template <class Texts>
    const char* ReadChoice(const ScannedChild& element, const Texts& texts, std::size_t& index) {
        if (index != 0) {
            ReportSecond(element);
            return nullptr;
        }
        std::string scratch;
        const Value value = ValueOf(element, scratch);
        for (std::size_t i = 1; i < texts.size(); ++i)
            if (value.trimmed == texts[i])
                index = i;
        if (index == 0)
            ReportUnreadable(element, value.trimmed, "a value that the library knows");
        return value.end;
    }

    /// \{
    /// Reports to the observer something that is read although it should not be, or is not read but kept.
    void Tolerate(const ScannedChild& element, const char* message) {
        if (IsWatched())
            Notify(element, kGpxTolerated, message);
    }
    void ReportUnread(const ScannedChild& element, const char* message) {
        if (IsWatched())
            Notify(element, kGpxUnreadable, message);
    }
    void ReportUnreadable(const ScannedChild& element, std::string_view value, const char* what);
    void ReportSecond(const ScannedChild& element);
    /// \}

private:
    struct Value {
        std::string_view trimmed; ///< in the source, or in the scratch text
        const char* end;          ///< the place after the element
    };

    void Reach(const ScannedChild& child) {
        if (places_ != nullptr)
            places_->Reach(PlaceOf(child), source_->Text().size());
        else
            host_.Work();
    }
    /// Of an element with a number, a time or a word.
    Value ValueOf(const ScannedChild& element, std::string& scratch);
    void ReportPieces(const ScannedChild& element);
    void Notify(const ScannedChild& element, GpxSkipReason reason, std::string message);

    reader::ReadContext& host_;
    SourceText::Pointer source_;
    reader::PlaceProgress* places_;
    const std::vector<reader::LongElement>& longElements_;
    NamespaceCursor names_;
    /// The local names of the elements around.
    std::vector<std::string_view> path_;
};

} // namespace vexaTransferLib::complete
