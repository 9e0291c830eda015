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
    int in = 21, out = 0;
    ZoRuntimeParameter block;
    block.SetParameter(&in);
    block.SetReturnvalue(&out);
    EXPECT_TRUE(!linker.Call("double", block) && linker.Register("double", Link(&doubler, &Doubler::Run)));
    EXPECT_TRUE(!linker.Register("double", Link()) && linker.Call("double", block));
    EXPECT_EQ(out, 42);
    // The service took itself out.
    EXPECT_TRUE(!linker.Remove("double") && linker.Register("unset", Link()) && linker.Call("unset", block));
    EXPECT_TRUE(linker.Remove("unset"));
}

}  // namespace
