#include "framework/modKorvaneDlg.h"

#include "framework/Pictures.h"

#include "framework/com/Apartment.h"
#include "framework/com/Boundary.h"
#include "tests/framework/Fakes.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

#include <thread>

namespace korvane::test
{

namespace
{

ErrorInfo raised(long code, const wchar_t* source = L"", const wchar_t* description = L"")
{
    const auto failure = attempt([&] { RaiseAppError(code, source, description); });
    if (!failure)
        return {S_OK, L"", L""};
    return {failure->number(), std::wstring(failure->source().view()),
            std::wstring(failure->description().view())};
}

HRESULT failureOf(const std::function<void()>& body)
{
    const auto failure = attempt(body);
    return failure ? failure->number() : S_OK;
}

/// This test program without folder and extension.
constexpr const wchar_t* title = L"korvane_frame_tests";

class RaiseAppErrorTests : public testing::Test
{
protected:
    ~RaiseAppErrorTests() override { setCurrentResources(nullptr); }
};

} // namespace

TEST_F(RaiseAppErrorTests, SourceAndDescriptionHaveDefaults)
{
    EXPECT_EQ(raised(22092),
              (ErrorInfo{static_cast<HRESULT>(0x8004564C), title, L"The text box name must be entered."}));
}

TEST_F(RaiseAppErrorTests, TheNumberIsTheCodeAndTheBaseOfObjectErrors)
{
    EXPECT_EQ(raised(0).number, static_cast<HRESULT>(0x80040000));
    EXPECT_EQ(raised(1).number, static_cast<HRESULT>(0x80040001));
    EXPECT_EQ(raised(4291).number, -2147221504 + 4291);
    EXPECT_EQ(raised(-1).number, static_cast<HRESULT>(0x8003FFFF));
    EXPECT_EQ(raised(2147221503).number, -1);
}

TEST_F(RaiseAppErrorTests, SourceAndDescriptionOfTheCallerCount)
{
    EXPECT_EQ(raised(1, L"EditEvents", L"Bad command number: 7"),
              (ErrorInfo{static_cast<HRESULT>(0x80040001), L"EditEvents", L"Bad command number: 7"}));
    EXPECT_EQ(raised(22092, L"ctlEditNames").source, L"ctlEditNames");
    EXPECT_EQ(raised(22092, L"ctlEditNames").description, L"The text box name must be entered.");
    EXPECT_EQ(raised(22092, L"", L"other").source, title);
}

TEST_F(RaiseAppErrorTests, TheDescriptionOfACodeWithoutTextIsEmpty)
{
    EXPECT_EQ(raised(99), (ErrorInfo{static_cast<HRESULT>(0x80040063), title, L""}));
}

TEST_F(RaiseAppErrorTests, TheDescriptionComesFromTheHostsResources)
{
    setCurrentResources(ComPtr<IResources>(make<HostResources>().get()));
    EXPECT_EQ(raised(22092).description, L"host text 22092");
    EXPECT_EQ(raised(22092, L"", L"own").description, L"own");
}

TEST_F(RaiseAppErrorTests, ACodeBelowTheRangeOverflows)
{
    EXPECT_EQ(raised(-262144).number, std::numeric_limits<HRESULT>::min());
    EXPECT_EQ(raised(-262145).number, DISP_E_OVERFLOW);
    EXPECT_EQ(raised(std::numeric_limits<long>::min()).number, DISP_E_OVERFLOW);
}

TEST_F(RaiseAppErrorTests, TheCodeWithTheNumberZeroRaisesNothing)
{
    EXPECT_EQ(failureOf([] { RaiseAppError(2147221504); }), S_OK);
    EXPECT_EQ(failureOf([] { RaiseAppError(2147221504, L"EditEvents", L"nothing"); }), S_OK);
}

TEST_F(RaiseAppErrorTests, AnErrorReachesAnotherObjectAsItWasRaised)
{
    const HRESULT result = guard([] { RaiseAppError(4691, L"EditEvents"); });
    EXPECT_EQ(errorOf(result),
              (ErrorInfo{static_cast<HRESULT>(0x80041253), L"EditEvents",
                         L"You are not authorized to edit activity-bars for other ressources."}));
}

TEST_F(RaiseAppErrorTests, AnErrorHasNeitherHelpFileNorHelpContext)
{
    guard([] { RaiseAppError(4691); });
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, information.put()), S_OK);
    Bstr file;
    DWORD context = 7;
    EXPECT_EQ(information->GetHelpFile(file.put()), S_OK);
    EXPECT_EQ(information->GetHelpContext(&context), S_OK);
    EXPECT_TRUE(file.empty());
    EXPECT_EQ(context, 0U);
}

