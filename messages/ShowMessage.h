// The command that deletes a message that was left for a resource.
#pragma once

#include "messages/MessageCommand.h"

namespace korvane
{

class ShowMessage final : public MessageCommand<ShowMessage, IShowMessage>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlShowMessage";
    static const GUID* classId() noexcept { return &__uuidof(::ShowMessage); }
    static std::span<const Operand<ShowMessage>> operands();

    bool prepare() { return true; } // the dialog reads the messages
    bool execute();

    STDMETHODIMP get_MsgID(long* value) override { return read(value, MsgID); }
    STDMETHODIMP put_MsgID(long value) override { return write(MsgID, value); }

    long MsgID = 0; ///< the message to delete; the others are carried for the host
};

} // namespace korvane
