#include <gtest/gtest.h>

#include "library/client.h"
#include "library/dynamic_library.h"

namespace {

// A program may load and unload the library any number of times. Nothing in it prevents unloading,
// such as a symbol that is unique in the process, and every load starts with a new state.
TEST(Library, IsLoadedUsedAndUnloadedAHundredTimes) {
  for (int round = 0; round < 100; ++round) {
    {
      const DynamicLibrary client(VEXOR_CLIENT);
      auto* const use = client.Find<decltype(UseVexorUtils)>("UseVexorUtils");
      ASSERT_NE(use, nullptr);
      ASSERT_STREQ(use(VEXOR_EXAMPLE), VEXOR_VERSION);
      ASSERT_TRUE(IsLoaded(VEXOR_LIBRARY));
    }
    ASSERT_FALSE(IsLoaded(VEXOR_LIBRARY)) << "round " << round;
  }
}

}  // namespace
