// SPDX-License-Identifier: MIT
// Reads a GPX file, reports what is lost, and stops after too many losses: watch_reading FILE MOST
#include <iostream>
#include <string>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

class Watcher : public GpxReadObserver {
public:
    explicit Watcher(unsigned long most) : most_(most) {}

    // A host with a window draws its progress bar here, and checks whether "Cancel" was pressed.
    bool Progress(std::uint64_t, std::uint64_t) override { return losses_ <= most_; }

    void ParserMessage(const GpxParserMessage& message) override {
        std::cout << message.line << ':' << message.column << "  " << message.text << '\n';
    }

    void Skipped(const GpxSkippedElement& what) override {
        if (what.isLoss)
            ++losses_;
        const std::string attribute = what.attribute.empty() ? "" : "@" + what.attribute;
        std::cout << what.line << ':' << what.column << "  " << what.element << attribute << ": "
                  << what.message << '\n';
    }

private:
    unsigned long most_;
    unsigned long losses_ = 0;
};

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        Watcher watcher(std::stoul(argv[2]));
        GpxParser parser;
        parser.SetUntrusted();
        parser.SetObserver(&watcher);
        GpxDocument document;
        parser.Parse(argv[1], document);
        std::cout << document.GetWaypointCount() << " waypoints read\n";
    } catch (const std::exception& error) {
        std::cout << error.what() << '\n';
    }
    xercesc::XMLPlatformUtils::Terminate();
}
