#include "masterdata/ArrangeDialog.h"

#include "framework/AppCommand.h"
#include "framework/control/Keys.h"

#include <algorithm>

namespace korvane
{

namespace
{

/// How the selected entry moves: by a button, or by a key with Alt. The picture has the id of the text.
struct Move
{
    const wchar_t* button;
    const wchar_t* text;
    long picture;
    WORD key;
};

constexpr Move moves[] = {{L"cmdUpUp", L"22521", 22521, VK_HOME},
                          {L"cmdUp", L"22522", 22522, VK_UP},
                          {L"cmdDown", L"22523", 22523, VK_DOWN},
                          {L"cmdDownDown", L"22524", 22524, VK_END}};

} // namespace

ArrangeDialog::ArrangeDialog(REFCLSID classId, long titleId, float width, float height, const wchar_t* list,
                             const wchar_t* scope)
    : AppDialog(classId, titleId, width, height), scope_(scope),
      lblArrange(*this, {.name = L"lblArrange", .place = {120, 120, 3465, 210}, .text = list}),
      cmdMove(makeControls<std::size(moves)>([this](int index) {
          const Move& move = moves[index];
          const float top = 375 + 435 * static_cast<float>(index);
          return Button(
              *this,
              {.name = move.button, .place = {3705, top, 375, 375}, .text = move.text, .toolTip = move.text},
              move.picture);
      }))
{
    lstArrange.onKeyDown = [this](WORD key, DWORD modifiers) { return moveByKey(key, modifiers); };
    lstArrange.onDrag = [this](int target) { moveEntry(target); };
    for (std::size_t kind = 0; kind < cmdMove.size(); ++kind)
        cmdMove[kind].onClick = [this, kind] { move(kind); };
}

bool ArrangeDialog::load()
{
    const auto command = commandView(); // the host may take it away in a call
    const Arrangement& arranged = arrangement();
    inScope(arranged.Root, scope_, [&] { fetch(command, &IAppCommand::Prepare); });
    const bool arranges = fetch(command, &IAppCommand::get_Operation) == operationChange;
    {
        const ListBox::Filling filling(lstArrange);
        lstArrange.Clear();
        for (long index = 0; arranges && index < arranged.items().count(); ++index)
            lstArrange.AddItem(arranged.items().at(index).text.get(), arranged.items().at(index).id);
    }
    // The designed size, in the font that the dialog has by now.
    setSize(fitToPixels(designWidth * fraCommands.Width() / commandsWidth, dpi()),
            fitToPixels(designHeight * fraCommands.Height() / commandsHeight, dpi()));
    return arranges;
}

void ArrangeDialog::takeValues()
{
    for (int index = 0; index < lstArrange.ListCount(); ++index)
        arrangement().setPos(index, lstArrange.ItemData(index));
}

void ArrangeDialog::shown()
{
    if (lstArrange.ListCount() <= 0)
        return;
    lstArrange.setListIndex(0);
    lstArrange.setFocus();
}

/// The list takes what the buttons leave.
void ArrangeDialog::resized()
{
    const float margin = lstArrange.Left();
    const float right = Width() - margin - cmdMove[0].Width();
    for (Button& button : cmdMove)
        button.setLeft(right);
    fraCommands.setLeft(Width() - fraCommands.Width());
    fraCommands.setTop(Height() - fraCommands.Height());
    lblArrange.setWidth(right - 2 * margin);
    lstArrange.setPlace({margin, lstArrange.Top(), right - 2 * margin, fraCommands.Top() - lstArrange.Top()});
}

Extent ArrangeDialog::minimumSize() const noexcept
{
    return {fraCommands.Width() + lstArrange.Left(), cmdMove.back().bottom() + fraCommands.Height()};
}

bool ArrangeDialog::moveByKey(WORD key, DWORD modifiers)
{
    const auto* const found =
        std::find_if(std::begin(moves), std::end(moves), [&](const Move& move) { return move.key == key; });
    if ((modifiers & altKey) == 0 || found == std::end(moves))
        return false;
    move(static_cast<std::size_t>(found - moves));
    return true;
}

void ArrangeDialog::move(std::size_t kind)
{
    const int selected = lstArrange.ListIndex();
    const int targets[] = {0, selected - 1, selected + 1, lstArrange.ListCount()};
    moveEntry(targets[kind]);
}

/// Moves the selected entry, if there is one, as near to a place as the list has one.
void ArrangeDialog::moveEntry(int target)
{
    const int selected = lstArrange.ListIndex();
    if (selected >= 0)
        lstArrange.MoveItem(selected, std::clamp(target, 0, lstArrange.ListCount() - 1));
}

} // namespace korvane
