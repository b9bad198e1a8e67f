// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxDocument.h>

namespace vexagpx {

enum class EmptyTexts { kShown, kLeftOut };

/// The vendor's metadata records as members "gisMetaData", "annotateMetaData" and "stats" of the object that
/// is being written; an absent record is left out.
class MetaDataJson {
public:
    MetaDataJson(JsonWriter& json, EmptyTexts emptyTexts) : json_(json), emptyTexts_(emptyTexts) {}

    void Write(const vexaTransferLib::GISMetaData* record);
    void Write(const vexaTransferLib::AnnotateMetaData* record);
    void Write(const vexaTransferLib::GPXStats* record);

private:
    void Member(std::string_view key, const icu::UnicodeString& text);
    template <class Number>
    void NumberMember(std::string_view key, Number number);

    JsonWriter& json_;
    EmptyTexts emptyTexts_;
};

} // namespace vexagpx
