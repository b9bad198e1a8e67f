// SPDX-License-Identifier: MIT

// Reads the input as a file from the XML parser's events and from a DOM, and stops when the results differ:
// both must give the same model or the same exception.

#include "DocumentType.h"
#include "MemoryFile.h"
#include "Stop.h"
#include "support/CaughtAs.h"
#include "support/DomReading.h"
#include "support/ModelCompare.h"

#include <vexaTransferLib/GpxParser.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <cstdint>
#include <exception>
#include <string>
#include <typeinfo>

namespace {

using namespace vexaTransferLib;

template <class Read>
std::string ErrorOf(Read read) {
    try {
        read();
        return "";
    } catch (const std::exception& exception) {
        return std::string(testing_support::CaughtAs(exception).name()) + ": " + exception.what();
    }
}

void Compare(const std::string& path) {
    static GpxParser parser;
    GpxDocument expected;
    GpxDocument actual;
    const std::string expectedError = ErrorOf([&] { testing_support::ReadByDom(parser, path, expected); });
    const std::string actualError =
        ErrorOf([&] { parser.Parse(icu::UnicodeString::fromUTF8(path), actual); });
    const testing::AssertionResult isSame = testing_support::IsSameModel(expected, actual);
    if (expectedError == actualError && isSame)
        return;
    StopBecause("DOM: " + expectedError + "\nevents: " + actualError + "\n" + isSame.message());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // Such a file is always read from a DOM.
    if (HasDocumentType({reinterpret_cast<const char*>(bytes), size}))
        return -1;
    Compare(MemoryFile(bytes, size).Path());
    return 0;
}
