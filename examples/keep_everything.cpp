// SPDX-License-Identifier: MIT
// Reads a file completely, shows what the model has no member for, and writes everything back.
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxPointDetails.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <exception>
#include <iostream>
#include <string>

using namespace vexaTransferLib;

namespace {

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

void Show(const GpxDocument& document) {
    if (const auto author = GpxMetadata(document.GetElement()).GetAuthor(); author && author->name)
        std::cout << "author: " << Utf8(*author->name) << '\n';
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            for (auto point = track->GetPointIter(segment); point != track->GetPointEndIter(segment); ++point)
                if (const auto rate = GpxPointDetails(point->GetElement()).GetHeartRate())
                    std::cout << "heart rate: " << *rate << '\n';
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    int status = 0;
    try {
        GpxParser parser;
        parser.SetUntrusted(GpxInputLimits());
        parser.SetComplete();
        GpxDocument document;
        parser.ParseFile(argv[1], document);
        Show(document);
        std::cout << GpxStandardWriter().GetText(document);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        status = 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
    return status;
}
