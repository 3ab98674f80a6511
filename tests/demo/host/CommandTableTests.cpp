#include "demo/host/CommandTable.h"

#include "demo/host/tour/Captions.h"
#include "framework/com/Boundary.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <utility>

namespace korvane::host
{

namespace
{

TEST(CommandTable, TellsEntriesByTheirId)
{
    for (const CommandEntry& entry : commandTable())
        EXPECT_EQ(entryOf(idOf(entry)), &entry);
    EXPECT_EQ(entryOf(idOf(commandTable().front()) - 1), nullptr);
    EXPECT_EQ(entryOf(idOf(commandTable().back()) + 1), nullptr);
    EXPECT_EQ(entryOf(0), nullptr);
}

TEST(CommandTable, FindsAnEntryByItsName)
{
    std::set<std::wstring_view> seen;
    for (const CommandEntry& entry : commandTable())
    {
        EXPECT_TRUE(seen.insert(entry.name).second) << "a name stands twice";
        EXPECT_EQ(&entryNamed(entry.name), &entry);
    }
    EXPECT_TRUE(attempt([] { entryNamed(L"Activity.Forget"); }));
}

TEST(CommandTable, KeepsTheEntriesOfAMenuTogether)
{
    std::set<std::wstring_view> seen;
    std::wstring_view menu;
    for (const CommandEntry& entry : commandTable())
        if (entry.menu != menu)
        {
            menu = entry.menu;
            EXPECT_TRUE(seen.insert(menu).second) << "a menu comes up twice";
        }
}

TEST(CommandTable, GivesEachItemOfAMenuAnAccessKeyOfItsOwn)
{
    std::set<std::pair<std::wstring_view, wchar_t>> seen;
    for (const CommandEntry& entry : commandTable())
    {
        EXPECT_NE(accessKeyOf(entry.menu), L'\0');
        EXPECT_NE(accessKeyOf(entry.menu), L'F') << "the menu File has this one";
        EXPECT_NE(accessKeyOf(entry.menu), L'V') << "the menu View has this one";
        const wchar_t key = accessKeyOf(entry.caption);
        EXPECT_NE(key, L'\0');
        EXPECT_TRUE(seen.insert({entry.menu, key}).second);
    }
}

TEST(CommandTable, GivesEachKeyToOneCommandOfEachPart)
{
    for (const Part part : {Part::groups, Part::schedule})
    {
        std::set<std::pair<BYTE, WORD>> seen;
        for (const CommandEntry& entry : commandTable())
            if (entry.key.key != 0 && entry.countsIn(part))
            {
                EXPECT_TRUE(seen.insert({entry.key.fVirt, entry.key.key}).second);
            }
    }
}

TEST(CommandTable, LetsAReaderReadWhereverHeIs)
{
    for (const Part part : {Part::groups, Part::schedule})
    {
        EXPECT_TRUE(entryNamed(L"Message.Read").countsIn(part));
        EXPECT_EQ(entryNamed(L"Group.New").countsIn(part), part == Part::groups);
        EXPECT_EQ(entryNamed(L"Message.Leave").countsIn(part), part == Part::schedule);
    }
}

TEST(CommandTable, NamesACommandOfTheLibraryAndItsOperation)
{
    for (const CommandEntry& entry : commandTable())
    {
        EXPECT_TRUE(std::wstring_view(entry.progId).starts_with(L"KorvaneDlg."));
        EXPECT_NE(entry.operation, 0);
    }
}

TEST(CommandTable, MakesTheWindowsOfOrderDialogsResizable)
{
    for (const CommandEntry& entry : commandTable())
        EXPECT_EQ(entry.isResizable(), std::wstring_view(entry.name).starts_with(L"Arrange."));
}

TEST(CommandTable, ShowsTheKeyBehindTheCaption)
{
    CommandEntry entry = commandTable().front();
    EXPECT_EQ(menuText(entry), L"&New...\tCtrl+N");
    entry.key = {};
    EXPECT_EQ(menuText(entry), L"&New...");
}

} // namespace

} // namespace korvane::host
