// The rules of COM, as checks that hold for every object of the library, whatever its class.
//
// Interfaces, members and classes are taken from the type libraries in the DLL, so that a class added later
// is checked without a change here.
#pragma once

#include "tests/support/Library.h"

#include <string>
#include <vector>

namespace korvane::test
{

/// The type libraries in the DLL: its own first, then those of the contracts.
std::vector<ComPtr<ITypeLib>> typeLibraries();

std::vector<ComPtr<ITypeInfo>> typesOf(const ComPtr<ITypeLib>& library);

/// What a type attribute is read from is given back with it.
class TypeAttributes
{
public:
    explicit TypeAttributes(ITypeInfo* information) : information_(information)
    {
        require(information->GetTypeAttr(&attributes_));
    }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    ~TypeAttributes() { information_->ReleaseTypeAttr(attributes_); }

    const TYPEATTR* operator->() const noexcept { return attributes_; }

private:
    ITypeInfo* information_;
    TYPEATTR* attributes_ = nullptr;
};

/// A public class of the library, as its type library describes it.
struct PublicClass
{
    CLSID id;
    std::wstring name;
    bool control;
    std::vector<IID> interfaces; ///< the default one first
    IID events = GUID_NULL;      ///< of the connection points; null for none
};

std::vector<PublicClass> publicClasses();

/// A member of a dual interface, as seen through its vtable.
struct Member
{
    struct Parameter
    {
        std::wstring name;
        VARTYPE type; ///< of an out parameter, the type of what comes out; VT_UNKNOWN for every object
        bool in;
        bool out;
        bool retval;
    };

    std::wstring name;
    MEMBERID id;
    INVOKEKIND kind;
    ULONG_PTR offset; ///< in the vtable, in bytes
    std::vector<Parameter> parameters;
    std::wstring help;
    std::wstring
        declaration; ///< for example `get Operand([in] BSTR operandName, [out, retval] VARIANT* value)`
};

/// The members of an interface that follow those of IDispatch, in the order of its vtable. Works for
/// dispinterfaces too, whose members have no place in a vtable.
std::vector<Member> membersOf(ITypeInfo* information);

/// The vtable's view of a dual interface; empty when no type library of the DLL describes the interface.
ComPtr<ITypeInfo> vtableInfo(REFIID iid);

std::wstring nameOf(ITypeInfo* information);

/// Every interface that an object of the library could have: those of the type libraries and the platform's.
std::vector<IID> knownInterfaces();

/// Those of them that an object has.
std::vector<IID> interfacesOf(IUnknown* object);

/// Those among them that are dual interfaces of the type libraries.
std::vector<IID> dualInterfacesOf(IUnknown* object);

/// The reference count, as AddRef and Release tell it.
ULONG references(IUnknown* object);

std::string narrow(std::wstring_view text);

/// A call of a member through the vtable. Parameters that go in are empty: 0, "", Nothing, Empty.
class VtableCall
{
public:
    /// What is in an out parameter before the call.
    static constexpr BYTE poison = 0xDB;

    /// @param nullParameter index of an out parameter for which a null pointer is passed; -1 for none.
    VtableCall(IUnknown* object, REFIID iid, const Member& member, int nullParameter = -1);
    VtableCall(const VtableCall&) = delete;
    VtableCall& operator=(const VtableCall&) = delete;
    ~VtableCall();

    HRESULT result() const noexcept { return result_; }

    /// Whether an out parameter is zero, Nothing or Empty.
    bool isCleared(std::size_t parameter) const noexcept;

    /// The result, as a late-bound caller sees it.
    VARIANT value() const noexcept;

private:
    struct Slot
    {
        alignas(8) BYTE bytes[sizeof(VARIANT)];
    };

    const Member& member_;
    std::vector<Slot> slots_;
    HRESULT result_ = E_UNEXPECTED;
};

// --- the rules

/// QueryInterface leads from every interface to every other and back, IUnknown is the same from everywhere, and
/// what the object does not have is refused with a cleared pointer.
void expectOneIdentity(IUnknown* object);

/// Every interface asked for and released leaves the reference count where it was.
void expectBalancedReferences(IUnknown* object);

/// No member takes a null pointer for a result.
void expectNullResultsRefused(IUnknown* object);

/// A member that fails leaves nothing in its results. Returns how many members failed.
int expectResultsClearedOnFailure(IUnknown* object);

/// Late binding, through any dual interface of the object, finds every member of all of them, and calls it with
/// the outcome that a call through the vtable has.
void expectLateBindingAgrees(IUnknown* object);

/// Error information is promised for the object's dual interfaces, and for no other interface.
void expectErrorSupport(IUnknown* object);

/// The class cannot be aggregated, and says so.
void expectNoAggregation(const PublicClass& publicClass);

} // namespace korvane::test
