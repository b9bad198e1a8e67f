// SPDX-License-Identifier: MIT
// Does one thing and prints the CPU seconds that it took:
//
//   measure sax FILE            bare SAX2 parse, with the reader's settings and handlers that do nothing
//   measure read FILE           GpxParser::Parse
//   measure complete FILE       the same of a parser that reads completely
//   measure watch FILE          the same of an untrusted file, with an observer, as vexagpx checks
//   measure write FILE OUT      GpxDocument::WriteToFile of the document; reading it does not count
//   measure standard FILE OUT   GpxStandardWriter::WriteFile of the document, read completely
//   measure compose FILE OUT    the same of the document read in the default way, of which nothing can be copied
//   measure save FILE OUT       GpxSaver::SaveFile of the document, read completely; it is unchanged
//   measure save-edit FILE OUT  the same of the document with one edit, of a point in its middle
//   measure copy FILE OUT       the bytes of the file, copied in memory and written; reading them does not count
//   measure limit FILE OUT      the same bytes of one track, with the least work; reading it does not count
//   measure small LIST          GpxParser::Parse of every file that LIST names, one a line, with one parser
//   measure peak FILE           GpxParser::Parse; prints the peak of the memory of the process in bytes
//   measure peak-complete FILE  the same of a parser that reads completely
#include "LimitWriter.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxSaver.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vexaTransferLib;

constexpr char kApplicationName[] = "measure";
constexpr char kApplicationUrl[] = "https://example.org/";

struct Paths {
    std::string file;
    std::string out;
};

double CpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Action>
double SecondsOf(Action action) {
    const double start = CpuSeconds();
    action();
    return CpuSeconds() - start;
}

double ParseBare(const Paths& paths) {
    using xercesc::XMLUni;
    return SecondsOf([&paths] {
        const std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader());
        reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
        reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
        reader->setFeature(XMLUni::fgXercesDynamic, true);
        reader->setFeature(XMLUni::fgXercesSchema, false);
        reader->setFeature(XMLUni::fgXercesSchemaFullChecking, false);
        xercesc::DefaultHandler handler;
        reader->setContentHandler(&handler);
        reader->setLexicalHandler(&handler);
        reader->setErrorHandler(&handler);
        reader->parse(paths.file.c_str());
    });
}

double Read(const Paths& paths) {
    GpxParser parser;
    GpxDocument document;
    return SecondsOf([&] { parser.ParseFile(paths.file, document); });
}

double ReadCompletely(const Paths& paths) {
    GpxParser parser;
    parser.SetComplete();
    GpxDocument document;
    return SecondsOf([&] { parser.ParseFile(paths.file, document); });
}

double Watch(const Paths& paths) {
    GpxParser parser;
    GpxReadObserver observer;
    parser.SetObserver(&observer);
    parser.SetUntrusted();
    GpxDocument document;
    return SecondsOf([&] { parser.ParseFile(paths.file, document); });
}

double Write(const Paths& paths) {
    GpxDocument document;
    GpxParser().ParseFile(paths.file, document);
    return SecondsOf([&] {
        document.WriteToFile(GpxVersion::GetLatestVersion(), kApplicationName, kApplicationUrl,
                             icu::UnicodeString::fromUTF8(paths.out));
    });
}

double WriteByTheStandard(GpxParser& parser, const Paths& paths) {
    GpxDocument document;
    parser.ParseFile(paths.file, document);
    return SecondsOf([&] { GpxStandardWriter().WriteFile(document, paths.out); });
}

double WriteStandard(const Paths& paths) {
    GpxParser parser;
    parser.SetComplete();
    return WriteByTheStandard(parser, paths);
}

double WriteComposed(const Paths& paths) {
    GpxParser parser;
    return WriteByTheStandard(parser, paths);
}

GpxDocument DocumentOf(const Paths& paths) {
    GpxParser parser;
    parser.SetComplete();
    GpxDocument document;
    parser.ParseFile(paths.file, document);
    return document;
}

double Save(const Paths& paths) {
    const GpxDocument document = DocumentOf(paths);
    return SecondsOf([&] { GpxSaver().SaveFile(document, paths.out); });
}

void EditMiddle(const GpxListEditor<GpxPoint>& points) {
    points[points.GetCount() / 2].SetElevation(1.5);
}

double SaveEdited(const Paths& paths) {
    GpxDocument document = DocumentOf(paths);
    if (document.GetWaypointCount() != 0)
        EditMiddle(document.EditWaypoints());
    else if (document.GetRouteCount() != 0)
        EditMiddle(document.EditRoutes()[0].EditPoints());
    else
        EditMiddle(document.EditTracks()[0].EditPoints(0));
    return SecondsOf([&] { GpxSaver().SaveFile(document, paths.out); });
}

double Copy(const Paths& paths) {
    std::ifstream file(paths.file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return SecondsOf([&] {
        const std::string copy = bytes;
        std::ofstream out(paths.out, std::ios::binary);
        out.write(copy.data(), static_cast<std::streamsize>(copy.size()));
        out.close();
    });
}

double WriteLimit(const Paths& paths) {
    GpxDocument document;
    GpxParser().ParseFile(paths.file, document);
    const bench::LimitWriter writer(document, kApplicationName, kApplicationUrl);
    return SecondsOf([&] { writer.WriteToFile(paths.out); });
}

double ReadSmall(const Paths& paths) {
    std::vector<std::string> files;
    std::ifstream list(paths.file);
    for (std::string line; std::getline(list, line);)
        files.push_back(line);
    return SecondsOf([&files] {
        GpxParser parser;
        for (const std::string& file : files) {
            GpxDocument document;
            parser.ParseFile(file, document);
        }
    });
}

// The peak of getrusage may be that of the process that started this one.
double PeakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) * 1024;
    throw std::runtime_error("The system does not say how much memory the process has used.");
}

double ReadPeak(const Paths& paths) {
    Read(paths);
    return PeakBytes();
}

double ReadCompletelyPeak(const Paths& paths) {
    ReadCompletely(paths);
    return PeakBytes();
}

struct Mode {
    std::string_view name;
    bool writes;
    double (*measure)(const Paths&);
};

constexpr Mode kModes[] = {
    {"sax", false, ParseBare},
    {"read", false, Read},
    {"complete", false, ReadCompletely},
    {"watch", false, Watch},
    {"write", true, Write},
    {"standard", true, WriteStandard},
    {"compose", true, WriteComposed},
    {"save", true, Save},
    {"save-edit", true, SaveEdited},
    {"copy", true, Copy},
    {"limit", true, WriteLimit},
    {"small", false, ReadSmall},
    {"peak", false, ReadPeak},
    {"peak-complete", false, ReadCompletelyPeak},
};

bool Measure(const std::string& name, const Paths& paths) {
    for (const Mode& mode : kModes) {
        if (mode.name != name || mode.writes == paths.out.empty())
            continue;
        std::cout << mode.measure(paths) << '\n';
        return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    bool isKnown = false;
    try {
        std::cout.precision(12);
        isKnown = Measure(argv[1], {argv[2], argc > 3 ? argv[3] : ""});
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
    return isKnown ? 0 : 2;
}
