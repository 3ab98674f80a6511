#include "demo/host/GroupList.h"

#include "demo/host/Display.h"
#include "demo/host/Window.h"
#include "framework/com/Module.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

enum Column
{
    columnName,
    columnId
};

void addColumn(HWND list, int index, const wchar_t* heading, int width, int format)
{
    std::wstring text = heading;
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = format;
    column.pszText = text.data();
    column.cx = MulDiv(width, screenDpi(), 96);
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

} // namespace

// The list holds no texts of its own but asks for what it shows: a database with many groups costs no more.
GroupList::GroupList(HWND parent, UINT refreshMessage)
    : parent_(parent), refreshMessage_(refreshMessage),
      list_(CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Groups",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL |
                                LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                            0, 0, 0, 0, parent, nullptr, module::instance(), nullptr))
{
    if (!list_)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    addColumn(list_, columnName, L"Group", 0, LVCFMT_LEFT);
    addColumn(list_, columnId, L"Number", 56, LVCFMT_RIGHT);
}

void GroupList::follow(const ComPtr<IRoot>& root)
{
    announced_.connect(root, {.clear =
                                  [this] {
                                      groups_.clear();
                                      refreshLater();
                                  },
                              .add =
                                  [this](const EventArguments& group) {
                                      groups_.push_back({group.number(0), std::wstring(group.text(1).view()),
                                                         group.number(2)});
                                      refreshLater();
                                  }});
    load();
    refresh();
}

void GroupList::load()
{
    announced_.load(&IGroups::Load);
}

void GroupList::place(const RECT& area) noexcept
{
    MoveWindow(list_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
    const int room = static_cast<int>(area.right - area.left) - ListView_GetColumnWidth(list_, columnId) -
                     GetSystemMetrics(SM_CXVSCROLL) - 2 * GetSystemMetrics(SM_CXEDGE);
    ListView_SetColumnWidth(list_, columnName, std::max(room, 0));
}

long GroupList::selected() const noexcept
{
    return selected_;
}

void GroupList::select(long id) noexcept
{
    const auto group =
        std::find_if(groups_.begin(), groups_.end(), [&](const Group& each) { return each.id == id; });
    ListView_SetItemState(list_, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (group == groups_.end())
        return;
    const auto index = static_cast<int>(group - groups_.begin());
    ListView_SetItemState(list_, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list_, index, FALSE);
}

void GroupList::selectFirst() noexcept
{
    constexpr long builtIn = 1;
    const auto group =
        std::find_if(groups_.begin(), groups_.end(), [](const Group& each) { return each.flags != builtIn; });
    if (group != groups_.end())
        select(group->id);
}

/// Each change announces all groups anew: the list follows once, when the announcements are through.
void GroupList::refreshLater() noexcept
{
    if (!refreshPending_)
        refreshPending_ = PostMessageW(parent_, refreshMessage_, 0, 0) != FALSE;
}

void GroupList::refresh()
{
    refreshPending_ = false;
    const long selected = selected_;
    ListView_SetItemCountEx(list_, static_cast<int>(groups_.size()), LVSICF_NOINVALIDATEALL);
    InvalidateRect(list_, nullptr, FALSE);
    select(selected);
}

LRESULT GroupList::notified(NMHDR& notification)
{
    if (notification.code == LVN_GETDISPINFOW)
    {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
        const auto index = static_cast<std::size_t>(item.iItem);
        if ((item.mask & LVIF_TEXT) && index < groups_.size())
        {
            const std::wstring text =
                item.iSubItem == columnId ? std::to_wstring(groups_[index].id) : groups_[index].name;
            item.pszText[text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1)] = L'\0';
        }
    }
    else if (notification.code == LVN_ITEMCHANGED)
    {
        const int index = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
        const bool known = index >= 0 && static_cast<std::size_t>(index) < groups_.size();
        selected_ = known ? groups_[static_cast<std::size_t>(index)].id : 0;
        if (onSelect)
            onSelect();
    }
    return 0;
}

} // namespace korvane::host
