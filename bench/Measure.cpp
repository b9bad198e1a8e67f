// SPDX-License-Identifier: MIT
// Does one thing to a file and prints the CPU seconds that it took:
//
//   measure sax FILE         bare SAX2 parse, with the reader's settings and handlers that do nothing
//   measure read FILE        GpxParser::Parse
//   measure watch FILE       the same of an untrusted file, with an observer, as vexagpx reads
//   measure write FILE OUT   GpxDocument::WriteToFile of the document; reading it does not count
#include <vexaTransferLib/GpxParser.h>

#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <ctime>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

namespace {

using namespace vexaTransferLib;

double CpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void ParseBare(const std::string& path) {
    using xercesc::XMLUni;
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
    reader->parse(path.c_str());
}

double Measure(const std::string& what, const std::string& path, const std::string& out) {
    const icu::UnicodeString widePath = icu::UnicodeString::fromUTF8(path);
    double start = CpuSeconds();
    if (what == "sax") {
        ParseBare(path);
        return CpuSeconds() - start;
    }
    GpxParser parser;
    GpxReadObserver observer;
    if (what == "watch") {
        parser.SetObserver(&observer);
        parser.SetUntrusted();
    }
    GpxDocument document;
    start = CpuSeconds();
    parser.Parse(widePath, document);
    if (what == "write") {
        start = CpuSeconds();
        document.WriteToFile(GpxVersion::GetLatestVersion(), u"measure", u"https://example.org/",
                             icu::UnicodeString::fromUTF8(out));
    }
    return CpuSeconds() - start;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        std::cout << Measure(argv[1], argv[2], argc > 3 ? argv[3] : "") << '\n';
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
