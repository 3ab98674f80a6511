// The groups of the database in a list, kept current by the data layer's events.
#pragma once

#include "framework/DataLayer.h"

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace korvane::host
{

class GroupList
{
public:
    /// Makes the list on a window, which forwards the list's notifications and the refresh message to it.
    GroupList(HWND parent, UINT refreshMessage);

    /// The user, or the program, has selected another group.
    std::function<void()> onSelect;

    /// Shows the groups of a database from now on.
    void follow(const ComPtr<IRoot>& root);
    /// Reads them again.
    void load();

    HWND handle() const noexcept { return list_; }
    void place(const RECT& area) noexcept;

    /// Id of the selected group; 0 for none.
    long selected() const noexcept;
    void select(long id) noexcept;
    /// Selects the first group that is not built into the system.
    void selectFirst() noexcept;

    /// Shows what the events have announced.
    void refresh();
    LRESULT notified(NMHDR& notification);

private:
    struct Group
    {
        long id;
        std::wstring name;
        long flags;
    };

    void refreshLater() noexcept;

    HWND parent_;
    UINT refreshMessage_;
    HWND list_;
    Subscription<IGroups> announced_;
    std::vector<Group> groups_;
    long selected_ = 0;
    bool refreshPending_ = false;
};

} // namespace korvane::host
