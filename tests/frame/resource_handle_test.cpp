// The resource handle and the library's strings.
#include <gtest/gtest.h>
#include <jw32/resource_handle.h>

#include <cstring>

namespace {

void runAThread(HINSTANCE own) {
    const auto fail = [](LPVOID expected) WINAPI -> DWORD {
        EXPECT_EQ(Jw32GetResourceHandle(), expected) << "when a thread starts";
        Jw32SetResourceHandle(nullptr);
        return SetLastError(1), 0;
    };
    SetLastError(4711);
    const HANDLE thread = CreateThread(nullptr, 0, fail, own, 0, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), DWORD{WAIT_OBJECT_0});
    CloseHandle(thread);
    EXPECT_EQ(GetLastError(), 4711u) << "is that of another thread";
}

TEST(ResourceHandle, StandsUntilAThreadStartsOrEnds) {
    const HINSTANCE own = Jw32GetResourceHandle();
    ASSERT_NE(own, nullptr);
    for (const HINSTANCE set : {HINSTANCE{GetModuleHandleA("kernel32.dll")}, HINSTANCE{nullptr}}) {
        Jw32SetResourceHandle(set);
        EXPECT_EQ(Jw32GetResourceHandle(), set);
        runAThread(own);
        EXPECT_EQ(Jw32GetResourceHandle(), own);
    }
}

TEST(ResourceHandle, LeadsToTheStrings) {
    struct {
        UINT id;
        int room;
        const char* text;
    } const rows[] = {{1, 260, "Not Available"},
                      {2, 260, "Cannot create filemapping for files with size 0"},
                      {1, 4, "Not"},
                      {4711, 260, ""}};
    for (const auto& row : rows) {
        char text[260] = "";
        const int length = LoadStringA(Jw32GetResourceHandle(), row.id, text, row.room);
        EXPECT_STREQ(text, row.text);
        EXPECT_EQ(length, static_cast<int>(std::strlen(row.text)));
    }
}

}  // namespace
