// Whatever the user selects, types, chooses and confirms, and wherever the data layer refuses: the command holds what is
// shown, and stored is what an independent model says.
#include "tests/masterdata/ListEditorModel.h"
#include "tests/support/ComRules.h"
#include "tests/support/Soak.h"

#include <windowsx.h>

#include <random>

namespace korvane::test
{

namespace
{

/// Of each kind, by default.
constexpr unsigned usualSequences = 5000;
constexpr int actionsOfSequence = 7;

class ListEditorPropertyTests : public ListEditorTest, public testing::WithParamInterface<ListEditorKind>
{
protected:
    ListEditorPropertyTests() : ListEditorTest(GetParam()) {}

    void SetUp() override
    {
        showed(3);
        ShowWindow(container.window(), SW_HIDE); // nothing is drawn: what is shown is asked of the controls
        list_ = list();
        nameBox_ = nameBox();
        ok_ = ok();
        cancel_ = container.button(L"Cancel");
        for (int index = 0; index < swatches; ++index)
            swatches_.emplace_back(swatch(index), colorOf(swatch(index)));
        if (!namesAreEdited())
            return;
        roles_ = container.control(L"ComboBox");
        loginBox_ = GetWindow(container.control(L"ComboBox", 1), GW_CHILD);
        sync_ = swatch(swatches + 1);
    }

    /// Empty when dialog and model agree, else what happened.
    std::string run(unsigned seed)
    {
        random_.seed(seed);
        told_.clear();
        begin();
        for (int action = 0; action < actionsOfSequence; ++action)
        {
            act();
            if (const std::string disagreement = compare(); !disagreement.empty())
                return told_ + '\n' + disagreement;
        }
        const std::size_t ends = container.done.size();
        Container::click(cancel_);
        return container.done.size() == ends + 1 && container.done.back() ? compare()
                                                                          : told_ + "\nnot cancelled";
    }

    ListEditorModel::Counts counts;

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    bool oneIn(int number) { return below(number) == 0; }
    template <class Value> const Value& anyOf(const std::vector<Value>& values)
    {
        return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
    }
    void tell(const std::string& what) { told_ += ' ' + what; }

    bool namesAreEdited() const { return kind.name == "Names"; }

    void begin();
    void act();
    void selectAny();
    void confirmAny();
    std::string compare();

