// SPDX-License-Identifier: MIT
#include "support/comparison/XmlDocument.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <climits>
#include <stdexcept>

namespace vexaTransferLib::testing_support {
namespace {

struct FreeParser {
    void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};

// With libxml2's limits, entities that grow without end are an error. An external entity stays undeclared, so
// that no file is read for it.
void DeclareInternalEntity(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                           const xmlChar* systemId, xmlChar* content) {
    static_cast<xmlParserCtxt*>(context)->options &= ~static_cast<int>(XML_PARSE_HUGE);
    if (type == XML_INTERNAL_GENERAL_ENTITY || type == XML_INTERNAL_PARAMETER_ENTITY)
        xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
}

std::string LastError(xmlParserCtxt* parser) {
    const xmlError* error = xmlCtxtGetLastError(parser);
    if (error == nullptr || error->message == nullptr)
        return "libxml2 refuses the text";
    std::string message = "line " + std::to_string(error->line) + ": " + error->message;
    message.erase(message.find_last_not_of('\n') + 1);
    return message;
}

} // namespace

XmlDocument::XmlDocument(std::string_view text) {
    if (text.size() > INT_MAX)
        throw std::runtime_error("libxml2 reads no text of more than 2 GiB from memory");
    const std::unique_ptr<xmlParserCtxt, FreeParser> parser(xmlNewParserCtxt());
    if (parser == nullptr)
        throw std::bad_alloc();
    parser->sax->entityDecl = DeclareInternalEntity;
    parser->sax->externalSubset = nullptr;
    const int options = XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_DTDATTR |
                        XML_PARSE_COMPACT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    document_.reset(xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr,
                                      nullptr, options));
    if (document_ == nullptr || Root() == nullptr || parser->nsWellFormed == 0)
        throw std::runtime_error(LastError(parser.get()));
}

std::string_view ViewOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

std::string ValueOf(const xmlAttr* attribute) {
    const xmlNode* value = attribute->children;
    if (value == nullptr)
        return {};
    if (value->next == nullptr && value->type == XML_TEXT_NODE)
        return std::string(ViewOf(value->content));
    xmlChar* copy = xmlNodeListGetString(attribute->doc, attribute->children, 1);
    std::string text(ViewOf(copy));
    xmlFree(copy);
    return text;
}

xmlNode* NextElement(xmlNode* node, const xmlNode* top) {
    if (xmlNode* child = xmlFirstElementChild(node))
        return child;
    for (; node != top; node = node->parent) {
        if (xmlNode* sibling = xmlNextElementSibling(node))
            return sibling;
    }
    return nullptr;
}

} // namespace vexaTransferLib::testing_support
