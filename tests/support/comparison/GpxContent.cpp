// SPDX-License-Identifier: MIT
#include "support/comparison/GpxContent.h"

#include "support/comparison/ContentTree.h"
#include "support/comparison/GpxFields.h"
#include "support/comparison/NormalValues.h"
#include "support/comparison/XmlDocument.h"

#include <utility>

namespace vexaTransferLib::testing_support {
namespace {

constexpr std::string_view kSchemaInstance = "http://www.w3.org/2001/XMLSchema-instance";

// What the root says about the file and not about the world.
bool IsFileAttribute(const xmlAttr* attribute) {
    const std::string_view name = ViewOf(attribute->name);
    const std::string_view uri = NamespaceOf(attribute);
    return (uri.empty() && (name == "creator" || name == "version")) ||
           (uri == kSchemaInstance && name == "schemaLocation");
}

std::string Below(const std::string& path, std::string_view step) {
    return path.empty() ? std::string(step) : path + "/" + std::string(step);
}

const xmlAttr* FindAttribute(const xmlNode* element, std::string_view name) {
    const xmlAttr* attribute = element->properties;
    while (attribute != nullptr && (attribute->ns != nullptr || ViewOf(attribute->name) != name))
        attribute = attribute->next;
    return attribute;
}

class ObjectReader {
public:
    ObjectReader(GpxObject& object, DeepPaths& deepPaths)
        : object_(object), deepPaths_(deepPaths), tree_(object, deepPaths) {}

    void Read(xmlNode* element, const ObjectKind& kind);

private:
    // The links that GPX 1.0 gives as url and urlname: the first url and the first urlname are one link.
    struct Pairs {
        std::vector<std::string> links;
        std::size_t urls = 0;
        std::size_t names = 0;
    };

    void ReadChild(xmlNode* child, const std::string& path, const FieldGroup& group);
    void ReadField(xmlNode* element, const std::string& path, const Field& field);
    void ReadExtensions(xmlNode* element, const std::string& path, const FieldGroup& group);
    void ReadInnerGroup(xmlNode* element, const std::string& path, const FieldGroup& group);
    void ReadLink(xmlNode* element, const std::string& path);
    void ReadEmail(xmlNode* element, const std::string& path);
    void ReadTree(xmlNode* element, const std::string& path, FieldForm form = FieldForm::kText);
    std::string PairedLink(const std::string& path, std::size_t Pairs::*count);
    std::string NewLink(const std::string& path);
    void AddAttributes(const xmlNode* element, const std::string& path);
    template <class Function>
    void ForEachChild(const xmlNode* element, const std::string& path, const Function& function);

