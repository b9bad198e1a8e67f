// SPDX-License-Identifier: MIT
#pragma once

#include "support/GpxFiles.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::testing_support {

/// True for the failures that a lack of memory may cause in the reading of a file; see GpxParser.
testing::AssertionResult IsOutOfMemory(std::string_view failure, const std::string& path);

/// Keeps the reports in memory that is neither refused nor counted.
class UnrefusedObserver final : public RecordingObserver {
public:
    bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override;
    void ParserMessage(const GpxParserMessage& message) override;
    void Skipped(const GpxSkippedElement& what) override;

    /// Frees all reports.
    void Forget();
};

/// A file, and all results that reading it may have while some memory is refused.
class FaultFile {
public:
    explicit FaultFile(const std::string& bytes);

    const std::string& Bytes() const { return bytes_; }
    const icu::UnicodeString& Path() const { return path_; }
    std::string NarrowPath() const { return file_.NarrowPath(); }

    /// The document that is read when nothing is refused.
    const GpxDocument& Whole() const { return whole_; }

    /// True when the document lacks only the content of refused elements, all of which were reported in \p
    /// told.
    testing::AssertionResult HasAllBut(const std::vector<GpxSkippedElement>& told,
                                       const GpxDocument& document);
    /// True when it lacks at most the content of one element.
    testing::AssertionResult HasAllButOne(const GpxDocument& document);
    /// True when \p told has all reports of a reading without a refusal, except those about the content of
    /// refused elements.
    testing::AssertionResult IsToldAll(const std::vector<GpxSkippedElement>& told) const;
    /// True when the document was cleared and has a part or all of the file's content.
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
