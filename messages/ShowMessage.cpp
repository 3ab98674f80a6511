#include "messages/ShowMessage.h"

namespace korvane
{

std::span<const Operand<ShowMessage>> ShowMessage::operands()
{
    static constexpr Operand<ShowMessage> table[] = {
        operand<&ShowMessage::Root, ShowMessage>(L"Root"),
        operand<&ShowMessage::NameID, ShowMessage>(L"NameID"),
        operand<&ShowMessage::Contact, ShowMessage>(L"Contact"),
        operand<&ShowMessage::Tlf, ShowMessage>(L"Tlf"),
        operand<&ShowMessage::About, ShowMessage>(L"About"),
    };
    return table;
}

bool ShowMessage::execute()
{
    const auto messages = collection<IMessages>(Root);
    if (operation == operationDelete)
        call(messages, &IMessages::Remove, MsgID);
    return false; // also after a deletion: hosts do not read a failure into it
}

} // namespace korvane
