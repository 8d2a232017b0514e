// The shared library, as programs load it.
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

// Threads that it has started may be in its code when the last user lets go of it.
TEST(Library, StaysLoaded) {
    void* library = ::dlopen(HALVANE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    ASSERT_EQ(::dlclose(library), 0);
    EXPECT_NE(::dlopen(HALVANE_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

}  // namespace
