// The info dialog in a container, with its data and its user.
#pragma once

#include "tests/support/CommandTest.h"
#include "tests/support/Container.h"
#include "tests/support/GridView.h"

namespace korvane::test
{

class InfoDialogTest : public CommandTest
{
protected:
    using Texts = std::vector<std::pair<std::wstring, std::wstring>>;

    static constexpr long anna = 7; ///< has a login
    static constexpr long van = 8;  ///< has none

    InfoDialogTest() : CommandTest(__uuidof(::InfoMessage))
    {
        data.names = {{anna, L"Anna"}, {van, L"Van 1"}};
        data.accounts = {{3, L"anna", 3, anna}};
        data.info = {{anna, L"Home", L"555 0102", 0},
                     {anna, L"Fax", L"555 0103\r\nafter six", 1},
                     {anna, L"Car", L"555 0104", 2},
                     {van, L"Plate", L"KD 1234", 0}};
    }

    bool show(long operation = 1, long nameId = anna)
    {
        call(command, &IAppCommand::put_Operation, operation);
        let(L"NameID", Variant(nameId));
        if (!container.show(__uuidof(::ctlInfoMessage), command.get()))
            return false;
        container.site->activateUi();
        container.pump();
        return true;
    }

    /// As show, on the page with the rows.
    void showInfo(long nameId = anna)
    {
        ASSERT_TRUE(show(1, nameId));
        turnPage();
        ASSERT_TRUE(container.visible(gridWindow()));
        SetFocus(gridWindow());
        container.pump();
        data.takeCalls();
    }

    void turnPage() { container.press(VK_TAB, false, false, true); }
    void accessKey(wchar_t key) const
    {
        PostMessageW(GetFocus(), WM_SYSCHAR, key, 1 << 29);
        container.pump();
    }

    HWND tabs() const { return container.control(L"SysTabControl32"); }
    HWND gridWindow() const { return container.control(L"KorvaneGrid"); }
    GridView grid() const { return GridView(gridWindow()); }
    HWND contact() const { return container.control(L"Edit", 0); }
    HWND tlf() const { return container.control(L"Edit", 1); }
    HWND about() const { return container.control(L"Edit", 2); }
    HWND editor() const { return container.control(L"Edit", 3); }
    HWND type(int index) const { return container.control(L"Button", index); }
    bool isOnInfo() const { return container.visible(gridWindow()); }
    bool isEditing() const { return container.visible(editor()); }

    std::vector<std::wstring> labels() const
    {
        std::vector<std::wstring> all;
        for (const auto& [label, value] : grid().texts())
            all.push_back(label);
        return all;
    }

    Container container;
    ComPtr<IInfoMessage> info = command.as<IInfoMessage>();
};

} // namespace korvane::test
