// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainNames.h>

#include <vexaTransferLib/text/GpxNames.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::reader {
namespace {

constexpr std::uint64_t kMany = 1'000'000;

class PlainNamesTest : public testing::Test {
protected:
    /// The name in a text that has room for a look at more bytes.
    const PlainName* Find(std::string_view name) {
        text_ = std::string(name) + std::string(16, '\0');
        return names_->Find({text_.data(), name.size()});
    }
    const PlainName* Expected(std::string_view bytes) {
        text_ = std::string(bytes) + std::string(16, '\0');
        return names_->Expected(text_.data(), text_.data() + bytes.size());
    }
    bool Declare(std::string_view name, std::string_view uri) { return names_->Declare(*Find(name), uri); }
    std::optional<const char16_t*> NamespaceOf(std::string_view name) {
        const char16_t* uri = nullptr;
        return names_->FindNamespace(*Find(name), uri) ? std::optional(uri) : std::nullopt;
    }

    std::optional<PlainNames> names_{std::in_place, kMany, kMany, kMany};
    std::string text_;
};

TEST_F(PlainNamesTest, GiveOneObjectForEachName) {
    const PlainName* const name = Find("trkpt");
    EXPECT_EQ(Find("trkpt"), name);
    EXPECT_NE(Find("trkp"), name);
    EXPECT_NE(Find("trkpt1"), name);
    const PlainName* const longName = Find("geoidheight1");
    EXPECT_NE(Find("geoidheight2"), longName);
    EXPECT_EQ(Find("geoidheight1"), longName);
}

TEST_F(PlainNamesTest, SplitNamesAtTheColon) {
    const PlainName& plain = *Find("name");
    EXPECT_FALSE(plain.HasPrefix());
    EXPECT_EQ(std::u16string(plain.Local()), u"name");
    const PlainName& prefixed = *Find("groundspeak:name");
    EXPECT_TRUE(prefixed.HasPrefix());
    EXPECT_EQ(std::u16string(prefixed.Local()), u"name");
    EXPECT_EQ(std::u16string(prefixed.Qualified()), u"groundspeak:name");
    EXPECT_EQ(prefixed.Bytes(), "groundspeak:name");
}

TEST_F(PlainNamesTest, KnowDeclarations) {
    EXPECT_TRUE(Find("xmlns")->IsDeclaration());
    EXPECT_TRUE(Find("xmlns:a")->IsDeclaration());
    EXPECT_FALSE(Find("xmlnsa")->IsDeclaration());
    EXPECT_FALSE(Find("a:xmlns")->IsDeclaration());
}

TEST_F(PlainNamesTest, ExpectTheNameThatCameNextTheLastTime) {
    EXPECT_EQ(Expected("a"), nullptr);
    const PlainName* const a = Find("a");
    const PlainName* const longName = Find("a-long-name");
    Find("a");
    EXPECT_EQ(Expected("a-long-nam"), nullptr);
    EXPECT_EQ(Expected("a-long-namX"), nullptr);
    EXPECT_EQ(Expected("a-long-name>"), longName);
    EXPECT_EQ(Expected("a "), a);
}

TEST_F(PlainNamesTest, FindTheNamespaceOfTheInnermostDeclaration) {
    EXPECT_EQ(NamespaceOf("a"), std::optional<const char16_t*>(nullptr));
    EXPECT_EQ(NamespaceOf("p:a"), std::nullopt);
    ASSERT_TRUE(Declare("xmlns", "http://www.topografix.com/GPX/1/1"));
    ASSERT_TRUE(Declare("xmlns:p", "outer"));
    // A known namespace is the constant, so that readers compare pointers.
    EXPECT_EQ(NamespaceOf("a"), std::optional<const char16_t*>(text::kGpx11Namespace));
    EXPECT_EQ(std::u16string(*NamespaceOf("p:a")), u"outer");
    const std::size_t count = names_->CountDeclared();
    EXPECT_EQ(count, 2u);
    ASSERT_TRUE(Declare("xmlns:p", "inner"));
    ASSERT_TRUE(Declare("xmlns", ""));
    EXPECT_EQ(NamespaceOf("a"), std::optional<const char16_t*>(nullptr));
    EXPECT_EQ(std::u16string(*NamespaceOf("p:a")), u"inner");
    names_->EndDeclarations(count);
    EXPECT_EQ(std::u16string(*NamespaceOf("p:a")), u"outer");
    names_->EndDeclarations(0);
    EXPECT_EQ(NamespaceOf("p:a"), std::nullopt);
    EXPECT_EQ(NamespaceOf("a"), std::optional<const char16_t*>(nullptr));
}

TEST_F(PlainNamesTest, ForgetTheNamespaceThatHasEnded) {
    ASSERT_TRUE(Declare("xmlns", "uri"));
    EXPECT_EQ(std::u16string(*NamespaceOf("a")), u"uri");
    names_->EndDeclarations(0);
    EXPECT_EQ(NamespaceOf("a"), std::optional<const char16_t*>(nullptr));
}

TEST_F(PlainNamesTest, GiveOnePointerForEachNamespace) {
    ASSERT_TRUE(Declare("xmlns:a", "same"));
    ASSERT_TRUE(Declare("xmlns:b", "same"));
    EXPECT_EQ(NamespaceOf("a:x"), NamespaceOf("b:x"));
}

TEST_F(PlainNamesTest, HaveThePrefixOfXmlWithoutDeclaration) {
    EXPECT_EQ(std::u16string(*NamespaceOf("xml:lang")), u"http://www.w3.org/XML/1998/namespace");
}

TEST_F(PlainNamesTest, RefuseDeclarationsThatXmlExcludes) {
    EXPECT_FALSE(Declare("xmlns:p", ""));
    EXPECT_FALSE(Declare("xmlns:xml", "http://www.w3.org/XML/1998/namespace"));
    EXPECT_FALSE(Declare("xmlns:xmlns", "uri"));
    EXPECT_FALSE(Declare("xmlns:p", "http://www.w3.org/XML/1998/namespace"));
    EXPECT_FALSE(Declare("xmlns", "http://www.w3.org/2000/xmlns/"));
    EXPECT_EQ(names_->CountDeclared(), 0u);
}

TEST_F(PlainNamesTest, RefuseMoreNamesThanTheyMayHave) {
    names_.emplace(3, kMany, kMany);
    EXPECT_NE(Find("a"), nullptr);
    EXPECT_NE(Find("b"), nullptr);
    EXPECT_NE(Find("c"), nullptr);
    EXPECT_NE(Find("a"), nullptr);
    EXPECT_EQ(Find("d"), nullptr);
}

TEST_F(PlainNamesTest, CountPrefixesAndNamespacesAsNames) {
    names_.emplace(3, kMany, kMany);
    EXPECT_TRUE(Declare("xmlns:p", "uri"));
    EXPECT_EQ(Find("a"), nullptr);
}

TEST_F(PlainNamesTest, RefuseMoreDeclarationsInScopeThanTheyMayHave) {
    names_.emplace(kMany, 2, kMany);
    EXPECT_TRUE(Declare("xmlns", "a"));
    EXPECT_TRUE(Declare("xmlns", "a"));
    EXPECT_FALSE(Declare("xmlns", "a"));
    names_->EndDeclarations(1);
    EXPECT_TRUE(Declare("xmlns", "a"));
}

TEST_F(PlainNamesTest, RefuseALongerNamespaceThanTheyMayHave) {
    names_.emplace(kMany, kMany, 3);
    EXPECT_TRUE(Declare("xmlns", "abc"));
    EXPECT_FALSE(Declare("xmlns", "abcd"));
}

TEST_F(PlainNamesTest, RefuseWhatNoFileHasWithoutLimitsToo) {
    int found = 0;
    while (found < 10000 && Find("n" + std::to_string(found)) != nullptr)
        ++found;
    EXPECT_EQ(found, 512);
    names_.emplace(kMany, kMany, kMany);
    int declared = 0;
    while (declared < 10000 && Declare("xmlns", "uri"))
        ++declared;
    EXPECT_EQ(declared, 64);
}

} // namespace
} // namespace vexaTransferLib::reader
