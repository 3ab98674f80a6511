// A host that ends, deactivates or activates the dialog within the calls that the dialog makes to it.
#include "framework/com/Apartment.h"
#include "framework/control/TabStrip.h"
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

#include <commctrl.h>

#include <cstdlib>
#include <cstring>
#include <malloc.h>

// Freed memory is overwritten in this program: what is used after its end is found out.
// NOLINTBEGIN(cppcoreguidelines-no-malloc, misc-new-delete-overloads): memory comes from where it always comes from
void operator delete(void* memory) noexcept
{
    if (memory)
        std::memset(memory, 0xDD, _msize(memory));
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc, misc-new-delete-overloads)

namespace korvane::test
{

namespace
{

using testing::IsSupersetOf;
using testing::ValuesIn;

class SmallDialog final : public Dialog<SmallDialog, TestDialogCommand>
{
public:
    static const GUID* classId() noexcept
    {
        static constexpr GUID id{
            0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x05}};
        return &id;
    }

    SmallDialog() : Dialog(22000, 3000, 1200)
    {
        txtName.onKeyPress = [](wchar_t) { return false; };
    }

    TextBox txtName{*this, {.name = L"txtName", .place = {120, 120, 1500, 315}}};
    TabStrip tabPages{*this, {.name = L"tabPages", .place = {1700, 120, 1200, 315}}, {{L"ONE", L"One"}}};
    Button cmdApply{*this, {.name = L"cmdApply", .place = {120, 600, 1500, 345}, .text = L"&Apply"}};

private:
    bool load() override { return true; }
    void takeValues() override {}
};

using OnCall = std::function<void(const char* call)>;

/// Tells each call before it answers; that it is asked for an interface, the first time.
class HostileSite final : public host::ControlSite
{
public:
    HostileSite(HWND window, OnCall onCall) : ControlSite(window), onCall_(std::move(onCall))
    {
        font = host::makeFont(L"MS Shell Dlg", 8);
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const HRESULT answer = ControlSite::QueryInterface(iid, object);
        const bool known = std::find(asked_.begin(), asked_.end(), iid) != asked_.end();
        if (!known)
            asked_.push_back(iid);
        return known ? answer : told("QueryInterface", answer);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override
    {
        return told("Invoke",
                    ControlSite::Invoke(id, iid, locale, flags, arguments, result, exception, badArgument));
    }
    STDMETHODIMP GetContainer(IOleContainer** container) override
    {
        return told("GetContainer", ControlSite::GetContainer(container));
    }
    STDMETHODIMP ShowObject() override { return told("ShowObject"); }
    STDMETHODIMP GetWindow(HWND* window) override
    {
        return told("GetWindow", ControlSite::GetWindow(window));
    }
    STDMETHODIMP CanInPlaceActivate() override { return told("CanInPlaceActivate"); }
    STDMETHODIMP OnInPlaceActivate() override { return told("OnInPlaceActivate"); }
    STDMETHODIMP OnUIActivate() override { return told("OnUIActivate"); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO) override
    {
        *place = *clip = {0, 0, 150, 80}; // smaller than the dialog, which asks for its own size then
        *frame = ComPtr<IOleInPlaceFrame>(this).detach();
        *document = ComPtr<IOleInPlaceFrame>(this).detach();
        return told("GetWindowContext");
    }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return told("OnUIDeactivate"); }
    STDMETHODIMP OnInPlaceDeactivate() override { return told("OnInPlaceDeactivate"); }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return told("OnPosRectChange"); }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return told("SetBorderSpace"); }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override
    {
        return told(object ? "SetActiveObject" : "SetActiveObject(null)");
    }
    STDMETHODIMP OnControlInfoChanged() override { return told("OnControlInfoChanged"); }
    STDMETHODIMP GetExtendedControl(IDispatch** extended) override
    {
        return told("GetExtendedControl", ControlSite::GetExtendedControl(extended));
    }
    STDMETHODIMP TranslateAccelerator(MSG*, DWORD) override { return told("TranslateAccelerator", S_FALSE); }
    STDMETHODIMP OnFocus(BOOL arrived) override { return told(arrived ? "OnFocus" : "OnFocus(false)"); }

