// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputGuard.h>

#include <vexaTransferLib/reader/ReadingStop.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace vexaTransferLib::reader {
namespace {

template <class Action>
std::string RefusalOf(Action action) {
    try {
        action();
        return "";
    } catch (const ReadingStop& stop) {
        try {
            std::rethrow_exception(stop.reason);
        } catch (const std::exception& exception) {
            return exception.what();
        }
    }
}

std::string Refusal(const std::string& why) {
    return "The untrusted GPX file was refused: walk.gpx. " + why;
}

TEST(InputGuardTest, CountsANameOnce) {
    GpxInputLimits limits;
    limits.names = 3;
    InputGuard guard(limits, "walk.gpx");
    for (unsigned i = 0; i < 100; ++i) {
        guard.StartElement(i % 2 + 1, 0);
        guard.EndElement();
    }
    guard.StartElement(7, 0);
    EXPECT_EQ(RefusalOf([&] { guard.StartElement(5, 0); }),
              Refusal("It has more different names than 3 (limit of names)."));
}

TEST(InputGuardTest, PrefixesAndNamespacesAreNamesToo) {
    GpxInputLimits limits;
    limits.names = 5;
    InputGuard guard(limits, "walk.gpx");
    guard.StartElement(1, 2);
    guard.AddNamespace(u"a", u"u");
    guard.AddNamespace(u"b", u"u");
    guard.AddNamespace(u"b", u"a");
    EXPECT_EQ(RefusalOf([&] { guard.AddNamespace(u"c", u"u"); }),
              Refusal("It has more different names than 5 (limit of names)."));
}

TEST(InputGuardTest, ANamespaceHasALength) {
    GpxInputLimits limits;
    limits.namespaceLength = 4;
    InputGuard guard(limits, "walk.gpx");
    guard.StartElement(1, 2);
    guard.AddNamespace(u"long prefix", u"four");
    EXPECT_EQ(RefusalOf([&] { guard.AddNamespace(u"", u"five!"); }),
              Refusal("One of its namespaces is longer than 4 (limit of namespace length)."));
}

TEST(InputGuardTest, DeclarationsEndWithTheirElement) {
    GpxInputLimits limits;
    limits.namespaces = 3;
    InputGuard guard(limits, "walk.gpx");
    guard.StartElement(1, 1);
    guard.AddNamespace(u"", u"u");
    for (int i = 0; i < 10; ++i) {
        guard.StartElement(2, 2);
        guard.AddNamespace(u"a", u"u");
        guard.AddNamespace(u"b", u"u");
        guard.StartElement(3, 0);
        guard.EndElement();
        guard.EndElement();
    }
    guard.StartElement(2, 2);
    guard.AddNamespace(u"a", u"u");
    guard.StartElement(2, 2);
    guard.AddNamespace(u"a", u"u");
    EXPECT_EQ(RefusalOf([&] { guard.AddNamespace(u"b", u"u"); }),
              Refusal("It has more namespace declarations in scope than 3 (limit of namespaces)."));
}

TEST(InputGuardTest, OnlyAHeadHasALimitOfElements) {
    GpxInputLimits limits;
    limits.headElements = 4;
    InputGuard file(limits, "walk.gpx");
    InputGuard head(limits, "walk.gpx", InputGuard::Extent::kHead);
    for (int i = 0; i < 4; ++i) {
        file.StartElement(1, 0);
        head.StartElement(1, 0);
        head.EndElement();
    }
    EXPECT_EQ(RefusalOf([&] { file.StartElement(1, 0); }), "");
    EXPECT_EQ(RefusalOf([&] { head.StartElement(1, 0); }),
              Refusal("Its head has more elements than 4 (limit of head elements)."));
}

} // namespace
} // namespace vexaTransferLib::reader
