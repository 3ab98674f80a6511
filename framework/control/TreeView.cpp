#include "framework/control/TreeView.h"

#include "framework/control/DialogWindow.h"

#include <windowsx.h>

#include <new>

namespace korvane
{

namespace
{

constexpr UINT uncheckedImage = 1;
constexpr UINT checkedImage = 2;

UINT stateImage(bool checked) noexcept
{
    return INDEXTOSTATEIMAGEMASK(checked ? checkedImage : uncheckedImage);
}

} // namespace

HWND TreeView::createWindow(HWND parent, int id)
{
    const HWND tree = makeWindow(parent, id, WC_TREEVIEWW,
                                 WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                                     TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
                                 WS_EX_CLIENTEDGE);
    // Set now, as the platform asks for: a tree that is created with it does not get its check boxes.
    SetWindowLongPtrW(tree, GWL_STYLE, GetWindowLongPtrW(tree, GWL_STYLE) | TVS_CHECKBOXES);
    return tree;
}

TreeView::Node TreeView::AddNode(Node parent, BSTR text, const void* data, bool checked)
{
    TVINSERTSTRUCTW insertion{};
    insertion.hParent = parent ? parent : TVI_ROOT;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE;
    wchar_t none[] = L"";
    insertion.item.pszText = text ? text : none;
    insertion.item.lParam = reinterpret_cast<LPARAM>(data);
    insertion.item.stateMask = TVIS_STATEIMAGEMASK;
    insertion.item.state = stateImage(checked);
    setting_ = true;
    auto* const node = reinterpret_cast<Node>(send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion)));
    setting_ = false;
    if (!node)
        throw std::bad_alloc();
    return node;
}

void TreeView::Clear()
{
    Remove(TVI_ROOT);
}

void TreeView::Remove(Node node)
{
    setting_ = true; // the selection that it moves is none of the user's
    send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(node));
    setting_ = false;
    toggled_ = toShow_ = nullptr;
}

void* TreeView::data(Node node) const noexcept
{
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = node;
    send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return reinterpret_cast<void*>(item.lParam);
}

bool TreeView::Checked(Node node) const noexcept
{
    const auto state = send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(node), TVIS_STATEIMAGEMASK);
    return (state & TVIS_STATEIMAGEMASK) == stateImage(true);
}

void TreeView::setChecked(Node node, bool checked)
{
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_STATE;
    item.hItem = node;
    item.stateMask = TVIS_STATEIMAGEMASK;
    item.state = stateImage(checked);
    setting_ = true;
    send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    setting_ = false;
}

void TreeView::select(Node node) noexcept
{
    send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node));
    toShow_ = node;
    dialog_.layoutChanged();
}

void TreeView::placed()
{
    const Node node = std::exchange(toShow_, nullptr);
    if (!node)
        return;
    send(WM_VSCROLL, SB_TOP); // wherever the selection has led while the tree had no place
    send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(node));
    send(WM_HSCROLL, SB_LEFT); // the check boxes of a long text are to be seen too
}

/// The platform makes the pictures of the check boxes and leaves them to the tree's owner.
void TreeView::closing() noexcept
{
    const LRESULT images = send(TVM_SETIMAGELIST, TVSIL_STATE, 0);
    if (images != 0)
        ImageList_Destroy(reinterpret_cast<HIMAGELIST>(images));
}

/// The tree tells of a click or key before it toggles the node: it is asked once that is over.
LRESULT TreeView::notified(const NMHDR& notification)
{
    if (!setting_)
        posted(0); // what is still to be asked for has happened by now
    switch (notification.code)
    {
    case NM_CLICK:
    case NM_DBLCLK:
        toggled_ = nodeUnderPointer();
        break;
    case TVN_KEYDOWN:
        if (reinterpret_cast<const NMTVKEYDOWN&>(notification).wVKey == VK_SPACE)
            toggled_ = reinterpret_cast<Node>(send(TVM_GETNEXTITEM, TVGN_CARET));
        break;
    case TVN_ITEMCHANGEDW:
        // Assistive technology toggles without click or key.
        if (!setting_)
            toggled_ = reinterpret_cast<const NMTVITEMCHANGE&>(notification).hItem;
        break;
    default:
        return Control::notified(notification);
    }
    if (toggled_)
        dialog_.post(*this, 0);
    return 0;
}

void TreeView::posted(LPARAM)
{
    if (const Node node = std::exchange(toggled_, nullptr); node && onNodeCheck)
        raise([&] { onNodeCheck(node); });
}

TreeView::Node TreeView::nodeUnderPointer() const noexcept
{
    const DWORD position = GetMessagePos();
    TVHITTESTINFO hit{};
    hit.pt = {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    ScreenToClient(window(), &hit.pt);
    send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & TVHT_ONITEMSTATEICON) != 0 ? hit.hItem : nullptr;
}

} // namespace korvane
