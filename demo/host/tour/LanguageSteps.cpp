#include "demo/host/tour/LanguageSteps.h"

#include "demo/host/tour/ActivityPage.h"
#include "demo/host/tour/Captions.h"
#include "demo/host/tour/ItemPage.h"
#include "demo/host/tour/MessagePage.h"
#include "demo/host/tour/ScheduleSights.h"
#include "framework/com/Boundary.h"

namespace korvane::host
{

namespace
{

using Deeds = std::vector<Deed>;

constexpr Text ben = L"Ben Carter";

// In Danish.
constexpr Text groupTitle = L"Gruppe";
constexpr Text resourceTitle = L"Ressource";
constexpr Text typesTitle = L"Aktivitetstyper";
constexpr Text messageTitle = L"Besked";
constexpr Text activityTitle = L"Aktivitet";
constexpr Text moveTitle = L"Flyt aktivitet";
constexpr Text questionTitle = L"Rediger ";
constexpr Text danishErrorTitle = L"Fejl";

/// The control's own window in the host's.
HWND controlIn(HWND dialog)
{
    return GetWindow(dialog, GW_CHILD);
}

/// Alt with a letter. One that is not on this keyboard comes as the message that another keyboard's key gives: sent as a
/// character with Alt, Wine makes it another letter.
constexpr Word accessKey{[](Visitor& visitor, wchar_t letter) {
    if (letter <= L'Z')
        visitor.press(std::wstring(L"Alt+") + letter);
    else
        PostMessageW(focusIn(visitor.mainWindow()), WM_SYSCHAR, letter, 1L << 29);
}};
/// Goes on in another language, which the menu has at a place, and then calls the way out in it.
constexpr Word speak{[](Visitor& visitor, int place, const std::wstring& exit) {
    chooseByKeys(L"Alt+V", L"L")(visitor);
    press(L"Down", place)(visitor);
    visitor.press(L"Enter");
    waitFor(L"the menu speaks the language", [&] {
        wchar_t text[64]{};
        GetMenuStringW(GetMenu(visitor.mainWindow()), menuExit, text, ARRAYSIZE(text), MF_BYCOMMAND);
        return std::wstring(text).starts_with(exit);
    });
}};
/// Each caption of the dialog has its room, and nothing covers another thing.
constexpr Word canBeRead{[](Visitor& visitor, Text pictureName) {
    visitor.picture(visitor.dialog(), pictureName);
    std::vector<std::wstring> unreadable;
    std::optional<Failure> failure;
    visitor.window().invoke(
        [&] { failure = attempt([&] { unreadable = unreadableOn(controlIn(visitor.dialog())); }); });
    if (failure)
        throw *failure;
    if (!unreadable.empty())
        throw tourFailure(unreadable.front());
}};
/// The access key of each label leads to what it stands before; further labels may stand between them.
constexpr Word labelsLead{[](Visitor& visitor) {
    const auto parts = partsOf(controlIn(visitor.dialog()));
    const auto isLabel = [](HWND part) { return isOfClass(part, L"Static"); };
    for (auto label = parts.begin(); label != parts.end(); ++label)
    {
        const auto next = std::find_if_not(label, parts.end(), isLabel);
        const wchar_t letter = isLabel(*label) ? accessKeyOf(textOf(*label)) : L'\0';
        if (letter == 0 || next == parts.end() || !IsWindowEnabled(*next))
            continue;
        const HWND named = *next;
        accessKey(letter)(visitor);
        waitFor(textOf(*label) + L" leads on", [&] {
            const HWND focus = focusIn(visitor.mainWindow());
            return focus == named || IsChild(named, focus);
        });
    }
}};
/// The access key of a button that is checked leads to it and checks it.
constexpr Word checks{[](Visitor& visitor, wchar_t letter) {
    const auto parts = partsOf(controlIn(visitor.dialog()));
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [&](HWND part) { return accessKeyOf(textOf(part)) == letter; });
    expect(found != parts.end(), std::wstring(L"a caption with the access key ") + letter);
    accessKey(letter)(visitor);
    waitFor(textOf(*found) + L" is checked", [&] {
        return focusIn(visitor.mainWindow()) == *found && ask(*found, BM_GETCHECK) == BST_CHECKED;
    });
}};
constexpr Word showsInBox{[](Visitor& visitor, const std::wstring& text) {
    const auto told = visibleChildren(visitor.front(), L"Static");
    expect(std::any_of(told.begin(), told.end(), [&](HWND part) { return textOf(part).starts_with(text); }),
           quoted(text) + L" in the box");
}};

/// One layout of a dialog: opened by the menu, read, tried, and left.
struct Layout
{
    Text menu;
    Text item;
    Text title;
    Text pictureName;
};

Deeds visit(const std::vector<Layout>& layouts)
{
    Deeds deeds;
    for (const auto& [menu, item, title, pictureName] : layouts)
        for (const Deed& deed : Deeds{chooseByKeys(menu, item), opens(title), canBeRead(pictureName),
                                      labelsLead(), press(L"Esc"), endsInSchedule()})
            deeds.push_back(deed);
    return deeds;
}

} // namespace

