#include "demo/host/CommandMenu.h"

#include "demo/host/CommandTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace korvane::host
{

namespace
{

/// A menu bar that no window takes over.
class MenuBar
{
public:
    MenuBar() : bar_(createMenuBar()) {}
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;
    ~MenuBar() { DestroyMenu(bar_); }

    HMENU get() const { return bar_; }

private:
    HMENU bar_;
};

std::wstring textOf(HMENU menu, int item)
{
    wchar_t text[128];
    const int length = GetMenuStringW(menu, static_cast<UINT>(item), text, ARRAYSIZE(text), MF_BYPOSITION);
    return {text, static_cast<std::size_t>(length)};
}

TEST(CommandMenu, HoldsEveryCommandInItsMenu)
{
    const MenuBar bar;
    std::vector<const CommandEntry*> found;
    for (int at = 0; at < GetMenuItemCount(bar.get()); ++at)
    {
        const HMENU menu = GetSubMenu(bar.get(), at);
        for (int item = 0; item < GetMenuItemCount(menu); ++item)
            if (const CommandEntry* entry = entryOf(static_cast<int>(GetMenuItemID(menu, item))))
            {
                EXPECT_EQ(textOf(bar.get(), at), entry->menu);
                EXPECT_EQ(textOf(menu, item), menuText(*entry));
                found.push_back(entry);
            }
    }
    std::vector<const CommandEntry*> expected;
    for (const CommandEntry& entry : commandTable())
        expected.push_back(&entry);
    EXPECT_EQ(found, expected);
}

TEST(CommandMenu, BeginsWithFileAndExit)
{
    const MenuBar bar;
    EXPECT_EQ(textOf(bar.get(), 0), L"&File");
    EXPECT_EQ(GetMenuItemID(GetSubMenu(bar.get(), 0), 0), static_cast<UINT>(menuExit));
    EXPECT_EQ(entryOf(menuExit), nullptr);
}

TEST(CommandMenu, HasTheKeyOfEveryCommand)
{
    const Keys keys = createKeys();
    ACCEL entries[64];
    const int count = CopyAcceleratorTableW(keys.get(), entries, ARRAYSIZE(entries));
    std::size_t expected = 0;
    for (const CommandEntry& entry : commandTable())
        expected += entry.key.key != 0;
    ASSERT_EQ(static_cast<std::size_t>(count), expected);
    for (int index = 0; index < count; ++index)
    {
        const CommandEntry* entry = entryOf(entries[index].cmd);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entries[index].key, entry->key.key);
        // The system marks the last key of a table in a bit of its own.
        EXPECT_EQ(entries[index].fVirt & 0x7F, entry->key.fVirt);
    }
}

} // namespace

} // namespace korvane::host
