#pragma once

// The texts that hosts and translators depend on. They are written out here a
// second time on purpose: a test that took them from the string table's source
// would agree with any slip made there.

namespace korvane::test
{

struct StringTableEntry
{
    int id;
    const wchar_t* text;
};

// Fixed by the contract with the host: to the letter, blanks included.
inline constexpr StringTableEntry kContractStrings[] = {
    {0, L"1033"},
    {1000, L"Error"},
    {1601, L"&Print"},
    {1700, L"Setup"},
    {3201, L"Administrators"},
    {3900, L"Employees"},
    {4090, L"Unknown username - cannot login."},
    {4190, L"You are not authorized to add new groups."},
    {4193, L"You must not delete the last group."},
    {4290, L"You are not authorized to add new ressources."},
    {4291, L"You are not authorized to edit this ressource."},
    {4390, L"You are not authorized to add new activity types."},
    {4391, L"You are not authorized to edit this activity type."},
    {4590, L"You are not authorized to add new activity-bars."},
    {4690, L"You are not authorized to create activity-bars for other ressources."},
    {4691, L"You are not authorized to edit activity-bars for other ressources."},
    {4890, L"Internal error: missing ressource name/id for new login."},
    {4899, L"The 'SuperUser' account cannot be mapped to user groups."},

    {21000, L"Group"},
    {21001, L"&New group:"},
    {21002, L"&Edit group:"},
    {21003, L"&Delete group:"},

    {22000, L"Resource"},
    {22001, L"&New name:"},
    {22002, L"&Edit name:"},
    {22003, L"&Delete navn:"},
    {22004, L"More &colors..."},
    {22006, L"&Synchronize"},
    {22011, L"Administrator"},
    {22012, L"Manager"},
    {22013, L"User"},
    {22014, L"No User"},
    {22050, L"Edit "},
    {22051, L"If you continue, all edits for this resource will be lost.\n"
            L"Press 'Yes' to continue."},
    {22090, L"You have selected, that the user should be synchronized to the outlook account. "
            L"This is only possible, if you enter a valid Login name."},
    {22091, L"You have selected to give the user authorization. "
            L"This is only possible, if you enter a valid Login name."},
    {22092, L"The text box name must be entered."},
    {22095, L"You have selected to give the user a Login name. "
            L"You must provide the user with authorization as well."},
    {22096, L"You must select a resource to delete."},

    {22500, L"&Message"},
    {22501, L"&Has phoned"},
    {22502, L"&Wants to be phoned back"},
    {22503, L"Will &phone again"},
    {22504, L"Phone &No."},
    {22505, L"&Concerning"},
    {22506, L"&From"},
    {22512, L"&Previous"},
    {22513, L"&Next"},
    {22514, L"Dele&te"},
    {22517, L"Name"},
    {22518, L"Value"},
    {22590, L"Text box 'Concerning' is required"},
    {22591, L"This ressource has no login name attached and cannot receive messages."},
    {22600, L"&Info"},

    {23000, L"Activity Types"},
    {23001, L"&New activity type:"},
    {23002, L"&Edit activity type:"},
    {23003, L"&Delete activity type:"},
    {23004, L"More &colors..."},
    {23096, L"You must select an activity type to delete."},

    {25000, L"Activity"},
    {25001, L"New activity:"},
    {25002, L"St&art"},
    {25003, L"Sto&p"},
    {25004, L"&Type:"},
    {25005, L"&Description:"},
    {25006, L"&Show for:"},
    {25007, L"&Repeat activity"},
    {25008, L"Change activity:"},
    {25009, L"De&lete"},
    {25010, L"By &Day"},
    {25011, L"Repeat every "},
    {25012, L" . day  "},
    {25013, L"Repeat "},
    {25014, L" times"},
    {25020, L"By &Week"},
    {25021, L"Repeat every "},
    {25022, L" . week  "},
    {25023, L"Repeat "},
    {25024, L" times"},
    {25030, L"By &Month"},
    {25031, L"Repeat every "},
    {25032, L" . month  "},
    {25033, L"Repeat "},
    {25034, L" times"},
    {25040, L"By &Year"},
    {25041, L"Repeat every"},
    {25042, L" . year  "},
    {25043, L"Repeat "},
    {25044, L" times"},
    {25050, L"By &Easter"},
    {25051, L"Repeat every"},
    {25052, L" . easter"},
    {25053, L"Repeat "},
    {25054, L" times"},
    {25061, L"New activity"},
    {25062, L"Start time"},
    {25063, L"End time"},
    {25064, L"Activity type"},
    {25065, L"Description for this activity"},
    {25066, L"One or more names, where the activity is shown."},
    {25067, L"Show repetition possibilities"},
    {25102, L"Do you want to edit all occurrences of this activity ?\n"
            L"\n"
            L"Click 'Yes' to edit all occurrences.\n"
            L"Click 'No' to edit this occurrence only."},

    {25500, L"Move activity"},
    {25501, L"Copy activity"},
    {25502, L"Do you want to edit the activity for all ressources or just for the selected item?\n"
            L"\n"
            L"Click 'Yes' to change the activity for all items.\n"
            L"Click 'No' to change the activity for this item only."},
    {25510, L"Updating database. Please wait..."},

    {30010, L"10 Hours"},
    {40000, L"Groups"},
    {40010, L"Zoom &in"},
    {40050, L"Enter name of new group"},
    {40051, L"Create copy of existing group"},
    {40052, L"Copy of ressources from existing group"},
    {40053, L"Copy of activity types from existing group"},
    {40054, L"Select group to be deleted"},
    {40100, L"Edit activity type"},
    {40103, L"You have # messages"},
    {40111, L"#1 of #2"},
};

// Used by the dialogs' layouts, free to be reworded.
inline constexpr StringTableEntry kLayoutStrings[] = {
    {1002, L"OK"},
    {1003, L"Cancel"},
    {21004, L"Na&me:"},
    {21005, L"&Groups:"},
    {22005, L"&Role:"},
    {22007, L"&Login:"},
    {22008, L"Color:"},
    {22009, L"Res&ources:"},
    {22010, L"Authorization"},
    {22061, L"Name of the resource"},
    {22062, L"Color of the resource"},
    {22063, L"Authorization of the user"},
    {22064, L"Login name of the user"},
    {22065, L"Synchronize the resource with the mailbox of the login"},
    {22066, L"Resources to choose from"},
    {22507, L"&Other message"},
    {22508, L"Phone message"},
    {22509, L"Written by"},
    {22510, L"Date and time"},
    {22511, L"Message no."},
    {22515, L"Read"},
    {22516, L"Unread"},
    {22519, L"All"},
    {22520, L"C&lose"},
    {22521, L"Move to the top (Alt+Home)"},
    {22522, L"Move up (Alt+Up)"},
    {22523, L"Move down (Alt+Down)"},
    {22524, L"Move to the bottom (Alt+End)"},
    {22525, L"From"},
    {22526, L"Phone No."},
    {22527, L"Concerning"},
    {22531, L"Has phoned"},
    {22532, L"Wants to be phoned back"},
    {22533, L"Will phone again"},
    {22534, L"Other message"},
    {22561, L"The person who phoned"},
    {22562, L"Phone number of the person who phoned"},
    {22563, L"What the message concerns"},
    {23005, L"Color:"},
    {23006, L"Activity &types:"},
    {23061, L"Name of the activity type"},
    {23062, L"Color of the activity type"},
    {23063, L"Activity types to choose from"},
};

} // namespace korvane::test
