// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/ByteWindow.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/NotPlain.h>
#include <vexaTransferLib/reader/PlainBytes.h>
#include <vexaTransferLib/reader/PlainDeclaration.h>
#include <vexaTransferLib/reader/PlainNames.h>
#include <vexaTransferLib/text/RawText.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vexaTransferLib::reader {

using text::RawText;

/// An attribute of a start tag; a namespace declaration is one too.
struct PlainAttribute {
    const PlainName* name;
    RawText value;
    const char16_t* namespaceUri; ///< only of a name with a prefix that is no declaration; null for none
};

/// A start tag of a plain file. The attributes are valid during the call that receives it.
struct PlainTag {
    const PlainName& name;
    const char16_t* namespaceUri; ///< null for none
    std::span<const PlainAttribute> attributes;
    std::uint64_t begin; ///< the place of its "<"
    std::uint64_t end;   ///< the place after its ">"
};

// More than elements have: attributes are compared with each other.
inline constexpr std::uint64_t kMostPlainAttributes = 64;
inline constexpr std::uint64_t kMostPlainDepth = 256;

/// The limits of a plain file, which also has those that nothing but an unusual file exceeds.
/// \param given of an untrusted file; empty for a trusted one
GpxInputLimits PlainLimits(const std::optional<GpxInputLimits>& given);

/// The lexer of LexPlain, for one file.
///
/// The functions that recognise something return the place after it. When they do not recognise it, they return null,
/// and stop_ says why: kIsPlain when only the window ended.
template <class Handler>
class PlainLexer {
public:
    PlainLexer(ByteWindow& window, const std::optional<GpxInputLimits>& limits, Handler& handler)
        : window_(window), handler_(handler), limits_(PlainLimits(limits)),
          names_(limits_.names, limits_.namespaces, limits_.namespaceLength), next_(window.Begin()) {
        LookAtWindow();
    }

    NotPlain Run() {
        while (Length(next_, end_) < kLongestPlainDeclaration && ReadOn()) {
        }
        const std::optional<std::size_t> declaration = PlainDeclarationLength({next_, Length(next_, end_)});
        if (!declaration)
            return NotPlain::kDeclaration;
        next_ += *declaration;
        for (const char* at = next_;;) {
            const char* const after = TakeNext(at);
            if (after != nullptr) {
                at = after;
                continue;
            }
            next_ = at;
            if (stop_ != NotPlain::kIsPlain)
                return stop_;
            if (!ReadOn())
                return next_ == end_ && depth_ == 0 && hasRoot_ ? NotPlain::kIsPlain : NotPlain::kOther;
            at = next_;
        }
    }

private:
    using Form = RawText::Form;

    // No reference is longer, and no other character.
    static constexpr auto kLongestCharacter = static_cast<std::ptrdiff_t>(ByteWindow::kPadding);

    struct Open {
        const PlainName* name;
        std::size_t declarations; // in scope around the element
    };

    static std::size_t Length(const char* begin, const char* end) {
        return static_cast<std::size_t>(end - begin);
    }
    std::uint64_t PlaceOf(const char* byte) const { return firstPlace_ + Length(firstByte_, byte); }
    RawText Raw(const char* begin, const char* end, Form form) const {
        return {PlaceOf(begin), PlaceOf(end), form};
    }

    // What was cut off by the end of the window is recognised again, from its start.
    bool ReadOn() {
        const std::uint64_t place = PlaceOf(next_);
        const bool hasMore = window_.ReadOn(handler_.KeptFrom(place));
        next_ = window_.At(place);
        LookAtWindow();
        return hasMore;
    }

    void LookAtWindow() {
        firstByte_ = window_.Begin();
        firstPlace_ = window_.PlaceOf(firstByte_);
        end_ = window_.End();
    }

    const char* Stop(NotPlain reason) {
        stop_ = reason;
        return nullptr;
    }
    // For a byte that is not what it should be, perhaps because the window ends there.
    const char* StopAt(const char* at, NotPlain reason = NotPlain::kOther) {
        return at >= end_ ? nullptr : Stop(reason);
    }

    const char* TakeNext(const char* at) {
        if (*at != '<')
            return depth_ == 0 ? TakeBlanks(at) : TakeText(at);
        switch (at[1]) {
        case '/':
            return TakeEndTag(at);
        case '!':
            return TakeExclamation(at);
        case '?':
            return TakeInstruction(at);
        default:
            return TakeStartTag(at);
        }
    }

    const char* TakeBlanks(const char* begin) {
        const char* const at = SkipBlanks(begin);
        return at != begin ? at : StopAt(at);
    }

