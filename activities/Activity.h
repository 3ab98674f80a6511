// What the commands on activities have in common: their fields, the operands for them, and their link group.
#pragma once

#include "activities/LinkGroup.h"
#include "framework/AppCommand.h"

#include <array>

namespace korvane
{

struct Activity
{
    /// @param primary the resource that both sets of the link group start with.
    explicit Activity(const long& primary) noexcept : links(primary) {}

    ComPtr<IRoot> Root;
    long EventID = 0;
    long Instance = 0; ///< occurrence of a repeating activity; 0 for the activity as a whole
    long GroupID = 0;
    long TypeID = 0;
    Bstr Text;
    OleDate T0; ///< start
    OleDate T1; ///< stop

    LinkGroup links;

    // For the dialogs.
    bool HasName(long nameId) const { return links.chosen.contains(nameId); }
    long NameCount() const noexcept { return static_cast<long>(links.chosen.size()); }

protected:
    ~Activity() = default;

    ComPtr<IEvents> events() const { return collection<IEvents>(Root); }

    /// A stop before the start is never an error.
    void orderTimes() noexcept;

    void update(long nameId) const;
    void add(long nameId);

    /// The stored values of the activity, or of one occurrence of it.
    struct Stored
    {
        long nameId = 0;
        long typeId = 0;
        OleDate T0;
        OleDate T1;
        Bstr text;
    };
    /// Values that the data layer leaves as they are stay as they are.
    Stored fetchStored(Stored values) const;
};

/// Raises the error for an operation that an activity command does not know.
void raiseBadCommandNumber(long operation);

/// The operands of both commands, with further ones of a command's own.
template <class Class, class... Rows> constexpr auto activityOperands(Rows... further)
{
    return std::array{operand<&Activity::Root, Class>(L"Root"),
                      operand<&Activity::EventID, Class>(L"EventID"),
                      operand<&Activity::Instance, Class>(L"Instance"),
                      operand<&Activity::GroupID, Class>(L"GroupID"),
                      operand<&Activity::TypeID, Class>(L"TypeID"),
                      operand<&Activity::Text, Class>(L"Text"),
                      operand<&Activity::T0, Class>(L"T0"),
                      operand<&Activity::T1, Class>(L"T1"),
                      further...};
}

} // namespace korvane