private:
    using ControlSite::TranslateAccelerator;

    HRESULT told(const char* call, HRESULT answer = S_OK)
    {
        const auto onCall = onCall_;
        onCall(call);
        return answer;
    }

    OnCall onCall_;
    std::vector<IID> asked_;
};

class AdviseSink final : public Object<AdviseSink, Inherits<IAdviseSink>, IAdviseSink>
{
public:
    explicit AdviseSink(OnCall onCall) : onCall_(std::move(onCall)) {}

    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { onCall_("OnViewChange"); }
    STDMETHODIMP_(void) OnRename(IMoniker*) override {}
    STDMETHODIMP_(void) OnSave() override {}
    STDMETHODIMP_(void) OnClose() override { onCall_("OnClose"); }

private:
    OnCall onCall_;
};

/// One for the lives of a test, as long as none destroys it: to make it takes as long as half a life.
class ContainerWindow
{
public:
    ContainerWindow() = default;
    ContainerWindow(const ContainerWindow&) = delete;
    ContainerWindow& operator=(const ContainerWindow&) = delete;
    ~ContainerWindow() { DestroyWindow(window_); }

    HWND get()
    {
        if (!IsWindow(window_))
            window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"Container", WS_OVERLAPPEDWINDOW, 40,
                                      40, 500, 400, nullptr, nullptr, nullptr, nullptr);
        return window_;
    }

private:
    HWND window_ = nullptr;
};

/// The whole life of a dialog in a container, with each kind of call that the dialog makes to it.
class Life
{
public:
    /// What the host does within a call, and what is left of the dialog by it.
    enum class Left
    {
        active,   ///< or not, as before
        inactive, ///< no window in the container
        nothing   ///< no window at all
    };

    struct Act
    {
        const char* name;
        void (Life::*perform)();
        Left left = Left::active;
        bool letsGo = false; ///< and releases the dialog
    };

    /// @param at the call in which the host acts, counted from 0.
    Life(HWND window, const Act* act, std::size_t at) : act_(act), at_(at), window_(window) {}
    explicit Life(HWND window) : Life(window, nullptr, 0) {}
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() { SetFocus(nullptr); }

    /// The calls that the dialog made.
    std::vector<std::string> live()
    {
        step([&] { dialog_->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, view_.get()); });
        step([&] {
            DWORD connection = 0;
            dialog_->Advise(view_.get(), &connection);
        });
        step([&] { dialog_->SetClientSite(site_.get()); });
        step([&] { activate(OLEIVERB_SHOW); });
        step([&] { ready(); });
        step([&] { activate(OLEIVERB_UIACTIVATE); });
        step([&] { SetFocus(window_); });
        step([&] { SetFocus(dialog_->tabPages.window()); });
        step([&] { SetFocus(window_); });
        step([&] { SetFocus(dialog_->window()); });
        step([&] { SetFocus(dialog_->cmdApply.window()); });
        step([&] { key(WM_KEYDOWN, VK_TAB); });
        step([&] { SetFocus(window_); });
        step([&] {
            MSG mnemonic{window_, WM_SYSCHAR, L'a', 1L << 29, 0, {}};
            dialog_->OnMnemonic(&mnemonic);
        });
        step([&] { key(WM_KEYDOWN, VK_F1); });
        step([&] {
            site_->font = host::makeFont(L"MS Shell Dlg", 12);
            dialog_->OnAmbientPropertyChange(DISPID_AMBIENT_FONT);
        });
        step([&] {
            SIZEL other{1000, 1000};
            dialog_->SetExtent(DVASPECT_CONTENT, &other);
        });
        step([&] { dialog_->OnDocWindowActivate(TRUE); });
        step([&] { dialog_->UIDeactivate(); });
        step([&] { SetFocus(dialog_->tabPages.window()); });
        step([&] { activate(OLEIVERB_PRIMARY); });
        step([&] { dialog_->DoVerb(OLEIVERB_HIDE, nullptr, nullptr, 0, nullptr, nullptr); });
        step([&] { SendMessageW(dialog_->cmdApply.window(), BM_CLICK, 0, 0); });
        step([&] { dialog_->InPlaceDeactivate(); });
        step([&] { activate(OLEIVERB_UIACTIVATE); });
        step([&] { dialog_->Close(OLECLOSE_NOSAVE); });
        step([&] { dialog_->SetClientSite(nullptr); });
        dialog_.reset();
        EXPECT_EQ(dialogWindows(), 0);
        return calls_;
    }

    /// How often the site was told that the dialog is active, less how often that it is no longer.
    int activations() const { return activations_; }

    // What a host may do.
    void deactivateUi() { dialog_->UIDeactivate(); }
    void deactivate() { dialog_->InPlaceDeactivate(); }
    void hide() { dialog_->DoVerb(OLEIVERB_HIDE, nullptr, nullptr, 0, nullptr, nullptr); }
    void close() { dialog_->Close(OLECLOSE_NOSAVE); }
    void takeSite() { dialog_->SetClientSite(nullptr); }
    void changeSite() { dialog_->SetClientSite(make<HostileSite>(window_, hear_).get()); }
    void show() { dialog_->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr); }
    void activateUi() { dialog_->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, nullptr, nullptr); }
    void ready()
    {
        VARIANT_BOOL result = VARIANT_FALSE;
        dialog_->get_Ready(&result);
    }
    void move()
    {
        const RECT other{10, 10, 20, 20};
        dialog_->SetObjectRects(&other, &other);
    }
    void deactivateAndShow()
    {
        deactivate();
        show();
    }
    void closeAndActivate()
    {
        close();
        activateUi();
    }
    void destroyWindow() { DestroyWindow(window_); }
    void nothing() {}