    const char* TakeText(const char* begin) {
        Form form = Form::kAscii;
        // Most texts are an indentation or a short value.
        const char* at = begin;
        while (Index(*at) <= ' ' && (*at == ' ' || *at == '\n' || *at == '\t'))
            ++at;
        for (at = TextScan::Find(at); *at != '<'; at = TextScan::Find(at)) {
            if (*at == ']' && at[1] == ']' && at[2] == '>')
                return Stop(NotPlain::kOther);
            at = SkipCharacter(at, form);
            if (at == nullptr)
                return nullptr;
        }
        if (!AddText(begin, at))
            return Stop(NotPlain::kLimit);
        handler_.Text(Raw(begin, at, form));
        return at;
    }

    bool AddText(const char* begin, const char* end) {
        textBytes_ += Length(begin, end);
        return textBytes_ <= limits_.textLength;
    }

    // Skips a character of any kind.
    const char* SkipCharacter(const char* at, Form& form) {
        return *at == '\n' || *at == '\t' ? at + 1 : SkipUnusual(at, form);
    }

    [[gnu::noinline]] const char* SkipUnusual(const char* at, Form& form) {
        if (*at == '&')
            return SkipReference(at, form);
        if (*at == '\r')
            form = Form::kEncoded;
        else if (Index(*at) >= 0x80)
            form = std::max(form, Form::kUtf8);
        else if (Index(*at) < ' ')
            return StopAt(at);
        const unsigned length = text::CharacterLength(at);
        return length != 0 ? at + length : StopAt(at + kLongestCharacter);
    }

    const char* SkipReference(const char* at, Form& form) {
        const unsigned length = text::ReadReference(at).length;
        form = Form::kEncoded;
        return length != 0 ? at + length : StopAt(at + kLongestCharacter);
    }

    const char* TakeName(const char* begin, const PlainName*& name) {
        name = names_.Expected(begin, end_);
        if (name != nullptr) {
            const char* const end = begin + name->Bytes().size();
            if (kEndsName[Index(*end)])
                return end;
        }
        return TakeOtherName(begin, name);
    }

    // Rarely called, and kept out of the callers so that they stay small.
    [[gnu::noinline]] const char* TakeOtherName(const char* begin, const PlainName*& name) {
        const char* const at = SkipName(begin);
        if (at == nullptr)
            return nullptr;
        name = names_.Find({begin, Length(begin, at)});
        return name != nullptr ? at : Stop(NotPlain::kLimit);
    }

    // At most one colon, with a name on each side.
    const char* SkipName(const char* at) {
        for (bool isLocal = false;; isLocal = true) {
            if (!kStartsName[Index(*at)])
                return StopAt(at, NotPlain::kName);
            while (kInName[Index(*at)])
                ++at;
            if (*at != ':' || isLocal)
                return at != end_ ? at : nullptr;
            ++at;
        }
    }

    const char* TakeStartTag(const char* begin) {
        const PlainName* name = nullptr;
        const char* at = TakeName(begin + 1, name);
        attributeCount_ = 0;
        hasPrefixes_ = false;
        while (at != nullptr && *at != '>') {
            if (*at == '/')
                return EndEmptyTag(*name, begin, at + 1);
            at = TakeAttribute(at);
        }
        return at != nullptr ? BeginElement(*name, begin, at + 1) : nullptr;
    }

    // With the blanks before it, of which there must be one. They may also come before the end of the tag.
    const char* TakeAttribute(const char* begin) {
        const char* at = SkipBlanks(begin);
        if (at == begin)
            return StopAt(at);
        if (*at == '>' || *at == '/')
            return at;
        if (attributeCount_ >= limits_.attributes)
            return Stop(NotPlain::kLimit);
        const PlainName* name = nullptr;
        at = TakeName(at, name);
        if (at == nullptr)
            return nullptr;
        at = SkipBlanks(at);
        if (*at != '=')
            return StopAt(at);
        return TakeValue(SkipBlanks(at + 1), *name);
    }

    const char* TakeValue(const char* begin, const PlainName& name) {
        const char quote = *begin;
        if (quote != '"' && quote != '\'')
            return StopAt(begin);
        ++begin;
        Form form = Form::kAscii;
        const char* at = ValueScan::Find(begin);
        for (; *at != quote; at = ValueScan::Find(at)) {
            if (*at == '<' || IsOtherLineEnd(at))
                return Stop(NotPlain::kOther);
            if (*at == '\t' || *at == '\n')
                form = Form::kEncoded;
            at = SkipCharacter(at, form);
            if (at == nullptr)
                return nullptr;
        }
        if (Length(begin, at) > limits_.textLength)
            return Stop(NotPlain::kLimit);
        PlainAttribute& attribute = attributes_[attributeCount_++];
        attribute.name = &name;
        attribute.value = Raw(begin, at, form);
        hasPrefixes_ = hasPrefixes_ || name.IsSpecial();
        return at + 1;
    }