Chapter languageChapter()
{
    const OleDate nine = tourTime(0, 9);
    // clang-format off
    return {L"In Danish", {
        {L"The language is chosen by keyboard",
         {startsUp(), goesTo(ben, nine), speak(1, L"&Afslut"), picture(L"danish-window")}},
        {L"Groups", visit({{L"Alt+G", L"N", groupTitle, L"danish-group-new"},
                           {L"Alt+G", L"R", groupTitle, L"danish-group-rename"},
                           {L"Alt+G", L"D", groupTitle, L"danish-group-delete"}})},
        {L"Resources", visit({{L"Alt+R", L"N", resourceTitle, L"danish-resource-new"},
                              {L"Alt+R", L"E", resourceTitle, L"danish-resource-edit"},
                              {L"Alt+R", L"V", resourceTitle, L"danish-resource-remove"}})},
        {L"Activity types", visit({{L"Alt+T", L"N", typesTitle, L"danish-type-new"},
                                   {L"Alt+T", L"R", typesTitle, L"danish-type-remove"}})},
        {L"A question before something entered is lost",
         {chooseByKeys(L"Alt+T", L"E"), opens(typesTitle), clickItem(itemPage::list, L"Meeting"),
          shows(itemPage::name, L"Meeting"), canBeRead(L"danish-type-edit"), labelsLead(),
          fill(itemPage::name, L"M"), clickItem(itemPage::list, L"Training"), opensBox(questionTitle),
          showsInBox(L"Hvis du forts\u00E6tter"), picture(L"danish-type-question"),
          answer(questionTitle, IDNO, L"No"), press(L"Esc"), endsInSchedule()}},
        {L"The order", visit({{L"Alt+N", L"G", groupTitle, L"danish-arrange-groups"},
                              {L"Alt+N", L"R", resourceTitle, L"danish-arrange-resources"},
                              {L"Alt+N", L"T", typesTitle, L"danish-arrange-types"}})},
        {L"A message, which is refused, and the information",
         {chooseByKeys(L"Alt+R", L"L"), opens(messageTitle), canBeRead(L"danish-message"), labelsLead(),
          checks(L'V'), checks(L'R'), checks(L'A'), checks(L'H'), press(L"Enter"),
          tellsError(L"Tekstfeltet 'Vedr\u00F8rende' skal udfyldes", L"danish-error", danishErrorTitle),
          accessKey(L'I'), sees(L"the rows of the information", [](Visitor& visitor) {
              waitFor(L"the page is turned",
                      [&] { return visibleChildren(visitor.dialog(), L"KorvaneGrid").size() == 1; });
              return true; }),
          canBeRead(L"danish-info"), press(L"Esc"), endsInSchedule()}},
        {L"An activity with all kinds of repetition, also by a key beyond English",
         {openSlot(ben, nine), opens(activityTitle), canBeRead(L"danish-activity"), labelsLead(),
          checks(L'G'), checks(L'D'), canBeRead(L"danish-activity-day"), checks(L'U'), canBeRead(L"danish-activity-week"),
          checks(L'M'), canBeRead(L"danish-activity-month"), checks(L'P'), canBeRead(L"danish-activity-easter"),
          checks(L'\u00C5'), canBeRead(L"danish-activity-year"),
          accessKey(L'V'), press(L"Down"), press(L"Space"), click(okButton), endsInSchedule()}},
        {L"The questions before an activity is changed or moved",
         {press(L"Enter"), opensBox(activityTitle), showsInBox(L"Vil du redigere alle forekomster"),
          picture(L"danish-activity-question"), answer(activityTitle, IDYES, L"Yes"), opens(activityTitle),
          canBeRead(L"danish-activity-change"), press(L"Esc"), endsInSchedule(),
          press(L"Ctrl+M"), press(L"Right"), press(L"Enter"), opensBox(moveTitle),
          showsInBox(L"Vil du redigere aktiviteten for alle"), picture(L"danish-move-question"),
          answer(moveTitle, IDCANCEL, L"Cancel"), endsInSchedule()}},
        {L"Messages to read",
         {logInAs(L"employee"), hasTitle(L"Korvane - employee - Du har 2 beskeder"), press(L"Ctrl+R"),
          opens(messageTitle), canBeRead(L"danish-viewer"), press(L"Esc"), endsInSchedule()}},
        {L"In English again, after dialogs in Danish",
         {speak(0, L"E&xit"), press(L"Ctrl+R"), opens(viewerPage::title), canBeRead(L"english-viewer"),
          press(L"Esc"), endsInSchedule()}},
        {L"Exit by the menu", {leave()}},
    }, [](const Visitor&) { return std::vector<std::wstring>(); }};
    // clang-format on
}

} // namespace korvane::host
