// SPDX-License-Identifier: MIT
#pragma once

#include "support/GpxFiles.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// Notes what it is told with memory of its own: never refused, never counted.
class UnrefusedObserver final : public RecordingObserver {
public:
    bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override;
    void ParserMessage(const GpxParserMessage& message) override;
    void Skipped(const GpxSkippedElement& what) override;

    /// Lets go of everything noted.
    void Forget();
};

/// A file, and everything that may come of reading it while some memory is refused.
class FaultFile {
public:
    explicit FaultFile(const std::string& bytes);

    const std::string& Bytes() const { return bytes_; }
    const icu::UnicodeString& Path() const { return path_; }
    std::string NarrowPath() const { return file_.NarrowPath(); }

    /// What is read of it when nothing is refused.
    const GpxDocument& Whole() const { return whole_; }

    /// True when the document lacks nothing of the file but what one of the told elements had given: those
    /// that were refused.
    testing::AssertionResult HasAllBut(const std::vector<GpxSkippedElement>& told,
                                       const GpxDocument& document);
    /// True when it lacks nothing but what any one element had given.
    testing::AssertionResult HasAllButOne(const GpxDocument& document);
    /// True when all that is told without a refusal is told now too, except of what is in a refused element.
    testing::AssertionResult IsToldAll(const std::vector<GpxSkippedElement>& told) const;
    /// True when the document is one that was cleared and partly filled, or wholly.
    testing::AssertionResult IsPart(const GpxDocument& document) const;

private:
    testing::AssertionResult HasAllBut(const std::vector<std::string>& elements, const GpxDocument& document);
    const std::vector<std::vector<std::string>>& DifferencesWithout(const std::string& element);

    std::string bytes_;
    GpxFile file_;
    icu::UnicodeString path_;
    GpxDocument whole_;
    std::vector<GpxSkippedElement> told_;
    std::map<std::string, std::vector<std::vector<std::string>>> differencesWithout_;
};

} // namespace vexaTransferLib::testing_support