    [[gnu::noinline]] const char* EndEmptyTag(const PlainName& name, const char* begin, const char* at) {
        if (*at != '>')
            return StopAt(at);
        const char* const end = BeginElement(name, begin, at + 1);
        if (end != nullptr)
            EndElement(end);
        return end;
    }

    [[gnu::always_inline]] const char* BeginElement(const PlainName& name, const char* begin,
                                                    const char* end) {
        if (hasRoot_ && depth_ == 0)
            return Stop(NotPlain::kOther);
        if (depth_ >= limits_.elementDepth || Length(begin, end) > limits_.tagBytes)
            return Stop(NotPlain::kLimit);
        hasRoot_ = true;
        textBytes_ = 0;
        open_[depth_++] = {&name, declared_};
        if (hasPrefixes_ ? !TakeNamespaces() : HasTwice())
            return Stop(NotPlain::kNamespace);
        const char16_t* uri = nullptr;
        if (!names_.FindNamespace(name, uri))
            return Stop(NotPlain::kNamespace);
        handler_.StartElement({name, uri, Attributes(), PlaceOf(begin), PlaceOf(end)});
        return end;
    }

    std::span<const PlainAttribute> Attributes() const { return {attributes_.data(), attributeCount_}; }

    // True when one of the attributes, which have no prefixes, is there twice.
    bool HasTwice() const {
        for (std::size_t i = 1; i < attributeCount_; ++i)
            for (std::size_t other = 0; other < i; ++other)
                if (attributes_[i].name == attributes_[other].name)
                    return true;
        return false;
    }

