#include <gtest/gtest.h>

#include "library/client.h"
#include "library/dynamic_library.h"

namespace {

// A program may load and unload the library as often as it likes: nothing in it, such as a symbol
// that the loader keeps unique in the process, holds it back, and every load starts afresh.
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
