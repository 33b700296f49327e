// The component is registered while the tests run; nothing stays of it behind them.

#include <gtest/gtest.h>
#include <initguid.h>

#include "TqGLJZ.h"
#include "component_entries.h"
#include "component_host.h"

namespace {

class Registered final : public testing::Environment {
public:
  void SetUp() override {
    com::test::removeFoldersOfEarlierPrograms();
    ASSERT_EQ(CoInitialize(nullptr), S_OK);
    ASSERT_EQ(com::test::ComponentEntries().registerServer(), S_OK);
  }
  void TearDown() override {
    EXPECT_EQ(com::test::ComponentEntries().unregisterServer(), S_OK);
    CoUninitialize();
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new Registered);
  return RUN_ALL_TESTS();
}
