#include "resources/Resources.h"

#include "framework/control/Dpi.h"
#include "resources/pictures/PictureIds.h"

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

HANDLE loadImage(long id, UINT kind, UINT flags) noexcept
{
    if (id < 0 || id > 0xffff)
        return nullptr;
    return LoadImageW(module::instance(), MAKEINTRESOURCEW(id), kind, 0, 0, flags);
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
HANDLE loadBitmap(long id) noexcept
{
    const int dpi = screenDpi();
    HANDLE bitmap = nullptr;
    if (dpi >= 192)
        bitmap = loadImage(id + PICTURE_AT_200_PERCENT, IMAGE_BITMAP, 0);
    else if (dpi >= 144)
        bitmap = loadImage(id + PICTURE_AT_150_PERCENT, IMAGE_BITMAP, 0);
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
