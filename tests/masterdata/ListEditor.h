// A list editor in a real container, with a recording data layer behind it: what the two of them share is tested once.
#pragma once

#include "framework/com/Variant.h"
#include "tests/support/Container.h"
#include "tests/support/Questions.h"
#include "tests/support/RecordingData.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

/// What one list editor is called where the other one is called otherwise.
struct ListEditorKind
{
    std::string name;
    CLSID command;
    CLSID dialog;
    std::string collection;
    std::wstring idOperand;
    std::wstring textOperand;
    std::wstring title;
    std::wstring add, change, remove; ///< headings of the name, by operation
    std::wstring question;
    std::wstring nothingToRemove;
    long nothingToRemoveCode;
    std::string preparation; ///< the scope around the dialog's own preparation of the command; empty for none
    std::vector<std::string> reading; ///< the calls that read item 6
    EventsOf events;

    friend void PrintTo(const ListEditorKind& kind, std::ostream* stream) { *stream << kind.name; }
};

const ListEditorKind& resources();
const ListEditorKind& activityTypes();

/// In group 4: 5 Anna, red; 6 Ben, without a colour; 9 Dora, for whom nothing may be done; in both groups, 8 Emil;
/// in group 5: 7 Cleo, in a colour of her own. Resource 1 and type 0 are built in.
class ListEditorTest : public testing::Test
{
protected:
    static constexpr long anna = 5;
    static constexpr long ben = 6;
    static constexpr long cleo = 7;
    static constexpr long red = 0x0000EE;
    static constexpr long own = 0x123456;
    static constexpr int swatches = 16;

    explicit ListEditorTest(const ListEditorKind& tested);
    /// The data outlive whoever uses them.
    void TearDown() override;

    /// Prepares a command as a host does, places the dialog, and reads Ready.
    bool show(long operation, long id = 0);
    /// As show for a dialog that is active, and forgets the calls so far.
    void showed(long operation, long id = 0);

    // What the command at hand holds.
    ComPtr<IAppCommand> held() const { return fetch(container.dialog, &IAppDialog::get_Command); }
    Variant get(const wchar_t* name) const;
    void let(const wchar_t* name, const Variant& value) const;
    long number(const wchar_t* name) const { return toLong(get(name).get()); }
    std::wstring text(const wchar_t* name) const { return std::wstring(toText(get(name).get()).view()); }
    long id() const { return number(kind.idOperand.c_str()); }
    std::wstring name() const { return text(kind.textOperand.c_str()); }
    long color() const { return number(L"Color"); }

    // What is seen.
    HWND list() const { return container.control(L"ListBox"); }
    HWND nameBox() const { return container.control(L"Edit"); }
    HWND heading() const { return container.control(L"Static", 1); }
    HWND shape() const { return container.control(L"Static", 3); }
    HWND swatch(int index) const { return container.control(L"Button", index); }
    HWND moreColors() const { return container.control(L"Button", swatches); }
    HWND ok() const { return container.button(L"OK"); }
    std::vector<std::wstring> listed() const { return items(list()); }
    int selected() const { return static_cast<int>(SendMessageW(list(), LB_GETCURSEL, 0, 0)); }
    static long colorAt(HWND window, int x, int y);
    static long fillOf(HWND window) { return colorAt(window, 6, 6); }
    static long colorOf(HWND swatch);
    /// The swatch that is flat; -1 for none.
    int marked() const;

    // What the user does.
    void select(int index) { clickItem(list(), index); }
    void enterName(const wchar_t* name) const;
    void confirm() const { Container::click(ok()); }
    /// Opens the colour dialog, does something there, and answers it.
    void inColorDialog(WORD answer, const std::function<void(HWND box)>& use);
    /// The same with a colour that is typed in; none where it is negative.
    void chooseColor(WORD answer, long color = -1);
    static void typeColor(HWND box, long color);
    static long typedColor(HWND box);

    ComPtr<IXtExecuteEvents> notifier() const { return fetch(container.dialog, &IAppDialog::get_Notifier); }
    /// A call on the collection, as it is recorded.
    std::string on(const std::string& rest) const { return kind.collection + rest; }
    void announceClear() const { data.announceClear(kind.events); }
    void announce(long id, const wchar_t* name, long group = 4) const;

    const ListEditorKind& kind;
    long edited = 4; ///< the group whose items are edited
    RecordingData data;
    Questions questions;
    Container container;
    ComPtr<IAppCommand> command;
};

} // namespace korvane::test
