#include "tests/support/ComRules.h"

#include "framework/com/Bstr.h"
#include "framework/com/Variant.h"

#include <docobj.h>
#include <gmock/gmock.h>
#include <objsafe.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

namespace korvane::test
{

namespace
{

ComPtr<ITypeInfo> referenced(ITypeInfo* information, HREFTYPE reference)
{
    ComPtr<ITypeInfo> result;
    require(information->GetRefTypeInfo(reference, result.put()));
    return result;
}

std::wstring spelled(ITypeInfo* information, const TYPEDESC& type)
{
    switch (type.vt)
    {
    case VT_PTR:
        return spelled(information, *type.lptdesc) + L'*';
    case VT_USERDEFINED:
    {
        const auto named = referenced(information, type.hreftype);
        // The platforms' type libraries call these two differently.
        const IID iid = TypeAttributes(named.get())->guid;
        return iid == IID_IPictureDisp ? L"IPictureDisp"
               : iid == IID_IFontDisp  ? L"IFontDisp"
                                       : nameOf(named.get());
    }
    case VT_I4:
        return L"long";
    case VT_INT:
        return L"int";
    case VT_UINT:
        return L"unsigned int";
    case VT_BSTR:
        return L"BSTR";
    case VT_BOOL:
        return L"VARIANT_BOOL";
    case VT_VARIANT:
        return L"VARIANT";
    case VT_DATE:
        return L"DATE";
    case VT_DISPATCH:
        return L"IDispatch*";
    case VT_UNKNOWN:
        return L"IUnknown*";
    case VT_HRESULT:
        return L"HRESULT";
    case VT_VOID:
        return L"void";
    default:
        return L"type " + std::to_wstring(type.vt);
    }
}

/// The variant type of a value: VT_UNKNOWN for every object, and what stands behind a name.
VARTYPE variantType(ITypeInfo* information, const TYPEDESC& type)
{
    switch (type.vt)
    {
    case VT_PTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return VT_UNKNOWN;
    case VT_USERDEFINED:
    {
        const auto named = referenced(information, type.hreftype);
        const TypeAttributes attributes(named.get());
        return attributes->typekind == TKIND_ALIAS ? variantType(named.get(), attributes->tdescAlias)
                                                   : VARTYPE{VT_I4};
    }
    case VT_INT:
    case VT_UINT:
    case VT_UI4:
        return VT_I4;
    default:
        return type.vt;
    }
}

std::wstring kindName(INVOKEKIND kind)
{
    switch (kind)
    {
    case INVOKE_PROPERTYGET:
        return L"get ";
    case INVOKE_PROPERTYPUT:
        return L"put ";
    case INVOKE_PROPERTYPUTREF:
        return L"putref ";
    default:
        return L"";
    }
}

Member memberOf(ITypeInfo* information, const FUNCDESC& function)
{
    std::array<BSTR, 16> names{};
    UINT count = 0;
    require(information->GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count));
    std::vector<std::wstring> spelledNames;
    spelledNames.reserve(static_cast<std::size_t>(function.cParams) + 1);
    for (UINT index = 0; index < count; ++index)
        spelledNames.emplace_back(Bstr::adopt(names[index]).view());
    // The value of a property has no name of its own in a type library.
    spelledNames.resize(static_cast<std::size_t>(function.cParams) + 1, L"value");

    Bstr help;
    require(information->GetDocumentation(function.memid, nullptr, help.put(), nullptr, nullptr));

