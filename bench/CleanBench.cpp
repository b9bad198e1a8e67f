// SPDX-License-Identifier: MIT
// The cleaner compared with one that runs regular expressions, on the descriptions and logs of geocaches, and the
// cleaner on hostile texts. All times are for one UTF-16 unit, so that rows can be compared.
//
// The texts of geocaches come from the file that VEXA_CLEAN_GPX names, otherwise from the generator in
// ../shared, otherwise from the words below.
#include "support/HostileTexts.h"
#include "support/RegexCleaner.h"

#include <vexaTransferLib/CleanText.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace {

using vexaTransferLib::CleanText;
using namespace vexaTransferLib::testing_support;

using Texts = std::vector<icu::UnicodeString>;

struct Geocaches {
    std::string origin;
    Texts descriptions;
    Texts logs;
};

std::string Unescaped(std::string_view xml) {
    static constexpr std::string_view kEscapes[][2] = {{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}};
    std::string text;
    while (!xml.empty()) {
        std::string_view taken = xml.substr(0, 1);
        std::string_view meant = taken;
        for (const auto& [escape, character] : kEscapes) {
            if (xml.starts_with(escape)) {
                taken = escape;
                meant = character;
            }
        }
        text += meant;
        xml.remove_prefix(taken.size());
    }
    return text;
}

// The contents of the elements with this name. These contain no other elements.
Texts TextsOf(std::string_view gpx, const std::string& element) {
    Texts texts;
    const std::string closing = "</groundspeak:" + element + ">";
    const std::string opening = "<groundspeak:" + element;
    for (std::size_t at = 0; (at = gpx.find(opening, at)) != std::string_view::npos;) {
        const std::size_t begin = gpx.find('>', at) + 1;
        const std::size_t end = gpx.find(closing, begin);
        if (end == std::string_view::npos)
            break;
        const std::string text = Unescaped(gpx.substr(begin, end - begin));
        texts.push_back(icu::UnicodeString::fromUTF8(text));
        at = end;
    }
    return texts;
}

Geocaches FromFile(const std::string& path, std::string origin) {
    std::ifstream file(path, std::ios::binary);
    const std::string gpx{std::istreambuf_iterator<char>(file), {}};
    Geocaches found{std::move(origin), TextsOf(gpx, "long_description"), TextsOf(gpx, "text")};
    if (found.descriptions.empty() || found.logs.empty())
        throw std::runtime_error("There are no geocaches with descriptions and logs in " + path);
    return found;
}

Geocaches FromGenerator(const std::string& generator) {
    const std::string path = "bench-" + std::to_string(::getpid()) + "-geocaches.gpx";
    const std::string command =
        "python3 '" + generator + "' --kind geocaches --count 300 --seed 1 '" + path + "'";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("Failed: " + command);
    Geocaches found = FromFile(path, generator);
    std::filesystem::remove(path);
    return found;
}

class Words {
public:
    icu::UnicodeString Description() {
        icu::UnicodeString text;
        while (text.length() < 3000)
            text.append(OneOf(kParagraphs)).findAndReplace(u"@", Sentences(4));
        return text;
    }

    icu::UnicodeString Log() {
        icu::UnicodeString text = Sentences(1 + static_cast<int>(random_() % 4));
        text.append(OneOf(kClosings)).findAndReplace(u"@", Sentences(1));
        return text;
    }

private:
    static constexpr const char16_t* kWords[] = {u"path",   u"river", u"the",    u"under",
                                                 u"bridge", u"old",   u"wall",   u"hidden",
                                                 u"not",    u"a",     u"church", u"B\u00FChl"};
    static constexpr const char16_t* kParagraphs[] = {
        u"<p>@</p>\n",
        u"<P ALIGN=\"center\"><font size=\"2\"><b>@</b></font></P>\r\n",
        u"@<br><br />\n",
        u"<ul><li>@</li><li>@</li></ul>\n",
        u"<table border=\"1\"><tr><td>@</td></tr></table>\n",
        u"<div style=\"color:#336699\"><a href=\"http://example.com/?a=1&amp;b=2\">@</a></div><hr>\n",
        u"<!-- @ -->\n<h2>@</h2>\n",
        u"<style type=\"text/css\">p { margin: 0 }</style><p>\t@  \u201Cso\u201D &#8211; "
        u"N&nbsp;46&deg;</p>\n",
    };
    static constexpr const char16_t* kClosings[] = {u" [b]@[/b]", u"\n[url=http://example.com/]@[/url]",
                                                    u" It\u2019s @ \u2013 TFTC!", u"\r\n@", u"\n\n@ [:)]"};