    static void enter(HWND box, const std::wstring& text)
    {
        SendMessageW(box, EM_SETSEL, 0, -1);
        SendMessageW(box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    }

    // The controls, which last as long as the dialog.
    HWND list_ = nullptr;
    HWND nameBox_ = nullptr;
    HWND roles_ = nullptr;
    HWND loginBox_ = nullptr;
    HWND sync_ = nullptr;
    HWND ok_ = nullptr;
    HWND cancel_ = nullptr;
    std::vector<std::pair<HWND, long>> swatches_; ///< with their colours

    std::mt19937 random_;
    std::string told_;
    ListEditorModel model_;
};

INSTANTIATE_TEST_SUITE_P(EveryKind, ListEditorPropertyTests, testing::Values(resources(), activityTypes()),
                         [](const auto& tested) { return tested.param.name; });

void ListEditorPropertyTests::begin()
{
    model_ = ListEditorModel(namesAreEdited(), 1 + below(3), swatches_.front().second);
    data.nextId = 100;
    data.failures.clear();
    model_.storeInto(data);
    tell("operation " + shown(model_.operation));
    command = create<IAppCommand>(kind.command);
    call(command, &IAppCommand::put_Operation, model_.operation);
    for (const auto& [name, value] : {std::pair{L"Root", Variant(data.root.as<IDispatch>())},
                                      std::pair{L"GroupID", Variant(ListEditorModel::group)}})
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    VARIANT_BOOL prepared = VARIANT_FALSE;
    call(command, &IAppCommand::Prepare, &prepared);
    call(container.dialog, &IAppDialog::putref_Command, queryFor<IDispatch>(command.get()).get());
    container.ready();
    model_.open();
}

void ListEditorPropertyTests::act()
{
    switch (below(namesAreEdited() ? 20 : 9)) // most entries are valid, and confirmed
    {
    case 0:
    case 1:
    case 2:
        return selectAny();
    case 3:
    case 4:
    {
        const std::wstring text = oneIn(5) ? L"" : std::wstring(3, static_cast<wchar_t>(L'a' + below(26)));
        tell("types " + narrow(text));
        if (text != model_.held.text) // else nothing happens
        {
            enter(nameBox_, text);
            model_.edit(model_.held.text, text);
        }
        return;
    }
    case 5:
    {
        const auto& [swatch, color] = anyOf(swatches_);
        tell("colour " + shown(color));
        Container::click(swatch);
        return model_.edit(model_.held.color, color);
    }
    case 6:
        tell("announced");
        if (oneIn(2))
            model_.changeByAnother(data);
        EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
        return model_.refresh();
    case 9:
    case 10:
    {
        const std::wstring login = anyOf(std::vector<std::wstring>{L"", L"anna", L"guest", L"frida"});
        tell("login " + narrow(login));
        if (login != model_.held.login)
        {
            enter(loginBox_, login);
            model_.edit(model_.held.login, login);
        }
        return;
    }
    case 11:
    {
        const int role = below(4);
        tell("role " + shown(role));
        SendMessageW(roles_, CB_SETCURSEL, static_cast<WPARAM>(role), 0);
        SendMessageW(container.dialogWindow(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(roles_), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(roles_));
        return model_.edit(model_.held.role, ListEditorModel::roles[role]);
    }
    case 12:
        tell("synchronised");
        SendMessageW(sync_, BM_CLICK, 0, 0);
        return model_.edit(model_.held.sync, !model_.held.sync);
    default:
        return confirmAny();
    }
}

void ListEditorPropertyTests::selectAny()
{
    const int index = below(ListBox_GetCount(list_) + 1) - 1;
    const long chosen =
        index < 0 ? 0 : static_cast<long>(SendMessageW(list_, LB_GETITEMDATA, static_cast<WPARAM>(index), 0));
    if (model_.asksBefore(chosen) && !oneIn(4))
        return; // a question takes far longer than all the rest
    const bool yes = oneIn(2);
    questions.answerKey = yes ? WORD{'Y'} : WORD{'N'};
    const std::string failing = oneIn(5) ? on(".Fetch") : "";
    tell("selects " + shown(chosen) + (yes ? " (yes)" : " (no)") + failing);
    if (!failing.empty())
        data.fail(failing, locked);
    const auto asked = questions.asked.size();
    if (index < 0)
    {
        SetFocus(list_);
        container.press(VK_SPACE, false, false, true);
    }
    else
        clickItem(list_, index);
    data.failures.clear();
    const bool questioned = model_.select(chosen, yes, !failing.empty());
    EXPECT_EQ(questions.asked.size() - asked, questioned ? 1U : 0U) << told_;
    counts.questions += questioned;
}

void ListEditorPropertyTests::confirmAny()
{
    const std::vector<std::string> calls =
        namesAreEdited() ? std::vector<std::string>{"Accounts.Lookup",       "Names.Add",
                                                    "Names.Update",          "Names.AddToGroup",
                                                    "Names.RemoveFromGroup", "Names.SetSyncLogin",
                                                    "Names.SetRole",         "Accounts.Add",
                                                    "Accounts.Attach",       "Accounts.Detach",
                                                    "Accounts.Remove"}
                         : std::vector<std::string>{"Types.Add", "Types.Update", "Types.AddToGroup",
                                                    "Types.RemoveFromGroup"};
    const std::string failing = oneIn(2) ? anyOf(calls) : "";
    tell("OK" + (failing.empty() ? "" : " failing " + failing));
    if (!failing.empty())
        data.fail(failing, locked);
    const auto told = container.errors.size();
    Container::click(ok_);
    data.failures.clear();
    const auto ending = model_.confirm(failing);
    ++counts.endings[static_cast<int>(ending)];
    counts.completed += model_.hasCompleted;
    EXPECT_EQ(container.errors.size() - told, ending == ListEditorModel::Ending::saved ? 0U : 1U) << told_;
    if (container.errors.size() > told && ending == ListEditorModel::Ending::failed)
    {
        EXPECT_EQ(container.errors.back(), locked) << told_;
    }
}

std::string ListEditorPropertyTests::compare()
{
    const auto& held = model_.held;
    std::string complaint;
    const auto expect = [&](const std::string& what, const auto& actual, const auto& expected) {
        if (actual != expected)
            complaint += what + ": " + testing::PrintToString(actual) + ", expected " +
                         testing::PrintToString(expected) + '\n';
    };
    expect("name", name(), held.text);
    expect("name seen", Container::text(nameBox_), held.text);
    expect("colour", color(), held.color);
    if (held.id != 0)
        expect("id", id(), held.id);
    const int index = ListBox_GetCurSel(list_);
    const long marked =
        index < 0 ? 0 : static_cast<long>(SendMessageW(list_, LB_GETITEMDATA, static_cast<WPARAM>(index), 0));
    if (model_.isListed(held.id) || index >= 0)
        expect("selection", marked, held.id);
    if (namesAreEdited())
    {
        expect("role", number(L"Role"), held.role);
        expect("role seen", static_cast<long>(ComboBox_GetItemData(roles_, ComboBox_GetCurSel(roles_))),
               held.role);
        expect("login", text(L"Login"), held.login);
        expect("login seen", Container::text(loginBox_), held.login);
        expect("synchronisation", toBool(get(L"Sync").get()), held.sync);
        expect("synchronisation seen", Button_GetCheck(sync_) == BST_CHECKED, held.sync);
    }
    expect("stored", ListEditorModel::storedIn(data, namesAreEdited()), model_.stored());
    return complaint;
}

} // namespace

TEST_P(ListEditorPropertyTests, HeldAndStoredIsWhatTheModelSays)
{
    for (unsigned seed = 1; seed <= usualSequences * static_cast<unsigned>(soak()); ++seed)
    {
        if (const std::string disagreement = run(seed); !disagreement.empty() || HasFailure())
            FAIL() << "seed " << seed << '\n' << disagreement;
        data.takeCalls();
        container.errors.clear();
        container.done.clear();
        questions.asked.clear();
    }
    // What is compared is worth something only where it happens.
    using Ending = ListEditorModel::Ending;
    EXPECT_GT(counts.endings[static_cast<int>(Ending::saved)], 1000 * soak());
    EXPECT_GT(counts.endings[static_cast<int>(Ending::failed)], 150 * soak());
    EXPECT_GT(counts.endings[static_cast<int>(Ending::refused)], 100 * soak());
    EXPECT_GT(counts.questions, 300 * soak());
    EXPECT_GT(counts.completed, 20 * soak());
    RecordProperty("saved", counts.endings[static_cast<int>(Ending::saved)]);
    RecordProperty("failed", counts.endings[static_cast<int>(Ending::failed)]);
    RecordProperty("refused", counts.endings[static_cast<int>(Ending::refused)]);
    RecordProperty("completed", counts.completed);
    RecordProperty("questions", counts.questions);
}

} // namespace korvane::test
