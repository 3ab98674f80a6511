// The class catalogue: factories, registration and the tests of the catalogue all follow from this table.
#include "library/Catalogue.h"

#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "activities/ctlEditEvents.h"
#include "activities/ctlMoveEvents.h"
#include "framework/AppDialogEvents.h"
#include "groups/EditGroups.h"
#include "groups/ctlEditGroups.h"
#include "masterdata/ArrangeGroups.h"
#include "masterdata/ArrangeNames.h"
#include "masterdata/ArrangeTypes.h"
#include "masterdata/EditNames.h"
#include "masterdata/EditTypes.h"
#include "masterdata/ctlArrangeGroups.h"
#include "masterdata/ctlArrangeNames.h"
#include "masterdata/ctlArrangeTypes.h"
#include "masterdata/ctlEditNames.h"
#include "masterdata/ctlEditTypes.h"
#include "messages/InfoMessage.h"
#include "messages/ShowMessage.h"
#include "messages/ctlInfoMessage.h"
#include "messages/ctlShowMessage.h"
#include "resources/Resources.h"
#include "resources/pictures/PictureIds.h"

namespace korvane
{

std::span<const ClassEntry> classCatalogue() noexcept
{
    static const ClassEntry classes[] = {
        {&__uuidof(::AppDialogEvents), L"AppDialogEvents", L"Korvane dialog relay",
         &createInstance<AppDialogEvents>},
        {&__uuidof(::Resources), L"Resources", L"Korvane texts and pictures", &createInstance<Resources>},
        {&__uuidof(::EditEvents), L"EditEvents", L"Korvane activity command", &createInstance<EditEvents>},
        {&__uuidof(::ctlEditEvents), L"ctlEditEvents", L"Korvane activity dialog",
         &createInstance<ctlEditEvents>, PICTURE_ACTIVITIES},
        {&__uuidof(::MoveEvents), L"MoveEvents", L"Korvane move command", &createInstance<MoveEvents>},
        {&__uuidof(::ctlMoveEvents), L"ctlMoveEvents", L"Korvane move dialog", &createInstance<ctlMoveEvents>,
         PICTURE_MOVE_ACTIVITY},
        {&__uuidof(::EditGroups), L"EditGroups", L"Korvane group command", &createInstance<EditGroups>},
        {&__uuidof(::ctlEditGroups), L"ctlEditGroups", L"Korvane group dialog",
         &createInstance<ctlEditGroups>, PICTURE_GROUPS},
        {&__uuidof(::ArrangeGroups), L"ArrangeGroups", L"Korvane group order command",
         &createInstance<ArrangeGroups>},
        {&__uuidof(::ctlArrangeGroups), L"ctlArrangeGroups", L"Korvane group order dialog",
         &createInstance<ctlArrangeGroups>, PICTURE_GROUPS},
        {&__uuidof(::ArrangeNames), L"ArrangeNames", L"Korvane resource order command",
         &createInstance<ArrangeNames>},
        {&__uuidof(::ctlArrangeNames), L"ctlArrangeNames", L"Korvane resource order dialog",
         &createInstance<ctlArrangeNames>, PICTURE_RESOURCES},
        {&__uuidof(::ArrangeTypes), L"ArrangeTypes", L"Korvane activity type order command",
         &createInstance<ArrangeTypes>},
        {&__uuidof(::ctlArrangeTypes), L"ctlArrangeTypes", L"Korvane activity type order dialog",
         &createInstance<ctlArrangeTypes>, PICTURE_ACTIVITY_TYPES},
        {&__uuidof(::EditNames), L"EditNames", L"Korvane resource command", &createInstance<EditNames>},
        {&__uuidof(::ctlEditNames), L"ctlEditNames", L"Korvane resource dialog",
         &createInstance<ctlEditNames>, PICTURE_RESOURCES},
        {&__uuidof(::EditTypes), L"EditTypes", L"Korvane activity type command", &createInstance<EditTypes>},
        {&__uuidof(::ctlEditTypes), L"ctlEditTypes", L"Korvane activity type dialog",
         &createInstance<ctlEditTypes>, PICTURE_ACTIVITY_TYPES},
        {&__uuidof(::InfoMessage), L"InfoMessage", L"Korvane information and message command",
         &createInstance<InfoMessage>},
        {&__uuidof(::ctlInfoMessage), L"ctlInfoMessage", L"Korvane information and message dialog",
         &createInstance<ctlInfoMessage>, PICTURE_MESSAGES},
        {&__uuidof(::ShowMessage), L"ShowMessage", L"Korvane message viewer command",
         &createInstance<ShowMessage>},
        {&__uuidof(::ctlShowMessage), L"ctlShowMessage", L"Korvane message viewer",
         &createInstance<ctlShowMessage>, PICTURE_MESSAGES},
    };
    return classes;
}

const LibraryRegistration libraryRegistration{
    .name = L"KorvaneDlg",
    .typeLibrary = &LIBID_KorvaneDlg,
    .typeLibraries = 4,
    .controlStatus = OleControl::miscStatus,
};

} // namespace korvane
