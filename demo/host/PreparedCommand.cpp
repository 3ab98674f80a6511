#include "demo/host/PreparedCommand.h"

#include "framework/com/LateBound.h"

namespace korvane::host
{

namespace
{

void setOperand(const ComPtr<IAppCommand>& command, const wchar_t* name, const Variant& value)
{
    call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

} // namespace

ComPtr<IAppCommand> prepareCommand(const Order& order, const ComPtr<IRoot>& root)
{
    auto command = createByProgId<IAppCommand>(order.progId);
    prepare(command, order, root);
    return command;
}

void prepare(const ComPtr<IAppCommand>& command, const Order& order, const ComPtr<IRoot>& root)
{
    call(command, &IAppCommand::put_Operation, order.operation);
    setOperand(command, L"Root", Variant(root.as<IDispatch>()));
    for (const OperandValue& operand : order.operands)
        setOperand(command, operand.name, operand.value);

    VARIANT_BOOL granted = VARIANT_FALSE;
    call(command, &IAppCommand::get_Granted, &granted);
    if (granted == VARIANT_FALSE)
        throw Failure(E_ACCESSDENIED);

    VARIANT_BOOL ignored = VARIANT_FALSE; // each class gives it a meaning of its own
    call(command, &IAppCommand::Prepare, &ignored);
}

long numberOf(const ComPtr<IAppCommand>& command, const wchar_t* operand)
{
    Variant value;
    call(command, &IAppCommand::get_Operand, Bstr(operand).get(), value.put());
    return toLong(value.get());
}

} // namespace korvane::host
