// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/uregex.h>

#include <cstdint>

namespace vexaTransferLib::cleaner {

/// What a step removes or replaces, as a regular expression. The steps scan instead of running it, because
/// the engine needs quadratic time on some texts and gives up on others. The unit tests and a fuzz target run
/// it and hold the steps to it.
struct Pattern {
    const char16_t* expression;
    std::uint32_t flags;
    const char* message; // when it cannot be built
};

inline constexpr std::uint32_t kLineFlags = UREGEX_MULTILINE | UREGEX_DOTALL;
inline constexpr std::uint32_t kNameFlags = kLineFlags | UREGEX_CASE_INSENSITIVE;

// Line edges and text edges differ in the flags only.
inline constexpr char16_t kEdgeSpaces[] = u"(^ +)|( +$)";

// Element names are prefixes: "<param>" opens a block as "<p>" does.
inline constexpr Pattern kPatterns[] = {
    {uR"(&#(([\d]{1,10})|([xX][\da-fA-F]{1,8}));)", kLineFlags,
     "Unable to create a regex pattern for HTML numeric character references."},
    {uR"(\[[/]?(b|i|u|\*|code|color|email|img|list|quote|size|url)(=[^\]]+\]|\]))", kNameFlags,
     "Unable to create a regex pattern to remove BBCode."},
    {kEdgeSpaces, kLineFlags, "Unable to create a regex pattern to remove extra spaces."},
    {kEdgeSpaces, UREGEX_DOTALL, "Unable to create a regex pattern to trim spaces."},
    {u" {2,}", kLineFlags, "Unable to create a regex pattern to remove redundant spaces."},
    {uR"([\t]+)", kLineFlags, "Unable to create a regex pattern to replace tab characters."},
    {u"[\u2018\u2019]", kLineFlags, "Unable to create a regex pattern to replace single quotes."},
    {u"[\u201C\u201D]", kLineFlags, "Unable to create a regex pattern to replace double quotes."},
    {uR"((?<!\r)\n)", kLineFlags, "Unable to create a regex pattern to insert carriage returns."},
    {uR"(\r(?!\n))", kLineFlags, "Unable to create a regex pattern to remove carriage returns."},
    {uR"((\r\n){2,})", kLineFlags, "Unable to create a regex pattern to remove line breaks."},
    {uR"(<!--.+?--[\s]*>)", kLineFlags, "Unable to create a regex pattern for HTML comments."},
    {uR"(<(style|script)[^\w>]*[^>]*>.*?</\1[^\w>]*[^>]*>)", kNameFlags,
     "Unable to create a regex pattern for HTML scripts."},
    {uR"(<(blockquote|div|hr|p|pre)[^\w>]*[^>]*>)", kNameFlags,
     "Unable to create a regex pattern for HTML block tags."},
    {uR"(<(/blockquote|br|dd|dl|dt|/div|h1|/h1|h2|/h2|h3|/h3|h4|/h4|h5|/h5|h6|/h6)"
     uR"(|li|ol|/ol|/pre|tr|ul|/ul)[^\w>]*[^>]*>)",
     kNameFlags, "Unable to create a regex pattern for HTML break tags."},
    {uR"(<[^\s<>]*[^<>]*>)", kLineFlags, "Unable to create a regex pattern for HTML tags."},
};

} // namespace vexaTransferLib::cleaner
