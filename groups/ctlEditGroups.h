// The dialog of the group command: a name for a new group, a list for deleting one, both for renaming.
#pragma once

#include "framework/AppDialog.h"
#include "framework/control/Label.h"
#include "framework/control/ListBox.h"
#include "framework/control/TextBox.h"
#include "groups/EditGroups.h"

namespace korvane
{

class ctlEditGroups final : public Dialog<ctlEditGroups, EditGroups>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlEditGroups); }

    ctlEditGroups();

private:
    bool load() override;
    void takeValues() override;

    void begin();
    bool prepareLayout();
    void layOut(long caption, std::initializer_list<Frame*> frames);
    void resetForNew();
    void Init();
    void addGroup(const EventArguments& group);
    void markSelected();
    void selectGroup();
    void confirmDeletion();
    void requireSelected() const;

    /// What has come of the last click on the list.
    enum class Click
    {
        led,     ///< to its group; also before the first one
        pending, ///< the group is being read
        refused
    };

    Subscription<IGroups> mGroups{this};
    long selected_ = 0; ///< the group that the user has selected; 0 for none
    Click click_ = Click::led;

    Label lblGroups{*this, {.name = L"lblGroups", .place = {120, 165, 1185, 210}}};

    Frame fraEdit{*this, {.name = L"fraEdit", .place = {1320, 0, 3720, 465}}};
    Label lblName{fraEdit, {.name = L"lblName", .place = {0, 165, 600, 210}, .text = L"21004"}};
    TextBox txtName{fraEdit, {.name = L"txtName", .place = {630, 120, 2970, 315}}};

    Frame fraGroups{*this, {.name = L"fraGroups", .place = {1320, 465, 3720, 2205}}};
    ListBox lstGroups{fraGroups, {.name = L"lstGroups", .place = {0, 120, 3600, 2085}}};

    CommandFrame fraCommands{*this, {0, 2670, 5040, 615}};
};

} // namespace korvane
