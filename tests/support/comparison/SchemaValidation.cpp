// SPDX-License-Identifier: MIT
#include "support/comparison/SchemaValidation.h"

#include "support/comparison/XmlDocument.h"

#include <libxml/xmlschemas.h>

#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>

namespace vexaTransferLib::testing_support {
namespace {

template <auto Function>
struct CallOn {
    template <class T>
    void operator()(T* object) const {
        Function(object);
    }
};
using SchemaParser = std::unique_ptr<xmlSchemaParserCtxt, CallOn<xmlSchemaFreeParserCtxt>>;
using Schema = std::unique_ptr<xmlSchema, CallOn<xmlSchemaFree>>;
using Validation = std::unique_ptr<xmlSchemaValidCtxt, CallOn<xmlSchemaFreeValidCtxt>>;

void NoteError(void* lines, xmlError* error) {
    if (error->level == XML_ERR_WARNING)
        return;
    static_cast<std::string*>(lines)->append("line " + std::to_string(error->line) + ": " +
                                             (error->message == nullptr ? "an error\n" : error->message));
}

// libxml2 takes no decimal number of more than 24 digits, of which XML Schema allows any count.
std::optional<std::string> ShortDecimal(std::string_view text) {
    constexpr std::size_t kMostDigits = 20;
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos || text.size() <= kMostDigits || point >= kMostDigits ||
        text.find_first_not_of("0123456789", text.front() == '-' || text.front() == '+' ? 1 : 0) != point ||
        text.find_first_not_of("0123456789", point + 1) != std::string_view::npos)
        return {};
    return std::string(text.substr(0, kMostDigits));
}

const xmlChar* XmlText(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

void ShortenDecimals(xmlNode* element) {
    for (xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        if (const std::optional<std::string> shorter = ShortDecimal(ValueOf(attribute)))
            xmlSetNsProp(element, attribute->ns, attribute->name, XmlText(*shorter));
    }
    xmlNode* text = element->children;
    if (text != nullptr && text->next == nullptr && text->type == XML_TEXT_NODE) {
        if (const std::optional<std::string> shorter = ShortDecimal(ViewOf(text->content)))
            xmlNodeSetContent(text, XmlText(*shorter));
    }
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&' || c == '<' || c == '"')
            escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
        else
            escaped += c;
    }
    return escaped;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (bytes.empty())
        throw std::runtime_error("cannot read " + path.string());
    return bytes;
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

std::string TargetNamespace(const std::filesystem::path& schema) {
    const XmlDocument document(ReadFile(schema));
    for (const xmlAttr* attribute = document.Root()->properties; attribute != nullptr;
         attribute = attribute->next) {
        if (ViewOf(attribute->name) == "targetNamespace")
            return ValueOf(attribute);
    }
    throw std::runtime_error(schema.string() + " is a schema of no namespace");
}

constexpr std::string_view kSchemaStart = R"(<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema")";

std::string ImportOf(std::string_view uri, const std::filesystem::path& file) {
    return "<xsd:import namespace=\"" + Escaped(uri) + "\" schemaLocation=\"" + Escaped(file.string()) +
           "\"/>\n";
}

// A schema that declares elements of one namespace; a declaration without a type is one of any content.
std::string LooseSchema(std::string_view uri, const std::set<std::string>& names) {
    std::string text = std::string(kSchemaStart) + " targetNamespace=\"" + Escaped(uri) + "\">\n";
    for (const std::string& name : names)
        text += "<xsd:element name=\"" + name + "\"/>\n";
    return text + "</xsd:schema>\n";
}

std::map<std::string, std::set<std::string>> ForeignNames(std::string_view xml,
                                                          const std::set<std::string>& known) {
    std::map<std::string, std::set<std::string>> names;
    const XmlDocument document(xml);
    for (xmlNode* element = document.Root(); element != nullptr;
         element = NextElement(element, document.Root())) {
        const std::string uri(NamespaceOf(element));
        if (!uri.empty() && !known.contains(uri))
            names[uri].emplace(ViewOf(element->name));
    }
    return names;
}

} // namespace

std::optional<std::string> ValidateAgainst(std::string_view xml, const std::string& schemaFile) {
    const XmlDocument document(xml);
    for (xmlNode* element = document.Root(); element != nullptr;
         element = NextElement(element, document.Root()))
        ShortenDecimals(element);
    if (!std::filesystem::exists(schemaFile))
        throw std::runtime_error("there is no schema " + schemaFile);
    std::string errors;
    const SchemaParser parser(xmlSchemaNewParserCtxt(schemaFile.c_str()));
    if (parser == nullptr)
        throw std::bad_alloc();
    xmlSchemaSetParserStructuredErrors(parser.get(), NoteError, &errors);
    const Schema schema(xmlSchemaParse(parser.get()));
    if (schema == nullptr)
        throw std::runtime_error("the schema " + schemaFile + " cannot be used: " + errors);
    const Validation validation(xmlSchemaNewValidCtxt(schema.get()));
    if (validation == nullptr)
        throw std::bad_alloc();
    xmlSchemaSetValidStructuredErrors(validation.get(), NoteError, &errors);
    const int result = xmlSchemaValidateDoc(validation.get(), document.Get());
    if (result == 0)
        return {};
    return errors.empty() ? "libxml2 refuses the text with " + std::to_string(result) : errors;
}

std::string WriteCombinedSchema(const std::filesystem::path& folder,
                                const std::vector<std::filesystem::path>& schemas, std::string_view xml) {
    std::string text = std::string(kSchemaStart) + " targetNamespace=\"urn:all-schemas\">\n";
    std::set<std::string> known;
    for (const std::filesystem::path& schema : schemas) {
        const std::string uri = TargetNamespace(schema);
        text += ImportOf(uri, std::filesystem::absolute(schema));
        known.insert(uri);
    }
    if (!xml.empty()) {
        for (const auto& [uri, names] : ForeignNames(xml, known)) {
            const std::filesystem::path file = folder / ("loose" + std::to_string(known.size()) + ".xsd");
            WriteFile(file, LooseSchema(uri, names));
            text += ImportOf(uri, file);
            known.insert(uri);
        }
    }
    const std::filesystem::path all = folder / "all.xsd";
    WriteFile(all, text + "</xsd:schema>\n");
    return all.string();
}

} // namespace vexaTransferLib::testing_support