    // False when a declaration is not certain to be allowed, a prefix is not declared, or an attribute is there twice.
    [[gnu::noinline]] bool TakeNamespaces() {
        const std::span<PlainAttribute> attributes{attributes_.data(), attributeCount_};
        for (const PlainAttribute& attribute : attributes)
            if (attribute.name->IsDeclaration() && !Declare(attribute))
                return false;
        declared_ = names_.CountDeclared();
        for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute) {
            const PlainName& name = *attribute->name;
            attribute->namespaceUri = nullptr;
            if (name.HasPrefix() && !name.IsDeclaration() &&
                !names_.FindNamespace(name, attribute->namespaceUri))
                return false;
            for (auto other = attributes.begin(); other != attribute; ++other)
                if (IsSame(name, *other->name))
                    return false;
        }
        return true;
    }

    bool Declare(const PlainAttribute& attribute) {
        const RawText& value = attribute.value;
        return value.form == Form::kAscii &&
               names_.Declare(*attribute.name,
                              {window_.At(value.begin), static_cast<std::size_t>(value.end - value.begin)});
    }

    bool IsSame(const PlainName& left, const PlainName& right) const {
        if (&left == &right)
            return true;
        if (!left.HasPrefix() || !right.HasPrefix() || left.IsDeclaration() || right.IsDeclaration())
            return false;
        const char16_t* leftUri = nullptr;
        const char16_t* rightUri = nullptr;
        return names_.FindNamespace(left, leftUri) && names_.FindNamespace(right, rightUri) &&
               leftUri == rightUri && Equals(left.Local(), right.Local());
    }

    const char* TakeEndTag(const char* begin) {
        if (depth_ == 0)
            return Stop(NotPlain::kOther);
        const char* at = begin + 2;
        const PlainName& name = *open_[depth_ - 1].name;
        if (!PlainNames::StartsWith(at, end_, name))
            return StopAt(at + name.Bytes().size());
        at = SkipBlanks(at + name.Bytes().size());
        if (*at != '>')
            return StopAt(at);
        EndElement(at + 1);
        return at + 1;
    }

    void EndElement(const char* end) {
        const std::size_t declared = open_[--depth_].declarations;
        if (declared != declared_)
            names_.EndDeclarations(declared_ = declared);
        textBytes_ = 0;
        handler_.EndElement(PlaceOf(end));
    }

    const char* TakeExclamation(const char* begin) {
        constexpr std::string_view kComment = "<!--";
        constexpr std::string_view kCData = "<![CDATA[";
        const std::string_view rest(begin, std::min(Length(begin, end_), kCData.size()));
        if (rest.starts_with(kComment))
            return TakeComment(begin, begin + kComment.size());
        if (rest == kCData)
            return TakeCData(begin + kCData.size());
        if (rest.starts_with("<!D"))
            return Stop(NotPlain::kDocumentType);
        return rest.size() < kCData.size() ? nullptr : Stop(NotPlain::kOther);
    }

    // Skips to the next of the three marks that may end a comment, a CDATA section or a processing instruction.
    const char* SkipToMark(const char* at, Form& form) {
        for (at = OtherScan::Find(at); *at != '-' && *at != ']' && *at != '?'; at = OtherScan::Find(at)) {
            if (IsOtherLineEnd(at))
                return Stop(NotPlain::kOther);
            at = SkipCharacter(at, form);
            if (at == nullptr)
                return nullptr;
        }
        return at;
    }

    const char* TakeComment(const char* begin, const char* at) {
        Form form = Form::kAscii;
        for (at = SkipToMark(at, form); at != nullptr; at = SkipToMark(at + 1, form))
            if (*at == '-' && at[1] == '-')
                return at[2] == '>' ? EndOther(begin, at + 3) : StopAt(at + 2);
        return nullptr;
    }

    const char* TakeCData(const char* begin) {
        if (depth_ == 0)
            return Stop(NotPlain::kOther);
        Form form = Form::kAscii;
        const char* at = SkipToMark(begin, form);
        while (at != nullptr && !(*at == ']' && at[1] == ']' && at[2] == '>'))
            at = SkipToMark(at + 1, form);
        if (at == nullptr)
            return nullptr;
        if (!AddText(begin, at))
            return Stop(NotPlain::kLimit);
        handler_.CData(Raw(begin, at, form == Form::kAscii ? form : Form::kSection));
        return at + 3;
    }

    const char* TakeInstruction(const char* begin) {
        const char* const name = begin + 2;
        const char* at = name;
        while (kInName[Index(*at)])
            ++at;
        if (at == end_)
            return nullptr;
        if (!kStartsName[Index(*name)] || IsXml({name, Length(name, at)}))
            return Stop(NotPlain::kOther);
        if (*at == '?')
            return at[1] == '>' ? EndOther(begin, at + 2) : StopAt(at + 1);
        if (!IsBlank(*at))
            return Stop(NotPlain::kOther);
        Form form = Form::kAscii;
        for (at = SkipToMark(at, form); at != nullptr; at = SkipToMark(at + 1, form))
            if (*at == '?' && at[1] == '>')
                return EndOther(begin, at + 2);
        return nullptr;
    }

    const char* EndOther(const char* begin, const char* end) {
        if (Length(begin, end) > limits_.textLength)
            return Stop(NotPlain::kLimit);
        handler_.Other();
        return end;
    }

    ByteWindow& window_;
    Handler& handler_;
    GpxInputLimits limits_;
    PlainNames names_;
    // Where reading goes on when the window ends.
    const char* next_;
    // The window's own values, which are read for every part.
    const char* firstByte_ = nullptr;
    std::uint64_t firstPlace_ = 0;
    const char* end_ = nullptr;
    // The declarations of namespaces that are in scope.
    std::size_t declared_ = 0;
    std::array<Open, kMostPlainDepth> open_;
    std::size_t depth_ = 0;
    // Of the start tag that is read.
    std::array<PlainAttribute, kMostPlainAttributes> attributes_;
    std::size_t attributeCount_ = 0;
    // True when one of them has a prefix or is a declaration.
    bool hasPrefixes_ = false;
    bool hasRoot_ = false;
    // The bytes of text since the last tag.
    std::uint64_t textBytes_ = 0;
    NotPlain stop_ = NotPlain::kIsPlain;
};

/// Recognises a well-formed file of XML 1.0 in UTF-8 that has nothing unusual. What it accepts, the XML parser accepts
/// too, with the same events and without a message. Everything else it leaves to the XML parser: it does not say what
/// is wrong with a file, only why it stopped. Reads the window to the end of the file, or to the first part that is not
/// plain.
/// \param limits of an untrusted file; empty for a trusted one
/// \param handler receives the parts of the file in their order, by these functions:
///
///     void StartElement(const PlainTag&);
///     void EndElement(std::uint64_t end);         // the place after the end tag, or after an empty element's tag
///     void Text(const RawText&);                  // between two of the other parts, within the root
///     void CData(const RawText&);
///     void Other();                               // a comment or a processing instruction
///     std::uint64_t KeptFrom(std::uint64_t next); // from where the window must keep its bytes when it moves: not after
///                                                 // the place of the next part
///
/// \throws what the window and the handler throw; std::bad_alloc
template <class Handler>
NotPlain LexPlain(ByteWindow& window, const std::optional<GpxInputLimits>& limits, Handler& handler) {
    return PlainLexer<Handler>(window, limits, handler).Run();
}

} // namespace vexaTransferLib::reader
