// SPDX-License-Identifier: MIT
#pragma once

#include "support/comparison/GpxContent.h"
#include "support/comparison/GpxFields.h"
#include "support/comparison/XmlDocument.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vexaTransferLib::testing_support {

/// True for the namespaces of GPX in all their spellings. No namespace is none of them.
bool IsGpxNamespace(std::string_view uri);

/// The step of an element in a path: the local name for GPX and no namespace, otherwise {namespace}local. Below a
/// foreign element, no namespace is one of its own.
std::string StepOf(const xmlNode* element, bool belowForeign);
bool IsForeign(const xmlNode* element);

/// "@name" or "@{namespace}name".
std::string StepOf(const xmlAttr* attribute);

/// The text of a node that is text; an entity that is not declared is its reference.
std::string TextOf(const xmlNode* node);

/// Adds a fact.
void AddFact(GpxObject& object, std::string_view path, std::string_view value);

/// The value in the form of a field.
std::string NormalValue(FieldForm form, std::string_view text);

/// Numbers the steps with the same name below one parent: "log", "log[1]", "log[2]".
class StepCounter {
public:
    std::string Indexed(std::string step) {
        const std::size_t before = counts_[step]++;
        return before == 0 ? step : step + "[" + std::to_string(before) + "]";
    }

private:
    std::unordered_map<std::string, std::size_t> counts_;
};

/// Adds an element and everything in it, at any depth.
class ContentTree {
public:
    ContentTree(GpxObject& object, DeepPaths& deepPaths) : object_(object), deepPaths_(deepPaths) {}

    /// The text of the element itself has `valuePath`, everything else is below `path`.
    void Add(xmlNode* element, const std::string& path, const std::string& valuePath, FieldForm form);

private:
    struct Level {
        const xmlNode* element = nullptr;
        xmlNode* next = nullptr;
        std::string pathBefore; // only if the path was shortened here
        std::size_t lengthBefore = 0;
        bool foreign = false;
        StepCounter counter;
        std::string text; // since the last child element
        std::size_t children = 0;
        std::string firstStep;
        std::string steps;
        bool mixed = false;
    };

    void Enter(xmlNode* element, const std::string& step);
    void Leave();
    void AddAttributes(const xmlNode* element, FieldForm form);
    void AddChild(xmlNode* child);
    void EndText(Level& level);

    GpxObject& object_;
    DeepPaths& deepPaths_;
    std::string top_; // the path of the element that was added
    std::string path_;
    std::vector<Level> levels_;
};

} // namespace vexaTransferLib::testing_support
