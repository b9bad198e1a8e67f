// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxDocument.h>

namespace vexagpx {

enum class EmptyTexts { kShown, kLeftOut };

/// Writes the vendor's metadata records as members "gisMetaData", "annotateMetaData" and "stats" of the current
/// object; a missing record is left out.
class MetaDataJson {
public:
    MetaDataJson(JsonWriter& json, EmptyTexts emptyTexts) : json_(json), emptyTexts_(emptyTexts) {}

    /// \param record null when it is missing
    void Write(const vexaTransferLib::GISMetaData* record);
    void Write(const vexaTransferLib::AnnotateMetaData* record);
    void Write(const vexaTransferLib::GPXStats* record);

private:
    void TextMember(std::string_view key, const icu::UnicodeString& text);

    JsonWriter& json_;
    EmptyTexts emptyTexts_;
};

} // namespace vexagpx
