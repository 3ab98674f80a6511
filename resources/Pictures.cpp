#include "framework/Pictures.h"
#include "resources/Resources.h"

namespace korvane
{

STDMETHODIMP Resources::GetIcon(long id, IPictureDisp** picture)
{
    return returns(picture, [&] { return loadPicture(id, IMAGE_ICON); });
}

STDMETHODIMP Resources::GetBitmap(long id, IPictureDisp** picture)
{
    return returns(picture, [&] { return loadPicture(id, IMAGE_BITMAP); });
}

STDMETHODIMP Resources::GetCursor(long id, IPictureDisp** picture)
{
    return returns(picture, [&] { return loadPicture(id, IMAGE_CURSOR); });
}

} // namespace korvane