TEST(KeyTests, AKeyIsTheDigitsAndATilde)
{
    EXPECT_EQ(MakeKey(17), L"17~");
    EXPECT_EQ(MakeKey(0), L"0~");
    EXPECT_EQ(MakeKey(-5), L"-5~");
    EXPECT_EQ(MakeKey(std::numeric_limits<long>::max()), L"2147483647~");
    EXPECT_EQ(MakeKey(std::numeric_limits<long>::min()), L"-2147483648~");
}

TEST(KeyTests, AnIdIsReadBackFromItsKey)
{
    for (const long id : {17L, 0L, -5L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()})
        EXPECT_EQ(KeyToID(MakeKey(id).view()), id);
}

TEST(KeyTests, TheLastCharacterIsNotLookedAt)
{
    EXPECT_EQ(KeyToID(L"17x"), 17);
    EXPECT_EQ(KeyToID(L"172"), 17);
}

TEST(KeyTests, AnEmptyKeyIsAnInvalidArgument)
{
    EXPECT_EQ(failureOf([] { KeyToID(L""); }), E_INVALIDARG);
}

TEST(KeyTests, AKeyThatIsNoNumberIsATypeMismatch)
{
    EXPECT_EQ(failureOf([] { KeyToID(L"~"); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { KeyToID(L"group~"); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { KeyToID(L"17~~"); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { KeyToID(L"1 7a~"); }), DISP_E_TYPEMISMATCH);
}

TEST(KeyTests, AKeyBeyondAllIdsOverflows)
{
    EXPECT_EQ(failureOf([] { KeyToID(L"2147483648~"); }), DISP_E_OVERFLOW);
    EXPECT_EQ(failureOf([] { KeyToID(L"-2147483649~"); }), DISP_E_OVERFLOW);
}

TEST(CurrentResourcesTests, AreEmptyUntilSomebodyNeedsThem)
{
    EXPECT_FALSE(CurrentResources());
    EXPECT_EQ(resourceText(21000), L"Group");
    EXPECT_TRUE(CurrentResources().as<IResourceLibrary>());
}

TEST(CurrentResourcesTests, AreMadeOnce)
{
    const auto first = requireResources();
    EXPECT_EQ(requireResources().get(), first.get());
    EXPECT_EQ(CurrentResources().get(), first.get());
}

TEST(CurrentResourcesTests, AreTheHostsOwnWhereItHasSetThem)
{
    const ComPtr<IResources> own(make<HostResources>().get());
    setCurrentResources(own);
    EXPECT_EQ(CurrentResources().get(), own.get());
    EXPECT_EQ(requireResources().get(), own.get());
    EXPECT_EQ(resourceText(21000), L"host text 21000");
    setCurrentResources(nullptr);
    EXPECT_FALSE(CurrentResources());
}

TEST(CurrentResourcesTests, BelongToTheirThread)
{
    const ComPtr<IResources> own(make<HostResources>().get());
    setCurrentResources(own);
    long alive = -1;
    std::thread([&] {
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        EXPECT_FALSE(CurrentResources());
        EXPECT_EQ(resourceText(21000), L"Group");
        setCurrentResources(ComPtr<IResources>(make<HostResources>().get()));
        EXPECT_EQ(resourceText(21000), L"host text 21000");
        alive = module::lockCount();
        CoUninitialize();                          // lets go of the thread's resources
        EXPECT_EQ(module::lockCount(), alive - 2); // and of its own state
        EXPECT_EQ(existingApartment(), nullptr);
    }).join();
    EXPECT_EQ(CurrentResources().get(), own.get());
    setCurrentResources(nullptr);
}

TEST(CurrentResourcesTests, GoWithTheLastUninitializationOnly)
{
    std::thread([] {
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        requireResources();
        CoUninitialize();
        EXPECT_TRUE(CurrentResources());
        CoUninitialize();
        EXPECT_FALSE(CurrentResources());
    }).join();
}

// COM would come back for them at the end of that apartment.
TEST(CurrentResourcesTests, KeepTheLibraryLoadedForAnotherThreadThatHasThem)
{
    std::thread([] {
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        apartment().currentError = Failure(E_FAIL);
        EXPECT_EQ(liveObjects(), 0);
        std::thread([] { EXPECT_EQ(liveObjects(), 1); }).join();
        CoUninitialize();
        EXPECT_EQ(liveObjects(), 0);
    }).join();
}

namespace
{

/// Resources of a host's that have every interface of the library's own.
class WrappedResources final
    : public Object<WrappedResources, Inherits<IResources, IResourceLibrary>, IResources, IResourceLibrary>
{
public:
    STDMETHODIMP GetIcon(long id, IPictureDisp** picture) override
    {
        asked = id;
        return returns(picture, [&] { return given; });
    }
    STDMETHODIMP GetBitmap(long id, IPictureDisp** picture) override
    {
        asked = id;
        *picture = nullptr;
        return S_OK;
    }
    STDMETHODIMP GetCursor(long, IPictureDisp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetString(long, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_LocaleID(long*) override { return E_NOTIMPL; }
    STDMETHODIMP GetString(VARIANT, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP Export(VARIANT, VARIANT, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }

    long asked = 0;
    ComPtr<IPictureDisp> given;
};

/// The width of an icon, which is destroyed; 0 for none.
int widthOf(HICON icon)
{
    ICONINFO parts{};
    BITMAP bitmap{};
    if (!icon || !GetIconInfo(icon, &parts))
        return 0;
    GetObjectW(parts.hbmMask, sizeof bitmap, &bitmap);
    DeleteObject(parts.hbmMask);
    DeleteObject(parts.hbmColor);
    DestroyIcon(icon);
    return bitmap.bmWidth;
}

int widthOf(const ComPtr<IPictureDisp>& picture)
{
    OLE_HANDLE handle = 0;
    const auto drawn = picture.as<IPicture>();
    EXPECT_TRUE(drawn && drawn->get_Handle(&handle) == S_OK);
    BITMAP bitmap{};
    GetObjectW(reinterpret_cast<HBITMAP>(static_cast<UINT_PTR>(handle)), sizeof bitmap, &bitmap);
    return bitmap.bmWidth;
}

} // namespace

TEST(CurrentResourcesTests, OfAHostCountWhateverInterfacesTheyHave)
{
    ComPtr<IResources> held(make<WrappedResources>().get());
    setCurrentResources(held);
    EXPECT_EQ(liveObjects(), 1);
    held.reset();
    EXPECT_EQ(liveObjects(), 1); // the library's own would not count
    setCurrentResources(nullptr);
    EXPECT_EQ(liveObjects(), 0);
    requireResources();
    EXPECT_EQ(liveObjects(), 0);
    held = CurrentResources();
    EXPECT_EQ(liveObjects(), 1);
}

TEST(ResourceBitmapTests, OfTheLibraryHasTheSizeOfTheResolution)
{
    EXPECT_EQ(widthOf(resourceBitmap(21000, 96)), 16);
    EXPECT_EQ(widthOf(resourceBitmap(21000, 120)), 16);
    EXPECT_EQ(widthOf(resourceBitmap(21000, 144)), 24);
    EXPECT_EQ(widthOf(resourceBitmap(21000, 192)), 32);
    EXPECT_EQ(widthOf(resourceBitmap(21000, 288)), 32);
    EXPECT_FALSE(resourceBitmap(99, 192));
}

TEST(ResourceBitmapTests, OfAHostIsTheOneThatTheHostGives)
{
    const auto hosts = make<WrappedResources>();
    setCurrentResources(ComPtr<IResources>(hosts.get()));
    EXPECT_FALSE(resourceBitmap(21000, 192));
    EXPECT_EQ(hosts->asked, 21000);
    setCurrentResources(nullptr);
}

TEST(ResourceIconTests, HasTheSizeThatIsAskedForWhoeverGivesIt)
{
    EXPECT_EQ(widthOf(resourceIcon(21000, 24)), 24);
    EXPECT_EQ(widthOf(resourceIcon(99, 24)), 0);
    const auto hosts = make<WrappedResources>();
    setCurrentResources(ComPtr<IResources>(hosts.get()));
    EXPECT_EQ(widthOf(resourceIcon(21000, 24)), 0);
    hosts->given = loadPicture(21000, IMAGE_ICON);
    ASSERT_TRUE(hosts->given);
    EXPECT_EQ(widthOf(resourceIcon(21000, 24)), 24);
    EXPECT_EQ(hosts->asked, 21000);
    setCurrentResources(nullptr);
}

} // namespace korvane::test