    GpxObject& object_;
    DeepPaths& deepPaths_;
    ContentTree tree_;
    StepCounter counter_;
    std::map<std::string, Pairs> pairs_;
};

void ObjectReader::Read(xmlNode* element, const ObjectKind& kind) {
    const bool root = &kind == &DocumentKind();
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        const std::string step = StepOf(attribute);
        const bool number = kind.hasPosition && (step == "@lat" || step == "@lon");
        if (!root || !IsFileAttribute(attribute))
            AddFact(object_, step, number ? NormalNumber(ValueOf(attribute)) : ValueOf(attribute));
    }
    ForEachChild(element, "", [&](xmlNode* child) {
        const NamedKind* const object = FindNamed(kind.objects, StepOf(child, false));
        if (object == nullptr)
            return ReadChild(child, "", kind.group);
        GpxObject& added = object_.objects[object->name].emplace_back();
        ObjectReader(added, deepPaths_).Read(child, *object->kind);
    });
}

// Text between the elements has no place in any version, but it is content that the other text can lack.
template <class Function>
void ObjectReader::ForEachChild(const xmlNode* element, const std::string& path, const Function& function) {
    std::string text;
    const auto addText = [&] {
        if (!TrimmedXml(text).empty())
            AddFact(object_, Below(path, "text()"), text);
        text.clear();
    };
    for (xmlNode* child = element->children; child != nullptr; child = child->next) {
        text += TextOf(child);
        if (child->type == XML_ELEMENT_NODE) {
            addText();
            function(child);
        }
    }
    addText();
}

void ObjectReader::AddAttributes(const xmlNode* element, const std::string& path) {
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
        AddFact(object_, Below(path, StepOf(attribute)), ValueOf(attribute));
}

void ObjectReader::ReadChild(xmlNode* child, const std::string& path, const FieldGroup& group) {
    const std::string step = StepOf(child, false);
    if (const Field* const field = FindNamed(group.fields, step))
        ReadField(child, Below(path, field->path), *field);
    else if (group.hasExtensions && step == "extensions")
        ReadExtensions(child, Below(path, step), group);
    else
        ReadTree(child, Below(group.hasExtensions ? Below(path, "extensions") : path, step));
}

void ObjectReader::ReadField(xmlNode* element, const std::string& path, const Field& field) {
    switch (field.form) {
    case FieldForm::kLink:
        return ReadLink(element, path);
    case FieldForm::kUrl: {
        const std::string link = PairedLink(path, &Pairs::urls);
        return tree_.Add(element, link + "/url", link + "/@href", field.form);
    }
    case FieldForm::kUrlName:
        return ReadTree(element, PairedLink(path, &Pairs::names) + "/text");
    case FieldForm::kEmail:
        return ReadEmail(element, counter_.Indexed(path));
    case FieldForm::kGroup:
        return ReadInnerGroup(element, counter_.Indexed(path), *field.group);
    default:
        return ReadTree(element, path, field.form);
    }
}

// Course and speed in the extensions of a point are those that a point has in GPX 1.0.
void ObjectReader::ReadExtensions(xmlNode* element, const std::string& path, const FieldGroup& group) {
    AddAttributes(element, path);
    ForEachChild(element, path, [&](xmlNode* child) {
        const std::string step = StepOf(child, false);
        const Field* const field = FindNamed(group.fields, step);
        if (field != nullptr && (step == "course" || step == "speed"))
            ReadField(child, step, *field);
        else
            ReadTree(child, Below(path, step));
    });
}

void ObjectReader::ReadInnerGroup(xmlNode* element, const std::string& path, const FieldGroup& group) {
    const std::size_t before = object_.facts.size();
    AddAttributes(element, path);
    ForEachChild(element, path, [&](xmlNode* child) { ReadChild(child, path, group); });
    if (object_.facts.size() == before)
        AddFact(object_, path, "");
}

void ObjectReader::ReadLink(xmlNode* element, const std::string& path) {
    const std::string link = NewLink(path);
    AddAttributes(element, link);
    ForEachChild(element, link, [&](xmlNode* child) { ReadTree(child, Below(link, StepOf(child, false))); });
}

// GPX 1.0 has the address as text, GPX 1.1 its two parts as attributes.
void ObjectReader::ReadEmail(xmlNode* element, const std::string& path) {
    const xmlAttr* id = FindAttribute(element, "id");
    const xmlAttr* domain = FindAttribute(element, "domain");
    if (id == nullptr || domain == nullptr)
        return tree_.Add(element, path, path, FieldForm::kEmail);
    AddFact(object_, path, ValueOf(id) + "@" + ValueOf(domain));
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        if (attribute != id && attribute != domain)
            AddFact(object_, Below(path, StepOf(attribute)), ValueOf(attribute));
    }
    ForEachChild(element, path, [&](xmlNode* child) { ReadTree(child, Below(path, StepOf(child, false))); });
}

void ObjectReader::ReadTree(xmlNode* element, const std::string& path, FieldForm form) {
    const std::string indexed = counter_.Indexed(path);
    tree_.Add(element, indexed, indexed, form);
}

std::string ObjectReader::PairedLink(const std::string& path, std::size_t Pairs::*count) {
    Pairs& pairs = pairs_[path];
    const std::size_t number = (pairs.*count)++;
    if (number == pairs.links.size())
        pairs.links.push_back(NewLink(path));
    return pairs.links[number];
}

std::string ObjectReader::NewLink(const std::string& path) {
    std::string link = counter_.Indexed(path);
    AddFact(object_, link, "");
    return link;
}

} // namespace

void ForEachFact(const GpxObject& object,
                 const std::function<void(std::string_view path, std::string_view value)>& function) {
    std::string_view rest = object.facts;
    while (!rest.empty()) {
        const std::size_t pathEnd = rest.find('\0');
        const std::size_t valueEnd = rest.find('\0', pathEnd + 1);
        function(rest.substr(0, pathEnd), rest.substr(pathEnd + 1, valueEnd - pathEnd - 1));
        rest.remove_prefix(valueEnd + 1);
    }
}

GpxContent ReadGpxContent(std::string_view text, DeepPaths& deepPaths) {
    const XmlDocument document(text);
    xmlNode* root = document.Root();
    GpxContent content{StepOf(root, false), {}};
    if (content.rootName == "gpx")
        ObjectReader(content.root, deepPaths).Read(root, DocumentKind());
    else
        ContentTree(content.root, deepPaths).Add(root, "content", "content", FieldForm::kText);
    return content;
}

} // namespace vexaTransferLib::testing_support
