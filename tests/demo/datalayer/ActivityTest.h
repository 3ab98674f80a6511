// A test with resources, activity types and activities.
#pragma once

#include "tests/demo/datalayer/Desk.h"

namespace korvane::store::test
{

/// Resources 2 to 5: Anna, Bert and the employee Carla of group 4 "Staff", and the van of group 5 "Vehicles".
/// Activity types 0 to 2: Activity, Meeting and Travel.
class ActivityTest : public DataLayerTest
{
protected:
    static constexpr long anna = 2;
    static constexpr long bert = 3;
    static constexpr long carla = 4;
    static constexpr long van = 5;

    ActivityTest();
    void TearDown() override;

    Desk deskOf(const wchar_t* account) const { return Desk(open(account)); }

    /// All rows of activities, to see that nothing changed.
    std::wstring content() const;

    /// An hour's meeting for Anna.
    static Booking meeting(DATE t0 = at(2026, 3, 2, 9), long name = anna)
    {
        return {name, 1, t0, t0 + 1.0 / 24, L"Budget"};
    }

    /// A link group of Anna's activity 1, Bert's 2 and the van's 3, in an empty database.
    Link three() const;

    std::optional<Desk> desk; ///< the administrator's
};

} // namespace korvane::store::test

/// Expects a call to fail with an error of a class, and to leave the activities alone.
#define EXPECT_REFUSED(statement, ...)                                                                       \
    do                                                                                                       \
    {                                                                                                        \
        const std::wstring before = content();                                                               \
        EXPECT_ERROR(statement, __VA_ARGS__);                                                                \
        EXPECT_EQ(before, content());                                                                        \
    } while (false)
