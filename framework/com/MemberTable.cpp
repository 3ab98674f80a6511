#include "framework/com/MemberTable.h"

#include "framework/com/Bstr.h"
#include "framework/com/Failure.h"

#include <algorithm>
#include <memory>

namespace korvane
{

namespace
{

std::atomic<MemberTableSlot*> filledSlots;

/// Members are named in ASCII, and their case does not count.
wchar_t folded(wchar_t character) noexcept
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + (L'a' - L'A'))
                                                  : character;
}

bool precedes(std::wstring_view left, std::wstring_view right) noexcept
{
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](wchar_t one, wchar_t other) { return folded(one) < folded(other); });
}

/// The interface as its vtable shows it: its own members, without those of what it extends.
ComPtr<ITypeInfo> vtableView(ITypeInfo* information)
{
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> view;
    require(information->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    require(information->GetRefTypeInfo(reference, view.put()));
    return view;
}

UINT memberCount(ITypeInfo* information)
{
    TYPEATTR* attributes = nullptr;
    require(information->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    information->ReleaseTypeAttr(attributes);
    return count;
}

struct Function
{
    DISPID id;
    WORD kind;
};

Function functionAt(ITypeInfo* information, UINT index)
{
    FUNCDESC* description = nullptr;
    require(information->GetFuncDesc(index, &description));
    const Function function{description->memid, static_cast<WORD>(description->invkind)};
    information->ReleaseFuncDesc(description);
    return function;
}

} // namespace

MemberTable::MemberTable(std::span<const IID* const> interfaces) : information_(interfaces.size())
{
    for (std::size_t face = 0; face < interfaces.size(); ++face)
        if (interfaces[face])
        {
            if (!described_)
                described_ = typeInfoOf(*interfaces[face]);
            information_[face] = bindingInfoOf(*interfaces[face]);
            add(vtableView(information_[face].get()).get(), face);
        }
    std::sort(members_.begin(), members_.end(), [](const MemberEntry& left, const MemberEntry& right) {
        return precedes(left.name, right.name) ||
               (!precedes(right.name, left.name) && left.face < right.face);
    });
}

void MemberTable::add(ITypeInfo* information, std::size_t face)
{
    const UINT count = memberCount(information);
    for (UINT index = 0; index < count; ++index)
    {
        const Function function = functionAt(information, index);
        const auto known = std::ranges::find(members_, function.id, &MemberEntry::id);
        if (known != members_.end())
        {
            if (known->face == face) // the other half of a property
                known->kinds |= function.kind;
            continue;
        }
        Bstr name;
        require(information->GetDocumentation(function.id, name.put(), nullptr, nullptr, nullptr));
        members_.push_back({std::wstring(name.view()), function.id, face, function.kind});
    }
}

const MemberEntry* MemberTable::find(std::wstring_view name) const noexcept
{
    const auto found = std::lower_bound(
        members_.begin(), members_.end(), name,
        [](const MemberEntry& member, std::wstring_view wanted) { return precedes(member.name, wanted); });
    return found == members_.end() || precedes(name, found->name) ? nullptr : &*found;
}

const MemberEntry* MemberTable::find(DISPID id) const noexcept
{
    const auto found = std::ranges::find(members_, id, &MemberEntry::id);
    return found == members_.end() ? nullptr : &*found;
}

const MemberTable& memberTable(MemberTableSlot& slot, std::span<const IID* const> interfaces)
{
    if (const MemberTable* table = slot.table)
        return *table;

    auto made = std::make_unique<const MemberTable>(interfaces);
    const MemberTable* expected = nullptr;
    if (!slot.table.compare_exchange_strong(expected, made.get()))
        return *expected; // another apartment was quicker
    slot.next = filledSlots;
    while (!filledSlots.compare_exchange_weak(slot.next, &slot))
    {
    }
    return *made.release();
}

void releaseMemberTables() noexcept
{
    for (MemberTableSlot* slot = filledSlots.exchange(nullptr); slot; slot = slot->next)
        std::unique_ptr<const MemberTable>(slot->table.exchange(nullptr)).reset();
}

} // namespace korvane
