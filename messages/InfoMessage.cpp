#include "messages/InfoMessage.h"

#include "framework/com/SafeArray.h"
#include "messages/InfoFile.h"

namespace korvane
{

namespace
{

/// Events of the resources, besides those of every collection.
enum NamesEvent : DISPID
{
    eventInfoClear = 3,
    eventInfoAdd = 4
};

// The dimensions of Info: labels and values, and the rows.
constexpr std::size_t labels = 0;
constexpr std::size_t values = 1;

/// The position of a row that is to go.
constexpr long removed = -1;

OleDate now()
{
    SYSTEMTIME time{};
    GetLocalTime(&time);
    OleDate result;
    SystemTimeToVariantTime(&time, &result.days);
    return result;
}

} // namespace

std::span<const Operand<InfoMessage>> InfoMessage::operands()
{
    static constexpr Operand<InfoMessage> table[] = {
        operand<&InfoMessage::Root, InfoMessage>(L"Root"),
        operand<&InfoMessage::NameID, InfoMessage>(L"NameID"),
        operand<&InfoMessage::Name, InfoMessage>(L"Name"),
        operand<&InfoMessage::Contact, InfoMessage>(L"Contact"),
        operand<&InfoMessage::Tlf, InfoMessage>(L"Tlf"),
        operand<&InfoMessage::About, InfoMessage>(L"About"),
    };
    return table;
}

STDMETHODIMP InfoMessage::put_Info(VARIANT value)
{
    return guard([&] { Info = Variant::valueOf(value); });
}

bool InfoMessage::prepare()
{
    listen();
    if (operation != operationSend)
        FetchInfo();
    return true;
}

bool InfoMessage::execute()
{
    const auto messages = collection<IMessages>(Root);
    const auto names = collection<INames>(Root);
    switch (operation)
    {
    case operationSend:
        send(messages);
        break;
    case operationStore:
        store(names);
        break;
    default:
        break;
    }
    return false; // also after a successful write: hosts do not read a failure into it
}

/// Whoever is called may have the rows read anew, maybe of another resource: those are the ones that count then.
Variant InfoMessage::FetchInfo()
{
    const int own = listen();
    mNames.load(&INames::LoadInfo, NameID);
    if (reading_ == own && read_.count == 0)
        for (Bstr& label : readInfoFile()) // if these are still wanted by then
            if (reading_ == own)
                read_.add(std::move(label), Bstr());
    if (reading_ == none)
        return Info;
    if (reading_ != own)
        throw Failure(E_ABORT); // they could not be read to the end

    Variant info;
    if (read_.count > 0)
    {
        TextTable table(2, read_.count);
        for (std::size_t index = 0; index < read_.count; ++index)
        {
            table.at(labels, index) = read_.rows[index].label;
            table.at(values, index) = read_.rows[index].value;
        }
        info = table.toArray();
    }
    Info = std::move(info);
    stored_ = std::exchange(read_, {});
    reading_ = none;
    return Info;
}

/// Only what answers to LoadInfo counts: a data layer may have one collection of names for all, and announce there what
/// somebody else has asked for, or what is being stored.
/// @return the number of this reading, which goes on until the next one, or to its end.
int InfoMessage::listen()
{
    const int own = ++readings_;
    reading_ = own;
    read_ = {};
    mNames.connect(Root, {.further = [this, own](DISPID event, const EventArguments& row) {
                       if (!mNames.isLoading() || reading_ != own)
                           return;
                       if (event == eventInfoClear)
                           read_.clear();
                       else if (event == eventInfoAdd)
                           read_.add(Bstr(row.text(1).view()), Bstr(row.text(2).view()));
                   }});
    return own;
}

/// One empty row stays, which does not count as one: storing removes the empty label of a resource without rows, too.
void InfoMessage::Rows::clear()
{
    rows = std::vector<Row>(1);
    count = 0;
}

void InfoMessage::Rows::add(Bstr label, Bstr value)
{
    rows.resize(count);
    rows.push_back({std::move(label), std::move(value)});
    ++count;
}

/// The kind as the data layer numbers it: one more than its place in the dialog, and 1 for every other number.
long InfoMessage::kind() const noexcept
{
    return TypeIndex >= 1 && TypeIndex <= 3 ? TypeIndex + 1 : 1;
}

void InfoMessage::send(const ComPtr<IMessages>& messages) const
{
    fetch(messages, &IMessages::Add, NameID, now().days, About.get(), Tlf.get(), Contact.get(), kind());
}

/// A row is known by its label: taking out all that were there and writing all that are to be is how rows are moved,
/// renamed and deleted. What a failure leaves behind is taken out when the command is executed again.
void InfoMessage::store(const ComPtr<INames>& names)
{
    const TextTable table(Info.get()); // what is no table is refused before anything is removed
    if (table.columns() > 0 && table.rows() <= values)
        throw Failure(DISP_E_BADINDEX);

    for (const Row& row : std::vector(stored_.rows)) // whoever is called may have them read anew
        call(names, &INames::SetInfo, NameID, row.label.get(), removed, Bstr().get());
    stored_ = {};
    for (std::size_t index = 0; index < table.columns(); ++index)
    {
        const Bstr& label = table.at(labels, index);
        const Bstr& value = table.at(values, index);
        stored_.add(label, value); // the call may fail when the row is already stored
        call(names, &INames::SetInfo, NameID, label.get(), static_cast<long>(index), value.get());
    }
}

} // namespace korvane
