#include "framework/Pictures.h"

#include "framework/com/Decimal.h"
#include "framework/com/Module.h"

namespace korvane
{

namespace
{

/// Gives an image to a picture. The image of a picture that cannot be made is destroyed.
ComPtr<IPictureDisp> pictureOf(PICTDESC description)
{
    ComPtr<IPictureDisp> picture;
    if (SUCCEEDED(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.putVoid())))
        return picture;
    if (description.picType == PICTYPE_BITMAP)
        DeleteObject(description.bmp.hbitmap);
    else
        DestroyIcon(description.icon.hicon);
    return nullptr;
}

} // namespace

ComPtr<IPictureDisp> loadPicture(const wchar_t* name, UINT kind)
{
    const HANDLE image =
        LoadImageW(module::instance(), name, kind, 0, 0, kind == IMAGE_BITMAP ? 0 : LR_DEFAULTSIZE);
    if (!image)
        return nullptr;
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    if (kind == IMAGE_BITMAP)
    {
        description.picType = PICTYPE_BITMAP;
        description.bmp.hbitmap = static_cast<HBITMAP>(image);
    }
    else // icons and cursors are one kind of object to the platform, and to its pictures
    {
        description.picType = PICTYPE_ICON;
        description.icon.hicon = static_cast<HICON>(image);
    }
    return pictureOf(description);
}

ComPtr<IPictureDisp> loadPicture(long id, UINT kind)
{
    return id < 0 || id > 0xffff ? nullptr : loadPicture(MAKEINTRESOURCEW(id), kind);
}

ComPtr<IPictureDisp> loadBitmap(long id, int dpi)
{
    ComPtr<IPictureDisp> larger;
    if (dpi >= 144)
        larger = loadPicture((L"BITMAP_" + decimal(id) + (dpi >= 192 ? L"_AT_200" : L"_AT_150")).c_str(),
                             IMAGE_BITMAP);
    return larger ? larger : loadPicture(id, IMAGE_BITMAP);
}

} // namespace korvane
