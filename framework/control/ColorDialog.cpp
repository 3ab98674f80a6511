#include "framework/control/ColorDialog.h"

#include "framework/com/Apartment.h"

#include <algorithm>

#include <commdlg.h>

namespace korvane
{

std::optional<long> chooseColor(HWND owner, long color)
{
    CHOOSECOLORW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.rgbResult = static_cast<COLORREF>(std::max(color, 0L));
    // A copy: the apartment's state may go while the dialog is open.
    auto customColors = apartment().customColors;
    dialog.lpCustColors = customColors.data();
    dialog.Flags = CC_RGBINIT | CC_FULLOPEN;
    const bool chosen = ChooseColorW(&dialog) != FALSE;
    apartment().customColors = customColors; // also what was put together before the user cancelled
    if (chosen)
        return static_cast<long>(dialog.rgbResult);
    if (const DWORD error = CommDlgExtendedError())
        throw Failure(MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, error));
    return std::nullopt;
}

} // namespace korvane
