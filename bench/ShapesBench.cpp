// SPDX-License-Identifier: MIT
// Files whose shape costs the XML parser more than its length: depth, attributes, namespaces. What grows with the
// square of the number is the parser's own; GpxParser::SetUntrusted stops it at the limits. The watched shapes are
// those that would cost the library more when a host watches.
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <common/dbc.h>

#include "support/HostileShapes.h"

#include <benchmark/benchmark.h>
#include <xercesc/framework/MemBufInputSource.hpp>

#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;

using MakeShape = std::string (*)(std::int64_t);
using Read = void (*)(const std::string&);

std::string Levels(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i)
        text += "<x>";
    for (std::int64_t i = 0; i < count; ++i)
        text += "</x>";
    return text;
}

std::string Attributes(std::int64_t count) {
    std::string text = "<x";
    for (std::int64_t i = 0; i < count; ++i)
        text += " a" + std::to_string(i) + "='v'";
    return text + "/>";
}

std::string Namespaces(std::int64_t count) {
    std::string text = "<x";
    for (std::int64_t i = 0; i < count; ++i)
        text += " xmlns:n" + std::to_string(i) + "='u" + std::to_string(i) + "'";
    return text + "/>";
}

std::string Names(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i)
        text += "<n" + std::to_string(i) + "/>";
    return text;
}

std::string Children(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i)
        text += "<x/>";
    return text;
}

/// The given number of different names that all have the same hash value in the XML parser's tables, as "Az"
/// and "BT" have.
std::vector<std::string> CollidingNames(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) {
        std::string name;
        for (int bit = 0; bit < 14; ++bit)
            name += (i >> bit & 1) != 0 ? "BT" : "Az";
        names.push_back(name);
    }
    return names;
}

std::string CollidingElements(std::int64_t count) {
    std::string text;
    for (const std::string& name : CollidingNames(count))
        text += "<" + name + "/>";
    return text;
}

std::string CollidingAttributes(std::int64_t count) {
    std::string text = "<x";
    for (const std::string& name : CollidingNames(count))
        text += " " + name + "='v'";
    return text + "/>";
}

std::string CollidingPrefixes(std::int64_t count) {
    std::string text;
    for (const std::string& name : CollidingNames(count))
        text += "<x xmlns:" + name + "='u'/>";
    return text;
}

/// Namespaces on each of 40 levels, and elements that are in the outermost.
std::string NamespacesOnLevels(std::int64_t count) {
    constexpr int kLevels = 40;
    std::string text;
    for (int level = 0; level < kLevels; ++level) {
        text += "<x";
        for (std::int64_t i = 0; i < count / kLevels; ++i)
            text += " xmlns:p" + std::to_string(level) + "-" + std::to_string(i) + "='u'";
        text += ">";
    }
    for (std::int64_t i = 0; i < count; ++i)
        text += "<p0-0:y/>";
    for (int level = 0; level < kLevels; ++level)
        text += "</x>";
    return text;
}

/// Ends the metadata, so that the tracks are read.
std::string Tracks(std::int64_t count) {
    std::string text = "</metadata>";
    for (std::int64_t i = 0; i < count; ++i)
        text += "<trk/>";
    return text + "<metadata>";
}

std::string Gpx(const std::string& declaration, const std::string& shape) {
    return declaration + "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'><metadata>" + shape +
           "</metadata></gpx>";
}

void ReadEvents(const std::string& shape) {
    GpxDocument document;
    GpxParser().Parse(Gpx("", shape), u"shape", document);
}

void ReadUntrusted(const std::string& shape) {
    GpxParser parser;
    GpxDocument document;
    parser.SetUntrusted();
    try {
        parser.Parse(Gpx("", shape), u"shape", document);
    } catch (const dbc::postcondition_error&) {
        // Shapes beyond the limits are refused.
    }
}

void ScanUntrusted(const std::string& shape) {
    const std::string bytes = Gpx("", shape);
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted();
    scanner.ParseSource(
        xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), "shape"));
}

void ReadDom(const std::string& shape) {
    GpxDocument document;
    GpxParser().Parse(Gpx("<!DOCTYPE gpx>", shape), u"shape", document);
}

void Scan(const std::string& shape) {
    const std::string bytes = Gpx("", shape);
    GpxTarvikExtParser().ParseSource(
        xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), "shape"));
}

void ReadShape(benchmark::State& state, MakeShape make, Read read) {
    const std::string shape = make(state.range(0));
    for (auto _ : state)
        read(shape);
    state.SetComplexityN(state.range(0));
}

void Doubling(benchmark::internal::Benchmark* bench) {
    bench->ArgName("n")->Arg(4000)->Arg(8000)->Arg(16000)->Unit(benchmark::kMillisecond);
    bench->Complexity();
}

void ReadWatched(benchmark::State& state, const testing_support::HostileShape& shape) {
    const std::string bytes = shape.make(static_cast<std::size_t>(state.range(0)));
    GpxParser parser;
    GpxReadObserver observer;
    parser.SetObserver(&observer);
    for (auto _ : state) {
        GpxDocument document;
        parser.Parse(bytes, u"shape", document);
    }
    state.SetComplexityN(state.range(0));
}

[[maybe_unused]] const bool kWatchedShapes = [] {
    for (const testing_support::HostileShape& shape : testing_support::HostileShapes())
        Doubling(benchmark::RegisterBenchmark((std::string("ReadWatched/") + shape.name).c_str(), ReadWatched,
                                              shape));
    return true;
}();

#define SHAPE(make)                                                                                          \
    BENCHMARK_CAPTURE(ReadShape, make##_events, make, ReadEvents)->Apply(Doubling);                          \
    BENCHMARK_CAPTURE(ReadShape, make##_dom, make, ReadDom)->Apply(Doubling);                                \
    BENCHMARK_CAPTURE(ReadShape, make##_scan, make, Scan)->Apply(Doubling);                                  \
    BENCHMARK_CAPTURE(ReadShape, make##_untrusted, make, ReadUntrusted)->Apply(Doubling);                    \
    BENCHMARK_CAPTURE(ReadShape, make##_untrusted_scan, make, ScanUntrusted)->Apply(Doubling)
SHAPE(Levels);
SHAPE(Attributes);
SHAPE(Namespaces);
SHAPE(Names);
SHAPE(Children);
SHAPE(CollidingElements);
SHAPE(CollidingAttributes);
SHAPE(CollidingPrefixes);
SHAPE(NamespacesOnLevels);
SHAPE(Tracks);
#undef SHAPE

} // namespace
