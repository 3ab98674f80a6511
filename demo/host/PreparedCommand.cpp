#include "demo/host/PreparedCommand.h"

#include "demo/host/Create.h"
#include "framework/com/Variant.h"

namespace korvane::host
{

namespace
{

void setOperand(const ComPtr<IAppCommand>& command, const wchar_t* name, const Variant& value)
{
    call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

} // namespace

ComPtr<IAppCommand> prepareCommand(const CommandEntry& entry, const ComPtr<IRoot>& root, long selected)
{
    auto command = createByProgId<IAppCommand>(entry.progId);
    call(command, &IAppCommand::put_Operation, entry.operation);
    setOperand(command, L"Root", Variant(root.as<IDispatch>()));
    setOperand(command, entry.subject, Variant(selected));

    VARIANT_BOOL granted = VARIANT_FALSE;
    call(command, &IAppCommand::get_Granted, &granted);
    if (granted == VARIANT_FALSE)
        throw Failure(E_ACCESSDENIED);

    VARIANT_BOOL ignored = VARIANT_FALSE; // each class gives it a meaning of its own
    call(command, &IAppCommand::Prepare, &ignored);
    return command;
}

} // namespace korvane::host
