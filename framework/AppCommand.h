// The frame of every command: operands by name, the operation code, and no undo.
//
// A command class states its operand table, its dialog, and what Prepare and Execute do:
//
//   class EditThings final : public AppCommand<EditThings, IEditThings>
//   {
//   public:
//       static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlEditThings";
//       static std::span<const Operand<EditThings>> operands();
//       bool prepare();
//       bool execute();
//       STDMETHODIMP get_ThingID(long* value) override { return read(value, ThingID); }
//       STDMETHODIMP put_ThingID(long value) override { return write(ThingID, value); }
//       long ThingID = 0;
//   };
#pragma once

#include "framework/com/Object.h"

#include <KorvaneLib.h>

#include <span>
#include <type_traits>

namespace korvane
{

/// The operation codes of the edit commands.
enum Operation : long
{
    operationAdd = 1,
    operationDelete = 2,
    operationChange = 3
};

// A field as the host sees it, and the host's value as the field stores it.
inline Variant operandValue(long field)
{
    return Variant(field);
}
inline Variant operandValue(bool field)
{
    return Variant(field);
}
inline Variant operandValue(OleDate field)
{
    return Variant(field);
}
inline Variant operandValue(const Bstr& field)
{
    return Variant(field);
}
template <class Interface> Variant operandValue(const ComPtr<Interface>& field)
{
    return Variant(ComPtr<IDispatch>(field.get()));
}

inline void storeOperand(long& field, const VARIANT& value)
{
    field = toLong(value);
}
inline void storeOperand(bool& field, const VARIANT& value)
{
    field = toBool(value);
}
inline void storeOperand(OleDate& field, const VARIANT& value)
{
    field = toDate(value);
}
inline void storeOperand(Bstr& field, const VARIANT& value)
{
    field = toText(value);
}
template <class Interface> void storeOperand(ComPtr<Interface>& field, const VARIANT& value)
{
    const ComPtr<IUnknown> object = toObject(value);
    ComPtr<Interface> wanted = object.as<Interface>();
    if (object && !wanted)
        throw Failure(DISP_E_TYPEMISMATCH);
    field = std::move(wanted);
}

/// One row of a command's operand table.
template <class Class> struct Operand
{
    std::wstring_view name;
    Variant (*get)(const Class& command);
    void (*let)(Class& command, const VARIANT& value);
};

template <class Class, class Field> Class classOfMember(Field Class::*);

/// The row of an operand that is a field: operand<&EditThings::thingId>(L"ThingID"). For a field of a base, the
/// class is named too.
template <auto Member, class Class = decltype(classOfMember(Member))>
constexpr auto operand(std::wstring_view name)
{
    return Operand<Class>{name, [](const Class& command) { return operandValue(command.*Member); },
                          [](Class& command, const VARIANT& value) { storeOperand(command.*Member, value); }};
}

template <class Class, class ClassInterface>
class AppCommand : public Object<Class, Inherits<ClassInterface>, ClassInterface, IAppCommand>
{
public:
    STDMETHODIMP get_DialogClass(BSTR* progId) override
    {
        return returns(progId, [] { return Bstr(Class::dialogClass); });
    }

    // No command refuses itself: rights are asked of the data layer where they matter.
    STDMETHODIMP get_Granted(VARIANT_BOOL* result) override
    {
        return returns(result, [] { return true; });
    }

    STDMETHODIMP get_Operation(long* code) override
    {
        return returns(code, [&] { return operation; });
    }

    STDMETHODIMP put_Operation(long code) override
    {
        operation = code;
        return S_OK;
    }

    STDMETHODIMP get_Operand(BSTR operandName, VARIANT* value) override
    {
        return returns(value, [&] {
            const auto* row = find(operandName);
            return row ? row->get(self()) : Variant();
        });
    }

    STDMETHODIMP put_Operand(BSTR operandName, VARIANT value) override
    {
        return guard([&] {
            if (const auto* row = find(operandName))
                row->let(self(), value);
        });
    }

    STDMETHODIMP Prepare(VARIANT_BOOL* result) override
    {
        return returns(result, [&] { return self().prepare(); });
    }

    STDMETHODIMP Execute(VARIANT_BOOL* result) override
    {
        return returns(result, [&] { return self().execute(); });
    }

    // No command of the library can be undone: hosts treat False as nothing to undo or redo.
    STDMETHODIMP Undo(VARIANT_BOOL* result) override
    {
        return returns(result, [] { return false; });
    }

    STDMETHODIMP Redo(VARIANT_BOOL* result) override
    {
        return returns(result, [] { return false; });
    }

    STDMETHODIMP get_Command(IAppCommand** value) override
    {
        return returns(value, [&] { return asCommand(); });
    }

    /// The class id: a dialog recognises its own command class by it.
    static const GUID* privateId() noexcept { return Class::classId(); }

    ComPtr<IAppCommand> asCommand() noexcept
    {
        return ComPtr<IAppCommand>(static_cast<IAppCommand*>(&self()));
    }

    long operation = 0;

private:
    Class& self() noexcept { return static_cast<Class&>(*this); }

    /// Operand names are exact: case counts.
    static const Operand<Class>* find(BSTR name)
    {
        for (const auto& row : Class::operands())
            if (row.name == view(name))
                return &row;
        return nullptr;
    }
};

} // namespace korvane
