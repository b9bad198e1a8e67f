// SPDX-License-Identifier: MIT

// Reads the input as an untrusted file with low limits. The result must be that of a trusted file, or a
// refusal that names its reason. Scans the head as trusted and untrusted, and writes the document in both
// versions.

#include "DocumentType.h"
#include "Stop.h"
#include "support/ModelCompare.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cmath>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace {

using namespace vexaTransferLib;

constexpr GpxInputLimits kLowLimits{8, 400, 6, 12, 40, 12, 60, 10, 500, 30, 3000};

std::string ErrorOf(GpxParser& parser, std::string_view bytes, GpxDocument& document) {
    try {
        parser.Parse(bytes, "input", document);
        return "";
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

bool IsRefusal(const std::string& error) {
    return error.find("The untrusted GPX file was refused: input. ") != std::string::npos &&
           (error.find("document type declaration.") != std::string::npos ||
            error.find("Its encoding is read from trusted files only: ") != std::string::npos ||
            error.find("(limit of ") != std::string::npos);
}

void WriteInBothVersions(const GpxDocument& document) {
    for (const GpxVersion& version : {GpxVersion(1, 0), GpxVersion(1, 1)})
        document.GetAsByteString(version, "fuzz", "https://example.org/");
}

// The XML parser decodes ahead, and a byte that it cannot decode hides what comes before that byte. With low
// limits it receives fewer bytes and may find more.
bool MayFindMore(const GpxInputLimits& limits, std::string_view bytes) {
    return limits.tagBytes < bytes.size();
}

// If the untrusted reading is not refused, both readings must have the same results and the same error.
void Read(std::string_view bytes, const GpxInputLimits& limits) {
    static GpxParser trusting;
    static GpxParser limited;
    limited.SetUntrusted(limits);
    GpxDocument actual;
    const std::string error = ErrorOf(limited, bytes, actual);
    if (IsRefusal(error))
        return;
    WriteInBothVersions(actual);
    if (HasDocumentType(bytes))
        return;
    GpxDocument expected;
    const std::string expectedError = ErrorOf(trusting, bytes, expected);
    const bool isSameError =
        error == expectedError || (MayFindMore(limits, bytes) && !error.empty() && !expectedError.empty());
    const testing::AssertionResult isSame = testing_support::IsSameModel(expected, actual);
    if (!isSameError || !isSame)
        StopBecause("trusted: " + expectedError + "\nuntrusted: " + error + "\n" + isSame.message());
}

void ScanHead(GpxTarvikExtParser& scanner, std::string_view bytes) {
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(),
                                            "input");
    scanner.ParseSource(source);
}

bool IsSameHead(const GpxHead& left, const GpxHead& right) {
    const auto sameAuthor = [&] {
        return !left.author ||
               (left.author->name == right.author->name && left.author->email == right.author->email);
    };
    return left.end == right.end && left.rootName == right.rootName && left.version == right.version &&
           left.creator == right.creator && left.name == right.name &&
           left.description == right.description && left.time == right.time &&
           left.hasMetadata == right.hasMetadata && !left.author == !right.author && sameAuthor() &&
           !left.bounds == !right.bounds;
}

bool FoundTheSame(const GpxTarvikExtParser& left, const GpxTarvikExtParser& right) {
    const double time = left.GetDocumentTime();
    const double otherTime = right.GetDocumentTime();
    return (time == otherTime || (std::isnan(time) && std::isnan(otherTime))) &&
           !left.GetStats() == !right.GetStats() && !left.GetGISMetaData() == !right.GetGISMetaData() &&
           !left.GetAnnotateMetaData() == !right.GetAnnotateMetaData() &&
           IsSameHead(left.GetHead(), right.GetHead());
}

// If the untrusted scan is not refused, both scans must have the same results and the same end.
void Scan(std::string_view bytes, const GpxInputLimits& limits) {
    static GpxTarvikExtParser trusting;
    static GpxTarvikExtParser limited;
    limited.SetUntrusted(limits);
    ScanHead(limited, bytes);
    if (limited.GetScanEnd() == kGpxScanRefused || HasDocumentType(bytes))
        return;
    ScanHead(trusting, bytes);
    if (MayFindMore(limits, bytes) && trusting.GetScanEnd() == kGpxScanIllFormed)
        return;
    if (limited.GetScanEnd() != trusting.GetScanEnd() || !FoundTheSame(limited, trusting))
        StopBecause("The scans differ: trusted ends with " + std::to_string(trusting.GetScanEnd()) +
                    ", untrusted with " + std::to_string(limited.GetScanEnd()));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    Read(input, GpxInputLimits());
    Read(input, kLowLimits);
    Scan(input, GpxInputLimits());
    Scan(input, kLowLimits);
    return 0;
}