private:
    template <class Step> void step(const Step& taken)
    {
        if (!dialog_)
            return;
        const bool before = acted_;
        taken();
        if (before || !acted_)
            return;
        if (act_->left == Left::nothing || act_->letsGo)
        {
            EXPECT_EQ(dialogWindows(), 0);
        }
        if (act_->left != Left::active)
        {
            EXPECT_FALSE(isActive());
            EXPECT_EQ(activations_, 0);
        }
    }

    /// The answer tells whether the dialog is active, whatever has happened meanwhile.
    void activate(LONG verb)
    {
        const HRESULT result = dialog_->DoVerb(verb, nullptr, site_.get(), 0, window_, nullptr);
        if (dialog_)
        {
            EXPECT_EQ(result == S_OK, isActive() && (uiActive_ || verb == OLEIVERB_SHOW))
                << std::hex << result;
        }
    }

    bool isActive() const
    {
        HWND window = nullptr;
        return dialog_ && dialog_->GetWindow(&window) == S_OK;
    }

    void key(UINT message, WPARAM key) const
    {
        MSG pressed{dialog_->cmdApply.window(), message, key, 1, 0, {}};
        dialog_->TranslateAccelerator(&pressed);
    }

    void hear(const char* call)
    {
        if (!std::strcmp(call, "OnInPlaceActivate"))
            ++activations_;
        if (!std::strcmp(call, "OnInPlaceDeactivate"))
            --activations_;
        if (!std::strcmp(call, "OnUIActivate"))
            uiActive_ = true;
        if (!std::strcmp(call, "OnUIDeactivate"))
            uiActive_ = false;
        calls_.emplace_back(call);
        if (!act_ || calls_.size() != at_ + 1 || !dialog_)
            return;
        acted_ = true;
        (this->*act_->perform)();
        if (act_->letsGo)
            dialog_.reset();
    }

    /// The windows of the dialog, wherever they are.
    int dialogWindows() const
    {
        Windows found{window_};
        EnumThreadWindows(GetCurrentThreadId(), &count, reinterpret_cast<LPARAM>(&found));
        return found.ofDialog;
    }

    struct Windows
    {
        HWND container = nullptr;
        int ofDialog = 0;
    };

    static BOOL CALLBACK count(HWND window, LPARAM parameter) noexcept
    {
        auto& found = *reinterpret_cast<Windows*>(parameter);
        wchar_t name[32];
        GetClassNameW(window, name, 32);
        if (window == found.container ? GetWindow(window, GW_CHILD) != nullptr
                                      : !_wcsicmp(name, L"Static") || !_wcsicmp(name, TOOLTIPS_CLASSW))
            ++found.ofDialog;
        return TRUE;
    }

    const Act* act_;
    std::size_t at_;
    bool acted_ = false;
    bool uiActive_ = false;
    int activations_ = 0;
    std::vector<std::string> calls_;
    const OnCall hear_ = [this](const char* call) { hear(call); };

    HWND window_;
    ComPtr<HostileSite> site_ = make<HostileSite>(window_, hear_);
    ComPtr<AdviseSink> view_ = make<AdviseSink>(hear_);
    ComPtr<SmallDialog> dialog_ = make<SmallDialog>();
};

