// What late binding knows of a class: the type information of its dual interfaces, and a table of their members.
#pragma once

#include "framework/com/TypeInfo.h"

#include <atomic>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane
{

/// One member of a class.
struct MemberEntry
{
    std::wstring name;
    DISPID id;
    std::size_t face; ///< index of the interface that declares it
    WORD kinds;       ///< how it may be called: a method, or what of a property there is
};

/// Asking a type library takes longer with every member that it describes; this does not.
class MemberTable
{
public:
    /// @param interfaces the ids of the class's interfaces, null for one that is not dual.
    explicit MemberTable(std::span<const IID* const> interfaces);

    /// The member with a name, whatever its case, or with an id; of several, that of the first interface. Null for none.
    const MemberEntry* find(std::wstring_view name) const noexcept;
    const MemberEntry* find(DISPID id) const noexcept;

    /// The type information of the interface with this index, to call it through.
    ITypeInfo* information(std::size_t face) const noexcept { return information_[face].get(); }
    /// That of the class's first dual interface, as its callers know it.
    ITypeInfo* information() const noexcept { return described_.get(); }

private:
    void add(ITypeInfo* information, std::size_t face);

    ComPtr<ITypeInfo> described_;
    std::vector<ComPtr<ITypeInfo>> information_;
    std::vector<MemberEntry> members_; ///< by name
};

/// Keeps a class's table once it was needed. One per class, never destroyed.
struct MemberTableSlot
{
    std::atomic<const MemberTable*> table = nullptr;
    MemberTableSlot* next = nullptr;
};

/// Makes the table on first use. Throws a Failure when no type library of the module describes an interface.
const MemberTable& memberTable(MemberTableSlot& slot, std::span<const IID* const> interfaces);

/// Lets go of what was kept; it is made again when needed.
void releaseMemberTables() noexcept;

} // namespace korvane
