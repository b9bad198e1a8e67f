// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EncodingShape.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace vexaTransferLib::reader {

namespace {

using Markup = EncodingShape::Markup;

constexpr XMLSize_t kBlock = 16;
constexpr unsigned kAscii = 0x80;
constexpr unsigned kBytes = 0x100;
constexpr std::u16string_view kMarkup = u"<>=\"'!?-/";

/// Uses a new converter for each text, because the state after one text must not change the result of the
/// next.
class Converter {
public:
    explicit Converter(const std::u16string& encoding) : encoding_(encoding) {}

    bool IsThere() const { return Make() != nullptr; }

    /// Empty when the bytes cannot be converted.
    std::optional<std::u16string> Convert(const std::array<XMLByte, kBlock>& bytes, XMLSize_t count) const {
        std::array<XMLCh, kBlock> text{};
        std::array<unsigned char, kBlock> sizes{};
        XMLSize_t eaten = 0;
        try {
            const XMLSize_t length =
                Make()->transcodeFrom(bytes.data(), count, text.data(), text.size(), eaten, sizes.data());
            return std::u16string(text.data(), length);
        } catch (const xercesc::XMLException&) {
            return std::nullopt;
        }
    }

    std::optional<std::u16string> Pair(unsigned first, unsigned second) const {
        return Convert({static_cast<XMLByte>(first), static_cast<XMLByte>(second)}, 2);
    }

private:
    std::unique_ptr<xercesc::XMLTranscoder> Make() const {
        xercesc::XMLTransService::Codes result = xercesc::XMLTransService::Ok;
        return std::unique_ptr<xercesc::XMLTranscoder>(
            xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
                encoding_.c_str(), result, kBlock, xercesc::XMLPlatformUtils::fgMemoryManager));
    }

    const std::u16string& encoding_;
};

// An encoding has one-byte characters if it converts a zero byte to a character.
bool IsWide(const Converter& converter) {
    const auto zeros = converter.Convert({}, kBlock);
    return zeros && zeros->size() < kBlock;
}

bool IsMarkup(char16_t character) {
    return kMarkup.find(character) != std::u16string_view::npos;
}

// National variants and code pages have other characters in place of some ASCII characters that are not used
// in markup.
bool MayDiffer(unsigned byte) {
    return byte < ' ' || byte == '\\' || byte == '~' || byte == kAscii - 1;
}

bool WritesAscii(const Converter& converter) {
    for (unsigned byte = 0; byte < kAscii; ++byte) {
        const auto pair = converter.Pair(byte, '<');
        if (!pair || pair->size() != 2 || pair->at(1) != u'<')
            return false;
        const char16_t character = pair->at(0);
        if (character != byte && (IsMarkup(character) || !MayDiffer(byte)))
            return false;
    }
    return true;
}

// The escape sequences of ISO 2022 and HZ, after which ASCII bytes are parts of other characters.
bool HasEscapes(const Converter& converter) {
    for (const std::string_view escape : {"\x1B$B", "\x1B$@", "\x1B(I", "\x1B$A", "\x1B$(B", "\x1B$)A\x0E",
                                          "\x1B$)C\x0E", "\x0E", "\x1B(0", "~{"}) {
        std::array<XMLByte, kBlock> bytes{};
        std::copy(escape.begin(), escape.end(), bytes.begin());
        bytes[escape.size()] = bytes[escape.size() + 1] = '<';
        const XMLSize_t count = escape.size() + 2;
        const auto text = converter.Convert(bytes, count);
        if (!text || text->size() != count || !text->ends_with(u"<<"))
            return true;
    }
    return false;
}

bool IsHidden(const Converter& converter, unsigned lead, char16_t character) {
    const auto pair = converter.Pair(lead, character);
    return pair && (pair->empty() || pair->back() != character);
}

bool HidesMarkup(const Converter& converter) {
    for (unsigned lead = kAscii; lead < kBytes; ++lead)
        for (const char16_t character : kMarkup)
            if (IsHidden(converter, lead, character))
                return true;
    return false;
}

bool IsPlain(const std::u16string& encoding) {
    for (const char16_t* plain : {u"UTF-8", u"US-ASCII", u"ISO-8859-1"})
        if (xercesc::XMLString::compareIStringASCII(encoding.c_str(), plain) == 0)
            return true;
    return false;
}

// ICU 72 copies a name of up to 59 characters into 60 bytes, with three bytes for each character beyond ASCII. No
// encoding has such a name; the engine refuses them in a declaration without a look at ICU.
bool IsAscii(const std::u16string& name) {
    return std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < kAscii; });
}

} // namespace

EncodingShape ShapeOf(const std::u16string& encoding) {
    if (IsPlain(encoding))
        return {Markup::kBytes, {}};
    const Converter converter(encoding);
    if (!IsAscii(encoding) || !converter.IsThere())
        return {Markup::kUnknown, {}};
    if (IsWide(converter))
        return {Markup::kWide, {}};
    if (!WritesAscii(converter) || HasEscapes(converter) || HidesMarkup(converter))
        return {Markup::kOther, {}};
    EncodingShape shape{Markup::kBytes, {}};
    for (unsigned lead = kAscii; lead < kBytes; ++lead)
        shape.leads[lead] = IsHidden(converter, lead, u']');
    return shape;
}

} // namespace vexaTransferLib::reader
