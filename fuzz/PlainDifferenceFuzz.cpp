// SPDX-License-Identifier: MIT

// Reads the input as GpxParser::Parse does and by the XML parser's events alone, and stops when the results differ: a
// plain file, which is read without the XML parser, must give the same model, exception, report lines, calls of the
// error handler and notices.

#include "DocumentType.h"
#include "MemoryFile.h"
#include "Stop.h"
#include "support/EventsOnly.h"
#include "support/ModelCompare.h"

#include <xercesc/util/PlatformUtils.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace {

using namespace vexaTransferLib::testing_support;

std::string TextOf(const Heard& heard) {
    return "error: " + heard.error + "\ncalls: " + heard.calls + "skipped: " + heard.skipped +
           "reports: " + heard.reports;
}

void Compare(const std::string& path, const HowRead& how) {
    const std::optional<Heard> expected = ReadByEvents(path, how);
    if (!expected)
        return;
    const Heard actual = ReadByParse(path, how);
    const testing::AssertionResult isSame = IsSameModel(expected->document, actual.document);
    if (TextOf(actual) != TextOf(*expected) || !isSame)
        StopBecause("by events:\n" + TextOf(*expected) + "\nby Parse:\n" + TextOf(actual) + "\n" +
                    isSame.message());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (HasDocumentType({reinterpret_cast<const char*>(bytes), size}))
        return -1;
    const MemoryFile file(bytes, size);
    Compare(file.Path(), {false, std::nullopt});
    Compare(file.Path(), {true, vexaTransferLib::GpxInputLimits()});
    return 0;
}
