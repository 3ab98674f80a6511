#include "messages/ctlShowMessage.h"

#include "framework/com/Decimal.h"

namespace korvane
{

namespace
{

constexpr long textTitle = 22500;
constexpr long allMessages = -1;

/// What the data layer keeps in a kind besides is its own.
constexpr long kindMask = 0x7FFF;

/// The options, in the order of the kinds that they show.
constexpr Design options[] = {
    {.name = L"optType", .place = {1335, 2085, 2430, 255}, .text = L"22531"},
    {.name = L"optType", .place = {3765, 2085, 2475, 255}, .text = L"22532"},
    {.name = L"optType", .place = {1335, 2370, 2430, 255}, .text = L"22533"},
    {.name = L"optType", .place = {3765, 2370, 2475, 255}, .text = L"22534"},
};

std::wstring digits(std::size_t count)
{
    return decimal(static_cast<long>(count));
}

/// The date and time in the user's own format. One that is none of the calendar is left out, and the rest is shown.
Bstr generalDate(OleDate date)
{
    Bstr text;
    if (VarBstrFromDate(date.days, LOCALE_USER_DEFAULT, 0, text.put()) == E_OUTOFMEMORY)
        throw Failure(E_OUTOFMEMORY);
    return text;
}

} // namespace

ctlShowMessage::ctlShowMessage()
    : Dialog(textTitle, 6360, 4695), optType(makeControls<kinds>([this](int index) {
          return OptionButton(fraShowMessage, options[index],
                              index == 0 ? OptionButton::Position::first : OptionButton::Position::further);
      }))
{
    for (TextBox* box : {&txtFrom, &txtDtg, &txtContact, &txtTlf, &txtAbout})
        box->setLocked(true);
    cmdPrev.onClick = [this] {
        if (isReady() && list_.hasPrevious())
            show(list_.previous());
    };
    cmdNext.onClick = [this] {
        if (isReady() && list_.hasNext())
            show(list_.next());
    };
    cmdDelete.onClick = [this] { remove(); };
    cmdDelete.ignoreSecondClick(); // it would delete the next message, which nobody has read yet
    cmdClose.onClick = [this] { cancel(); };
}

bool ctlShowMessage::load()
{
    list_.clear();
    const auto begin = [this] {
        inScope(command().Root, L"ctlShowMessage.Init", [this] {
            listen();
            mMessages.load(&IMessages::LoadFor, command().NameID, allMessages);
        });
        if (!list_.empty())
            show(list_.first());
    };
    undoOnFailure(begin, [this] {
        list_.clear();
        showNothing();
    });
    if (list_.empty())
        showNothing();
    return !list_.empty();
}

void ctlShowMessage::listen()
{
    const auto clear = [this] {
        if (mMessages.isLoading())
            list_.clear();
    };
    const auto add = [this](const EventArguments& message) {
        addMessage(message.number(0), message.flag(6));
    };
    mMessages.connect(command().Root, {.clear = clear, .add = add});
}

/// What is announced after the list has been read is either new, and appended, or what somebody else has asked for.
void ctlShowMessage::addMessage(long id, bool read)
{
    if (mMessages.isLoading())
        return list_.add(id, read);
    list_.addIfNew(id, read);
    showCounts();
}

/// Shows a message, or nothing where it cannot be read: the reader stands there all the same, and can go on.
void ctlShowMessage::show(long id)
{
    undoOnFailure([&] { fetchAndShow(id); },
                  [&] {
                      list_.pass(id);
                      showNothing();
                  });
}

/// Reads a message, which counts as read from then on.
void ctlShowMessage::fetchAndShow(long id)
{
    Bstr from;
    Bstr tlf;
    Bstr contact;
    Bstr about;
    OleDate dtg;
    long kind = 0;
    VARIANT_BOOL wasRead = VARIANT_TRUE;
    inScope(command().Root, L"ctlShowMessage.Fetch", [&] {
        call(mMessages.get(), &IMessages::Fetch, id, from.inOut(), &dtg.days, tlf.inOut(), contact.inOut(),
             about.inOut(), &kind, &wasRead);
    });
    if (!list_.show(id, owned(wasRead)))
        return; // the container has had the list read anew meanwhile
    txtFrom.setText(from.view());
    txtDtg.setText(generalDate(dtg).view());
    txtTlf.setText(tlf.view());
    txtContact.setText(contact.view());
    txtAbout.setText(about.view());
    showKind(kind & kindMask);
    showCounts();
}

void ctlShowMessage::showNothing()
{
    for (TextBox* box : {&txtFrom, &txtDtg, &txtContact, &txtTlf, &txtAbout})
        box->setText({});
    showKind(0);
    showCounts();
}

/// The reader can come to the option that is chosen, and to no other: it can be read, and not be changed.
void ctlShowMessage::showKind(long kind)
{
    for (int index = 0; index < kinds; ++index)
    {
        const bool chosen = index + 1 == kind;
        OptionButton& option = optType[static_cast<std::size_t>(index)];
        if (!chosen && option.hasFocus())
            txtAbout.setFocus(); // from what is disabled the keys would lead nowhere
        option.setEnabled(chosen);
        option.setValue(chosen);
    }
}

void ctlShowMessage::showCounts()
{
    lblActive.setCaption(list_.empty() ? L"" : digits(list_.place()));
    lblAll.setCaption(digits(list_.all()));
    lblRead.setCaption(digits(list_.read()));
    lblUnread.setCaption(digits(list_.unread()));
    enableButtons();
}

/// From a button that leads nowhere any more, the keyboard goes on to one that does.
void ctlShowMessage::enableButtons()
{
    const std::pair<Button*, bool> buttons[] = {
        {&cmdNext, list_.hasNext()}, {&cmdPrev, list_.hasPrevious()}, {&cmdDelete, list_.isShown()}};
    Button& other = list_.hasNext() ? cmdNext : list_.hasPrevious() ? cmdPrev : cmdClose;
    other.setEnabled(true);
    for (const auto& [button, leadsOn] : buttons)
    {
        if (!leadsOn && button->hasFocus())
            other.setFocus();
        button->setEnabled(leadsOn);
    }
}

void ctlShowMessage::remove()
{
    if (!isReady() || !list_.isShown())
        return;
    removed_ = list_.current();
    command().MsgID = removed_;
    command().operation = operationDelete;
    confirm();
}

void ctlShowMessage::submitted(bool executed)
{
    if (!executed || !window())
        return; // nobody has deleted it, or there is no reader any more: the next one would count as read
    list_.remove(removed_);
    if (list_.empty())
        return close(false);
    if (list_.isShown())
        return showCounts(); // the container has had the list read anew meanwhile
    show(list_.current());
}

} // namespace korvane
