// SPDX-License-Identifier: MIT
#include <vexagpx/output/MetaDataJson.h>

namespace vexagpx {

using namespace vexaTransferLib;

void MetaDataJson::Member(std::string_view key, const icu::UnicodeString& text) {
    if (text.isEmpty() && emptyTexts_ == EmptyTexts::kLeftOut)
        return;
    json_.Key(key);
    json_.String(text);
}

template <class Number>
void MetaDataJson::NumberMember(std::string_view key, Number number) {
    json_.Key(key);
    json_.Number(number);
}

void MetaDataJson::Write(const GISMetaData* record) {
    if (record == nullptr)
        return;
    json_.Key("gisMetaData");
    json_.BeginObject();
    Member("layerKey", record->layerKey);
    Member("layerName", record->layerName);
    Member("form", record->form);
    NumberMember("defaultSymbol", record->defaultSymbol);
    json_.EndObject();
}

void MetaDataJson::Write(const AnnotateMetaData* record) {
    if (record == nullptr)
        return;
    json_.Key("annotateMetaData");
    json_.BeginObject();
    Member("trackGUID", record->trackGUID);
    Member("waypointGUID", record->waypointGUID);
    json_.EndObject();
}

void MetaDataJson::Write(const GPXStats* record) {
    if (record == nullptr)
        return;
    json_.Key("stats");
    json_.BeginObject();
    NumberMember("wptcount", record->wptcount);
    NumberMember("trkcount", record->trkcount);
    NumberMember("trksegcount", record->trksegcount);
    NumberMember("trktotalkm", record->trktotalkm);
    NumberMember("geocachecount", record->geocachecount);
    json_.EndObject();
}

} // namespace vexagpx
