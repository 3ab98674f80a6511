#include "resources/Resources.h"

#include "framework/com/Decimal.h"
#include "framework/control/Dpi.h"

namespace korvane
{

namespace
{

ComPtr<IPictureDisp> pictureOf(PICTDESC description)
{
    ComPtr<IPictureDisp> picture;
    OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.putVoid());
    return picture;
}

HANDLE loadImage(const wchar_t* name, UINT kind, UINT flags) noexcept
{
    return LoadImageW(module::instance(), name, kind, 0, 0, flags);
}

HANDLE loadImage(long id, UINT kind, UINT flags) noexcept
{
    return id < 0 || id > 0xffff ? nullptr : loadImage(MAKEINTRESOURCEW(id), kind, flags);
}

/// Icons and cursors are one kind of object to the platform, and to its pictures.
ComPtr<IPictureDisp> iconPicture(long id, UINT kind)
{
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = static_cast<HICON>(loadImage(id, kind, LR_DEFAULTSIZE));
    return description.icon.hicon ? pictureOf(description) : nullptr;
}

/// The one of the picture's sizes, for 96, 144 and 192 pixels per inch, that suits the screen.
HANDLE loadBitmap(long id)
{
    const int dpi = screenDpi();
    HANDLE bitmap = nullptr;
    if (dpi >= 144)
    {
        const std::wstring name = L"BITMAP_" + decimal(id) + (dpi >= 192 ? L"_AT_200" : L"_AT_150");
        bitmap = loadImage(name.c_str(), IMAGE_BITMAP, 0);
    }
    return bitmap ? bitmap : loadImage(id, IMAGE_BITMAP, 0);
}

} // namespace

STDMETHODIMP Resources::GetIcon(long id, IPictureDisp** picture)
{
    return returns(picture, [&] { return iconPicture(id, IMAGE_ICON); });
}

STDMETHODIMP Resources::GetBitmap(long id, IPictureDisp** picture)
{
    return returns(picture, [&]() -> ComPtr<IPictureDisp> {
        PICTDESC description{};
        description.cbSizeofstruct = sizeof description;
        description.picType = PICTYPE_BITMAP;
        description.bmp.hbitmap = static_cast<HBITMAP>(loadBitmap(id));
        return description.bmp.hbitmap ? pictureOf(description) : nullptr;
    });
}

STDMETHODIMP Resources::GetCursor(long id, IPictureDisp** picture)
{
    return returns(picture, [&] { return iconPicture(id, IMAGE_CURSOR); });
}

} // namespace korvane
