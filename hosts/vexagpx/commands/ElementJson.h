// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxElement.h>

#include <string_view>
#include <vector>

namespace vexagpx {

/// Writes XML elements as JSON objects: "namespace", "name", "attributes", and "text", "children" or "xml".
class ElementJson {
public:
    explicit ElementJson(JsonWriter& json) : json_(json) {}

    /// Writes a member of the current object: an array of the elements. No elements give no member.
    void Write(std::string_view key, const std::vector<vexaTransferLib::GpxElement>& elements);
    /// The same; each element also has the member "line", where it starts in its source.
    void WriteWithLines(std::string_view key, const std::vector<vexaTransferLib::GpxElement>& elements);

private:
    void WriteElement(const vexaTransferLib::GpxElement& element, std::string_view outerNamespace,
                      int levels);
    void WriteMembers(const vexaTransferLib::GpxElement& element, std::string_view outerNamespace,
                      int levels);
    void WriteAttributes(const vexaTransferLib::GpxElement& element);
    void WriteContent(const vexaTransferLib::GpxElement& element, int levels);

    JsonWriter& json_;
};

} // namespace vexagpx
