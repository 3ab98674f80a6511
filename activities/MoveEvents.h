// The command that moves an activity to another time or resource, or copies it there.
#pragma once

#include "activities/Activity.h"

#include <KorvaneDlg.h>

namespace korvane
{

class MoveEvents final : public AppCommand<MoveEvents, IMoveEvents>, public Activity
{
public:
    enum Operation : long
    {
        operationMove = 3,
        operationCopy = 4
    };

    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlMoveEvents";
    static const GUID* classId() noexcept { return &__uuidof(::MoveEvents); }
    static std::span<const Operand<MoveEvents>> operands();

    MoveEvents() noexcept : Activity(TargetName) {}

    bool prepare();
    bool execute();

    /// For the dialog: chooses a resource or takes it out of the choice; source and target stay.
    void SetName(long nameId, bool checked);

    STDMETHODIMP get_SourceName(long* value) override { return read(value, SourceName); }
    STDMETHODIMP get_TargetName(long* value) override { return read(value, TargetName); }
    STDMETHODIMP put_UpdateAll(VARIANT_BOOL value) override { return write(UpdateAll, value); }

    long SourceName = 0;    ///< the resource that the activity comes from
    long TargetName = 0;    ///< the resource that it goes to
    bool UpdateAll = false; ///< move the activities of all linked resources

private:
    void move();

    Stored stored_; ///< the activity as it was when the command was prepared
};

} // namespace korvane
