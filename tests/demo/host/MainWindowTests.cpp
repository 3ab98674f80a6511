#include "demo/host/MainWindow.h"

#include "demo/host/Language.h"
#include "demo/host/Orders.h"
#include "demo/host/tour/Screen.h"
#include "framework/DataLayer.h"
#include "framework/com/Boundary.h"
#include "tests/support/Questions.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace korvane::host
{

namespace
{

/// The host's window on a database with the sample, and another host on the same one.
class MainWindowTest : public testing::Test
{
public:
    MainWindowTest()
    {
        database.addSample();
        window = std::make_unique<MainWindow>(database);
        work();
    }
    MainWindowTest(const MainWindowTest&) = delete;
    MainWindowTest& operator=(const MainWindowTest&) = delete;
    ~MainWindowTest() override { window.reset(); }

protected:
    static constexpr long staff = 4; // in a new database with the sample

    static void work()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }

    void run(const wchar_t* command) const
    {
        SendMessageW(window->handle(), WM_COMMAND, static_cast<WPARAM>(idOf(entryNamed(command))), 0);
        work();
    }
    /// The window looks for what others have done, as it does again and again.
    void look() const
    {
        SendMessageW(window->handle(), WM_TIMER, 1, 0);
        work();
    }

    std::wstring title() const { return textOf(window->handle()); }
    std::wstring exitText() const
    {
        wchar_t text[64]{};
        GetMenuStringW(GetMenu(window->handle()), menuExit, text, ARRAYSIZE(text), MF_BYCOMMAND);
        return text;
    }
    HWND dialog() const { return visibleWindow(CommandDialog::className); }
    HWND inDialog(const wchar_t* className) const
    {
        const auto found = visibleChildren(dialog(), className);
        return found.empty() ? nullptr : found.front();
    }
    bool hasRow(const std::wstring& name) const
    {
        const auto& rows = window->schedule().content().rows();
        return std::any_of(rows.begin(), rows.end(),
                           [&](const Row& row) { return row.resource.name == name; });
    }
    void close() const
    {
        SendMessageW(dialog(), WM_CLOSE, 0, 0);
        work();
        EXPECT_EQ(dialog(), nullptr);
    }

    /// Another host adds a resource, to a group where one is given.
    void othersAdd(const wchar_t* name, long group = 0) const
    {
        const auto names = collection<INames>(other.root());
        const long id = fetch(names, &INames::Add, Bstr(name).get(), 0x123456L, 2L);
        if (group != 0)
            fetch(names, &INames::AddToGroup, id, group, 0L);
    }

    korvane::test::TemporaryFolder folder; ///< the last to go: the files are closed then
    std::wstring file = folder.path() + L"\\host.sqlite";
    OpenDatabase database{file, L""};
    OpenDatabase other{file, L""};
    std::unique_ptr<MainWindow> window;
};

TEST_F(MainWindowTest, TellsWhoWorksHereAndWhatThereIsToRead)
{
    EXPECT_EQ(title(), L"Korvane - admin");
    window->logIn(L"employee");
    EXPECT_EQ(title(), L"Korvane - employee - You have 2 messages");
    EXPECT_TRUE(hasRow(L"Emily Stone"));
}

TEST_F(MainWindowTest, StaysAsItIsWhenNobodyHasTheLogin)
{
    EXPECT_TRUE(attempt([&] { window->logIn(L"nobody"); }));
    EXPECT_EQ(title(), L"Korvane - admin");
    EXPECT_EQ(database.login(), L"admin");
    othersAdd(L"Zoe", staff);
    look();
    EXPECT_TRUE(hasRow(L"Zoe")) << "the database is open as before";
}

TEST_F(MainWindowTest, SpeaksTheLanguageThatIsChosenFromTheNextDialogOn)
{
    run(L"Group.New");
    window->speak(L"Dansk");
    close();
    EXPECT_EQ(exitText(), L"E&xit\tAlt+F4") << "a dialog that is open keeps its language";
    window->speak(L"Dansk");
    EXPECT_EQ(exitText(), L"&Afslut\tAlt+F4");
    run(L"Group.New");
    EXPECT_EQ(textOf(dialog()), L"Gruppe");
    close();
    window->speak(L"");
    EXPECT_EQ(exitText(), L"E&xit\tAlt+F4");
    run(L"Group.New");
    EXPECT_EQ(textOf(dialog()), L"Group");
    close();
}

TEST_F(MainWindowTest, KeepsItsLanguageWhenTheFileOfAnotherOneIsBrokenOrMissing)
{
    const std::filesystem::path broken = languageFolder() + L"\\Broken.txt";
    window->speak(L"Dansk");
    std::ofstream(broken) << "0 \"1030\"\n1002 OK\n";
    const auto failure = attempt([&] { window->speak(L"Broken"); });
    std::filesystem::remove(broken);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->description(),
              L"Broken.txt, line 2: an id and a text in quotation marks are expected.");
    EXPECT_TRUE(attempt([&] { window->speak(L"Missing"); }));
    EXPECT_EQ(exitText(), L"&Afslut\tAlt+F4");
    run(L"Group.New");
    EXPECT_EQ(textOf(dialog()), L"Gruppe");
    close();
    window->speak(L"");
}

