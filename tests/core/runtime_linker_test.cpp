#include "zorv/core/runtime_linker.h"

#include <gtest/gtest.h>

namespace {

struct Doubler : LinkHdl {
    long Run(ZoRuntimeParameter* block) {
        *static_cast<int*>(block->GetReturnvalue()) = 2 * *static_cast<int*>(block->GetParameter());
        ZoRuntimeLinker::Instance().Remove("double");
        return 0;
    }
};

TEST(RuntimeLinker, CallsServicesByName) {
    ZoRuntimeLinker& linker = ZoRuntimeLinker::Instance();
    Doubler doubler;
    int in = 21;
    int out = 0;
    ZoRuntimeParameter block;
    block.SetParameter(&in);
    block.SetReturnvalue(&out);
    EXPECT_FALSE(linker.Call("double", block));
    EXPECT_TRUE(linker.Register("double", Link(&doubler, &Doubler::Run)));
    EXPECT_FALSE(linker.Register("double", Link()));
    EXPECT_TRUE(linker.Call("double", block));
    EXPECT_EQ(out, 42);
    // The service took itself out.
    EXPECT_FALSE(linker.Remove("double"));
    EXPECT_TRUE(linker.Register("unset", Link()));
    EXPECT_TRUE(linker.Call("unset", block));
    EXPECT_TRUE(linker.Remove("unset"));
}

}  // namespace
