// The dialog of the info command: a page for a phone message, and a page for the information rows of the resource.
#pragma once

#include "framework/AppDialog.h"
#include "framework/control/ControlArray.h"
#include "framework/control/Label.h"
#include "framework/control/OptionButton.h"
#include "framework/control/TabStrip.h"
#include "framework/control/TextBox.h"
#include "messages/InfoGrid.h"
#include "messages/InfoMessage.h"

namespace korvane
{

class ctlInfoMessage final : public Dialog<ctlInfoMessage, InfoMessage>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlInfoMessage); }

    ctlInfoMessage();

private:
    static constexpr const wchar_t* keyMessage = L"MESSAGE";
    static constexpr const wchar_t* keyInfo = L"INFO";
    static constexpr Place page{120, 585, 6000, 3255};

    bool load() override;
    void takeValues() override;

    void showCommand();
    bool hasLogin();
    bool isOnInfo() const { return tabInfoMsg.SelectedKey() == keyInfo; }
    void turnPage();
    void loadInfo();
    void showPage();

    int loads_ = 0;           ///< how often the dialog has been filled
    bool noLogin_ = false;    ///< the resource cannot receive messages
    bool infoLoaded_ = false; ///< the grid has been filled

    TabStrip tabInfoMsg{
        *this, {.name = L"tabInfoMsg", .place = {120, 120, 6000, 360}}, {{keyMessage, L""}, {keyInfo, L""}}};

    Frame fraInsertMessage{*this, {.name = L"fraInsertMessage", .place = page}};
    Label lblHeader{fraInsertMessage, {.name = L"lblHeader", .place = {0, 0, 6000, 210}}, Label::Kind::data};
    ControlArray<OptionButton, 4> optType; ///< each with its label as its caption, which can be clicked too
    Label lblFrom{fraInsertMessage, {.name = L"lblFrom", .place = {0, 1050, 1200, 210}, .text = L"22506"}};
    TextBox txtContact{fraInsertMessage,
                       {.name = L"txtContact", .place = {1260, 1005, 4740, 315}, .toolTip = L"22561"}};
    Label lblTlf{fraInsertMessage, {.name = L"lblTlf", .place = {0, 1425, 1200, 210}, .text = L"22504"}};
    TextBox txtTlf{fraInsertMessage,
                   {.name = L"txtTlf", .place = {1260, 1380, 4740, 315}, .toolTip = L"22562"}};
    Label lblAbout{fraInsertMessage, {.name = L"lblAbout", .place = {0, 1800, 1200, 210}, .text = L"22505"}};
    TextBox txtAbout{fraInsertMessage,
                     {.name = L"txtAbout", .place = {1260, 1755, 4740, 1500}, .toolTip = L"22563"},
                     TextBox::Kind::lines};

    InfoGrid info{*this, page};

    CommandFrame fraCommands{*this, {0, 3945, 6240, 615}};
};

} // namespace korvane
