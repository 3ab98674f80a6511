// The message viewer: the messages that were left for a resource, one at a time.
#pragma once

#include "framework/AppDialog.h"
#include "framework/control/ControlArray.h"
#include "framework/control/Label.h"
#include "framework/control/OptionButton.h"
#include "framework/control/TextBox.h"
#include "messages/MessageList.h"
#include "messages/ShowMessage.h"

namespace korvane
{

class ctlShowMessage final : public Dialog<ctlShowMessage, ShowMessage>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlShowMessage); }

    ctlShowMessage();

private:
    bool load() override;
    void takeValues() override {} // there is nothing to enter
    void submitted(bool executed) override;

    void listen();
    void addMessage(long id, bool read);
    void show(long id);
    void fetchAndShow(long id);
    void showNothing();
    void showKind(long kind);
    void showCounts();
    void enableButtons();
    void remove();

    static constexpr int kinds = 4;

    Subscription<IMessages> mMessages{this};
    MessageList list_;
    long removed_ = 0; ///< the message that the container is asked to delete

    Frame fraShowMessage{*this, {.name = L"fraShowMessage", .place = {0, 0, 6360, 4695}}};

    Label lblActiveCaption{fraShowMessage, {.place = {120, 150, 1140, 210}, .text = L"22511"}};
    Label lblActive{fraShowMessage, {.name = L"lblActive", .place = {1335, 150, 690, 210}}};
    Label lblAllCaption{fraShowMessage, {.place = {2055, 150, 390, 210}, .text = L"22519"}};
    Label lblAll{fraShowMessage, {.name = L"lblAll", .place = {2475, 150, 690, 210}}};
    Label lblReadCaption{fraShowMessage, {.place = {3240, 150, 540, 210}, .text = L"22515"}};
    Label lblRead{fraShowMessage, {.name = L"lblRead", .place = {3810, 150, 690, 210}}};
    Label lblUnreadCaption{fraShowMessage, {.place = {4575, 150, 720, 210}, .text = L"22516"}};
    Label lblUnread{fraShowMessage, {.name = L"lblUnread", .place = {5325, 150, 690, 210}}};

    Label lblFrom{fraShowMessage, {.place = {120, 525, 1140, 210}, .text = L"22509"}};
    TextBox txtFrom{fraShowMessage, {.name = L"txtFrom", .place = {1335, 480, 4905, 315}}};
    Label lblDtg{fraShowMessage, {.place = {120, 915, 1140, 210}, .text = L"22510"}};
    TextBox txtDtg{fraShowMessage, {.name = L"txtDtg", .place = {1335, 870, 4905, 315}}};
    Label lblContact{fraShowMessage, {.place = {120, 1305, 1140, 210}, .text = L"22525"}};
    TextBox txtContact{fraShowMessage, {.name = L"txtContact", .place = {1335, 1260, 4905, 315}}};
    Label lblTlf{fraShowMessage, {.place = {120, 1695, 1140, 210}, .text = L"22526"}};
    TextBox txtTlf{fraShowMessage, {.name = L"txtTlf", .place = {1335, 1650, 4905, 315}}};

    ControlArray<OptionButton, kinds> optType;

    Label lblAbout{fraShowMessage, {.place = {120, 2760, 1140, 210}, .text = L"22527"}};
    TextBox txtAbout{
        fraShowMessage, {.name = L"txtAbout", .place = {1335, 2715, 4905, 1320}}, TextBox::Kind::lines};

    Button cmdPrev{fraShowMessage, {.name = L"cmdPrev", .place = {1335, 4200, 1125, 345}, .text = L"22512"}};
    Button cmdNext{fraShowMessage, {.name = L"cmdNext", .place = {2535, 4200, 1125, 345}, .text = L"22513"}};
    Button cmdDelete{fraShowMessage,
                     {.name = L"cmdDelete", .place = {3735, 4200, 1125, 345}, .text = L"22514"}};
    Button cmdClose{
        fraShowMessage,
        {.name = L"cmdClose", .place = {5115, 4200, 1125, 345}, .text = L"22520", .id = IDCANCEL}};
};

} // namespace korvane
