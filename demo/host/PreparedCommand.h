// The first half of an editing action: the command, up to where its dialog is shown.
#pragma once

#include "framework/com/Variant.h"

#include <KorvaneData.h>
#include <KorvaneLib.h>

#include <vector>

namespace korvane::host
{

struct OperandValue
{
    const wchar_t* name;
    Variant value;
};

/// What a command is to do: everything that it is told besides the database.
struct Order
{
    const wchar_t* progId;
    long operation;
    std::vector<OperandValue> operands; ///< in the order in which they are set
};

/// Creates a command by its ProgID, gives it its operation and operands, and lets it load its fields. Throws
/// E_ACCESSDENIED when the user may not run it, and whatever the command raises.
ComPtr<IAppCommand> prepareCommand(const Order& order, const ComPtr<IRoot>& root);

/// The same for a command that is there already.
void prepare(const ComPtr<IAppCommand>& command, const Order& order, const ComPtr<IRoot>& root);

/// An operand as a number.
long numberOf(const ComPtr<IAppCommand>& command, const wchar_t* operand);

} // namespace korvane::host
