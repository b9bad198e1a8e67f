// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <xercesc/util/PlatformUtils.hpp>

namespace {

class XercesPlatform : public testing::Environment {
public:
    void SetUp() override { xercesc::XMLPlatformUtils::Initialize(); }
    void TearDown() override { xercesc::XMLPlatformUtils::Terminate(); }
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new XercesPlatform);
    return RUN_ALL_TESTS();
}