    Member member{spelledNames[0],
                  function.memid,
                  function.invkind,
                  static_cast<ULONG_PTR>(static_cast<USHORT>(function.oVft)),
                  {},
                  std::wstring(help.view()),
                  kindName(function.invkind) + spelledNames[0] + L'('};
    for (int index = 0; index < function.cParams; ++index)
    {
        const ELEMDESC& element = function.lprgelemdescParam[index];
        const USHORT flags = element.paramdesc.wParamFlags;
        const bool out = (flags & PARAMFLAG_FOUT) != 0;
        Member::Parameter parameter{spelledNames[static_cast<std::size_t>(index) + 1],
                                    variantType(information, out ? *element.tdesc.lptdesc : element.tdesc),
                                    (flags & PARAMFLAG_FIN) != 0, out, (flags & PARAMFLAG_FRETVAL) != 0};
        member.declaration += index == 0 ? L"[" : L", [";
        if (parameter.in)
            member.declaration += out ? L"in, " : L"in";
        if (out)
            member.declaration += parameter.retval ? L"out, retval" : L"out";
        member.declaration += L"] " + spelled(information, element.tdesc) + L' ' + parameter.name;
        member.parameters.push_back(std::move(parameter));
    }
    member.declaration += L')';
    if (function.elemdescFunc.tdesc.vt != VT_HRESULT)
        member.declaration += L" -> " + spelled(information, function.elemdescFunc.tdesc);
    return member;
}

VARIANT emptyValue(VARTYPE type)
{
    VARIANT value;
    VariantInit(&value);
    if (type == VT_VARIANT)
        return value; // Empty
    value.vt = type == VT_UNKNOWN ? VARTYPE{VT_DISPATCH} : type;
    return value;
}

std::size_t sizeOf(VARTYPE type)
{
    switch (type)
    {
    case VT_BOOL:
        return sizeof(VARIANT_BOOL);
    case VT_I4:
        return sizeof(long);
    case VT_DATE:
        return sizeof(DATE);
    case VT_VARIANT:
        return sizeof(VARTYPE); // the rest of an Empty means nothing
    default:
        return sizeof(void*);
    }
}

std::string interfaceName(REFIID iid)
{
    wchar_t buffer[40];
    StringFromGUID2(iid, buffer, 40);
    const auto information = vtableInfo(iid);
    return narrow(information ? nameOf(information.get()) : std::wstring(buffer));
}

/// The class of the object, for messages.
std::string describe(IUnknown* object, REFIID iid, const Member& member)
{
    const auto dispatch = queryFor<IDispatch>(object);
    ComPtr<ITypeInfo> information;
    dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put());
    return (information ? narrow(nameOf(information.get())) : std::string("?")) + ": " + interfaceName(iid) +
           "." + narrow(member.declaration);
}

struct LateBoundResult
{
    HRESULT result = S_OK;
    HRESULT number = S_OK; ///< of the error that the member raised
    Variant value;
    std::wstring description;
};

LateBoundResult lateBoundCall(IDispatch* object, const Member& member)
{
    std::vector<VARIANT> arguments;
    for (const auto& parameter : member.parameters)
        if (!parameter.out)
            arguments.push_back(emptyValue(parameter.type));
    std::reverse(arguments.begin(), arguments.end());
    DISPID put = DISPID_PROPERTYPUT;
    const bool puts = member.kind == INVOKE_PROPERTYPUT || member.kind == INVOKE_PROPERTYPUTREF;
    DISPPARAMS parameters{arguments.data(), puts ? &put : nullptr, static_cast<UINT>(arguments.size()),
                          puts ? 1U : 0U};

    LateBoundResult outcome{};
    EXCEPINFO exception{};
    outcome.result = object->Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(member.kind),
                                    &parameters, outcome.value.put(), &exception, nullptr);
    outcome.number = exception.scode;
    outcome.description = view(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return outcome;
}

bool isObject(VARTYPE type)
{
    return type == VT_UNKNOWN || type == VT_DISPATCH;
}

bool same(const VARIANT& left, const VARIANT& right)
{
    if (isObject(left.vt) && isObject(right.vt))
    {
        // A font is given out as a copy.
        const auto font = queryFor<IFont>(left.punkVal);
        const auto other = queryFor<IFont>(right.punkVal);
        return font && other
                   ? font->IsEqual(other.get()) == S_OK
                   : queryFor<IUnknown>(left.punkVal).get() == queryFor<IUnknown>(right.punkVal).get();
    }
    if (left.vt != right.vt)
        return false;
    switch (left.vt)
    {
    case VT_EMPTY:
        return true;
    case VT_BOOL:
        return left.boolVal == right.boolVal;
    case VT_I4:
        return left.lVal == right.lVal;
    case VT_DATE:
        return left.date == right.date;
    case VT_BSTR:
        return view(left.bstrVal) == view(right.bstrVal);
    default:
        return false;
    }
}

} // namespace

