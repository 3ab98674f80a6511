// The command that deletes a message that was left for a resource.
#pragma once

#include "framework/AppCommand.h"
#include "framework/DataLayer.h"

#include <KorvaneDlg.h>

namespace korvane
{

class ShowMessage final : public AppCommand<ShowMessage, IShowMessage>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlShowMessage";
    static const GUID* classId() noexcept { return &__uuidof(::ShowMessage); }
    static std::span<const Operand<ShowMessage>> operands();

    bool prepare() { return true; } // the dialog reads the messages
    bool execute();

    STDMETHODIMP get_MsgID(long* value) override { return read(value, MsgID); }
    STDMETHODIMP put_MsgID(long value) override { return write(MsgID, value); }
    STDMETHODIMP get_Contact(BSTR* value) override { return read(value, Contact); }
    STDMETHODIMP put_Contact(BSTR value) override { return write(Contact, value); }
    STDMETHODIMP get_Tlf(BSTR* value) override { return read(value, Tlf); }
    STDMETHODIMP put_Tlf(BSTR value) override { return write(Tlf, value); }
    STDMETHODIMP get_About(BSTR* value) override { return read(value, About); }
    STDMETHODIMP put_About(BSTR value) override { return write(About, value); }

    ComPtr<IRoot> Root;
    long MsgID = 0;
    long NameID = 0; ///< whose messages are read
    // Carried for the host.
    Bstr Contact;
    Bstr Tlf;
    Bstr About;
};

} // namespace korvane
