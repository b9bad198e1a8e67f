// SPDX-License-Identifier: MIT

// Complete reading of files with a few errors: it accepts what the XML parser accepts, and the source has what the XML
// parser finds.

#include "support/CompleteRead.h"
#include "support/ElementWalk.h"
#include "support/GpxDom.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/Mutations.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxElement.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// Control characters, which only XML 1.1 has, become the replacement character.
std::string TextOf(const XMLCh* text) {
    icu::UnicodeString replaced = text != nullptr ? icu::UnicodeString(text) : icu::UnicodeString();
    for (std::int32_t i = 0; i < replaced.length(); ++i)
        if (replaced[i] < u' ' && replaced[i] != u'\t' && replaced[i] != u'\n' && replaced[i] != u'\r')
            replaced.setCharAt(i, u'\uFFFD');
    return Utf8(replaced);
}

bool IsDeclaration(const std::string& name) {
    return name == "xmlns" || name.starts_with("xmlns:");
}

// A DOM sorts the attributes.
std::map<std::string, std::string> AttributesOf(const xercesc::DOMNode& element) {
    std::map<std::string, std::string> attributes;
    const xercesc::DOMNamedNodeMap& map = *element.getAttributes();
    for (XMLSize_t i = 0; i < map.getLength(); ++i)
        if (!IsDeclaration(TextOf(map.item(i)->getNodeName())))
            attributes["{" + TextOf(map.item(i)->getNamespaceURI()) + "}" +
                       TextOf(map.item(i)->getLocalName())] = TextOf(map.item(i)->getNodeValue());
    return attributes;
}

std::map<std::string, std::string> AttributesOf(const GpxElement& element) {
    std::map<std::string, std::string> attributes;
    for (const GpxAttribute& attribute : element.GetAttributes())
        attributes["{" + std::string(attribute.nameSpace) + "}" + std::string(attribute.name)] =
            Utf8(attribute.value);
    return attributes;
}

// Compares the elements of the source with those of a DOM, in the order of the file.
void ExpectSameElements(const GpxElement& root, const DomTree& tree) {
    const xercesc::DOMNode* node = tree.Root();
    ForEachElement(root, [&](const GpxElement& element) {
        ASSERT_NE(node, nullptr) << element.GetXml();
        EXPECT_EQ(element.GetName(), TextOf(node->getLocalName()));
        EXPECT_EQ(element.GetPrefix(), TextOf(node->getPrefix()));
        EXPECT_EQ(element.GetNamespace(), TextOf(node->getNamespaceURI()));
        EXPECT_EQ(Utf8(element.GetText()), TextOf(node->getTextContent()));
        EXPECT_EQ(AttributesOf(element), AttributesOf(*node));
        do
            node = NextInDocument(node);
        while (node != nullptr && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE);
    });
    EXPECT_EQ(node, nullptr);
}

// By default, a file with a document type is read from a DOM, which knows no lines.
std::string Comparable(std::string error, const std::string& bytes) {
    const std::size_t line = error.rfind(", line ");
    if (bytes.find("<!D") == std::string::npos || line == std::string::npos)
        return error;
    return error.erase(line, error.find(',', line + 1) - line);
}

void CheckBytes(const std::string& bytes) {
    SCOPED_TRACE(bytes);
    const CompleteRead read = ReadCompletely(bytes);
    EXPECT_EQ(read.reports, "");
    EXPECT_EQ(Comparable(read.error, bytes), Comparable(ErrorToExpect(bytes), bytes));
    if (read.error.empty()) {
        ExpectSameElements(read.document.GetElement(), DomTree(bytes));
        EXPECT_GT(AskAll(read.document.GetElement()), 0U);
    }
    const CompleteRead untrusted = ReadCompletely(bytes, GpxInputLimits());
    if (bytes.find("<!D") == std::string::npos) {
        EXPECT_EQ(untrusted.error, read.error);
    }
}

