// The errors of the data layer. Those below 9000, and the one above 20000, are texts of the library's string table,
// under the same numbers.
#pragma once

#include "framework/com/Failure.h"

namespace korvane::store
{

/// The number of an error is 0x80040000 plus its code.
enum class Code : long
{
    unknownAccount = 4090,
    mayNotAddGroups = 4190,
    mayNotChangeGroup = 4191,
    mayNotDeleteGroup = 4192,
    lastGroup = 4193,
    mayNotArrangeGroups = 4194,
    builtInGroup = 4195,
    mayNotAddNames = 4290,
    mayNotEditName = 4291,
    mayNotRemoveName = 4292,
    mayNotArrangeNames = 4293,
    mayNotAddTypes = 4390,
    mayNotEditType = 4391,
    mayNotRemoveType = 4392,
    mayNotArrangeTypes = 4393,
    mayNotCreateForOthers = 4690,
    mayNotEditForOthers = 4691,
    mayNotReadMessages = 4790,
    loginNeedsName = 4890,
    loginNeedsText = 4891,
    superUserInGroup = 4899,
    nobodyReads = 22591,

    unknownGroup = 9001,
    groupNeedsName = 9002,
    groupNameTaken = 9003,
    scopeClosed = 9004,

    locked = 9010,
    readOnly = 9011,
    diskFull = 9012,
    cannotOpen = 9013,
    damaged = 9014,
    cannotAccess = 9015,
    ruleBroken = 9016,
    foreignDatabase = 9017,
    newerDatabase = 9018,
    otherDatabaseError = 9019,

    unknownEvent = 9021,
    unknownOccurrence = 9022,
    unknownName = 9023,
    unknownType = 9024,
    unknownLink = 9025,
    notBookedForName = 9026,
    endBeforeBegin = 9027,
    impossibleTime = 9028,
    unknownRecurrence = 9029,
    intervalTooSmall = 9030,
    countTooSmall = 9031,
    namesExpected = 9032,
    hasNamesAlready = 9033,
    foreignRoot = 9034,
    nobodyLeft = 9035,

    nameNeedsText = 9041,
    typeNeedsText = 9042,
    typeTextTaken = 9043,
    loginTaken = 9044,
    unknownLogin = 9045,
    mayNotChangeLogin = 9046,
    unknownRole = 9047,
    mayNotGiveRole = 9048,
    unknownMessage = 9049,
    unknownMessageKind = 9050,
    mayNotLeaveMessages = 9051
};

/// An error as the callers see it. The source is "KorvaneData." and the class; "#" in the error's text gives
/// way to the detail.
Failure error(Code code, std::wstring_view className, std::wstring_view detail = {});

} // namespace korvane::store
