#include "framework/control/OleControl.h"

#include <algorithm>

namespace korvane
{

OleControl::OleControl(REFCLSID classId, float width, float height)
    : classId_(classId), width_(width), height_(height)
{
}

void OleControl::setSize(float width, float height)
{
    if (width == width_ && height == height_)
        return;
    width_ = width;
    height_ = height;
    if (resizable())
        run([this] { resized(); });
    extentChanged();
}

/// What the container gives a resizable dialog, in twips.
void OleControl::takeSize(float width, float height) noexcept
{
    constexpr int largestWindow = 32767; // pixels
    const float largest = toTwips(largestWindow, dpi());
    const Extent least = minimumSize();
    width_ = std::clamp(width, std::min(least.width, largest), largest);
    height_ = std::clamp(height, std::min(least.height, largest), largest);
    run([this] { resized(); });
    viewChanged();
}

void OleControl::extentChanged()
{
    insistOnSize();
    viewChanged();
}

void OleControl::setEnabled(bool enabled) noexcept
{
    enabled_ = enabled;
    dirty_ = true;
    if (window())
        EnableWindow(window(), enabled);
}

Variant OleControl::ambientProperty(DISPID property) const
{
    const auto ambient = clientSite().as<IDispatch>();
    DISPPARAMS none{};
    VARIANT value{};
    const bool came =
        ambient && SUCCEEDED(ambient->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                             &none, &value, nullptr, nullptr));
    return owned(came ? value : VARIANT{});
}

void OleControl::controlInfoChanged() noexcept
{
    attempt([&] { toldKeys_ = accessKeys(); });
    if (const auto site = clientSite().as<IOleControlSite>())
        site->OnControlInfoChanged();
}

void OleControl::accessKeysChanged() noexcept
{
    attempt([&] {
        if (accessKeys() != toldKeys_)
            controlInfoChanged();
    });
}

STDMETHODIMP OleControl::OnAmbientPropertyChange(DISPID property)
{
    return held([&] {
        if (property == DISPID_AMBIENT_FONT || property == DISPID_UNKNOWN)
            ambientFontChanged();
    });
}

STDMETHODIMP OleControl::FreezeEvents(BOOL)
{
    return S_OK; // the relay's calls are answers to the user and cannot wait
}

STDMETHODIMP OleControl::GetClassInfo(ITypeInfo** information)
{
    return returns(information, [&] { return typeInfoOf(classId_); });
}

} // namespace korvane
