// The module gets no memory.

#include "fill/fill_book.h"
#include "frame/module_fixture.h"
#include "support/swallowed_exceptions.h"
#include "tests/border/memory_refusal.h"

namespace {

struct NoMemory : Module {
    ExpectedExceptions expected;
    MemoryRefusal memory{loaded->Library()};
};

TEST_F(NoMemory, ExportsDoNothing) {
    memory.RefuseFrom(1);
    EXPECT_EQ(loaded->createPluginApi("1.0.0.1"), nullptr);
    loaded->onPluginLoad(kEnglish);
    loaded->onPluginInit(host.Manager());
    loaded->freePluginApi(nullptr);
    loaded->onPluginFree();
    EXPECT_GT(memory.Refused(), 0u);
    memory.RefuseNone();
    void* another = loaded->createPluginApi("1.0.0.1");
    ASSERT_NE(another, nullptr);
    loaded->freePluginApi(static_cast<IEmendix*>(another));
    loaded->freePluginApi(static_cast<IEmendix*>(another));
}

// Its accounts come while the module has no memory for the first of them.
struct RefusingBook : FillBook {
    MemoryRefusal* memory = nullptr;
    void GetUsers(IDataContainer* list, const char* sign) override {
        memory->RefuseOnly(1);
        FillBook::GetUsers(list, sign);
        memory->RefuseNone();
    }
};

TEST_F(Module, UsesTheListThatItHasReadWithoutTheRecordThatFoundNoMemory) {
    MemoryRefusal memory(loaded->Library());
    RefusingBook book;
    book.memory = &memory;
    host.service.api = &book;
    Start(host);
    void* dialog = OpenFill();
    ASSERT_TRUE(dialog);
    constexpr int kAccount = 1037;
    EXPECT_EQ(SendMessageA(GetDlgItem(Window(dialog), kAccount), CB_GETCOUNT, 0, 0),
              static_cast<LRESULT>(book.users.size()) - 1);
    DestroyWindow(Window(dialog));
}

}  // namespace