constexpr Life::Act acts[] = {
    {"deactivatesItsUi", &Life::deactivateUi},
    {"deactivatesIt", &Life::deactivate, Life::Left::inactive},
    {"deactivatesItAndLetsGo", &Life::deactivate, Life::Left::inactive, true},
    {"hidesIt", &Life::hide},
    {"closesIt", &Life::close, Life::Left::nothing},
    {"closesItAndLetsGo", &Life::close, Life::Left::nothing, true},
    {"takesItsSiteAway", &Life::takeSite, Life::Left::nothing},
    {"takesItsSiteAwayAndLetsGo", &Life::takeSite, Life::Left::nothing, true},
    {"letsGo", &Life::nothing, Life::Left::active, true},
    {"changesItsSite", &Life::changeSite, Life::Left::inactive},
    {"changesItsSiteAndLetsGo", &Life::changeSite, Life::Left::inactive, true},
    {"showsIt", &Life::show},
    {"activatesIt", &Life::activateUi},
    {"activatesItAndLetsGo", &Life::activateUi, Life::Left::active, true},
    {"readiesIt", &Life::ready},
    {"movesIt", &Life::move},
    {"deactivatesAndShowsIt", &Life::deactivateAndShow},
    {"closesAndActivatesIt", &Life::closeAndActivate},
    {"destroysItsOwnWindow", &Life::destroyWindow},
};

/// What faults in a window procedure is passed over by the platform, and the program goes on: it is counted here.
class Faults
{
public:
    Faults() { count = 0; }
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;
    ~Faults() { RemoveVectoredExceptionHandler(handler_); }

    static inline int count = 0;

private:
    static LONG CALLBACK note(EXCEPTION_POINTERS* exception) noexcept
    {
        count += exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION;
        return EXCEPTION_CONTINUE_SEARCH;
    }

    void* handler_ = AddVectoredExceptionHandler(TRUE, &note);
};

class HostileSiteTests : public testing::TestWithParam<Life::Act>
{
};

} // namespace

TEST(HostileSiteTests, TheLifeHasEachCallOfADialogToItsContainer)
{
    ContainerWindow window;
    Life life(window.get());
    EXPECT_THAT(life.live(), IsSupersetOf({"QueryInterface",
                                           "Invoke",
                                           "GetContainer",
                                           "ShowObject",
                                           "GetWindow",
                                           "CanInPlaceActivate",
                                           "OnInPlaceActivate",
                                           "OnUIActivate",
                                           "GetWindowContext",
                                           "OnUIDeactivate",
                                           "OnInPlaceDeactivate",
                                           "OnPosRectChange",
                                           "SetBorderSpace",
                                           "SetActiveObject",
                                           "SetActiveObject(null)",
                                           "OnControlInfoChanged",
                                           "GetExtendedControl",
                                           "TranslateAccelerator",
                                           "OnFocus",
                                           "OnFocus(false)",
                                           "OnViewChange",
                                           "OnClose"}));
    EXPECT_EQ(life.activations(), 0);
}

TEST_P(HostileSiteTests, InEachCallTheDialogSurvivesAndNothingIsLeftBehind)
{
    ContainerWindow window;
    const auto calls = Life(window.get()).live();
    const long before = liveObjects();
    const Faults faults;
    for (std::size_t at = 0; at < calls.size() && !HasFailure(); ++at)
    {
        SCOPED_TRACE(calls[at] + ", call " + std::to_string(at));
        Life(window.get(), &GetParam(), at).live();
        EXPECT_EQ(liveObjects(), before);
        EXPECT_EQ(Faults::count, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Host, HostileSiteTests, ValuesIn(acts),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace korvane::test
