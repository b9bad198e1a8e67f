// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxCacheDetails.h>
#include <vexaTransferLib/GpxGroundspeakCache.h>

#include <string_view>
#include <vector>

namespace vexagpx {

/// Writes geocaches as JSON objects: the model, and of a completely read geocache also what the model has no member
/// for.
class GeocacheJson {
public:
    explicit GeocacheJson(JsonWriter& json) : json_(json) {}

    void Write(const vexaTransferLib::GpxGroundspeakCache& cache);

private:
    void WriteModel(const vexaTransferLib::GpxGroundspeakCache& cache);
    void WriteDetails(const vexaTransferLib::GpxCacheDetails& cache);
    void WriteLogs(const vexaTransferLib::GpxGroundspeakCache& cache);
    void WriteLog(const vexaTransferLib::GpxGroundspeakCacheLog& log,
                  const vexaTransferLib::GpxCacheLogDetails* details);
    void WriteLogDetails(const vexaTransferLib::GpxCacheLogDetails& log);
    void WriteAttribute(const vexaTransferLib::GpxCacheAttribute& attribute);
    void WriteTravelBug(const vexaTransferLib::GpxTravelBug& bug);
    bool HasChild(std::string_view name) const;

    JsonWriter& json_;
    std::vector<std::string_view> children_; ///< names in the geocache that is written
};

} // namespace vexagpx