TEST(CompleteDifferenceTest, TestFilesWithErrorsAreAcceptedAsByTheXmlParser) {
    Mutator mutator(31);
    for (const std::filesystem::path& path : GpxFilesBelow(VEXA_TEST_DATA, 20000)) {
        const std::string file = ReadBytes(path);
        CheckBytes(file);
        for (int i = 0; i < 40 && !HasFailure(); ++i)
            CheckBytes(mutator.Mutate(file));
    }
}

TEST(CompleteDifferenceTest, FilesThatAreNotPlainAreAcceptedAsByTheXmlParser) {
    Mutator mutator(32);
    for (const std::filesystem::path& path : GpxFilesBelow(VEXA_TEST_DATA, 8000)) {
        const std::string file = ReadBytes(path);
        const std::size_t declaration = file.starts_with("<?xml") ? file.find("?>") + 2 : 0;
        if (file.find("\xEF\xBB\xBF") == 0)
            continue;
        const std::string body = file.substr(declaration);
        for (int i = 0; i < 15 && !HasFailure(); ++i) {
            CheckBytes("<?xml version='1.1'?>" + mutator.Mutate(body));
            CheckBytes("<!DOCTYPE gpx [<!ENTITY e 'x&#10;<name>n</name>'>]>" + mutator.Mutate(body));
            CheckBytes("<?xml version='1.0' encoding='windows-1252'?>" + mutator.Mutate(body));
        }
    }
}

TEST(CompleteDifferenceTest, OddMarkupIsReadAsByTheXmlParser) {
    for (const char* const odd : {"<a b='x/'/>",
                                  "<a b='>'/>",
                                  "<a b='/>'>t</a>",
                                  "<a\n b = \"'\"\tc='\"' />",
                                  "<a/>",
                                  "<a ></a >",
                                  "<a><!-- > --></a>",
                                  "<a><![CDATA[</a>]]></a>",
                                  "<a><![CDATA[]]]]><![CDATA[>]]></a>",
                                  "<a><?p ?? ></a> ?></a>",
                                  "<!----><a/>",
                                  "<a>]]</a>",
                                  "<a>&#x3C;b&#62;</a>",
                                  "<a b='&#x9;&#10;&#13;\t\n\r\n'/>",
                                  "<a>\r\r\n&#13;</a>",
                                  "<p:a xmlns:p='u'><p:b xmlns:p='v' p:c='1'/><p:b p:c='1'/></p:a>",
                                  "<a xmlns=''><b xmlns='u'/><b/></a>",
                                  "<a xml:lang='en' xml:space='preserve'> </a>",
                                  "<a b='\xF0\x9F\x97\xBB'>\xF0\x9F\x97\xBB</a>",
                                  "<a xmlns:x='u' xmlns:y='u' x:b='1' y:c='2'/>",
                                  "<_a-.b/>",
                                  "<a><a><a/></a></a><a/>",
                                  "<a xmlns:xml='http://www.w3.org/XML/1998/namespace' xml:b='1'/>",
                                  "<a>\xC2\x85\xE2\x80\xA8</a>"})
        for (const char* const start : {"", "<!DOCTYPE gpx>", "<?xml version='1.1'?>"})
            CheckBytes(start + Gpx11(odd));
}

TEST(CompleteDifferenceTest, FilesOfManyProgramsWithErrorsAreAcceptedAsByTheXmlParser) {
    const std::filesystem::path corpus = std::filesystem::path(VEXA_SHARED) / "corpus";
    if (!std::filesystem::is_directory(corpus))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    Mutator mutator(33);
    for (const std::filesystem::path& path : GpxFilesBelow(corpus, 8000)) {
        const std::string file = ReadBytes(path);
        CheckBytes(file);
        for (int i = 0; i < 5 && !HasFailure(); ++i)
            CheckBytes(mutator.Mutate(file));
    }
}

} // namespace
} // namespace vexaTransferLib
