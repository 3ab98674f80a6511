#include "messages/ShowMessage.h"

namespace korvane
{

std::span<const Operand<ShowMessage>> ShowMessage::operands()
{
    static constexpr Operand<ShowMessage> table[] = {
        operand<&ShowMessage::Root>(L"Root"),       operand<&ShowMessage::NameID>(L"NameID"),
        operand<&ShowMessage::Contact>(L"Contact"), operand<&ShowMessage::Tlf>(L"Tlf"),
        operand<&ShowMessage::About>(L"About"),
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
