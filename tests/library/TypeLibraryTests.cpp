// The type libraries as hosts read them: compiled hosts depend on every slot, scripts on every name.
#include "tests/support/ComRules.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>
#include <KorvaneLib.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

struct Contract
{
    const wchar_t* library;
    const wchar_t* name;
    /// Dispatch id and declaration, in the order of the slots. `get put Count: long` are two.
    std::vector<std::wstring> members;
    std::wstring extended{}; ///< the contract whose members come first; empty for IDispatch
};

const Contract contracts[] = {
    {L"KorvaneLib",
     L"IAppCommand",
     {
         L"1 get DialogClass([out, retval] BSTR* progId)",
         L"2 get Granted([out, retval] VARIANT_BOOL* result)",
         L"3 get Operation([out, retval] long* code)",
         L"3 put Operation([in] long code)",
         L"4 get Operand([in] BSTR operandName, [out, retval] VARIANT* value)",
         L"4 put Operand([in] BSTR operandName, [in] VARIANT value)",
         L"5 Prepare([out, retval] VARIANT_BOOL* result)",
         L"6 Execute([out, retval] VARIANT_BOOL* result)",
         L"7 Undo([out, retval] VARIANT_BOOL* result)",
         L"8 Redo([out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneInterfaces",
     L"IAppDialog",
     {
         L"21 get Name([out, retval] BSTR* title)",
         L"22 get Ready([out, retval] VARIANT_BOOL* result)",
         L"23 get Changed([out, retval] VARIANT_BOOL* result)",
         L"24 putref Command([in] IDispatch* value)",
         L"24 get Command([out, retval] IAppCommand** value)",
         L"25 get Notifier([out, retval] IXtExecuteEvents** value)",
         L"26 putref Resources([in] IResources* value)",
         L"26 get Resources([out, retval] IResources** value)",
     }},
    {L"KorvaneInterfaces",
     L"IResources",
     {
         L"1 GetIcon([in] long id, [out, retval] IPictureDisp** picture)",
         L"2 GetBitmap([in] long id, [out, retval] IPictureDisp** picture)",
         L"3 GetCursor([in] long id, [out, retval] IPictureDisp** picture)",
         L"4 GetString([in] long id, [out, retval] BSTR* text)",
         L"5 get LocaleID([out, retval] long* locale)",
     }},
    {L"KorvaneInterfaces",
     L"ICalendar",
     {
         L"41 GetFirst([in] VARIANT rule, [in] DATE start, [out, retval] VARIANT_BOOL* found)",
         L"42 GetNext([in] DATE previous, [out, retval] VARIANT_BOOL* found)",
         L"43 Easter([in] long year, [out, retval] DATE* sunday)",
         L"44 IsLeapYear([in] long year, [out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneInterfaces",
     L"IXtExecuteEvents",
     {
         L"61 OnExecuted([in] IAppCommand* executed, [in] VARIANT_BOOL success)",
         L"62 OnOperands([in] IAppCommand* executed)",
         L"63 OnRedone([in] IAppCommand* executed, [in] VARIANT_BOOL success)",
         L"64 OnUndone([in] IAppCommand* executed, [in] VARIANT_BOOL success)",
         L"65 OnTick([in] long elapsed)",
         L"66 Request([in] BSTR topic, [in] VARIANT argument, [out, retval] VARIANT* answer)",
     }},
    {L"KorvaneInterfaces",
     L"IAppDialogSink",
     {
         L"81 Done([in] VARIANT_BOOL cancelled)",
         L"82 Error([in] long number, [in] BSTR source, [in] BSTR description)",
         L"83 Resize()",
     }},
    {L"KorvaneInterfaces",
     L"IAppCommandSite",
     {
         L"101 Accepts([in] IAppCommand* candidate, [out, retval] VARIANT_BOOL* result)",
         L"102 Offer([in] IAppCommand* candidate, [out, retval] VARIANT_BOOL* result)",
         L"103 Submit([in] IAppCommand* candidate, [out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneDlg",
     L"IAppDialogEvents",
     {
         L"1 RaiseDone([in] VARIANT_BOOL cancelled)",
         L"2 RaiseError()",
         L"3 RaiseResize()",
         L"4 get Sink([out, retval] IAppDialogSink** value)",
         L"4 put Sink([in] IAppDialogSink* value)",
         L"4 putref Sink([in] IAppDialogSink* value)",
         L"5 SubmitCommand([in] IAppCommand* candidate, [out, retval] VARIANT_BOOL* result)",
         L"6 OfferCommand([in] IAppCommand* candidate, [out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneDlg",
     L"IResourceLibrary",
     {
         L"101 GetString([in] VARIANT id, [out, retval] BSTR* value)",
         (L"102 Export([in] VARIANT resourceType, [in] VARIANT resourceId, [in] BSTR fileName, "
          L"[out, retval] VARIANT_BOOL* written)"),
     }},
    {L"KorvaneDlg",
     L"IDialogControl",
     {
         L"-512 get putref Font: IFontDisp*",
         L"-514 get put Enabled: VARIANT_BOOL",
         L"-515 get hWnd([out, retval] long* value)",
     },
     L"IAppDialog"},
    {L"KorvaneDlg",
     L"IEditGroups",
     {
         L"101 get putref Root: IRoot*",
         L"102 get put GroupID: long",
         L"103 get Command([out, retval] IAppCommand** value)",
         L"104 get put GroupName: BSTR",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IEditEvents",
     {
         L"101 get put EventInstance: long",
         L"102 get GroupID([out, retval] long* value)",
         L"103 get put TypeID: long",
         L"104 get NameID([out, retval] long* value)",
         L"105 get put T0: DATE",
         L"106 get put T1: DATE",
         L"107 get put Text: BSTR",
         L"108 get Command([out, retval] IAppCommand** value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IMoveEvents",
     {
         L"101 get Command([out, retval] IAppCommand** value)",
         L"102 get SourceName([out, retval] long* value)",
         L"103 get TargetName([out, retval] long* value)",
         L"104 put UpdateAll([in] VARIANT_BOOL value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IEditNames",
     {
         L"101 get putref Root: IRoot*",
         L"102 get put NameID: long",
         L"103 get put GroupID: long",
         L"104 get put LoginID: long",
         L"105 get Command([out, retval] IAppCommand** value)",
         L"106 get put NameText: BSTR",
         L"107 get put NameColor: long",
         L"108 get put NameRole: long",
         L"109 get put NameLogin: BSTR",
         L"110 get put NameSync: VARIANT_BOOL",
         L"111 get put NameMailbox: BSTR",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IEditTypes",
     {
         L"101 get putref Root: IRoot*",
         L"102 get put TypeID: long",
         L"103 get put GroupID: long",
         L"104 get put TypeText: BSTR",
         L"105 get put TypeColor: long",
         L"106 get Command([out, retval] IAppCommand** value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IArrangeNames",
     {
         L"101 get Command([out, retval] IAppCommand** value)",
         L"102 get NameCount([out, retval] long* value)",
         L"103 get NameKey([in] long Index, [out, retval] long* value)",
         L"104 get NameText([in] long Index, [out, retval] BSTR* value)",
         L"105 put Pos([in] long Index, [in] long value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IArrangeTypes",
     {
         L"101 get Command([out, retval] IAppCommand** value)",
         L"102 get TypeCount([out, retval] long* value)",
         L"103 get TypeKey([in] long Index, [out, retval] long* value)",
         L"104 get TypeText([in] long Index, [out, retval] BSTR* value)",
         L"105 put Pos([in] long Index, [in] long value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IArrangeGroups",
     {
         L"101 get Command([out, retval] IAppCommand** value)",
         L"102 get GroupCount([out, retval] long* value)",
         L"103 get GroupKey([in] long Index, [out, retval] long* value)",
         L"104 get GroupText([in] long Index, [out, retval] BSTR* value)",
         L"105 put Pos([in] long Index, [in] long value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IInfoMessage",
     {
         L"101 get put TypeIndex: long",
         L"102 get put Info: VARIANT",
         L"103 get put Contact: BSTR",
         L"104 get put Tlf: BSTR",
         L"105 get put About: BSTR",
         L"106 get Command([out, retval] IAppCommand** value)",
     },
     L"IAppCommand"},
    {L"KorvaneDlg",
     L"IShowMessage",
     {
         L"101 get put MsgID: long",
         L"102 get put Contact: BSTR",
         L"103 get put Tlf: BSTR",
         L"104 get put About: BSTR",
         L"105 get Command([out, retval] IAppCommand** value)",
     },
     L"IAppCommand"},
    {L"KorvaneData",
     L"IRoot",
     {
         L"1 get Groups([out, retval] IGroups** collection)",
         L"2 get Names([out, retval] INames** collection)",
         L"3 get Types([out, retval] ITypes** collection)",
         L"4 get Accounts([out, retval] IAccounts** collection)",
         L"5 get Events([out, retval] IEvents** collection)",
         L"6 get EventLinks([out, retval] IEventLinks** links)",
         L"7 get Messages([out, retval] IMessages** collection)",
         L"8 NewRecurrence([in] long ruleKind, [out, retval] IRecurrence** rule)",
         L"9 OpenScope([in] long flags, [in] BSTR source, [out, retval] IScope** scope)",
     }},
    {L"KorvaneData",
     L"IScope",
     {
         L"1 Close([in] long flags, [in] long reason)",
     }},
    {L"KorvaneData",
     L"IGroups",
     {
         L"1 Load([out, retval] VARIANT_BOOL* result)",
         (L"2 Fetch([in] long id, [in, out] BSTR* text, [in, out] long* flags, [out, retval] "
          L"VARIANT_BOOL* result)"),
         L"3 HasAccess([in] long operation, [in] long id, [out, retval] VARIANT_BOOL* result)",
         L"4 Add([in] BSTR text, [in] long flags, [out] long* newId)",
         L"5 Remove([in] long id, [out] long* removedId)",
         L"6 Update([in] long id, [in] BSTR text, [in] long flags, [out] long* updatedId)",
         L"7 SetPosition([in] long id, [in] long position)",
     }},
    {L"KorvaneData",
     L"INames",
     {
         L"1 Load([in] long groupId, [out, retval] VARIANT_BOOL* result)",
         (L"2 Fetch([in] long id, [in, out] BSTR* text, [in, out] long* color, [in, out] long* loginId, "
          L"[in, out] BSTR* login, [in, out] long* flags, [in, out] long* role)"),
         L"3 HasAccess([in] long operation, [in] long id, [out, retval] VARIANT_BOOL* result)",
         L"4 GetRole([in] long id, [out, retval] long* role)",
         L"5 GetMailbox([in] long id, [out, retval] BSTR* mailbox)",
         L"6 Add([in] BSTR text, [in] long color, [in] long flags, [out, retval] long* newId)",
         (L"7 Update([in] long id, [in] BSTR text, [in] long color, [in] long flags, [out, retval] long* "
          L"updatedId)"),
         (L"8 AddToGroup([in] long id, [in] long groupId, [in] long position, [out, retval] long* "
          L"memberPosition)"),
         L"9 RemoveFromGroup([in] long id, [in] long groupId, [out, retval] long* removedId)",
         L"10 SetSyncLogin([in] long id, [in] BSTR login)",
         L"11 SetRole([in] long id, [in] long role)",
         L"12 LoadInfo([in] long nameId, [out, retval] VARIANT_BOOL* result)",
         L"13 SetInfo([in] long nameId, [in] BSTR label, [in] long position, [in] BSTR value)",
     }},
    {L"KorvaneData",
     L"ITypes",
     {
         L"1 Load([in] long groupId, [out, retval] VARIANT_BOOL* result)",
         (L"2 Fetch([in] long id, [in, out] BSTR* text, [in, out] long* color, [in, out] long* flags, "
          L"[in, out] long* groupCount)"),
         L"3 HasAccess([in] long operation, [in] long id, [out, retval] VARIANT_BOOL* result)",
         L"4 Add([in] BSTR text, [in] long color, [in] long flags, [out, retval] long* newId)",
         (L"5 Update([in] long id, [in] BSTR text, [in] long color, [in] long flags, [out, retval] long* "
          L"updatedId)"),
         (L"6 AddToGroup([in] long id, [in] long groupId, [in] long position, [out, retval] long* "
          L"memberPosition)"),
         L"7 RemoveFromGroup([in] long id, [in] long groupId, [out, retval] long* removedId)",
     }},
    {L"KorvaneData",
     L"IAccounts",
     {
         L"1 Load([out, retval] VARIANT_BOOL* result)",
         L"2 Lookup([in] BSTR login, [in, out] long* loginId, [in, out] long* role, [in, out] long* nameId)",
         L"3 Add([in] BSTR login, [in] long role, [in] VARIANT nameId, [out, retval] long* newId)",
         L"4 Attach([in] long nameId, [in] BSTR login, [out, retval] VARIANT_BOOL* result)",
         L"5 Detach([in] long nameId, [out, retval] VARIANT_BOOL* result)",
         L"6 Remove([in] BSTR login, [out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneData",
     L"IMessages",
     {
         L"1 LoadFor([in] long nameId, [in] long flags, [out, retval] VARIANT_BOOL* result)",
         (L"2 Fetch([in] long MsgID, [in, out] BSTR* FromName, [in, out] DATE* Dtg, [in, out] BSTR* Tlf, "
          L"[in, out] BSTR* Contact, [in, out] BSTR* About, [in, out] long* messageKind, [in, out] "
          L"VARIANT_BOOL* wasRead)"),
         (L"3 Add([in] long nameId, [in] DATE Dtg, [in] BSTR About, [in] BSTR Tlf, [in] BSTR Contact, "
          L"[in] long messageKind, [out, retval] long* newId)"),
         L"4 Remove([in] long MsgID)",
     }},
    {L"KorvaneData",
     L"IRecurrence",
     {
         L"1 get Kind([out, retval] long* value)",
         L"2 get put Interval: long",
         L"3 get put Count: long",
         L"4 get put Anchor: long",
     }},
    {L"KorvaneData",
     L"IEvents",
     {
         (L"1 Add([in] long nameId, [in] long typeId, [in] DATE T0, [in] DATE T1, [in] BSTR text, [out, "
          L"retval] long* eventId)"),
         (L"2 Update([in] long eventId, [in] long instance, [in] long nameId, [in] long typeId, [in] DATE "
          L"T0, "
          L"[in] DATE T1, [in] BSTR text)"),
         L"3 Remove([in] long eventId, [in] long instance)",
         (L"4 Fetch([in] long eventId, [in] long instance, [in, out] long* nameId, [in, out] long* typeId, "
          L"[in, out] DATE* T0, [in, out] DATE* T1, [in, out] BSTR* text)"),
         L"5 GetRecurrence([in] long eventId, [out, retval] IRecurrence** rule)",
         L"6 SetRecurrence([in] long eventId, [in] IRecurrence* rule)",
         L"7 IsException([in] long eventId, [out, retval] long* result)",
     }},
    {L"KorvaneData",
     L"IEventLinks",
     {
         L"1 Load([in] long eventId, [out, retval] VARIANT* linkId)",
         L"2 Create([in] long eventId, [out, retval] VARIANT* linkId)",
         L"3 AddNames([in] VARIANT linkId, [in] VARIANT nameIds)",
         L"4 RemoveNames([in] VARIANT linkId, [in] VARIANT nameIds, [out, retval] VARIANT* newLinkId)",
         L"5 RemoveOccurrence([in] VARIANT linkId, [in] long instance)",
         L"6 RemoveAll([in] VARIANT linkId)",
         (L"7 UpdateLinked([in] VARIANT linkId, [in] long instance, [in] long typeId, [in] DATE T0, [in] "
          L"DATE "
          L"T1, [in] BSTR text, [out, retval] VARIANT* newLinkId)"),
         L"8 Detach([in] VARIANT linkId, [in] long nameId)",
         L"9 SetRecurrence([in] VARIANT linkId, [in] IRecurrence* rule)",
         L"10 HasAccess([in] long level, [in] long eventId, [out, retval] VARIANT_BOOL* result)",
     }},
    {L"KorvaneData",
     L"IRegistry",
     {
         L"1 GetValue([in] BSTR key, [in] VARIANT defaultValue, [out, retval] VARIANT* value)",
     }},
};

/// The interfaces through which collections announce what they hold: no vtable, and no types but those of Automation.
const std::map<std::wstring_view, std::vector<std::wstring>> announcements = {
    {L"IGroupsEvents",
     {L"1 OnClear() -> void", L"2 OnAdd([in] long id, [in] BSTR text, [in] long flags) -> void"}},
    {L"INamesEvents",
     {L"1 OnClear() -> void",
      L"2 OnAdd([in] long id, [in] BSTR text, [in] long groupId, [in] long color) -> void",
      L"3 OnInfoClear() -> void",
      L"4 OnInfoAdd([in] long nameId, [in] BSTR InfoTag, [in] BSTR InfoValue) -> void"}},
    {L"ITypesEvents",
     {L"1 OnClear() -> void", L"2 OnAdd([in] long id, [in] BSTR text, [in] long color) -> void"}},
    {L"IAccountsEvents", {L"1 OnClear() -> void", L"2 OnAdd([in] long id, [in] BSTR login) -> void"}},
    {L"IMessagesEvents",
     {L"1 OnClear() -> void",
      (L"2 OnAdd([in] long MsgID, [in] BSTR FromName, [in] DATE Dtg, [in] BSTR Tlf, [in] BSTR "
       L"Contact, [in] BSTR About, [in] VARIANT_BOOL flags) -> void")}},
    {L"IEventsEvents",
     {L"1 OnClear() -> void",
      (L"2 OnAdd([in] long eventId, [in] long instance, [in] long nameId, [in] long typeId, [in] DATE "
       L"T0, [in] DATE T1, [in] BSTR text) -> void")}},
    {L"IEventLinksEvents", {L"1 OnClear() -> void", L"2 OnAdd([in] long eventId, [in] long nameId) -> void"}},
};

/// The members of a contract, a property that is read and set as two.
std::vector<std::wstring> membersOf(const Contract& contract)
{
    std::vector<std::wstring> result;
    for (const std::wstring& row : contract.members)
    {
        const auto colon = row.find(L": ");
        if (colon == std::wstring::npos)
        {
            result.push_back(row);
            continue;
        }
        const auto first = row.find(L' ') + 1;
        const auto second = row.find(L' ', first) + 1;
        const auto name = row.find(L' ', second) + 1;
        const auto half = [&](std::size_t kind, std::size_t end, const wchar_t* before,
                              const wchar_t* after) {
            std::wstring slot(row, 0, first);
            slot.append(row, kind, end - kind).append(row, name, colon - name);
            return slot.append(before).append(row, colon + 2).append(after);
        };
        result.push_back(half(first, second, L"([out, retval] ", L"* value)"));
        result.push_back(half(second, name, L"([in] ", L" value)"));
    }
    return result;
}

/// How many slots of the vtable belong to what an interface extends.
ULONG_PTR slotsBefore(const Contract& contract)
{
    const auto* const extended =
        std::find_if(std::begin(contracts), std::end(contracts),
                     [&](const Contract& other) { return other.name == contract.extended; });
    return 7 + (extended == std::end(contracts) ? 0 : membersOf(*extended).size()); // 7 of IDispatch
}

bool announces(std::wstring_view name)
{
    return announcements.contains(name) || name == L"IDialogEvents";
}

/// The types of one library, by name.
ComPtr<ITypeInfo> typeNamed(const ComPtr<ITypeLib>& library, std::wstring_view name)
{
    for (const auto& information : typesOf(library))
        if (nameOf(information.get()) == name)
            return information;
    return nullptr;
}

ComPtr<ITypeInfo> vtableView(const ComPtr<ITypeInfo>& dispatchView)
{
    HREFTYPE reference = 0;
    require(dispatchView->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    ComPtr<ITypeInfo> result;
    require(dispatchView->GetRefTypeInfo(reference, result.put()));
    return result;
}

WORD flagsOf(const ComPtr<ITypeInfo>& information)
{
    return TypeAttributes(information.get())->wTypeFlags;
}

std::wstring nameOf(const ComPtr<ITypeLib>& library)
{
    Bstr name;
    require(library->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr));
    return std::wstring(name.view());
}

std::wstring helpOf(ITypeInfo* information)
{
    Bstr help;
    require(information->GetDocumentation(MEMBERID_NIL, nullptr, help.put(), nullptr, nullptr));
    return std::wstring(help.view());
}

/// Each library twice: as a file of its own, and in the DLL.
class TypeLibraryTests : public testing::TestWithParam<const wchar_t*>
{
protected:
    ComPtr<ITypeLib> load() const
    {
        ComPtr<ITypeLib> library;
        require(LoadTypeLibEx((folderOfTests() + L'\\' + GetParam()).c_str(), REGKIND_NONE, library.put()));
        return library;
    }
};

std::string testName(const testing::TestParamInfo<const wchar_t*>& tested)
{
    std::string name = narrow(tested.param);
    for (char& character : name)
        if (character == '.' || character == '\\')
            character = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, TypeLibraryTests,
                         testing::Values(L"KorvaneDlg.tlb", L"KorvaneLib.tlb", L"KorvaneInterfaces.tlb",
                                         L"KorvaneData.tlb"),
                         testName);
INSTANTIATE_TEST_SUITE_P(Dll, TypeLibraryTests,
                         testing::Values(L"KorvaneDlg.dll\\1", L"KorvaneDlg.dll\\2", L"KorvaneDlg.dll\\3",
                                         L"KorvaneDlg.dll\\4"),
                         testName);

} // namespace

TEST_P(TypeLibraryTests, MembersHaveTheirNamesKindsTypesAndSlots)
{
    const auto library = load();
    int compared = 0;
    for (const Contract& contract : contracts)
    {
        if (contract.library != nameOf(library))
            continue;
        SCOPED_TRACE(narrow(contract.name));
        const auto information = typeNamed(library, contract.name);
        ASSERT_TRUE(information);
        const auto members = korvane::test::membersOf(vtableView(information).get());
        std::vector<std::wstring> found;
        ULONG_PTR slot = slotsBefore(contract);
        for (const Member& member : members)
        {
            found.push_back(std::to_wstring(member.id) + L' ' + member.declaration);
            EXPECT_EQ(member.offset, slot++ * sizeof(void*)) << narrow(member.name);
        }
        EXPECT_EQ(found, membersOf(contract));
        ++compared;
    }
    EXPECT_GT(compared, 0);
}

TEST_P(TypeLibraryTests, InterfacesAreDualAndDeriveFromIDispatch)
{
    const auto library = load();
    for (const auto& information : typesOf(library))
    {
        const TypeAttributes attributes(information.get());
        const std::wstring name = korvane::test::nameOf(information.get());
        if (attributes->typekind != TKIND_COCLASS && name.starts_with(L"I") && !announces(name))
        {
            EXPECT_EQ(attributes->typekind, TKIND_DISPATCH) << narrow(name);
            EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FDUAL) << narrow(name);
            EXPECT_TRUE(flagsOf(vtableView(information)) & TYPEFLAG_FOLEAUTOMATION) << narrow(name);
        }
    }
}

TEST_P(TypeLibraryTests, EveryTypeAndMemberIsExplained)
{
    const auto library = load();
    Bstr help;
    require(library->GetDocumentation(MEMBERID_NIL, nullptr, help.put(), nullptr, nullptr));
    EXPECT_FALSE(help.empty());
    for (const auto& information : typesOf(library))
    {
        const std::string name = narrow(korvane::test::nameOf(information.get()));
        EXPECT_FALSE(helpOf(information.get()).empty()) << name;
        // The dispatch view lists the seven members of IDispatch too, which have no help.
        HREFTYPE reference = 0;
        const bool dual = SUCCEEDED(information->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
        for (const Member& member : membersOf(dual ? vtableView(information).get() : information.get()))
            EXPECT_FALSE(member.help.empty()) << name << '.' << narrow(member.name);
    }
}

TEST_P(TypeLibraryTests, IsVersionOneForThisPlatform)
{
    const auto library = load();
    TLIBATTR* attributes = nullptr;
    require(library->GetLibAttr(&attributes));
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    EXPECT_EQ(attributes->lcid, 0U);
    library->ReleaseTLibAttr(attributes);
}

TEST(TypeLibrariesTest, TheDllHoldsThemInTheirOrderAndNoMore)
{
    std::vector<std::wstring> names;
    for (const auto& library : typeLibraries())
        names.push_back(nameOf(library));
    EXPECT_THAT(names,
                testing::ElementsAre(L"KorvaneDlg", L"KorvaneLib", L"KorvaneInterfaces", L"KorvaneData"));
}

TEST(TypeLibrariesTest, TheIdsAreThoseThatHostsWereCompiledWith)
{
    const std::pair<const wchar_t*, const wchar_t*> ids[] = {
        {L"IAppCommand", L"{05D33596-53F2-4F93-B368-DCDCAA235339}"},
        {L"IAppDialog", L"{8C7506D8-7BA8-4736-8F6E-51FAD9C25C4B}"},
        {L"IResources", L"{A17A6B95-EA4A-4DB2-BC6C-E44EAE11B496}"},
        {L"ICalendar", L"{F48A50ED-09D0-4756-9D77-9E16E4D02A08}"},
        {L"IXtExecuteEvents", L"{64CD7EE1-8029-4B17-8748-90E6463373F4}"},
        {L"IAppDialogSink", L"{4A18BF2F-4B8A-40DE-B1BB-D1D8E72855A8}"},
        {L"IAppCommandSite", L"{2864FCA2-3825-48F0-BF00-888D300B95F4}"},
        {L"IAppDialogEvents", L"{F0E38CC9-02E1-4CE5-9A60-E0E31D1C48B6}"},
        {L"IResourceLibrary", L"{689A13A0-F45A-42E3-BEC5-059A98440973}"},
        {L"IDialogControl", L"{B063A521-2B65-4C6A-ABD9-FB3C543217BD}"},
        {L"IEditGroups", L"{9A396832-E899-4C8C-A869-B8DCAB6A1146}"},
        {L"IEditEvents", L"{B2531149-A8A5-4A97-B118-86F739896897}"},
        {L"IMoveEvents", L"{82F4BAF5-B841-4F45-8A2B-6CD2339410C7}"},
        {L"IEditNames", L"{F2BCC6CE-5E41-4C3A-86E9-E81AAAB1B443}"},
        {L"IEditTypes", L"{C00C7F66-B1D0-4D25-9E1A-0A05926C082D}"},
        {L"IArrangeNames", L"{AB371F54-36F3-4856-85E0-C96E444A63F9}"},
        {L"IArrangeTypes", L"{BFBF8597-0F23-4DF1-91AF-C508846E9ED0}"},
        {L"IArrangeGroups", L"{7DB519AC-A9C4-4AB2-A32D-722F1738E454}"},
        {L"IInfoMessage", L"{6F4FB174-DBE9-439A-A501-F553BD525FA2}"},
        {L"IShowMessage", L"{EF9E3148-262F-4C4B-BB16-490385DF36DF}"},
    };
    for (const auto& [name, id] : ids)
    {
        IID iid{};
        ASSERT_EQ(CLSIDFromString(id, &iid), S_OK);
        const auto information = vtableInfo(iid);
        ASSERT_TRUE(information) << narrow(name);
        EXPECT_EQ(korvane::test::nameOf(information.get()), name);
    }
}

// A second description of a contract's interface would take the place of the contract's own when it is registered.
TEST(TypeLibrariesTest, EveryTypeHasAnIdAndStandsInOneLibraryOnly)
{
    std::map<std::wstring, std::wstring> libraryOfType;
    for (const auto& library : typeLibraries())
        for (const auto& information : typesOf(library))
        {
            const std::wstring name = korvane::test::nameOf(information.get());
            EXPECT_NE(TypeAttributes(information.get())->guid, GUID_NULL) << narrow(name);
            const auto [first, isNew] = libraryOfType.try_emplace(name, nameOf(library));
            EXPECT_TRUE(isNew) << narrow(name) << " is in " << narrow(first->second) << " and in "
                               << narrow(nameOf(library));
        }
}

TEST(TypeLibrariesTest, CollectionsAnnounceTheirItemsByDispinterfaces)
{
    for (const auto& [name, declared] : announcements)
    {
        SCOPED_TRACE(narrow(name));
        const auto information = typeNamed(typeLibraries().at(3), name);
        ASSERT_TRUE(information);
        EXPECT_FALSE(flagsOf(information) & TYPEFLAG_FDUAL);
        std::vector<std::wstring> found;
        for (const Member& member : membersOf(information.get()))
            if (member.id > 0 && member.id < 0x10000) // without those of IDispatch
                found.push_back(std::to_wstring(member.id) + L' ' + member.declaration);
        EXPECT_EQ(found, declared);
    }
}

TEST(TypeLibrariesTest, EveryDialogNamesItsEvents)
{
    for (const PublicClass& publicClass : publicClasses())
        EXPECT_EQ(publicClass.events, publicClass.control ? __uuidof(IDialogEvents) : GUID_NULL)
            << narrow(publicClass.name);
}

TEST(TypeLibrariesTest, DispatchIdsAreDistinctWithinAClass)
{
    // Late binding reaches all interfaces of a class at once.
    for (const PublicClass& publicClass : publicClasses())
    {
        std::map<MEMBERID, std::wstring> names;
        for (const IID& iid : publicClass.interfaces)
            for (const Member& member : membersOf(vtableInfo(iid).get()))
                EXPECT_EQ(names.try_emplace(member.id, member.name).first->second, member.name)
                    << narrow(publicClass.name) << ": id " << member.id;
    }
}

} // namespace korvane::test
