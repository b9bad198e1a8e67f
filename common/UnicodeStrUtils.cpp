// SPDX-License-Identifier: MIT
#include <common/UnicodeStrUtils.h>

#include <unicode/uchar.h>

#include <cstring>
#include <limits>

namespace UnicodeStrUtils {

namespace {

constexpr std::int32_t kTerminatorLength = 4;
constexpr char kConversionFailed[] = "Unable to convert the UnicodeString.";

boost::shared_array<char> AllocateTerminated(std::int32_t length) {
    boost::shared_array<char> bytes(new char[static_cast<std::size_t>(length) + kTerminatorLength]);
    std::memset(bytes.get() + length, 0, kTerminatorLength);
    return bytes;
}

// A text of some 700 million units may need more bytes than 32 bits can count. ICU then returns a negative number
// and reports a success.
std::int32_t CountBytes(const icu::UnicodeString& text, UConverter* converter) {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t count = text.extract(nullptr, 0, converter, status);
    const bool counted = U_SUCCESS(status) || status == U_BUFFER_OVERFLOW_ERROR;
    if (!counted || count < 0 || count > std::numeric_limits<std::int32_t>::max() - kTerminatorLength)
        throw std::runtime_error(kConversionFailed);
    return count;
}

} // namespace

Converter::Converter(const char* codePageName) {
    UErrorCode status = U_ZERO_ERROR;
    converter_ = ucnv_open(codePageName, &status);
    if (converter_ != nullptr)
        return;

    std::string message = "Unable to open the converter: ";
    if (codePageName != nullptr) {
        message += codePageName;
    } else {
        const char* defaultName = ucnv_getDefaultName();
        message += defaultName != nullptr ? defaultName : "";
        message += " (default)";
    }
    throw std::runtime_error(message);
}

Converter::~Converter() {
    ucnv_close(converter_);
}

ByteString::ByteString(const icu::UnicodeString& text, const char* codePageName) {
    if (text.isEmpty() || text.isBogus()) {
        Clear();
        return;
    }
    const Converter converter(codePageName);
    const std::int32_t count = CountBytes(text, converter.Get());
    boost::shared_array<char> bytes = AllocateTerminated(count);

    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t written =
        text.extract(bytes.get(), count + kTerminatorLength, converter.Get(), status);
    // A converter that keeps a state, as that of X11's compound text does, may now give another number of bytes than
    // when they were counted: the text would be cut, or end in bytes that were never written.
    if (U_FAILURE(status) || written != count)
        throw std::runtime_error(kConversionFailed);
    // The conversion ends in one zero byte only; text of 32-bit units needs four.
    std::memset(bytes.get() + count, 0, kTerminatorLength);
    length = static_cast<std::uint32_t>(count);
    buffer.swap(bytes);
}

ByteString::~ByteString() = default;

void ByteString::Clear() {
    boost::shared_array<char> empty = AllocateTerminated(0);
    length = 0;
    buffer.swap(empty);
}

bool UnicodeStringCaseInsensitiveComp::operator()(const icu::UnicodeString& first,
                                                  const icu::UnicodeString& second) const {
    return first.caseCompare(second, U_FOLD_CASE_DEFAULT) < 0;
}

std::int32_t UnicodeStringToUTF8(const icu::UnicodeString& text, boost::shared_array<char>& out) {
    const ByteString bytes(text, "utf-8");
    out = bytes.buffer;
    return static_cast<std::int32_t>(bytes.length);
}

std::string UnicodeStringToStlString(const icu::UnicodeString& text, const char* codePageName) {
    const ByteString bytes(text, codePageName);
    return std::string(bytes.buffer.get());
}

} // namespace UnicodeStrUtils
