// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/Hasher.h>

#include <bit>
#include <cmath>

namespace vexaTrackLib::content {

namespace {

constexpr std::size_t kWordBytes = 8;

/// Spreads each bit of the word over all of the result. Different words have different results, because each step can
/// be undone: the factors are odd.
std::uint64_t Mixed(std::uint64_t word, std::uint64_t factor) {
    word ^= word >> 32;
    word *= factor;
    word ^= word >> 29;
    word *= factor;
    return word ^ (word >> 32);
}

/// Up to eight bytes as a word, the first one lowest.
std::uint64_t WordOf(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return word;
}

} // namespace

void Hasher::Add(std::uint64_t word) {
    // The halves take the word in two ways, so that what is equal for one of them is different for the other.
    high_ = Mixed(high_ ^ word, 0x9E6C63D0876A9A47) + 0x452821E638D01377;
    low_ = Mixed(std::rotl(low_, 23) + word, 0xC6A4A7935BD1E995) ^ 0xBE5466CF34E90C6C;
}

void Hasher::Add(double number) {
    if (std::isnan(number))
        return Add(~std::uint64_t{0});
    Add(std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number));
}

void Hasher::Add(std::string_view bytes) {
    Add(std::uint64_t{bytes.size()});
    for (; bytes.size() >= kWordBytes; bytes.remove_prefix(kWordBytes))
        Add(WordOf(bytes.substr(0, kWordBytes)));
    if (!bytes.empty())
        Add(WordOf(bytes));
}

void UnorderedSum::AddTo(Hasher& hasher) const {
    hasher.Add(count_);
    hasher.Add(high_);
    hasher.Add(low_);
}

} // namespace vexaTrackLib::content
