#include "tests/masterdata/ListEditor.h"

#include <colordlg.h>

#include <string_view>

namespace korvane::test
{

namespace
{

BOOL CALLBACK findDialog(HWND window, LPARAM found)
{
    wchar_t name[16];
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) != L"#32770")
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

const ListEditorKind& resources()
{
    static const ListEditorKind kind{
        "Names",
        __uuidof(::EditNames),
        __uuidof(::ctlEditNames),
        "Names",
        L"NameID",
        L"NameText",
        L"Resource",
        L"&New name:",
        L"&Edit name:",
        L"&Delete navn:",
        L"If you continue, all edits for this resource will be lost.\nPress 'Yes' to continue.",
        L"You must select a resource to delete.",
        22096,
        "",
        {"Root.OpenScope(0, \"EditNames.QueryByID\")", "Root.Names()", "Names.Fetch(6)",
         "Names.HasAccess(3, 6)", "Names.GetRole(6)", "Names.GetMailbox(6)", "Scope.Close(0, 0)"},
        EventsOf::names};
    return kind;
}

const ListEditorKind& activityTypes()
{
    static const ListEditorKind kind{
        "Types",
        __uuidof(::EditTypes),
        __uuidof(::ctlEditTypes),
        "Types",
        L"TypeID",
        L"TypeText",
        L"Activity Types",
        L"&New activity type:",
        L"&Edit activity type:",
        L"&Delete activity type:",
        L"If you continue, all edits for this activity type will be lost.\nPress 'Yes' to continue.",
        L"You must select an activity type to delete.",
        23096,
        "ctlEditTypes.Prepare",
        {"Root.OpenScope(0, \"EditTypes.QueryByID\")", "Root.Types()", "Types.Fetch(6)",
         "Types.HasAccess(3, 6)", "Scope.Close(0, 0)"},
        EventsOf::types};
    return kind;
}

ListEditorTest::ListEditorTest(const ListEditorKind& tested)
    : kind(tested), command(create<IAppCommand>(tested.command))
{
    const std::set<long> nothing{1, 2, 3};
    data.names = {
        {1, L"Super-user", 4}, {5, L"Anna", 4, red}, {6, L"Ben", 4},  {9, L"Dora", 4, 0, 2, L"", nothing},
        {8, L"Emil", 4},       {8, L"Emil", 5},      {8, L"Emil", 6}, {7, L"Cleo", 5, own},
        {7, L"Cleo", 6, own}};
    data.types = {
        {0, L"Built in", 0, 4}, {5, L"Anna", red, 4}, {6, L"Ben", 0, 4},   {9, L"Dora", 0, 4, 3, nothing},
        {8, L"Emil", 0, 4},     {8, L"Emil", 0, 5},   {7, L"Cleo", own, 5}};
    data.accounts = {{30, L"anna", 2, 5}, {31, L"", 3}, {32, L"guest", 3}};
}

void ListEditorTest::TearDown()
{
    container.close();
    command.reset();
}

bool ListEditorTest::show(long operation, long id)
{
    call(command, &IAppCommand::put_Operation, operation);
    const auto give = [this](const wchar_t* name, const Variant& value) {
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    };
    give(L"Root", Variant(data.root.as<IDispatch>()));
    give(L"GroupID", Variant(edited));
    give(kind.idOperand.c_str(), Variant(id));
    VARIANT_BOOL prepared = VARIANT_FALSE;
    call(command, &IAppCommand::Prepare, &prepared);
    data.takeCalls();
    return container.show(kind.dialog, command.get());
}

void ListEditorTest::showed(long operation, long id)
{
    ASSERT_TRUE(show(operation, id));
    container.site->activateUi();
    container.pump();
    data.takeCalls();
}

Variant ListEditorTest::get(const wchar_t* name) const
{
    Variant value;
    call(held(), &IAppCommand::get_Operand, Bstr(name).get(), value.put());
    return value;
}

void ListEditorTest::let(const wchar_t* name, const Variant& value) const
{
    call(held(), &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

long ListEditorTest::colorAt(HWND window, int x, int y)
{
    UpdateWindow(window);
    GdiFlush();
    const HDC context = GetDC(window);
    const COLORREF color = GetPixel(context, x, y);
    ReleaseDC(window, context);
    return static_cast<long>(color);
}

/// As its name says it, in which red comes first.
long ListEditorTest::colorOf(HWND swatch)
{
    const auto value = std::stoul(Container::text(swatch).substr(1), nullptr, 16);
    return static_cast<long>(RGB(value >> 16, value >> 8, value));
}

int ListEditorTest::marked() const
{
    int found = -1;
    for (int index = 0; index < swatches; ++index)
        if (colorAt(swatch(index), 1, 1) == colorOf(swatch(index)))
        {
            EXPECT_EQ(found, -1) << "more than one is flat";
            found = index;
        }
    return found;
}

void ListEditorTest::enterName(const wchar_t* name) const
{
    SetFocus(nameBox());
    SendMessageW(nameBox(), EM_SETSEL, 0, -1);
    const_cast<Container&>(container).type(name);
}

void ListEditorTest::inColorDialog(WORD answer, const std::function<void(HWND box)>& use)
{
    questions.answerKey = answer;
    questions.onAsked = [&use] {
        HWND box = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&box));
        use(box);
    };
    Container::click(moreColors());
    questions.onAsked = [] {};
    questions.answerKey = VK_RETURN;
}

void ListEditorTest::chooseColor(WORD answer, long color)
{
    inColorDialog(answer, [color](HWND box) {
        if (color >= 0)
            typeColor(box, color);
    });
}

void ListEditorTest::typeColor(HWND box, long color)
{
    const auto typed = static_cast<COLORREF>(color);
    SetDlgItemInt(box, COLOR_RED, GetRValue(typed), FALSE);
    SetDlgItemInt(box, COLOR_GREEN, GetGValue(typed), FALSE);
    SetDlgItemInt(box, COLOR_BLUE, GetBValue(typed), FALSE);
}

long ListEditorTest::typedColor(HWND box)
{
    const auto part = [box](int id) { return GetDlgItemInt(box, id, nullptr, FALSE); };
    return static_cast<long>(RGB(part(COLOR_RED), part(COLOR_GREEN), part(COLOR_BLUE)));
}

void ListEditorTest::announce(long id, const wchar_t* name, long group) const
{
    if (kind.events == EventsOf::names)
        data.announceName({id, name, group});
    else
        data.announceType({id, name});
}

} // namespace korvane::test
