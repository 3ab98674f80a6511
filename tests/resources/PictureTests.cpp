#include "framework/com/Variant.h"
#include "tests/support/Allocation.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <gmock/gmock.h>

#include <memory>
#include <set>

namespace korvane::test
{

namespace
{

constexpr long icons[] = {100, 21000, 22000, 22500, 22521, 22522, 22523, 22524, 23000, 25000, 25500};
constexpr long bitmaps[] = {21000, 22000, 22500, 22521, 22522, 22523, 22524, 23000, 25000, 25500};

struct CloseContext
{
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};

class PictureTests : public testing::Test
{
protected:
    using Member = HRESULT (STDMETHODCALLTYPE IResources::*)(long, IPictureDisp**);

    ComPtr<IPicture> picture(Member member, long id)
    {
        auto* found = reinterpret_cast<IPictureDisp*>(static_cast<UINT_PTR>(0xdeadbeef));
        EXPECT_EQ((resources.get()->*member)(id, &found), S_OK) << id;
        return ComPtr<IPictureDisp>::adopt(found).as<IPicture>();
    }

    static short typeOf(const ComPtr<IPicture>& picture)
    {
        short type = PICTYPE_UNINITIALIZED;
        EXPECT_EQ(picture->get_Type(&type), S_OK);
        return type;
    }

    /// In pixels.
    static SIZE sizeOf(const ComPtr<IPicture>& picture)
    {
        OLE_XSIZE_HIMETRIC width = 0;
        OLE_YSIZE_HIMETRIC height = 0;
        EXPECT_EQ(picture->get_Width(&width), S_OK);
        EXPECT_EQ(picture->get_Height(&height), S_OK);
        const HDC screen = GetDC(nullptr);
        const SIZE pixels{MulDiv(width, GetDeviceCaps(screen, LOGPIXELSX), 2540),
                          MulDiv(height, GetDeviceCaps(screen, LOGPIXELSY), 2540)};
        ReleaseDC(nullptr, screen);
        return pixels;
    }

    static HBITMAP bitmapOf(const ComPtr<IPicture>& picture)
    {
        OLE_HANDLE handle = 0;
        EXPECT_EQ(picture->get_Handle(&handle), S_OK);
        return reinterpret_cast<HBITMAP>(static_cast<UINT_PTR>(handle));
    }

