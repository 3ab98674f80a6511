#include "masterdata/ctlEditTypes.h"

namespace korvane
{

namespace
{

constexpr long textTitle = 23000;

} // namespace

ctlEditTypes::ctlEditTypes()
    : ListEditorOf(textTitle, editorWidth, bottom + 615,
                   Texts{.list = L"23006",
                         .listToolTip = L"23063",
                         .nameToolTip = L"23061",
                         .color = {L"23005", L"23004", L"23062"},
                         .prepareScope = L"ctlEditTypes.Prepare",
                         .fetchScope = L"ctlEditTypes.FetchData",
                         .queryScope = L"EditTypes.QueryByID",
                         .nextScope = L"EditTypes.Next"})
{
    lstItems.onDblClick = [this] { okForItem(); };
}

} // namespace korvane