TEST_F(MainWindowTest, ShowsWhatOthersHaveWritten)
{
    othersAdd(L"Zoe", staff);
    EXPECT_FALSE(hasRow(L"Zoe"));
    look();
    EXPECT_TRUE(hasRow(L"Zoe"));
    database.takeTrace();
    look();
    EXPECT_EQ(database.takeTrace().find(L".Load"), std::wstring::npos) << "nothing has happened since";
}

TEST_F(MainWindowTest, TellsOfAMessageThatAnotherHostHasSent)
{
    window->logIn(L"ben");
    EXPECT_EQ(title(), L"Korvane - ben");
    fetch(collection<IMessages>(other.root()), &IMessages::Add, 3L, 46000.0, Bstr(L"Call back").get(),
          Bstr().get(), Bstr().get(), 4L);
    look();
    EXPECT_EQ(title(), L"Korvane - ben - You have one message");
}

TEST_F(MainWindowTest, SaysWhenThereIsNothingToRead)
{
    korvane::test::Questions boxes;
    run(L"Message.Read");
    ASSERT_EQ(boxes.asked.size(), 1U);
    EXPECT_EQ(boxes.asked.front().text, L"You have no messages");
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(MainWindowTest, KeepsADialogThatStaysOpenAndShowsWhatItHasWritten)
{
    run(L"Resource.New");
    ASSERT_NE(dialog(), nullptr);
    for (const wchar_t* const name : {L"Zoe", L"Yan"})
    {
        SetWindowTextW(inDialog(L"Edit"), name);
        SendMessageW(visibleChild(dialog(), L"Button", L"OK"), BM_CLICK, 0, 0);
        work();
        ASSERT_NE(dialog(), nullptr);
        EXPECT_TRUE(hasRow(name));
    }
    close();
}

TEST_F(MainWindowTest, TellsAnOpenDialogWhatOthersHaveWritten)
{
    run(L"Resource.New");
    SetWindowTextW(inDialog(L"Edit"), L"Zo");
    const auto before = itemsOf(inDialog(L"ListBox")).size();
    othersAdd(L"Yan", staff + 1);
    look();
    const auto items = itemsOf(inDialog(L"ListBox"));
    EXPECT_EQ(items.size(), before + 1);
    EXPECT_NE(std::find(items.begin(), items.end(), L"Yan"), items.end());
    EXPECT_EQ(textOf(inDialog(L"Edit")), L"Zo") << "what is being typed";
    close();
}

TEST_F(MainWindowTest, GivesADialogThatLaysItselfOutTheSizeOfItsWindow)
{
    const auto sizeOf = [](HWND part) {
        RECT place{};
        GetWindowRect(part, &place);
        return SIZE{place.right - place.left, place.bottom - place.top};
    };
    run(L"Arrange.Names");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_TRUE(GetWindowLongW(dialog(), GWL_STYLE) & WS_THICKFRAME);
    const SIZE own = sizeOf(dialog());
    const SIZE list = sizeOf(inDialog(L"ListBox"));
    SetWindowPos(dialog(), nullptr, 0, 0, own.cx + 60, own.cy + 40, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(sizeOf(inDialog(L"ListBox")).cx, list.cx + 60);
    EXPECT_EQ(sizeOf(inDialog(L"ListBox")).cy, list.cy + 40);
    MINMAXINFO limits{};
    SendMessageW(dialog(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, own.cx);
    EXPECT_EQ(limits.ptMinTrackSize.y, own.cy);
    close();

    run(L"Group.New");
    EXPECT_FALSE(GetWindowLongW(dialog(), GWL_STYLE) & WS_THICKFRAME) << "of fixed size";
    close();
}

TEST_F(MainWindowTest, HandsTheKeyboardBackToWhereItWasInADialog)
{
    run(L"Group.New");
    const HWND cancel = visibleChild(dialog(), L"Button", L"Cancel");
    ASSERT_NE(cancel, nullptr);
    SetActiveWindow(dialog());
    SetFocus(cancel);
    SetActiveWindow(window->handle());
    work();
    ASSERT_NE(GetFocus(), cancel);
    SetActiveWindow(dialog());
    work();
    EXPECT_EQ(GetFocus(), cancel);
    close();
}

TEST_F(MainWindowTest, OffersTheMembersOfTheSelectedGroup)
{
    std::wstring order;
    window->onOrder = [&](const Order& given) { order = shown(given); };
    run(L"Type.Edit");
    EXPECT_EQ(order, L"KorvaneDlg.EditTypes, operation 3: Root, GroupID = 4");
    close();
    run(L"Resource.Edit");
    EXPECT_EQ(order, L"KorvaneDlg.EditNames, operation 3: Root, GroupID = 4, NameID = 2");
    EXPECT_EQ(textOf(inDialog(L"Edit")), L"Andrea Lindner") << "where the cursor is";
    close();
}

} // namespace

} // namespace korvane::host