    template <std::size_t N>
    icu::UnicodeString OneOf(const char16_t* const (&texts)[N]) {
        return icu::UnicodeString(texts[random_() % N]);
    }

    icu::UnicodeString Sentences(int count) {
        icu::UnicodeString text;
        for (; count > 0; --count) {
            for (int words = 12; words > 1; --words)
                text.append(OneOf(kWords)).append(u' ');
            text.append(OneOf(kWords)).append(count > 1 ? u". " : u".", -1);
        }
        return text;
    }

    std::mt19937 random_{1};
};

Geocaches FromWords() {
    Geocaches made{"the benchmark's own words", {}, {}};
    Words words;
    for (int index = 0; index < 300; ++index)
        made.descriptions.push_back(words.Description());
    for (int index = 0; index < 1500; ++index)
        made.logs.push_back(words.Log());
    return made;
}

Geocaches AnyGeocaches() {
    if (const char* const path = std::getenv("VEXA_CLEAN_GPX"))
        return FromFile(path, path);
    const std::string generator = VEXA_SHARED "/tools/make_gpx.py";
    return std::filesystem::exists(generator) ? FromGenerator(generator) : FromWords();
}

const Geocaches& TheGeocaches() {
    static const Geocaches geocaches = [] {
        Geocaches any = AnyGeocaches();
        std::fprintf(stderr, "Geocaches: %zu descriptions and %zu logs from %s\n", any.descriptions.size(),
                     any.logs.size(), any.origin.c_str());
        return any;
    }();
    return geocaches;
}

template <class Cleaner>
void Clean(benchmark::State& state, const Texts& texts) {
    static Cleaner cleaner;
    double units = 0;
    for (const icu::UnicodeString& text : texts)
        units += text.length();
    for (auto _ : state) {
        for (const icu::UnicodeString& text : texts) {
            icu::UnicodeString cleaned(text);
            cleaner.CleanWebTextForTova(cleaned);
            benchmark::DoNotOptimize(cleaned.getBuffer());
        }
    }
    state.counters["perUnit"] = benchmark::Counter(units, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
}

template <class Cleaner>
void CleanDescriptions(benchmark::State& state) {
    Clean<Cleaner>(state, TheGeocaches().descriptions);
}

template <class Cleaner>
void CleanLogs(benchmark::State& state) {
    Clean<Cleaner>(state, TheGeocaches().logs);
}

BENCHMARK(CleanDescriptions<RegexCleaner>)->Unit(benchmark::kMillisecond);
BENCHMARK(CleanDescriptions<CleanText>)->Unit(benchmark::kMillisecond);
BENCHMARK(CleanLogs<RegexCleaner>)->Unit(benchmark::kMillisecond);
BENCHMARK(CleanLogs<CleanText>)->Unit(benchmark::kMillisecond);

constexpr std::int32_t kMillion = 1'000'000;

void Register(const std::string& name, icu::UnicodeString (*make)(const HostileText*, std::int32_t),
              const HostileText* hostile) {
    benchmark::RegisterBenchmark(
        ("CleanHostile/" + name).c_str(),
        [=](benchmark::State& state) {
            Clean<CleanText>(state, {make(hostile, static_cast<std::int32_t>(state.range(0)) * kMillion)});
        })
        ->ArgName("million")
        ->Arg(1)
        ->Arg(2)
        ->Arg(4)
        ->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const HostileText& hostile : HostileTexts()) {
        Register(
            hostile.name, [](const HostileText* text, std::int32_t length) { return text->OfLength(length); },
            &hostile);
    }
    Register(
        "mixture", [](const HostileText*, std::int32_t length) { return HostileMixture(length); }, nullptr);
    return true;
}();

} // namespace