std::string narrow(std::wstring_view text)
{
    std::string result;
    for (const wchar_t character : text)
        result += character < 0x80 ? static_cast<char>(character) : '?';
    return result;
}

std::vector<ComPtr<ITypeLib>> typeLibraries()
{
    std::vector<ComPtr<ITypeLib>> libraries;
    for (int index = 1;; ++index)
    {
        const std::wstring path = folderOfTests() + L"\\KorvaneDlg.dll\\" + std::to_wstring(index);
        ComPtr<ITypeLib> found;
        if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, found.put())))
            return libraries;
        libraries.push_back(std::move(found));
    }
}

std::wstring nameOf(ITypeInfo* information)
{
    Bstr name;
    require(information->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr));
    return std::wstring(name.view());
}

std::vector<ComPtr<ITypeInfo>> typesOf(const ComPtr<ITypeLib>& library)
{
    std::vector<ComPtr<ITypeInfo>> types(library->GetTypeInfoCount());
    for (std::size_t index = 0; index < types.size(); ++index)
        types[index] = fetch(library, &ITypeLib::GetTypeInfo, static_cast<UINT>(index));
    return types;
}

std::vector<PublicClass> publicClasses()
{
    std::vector<PublicClass> classes;
    for (const auto& information : typesOf(typeLibraries().at(0)))
    {
        const TypeAttributes attributes(information.get());
        if (attributes->typekind != TKIND_COCLASS)
            continue;
        PublicClass found{attributes->guid,
                          nameOf(information.get()),
                          (attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0,
                          {}};
        for (UINT implemented = 0; implemented < attributes->cImplTypes; ++implemented)
        {
            INT kind = 0;
            require(information->GetImplTypeFlags(implemented, &kind));
            HREFTYPE reference = 0;
            require(information->GetRefTypeOfImplType(implemented, &reference));
            const GUID id = TypeAttributes(referenced(information.get(), reference).get())->guid;
            if (kind == (IMPLTYPEFLAG_FSOURCE | IMPLTYPEFLAG_FDEFAULT))
                found.events = id;
            else
                found.interfaces.push_back(id);
        }
        classes.push_back(std::move(found));
    }
    return classes;
}

std::vector<Member> membersOf(ITypeInfo* information)
{
    std::vector<Member> members;
    const TypeAttributes attributes(information);
    for (UINT index = 0; index < attributes->cFuncs; ++index)
    {
        FUNCDESC* function = nullptr;
        require(information->GetFuncDesc(index, &function));
        members.push_back(memberOf(information, *function));
        information->ReleaseFuncDesc(function);
    }
    return members;
}

ComPtr<ITypeInfo> vtableInfo(REFIID iid)
{
    for (const auto& library : typeLibraries())
    {
        ComPtr<ITypeInfo> found;
        if (FAILED(library->GetTypeInfoOfGuid(iid, found.put())))
            continue;
        const TypeAttributes attributes(found.get());
        if (attributes->typekind == TKIND_INTERFACE)
            return found;
        HREFTYPE reference = 0;
        if ((attributes->wTypeFlags & TYPEFLAG_FDUAL) == 0 ||
            FAILED(found->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
            return nullptr;
        return referenced(found.get(), reference);
    }
    return nullptr;
}

std::vector<IID> knownInterfaces()
{
    std::vector<IID> known{IID_IUnknown,
                           IID_IDispatch,
                           IID_ISupportErrorInfo,
                           IID_IClassFactory,
                           IID_IClassFactory2,
                           IID_IConnectionPointContainer,
                           IID_IConnectionPoint,
                           IID_IDataObject,
                           IID_IDropTarget,
                           IID_IEnumVARIANT,
                           IID_IErrorInfo,
                           IID_IExternalConnection,
                           IID_IMarshal,
                           IID_IObjectSafety,
                           IID_IObjectWithSite,
                           IID_IOleCommandTarget,
                           IID_IOleContainer,
                           IID_IOleControl,
                           IID_IOleControlSite,
                           IID_IOleClientSite,
                           IID_IOleInPlaceActiveObject,
                           IID_IOleInPlaceObject,
                           IID_IOleInPlaceObjectWindowless,
                           IID_IOleLink,
                           IID_IOleObject,
                           IID_IOleWindow,
                           IID_IPerPropertyBrowsing,
                           IID_IPersist,
                           IID_IPersistFile,
                           IID_IPersistMemory,
                           IID_IPersistPropertyBag,
                           IID_IPersistStorage,
                           IID_IPersistStream,
                           IID_IPersistStreamInit,
                           IID_IPointerInactive,
                           IID_IPropertyNotifySink,
                           IID_IProvideClassInfo,
                           IID_IProvideClassInfo2,
                           IID_IQuickActivate,
                           IID_IRunnableObject,
                           IID_IServiceProvider,
                           IID_ISpecifyPropertyPages,
                           IID_IViewObject,
                           IID_IViewObject2,
                           IID_IViewObjectEx};
    for (const auto& library : typeLibraries())
        for (UINT index = 0; index < library->GetTypeInfoCount(); ++index)
        {
            ComPtr<ITypeInfo> information;
            require(library->GetTypeInfo(index, information.put()));
            const TypeAttributes attributes(information.get());
            if (attributes->typekind == TKIND_DISPATCH || attributes->typekind == TKIND_INTERFACE)
                known.push_back(attributes->guid);
        }
    return known;
}

std::vector<IID> interfacesOf(IUnknown* object)
{
    std::vector<IID> present;
    for (const IID& iid : knownInterfaces())
    {
        ComPtr<IUnknown> found;
        if (SUCCEEDED(object->QueryInterface(iid, found.putVoid())))
            present.push_back(iid);
    }
    return present;
}

std::vector<IID> dualInterfacesOf(IUnknown* object)
{
    std::vector<IID> duals;
    for (const IID& iid : interfacesOf(object))
        if (vtableInfo(iid))
            duals.push_back(iid);
    return duals;
}

ULONG references(IUnknown* object)
{
    object->AddRef();
    return object->Release();
}

VtableCall::VtableCall(IUnknown* object, REFIID iid, const Member& member, int nullParameter)
    : member_(member), slots_(member.parameters.size())
{
    ComPtr<IUnknown> called;
    require(object->QueryInterface(iid, called.putVoid()));

    std::vector<VARTYPE> types;
    std::vector<VARIANT> values;
    for (std::size_t index = 0; index < slots_.size(); ++index)
    {
        const auto& parameter = member.parameters[index];
        VARIANT value = emptyValue(parameter.type);
        VARTYPE type = parameter.type;
        if (parameter.out)
        {
            std::memset(slots_[index].bytes, poison, sizeof slots_[index].bytes);
            type = VT_BYREF | VT_UI1;
            value.vt = type;
            value.byref = static_cast<int>(index) == nullParameter ? nullptr : slots_[index].bytes;
        }
        types.push_back(type);
        values.push_back(value);
    }
    std::vector<VARIANT*> addresses;
    addresses.reserve(values.size());
    for (VARIANT& value : values)
        addresses.push_back(&value);

    Variant answer;
    SetErrorInfo(0, nullptr);
    require(DispCallFunc(called.get(), member.offset, CC_STDCALL, VT_ERROR, static_cast<UINT>(values.size()),
                         types.data(), addresses.data(), answer.put()));
    result_ = answer.get().scode;
    if (nullParameter >= 0)
        slots_.clear(); // nothing is expected in them
}

VtableCall::~VtableCall()
{
    for (std::size_t index = 0; index < slots_.size(); ++index)
    {
        if (!member_.parameters[index].out || isCleared(index) || FAILED(result_))
            continue;
        void* content = nullptr;
        std::memcpy(&content, slots_[index].bytes, sizeof content);
        switch (member_.parameters[index].type)
        {
        case VT_BSTR:
            SysFreeString(static_cast<BSTR>(content));
            break;
        case VT_UNKNOWN:
            static_cast<IUnknown*>(content)->Release();
            break;
        case VT_VARIANT:
            VariantClear(reinterpret_cast<VARIANT*>(slots_[index].bytes));
            break;
        default:
            break;
        }
    }
}

bool VtableCall::isCleared(std::size_t parameter) const noexcept
{
    const auto* bytes = slots_[parameter].bytes;
    return std::all_of(bytes, bytes + sizeOf(member_.parameters[parameter].type),
                       [](BYTE byte) { return byte == 0; });
}

VARIANT VtableCall::value() const noexcept
{
    VARIANT result;
    VariantInit(&result);
    for (std::size_t index = 0; index < slots_.size(); ++index)
    {
        if (!member_.parameters[index].retval)
            continue;
        const VARTYPE type = member_.parameters[index].type;
        if (type == VT_VARIANT)
            std::memcpy(&result, slots_[index].bytes, sizeof result);
        else
        {
            result.vt = type;
            std::memcpy(&result.lVal, slots_[index].bytes, sizeOf(type));
        }
    }
    return result;
}

void expectOneIdentity(IUnknown* object)
{
    const auto present = interfacesOf(object);
    ComPtr<IUnknown> identity;
    ASSERT_EQ(object->QueryInterface(IID_IUnknown, identity.putVoid()), S_OK);
    for (const IID& from : present)
    {
        SCOPED_TRACE("from " + interfaceName(from));
        ComPtr<IUnknown> start;
        ASSERT_EQ(object->QueryInterface(from, start.putVoid()), S_OK);
        for (const IID& to : knownInterfaces())
        {
            SCOPED_TRACE("to " + interfaceName(to));
            const bool expected = std::find(present.begin(), present.end(), to) != present.end();
            auto* const poison = reinterpret_cast<IUnknown*>(static_cast<UINT_PTR>(0xdeadbeef));
            IUnknown* end = poison;
            const HRESULT result = start->QueryInterface(to, reinterpret_cast<void**>(&end));
            EXPECT_EQ(result, expected ? S_OK : E_NOINTERFACE);
            if (FAILED(result))
            {
                EXPECT_EQ(end, nullptr);
                continue;
            }
            ASSERT_NE(end, poison);
            const auto held = ComPtr<IUnknown>::adopt(end);
            EXPECT_EQ(held.as<IUnknown>().get(), identity.get());
        }
        EXPECT_EQ(start->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    }
}

void expectBalancedReferences(IUnknown* object)
{
    const ULONG before = references(object);
    for (const IID& iid : knownInterfaces())
    {
        IUnknown* found = nullptr;
        const ULONG expected =
            SUCCEEDED(object->QueryInterface(iid, reinterpret_cast<void**>(&found))) ? before + 1 : before;
        EXPECT_EQ(references(object), expected) << interfaceName(iid);
        if (found)
        {
            EXPECT_EQ(found->Release(), before) << interfaceName(iid);
        }
    }
    for (const IID& iid : dualInterfacesOf(object))
        for (const Member& member : membersOf(vtableInfo(iid).get()))
            if (member.kind == INVOKE_PROPERTYGET && member.parameters.size() == 1)
            {
                {
                    const VtableCall called(object, iid, member);
                }
                EXPECT_EQ(references(object), before) << describe(object, iid, member);
            }
}

void expectNullResultsRefused(IUnknown* object)
{
    int refused = 0;
    for (const IID& iid : dualInterfacesOf(object))
        for (const Member& member : membersOf(vtableInfo(iid).get()))
            for (std::size_t index = 0; index < member.parameters.size(); ++index)
                if (member.parameters[index].out)
                {
                    const VtableCall called(object, iid, member, static_cast<int>(index));
                    EXPECT_EQ(called.result(), E_POINTER) << describe(object, iid, member);
                    ++refused;
                }
    EXPECT_GT(refused, 0) << "the object has no member with a result";
}

int expectResultsClearedOnFailure(IUnknown* object)
{
    int failed = 0;
    for (const IID& iid : dualInterfacesOf(object))
        for (const Member& member : membersOf(vtableInfo(iid).get()))
        {
            const VtableCall called(object, iid, member);
            if (SUCCEEDED(called.result()))
                continue;
            for (std::size_t index = 0; index < member.parameters.size(); ++index)
                if (member.parameters[index].out)
                {
                    ++failed;
                    EXPECT_TRUE(called.isCleared(index)) << describe(object, iid, member);
                }
        }
    return failed;
}

void expectLateBindingAgrees(IUnknown* object)
{
    const auto duals = dualInterfacesOf(object);
    ASSERT_FALSE(duals.empty());
    for (const IID& through : duals)
    {
        SCOPED_TRACE("through " + interfaceName(through));
        ComPtr<IDispatch> dispatch;
        ASSERT_EQ(object->QueryInterface(through, dispatch.putVoid()), S_OK);
        std::map<std::wstring, MEMBERID> named; // a name of several interfaces belongs to the first one
        for (const IID& iid : duals)
            for (const Member& member : membersOf(vtableInfo(iid).get()))
            {
                SCOPED_TRACE(describe(object, iid, member));
                const MEMBERID expected = named.try_emplace(member.name, member.id).first->second;
                std::wstring name = member.name;
                LPOLESTR names[] = {name.data()};
                DISPID id = DISPID_UNKNOWN;
                EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
                EXPECT_EQ(id, expected);

                const VtableCall direct(object, iid, member);
                const std::wstring description = errorOf(direct.result()).description;
                const auto lateBound = lateBoundCall(dispatch.get(), member);
                if (FAILED(direct.result()))
                {
                    EXPECT_EQ(lateBound.result, DISP_E_EXCEPTION);
                    EXPECT_EQ(lateBound.number, direct.result());
                    EXPECT_EQ(lateBound.description, description);
                }
                else
                {
                    EXPECT_EQ(lateBound.result, direct.result());
                    EXPECT_TRUE(same(lateBound.value.get(), direct.value()))
                        << "type " << lateBound.value.type() << " instead of " << direct.value().vt;
                }
            }

        wchar_t unknownName[] = L"NoSuchMember";
        LPOLESTR unknown[] = {unknownName};
        DISPID id = 0;
        EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, unknown, 1, LOCALE_USER_DEFAULT, &id),
                  DISP_E_UNKNOWNNAME);
        EXPECT_EQ(id, DISPID_UNKNOWN);
        DISPPARAMS none{};
        EXPECT_EQ(dispatch->Invoke(30000, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr,
                                   nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND);
    }
}

void expectErrorSupport(IUnknown* object)
{
    const auto support = queryFor<ISupportErrorInfo>(object);
    ASSERT_TRUE(support);
    const auto duals = dualInterfacesOf(object);
    for (const IID& iid : knownInterfaces())
    {
        const bool promised = std::find(duals.begin(), duals.end(), iid) != duals.end();
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(iid), promised ? S_OK : S_FALSE) << interfaceName(iid);
    }
}

void expectNoAggregation(const PublicClass& publicClass)
{
    const auto getClassObject = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(library(), "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(getClassObject(publicClass.id, IID_IClassFactory, factory.putVoid()), S_OK);
    const auto outer = create<IUnknown>(publicClass.id);
    const ULONG before = references(outer.get());
    std::vector<IID> asked = publicClass.interfaces;
    asked.push_back(IID_IUnknown);
    for (const IID& iid : asked)
    {
        void* inner = &factory;
        EXPECT_EQ(factory->CreateInstance(outer.get(), iid, &inner), CLASS_E_NOAGGREGATION)
            << interfaceName(iid);
        EXPECT_EQ(inner, nullptr);
    }
    EXPECT_EQ(references(outer.get()), before);
}

} // namespace korvane::test
