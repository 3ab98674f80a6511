#include "demo/host/tour/MessageSteps.h"

#include "demo/host/tour/MessagePage.h"
#include "demo/host/tour/Roster.h"
#include "demo/host/tour/ScheduleSights.h"

namespace korvane::host
{

namespace
{

using Rows = std::vector<std::wstring>;

// Of the sample. Emily's login is "employee", and two messages wait for her.
constexpr Text staff = L"Staff";
constexpr Text emily = L"Emily Stone";
constexpr Text jonas = L"Jonas Weber";
constexpr Text brochures = L"The brochures are ready to be picked up.";
constexpr Text parcel = L"A parcel has come for you.";

constexpr Text offer = L"The offer for the new van";

/// Sooner or later, a resource has these information rows.
constexpr Word hasInfo{[](Visitor& visitor, Text resource, const Rows& rows) {
    waitFor(resource + std::wstring(L" has these information rows"),
            [&] { return visitor.roster().info(staff, resource) == rows; });
}};
constexpr Word somebodyElseLeavesAMessage{[](Visitor& visitor, Text resource, Text about) {
    visitor.roster().leaveMessage(staff, resource, about);
}};

std::vector<std::wstring> shownInfo(const Visitor& visitor)
{
    std::vector<std::wstring> lines;
    const Roster roster = visitor.roster();
    for (const RosterItem& item : roster.resources(staff))
    {
        lines.push_back(shown(item));
        for (const std::wstring& row : roster.info(staff, item.name))
            lines.push_back(L"  " + row);
    }
    return lines;
}

} // namespace

Chapter messageChapter()
{
    const Text dialog = messagePage::title;
    const Text viewer = viewerPage::title;
    using viewerPage::showsMessage;
    // clang-format off
    return {L"A phone call", {
        {L"A message for a colleague, from the menu of her row: without a subject it is refused",
         {startsUp(), hasTitle(L"Korvane - admin"), rightClickName(emily), picture(L"message-menu"), press(L"L"),
          opens(dialog), picture(L"message-empty"), click(messagePage::wantsCall),
          fill(messagePage::contact, L"Ms Reyes"), fill(messagePage::phone, L"555 0123"), click(okButton),
          tellsError(L"Text box 'Concerning' is required", L"message-refused"),
          shows(messagePage::contact, L"Ms Reyes"), fill(messagePage::subject, offer), picture(L"message"),
          click(okButton), endsInSchedule(), calls(L"Messages.Add"), hasTitle(L"Korvane - admin")}},
        {L"A resource without a login cannot read: its information comes up instead",
         {clickName(jonas), press(L"Ctrl+L"), opens(dialog), sees(L"the rows of the information", [](Visitor& visitor) {
              return IsWindowVisible(visitor.find(messagePage::rows)) != FALSE; }),
          press(L"Alt+M"), tellsError(L"This ressource has no login name", L"message-no-login"),
          press(L"Esc"), endsInSchedule(), callsNot(L"Messages.Add")}},
        {L"Information: the labels come from the shared folder, the values are typed, with several lines",
         {clickName(jonas), press(L"Ctrl+I"), opens(dialog), press(L"Ctrl+Tab"), tabTo(messagePage::rows),
          picture(L"info-defaults"), press(L"Right"), writes(L"555 0155"), press(L"Down"), writes(L"555 0199"),
          press(L"Down"), press(L"F2"), picture(L"info-editing"), press(L"Esc"), press(L"F2"), press(L"Down"), press(L"F2"),
          press(L"Down"), writes(L"12 Mill Road"), press(L"Ctrl+Enter"), writes(L"Oakham"), picture(L"info-lines"),
          click(okButton), endsInSchedule(),
          hasInfo(jonas, Rows{L"Mobile phone: 555 0155", L"Private phone: 555 0199", L"Fax: ", L"E-mail: ",
                              L"Address: 12 Mill Road\r\nOakham", L"Birthday: "})}},
        {L"The colleague logs in: she is told what waits for her, also while she is there",
         {logInAs(L"employee"), hasTitle(L"Korvane - employee - You have 3 messages"), picture(L"notice"),
          somebodyElseLeavesAMessage(emily, L"Somebody waits in the hall"),
          hasTitle(L"Korvane - employee - You have 4 messages")}},
        {L"She reads them, the first that is unread first",
         {press(L"Ctrl+R"), opens(viewer), showsMessage(brochures, L"1", L"4", L"3"), picture(L"viewer"),
          press(L"Alt+N"), showsMessage(parcel, L"2", L"4", L"2"), press(L"Alt+N"),
          showsMessage(offer, L"3", L"4", L"1"), shows(viewerPage::contact, L"Ms Reyes"),
          press(L"Alt+P"), showsMessage(parcel, L"2", L"4", L"1"),
          hasTitle(L"Korvane - employee - You have one message"), press(L"Esc"), endsInSchedule()}},
        {L"She deletes the middle one, and the last",
         {press(L"Ctrl+R"), opens(viewer), showsMessage(L"Somebody waits in the hall", L"4", L"4", L"0"),
          press(L"Alt+P"), press(L"Alt+P"), showsMessage(parcel, L"2", L"4", L"0"),
          click(viewerPage::deleteButton), showsMessage(offer, L"2", L"3", L"0"), press(L"Alt+N"),
          showsMessage(L"Somebody waits in the hall", L"3", L"3", L"0"), press(L"Alt+T"),
          showsMessage(offer, L"2", L"2", L"0"), picture(L"viewer-deleted"), calls(L"Messages.Remove"),
          press(L"Alt+L"), endsInSchedule(), hasTitle(L"Korvane - employee")}},
        {L"Information again: in another order, by keys and by a button",
         {logInAs(L"admin"), clickName(jonas), press(L"Ctrl+I"), opens(dialog), press(L"Ctrl+Tab"),
          tabTo(messagePage::rows), press(L"Alt+Down"), press(L"Alt+Down"), click(messagePage::moveUp),
          picture(L"info-order"), click(okButton), endsInSchedule(),
          hasInfo(jonas, Rows{L"Private phone: 555 0199", L"Mobile phone: 555 0155", L"Fax: ", L"E-mail: ",
                              L"Address: 12 Mill Road\r\nOakham", L"Birthday: "})}},
        {L"Exit by the menu", {leave()}},
    }, &shownInfo};
    // clang-format on
}

} // namespace korvane::host
