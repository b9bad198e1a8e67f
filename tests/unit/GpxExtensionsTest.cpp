// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxExtensions.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

std::vector<std::string> ForeignIn(const std::string& object) {
    std::vector<std::string> names;
    for (const GpxElement& element : ForeignElements(RootOf(object)))
        names.emplace_back(element.GetName());
    return names;
}

using Names = std::vector<std::string>;

TEST(GpxExtensionsTest, InGpx11AreTheChildrenOfExtensions) {
    EXPECT_EQ(ForeignIn("<wpt xmlns='http://www.topografix.com/GPX/1/1' xmlns:f='urn:f'><name>n</name>"
                        "<extensions><f:a><f:b/></f:a><c/><d xmlns=''/></extensions></wpt>"),
              (Names{"a", "c", "d"}));
}

TEST(GpxExtensionsTest, InGpx10AreTheChildrenInOtherNamespaces) {
    EXPECT_EQ(ForeignIn("<wpt xmlns='http://www.topografix.com/GPX/1/0' xmlns:f='urn:f'><name>n</name>"
                        "<f:a><f:b/></f:a><hr>1</hr><f:extensions><f:c/></f:extensions></wpt>"),
              (Names{"a", "extensions"}));
}

TEST(GpxExtensionsTest, OfBothPlacesAndOfSeveralExtensionsKeepTheirOrder) {
    EXPECT_EQ(ForeignIn("<wpt xmlns:f='urn:f'><extensions><b/></extensions><f:a/>"
                        "<extensions/><extensions><c/></extensions></wpt>"),
              (Names{"b", "a", "c"}));
}

TEST(GpxExtensionsTest, OfNothingAreNone) {
    EXPECT_TRUE(ForeignElements(GpxElement()).empty());
    EXPECT_EQ(ForeignIn("<wpt/>"), Names{});
}

} // namespace
} // namespace vexaTransferLib
