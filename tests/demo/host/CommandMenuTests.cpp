#include "demo/host/CommandMenu.h"

#include "demo/host/CommandTable.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <gtest/gtest.h>

#include <algorithm>
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
    MenuBar() : bar_(createMenuBar(korvane::test::create<IResources>(__uuidof(::Resources)))) {}
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

TEST(CommandMenu, BeginsWithFileWhereTheUserLogsInAndLeaves)
{
    const MenuBar bar;
    const HMENU file = GetSubMenu(bar.get(), 0);
    EXPECT_EQ(textOf(bar.get(), 0), L"&File");
    EXPECT_EQ(textOf(file, 0), L"&Log in as");
    EXPECT_EQ(GetSubMenu(file, 0), accountMenu(bar.get()));
    EXPECT_NE(accountMenu(bar.get()), nullptr);
    EXPECT_EQ(GetMenuItemID(file, GetMenuItemCount(file) - 1), static_cast<UINT>(menuExit));
    EXPECT_EQ(entryOf(menuExit), nullptr);
    EXPECT_EQ(entryOf(menuFirstAccount), nullptr);
}

TEST(CommandMenu, FindsTheMenuThatACommandStandsIn)
{
    const MenuBar bar;
    for (const CommandEntry& entry : commandTable())
    {
        const HMENU menu = menuWith(bar.get(), entry);
        ASSERT_NE(menu, nullptr);
        EXPECT_NE(GetMenuState(menu, static_cast<UINT>(idOf(entry)), MF_BYCOMMAND), static_cast<UINT>(-1));
    }
    EXPECT_EQ(menuWith(bar.get(), entryNamed(newActivity)), menuWith(bar.get(), entryNamed(moveActivity)));
    EXPECT_NE(menuWith(bar.get(), entryNamed(newActivity)), menuWith(bar.get(), commandTable().front()));
    for (const wchar_t* const name : {L"Message.Leave", L"Message.Info"})
        EXPECT_EQ(menuWith(bar.get(), entryNamed(name)), menuWith(bar.get(), entryNamed(editResource)))
            << "the menu of a resource has all that can be done with it";
}

TEST(CommandMenu, EndsWithTheView)
{
    const MenuBar bar;
    const int last = GetMenuItemCount(bar.get()) - 1;
    EXPECT_EQ(textOf(bar.get(), last), L"&View");
    for (const MenuItem item : {menuZoomIn, menuZoomOut, menuToday, menuOtherPart})
        EXPECT_NE(GetMenuState(GetSubMenu(bar.get(), last), item, MF_BYCOMMAND), static_cast<UINT>(-1));
}

std::vector<ACCEL> keysOf(Part part)
{
    const Keys keys = createKeys(part);
    std::vector<ACCEL> entries(64);
    entries.resize(static_cast<std::size_t>(CopyAcceleratorTableW(keys.get(), entries.data(), 64)));
    return entries;
}

bool isThere(const std::vector<ACCEL>& keys, const ACCEL& wanted, int command)
{
    return std::any_of(keys.begin(), keys.end(), [&](const ACCEL& key) {
        // The system marks the last key of a table in a bit of its own.
        return key.key == wanted.key && (key.fVirt & 0x7F) == wanted.fVirt && key.cmd == command;
    });
}

TEST(CommandMenu, HasTheKeyOfEveryCommandInItsPartOnly)
{
    const auto groups = keysOf(Part::groups);
    const auto schedule = keysOf(Part::schedule);
    for (const CommandEntry& entry : commandTable())
    {
        const bool hasKey = entry.key.key != 0;
        EXPECT_EQ(isThere(groups, entry.key, idOf(entry)), hasKey && entry.countsIn(Part::groups));
        EXPECT_EQ(isThere(schedule, entry.key, idOf(entry)), hasKey && entry.countsIn(Part::schedule));
    }
}

TEST(CommandMenu, HasTheKeysOfTheViewInEveryPart)
{
    for (const Part part : {Part::groups, Part::schedule})
    {
        const auto keys = keysOf(part);
        EXPECT_TRUE(isThere(keys, {FVIRTKEY | FCONTROL, VK_OEM_PLUS, 0}, menuZoomIn));
        EXPECT_TRUE(isThere(keys, {FVIRTKEY | FCONTROL, VK_ADD, 0}, menuZoomIn));
        EXPECT_TRUE(isThere(keys, {FVIRTKEY | FCONTROL, VK_OEM_MINUS, 0}, menuZoomOut));
        EXPECT_TRUE(isThere(keys, {FVIRTKEY, VK_F6, 0}, menuOtherPart));
    }
}

} // namespace

} // namespace korvane::host
