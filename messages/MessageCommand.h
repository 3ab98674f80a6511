// What the commands on messages have in common: the texts of a message, and whose it is.
#pragma once

#include "framework/AppCommand.h"
#include "framework/DataLayer.h"

#include <KorvaneDlg.h>

namespace korvane
{

template <class Class, class ClassInterface> class MessageCommand : public AppCommand<Class, ClassInterface>
{
public:
    STDMETHODIMP get_Contact(BSTR* value) override { return read(value, Contact); }
    STDMETHODIMP put_Contact(BSTR value) override { return write(Contact, value); }
    STDMETHODIMP get_Tlf(BSTR* value) override { return read(value, Tlf); }
    STDMETHODIMP put_Tlf(BSTR value) override { return write(Tlf, value); }
    STDMETHODIMP get_About(BSTR* value) override { return read(value, About); }
    STDMETHODIMP put_About(BSTR value) override { return write(About, value); }

    ComPtr<IRoot> Root;
    long NameID = 0; ///< whose messages, or information rows, they are
    Bstr Contact;    ///< who phoned
    Bstr Tlf;        ///< the caller's phone number
    Bstr About;      ///< what the message concerns
};

} // namespace korvane
