// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputLimiter.h>

#include <vexaTransferLib/reader/ReadAborted.h>

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
    } catch (const ReadAborted& stop) {
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

TEST(InputLimiterTest, CountsANameOnce) {
    GpxInputLimits limits;
    limits.names = 3;
    InputLimiter limiter(limits, InputName(u"walk.gpx"));
    for (unsigned i = 0; i < 100; ++i) {
        limiter.StartElement(i % 2 + 1, 0);
        limiter.EndElement();
    }
    limiter.StartElement(7, 0);
    EXPECT_EQ(RefusalOf([&] { limiter.StartElement(5, 0); }),
              Refusal("It has more different names than 3 (limit of names)."));
}

TEST(InputLimiterTest, PrefixesAndNamespacesAreNamesToo) {
    GpxInputLimits limits;
    limits.names = 5;
    InputLimiter limiter(limits, InputName(u"walk.gpx"));
    limiter.StartElement(1, 2);
    limiter.AddNamespace(u"a", u"u");
    limiter.AddNamespace(u"b", u"u");
    limiter.AddNamespace(u"b", u"a");
    EXPECT_EQ(RefusalOf([&] { limiter.AddNamespace(u"c", u"u"); }),
              Refusal("It has more different names than 5 (limit of names)."));
}

TEST(InputLimiterTest, ANamespaceHasALength) {
    GpxInputLimits limits;
    limits.namespaceLength = 4;
    InputLimiter limiter(limits, InputName(u"walk.gpx"));
    limiter.StartElement(1, 2);
    limiter.AddNamespace(u"long prefix", u"four");
    EXPECT_EQ(RefusalOf([&] { limiter.AddNamespace(u"", u"five!"); }),
              Refusal("One of its namespaces is longer than 4 (limit of namespace length)."));
}

TEST(InputLimiterTest, DeclarationsEndWithTheirElement) {
    GpxInputLimits limits;
    limits.namespaces = 3;
    InputLimiter limiter(limits, InputName(u"walk.gpx"));
    limiter.StartElement(1, 1);
    limiter.AddNamespace(u"", u"u");
    for (int i = 0; i < 10; ++i) {
        limiter.StartElement(2, 2);
        limiter.AddNamespace(u"a", u"u");
        limiter.AddNamespace(u"b", u"u");
        limiter.StartElement(3, 0);
        limiter.EndElement();
        limiter.EndElement();
    }
    limiter.StartElement(2, 2);
    limiter.AddNamespace(u"a", u"u");
    limiter.StartElement(2, 2);
    limiter.AddNamespace(u"a", u"u");
    EXPECT_EQ(RefusalOf([&] { limiter.AddNamespace(u"b", u"u"); }),
              Refusal("It has more namespace declarations in scope than 3 (limit of namespaces)."));
}

TEST(InputLimiterTest, OnlyAHeadHasALimitOfElements) {
    GpxInputLimits limits;
    limits.headElements = 4;
    InputLimiter file(limits, InputName(u"walk.gpx"));
    InputLimiter head(limits, InputName(u"walk.gpx"), InputLimiter::Extent::kHead);
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