    ComPtr<IResources> resources = create<IResources>(__uuidof(::Resources));
};

/// The sizes of the images of an icon or cursor, from its directory in the resources.
std::set<int> storedSizes(const wchar_t* kind, long id)
{
    const HRSRC place = FindResourceW(library(), MAKEINTRESOURCEW(id), kind);
    if (!place)
        return {};
    const auto* directory = static_cast<const BYTE*>(LockResource(LoadResource(library(), place)));
    const int count = directory[4] + 256 * directory[5];
    std::set<int> sizes;
    for (int index = 0; index < count; ++index)
    {
        const BYTE* entry = directory + 6 + 14 * index;
        const int size = kind == RT_GROUP_CURSOR ? entry[0] + 256 * entry[1] : entry[0];
        sizes.insert(size == 0 ? 256 : size);
    }
    return sizes;
}

int WINAPI fineScreen(HDC, int)
{
    return 192; // pixels per inch
}

HRESULT WINAPI refusePicture(PICTDESC*, REFIID, BOOL, void** picture)
{
    *picture = nullptr;
    return E_OUTOFMEMORY;
}

std::vector<HGDIOBJ> destroyed;

BOOL WINAPI noteDestroyed(HGDIOBJ object)
{
    destroyed.push_back(object);
    return DeleteObject(object);
}

BOOL WINAPI noteDestroyedIcon(HICON icon)
{
    destroyed.push_back(icon);
    return DestroyIcon(icon);
}

} // namespace

TEST_F(PictureTests, AnImageWhosePictureCannotBeMadeIsDestroyed)
{
    const ImportPatch make(library(), "OleCreatePictureIndirect", reinterpret_cast<void*>(&refusePicture));
    const ImportPatch bitmap(library(), "DeleteObject", reinterpret_cast<void*>(&noteDestroyed));
    const ImportPatch icon(library(), "DestroyIcon", reinterpret_cast<void*>(&noteDestroyedIcon));
    ASSERT_TRUE(make.isInPlace());
    destroyed.clear();
    EXPECT_FALSE(picture(&IResources::GetBitmap, 21000));
    EXPECT_EQ(destroyed.size(), 1U);
    EXPECT_FALSE(picture(&IResources::GetIcon, 21000));
    EXPECT_EQ(destroyed.size(), 2U);
    EXPECT_FALSE(picture(&IResources::GetCursor, 25500));
    EXPECT_EQ(destroyed.size(), 3U);
    EXPECT_THAT(destroyed, testing::Each(testing::NotNull()));
}

TEST_F(PictureTests, EveryIconIsAnIconOfTheSystemsSize)
{
    for (const long id : icons)
    {
        const auto found = picture(&IResources::GetIcon, id);
        ASSERT_TRUE(found) << id;
        EXPECT_EQ(typeOf(found), PICTYPE_ICON) << id;
        EXPECT_NEAR(sizeOf(found).cx, GetSystemMetrics(SM_CXICON), 1) << id;
        EXPECT_NEAR(sizeOf(found).cy, GetSystemMetrics(SM_CYICON), 1) << id;
    }
}

TEST_F(PictureTests, EveryIconHasTheSizesOfAllScales)
{
    for (const long id : icons)
        EXPECT_THAT(storedSizes(RT_GROUP_ICON, id), testing::IsSupersetOf({16, 24, 32})) << id;
}

// An image list of a host takes no pictures of another size than its own.
TEST_F(PictureTests, EveryBitmapIsTheResourceWithThatNumberWhateverTheResolution)
{
    const ImportPatch screen(library(), "GetDeviceCaps", reinterpret_cast<void*>(&fineScreen));
    ASSERT_TRUE(screen.isInPlace());
    const long expected = 16;
    for (const long id : bitmaps)
    {
        const auto found = picture(&IResources::GetBitmap, id);
        ASSERT_TRUE(found) << id;
        EXPECT_EQ(typeOf(found), PICTYPE_BITMAP) << id;
        BITMAP bitmap{};
        ASSERT_NE(GetObjectW(bitmapOf(found), sizeof bitmap, &bitmap), 0) << id;
        EXPECT_EQ(bitmap.bmWidth, expected) << id;
        EXPECT_EQ(bitmap.bmHeight, expected) << id;
    }
}

TEST_F(PictureTests, EveryBitmapIsStoredForTheLargerScalesToo)
{
    const auto widthOf = [](long id, const wchar_t* scale) {
        const std::wstring name = L"BITMAP_" + std::to_wstring(id) + scale;
        auto* const loaded = static_cast<HBITMAP>(LoadImageW(library(), name.c_str(), IMAGE_BITMAP, 0, 0, 0));
        BITMAP bitmap{};
        GetObjectW(loaded, sizeof bitmap, &bitmap);
        DeleteObject(loaded);
        return bitmap.bmWidth;
    };
    for (const long id : bitmaps)
    {
        EXPECT_EQ(widthOf(id, L"_AT_150"), 24) << id;
        EXPECT_EQ(widthOf(id, L"_AT_200"), 32) << id;
    }
}

TEST_F(PictureTests, NoNumberLeadsToAnotherScaleOfAPicture)
{
    for (const long id : bitmaps)
        for (const long other : {id - 200, id - 100, id + 100, id + 200})
            EXPECT_FALSE(picture(&IResources::GetBitmap, other)) << other;
}

TEST_F(PictureTests, CursorsAreIconsToThePlatformsPictures)
{
    for (const long id : {25500L, 25501L})
    {
        const auto found = picture(&IResources::GetCursor, id);
        ASSERT_TRUE(found) << id;
        EXPECT_EQ(typeOf(found), PICTYPE_ICON) << id;
        OLE_HANDLE handle = 0;
        EXPECT_EQ(found->get_Handle(&handle), S_OK);
        ICONINFO information{};
        ASSERT_TRUE(GetIconInfo(reinterpret_cast<HICON>(static_cast<UINT_PTR>(handle)), &information)) << id;
        EXPECT_FALSE(information.fIcon) << id;
        DeleteObject(information.hbmMask);
        if (information.hbmColor)
            DeleteObject(information.hbmColor);
        EXPECT_THAT(storedSizes(RT_GROUP_CURSOR, id), testing::Contains(32)) << id;
    }
}

TEST_F(PictureTests, AMissingPictureIsNothing)
{
    for (const auto member : {&IResources::GetIcon, &IResources::GetBitmap, &IResources::GetCursor})
        for (const long id : {0L, 1L, -1L, 999999L, 65536L + 21000L, -65536L + 21000L, 0x7fffffffL})
            EXPECT_FALSE(picture(member, id)) << id;
}

TEST_F(PictureTests, APictureOfAnotherKindIsNothing)
{
    EXPECT_FALSE(picture(&IResources::GetCursor, 21000));
    EXPECT_FALSE(picture(&IResources::GetIcon, 25501));
    EXPECT_FALSE(picture(&IResources::GetBitmap, 100));
}

TEST_F(PictureTests, AMissingPictureLeavesNoErrorInformation)
{
    EXPECT_FALSE(picture(&IResources::GetIcon, 999999));
    ComPtr<IErrorInfo> information;
    EXPECT_EQ(GetErrorInfo(0, information.put()), S_FALSE);
}

TEST_F(PictureTests, APictureOwnsItsImage)
{
    auto found = picture(&IResources::GetBitmap, 21000);
    const HBITMAP bitmap = bitmapOf(found);
    EXPECT_EQ(GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP));
    found.reset();
    EXPECT_EQ(GetObjectType(bitmap), 0U);
}

TEST_F(PictureTests, APictureCanBeDrawn)
{
    const auto found = picture(&IResources::GetBitmap, 21000);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    found->get_Width(&width);
    found->get_Height(&height);
    const HDC screen = GetDC(nullptr);
    const std::unique_ptr<std::remove_pointer_t<HDC>, CloseContext> context(CreateCompatibleDC(screen));
    const HBITMAP target = CreateCompatibleBitmap(screen, 16, 16);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ former = SelectObject(context.get(), target);
    PatBlt(context.get(), 0, 0, 16, 16, BLACKNESS);
    EXPECT_EQ(found->Render(context.get(), 0, 0, 16, 16, 0, height, width, -height, nullptr), S_OK);
    int drawn = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            drawn += GetPixel(context.get(), x, y) != 0;
    EXPECT_GT(drawn, 16);
    SelectObject(context.get(), former);
    DeleteObject(target);
}

} // namespace korvane::test
