// A small dialog on the frame, with a control of each kind and texts of each kind, and its command.
#pragma once

#include "framework/AppCommand.h"
#include "framework/AppDialog.h"
#include "framework/control/Label.h"
#include "framework/control/ListBox.h"
#include "framework/control/TextBox.h"
#include "tests/support/Container.h"

#include <gtest/gtest.h>

namespace korvane::test
{

class TestDialogCommand final : public AppCommand<TestDialogCommand, IMoveEvents>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlTest";
    static const GUID* classId() noexcept;
    static std::span<const Operand<TestDialogCommand>> operands() { return {}; }

    bool prepare() { return false; }
    bool execute()
    {
        ++executions;
        if (onExecute)
            onExecute();
        return false;
    }

    STDMETHODIMP get_SourceName(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_TargetName(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_UpdateAll(VARIANT_BOOL) override { return E_NOTIMPL; }

    Bstr name;
    int executions = 0;
    std::function<void()> onExecute;
};

class TestDialog final : public Dialog<TestDialog, TestDialogCommand>
{
public:
    static constexpr float designWidth = 4500;
    static constexpr float designHeight = 2400;

    static const GUID* classId() noexcept;

    TestDialog() : Dialog(22000, designWidth, designHeight) {}

    int loads = 0;
    int taken = 0;
    std::function<bool()> onLoad = [] { return true; };
    int shows = 0;
    std::function<void()> onTake;
    std::function<void(bool)> onSubmitted; ///< instead of the end

    using AppDialog::ask;

    using AppDialog::raiseResize;
    using DialogWindow::controls;
    using DialogWindow::dpi;
    using OleControl::Height;
    using OleControl::setSize;
    using OleControl::Width;

    Label lblWord{*this, {.name = L"lblWord", .place = {120, 120, 900, 240}, .text = L"Name"}};
    Label lblMissing{*this, {.name = L"lblMissing", .place = {120, 420, 900, 240}, .text = L"99999"}};
    Label lblNumber{*this, {.name = L"lblNumber", .place = {120, 720, 900, 240}, .text = L"21001"}};
    TextBox txtName{
        *this, {.name = L"txtName", .place = {1200, 720, 1500, 315}, .text = L"21000", .toolTip = L"1003"}};
    Button cmdPlain{
        *this, {.name = L"cmdPlain", .place = {1200, 1080, 1500, 345}, .text = L"1601", .toolTip = L"Plain"}};
    Frame fraInner{*this, {.name = L"fraInner", .place = {2850, 120, 1500, 1305}}};
    TextBox txtInner{fraInner, {.name = L"txtInner", .place = {120, 120, 1260, 315}, .toolTip = L"99999"}};
    ListBox lstInner{fraInner, {.name = L"lstInner", .place = {120, 480, 1260, 800}}};
    CommandFrame fraCommands{*this, {0, 1785, 4500, 615}};

private:
    bool load() override
    {
        ++loads;
        return onLoad();
    }

    void submitted(bool executed) override
    {
        if (onSubmitted)
            onSubmitted(executed);
        else
            Dialog::submitted(executed);
    }

    void shown() override { ++shows; }

    void takeValues() override
    {
        ++taken;
        if (onTake)
            onTake();
        command().name = Bstr(txtName.Text());
    }
};

/// A container with a dialog on it.
template <class Shown> class DialogTestOf : public testing::Test
{
protected:
    explicit DialogTestOf(Container::Offer offer = {}) : container(offer) {}

    /// Places the dialog in the window and gives it its command.
    void place()
    {
        container.dialog = ComPtr<IAppDialog>(dialog.get());
        container.site->host(container.dialog.as<IUnknown>());
        call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
    }

    bool show()
    {
        place();
        return container.ready();
    }

    void TearDown() override
    {
        container.close();
        setCurrentResources(nullptr);
    }

    Container container;
    ComPtr<TestDialogCommand> command = make<TestDialogCommand>();
    ComPtr<Shown> dialog = make<Shown>();
};

class DialogTest : public DialogTestOf<TestDialog>
{
protected:
    using DialogTestOf::DialogTestOf;

    static std::wstring text(const Control& control) { return Container::text(control.window()); }

    /// Of the dialog's window, in pixels.
    SIZE size() const
    {
        RECT place{};
        GetWindowRect(container.dialogWindow(), &place);
        return {place.right - place.left, place.bottom - place.top};
    }

    SIZE designSize() const
    {
        return {toPixels(TestDialog::designWidth, dialog->dpi()),
                toPixels(TestDialog::designHeight, dialog->dpi())};
    }
};

inline bool operator==(SIZE left, SIZE right)
{
    return left.cx == right.cx && left.cy == right.cy;
}

} // namespace korvane::test
