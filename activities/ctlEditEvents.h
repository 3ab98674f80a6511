// The dialog of the activity command: when, what, for whom, and how often.
#pragma once

#include "activities/EditEvents.h"
#include "activities/RecurrencePanel.h"
#include "activities/ResourceTree.h"
#include "framework/AppDialog.h"
#include "framework/control/ComboBox.h"
#include "framework/control/DateTimePicker.h"
#include "framework/control/Label.h"
#include "framework/control/Swatch.h"
#include "framework/control/TextBox.h"

#include <vector>

namespace korvane
{

class ctlEditEvents final : public Dialog<ctlEditEvents, EditEvents>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlEditEvents); }

    ctlEditEvents();

private:
    bool load() override;
    void takeValues() override;
    void submitted(bool executed) override { close(!executed); }

    void subscribe();
    void askForOccurrence();
    void Init();
    void addGroup(const EventArguments& group);
    void addName(const EventArguments& name);
    void clearTypes();
    void addType(const EventArguments& type);
    void showFields();
    bool showHeading();
    void chooseType();
    void showTypeColor();
    void layOut();
    void remove();

    Subscription<IGroups> mGroups{this};
    Subscription<INames> mNames{this};
    Subscription<ITypes> mTypes{this};
    Subscription<IEvents> mEvents{this};
    std::vector<long> typeColors_; ///< parallel to the items of cboTypes

    Label lblPrompt{
        *this, {.name = L"lblPrompt", .place = {120, 135, 5400, 210}, .text = L"25001", .toolTip = L"25061"}};
    Label lblHeading{*this, {.name = L"lblHeading", .place = {120, 135, 5400, 210}}};

    Label lblStart{*this, {.name = L"lblStart", .place = {120, 480, 1140, 210}, .text = L"25002"}};
    DateTimePicker dtpStart{*this,
                            {.name = L"dtpStart", .place = {1290, 435, 2430, 315}, .toolTip = L"25062"}};
    Label lblStop{*this, {.name = L"lblStop", .place = {120, 870, 1140, 210}, .text = L"25003"}};
    DateTimePicker dtpStop{*this, {.name = L"dtpStop", .place = {1290, 825, 2430, 315}, .toolTip = L"25063"}};

    Label lblType{*this, {.name = L"lblType", .place = {120, 1260, 1140, 210}, .text = L"25004"}};
    ComboBox cboTypes{*this, {.name = L"cboTypes", .place = {1290, 1215, 2430, 315}, .toolTip = L"25064"}};
    Swatch shpType{*this, {.name = L"shpType", .place = {3795, 1215, 315, 315}}};

    Label lblText{*this, {.name = L"lblText", .place = {120, 1650, 1140, 210}, .text = L"25005"}};
    TextBox txtText{*this,
                    {.name = L"txtText", .place = {1290, 1605, 4230, 930}, .toolTip = L"25065"},
                    TextBox::Kind::lines};

    Label lblMembers{*this, {.name = L"lblMembers", .place = {120, 2670, 1140, 210}, .text = L"25006"}};
    ResourceTree tree{*this, {.name = L"tvwNames", .place = {1290, 2625, 4230, 1950}, .toolTip = L"25066"}};

    RecurrencePanel recurrence{
        *this, {1290, 4680, 4230, 1515}, [this]() -> EditEvents& { return command(); }, [this] { layOut(); }};

    CommandFrame fraCommands{*this, {0, 4935, 5640, 615}, 1365};
    Button cmdRemove{fraCommands, {.name = L"cmdRemove", .place = {4395, 120, 1125, 345}, .text = L"25009"}};
};

} // namespace korvane
