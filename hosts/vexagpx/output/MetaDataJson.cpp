// SPDX-License-Identifier: MIT
#include <vexagpx/output/MetaDataJson.h>

namespace vexagpx {

using namespace vexaTransferLib;

void MetaDataJson::TextMember(std::string_view key, const icu::UnicodeString& text) {
    if (!text.isEmpty() || emptyTexts_ == EmptyTexts::kShown)
        json_.Member(key, text);
}

void MetaDataJson::Write(const GISMetaData* record) {
    if (record == nullptr)
        return;
    json_.Key("gisMetaData");
    json_.BeginObject();
    TextMember("layerKey", record->layerKey);
    TextMember("layerName", record->layerName);
    TextMember("form", record->form);
    json_.Member("defaultSymbol", record->defaultSymbol);
    json_.EndObject();
}

void MetaDataJson::Write(const AnnotateMetaData* record) {
    if (record == nullptr)
        return;
    json_.Key("annotateMetaData");
    json_.BeginObject();
    TextMember("trackGUID", record->trackGUID);
    TextMember("waypointGUID", record->waypointGUID);
    json_.EndObject();
}

void MetaDataJson::Write(const GPXStats* record) {
    if (record == nullptr)
        return;
    json_.Key("stats");
    json_.BeginObject();
    json_.Member("wptcount", record->wptcount);
    json_.Member("trkcount", record->trkcount);
    json_.Member("trksegcount", record->trksegcount);
    json_.Member("trktotalkm", record->trktotalkm);
    json_.Member("geocachecount", record->geocachecount);
    json_.EndObject();
}

} // namespace vexagpx
