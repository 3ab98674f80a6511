#include "messages/ctlInfoMessage.h"

#include <algorithm>

namespace korvane
{

namespace
{

enum TextId : long
{
    textTitle = 22500,
    textHeader = 22508,
    textAboutRequired = 22590,
    textNoLogin = 22591,
    textInfo = 22600
};

/// Texts of the kinds of a message.
constexpr const wchar_t* textsOfTypes[] = {L"22501", L"22502", L"22503", L"22507"};

constexpr float typeWidth = 3000;
constexpr float typeHeight = 300;

/// Kinds stand in two columns; the access keys and arrow keys go down the first one first.
Place placeOfType(int index)
{
    const int column = index / 2;
    const int row = index % 2;
    return {static_cast<float>(column) * typeWidth, 330.0F + static_cast<float>(row) * typeHeight, typeWidth,
            255};
}

} // namespace

ctlInfoMessage::ctlInfoMessage()
    : Dialog(textTitle, 6240, 4560), optType(makeControls<4>([this](int index) {
          return OptionButton(fraInsertMessage,
                              {.name = L"optType", .place = placeOfType(index), .text = textsOfTypes[index]},
                              index == 0 ? OptionButton::Position::first : OptionButton::Position::further);
      }))
{
    tabInfoMsg.onClick = [this] { turnPage(); };
    for (std::size_t index = 0; index < optType.size(); ++index)
        optType[index].onClick = [this, index] { command().TypeIndex = static_cast<long>(index); };
    txtContact.onChange = [this] { command().Contact = Bstr(txtContact.Text()); };
    txtTlf.onChange = [this] { command().Tlf = Bstr(txtTlf.Text()); };
    txtAbout.onChange = [this] { command().About = Bstr(txtAbout.Text()); };
}

bool ctlInfoMessage::load()
{
    ++loads_;
    noLogin_ = infoLoaded_ = false;
    tabInfoMsg.setTabCaption(keyMessage, resourceText(textTitle).view());
    tabInfoMsg.setTabCaption(keyInfo, resourceText(textInfo).view());
    tabInfoMsg.select(keyMessage);
    inScope(command().Root, L"ctlInfoMessage.Prepare",
            [this] { fetch(command().asCommand(), &IAppCommand::Prepare); });
    showCommand();
    showPage();
    // The login counts where a message is to be left: from rows the page with the message stays within reach.
    if (command().operation != InfoMessage::operationSend)
        return command().operation == operationDelete || command().operation == InfoMessage::operationStore;

    noLogin_ = !inScope(command().Root, L"ctlInfoMessage.Prepare", [this] { return hasLogin(); });
    if (noLogin_)
    {
        tabInfoMsg.select(keyInfo);
        turnPage();
    }
    return true;
}

/// What the host has set, so that nothing is sent that the user does not see.
void ctlInfoMessage::showCommand()
{
    std::wstring header(resourceText(textHeader).view());
    if (!command().Name.empty())
        header += L" \x2013 " + std::wstring(command().Name.view());
    lblHeader.setCaption(header);
    // A number that is none of a kind is sent as the first one.
    const long type = command().TypeIndex;
    const std::size_t shown =
        type > 0 && type < static_cast<long>(optType.size()) ? static_cast<std::size_t>(type) : 0;
    for (std::size_t index = 0; index < optType.size(); ++index)
        optType[index].setValue(index == shown);
    txtContact.setText(command().Contact.view());
    txtTlf.setText(command().Tlf.view());
    txtAbout.setText(command().About.view());
}

bool ctlInfoMessage::hasLogin()
{
    const auto names = collection<INames>(command().Root);
    Bstr text;
    Bstr login;
    long color = 0;
    long loginId = 0;
    long flags = 0;
    long role = 0;
    call(names, &INames::Fetch, command().NameID, text.inOut(), &color, &loginId, login.inOut(), &flags,
         &role);
    return !login.empty();
}

void ctlInfoMessage::turnPage()
{
    if (!isOnInfo() && noLogin_)
    {
        tabInfoMsg.select(keyInfo);
        RaiseAppError(textNoLogin);
    }
    // Without its rows the page is not shown: OK there would take them away.
    if (isOnInfo() && !infoLoaded_)
        loadInfo();
    showPage();
}

void ctlInfoMessage::loadInfo()
{
    auto& message = command(); // the host may set another one meanwhile
    // Meanwhile the host may begin anew, maybe with another resource, or the user turn the pages, and edit by now.
    const auto isWanted = [this, load = loads_] { return load == loads_ && !infoLoaded_; };
    const auto read = [&] {
        const Variant rows =
            inScope(message.Root, L"InfoMessage.FetchInfo", [&] { return message.FetchInfo(); });
        if (!isWanted())
            return;
        info.fill(rows);
        infoLoaded_ = true;
    };
    undoOnFailure(read, [&] {
        if (isWanted())
            tabInfoMsg.select(keyMessage);
    });
}

void ctlInfoMessage::showPage()
{
    fraInsertMessage.setVisible(!isOnInfo());
    info.setVisible(isOnInfo());
    // From a control that goes the keys would lead nowhere.
    const auto goes = [](const Control* control) { return control->hasFocus() && !control->shows(); };
    if (std::ranges::any_of(controls(), goes))
        tabInfoMsg.setFocus();
}

/// OK stores the page that is seen. That is not yet the tab's own while the rows are read.
void ctlInfoMessage::takeValues()
{
    if (info.Visible())
    {
        info.commit();
        command().Info = info.toArray();
        command().operation = InfoMessage::operationStore;
        return;
    }
    if (txtAbout.Text().empty())
        RaiseAppError(textAboutRequired);
    command().operation = InfoMessage::operationSend;
}

} // namespace korvane
